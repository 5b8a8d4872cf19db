#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {
/// Milliseconds; only a fault takes them all.
constexpr int patience = 30000;
} // namespace

/// The program as it is installed.
class TestProgramFile : public QObject {
    Q_OBJECT
private slots:
    void init();

    void takesTheToolkitsOwnOptions();
    void endsInOrderOnASignal_data();
    void endsInOrderOnASignal();
    void survivesTheEndOfItsTerminalUnderNohup();
    void startingWritesNothing();

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
    /// Whether the program handles signals by now, which it does when it is about to show itself.
    bool isUp() const;

    std::unique_ptr<QTemporaryDir> m_home;
    std::unique_ptr<QProcess> m_program;
};

void TestProgramFile::init()
{
    m_home = std::make_unique<QTemporaryDir>();
    m_program = std::make_unique<QProcess>();
    m_program->setProcessEnvironment(QProcessEnvironment::systemEnvironment());
    // A shell's background job would hand down that it ignores SIGINT.
    m_program->setChildProcessModifier([] { std::signal(SIGINT, SIG_DFL); });
    setVariable(u"XDG_CONFIG_HOME"_s, m_home->path());
    setVariable(u"HOME"_s, m_home->path());
}

void TestProgramFile::takesTheToolkitsOwnOptions()
{
    removeDisplay();
    start({u"-platform"_s, u"offscreen"_s});
    QTRY_VERIFY_WITH_TIMEOUT(isUp(), patience);
    m_program->terminate();
    QVERIFY(m_program->waitForFinished(patience));
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
    QTRY_VERIFY_WITH_TIMEOUT(isUp(), patience);
    kill(static_cast<pid_t>(m_program->processId()), number);
    QVERIFY(m_program->waitForFinished(patience));
    QCOMPARE(m_program->exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_program->exitCode(), 0);
}

void TestProgramFile::survivesTheEndOfItsTerminalUnderNohup()
{
    m_program->setChildProcessModifier([] { std::signal(SIGHUP, SIG_IGN); });
    start({});
    QTRY_VERIFY_WITH_TIMEOUT(isUp(), patience);
    kill(static_cast<pid_t>(m_program->processId()), SIGHUP);
    QVERIFY(!m_program->waitForFinished(200));
    m_program->terminate();
    QVERIFY(m_program->waitForFinished(patience));
    QCOMPARE(m_program->exitCode(), 0);
}

void TestProgramFile::startingWritesNothing()
{
    start({});
    QTRY_VERIFY_WITH_TIMEOUT(isUp(), patience);
    m_program->terminate();
    QVERIFY(m_program->waitForFinished(patience));
    QCOMPARE(QDir(m_home->path())
                 .entryList({u"*.reg"_s}, QDir::Files | QDir::AllDirs | QDir::NoDotAndDotDot),
             QStringList());
    QVERIFY(!QDir(m_home->path()).exists(u"Quorvex"_s));
}

bool TestProgramFile::isUp() const
{
    const QString process = u"/proc/%1/"_s.arg(m_program->processId());
    // Between fork and exec the process still is the test, which catches the same signals.
    if (QFile::symLinkTarget(process + u"exe"_s) !=
        QFileInfo(QStringLiteral(HCT)).canonicalFilePath())
        return false;
    QFile status(process + u"status"_s);
    if (!status.open(QIODevice::ReadOnly))
        return false;
    static const QRegularExpression caught(u"SigCgt:\\s*([0-9a-f]+)"_s);
    const QString mask = caught.match(QString::fromLatin1(status.readAll())).captured(1);
    return (mask.toULongLong(nullptr, 16) & (1ULL << (SIGTERM - 1))) != 0;
}

QTEST_GUILESS_MAIN(TestProgramFile)
#include "TestProgramFile.moc"
