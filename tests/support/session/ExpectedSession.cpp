#include "ExpectedSession.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int good = 0;
constexpr int wrongAnswer = 8;
constexpr int givingUp = 6;

quint8 at(const QByteArray& bytes, qsizetype index) { return static_cast<quint8>(bytes[index]); }

void append(QByteArray& bytes, int value) { bytes.append(static_cast<char>(value)); }

bool echoes(const ExpectedAnswer& answer, quint8 selector)
{
    return answer.status == good && answer.code == 8 && answer.body.size() >= 2 &&
           at(answer.body, 0) == selector;
}

bool isAccepted(const ExpectedAnswer& answer, quint8 selector)
{
    return echoes(answer, selector) && at(answer.body, 1) == 0;
}

/// Of the programme's own request, which wants more than the poll does.
bool isWholeGeneralData(const ExpectedAnswer& answer)
{
    return isAccepted(answer, 0x00) && answer.body.size() >= 220 && at(answer.body, 3) == 11 &&
           at(answer.body, 4) == 0;
}

int bit(bool on, int number) { return on ? 1 << number : 0; }

} // namespace

std::optional<ExpectedRequest> ExpectedSession::requestOf(Asker asker) const
{
    using enum RequestKind;
    if (asker == Asker::Workflow && connection.state == 2)
        return ExpectedRequest{GeneralData, 137, QByteArray(1, '\0')};
    if (asker == Asker::Workflow && connection.state != 0)
        return ExpectedRequest{Identification, 1,
                               QByteArray(connection.state == 1 ? "\x02\x01" : "\x02\xFE")};
    if (asker == Asker::Setting && setting.state != 0)
        return ExpectedRequest{ClockSetting, 105,
                               '\x01' + (setting.state == 1 ? setting.fields : setting.now)};
    if (asker == Asker::Remote && remote.next == 1) {
        QByteArray body("\xCB");
        append(body, bit(remote.positions[0] == 0, 0) | bit(remote.positions[1] == 0, 1) |
                         bit(remote.positions[2] == 0, 2));
        return ExpectedRequest{Switching, 105, body};
    }
    if (asker == Asker::Remote)
        return ExpectedRequest{StateRead, 137,
                               QByteArray(remote.isManual ? "\xCA\x01" : "\xCA\x00", 2)};
    if (asker == Asker::Programme)
        return requestOfProgramme();
    if (asker == Asker::Firmware && firmware.isSending)
        return ExpectedRequest{FirmwareLine, 105, firmwareBody()};
    return std::nullopt;
}

std::optional<ExpectedRequest> ExpectedSession::requestOfProgramme() const
{
    using enum RequestKind;
    const auto block = static_cast<std::size_t>(programme.block);
    switch (programme.state) {
    case 1: return ExpectedRequest{GeneralData, 137, QByteArray(1, '\0')};
    case 2: return ExpectedRequest{HolidaysRead, 137, QByteArray("\xD9")};
    case 3:
        return ExpectedRequest{
            BlockWritten, 105,
            blockBody(programme.programme->blocks[block], programme.block, programme.is7200)};
    case 4:
        return ExpectedRequest{HolidaysWritten, 105,
                               QByteArray("\xD2\x00", 2) + tableBytes(*programme.table)};
    default: return std::nullopt;
    }
}

void ExpectedSession::conclude(Asker asker, RequestKind kind, const ExpectedAnswer& answer)
{
    switch (asker) {
    case Asker::Nobody: return;
    case Asker::Workflow:
        return kind == RequestKind::Identification ? identified(answer) : polled(answer);
    case Asker::Setting: return clockSet(isAccepted(answer, 0x01));
    case Asker::Remote: return remoteAnswered(kind, answer);
    case Asker::Programme: return programmeAnswered(kind, answer);
    case Asker::Firmware: return lineAnswered(isAccepted(answer, 0xDD));
    }
}

