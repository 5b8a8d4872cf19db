#include "Files.h"
#include "HctctlProcess.h"
#include "HexText.h"
#include "PseudoTerminal.h"
#include "SimulatorProcess.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

/// An image of so many lines of 16 bytes, the later half from 0x10000 on, as the simulated clock
/// saves it.
QByteArray imageOfLines(int lines)
{
    QByteArray text;
    for (int index = 0; index < lines; ++index) {
        if (index == lines / 2)
            text += record(4, 0, QByteArray("\0\1", 2)) + "\r\n";
        const int row = index < lines / 2 ? index : index - lines / 2;
        text += record(0, static_cast<quint16>(row * 16),
                       QByteArray(16, static_cast<char>(index * 7 + 1))) +
                "\r\n";
    }
    return text + ":00000001FF\r\n";
}

/// A simulated clock, and an image for it.
struct FirmwareDesk {
    explicit FirmwareDesk(const QStringList& options = {}, int lines = 60)
        : clock(options), image(imageOfLines(lines)), path(folder.filePath(u"reloj.hex"_s))
    {
        writeFile(path, image);
    }

    QStringList arguments(const QStringList& words = {u"--yes"_s}) const
    {
        return QStringList{u"--port"_s, clock.device(), u"firmware"_s, u"send"_s, path} + words;
    }
    QByteArray received()
    {
        const QString saved = folder.filePath(u"recibido.hex"_s);
        clock.command(u"firmware hex "_s + saved);
        return contentsOf(saved);
    }
    /// What the operator reads before the image is sent.
    QString question() const
    {
        return u"Se va a cambiar el firmware del reloj por el de %1 (60 líneas). Si se "
               "interrumpe, el reloj se queda con media imagen. ¿Enviarlo? [s/N] "_s.arg(path);
    }

    SimulatorProcess clock;
    QTemporaryDir folder;
    const QByteArray image;
    const QString path;
};

QStringList fault(const QString& text) { return {u"--trace"_s, u"--fault"_s, text}; }

const QString howToGoOn = u" Para que la tenga entera, envíe otra vez el archivo: se empieza por "
                          "la primera línea.\n"_s;
const QString twenty = u"El reloj tiene media imagen: ha tomado 20 de 60 líneas."_s;
const QString twentyTaken = twenty + u" Puede haber tomado la 21."_s + howToGoOn;

/// The lines that a terminal shows one after the other, in one place or below each other.
QStringList linesOn(QString received)
{
    received.replace(u"\r\n"_s, u"\n"_s);
    QStringList lines;
    QString line;
    qsizetype column = 0;
    for (qsizetype i = 0; i < received.size(); ++i) {
        const QChar character = received[i];
        if (character == u'\r' || character == u'\n') {
            if (!line.trimmed().isEmpty())
                lines += line.trimmed();
            column = 0;
            if (character == u'\n')
                line.clear();
        } else {
            line = line.leftJustified(column + 1).replace(column, 1, character);
            ++column;
        }
    }
    return lines;
}

} // namespace

/// The command that sends firmware, over a pseudo-terminal.
class TestFirmwareCommand : public QObject {
    Q_OBJECT
private slots:
    void imageArrives_data();
    void imageArrives();
    void imageArrivesDespiteLosses();
    void resultIsTold_data();
    void resultIsTold();
    void resetErasesTheClock();
    void badFileAsksNothingOfTheClock_data();
    void badFileAsksNothingOfTheClock();
    void absentFileIsTold();
    void silentClockGetsNothing();
    void missingPortIsTold();
    void brokenTransferTellsWhatTheClockHas_data();
    void brokenTransferTellsWhatTheClockHas();
    void lostPortTellsWhatTheClockHas();
    void interruptionTellsWhatTheClockHas_data();
    void interruptionTellsWhatTheClockHas();
    void clockThatMayHaveResetIsTold();
    void withoutATerminalConsentIsNeeded();
    void answerDecides_data();
    void answerDecides();
    void signalAtTheQuestionSendsNothing_data();
    void signalAtTheQuestionSendsNothing();
    void questionTellsOfTheReset();
    void oneLineIsNoPlural();
    void terminalShowsTheProgress();
    void quietTerminalShowsNone();
};

