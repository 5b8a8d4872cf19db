#include "SoakRecord.h"

#include "LinkTally.h"
#include "SoakClock.h"

#include <QThread>

using namespace Qt::StringLiterals;

namespace {

qint64 numberIn(const QMap<QString, QString>& state, const char* key)
{
    return state.value(QString::fromLatin1(key)).toLongLong();
}

SoakCounts countsNow(SoakClock& clock, int forgotten)
{
    const QMap<QString, QString> state = clock.state();
    const LinkTally& link = LinkTally::ofThisProcess();
    SoakCounts counts;
    counts.sent = link.sent;
    counts.ended = link.ended();
    counts.answersTaken = link.answered;
    counts.failures = link.damaged + link.timedOut;
    counts.forgotten = forgotten;
    counts.clockGood = numberIn(state, "good");
    counts.clockSpoiled = numberIn(state, "spoiled");
    counts.clockWithheld = numberIn(state, "withheld");
    counts.clockRejected = numberIn(state, "damaged") + numberIn(state, "foreign");
    counts.vanished = clock.vanished();
    return counts;
}

} // namespace

SoakCounts SoakCounts::since(const SoakCounts& earlier) const
{
    SoakCounts difference = *this;
    difference.sent -= earlier.sent;
    difference.ended -= earlier.ended;
    difference.answersTaken -= earlier.answersTaken;
    difference.failures -= earlier.failures;
    difference.forgotten -= earlier.forgotten;
    difference.clockGood -= earlier.clockGood;
    difference.clockSpoiled -= earlier.clockSpoiled;
    difference.clockWithheld -= earlier.clockWithheld;
    difference.clockRejected -= earlier.clockRejected;
    difference.vanished -= earlier.vanished;
    return difference;
}

SoakCounts currentCounts(SoakClock& clock, int forgotten)
{
    // Two equal counts, some time apart.
    constexpr int milliseconds = 50;
    SoakCounts before = countsNow(clock, forgotten);
    for (;;) {
        QThread::msleep(milliseconds);
        const SoakCounts now = countsNow(clock, forgotten);
        if (now.clockRequests() == before.clockRequests())
            return now;
        before = now;
    }
}

void SoakRecord::takeRound(const SoakCounts& round)
{
    if (round.sent != round.ended + round.forgotten)
        fail(u"%1 requests were sent, %2 have ended, %3 were forgotten"_s.arg(round.sent)
                 .arg(round.ended)
                 .arg(round.forgotten));
    const qint64 lost = round.sent - round.clockRequests() - round.clockRejected;
    // What the clock has not seen, because its line was going or it came too late to read it before
    // the next request discarded it, can only have timed out.
    if (lost < 0 || lost > round.failures + round.forgotten)
        fail(u"%1 requests were sent, the clock has seen %2, %3 have failed"_s.arg(round.sent)
                 .arg(round.clockRequests() + round.clockRejected)
                 .arg(round.failures));
    if (round.answersTaken > round.clockGood + round.clockSpoiled)
        fail(u"%1 answers were taken, the clock has sent %2"_s.arg(round.answersTaken)
                 .arg(round.clockGood + round.clockSpoiled));
}

void SoakRecord::takeQuietRound(const SoakCounts& round)
{
    ++m_quietRounds;
    takeRound(round);
    if (round.failures != 0 || round.answersTaken + round.forgotten != round.clockGood)
        fail(u"without faults %1 answers were taken, %2 failed and %3 were forgotten of %4"_s
                 .arg(round.answersTaken)
                 .arg(round.failures)
                 .arg(round.forgotten)
                 .arg(round.clockGood));
}

QStringList SoakRecord::complaints() const
{
    QStringList all = m_complaints;
    if (m_resources.isEmpty())
        return all + QStringList{u"nothing was measured: it was too short"_s};
    const SoakResources& first = m_resources.constFirst();
    const SoakResources& last = m_resources.constLast();
    if (last.descriptors.size() != first.descriptors.size())
        all += u"open first: %1; last: %2"_s.arg(first.descriptors.join(u' '),
                                                 last.descriptors.join(u' '));
    const qint64 growth = last.ownKilobytes - first.ownKilobytes;
    const qint64 allowed =
        allowedGrowth + allowedPerLogCharacter * (last.logCharacters - first.logCharacters) / 1024;
    if (growth > allowed)
        all += u"memory has grown by %1 kB, %2 are allowed"_s.arg(growth).arg(allowed);
    return all;
}
