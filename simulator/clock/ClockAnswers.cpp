#include "ClockAnswers.h"

#include "Bytes.h"

#include <utility>

namespace simulator {

namespace {

constexpr quint8 accepted = 0;
constexpr quint8 closed = 1;
constexpr quint8 unknownNumber = 2;

QByteArray answerOf(quint8 selector, quint8 status)
{
    return QByteArray().append(char(selector)).append(char(status));
}

/// Days and months alternate; 0 is unused.
bool areDays(const QByteArray& table)
{
    for (qsizetype at = 0; at < table.size(); at += 2) {
        if (byteAt(table, at) > 31 || byteAt(table, at + 1) > 12)
            return false;
    }
    return true;
}

bool areTimes(const AlarmBlock& block)
{
    for (int alarm = 0; alarm < AlarmBlock::alarmCount; ++alarm) {
        if (block.hour(alarm) > 23 || block.minute(alarm) > 59)
            return false;
    }
    return true;
}

} // namespace

ClockAnswers::ClockAnswers(SimulatedClock& clock, FirmwareImage& firmware, quint8 identification)
    : m_clock(clock), m_firmware(firmware), m_identification(identification)
{}

std::optional<QByteArray> ClockAnswers::answer(quint8 code, const QByteArray& request)
{
    if (request.isEmpty())
        return std::nullopt;
    switch (code) {
    case requestcode::Identification: return identify(request);
    case requestcode::Read: return read(request);
    case requestcode::Write: return answerOf(byteAt(request, 0), quint8(write(request)));
    default: return std::nullopt;
    }
}

QByteArray ClockAnswers::refusal(quint8 code, const QByteArray& request, quint8 status) const
{
    const quint8 selector = request.isEmpty() ? 0 : byteAt(request, 0);
    if (code != requestcode::Read || selector != area::GeneralData)
        return answerOf(selector, status);
    QByteArray block = m_clock.statusBlock();
    block[4] = char(status);
    return block;
}

bool ClockAnswers::takeResetRequest() { return std::exchange(m_resetRequested, false); }

QByteArray ClockAnswers::identify(const QByteArray& request)
{
    if (request.size() == 2 && byteAt(request, 0) == area::Identification) {
        const quint8 number = byteAt(request, 1);
        if (number == m_identification) {
            m_sessionOpen = true;
            return answerOf(area::Identification, accepted);
        }
        // The complement of the number closes the session.
        if (number == quint8(~m_identification)) {
            m_sessionOpen = false;
            return answerOf(area::Identification, closed);
        }
    }
    return answerOf(area::Identification, unknownNumber);
}

std::optional<QByteArray> ClockAnswers::read(const QByteArray& request)
{
    switch (byteAt(request, 0)) {
    case area::GeneralData: return m_clock.statusBlock();
    case area::ModeAndOutputs: return readModeAndOutputs(request);
    case area::DaysRead: return answerOf(area::DaysRead, accepted) + m_clock.programme().days;
    default: return answerOf(byteAt(request, 0), quint8(Status::Unknown));
    }
}

std::optional<QByteArray> ClockAnswers::readModeAndOutputs(const QByteArray& request)
{
    if (request.size() != 2 || byteAt(request, 1) > 1)
        return std::nullopt;
    m_clock.setManual(byteAt(request, 1) == 1);
    // A set bit is an output that is off, the opposite of byte 2 of the general data.
    return answerOf(area::ModeAndOutputs, quint8(~m_clock.outputs() & 0x07));
}

Status ClockAnswers::write(const QByteArray& request)
{
    switch (byteAt(request, 0)) {
    case area::Clock: return writeClock(request);
    case area::Outputs: return writeOutputs(request);
    case area::AlarmBlock: return writeAlarmBlock(request);
    case area::DaysWrite: return writeDays(request);
    case area::FirmwareLine: return writeFirmwareLine(request);
    default: return Status::Unknown;
    }
}

Status ClockAnswers::writeClock(const QByteArray& request)
{
    if (request.size() != 7)
        return Status::WrongLength;
    const QTime time(byteAt(request, 3), byteAt(request, 2), byteAt(request, 1));
    const int year = byteAt(request, 6);
    const QDate date(year + (year < 90 ? 2000 : 1900), byteAt(request, 5), byteAt(request, 4));
    if (!time.isValid() || !date.isValid() || year > 99)
        return Status::WrongValue;
    m_clock.setDateTime(QDateTime(date, time, Qt::UTC));
    return Status::Accepted;
}

Status ClockAnswers::writeOutputs(const QByteArray& request)
{
    if (request.size() != 2)
        return Status::WrongLength;
    if (byteAt(request, 1) > 0x07)
        return Status::WrongValue;
    m_clock.commandOutputs(byteAt(request, 1));
    return Status::Accepted;
}

Status ClockAnswers::writeAlarmBlock(const QByteArray& request)
{
    const bool second = m_clock.model() == Model::Hct7300;
    if (request.size() != (second ? 71 : 69))
        return Status::WrongLength;
    const int number = byteAt(request, 1);
    if (number < 1 || number > 3)
        return Status::WrongValue;
    AlarmBlock block = m_clock.programme().blocks[size_t(number - 1)];
    block.bytes = request.mid(2, AlarmBlock::byteCount);
    block.activeCountPlusOne = byteAt(request, 68);
    if (second) {
        block.duration = byteAt(request, 69);
        block.mode = byteAt(request, 70);
    }
    // The count may be higher than the number of alarms with a day: days that the mode cannot
    // express are not transmitted.
    if (!areTimes(block) || byteAt(request, 66) != 0 || byteAt(request, 67) != 0 ||
        block.activeCountPlusOne > AlarmBlock::alarmCount + 1 ||
        block.activeCountPlusOne < block.activeAlarms() + 1)
        return Status::WrongValue;
    m_clock.programme().blocks[size_t(number - 1)] = block;
    return Status::Accepted;
}

Status ClockAnswers::writeDays(const QByteArray& request)
{
    if (request.size() != 2 + ClockProgramme::dayTableSize)
        return Status::WrongLength;
    const QByteArray table = request.mid(2);
    if (byteAt(request, 1) != 0 || !areDays(table))
        return Status::WrongValue;
    m_clock.programme().days = table;
    return Status::Accepted;
}

Status ClockAnswers::writeFirmwareLine(const QByteArray& request)
{
    switch (m_firmware.take(request)) {
    case FirmwareImage::Verdict::WrongLength: return Status::WrongLength;
    case FirmwareImage::Verdict::WrongValue: return Status::WrongValue;
    case FirmwareImage::Verdict::Stored: return Status::Accepted;
    case FirmwareImage::Verdict::StoredLastWithReset: m_resetRequested = true; break;
    }
    return Status::Accepted;
}

} // namespace simulator