void TestFirmwareCommand::imageArrives_data()
{
    QTest::addColumn<QString>("model");
    QTest::newRow("HCT-7200") << u"7200"_s;
    QTest::newRow("HCT-7300") << u"7300"_s;
}

void TestFirmwareCommand::imageArrives()
{
    QFETCH(QString, model);
    FirmwareDesk desk({u"--model"_s, model});
    HctctlProcess run;
    QCOMPARE(run.run(desk.arguments()), 0);
    QCOMPARE(run.output(), QString());
    QCOMPARE(run.errors(), u"El firmware se ha enviado al HCT-%1: 60 líneas.\n"_s.arg(model));
    QCOMPARE(desk.received(), desk.image);
    QCOMPARE(desk.clock.state(u"firmware.complete"_s), u"yes"_s);
}

void TestFirmwareCommand::imageArrivesDespiteLosses()
{
    FirmwareDesk desk({u"--fault"_s, u"lost times 5 after 10 on firmware"_s, u"--fault"_s,
                       u"refuse 2 times 5 after 30 on firmware"_s});
    HctctlProcess run;
    QCOMPARE(run.run(desk.arguments({u"--yes"_s, u"--line"_s, u"115200"_s})), 0);
    QCOMPARE(desk.received(), desk.image);
}

void TestFirmwareCommand::resultIsTold_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("output");
    QTest::addColumn<QString>("errors");
    const QString sent = u"El firmware se ha enviado al HCT-7200: 60 líneas."_s;
    QTest::newRow("reset") << QStringList{u"--reset"_s} << QString()
                           << sent + u" El reloj borra su memoria y se reinicia.\n"_s;
    QTest::newRow("quiet") << QStringList{u"--quiet"_s} << QString() << QString();
    QTest::newRow("JSON") << QStringList{u"--json"_s}
                          << u"{\"lines\":60,\"model\":\"HCT-7200\",\"reset\":false}"_s
                          << sent + u'\n';
    QTest::newRow("JSON, reset, quiet")
        << QStringList{u"--json"_s, u"--reset"_s, u"--quiet"_s}
        << u"{\"lines\":60,\"model\":\"HCT-7200\",\"reset\":true}"_s << QString();
}

void TestFirmwareCommand::resultIsTold()
{
    QFETCH(QStringList, options);
    QFETCH(QString, output);
    QFETCH(QString, errors);
    const FirmwareDesk desk;
    HctctlProcess run;
    QCOMPARE(run.run(desk.arguments(options + QStringList{u"--yes"_s})), 0);
    const QString told = run.output();
    QCOMPARE(told.isEmpty() ? told : readByAnotherProgram(told), output);
    QCOMPARE(run.errors(), errors);
}

void TestFirmwareCommand::resetErasesTheClock()
{
    FirmwareDesk desk({u"--programme"_s, u"school"_s});
    HctctlProcess run;
    QCOMPARE(run.run(desk.arguments({u"--yes"_s, u"--reset"_s})), 0);
    QCOMPARE(desk.received(), desk.image);
    QCOMPARE(desk.clock.state(u"block1.alarms"_s), QString(132, u'0'));
}

void TestFirmwareCommand::badFileAsksNothingOfTheClock_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("reason");
    const QString format = u"no es un archivo Intel HEX, o está dañado o incompleto; cópielo otra "
                           "vez del original"_s;
    QTest::newRow("empty") << QByteArray() << format;
    QTest::newRow("no records") << QByteArray("#!/bin/sh\n") << format;
    QTest::newRow("bad checksum") << imageOfLines(60).replace(9, 1, "F") << format;
    QTest::newRow("cut") << imageOfLines(60).chopped(20) << format;
    QTest::newRow("no data") << QByteArray(":00000001FF\r\n")
                             << u"no contiene datos; compruebe que es el firmware del reloj"_s;
    QTest::newRow("too many lines")
        << dataRecords(32768) + ":00000001FF\r\n"
        << u"no se puede leer, o tiene más de 32767 líneas; compruebe el nombre y los permisos"_s;
}

