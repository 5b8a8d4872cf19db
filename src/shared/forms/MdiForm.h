#pragma once

#include <QPointer>
#include <QWidget>

class QMdiArea;
class QMdiSubWindow;

/// A modeless window of the main window's MDI area. Showing, hiding and closing go through its
/// sub-window, because the toolkit leaves an empty frame behind when the form itself is closed; and
/// who asked for the closing is passed on, which a close event does not tell. Its access keys go
/// before those of the menu bar, and Enter presses the button that has the focus.
class MdiForm : public QWidget {
    Q_OBJECT
public:
    enum class CloseReason { Operator, Code, Shutdown };

    /// The form belongs to `area`, hidden until showForm puts it into a sub-window there.
    explicit MdiForm(QMdiArea& area);
    ~MdiForm() override;

    /// Shows the window, out of its minimised state if need be, in front and with the focus.
    void showForm();
    /// Whatever window was used before gets the focus.
    void hideForm();
    bool isFormVisible() const;

    /// Whether the window would unload now; changes nothing else. False while it is being asked.
    bool mayUnload(CloseReason reason);
    /// Asks queryUnload and, unless it refuses, unloads: the window disappears at once, `unloaded`
    /// is emitted, and the form is deleted when the events that are running have ended. False when
    /// it was refused. A second call while the first is asking does nothing.
    bool closeWindow(CloseReason reason);
    /// Unloads without asking, as when the program has to end.
    void unloadNow();

signals:
    void unloaded();

protected:
    /// Whether the window may unload; a form that hides itself instead does so here and refuses.
    virtual bool queryUnload(CloseReason reason);
    /// The last chance to let go of what the form holds, its place in the timer service above all;
    /// called once, before `unloaded`.
    virtual void unload() {}

    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void makeFrame();
    QPoint placeBesideOthers() const;
    QWidget& focusTarget();
    void activateLastUsed();

    QMdiArea& m_area;
    /// Made when the form is first shown: until then it costs nothing.
    QPointer<QMdiSubWindow> m_frame;
    QPointer<QWidget> m_focusWhenHidden;
    bool m_asking = false;
    bool m_unloaded = false;
};
