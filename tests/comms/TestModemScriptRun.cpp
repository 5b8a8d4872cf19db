#include "Files.h"
#include "ModemFixture.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class TestModemScriptRun : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void scriptIsAskedForWhenThePortIsOpen();
    void emptyPathRunsNothing();
    void modemsWordsAreShownWhileTheScriptIsAskedFor();
    void linesAreSentOneAfterTheOther();
    void commentsAreWrittenToTheTerminal();
    void lineThatIsTooLongIsToldAndNotSent();
    void expectedTextDecides();
    void wrongReplyIsToldAndTheScriptGoesOn();
    void silenceIsToldAndTheScriptGoesOn();
    void failedLineWithoutExpectedTextIsNotTold();
    void errorFailsTheLineEvenBesideTheExpectedText();
    void lineEndAfterTheMatchBelongsToTheNextCommand();
    void scriptTellsOfNoFailure();
    void unreadableScriptIsTold();
    void tenThousandLinesEnd();
    void vanishingModemEndsTheScript();
    void endOfTheConnectionEndsTheScript();
    void portLostWhileTheScriptIsAskedForIsOpenedAgain();
    void portLostForGoodWhileTheScriptIsAskedForRunsNothing();
    void endOfTheConnectionWhileTheScriptIsAskedForRunsNothing();
    void commandBegunWhileTheScriptIsAskedForIsLeftAlone();

private:
    void run(const QByteArray& text);

    std::unique_ptr<ModemFixture> m_modem;
    QTemporaryDir m_folder;
};

void TestModemScriptRun::init() { m_modem = std::make_unique<ModemFixture>(); }

void TestModemScriptRun::cleanup() { m_modem.reset(); }

void TestModemScriptRun::run(const QByteArray& text)
{
    m_modem->control.executeScript();
    m_modem->control.runScript(writeFile(m_folder.filePath(u"script.mdm"_s), text));
}

void TestModemScriptRun::scriptIsAskedForWhenThePortIsOpen()
{
    m_modem->control.executeScript();
    QCOMPARE(m_modem->questions, QStringList{u"script"_s});
    QVERIFY(m_modem->modem.isOpen());
    QVERIFY(m_modem->controlsEnabled);
}

void TestModemScriptRun::emptyPathRunsNothing()
{
    m_modem->control.executeScript();
    m_modem->control.runScript(QString());
    QVERIFY(m_modem->terminal.isEmpty());
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
    QVERIFY(m_modem->controlsEnabled);
}

void TestModemScriptRun::modemsWordsAreShownWhileTheScriptIsAskedFor()
{
    m_modem->control.executeScript();
    m_modem->modem.setReceiveThreshold(1);
    m_modem->reply("\r\nRING\r\n");
    QCOMPARE(m_modem->terminal, u"\r\nRING\r\n"_s);
}

void TestModemScriptRun::linesAreSentOneAfterTheOther()
{
    run("ATZ\r\n\r\nATE0\r\n");
    QCOMPARE(m_modem->link.state(), LinkState::ScriptCommand);
    QCOMPARE(m_modem->takeCommand(), QByteArray("ATZ\r\n"));
    QCOMPARE(m_modem->takeTerminal(), u"\r\n** Inicio archivo de comandos\r\nATZ\r\n"_s);
    QCOMPARE(m_modem->tmrTemporizador.interval(), 3000ms);
    QVERIFY(!m_modem->controlsEnabled);
    m_modem->reply("OK");
    QCOMPARE(m_modem->takeCommand(), QByteArray("ATE0\r\n"));
    QCOMPARE(m_modem->takeTerminal(), u"OKATE0\r\n"_s);
    m_modem->reply("OK");
    QCOMPARE(m_modem->takeTerminal(), u"OK\r\n** Fin de archivo de comandos\r\n"_s);
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
    QVERIFY(!m_modem->tmrTemporizador.isEnabled());
    QVERIFY(m_modem->controlsEnabled);
}

void TestModemScriptRun::commentsAreWrittenToTheTerminal()
{
    run("; uno\n;dos\n");
    QCOMPARE(m_modem->terminal, u"\r\n** Inicio archivo de comandos\r\n; uno\r\n;dos\r\n"
                                "\r\n** Fin de archivo de comandos\r\n"_s);
    QVERIFY(m_modem->takeCommand().isEmpty());
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
}

