#pragma once

#include "Faults.h"
#include "PlayedSession.h"

#include <numeric>
#include <random>

/// Numbers that are the same from one seed with every library.
class Dice {
public:
    explicit Dice(quint32 seed) : m_engine(seed) {}
    /// 0 to `count` - 1.
    int below(int count)
    {
        return static_cast<int>(static_cast<quint32>(m_engine()) % static_cast<quint32>(count));
    }
    bool oneIn(int count) { return below(count) == 0; }

private:
    std::mt19937 m_engine;
};

/// An operator who does everything in any order, and a line that spoils one answer in a hundred.
/// Each step is one exchange.
class Soak {
public:
    explicit Soak(quint32 seed);

    static const char* nameOf(RequestKind kind);

    void step();
    /// Ends the connection and closes all windows.
    void closeAll();
    const char* violation() const { return m_session.invariants.violation(); }

    int exchanges() const { return std::accumulate(m_exchanges.begin(), m_exchanges.end(), 0); }
    int exchanges(RequestKind kind) const { return m_exchanges[static_cast<std::size_t>(kind)]; }
    int faultsOf(RequestKind kind) const { return m_faultsOf[static_cast<std::size_t>(kind)]; }
    int faults(Fault fault) const { return m_faults[static_cast<std::size_t>(fault)]; }
    /// How often the connection has ended without the operator.
    int connectionsLost() const { return m_connectionsLost; }
    const Shown& shown() const { return m_session.invariants.shown; }

private:
    void operate();
    void operateSetting();
    void operateRemote();
    void operateProgramme();
    void operateFirmware();
    void editProgramme();
    /// Ticks until a request is on the wire; false when the connection is over before.
    bool reachRequest();
    void answer();
    void spoil(Fault fault);
    /// The clock's good answer; when the fault is that it has not heard the request, or refuses it,
    /// it does not take it.
    QByteArray goodAnswer(Fault fault);
    /// What a fault has left for this moment happens.
    void happenLater(Moment moment);
    bool isLeftFor(Moment moment) const;
    void deliver(const QByteArray& wire);

    Dice m_dice;
    PlayedSession m_session;
    QList<QList<ExpectedSession::Line>> m_images;
    QList<LineEvent> m_later;
    std::array<int, requestKinds> m_exchanges{};
    std::array<int, requestKinds> m_faultsOf{};
    std::array<int, faultCount> m_faults{};
    int m_connectionsLost = 0;
};
