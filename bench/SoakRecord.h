#pragma once

#include "SoakResources.h"

#include <QList>
#include <QStringList>

class SoakClock;

/// What program and clock have counted, taken while no request is outstanding.
struct SoakCounts {
    qint64 sent = 0;
    qint64 ended = 0;
    qint64 answersTaken = 0;
    qint64 failures = 0;  ///< damaged or timed out
    qint64 forgotten = 0; ///< outstanding when the operator disconnected
    qint64 clockGood = 0;
    qint64 clockSpoiled = 0;
    qint64 clockWithheld = 0;
    /// Requests that reached the clock damaged, or under another address.
    qint64 clockRejected = 0;
    int vanished = 0;

    qint64 clockRequests() const { return clockGood + clockSpoiled + clockWithheld; }
    SoakCounts since(const SoakCounts& earlier) const;
};

/// Asks the clock. A request that is still on its way is waited for.
SoakCounts currentCounts(SoakClock& clock, int forgotten);

/// Collects what is measured, and judges it.
class SoakRecord {
public:
    /// In kB, since everything has been used for the first time.
    static constexpr qint64 allowedGrowth = 2048;
    /// In bytes. The log has no limit.
    static constexpr qint64 allowedPerLogCharacter = 4;

    /// A round with faults: what the clock counts must be what the program counts.
    void takeRound(const SoakCounts& round);
    /// A round without faults: every answer must have been taken, and nothing have failed.
    void takeQuietRound(const SoakCounts& round);
    void take(const SoakResources& resources) { m_resources += resources; }
    void fail(const QString& reason) { m_complaints += reason; }

    const QList<SoakResources>& resources() const { return m_resources; }
    int quietRounds() const { return m_quietRounds; }
    /// Everything that was not as it must be.
    QStringList complaints() const;

private:
    QList<SoakResources> m_resources;
    QStringList m_complaints;
    int m_quietRounds = 0;
};
