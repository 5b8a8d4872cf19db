#pragma once

#include <QIcon>

/// The program's icon, with a picture for each size from 16 to 256 that desktops ask for. A picture
/// is read when it is asked for: some desktops want few or none, and the program starts sooner.
QIcon applicationIcon();
