#pragma once

#include "ProgrammeJob.h"

/// Compares the programme of a file with that of the clock.
class ProgrammeVerifyJob final : public ProgrammeJob {
    Q_OBJECT
public:
    /// `text` is that of a file that is not misread, see ProgrammeCheck.
    ProgrammeVerifyJob(Session& session, Console& console, const QByteArray& text);

private:
    void opened() override;

    const QByteArray m_text;
};
