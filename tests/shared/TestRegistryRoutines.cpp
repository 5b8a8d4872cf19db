#include "MemoryRegistry.h"
#include "modRexistro.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr auto user = Registry::RootKey::CurrentUser;
const QString key = u"Software\\Quorvex\\Lurimat\\Comun"_s;

} // namespace

class TestRegistryRoutines : public QObject {
    Q_OBJECT

private slots:
    void valueBecomesText_data();
    void valueBecomesText();
    void valueThatCannotBeReadIsEmptyAndFalse();
    void valueThatMayOnlyBeReadIsReadWhereThatIsAskedFor();
    void valueOfTheWholeBufferIsReadAndALongerOneIsNot();
    void missingValueTakesItsDefault();
    void valueThatIsThereReplacesTheDefault_data();
    void valueThatIsThereReplacesTheDefault();
    void textIsWrittenInAnsiWithItsZero_data();
    void textIsWrittenInAnsiWithItsZero();
    void failedWriteIsFalse();
};

void TestRegistryRoutines::valueBecomesText_data()
{
    QTest::addColumn<quint32>("type");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("untrimmed");
    QTest::addColumn<QString>("trimmed");
    const auto row = [](const char* title, quint32 type, const QByteArray& bytes,
                        const QString& untrimmed, const QString& trimmed) {
        QTest::newRow(title) << type << bytes << untrimmed << trimmed;
    };
    row("text", 1, QByteArray("9600\0", 5), u"9600"_s, u"9600"_s);
    row("text without its zero", 1, QByteArray("9600"), u"9600"_s, u"9600"_s);
    row("text of one zero", 1, QByteArray("\0", 1), u""_s, u""_s);
    row("text of no bytes", 1, QByteArray(), u""_s, u""_s);
    row("text with two zeros", 1, QByteArray("ab\0\0", 4), QString::fromLatin1("ab\0", 3), u"ab"_s);
    row("text after a zero", 1, QByteArray("ab\0cd\0", 6), QString::fromLatin1("ab\0cd", 5),
        u"ab"_s);
    row("ANSI text", 1,
        QByteArray("Se\xF1"
                   "al \x80\0",
                   8),
        u"Señal €"_s, u"Señal €"_s);
    row("number 10", 4, QByteArray::fromHex("0a000000"), u"10"_s, u"10"_s);
    row("number 0", 4, QByteArray::fromHex("00000000"), u"0"_s, u"0"_s);
    row("number whose bytes have two digits", 4, QByteArray::fromHex("78563412"), u"305419896"_s,
        u"305419896"_s);
    row("highest number", 4, QByteArray::fromHex("ffffffff"), u"4294967295"_s, u"4294967295"_s);
    row("number that loses a zero inside, 261", 4, QByteArray::fromHex("05010000"), u"21"_s,
        u"21"_s);
    row("number with a zero byte below, 256", 4, QByteArray::fromHex("00010000"), u"16"_s, u"16"_s);
    row("number of nine bytes", 4, QByteArray(9, '\x11'), u"314824432191309680913"_s,
        u"314824432191309680913"_s);
    row("number of no bytes", 4, QByteArray(), u"0"_s, u"0"_s);
    row("binary", 3, QByteArray("ab"), u""_s, u""_s);
    row("expandable text", 2, QByteArray("%PATH%\0", 7), u""_s, u""_s);
    row("unknown type", 4711, QByteArray("ab"), u""_s, u""_s);
}

void TestRegistryRoutines::valueBecomesText()
{
    QFETCH(quint32, type);
    QFETCH(QByteArray, bytes);
    MemoryRegistry registry;
    registry.values.insert(MemoryRegistry::path(user, key, u"v"_s), {type, bytes});
    QString text = u"before"_s;
    QVERIFY(modRexistro::readValue(registry, user, key, u"v"_s, text, false));
    QTEST(text, "untrimmed");
    QVERIFY(modRexistro::readValue(registry, user, key, u"v"_s, text, true));
    QTEST(text, "trimmed");
}

