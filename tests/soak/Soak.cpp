#include "Soak.h"

namespace {

constexpr std::array kindNames{"identification",   "general data",     "clock setting",
                               "state of outputs", "switching",        "holidays read",
                               "block written",    "holidays written", "firmware line"};
constexpr std::array faultNames{"request lost",
                                "answer lost",
                                "late, before the next request",
                                "late, after the next request",
                                "cut short",
                                "wrong station",
                                "wrong length",
                                "wrong sum",
                                "wrong end",
                                "wrong code",
                                "wrong selector",
                                "refused",
                                "bit changed",
                                "doubled",
                                "noise before",
                                "noise after",
                                "noise alone",
                                "port lost in the answer",
                                "port lost in the request"};
static_assert(kindNames.size() == exchangeKinds && faultNames.size() == Soak::faultKinds);

constexpr int goodAnswersAFault = 100;
/// The poll comes every 10 ticks, so it comes at once or never.
constexpr int mostTicksToARequest = 100;

QByteArray wireOf(quint8 station, quint8 code, const QByteArray& body, int sumError = 0)
{
    return LinkFixture::frame(station, code, body, sumError);
}

/// Of a good frame.
QByteArray bodyOf(const QByteArray& wire) { return wire.mid(6, wire.size() - 8); }

} // namespace

Soak::Soak(quint32 seed) : m_dice(seed)
{
    for (const int lines : {1, 2, 7, 20}) {
        QList<ExpectedSession::Line> image;
        for (int line = 0; line < lines; ++line) {
            const auto address = static_cast<quint32>(lines * 0x10000000 + line * 0x9010);
            image.append({address, QByteArray(1 + m_dice.below(32), static_cast<char>(line))});
        }
        m_images.append(image);
    }
}

const char* Soak::nameOf(ExchangeKind kind) { return kindNames[static_cast<std::size_t>(kind)]; }

const char* Soak::nameOf(Fault fault) { return faultNames[static_cast<std::size_t>(fault)]; }

void Soak::step()
{
    operate();
    if (!reachRequest()) {
        ++m_connectionsLost;
        return;
    }
    ++m_exchanges[static_cast<std::size_t>(m_session.invariants.request().kind)];
    answer();
}

void Soak::closeAll()
{
    m_session.Desconectar();
    m_session.windows.closeProgramme();
    m_session.windows.closeFirmware();
    m_session.runEvents();
    m_late.clear();
}

void Soak::operate()
{
    if (!m_session.isConnecting()) {
        m_session.runEvents();
        // Programme and firmware go on with the next connection: to the same clock, to be compared.
        if (m_dice.oneIn(2) && !m_session.windows.exchange() && !m_session.windows.transfer())
            m_session.clock = PlayedClock(m_dice.oneIn(2) ? 30 : 31);
        m_session.Conectar();
        return;
    }
    if (m_dice.oneIn(50))
        m_session.runEvents();
    if (m_dice.oneIn(200))
        return m_session.requestClosing();
    if (m_dice.oneIn(200))
        return m_session.Desconectar();
    if (!m_session.isEstablished())
        return;
    operateSetting();
    operateRemote();
    operateProgramme();
    operateFirmware();
}

void Soak::operateSetting()
{
    PlayedWindows& windows = m_session.windows;
    if (!windows.setting()) {
        if (!m_dice.oneIn(8))
            return;
        windows.openSetting();
        if (m_dice.oneIn(2))
            return windows.setClock({});
        windows.setClock(ClockFields{1 + m_dice.below(28), 1 + m_dice.below(12),
                                     2000 + m_dice.below(100), m_dice.below(24), m_dice.below(60),
                                     m_dice.below(60)});
    } else if (!windows.isSetting() || m_dice.oneIn(200)) {
        windows.closeSetting();
    }
}

void Soak::operateRemote()
{
    PlayedWindows& windows = m_session.windows;
    if (!windows.remote()) {
        if (m_dice.oneIn(20))
            windows.openRemote();
    } else if (m_dice.oneIn(10)) {
        windows.toggle(m_dice.below(3));
    } else if (m_dice.oneIn(30)) {
        windows.setManual(m_dice.below(4) != 0);
    } else if (m_dice.oneIn(100)) {
        windows.closeRemote();
    }
}

void Soak::operateProgramme()
{
    PlayedWindows& windows = m_session.windows;
    if (!windows.exchange()) {
        if (m_dice.oneIn(10)) {
            windows.openProgramme();
            windows.readHolidays();
        }
    } else if (m_dice.oneIn(300)) {
        windows.closeProgramme();
    } else if (!windows.isProgramming()) {
        editProgramme();
        windows.sendProgramme();
    }
}

