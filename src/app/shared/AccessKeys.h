#pragma once

class QKeyEvent;
class QWidget;

/// The access keys (Alt and the underlined letter) of one window inside the main window. The
/// toolkit takes a letter that a window shares with the menu bar for ambiguous and lets the menu
/// win; with these the window that has the focus comes first, as its operator expects.
namespace accesskeys {

/// The button, captioned field or frame of `window` that the key belongs to and that can be used
/// now; nullptr when there is none.
QWidget* target(const QWidget& window, const QKeyEvent& event);

/// Presses a button; gives anything else the focus.
void activate(QWidget& target);

} // namespace accesskeys
