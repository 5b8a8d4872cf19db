#include "HexFile.h"
#include "HexText.h"

#include <QtTest>

/// The rules of one line, and what each record does.
class TestHexRecords : public QObject {
    Q_OBJECT
private slots:
    void digitsAreThoseOfBothCases();
    void byteAtAPositionCountsFromOne();
    void byteOutsideTheLineIsZero();
    void lineIsValid_data();
    void lineIsValid();
    void typesAboveFiveAreInvalid();
    void lengthsFrom11To521AreMetByTheirCount();
    void changingACharacterIsRefusedUnlessOnlyTheCaseChanges_data();
    void changingACharacterIsRefusedUnlessOnlyTheCaseChanges();
    void dataRecordIsStored();
    void dataRecordOf255BytesIsStored();
    void segmentIsShiftedByEight();
    void linearBaseIsShiftedBySixteen();
    void basesAddUp();
    void newBaseReplacesTheOldOne();
    void addressesWrapIn32Bits();
    void startAddressesAndEndStoreNothing();
    void invalidTextStoresNothing();
    void countStopsAt32767();
};

void TestHexRecords::digitsAreThoseOfBothCases()
{
    for (int code = 0; code < 256; ++code) {
        const char character = static_cast<char>(code);
        const bool expected = QByteArray("0123456789ABCDEFabcdef").contains(character);
        QVERIFY2(HexFile::IsHexDigit(character) == expected, qPrintable(QString::number(code)));
    }
}

void TestHexRecords::byteAtAPositionCountsFromOne()
{
    QCOMPARE(HexFile::HexByteAt(":0a9Fff", 2), quint8{0x0A});
    QCOMPARE(HexFile::HexByteAt(":0a9Fff", 3), quint8{0xA9});
    QCOMPARE(HexFile::HexByteAt(":0a9Fff", 4), quint8{0x9F});
    QCOMPARE(HexFile::HexByteAt(":0a9Fff", 6), quint8{0xFF});
    QCOMPARE(HexFile::HexByteAt("12", 1), quint8{0x12});
}

void TestHexRecords::byteOutsideTheLineIsZero()
{
    QCOMPARE(HexFile::HexByteAt(":FF", 3), quint8{0});
    QCOMPARE(HexFile::HexByteAt(":FF", 0), quint8{0});
    QCOMPARE(HexFile::HexByteAt(":FF", -1), quint8{0});
    QCOMPARE(HexFile::HexByteAt("", 1), quint8{0});
    QCOMPARE(HexFile::HexByteAt(":FF", 1), quint8{0});
}

void TestHexRecords::lineIsValid_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("valid");
    const auto row = [](const char* name, const QByteArray& text, bool valid) {
        QTest::newRow(name) << text << valid;
    };
    // Rule 1: not empty, at least 11 characters, a colon.
    row("empty", "", false);
    row("only a colon", ":", false);
    row("10 characters", ":00000001F", false);
    row("11 characters", ":00000001FF", true);
    row("another first character", ";00000001FF", false);
    row("colon missing", "000000001FF", false);
    row("colon in second place", "0:0000001FF", false);
    // Rule 2: hexadecimal digits only.
    row("upper case", ":0400100001020304E2", true);
    row("lower case", ":0400100001020304e2", true);
    row("before 0", ":040010000102030/E2", false);
    row("after 9", ":040010000102030:E2", false);
    row("before A", ":040010000102030@E2", false);
    row("after F", ":040010000102030GE2", false);
    row("before a", ":040010000102030`E2", false);
    row("after f", ":040010000102030gE2", false);
    row("a blank", ":04001000010203 4E2", false);
    row("a tab behind", ":0400100001020304E2\t", false);
    row("a NUL", QByteArray(":0400100001020304E2").replace(12, 1, QByteArray(1, '\0')), false);
    row("above 127",
        ":040010000102030\xB4"
        "E2",
        false);
    row("count not hexadecimal", ":0X00000001FF", false);
    row("full-width digit in UTF-8",
        ":0400100001020304\xEF\xBC\xA5"
        "2",
        false);
    // Rule 3: the length is 2 x count + 11.
    row("one data byte too many", ":0400100001020304E200", false);
    row("one data byte too few", ":0500100001020304E1", false);
    row("half a byte missing", ":0400100001020304E", false);
    row("half a byte too many", ":0400100001020304E20", false);
    row("count FF on a short line", ":FF00000001", false);
    row("255 data bytes", ":FF000000" + QByteArray(510, '0') + "01", true);
    row("255 data bytes of FF", ":FF7E8100" + QByteArray(510, 'F') + "01", true);
    row("a bad digit among 255 data bytes of FF", ":FF7E8100" + QByteArray(509, 'F') + "G01",
        false);
    row("256 data bytes", ":00000000" + QByteArray(512, '0') + "00", false);
    // Rule 4: the sum.
    row("checksum one more", ":0400100001020304E3", false);
    row("checksum one less", ":0400100001020304E1", false);
    row("two bytes exchanged have the same sum", ":0400100002010304E2", true);
    // Rule 5: by type.
    row("data, one byte", ":0100000000FF", true);
    row("data, no byte", ":0000000000", false);
    row("end with an address", ":00001001EF", false);
    row("end with data", ":0100000100FE", false);
    row("segment", ":020000021000EC", true);
    row("segment at an address", ":020001021000EB", false);
    row("segment at an address below 256 lines", ":020100021000EB", false);
    row("segment of one byte", ":0100000210ED", false);
    row("linear", ":020000040001F9", true);
    row("linear at an address", ":020010040001E9", false);
    row("linear of three bytes", ":03000004000100F8", false);
    row("start segment", ":0400000300003800C1", true);
    row("start segment of two bytes", ":020000030000FB", false);
    row("start segment at an address", ":0400010300003800C0", false);
    row("start linear", ":04000005000000CD2A", true);
    row("start linear of no bytes", ":00000005FB", false);
    row("start linear at an address", ":04010005000000CD29", false);
    row("type 6", ":020000060000F8", false);
    row("type FF", ":020000FF0000FF", false);
}

