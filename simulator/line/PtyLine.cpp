#include "PtyLine.h"

#include <QFile>
#include <QFileInfo>
#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace simulator {

namespace {

QString lastError(const QString& doing)
{
    return u"%1: %2"_s.arg(doing, QString::fromLocal8Bit(std::strerror(errno)));
}

void makeRaw(int descriptor)
{
    termios settings{};
    if (::tcgetattr(descriptor, &settings) != 0)
        return;
    ::cfmakeraw(&settings);
    ::tcsetattr(descriptor, TCSANOW, &settings);
}

} // namespace

PtyLine::PtyLine(const QString& link, QObject* parent) : Line(parent), m_link(link) {}

PtyLine::~PtyLine() { PtyLine::close(); }

QString PtyLine::open()
{
    close();
    const int master = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
    if (master < 0)
        return lastError(u"cannot create a pseudo-terminal"_s);
    std::array<char, 128> name{};
    if (::grantpt(master) != 0 || ::unlockpt(master) != 0 ||
        ::ptsname_r(master, name.data(), name.size()) != 0) {
        QString reason = lastError(u"cannot prepare the pseudo-terminal"_s);
        ::close(master);
        return reason;
    }
    m_slave = ::open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    makeRaw(m_slave);
    adopt(master, QString::fromLocal8Bit(name.data()));
    watchSlave(name.data());
    QString reason = renewLink(devicePath());
    if (!reason.isEmpty())
        close();
    return reason;
}

void PtyLine::close()
{
    removeLink();
    if (m_watchNotifier) {
        m_watchNotifier->setEnabled(false);
        m_watchNotifier->deleteLater();
        m_watchNotifier = nullptr;
    }
    for (int* descriptor : {&m_watch, &m_slave}) {
        if (*descriptor >= 0)
            ::close(*descriptor);
        *descriptor = -1;
    }
    Line::close();
}

bool PtyLine::hasDelivered() const
{
    int unread = 0;
    return ::ioctl(m_slave, FIONREAD, &unread) != 0 || unread == 0;
}

QString PtyLine::renewLink(const QString& device)
{
    if (m_link.isEmpty())
        return {};
    const QFileInfo existing(m_link);
    if (existing.exists() && !existing.isSymLink())
        return u"%1 is there already and no link"_s.arg(m_link);
    // Made under another name and renamed, so that the link exists at every moment.
    const QByteArray link = QFile::encodeName(m_link);
    const QByteArray beside = link + '.' + QByteArray::number(::getpid());
    ::unlink(beside.constData());
    if (::symlink(QFile::encodeName(device).constData(), beside.constData()) != 0 ||
        std::rename(beside.constData(), link.constData()) != 0) {
        QString reason = lastError(u"cannot make the link %1"_s.arg(m_link));
        ::unlink(beside.constData());
        return reason;
    }
    return {};
}

void PtyLine::removeLink()
{
    if (!m_link.isEmpty() && isOpen() && QFile::symLinkTarget(m_link) == devicePath())
        QFile::remove(m_link);
}

void PtyLine::watchSlave(const QByteArray& device)
{
    m_watch = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (m_watch < 0)
        return;
    ::inotify_add_watch(m_watch, device.constData(), IN_CLOSE);
    m_watchNotifier = new QSocketNotifier(m_watch, QSocketNotifier::Read, this);
    connect(m_watchNotifier, &QSocketNotifier::activated, this, &PtyLine::readWatch);
}

void PtyLine::readWatch()
{
    alignas(inotify_event) std::array<char, 4096> events;
    bool closed = false;
    while (::read(m_watch, events.data(), events.size()) > 0)
        closed = true;
    if (!closed)
        return;
    // Drop what the program has not read, as on a port that no one has open.
    ::tcflush(m_slave, TCIFLUSH);
    emit farEndClosed();
}

} // namespace simulator
