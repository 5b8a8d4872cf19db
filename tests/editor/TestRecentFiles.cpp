#include "MemoryRegistry.h"
#include "RecentFiles.h"

#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;

constexpr auto hct7200 = ClockModel::Hct7200;
constexpr auto hct7300 = ClockModel::Hct7300;

class TestRecentFiles : public QObject {
    Q_OBJECT
private slots:
    void withoutAnyThereAreNone();
    void newestComesFirst();
    void fileOpenedAgainComesToTheFront();
    void tenAreKept();
    void titleIsKeptWithItsFile();
    void titleOfAnUnknownFileIsNotKept();
    void pathMayHaveAnyLetters();
    void removedFileIsGone();
    void unknownFileIsRemovedWithoutAChange();
    void fileThatIsThereTwiceIsListedOnce();
    void anyContentsOfTheRegistryAreRead_data();
    void anyContentsOfTheRegistryAreRead();
    void pathThatIsTooLongIsNotKept();
    void registryThatCannotBeWrittenIsTold();
    void nothingIsWrittenWithoutAChange();
    void valuesAreTextsOfTheEditorsKey();
};

namespace {

const auto editorKey = u"Software\\Quorvex\\Lurimat\\Editor";

QString key() { return QString::fromUtf16(editorKey); }

/// An absolute path on this system.
QString at(const QString& name) { return QDir::cleanPath(QDir::rootPath() + name); }

QStringList pathsIn(MemoryRegistry& registry)
{
    QStringList paths;
    const QList<RecentFiles::File> files = RecentFiles(registry).files();
    for (const RecentFiles::File& file : files)
        paths.append(file.path);
    return paths;
}

} // namespace

void TestRecentFiles::withoutAnyThereAreNone()
{
    MemoryRegistry registry;
    QVERIFY(RecentFiles(registry).files().isEmpty());
    QVERIFY(!RecentFiles(registry).find(at(u"a.hct"_s)));
}

void TestRecentFiles::newestComesFirst()
{
    MemoryRegistry registry;
    RecentFiles recent(registry);
    QVERIFY(recent.add(at(u"a.hct"_s), hct7200));
    QVERIFY(recent.add(at(u"b.hct"_s), hct7300));
    const QList<RecentFiles::File> expected{{at(u"b.hct"_s), hct7300, {}},
                                            {at(u"a.hct"_s), hct7200, {}}};
    QVERIFY(RecentFiles(registry).files() == expected);
}

void TestRecentFiles::fileOpenedAgainComesToTheFront()
{
    MemoryRegistry registry;
    RecentFiles recent(registry);
    for (const QString& name : {u"a.hct"_s, u"b.hct"_s, u"x/../a.hct"_s})
        QVERIFY(recent.add(at(u""_s) + name, hct7200));
    QCOMPARE(pathsIn(registry), (QStringList{at(u"a.hct"_s), at(u"b.hct"_s)}));
}

void TestRecentFiles::tenAreKept()
{
    MemoryRegistry registry;
    RecentFiles recent(registry);
    for (int number = 1; number <= 12; ++number)
        QVERIFY(recent.add(at(QString::number(number)), hct7200));
    QCOMPARE(pathsIn(registry).size(), 10);
    QCOMPARE(pathsIn(registry).constFirst(), at(u"12"_s));
    QCOMPARE(pathsIn(registry).constLast(), at(u"3"_s));
}

void TestRecentFiles::titleIsKeptWithItsFile()
{
    MemoryRegistry registry;
    RecentFiles recent(registry);
    QVERIFY(recent.add(at(u"a.hct"_s), hct7200));
    QVERIFY(recent.setWallTitle(at(u"a.hct"_s), u"Colegio «Ñu» | 2026"_s));
    QVERIFY(recent.add(at(u"b.hct"_s), hct7200));
    QVERIFY(recent.add(at(u"a.hct"_s), hct7300));
    QCOMPARE(recent.find(at(u"a.hct"_s))->wallTitle, u"Colegio «Ñu» | 2026"_s);
    QVERIFY(recent.find(at(u"a.hct"_s))->model == hct7300);
    QCOMPARE(recent.find(at(u"b.hct"_s))->wallTitle, QString());
}

void TestRecentFiles::titleOfAnUnknownFileIsNotKept()
{
    MemoryRegistry registry;
    QVERIFY(!RecentFiles(registry).setWallTitle(at(u"a.hct"_s), u"Colegio"_s));
    QVERIFY(registry.written.isEmpty());
}

void TestRecentFiles::pathMayHaveAnyLetters()
{
    MemoryRegistry registry;
    const QString path = at(u"100 % ñandú | 学校 😀.hct"_s);
    QVERIFY(RecentFiles(registry).add(path, hct7200));
    QCOMPARE(pathsIn(registry), QStringList{path});
}

