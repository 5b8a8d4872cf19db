#pragma once

#include <QPointer>
#include <QWidget>

class QMdiArea;
class QMdiSubWindow;

/// Base class of the modeless windows in the main window's MDI area. Show, hide and close them with
/// the functions here: they act on the sub-window, because closing the form itself leaves an empty
/// frame. Closing tells who asked for it, which a close event does not. Access keys of the window
/// come before those of the menu bar, and Enter presses the button that has the focus.
class MdiForm : public QWidget {
    Q_OBJECT
public:
    enum class CloseReason { Operator, Code, Shutdown };

    /// `area` becomes the owner. The form is hidden until showForm puts it into a sub-window.
    explicit MdiForm(QMdiArea& area);
    ~MdiForm() override;

    /// Shows the window in front and gives it the focus; restores it if it was minimised.
    void showForm();
    /// Hides the window. The window that was used before it gets the focus.
    void hideForm();
    bool isFormVisible() const;

    /// Asks queryUnload whether the window may unload. False while it is already being asked.
    bool mayUnload(CloseReason reason);
    /// Asks queryUnload, and unloads unless it refuses: hides the window, emits `unloaded`, and
    /// deletes the form later. False when it was refused. A second call while the first is asking
    /// does nothing and gives false.
    bool closeWindow(CloseReason reason);
    /// Unloads without asking: when the program must end.
    void unloadNow();

signals:
    void unloaded();

protected:
    /// Whether the window may unload. A form that hides instead of unloading does so here and
    /// returns false.
    virtual bool queryUnload(CloseReason reason);
    /// Called once, before `unloaded`: removes the form from the timer service, releases exchanges.
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
    /// Made when the form is first shown.
    QPointer<QMdiSubWindow> m_frame;
    QPointer<QWidget> m_focusWhenHidden;
    bool m_asking = false;
    bool m_unloaded = false;
};
