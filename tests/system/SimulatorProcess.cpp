#include "SimulatorProcess.h"

#include "Processes.h"
#include "SimulatorChannel.h"

#include <QTest>

#include <algorithm>

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
        if (line.startsWith(u"trace "_s))
            takeTrace(line);
        else if (!line.startsWith(u"event "_s))
            answer.append(line);
    }
}

void SimulatorProcess::takeTrace(const QString& line)
{
    // "trace 09:15:02.118 < 68 03 03 68 01 89 00 8A 16"
    const QStringList words = line.split(u' ');
    if (words.value(2) != u"<"_s)
        return;
    constexpr int alternatingBit = 0x10;
    const int code = words.value(8).toInt(nullptr, 16) & ~alternatingBit;
    const QString body = words.mid(9, words.size() - 11).join(QString()).toLower();
    m_requests.append(u"%1 %2"_s.arg(code, 2, 16, QChar(u'0')).arg(body));
}

QString SimulatorProcess::state(const QString& key)
{
    for (const QString& line : command(u"state"_s))
        if (line.startsWith(key + u'='))
            return line.mid(key.size() + 1);
    return {};
}

qsizetype SimulatorProcess::requestCount(const QString& start) const
{
    return std::count_if(m_requests.begin(), m_requests.end(),
                         [&start](const QString& request) { return request.startsWith(start); });
}

bool SimulatorProcess::waitForRequests(const QString& start, int count)
{
    return QTest::qWaitFor(
        [&] {
            command(u"state"_s);
            return requestCount(start) >= count;
        },
        processPatience);
}

QString SimulatorProcess::pathOf(const QString& file) const { return m_channel->pathOf(file); }
