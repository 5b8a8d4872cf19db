#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

#ifndef Q_OS_WIN
class PseudoTerminal;
#endif

/// hctctl as a process of its own.
class HctctlProcess {
public:
    ~HctctlProcess();

#ifndef Q_OS_WIN
    /// Before it starts: these of its streams become the terminal, for example STDIN_FILENO. What
    /// goes there cannot be read by lines nor as errors().
    void useTerminal(const PseudoTerminal& terminal, const QList<int>& streams);
#endif
    void start(const QStringList& arguments);
    /// The next line on standard output; on standard error.
    QString nextLine();
    QString nextErrorLine();
    /// Ctrl+C. On Windows it reaches every process of the test.
    void interrupt();
#ifndef Q_OS_WIN
    void sendSignal(int number);
#endif
    /// Waits for its end; the exit status, -1 when it did not end by itself.
    int exitStatus();
    /// What has not been read by lines, after its end.
    QString output() { return textOf(m_process.readAllStandardOutput()); }
    QString errors() { return textOf(m_process.readAllStandardError()); }

    /// Runs it to its end; the exit status.
    int run(const QStringList& arguments);
#ifndef Q_OS_WIN
    /// Runs it to its end by a script of bash, in which it is "$0" and its arguments are "$@"; the
    /// exit status.
    int runInShell(const QString& script, const QStringList& arguments);
#endif

private:
    /// With lines that end with LF alone, on Windows too.
    static QString textOf(const QByteArray& bytes);

    QProcess m_process;
};

/// Reads an object with another program, and writes it with sorted keys. On Windows the test itself
/// is that program.
QString readByAnotherProgram(const QString& json);
/// The texts without the number of seconds that the clock is ahead, which no test can know.
QString withoutDifference(QString text);
