#include "HctctlProcess.h"
#include "ProgrammeLines.h"
#include "SchoolDesk.h"

#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

QStringList hct7300() { return {u"--model"_s, u"7300"_s}; }
/// For tests that look at the requests.
QStringList traced() { return {u"--trace"_s}; }
/// How requests begin: of an alarm block, of holidays, for holidays.
const QString block = u"69 da"_s;
const QString days = u"69 d2"_s;
const QString daysRead = u"89 d9"_s;

} // namespace

/// The commands for the programme of a clock, over a pseudo-terminal.
class TestProgrammeCommands : public QObject {
    Q_OBJECT
private slots:
    void readSavesTheProgramme_data();
    void readSavesTheProgramme();
    void readTellsWhatItSavedAsJson();
    void readIntoAFolderThatIsNotThereFails();
    void silentClockLeavesTheOldFile();
    void missingPortIsTold();
    void writeSendsAndVerifies_data();
    void writeSendsAndVerifies();
    void writeKeepsDurationsAndModesOfTheHct7200();
    void fileOfTheOtherModelIsSentWithAWarning();
    void writeTellsWhatItDidAsJson();
    void writeWithoutVerificationReadsNothingBack();
    void fileThatMustNotBeSentIsRefusedAsInTheWindow_data();
    void fileThatMustNotBeSentIsRefusedAsInTheWindow();
    void alarmsThatTheFileLacksGo();
    void badFileAsksNothingOfTheClock_data();
    void badFileAsksNothingOfTheClock();
    void fileThatCannotBeReadIsTold_data();
    void fileThatCannotBeReadIsTold();
    void impossibleDateOfAClockCanBeWrittenBack();
    void clockThatKeepsSomethingElseIsTold();
    void brokenWriteTellsWhatTheClockHas_data();
    void brokenWriteTellsWhatTheClockHas();
    void portLostInMidReadSavesNothing();
    void interruptedWriteTellsWhatTheClockHas_data();
    void interruptedWriteTellsWhatTheClockHas();
    void interruptedVerificationTellsThatAllIsSent();
    void verifyOfTheSameProgrammeIsGood_data();
    void verifyOfTheSameProgrammeIsGood();
    void verifyListsTheDifferences();
    void verifyListsTheDifferencesAsJson();
    void verifyChangesNothing();
};

void TestProgrammeCommands::readSavesTheProgramme_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("model");
    QTest::newRow("HCT-7200") << QStringList() << u"HCT-7200"_s;
    QTest::newRow("HCT-7300") << hct7300() << u"HCT-7300"_s;
}

void TestProgrammeCommands::readSavesTheProgramme()
{
    QFETCH(QStringList, options);
    QFETCH(QString, model);
    SchoolDesk desk(options);
    HctctlProcess run;
    run.start(desk.arguments({u"read"_s, desk.path()}));
    QCOMPARE(run.exitStatus(), 0);
    QCOMPARE(run.output(), QString());
    QCOMPARE(run.errors(), u"El programa del %1 se ha guardado en %2.\n"_s.arg(model, desk.path()));
    desk.clock.command(u"save "_s + desk.path(u"b.hct"_s));
    QCOMPARE(contentsOf(desk.path()), contentsOf(desk.path(u"b.hct"_s)));
    QVERIFY(contentsOf(desk.path()).startsWith("--AVISOS 1--\r\n8\r\n0\r\n9\r\n0\r\n31\r\n"));
}

void TestProgrammeCommands::readTellsWhatItSavedAsJson()
{
    SchoolDesk desk;
    HctctlProcess run;
    run.start(desk.arguments({u"read"_s, desk.path(), u"--json"_s, u"--quiet"_s}));
    QCOMPARE(run.exitStatus(), 0);
    QCOMPARE(run.output(), u"{\"file\":\"%1\",\"model\":\"HCT-7200\"}\n"_s.arg(desk.path()));
    QCOMPARE(run.errors(), QString());
}

void TestProgrammeCommands::readIntoAFolderThatIsNotThereFails()
{
    SchoolDesk desk;
    HctctlProcess run;
    run.start(desk.arguments({u"read"_s, desk.path(u"no/a.hct"_s)}));
    QCOMPARE(run.exitStatus(), 2);
    QCOMPARE(run.errors(),
             u"No se ha podido guardar el archivo %1: compruebe que la carpeta "
             "existe y que puede escribir en ella.\n"_s.arg(desk.path(u"no/a.hct"_s)));
}

