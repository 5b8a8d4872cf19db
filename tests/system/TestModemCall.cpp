#include "ConnectedProgram.h"
#include "MessageLink.h"
#include "SerialPort.h"
#include "frmPortoSerie.h"
#include "frmPrincipal.h"

#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

const QString number = u"981123456"_s;
const QString interrupted = u"Conexión interrumpida"_s;
const QString callFailed = u"La llamada ha fallado. Compruebe que los parámetros de\r\n"
                           "configuración son correctos, que el módem está inicializado\r\n"
                           "correctamente, e inténtelo de nuevo"_s;

/// The program with Utilizar módem ticked, and a modem between it and the clock.
struct ModemProgram : ConnectedProgram {
    explicit ModemProgram(const QStringList& options = {})
        : ConnectedProgram(QStringList{u"--modem"_s, u"--dial-delay"_s, u"20"_s} + options)
    {
        choose("mnuUsarModem");
        dialogs.texts = {number};
    }

    template<typename Widget>
    Widget& find(const char* name)
    {
        auto* found = program.communications().findChild<Widget*>(QString::fromLatin1(name));
        if (!found)
            qFatal("no %s", name);
        return *found;
    }
    QPlainTextEdit& terminal() { return find<QPlainTextEdit>("txtRexistro"); }
    QString terminalText() { return terminal().toPlainText(); }

    void openModemTab()
    {
        choose("mnuConfiguracion");
        QVERIFY(QTest::qWaitForWindowActive(&program.communications()));
        find<QTabWidget>("tabOpcions").setCurrentIndex(1);
    }
    void click(const char* button)
    {
        QVERIFY(find<QPushButton>(button).isEnabled());
        QTest::mouseClick(&find<QPushButton>(button), Qt::LeftButton);
    }
    void closeSettings(const char* button)
    {
        click(button);
        QVERIFY(!program.communications().isVisible());
    }
    /// Types the codes and accepts them.
    void enterCodes(const QString& pin, const QString& puk)
    {
        click("cmdEnviarPIN");
        auto* dialog = program.communications().findChild<QDialog*>(u"frmPINPUK"_s);
        QVERIFY(dialog);
        if (!puk.isEmpty()) {
            QTest::mouseClick(dialog->findChild<QAbstractButton*>(u"chkPUK"_s), Qt::LeftButton);
            QTest::keyClicks(dialog->findChild<QLineEdit*>(u"txtPUK"_s), puk);
        }
        QTest::keyClicks(dialog->findChild<QLineEdit*>(u"txtPIN"_s), pin);
        QTest::keyClick(dialog, Qt::Key_Return);
        QVERIFY(!dialog->isVisible());
    }
    /// Runs `act` when the terminal shows `text`, as an event of its own.
    void whenShown(const QString& text, const std::function<void()>& act)
    {
        auto* context = new QObject(&terminal());
        QObject::connect(&terminal(), &QPlainTextEdit::textChanged, context, [=, this] {
            if (!terminalText().contains(text))
                return;
            context->disconnect();
            QObject::disconnect(&terminal(), nullptr, context, nullptr);
            QMetaObject::invokeMethod(context, act, Qt::QueuedConnection);
        });
    }
    const SerialPort& modemPort() { return program.session().link().modemPort(); }
    QString modemState() { return clock.command(u"modem state"_s).value(0); }
};

} // namespace

/// The program and a simulated clock behind a simulated modem, over a pseudo-terminal.
class TestModemCall : public QObject {
    Q_OBJECT
private slots:
    void dialsShowsTheClockAndHangsUp_data();
    void dialsShowsTheClockAndHangsUp();
    void busyLineShowsBothBoxesAndAnotherTryConnects();
    void cancelledNumberEndsInFourFailedIdentifications();
    void silentModemIsTold();
    void portThatIsNotThereEndsTheConnection();
    void modemThatVanishesInMidCallEndsTheConnectionAndComesBack();
    void secondConectarWhileDiallingStartsNoOther();
    void programClosedWhileDiallingHangsUp();

