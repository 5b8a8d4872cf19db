#include "PlayedSession.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

namespace {

/// What can happen, also while a box is open up to EndOfProgram. Each is one byte of the input;
/// what it needs to know follows.
enum class Happening : quint8 {
    Ticks,
    GoodAnswer,
    FirstBytesOfAnswer,
    RestOfAnswer,
    Refusal,
    ChangedAnswer,
    Frame,
    Noise,
    TimeOut,
    LossOfPort,
    LossInNextRequest,
    PostedEvents,
    EndOfBox,
    EndOfProgram,
    // The operator.
    Connect,
    ConnectThroughModem,
    Disconnect,
    CloseConnection,
    RefuseToOpen,
    DestroyAtOnce,
    SetClock,
    SetClockByComputer,
    CloseSetting,
    OpenRemote,
    SetManual,
    Toggle,
    CloseRemote,
    OpenProgramme,
    ReadHolidays,
    EditProgramme,
    SendProgramme,
    CloseProgramme,
    SendFirmware,
    InterruptFirmware,
    CloseFirmware,
};
constexpr int happenings = int(Happening::CloseFirmware) + 1;
constexpr int happeningsUnderABox = int(Happening::EndOfProgram) + 1;
constexpr int mostBoxes = 4;

/// The bytes of an input, one after the other; 0 behind its end.
class Script {
public:
    Script(const quint8* data, std::size_t size) : m_at(data), m_end(data + size) {}

    bool isOver() const { return m_at == m_end; }
    quint8 next() { return isOver() ? quint8(0) : *m_at++; }
    int below(int count) { return next() % count; }
    QByteArray bytes(int count)
    {
        QByteArray taken;
        while (count-- > 0 && !isOver())
            taken.append(static_cast<char>(next()));
        return taken;
    }

private:
    const quint8* m_at;
    const quint8* const m_end;
};

class Player {
public:
    explicit Player(Script script) : m_script(script), m_session(m_script.below(2) == 0 ? 30 : 31)
    {
        m_session.windows.whileBoxIsOpen = [this] {
            if (m_boxes < mostBoxes) {
                ++m_boxes;
                play();
                --m_boxes;
            }
        };
    }

    /// Until the end of the input, the program or the innermost box.
    void play()
    {
        while (!m_script.isOver() && !m_session.isOver()) {
            const auto happening = static_cast<Happening>(
                m_script.below(m_boxes > 0 ? happeningsUnderABox : happenings));
            if (happening == Happening::EndOfBox && m_boxes > 0)
                return;
            happen(happening);
            if (*m_session.invariants.violation()) {
                std::fprintf(stderr, "%s\n", m_session.invariants.violation());
                std::abort();
            }
        }
    }

private:
    void happen(Happening happening)
    {
        if (happening <= Happening::LossInNextRequest)
            return happenOnTheLine(happening);
        if (happening < Happening::SetClock)
            return happenToTheProgram(happening);
        if (happening < Happening::OpenProgramme)
            return operateSmallWindows(happening);
        operateLargeWindows(happening);
    }

    void happenOnTheLine(Happening happening)
    {
        const bool isAwaiting = m_session.invariants.isAwaiting();
        switch (happening) {
        case Happening::Ticks:
            for (int ticks = m_script.below(16); ticks >= 0; --ticks)
                m_session.tick();
            return;
        case Happening::GoodAnswer:
            if (isAwaiting)
                m_session.arrive(m_session.clockAnswers());
            return;
        case Happening::FirstBytesOfAnswer:
            if (isAwaiting)
                m_rest = m_session.clockAnswers();
            arriveFirst(m_script.next());
            return;
        case Happening::RestOfAnswer: return arriveFirst(m_rest.size());
        case Happening::Refusal: return m_session.arrive(m_session.clockRefuses());
        case Happening::ChangedAnswer: return arriveChanged();
        case Happening::Frame: return arriveFrame();
        case Happening::Noise: return m_session.arrive(m_script.bytes(m_script.below(32)));
        case Happening::TimeOut: return m_session.timeOut();
        case Happening::LossOfPort: return m_session.losePort();
        default: return m_session.losePortAfterWrites(1 + m_script.below(2));
        }
    }
    void arriveFirst(qsizetype count)
    {
        const QByteArray now = m_rest.left(count);
        m_rest.remove(0, now.size());
        m_session.arrive(now);
    }
    void arriveChanged()
    {
        if (!m_session.invariants.isAwaiting())
            return;
        QByteArray wire = m_session.clockAnswers();
        char& byte = wire[m_script.below(static_cast<int>(wire.size()))];
        byte = static_cast<char>(byte ^ m_script.next());
        m_session.arrive(wire);
    }
    /// Any answer with a right sum, of up to 511 bytes: one byte is repeated.
    void arriveFrame()
    {
        const quint8 code = m_script.next();
        QByteArray body = m_script.bytes(m_script.below(16));
        body.append(2 * m_script.next() % 500, static_cast<char>(m_script.next()));
        m_session.arrive(LinkFixture::frame(1, code, body));
    }

