#include "FileRegistry.h"
#include "Files.h"
#include "OrdinaryUser.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

constexpr auto user = Registry::RootKey::CurrentUser;
constexpr auto machine = Registry::RootKey::LocalMachine;
const QString key = u"Software\\Quorvex\\Lurimat\\Directo"_s;

RegistryValue text(const QByteArray& bytes) { return {RegistryValue::Text, bytes + '\0'}; }

} // namespace

class TestFileRegistry : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void defaultPathFollowsTheEnvironment_data();
    void defaultPathFollowsTheEnvironment();
    void missingFileHasNoValues();
    void writeCreatesFoldersAndFile();
    void rootKeysAreApart();
    void valueIsReadBackByAnotherRegistry();
    void editFromOutsideIsSeenAndSurvivesAWrite();
    void valueLongerThanTheBufferCannotBeRead();
    void folderThatCannotBeMadeFailsTheWrite();
    void folderThatCannotBeWrittenFailsTheWrite();
    void whatIsNoPlainFileIsReadAsEmptyAndNeverReplaced_data();
    void whatIsNoPlainFileIsReadAsEmptyAndNeverReplaced();
    void fileOverTheBoundIsReadAsEmptyAndNeverReplaced();
    void fileWithoutReadingRightIsNeverReplaced();
    void writeThatWouldPassTheBoundFails();
    void linkToTheFileStaysALink();
    void chainOfLinksLeadsToTheLockOfTheFile();
    void fileTakesThePlaceOfLinksInACircle();
    void nothingIsLeftBesideTheFile();
    void valueThatStandsThereIsKeptEvenWhereNothingCanBeWritten();
    void valueNamesAreBounded();

private:
    QString path() const { return m_folder->filePath(u"registry.reg"_s); }
    QString lockPath() const { return path() + u".lock"_s; }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestFileRegistry::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void TestFileRegistry::cleanup()
{
    QFile::setPermissions(m_folder->path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qunsetenv("XDG_CONFIG_HOME");
}

void TestFileRegistry::defaultPathFollowsTheEnvironment_data()
{
    QTest::addColumn<QByteArray>("variable");
    QTest::addColumn<QString>("expected");
    const QString home = QDir::homePath() + u"/.config/Quorvex/Lurimat/registry.reg"_s;
    QTest::newRow("set") << QByteArray("/etc/xdg/me/")
                         << u"/etc/xdg/me/Quorvex/Lurimat/registry.reg"_s;
    QTest::newRow("not set") << QByteArray() << home;
    QTest::newRow("empty") << QByteArray("") << home;
    QTest::newRow("relative") << QByteArray("config") << home;
}

void TestFileRegistry::defaultPathFollowsTheEnvironment()
{
    QFETCH(QByteArray, variable);
    QFETCH(QString, expected);
    if (variable.isNull())
        qunsetenv("XDG_CONFIG_HOME");
    else
        qputenv("XDG_CONFIG_HOME", variable);
    QCOMPARE(FileRegistry::defaultPath(), expected);
}

void TestFileRegistry::missingFileHasNoValues()
{
    const FileRegistry registry(path());
    QVERIFY(!registry.query(user, key, u"Puerto"_s));
    QVERIFY(registry.valueNames(user, key).isEmpty());
    QVERIFY(!QFile::exists(path()));
}

void TestFileRegistry::writeCreatesFoldersAndFile()
{
    const QString deep = m_folder->filePath(u"a/b/registry.reg"_s);
    FileRegistry registry(deep);
    QVERIFY(registry.set(user, key, u"Puerto"_s, text("3")));
    QFile file(deep);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("Windows Registry Editor Version 5.00\n\n"
                                        "[HKEY_CURRENT_USER\\Software\\Quorvex\\Lurimat\\Directo]\n"
                                        "\"Puerto\"=\"3\"\n"));
}

void TestFileRegistry::rootKeysAreApart()
{
    FileRegistry registry(path());
    QVERIFY(registry.set(machine, key, u"Puerto"_s, text("9")));
    QVERIFY(!registry.query(user, key, u"Puerto"_s));
    QCOMPARE(registry.query(machine, key, u"Puerto"_s)->bytes, QByteArray("9\0", 2));
    QCOMPARE(registry.valueNames(machine, key), QStringList(u"Puerto"_s));
}

