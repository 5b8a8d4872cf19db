#include "HctctlProcess.h"
#include "SimulatorProcess.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// `hctctl --modem`, with the modem on COM1, where it is without settings.
class TestModemNumber : public QObject {
    Q_OBJECT
private slots:
    void cleanup() { qunsetenv("HCT_COM1"); }

    void clockIsReachedThroughTheModem();
    void failureIsTold_data();
    void failureIsTold();
    void timeToReachTheClockIsBounded();
};

void TestModemNumber::clockIsReachedThroughTheModem()
{
    SimulatorProcess clock({u"--modem"_s, u"--dial-delay"_s, u"1"_s});
    qputenv("HCT_COM1", clock.device().toUtf8());
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"--modem"_s, u"600123456"_s, u"outputs"_s, u"--json"_s}), 0);
    QCOMPARE(hctctl.output(), uR"({"mode":"automatic","outputs":[false,false,false]})"_s + u'\n');
    QCOMPARE(hctctl.errors(), QString());
}

void TestModemNumber::failureIsTold_data()
{
    QTest::addColumn<QStringList>("modem");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("told");
    const QString failed =
        u"La llamada ha fallado: compruebe el número y la cobertura. Si la tarjeta "
        "SIM espera su PIN, introdúzcalo con hct, en Configuración, Operación de "
        "módem.\n"_s;
    QTest::newRow("engaged") << QStringList{u"--dial"_s, u"busy"_s} << 4
                             << u"El módem con el que se intenta contactar está comunicando: "
                                "compruebe el número o inténtelo más tarde.\n"_s;
    QTest::newRow("call refused, as without the PIN")
        << QStringList{u"--dial"_s, u"error"_s} << 4 << failed;
    QTest::newRow("no modem") << QStringList{u"--modem-silent"_s} << 4
                              << u"El módem no responde: revise las conexiones y, con hct, la "
                                 "configuración del módem.\n"_s;
}

void TestModemNumber::failureIsTold()
{
    QFETCH(QStringList, modem);
    QFETCH(int, status);
    QFETCH(QString, told);
    const SimulatorProcess clock(QStringList{u"--modem"_s, u"--dial-delay"_s, u"1"_s} + modem);
    qputenv("HCT_COM1", clock.device().toUtf8());
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"--modem"_s, u"600123456"_s, u"status"_s}), status);
    QCOMPARE(hctctl.output(), QString());
    QCOMPARE(hctctl.errors(), told);
}

void TestModemNumber::timeToReachTheClockIsBounded()
{
    const SimulatorProcess clock({u"--modem"_s, u"--dial"_s, u"silence"_s});
    qputenv("HCT_COM1", clock.device().toUtf8());
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"--modem"_s, u"600123456"_s, u"--wait"_s, u"1"_s, u"status"_s}), 4);
    QCOMPARE(hctctl.output(), QString());
    QCOMPARE(hctctl.errors(),
             u"Nadie contesta a la llamada: compruebe el número, la cobertura y que "
             "el reloj tiene corriente.\n"_s);
}

QTEST_GUILESS_MAIN(TestModemNumber)
#include "TestModemNumber.moc"
