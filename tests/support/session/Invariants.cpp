#include "Invariants.h"

#include "ConnectionWorkflow.h"
#include "FakeTimer.h"
#include "FirmwareTransfer.h"
#include "LinkFixture.h"
#include "PlayedClock.h"
#include "ProgrammeExchange.h"
#include "RemoteControl.h"
#include "modGlobais.h"

#include <utility>

namespace {

/// L when a header of `station` begins here, else 0.
int headerLength(const quint8* line, quint8 station)
{
    const quint8 start = line[0];
    if ((start != 0x48 && start != 0x68) || line[3] != start || line[1] != line[2])
        return 0;
    const int length = line[1] + (start == 0x48 ? 256 : 0);
    return length >= 2 && (station == 255 || line[4] == station) ? length : 0;
}

/// The first frame in what has arrived since the request, found by searching all of it.
std::optional<ExpectedAnswer> answerIn(const QByteArray& line, quint8 station)
{
    // Pointers, because this is the innermost loop of a million exchanges in a debug build.
    const auto* const bytes = reinterpret_cast<const quint8*>(line.constData());
    for (qsizetype from = 0; from + 5 <= line.size(); ++from) {
        const int length = headerLength(bytes + from, station);
        if (length == 0)
            continue;
        if (line.size() < from + 6 + length)
            return std::nullopt;
        const quint8* const sumByte = bytes + from + 4 + length;
        int sum = 0;
        for (const quint8* summand = bytes + from + 4; summand != sumByte; ++summand)
            sum += *summand;
        return ExpectedAnswer{(sum & 0xFF) == *sumByte ? 0 : 4, bytes[from + 5],
                              line.mid(from + 6, length - 2)};
    }
    return std::nullopt;
}

} // namespace

void Invariants::calls(Asker asker)
{
    require(!m_isCalling, "a client is called while another is being called");
    require(!m_isAwaiting && !m_isDelivering, "a client is called while the link is busy");
    m_isCalling = true;
    m_written.resize(0);
    m_wanted.resize(0);
    if (asker == Asker::Programme && expected.programme.state == 6)
        return expected.programmeFails();
    const auto request = expected.requestOf(asker);
    if (!request)
        return;
    m_request = *request;
    m_asker = asker;
    m_heard.resize(0);
    m_isTaken = false;
    if (!m_isOpen)
        return conclude({11, request->code, request->body});
    m_toggle = !m_toggle;
    const bool hasBit = m_toggle && request->code != 1;
    m_wanted = LinkFixture::frame(
        m_station, static_cast<quint8>(request->code | (hasBit ? 0x10 : 0)), request->body);
    m_isAwaiting = true;
}

void Invariants::called()
{
    // What is written to a port that was lost in the middle goes nowhere.
    require(m_written == m_wanted || (m_isAwaiting && !m_isOpen), "not the request that is due");
    m_isCalling = false;
}

void Invariants::wrote(const QByteArray& bytes)
{
    require(m_isCalling, "something is written outside the call of a client");
    require(!m_written.isEmpty() || bytes.size() == 1, "the first byte does not go out alone");
    m_written += bytes;
    require(m_wanted.startsWith(m_written), "not the request that is due");
}

void Invariants::arrives(const QByteArray& bytes)
{
    if (!m_isAwaiting || !m_isOpen)
        return;
    m_heard += bytes;
    const auto answer = answerIn(m_heard, m_station);
    if (!answer)
        return;
    m_isDelivering = true;
    m_isAwaiting = false;
    conclude(*answer);
}

void Invariants::timesOut()
{
    if (std::exchange(m_isAwaiting, false))
        conclude({});
}

void Invariants::portOpened(bool isOpen)
{
    m_isOpen = isOpen;
    m_isConnected = true;
    m_isAwaiting = false;
    m_isDelivering = false;
    m_asker = Asker::Nobody;
}

void Invariants::connectionEnded()
{
    m_isOpen = false;
    m_isConnected = false;
    m_isAwaiting = false;
    m_isDelivering = false;
    m_asker = Asker::Nobody;
    expected.hasEnded = false;
}

void Invariants::released(Asker asker)
{
    if (m_asker == asker)
        m_asker = Asker::Nobody;
}

void Invariants::Rexistra(const QString& message, bool show)
{
    require(!show, "the log shows itself");
    m_log.append(message);
}

void Invariants::conclude(const ExpectedAnswer& answer)
{
    const Asker asker = std::exchange(m_asker, Asker::Nobody);
    const bool isGood = answer.status == 0;
    if (asker == Asker::Programme && isGood && !m_isTaken)
        m_isProgrammeHonest = false;
    if (asker == Asker::Firmware && isGood && !m_isTaken)
        m_isFirmwareHonest = false;
    if (asker == Asker::Programme && m_request.kind == RequestKind::BlockWritten)
        m_blocks[static_cast<std::size_t>(expected.programme.block)] = m_request.body;
    if (asker == Asker::Programme && m_request.kind == RequestKind::GeneralData)
        m_isProgrammeHonest = true;
    if (asker == Asker::Firmware && expected.firmware.line == 0)
        m_isFirmwareHonest = m_isTaken || !isGood;

    const int accepted = expected.setting.accepted;
    const int sent = expected.programme.sent;
    const int finished = expected.firmware.finished;
    expected.conclude(asker, m_request.kind, answer);
    if (expected.setting.accepted != accepted && m_isTaken)
        require(m_clock.status().mid(5, 3) == m_request.body.mid(1, 3) &&
                    m_clock.status().mid(9, 3) == m_request.body.mid(4, 3),
                "the clock does not hold the time that was sent");
    if (expected.programme.sent != sent && m_isProgrammeHonest)
        require(isProgrammeHeld(), "the clock does not hold the programme that was sent");
    if (expected.firmware.finished != finished && m_isFirmwareHonest)
        require(isFirmwareHeld(), "the clock does not hold the firmware that was sent");
    if (expected.hasEnded)
        connectionEnded();
}

