#pragma once

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

    enum class Fault {
        RequestLost,
        AnswerLost,
        LateBeforeNextRequest,
        LateAfterNextRequest,
        CutShort,
        WrongStation,
        WrongLength,
        WrongSum,
        WrongEnd,
        WrongCode,
        WrongSelector,
        Refused,
        BitChanged,
        Doubled,
        NoiseBefore,
        NoiseAfter,
        NoiseAlone,
        PortLostInAnswer,
        /// Chosen before the request; the others after it.
        PortLostInRequest,
    };
    static constexpr int faultKinds = 19;

    /// The names of the kinds of exchanges and faults, in the order of their enumerations.
    static const char* nameOf(ExchangeKind kind);
    static const char* nameOf(Fault fault);

    void step();
    /// Ends the connection and closes all windows.
    void closeAll();
    const char* violation() const { return m_session.invariants.violation(); }

    int exchanges() const { return std::accumulate(m_exchanges.begin(), m_exchanges.end(), 0); }
    int exchanges(ExchangeKind kind) const { return m_exchanges[static_cast<std::size_t>(kind)]; }
    int faultsOf(ExchangeKind kind) const { return m_faultsOf[static_cast<std::size_t>(kind)]; }
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
    void deliver(const QByteArray& frame);
    /// The answer with something in it that is wrong; byte `at` for BitChanged.
    QByteArray changed(QByteArray wire, Fault fault, int at);
    QByteArray noise();

    Dice m_dice;
    PlayedSession m_session;
    QList<QList<ExpectedSession::Line>> m_images;
    QByteArray m_late;
    bool m_isLateAfterNext = false;
    std::array<int, exchangeKinds> m_exchanges{};
    std::array<int, exchangeKinds> m_faultsOf{};
    std::array<int, faultKinds> m_faults{};
    int m_connectionsLost = 0;
};
