#include "NetworkSerialPort.h"

#include "ComPortCommands.h"
#include "InputFilter.h"
#include "NetworkAddress.h"
#include "SocketOptions.h"
#include "Wipe.h"

#include <QEventLoop>
#include <QHostInfo>
#include <QNetworkProxy>
#include <QTcpSocket>
#include <QTimer>

#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// How many bytes are read at a time. The rest is read when the event loop runs again.
constexpr qsizetype pieceSize = 16384;
/// How many such pieces are discarded at a time: a far end may send without end.
constexpr int mostPiecesDiscarded = 16;
/// How long nothing is read from a far end that negotiates, even when nothing is told.
constexpr std::chrono::milliseconds pauseBetweenLooks{100};

/// RFC 2217 has no name for fewer data bits.
constexpr int fewestDataBits = 5;

QString noAnswer(const QString& device)
{
    return u"%1 no contesta: compruebe la dirección y la red."_s.arg(device);
}

QString connectionFailure(const QTcpSocket& socket, const QString& device)
{
    switch (socket.error()) {
    case QAbstractSocket::ConnectionRefusedError:
        return u"%1: conexión rechazada, compruebe la dirección y que el equipo está preparado."_s
            .arg(device);
    case QAbstractSocket::NetworkError:
    case QAbstractSocket::SocketTimeoutError: return noAnswer(device);
    default: return u"No se puede abrir %1 (%2)."_s.arg(device, socket.errorString());
    }
}

} // namespace

NetworkSerialPort::NetworkSerialPort(const QString& device, LookUp lookUp, QObject* parent)
    : SerialPort(parent), m_device(device), m_lookUp(std::move(lookUp))
{}

NetworkSerialPort::~NetworkSerialPort()
{
    if (isOpen())
        closeDevice();
}

std::chrono::milliseconds NetworkSerialPort::answerAllowance() const { return 3s; }

void NetworkSerialPort::lookUpByTheSystem(const QString& name, QObject* context,
                                          const AddressReceiver& found)
{
    QHostInfo::lookupHost(name, context, found);
}

QString NetworkSerialPort::openDevice()
{
    const LineSettingsResult parsed = parseLineSettings(settings());
    if (!parsed.settings)
        return parsed.reason;
    const auto address = NetworkAddress::of(m_device);
    if (!address)
        return NetworkAddress::mistakeIn(m_device) + u'.';
    m_client.reset();
    if (address->protocol == NetworkAddress::Protocol::Rfc2217) {
        if (parsed.settings->dataBits < fewestDataBits)
            return u"%1 no admite %2 bits de datos."_s.arg(m_device).arg(parsed.settings->dataBits);
        m_client.emplace(*parsed.settings, isDtrEnabled(), isRtsEnabled());
    }
    m_openFailure.clear();
    forgetLastBytes();
    m_isBroken = false;
    m_step = Step::Connecting;
    reach(*address);
    if (!isOpen())
        dropSocket();
    return m_openFailure;
}

void NetworkSerialPort::reach(const NetworkAddress& address)
{
    QEventLoop wait;
    m_wait = &wait;
    m_deadline.setRemainingTime(longestOpening);
    findAddresses(address);
    if (isUndecided())
        waitUntilDecided();
    m_wait = nullptr;
}

void NetworkSerialPort::findAddresses(const NetworkAddress& address)
{
    m_networkPort = address.port;
    m_addressFailure.clear();
    if (const QHostAddress literal(address.host); !literal.isNull())
        return tryAddresses({literal});
    m_lookUp(address.host, m_wait, [this](const QHostInfo& host) {
        if (m_step == Step::Connecting)
            tryAddresses(host.addresses());
    });
}

void NetworkSerialPort::tryAddresses(const QList<QHostAddress>& addresses)
{
    if (addresses.isEmpty())
        return failOpening(u"%1: no se encuentra el equipo, compruebe su nombre."_s.arg(m_device));
    m_addresses = addresses;
    tryNextAddress();
}

