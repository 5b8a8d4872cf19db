#include "PlayedWindows.h"

#include "ProgrammeMessages.h"
#include "StatusBlock.h"

#include <QBuffer>

using namespace Qt::StringLiterals;

namespace {

/// In ticks of the timer service.
constexpr qint16 settingPeriod = 1;
constexpr qint16 remotePeriod = 3;

/// A record of an Intel HEX file.
QByteArray record(int type, int address, const QByteArray& data)
{
    QByteArray bytes;
    for (const int value : {int(data.size()), address >> 8, address & 0xFF, type})
        bytes.append(static_cast<char>(value));
    bytes += data;
    int sum = 0;
    for (const char byte : std::as_const(bytes))
        sum += byte;
    bytes.append(static_cast<char>(-sum));
    return ':' + bytes.toHex().toUpper() + "\r\n";
}

QByteArray hexText(const QList<ExpectedSession::Line>& image)
{
    QByteArray text;
    for (const ExpectedSession::Line& line : image) {
        const auto high = static_cast<quint16>(line.address >> 16);
        const QByteArray base =
            QByteArray(1, static_cast<char>(high >> 8)) + static_cast<char>(high & 0xFF);
        text += record(4, 0, base) + record(0, static_cast<int>(line.address & 0xFFFF), line.data);
    }
    return text + record(1, 0, {});
}

} // namespace

QByteArray PlayedWindows::timeBytes(const ClockFields& fields)
{
    QByteArray bytes;
    for (const int value : {fields.seconds, fields.minutes, fields.hours, fields.day, fields.month,
                            fields.year % 100})
        bytes.append(static_cast<char>(value));
    return bytes;
}

void PlayedWindows::openSetting()
{
    const Invariants::Event event(m_invariants);
    m_invariants.expected.setting.state = 0;
    m_invariants.expected.setting.failures = 0;
    m_setting = std::make_unique<SettingWindow>(m_fixture.crono, settingPeriod, m_invariants,
                                                m_fixture.link, m_invariants, m_fixture.clock);
    ClockSetting* const setting = &m_setting->client;
    QObject::connect(setting, &ClockSetting::accepted, setting, [this] {
        ++m_invariants.shown.accepted;
        closeSetting();
    });
    QObject::connect(setting, &ClockSetting::gaveUp, setting, [windows = this] {
        // The window may be destroyed under its box, and with it what this function has captured.
        PlayedWindows& here = *windows;
        ++here.m_invariants.shown.settingGaveUp;
        here.openBox();
        here.m_invariants.expected.log.append(u"Error intentando puesta en hora del equipo"_s);
    });
}

void PlayedWindows::setClock(const std::optional<ClockFields>& fields)
{
    const Invariants::Event event(m_invariants);
    auto& expected = m_invariants.expected.setting;
    expected.failures = 0;
    expected.state = fields ? 1 : 2;
    if (fields) {
        expected.fields = timeBytes(*fields);
        m_setting->client.setFields(*fields);
    }
    m_setting->client.begin(fields ? ClockSetting::State::Manual : ClockSetting::State::Automatic);
    m_setting->registration.ActivaCliente();
}

void PlayedWindows::openRemote()
{
    const Invariants::Event event(m_invariants);
    const QByteArray& data = m_fixture.globais.GeneralData;
    const bool isManual = data.size() > 219 && (data[219] & 4) != 0;
    m_invariants.expected.remote = {};
    m_invariants.expected.remote.isManual = isManual;
    m_invariants.shown.state = -1;
    m_remote =
        std::make_unique<RemoteWindow>(m_fixture.crono, remotePeriod, m_invariants, m_fixture.link,
                                       StatusBlock(data).isRemoteControlled());
    RemoteControl* const remote = &m_remote->client;
    QObject::connect(remote, &RemoteControl::stateRead, remote,
                     [this](quint8 restBits) { m_invariants.shown.state = restBits; });
    m_remote->registration.ActivaCliente();
}

void PlayedWindows::setManual(bool manual)
{
    const Invariants::Event event(m_invariants);
    auto& expected = m_invariants.expected.remote;
    expected.isManual = manual;
    if (manual && expected.isStateKnown)
        expected.next = 1;
    m_remote->client.setManual(manual);
}

void PlayedWindows::toggle(int output)
{
    const Invariants::Event event(m_invariants);
    auto& expected = m_invariants.expected.remote;
    int& position = expected.positions[static_cast<std::size_t>(output)];
    if (expected.isManual)
        position = 1 - position;
    m_remote->client.toggle(output);
}

void PlayedWindows::openProgramme()
{
    const Invariants::Event event(m_invariants);
    auto& expected = m_invariants.expected.programme;
    expected.state = 0;
    expected.failures = 0;
    const QByteArray& data = m_fixture.globais.GeneralData;
    expected.is7200 = data.size() <= 12 || data[12] == 30;
    expected.programme = &programme;
    expected.table = &programme.table;
    const ClockModel model = expected.is7200 ? ClockModel::Hct7200 : ClockModel::Hct7300;
    programme = {};
    ProgrammeMessages::LoadBlocksFromStatusBlock(programme, StatusBlock(data), model);
    checkBlocks(data);
    m_exchange =
        std::make_unique<Exchange>(m_invariants,
                                   ProgrammeExchange::Services{m_fixture.crono, m_fixture.link,
                                                               m_fixture.globais, m_invariants},
                                   model, programme, [this] { return programme.table; });
    connectExchange();
}