    void simThatWantsACodeGetsItAndTheCallGoesThrough_data();
    void simThatWantsACodeGetsItAndTheCallGoesThrough();
    void refusedPinIsTold();
    void scriptWithAFailingLineGoesOn();
    void terminalTypedByKeysTalksToTheModem();
    void buttonsTellAPortThatIsNotThere();
    void cancelInMidCommandClosesThePorts();
};

void TestModemCall::dialsShowsTheClockAndHangsUp_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::newRow("as modems do") << QStringList();
    QTest::newRow("without echo") << QStringList{u"--echo"_s, u"off"_s};
    QTest::newRow("bare CONNECT") << QStringList{u"--dial"_s, u"connect"_s};
    QTest::newRow("byte by byte") << QStringList{u"--modem-split"_s, u"1"_s};
}

void TestModemCall::dialsShowsTheClockAndHangsUp()
{
    QFETCH(QStringList, options);
    ModemProgram run(options + QStringList{u"--start"_s, u"2026-11-20T08:59:00"_s, u"--frozen"_s});
    run.choose("mnuConectar");
    QCOMPARE(run.dialogs.prompts,
             QStringList{u"Introducción de datos|Escriba el número de teléfono"_s});
    QVERIFY(run.terminalText().contains(u"\n** Conexión establecida\n"_s));
    QTRY_VERIFY_WITH_TIMEOUT(run.isEstablished(), patience);
    QCOMPARE(run.clock.command(u"modem state"_s),
             (QStringList{u"modem=call"_s, u"dialled="_s + number, u"sim=READY"_s}));
    QCOMPARE(run.panel(1), u"Conectado"_s);
    QCOMPARE(run.panel(3), u"COM1,9600,N,8,1"_s);
    QCOMPARE(run.logLines(),
             (QStringList{interrupted, u"Estableciendo conexión..."_s, u"Identificación aceptada"_s,
                          u"Conexión establecida"_s}));

    run.choose("mnuInformacion");
    QTRY_COMPARE_WITH_TIMEOUT(run.text("frmInfoHCT7200", "lblHora"), u"8:59:00 "_s, patience);
    run.clock.command(u"inputs 5"_s);
    QTRY_COMPARE_WITH_TIMEOUT(run.program.session().globais().GeneralData.at(218), char(5),
                              patience);

    run.choose("mnuDesconectar");
    QVERIFY(!run.modemPort().isOpen());
    QCOMPARE(run.panel(1), u"Desconectado"_s);
    QCOMPARE(run.panel(3), QString());
    QTRY_COMPARE_WITH_TIMEOUT(run.modemState(), u"modem=command"_s, patience);
    QVERIFY(run.dialogs.boxes.isEmpty());
}

void TestModemCall::busyLineShowsBothBoxesAndAnotherTryConnects()
{
    ModemProgram run({u"--dial"_s, u"busy"_s});
    run.choose("mnuConectar");
    QCOMPARE(run.dialogs.boxes.size(), 2);
    QCOMPARE(run.dialogs.boxes.at(0).icon, Dialogs::Icon::Warning);
    QCOMPARE(run.dialogs.boxes.at(0).title, u"Aviso"_s);
    QCOMPARE(run.dialogs.boxes.at(0).text,
             u"El módem con el que se intenta contactar está comunicando.\r\n"
             "Asegúrese de que el número es correcto"_s);
    QCOMPARE(run.dialogs.boxes.at(1).icon, Dialogs::Icon::Critical);
    QCOMPARE(run.dialogs.boxes.at(1).title, u"Error"_s);
    QCOMPARE(run.dialogs.boxes.at(1).text, callFailed);
    QCOMPARE(run.timesLogged(u"Estableciendo conexión..."_s), 1);

    // The identification is sent although the call failed. It must not disturb the next attempt.
    QTRY_VERIFY_WITH_TIMEOUT(run.program.session().link().Ocupado(), patience);
    run.clock.command(u"modem dial connect 9600"_s);
    run.dialogs.texts = {number};
    run.choose("mnuConectar");
    QTRY_VERIFY_WITH_TIMEOUT(run.isEstablished(), patience);
    QCOMPARE(run.dialogs.boxes.size(), 2);
}

