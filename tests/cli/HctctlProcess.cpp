#include "HctctlProcess.h"

#include "Processes.h"

#include <QRegularExpression>

#ifdef Q_OS_WIN
#include <QJsonDocument>

#include <windows.h>
#else
#include "PseudoTerminal.h"

#include <csignal>
#endif

using namespace Qt::StringLiterals;

#ifdef Q_OS_WIN

namespace {

BOOL WINAPI goOn(DWORD /*event*/) { return TRUE; }

/// Gives the test a console of its own, so that Ctrl+C reaches only what it has started.
void takeConsole()
{
    static bool isTaken = false;
    if (isTaken)
        return;
    isTaken = true;
    FreeConsole();
    AllocConsole();
    SetConsoleCtrlHandler(goOn, TRUE);
}

} // namespace

#endif

HctctlProcess::~HctctlProcess()
{
    m_process.kill();
    hasEnded(m_process);
}

void HctctlProcess::start(const QStringList& arguments)
{
#ifdef Q_OS_WIN
    takeConsole();
#endif
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

void HctctlProcess::interrupt()
{
#ifdef Q_OS_WIN
    GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0);
#else
    ::kill(static_cast<pid_t>(m_process.processId()), SIGINT);
#endif
}

#ifndef Q_OS_WIN
void HctctlProcess::useTerminal(const PseudoTerminal& terminal, const QList<int>& streams)
{
    m_process.setChildProcessModifier([device = terminal.nearEnd(), streams] {
        for (const int stream : streams)
            ::dup2(device, stream);
    });
}

void HctctlProcess::sendSignal(int number)
{
    ::kill(static_cast<pid_t>(m_process.processId()), number);
}
#endif

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

#ifndef Q_OS_WIN
int HctctlProcess::runInShell(const QString& script, const QStringList& arguments)
{
    m_process.start(u"bash"_s, QStringList{u"-c"_s, script, QStringLiteral(HCTCTL)} + arguments);
    return exitStatus();
}
#endif

QString HctctlProcess::textOf(const QByteArray& bytes)
{
    QString text = QString::fromUtf8(bytes);
#ifdef Q_OS_WIN
    text.replace(u"\r\n"_s, u"\n"_s);
#endif
    return text;
}

QString readByAnotherProgram(const QString& json)
{
#ifdef Q_OS_WIN
    return QString::fromUtf8(QJsonDocument::fromJson(json.toUtf8()).toJson(QJsonDocument::Compact));
#else
    QProcess reader;
    reader.start(u"jq"_s, {u"--compact-output"_s, u"--sort-keys"_s, u"."_s});
    reader.write(json.toUtf8());
    reader.closeWriteChannel();
    return hasEnded(reader) ? QString::fromUtf8(reader.readAllStandardOutput()).trimmed()
                            : QString();
#endif
}

QString withoutDifference(QString text)
{
    static const QRegularExpression number(u"\"secondsAhead\":-?[0-9]+"_s);
    return text.replace(number, u"\"secondsAhead\":N"_s);
}
