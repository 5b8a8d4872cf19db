#include "HctctlProcess.h"

#include "Processes.h"
#include "PseudoTerminal.h"

#include <QRegularExpression>

#include <csignal>

using namespace Qt::StringLiterals;

HctctlProcess::~HctctlProcess()
{
    m_process.kill();
    hasEnded(m_process);
}

void HctctlProcess::useTerminal(const PseudoTerminal& terminal, const QList<int>& streams)
{
    m_process.setChildProcessModifier([device = terminal.nearEnd(), streams] {
        for (const int stream : streams)
            ::dup2(device, stream);
    });
}

void HctctlProcess::start(const QStringList& arguments)
{
    m_process.start(QStringLiteral(HCTCTL), arguments);
}

QString HctctlProcess::nextLine() { return readLineOf(m_process); }

QString HctctlProcess::nextErrorLine()
{
    m_process.setReadChannel(QProcess::StandardError);
    const QString line = readLineOf(m_process);
    m_process.setReadChannel(QProcess::StandardOutput);
    return line;
}

void HctctlProcess::sendSignal(int number)
{
    ::kill(static_cast<pid_t>(m_process.processId()), number);
}

int HctctlProcess::exitStatus()
{
    const bool ended = hasEnded(m_process);
    return ended && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

int HctctlProcess::run(const QStringList& arguments)
{
    start(arguments);
    return exitStatus();
}

int HctctlProcess::runForOneLine(const QStringList& arguments)
{
    m_process.start(u"bash"_s,
                    QStringList{u"-c"_s, u"\"$0\" \"$@\" | head -n 1; exit ${PIPESTATUS[0]}"_s,
                                QStringLiteral(HCTCTL)} +
                        arguments);
    return exitStatus();
}

QString readByAnotherProgram(const QString& json)
{
    QProcess reader;
    reader.start(u"jq"_s, {u"--compact-output"_s, u"--sort-keys"_s, u"."_s});
    reader.write(json.toUtf8());
    reader.closeWriteChannel();
    return hasEnded(reader) ? QString::fromUtf8(reader.readAllStandardOutput()).trimmed()
                            : QString();
}

QString withoutDifference(QString text)
{
    static const QRegularExpression number(u"\"secondsAhead\":-?[0-9]+"_s);
    return text.replace(number, u"\"secondsAhead\":N"_s);
}
