#pragma once

#include "ClockJob.h"

#include <QJsonObject>

class Console;
class Session;

/// Tells the clock's state, once or at each change.
class StatusJob final : public ClockJob {
    Q_OBJECT
public:
    enum class Watch { Once, EachChange };

    StatusJob(Session& session, Console& console, Watch watch);

    void begin() override;
    QString abandon() override;
    bool isEndless() const override { return m_watch == Watch::EachChange; }

private:
    void tellState();

    Session& m_session;
    Console& m_console;
    const Watch m_watch;
    /// Without the difference to the computer, which is no change of the clock.
    QJsonObject m_told;
};
