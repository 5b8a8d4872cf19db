#pragma once

#include "ProgrammeInput.h"
#include "ProgrammeJob.h"
#include "Progress.h"

#include <optional>

struct CommonOptions;

/// Sends the programme of a file to the clock, as the programming window would, reads back what the
/// clock holds, and compares.
class ProgrammeWriteJob final : public ProgrammeJob {
    Q_OBJECT
public:
    enum class Verification { Wanted, Omitted };

    /// `input` has no refusal.
    ProgrammeWriteJob(Session& session, Console& console, const CommonOptions& options,
                      const ProgrammeInput& input, Verification verification);

private:
    enum class Step { Reading, Sending, Verifying };

    void opened() override;
    void sent();
    QString giveUp() override;

    const CommonOptions& m_options;
    const ProgrammeInput m_input;
    const Verification m_verification;
    Step m_step = Step::Reading;
    std::optional<Progress> m_progress;
};
