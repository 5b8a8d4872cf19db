#pragma once

class QKeyEvent;
class QWidget;

/// The access keys (Alt and the underlined letter) of one window inside the main window. The
/// toolkit takes a letter that a window shares with the menu bar for ambiguous and lets the menu
/// win; with these the window that has the focus comes first, as its operator expects.
namespace accesskeys {

/// What an access key leads to: a button, which it presses, or else the field of a caption or the
/// first control of a frame.
struct Target {
    QWidget* control = nullptr;
    bool isPressed = false;

    explicit operator bool() const { return control != nullptr; }
};

/// What the key leads to in `window`, of what can be used now; nothing when it is another's key.
Target target(const QWidget& window, const QKeyEvent& event);

/// Whether the Tab key could lead to it now.
bool takesFocus(const QWidget& widget);

/// Gives the control the focus and presses it where that is due.
void activate(const Target& target);

} // namespace accesskeys
