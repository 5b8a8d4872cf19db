#include "MemoryRegistry.h"
#include "modUtilidades.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// The path of the program is in one of two values, and the file must exist.
class TestSystemInformation : public QObject {
    Q_OBJECT

private slots:
    void init();
    void pathValueComesFirst();
    void pathEndsAtItsFirstZero();
    void folderValueIsUsedWhereThereIsNoPath();
    void folderValueIsUsedWhereThePathNamesNoFile();
    void keysThatTheUserMayOnlyReadAreReadToo_data();
    void keysThatTheUserMayOnlyReadAreReadToo();
    void missingProgramIsTold_data();
    void missingProgramIsTold();
    void programThatDoesNotStartIsTold();

private:
    void setMachineText(const QString& subKey, const QString& name, const QString& text)
    {
        m_registry.values.insert(
            MemoryRegistry::path(Registry::RootKey::LocalMachine, subKey, name),
            {RegistryValue::Text, text.toLatin1() + '\0'});
    }
    void setPath(const QString& text)
    {
        setMachineText(u"SOFTWARE\\Microsoft\\Shared Tools\\MSINFO"_s, u"PATH"_s, text);
    }
    void setFolder(const QString& text)
    {
        setMachineText(u"SOFTWARE\\Microsoft\\Shared Tools Location"_s, u"MSINFO"_s, text);
    }
    /// Makes an empty file of this name in the test's folder.
    QString makeFile(const QString& name) const
    {
        QFile file(m_folder->filePath(name));
        // Where a backslash separates folders, the folder must exist.
        QDir().mkpath(QFileInfo(file).path());
        return file.open(QIODevice::WriteOnly) ? file.fileName() : QString();
    }
    bool run(bool starts = true)
    {
        return modUtilidades::systemInformation(m_registry, [&](const QString& program) {
            m_started.append(QDir::fromNativeSeparators(program));
            return starts;
        });
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    MemoryRegistry m_registry;
    QStringList m_started;
};

void TestSystemInformation::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_registry = MemoryRegistry();
    m_started.clear();
}

void TestSystemInformation::pathValueComesFirst()
{
    const QString program = makeFile(u"info.exe"_s);
    setPath(program);
    makeFile(u"tools\\MSINFO32.EXE"_s);
    setFolder(m_folder->filePath(u"tools"_s));
    QVERIFY(run());
    QCOMPARE(m_started, QStringList(program));
}

void TestSystemInformation::pathEndsAtItsFirstZero()
{
    const QString program = makeFile(u"info.exe"_s);
    setPath(program + QChar(u'\0') + u"rest"_s);
    QVERIFY(run());
    QCOMPARE(m_started, QStringList(program));
}

void TestSystemInformation::folderValueIsUsedWhereThereIsNoPath()
{
    const QString program = makeFile(u"tools\\MSINFO32.EXE"_s);
    setFolder(m_folder->filePath(u"tools"_s));
    QVERIFY(run());
    QCOMPARE(m_started, QStringList(program));
}

void TestSystemInformation::folderValueIsUsedWhereThePathNamesNoFile()
{
    setPath(m_folder->filePath(u"gone.exe"_s));
    const QString program = makeFile(u"tools\\MSINFO32.EXE"_s);
    setFolder(m_folder->filePath(u"tools"_s));
    QVERIFY(run());
    QCOMPARE(m_started, QStringList(program));
}

void TestSystemInformation::keysThatTheUserMayOnlyReadAreReadToo_data()
{
    QTest::addColumn<bool>("byPath");
    QTest::newRow("path") << true;
    QTest::newRow("folder") << false;
}

void TestSystemInformation::keysThatTheUserMayOnlyReadAreReadToo()
{
    QFETCH(bool, byPath);
    const QString program = makeFile(u"tools\\MSINFO32.EXE"_s);
    if (byPath)
        setPath(program);
    else
        setFolder(m_folder->filePath(u"tools"_s));
    m_registry.readOnlyKeys = {u"SOFTWARE\\Microsoft\\Shared Tools\\MSINFO"_s,
                               u"SOFTWARE\\Microsoft\\Shared Tools Location"_s};
    QVERIFY(run());
    QCOMPARE(m_started, QStringList(program));
}

void TestSystemInformation::missingProgramIsTold_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("folder");
    QTest::newRow("no values") << QString() << QString();
    QTest::newRow("files that are not there")
        << u"C:\\Tools\\MSINFO\\MSINFO32.EXE"_s << u"C:\\Tools\\MSINFO"_s;
    QTest::newRow("a folder in place of the program") << QDir::tempPath() << QString();
}

void TestSystemInformation::missingProgramIsTold()
{
    QFETCH(QString, path);
    QFETCH(QString, folder);
    if (!path.isNull())
        setPath(path);
    if (!folder.isNull())
        setFolder(folder);
    QVERIFY(!run());
    QVERIFY(m_started.isEmpty());
}

void TestSystemInformation::programThatDoesNotStartIsTold()
{
    setPath(makeFile(u"info.exe"_s));
    QVERIFY(!run(false));
    QCOMPARE(m_started.size(), 1);
}

QTEST_GUILESS_MAIN(TestSystemInformation)
#include "TestSystemInformation.moc"
