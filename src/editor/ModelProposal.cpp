#include "ModelProposal.h"

#include "ProgrammeFile.h"
#include "RecentFiles.h"
#include "WholeFile.h"

ClockModel ModelProposal::of(const QString& path, const RecentFiles& recent)
{
    if (const auto known = recent.find(path))
        return known->model;
    const auto text = WholeFile::read(path, ProgrammeFile::maximumBytes);
    return ProgrammeFile::likelyModel(text.value_or(QByteArray()));
}