void TestModemCall::cancelledNumberEndsInFourFailedIdentifications()
{
    ModemProgram run;
    run.dialogs.texts = {std::nullopt};
    run.choose("mnuConectar");
    QCOMPARE(run.clock.command(u"modem state"_s).value(1), u"dialled="_s);
    // The modem echoes the frames, which are no answers.
    QTRY_COMPARE_WITH_TIMEOUT(run.timesLogged(interrupted), 2, patience);
    const QString failure = u"Fallo en identificación del equipo"_s;
    QCOMPARE(run.logLines(), (QStringList{interrupted, u"Estableciendo conexión..."_s, failure,
                                          failure, failure, failure, interrupted}));
    QVERIFY(!run.modemPort().isOpen());
    QVERIFY(run.dialogs.boxes.isEmpty());
}

void TestModemCall::silentModemIsTold()
{
    ModemProgram run({u"--modem-silent"_s});
    run.choose("mnuConectar");
    QCOMPARE(run.dialogs.boxes.size(), 1);
    QCOMPARE(run.dialogs.boxes.first().title, u"Error"_s);
    QCOMPARE(run.dialogs.boxes.first().text,
             u"El módem no responde. Revise las conexiones \r\ny la configuración"_s);
    QVERIFY(run.dialogs.prompts.isEmpty());
}

void TestModemCall::portThatIsNotThereEndsTheConnection()
{
    ModemProgram run;
    run.chooseAbsentPort();
    run.choose("mnuConectar");
    QCOMPARE(run.panel(3), u"COM16,9600,N,8,1"_s);
    QTRY_COMPARE_WITH_TIMEOUT(run.timesLogged(interrupted), 2, patience);
    QCOMPARE(run.timesLogged(u"Fallo en identificación del equipo"_s), 4);
    QVERIFY(run.dialogs.boxes.isEmpty());
    QVERIFY(run.dialogs.prompts.isEmpty());
}

void TestModemCall::modemThatVanishesInMidCallEndsTheConnectionAndComesBack()
{
    ModemProgram run;
    run.choose("mnuConectar");
    QTRY_VERIFY_WITH_TIMEOUT(run.isEstablished(), patience);
    run.choose("mnuInformacion");
    run.clock.command(u"vanish"_s);
    QTRY_COMPARE_WITH_TIMEOUT(run.timesLogged(interrupted), 2, patience);
    QCOMPARE(run.timesLogged(u"Fallo en identificación del equipo"_s), 4);
    QVERIFY(!run.shownForm("frmInfoHCT7200"));
    QVERIFY(!run.modemPort().isOpen());
    QVERIFY(run.dialogs.boxes.isEmpty());

    run.clock.command(u"return"_s);
    qputenv("HCT_COM1", run.clock.state(u"device"_s).toLocal8Bit());
    run.dialogs.texts = {number};
    run.choose("mnuConectar");
    QTRY_VERIFY_WITH_TIMEOUT(run.isEstablished(), patience);
}

void TestModemCall::secondConectarWhileDiallingStartsNoOther()
{
    ModemProgram run({u"--dial-delay"_s, u"3000"_s});
    int tries = 0;
    const auto again = [&] {
        ++tries;
        run.choose("mnuConectar");
        QCOMPARE(run.timesLogged(u"Estableciendo conexión..."_s), 0);
    };
    run.dialogs.whileUp = [&] {
        QVERIFY(run.program.session().link().isStarting());
        again();
    };
    run.whenShown(u"ATD"_s, [&] {
        QCOMPARE(run.program.session().link().state(), LinkState::Dialling);
        again();
        QCOMPARE(run.program.session().link().state(), LinkState::Dialling);
    });
    run.choose("mnuConectar");
    QCOMPARE(tries, 2);
    QCOMPARE(run.dialogs.prompts.size(), 1);
    QTRY_VERIFY_WITH_TIMEOUT(run.isEstablished(), patience);
    QCOMPARE(run.timesLogged(u"Estableciendo conexión..."_s), 1);
    QVERIFY(run.dialogs.boxes.isEmpty());
}

