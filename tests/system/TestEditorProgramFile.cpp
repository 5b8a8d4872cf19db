#include "Files.h"
#include "Processes.h"
#include "ProgrammeLines.h"
#include "RecoveryFile.h"

#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;

/// The editor as an executable file. What it has opened is in its list of recent files.
class TestEditorProgramFile : public QObject {
    Q_OBJECT
private slots:
    void init();

    void opensTheFileOfADoubleClick();
    void opensTwoFiles();
    void modelOfTheCommandLineIsTaken();
    void missingFileIsNoFileThatWasOpened();
    void signalLeavesUnsavedWorkForTheNextTime_data();
    void signalLeavesUnsavedWorkForTheNextTime();

private:
    void start(const QStringList& arguments)
    {
        m_editor->start(QStringLiteral(HCT_EDITOR), arguments);
    }
    QString at(const QString& name) const { return m_home->filePath(name); }
    QString file(const QString& name) const { return writeFile(at(name), ProgrammeLines().text()); }
    bool isOpened(const QString& text) const
    {
        return contentsOf(at(u"Quorvex/Lurimat/registry.reg"_s)).contains(text.toUtf8());
    }
    bool endsInOrder(int number = SIGTERM)
    {
        kill(static_cast<pid_t>(m_editor->processId()), number);
        return hasEnded(*m_editor) && m_editor->exitStatus() == QProcess::NormalExit &&
               m_editor->exitCode() == 0;
    }

    std::unique_ptr<QTemporaryDir> m_home;
    std::unique_ptr<QProcess> m_editor;
};

void TestEditorProgramFile::init()
{
    // The one before ends before its folder goes.
    m_editor.reset();
    m_home = std::make_unique<QTemporaryDir>();
    m_editor = std::make_unique<QProcess>();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString& name : {u"XDG_CONFIG_HOME"_s, u"XDG_DATA_HOME"_s, u"HOME"_s})
        environment.insert(name, m_home->path());
    m_editor->setProcessEnvironment(environment);
    // A background job of a shell ignores SIGINT, and the program would inherit that.
    m_editor->setChildProcessModifier([] { std::signal(SIGINT, SIG_DFL); });
}

void TestEditorProgramFile::opensTheFileOfADoubleClick()
{
    const QString path = file(u"año nuevo.hct"_s);
    start({path});
    // The list has only ASCII.
    const QString listed = u"7200|"_s + at(u"a%C3%B1o nuevo.hct"_s);
    QTRY_VERIFY_WITH_TIMEOUT(isOpened(listed), processPatience);
    QVERIFY(endsInOrder());
}

void TestEditorProgramFile::opensTwoFiles()
{
    const QString one = file(u"uno.hct"_s);
    const QString other = file(u"otro.hct"_s);
    start({one, other});
    QTRY_VERIFY_WITH_TIMEOUT(isOpened(one) && isOpened(other), processPatience);
    QVERIFY(endsInOrder());
}

void TestEditorProgramFile::modelOfTheCommandLineIsTaken()
{
    const QString path = file(u"uno.hct"_s);
    start({u"--model"_s, u"7300"_s, path});
    QTRY_VERIFY_WITH_TIMEOUT(isOpened(u"7300|"_s + path), processPatience);
    QVERIFY(endsInOrder());
}

void TestEditorProgramFile::missingFileIsNoFileThatWasOpened()
{
    const QString path = file(u"uno.hct"_s);
    start({path, at(u"falta.hct"_s)});
    QTRY_VERIFY_WITH_TIMEOUT(isOpened(path), processPatience);
    // Also while the box about the missing one is up.
    QVERIFY(endsInOrder());
    QVERIFY(!isOpened(u"falta.hct"_s));
}

void TestEditorProgramFile::signalLeavesUnsavedWorkForTheNextTime_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void TestEditorProgramFile::signalLeavesUnsavedWorkForTheNextTime()
{
    QFETCH(int, number);
    UnsavedWork work;
    work.programme.blocks[0].Alarms[0] = samples::onWorkingDays(9, 5);
    const QString folder = at(u"hct-editor/recovery"_s);
    QVERIFY(QDir().mkpath(folder));
    const QString path = writeFile(folder + u"/1.json"_s, RecoveryFile::text(work));
    start({});
    // As long as it is offered, the editor holds its lock.
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(folder + u"/1.lock"_s), processPatience);
    QVERIFY(endsInOrder(number));
    QCOMPARE(contentsOf(path), RecoveryFile::text(work));
}

QTEST_GUILESS_MAIN(TestEditorProgramFile)
#include "TestEditorProgramFile.moc"
