#include "Files.h"
#include "Processes.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// The program's answers to options, without a display.
class TestCommandLine : public QObject {
    Q_OBJECT
private slots:
    void versionIsTold();
    void helpIsTold();
    void unknownOptionIsRefused();
    void traceNeverTakesThePlaceOfAStream();

private:
    void run(const QString& option);

    QProcess m_program;
};

void TestCommandLine::run(const QString& option)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY"})
        environment.remove(QString::fromLatin1(name));
#ifdef Q_OS_WIN
    // There the program has only the platform of the system.
    environment.remove(u"QT_QPA_PLATFORM"_s);
#endif
    m_program.setProcessEnvironment(environment);
    m_program.start(QStringLiteral(HCT), {option});
    QVERIFY(hasEnded(m_program));
}

void TestCommandLine::versionIsTold()
{
    run(u"--version"_s);
    QCOMPARE(m_program.exitCode(), 0);
    QCOMPARE(m_program.readAllStandardOutput().trimmed(), QByteArray("hct 2.0.1"));
}

void TestCommandLine::helpIsTold()
{
    run(u"--help"_s);
    QCOMPARE(m_program.exitCode(), 0);
    const QString help = QString::fromLocal8Bit(m_program.readAllStandardOutput());
    QVERIFY(help.contains(u"Control de los relojes programadores de señales"_s));
    QVERIFY(help.contains(u"--version"_s));
    QVERIFY(help.contains(u"--trace <archivo>"_s));
}

void TestCommandLine::unknownOptionIsRefused()
{
    run(u"--nonsense"_s);
    QCOMPARE(m_program.exitCode(), 1);
    QVERIFY(m_program.readAllStandardError().contains("nonsense"));
}

// The toolkit tells on standard error which fonts it has found. What it opens before takes the
// place of standard input.
void TestCommandLine::traceNeverTakesThePlaceOfAStream()
{
#ifdef Q_OS_WIN
    QSKIP("Windows gives no numbers of streams to files.");
#else
    const QTemporaryDir folder;
    const QString trace = folder.filePath(u"trace"_s);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    environment.insert(u"QT_LOGGING_RULES"_s, u"qt.*.debug=true"_s);
    m_program.setProcessEnvironment(environment);
    m_program.start(
        u"bash"_s, {u"-c"_s, u"exec \"$0\" --trace \"$1\" <&- 2>&-"_s, QStringLiteral(HCT), trace});
    QTRY_VERIFY(contentsOf(trace).contains(" hct 2.0.1, Qt "));
    m_program.terminate();
    QVERIFY(hasEnded(m_program));
    QCOMPARE(contentsOf(trace).count('\n'), 1);
#endif
}

QTEST_GUILESS_MAIN(TestCommandLine)
#include "TestCommandLine.moc"