void TestRecentFiles::removedFileIsGone()
{
    MemoryRegistry registry;
    RecentFiles recent(registry);
    QVERIFY(recent.add(at(u"a.hct"_s), hct7200));
    QVERIFY(recent.add(at(u"b.hct"_s), hct7200));
    QVERIFY(recent.remove(at(u"b.hct"_s)));
    QCOMPARE(pathsIn(registry), QStringList{at(u"a.hct"_s)});
    QCOMPARE(registry.values.size(), 1);
}

void TestRecentFiles::unknownFileIsRemovedWithoutAChange()
{
    MemoryRegistry registry;
    RecentFiles recent(registry);
    QVERIFY(recent.add(at(u"a.hct"_s), hct7200));
    QVERIFY(recent.remove(at(u"b.hct"_s)));
    QCOMPARE(pathsIn(registry), QStringList{at(u"a.hct"_s)});
}

void TestRecentFiles::fileThatIsThereTwiceIsListedOnce()
{
    MemoryRegistry registry;
    const QByteArray path = at(u"a.hct"_s).toLatin1();
    registry.setText(key(), u"Archivo1"_s, "7300|" + path + "|");
    registry.setText(key(), u"Archivo2"_s, "7200|" + path + "|");
    QCOMPARE(pathsIn(registry), QStringList{at(u"a.hct"_s)});
    QCOMPARE(RecentFiles(registry).find(at(u"a.hct"_s))->model, hct7300);
}

void TestRecentFiles::anyContentsOfTheRegistryAreRead_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::newRow("empty") << ""_ba;
    QTest::newRow("two parts") << "7200|/a.hct"_ba;
    QTest::newRow("four parts") << "7200|/a.hct||"_ba;
    QTest::newRow("unknown model") << "7400|/a.hct|"_ba;
    QTest::newRow("no path") << "7200||"_ba;
    QTest::newRow("relative path") << "7200|a.hct|"_ba;
    QTest::newRow("path with a NUL") << "7200|/a%00.hct|"_ba;
    QTest::newRow("text in the middle") << "7200|/a"_ba + '\0' + "|"_ba;
    QTest::newRow("bytes") << "\xFF\xFE|\x81|%"_ba;
}

void TestRecentFiles::anyContentsOfTheRegistryAreRead()
{
    QFETCH(QByteArray, value);
    MemoryRegistry registry;
    QVERIFY(RecentFiles(registry).add(at(u"good.hct"_s), hct7200));
    registry.setText(key(), u"Archivo2"_s, value);
    registry.values.insert(
        MemoryRegistry::path(Registry::RootKey::CurrentUser, key(), u"Archivo3"_s),
        {RegistryValue::Dword, QByteArray("\1\2\3\4")});
    registry.setText(key(), u"Otro"_s, "7200|/a.hct|");
    QCOMPARE(pathsIn(registry), QStringList{at(u"good.hct"_s)});
}

void TestRecentFiles::pathThatIsTooLongIsNotKept()
{
    MemoryRegistry registry;
    RecentFiles recent(registry);
    QVERIFY(recent.add(at(u"a.hct"_s), hct7200));
    QVERIFY(recent.add(at(QString(1100, u'x')), hct7200));
    QCOMPARE(pathsIn(registry), QStringList{at(u"a.hct"_s)});
}

void TestRecentFiles::registryThatCannotBeWrittenIsTold()
{
    MemoryRegistry registry;
    registry.isHeldElsewhere = true;
    QVERIFY(!RecentFiles(registry).add(at(u"a.hct"_s), hct7200));
    registry.isHeldElsewhere = false;
    registry.writesLeft = 0;
    QVERIFY(!RecentFiles(registry).add(at(u"a.hct"_s), hct7200));
}

void TestRecentFiles::nothingIsWrittenWithoutAChange()
{
    MemoryRegistry registry;
    QVERIFY(RecentFiles(registry).add(at(u"a.hct"_s), hct7200));
    registry.written.clear();
    QVERIFY(RecentFiles(registry).add(at(u"a.hct"_s), hct7200));
    QVERIFY(registry.written.isEmpty());
}

void TestRecentFiles::valuesAreTextsOfTheEditorsKey()
{
    MemoryRegistry registry;
    QVERIFY(RecentFiles(registry).add(at(u"á b.hct"_s), hct7300));
    QCOMPARE(registry.text(key(), u"Archivo1"_s),
             "7300|" + at(QString()).toUtf8() + "%C3%A1 b.hct|");
}

QTEST_GUILESS_MAIN(TestRecentFiles)
#include "TestRecentFiles.moc"
