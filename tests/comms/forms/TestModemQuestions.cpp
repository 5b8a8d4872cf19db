#include "FakeDialogs.h"
#include "Files.h"
#include "ModemFixture.h"
#include "ModemQuestions.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString applicationDirectory = u"C:\\hct\\"_s;
const QString callFailed = u"La llamada ha fallado. Compruebe que los parámetros de\r\n"
                           "configuración son correctos, que el módem está inicializado\r\n"
                           "correctamente, e inténtelo de nuevo"_s;

struct AskedModem : ModemFixture {
    FakeDialogs dialogs;
    std::unique_ptr<ModemQuestions> asker =
        std::make_unique<ModemQuestions>(control, dialogs, applicationDirectory);

    QStringList boxTexts() const
    {
        QStringList texts;
        for (const FakeDialogs::Box& box : dialogs.boxes)
            texts += box.text;
        return texts;
    }
};

} // namespace

Q_DECLARE_METATYPE(LinkState)

/// What the operator of a modem is asked and told, and what becomes of the answers.
class TestModemQuestions : public QObject {
    Q_OBJECT
private slots:
    void failureIsToldByThePhaseOfTheCommand_data();
    void failureIsToldByThePhaseOfTheCommand();
    void commandIsOverWhenTheBoxHasBeenAnswered();
    void whatLedToTheBoxIsShownBeforeIt();
    void wordsThatComeUnderTheBoxAreShownAndNotJudged();
    void timeOutUnderTheBoxDoesNothing();

    void numberIsAskedForAndDialled();
    void cancelledNumberEndsTheAttempt_data();
    void cancelledNumberEndsTheAttempt();
    void busyLineShowsBothBoxesInOrder();

    void scriptIsAskedForInTheModemsFolder();
    void chosenScriptIsRun();
    void cancelledFileDialogRunsNothing();

    void endOfTheConnectionUnderTheBusyBoxShowsNoFurtherBox();
    void endOfTheConnectionUnderTheNumberBoxDialsNothing();
    void endOfTheConnectionUnderTheFileDialogRunsNothing();
    void endOfTheConnectionUnderTheBoxLeavesTheNextCommandAlone();
    void boxOfTheNextCommandAboveTheOldOneIsAnsweredFirst();
    void controlMayGoUnderTheBox();
    void askerMayGoUnderTheBox();
};

void TestModemQuestions::failureIsToldByThePhaseOfTheCommand_data()
{
    QTest::addColumn<LinkState>("phase");
    QTest::addColumn<QString>("text");
    QTest::newRow("initialisation")
        << LinkState::Initialisation
        << u"El módem no responde. Revise las conexiones \r\ny la configuración"_s;
    QTest::newRow("PIN sent") << LinkState::PinSent << u"El módem no acepta el código PIN/PUK"_s;
    QTest::newRow("PIN query") << LinkState::PinQuery << u"El módem no responde al comando."_s;
    QTest::newRow("signal") << LinkState::SignalQuery << u"El módem no responde al comando"_s;
    QTest::newRow("dialling") << LinkState::Dialling << callFailed;
}

void TestModemQuestions::failureIsToldByThePhaseOfTheCommand()
{
    QFETCH(LinkState, phase);
    AskedModem f;
    emit f.control.failed(phase);
    QCOMPARE(f.dialogs.boxes.size(), 1);
    QCOMPARE(f.dialogs.boxes.first().icon, Dialogs::Icon::Critical);
    QCOMPARE(f.dialogs.boxes.first().title, u"Error"_s);
    QTEST(f.dialogs.boxes.first().text, "text");
    QVERIFY(!f.dialogs.boxes.first().question);
}

void TestModemQuestions::commandIsOverWhenTheBoxHasBeenAnswered()
{
    AskedModem f;
    f.dialogs.whileUp = [&] {
        QCOMPARE(f.link.state(), LinkState::SignalQuery);
        QVERIFY(!f.controlsEnabled);
    };
    f.control.querySignal();
    f.reply("ERROR");
    QCOMPARE(f.dialogs.boxes.size(), 1);
    QCOMPARE(f.link.state(), LinkState::Idle);
    QVERIFY(f.controlsEnabled);
}

void TestModemQuestions::whatLedToTheBoxIsShownBeforeIt()
{
    AskedModem f;
    f.control.querySignal();
    f.takeTerminal();
    f.dialogs.whileUp = [&] { QCOMPARE(f.terminal, u"\r\nERROR"_s); };
    f.reply("\r\nERROR\r\n");
    QCOMPARE(f.terminal, u"\r\nERROR\r\n"_s);
    QCOMPARE(f.dialogs.boxes.size(), 1);
}

