#include "DeviceLine.h"

#include <QFile>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace simulator {

namespace {

std::optional<speed_t> systemSpeed(int speed)
{
    switch (speed) {
    case 300: return B300;
    case 600: return B600;
    case 1200: return B1200;
    case 2400: return B2400;
    case 4800: return B4800;
    case 9600: return B9600;
    case 19200: return B19200;
    case 38400: return B38400;
    case 57600: return B57600;
    case 115200: return B115200;
    case 230400: return B230400;
    default: return std::nullopt;
    }
}

bool configure(int descriptor, speed_t speed)
{
    termios settings{};
    if (::tcgetattr(descriptor, &settings) != 0)
        return false;
    ::cfmakeraw(&settings);
    settings.c_cflag |= CLOCAL | CREAD;
    settings.c_cflag &= ~tcflag_t(CSTOPB | CRTSCTS);
    ::cfsetispeed(&settings, speed);
    ::cfsetospeed(&settings, speed);
    return ::tcsetattr(descriptor, TCSANOW, &settings) == 0;
}

} // namespace

DeviceLine::DeviceLine(const QString& device, int speed, QObject* parent)
    : Line(parent), m_device(device), m_speed(speed)
{}

QString DeviceLine::open()
{
    close();
    const std::optional<speed_t> speed = systemSpeed(m_speed);
    if (!speed)
        return u"the system has no speed of %1 bit/s"_s.arg(m_speed);
    const int descriptor =
        ::open(QFile::encodeName(m_device).constData(), O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0 || !configure(descriptor, *speed)) {
        QString reason =
            u"cannot open %1: %2"_s.arg(m_device, QString::fromLocal8Bit(std::strerror(errno)));
        if (descriptor >= 0)
            ::close(descriptor);
        return reason;
    }
    adopt(descriptor, m_device);
    m_wasReady = false;
    m_watch.start();
    return {};
}

bool DeviceLine::hasDelivered() const
{
    int unsent = 0;
    return ::ioctl(descriptor(), TIOCOUTQ, &unsent) != 0 || unsent == 0;
}

void DeviceLine::watchDataSetReady()
{
    int lines = 0;
    if (!isOpen() || ::ioctl(descriptor(), TIOCMGET, &lines) != 0)
        return m_watch.stop();
    const bool ready = (lines & TIOCM_DSR) != 0;
    if (m_wasReady && !ready)
        emit farEndClosed();
    m_wasReady = ready;
}

} // namespace simulator