void PlayedWindows::checkBlocks(const QByteArray& generalData)
{
    if (generalData.size() < 220)
        return;
    for (int number = 0; number < 3; ++number) {
        const AlarmBlock& block = programme.blocks[static_cast<std::size_t>(number)];
        const QByteArray body =
            ExpectedSession::blockBody(block, number, m_invariants.expected.programme.is7200);
        m_invariants.require(body.mid(2, 64) == generalData.mid(20 + 66 * number, 64),
                             "alarms are loaded that were not sent");
    }
}

void PlayedWindows::connectExchange()
{
    ProgrammeExchange* const exchange = m_exchange.get();
    QObject::connect(exchange, &ProgrammeExchange::holidaysRead, exchange,
                     [this](const HolidayTable& table) {
                         ++m_invariants.shown.holidaysRead;
                         m_invariants.shown.holidays = ExpectedSession::tableBytes(table);
                         programme.table = table;
                     });
    QObject::connect(exchange, &ProgrammeExchange::sent, exchange, [this] {
        ++m_invariants.shown.sent;
        closeProgramme();
    });
    QObject::connect(exchange, &ProgrammeExchange::failed, exchange, [this] {
        ++m_invariants.shown.programmeGaveUp;
        openBox();
    });
}

void PlayedWindows::readHolidays()
{
    const Invariants::Event event(m_invariants);
    m_invariants.expected.programme.state = 2;
    if (!m_invariants.isConnected())
        m_invariants.expected.programmeGivesUp();
    m_exchange->readHolidays();
}

void PlayedWindows::sendProgramme()
{
    const Invariants::Event event(m_invariants);
    m_invariants.expected.programme.state = 1;
    m_invariants.expected.programme.block = 0;
    if (!m_invariants.isConnected())
        m_invariants.expected.programmeGivesUp();
    m_exchange->send();
}

void PlayedWindows::openFirmware(const QList<ExpectedSession::Line>& image)
{
    const Invariants::Event event(m_invariants);
    m_image = image;
    QByteArray text = hexText(image);
    QBuffer file(&text);
    file.open(QIODevice::ReadOnly);
    m_file.LoadHexFile(file, u"imagen.hex"_s);
    m_invariants.require(m_file.LineCount() == image.size(), "not all lines are loaded");
    m_invariants.expected.firmware.line = 0;
    m_invariants.expected.firmware.failures = 0;
    m_invariants.expected.firmware.image = &m_image;
    m_invariants.shown.acknowledged = -1;
    m_transfer = std::make_unique<Transfer>(m_invariants, m_file, m_fixture.crono, m_fixture.link);
    connectTransfer();
}

void PlayedWindows::connectTransfer()
{
    FirmwareTransfer* const transfer = m_transfer.get();
    QObject::connect(transfer, &FirmwareTransfer::lineAcknowledged, transfer,
                     [this](qint16 index, qint32 lastAddress) {
                         const ExpectedSession::Line& line = m_image.at(index);
                         m_invariants.shown.acknowledged = index;
                         m_invariants.require(static_cast<quint32>(lastAddress) ==
                                                  line.address +
                                                      static_cast<quint32>(line.data.size()) - 1,
                                              "the address shown is not that of the line");
                     });
    QObject::connect(transfer, &FirmwareTransfer::finished, transfer,
                     [this] { ++m_invariants.shown.finished; });
    QObject::connect(transfer, &FirmwareTransfer::failed, transfer,
                     [this] { ++m_invariants.shown.firmwareFailed; });
}

void PlayedWindows::sendFirmware(bool resets)
{
    const Invariants::Event event(m_invariants);
    auto& expected = m_invariants.expected.firmware;
    expected.isSending = true;
    expected.line = 0;
    expected.resets = resets;
    m_invariants.shown.acknowledged = -1;
    m_transfer->setResetAfterwards(resets);
    m_transfer->start();
}

void PlayedWindows::interruptFirmware()
{
    const Invariants::Event event(m_invariants);
    m_invariants.expected.firmware.isSending = false;
    m_invariants.released(Asker::Firmware);
    m_transfer->interrupt();
}

void PlayedWindows::closeSetting()
{
    const Invariants::Event event(m_invariants);
    if (!m_setting)
        return;
    m_invariants.expected.setting.state = 0;
    if (!destroysAtOnce) {
        m_setting->client.stop();
        m_setting->registration.EliminaCliente();
    }
    discard(m_setting, Asker::Setting);
}

void PlayedWindows::closeRemote()
{
    const Invariants::Event event(m_invariants);
    if (!m_remote)
        return;
    if (!destroysAtOnce) {
        m_remote->client.stop();
        m_remote->registration.EliminaCliente();
    }
    discard(m_remote, Asker::Remote);
}

void PlayedWindows::closeProgramme()
{
    const Invariants::Event event(m_invariants);
    if (!m_exchange)
        return;
    m_invariants.expected.programme.state = 0;
    m_invariants.expected.programme.isFailurePosted = false;
    if (!destroysAtOnce)
        m_exchange->stop();
    discard(m_exchange, Asker::Programme);
}

void PlayedWindows::closeFirmware()
{
    const Invariants::Event event(m_invariants);
    if (!m_transfer)
        return;
    m_invariants.expected.firmware.isSending = false;
    if (!destroysAtOnce)
        m_transfer->leave();
    discard(m_transfer, Asker::Firmware);
}

void PlayedWindows::openBox() const
{
    if (whileBoxIsOpen)
        whileBoxIsOpen();
}

template<typename Part>
void PlayedWindows::discard(std::unique_ptr<Part>& part, Asker asker)
{
    m_invariants.released(asker);
    // Taken out first: the destructors must find the window closed.
    std::shared_ptr<void> closed(std::move(part));
    if (!destroysAtOnce)
        m_closed.push_back(std::move(closed));
}
