#include "SimulatorChannel.h"

#include <QDir>

#include <windows.h>

using namespace Qt::StringLiterals;

namespace {

constexpr DWORD patience = 30000;

class Win32PortChannel final : public SimulatorChannel {
public:
    Win32PortChannel()
    {
        m_port = CreateFileW(L"\\\\.\\COM9", GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                             OPEN_EXISTING, 0, nullptr);
        COMMTIMEOUTS timeouts{};
        timeouts.ReadTotalTimeoutConstant = patience;
        SetCommTimeouts(m_port, &timeouts);
        // Discards what the clock of an earlier test may have written last.
        PurgeComm(m_port, PURGE_RXCLEAR);
    }
    ~Win32PortChannel() override { CloseHandle(m_port); }

    void start(const QStringList& options) override
    {
        writeLine((QStringList{u"start"_s} + options).join(u'\t'));
        for (;;) {
            const QString line = nextLine();
            if (line.isEmpty())
                return;
            if (line.startsWith(u"/dev/pts/"_s)) {
                m_firstLine = u"COM1"_s;
                return;
            }
        }
    }
    void writeLine(const QString& line) override
    {
        const QByteArray bytes = line.toUtf8() + '\n';
        DWORD written = 0;
        WriteFile(m_port, bytes.constData(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    }
    QString readLine() override
    {
        return m_firstLine.isEmpty() ? nextLine() : std::exchange(m_firstLine, QString());
    }
    QString pathOf(const QString& file) const override
    {
        // The simulator runs in the folder that is drive C: here.
        return QDir(u"C:/"_s).relativeFilePath(file);
    }

private:
    QString nextLine()
    {
        QByteArray line;
        for (;;) {
            char byte = 0;
            DWORD count = 0;
            if (!ReadFile(m_port, &byte, 1, &count, nullptr) || count == 0)
                return {};
            if (byte == '\n')
                return QString::fromUtf8(line).trimmed();
            line.append(byte);
        }
    }

    HANDLE m_port;
    QString m_firstLine;
};

} // namespace

std::unique_ptr<SimulatorChannel> SimulatorChannel::make()
{
    return std::make_unique<Win32PortChannel>();
}
