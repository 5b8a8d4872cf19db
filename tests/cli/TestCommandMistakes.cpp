#include "HctctlProcess.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// What hctctl says about its usage. No port is opened.
class TestCommandMistakes : public QObject {
    Q_OBJECT
private slots:
    void versionIsTold();
    void helpIsSpanish();
    void helpOfACommandIsItsOwn();
    void mistakeIsTold_data();
    void mistakeIsTold();
};

void TestCommandMistakes::versionIsTold()
{
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"--version"_s}), 0);
    QCOMPARE(hctctl.output(), u"hctctl 2.0.1\n"_s);
    QCOMPARE(hctctl.errors(), QString());
}

void TestCommandMistakes::helpIsSpanish()
{
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"--help"_s}), 0);
    const QString help = hctctl.output();
    QVERIFY(help.startsWith(u"Maneja los relojes programadores de señales HCT-7200 y HCT-7300.\n"
                            "Uso: hctctl [opciones] orden\n"
                            "\n"
                            "Opciones:\n"
                            "  -h,--help                       Muestra esta ayuda\n"_s));
    QVERIFY(help.contains(u"\nÓrdenes:\n  status                          Muestra fecha, hora,"_s));
    QVERIFY(help.contains(
        u"\nLa ayuda de cada orden se ve con ella, como en: hctctl clock set --help\n"_s));
    for (const char* english : {"Usage", "Options", "Subcommands", "TEXT", "Excludes", "Print"})
        QVERIFY2(!help.contains(QString::fromLatin1(english)), english);
}

void TestCommandMistakes::helpOfACommandIsItsOwn()
{
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"clock"_s, u"set"_s, u"--help"_s}), 0);
    const QString help = hctctl.output();
    QVERIFY(help.startsWith(u"Pone el reloj en hora\nUso: hctctl clock set [opciones]\n"_s));
    QVERIFY(help.contains(u"  --if-off-by SECONDS "_s));
    QVERIFY(
        help.contains(u"\nLas opciones comunes a todas las órdenes se ven con: hctctl --help\n"_s));
}

void TestCommandMistakes::mistakeIsTold_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("told");
    QTest::addColumn<QString>("help");
    QTest::newRow("nothing") << u""_s << u"Falta la orden."_s << u"hctctl --help"_s;
    QTest::newRow("group without a command")
        << u"clock"_s << u"Falta la orden."_s << u"hctctl clock --help"_s;
    QTest::newRow("unknown command")
        << u"start"_s << u"No se entiende \"start\"."_s << u"hctctl --help"_s;
    QTest::newRow("unknown option")
        << u"status --fast"_s << u"No se entiende \"--fast\"."_s << u"hctctl status --help"_s;
    QTest::newRow("word too many")
        << u"status now"_s << u"No se entiende \"now\"."_s << u"hctctl status --help"_s;
    QTest::newRow("option without a value")
        << u"status --wait"_s << u"Falta el valor de --wait."_s << u"hctctl --help"_s;
    QTest::newRow("option twice") << u"status --wait 1 --wait 2"_s
                                  << u"--wait lleva un solo valor."_s << u"hctctl --help"_s;
    QTest::newRow("value of an option that takes none")
        << u"--json=x ports"_s << u"--json no lleva ningún valor."_s << u"hctctl --help"_s;
    QTest::newRow("number too small")
        << u"status --wait 0"_s << u"--wait: \"0\" no es un número de 1 a 3600."_s
        << u"hctctl --help"_s;
    QTest::newRow("no number") << u"status --wait x"_s
                               << u"--wait: \"x\" no es un número de 1 a 3600."_s
                               << u"hctctl --help"_s;
    QTest::newRow("station too high")
        << u"status --station 256"_s << u"--station: \"256\" no es un número de 0 a 255."_s
        << u"hctctl --help"_s;