void TestFirmwareCommand::badFileAsksNothingOfTheClock()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, reason);
    FirmwareDesk desk;
    writeFile(desk.path, text);
    HctctlProcess run;
    QCOMPARE(run.run(desk.arguments()), 2);
    QCOMPARE(run.output(), QString());
    QCOMPARE(run.errors(), u"%1: %2.\n"_s.arg(desk.path, reason));
    QCOMPARE(desk.clock.state(u"answered"_s), u"0"_s);
}

void TestFirmwareCommand::absentFileIsTold()
{
    for (const QString& path : {u"/no/such.hex"_s, u"/dev/zero"_s, u"/"_s}) {
        HctctlProcess run;
        QCOMPARE(run.run({u"firmware"_s, u"send"_s, path}), 2);
        QCOMPARE(run.errors(), u"%1: no se puede leer, o tiene más de 32767 líneas; compruebe el "
                               "nombre y los permisos.\n"_s.arg(path));
    }
}

void TestFirmwareCommand::silentClockGetsNothing()
{
    FirmwareDesk desk({u"--fault"_s, u"lost always"_s});
    HctctlProcess run;
    QCOMPARE(run.run(desk.arguments({u"--yes"_s, u"--wait"_s, u"1"_s, u"--quiet"_s})), 4);
    QVERIFY(run.errors().startsWith(u"Nadie contesta por "));
    QCOMPARE(desk.clock.state(u"firmware.lines"_s), u"0"_s);
}

void TestFirmwareCommand::missingPortIsTold()
{
    const FirmwareDesk desk;
    HctctlProcess run;
    QCOMPARE(run.run({u"--port"_s, u"/dev/no-such-port"_s, u"firmware"_s, u"send"_s, u"--yes"_s,
                      desk.path}),
             3);
    QVERIFY(run.errors().contains(u"/dev/no-such-port"));
}

void TestFirmwareCommand::brokenTransferTellsWhatTheClockHas_data()
{
    QTest::addColumn<QString>("faultText");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("told");
    const QString silent = u"El reloj ha dejado de contestar: compruebe el cable. "_s;
    const QString advice = u": compruebe que el archivo es de este modelo. "_s;
    QTest::newRow("refused") << u"refuse 2 always after 20 on firmware"_s << 1
                             << u"El reloj no acepta la línea 21"_s + advice + twenty + howToGoOn;
    QTest::newRow("refused from the first line") << u"refuse 2 always on firmware"_s << 1
                                                 << u"El reloj no acepta la línea 1"_s + advice +
                                                        u"El reloj no ha tomado ninguna línea.\n"_s;
    QTest::newRow("unanswered") << u"silent always after 20 on firmware"_s << 4
                                << silent + twentyTaken;
    QTest::newRow("damaged answers")
        << u"checksum always after 20 on firmware"_s << 4 << silent + twentyTaken;
    QTest::newRow("unanswered from the first line")
        << u"silent always on firmware"_s << 4
        << silent +
               u"El reloj puede tener media imagen: no ha confirmado ninguna línea, de 60 "
               "líneas."_s +
               howToGoOn;
}

void TestFirmwareCommand::brokenTransferTellsWhatTheClockHas()
{
    QFETCH(QString, faultText);
    QFETCH(int, status);
    QFETCH(QString, told);
    const FirmwareDesk desk(fault(faultText));
    HctctlProcess run;
    QCOMPARE(run.run(desk.arguments({u"--yes"_s, u"--json"_s, u"--line"_s, u"115200"_s})), status);
    QCOMPARE(run.output(), QString());
    QCOMPARE(run.errors(), told);
}

void TestFirmwareCommand::lostPortTellsWhatTheClockHas()
{
    const FirmwareDesk desk(fault(u"vanish 600000 after 20 on firmware"_s));
    HctctlProcess run;
    QCOMPARE(run.run(desk.arguments()), 3);
    QCOMPARE(run.output(), QString());
    QCOMPARE(run.errors(), u"Se ha perdido el puerto %1: compruebe que el adaptador está conectado "
                           "y repita la orden. "_s.arg(desk.clock.device()) +
                               twentyTaken);
}

void TestFirmwareCommand::interruptionTellsWhatTheClockHas_data()
{
    QTest::addColumn<int>("signalNumber");
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGTERM") << SIGTERM;
}