void NetworkSerialPort::tryNextAddress()
{
    dropSocket();
    m_socket = new QTcpSocket(this);
    m_socket->setProxy(QNetworkProxy::NoProxy);
    connect(m_socket, &QTcpSocket::connected, this, &NetworkSerialPort::connected);
    connect(m_socket, &QTcpSocket::errorOccurred, this, &NetworkSerialPort::socketFailed);
    connect(m_socket, &QTcpSocket::readyRead, this, &NetworkSerialPort::bytesArrived);
    // The last one has all that is left.
    if (const auto left = m_addresses.size(); left > 1)
        QTimer::singleShot(std::chrono::milliseconds(m_deadline.remainingTime() / left), m_socket,
                           [this, socket = m_socket] {
                               if (socket == m_socket && m_step == Step::Connecting)
                                   addressFailed(noAnswer(m_device));
                           });
    // Without buffers of the toolkit, which would keep copies of the bytes, and grow.
    m_socket->connectToHost(m_addresses.takeFirst(), m_networkPort,
                            QIODevice::ReadWrite | QIODevice::Unbuffered);
}

void NetworkSerialPort::addressFailed(const QString& reason)
{
    // One that refuses may be the wrong one, and the right one silent.
    if (m_addressFailure != noAnswer(m_device))
        m_addressFailure = reason;
    if (m_addresses.isEmpty())
        return failOpening(m_addressFailure);
    // Later: the socket may be in the midst of its work.
    QTimer::singleShot(0, m_socket, [this, socket = m_socket] {
        if (socket == m_socket && m_step == Step::Connecting)
            tryNextAddress();
    });
}

void NetworkSerialPort::waitUntilDecided()
{
    QTimer::singleShot(longestOpening, m_wait, [this] { openingTimedOut(); });
    // Wine, at least, does not tell each end of a connection that is cut at its beginning.
    QTimer look;
    connect(&look, &QTimer::timeout, this, &NetworkSerialPort::readArrived);
    look.start(pauseBetweenLooks);
    setOpening(true);
    // A receiver may have closed the port, and a loop does not know that it was ended before.
    if (isUndecided()) {
        // Input that waited would be carried out afterwards: three clicks would open three times.
        const InputFilter filter;
        m_wait->exec();
    }
    m_wait = nullptr;
    // The loop also ends when the program does.
    if (!isOpen())
        m_step = Step::Closed;
    setOpening(false);
}

void NetworkSerialPort::abandonOpening()
{
    m_openFailure.clear();
    decide(Step::Closed);
}

void NetworkSerialPort::decide(Step step)
{
    m_step = step;
    if (m_wait)
        m_wait->quit();
}

void NetworkSerialPort::failOpening(const QString& reason)
{
    m_openFailure = reason;
    decide(Step::Closed);
}

void NetworkSerialPort::connected()
{
    m_socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    endWhenFarEndIsDead(m_socket->socketDescriptor());
    acknowledgeAtOnce(m_socket->socketDescriptor());
    if (!m_client)
        return decide(Step::Open);
    m_step = Step::Negotiating;
    send(ComPortClient::requests());
    QTimer::singleShot(longestNegotiation, m_socket, [this, socket = m_socket] {
        // That of an earlier opening is deleted later.
        if (socket == m_socket)
            negotiationTimedOut();
    });
}

void NetworkSerialPort::openingTimedOut()
{
    if (m_step == Step::Negotiating && m_client->step() == ComPortClient::Step::Settings)
        failOpening(u"%1 no confirma los parámetros %2."_s.arg(m_device, settings()));
    else if (m_step == Step::Connecting || m_step == Step::Negotiating)
        failOpening(noAnswer(m_device));
}

void NetworkSerialPort::negotiationTimedOut()
{
    if (m_step == Step::Negotiating && m_client->step() == ComPortClient::Step::Options)
        failOpening(u"%1 no admite RFC 2217."_s.arg(m_device));
}

void NetworkSerialPort::negotiate()
{
    if (m_client->step() == ComPortClient::Step::Ready)
        decide(Step::Open);
    else if (m_client->step() == ComPortClient::Step::Refused)
        failOpening(u"%1 %2."_s.arg(m_device, m_client->refusal()));
}

void NetworkSerialPort::socketFailed()
{
    if (m_step == Step::Connecting)
        addressFailed(connectionFailure(*m_socket, m_device));
    else
        loseLater();
}

void NetworkSerialPort::bytesArrived()
{
    // Later: a receiver may open a box, and the socket tells of no further bytes before its signal
    // has returned.
    if (!std::exchange(m_isArrivalTold, true))
        readLater();
    // Bytes are told once until they are read. The end of a connection may be told over and over on
    // Windows, where the event loop comes to nothing else until it has been read.
    else if (take(m_lastBytes))
        m_hasLastBytes = true;
}

