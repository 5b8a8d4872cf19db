#pragma once

#include "ClockJob.h"
#include "FirmwareTransfer.h"
#include "Progress.h"

#include <optional>

class Console;
class Session;

/// Sends a firmware image to the clock, as the firmware window would.
class FirmwareSendJob final : public ClockJob {
    Q_OBJECT
public:
    enum class Reset { Wanted, Omitted };

    /// `image` has lines and outlives this.
    FirmwareSendJob(Session& session, Console& console, const HexFile& image, Reset reset);

    /// "1 línea", "60 líneas".
    static QString linesText(int count);

    void begin() override;
    QString abandon() override;

private:
    void tellSent();
    void fail();
    /// What is known of the line behind those that the clock has acknowledged.
    enum class NextLine { Unconfirmed, Refused };
    /// What the clock has of the image, and how to go on.
    QString linesTaken(NextLine next) const;

    Session& m_session;
    Console& m_console;
    const HexFile& m_image;
    const bool m_reset;
    FirmwareTransfer m_transfer;
    std::optional<Progress> m_progress;
    /// How many lines the clock has acknowledged.
    int m_taken = 0;
};
