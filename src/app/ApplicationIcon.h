#pragma once

#include <QIcon>

/// The program's icon, with pictures from 16 to 256 pixels. A picture is read when it is first
/// needed: some desktops need few or none, and the program starts sooner.
QIcon applicationIcon();
