#include "RegistryText.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString key = u"HKEY_CURRENT_USER\\Software\\A"_s;

/// The file after a text has been set.
QByteArray afterSetting(const QByteArray& file, const QString& name, const QByteArray& text)
{
    RegistryText registry(file);
    registry.setValue(key, name, {RegistryValue::Text, text + '\0'});
    return registry.toBytes();
}

} // namespace

class TestRegistryWriting : public QObject {
    Q_OBJECT

private slots:
    void newFileHasHeaderKeyAndValue();
    void valueIsReplacedWhereItStands();
    void nameKeepsItsSpelling();
    void newValueComesAtTheEndOfItsKey_data();
    void newValueComesAtTheEndOfItsKey();
    void newKeyComesAtTheEndOfTheFile_data();
    void newKeyComesAtTheEndOfTheFile();
    void textSpreadOverLinesIsReplacedWhole();
    void valueWithoutANameIsWrittenAsTheDefaultOne();
    void sameValueLeavesTheFileUntouched();
    void valueIsWrittenInItsForm_data();
    void valueIsWrittenInItsForm();
    void encodingStays_data();
    void encodingStays();
    void valueAfterALineFewerStandsBesideTheOthers();
    void everyOtherLineStaysByteForByte();
    void valueAfterADeletionIsSetBelowIt();
    void encodingOfAStumpIsThatOfTheFileItGrowsInto_data();
    void encodingOfAStumpIsThatOfTheFileItGrowsInto();
    void valueBelowATextWithoutItsEndIsNoPartOfThatText_data();
    void valueBelowATextWithoutItsEndIsNoPartOfThatText();
    void removedValueTakesItsLinesAlong_data();
    void removedValueTakesItsLinesAlong();
};

void TestRegistryWriting::newFileHasHeaderKeyAndValue()
{
    QCOMPARE(afterSetting({}, u"Puerto"_s, "0"),
             QByteArray("Windows Registry Editor Version 5.00\n\n"
                        "[HKEY_CURRENT_USER\\Software\\A]\n\"Puerto\"=\"0\"\n"));
}

void TestRegistryWriting::valueIsReplacedWhereItStands()
{
    QCOMPARE(afterSetting("[HKEY_CURRENT_USER\\Software\\A]\n\"x\"=\"1\"\n\"v\"=dword:00000001\n"
                          "\"y\"=\"2\"\n",
                          u"v"_s, "new"),
             QByteArray("[HKEY_CURRENT_USER\\Software\\A]\n\"x\"=\"1\"\n\"v\"=\"new\"\n"
                        "\"y\"=\"2\"\n"));
}

void TestRegistryWriting::nameKeepsItsSpelling()
{
    QCOMPARE(afterSetting("[hkey_current_user\\software\\a]\n\"PUERTO\"=\"1\"\n", u"Puerto"_s, "2"),
             QByteArray("[hkey_current_user\\software\\a]\n\"PUERTO\"=\"2\"\n"));
}

void TestRegistryWriting::newValueComesAtTheEndOfItsKey_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::newRow("before the blank line that follows")
        << QByteArray("[HKEY_CURRENT_USER\\Software\\A]\n\"x\"=\"1\"\n\n[HKEY_CURRENT_USER\\B]\n")
        << QByteArray("[HKEY_CURRENT_USER\\Software\\A]\n\"x\"=\"1\"\n\"v\"=\"2\"\n\n"
                      "[HKEY_CURRENT_USER\\B]\n");
    QTest::newRow("into a key without values")
        << QByteArray("[HKEY_CURRENT_USER\\Software\\A]\n")
        << QByteArray("[HKEY_CURRENT_USER\\Software\\A]\n\"v\"=\"2\"\n");
    QTest::newRow("after a last line without ending")
        << QByteArray("[HKEY_CURRENT_USER\\Software\\A]\r\n\"x\"=\"1\"")
        << QByteArray("[HKEY_CURRENT_USER\\Software\\A]\r\n\"x\"=\"1\"\r\n\"v\"=\"2\"\r\n");
    QTest::newRow("before a damaged line")
        << QByteArray("[HKEY_CURRENT_USER\\Software\\A]\n\"x\"=\"1\"\n\"v\"=\"never ends\n")
        << QByteArray("[HKEY_CURRENT_USER\\Software\\A]\n\"x\"=\"1\"\n\"v\"=\"2\"\n"
                      "\"v\"=\"never ends\n");
    QTest::newRow("into the last of two sections")
        << QByteArray("[HKEY_CURRENT_USER\\Software\\A]\n[HKEY_CURRENT_USER\\Software\\A]\n;\n")
        << QByteArray("[HKEY_CURRENT_USER\\Software\\A]\n[HKEY_CURRENT_USER\\Software\\A]\n"
                      "\"v\"=\"2\"\n;\n");
}