void NetworkSerialPort::readLater()
{
    QMetaObject::invokeMethod(this, &NetworkSerialPort::readArrived, Qt::QueuedConnection);
}

void NetworkSerialPort::readArrived()
{
    m_isArrivalTold = false;
    if (m_step != Step::Negotiating && m_step != Step::Open)
        return;
    QByteArray data = std::exchange(m_lastBytes, {});
    if (!std::exchange(m_hasLastBytes, false)) {
        if (m_isBroken)
            return lose();
        if (!take(data))
            return;
    }
    // The end of the connection may have been told together with these bytes.
    readLater();
    if (isOpen())
        deliver(std::move(data));
    else
        negotiate();
}

bool NetworkSerialPort::take(QByteArray& data)
{
    QByteArray bytes(pieceSize, Qt::Uninitialized);
    const qint64 count = m_socket->read(bytes.data(), bytes.size());
    if (count < 0)
        loseLater();
    if (count <= 0)
        return false;
    acknowledgeAtOnce(m_socket->socketDescriptor());
    bytes.truncate(count);
    if (!m_client) {
        if (data.isEmpty()) {
            data = std::move(bytes);
        } else {
            data.append(bytes);
            wipe(bytes);
        }
        return true;
    }
    data.reserve(data.size() + count);
    QByteArray answers;
    m_client->take(bytes, data, answers);
    wipe(bytes);
    send(answers);
    if (isOpen() && m_client->step() == ComPortClient::Step::Refused)
        loseLater();
    if (!m_client->isSuspended())
        sendWaiting();
    return true;
}

// Later: the caller, or who has called it, may be in the midst of its work.
void NetworkSerialPort::loseLater()
{
    m_isBroken = true;
    readLater();
}

void NetworkSerialPort::lose()
{
    if (isOpen())
        deviceGone();
    else
        failOpening(u"%1 ha cortado la conexión: quizá lo usa otro equipo."_s.arg(m_device));
}

void NetworkSerialPort::clearInput()
{
    SerialPort::clearInput();
    forgetLastBytes();
    if (!isOpen() || m_isBroken)
        return;
    QByteArray data;
    for (int piece = 0; piece < mostPiecesDiscarded && take(data); ++piece)
        wipe(data);
    if (m_client)
        send(comport::purgeReceived());
}

void NetworkSerialPort::forgetLastBytes()
{
    m_isArrivalTold = false;
    m_hasLastBytes = false;
    wipe(m_lastBytes);
}

void NetworkSerialPort::clearOutput()
{
    if (!isOpen())
        return;
    wipe(m_waiting);
    if (m_client)
        send(comport::purgeToSend());
}

void NetworkSerialPort::write(const QByteArray& bytes)
{
    if (!isOpen())
        return;
    if (!m_client)
        return send(bytes);
    QByteArray escaped = comport::escaped(bytes);
    if (!m_client->isSuspended()) {
        send(escaped);
    } else if (m_waiting.size() + escaped.size() <= outputCapacity) {
        // The largest size it can have: growing would leave copies in memory.
        m_waiting.reserve(outputCapacity);
        m_waiting.append(escaped);
    }
    wipe(escaped);
}

void NetworkSerialPort::sendWaiting()
{
    send(m_waiting);
    wipe(m_waiting);
}

void NetworkSerialPort::send(const QByteArray& bytes)
{
    // Whole or not at all, so that a command that follows can be read.
    if (bytes.isEmpty() || m_isBroken || m_socket->bytesToWrite() + bytes.size() > outputCapacity)
        return;
    if (m_socket->write(bytes) < 0)
        loseLater();
}

void NetworkSerialPort::applyLines()
{
    if (m_client)
        send(comport::setDtrAndRts(isDtrEnabled(), isRtsEnabled()));
}

void NetworkSerialPort::closeDevice()
{
    m_step = Step::Closed;
    dropSocket();
    forgetLastBytes();
    wipe(m_waiting);
}

void NetworkSerialPort::dropSocket()
{
    QTcpSocket* const socket = std::exchange(m_socket, nullptr);
    if (!socket)
        return;
    socket->disconnect(this);
    socket->abort();
    // Later, because this may be called from one of its signals.
    socket->deleteLater();
}
