#include "Files.h"
#include "Processes.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;

/// The program as an executable file.
class TestProgramFile : public QObject {
    Q_OBJECT
private slots:
    void init();

    void takesTheToolkitsOwnOptions();
    void endsInOrderOnASignal_data();
    void endsInOrderOnASignal();
    void survivesTheEndOfItsTerminalUnderNohup();
    void startingWritesNothing();
    void traceIsWrittenToTheFileThatIsNamed();
    void traceThatCannotBeWrittenEndsTheProgram();

private:
    void start(const QStringList& arguments) { m_program->start(QStringLiteral(HCT), arguments); }
    void setVariable(const QString& name, const QString& value)
    {
        QProcessEnvironment environment = m_program->processEnvironment();
        environment.insert(name, value);
        m_program->setProcessEnvironment(environment);
    }
    void removeDisplay()
    {
        QProcessEnvironment environment = m_program->processEnvironment();
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            environment.remove(QString::fromLatin1(name));
        m_program->setProcessEnvironment(environment);
    }
    /// Whether the program handles signals already, which it does just before its window appears.
    bool isUp() const;
    /// Whether the system counts the signal among those that the program catches (SigCgt) or
    /// ignores (SigIgn).
    bool isSignalIn(const char* set, int number) const;

    std::unique_ptr<QTemporaryDir> m_home;
    std::unique_ptr<QProcess> m_program;
};

void TestProgramFile::init()
{
    m_home = std::make_unique<QTemporaryDir>();
    m_program = std::make_unique<QProcess>();
    m_program->setProcessEnvironment(QProcessEnvironment::systemEnvironment());
    // A background job of a shell ignores SIGINT, and the program would inherit that.
    m_program->setChildProcessModifier([] { std::signal(SIGINT, SIG_DFL); });
    setVariable(u"XDG_CONFIG_HOME"_s, m_home->path());
    setVariable(u"HOME"_s, m_home->path());
}

void TestProgramFile::takesTheToolkitsOwnOptions()
{
    removeDisplay();
    start({u"-platform"_s, u"offscreen"_s});
    QTRY_VERIFY_WITH_TIMEOUT(isUp(), processPatience);
    m_program->terminate();
    QVERIFY(hasEnded(*m_program));
    QCOMPARE(m_program->exitCode(), 0);
}

void TestProgramFile::endsInOrderOnASignal_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void TestProgramFile::endsInOrderOnASignal()
{
    QFETCH(int, number);
    start({});
    QTRY_VERIFY_WITH_TIMEOUT(isUp(), processPatience);
    kill(static_cast<pid_t>(m_program->processId()), number);
    QVERIFY(hasEnded(*m_program));
    QCOMPARE(m_program->exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_program->exitCode(), 0);
}

void TestProgramFile::survivesTheEndOfItsTerminalUnderNohup()
{
    m_program->setChildProcessModifier([] { std::signal(SIGHUP, SIG_IGN); });
    start({});
    QTRY_VERIFY_WITH_TIMEOUT(isUp(), processPatience);
    // Ignored signals are discarded as they are sent: there is nothing to wait for.
    QVERIFY(isSignalIn("SigIgn", SIGHUP));
    QCOMPARE(kill(static_cast<pid_t>(m_program->processId()), SIGHUP), 0);
    m_program->terminate();
    QVERIFY(hasEnded(*m_program));
    QCOMPARE(m_program->exitCode(), 0);
}

void TestProgramFile::startingWritesNothing()
{
    start({});
    QTRY_VERIFY_WITH_TIMEOUT(isUp(), processPatience);
    m_program->terminate();
    QVERIFY(hasEnded(*m_program));
    QCOMPARE(QDir(m_home->path())
                 .entryList({u"*.reg"_s}, QDir::Files | QDir::AllDirs | QDir::NoDotAndDotDot),
             QStringList());
    QVERIFY(!QDir(m_home->path()).exists(u"Quorvex"_s));
}

bool TestProgramFile::isUp() const
{
    // Between fork and exec the process is still the test, which catches the same signals.
    if (QFile::symLinkTarget(u"/proc/%1/exe"_s.arg(m_program->processId())) !=
        QFileInfo(QStringLiteral(HCT)).canonicalFilePath())
        return false;
    return isSignalIn("SigCgt", SIGTERM);
}

bool TestProgramFile::isSignalIn(const char* set, int number) const
{
    QFile status(u"/proc/%1/status"_s.arg(m_program->processId()));
    if (!status.open(QIODevice::ReadOnly))
        return false;
    const QRegularExpression masks(QString::fromLatin1(set) + u":\\s*([0-9a-f]+)"_s);
    const QString mask = masks.match(QString::fromLatin1(status.readAll())).captured(1);
    return (mask.toULongLong(nullptr, 16) & (1ULL << (number - 1))) != 0;
}

void TestProgramFile::traceIsWrittenToTheFileThatIsNamed()
{
    const QString path = m_home->filePath(u"traza.txt"_s);
    start({u"--trace"_s, path});
    QTRY_VERIFY_WITH_TIMEOUT(isUp(), processPatience);
    const QString trace = QString::fromUtf8(contentsOf(path));
    static const QRegularExpression line(u"^[0-9]+ hct 2\\.0\\.1, Qt 6\\.[^\\n]+\\n$"_s);
    QVERIFY2(line.match(trace).hasMatch(), qPrintable(trace));
    m_program->terminate();
    QVERIFY(hasEnded(*m_program));
}

void TestProgramFile::traceThatCannotBeWrittenEndsTheProgram()
{
    const QString path = m_home->filePath(u"no/traza.txt"_s);
    start({u"--trace"_s, path});
    QVERIFY(hasEnded(*m_program));
    QCOMPARE(m_program->exitCode(), 1);
    const QString told = QString::fromLocal8Bit(m_program->readAllStandardError());
    QVERIFY2(told.contains(u"No se puede escribir la traza en "_s + path), qPrintable(told));
}

QTEST_GUILESS_MAIN(TestProgramFile)
#include "TestProgramFile.moc"
