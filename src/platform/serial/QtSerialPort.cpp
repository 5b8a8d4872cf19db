#include "QtSerialPort.h"

#ifdef Q_OS_LINUX
#include "DriverSettings.h"
#endif
#include "PortLock.h"
#include "Wipe.h"

#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <thread>

#include <poll.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

QSerialPort::Parity parityOf(char letter)
{
    switch (letter) {
    case 'E': return QSerialPort::EvenParity;
    case 'O': return QSerialPort::OddParity;
    case 'M': return QSerialPort::MarkParity;
    case 'S': return QSerialPort::SpaceParity;
    default: return QSerialPort::NoParity;
    }
}

QSerialPort::StopBits stopBitsOf(LineSettings::Stop stop)
{
    switch (stop) {
    case LineSettings::Stop::One: break;
    case LineSettings::Stop::OneAndHalf: return QSerialPort::OneAndHalfStop;
    case LineSettings::Stop::Two: return QSerialPort::TwoStop;
    }
    return QSerialPort::OneStop;
}

/// In milliseconds: how long a rest without events, and one with them, may be. During a rest the
/// loss of the device is not noticed. A rest with events ends so much earlier than the last byte
/// comes, because a QTimer has whole milliseconds only.
constexpr double shortestSleep = 0.5;
constexpr double longestSleep = 2;
constexpr double longestRest = 120;
constexpr double restMargin = 0.5;

/// So many bytes may be received soon after a writing because they were there before: of a late
/// answer, in the buffers of driver and adapter.
constexpr qsizetype earlierBytes = 64;

/// How many bytes are read at a time. The rest is read when the event loop runs again.
constexpr qsizetype readSize = 4096;

/// Whether reading or writing would fail again. Such a device may seem to be ready all the time,
/// and would be tried without end.
bool isLasting(int error) { return error != EAGAIN && error != EINTR; }

/// The shortest time of a byte on the line: the sender may be up to 3 % fast.
double millisecondsPerByte(const LineSettings& settings)
{
    const int parityBits = settings.parity == 'N' ? 0 : 1;
    const int stopBits = settings.stop == LineSettings::Stop::Two ? 2 : 1;
    return 970.0 * (1 + settings.dataBits + parityBits + stopBits) / settings.speed;
}

} // namespace

QtSerialPort::QtSerialPort(const PortNames& names, QObject* parent)
    : SerialPort(parent), m_names(names)
{
    m_rest.setTimerType(Qt::PreciseTimer);
    m_rest.setSingleShot(true);
    connect(&m_rest, &QTimer::timeout, this, &QtSerialPort::endRest);
}

QtSerialPort::~QtSerialPort()
{
    if (isOpen())
        closeDevice();
}

QString QtSerialPort::deviceName() const
{
    return isOpen() ? m_device : m_names.device(portNumber());
}

void QtSerialPort::clearInput()
{
    SerialPort::clearInput();
    if (!isOpen())
        return;
    // Disabling the notifier drops a pending activation, which would find nothing to read. endRest
    // enables it again.
    m_readable->setEnabled(false);
    m_port.clear(QSerialPort::Input);
    endRest();
}

void QtSerialPort::clearOutput()
{
    if (!isOpen())
        return;
    m_writable->setEnabled(false);
    wipe(m_waiting);
    m_port.clear(QSerialPort::Output);
}

void QtSerialPort::write(const QByteArray& bytes)
{
    if (!isOpen())
        return;
    m_sinceWriting.start();
    m_receivedSinceWriting = 0;
    // A failure is found again, and told, when the event loop runs: the caller, or who has called
    // it, may be in the midst of its work.
    const qsizetype taken = m_waiting.isEmpty() ? writeToDriver(bytes).count : 0;
    if (taken == bytes.size())
        return;
    // In a new buffer of the final size: growing would leave copies in memory.
    QByteArray waiting;
    waiting.reserve(m_waiting.size() + bytes.size() - taken);
    waiting.append(m_waiting.constData(), m_waiting.size());
    waiting.append(bytes.constData() + taken, bytes.size() - taken);
    wipe(m_waiting);
    m_waiting.swap(waiting);
    m_writable->setEnabled(true);
}

