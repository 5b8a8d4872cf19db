#pragma once

#include <QString>

/// Whether two paths lead to one file, through links of either kind too. Without such a file:
/// whether one would be made that both lead to. An empty path leads nowhere.
bool isSameFile(const QString& one, const QString& other);
