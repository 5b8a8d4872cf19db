#pragma once

#include "ClockModel.h"

#include <QObject>

#include <functional>

class QAction;
class QActionGroup;
class QMenu;
class frmEditor;

/// The menus of an editor window.
class EditorMenus final : public QObject {
    Q_OBJECT
public:
    /// `window` becomes the owner.
    explicit EditorMenus(frmEditor& window);

    /// Enables, names and ticks what depends on the document and on the page shown.
    void update();
    /// The entries for rows, at this place of the screen.
    void openRowMenu(const QPoint& globalPosition);

private:
    void makeFile();
    void makeEdit();
    void makeCopyTo();
    void makeModels();
    void makeView();
    void makeHelp();
    QAction* add(QMenu& menu, const QString& name, const QString& text,
                 const QList<QKeySequence>& keys, const std::function<void()>& run);
    /// An entry that needs the alarms of an output.
    QAction* addForRows(const QString& name, const QString& text, const QList<QKeySequence>& keys,
                        const std::function<void()>& run);

    frmEditor& m_window;
    QMenu* m_edit = nullptr;
    QMenu* m_copyTo = nullptr;
    QAction* m_undo = nullptr;
    QAction* m_redo = nullptr;
    QActionGroup* m_models = nullptr;
    QActionGroup* m_tabs = nullptr;
    QList<QAction*> m_newFor;
    QList<QAction*> m_forRows;
};
