#pragma once

#include "Dialogs.h"
#include "Programme.h"
#include "ProgrammeExchange.h"

#include <QDialog>
#include <QPointer>

#include <functional>

class AlarmGrid;
class BlockHeader;
class HolidayEditor;
class QFrame;
class QGroupBox;
class QHBoxLayout;
class QPushButton;
class QTabBar;

/// The programming window of either model: shows what the clock rings by, edits it, keeps it in
/// files and sends it. Made by `new` and shown with open(); it deletes itself once closed.
class frmProg : public QDialog {
    Q_OBJECT
public:
    void done(int result) override;

protected:
    struct Texts {
        QString caption;
        /// "HCT-7200"
        QString clock;
        /// What its files are called in the file dialogs.
        QString fileKind;
    };

    frmProg(const Texts& texts, ClockModel model, QWidget* owner, frmCrono& crono,
            MessageLink& link, modGlobais& globais, StatusLog& log, Dialogs& dialogs);

    void keyPressEvent(QKeyEvent* event) override;

private:
    void build();
    QFrame* makeBlockFrame();
    QGroupBox* makeNotice();
    QHBoxLayout* makeButtons();
    QPushButton* addButton(const QString& name, const QString& caption, const QString& hint,
                           void (frmProg::*action)());
    void addTabShortcut(const QKeySequence& keys, int by);
    QSize startSize() const;

    void showTab(int index);
    void StoreBlockFromControls(int block);
    void ShowBlock(int block);
    AlarmBlock& block(int number) { return m_programme.blocks[static_cast<std::size_t>(number)]; }

    FileRequest fileRequest() const;
    void openFile();
    void saveFile();
    void SaveProgramme(const QString& path);
    void LoadProgramme(const QString& path);
    void clearAll();
    void sendAll();
    bool ValidateProgramme();

    void lock();
    void restore();
    void takeHolidays(const HolidayTable& table);
    void tellFailure();
    /// Runs a box or a file dialog. False when the window is closed or gone by the time it returns:
    /// then nothing of it may be touched.
    bool ask(const std::function<void()>& box);

    const Texts m_texts;
    const ClockModel m_model;
    modGlobais& m_globais;
    StatusLog& m_log;
    Dialogs& m_dialogs;

    Programme m_programme;
    /// The block on screen; while the holidays are shown, the one that the grid still holds.
    int m_shownBlock = 0;
    ProgrammeExchange m_exchange;
    int m_boxesUp = 0;
    bool m_closed = false;
    QPointer<QWidget> m_focusBeforeLock;

    QTabBar* tabPrincipal = nullptr;
    QFrame* fraEnvolvente = nullptr;
    QFrame* fraCadroAvisos = nullptr;
    HolidayEditor* fraCadroFestVacac = nullptr;
    QGroupBox* fraAviso = nullptr;
    BlockHeader* m_header = nullptr;
    AlarmGrid* m_grid = nullptr;
    QPushButton* cmdAbrir = nullptr;
    QPushButton* cmdGardar = nullptr;
    QPushButton* cmdBorrar = nullptr;
    QPushButton* cmdEnviar = nullptr;
    QPushButton* cmdCancelar = nullptr;
};

class frmProgHCT7200 final : public frmProg {
    Q_OBJECT
public:
    frmProgHCT7200(QWidget* owner, frmCrono& crono, MessageLink& link, modGlobais& globais,
                   StatusLog& log, Dialogs& dialogs);
};

/// Of the HCT-7300, and of all other models too.
class frmProgHCT7300 final : public frmProg {
    Q_OBJECT
public:
    frmProgHCT7300(QWidget* owner, frmCrono& crono, MessageLink& link, modGlobais& globais,
                   StatusLog& log, Dialogs& dialogs);
};