#ifdef Q_OS_WIN
    QTest::newRow("COM number too high")
        << u"status --port COM17"_s << u"--port: \"COM17\" no es un puerto: indique COM1 a COM16."_s
        << u"hctctl --help"_s;
    QTest::newRow("device of Linux")
        << u"status --port /dev/ttyUSB0"_s
        << u"--port: \"/dev/ttyUSB0\" no es un puerto: indique COM1 a COM16."_s
        << u"hctctl --help"_s;
#else
    QTest::newRow("COM number too high")
        << u"status --port COM17"_s
        << u"--port: \"COM17\" no es un puerto: indique COM1 a COM16, o un dispositivo como "
           "/dev/ttyUSB0."_s
        << u"hctctl --help"_s;
#endif
    QTest::newRow("address without a port")
        << u"status --port tcp://reloj"_s
        << u"--port: \"tcp://reloj\" no es una dirección de red: escriba tcp://EQUIPO:PUERTO o "
           "rfc2217://EQUIPO:PUERTO."_s
        << u"hctctl --help"_s;
    QTest::newRow("number to be named")
        << u"ports set COM17 tcp://reloj:1"_s
        << u"PORT: \"COM17\" no es un número de COM1 a COM16."_s << u"hctctl ports set --help"_s;
    QTest::newRow("name of a number")
        << u"ports set COM1 reloj:1"_s
        << u"DEVICE: \"reloj:1\" no es una dirección de red: escriba tcp://EQUIPO:PUERTO o "
           "rfc2217://EQUIPO:PUERTO."_s
        << u"hctctl ports set --help"_s;
    QTest::newRow("no name") << u"ports set COM1"_s << u"Falta DEVICE."_s
                             << u"hctctl ports set --help"_s;
    QTest::newRow("speed") << u"status --line fast"_s << u"--line: Velocidad no válida: \"fast\"."_s
                           << u"hctctl --help"_s;
    QTest::newRow("parity") << u"status --line 9600,X"_s << u"--line: Paridad no válida: \"X\"."_s
                            << u"hctctl --help"_s;
    QTest::newRow("port and modem")
        << u"status --port COM1 --modem 600"_s << u"--port y --modem no pueden ir juntas."_s
        << u"hctctl --help"_s;
    QTest::newRow("telephone number")
        << u"status --modem home"_s << u"--modem: \"home\" no es un número de teléfono."_s
        << u"hctctl --help"_s;
    QTest::newRow("no date") << u"clock set --at 2026-02-30T00:00:00"_s
                             << u"--at: \"2026-02-30T00:00:00\" no es una fecha con hora como "
                                "2026-11-21T16:06:36."_s
                             << u"hctctl clock set --help"_s;
    QTest::newRow("year before those of the clock")
        << u"clock set --at 1989-12-31T23:59:59"_s
        << u"--at: el reloj solo admite los años 1990 a 2089."_s << u"hctctl clock set --help"_s;
    QTest::newRow("year that the clock does not have")
        << u"clock set --at 2090-01-01T00:00:00"_s
        << u"--at: el reloj solo admite los años 1990 a 2089."_s << u"hctctl clock set --help"_s;
    QTest::newRow("output that does not exist")
        << u"outputs 4=on"_s << u"SWITCH: \"4=on\" no es auto, ni una salida como 1=on o 2=off."_s
        << u"hctctl outputs --help"_s;
    QTest::newRow("output twice") << u"outputs 1=on 1=off"_s
                                  << u"SWITCH: las salidas se contradicen."_s
                                  << u"hctctl outputs --help"_s;
    QTest::newRow("automatic and by hand")
        << u"outputs 1=on auto"_s << u"SWITCH: las salidas se contradicen."_s
        << u"hctctl outputs --help"_s;
}

void TestCommandMistakes::mistakeIsTold()
{
    QFETCH(QString, arguments);
    QFETCH(QString, told);
    QFETCH(QString, help);
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run(arguments.split(u' ', Qt::SkipEmptyParts)), 2);
    QCOMPARE(hctctl.output(), QString());
    QCOMPARE(hctctl.errors(), u"%1\nLa ayuda se ve con: %2\n"_s.arg(told, help));
}

QTEST_GUILESS_MAIN(TestCommandMistakes)
#include "TestCommandMistakes.moc"
