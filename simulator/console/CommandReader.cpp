#include "CommandReader.h"

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <unistd.h>

namespace simulator {

namespace {

constexpr qsizetype maximumLine = 4096;

} // namespace

CommandReader::CommandReader(int descriptor, QObject* parent)
    : QObject(parent),
      m_descriptor(descriptor),
      m_notifier(new QSocketNotifier(descriptor, QSocketNotifier::Read, this))
{
    connect(m_notifier, &QSocketNotifier::activated, this, &CommandReader::readPending);
}

void CommandReader::readPending()
{
    std::array<char, 4096> buffer;
    const ssize_t count = ::read(m_descriptor, buffer.data(), buffer.size());
    if (count < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    for (ssize_t at = 0; at < count; ++at)
        take(buffer[size_t(at)]);
    if (count > 0)
        return;
    m_notifier->setEnabled(false);
    finishLine();
    emit ended();
}

void CommandReader::take(char byte)
{
    if (byte == '\n')
        finishLine();
    else if (m_line.size() < maximumLine)
        m_line.append(byte);
}

void CommandReader::finishLine()
{
    const QString line = QString::fromUtf8(m_line).trimmed();
    m_line.clear();
    if (!line.isEmpty())
        emit lineRead(line);
}

} // namespace simulator
