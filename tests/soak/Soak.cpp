#include "Soak.h"

#include <algorithm>

namespace {

constexpr std::array kindNames{"identification",   "general data",     "clock setting",
                               "state of outputs", "switching",        "holidays read",
                               "block written",    "holidays written", "firmware line"};
static_assert(kindNames.size() == requestKinds);

constexpr int goodAnswersAFault = 100;
/// The poll comes every 10 ticks, so it comes at once or never.
constexpr int mostTicksToARequest = 100;

} // namespace

Soak::Soak(quint32 seed) : m_dice(seed)
{
    for (const quint32 lines : {1U, 2U, 7U, 20U}) {
        QList<ExpectedSession::Line> image;
        for (quint32 line = 0; line < lines; ++line) {
            const quint32 address = lines * 0x10000000U + line * 0x9010U;
            image.append({address, QByteArray(1 + m_dice.below(32), static_cast<char>(line))});
        }
        m_images.append(image);
    }
}

const char* Soak::nameOf(RequestKind kind) { return kindNames[static_cast<std::size_t>(kind)]; }

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
    m_later.clear();
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
    happenLater(Moment::BeforeRequest);
    happenLater(Moment::AtStartByte);
    happenLater(Moment::AtRest);
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
    if (isLeftFor(Moment::AfterNextRequest)) {
        // The clock has heard this request too, so its answer follows.
        const QByteArray own = m_session.clockAnswers();
        happenLater(Moment::AfterNextRequest);
        m_session.arrive(own);
    } else if (m_dice.oneIn(goodAnswersAFault)) {
        spoil(static_cast<Fault>(m_dice.below(faultCount)));
    } else {
        deliver(m_session.clockAnswers());
    }
    if (m_session.invariants.isAwaiting())
        m_session.timeOut();
    happenLater(Moment::AfterAnswer);
}

void Soak::deliver(const QByteArray& wire)
{
    if (!m_dice.oneIn(16))
        return m_session.arrive(wire);
    const auto half = static_cast<qsizetype>(m_dice.below(static_cast<int>(wire.size())));
    m_session.arrive(wire.left(half));
    m_session.arrive(wire.mid(half));
}

QByteArray Soak::goodAnswer(Fault fault)
{
    const bool isTaken = fault != Fault::Refusal && (fault != Fault::NoAnswer || m_dice.oneIn(2));
    if (isTaken)
        return m_session.clockAnswers();
    PlayedClock other = m_session.clock;
    const ExpectedRequest& request = m_session.invariants.request();
    return LinkFixture::frame(1, 8, other.take(request.code, request.body));
}

void Soak::spoil(Fault fault)
{
    const QByteArray wire = goodAnswer(fault);
    const int ways = variants(wire, fault);
    if (ways == 0)
        return m_session.arrive(wire);
    ++m_faults[static_cast<std::size_t>(fault)];
    ++m_faultsOf[static_cast<std::size_t>(m_session.invariants.request().kind)];
    const QList<LineEvent> events = ::spoil(wire, fault, m_dice.below(ways));
    // What must happen before a request happens before the next one.
    const bool isForNext = !events.isEmpty() && events.first().moment < Moment::AfterRequest;
    if (isForNext)
        m_session.arrive(wire);
    for (const LineEvent& event : events) {
        if (event.moment != Moment::AfterRequest)
            m_later.append(event);
        else if (event.isLoss())
            m_session.losePort();
        else if (!isForNext)
            m_session.arrive(event.bytes);
    }
}

bool Soak::isLeftFor(Moment moment) const
{
    return std::any_of(m_later.begin(), m_later.end(),
                       [moment](const LineEvent& event) { return event.moment == moment; });
}

void Soak::happenLater(Moment moment)
{
    // Mostly there is nothing.
    while (isLeftFor(moment)) {
        const auto due =
            std::find_if(m_later.cbegin(), m_later.cend(),
                         [moment](const auto& event) { return event.moment == moment; });
        const LineEvent event = *due;
        m_later.erase(due);
        if (moment == Moment::AtStartByte || moment == Moment::AtRest)
            m_session.losePortAfterWrites(moment == Moment::AtStartByte ? 1 : 2);
        else if (event.isLoss())
            m_session.losePort();
        else
            m_session.arrive(event.bytes);
    }
}
