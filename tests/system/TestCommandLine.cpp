#include "Processes.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// The program's answers to options, without a display.
class TestCommandLine : public QObject {
    Q_OBJECT
private slots:
    void versionIsTold();
    void helpIsTold();
    void unknownOptionIsRefused();

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

QTEST_GUILESS_MAIN(TestCommandLine)
#include "TestCommandLine.moc"
