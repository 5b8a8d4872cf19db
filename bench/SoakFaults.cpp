#include "SoakFaults.h"

#include "SoakClock.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// Each disturbs an answer or two.
const QStringList passing{
    u"silent"_s, u"lost"_s,     u"late 300"_s, u"late 1200"_s, u"checksum"_s,  u"station"_s,
    u"noise"_s,  u"split 1"_s,  u"short"_s,    u"long 300"_s,  u"truncate"_s,  u"echo"_s,
    u"code"_s,   u"refuse 3"_s, u"end"_s,      u"length"_s,    u"length -2"_s, u"doubled"_s,
    u"joined"_s, u"changed"_s,  u"stray"_s,
};
/// These end the connection.
const QStringList ending{u"vanish 300"_s, u"unplug"_s};
constexpr int kindsAtATime = 3;
/// How much rarer the line goes than an answer is spoiled.
constexpr int rarity = 5;
/// Now and then so many answers to one kind of request are spoiled that the program gives up.
constexpr int stormEvery = 5;
constexpr int stormPerMille = 400;
const QStringList requests{u"identification"_s, u"general"_s, u"clock"_s,
                           u"mode"_s,           u"outputs"_s, u"days-read"_s,
                           u"block"_s,          u"days"_s,    u"firmware"_s};

} // namespace

SoakFaults::SoakFaults(SoakClock& clock, quint32 seed, int perMille)
    : m_clock(clock), m_perMille(perMille), m_generator(seed)
{
    m_clock.command(u"seed %1"_s.arg(seed));
    for (const QString& kind : passing + ending)
        m_scores.insert(kind, {});
}

void SoakFaults::choose()
{
    if (m_perMille == 0)
        return;
    const int share = (m_perMille + kindsAtATime - 1) / kindsAtATime;
    QStringList kinds = passing;
    for (int count = 0; count < kindsAtATime; ++count)
        add(kinds.takeAt(below(static_cast<int>(kinds.size()))), share);
    add(ending[below(static_cast<int>(ending.size()))],
        std::max(1, m_perMille / rarity / kindsAtATime));
    if (below(stormEvery) == 0)
        add(kinds.first(), stormPerMille,
            u" on "_s + requests[below(static_cast<int>(requests.size()))]);
}

void SoakFaults::clear()
{
    static const QString struck = u", struck "_s;
    for (const QString& line : m_clock.command(u"faults"_s)) {
        // The last one, because some names begin with others.
        Score* score = nullptr;
        for (auto kind = m_scores.begin(); kind != m_scores.end(); ++kind) {
            if (line.startsWith(kind.key()))
                score = &kind.value();
        }
        if (!score)
            qFatal("unknown fault: %s", qPrintable(line));
        ++score->rounds;
        score->struck += line.mid(line.lastIndexOf(struck) + struck.size()).chopped(1).toInt();
    }
    m_clock.command(u"faults clear"_s);
}

int SoakFaults::below(int count)
{
    return static_cast<int>((quint64{m_generator()} * static_cast<quint64>(count)) >> 32);
}

QString SoakFaults::withValue(const QString& kind)
{
    if (kind == u"changed"_s)
        return u"%1 %2 xor %3"_s.arg(kind).arg(below(12)).arg(1 + below(255));
    if (kind == u"stray"_s)
        return u"%1 %2"_s.arg(kind).arg(below(20'000) - 5000);
    if (kind == u"short"_s)
        return u"%1 %2"_s.arg(kind).arg(below(6));
    if (kind == u"truncate"_s)
        return u"%1 %2"_s.arg(kind).arg(below(40));
    if (kind == u"unplug"_s)
        return u"%1 %2 300"_s.arg(kind).arg(below(12));
    return kind;
}

void SoakFaults::add(const QString& kind, int perMille, const QString& clause)
{
    m_clock.command(u"fault %1 %2 per mille%3"_s.arg(withValue(kind)).arg(perMille).arg(clause));
}
