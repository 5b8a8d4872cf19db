#include "LineSettings.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestLineSettings : public QObject {
    Q_OBJECT

private slots:
    void goodTextGivesItsParameters_data();
    void goodTextGivesItsParameters();
    void speedsWithinThreePercentAreNear_data();
    void speedsWithinThreePercentAreNear();
    void badTextGivesAReason_data();
    void badTextGivesAReason();
};

void TestLineSettings::goodTextGivesItsParameters_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("speed");
    QTest::addColumn<char>("parity");
    QTest::addColumn<int>("dataBits");
    QTest::addColumn<int>("stop");
    QTest::newRow("defaults") << "9600,N,8,1" << 9600 << 'N' << 8 << 0;
    QTest::newRow("1.5 stop bits") << "9600,N,8,1.5" << 9600 << 'N' << 8 << 1;
    QTest::newRow("even, 7 bits, 2 stop bits") << "110,E,7,2" << 110 << 'E' << 7 << 2;
    QTest::newRow("odd, 4 bits") << "256000,O,4,1" << 256000 << 'O' << 4 << 0;
    QTest::newRow("mark") << "9601,M,5,1" << 9601 << 'M' << 5 << 0;
    QTest::newRow("space, small letter") << "9600,s,6,1" << 9600 << 'S' << 6 << 0;
}

void TestLineSettings::goodTextGivesItsParameters()
{
    QFETCH(QString, text);
    const auto [settings, reason] = parseLineSettings(text);
    QVERIFY2(settings, qPrintable(reason));
    QTEST(settings->speed, "speed");
    QTEST(settings->parity, "parity");
    QTEST(settings->dataBits, "dataBits");
    QTEST(static_cast<int>(settings->stop), "stop");
    QCOMPARE(reason, QString());
}

void TestLineSettings::speedsWithinThreePercentAreNear_data()
{
    QTest::addColumn<qint64>("actual");
    QTest::addColumn<bool>("isNear");
    QTest::newRow("exact") << qint64(9600) << true;
    QTest::newRow("3 % above") << qint64(9888) << true;
    QTest::newRow("more than 3 % above") << qint64(9889) << false;
    QTest::newRow("3 % below") << qint64(9312) << true;
    QTest::newRow("more than 3 % below") << qint64(9311) << false;
    QTest::newRow("none") << qint64(0) << false;
    QTest::newRow("the most that a driver tells") << qint64(4294967295) << false;
}

void TestLineSettings::speedsWithinThreePercentAreNear()
{
    QFETCH(qint64, actual);
    QTEST(isSpeedNear(actual, 9600), "isNear");
}

void TestLineSettings::badTextGivesAReason_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("reason");
    QTest::newRow("empty") << "" << u"Configuración del puerto no válida: \"\"."_s;
    QTest::newRow("a part missing")
        << "9600,N,8" << u"Configuración del puerto no válida: \"9600,N,8\"."_s;
    QTest::newRow("a part too many")
        << "9600,N,8,1,1" << u"Configuración del puerto no válida: \"9600,N,8,1,1\"."_s;
    QTest::newRow("no speed") << ",N,8,1" << u"Velocidad no válida: \"\"."_s;
    QTest::newRow("speed 0") << "0,N,8,1" << u"Velocidad no válida: \"0\"."_s;
    QTest::newRow("speed below 0") << "-9600,N,8,1" << u"Velocidad no válida: \"-9600\"."_s;
    QTest::newRow("speed in words") << "fast,N,8,1" << u"Velocidad no válida: \"fast\"."_s;
    QTest::newRow("speed beyond 32 bits")
        << "99999999999,N,8,1" << u"Velocidad no válida: \"99999999999\"."_s;
    QTest::newRow("no parity") << "9600,,8,1" << u"Paridad no válida: \"\"."_s;
    QTest::newRow("another letter") << "9600,X,8,1" << u"Paridad no válida: \"X\"."_s;
    QTest::newRow("two letters") << "9600,NE,8,1" << u"Paridad no válida: \"NE\"."_s;
    QTest::newRow("3 data bits") << "9600,N,3,1"
                                 << u"Cantidad de bits de datos no válida: \"3\"."_s;
    QTest::newRow("9 data bits") << "9600,N,9,1"
                                 << u"Cantidad de bits de datos no válida: \"9\"."_s;
    QTest::newRow("no data bits") << "9600,N,,1" << u"Cantidad de bits de datos no válida: \"\"."_s;
    QTest::newRow("3 stop bits") << "9600,N,8,3"
                                 << u"Cantidad de bits de parada no válida: \"3\"."_s;
    QTest::newRow("no stop bits") << "9600,N,8,"
                                  << u"Cantidad de bits de parada no válida: \"\"."_s;
}

void TestLineSettings::badTextGivesAReason()
{
    QFETCH(QString, text);
    const auto [settings, reason] = parseLineSettings(text);
    QVERIFY(!settings);
    QTEST(reason, "reason");
}

QTEST_GUILESS_MAIN(TestLineSettings)
#include "TestLineSettings.moc"
