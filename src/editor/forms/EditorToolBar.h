#pragma once

#include <QToolBar>

class QMainWindow;

/// The usual actions of an editor window as pictures. They are those of its menus; their names, as
/// they are now, and their keys are the tool tips. It never takes the focus from the field that is
/// being edited.
class EditorToolBar final : public QToolBar {
    Q_OBJECT
public:
    /// Finds the actions by their object names; `window` has its menus.
    explicit EditorToolBar(QMainWindow& window);
};
