#include "StatusBlock.h"

#include <QTest>

class TestStatusBlock : public QObject {
    Q_OBJECT

private slots:
    void accessorsReadTheirBytes();
    void bytesThatAreNotThereReadAsZero_data();
    void bytesThatAreNotThereReadAsZero();
    void hct7200IsModel30OrNoModel();
    void remoteControlIsFlag2();
};

void TestStatusBlock::accessorsReadTheirBytes()
{
    // Byte n holds n, those from 218 on their own numbers.
    QByteArray bytes;
    for (int n = 0; n < 220; ++n)
        bytes += static_cast<char>(n);
    const StatusBlock block(bytes);
    QVERIFY(block.isFull());
    QCOMPARE(block.outputs(), quint8(2));
    QCOMPARE(block.deviceType(), quint8(3));
    QCOMPARE(block.refusal(), quint8(4));
    QCOMPARE(block.seconds(), quint8(5));
    QCOMPARE(block.minutes(), quint8(6));
    QCOMPARE(block.hours(), quint8(7));
    QCOMPARE(block.weekday(), quint8(8));
    QCOMPARE(block.day(), quint8(9));
    QCOMPARE(block.month(), quint8(10));
    QCOMPARE(block.year(), quint8(11));
    QCOMPARE(block.blockDuration(0), quint8(14));
    QCOMPARE(block.blockMode(2), quint8(19));
    QCOMPARE(block.alarmByte1(0, 0), quint8(20));
    QCOMPARE(block.alarmByte2(0, 31), quint8(83));
    QCOMPARE(block.alarmByte1(2, 31), quint8(214));
    QCOMPARE(block.alarmByte2(2, 31), quint8(215));
    QCOMPARE(block.inputs(), quint8(218));
    QCOMPARE(block.flags(), quint8(219));
}

void TestStatusBlock::bytesThatAreNotThereReadAsZero_data()
{
    QTest::addColumn<int>("length");
    QTest::newRow("no block") << 0;
    QTest::newRow("5 bytes, of another family") << 5;
    QTest::newRow("one byte short") << 219;
}

void TestStatusBlock::bytesThatAreNotThereReadAsZero()
{
    QFETCH(int, length);
    const StatusBlock block(QByteArray(length, '\xFF'));
    QVERIFY(!block.isFull());
    QCOMPARE(block.flags(), quint8(0));
    QCOMPARE(block.byte(length), quint8(0));
    QCOMPARE(block.byte(-1), quint8(0));
    QCOMPARE(block.deviceType(), length > 3 ? quint8(255) : quint8(0));
}

void TestStatusBlock::hct7200IsModel30OrNoModel()
{
    QCOMPARE(StatusBlock(QByteArray(12, '\x1F')).model(), ClockModel::Hct7200);
    QCOMPARE(StatusBlock(QByteArray(12, '\0') + '\x1E').model(), ClockModel::Hct7200);
    QCOMPARE(StatusBlock(QByteArray(12, '\0') + '\x1F').model(), ClockModel::Hct7300);
    QCOMPARE(StatusBlock(QByteArray(220, '\0')).model(), ClockModel::Hct7300);
}

void TestStatusBlock::remoteControlIsFlag2()
{
    QVERIFY(StatusBlock(QByteArray(219, '\0') + '\x04').isRemoteControlled());
    QVERIFY(!StatusBlock(QByteArray(219, '\0') + '\xFB').isRemoteControlled());
}

QTEST_GUILESS_MAIN(TestStatusBlock)
#include "TestStatusBlock.moc"
