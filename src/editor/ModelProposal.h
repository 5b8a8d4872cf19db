#pragma once

#include "ClockModel.h"

#include <QString>

class RecentFiles;

/// A file does not tell its model.
namespace ModelProposal {

/// What the file was opened as last time, or else what its modes say; HCT-7200 for one that cannot
/// be read.
ClockModel of(const QString& path, const RecentFiles& recent);

} // namespace ModelProposal