void TestModemQuestions::wordsThatComeUnderTheBoxAreShownAndNotJudged()
{
    AskedModem f;
    f.control.checkPin();
    f.takeTerminal();
    f.dialogs.whileUp = [&] { f.reply("\r\nERROR\r\n+CPIN: READY\r\n"); };
    f.reply("ERROR");
    QCOMPARE(f.dialogs.boxes.size(), 1);
    QCOMPARE(f.terminal, u"ERROR\r\nERROR\r\n+CPIN: READY\r\n"_s);
    QCOMPARE(f.link.state(), LinkState::Idle);
}

void TestModemQuestions::timeOutUnderTheBoxDoesNothing()
{
    AskedModem f;
    f.dialogs.whileUp = [&] {
        QVERIFY(!f.tmrTemporizador.fire());
        f.control.timedOut();
    };
    f.control.checkPin();
    QVERIFY(f.tmrTemporizador.fire());
    QCOMPARE(f.dialogs.boxes.size(), 1);
}

void TestModemQuestions::numberIsAskedForAndDialled()
{
    AskedModem f;
    f.dialogs.texts = {u"986123456"_s};
    f.dialWith({
        [&] { f.reply("\r\nOK\r\n"); },
        [&] { f.reply("CONNECT"); },
    });
    QCOMPARE(f.dialogs.prompts,
             QStringList{u"Introducción de datos|Escriba el número de teléfono"_s});
    QCOMPARE(f.takeCommand(), QByteArray("ATZ\r\nATD986123456\r\n"));
    QVERIFY(f.dialogs.boxes.isEmpty());
}

void TestModemQuestions::cancelledNumberEndsTheAttempt_data()
{
    QTest::addColumn<bool>("cancelled");
    QTest::newRow("Cancel") << true;
    QTest::newRow("empty") << false;
}

void TestModemQuestions::cancelledNumberEndsTheAttempt()
{
    QFETCH(bool, cancelled);
    AskedModem f;
    f.dialogs.texts = {cancelled ? std::nullopt : std::optional(QString())};
    f.dialWith({[&] { f.reply("OK"); }});
    QCOMPARE(f.takeCommand(), QByteArray("ATZ\r\n"));
    QVERIFY(f.dialogs.boxes.isEmpty());
    QVERIFY(!f.link.isStarting());
}

void TestModemQuestions::busyLineShowsBothBoxesInOrder()
{
    AskedModem f;
    f.dialogs.texts = {u"986123456"_s};
    f.dialWith({
        [&] { f.reply("OK"); },
        [&] { f.reply("\r\nBUSY\r\n"); },
    });
    QCOMPARE(f.boxTexts(),
             (QStringList{u"El módem con el que se intenta contactar está comunicando.\r\n"
                          "Asegúrese de que el número es correcto"_s,
                          callFailed}));
    QCOMPARE(f.dialogs.boxes.at(0).icon, Dialogs::Icon::Warning);
    QCOMPARE(f.dialogs.boxes.at(0).title, u"Aviso"_s);
    QCOMPARE(f.dialogs.boxes.at(1).icon, Dialogs::Icon::Critical);
    QCOMPARE(f.dialogs.boxes.at(1).title, u"Error"_s);
    QCOMPARE(f.link.state(), LinkState::Idle);
}

void TestModemQuestions::scriptIsAskedForInTheModemsFolder()
{
    AskedModem f;
    f.control.executeScript();
    QCOMPARE(f.dialogs.fileRequests.size(), 1);
    const FileRequest& request = f.dialogs.fileRequests.first();
    QCOMPARE(request.title, u"Seleccione un archivo de inicialización de módem"_s);
    QCOMPARE(request.filters, (QStringList{u"Scripts de inicialización de módem (*.mdm)"_s,
                                           u"Todos los archivos (*.*)"_s}));
    QCOMPARE(request.defaultExtension, u"mdm"_s);
    QCOMPARE(request.directory, u"C:\\hct\\Modems"_s + QDir::separator());
}

void TestModemQuestions::chosenScriptIsRun()
{
    const QTemporaryDir folder;
    AskedModem f;
    f.dialogs.paths = {writeFile(folder.filePath(u"script.mdm"_s), "ATZ\r\n")};
    f.control.executeScript();
    QCOMPARE(f.takeCommand(), QByteArray("ATZ\r\n"));
    QCOMPARE(f.link.state(), LinkState::ScriptCommand);
}

