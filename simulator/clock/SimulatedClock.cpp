#include "SimulatedClock.h"

namespace simulator {

namespace {

constexpr quint8 outputBits = 0x07;
constexpr quint8 manualFlag = 0x04;

QDateTime withoutZone(const QDateTime& moment)
{
    return QDateTime(moment.date(), moment.time(), Qt::UTC);
}

/// The time of day, counted in steps of the given number of seconds.
int step(const QDateTime& moment, int seconds)
{
    return moment.time().msecsSinceStartOfDay() / 1000 / seconds;
}

} // namespace

QDateTime SimulatedClock::computerTime() { return withoutZone(QDateTime::currentDateTime()); }

SimulatedClock::SimulatedClock(Model model, Now now) : m_model(model), m_now(std::move(now)) {}

QDateTime SimulatedClock::dateTime() const
{
    return m_frozen ? m_frozenAt : withoutZone(m_now()).addMSecs(m_offset);
}

void SimulatedClock::setDateTime(const QDateTime& dateTime)
{
    m_frozenAt = withoutZone(dateTime);
    m_offset = withoutZone(m_now()).msecsTo(m_frozenAt);
}

void SimulatedClock::setFrozen(bool frozen)
{
    const QDateTime moment = dateTime();
    m_frozen = frozen;
    setDateTime(moment);
}

quint8 SimulatedClock::outputs() const
{
    if (m_manual)
        return m_manualOutputs;
    const QDateTime moment = dateTime();
    quint8 ringing = 0;
    for (int block = 0; block < 3; ++block) {
        // The outputs are in reverse order: the first block is on bit 2.
        if (m_programme.rings(block, moment, m_model))
            ringing |= quint8(0x04 >> block);
    }
    if (ringing == 0 && m_demonstration)
        return quint8(step(moment, 3) % 8);
    return ringing;
}

void SimulatedClock::setManual(bool manual)
{
    if (manual && !m_manual)
        m_manualOutputs = m_waitingOutputs.value_or(outputs());
    m_waitingOutputs.reset();
    m_manual = manual;
}

void SimulatedClock::commandOutputs(quint8 offMask)
{
    const quint8 commanded = quint8(~offMask & outputBits);
    if (m_manual)
        m_manualOutputs = commanded;
    else
        m_waitingOutputs = commanded;
}

quint8 SimulatedClock::inputs() const
{
    constexpr std::array<quint8, 4> pattern{0x98, 0x90, 0x88, 0x18};
    return m_demonstration ? pattern[size_t(step(dateTime(), 5) % 4)] : m_inputs;
}

quint8 SimulatedClock::flags() const
{
    return quint8((m_flags & ~manualFlag) | (m_manual ? manualFlag : 0));
}

void SimulatedClock::erase()
{
    m_programme = ClockProgramme();
    setManual(false);
}

QByteArray SimulatedClock::statusBlock() const
{
    const QDateTime moment = dateTime();
    QByteArray block(statusSize, '\0');
    block[2] = char(outputs());
    block[3] = char(m_deviceType);
    block[5] = char(moment.time().second());
    block[6] = char(moment.time().minute());
    block[7] = char(moment.time().hour());
    block[8] = char(moment.date().dayOfWeek());
    block[9] = char(moment.date().day());
    block[10] = char(moment.date().month());
    block[11] = char(moment.date().year() % 100);
    block[12] = char(m_model);
    for (qsizetype b = 0; b < 3; ++b) {
        const AlarmBlock& alarms = m_programme.blocks[size_t(b)];
        block[14 + 2 * b] = char(alarms.duration);
        block[15 + 2 * b] = char(alarms.mode);
        block.replace(20 + AlarmBlock::byteCount * b, AlarmBlock::byteCount, alarms.bytes);
    }
    block[218] = char(inputs());
    block[219] = char(flags());
    for (auto held = m_heldBytes.cbegin(); held != m_heldBytes.cend(); ++held) {
        if (held.key() >= 0 && held.key() < statusSize)
            block[held.key()] = char(held.value());
    }
    if (quint8(block[3]) != familyType)
        block.truncate(otherTypeSize);
    return block;
}

} // namespace simulator
