#pragma once

#include <QMap>
#include <QStringList>

#include <random>

class SoakClock;

/// Chooses faults for the simulated clock, and adds up how often each kind has struck. The choice
/// depends on the seed alone.
class SoakFaults {
public:
    struct Score {
        int rounds = 0;
        int struck = 0;
    };

    /// `perMille` is the number of requests of a thousand that a fault strikes, over all kinds.
    /// Now and then there are more for one kind of request, and seldom the line goes. With 0 there
    /// are none.
    SoakFaults(SoakClock& clock, quint32 seed, int perMille);

    /// Puts several kinds into force.
    void choose();
    /// Ends what is in force.
    void clear();

    /// By the kinds, those that have not struck included.
    const QMap<QString, Score>& scores() const { return m_scores; }

private:
    /// From 0 to `count` - 1. The same on every machine, which distributions are not.
    int below(int count);
    QString withValue(const QString& kind);
    void add(const QString& kind, int perMille, const QString& clause = {});

    SoakClock& m_clock;
    const int m_perMille;
    std::mt19937 m_generator;
    QMap<QString, Score> m_scores;
};