void ExpectedSession::connectionBegins()
{
    connection.state = 1;
    connection.failures = 0;
    connection.isEstablished = false;
    log.append(u"Estableciendo conexión..."_s);
}

void ExpectedSession::connectionEnds()
{
    connection.isLinkEstablished = false;
    connection.isEstablished = false;
    hasEnded = true;
    if (programme.state != 0)
        programmeGivesUp();
    log.append(u"Conexión interrumpida"_s);
}

void ExpectedSession::programmeGivesUp()
{
    programme.state = givingUp;
    programme.isFailurePosted = true;
}

void ExpectedSession::postedEventsRun()
{
    if (std::exchange(programme.isFailurePosted, false) && programme.state == givingUp)
        programmeFails();
}

void ExpectedSession::programmeFails()
{
    programme.state = 0;
    ++programme.gaveUp;
}

void ExpectedSession::identified(const ExpectedAnswer& answer)
{
    bool isGood = echoes(answer, 0x02);
    if (isGood && connection.state == 1)
        isGood = at(answer.body, 1) == 0;
    if (isGood && connection.state == 3)
        isGood = at(answer.body, 1) == 1;
    if (!isGood) {
        ++connection.failures;
        const QString failure = u"Fallo en identificación del equipo"_s;
        if (connection.failures == 4 || connection.state == 3)
            return end(failure);
        log.append(failure);
        return;
    }
    connection.failures = 0;
    if (connection.state == 3)
        return end(u"Interrumpiendo conexión"_s);
    if (connection.state == 1) {
        log.append(u"Identificación aceptada"_s);
        connection.state = 2;
    }
}

void ExpectedSession::polled(const ExpectedAnswer& answer)
{
    const QByteArray& body = answer.body;
    bool isGood = isAccepted(answer, 0x00) && body.size() >= 5 && at(body, 4) == 0;
    if (isGood) {
        connection.deviceType = at(body, 3);
        isGood = at(body, 3) != 11 || body.size() >= 220;
    }
    if (!isGood) {
        if (++connection.failures == 4) {
            connection.failures = 0;
            connection.state = 1;
        }
        return;
    }
    connection.failures = 0;
    connection.generalData = body;
    if (connection.isEstablished)
        return;
    connection.generalDataAtConnect = body;
    connection.isEstablished = true;
    connection.isLinkEstablished = true;
    log.append(u"Conexión establecida"_s);
}

void ExpectedSession::clockSet(bool isGood)
{
    if (isGood) {
        setting.state = 0;
        ++setting.accepted;
        log.append(u"Reloj del equipo actualizado en fecha y hora"_s);
    } else if (++setting.failures == 3) {
        // The line in the log follows the box.
        setting.state = 0;
        ++setting.gaveUp;
    }
}

void ExpectedSession::remoteAnswered(RequestKind kind, const ExpectedAnswer& answer)
{
    if (kind == RequestKind::Switching) {
        if (isAccepted(answer, 0xCB))
            remote.next = 2;
        return;
    }
    if (!echoes(answer, 0xCA))
        return;
    remote.shown = at(answer.body, 1);
    if (!remote.isManual || !remote.isStateKnown)
        for (int i = 0; i < 3; ++i)
            remote.positions[static_cast<std::size_t>(i)] = (remote.shown >> i & 1) == 0 ? 1 : 0;
    remote.isStateKnown = true;
    if (remote.isManual)
        remote.next = 1;
}