    void happenToTheProgram(Happening happening)
    {
        switch (happening) {
        case Happening::PostedEvents: return m_session.runEvents();
        case Happening::EndOfBox: return;
        case Happening::EndOfProgram: return m_session.unload();
        case Happening::Connect: return m_session.Conectar();
        case Happening::ConnectThroughModem: return m_session.Conectar(true);
        case Happening::Disconnect: return m_session.Desconectar();
        case Happening::CloseConnection:
            if (m_session.isConnecting())
                m_session.requestClosing();
            return;
        case Happening::RefuseToOpen:
            m_session.fixture.serie.refusal = QString(m_script.below(2), u'x');
            return;
        default: m_session.windows.destroysAtOnce = m_script.below(2) == 1; return;
        }
    }

    void operateSmallWindows(Happening happening)
    {
        PlayedWindows& windows = m_session.windows;
        switch (happening) {
        case Happening::SetClock:
        case Happening::SetClockByComputer:
            if (!m_session.isEstablished() || windows.isSetting())
                return;
            if (!windows.setting())
                windows.openSetting();
            if (happening == Happening::SetClockByComputer)
                return windows.setClock({});
            return windows.setClock(ClockFields{m_script.next(), m_script.next(), 2026,
                                                m_script.next(), m_script.next(), 0});
        case Happening::CloseSetting: return windows.closeSetting();
        case Happening::OpenRemote:
            if (m_session.isEstablished() && !windows.remote())
                windows.openRemote();
            return;
        case Happening::SetManual:
            if (windows.remote())
                windows.setManual(m_script.below(2) == 1);
            return;
        case Happening::Toggle:
            if (windows.remote())
                windows.toggle(m_script.below(3));
            return;
        default: return windows.closeRemote();
        }
    }

    void operateLargeWindows(Happening happening)
    {
        PlayedWindows& windows = m_session.windows;
        switch (happening) {
        case Happening::OpenProgramme:
            if (m_session.isEstablished() && !windows.exchange())
                windows.openProgramme();
            return;
        case Happening::ReadHolidays:
            if (windows.exchange() && !windows.isProgramming())
                windows.readHolidays();
            return;
        case Happening::EditProgramme: return edit();
        case Happening::SendProgramme:
            if (windows.exchange() && !windows.isProgramming())
                windows.sendProgramme();
            return;
        case Happening::CloseProgramme: return windows.closeProgramme();
        case Happening::SendFirmware:
            if (windows.isSendingFirmware())
                return;
            if (!windows.transfer())
                windows.openFirmware({{0x00010000, "\x01\x02\x03\x04"}, {0xFFFFFFF0, "\xFF"}});
            m_session.clock.forgetFirmware();
            return windows.sendFirmware(m_script.below(2) == 1);
        case Happening::InterruptFirmware:
            if (windows.transfer())
                windows.interruptFirmware();
            return;
        default: return windows.closeFirmware();
        }
    }
    void edit()
    {
        Programme& programme = m_session.windows.programme;
        AlarmBlock& block = programme.blocks[static_cast<std::size_t>(m_script.below(3))];
        Alarm& alarm = block.Alarms[static_cast<std::size_t>(m_script.below(32))];
        alarm.flags[static_cast<std::size_t>(m_script.below(9))] = m_script.below(2) == 1;
        alarm.Hour = static_cast<quint8>(m_script.below(24));
        block.Mode = m_script.next();
        programme.table.holidays[0] = {m_script.next(), m_script.next()};
    }

    Script m_script;
    PlayedSession m_session;
    int m_boxes = 0;
    /// What is still to come of an answer.
    QByteArray m_rest;
};

} // namespace

/// A connected program, its operator, its line and its boxes, in any order: each byte of the input
/// is something that happens, with what it needs behind it. The invariants hold after each. The
/// first byte is the clock's model.
extern "C" int LLVMFuzzerTestOneInput(const quint8* data, std::size_t size)
{
    static int argumentCount = 1;
    static char name[] = "SequenceFuzz";
    static char* arguments[] = {name, nullptr};
    static const QCoreApplication application(argumentCount, arguments);
    Player(Script(data, size)).play();
    QCoreApplication::sendPostedEvents();
    return 0;
}