void TestRegistryWriting::newValueComesAtTheEndOfItsKey()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    QCOMPARE(afterSetting(before, u"v"_s, "2"), after);
}

void TestRegistryWriting::newKeyComesAtTheEndOfTheFile_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::newRow("after another key")
        << QByteArray("[HKEY_CURRENT_USER\\B]\r\n\"v\"=\"1\"\r\n")
        << QByteArray("[HKEY_CURRENT_USER\\B]\r\n\"v\"=\"1\"\r\n\r\n"
                      "[HKEY_CURRENT_USER\\Software\\A]\r\n\"v\"=\"2\"\r\n");
    QTest::newRow("after a blank line")
        << QByteArray("Windows Registry Editor Version 5.00\n\n")
        << QByteArray("Windows Registry Editor Version 5.00\n\n"
                      "[HKEY_CURRENT_USER\\Software\\A]\n\"v\"=\"2\"\n");
    QTest::newRow("after rubbish without ending")
        << QByteArray("rubbish")
        << QByteArray("rubbish\n\n[HKEY_CURRENT_USER\\Software\\A]\n\"v\"=\"2\"\n");
    QTest::newRow("below the deletion of its key")
        << QByteArray("[HKEY_CURRENT_USER\\Software\\A]\n\"v\"=\"1\"\n"
                      "[-HKEY_CURRENT_USER\\Software]\n")
        << QByteArray("[HKEY_CURRENT_USER\\Software\\A]\n\"v\"=\"1\"\n"
                      "[-HKEY_CURRENT_USER\\Software]\n\n"
                      "[HKEY_CURRENT_USER\\Software\\A]\n\"v\"=\"2\"\n");
    QTest::newRow("mark alone") << QByteArray("\xEF\xBB\xBF")
                                << QByteArray("\xEF\xBB\xBF"
                                              "Windows Registry Editor Version 5.00\n\n"
                                              "[HKEY_CURRENT_USER\\Software\\A]\n\"v\"=\"2\"\n");
}

void TestRegistryWriting::newKeyComesAtTheEndOfTheFile()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    QCOMPARE(afterSetting(before, u"v"_s, "2"), after);
}

void TestRegistryWriting::textSpreadOverLinesIsReplacedWhole()
{
    QCOMPARE(
        afterSetting("[HKEY_CURRENT_USER\\Software\\A]\n\"v\"=\"one\ntwo\nthree\"\n\"x\"=\"1\"\n",
                     u"v"_s, "2"),
        QByteArray("[HKEY_CURRENT_USER\\Software\\A]\n\"v\"=\"2\"\n\"x\"=\"1\"\n"));
    QCOMPARE(afterSetting("[HKEY_CURRENT_USER\\Software\\A]\n\"v\"=hex:01,\\\n  02\n\"x\"=\"1\"\n",
                          u"v"_s, "2"),
             QByteArray("[HKEY_CURRENT_USER\\Software\\A]\n\"v\"=\"2\"\n\"x\"=\"1\"\n"));
}

void TestRegistryWriting::valueWithoutANameIsWrittenAsTheDefaultOne()
{
    QCOMPARE(afterSetting("[HKEY_CURRENT_USER\\Software\\A]\n", QString(), "1"),
             QByteArray("[HKEY_CURRENT_USER\\Software\\A]\n@=\"1\"\n"));
}

void TestRegistryWriting::sameValueLeavesTheFileUntouched()
{
    // The arrow is read as "?". Writing that back must keep the arrow.
    const QByteArray file("[HKEY_CURRENT_USER\\Software\\A]\n  \"v\" = \"a→b\" ; mine");
    QCOMPARE(afterSetting(file, u"v"_s, "a?b"), file);
}

