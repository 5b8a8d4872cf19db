#include "ExchangeUnderTest.h"

#include "ClockSetting.h"
#include "CronoRegistration.h"
#include "FirmwareTransfer.h"
#include "ProgrammeExchange.h"
#include "RemoteControl.h"

#include <QBuffer>

using namespace Qt::StringLiterals;

namespace {

/// The poll comes every 10 ticks.
constexpr int mostTicksOfARequest = 12;

QString stateName(ConnectionState state)
{
    switch (state) {
    case ConnectionState::Disconnected: return u"Disconnected"_s;
    case ConnectionState::Identifying: return u"Identifying"_s;
    case ConnectionState::Connected: return u"Connected"_s;
    case ConnectionState::Closing: return u"Closing"_s;
    }
    Q_UNREACHABLE();
}

class IdentificationUnderTest final : public ExchangeUnderTest {
public:
    IdentificationUnderTest()
    {
        workflow.Conectar(false);
        report();
    }

private:
    QString state() const override { return stateOf(workflow); }
};

class GeneralDataUnderTest final : public ExchangeUnderTest {
public:
    GeneralDataUnderTest()
    {
        workflow.Conectar(false);
        answerNext();
        report();
    }

private:
    QString state() const override
    {
        return u"%1, %2 bytes"_s.arg(stateOf(workflow)).arg(globais.GeneralData.size());
    }
};

class ClockSettingUnderTest final : public ExchangeUnderTest {
public:
    ClockSettingUnderTest()
    {
        establish();
        QObject::connect(&m_setting, &ClockSetting::accepted, &m_setting,
                         [this] { tell(u"accepted"_s); });
        QObject::connect(&m_setting, &ClockSetting::gaveUp, &m_setting,
                         [this] { tell(u"gave up"_s); });
        m_setting.setFields({5, 3, 2019, 23, 59, 58});
        m_setting.begin(ClockSetting::State::Manual);
        m_registration.ActivaCliente();
    }

private:
    QString state() const override
    {
        const bool isIdle = m_setting.SyncState() == ClockSetting::State::Idle;
        return u"%1, %2 failed"_s.arg(isIdle ? u"Idle"_s : u"Manual"_s)
            .arg(m_setting.FailedAttempts());
    }

    ClockSetting m_setting{link, log, clock};
    CronoRegistration m_registration{crono, m_setting, 1};
};

class RemoteControlUnderTest final : public ExchangeUnderTest {
public:
    explicit RemoteControlUnderTest(bool manual) : m_control(link, manual)
    {
        establish();
        QObject::connect(&m_control, &RemoteControl::stateRead, &m_control,
                         [this](quint8 bits) { tell(u"state %1"_s.arg(bits)); });
        QObject::connect(&m_control, &RemoteControl::switchMoved, &m_control,
                         [this](int index, int position) {
                             tell(u"switch %1 at %2"_s.arg(index).arg(position));
                         });
        m_registration.ActivaCliente();
        if (manual)
            answerNext();
        report();
    }

private:
    QString state() const override
    {
        return m_control.nextAction() == RemoteControl::NextAction::ReadState ? u"Read state"_s
                                                                              : u"Send command"_s;
    }

    RemoteControl m_control;
    CronoRegistration m_registration{crono, m_control, 3};
};

/// Holidays read when `target` is Opening, otherwise the part of a sending that `target` is.
class ProgrammeUnderTest final : public ExchangeUnderTest {
public:
    explicit ProgrammeUnderTest(ProgrammeExchange::State target)
    {
        establish();
        QObject::connect(
            &m_exchange, &ProgrammeExchange::holidaysRead, &m_exchange,
            [this](const HolidayTable& table) {
                tell(u"holiday %1/%2"_s.arg(table.holidays[15].Day).arg(table.holidays[15].Month));
            });
        QObject::connect(&m_exchange, &ProgrammeExchange::sent, &m_exchange,
                         [this] { tell(u"sent"_s); });
        QObject::connect(&m_exchange, &ProgrammeExchange::failed, &m_exchange,
                         [this] { tell(u"failed"_s); });
        if (target == ProgrammeExchange::State::Opening)
            m_exchange.readHolidays();
        else
            m_exchange.send();
        while (m_exchange.state() != target)
            answerNext();
        report();
    }

private:
    QString state() const override
    {
        switch (m_exchange.state()) {
        case ProgrammeExchange::State::Idle: return u"Idle"_s;
        case ProgrammeExchange::State::ReadRequested: return u"Read requested"_s;
        case ProgrammeExchange::State::SendRequested: return u"Send requested"_s;
        case ProgrammeExchange::State::Opening: return u"Opening"_s;
        case ProgrammeExchange::State::WritingBlocks: return u"Writing blocks"_s;
        case ProgrammeExchange::State::WritingHolidays: return u"Writing holidays"_s;
        case ProgrammeExchange::State::GivingUp: return u"Giving up"_s;
        }
        Q_UNREACHABLE();
    }