void TestProgrammeCommands::silentClockLeavesTheOldFile()
{
    SchoolDesk desk({u"--fault"_s, u"silent always"_s});
    writeFile(desk.path(), "old");
    HctctlProcess run;
    run.start(desk.arguments({u"read"_s, desk.path(), u"--wait"_s, u"1"_s, u"--quiet"_s}));
    QCOMPARE(run.exitStatus(), 4);
    QCOMPARE(contentsOf(desk.path()), QByteArray("old"));
}

void TestProgrammeCommands::missingPortIsTold()
{
    HctctlProcess run;
    run.start({u"--port"_s, u"/dev/no-such-port"_s, u"programme"_s, u"read"_s, u"/no/a.hct"_s});
    QCOMPARE(run.exitStatus(), 3);
    QVERIFY(run.errors().contains(u"/dev/no-such-port"));
}

void TestProgrammeCommands::writeSendsAndVerifies_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("firstAlarm");
    QTest::newRow("HCT-7200") << QStringList() << u"c83b"_s;
    QTest::newRow("HCT-7300") << hct7300() << u"c83b"_s;
}

void TestProgrammeCommands::writeSendsAndVerifies()
{
    QFETCH(QStringList, options);
    QFETCH(QString, firstAlarm);
    SchoolDesk desk(options + traced());
    HctctlProcess run;
    run.start(desk.arguments({u"write"_s, desk.changedFile()}));
    QCOMPARE(run.exitStatus(), 0);
    QCOMPARE(run.output(), QString());
    QCOMPARE(run.errors(), u"El programa se ha enviado, y el reloj lo tiene.\n"_s);
    QCOMPARE(desk.firstAlarm(), firstAlarm);
    QCOMPARE(desk.clock.requestCount(daysRead), 2);
}

void TestProgrammeCommands::writeKeepsDurationsAndModesOfTheHct7200()
{
    SchoolDesk desk;
    ProgrammeLines lines;
    lines.block(1, 0) = "99";
    lines.block(1, 1) = "0";
    HctctlProcess run;
    run.start(desk.arguments({u"write"_s, writeFile(desk.path(), lines.text())}));
    QCOMPARE(run.exitStatus(), 0);
    QCOMPARE(desk.clock.state(u"block2.duration"_s), u"5"_s);
    QCOMPARE(desk.clock.state(u"block2.mode"_s), u"1"_s);
    QCOMPARE(desk.firstAlarm(), u"0000"_s);
}

void TestProgrammeCommands::fileOfTheOtherModelIsSentWithAWarning()
{
    const SchoolDesk desk;
    ProgrammeLines lines;
    lines.block(2, 1) = "2";
    HctctlProcess run;
    run.start(desk.arguments({u"write"_s, writeFile(desk.path(), lines.text())}));
    QCOMPARE(run.exitStatus(), 0);
    QCOMPARE(run.errors(),
             u"El archivo parece de un HCT-7300, porque hay modos mayores que 1: en este HCT-7200 "
             "sus avisos pueden sonar otros días; cuáles se ve con: hctctl programme show --model "
             "7200 %1\n"
             "El programa se ha enviado, y el reloj lo tiene.\n"_s.arg(desk.path()));
}

void TestProgrammeCommands::writeTellsWhatItDidAsJson()
{
    SchoolDesk desk;
    HctctlProcess run;
    run.start(desk.arguments({u"write"_s, desk.changedFile(), u"--json"_s}));
    QCOMPARE(run.exitStatus(), 0);
    QCOMPARE(run.output(), u"{\"differences\":[],\"equal\":true,\"model\":\"HCT-7200\"}\n"_s);
}

void TestProgrammeCommands::writeWithoutVerificationReadsNothingBack()
{
    SchoolDesk desk(traced());
    HctctlProcess run;
    run.start(desk.arguments({u"write"_s, desk.changedFile(), u"--no-verify"_s}));
    QCOMPARE(run.exitStatus(), 0);
    QCOMPARE(run.errors(), u"El programa se ha enviado; no se ha comprobado.\n"_s);
    QCOMPARE(desk.firstAlarm(), u"c83b"_s);
    QCOMPARE(desk.clock.requestCount(daysRead), 1);
}