void TestRegistryWriting::valueIsWrittenInItsForm_data()
{
    QTest::addColumn<quint32>("type");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("lines");
    const auto row = [](const char* title, quint32 type, const QByteArray& bytes,
                        const QByteArray& lines) {
        QTest::newRow(title) << type << bytes << lines;
    };
    row("text", 1, QByteArray("ATZ\0", 4), "\"v\"=\"ATZ\"\n");
    row("blanks", 1, QByteArray(" a b\0", 5), "\"v\"=\" a b\"\n");
    row("escapes", 1, QByteArray("a\\b\"c\0", 6), "\"v\"=\"a\\\\b\\\"c\"\n");
    row("non-ASCII", 1, QByteArray("\xF1\x80\0", 3), "\"v\"=\"ñ€\"\n");
    row("line break", 1, QByteArray("a\n\0", 3), "\"v\"=hex(1):61,00,0a,00,00,00\n");
    row("zero inside", 1, QByteArray("a\0b\0", 4), "\"v\"=hex(1):61,00,00,00,62,00,00,00\n");
    row("text without its zero", 1, QByteArray("a"), "\"v\"=hex(1):61,00\n");
    row("empty text without its zero", 1, QByteArray(), "\"v\"=hex(1):\n");
    row("dword", 4, QByteArray::fromHex("0a000080"), "\"v\"=dword:8000000a\n");
    row("dword of another length", 4, QByteArray::fromHex("0a"), "\"v\"=hex(4):0a\n");
    row("dword of five bytes", 4, QByteArray::fromHex("0a00000001"),
        "\"v\"=hex(4):0a,00,00,00,01\n");
    row("binary", 3, QByteArray::fromHex("01ff"), "\"v\"=hex:01,ff\n");
    row("empty binary", 3, QByteArray(), "\"v\"=hex:\n");
    row("long binary", 3, QByteArray(26, '\1'),
        "\"v\"=hex:01,01,01,01,01,01,01,01,01,01,01,01,01,01,01,01,01,01,01,01,01,01,01,01,\\\n"
        "  01,01\n");
    row("expandable text", 2, QByteArray("%\0", 2), "\"v\"=hex(2):25,00,00,00\n");
    row("eight bytes", 11, QByteArray(8, '\2'), "\"v\"=hex(b):02,02,02,02,02,02,02,02\n");
}

void TestRegistryWriting::valueIsWrittenInItsForm()
{
    QFETCH(quint32, type);
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, lines);
    const QByteArray start("[HKEY_CURRENT_USER\\Software\\A]\n");
    RegistryText text(start);
    text.setValue(key, u"v"_s, {type, bytes});
    QCOMPARE(text.toBytes(), start + lines);
    const auto again = RegistryText(text.toBytes()).value(key, u"v"_s);
    QVERIFY(again);
    QCOMPARE(again->type, type);
    QCOMPARE(again->bytes, bytes);
}

void TestRegistryWriting::encodingStays_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("added");
    QTest::newRow("UTF-8 with mark") << QByteArray("\xEF\xBB\xBF[HKEY_CURRENT_USER\\Software\\A]\n")
                                     << QByteArray("\"v\"=\"\xC3\xB1\"\n");
    QTest::newRow("ANSI") << QByteArray("REGEDIT4\n[HKEY_CURRENT_USER\\Software\\A]\n")
                          << QByteArray("\"v\"=\"\xF1\"\n");
    const char16_t header[] = u"\uFEFF[HKEY_CURRENT_USER\\Software\\A]\r\n";
    const QByteArray little(reinterpret_cast<const char*>(header), sizeof header - 2);
    QByteArray big = little;
    for (qsizetype i = 0; i < big.size(); i += 2)
        std::swap(big[i], big[i + 1]);
    QTest::newRow("UTF-16 of Windows")
        << little << QByteArray::fromHex("2200760022003d002200f10022000d000a00");
    QTest::newRow("UTF-16, high byte first")
        << big << QByteArray::fromHex("002200760022003d002200f10022000d000a");
}

void TestRegistryWriting::encodingStays()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, added);
    QCOMPARE(afterSetting(before, u"v"_s, "\xF1"), before + added);
}

void TestRegistryWriting::valueAfterALineFewerStandsBesideTheOthers()
{
    RegistryText registry("[HKEY_CURRENT_USER\\Software\\A]\n\"a\"=hex:01,\\\n  02\n\"b\"=\"2\"\n");
    registry.setValue(key, u"a"_s, {RegistryValue::Text, QByteArray("1\0", 2)});
    registry.setValue(key, u"c"_s, {RegistryValue::Text, QByteArray("3\0", 2)});
    QCOMPARE(registry.valueNames(key), (QStringList{u"a"_s, u"b"_s, u"c"_s}));
}

void TestRegistryWriting::everyOtherLineStaysByteForByte()
{
    const QByteArray above("\xFF not text\r\n;comment\n[HKEY_CURRENT_USER\\Software\\A\n"
                           "\"v\"=\"lost\n   \n[HKEY_CURRENT_USER\\Software\\A]\n\"v\"=9600\n");
    const QByteArray below =
        "\"w\"=hex:01,\\\n\"x\"=dword:zz\n\n@=\"\n[-]\n" + QByteArray(2, '\0') + "\x80";
    const QByteArray value("\"v\"=\"1\"\n");
    QCOMPARE(afterSetting(above + value + below, u"v"_s, "2"), above + "\"v\"=\"2\"\r\n" + below);
}

void TestRegistryWriting::valueAfterADeletionIsSetBelowIt()
{
    QCOMPARE(afterSetting("[HKEY_CURRENT_USER\\Software\\A]\n\"v\"=\"1\"\n\"v\"=-\n", u"v"_s, "2"),
             QByteArray("[HKEY_CURRENT_USER\\Software\\A]\n\"v\"=\"1\"\n\"v\"=-\n\"v\"=\"2\"\n"));
}

