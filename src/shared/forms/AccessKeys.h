#pragma once

class QKeyEvent;
class QWidget;

/// The access keys (Alt and the underlined letter) of an MDI window. When a window and the menu bar
/// have the same letter, the toolkit chooses the menu. With these functions the window that has the
/// focus comes first.
namespace accesskeys {

/// The target of an access key: a button, which is pressed, or the field of a caption or the first
/// control of a frame, which get the focus.
struct Target {
    QWidget* control = nullptr;
    bool isPressed = false;

    explicit operator bool() const { return control != nullptr; }
};

/// The visible and enabled target of the key in `window`; none when the key is not one of its
/// access keys.
Target target(const QWidget& window, const QKeyEvent& event);

/// Whether the Tab key can give it the focus now.
bool takesFocus(const QWidget& widget);

/// Gives the control the focus, and presses it if it is a button.
void activate(const Target& target);

} // namespace accesskeys
