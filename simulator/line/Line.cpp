#include "Line.h"

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <unistd.h>

namespace simulator {

Line::~Line() { Line::close(); }

void Line::close()
{
    if (m_notifier) {
        m_notifier->setEnabled(false);
        m_notifier->deleteLater();
        m_notifier = nullptr;
    }
    if (m_descriptor >= 0)
        ::close(m_descriptor);
    m_descriptor = -1;
    m_devicePath.clear();
}

void Line::adopt(int descriptor, const QString& devicePath)
{
    m_descriptor = descriptor;
    m_devicePath = devicePath;
    m_notifier = new QSocketNotifier(descriptor, QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &Line::readPending);
}

void Line::write(const QByteArray& bytes)
{
    qsizetype written = 0;
    while (m_descriptor >= 0 && written < bytes.size()) {
        const ssize_t count =
            ::write(m_descriptor, bytes.constData() + written, size_t(bytes.size() - written));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return;
        written += count;
    }
}

void Line::readPending()
{
    beforeReading();
    std::array<char, 4096> buffer;
    const ssize_t count = ::read(m_descriptor, buffer.data(), buffer.size());
    if (count > 0) {
        emit bytesArrived(QByteArray(buffer.data(), count));
        return;
    }
    if (count < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    close();
    emit lost();
}

} // namespace simulator
