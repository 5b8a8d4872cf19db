#include "FirmwareImage.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace simulator;

namespace {

QByteArray bytes(const char* hex) { return QByteArray::fromHex(hex); }

const QByteArray endRecord = ":00000001FF\r\n"_ba;

} // namespace

class TestFirmwareImage : public QObject {
    Q_OBJECT

private slots:
    void lineIsStoredAtItsAddress();
    void faultyLineIsNotStored_data();
    void faultyLineIsNotStored();
    void longestLineIsStored();
    void lineAcrossA64KBorderIsSplitInTheFile();
    void repeatedLastLineKeepsTheImage();
    void lineAfterTheLastBeginsANewImage();
    void gapsAreFilledInTheBinaryImage();
    void addressesWrapAtTheEndOfMemory();
    void imageIsBounded();
};

void TestFirmwareImage::lineIsStoredAtItsAddress()
{
    FirmwareImage image;
    QCOMPARE(image.take(bytes("dd04100001000001020304 1b00")), FirmwareImage::Verdict::Stored);
    QCOMPARE(image.toIntelHex(),
             QByteArray(":020000040001F9\r\n:0400100001020304E2\r\n") + endRecord);
    QCOMPARE(image.toBinary(), bytes("01020304"));
    QCOMPARE(image.lineCount(), 1);
    QCOMPARE(image.byteCount(), 4);
    QVERIFY(!image.isComplete());
}

void TestFirmwareImage::faultyLineIsNotStored_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("verdict");
    const int length = int(FirmwareImage::Verdict::WrongLength);
    const int value = int(FirmwareImage::Verdict::WrongValue);
    QTest::newRow("selector alone") << bytes("dd") << length;
    QTest::newRow("count above the data") << bytes("dd051000010000010203041b00") << length;
    QTest::newRow("count below the data") << bytes("dd031000010000010203041b00") << length;
    QTest::newRow("no data") << bytes("dd001000010000 1100") << value;
    QTest::newRow("wrong sum") << bytes("dd041000010000010203041a00") << value;
    QTest::newRow("flag 2") << bytes("dd041000010002010203041b00") << value;
    QTest::newRow("no zero at the end") << bytes("dd041000010000010203041b01") << value;
}

void TestFirmwareImage::faultyLineIsNotStored()
{
    QFETCH(QByteArray, line);
    FirmwareImage image;
    QTEST(int(image.take(line)), "verdict");
    QCOMPARE(image.byteCount(), 0);
    QCOMPARE(image.toIntelHex(), endRecord);
    QCOMPARE(image.toBinary(), QByteArray());
}

void TestFirmwareImage::longestLineIsStored()
{
    FirmwareImage image;
    QCOMPARE(image.take(bytes("ddff0000000001") + QByteArray(255, '\1') + bytes("ff00")),
             FirmwareImage::Verdict::Stored);
    QCOMPARE(image.toBinary(), QByteArray(255, '\1'));
    QVERIFY(image.isComplete());
}

void TestFirmwareImage::lineAcrossA64KBorderIsSplitInTheFile()
{
    FirmwareImage image;
    image.take(bytes("dd04feff000001aabbccdd0b00"));
    QCOMPARE(image.toIntelHex(),
             QByteArray(":02FFFE00AABB9C\r\n:020000040001F9\r\n:02000000CCDD55\r\n") + endRecord);
}

void TestFirmwareImage::repeatedLastLineKeepsTheImage()
{
    FirmwareImage image;
    image.take(bytes("dd0100000000000a0a00"));
    image.take(bytes("dd0101000000010b0c00"));
    image.take(bytes("dd0101000000010b0c00"));
    QCOMPARE(image.toBinary(), bytes("0a0b"));
    QVERIFY(image.isComplete());
}

void TestFirmwareImage::lineAfterTheLastBeginsANewImage()
{
    FirmwareImage image;
    image.take(bytes("dd0100000000010a0a00"));
    image.take(bytes("dd0101000000000b0c00"));
    QCOMPARE(image.toBinary(), bytes("0b"));
    QCOMPARE(image.lineCount(), 1);
    QVERIFY(!image.isComplete());
}

void TestFirmwareImage::gapsAreFilledInTheBinaryImage()
{
    FirmwareImage image;
    image.take(bytes("dd0102000000000a0c00"));
    image.take(bytes("dd0105000000000b1000"));
    QCOMPARE(image.toBinary(), bytes("0affff0b"));
}

void TestFirmwareImage::addressesWrapAtTheEndOfMemory()
{
    FirmwareImage image;
    QCOMPARE(image.take(bytes("dd02ffffffff000102ff00")), FirmwareImage::Verdict::Stored);
    QCOMPARE(image.byteCount(), 2);
    QCOMPARE(image.toBinary(), QByteArray());
}

void TestFirmwareImage::imageIsBounded()
{
    FirmwareImage image;
    QByteArray line = bytes("dd0100000000000000");
    int stored = 0;
    for (unsigned page = 0; page < 33 * 1024; ++page) {
        const unsigned address = page * 1024;
        for (int at = 0; at < 4; ++at)
            line[2 + at] = char(address >> (8 * at));
        line[8] = char((address & 0xFF) + (address >> 8) + (address >> 16) + (address >> 24));
        line.resize(9);
        line.append('\0');
        stored += image.take(line) == FirmwareImage::Verdict::Stored ? 1 : 0;
    }
    QCOMPARE(stored, 32 * 1024);
}

QTEST_GUILESS_MAIN(TestFirmwareImage)
#include "TestFirmwareImage.moc"
