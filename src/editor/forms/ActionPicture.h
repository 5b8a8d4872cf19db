#pragma once

#include <QIcon>

enum class ActionPicture { New, Open, Save, Undo, Redo, Cut, Copy, Paste, Print, Series, Compare };

/// A picture of an action, drawn as lines in the colour of the texts: sharp at every size, seen
/// well on a light and on a dark background, and the same on every desktop, whatever its theme has.
QIcon actionIcon(ActionPicture picture);
