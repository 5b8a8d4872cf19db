#pragma once

#include "ProgrammeJob.h"

/// Saves the programme of the clock to a file, as the programming window would.
class ProgrammeReadJob final : public ProgrammeJob {
    Q_OBJECT
public:
    ProgrammeReadJob(Session& session, Console& console, const QString& path);

private:
    void opened() override;
    QString giveUp() override;

    const QString m_path;
};