void TestProgrammeCommands::fileThatMustNotBeSentIsRefusedAsInTheWindow_data()
{
    readSavesTheProgramme_data();
}

void TestProgrammeCommands::fileThatMustNotBeSentIsRefusedAsInTheWindow()
{
    QFETCH(QStringList, options);
    SchoolDesk desk(options + traced());
    ProgrammeLines lines;
    lines.alarm(2, 0, 2) = lines.alarm(2, 1, 2) = "1";
    HctctlProcess run;
    run.start(desk.arguments({u"write"_s, writeFile(desk.path(), lines.text())}));
    QCOMPARE(run.exitStatus(), 2);
    QCOMPARE(run.errors(),
             u"Error en el bloque de avisos 3. Está intentando programar múltiples avisos\n"
             "para las 0:0 horas.\n"
             "No se ha enviado nada; con \"programme check\" se ve en qué líneas está.\n"_s);
    QCOMPARE(desk.firstAlarm(), u"e9c0"_s);
    QCOMPARE(desk.clock.requestCount(block), 0);
}

void TestProgrammeCommands::alarmsThatTheFileLacksGo()
{
    // Read over its alarms, the file would leave the working days of two of them, at one time.
    SchoolDesk desk(hct7300());
    ProgrammeLines lines;
    lines.block(2, 1) = "2";
    HctctlProcess run;
    run.start(desk.arguments({u"write"_s, writeFile(desk.path(), lines.text())}));
    QCOMPARE(run.exitStatus(), 0);
    QCOMPARE(desk.clock.state(u"block3.alarms"_s), QString(132, u'0'));
}

void TestProgrammeCommands::badFileAsksNothingOfTheClock_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("reason");
    ProgrammeLines lines;
    const QString advice = u"; con \"programme check\" se ve todo lo que no está bien"_s;
    QTest::newRow("empty") << QByteArray()
                           << u"El archivo termina antes: faltan las líneas 1 a 363 (línea 1)"_s +
                                  advice;
    lines.alarm(0, 0, 0) = "24";
    QTest::newRow("hour 24")
        << lines.text()
        << u"Hora del aviso 1 de la salida 1: 24 no está entre 0 y 23 (línea 4)"_s + advice;
    QTest::newRow("too long")
        << ProgrammeLines().text() + QByteArray(1024 * 1024, ' ')
        << u"El archivo es demasiado largo: solo se lee su primer mebibyte"_s + advice;
}

void TestProgrammeCommands::badFileAsksNothingOfTheClock()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, reason);
    SchoolDesk desk;
    writeFile(desk.path(), text);
    for (const QString& verb : {u"write"_s, u"verify"_s}) {
        HctctlProcess run;
        run.start(desk.arguments({verb, desk.path()}));
        QCOMPARE(run.exitStatus(), 2);
        QCOMPARE(run.errors(), u"%1: %2.\n"_s.arg(desk.path(), reason));
    }
    QCOMPARE(desk.clock.state(u"answered"_s), u"0"_s);
}

// The file is looked for before the port.
void TestProgrammeCommands::fileThatCannotBeReadIsTold_data()
{
    QTest::addColumn<QString>("verb");
    QTest::addColumn<QString>("path");
    for (const char* verb : {"write", "verify"})
        for (const char* path : {"/no/hay.hct", "/dev/zero", "/"})
            QTest::addRow("%s %s", verb, path)
                << QString::fromLatin1(verb) << QString::fromLatin1(path);
}

void TestProgrammeCommands::fileThatCannotBeReadIsTold()
{
    QFETCH(QString, verb);
    QFETCH(QString, path);
    HctctlProcess run;
    QCOMPARE(run.run({u"--port"_s, u"/dev/no-such-port"_s, u"programme"_s, verb, path}), 2);
    QCOMPARE(run.errors(),
             u"%1: no se puede leer el archivo; compruebe el nombre y los permisos.\n"_s.arg(path));
}