void ExpectedSession::programmeAnswered(RequestKind kind, const ExpectedAnswer& answer)
{
    using enum RequestKind;
    QString failure;
    if (kind == GeneralData && isWholeGeneralData(answer)) {
        connection.generalData = answer.body;
        programme.state = 3;
    } else if (kind == GeneralData) {
        failure = u"Fallo en lectura de datos generales"_s;
    } else if (kind == HolidaysRead && isAccepted(answer, 0xD9) && answer.body.size() >= 66) {
        programme.state = 0;
        programme.holidays = answer.body.mid(2, 64);
        ++programme.holidaysRead;
    } else if (kind == HolidaysRead) {
        failure = u"Fallo en lectura de festivos y vacaciones"_s;
    } else if (kind == BlockWritten && isAccepted(answer, 0xDA)) {
        programme.state = ++programme.block == 3 ? 4 : 3;
    } else if (kind == BlockWritten) {
        failure =
            u"Fallo en escritura del bloque de avisos "_s + QString::number(programme.block + 1);
    } else if (answer.status == good) {
        programme.state = 0;
        ++programme.sent;
    } else {
        failure = u"Fallo en escritura de festivos y vacaciones"_s;
    }
    if (!failure.isEmpty())
        programmeRefused(failure, answer.status == good ? wrongAnswer : answer.status);
}

void ExpectedSession::programmeRefused(const QString& failure, int status)
{
    log.append(failure + u" (estado "_s + QString::number(status) + u')');
    if (++programme.failures > 10)
        programme.state = givingUp;
}

void ExpectedSession::lineAnswered(bool isGood)
{
    if (isGood) {
        firmware.failures = 0;
        if (++firmware.line == firmware.image->size()) {
            firmware.isSending = false;
            ++firmware.finished;
        }
    } else if (++firmware.failures >= 6) {
        firmware.isSending = false;
        ++firmware.failed;
    }
}

void ExpectedSession::end(const QString& lastWords)
{
    connection.state = 0;
    log.append(lastWords);
    connectionEnds();
}

QByteArray ExpectedSession::firmwareBody() const
{
    const Line& line = firmware.image->at(firmware.line);
    QByteArray body("\xDD");
    append(body, static_cast<int>(line.data.size()));
    int sum = 0;
    for (int i = 0; i < 4; ++i) {
        const int byte = static_cast<int>(line.address >> (8 * i) & 0xFF);
        append(body, byte);
        sum += byte;
    }
    const bool isLast = firmware.line == firmware.image->size() - 1;
    append(body, !isLast ? 0 : firmware.resets ? 0xFF : 1);
    body += line.data;
    for (const char byte : line.data)
        sum += static_cast<quint8>(byte);
    append(body, sum & 0xFF);
    append(body, 0);
    return body;
}

QByteArray ExpectedSession::blockBody(const AlarmBlock& block, int number, bool is7200)
{
    const bool hasSingleDays = is7200 || block.Mode < 2;
    QByteArray body("\xDA");
    body.reserve(71);
    append(body, number + 1);
    for (const Alarm& alarm : block.Alarms) {
        const auto& on = alarm.flags;
        const bool hasAllDays = on[0] && on[1] && on[2] && on[3] && on[4];
        const int first = hasSingleDays ? bit(on[0], 7) | bit(on[1], 6) | bit(on[2], 5)
                                        : bit(on[5], 7) | bit(on[6], 6) | bit(on[7], 5);
        const int second =
            hasSingleDays ? bit(on[3], 7) | bit(on[4], 6) : bit(on[8], 7) | bit(hasAllDays, 6);
        append(body, first | alarm.Hour);
        append(body, second | alarm.Minute);
    }
    append(body, 0);
    append(body, 0);
    append(body, block.ActiveCountPlusOne);
    if (!is7200) {
        append(body, block.Duration);
        append(body, block.Mode);
    }
    return body;
}

QByteArray ExpectedSession::tableBytes(const HolidayTable& table)
{
    QByteArray bytes;
    bytes.reserve(64);
    for (const Holiday& holiday : table.holidays) {
        append(bytes, holiday.Day);
        append(bytes, holiday.Month);
    }
    for (const VacationPeriod& period : table.vacations) {
        append(bytes, period.StartDay);
        append(bytes, period.StartMonth);
        append(bytes, period.EndDay);
        append(bytes, period.EndMonth);
    }
    return bytes;
}