bool Invariants::isProgrammeHeld() const
{
    for (int block = 0; block < 3; ++block)
        if (m_clock.writtenBlock(block) != m_blocks[static_cast<std::size_t>(block)])
            return false;
    return m_clock.holidays() == m_request.body.mid(2);
}

bool Invariants::isFirmwareHeld() const
{
    for (const ExpectedSession::Line& line : *expected.firmware.image) {
        const auto held = m_clock.firmware().find(line.address);
        if (held == m_clock.firmware().end() || held->second != line.data)
            return false;
    }
    return m_clock.firmware().size() == static_cast<std::size_t>(expected.firmware.image->size());
}

void Invariants::check()
{
    const SessionParts parts = m_parts();
    checkLink(parts);
    checkConnection(parts);
    checkShown();
    checkWindows(parts);
    checkLog();
}

void Invariants::checkLink(const SessionParts& parts)
{
    require(parts.link.Ocupado() == m_isAwaiting, "busy without a request, or idle with one");
    require(parts.tmrTemporizador.isRunning() == m_isAwaiting,
            "no time-out awaited, or one too many");
    const bool isWaiting =
        parts.link.state() == LinkState::HeaderHunt || parts.link.state() == LinkState::Body;
    require(isWaiting == m_isAwaiting, "the link's state is wrong");
    const bool isOpen = parts.link.directPort().isOpen() || parts.link.modemPort().isOpen();
    require(isOpen == m_isOpen, "a port is open that should not be, or closed");
}

void Invariants::checkConnection(const SessionParts& parts)
{
    const auto& wanted = expected.connection;
    const ConnectionWorkflow& workflow = parts.workflow;
    require(qToUnderlying(workflow.state()) == wanted.state, "the connection's state is wrong");
    require(workflow.FailedAttempts() == wanted.failures, "the connection's failures are wrong");
    require(workflow.Established() == wanted.isEstablished, "Established is wrong");
    require(parts.globais.LinkEstablished == wanted.isLinkEstablished, "LinkEstablished is wrong");
    require(parts.globais.DeviceType == wanted.deviceType, "DeviceType is wrong");
    require(parts.globais.GeneralData == wanted.generalData, "GeneralData is not what was sent");
    require(parts.globais.GeneralDataAtConnect == wanted.generalDataAtConnect,
            "GeneralDataAtConnect is not what was sent");
}

void Invariants::checkShown()
{
    require(shown.accepted == expected.setting.accepted, "the setting's acceptance is wrong");
    require(shown.settingGaveUp == expected.setting.gaveUp, "the setting's giving up is wrong");
    require(shown.state == expected.remote.shown, "the outputs shown are not those sent");
    require(shown.sent == expected.programme.sent, "the programme's end is wrong");
    require(shown.programmeGaveUp == expected.programme.gaveUp, "the programme's failure is wrong");
    require(shown.holidaysRead == expected.programme.holidaysRead, "holidays read wrongly");
    require(shown.holidays == expected.programme.holidays, "holidays that were not sent");
    require(shown.finished == expected.firmware.finished, "the firmware's end is wrong");
    require(shown.firmwareFailed == expected.firmware.failed, "the firmware's failure is wrong");
    require(shown.acknowledged == expected.firmware.line - 1, "a line's acknowledgement is wrong");
}

void Invariants::checkWindows(const SessionParts& parts)
{
    if (parts.setting)
        require(qToUnderlying(parts.setting->SyncState()) == expected.setting.state &&
                    parts.setting->FailedAttempts() == expected.setting.failures,
                "the setting's state is wrong");
    if (parts.remote) {
        const auto& remote = expected.remote;
        require(parts.remote->Manual() == remote.isManual &&
                    parts.remote->StateKnown() == remote.isStateKnown &&
                    qToUnderlying(parts.remote->nextAction()) == remote.next,
                "the remote control's state is wrong");
        for (int i = 0; i < 3; ++i)
            require(parts.remote->position(i) == remote.positions[static_cast<std::size_t>(i)],
                    "a switch is in the wrong position");
    }
    if (parts.programme)
        require(qToUnderlying(parts.programme->state()) == expected.programme.state,
                "the programme's state is wrong");
    if (parts.firmware)
        require((parts.firmware->state() == FirmwareTransfer::State::Sending) ==
                        expected.firmware.isSending &&
                    parts.firmware->CurrentLine() == expected.firmware.line &&
                    parts.firmware->FailCount() == expected.firmware.failures,
                "the transfer's state is wrong");
}

void Invariants::checkLog()
{
    if (m_log.isEmpty() && expected.log.isEmpty())
        return;
    require(m_log == expected.log, "not the lines of the log");
    m_log.clear();
    expected.log.clear();
}
