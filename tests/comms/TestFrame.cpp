#include "FrameBytes.h"

#include <QTest>

class TestFrame : public QObject {
    Q_OBJECT
private slots:
    void requestWithoutDataIsEightBytes();
    void firstByteIsApartFromTheRest();
    void headerKeepsItsBytes();
    void lengthDecidesTheStartByte_data();
    void lengthDecidesTheStartByte();
    void checksumWrapsAtEightBits();
    void everyLengthByteUnderTheShortStart();
    void everyLengthByteUnderTheLongStart();
    void startBytesMustBeAlikeAndLengthsToo_data();
    void startBytesMustBeAlikeAndLengthsToo();
    void foreignStationIsNoHeader();
    void station255TakesAnyStation();
    void headerIsFoundBehindNoise_data();
    void headerIsFoundBehindNoise();
    void hunterTellsHowManyBytesAreToCome_data();
    void hunterTellsHowManyBytesAreToCome();
};

void TestFrame::requestWithoutDataIsEightBytes()
{
    QCOMPARE(whole(frame::encode(1, 5, {})), QByteArray::fromHex("6802026801050616"));
}

void TestFrame::firstByteIsApartFromTheRest()
{
    const frame::Encoded encoded = frame::encode(1, 1, QByteArray::fromHex("0201"));
    QCOMPARE(encoded.start, QByteArray::fromHex("68"));
    QCOMPARE(encoded.rest, QByteArray::fromHex("04046801010201"
                                               "0516"));
}

void TestFrame::lengthDecidesTheStartByte_data()
{
    QTest::addColumn<int>("dataBytes");
    QTest::addColumn<QByteArray>("firstFour");
    QTest::newRow("1 byte, L = 3") << 1 << QByteArray::fromHex("68030368");
    QTest::newRow("253 bytes, L = 255") << 253 << QByteArray::fromHex("68ffff68");
    QTest::newRow("254 bytes, L = 256") << 254 << QByteArray::fromHex("48000048");
    QTest::newRow("255 bytes, L = 257") << 255 << QByteArray::fromHex("48010148");
    QTest::newRow("509 bytes, L = 511") << 509 << QByteArray::fromHex("48ffff48");
}

void TestFrame::lengthDecidesTheStartByte()
{
    QFETCH(int, dataBytes);
    const QByteArray bytes = whole(frame::encode(1, 5, QByteArray(dataBytes, 'x')));
    QTEST(bytes.left(4), "firstFour");
    QCOMPARE(bytes.size(), dataBytes + 8);
}

void TestFrame::checksumWrapsAtEightBits()
{
    QCOMPARE(frame::checksum(1, 5, {}), quint8(6));
    QCOMPARE(frame::checksum(255, 255, {}), quint8(254));
    QCOMPARE(frame::checksum(0, 0, QByteArray(509, char(0xFF))), quint8(0x03));
    QCOMPARE(frame::checksum(1, 0x89, QByteArray::fromHex("0080ff")), quint8(0x09));
}

void TestFrame::everyLengthByteUnderTheShortStart()
{
    for (int length = 0; length <= 255; ++length) {
        frame::HeaderHunter hunter(1);
        const char byte = static_cast<char>(length);
        const auto header = hunt(hunter, QByteArray("\x68") + byte + byte + "\x68\x01");
        QCOMPARE(header.has_value(), length >= 2);
        if (header)
            QCOMPARE(header->length, length);
    }
}

void TestFrame::everyLengthByteUnderTheLongStart()
{
    for (int length = 0; length <= 255; ++length) {
        frame::HeaderHunter hunter(1);
        const char byte = static_cast<char>(length);
        const auto header = hunt(hunter, QByteArray("\x48") + byte + byte + "\x48\x01");
        QVERIFY(header);
        QCOMPARE(header->length, 256 + length);
        QCOMPARE(header->bytesToCome(), 257 + length);
    }
}

void TestFrame::startBytesMustBeAlikeAndLengthsToo_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("68 and 48") << QByteArray::fromHex("6804044801");
    QTest::newRow("48 and 68") << QByteArray::fromHex("4804046801");
    QTest::newRow("lengths differ") << QByteArray::fromHex("6804056801");
    QTest::newRow("other start") << QByteArray::fromHex("6904046901");
    QTest::newRow("start with bit 7") << QByteArray::fromHex("e80404e801");
    QTest::newRow("one byte short") << QByteArray::fromHex("68040468");
    QTest::newRow("all zero") << QByteArray(5, 0);
}

void TestFrame::startBytesMustBeAlikeAndLengthsToo()
{
    QFETCH(QByteArray, bytes);
    frame::HeaderHunter hunter(1);
    QVERIFY(!hunt(hunter, bytes));
}

void TestFrame::foreignStationIsNoHeader()
{
    frame::HeaderHunter hunter(1);
    QVERIFY(!hunt(hunter, QByteArray::fromHex("6804046802")));
    QVERIFY(hunt(hunter, QByteArray::fromHex("6804046801")));
}

void TestFrame::station255TakesAnyStation()
{
    frame::HeaderHunter hunter(255);
    const auto header = hunt(hunter, QByteArray::fromHex("680404687b"));
    QVERIFY(header);
    QCOMPARE(header->station, quint8(0x7B));
}

void TestFrame::headerIsFoundBehindNoise_data()
{
    QTest::addColumn<QByteArray>("noise");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("a lone start byte") << QByteArray::fromHex("68");
    QTest::newRow("start bytes") << QByteArray::fromHex("686868686868");
    QTest::newRow("half a header") << QByteArray::fromHex("680404");
    QTest::newRow("a header of another station") << QByteArray::fromHex("6805056809");
    QTest::newRow("zeros and ones") << QByteArray::fromHex("00ff00ff00");
    QTest::newRow("a modem's words") << QByteArray("\r\nCONNECT 9600\r\n");
}

void TestFrame::headerIsFoundBehindNoise()
{
    QFETCH(QByteArray, noise);
    frame::HeaderHunter hunter(1);
    const auto header = hunt(hunter, noise + QByteArray::fromHex("6804046801"));
    QVERIFY(header);
    QCOMPARE(header->length, 4);
    QCOMPARE(header->station, quint8(1));
}

void TestFrame::headerKeepsItsBytes()
{
    QCOMPARE((frame::Header{7, 255}.bytes()), QByteArray::fromHex("68ffff6807"));
    QCOMPARE((frame::Header{7, 256}.bytes()), QByteArray::fromHex("4800004807"));
}

void TestFrame::hunterTellsHowManyBytesAreToCome_data()
{
    QTest::addColumn<QByteArray>("received");
    QTest::addColumn<int>("toCome");
    const auto row = [](const char* name, const char* received, int toCome) {
        QTest::newRow(name) << QByteArray::fromHex(received) << toCome;
    };
    row("nothing", "", 8);
    row("noise", "0102030405", 8);
    row("a start", "68", 7);
    row("a start and a length", "6803", 6);
    row("the length twice", "680303", 5);
    row("two lengths", "680304", 8);
    row("a second start", "68030368", 4);
    row("the other start, which may begin a frame of its own", "68030348", 7);
    row("no second start", "68030303", 8);
}

void TestFrame::hunterTellsHowManyBytesAreToCome()
{
    QFETCH(QByteArray, received);
    frame::HeaderHunter hunter(1);
    hunt(hunter, received);
    QTEST(hunter.bytesToCome(), "toCome");
}

QTEST_GUILESS_MAIN(TestFrame)
#include "TestFrame.moc"
