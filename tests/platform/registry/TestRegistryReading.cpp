#include "RegistryText.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString key = u"HKEY_CURRENT_USER\\Software\\Quorvex\\Lurimat\\Directo"_s;

/// A file with these lines under the key.
QByteArray withKey(const QByteArray& lines)
{
    return "Windows Registry Editor Version 5.00\n\n[" + key.toLatin1() + "]\n" + lines;
}

QByteArray utf16(const QString& text, bool bigEndian)
{
    QByteArray bytes;
    for (const QChar unit : text) {
        bytes += static_cast<char>(bigEndian ? unit.row() : unit.cell());
        bytes += static_cast<char>(bigEndian ? unit.cell() : unit.row());
    }
    return bytes;
}

/// The bytes of a text value; "(none)" when there is no value.
QByteArray bytesOf(const QByteArray& file, const QString& name)
{
    const auto value = RegistryText(file).value(key, name);
    return value ? value->bytes : QByteArray("(none)");
}

} // namespace

class TestRegistryReading : public QObject {
    Q_OBJECT

private slots:
    void dataHasTypeAndBytes_data();
    void dataHasTypeAndBytes();
    void damagedLineSaysNothing_data();
    void damagedLineSaysNothing();
    void goodLinesAroundADamagedOneCount_data();
    void goodLinesAroundADamagedOneCount();
    void encodingIsRecognised_data();
    void encodingIsRecognised();
    void lineThatIsNotUtf8IsReadAsAnsi();
    void keysAndNamesAreAlikeInAnyCase();
    void namesOfDifferentLettersAreNotAlike();
    void laterLineWins();
    void deletedValueIsGone();
    void deletedKeyIsGone();
    void deletedKeyTakesItsKeysAlong();
    void keyOfTheSameBeginningIsAnother();
    void valuesUnderADamagedKeyLineBelongToNoKey();
    void valueNamesComeInTheOrderOfTheFile();
    void namesOfADeletedKeyAreThoseSetAfterwards();
    void deletionOfAnotherKeyLeavesTheNames();
    void deletionOfAnotherValueLeavesTheNames();
    void valueNamedLikeItsKeyOutlivesTheNextLineOfTheKey();
    void textsOfHexLinesAreAnsiInTheOldFormat();
    void anyBytesAtAllAreTaken();
};

void TestRegistryReading::dataHasTypeAndBytes_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<quint32>("type");
    QTest::addColumn<QByteArray>("bytes");
    const auto row = [](const char* title, const QByteArray& line, quint32 type,
                        const QByteArray& bytes) { QTest::newRow(title) << line << type << bytes; };
    row("text", "\"v\"=\"9600\"", 1, QByteArray("9600\0", 5));
    row("empty text", "\"v\"=\"\"", 1, QByteArray("\0", 1));
    row("escapes", R"("v"="C:\\dir\\\"x\"")", 1, QByteArray("C:\\dir\\\"x\"\0", 11));
    row("lone backslash stays", R"("v"="a\b")", 1, QByteArray("a\\b\0", 4));
    row("text over two lines", "\"v\"=\"one\ntwo\"", 1, QByteArray("one\ntwo\0", 8));
    row("text over two lines of Windows", "\"v\"=\"one\r\n[two]\"\r\n", 1,
        QByteArray("one\r\n[two]\0", 11));
    row("non-ASCII text", "\"v\"=\"Señal €\"", 1,
        QByteArray("Se\xF1"
                   "al \x80\0",
                   8));
    row("character without a byte", "\"v\"=\"→\"", 1, QByteArray("?\0", 2));
    row("half a character at the end", "\"v\"=hex(1):41,00,42,00,43", 1, "AB");
    row("blanks and a comment", "  \"v\" = \"x\"  ; why", 1, QByteArray("x\0", 2));
    row("dword", "\"v\"=dword:0000000a", 4, QByteArray::fromHex("0a000000"));
    row("dword, all bytes", "\"v\"=DWORD:89ABcdef ; why", 4, QByteArray::fromHex("efcdab89"));
    row("short dword", "\"v\"=dword:1", 4, QByteArray::fromHex("01000000"));
    row("binary", "\"v\"=hex:01,ff,5", 3, QByteArray::fromHex("01ff05"));
    row("empty binary", "\"v\"=hex:", 3, QByteArray());
    row("binary over three lines", "\"v\"=hex:01,\\\n  02,\\\r\n  03", 3,
        QByteArray::fromHex("010203"));
    row("dword in bytes", "\"v\"=hex(4):05,01,00,00", 4, QByteArray::fromHex("05010000"));
    row("eight bytes", "\"v\"=hex(b):01,02,03,04,05,06,07,08", 11,
        QByteArray::fromHex("0102030405060708"));
    row("text in bytes", "\"v\"=hex(1):f1,00,0a,00,ac,20,00,00", 1, QByteArray("\xF1\n\x80\0", 4));
    row("expandable text", "\"v\"=hex(2):25,00,00,00", 2, QByteArray("%\0", 2));
    row("several texts", "\"v\"=hex(7):41,00,00,00,00,00", 7, QByteArray("A\0\0", 3));
}