void TestModemQuestions::cancelledFileDialogRunsNothing()
{
    AskedModem f;
    f.control.executeScript();
    QVERIFY(f.terminal.isEmpty());
    QCOMPARE(f.link.state(), LinkState::Idle);
    QVERIFY(f.controlsEnabled);
}

void TestModemQuestions::endOfTheConnectionUnderTheBusyBoxShowsNoFurtherBox()
{
    AskedModem f;
    f.dialogs.texts = {u"986123456"_s};
    f.dialWith({
        [&] {
            f.reply("OK");
            f.dialogs.whileUp = [&] { f.link.RemataConexion(); };
        },
        [&] { f.reply("BUSY\r\n"); },
    });
    QCOMPARE(f.dialogs.boxes.size(), 1);
    QCOMPARE(f.dialogs.boxes.first().title, u"Aviso"_s);
}

void TestModemQuestions::endOfTheConnectionUnderTheNumberBoxDialsNothing()
{
    AskedModem f;
    f.dialogs.texts = {u"986123456"_s};
    f.dialogs.whileUp = [&] { f.link.RemataConexion(); };
    f.dialWith({[&] { f.reply("OK\r\n"); }});
    QCOMPARE(f.takeCommand(), QByteArray("ATZ\r\n"));
    QCOMPARE(f.link.state(), LinkState::Idle);
    QVERIFY(f.dialogs.boxes.isEmpty());
}

void TestModemQuestions::endOfTheConnectionUnderTheFileDialogRunsNothing()
{
    const QTemporaryDir folder;
    AskedModem f;
    f.dialogs.paths = {writeFile(folder.filePath(u"script.mdm"_s), "ATZ\r\n")};
    f.dialogs.whileUp = [&] { f.link.RemataConexion(); };
    f.control.executeScript();
    QVERIFY(f.takeCommand().isEmpty());
    QVERIFY(f.terminal.isEmpty());
}

void TestModemQuestions::endOfTheConnectionUnderTheBoxLeavesTheNextCommandAlone()
{
    AskedModem f;
    f.dialogs.whileUp = [&] {
        f.link.RemataConexion();
        f.control.querySignal();
    };
    f.control.checkPin();
    f.reply("ERROR");
    QCOMPARE(f.link.state(), LinkState::SignalQuery);
    QVERIFY(f.tmrTemporizador.isRunning());
    QVERIFY(!f.controlsEnabled);
    f.reply("\r\n+CSQ: 9,0\r\nOK\r\n");
    QCOMPARE(f.link.state(), LinkState::Idle);
    QCOMPARE(f.dialogs.boxes.size(), 1);
}

void TestModemQuestions::boxOfTheNextCommandAboveTheOldOneIsAnsweredFirst()
{
    AskedModem f;
    QList<LinkState> statesUnderTheNewBox;
    f.dialogs.whileUp = [&] {
        if (f.dialogs.boxes.size() == 2) {
            statesUnderTheNewBox += f.link.state();
            return;
        }
        f.link.RemataConexion();
        f.control.querySignal();
        f.reply("ERROR");
        // The new command is over, and a third one runs when the old box is answered.
        QCOMPARE(f.link.state(), LinkState::Idle);
        f.control.checkPin();
    };
    f.control.checkPin();
    f.reply("ERROR");
    QCOMPARE(f.boxTexts(), (QStringList{u"El módem no responde al comando."_s,
                                        u"El módem no responde al comando"_s}));
    QCOMPARE(statesUnderTheNewBox, QList<LinkState>{LinkState::SignalQuery});
    QCOMPARE(f.link.state(), LinkState::PinQuery);
}

void TestModemQuestions::controlMayGoUnderTheBox()
{
    LinkFixture f;
    auto control = std::make_unique<ModemControl>(f.link, f.modem, f.settings);
    FakeDialogs dialogs;
    const ModemQuestions asker(*control, dialogs, applicationDirectory);
    dialogs.whileUp = [&] { control.reset(); };
    control->checkPin();
    f.modem.arrive("ERROR\r\n+CPIN: READY\r\n");
    QVERIFY(!control);
    QCOMPARE(dialogs.boxes.size(), 1);
}

void TestModemQuestions::askerMayGoUnderTheBox()
{
    AskedModem f;
    f.dialogs.whileUp = [&] { f.asker.reset(); };
    f.control.checkPin();
    f.reply("ERROR");
    QCOMPARE(f.link.state(), LinkState::Idle);
    QVERIFY(f.controlsEnabled);
}

QTEST_GUILESS_MAIN(TestModemQuestions)
#include "TestModemQuestions.moc"
