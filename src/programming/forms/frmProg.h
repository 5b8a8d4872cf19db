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

/// The programming window of both models: shows and edits the clock's programme, saves it to files,
/// loads it and sends it. Make it with `new` and show it with open(); it deletes itself when
/// closed.
class frmProg : public QDialog {
    Q_OBJECT
public:
    void done(int result) override;

protected:
    struct Texts {
        QString caption;
        /// "HCT-7200"
        QString clock;
        /// The name of its files in the file dialogs.
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
    /// Runs a box or a file dialog. False when the window has been closed or deleted meanwhile: the
    /// caller must then return without touching it.
    bool ask(const std::function<void()>& box);

    const Texts m_texts;
    const ClockModel m_model;
    modGlobais& m_globais;
    StatusLog& m_log;
    Dialogs& m_dialogs;

    Programme m_programme;
    /// The block in the grid, also while the holidays are shown.
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

/// For the HCT-7300 and for every other model but the HCT-7200.
class frmProgHCT7300 final : public frmProg {
    Q_OBJECT
public:
    frmProgHCT7300(QWidget* owner, frmCrono& crono, MessageLink& link, modGlobais& globais,
                   StatusLog& log, Dialogs& dialogs);
};