// At 300 bit/s the program waits long for the answer that does not come.
void TestFirmwareCommand::interruptionTellsWhatTheClockHas()
{
    QFETCH(int, signalNumber);
    FirmwareDesk desk(fault(u"silent always after 20 on firmware"_s));
    HctctlProcess run;
    run.start(desk.arguments({u"--yes"_s, u"--line"_s, u"300"_s}));
    QVERIFY(desk.clock.waitForRequests(u"69 dd"_s, 21));
    run.sendSignal(signalNumber);
    QCOMPARE(run.exitStatus(), 128 + signalNumber);
    QCOMPARE(run.output(), QString());
    QCOMPARE(run.errors(), u"Interrumpido. "_s + twentyTaken);
}

void TestFirmwareCommand::clockThatMayHaveResetIsTold()
{
    const FirmwareDesk desk(fault(u"silent always after 2 on firmware"_s), 3);
    HctctlProcess run;
    QCOMPARE(run.run(desk.arguments({u"--yes"_s, u"--reset"_s, u"--line"_s, u"115200"_s})), 4);
    const QString errors = run.errors();
    QVERIFY2(errors.endsWith(u"El reloj tiene media imagen: ha tomado 2 de 3 líneas. Puede haber "
                             "tomado la 3. Si se ha reiniciado, la tiene entera."_s +
                             howToGoOn),
             qPrintable(errors));
}

void TestFirmwareCommand::withoutATerminalConsentIsNeeded()
{
    FirmwareDesk desk;
    HctctlProcess run;
    QCOMPARE(run.run(desk.arguments({})), 2);
    QCOMPARE(run.errors(), u"No se puede preguntar sin terminal, y no se ha enviado nada; para "
                           "enviar sin pregunta, indique --yes.\n"_s);
    QCOMPARE(desk.clock.state(u"answered"_s), u"0"_s);
}

void TestFirmwareCommand::answerDecides_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("echo");
    QTest::addColumn<bool>("isYes");
    QTest::newRow("s") << QByteArray("s\n") << u"s\r\n"_s << true;
    QTest::newRow("Sí") << QByteArray("Sí\n") << u"Sí\r\n"_s << true;
    QTest::newRow("SI") << QByteArray("SI\n") << u"SI\r\n"_s << true;
    QTest::newRow("sí in Latin-1") << QByteArray("s\xed\n") << u"s\ufffd\r\n"_s << true;
    QTest::newRow("y") << QByteArray("y\n") << u"y\r\n"_s << true;
    QTest::newRow("salir") << QByteArray("salir\n") << u"salir\r\n"_s << false;
    QTest::newRow("sa") << QByteArray("sa\n") << u"sa\r\n"_s << false;
    QTest::newRow("n") << QByteArray("n\n") << u"n\r\n"_s << false;
    QTest::newRow("nothing") << QByteArray("\n") << u"\r\n"_s << false;
    QTest::newRow("end of the input") << QByteArray("\4") << u"\r\n"_s << false;
}

void TestFirmwareCommand::answerDecides()
{
    QFETCH(QByteArray, answer);
    QFETCH(QString, echo);
    QFETCH(bool, isYes);
    FirmwareDesk desk;
    PseudoTerminal terminal;
    HctctlProcess run;
    run.useTerminal(terminal, {STDIN_FILENO, STDERR_FILENO});
    run.start(desk.arguments({}));
    QString shown;
    QTRY_VERIFY((shown += QString::fromUtf8(terminal.received())).endsWith(desk.question()));
    QVERIFY(terminal.send(answer));
    QCOMPARE(run.exitStatus(), isYes ? 0 : 2);
    shown += QString::fromUtf8(terminal.received());
    QVERIFY2(shown.startsWith(desk.question() + echo), qPrintable(shown));
    QCOMPARE(shown.endsWith(u"\nNo se ha enviado nada.\r\n"), !isYes);
    QCOMPARE(desk.clock.state(u"firmware.lines"_s), isYes ? u"60"_s : u"0"_s);
    QCOMPARE(desk.clock.state(u"answered"_s) == u"0", !isYes);
}