    Programme m_programme;
    ProgrammeExchange m_exchange{{crono, link, globais, log},
                                 ClockModel::Hct7200,
                                 m_programme,
                                 [this] { return m_programme.table; }};
};

class FirmwareUnderTest final : public ExchangeUnderTest {
public:
    FirmwareUnderTest()
    {
        establish();
        QByteArray text = ":0400100001020304E2\n:03FFFE00ABCDEF99\n:0400100001020304E2\n"
                          ":00000001FF\n"_ba;
        QBuffer buffer(&text);
        buffer.open(QIODevice::ReadOnly);
        m_file.LoadHexFile(buffer, u"x.hex"_s);
        QObject::connect(&m_transfer, &FirmwareTransfer::lineAcknowledged, &m_transfer,
                         [this](qint16 index) { tell(u"line %1"_s.arg(index)); });
        QObject::connect(&m_transfer, &FirmwareTransfer::failed, &m_transfer,
                         [this] { tell(u"failed"_s); });
        m_transfer.start();
    }

private:
    QString state() const override
    {
        const bool isIdle = m_transfer.state() == FirmwareTransfer::State::Idle;
        return u"%1 line %2, %3 failed"_s.arg(isIdle ? u"Idle"_s : u"Sending"_s)
            .arg(m_transfer.CurrentLine())
            .arg(m_transfer.FailCount());
    }

    HexFile m_file;
    FirmwareTransfer m_transfer{m_file, crono, link};
};

} // namespace

QString stateOf(const ConnectionWorkflow& workflow)
{
    return u"%1, %2 failed"_s.arg(stateName(workflow.state())).arg(workflow.FailedAttempts());
}

ExchangeUnderTest::ExchangeUnderTest()
{
    QObject::connect(&workflow, &ConnectionWorkflow::clockCommandsUnlocked, &workflow,
                     [this] { tell(u"unlocked"_s); });
    QObject::connect(&workflow, &ConnectionWorkflow::clockCommandsLocked, &workflow,
                     [this] { tell(u"locked"_s); });
    QObject::connect(&workflow, &ConnectionWorkflow::clockWindowsOutdated, &workflow,
                     [this] { tell(u"windows outdated"_s); });
    QObject::connect(&workflow, &ConnectionWorkflow::connectionStatusChanged, &workflow,
                     [this](bool on) { tell(on ? u"connected"_s : u"not connected"_s); });
    QObject::connect(&link, &MessageLink::VisualizaPorto, &link,
                     [this](const QString& /*text*/, const QString& tip) { portToolTip = tip; });
    workflow.load();
}

std::unique_ptr<ExchangeUnderTest> ExchangeUnderTest::make(ExchangeKind kind)
{
    using State = ProgrammeExchange::State;
    switch (kind) {
    case ExchangeKind::Identification: return std::make_unique<IdentificationUnderTest>();
    case ExchangeKind::GeneralData: return std::make_unique<GeneralDataUnderTest>();
    case ExchangeKind::ClockSetting: return std::make_unique<ClockSettingUnderTest>();
    case ExchangeKind::ModeAndOutputs: return std::make_unique<RemoteControlUnderTest>(false);
    case ExchangeKind::Switching: return std::make_unique<RemoteControlUnderTest>(true);
    case ExchangeKind::HolidaysRead: return std::make_unique<ProgrammeUnderTest>(State::Opening);
    case ExchangeKind::BlockWritten:
        return std::make_unique<ProgrammeUnderTest>(State::WritingBlocks);
    case ExchangeKind::HolidaysWritten:
        return std::make_unique<ProgrammeUnderTest>(State::WritingHolidays);
    case ExchangeKind::FirmwareLine: return std::make_unique<FirmwareUnderTest>();
    case ExchangeKind::GeneralDataOfSending:
        return std::make_unique<ProgrammeUnderTest>(State::SendRequested);
    }
    Q_UNREACHABLE();
}

QString ExchangeUnderTest::report()
{
    QStringList parts{state()};
    if (!log.lines.isEmpty())
        parts.append(log.lines.join(u"; "_s));
    if (!m_told.isEmpty())
        parts.append(m_told.join(u"; "_s));
    log.lines.clear();
    m_told.clear();
    return parts.join(u" | "_s);
}

QByteArray ExchangeUnderTest::nextRequest()
{
    const auto isDone = [this] { return !serie.writes.isEmpty() || !trace.statuses.isEmpty(); };
    for (int ticks = 0; ticks < mostTicksOfARequest && !isDone(); ++ticks)
        tick();
    return serie.takeWritten();
}

QByteArray ExchangeUnderTest::goodAnswerTo(const QByteArray& request)
{
    const QByteArray codeAndSelector =
        QByteArray(1, static_cast<char>(request.at(5) & ~0x10)) + request.at(6);
    if (codeAndSelector == "\x89\0"_ba)
        return frame(1, 8, fullBlock());
    if (codeAndSelector == "\x89\xca"_ba)
        return frame(1, 8, "\xca\5"_ba);
    if (codeAndSelector == "\x89\xd9"_ba)
        return frame(1, 8, "\xd9"_ba + QByteArray(31, '\0') + "\1\5"_ba + QByteArray(32, '\0'));
    return frame(1, 8, codeAndSelector.mid(1) + '\0');
}

void ExchangeUnderTest::answerNext()
{
    serie.arrive(goodAnswerTo(nextRequest()));
    trace.take();
}

void ExchangeUnderTest::establish()
{
    workflow.Conectar(false);
    answerNext();
    answerNext();
    report();
}
