#pragma once

#include <QIcon>

/// The icon of the program that has the pictures :/icons/NAME-16.png to NAME-256.png. A picture is
/// read when it is first needed: some desktops need few or none, and the program starts sooner.
QIcon applicationIcon(const QString& name);