QString QtSerialPort::openDevice()
{
    const LineSettingsResult parsed = parseLineSettings(settings());
    if (!parsed.settings)
        return parsed.reason;
    m_device = m_names.device(portNumber());
    if (m_device.isEmpty())
        return u"No hay ningún puerto serie para COM%1: compruebe que el adaptador está conectado."_s
            .arg(portNumber());
    // The real path and not a link: the lock against other programs depends on the name.
    const QString path = QFileInfo(m_device).canonicalFilePath();
    if (path.isEmpty())
        return u"No existe %1: compruebe que el adaptador está conectado."_s.arg(m_device);

    m_port.setPortName(path);
    // Open with parameters that every port supports, so that a failure is not about the parameters.
    m_port.setBaudRate(QSerialPort::Baud9600);
    m_port.setParity(QSerialPort::NoParity);
    m_port.setDataBits(QSerialPort::Data8);
    m_port.setStopBits(QSerialPort::OneStop);
    if (!m_port.open(QIODevice::ReadWrite))
        return openFailure(path);
    const QString refused = applySettings(*parsed.settings);
    if (!refused.isEmpty()) {
        m_port.close();
        return u"%1 %2."_s.arg(m_device, refused);
    }
    applyLines();
    m_millisecondsPerByte = millisecondsPerByte(*parsed.settings);
    m_sinceWriting.invalidate();
    m_isFasterThanItsSpeed = false;
    watchDevice();
    return {};
}

void QtSerialPort::watchDevice()
{
    // Switch off the notifiers of QSerialPort, or it would read the bytes into its own buffer. It
    // has no option for this, so they are found as its children.
    const auto notifiers =
        m_port.findChildren<QSocketNotifier*>(QString(), Qt::FindDirectChildrenOnly);
    for (QSocketNotifier* notifier : notifiers)
        notifier->setEnabled(false);
    m_readable = makeNotifier(QSocketNotifier::Read, &QtSerialPort::readArrived);
    m_writable = makeNotifier(QSocketNotifier::Write, &QtSerialPort::writeWaiting);
    m_readable->setEnabled(true);
}

void QtSerialPort::closeDevice()
{
    m_rest.stop();
    // Disabled before the descriptor is closed, because its number may be used again. Deleted
    // later, because this may be called from one of them.
    for (QSocketNotifier** notifier : {&m_readable, &m_writable}) {
        (*notifier)->setEnabled(false);
        (*notifier)->deleteLater();
        *notifier = nullptr;
    }
    wipe(m_waiting);
    m_port.close();
}

void QtSerialPort::applyLines()
{
    // Failures are ignored: some devices, such as pseudo-terminals, have no such lines.
    m_port.setDataTerminalReady(isDtrEnabled());
    m_port.setRequestToSend(isRtsEnabled());
}

QSocketNotifier* QtSerialPort::makeNotifier(QSocketNotifier::Type type,
                                            void (QtSerialPort::*activated)())
{
    auto* notifier = new QSocketNotifier(m_port.handle(), type, this);
    notifier->setEnabled(false);
    connect(notifier, &QSocketNotifier::activated, this, activated);
    return notifier;
}

void QtSerialPort::readArrived()
{
    QByteArray bytes(readSize, Qt::Uninitialized);
    const ssize_t count = ::read(m_port.handle(), bytes.data(), static_cast<size_t>(bytes.size()));
    if (count <= 0) {
        if ((count < 0 && isLasting(errno)) || isDeviceGone())
            deviceGone();
        return;
    }
    bytes.truncate(count);
    measureSpeed(count);
    deliver(std::move(bytes));
    restWhileBytesAreOnTheWay();
}