void TestModemScriptRun::lineThatIsTooLongIsToldAndNotSent()
{
    run(QByteArray(1025, 'A') + "\r\nATH\r\n");
    QCOMPARE(m_modem->takeCommand(), QByteArray("ATH\r\n"));
    QCOMPARE(m_modem->takeTerminal(), u"\r\n** Inicio archivo de comandos\r\n"
                                      "\r\n** Línea demasiado larga: no se envía\r\nATH\r\n"_s);
    m_modem->reply("OK");
    QCOMPARE(m_modem->takeTerminal(), u"OK\r\n** Fin de archivo de comandos\r\n"_s);
}

void TestModemScriptRun::expectedTextDecides()
{
    run("AT+CREG?\t+CREG: 0,1\r\nATH\r\n");
    QCOMPARE(m_modem->takeCommand(), QByteArray("AT+CREG?\r\n"));
    m_modem->reply("\r\n+CREG: 0,2\r\n\r\nOK\r\n");
    QVERIFY(m_modem->takeCommand().isEmpty());
    m_modem->modem.arriveBytewise("\r\n+CREG: 0,1");
    QCOMPARE(m_modem->takeCommand(), QByteArray("ATH\r\n"));
}

void TestModemScriptRun::wrongReplyIsToldAndTheScriptGoesOn()
{
    run("AT+CREG?\t+CREG: 0,1\r\nATH\r\n");
    m_modem->takeTerminal();
    m_modem->reply("\r\n+CREG: 0,2\r\n");
    QVERIFY(m_modem->tmrTemporizador.fire());
    QCOMPARE(m_modem->takeTerminal(),
             u"\r\n+CREG: 0,2\r\n\r\n** Respuesta incorrecta\r\nATH\r\n"_s);
    QCOMPARE(m_modem->takeCommand(), QByteArray("AT+CREG?\r\nATH\r\n"));
    QVERIFY(m_modem->tmrTemporizador.isRunning());
}

void TestModemScriptRun::silenceIsToldAndTheScriptGoesOn()
{
    run("AT+CREG?\t+CREG: 0,1\r\nATH\r\n");
    m_modem->takeTerminal();
    QVERIFY(m_modem->tmrTemporizador.fire());
    QCOMPARE(m_modem->takeTerminal(), u"\r\n** Comando no reconocido\r\nATH\r\n"_s);
}

void TestModemScriptRun::failedLineWithoutExpectedTextIsNotTold()
{
    run("ATX\r\nATH\r\n");
    m_modem->takeTerminal();
    m_modem->reply("ERROR");
    QCOMPARE(m_modem->takeTerminal(), u"ERRORATH\r\n"_s);
    QVERIFY(m_modem->tmrTemporizador.fire());
    QCOMPARE(m_modem->takeTerminal(), u"\r\n** Fin de archivo de comandos\r\n"_s);
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
}

void TestModemScriptRun::errorFailsTheLineEvenBesideTheExpectedText()
{
    run("AT\tERROR: 3\r\nATH\r\n");
    m_modem->takeTerminal();
    m_modem->reply("+CME ERROR: 3");
    QCOMPARE(m_modem->takeTerminal(), u"+CME ERROR\r\n** Respuesta incorrecta\r\nATH\r\n: 3"_s);
}

void TestModemScriptRun::lineEndAfterTheMatchBelongsToTheNextCommand()
{
    run("ATZ\r\nAT+CREG?\t+CREG: 0,1\r\n");
    m_modem->reply("\r\nOK\r\n");
    m_modem->takeTerminal();
    QVERIFY(m_modem->tmrTemporizador.fire());
    QVERIFY(m_modem->terminal.startsWith(u"\r\n** Respuesta incorrecta\r\n"_s));
}

void TestModemScriptRun::scriptTellsOfNoFailure()
{
    run("ATZ\tX\r\nATH\r\n");
    m_modem->reply("ERROR");
    QVERIFY(m_modem->tmrTemporizador.fire());
    QCOMPARE(m_modem->questions, QStringList{u"script"_s});
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
}