void TestRegistryWriting::encodingOfAStumpIsThatOfTheFileItGrowsInto_data()
{
    QTest::addColumn<QByteArray>("stump");
    QTest::newRow("ANSI header without line end") << QByteArray("REGEDIT4");
    QTest::newRow("half a UTF-16 unit") << QByteArray(1, '\0');
    QTest::newRow("a character") << QByteArray("x");
}

void TestRegistryWriting::encodingOfAStumpIsThatOfTheFileItGrowsInto()
{
    QFETCH(QByteArray, stump);
    // A control character is written as hexadecimal bytes, in the encoding of the file.
    const RegistryText anew(afterSetting(stump, u"v"_s, "a\rb"));
    const auto value = anew.value(key, u"v"_s);
    QVERIFY(value.has_value());
    QCOMPARE(value->bytes, QByteArray("a\rb\0", 4));
}

void TestRegistryWriting::valueBelowATextWithoutItsEndIsNoPartOfThatText_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<quint32>("type");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("after");
    const QByteArray section = "[HKEY_CURRENT_USER\\Software\\A]\n";
    const QByteArray open = "\"t\"=\"no end\n";
    const QByteArray guard = ";\"The text above has no closing quote\n";
    QTest::newRow("bytes in place of a text")
        << section + open + "@=\"\"\nb\"\n"
        << 3U << QByteArray("\1") << section + open + guard + "@=hex:01\nb\"\n";
    QTest::newRow("bytes that another line has, too")
        << section + "@=hex:01\n" + open + "@=\"\"\nb\"\n"
        << 3U << QByteArray("\1") << section + "@=hex:01\n" + open + guard + "@=hex:01\nb\"\n";
    QTest::newRow("text that begins like a comment")
        << section + open + "@=dword:00000001\n"
        << 1U << QByteArray("; a", 4) << section + open + guard + "@=\"; a\"\n";
    QTest::newRow("text that ends the other")
        << section + open + "@=dword:00000001\n"
        << 1U << QByteArray("a", 2) << section + open + "@=\"a\"\n";
}

void TestRegistryWriting::valueBelowATextWithoutItsEndIsNoPartOfThatText()
{
    QFETCH(QByteArray, before);
    QFETCH(quint32, type);
    QFETCH(QByteArray, bytes);
    RegistryText registry(before);
    registry.setValue(key, u""_s, {type, bytes});
    QTEST(registry.toBytes(), "after");
}

void TestRegistryWriting::removedValueTakesItsLinesAlong_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("after");
    QTest::newRow("one line") << QByteArray(
                                     "[HKEY_CURRENT_USER\\Software\\A]\n\"x\"=\"1\"\n\"V\"=\"2\"\n"
                                     "\"y\"=\"3\"\n")
                              << QByteArray("[HKEY_CURRENT_USER\\Software\\A]\n\"x\"=\"1\"\n"
                                            "\"y\"=\"3\"\n");
    QTest::newRow("several lines")
        << QByteArray("[HKEY_CURRENT_USER\\Software\\A]\n\"v\"=hex(1):61,\\\n  00\n\"x\"=\"1\"\n")
        << QByteArray("[HKEY_CURRENT_USER\\Software\\A]\n\"x\"=\"1\"\n");
    QTest::newRow("earlier lines too")
        << QByteArray("[HKEY_CURRENT_USER\\Software\\A]\n\"v\"=\"1\"\n\"v\"=\"2\"\n; end\n")
        << QByteArray("[HKEY_CURRENT_USER\\Software\\A]\n; end\n");
    QTest::newRow("below a text without its end")
        << QByteArray(
               "[HKEY_CURRENT_USER\\Software\\A]\n\"t\"=\"no end\n\"v\"=\"1\"\n@=dword:01\nb\"\n")
        << QByteArray("[HKEY_CURRENT_USER\\Software\\A]\n\"t\"=\"no end\n"
                      ";\"The text above has no closing quote\n@=dword:01\nb\"\n");
    QTest::newRow("of another key")
        << QByteArray("[HKEY_CURRENT_USER\\Software\\B]\n\"v\"=\"1\"\n")
        << QByteArray("[HKEY_CURRENT_USER\\Software\\B]\n\"v\"=\"1\"\n");
}

void TestRegistryWriting::removedValueTakesItsLinesAlong()
{
    QFETCH(QByteArray, file);
    RegistryText registry(file);
    registry.removeValue(key, u"v"_s);
    QVERIFY(!registry.value(key, u"v"_s));
    QTEST(registry.toBytes(), "after");
}

QTEST_GUILESS_MAIN(TestRegistryWriting)
#include "TestRegistryWriting.moc"