void TestFirmwareCommand::signalAtTheQuestionSendsNothing_data()
{
    QTest::addColumn<int>("signalNumber");
    QTest::addColumn<QByteArray>("typed");
    QTest::newRow("SIGINT") << SIGINT << QByteArray();
    QTest::newRow("SIGINT within an answer") << SIGINT << QByteArray("sal");
    QTest::newRow("SIGTERM") << SIGTERM << QByteArray();
    QTest::newRow("SIGHUP") << SIGHUP << QByteArray();
}

void TestFirmwareCommand::signalAtTheQuestionSendsNothing()
{
    QFETCH(int, signalNumber);
    QFETCH(QByteArray, typed);
    FirmwareDesk desk;
    PseudoTerminal terminal;
    HctctlProcess run;
    run.useTerminal(terminal, {STDIN_FILENO, STDERR_FILENO});
    run.start(desk.arguments({}));
    QString shown;
    QTRY_VERIFY((shown += QString::fromUtf8(terminal.received())).endsWith(desk.question()));
    QVERIFY(terminal.send(typed));
    const QString asked = desk.question() + QString::fromUtf8(typed);
    QTRY_VERIFY((shown += QString::fromUtf8(terminal.received())).endsWith(asked));
    run.sendSignal(signalNumber);
    QCOMPARE(run.exitStatus(), 128 + signalNumber);
    QCOMPARE(QString::fromUtf8(terminal.received()),
             u"\r\nInterrumpido. No se ha enviado nada.\r\n"_s);
    QCOMPARE(desk.clock.state(u"answered"_s), u"0"_s);
}

void TestFirmwareCommand::questionTellsOfTheReset()
{
    const FirmwareDesk desk;
    PseudoTerminal terminal;
    HctctlProcess run;
    run.useTerminal(terminal, {STDIN_FILENO});
    QVERIFY(terminal.send("n\n"));
    QCOMPARE(run.run(desk.arguments({u"--reset"_s})), 2);
    QVERIFY(run.errors().contains(
        u" (60 líneas), y el reloj borrará toda su memoria, también su programa. Si se "));
}

void TestFirmwareCommand::oneLineIsNoPlural()
{
    const FirmwareDesk desk({}, 1);
    PseudoTerminal terminal;
    HctctlProcess run;
    run.useTerminal(terminal, {STDIN_FILENO});
    QVERIFY(terminal.send("s\n"));
    QCOMPARE(run.run(desk.arguments({})), 0);
    const QString errors = run.errors();
    QVERIFY2(errors.contains(u"reloj.hex (1 línea). Si se "), qPrintable(errors));
    QVERIFY2(errors.endsWith(u"El firmware se ha enviado al HCT-7200: 1 línea.\n"),
             qPrintable(errors));
}

void TestFirmwareCommand::terminalShowsTheProgress()
{
    const FirmwareDesk desk({}, 4);
    PseudoTerminal terminal;
    HctctlProcess run;
    run.useTerminal(terminal, {STDERR_FILENO});
    QCOMPARE(run.run(desk.arguments()), 0);
    static const QRegularExpression seconds(u"quedan? [0-9]+ s"_s);
    QStringList lines = linesOn(QString::fromUtf8(terminal.received()));
    lines.replaceInStrings(seconds, u"quedan N s"_s);
    QCOMPARE(lines, QStringList({u"Enviando firmware: 0 % (0 de 4)"_s,
                                 u"Enviando firmware: 25 % (1 de 4), quedan N s"_s,
                                 u"Enviando firmware: 50 % (2 de 4), quedan N s"_s,
                                 u"Enviando firmware: 75 % (3 de 4), quedan N s"_s,
                                 u"Enviando firmware: 100 % (4 de 4)"_s,
                                 u"El firmware se ha enviado al HCT-7200: 4 líneas."_s}));
}

void TestFirmwareCommand::quietTerminalShowsNone()
{
    const FirmwareDesk desk({}, 4);
    PseudoTerminal terminal;
    HctctlProcess run;
    run.useTerminal(terminal, {STDERR_FILENO});
    QCOMPARE(run.run(desk.arguments({u"--yes"_s, u"--quiet"_s})), 0);
    QCOMPARE(terminal.received(), QByteArray());
}

QTEST_GUILESS_MAIN(TestFirmwareCommand)
#include "TestFirmwareCommand.moc"
