#include "SimulatorProcess.h"

#include "SimulatorChannel.h"

#include <QTest>

using namespace Qt::StringLiterals;

SimulatorProcess::SimulatorProcess(const QStringList& options) : m_channel(SimulatorChannel::make())
{
    m_channel->start(options);
    m_device = m_channel->readLine();
}

SimulatorProcess::~SimulatorProcess() = default;

QStringList SimulatorProcess::command(const QString& text)
{
    m_channel->writeLine(text);
    QStringList answer;
    for (;;) {
        const QString line = m_channel->readLine();
        if (line == u"ok"_s)
            return answer;
        if (line.isEmpty() || line.startsWith(u"error: "_s)) {
            QTest::qFail(qPrintable(text + u" -> "_s + line), __FILE__, __LINE__);
            return {};
        }
        if (!line.startsWith(u"event "_s) && !line.startsWith(u"trace "_s))
            answer.append(line);
    }
}

QString SimulatorProcess::state(const QString& key)
{
    for (const QString& line : command(u"state"_s))
        if (line.startsWith(key + u'='))
            return line.mid(key.size() + 1);
    return {};
}

QString SimulatorProcess::pathOf(const QString& file) const { return m_channel->pathOf(file); }
