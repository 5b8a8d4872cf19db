#include "ModemLine.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace simulator {

namespace {

constexpr qsizetype maximumCommand = 256;
constexpr QByteArrayView escape("+++ATH");

QByteArray result(const char* word) { return QByteArray("\r\n") + word + "\r\n"; }

QByteArray information(const QString& text)
{
    return result(text.toLatin1().constData()) + result("OK");
}

/// A modem ignores whatever precedes the "AT" of a line.
QString commandIn(const QString& line)
{
    return line.mid(std::max<qsizetype>(line.indexOf("AT"_L1, 0, Qt::CaseInsensitive), 0))
        .trimmed();
}

QString masked(const QString& command)
{
    const QString secret = u"AT+CPIN="_s;
    return command.startsWith(secret, Qt::CaseInsensitive) ? secret + u"****"_s : command;
}

} // namespace

ModemLine::ModemLine(QObject* parent) : QObject(parent)
{
    m_dialDelay.setSingleShot(true);
    m_dialDelay.setInterval(500);
    connect(&m_dialDelay, &QTimer::timeout, this, &ModemLine::finishDialling);
    m_chatter.setInterval(10);
    connect(&m_chatter, &QTimer::timeout, this, [this] { emit replied("RING RING "); });
}

void ModemLine::setChatter(bool on)
{
    if (on)
        m_chatter.start();
    else
        m_chatter.stop();
}

void ModemLine::setDial(Dial dial, int rate)
{
    m_dial = dial;
    m_rate = rate;
}

void ModemLine::setReply(const QString& command, const QByteArray& reply)
{
    if (reply.isEmpty())
        m_replies.remove(command.toUpper());
    else
        m_replies[command.toUpper()] = reply;
}

void ModemLine::take(const QByteArray& bytes)
{
    for (qsizetype at = 0; at < bytes.size(); ++at) {
        if (isInCall())
            return takeCallData(bytes.mid(at));
        takeCommandByte(bytes[at]);
    }
}

void ModemLine::hangUp()
{
    if (m_state == State::Command)
        return;
    endCall();
    reply(result("NO CARRIER"));
}

void ModemLine::dropLine()
{
    m_line.clear();
    endCall();
}

void ModemLine::takeCommandByte(char byte)
{
    if (m_state == State::Dialling)
        return;
    if (m_echo && !m_silent)
        emit replied(QByteArray(1, byte));
    if (byte == '\r') {
        const QString line = commandIn(QString::fromLatin1(m_line));
        m_line.clear();
        if (!line.isEmpty())
            obey(line);
    } else if (byte == '\b') {
        m_line.chop(1);
    } else if (byte != '\n' && m_line.size() < maximumCommand) {
        m_line.append(byte);
    }
}

void ModemLine::takeCallData(const QByteArray& bytes)
{
    const QByteArray latest = m_callTail + bytes;
    if (latest.contains(escape)) {
        endCall();
        return reply(result("OK"));
    }
    m_callTail = latest.right(escape.size() - 1);
    emit dataArrived(bytes);
}

void ModemLine::obey(const QString& line)
{
    emit commanded(masked(line));
    if (m_silent)
        return;
    const QString command = line.toUpper();
    if (m_replies.contains(command))
        return reply(m_replies.value(command));
    if (command.startsWith("ATD"_L1))
        return dial(line.mid(3));
    reply(resultOf(command));
}

QByteArray ModemLine::resultOf(const QString& command)
{
    const QString secret = u"AT+CPIN="_s;
    if (command.startsWith(secret))
        return result(m_simCard.enter(command.mid(secret.size())) ? "OK" : "ERROR");
    if (command.startsWith("AT+"_L1))
        return queryResult(command);
    const bool good = command.startsWith("AT"_L1) && obeyBasics(command.mid(2));
    return result(good ? "OK" : "ERROR");
}

QByteArray ModemLine::queryResult(const QString& command)
{
    if (command == "AT+CPIN?"_L1 && !m_simCard.stateText().isEmpty())
        return information(u"+CPIN: "_s + m_simCard.stateText());
    if (command == "AT+CSQ"_L1)
        return information(u"+CSQ: %1,0"_s.arg(m_signal));
    if (command == "AT+CREG?"_L1)
        return information(m_simCard.state() == SimCard::State::Ready ? u"+CREG: 0,1"_s
                                                                      : u"+CREG: 0,0"_s);
    return result("ERROR");
}

/// Any number of basic commands: a letter, with an optional "&" before and an optional number after
/// it.
bool ModemLine::obeyBasics(const QString& basics)
{
    qsizetype at = 0;
    while (at < basics.size()) {
        const bool extended = basics[at] == u'&';
        at += extended ? 1 : 0;
        if (at >= basics.size() || !basics[at].isLetter())
            return false;
        const QChar letter = basics[at++];
        QString number;
        while (at < basics.size() && (basics[at].isDigit() || basics[at] == u'='))
            number += basics[at++];
        if (letter == u'E' && !extended)
            m_echo = number != "0"_L1;
    }
    return true;
}

void ModemLine::dial(const QString& number)
{
    m_number = number.trimmed();
    if (m_number.startsWith(u'T', Qt::CaseInsensitive) ||
        m_number.startsWith(u'P', Qt::CaseInsensitive))
        m_number = m_number.mid(1).trimmed();
    if (m_number.isEmpty() || m_simCard.state() != SimCard::State::Ready)
        return reply(result("ERROR"));
    m_state = State::Dialling;
    m_dialDelay.start();
}

void ModemLine::finishDialling()
{
    m_state = State::Command;
    switch (m_dial) {
    case Dial::Connect:
        m_state = State::Call;
        reply(
            result(m_rate > 0 ? ("CONNECT " + QByteArray::number(m_rate)).constData() : "CONNECT"));
        emit callBegan();
        return;
    case Dial::Busy: return reply(result("BUSY"));
    case Dial::NoCarrier: return reply(result("NO CARRIER"));
    case Dial::NoAnswer: return reply(result("NO ANSWER"));
    case Dial::NoDialtone: return reply(result("NO DIALTONE"));
    case Dial::Error: return reply(result("ERROR"));
    case Dial::Silence: return;
    case Dial::Chatter: return setChatter(true);
    }
}

void ModemLine::reply(const QByteArray& bytes)
{
    emit answered(QString::fromLatin1(bytes).simplified());
    emit replied(bytes);
}

void ModemLine::endCall()
{
    const bool wasInCall = isInCall();
    m_dialDelay.stop();
    m_state = State::Command;
    m_callTail.clear();
    if (wasInCall)
        emit callEnded();
}

} // namespace simulator