void TestRegistryRoutines::valueThatCannotBeReadIsEmptyAndFalse()
{
    QString text = u"before"_s;
    QVERIFY(!modRexistro::readValue(MemoryRegistry(), user, key, u"v"_s, text, false));
    QCOMPARE(text, u""_s);
}

void TestRegistryRoutines::valueThatMayOnlyBeReadIsReadWhereThatIsAskedFor()
{
    MemoryRegistry registry;
    registry.setText(key, u"v"_s, "12");
    registry.readOnlyKeys = {key};
    QString text = u"before"_s;
    QVERIFY(!modRexistro::readValue(registry, user, key, u"v"_s, text, false));
    QCOMPARE(text, u""_s);
    QVERIFY(modRexistro::readReadOnlyValue(registry, user, key, u"v"_s, text, false));
    QCOMPARE(text, u"12"_s);
}

void TestRegistryRoutines::valueOfTheWholeBufferIsReadAndALongerOneIsNot()
{
    MemoryRegistry registry;
    registry.setText(key, u"fits"_s, QByteArray(1023, 'x'));
    registry.setText(key, u"long"_s, QByteArray(1024, 'x'));
    QString text;
    QVERIFY(modRexistro::readValue(registry, user, key, u"fits"_s, text, false));
    QCOMPARE(text, QString(1023, u'x'));
    QVERIFY(!modRexistro::readValue(registry, user, key, u"long"_s, text, false));
    QCOMPARE(text, u""_s);
}

void TestRegistryRoutines::missingValueTakesItsDefault()
{
    QString text = u"before"_s;
    modRexistro::readWithDefault(MemoryRegistry(), user, key, u"v"_s, u"9600"_s, text);
    QCOMPARE(text, u"9600"_s);
}

void TestRegistryRoutines::valueThatIsThereReplacesTheDefault_data()
{
    QTest::addColumn<quint32>("type");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("expected");
    QTest::newRow("text") << quint32(1) << QByteArray("110\0", 4) << u"110"_s;
    QTest::newRow("empty text") << quint32(1) << QByteArray("\0", 1) << u""_s;
    QTest::newRow("type that is no text") << quint32(3) << QByteArray("x") << u""_s;
}

void TestRegistryRoutines::valueThatIsThereReplacesTheDefault()
{
    QFETCH(quint32, type);
    QFETCH(QByteArray, bytes);
    MemoryRegistry registry;
    registry.values.insert(MemoryRegistry::path(user, key, u"v"_s), {type, bytes});
    QString text;
    modRexistro::readWithDefault(registry, user, key, u"v"_s, u"9600"_s, text);
    QTEST(text, "expected");
}

void TestRegistryRoutines::textIsWrittenInAnsiWithItsZero_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("number") << u"9600"_s << QByteArray("9600\0", 5);
    QTest::newRow("empty") << u""_s << QByteArray("\0", 1);
    QTest::newRow("Spanish") << u"Año €"_s << QByteArray("A\xF1o \x80\0", 6);
    QTest::newRow("outside the code page") << u"→"_s << QByteArray("?\0", 2);
}

void TestRegistryRoutines::textIsWrittenInAnsiWithItsZero()
{
    QFETCH(QString, text);
    MemoryRegistry registry;
    QVERIFY(modRexistro::writeText(registry, user, key, u"v"_s, text));
    const RegistryValue value = registry.values.value(MemoryRegistry::path(user, key, u"v"_s));
    QCOMPARE(value.type, quint32(1));
    QTEST(value.bytes, "bytes");
}

void TestRegistryRoutines::failedWriteIsFalse()
{
    MemoryRegistry registry;
    registry.writesLeft = 0;
    QVERIFY(!modRexistro::writeText(registry, user, key, u"v"_s, u"1"_s));
    QVERIFY(registry.values.isEmpty());
}

QTEST_GUILESS_MAIN(TestRegistryRoutines)
#include "TestRegistryRoutines.moc"
