#pragma once

#include "ProgrammeJob.h"
#include "Progress.h"

#include <optional>

/// Sends the programme of a file to the clock, as the programming window would, reads back what the
/// clock holds, and compares.
class ProgrammeWriteJob final : public ProgrammeJob {
    Q_OBJECT
public:
    enum class Verification { Wanted, Omitted };

    /// `text` is that of a file that is not misread, see ProgrammeCheck.
    ProgrammeWriteJob(Session& session, Console& console, const QByteArray& text,
                      Verification verification);

private:
    enum class Step { Reading, Sending, Verifying };

    void opened() override;
    void sent();
    QString giveUp() override;

    const QByteArray m_text;
    const Verification m_verification;
    Step m_step = Step::Reading;
    std::optional<Progress> m_progress;
};
