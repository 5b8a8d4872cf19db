#pragma once

#include "ProgrammeDocument.h"
#include "RowList.h"

#include <QMainWindow>

class CountingDialogs;
class DocumentFiles;
class EditorDocks;
class EditorMenus;
class NoticeBar;
class ProgrammePages;
class QLabel;
class QPushButton;
class RowCommands;
class WallPrinting;

/// The window of one document. It deletes itself when closed; it does not close while a box is up,
/// and asks before work is lost.
class frmEditor final : public QMainWindow {
    Q_OBJECT
public:
    frmEditor(ClockModel model, CountingDialogs& dialogs);
    ~frmEditor() override;

    ProgrammeDocument& document() { return *m_document; }
    /// Whether it holds nothing: a new programme that was never edited.
    bool isUntouched() const;

    /// Takes the programme of a file, and tells what could not be read. False, and nothing changed,
    /// when the file cannot be read; the operator has been told.
    bool open(const QString& path, ClockModel model);
    /// Takes work that was not saved.
    void recover(const UnsavedWork& work);
    /// Asks about work that is not saved; false when the window must stay.
    bool mayClose();
    /// Closes without asking.
    void closeNow();

    QString sheetTitle() const;
    void setSheetTitle(const QString& title);

signals:
    void newRequested(ClockModel model);
    void openRequested();
    void quitRequested();
    void recentMenuOpened(QMenu& menu);
    void sheetTitleEdited(const QString& title);
    void filesDropped(const QStringList& paths);
    void closed();

public slots:
    void showMessage(const QString& text);

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void build();
    void makeStatusBar();
    void connectMenus();
    void showSelection();
    /// Makes room for all pages, as far as the screen has it.
    void growToPages();
    void showFile();
    void save(bool (DocumentFiles::*how)());
    void showState();
    void undo();
    void redo();
    /// Runs a step of undo or redo and shows what it has changed.
    void step(const QString& done, const std::function<void()>& run);
    void goTo(const RowList::Target& target);
    void changeModel(ClockModel model);
    void compare();
    void showAbout();
    void noticeChangeOutside();
    void openAgain();

    CountingDialogs& m_dialogs;
    ProgrammeDocument* m_document;
    DocumentFiles* m_files;
    ProgrammePages* m_pages;
    RowCommands* m_rows;
    WallPrinting* m_paper;
    NoticeBar* m_notice;
    EditorDocks* m_docks;
    EditorMenus* m_menus;
    QLabel* m_selection = nullptr;
    QLabel* m_modelLabel = nullptr;
    QPushButton* m_problemCount = nullptr;
    bool m_mayClose = false;
    bool m_isChangeOutsideTold = false;
};
