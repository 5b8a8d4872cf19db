#include "ComPortCommands.h"

#include <QTest>

/// The bytes of RFC 2217: ff fa 2c begins a command, ff f0 ends it.
class TestComPortCommands : public QObject {
    Q_OBJECT
private slots:
    void dataHasEachFfTwice();
    void lineIsSetWithoutFlowControl();
    void lineIsSet_data();
    void lineIsSet();
    void ffInASpeedIsSentTwice();
    void dtrAndRtsAreSet();
    void buffersArePurged();
};

void TestComPortCommands::dataHasEachFfTwice()
{
    QCOMPARE(comport::escaped(QByteArray::fromHex("68ff00ffff16")).toHex(),
             QByteArray("68ffff00ffffffff16"));
}

void TestComPortCommands::lineIsSetWithoutFlowControl()
{
    QCOMPARE(comport::setLine({}).toHex(' '),
             QByteArray("ff fa 2c 01 00 00 25 80 ff f0 ff fa 2c 02 08 ff f0 ff fa 2c 03 01 ff f0 "
                        "ff fa 2c 04 01 ff f0 ff fa 2c 05 01 ff f0"));
}

void TestComPortCommands::lineIsSet_data()
{
    QTest::addColumn<QString>("settings");
    QTest::addColumn<QByteArray>("values");
    QTest::newRow("1200,E,7,2") << QStringLiteral("1200,E,7,2") << QByteArray("000004b0 07 03 02");
    QTest::newRow("115200,O,8,1") << QStringLiteral("115200,O,8,1")
                                  << QByteArray("0001c200 08 02 01");
    QTest::newRow("300,M,5,1.5") << QStringLiteral("300,M,5,1.5")
                                 << QByteArray("0000012c 05 04 03");
    QTest::newRow("9600,S,6,1") << QStringLiteral("9600,S,6,1") << QByteArray("00002580 06 05 01");
}

void TestComPortCommands::lineIsSet()
{
    QFETCH(QString, settings);
    const LineSettings line = parseLineSettings(settings).settings.value();
    QTEST(comport::speedValue(line).toHex() + ' ' + comport::dataSizeValue(line).toHex() + ' ' +
              comport::parityValue(line).toHex() + ' ' + comport::stopSizeValue(line).toHex(),
          "values");
}

void TestComPortCommands::ffInASpeedIsSentTwice()
{
    LineSettings line;
    line.speed = 0x1ff;
    QCOMPARE(comport::command(comport::SetSpeed, comport::speedValue(line)).toHex(),
             QByteArray("fffa2c01000001fffffff0"));
}

void TestComPortCommands::dtrAndRtsAreSet()
{
    QCOMPARE(comport::setDtrAndRts(true, false).toHex(),
             QByteArray("fffa2c0508fff0fffa2c050cfff0"));
    QCOMPARE(comport::setDtrAndRts(false, true).toHex(),
             QByteArray("fffa2c0509fff0fffa2c050bfff0"));
}

void TestComPortCommands::buffersArePurged()
{
    QCOMPARE(comport::purgeReceived().toHex(), QByteArray("fffa2c0c01fff0"));
    QCOMPARE(comport::purgeToSend().toHex(), QByteArray("fffa2c0c02fff0"));
}

QTEST_GUILESS_MAIN(TestComPortCommands)
#include "TestComPortCommands.moc"