void TestModemScriptRun::unreadableScriptIsTold()
{
    m_modem->control.executeScript();
    m_modem->control.runScript(m_folder.filePath(u"none.mdm"_s));
    QCOMPARE(m_modem->takeTerminal(), u"\r\n** No se ha podido leer el archivo de comandos\r\n"_s);
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
    run(QByteArray("MZ\0\1", 4));
    QCOMPARE(m_modem->takeTerminal(), u"\r\n** El archivo no es un archivo de comandos\r\n"_s);
    QVERIFY(m_modem->takeCommand().isEmpty());
    QVERIFY(m_modem->controlsEnabled);
}

void TestModemScriptRun::tenThousandLinesEnd()
{
    run(QByteArray("AT\n;c\n").repeated(5000));
    for (int line = 0; line < 5000; ++line) {
        QCOMPARE(m_modem->takeCommand(), QByteArray("AT\r\n"));
        m_modem->reply("OK");
    }
    QVERIFY(m_modem->terminal.endsWith(u";c\r\n\r\n** Fin de archivo de comandos\r\n"_s));
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
}

void TestModemScriptRun::vanishingModemEndsTheScript()
{
    run("ATZ\r\nATH\r\n");
    m_modem->takeCommand();
    m_modem->takeTerminal();
    m_modem->modem.vanish();
    QCoreApplication::processEvents();
    QCOMPARE(m_modem->takeTerminal(), u"\r\n** No se ha podido abrir el puerto serie\r\n"_s);
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
    QVERIFY(m_modem->controlsEnabled);
    QVERIFY(m_modem->takeCommand().isEmpty());
}

void TestModemScriptRun::endOfTheConnectionEndsTheScript()
{
    run("ATZ\r\nATH\r\n");
    m_modem->link.RemataConexion();
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
    QVERIFY(m_modem->controlsEnabled);
    QVERIFY(!m_modem->tmrTemporizador.fire());
    m_modem->takeCommand();
    m_modem->control.checkPin();
    m_modem->reply("OK+CPIN: READY");
    QCOMPARE(m_modem->takeCommand(), QByteArray("AT+CPIN?\r\n"));
}

void TestModemScriptRun::portLostWhileTheScriptIsAskedForIsOpenedAgain()
{
    m_modem->control.executeScript();
    m_modem->modem.vanish();
    m_modem->control.runScript(writeFile(m_folder.filePath(u"script.mdm"_s), "ATZ\r\n"));
    QCOMPARE(m_modem->takeCommand(), QByteArray("ATZ\r\n"));
    QCOMPARE(m_modem->modem.timesOpened, 2);
}

void TestModemScriptRun::portLostForGoodWhileTheScriptIsAskedForRunsNothing()
{
    m_modem->control.executeScript();
    m_modem->modem.vanish();
    m_modem->modem.refusal = u"/dev/fake no existe."_s;
    m_modem->control.runScript(writeFile(m_folder.filePath(u"script.mdm"_s), "ATZ\r\n"));
    QVERIFY(m_modem->takeCommand().isEmpty());
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
    QVERIFY(m_modem->controlsEnabled);
}

void TestModemScriptRun::endOfTheConnectionWhileTheScriptIsAskedForRunsNothing()
{
    m_modem->control.executeScript();
    m_modem->link.RemataConexion();
    m_modem->control.runScript(writeFile(m_folder.filePath(u"script.mdm"_s), "ATZ\r\n"));
    QVERIFY(m_modem->takeCommand().isEmpty());
    QVERIFY(!m_modem->modem.isOpen());
    QVERIFY(m_modem->terminal.isEmpty());
}

void TestModemScriptRun::commandBegunWhileTheScriptIsAskedForIsLeftAlone()
{
    m_modem->control.executeScript();
    m_modem->control.querySignal();
    m_modem->control.runScript(writeFile(m_folder.filePath(u"script.mdm"_s), "ATZ\r\n"));
    QCOMPARE(m_modem->takeCommand(), QByteArray("AT+CSQ\r\n"));
    m_modem->reply("\r\n+CSQ: 9,0\r\nOK\r\n");
    QCOMPARE(m_modem->link.state(), LinkState::Idle);
}

QTEST_GUILESS_MAIN(TestModemScriptRun)
#include "TestModemScriptRun.moc"
