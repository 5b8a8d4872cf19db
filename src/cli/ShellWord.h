#pragma once

#include <QString>

/// The word as it is typed into a shell: in quotes where the shell would take it apart. On Windows
/// for cmd and PowerShell, else for any POSIX shell. A file name that begins with "-" begins with
/// "./-" then, since it would be taken for an option.
QString shellWord(QString word);