void Soak::editProgramme()
{
    Programme& programme = m_session.windows.programme;
    AlarmBlock& block = programme.blocks[static_cast<std::size_t>(m_dice.below(3))];
    Alarm& alarm = block.Alarms[static_cast<std::size_t>(m_dice.below(32))];
    bool& flag = alarm.flags[static_cast<std::size_t>(m_dice.below(9))];
    flag = !flag;
    alarm.Hour = static_cast<quint8>(m_dice.below(24));
    alarm.Minute = static_cast<quint8>(m_dice.below(60));
    block.ActiveCountPlusOne = static_cast<quint8>(1 + m_dice.below(33));
    block.Mode = static_cast<quint8>(m_dice.below(6));
    programme.table.holidays[static_cast<std::size_t>(m_dice.below(16))] = {
        static_cast<quint8>(m_dice.below(32)), static_cast<quint8>(m_dice.below(13))};
    programme.table.vacations[static_cast<std::size_t>(m_dice.below(8))].StartDay =
        static_cast<quint8>(m_dice.below(32));
}

void Soak::operateFirmware()
{
    PlayedWindows& windows = m_session.windows;
    if (!windows.transfer()) {
        if (m_dice.oneIn(200))
            windows.openFirmware(m_images[m_dice.below(4)]);
    } else if (!windows.isSendingFirmware()) {
        if (m_dice.oneIn(100))
            return windows.closeFirmware();
        m_session.clock.forgetFirmware();
        windows.sendFirmware(m_dice.oneIn(2));
    } else if (m_dice.oneIn(1000)) {
        windows.interruptFirmware();
    }
}

bool Soak::reachRequest()
{
    if (m_dice.oneIn(goodAnswersAFault * faultKinds)) {
        ++m_faults[static_cast<std::size_t>(Fault::PortLostInRequest)];
        m_session.losePortAfterWrites(1 + m_dice.below(2));
    }
    for (int tick = 0; tick < mostTicksToARequest; ++tick) {
        m_session.tick();
        if (m_session.invariants.isAwaiting())
            return true;
        if (!m_session.isConnecting())
            return false;
    }
    m_session.invariants.require(false, "no request");
    return false;
}

void Soak::answer()
{
    if (!m_session.invariants.isOpen())
        return m_session.timeOut();
    if (!m_late.isEmpty() && m_isLateAfterNext) {
        // The clock has heard this request too, so its answer follows and finds nobody.
        const QByteArray own = m_session.clockAnswers();
        m_session.arrive(std::exchange(m_late, {}));
        m_session.arrive(own);
    } else if (m_dice.oneIn(goodAnswersAFault)) {
        const auto fault = static_cast<Fault>(m_dice.below(faultKinds - 1));
        ++m_faults[static_cast<std::size_t>(fault)];
        ++m_faultsOf[static_cast<std::size_t>(m_session.invariants.request().kind)];
        spoil(fault);
    } else {
        deliver(m_session.clockAnswers());
    }
    if (m_session.invariants.isAwaiting())
        m_session.timeOut();
    if (!m_late.isEmpty() && !m_isLateAfterNext)
        m_session.arrive(std::exchange(m_late, {}));
}

void Soak::deliver(const QByteArray& wire)
{
    if (!m_dice.oneIn(16))
        return m_session.arrive(wire);
    const auto half = static_cast<qsizetype>(m_dice.below(static_cast<int>(wire.size())));
    m_session.arrive(wire.left(half));
    m_session.arrive(wire.mid(half));
}

QByteArray Soak::noise()
{
    QByteArray bytes;
    for (int count = 1 + m_dice.below(12); count > 0; --count)
        bytes.append(static_cast<char>(m_dice.below(256)));
    return bytes;
}

void Soak::spoil(Fault fault)
{
    if (fault == Fault::RequestLost)
        return;
    if (fault == Fault::Refused)
        return m_session.arrive(m_session.clockRefuses());
    const QByteArray wire = m_session.clockAnswers();
    const int at = m_dice.below(static_cast<int>(wire.size()));
    switch (fault) {
    case Fault::AnswerLost: return;
    case Fault::LateBeforeNextRequest:
    case Fault::LateAfterNextRequest:
        m_late = wire;
        m_isLateAfterNext = fault == Fault::LateAfterNextRequest;
        return;
    case Fault::CutShort: return m_session.arrive(wire.left(at));
    case Fault::Doubled: return m_session.arrive(wire + wire);
    case Fault::NoiseBefore: return m_session.arrive(noise() + wire);
    case Fault::NoiseAfter: return m_session.arrive(wire + noise());
    case Fault::NoiseAlone: return m_session.arrive(noise());
    case Fault::PortLostInAnswer: m_session.arrive(wire.left(at)); return m_session.losePort();
    default: return m_session.arrive(changed(wire, fault, at));
    }
}

QByteArray Soak::changed(QByteArray wire, Fault fault, int at)
{
    QByteArray body = bodyOf(wire);
    switch (fault) {
    case Fault::WrongStation: return wireOf(2, 8, body);
    case Fault::WrongLength:
        wire[1] = static_cast<char>(wire[1] + 1);
        wire[2] = wire[1];
        return wire;
    case Fault::WrongSum: return wireOf(1, 8, body, 1);
    case Fault::WrongEnd: wire.back() = 0x17; return wire;
    case Fault::WrongCode: return wireOf(1, 9, body);
    case Fault::WrongSelector:
        body[0] = static_cast<char>(body[0] ^ 0x40);
        return wireOf(1, 8, body);
    default: wire[at] = static_cast<char>(wire[at] ^ (1 << m_dice.below(8))); return wire;
    }
}