void TestHexRecords::lineIsValid()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, valid);
    QCOMPARE(HexFile::IsValidHexLine(text), valid);
}

void TestHexRecords::typesAboveFiveAreInvalid()
{
    for (int type = 6; type < 256; ++type)
        for (int count = 0; count < 5; ++count)
            QVERIFY(!HexFile::IsValidHexLine(
                record(static_cast<quint8>(type), 0, QByteArray(count, '\0'))));
}

void TestHexRecords::lengthsFrom11To521AreMetByTheirCount()
{
    for (int length = 11; length <= 521; ++length) {
        // All digits are 0 but count and checksum; only an odd length can carry a count.
        const int count = (length - 11) / 2;
        QByteArray text(length, '0');
        text[0] = ':';
        text.replace(1, 2, QByteArray::number(count + 256, 16).last(2));
        text.replace(length - 2, 2, QByteArray::number(512 - count, 16).last(2));
        const bool valid = length % 2 == 1 && length > 11;
        QVERIFY2(HexFile::IsValidHexLine(text) == valid, text.constData());
    }
}

void TestHexRecords::changingACharacterIsRefusedUnlessOnlyTheCaseChanges_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("data") << QByteArray(":0400100001020304E2");
    QTest::newRow("data with letters") << QByteArray(":03FFFE00ABCDEF99");
    QTest::newRow("end") << QByteArray(":00000001FF");
    QTest::newRow("segment") << QByteArray(":020000021000EC");
    QTest::newRow("start segment") << QByteArray(":0400000300003800C1");
    QTest::newRow("linear") << QByteArray(":020000040001F9");
    QTest::newRow("start linear") << QByteArray(":04000005000000CD2A");
    QTest::newRow("255 bytes") << QByteArray(":FF000000" + QByteArray(510, '0') + "01");
}

void TestHexRecords::changingACharacterIsRefusedUnlessOnlyTheCaseChanges()
{
    QFETCH(QByteArray, text);
    QVERIFY(HexFile::IsValidHexLine(text));
    for (qsizetype position = 0; position < text.size(); ++position) {
        const char before = text.at(position);
        for (int code = 0; code < 256; ++code) {
            const char after = static_cast<char>(code);
            if (after == before)
                continue;
            text[position] = after;
            const bool caseOnly = QByteArray("abcdef").contains(after) &&
                                  QByteArray("ABCDEF").contains(before) &&
                                  (after & ~0x20) == before;
            QVERIFY2(HexFile::IsValidHexLine(text) == caseOnly, text.constData());
        }
        text[position] = before;
    }
}

namespace {

QByteArray bytesOf(const HexLine& line)
{
    return QByteArray(reinterpret_cast<const char*>(line.Data.data()),
                      static_cast<qsizetype>(line.Data.size()));
}

} // namespace

void TestHexRecords::dataRecordIsStored()
{
    HexFile file;
    HexLine line;
    QVERIFY(file.StoreHexLine(line, ":0412340001020AFFaa"));
    QCOMPARE(line.Address, 0x1234);
    QCOMPARE(line.Count, quint8{4});
    QCOMPARE(bytesOf(line), QByteArray::fromHex("01020aff"));
    QCOMPARE(file.LineCount(), qint16{1});
}

