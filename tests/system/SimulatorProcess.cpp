#include "SimulatorProcess.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {
constexpr int patience = 30000;
}

SimulatorProcess::SimulatorProcess(const QStringList& options)
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral(HCT_SIMULATOR), QStringList{u"--exit-with-parent"_s} + options);
    m_device = readLine();
}

SimulatorProcess::~SimulatorProcess()
{
    m_process.closeWriteChannel();
    if (!m_process.waitForFinished(patience))
        m_process.kill();
}

QStringList SimulatorProcess::command(const QString& text)
{
    m_process.write(text.toUtf8() + '\n');
    QStringList answer;
    for (;;) {
        const QString line = readLine();
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

QString SimulatorProcess::readLine()
{
    while (!m_process.canReadLine())
        if (!m_process.waitForReadyRead(patience))
            return {};
    return QString::fromUtf8(m_process.readLine()).trimmed();
}