void QtSerialPort::writeWaiting()
{
    const Written written = writeToDriver(m_waiting);
    wipeFront(m_waiting, written.count);
    m_writable->setEnabled(!m_waiting.isEmpty());
    if (written.hasFailed)
        deviceGone();
}

QtSerialPort::Written QtSerialPort::writeToDriver(const QByteArray& bytes)
{
    qsizetype taken = 0;
    while (taken < bytes.size()) {
        const ssize_t count = ::write(m_port.handle(), bytes.constData() + taken,
                                      static_cast<size_t>(bytes.size() - taken));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return {taken, count < 0 && isLasting(errno)};
        taken += count;
    }
    return {taken, false};
}

void QtSerialPort::restWhileBytesAreOnTheWay()
{
    if (!isOpen() || missingBytes() < 1 || m_isFasterThanItsSpeed)
        return;
    const double onTheWay = static_cast<double>(missingBytes()) * m_millisecondsPerByte;
    if (onTheWay < shortestSleep)
        return;
    if (onTheWay <= longestSleep) {
        std::this_thread::sleep_for(std::chrono::duration<double, std::milli>(onTheWay));
        return;
    }
    m_rest.start(static_cast<int>(std::min(onTheWay - restMargin, longestRest)));
    m_readable->setEnabled(false);
}

void QtSerialPort::measureSpeed(qsizetype count)
{
    if (!m_sinceWriting.isValid())
        return;
    m_receivedSinceWriting += count;
    const double least =
        static_cast<double>(m_receivedSinceWriting - earlierBytes) * m_millisecondsPerByte;
    if (static_cast<double>(m_sinceWriting.nsecsElapsed()) / 1e6 < least)
        m_isFasterThanItsSpeed = true;
}

void QtSerialPort::endRest()
{
    m_rest.stop();
    m_readable->setEnabled(true);
}

bool QtSerialPort::isDeviceGone() const
{
    pollfd device{m_port.handle(), 0, 0};
    // No other events can have been found: none was asked for.
    return ::poll(&device, 1, 0) > 0;
}

QString QtSerialPort::openFailure(const QString& path) const
{
    const QFileInfo device(path);
    if (!device.isReadable() || !device.isWritable())
        return u"Sin permiso para usar %1: añada su usuario al grupo dialout y vuelva a iniciar la "
               u"sesión."_s.arg(m_device);
    if (m_port.error() == QSerialPort::PermissionError) {
        const QString abandoned = abandonedLockFile(path);
        if (!abandoned.isEmpty())
            return u"%1 figura en uso por un programa que ya no existe: elimine el archivo %2."_s
                .arg(m_device, abandoned);
        return u"%1 está en uso por otro programa."_s.arg(m_device);
    }
    if (m_port.error() == QSerialPort::UnsupportedOperationError)
        return u"%1 no es un puerto serie."_s.arg(m_device);
    return u"No se puede abrir %1 (%2)."_s.arg(m_device, m_port.errorString());
}

QString QtSerialPort::applySettings(const LineSettings& settings)
{
    if (settings.dataBits < 5)
        return u"no admite %1 bits de datos"_s.arg(settings.dataBits);
    if (!m_port.setBaudRate(settings.speed))
        return u"no admite la velocidad de %1 bit/s"_s.arg(settings.speed);
    if (!m_port.setParity(parityOf(settings.parity)))
        return u"no admite la paridad elegida"_s;
    if (!m_port.setDataBits(static_cast<QSerialPort::DataBits>(settings.dataBits)))
        return u"no admite %1 bits de datos"_s.arg(settings.dataBits);
    if (!m_port.setStopBits(stopBitsOf(settings.stop)))
        return u"no admite los bits de parada elegidos"_s;
#ifdef Q_OS_LINUX
    return refusedByDriver(m_port.handle(), settings);
#else
    return {};
#endif
}
