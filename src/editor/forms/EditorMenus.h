#pragma once

#include "ClockModel.h"

#include <QObject>

#include <functional>

class QAction;
class QActionGroup;
class EditorDocks;
class ProgrammeDocument;
class ProgrammePages;
class QMainWindow;
class QMenu;
class RowCommands;
class WallPrinting;

/// The menus and the tool bar of an editor window. What concerns rows, pages, panels and paper they
/// do themselves; they tell what else the operator wants.
class EditorMenus final : public QObject {
    Q_OBJECT
public:
    struct Parts {
        ProgrammeDocument& document;
        ProgrammePages& pages;
        RowCommands& rows;
        EditorDocks& docks;
        WallPrinting& paper;
    };

    /// `window` becomes the owner.
    EditorMenus(QMainWindow& window, const Parts& parts);

    /// Enables, names and ticks what depends on the document and on the page shown.
    void update();
    /// The entries for rows, at this place of the screen.
    void openRowMenu(const QPoint& globalPosition);

signals:
    void newRequested(ClockModel model);
    void openRequested();
    void recentMenuOpened(QMenu& menu);
    void saveRequested();
    void saveAsRequested();
    void compareRequested();
    void quitRequested();
    void undoRequested();
    void redoRequested();
    void modelChosen(ClockModel model);
    void aboutRequested();

private:
    void makeFile();
    void makeEdit();
    void makeCopyTo();
    void makeModels();
    void makeView();
    void makeHelp();
    void makeToolBar();
    QAction* add(QMenu& menu, const QString& name, const QString& text,
                 const QList<QKeySequence>& keys, const std::function<void()>& run);
    /// An entry that needs the alarms of an output.
    QAction* addForRows(const QString& name, const QString& text, const QList<QKeySequence>& keys,
                        const std::function<void()>& run);

    QMainWindow& m_window;
    const Parts m_parts;
    QMenu* m_edit = nullptr;
    QMenu* m_copyTo = nullptr;
    QMenu* m_view = nullptr;
    /// In the tool bar alone: a new programme for the model of this one.
    QAction* m_new = nullptr;
    QAction* m_undo = nullptr;
    QAction* m_redo = nullptr;
    QActionGroup* m_models = nullptr;
    QActionGroup* m_tabs = nullptr;
    QList<QAction*> m_newFor;
    QList<QAction*> m_forRows;
};