void TestHexRecords::dataRecordOf255BytesIsStored()
{
    HexFile file;
    HexLine line;
    QVERIFY(file.StoreHexLine(line, ":FFFFFF00" + QByteArray(508, '0') + "0201"));
    QCOMPARE(line.Address, 0xFFFF);
    QCOMPARE(line.Count, quint8{255});
    QCOMPARE(bytesOf(line), QByteArray(254, '\0') + '\x02');
}

void TestHexRecords::segmentIsShiftedByEight()
{
    HexFile file;
    HexLine line;
    QVERIFY(file.StoreHexLine(line, ":020000021000EC"));
    QCOMPARE(file.SegmentBase(), 0x100000);
    QCOMPARE(file.LineCount(), qint16{0});
    QVERIFY(file.StoreHexLine(line, ":0400100001020304E2"));
    QCOMPARE(line.Address, 0x100010);
}

void TestHexRecords::linearBaseIsShiftedBySixteen()
{
    HexFile file;
    HexLine line;
    QVERIFY(file.StoreHexLine(line, ":020000040001F9"));
    QCOMPARE(file.LinearBase(), 0x10000);
    QCOMPARE(file.LineCount(), qint16{0});
    QVERIFY(file.StoreHexLine(line, ":0400100001020304E2"));
    QCOMPARE(line.Address, 0x10010);
}

void TestHexRecords::basesAddUp()
{
    HexFile file;
    HexLine line;
    QVERIFY(file.StoreHexLine(line, ":020000040001F9"));
    QVERIFY(file.StoreHexLine(line, ":020000021000EC"));
    QVERIFY(file.StoreHexLine(line, ":0400100001020304E2"));
    QCOMPARE(line.Address, 0x110010);
}

void TestHexRecords::newBaseReplacesTheOldOne()
{
    HexFile file;
    HexLine line;
    QVERIFY(file.StoreHexLine(line, ":020000040001F9"));
    QVERIFY(file.StoreHexLine(line, ":020000040002F8"));
    QCOMPARE(file.LinearBase(), 0x20000);
    QVERIFY(file.StoreHexLine(line, ":020000021000EC"));
    QVERIFY(file.StoreHexLine(line, ":020000020000FC"));
    QCOMPARE(file.SegmentBase(), 0);
}

void TestHexRecords::addressesWrapIn32Bits()
{
    HexFile file;
    HexLine line;
    // 0x8000 x 65536 is negative in 32 bits.
    QVERIFY(file.StoreHexLine(line, ":0200000480007A"));
    QCOMPARE(file.LinearBase(), -0x7FFFFFFF - 1);
    QVERIFY(file.StoreHexLine(line, ":0400100001020304E2"));
    QCOMPARE(line.Address, -0x7FFFFFFF - 1 + 0x10);

    // 0xFFFF0000 + 0xFFFF00 + 0x10 leaves the 32 bits.
    QVERIFY(file.StoreHexLine(line, ":02000004FFFFFC"));
    QVERIFY(file.StoreHexLine(line, ":02000002FFFFFE"));
    QVERIFY(file.StoreHexLine(line, ":0400100001020304E2"));
    QCOMPARE(line.Address, 0xFEFF10);
}

void TestHexRecords::startAddressesAndEndStoreNothing()
{
    HexFile file;
    HexLine line{77, 1, {}};
    for (const char* text : {":0400000300003800C1", ":04000005000000CD2A", ":00000001FF"})
        QVERIFY(file.StoreHexLine(line, text));
    QCOMPARE(file.LineCount(), qint16{0});
    QCOMPARE(file.LinearBase(), 0);
    QCOMPARE(file.SegmentBase(), 0);
    QCOMPARE(line.Address, 77);
}

void TestHexRecords::invalidTextStoresNothing()
{
    HexFile file;
    HexLine line{77, 1, {}};
    QVERIFY(file.StoreHexLine(line, ":0400100001020304E3"));
    QCOMPARE(file.LineCount(), qint16{0});
    QCOMPARE(line.Address, 77);
}

void TestHexRecords::countStopsAt32767()
{
    HexFile file;
    HexLine line;
    for (int count = 0; count < 32767; ++count)
        QVERIFY(file.StoreHexLine(line, ":0100000000FF"));
    QVERIFY(!file.StoreHexLine(line, ":0100000000FF"));
    QCOMPARE(file.LineCount(), qint16{32767});
    QVERIFY(file.StoreHexLine(line, ":020000040001F9"));
}

QTEST_GUILESS_MAIN(TestHexRecords)
#include "TestHexRecords.moc"
