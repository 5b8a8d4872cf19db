#include "ComPortClient.h"

#include "ComPortCommands.h"
#include "Telnet.h"

#include <QtEndian>

using namespace Qt::StringLiterals;

namespace {

constexpr unsigned bitOf(comport::Code code) { return 1U << code; }

constexpr unsigned allSettings = bitOf(comport::SetSpeed) | bitOf(comport::SetDataSize) |
                                 bitOf(comport::SetParity) | bitOf(comport::SetStopSize);

bool isSpeedConfirmed(const QByteArray& answer, const LineSettings& settings)
{
    return answer.size() == sizeof(quint32) &&
           isSpeedNear(qFromBigEndian<quint32>(answer.constData()), settings.speed);
}

} // namespace

ComPortClient::ComPortClient(const LineSettings& settings, bool dtr, bool rts)
    : m_settings(settings), m_dtr(dtr), m_rts(rts)
{}

void ComPortClient::take(QByteArrayView bytes, QByteArray& data, QByteArray& answers)
{
    while (const auto command = m_reader.read(bytes, data)) {
        if (command->verb != telnet::SB)
            takeOption(*command, answers);
        else if (command->option == telnet::ComPort)
            takeComPort(command->value);
    }
}

void ComPortClient::takeOption(const TelnetReader::Command& command, QByteArray& answers)
{
    answers += m_options.answer(command.verb, command.option);
    if (m_options.isComPortRefused())
        return refuse(u"no admite RFC 2217"_s);
    if (m_options.isBinaryRefused())
        return refuse(u"no admite datos binarios"_s);
    if (m_step != Step::Options || !m_options.areAgreed())
        return;
    m_step = Step::Settings;
    answers += comport::setLine(m_settings) + comport::setDtrAndRts(m_dtr, m_rts);
}

void ComPortClient::takeComPort(const QByteArray& value)
{
    // What the far end tells of itself, of its modem and of its line is not needed.
    if (value.isEmpty() || static_cast<quint8>(value.front()) < comport::answerOffset)
        return;
    const auto code =
        static_cast<quint8>(static_cast<quint8>(value.front()) - comport::answerOffset);
    if (code == comport::SuspendFlow || code == comport::ResumeFlow)
        m_suspended = code == comport::SuspendFlow;
    else if (m_step == Step::Settings)
        takeSetting(code, value.sliced(1));
}

void ComPortClient::takeSetting(quint8 code, const QByteArray& value)
{
    switch (code) {
    case comport::SetSpeed:
        if (!isSpeedConfirmed(value, m_settings))
            return refuse(u"no admite la velocidad de %1 bit/s"_s.arg(m_settings.speed));
        break;
    case comport::SetDataSize:
        if (value != comport::dataSizeValue(m_settings))
            return refuse(u"no admite %1 bits de datos"_s.arg(m_settings.dataBits));
        break;
    case comport::SetParity:
        if (value != comport::parityValue(m_settings))
            return refuse(u"no admite la paridad elegida"_s);
        break;
    case comport::SetStopSize:
        if (value != comport::stopSizeValue(m_settings))
            return refuse(u"no admite los bits de parada elegidos"_s);
        break;
    default: return;
    }
    m_confirmed |= 1U << code;
    if (m_confirmed == allSettings)
        m_step = Step::Ready;
}

void ComPortClient::refuse(const QString& what)
{
    if (m_step == Step::Refused)
        return;
    m_step = Step::Refused;
    m_refusal = what;
}
