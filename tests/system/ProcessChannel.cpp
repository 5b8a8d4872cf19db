#include "Processes.h"
#include "SimulatorChannel.h"

using namespace Qt::StringLiterals;

namespace {

class ProcessChannel final : public SimulatorChannel {
public:
    ~ProcessChannel() override
    {
        m_process.closeWriteChannel();
        if (!hasEnded(m_process))
            m_process.kill();
    }

    void start(const QStringList& options) override
    {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QStringLiteral(HCT_SIMULATOR),
                        QStringList{u"--exit-with-parent"_s} + options);
    }
    void writeLine(const QString& line) override { m_process.write(line.toUtf8() + '\n'); }
    QString readLine() override { return readLineOf(m_process); }
    QString pathOf(const QString& file) const override { return file; }

private:
    QProcess m_process;
};

} // namespace

std::unique_ptr<SimulatorChannel> SimulatorChannel::make()
{
    return std::make_unique<ProcessChannel>();
}