void TestModemCall::programClosedWhileDiallingHangsUp()
{
    ModemProgram run({u"--dial-delay"_s, u"60000"_s});
    run.whenShown(u"ATD"_s, [&] {
        QCOMPARE(run.program.session().link().state(), LinkState::Dialling);
        QTRY_COMPARE_WITH_TIMEOUT(run.modemState(), u"modem=dialling"_s, patience);
        run.choose("mnuSair");
    });
    run.choose("mnuConectar");
    QVERIFY(!run.program.mainWindow().isVisible());
    QVERIFY(!run.program.session().link().isStarting());
    QVERIFY(!run.modemPort().isOpen());
    QVERIFY(run.program.session().globais().ShuttingDown);
    QVERIFY(run.dialogs.boxes.isEmpty());
    QCOMPARE(run.timesLogged(u"Estableciendo conexión..."_s), 0);
    QTRY_COMPARE_WITH_TIMEOUT(run.modemState(), u"modem=command"_s, patience);
}

void TestModemCall::simThatWantsACodeGetsItAndTheCallGoesThrough_data()
{
    QTest::addColumn<QString>("sim");
    QTest::addColumn<QString>("need");
    QTest::addColumn<QString>("pin");
    QTest::addColumn<QString>("puk");
    QTest::addColumn<QString>("masked");
    QTest::newRow("PIN") << u"pin"_s << u"Debe introducir el PIN"_s << u"7391"_s << QString()
                         << u"AT+CPIN=****"_s;
    QTest::newRow("PUK") << u"puk"_s << u"Debe introducir el código PUK y un nuevo PIN"_s
                         << u"4826"_s << u"97531864"_s << u"AT+CPIN=********,****"_s;
}

void TestModemCall::simThatWantsACodeGetsItAndTheCallGoesThrough()
{
    QFETCH(QString, sim);
    QFETCH(QString, need);
    QFETCH(QString, pin);
    QFETCH(QString, puk);
    QFETCH(QString, masked);
    ModemProgram run({u"--sim"_s, sim, u"--pin"_s, u"7391"_s, u"--puk"_s, u"97531864"_s});
    run.openModemTab();
    run.click("cmdComprobarPIN");
    QTRY_VERIFY_WITH_TIMEOUT(run.terminalText().contains(u"\n** %1\n"_s.arg(need)), patience);
    run.enterCodes(pin, puk);
    QTRY_VERIFY_WITH_TIMEOUT(
        run.terminalText().contains(u"\n** Código PIN/PUK enviado correctamente\n"_s), patience);
    run.click("cmdComprobarPIN");
    QTRY_VERIFY_WITH_TIMEOUT(run.terminalText().contains(u"\n** No se necesita código PIN\n"_s),
                             patience);
    // As sent, and as the modem echoed it.
    QCOMPARE(run.terminalText().count(masked), 2);
    QVERIFY(!run.terminalText().contains(pin));
    QVERIFY(puk.isEmpty() || !run.terminalText().contains(puk));
    QVERIFY(run.dialogs.boxes.isEmpty());

    run.closeSettings("cmdCambiar");
    run.choose("mnuConectar");
    QTRY_VERIFY_WITH_TIMEOUT(run.isEstablished(), patience);
}

void TestModemCall::refusedPinIsTold()
{
    ModemProgram run({u"--sim"_s, u"pin"_s, u"--pin"_s, u"7391"_s});
    run.openModemTab();
    run.enterCodes(u"2222"_s, QString());
    QTRY_COMPARE_WITH_TIMEOUT(run.dialogs.boxes.size(), 1, patience);
    QCOMPARE(run.dialogs.boxes.first().title, u"Error"_s);
    QCOMPARE(run.dialogs.boxes.first().text, u"El módem no acepta el código PIN/PUK"_s);
    QVERIFY(!run.terminalText().contains(u"2222"_s));
    QVERIFY(run.find<QPushButton>("cmdEnviarPIN").isEnabled());
}