void TestFileRegistry::valueIsReadBackByAnotherRegistry()
{
    QVERIFY(FileRegistry(path()).set(user, key, u"Inicializacion"_s, text("AT&F\xF1\"\\")));
    const auto value = FileRegistry(path()).query(user, key.toUpper(), u"INICIALIZACION"_s);
    QVERIFY(value);
    QCOMPARE(value->type, quint32(1));
    QCOMPARE(value->bytes, QByteArray("AT&F\xF1\"\\\0", 8));
}

void TestFileRegistry::editFromOutsideIsSeenAndSurvivesAWrite()
{
    FileRegistry registry(path());
    QVERIFY(registry.set(user, key, u"Puerto"_s, text("3")));
    writeFile(path(),
              "[HKEY_CURRENT_USER\\Software\\Quorvex\\Lurimat\\Directo]\n\"Puerto\"=\"4\"\n");
    QCOMPARE(registry.query(user, key, u"Puerto"_s)->bytes, QByteArray("4\0", 2));
    writeFile(path(),
              "[HKEY_CURRENT_USER\\Software\\Quorvex\\Lurimat\\Directo]\n\"Puerto\"=\"5\"\n");
    QVERIFY(registry.set(user, key, u"Bits"_s, text("7")));
    QCOMPARE(contentsOf(path()),
             QByteArray("[HKEY_CURRENT_USER\\Software\\Quorvex\\Lurimat\\Directo]\n"
                        "\"Puerto\"=\"5\"\n\"Bits\"=\"7\"\n"));
}

void TestFileRegistry::valueLongerThanTheBufferCannotBeRead()
{
    FileRegistry registry(path());
    QVERIFY(registry.set(user, key, u"fits"_s, text(QByteArray(1023, 'x'))));
    QVERIFY(registry.set(user, key, u"long"_s, text(QByteArray(1024, 'x'))));
    QCOMPARE(registry.query(user, key, u"fits"_s)->bytes.size(), 1024);
    QVERIFY(!registry.query(user, key, u"long"_s));
}

void TestFileRegistry::folderThatCannotBeMadeFailsTheWrite()
{
    writeFile(path(), "not a folder");
    FileRegistry registry(path() + u"/below/registry.reg"_s);
    QVERIFY(!registry.set(user, key, u"Puerto"_s, text("3")));
    QVERIFY(!registry.query(user, key, u"Puerto"_s));
    QCOMPARE(contentsOf(path()), QByteArray("not a folder"));
}

void TestFileRegistry::folderThatCannotBeWrittenFailsTheWrite()
{
    const OrdinaryUser ordinaryUser(m_folder->path());
    const QByteArray before("[HKEY_CURRENT_USER\\Software]\n\"a\"=\"1\"\n");
    writeFile(path(), before);
    QVERIFY(QFile::setPermissions(m_folder->path(), QFile::ReadOwner | QFile::ExeOwner));
    FileRegistry registry(path());
    QVERIFY(!registry.set(user, key, u"Puerto"_s, text("3")));
    QCOMPARE(contentsOf(path()), before);
}

void TestFileRegistry::whatIsNoPlainFileIsReadAsEmptyAndNeverReplaced_data()
{
    QTest::addColumn<bool>("pipe");
    QTest::newRow("a folder") << false;
    QTest::newRow("a pipe, which would keep its reader waiting") << true;
}

void TestFileRegistry::whatIsNoPlainFileIsReadAsEmptyAndNeverReplaced()
{
    QFETCH(bool, pipe);
    if (pipe)
        QCOMPARE(mkfifo(QFile::encodeName(path()).constData(), 0600), 0);
    else
        QVERIFY(QDir().mkdir(path()));
    FileRegistry registry(path());
    QVERIFY(!registry.query(user, key, u"Puerto"_s));
    QVERIFY(!registry.set(user, key, u"Puerto"_s, text("3")));
    QVERIFY(!QFileInfo(path()).isFile());
}

void TestFileRegistry::fileOverTheBoundIsReadAsEmptyAndNeverReplaced()
{
    const QByteArray good("[HKEY_CURRENT_USER\\Software\\Quorvex\\Lurimat\\Directo]\n"
                          "\"Puerto\"=\"4\"\n");
    const QByteArray atBound = good + QByteArray(1048576 - good.size(), ';');
    writeFile(path(), atBound);
    FileRegistry registry(path());
    QVERIFY(registry.query(user, key, u"Puerto"_s));
    writeFile(path(), atBound + ';');
    QVERIFY(!registry.query(user, key, u"Puerto"_s));
    QVERIFY(!registry.set(user, key, u"Puerto"_s, text("3")));
    QCOMPARE(contentsOf(path()), atBound + ';');
}