void TestRegistryReading::dataHasTypeAndBytes()
{
    QFETCH(QByteArray, line);
    QFETCH(quint32, type);
    QFETCH(QByteArray, bytes);
    const auto value = RegistryText(withKey(line)).value(key, u"v"_s);
    QVERIFY(value);
    QCOMPARE(value->type, type);
    QCOMPARE(value->bytes, bytes);
}

void TestRegistryReading::damagedLineSaysNothing_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("no data") << QByteArray("\"v\"=");
    QTest::newRow("no equals sign") << QByteArray("\"v\" \"1\"");
    QTest::newRow("no quotes") << QByteArray("\"v\"=9600");
    QTest::newRow("no closing quote") << QByteArray("\"v\"=\"9600");
    QTest::newRow("closing quote escaped") << QByteArray("\"v\"=\"C:\\\"");
    QTest::newRow("rubbish after the text") << QByteArray("\"v\"=\"9600\"x");
    QTest::newRow("name without end") << QByteArray("\"v=\"9600\"");
    QTest::newRow("commented out") << QByteArray(";\"v\"=\"9600\"");
    QTest::newRow("dword of nine digits") << QByteArray("\"v\"=dword:000000000");
    QTest::newRow("dword without digits") << QByteArray("\"v\"=dword:");
    QTest::newRow("dword with a prefix") << QByteArray("\"v\"=dword:0x10");
    QTest::newRow("dword with a sign") << QByteArray("\"v\"=dword:-1");
    QTest::newRow("byte of three digits") << QByteArray("\"v\"=hex:100");
    QTest::newRow("byte with a sign") << QByteArray("\"v\"=hex:+1");
    QTest::newRow("byte with a foreign digit") << QByteArray("\"v\"=hex:٣");
    QTest::newRow("type without end") << QByteArray("\"v\"=hex(1:00");
    QTest::newRow("type without a number") << QByteArray("\"v\"=hex():00");
    QTest::newRow("continued at the end of the file") << QByteArray("\"v\"=hex:01,\\");
    QTest::newRow("rubbish after a deletion") << QByteArray("\"v\"=-1");
}

void TestRegistryReading::damagedLineSaysNothing()
{
    QFETCH(QByteArray, line);
    QVERIFY(!RegistryText(withKey(line)).value(key, u"v"_s));
}

void TestRegistryReading::goodLinesAroundADamagedOneCount_data()
{
    damagedLineSaysNothing_data();
    QTest::newRow("unknown words") << QByteArray("Hola, mundo");
    QTest::newRow("bytes that are no text") << QByteArray("\xFF\xFE\x00\x01\x80", 5);
    QTest::newRow("a very long line") << QByteArray(200000, '"');
    QTest::newRow("a text that a quoted name would end") << QByteArray("\"v\"=\"x\n\n;\"");
}

void TestRegistryReading::goodLinesAroundADamagedOneCount()
{
    QFETCH(QByteArray, line);
    const QByteArray file = withKey("\"before\"=\"1\"\n" + line + "\n\"after\"=\"2\"\n");
    QCOMPARE(bytesOf(file, u"before"_s), QByteArray("1\0", 2));
    QCOMPARE(bytesOf(file, u"after"_s), QByteArray("2\0", 2));
}

