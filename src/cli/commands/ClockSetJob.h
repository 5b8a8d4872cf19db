#pragma once

#include "ClockJob.h"
#include "ClockSetting.h"
#include "CronoRegistration.h"

#include <QDateTime>

#include <optional>

class Console;
struct CommonOptions;
class Session;

/// Sets the clock, unless it is right already, and compares what it shows afterwards.
class ClockSetJob final : public ClockJob {
    Q_OBJECT
public:
    struct Wish {
        /// The time to set, as clocktime::onTheWall; nothing for the computer's.
        std::optional<QDateTime> at;
        /// A smaller difference, in seconds, is left as it is; nothing to set the clock in any
        /// case.
        std::optional<int> ifOffBy;
    };

    ClockSetJob(Session& session, Console& console, const CommonOptions& options, const Wish& wish);

    void begin() override;
    QString abandon() override;

private:
    bool isToBeSet() const;
    void set();
    void fail(LinkStatus status);
    void verify();
    void verificationFailed(LinkStatus status);
    /// How far the clock is from the time wanted; nothing when it shows none.
    std::optional<qint64> secondsAhead() const;
    void tell(bool changed, const QString& text);
    void stop();

    Session& m_session;
    Console& m_console;
    const CommonOptions& m_options;
    const Wish m_wish;
    ClockSetting m_setting;
    CronoRegistration m_registration;
    /// What had to be set was how far off.
    std::optional<qint64> m_before;
    /// The computer's time when the clock took the time.
    QDateTime m_accepted;
    int m_failures = 0;
};