void TestModemCall::scriptWithAFailingLineGoesOn()
{
    QTemporaryDir folder;
    QFile script(folder.filePath(u"prueba.mdm"_s));
    QVERIFY(script.open(QIODevice::WriteOnly));
    script.write("; Prueba\r\n\r\nATE0\r\nAT+FALLO\t+FALLO: 1\r\nAT+CREG?\t+CREG: 0,1\r\n");
    script.close();

    ModemProgram run;
    run.dialogs.paths = {script.fileName()};
    run.openModemTab();
    run.click("cmdExecutarScript");
    QVERIFY(!run.find<QPushButton>("cmdExecutarScript").isEnabled());
    QTRY_VERIFY_WITH_TIMEOUT(run.terminalText().contains(u"** Fin de archivo de comandos"_s),
                             patience);
    QCOMPARE(run.dialogs.fileRequests.size(), 1);
    QCOMPARE(run.dialogs.fileRequests.first().title,
             u"Seleccione un archivo de inicialización de módem"_s);
    const QStringList shown{
        u"** Inicio archivo de comandos"_s,
        u"; Prueba"_s,
        u"ATE0"_s,
        u"AT+FALLO"_s,
        u"ERROR"_s,
        u"** Respuesta incorrecta"_s,
        u"AT+CREG?"_s,
        u"+CREG: 0,1"_s,
        u"** Fin de archivo de comandos"_s,
    };
    qsizetype from = 0;
    for (const QString& text : shown) {
        const qsizetype found = run.terminalText().indexOf(text, from);
        QVERIFY2(found >= 0, qPrintable(text + u" is missing in:\n"_s + run.terminalText()));
        from = found + text.size();
    }
    QCOMPARE(run.terminalText().count(u"** Respuesta incorrecta"_s), 1);
    QVERIFY(run.find<QPushButton>("cmdExecutarScript").isEnabled());
    QVERIFY(run.dialogs.boxes.isEmpty());
}

void TestModemCall::terminalTypedByKeysTalksToTheModem()
{
    ModemProgram run({u"--signal"_s, u"17"_s});
    run.openModemTab();
    run.terminal().setFocus();
    QString shown;
    for (const QChar key : QStringView(u"at+csq")) {
        QTest::keyClick(&run.terminal(), Qt::Key_Left);
        QTest::keyClick(&run.terminal(), Qt::Key_Delete);
        QTest::keyClicks(&run.terminal(), key);
        // Once for the key and once for the modem's echo, without which the next would be too fast.
        shown += QString(2, key);
        QTRY_COMPARE_WITH_TIMEOUT(run.terminalText(), shown, patience);
    }
    QTest::keyClick(&run.terminal(), Qt::Key_Return);
    QTRY_COMPARE_WITH_TIMEOUT(run.terminalText(), shown + u"\n+CSQ: 17,0\n\nOK\n"_s, patience);
    QVERIFY(run.program.communications().isVisible());
    run.click("cmdBorrarTerminal");
    QCOMPARE(run.terminalText(), QString());
    run.click("cmdNivelSinal");
    QTRY_VERIFY_WITH_TIMEOUT(
        run.terminalText().contains(u"\n** Nivel de señal -79dBm [-113...-51]\n"_s), patience);
}

void TestModemCall::buttonsTellAPortThatIsNotThere()
{
    ModemProgram run;
    run.chooseAbsentPort();
    run.openModemTab();
    for (const char* button :
         {"cmdComprobarPIN", "cmdEnviarPIN", "cmdNivelSinal", "cmdExecutarScript"})
        run.click(button);
    QTest::keyClicks(&run.terminal(), u"a"_s);
    QCOMPARE(run.terminalText(), u"\n** No se ha podido abrir el puerto serie\n"_s.repeated(5));
    QVERIFY(run.dialogs.boxes.isEmpty());
    QVERIFY(run.dialogs.fileRequests.isEmpty());
    run.closeSettings("cmdCancelar");
}

void TestModemCall::cancelInMidCommandClosesThePorts()
{
    ModemProgram run({u"--modem-silent"_s});
    run.openModemTab();
    run.click("cmdNivelSinal");
    QVERIFY(run.modemPort().isOpen());
    QVERIFY(!run.find<QPushButton>("cmdCambiar").isEnabled());
    run.closeSettings("cmdCancelar");
    QVERIFY(!run.modemPort().isOpen());
    QVERIFY(!run.program.session().link().directPort().isOpen());
    QCOMPARE(run.program.session().link().state(), LinkState::Idle);

    run.clock.command(u"modem silent off"_s);
    run.choose("mnuConectar");
    QTRY_VERIFY_WITH_TIMEOUT(run.isEstablished(), patience);
    QVERIFY(run.dialogs.boxes.isEmpty());
}

QTEST_MAIN(TestModemCall)
#include "TestModemCall.moc"
