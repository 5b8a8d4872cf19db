#include "Files.h"
#include "RecoveryFile.h"
#include "RecoveryFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QTextStream>

using namespace Qt::StringLiterals;

class TestRecoveryFolder : public QObject {
    Q_OBJECT
private slots:
    void workSurvivesTheFile();
    void whatIsNoWorkIsNotRead_data();
    void whatIsNoWorkIsNotRead();
    void everyCutIsNoticed();
    void emptyFolderHasNothing();
    void workOfAProgramThatCrashedIsOffered();
    void workOfALivingProgramIsNotOffered();
    void workIsOfferedToOneProgramOnly();
    void workThatIsNotTakenIsOfferedAgain();
    void discardedWorkIsGone();
    void newestComesFirst();
    void damagedFileStaysWhereItIs();
    void folderIsThatOfTheUser();
};

namespace {

/// Every number differs from its neighbours.
UnsavedWork someWork()
{
    UnsavedWork work;
    quint8 number = 0;
    for (AlarmBlock& block : work.programme.blocks) {
        block.Duration = ++number;
        block.Mode = static_cast<quint8>(255 - number);
        block.ActiveCountPlusOne = 33;
        for (Alarm& alarm : block.Alarms) {
            alarm.Hour = ++number % 24;
            alarm.Minute = static_cast<quint8>(number * 7 % 60);
            for (std::size_t day = 0; day < dayFlagCount; ++day)
                alarm.flags[day] = ((number * 5) >> day) % 2 != 0;
        }
    }
    for (Holiday& holiday : work.programme.table.holidays)
        holiday = {static_cast<quint8>(++number % 32), static_cast<quint8>(number % 13)};
    for (VacationPeriod& period : work.programme.table.vacations)
        period = {static_cast<quint8>(++number % 32), static_cast<quint8>(number % 13), 31, 12};
    work.model = ClockModel::Hct7300;
    work.path = u"C:\\Año 学\\a.hct"_s;
    work.fileHash = QByteArray::fromHex("00ff80");
    work.isMisread = true;
    return work;
}

void writeWork(const QTemporaryDir& folder, const QString& name,
               const UnsavedWork& work = someWork())
{
    writeFile(folder.filePath(name + u".json"_s), RecoveryFile::text(work));
}

/// Another run of this program, which locks the work in a file as the editor does, tells so and
/// lives on until it is killed.
class Owner {
public:
    explicit Owner(const QString& lock)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(variable(), lock);
        m_process.setProcessEnvironment(environment);
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QCoreApplication::applicationFilePath(), {});
        if (!m_process.waitForReadyRead())
            qFatal("the owner has not locked the work");
    }
    ~Owner() { crash(); }
    Q_DISABLE_COPY_MOVE(Owner)

    void crash()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    static QString variable() { return u"HCT_TEST_LOCK"_s; }
    static int run(const QString& path)
    {
        QLockFile lock(path);
        lock.setStaleLockTime(0);
        if (!lock.tryLock())
            return 1;
        QTextStream(stdout) << "locked" << Qt::endl;
        QTextStream(stdin).readLine();
        return 0;
    }

private:
    QProcess m_process;
};

} // namespace

void TestRecoveryFolder::workSurvivesTheFile()
{
    QVERIFY(RecoveryFile::read(RecoveryFile::text(someWork())) == someWork());
    QVERIFY(RecoveryFile::read(RecoveryFile::text({})) == UnsavedWork());
}

void TestRecoveryFolder::whatIsNoWorkIsNotRead_data()
{
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("to");
    QTest::newRow("other format") << R"("format":1)"_ba
                                  << R"("format":2)"_ba;
    QTest::newRow("other model") << "7300"_ba
                                 << "7400"_ba;
    QTest::newRow("no programme") << R"("programme")"_ba
                                  << R"("program")"_ba;
    QTest::newRow("one number too many") << R"("programme":[)"_ba
                                         << R"("programme":[0,)"_ba;
    QTest::newRow("one number more at the end") << "]"_ba
                                                << ",0]"_ba;
    QTest::newRow("negative number") << R"("programme":[1)"_ba
                                     << R"("programme":[-1)"_ba;
    QTest::newRow("large number") << R"("programme":[1)"_ba
                                  << R"("programme":[256)"_ba;
    QTest::newRow("text for a number") << R"("programme":[1)"_ba
                                       << R"("programme":["1")"_ba;
}

