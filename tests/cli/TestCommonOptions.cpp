#include "CommSettings.h"
#include "CommonOptions.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// What the options make of the settings.
class TestCommonOptions : public QObject {
    Q_OBJECT
private slots:
    void lineHasItsParity_data();
    void lineHasItsParity();
    void numbersTakeThePlaceOfTheStoredOnes();
    void whatIsNotGivenStaysAsStored();
    void portIsANumberOrADevice_data();
    void portIsANumberOrADevice();
};

void TestCommonOptions::lineHasItsParity_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("parity");
    QTest::newRow("none") << u"9600,N,8,1"_s << u"Ninguna"_s;
    QTest::newRow("even") << u"9600,E,8,1"_s << u"Par"_s;
    QTest::newRow("odd") << u"9600,O,8,1"_s << u"Impar"_s;
    QTest::newRow("mark") << u"9600,M,8,1"_s << u"Marca"_s;
    QTest::newRow("space") << u"9600,S,8,1"_s << u"Espacio"_s;
    QTest::newRow("small letter") << u"9600,e"_s << u"Par"_s;
}

void TestCommonOptions::lineHasItsParity()
{
    QFETCH(QString, line);
    CommonOptions options;
    options.line = line;
    CommSettings settings;
    options.applyTo(settings);
    QTEST(settings.directParity, "parity");
    QCOMPARE(settings.directBits, u"8"_s);
    QCOMPARE(settings.directStopBits, u"1"_s);
}

void TestCommonOptions::numbersTakeThePlaceOfTheStoredOnes()
{
    CommonOptions options;
    options.port = u"com3"_s;
    options.line = u"115200"_s;
    options.station = 7;
    options.identification = 35;
    CommSettings settings;
    options.applyTo(settings);
    QCOMPARE(settings.directPort, u"2"_s);
    QCOMPARE(settings.directSpeed, u"115200"_s);
    QCOMPARE(settings.modemSpeed, u"115200"_s);
    QCOMPARE(settings.station, u"7"_s);
    QCOMPARE(settings.identification, u"35"_s);
}

void TestCommonOptions::whatIsNotGivenStaysAsStored()
{
    CommSettings settings;
    settings.directPort = u"4"_s;
    settings.directParity = u"Par"_s;
    settings.station = u"9"_s;
    settings.identification = u"10"_s;
    CommonOptions().applyTo(settings);
    QCOMPARE(settings.directPort, u"4"_s);
    QCOMPARE(settings.directParity, u"Par"_s);
    QCOMPARE(settings.station, u"9"_s);
    QCOMPARE(settings.identification, u"10"_s);
}

void TestCommonOptions::portIsANumberOrADevice_data()
{
    QTest::addColumn<QString>("port");
    QTest::addColumn<QString>("device");
    QTest::newRow("first") << u"COM1"_s << QString();
    QTest::newRow("last") << u"com16"_s << QString();
    QTest::newRow("below") << u"COM0"_s << u"COM0"_s;
    QTest::newRow("above") << u"COM17"_s << u"COM17"_s;
    QTest::newRow("no number") << u"COMa"_s << u"COMa"_s;
    QTest::newRow("a number behind another word") << u"tty1"_s << u"tty1"_s;
    QTest::newRow("device") << u"/dev/ttyUSB0"_s << u"/dev/ttyUSB0"_s;
}

void TestCommonOptions::portIsANumberOrADevice()
{
    QFETCH(QString, port);
    CommonOptions options;
    options.port = port;
    QTEST(options.devicePath(), "device");
}

QTEST_GUILESS_MAIN(TestCommonOptions)
#include "TestCommonOptions.moc"