void TestRegistryReading::encodingIsRecognised_data()
{
    QTest::addColumn<QByteArray>("file");
    const QString text = QString::fromUtf8(withKey("\"v\"=\"Señal\"\r\n"));
    const QByteArray utf8 = text.toUtf8();
    QTest::newRow("UTF-8") << utf8;
    QTest::newRow("UTF-8 with mark") << "\xEF\xBB\xBF" + utf8;
    QTest::newRow("UTF-16 of Windows") << "\xFF\xFE" + utf16(text, false);
    QTest::newRow("UTF-16, high byte first") << "\xFE\xFF" + utf16(text, true);
    QTest::newRow("UTF-16 without mark") << utf16(text, false);
    QTest::newRow("UTF-16, high byte first, without mark") << utf16(text, true);
    QTest::newRow("UTF-16 cut in mid-character") << "\xFF\xFE" + utf16(text, false) + "[";
    QByteArray ansi = text.toLatin1();
    ansi.replace("Windows Registry Editor Version 5.00", "REGEDIT4");
    QTest::newRow("ANSI") << ansi;
}

void TestRegistryReading::encodingIsRecognised()
{
    QFETCH(QByteArray, file);
    QCOMPARE(bytesOf(file, u"v"_s), QByteArray("Se\xF1"
                                               "al\0",
                                               6));
}

void TestRegistryReading::lineThatIsNotUtf8IsReadAsAnsi()
{
    QCOMPARE(bytesOf(withKey("\"v\"=\"Se\xF1"
                             "al\"\n"),
                     u"v"_s),
             QByteArray("Se\xF1"
                        "al\0",
                        6));
}

void TestRegistryReading::keysAndNamesAreAlikeInAnyCase()
{
    const RegistryText text("[hkey_current_user\\SOFTWARE\\quorvex\\Lurimat\\DIRECTO]\n"
                            "\"PUERTO\"=\"3\"\n");
    QCOMPARE(text.value(key, u"Puerto"_s)->bytes, QByteArray("3\0", 2));
}

void TestRegistryReading::namesOfDifferentLettersAreNotAlike()
{
    const QByteArray file = withKey("\"Stra\xC3\x9F"
                                    "e\"=\"1\"\n");
    QCOMPARE(bytesOf(file, u"strasse"_s), QByteArray("(none)"));
    QCOMPARE(bytesOf(file, u"STRAßE"_s), QByteArray("1\0", 2));
}

void TestRegistryReading::laterLineWins()
{
    const QByteArray file =
        withKey("\"v\"=\"1\"\n") + "[HKEY_CURRENT_USER]\n[" + key.toLatin1() + "]\n\"V\"=\"2\"\n";
    QCOMPARE(bytesOf(file, u"v"_s), QByteArray("2\0", 2));
}

void TestRegistryReading::deletedValueIsGone()
{
    QCOMPARE(bytesOf(withKey("\"v\"=\"1\"\n\"V\"=-\n"), u"v"_s), QByteArray("(none)"));
    QCOMPARE(bytesOf(withKey("\"v\"=\"1\"\n\"v\"=-\n\"v\"=\"2\"\n"), u"v"_s), QByteArray("2\0", 2));
    QCOMPARE(bytesOf(withKey("@=\"1\"\n@=-\n"), QString()), QByteArray("(none)"));
}

void TestRegistryReading::deletedKeyIsGone()
{
    const RegistryText text(withKey("\"v\"=\"1\"\n[-" + key.toUtf8().toUpper() + "]\n"));
    QVERIFY(!text.value(key, u"v"_s).has_value());
}

void TestRegistryReading::deletedKeyTakesItsKeysAlong()
{
    const QByteArray before = withKey("\"v\"=\"1\"\n");
    const QByteArray deletion = "[-HKEY_CURRENT_USER\\Software\\QUORVEX]\n";
    QCOMPARE(bytesOf(before + deletion, u"v"_s), QByteArray("(none)"));
    QCOMPARE(bytesOf(before + deletion + "\"v\"=\"2\"\n", u"v"_s), QByteArray("(none)"));
    QCOMPARE(bytesOf(before + deletion + before, u"v"_s), QByteArray("1\0", 2));
}