void TestProgrammeCommands::impossibleDateOfAClockCanBeWrittenBack()
{
    SchoolDesk desk;
    ProgrammeLines lines;
    lines.holiday(0, 0) = "31";
    lines.holiday(0, 1) = "2";
    HctctlProcess run;
    run.start(desk.arguments({u"write"_s, writeFile(desk.path(), lines.text())}));
    QCOMPARE(run.exitStatus(), 0);
    QVERIFY(desk.clock.state(u"holidays"_s).startsWith(u"1f020000"));
}

void TestProgrammeCommands::clockThatKeepsSomethingElseIsTold()
{
    // It answers well and does not obey.
    SchoolDesk desk({u"--fault"_s, u"refuse 0 on block"_s});
    HctctlProcess run;
    run.start(desk.arguments({u"write"_s, desk.changedFile()}));
    QCOMPARE(run.exitStatus(), 1);
    QCOMPARE(run.output(), u"Salida 1: quitado 8:59 lunes y martes\n"
                           "Salida 1: añadido 9:00 lunes a viernes\n"_s);
    QCOMPARE(run.errors(), u"El reloj no tiene el programa del archivo: arriba está lo que "
                           "cambia del archivo al reloj. Repita la orden; si sigue igual, avise "
                           "al servicio técnico.\n"_s);
}

void TestProgrammeCommands::brokenWriteTellsWhatTheClockHas_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("told");
    const QString partsAfterOne =
        u" El reloj ha tomado: salida 1. Sin confirmar: salida 2. Sin enviar: salida 3, festivos y "
        "vacaciones. Repita la orden para completarlo.\n"_s;
    QTest::newRow("refused") << u"refuse always after 1 on block"_s << 1
                             << u"El reloj no acepta la orden: si al repetirla sigue igual, avise "
                                "al servicio técnico."_s +
                                    partsAfterOne;
    QTest::newRow("unanswered")
        << u"silent always on block"_s << 4
        << u"El reloj ha dejado de contestar: compruebe el cable. Sin confirmar: salida 1. Sin "
           "enviar: salida 2, salida 3, festivos y vacaciones. Repita la orden para completarlo.\n"_s;
    QTest::newRow("port lost") << u"vanish 600000 after 1 on block"_s << 3
                               << u"Se ha perdido el puerto PORT: compruebe que el adaptador está "
                                  "conectado y repita la orden."_s +
                                      partsAfterOne;
}

void TestProgrammeCommands::brokenWriteTellsWhatTheClockHas()
{
    QFETCH(QString, fault);
    QFETCH(int, status);
    QFETCH(QString, told);
    SchoolDesk desk({u"--fault"_s, fault});
    HctctlProcess run;
    run.start(desk.arguments({u"write"_s, desk.changedFile()}));
    QCOMPARE(run.exitStatus(), status);
    QCOMPARE(run.output(), QString());
    QCOMPARE(run.errors(), told.replace(u"PORT"_s, desk.clock.device()));
    QCOMPARE(desk.firstAlarm(), u"c83b"_s);
}

void TestProgrammeCommands::portLostInMidReadSavesNothing()
{
    SchoolDesk desk({u"--fault"_s, u"vanish 600000 on days-read"_s});
    writeFile(desk.path(), "old");
    HctctlProcess run;
    run.start(desk.arguments({u"read"_s, desk.path()}));
    QCOMPARE(run.exitStatus(), 3);
    QVERIFY(run.errors().endsWith(u" No se ha guardado nada.\n"));
    QCOMPARE(contentsOf(desk.path()), QByteArray("old"));
}

void TestProgrammeCommands::interruptedWriteTellsWhatTheClockHas_data()
{
    QTest::addColumn<int>("signalNumber");
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGTERM") << SIGTERM;
}

void TestProgrammeCommands::interruptedWriteTellsWhatTheClockHas()
{
    QFETCH(int, signalNumber);
    SchoolDesk desk({u"--trace"_s, u"--fault"_s, u"silent always after 1 on block"_s});
    HctctlProcess run;
    run.start(desk.arguments({u"write"_s, desk.changedFile()}));
    QVERIFY(desk.clock.waitForRequests(block, 2));
    run.sendSignal(signalNumber);
    QCOMPARE(run.exitStatus(), 128 + signalNumber);
    QCOMPARE(run.output(), QString());
    QCOMPARE(run.errors(),
             u"Interrumpido. El reloj ha tomado: salida 1. Sin confirmar: salida 2. Sin enviar: "
             "salida 3, festivos y vacaciones. Repita la orden para completarlo.\n"_s);
}

