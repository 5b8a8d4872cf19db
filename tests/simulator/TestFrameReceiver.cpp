#include "FrameReceiver.h"

#include <QTest>

using namespace simulator;

namespace {

QByteArray bytes(const char* hex) { return QByteArray::fromHex(hex); }

/// Message code and data of each frame, in hexadecimal.
QByteArrayList texts(const QList<WireFrame>& frames)
{
    QByteArrayList result;
    for (const WireFrame& frame : frames)
        result += QByteArray(1, char(frame.code)).toHex() + ' ' + frame.data.toHex();
    return result;
}

} // namespace

class TestFrameReceiver : public QObject {
    Q_OBJECT

private slots:
    void frameIsEncodedByteForByte_data();
    void frameIsEncodedByteForByte();
    void longFrameStartsWith48();
    void dataAbove509BytesAreCut();
    void requestIsFoundInAnyChunks();
    void requestIsFoundBehindNoise_data();
    void requestIsFoundBehindNoise();
    void damagedFrameIsDropped_data();
    void damagedFrameIsDropped();
    void requestForAnotherStationIsPassedOver();
    void requestForStation255IsForEveryone();
    void longestRequestIsTaken();
    void silenceFreesARequestHeldUpByAFalseHeader();
    void noiseWithoutEndHoldsNoMoreThanAFrame();
};

void TestFrameReceiver::frameIsEncodedByteForByte_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QByteArray>("wire");
    QTest::newRow("no data") << 5 << QByteArray() << bytes("6802026801050616");
    QTest::newRow("accepted") << 8 << bytes("0200") << bytes("68040468010802000b16");
    QTest::newRow("sum wraps") << 8 << bytes("caff") << bytes("680404680108caffd216");
}

void TestFrameReceiver::frameIsEncodedByteForByte()
{
    QFETCH(int, code);
    QFETCH(QByteArray, data);
    QTEST(encoded({1, quint8(code), data}), "wire");
}

void TestFrameReceiver::longFrameStartsWith48()
{
    QCOMPARE(encoded({1, 8, QByteArray(253, '\0')}).left(6), bytes("68ffff680108"));
    QCOMPARE(encoded({1, 8, QByteArray(254, '\0')}).left(6), bytes("480000480108"));
}

void TestFrameReceiver::dataAbove509BytesAreCut()
{
    const QByteArray wire = encoded({1, 8, QByteArray(600, '\0')});
    QCOMPARE(wire.size(), 517);
    QCOMPARE(wire.left(4), bytes("48ffff48"));
}

void TestFrameReceiver::requestIsFoundInAnyChunks()
{
    FrameReceiver receiver(1);
    QByteArrayList found;
    const QByteArray line = bytes("68040468010102010516 680303680199009a16");
    for (const char byte : line)
        found += texts(receiver.take(QByteArray(1, byte)));
    QCOMPARE(found, (QByteArrayList{"01 0201", "99 00"}));
    QVERIFY(!receiver.hasBegun());
}

void TestFrameReceiver::requestIsFoundBehindNoise_data()
{
    QTest::addColumn<QByteArray>("noise");
    QTest::newRow("any bytes") << bytes("00ff5516");
    QTest::newRow("a lone start byte") << bytes("68");
    QTest::newRow("two start bytes") << bytes("6868");
    QTest::newRow("unequal lengths") << bytes("68040568");
    QTest::newRow("unequal starts") << bytes("68040448");
    QTest::newRow("length below two") << bytes("68010168");
    QTest::newRow("a false header that the request fills") << bytes("68030368");
    QTest::newRow("a frame without its end") << bytes("680303680189008a");
}

void TestFrameReceiver::requestIsFoundBehindNoise()
{
    QFETCH(QByteArray, noise);
    FrameReceiver receiver(1);
    QByteArrayList found = texts(receiver.take(noise + bytes("680303680189008a16")));
    found += texts(receiver.takeSilence());
    QCOMPARE(found, QByteArrayList{"89 00"});
}

void TestFrameReceiver::damagedFrameIsDropped_data()
{
    QTest::addColumn<QByteArray>("wire");
    QTest::newRow("wrong checksum") << bytes("680303680189008b16");
    QTest::newRow("wrong end byte") << bytes("680303680189008a17");
}

void TestFrameReceiver::damagedFrameIsDropped()
{
    QFETCH(QByteArray, wire);
    FrameReceiver receiver(1);
    QVERIFY(receiver.take(wire).isEmpty());
    QCOMPARE(receiver.damagedFrames(), 1);
}

void TestFrameReceiver::requestForAnotherStationIsPassedOver()
{
    FrameReceiver receiver(1);
    QVERIFY(receiver.take(bytes("680303680289008b16")).isEmpty());
    QCOMPARE(receiver.foreignFrames(), 1);
}

void TestFrameReceiver::requestForStation255IsForEveryone()
{
    FrameReceiver receiver(1);
    QCOMPARE(texts(receiver.take(bytes("68030368ff89008816"))), QByteArrayList{"89 00"});
}

void TestFrameReceiver::longestRequestIsTaken()
{
    FrameReceiver receiver(1);
    const QByteArray zeros(509, '\0');
    const auto frames = receiver.take(bytes("48ffff480169") + zeros + bytes("6a16"));
    QCOMPARE(frames.size(), 1);
    QCOMPARE(frames[0].data, zeros);
}

void TestFrameReceiver::silenceFreesARequestHeldUpByAFalseHeader()
{
    FrameReceiver receiver(1);
    QVERIFY(receiver.take(bytes("68ffff68 680303680189008a16")).isEmpty());
    QVERIFY(receiver.hasBegun());
    QCOMPARE(texts(receiver.takeSilence()), QByteArrayList{"89 00"});
    QVERIFY(!receiver.hasBegun());
}

void TestFrameReceiver::noiseWithoutEndHoldsNoMoreThanAFrame()
{
    FrameReceiver receiver(1);
    receiver.take(QByteArray(100'000, '\x48'));
    QCOMPARE(texts(receiver.take(QByteArray(600, '\0') + bytes("680303680189008a16"))),
             QByteArrayList{"89 00"});
}

QTEST_GUILESS_MAIN(TestFrameReceiver)
#include "TestFrameReceiver.moc"