void TestRegistryReading::keyOfTheSameBeginningIsAnother()
{
    QCOMPARE(bytesOf(withKey("\"v\"=\"1\"\n[-HKEY_CURRENT_USER\\Software\\Quor]\n"), u"v"_s),
             QByteArray("1\0", 2));
    QVERIFY(!RegistryText(withKey("\"v\"=\"1\"\n")).value(key.chopped(1), u"v"_s));
}

void TestRegistryReading::valuesUnderADamagedKeyLineBelongToNoKey()
{
    const QByteArray file =
        withKey("\"v\"=\"1\"\n[HKEY_CURRENT_USER\\Software\\Quorvex\n\"v\"=\"2\"\n");
    QCOMPARE(bytesOf(file, u"v"_s), QByteArray("1\0", 2));
}

void TestRegistryReading::valueNamesComeInTheOrderOfTheFile()
{
    const RegistryText text(withKey("\"/dev/ttyS1\"=\"COM2\"\n@=\"\"\n\"gone\"=dword:0\n"
                                    "\"/dev/ttyS0\"=\"COM1\"\n\"GONE\"=-\n\"/DEV/ttyS1\"=\"x\"\n"));
    QCOMPARE(text.valueNames(key.toUpper()),
             QStringList({u"/dev/ttyS1"_s, u""_s, u"/dev/ttyS0"_s}));
    QCOMPARE(text.valueNames(u"HKEY_CURRENT_USER"_s), QStringList());
}

void TestRegistryReading::namesOfADeletedKeyAreThoseSetAfterwards()
{
    const QByteArray before = withKey("\"v\"=\"1\"\n\"w\"=\"2\"\n");
    const QByteArray deletion = "[-HKEY_CURRENT_USER\\Software\\QUORVEX]\n";
    QCOMPARE(RegistryText(before + deletion).valueNames(key), QStringList());
    QCOMPARE(RegistryText(before + deletion + withKey("\"v\"=\"1\"\n")).valueNames(key),
             QStringList{u"v"_s});
}

void TestRegistryReading::deletionOfAnotherKeyLeavesTheNames()
{
    const RegistryText text(withKey("\"v\"=\"1\"\n[-HKEY_CURRENT_USER\\Software\\Quor]\n"));
    QCOMPARE(text.valueNames(key), QStringList{u"v"_s});
}

void TestRegistryReading::deletionOfAnotherValueLeavesTheNames()
{
    const RegistryText text(withKey("\"v\"=\"1\"\n\"w\"=-\n"));
    QCOMPARE(text.valueNames(key), QStringList{u"v"_s});
}

void TestRegistryReading::valueNamedLikeItsKeyOutlivesTheNextLineOfTheKey()
{
    const RegistryText text(
        "[HKEY_CURRENT_USER]\n\"HKEY_CURRENT_USER\"=\"1\"\n[HKEY_CURRENT_USER]\n");
    const QString name = u"HKEY_CURRENT_USER"_s;
    QVERIFY(text.value(name, name).has_value());
    QCOMPARE(text.value(name, name)->bytes, QByteArray("1\0", 2));
}

void TestRegistryReading::textsOfHexLinesAreAnsiInTheOldFormat()
{
    QByteArray file = withKey("\"v\"=hex(2):f1,41,00\n");
    file.replace("Windows Registry Editor Version 5.00", "REGEDIT4");
    QCOMPARE(bytesOf(file, u"v"_s), QByteArray("\xF1"
                                               "A\0",
                                               3));
}

void TestRegistryReading::anyBytesAtAllAreTaken()
{
    quint32 state = 1;
    for (int round = 0; round < 300; ++round) {
        QByteArray file = withKey("\"v\"=\"1\"\n\"w\"=hex:01,\\\n  02\n[-HKEY_CURRENT_USER\\x]\n");
        for (int change = 0; change < 8; ++change) {
            state = state * 1664525 + 1013904223;
            file[static_cast<qsizetype>(state >> 8) % file.size()] = static_cast<char>(state >> 4);
        }
        RegistryText text(file);
        QCOMPARE(text.toBytes(), file);
        text.setValue(key, u"v"_s, {RegistryValue::Text, QByteArray("7\0", 2)});
        QCOMPARE(RegistryText(text.toBytes()).value(key, u"v"_s)->bytes, QByteArray("7\0", 2));
    }
}

QTEST_GUILESS_MAIN(TestRegistryReading)
#include "TestRegistryReading.moc"