void TestRecoveryFolder::whatIsNoWorkIsNotRead()
{
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, to);
    QByteArray text = RecoveryFile::text(someWork());
    QVERIFY(text.contains(from));
    QVERIFY(!RecoveryFile::read(text.replace(from, to)));
}

void TestRecoveryFolder::everyCutIsNoticed()
{
    const QByteArray text = RecoveryFile::text(someWork());
    for (qsizetype size = 0; size < text.size(); ++size)
        QVERIFY(!RecoveryFile::read(text.first(size)));
}

void TestRecoveryFolder::emptyFolderHasNothing()
{
    const QTemporaryDir folder;
    QVERIFY(RecoveryFolder::abandoned(folder.path()).empty());
    QVERIFY(RecoveryFolder::abandoned(folder.filePath(u"none"_s)).empty());
}

void TestRecoveryFolder::workOfAProgramThatCrashedIsOffered()
{
    const QTemporaryDir folder;
    writeWork(folder, u"a"_s);
    Owner owner(folder.filePath(u"a.lock"_s));
    owner.crash();
    QVERIFY(QFile::exists(folder.filePath(u"a.lock"_s)));
    const auto found = RecoveryFolder::abandoned(folder.path());
    QCOMPARE(found.size(), 1U);
    QVERIFY(found.front().work == someWork());
    QVERIFY(found.front().written.isValid());
}

void TestRecoveryFolder::workOfALivingProgramIsNotOffered()
{
    const QTemporaryDir folder;
    writeWork(folder, u"a"_s);
    const Owner owner(folder.filePath(u"a.lock"_s));
    QVERIFY(RecoveryFolder::abandoned(folder.path()).empty());
    QVERIFY(QFile::exists(folder.filePath(u"a.json"_s)));
}

void TestRecoveryFolder::workIsOfferedToOneProgramOnly()
{
    const QTemporaryDir folder;
    writeWork(folder, u"a"_s);
    const auto found = RecoveryFolder::abandoned(folder.path());
    QCOMPARE(found.size(), 1U);
    QVERIFY(RecoveryFolder::abandoned(folder.path()).empty());
}

void TestRecoveryFolder::workThatIsNotTakenIsOfferedAgain()
{
    const QTemporaryDir folder;
    writeWork(folder, u"a"_s);
    QCOMPARE(RecoveryFolder::abandoned(folder.path()).size(), 1U);
    QCOMPARE(RecoveryFolder::abandoned(folder.path()).size(), 1U);
}

void TestRecoveryFolder::discardedWorkIsGone()
{
    const QTemporaryDir folder;
    writeWork(folder, u"a"_s);
    auto found = RecoveryFolder::abandoned(folder.path());
    RecoveryFolder::discard(std::move(found.front()));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList());
}

void TestRecoveryFolder::newestComesFirst()
{
    const QTemporaryDir folder;
    for (const QString& name : {u"a"_s, u"b"_s, u"c"_s})
        writeWork(folder, name);
    QFile older(folder.filePath(u"b.json"_s));
    QVERIFY(older.open(QIODevice::ReadWrite));
    QVERIFY(older.setFileTime(QDateTime::currentDateTime().addDays(-1),
                              QFileDevice::FileModificationTime));
    older.close();
    const auto found = RecoveryFolder::abandoned(folder.path());
    QCOMPARE(found.size(), 3U);
    QVERIFY(found.back().file.endsWith(u"/b"_s));
}

void TestRecoveryFolder::damagedFileStaysWhereItIs()
{
    const QTemporaryDir folder;
    writeFile(folder.filePath(u"a.json"_s), "{");
    QVERIFY(RecoveryFolder::abandoned(folder.path()).empty());
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList{u"a.json"_s});
}

void TestRecoveryFolder::folderIsThatOfTheUser()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(RecoveryFolder::path().startsWith(
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)));
    QVERIFY(RecoveryFolder::path().endsWith(u"/recovery"_s));
}

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    if (qEnvironmentVariableIsSet(qUtf8Printable(Owner::variable())))
        return Owner::run(qEnvironmentVariable(qUtf8Printable(Owner::variable())));
    TestRecoveryFolder test;
    return QTest::qExec(&test, argc, argv);
}

#include "TestRecoveryFolder.moc"