void TestProgrammeCommands::interruptedVerificationTellsThatAllIsSent()
{
    SchoolDesk desk({u"--trace"_s, u"--fault"_s, u"silent always after 1 on days-read"_s});
    HctctlProcess run;
    run.start(desk.arguments({u"write"_s, desk.changedFile()}));
    QVERIFY(desk.clock.waitForRequests(daysRead, 2));
    run.sendSignal(SIGINT);
    QCOMPARE(run.exitStatus(), 128 + SIGINT);
    QCOMPARE(run.errors(),
             u"Interrumpido. El reloj ha tomado todo el programa, pero no se ha "
             "podido comprobar; para comprobarlo: hctctl programme verify %1 --port %2\n"_s.arg(
                 desk.path(), desk.clock.device()));
}

void TestProgrammeCommands::verifyOfTheSameProgrammeIsGood_data() { readSavesTheProgramme_data(); }

void TestProgrammeCommands::verifyOfTheSameProgrammeIsGood()
{
    QFETCH(QStringList, options);
    SchoolDesk desk(options);
    desk.clock.command(u"save "_s + desk.path());
    HctctlProcess run;
    run.start(desk.arguments({u"verify"_s, desk.path()}));
    QCOMPARE(run.exitStatus(), 0);
    QCOMPARE(run.output(), QString());
    QCOMPARE(run.errors(), u"El reloj tiene el programa del archivo.\n"_s);
}

void TestProgrammeCommands::verifyListsTheDifferences()
{
    SchoolDesk desk(hct7300());
    ProgrammeLines lines;
    lines.block(0, 0) = "8";
    desk.clock.command(u"programme "_s + writeFile(desk.path(), lines.text()));
    lines.block(0, 0) = "9";
    lines.block(1, 1) = "2";
    lines.alarm(1, 3, 0) = "7";
    lines.alarm(1, 3, 2) = "8";
    lines.vacation(0, 0) = lines.vacation(0, 1) = lines.vacation(0, 3) = "7";
    lines.vacation(0, 2) = "31";
    HctctlProcess run;
    run.start(desk.arguments({u"verify"_s, writeFile(desk.path(), lines.text())}));
    QCOMPARE(run.exitStatus(), 1);
    QCOMPARE(run.output(), u"Salida 1: cambiada la duración, antes 9, ahora 8\n"
                           "Salida 2: cambiado el modo, antes 2, ahora 0\n"
                           "Salida 2: quitado 7:00 vacaciones\n"
                           "Vacaciones: quitado 07/07 a 31/07\n"_s);
    QCOMPARE(run.errors(),
             u"El reloj no tiene el programa del archivo: arriba está lo que cambia "
             "del archivo al reloj. Para enviárselo: hctctl programme write %1 --port %2\n"_s.arg(
                 desk.path(), desk.clock.device()));
}

void TestProgrammeCommands::verifyListsTheDifferencesAsJson()
{
    SchoolDesk desk;
    HctctlProcess run;
    run.start(desk.arguments({u"verify"_s, desk.changedFile(), u"--json"_s}));
    QCOMPARE(run.exitStatus(), 1);
    QCOMPARE(readByAnotherProgram(run.output()),
             uR"({"differences":[{"kind":"removed","output":1,"rowBefore":1,)"
             R"("text":"Salida 1: quitado 8:59 lunes y martes","what":"alarm"},)"
             R"({"kind":"added","output":1,"rowAfter":1,)"
             R"("text":"Salida 1: añadido 9:00 lunes a viernes","what":"alarm"}],)"
             R"("equal":false,"model":"HCT-7200"})"_s);
}

void TestProgrammeCommands::verifyChangesNothing()
{
    SchoolDesk desk(traced());
    HctctlProcess run;
    run.start(desk.arguments({u"verify"_s, desk.changedFile()}));
    QCOMPARE(run.exitStatus(), 1);
    desk.clock.command(u"state"_s);
    QCOMPARE(desk.clock.requestCount(block), 0);
    QCOMPARE(desk.clock.requestCount(days), 0);
}

QTEST_GUILESS_MAIN(TestProgrammeCommands)
#include "TestProgrammeCommands.moc"
