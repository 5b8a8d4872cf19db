#pragma once

#include "ExpectedSession.h"
#include "StatusLog.h"

#include <QStringList>

#include <functional>
#include <utility>

class ConnectionWorkflow;
class FakeTimer;
class FirmwareTransfer;
class MessageLink;
class PlayedClock;
class ProgrammeExchange;
class RemoteControl;
struct modGlobais;

/// The parts of the program that are compared; null for a window that is not open.
struct SessionParts {
    const MessageLink& link;
    const FakeTimer& tmrTemporizador;
    const modGlobais& globais;
    const ConnectionWorkflow& workflow;
    const ClockSetting* setting = nullptr;
    const RemoteControl* remote = nullptr;
    const ProgrammeExchange* programme = nullptr;
    const FirmwareTransfer* firmware = nullptr;
};

/// What the windows were told by signals.
struct Shown {
    int accepted = 0;
    int settingGaveUp = 0;
    int state = -1;
    int sent = 0;
    int programmeGaveUp = 0;
    int holidaysRead = 0;
    QByteArray holidays;
    int acknowledged = -1;
    int finished = 0;
    int firmwareFailed = 0;
};

/// What holds at each step of a connected program, whatever the operator does and the line
/// delivers: one request at a time, exactly the one that is due, with the right toggle bit; the
/// link free after each time-out; every counter, every line of the log and everything shown as the
/// answers say; what the clock holds after a write as it was to be written. The first violation is
/// kept.
class Invariants final : public StatusLog {
public:
    Invariants(const PlayedClock& clock, quint8 station) : m_clock(clock), m_station(station) {}

    /// One event of the outside world. All is compared at the end of the outermost.
    class Event {
    public:
        explicit Event(Invariants& invariants) : m_invariants(invariants)
        {
            ++m_invariants.m_events;
        }
        ~Event()
        {
            if (--m_invariants.m_events == 0)
                m_invariants.check();
        }
        Q_DISABLE_COPY_MOVE(Event)

    private:
        Invariants& m_invariants;
    };
    void setParts(std::function<SessionParts()> parts) { m_parts = std::move(parts); }

    ExpectedSession expected;
    Shown shown;

    /// The first violation; empty while there is none.
    const char* violation() const { return m_violation; }
    void require(bool condition, const char* what)
    {
        if (!condition && !*m_violation)
            m_violation = what;
    }

    /// The timer service calls a client, and the client has returned.
    void calls(Asker asker);
    void called();
    /// The program has written to the port.
    void wrote(const QByteArray& bytes);
    /// The clock has taken the request that is on the wire.
    void clockTook() { m_isTaken = true; }
    /// Bytes are about to arrive, and have been handled.
    void arrives(const QByteArray& bytes);
    bool isDelivering() const { return m_isDelivering; }
    void handled(bool wasDelivering) { m_isDelivering = m_isDelivering && wasDelivering; }
    void timesOut();
    void portOpened(bool isOpen);
    void portLost() { m_isOpen = false; }
    void connectionEnded();
    /// A window has been closed: its answer, if one is still to come, is nobody's.
    void released(Asker asker);
    void Rexistra(const QString& message, bool show) override;

    /// A request awaits its answer.
    bool isAwaiting() const { return m_isAwaiting; }
    /// The request sent last.
    const ExpectedRequest& request() const { return m_request; }
    bool isOpen() const { return m_isOpen; }
    bool isConnected() const { return m_isConnected; }

private:
    void check();
    void conclude(const ExpectedAnswer& answer);
    void checkLink(const SessionParts& parts);
    void checkConnection(const SessionParts& parts);
    void checkShown();
    void checkWindows(const SessionParts& parts);
    void checkLog();
    bool isProgrammeHeld() const;
    bool isFirmwareHeld() const;

    const PlayedClock& m_clock;
    const quint8 m_station;
    std::function<SessionParts()> m_parts;
    int m_events = 0;
    const char* m_violation = "";

    bool m_isOpen = false;
    bool m_isConnected = false;
    bool m_toggle = false;
    bool m_isCalling = false;
    bool m_isAwaiting = false;
    /// The answer's receiver has not returned yet: the link is busy until then.
    bool m_isDelivering = false;
    Asker m_asker = Asker::Nobody;
    ExpectedRequest m_request;
    QByteArray m_wanted;
    QByteArray m_written;
    QByteArray m_heard;
    bool m_isTaken = false;
    /// No answer to a write was good without the clock having taken the request.
    bool m_isProgrammeHonest = true;
    bool m_isFirmwareHonest = true;
    std::array<QByteArray, 3> m_blocks;
    QStringList m_log;
};
