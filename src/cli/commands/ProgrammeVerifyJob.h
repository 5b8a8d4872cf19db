#pragma once

#include "ProgrammeInput.h"
#include "ProgrammeJob.h"

struct CommonOptions;

/// Compares the programme of a file with that of the clock.
class ProgrammeVerifyJob final : public ProgrammeJob {
    Q_OBJECT
public:
    /// `input` has no refusal.
    ProgrammeVerifyJob(Session& session, Console& console, const CommonOptions& options,
                       const ProgrammeInput& input);

private:
    void opened() override;

    const CommonOptions& m_options;
    const ProgrammeInput m_input;
};