void TestFileRegistry::fileWithoutReadingRightIsNeverReplaced()
{
    const OrdinaryUser ordinaryUser(m_folder->path());
    writeFile(path(), "[HKEY_CURRENT_USER]\n");
    QVERIFY(QFile::setPermissions(path(), QFile::WriteOwner));
    FileRegistry registry(path());
    QVERIFY(!registry.set(user, key, u"Puerto"_s, text("3")));
    QVERIFY(QFile::setPermissions(path(), QFile::ReadOwner));
    QCOMPARE(contentsOf(path()), QByteArray("[HKEY_CURRENT_USER]\n"));
}

void TestFileRegistry::writeThatWouldPassTheBoundFails()
{
    const QByteArray full(1048576, ';');
    writeFile(path(), full);
    QVERIFY(!FileRegistry(path()).set(user, key, u"Puerto"_s, text("3")));
    QCOMPARE(contentsOf(path()), full);
}

void TestFileRegistry::linkToTheFileStaysALink()
{
    const QString link = m_folder->filePath(u"link.reg"_s);
    writeFile(path(), "[HKEY_CURRENT_USER]\n");
    QVERIFY(QFile::link(path(), link));
    QVERIFY(FileRegistry(link).set(user, key, u"Puerto"_s, text("3")));
    QVERIFY(QFileInfo(link).isSymLink());
    QVERIFY(contentsOf(path()).contains("\"Puerto\"=\"3\""));
}

void TestFileRegistry::chainOfLinksLeadsToTheLockOfTheFile()
{
    const QString nearer = m_folder->filePath(u"nearer.reg"_s);
    const QString farther = m_folder->filePath(u"farther.reg"_s);
    QVERIFY(QFile::link(path(), nearer));
    QVERIFY(QFile::link(nearer, farther));
    // The lock file that was used is removed.
    writeFile(lockPath(), "");
    QVERIFY(FileRegistry(farther).set(user, key, u"Puerto"_s, text("3")));
    QVERIFY(!QFile::exists(lockPath()));
    QVERIFY(contentsOf(path()).contains("\"Puerto\"=\"3\""));
}

void TestFileRegistry::fileTakesThePlaceOfLinksInACircle()
{
    QVERIFY(QFile::link(path(), path()));
    FileRegistry registry(path());
    QVERIFY(!registry.query(user, key, u"Puerto"_s).has_value());
    QVERIFY(registry.set(user, key, u"Puerto"_s, text("3")));
    QCOMPARE(registry.query(user, key, u"Puerto"_s), text("3"));
}

void TestFileRegistry::nothingIsLeftBesideTheFile()
{
    FileRegistry registry(path());
    QVERIFY(registry.set(user, key, u"Puerto"_s, text("3")));
    QVERIFY(registry.set(user, key, u"Puerto"_s, text("4")));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden),
             QStringList(u"registry.reg"_s));
}

void TestFileRegistry::valueThatStandsThereIsKeptEvenWhereNothingCanBeWritten()
{
    const OrdinaryUser ordinaryUser(m_folder->path());
    writeFile(path(),
              "[HKEY_CURRENT_USER\\Software\\Quorvex\\Lurimat\\Directo]\n\"Puerto\"=\"4\"\n");
    QVERIFY(QFile::setPermissions(m_folder->path(), QFile::ReadOwner | QFile::ExeOwner));
    FileRegistry registry(path());
    QVERIFY(registry.set(user, key, u"Puerto"_s, text("4")));
    QVERIFY(!registry.set(user, key, u"Puerto"_s, text("5")));
}

void TestFileRegistry::valueNamesAreBounded()
{
    QByteArray content("[HKEY_LOCAL_MACHINE\\HARDWARE\\DEVICEMAP\\SERIALCOMM]\n");
    for (int i = 0; i < 20000; ++i)
        content += "\"/dev/ttyS" + QByteArray::number(i) + "\"=\"COM1\"\n";
    writeFile(path(), content);
    const QStringList names =
        FileRegistry(path()).valueNames(machine, u"HARDWARE\\DEVICEMAP\\SERIALCOMM"_s);
    QCOMPARE(names.size(), 256);
    QCOMPARE(names.last(), u"/dev/ttyS255"_s);
}

QTEST_GUILESS_MAIN(TestFileRegistry)
#include "TestFileRegistry.moc"
