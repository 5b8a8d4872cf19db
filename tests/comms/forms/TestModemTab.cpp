#include "FormFixture.h"

#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>

using namespace Qt::StringLiterals;

class TestModemTab : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void captionsAreThoseOfTheDesign();
    void buttonsOfTheModemHaveNoToolTips_data();
    void buttonsOfTheModemHaveNoToolTips();
    void checkPinButtonAsksTheModem();
    void signalButtonAsksTheModem();
    void scriptButtonAsksForAFile();
    void accessKeyOfTheScriptsIsNotTheTabs();
    void buttonsAndAcceptAreDisabledWhileACommandRuns();
    void pressedButtonHasTheFocusAgainAfterItsCommand();
    void focusThatTheOperatorMovedStays();
    void cancelEnablesTheButtonsAgain();
    void cancelGivesTheModemPortBack();
    void deniedPortIsToldAndShownInTheChannelList();

    void pinDialogSendsThePin();
    void cancelledPinDialogSendsNothing();
    void pinDialogIsNotShownWithoutAPort();
    void pinNeverAppearsInTheTerminal();

    void typedKeysGoToTheModem();
    void keysThatWouldEditAreSwallowed_data();
    void keysThatWouldEditAreSwallowed();
    void characterOfTheThirdLevelGoesToTheModem();
    void accessKeyInTheTerminalIsTheDialogs();
    void pasteSendsNothing();
    void tabKeyLeavesTheTerminal();
    void escapeInTheTerminalCancels();
    void clearButtonEmptiesTheTerminal();
    void terminalStaysBounded();
    void controlCharactersAreNotShown();

private:
    QPlainTextEdit& terminal() { return m_form->find<QPlainTextEdit>(u"txtRexistro"_s); }
    QPushButton& button(const QString& name) { return m_form->find<QPushButton>(name); }
    void click(const QString& name) { QTest::mouseClick(&button(name), Qt::LeftButton); }
    QDialog* pinDialog() { return m_form->form->findChild<QDialog*>(u"frmPINPUK"_s); }

    std::unique_ptr<FormFixture> m_form;
};

void TestModemTab::init()
{
    m_form = std::make_unique<FormFixture>();
    m_form->show();
    m_form->find<QTabWidget>(u"tabOpcions"_s).setCurrentIndex(1);
}

void TestModemTab::cleanup() { m_form.reset(); }

void TestModemTab::captionsAreThoseOfTheDesign()
{
    QCOMPARE(button(u"cmdComprobarPIN"_s).text(), u"Com&probar PIN"_s);
    QCOMPARE(button(u"cmdEnviarPIN"_s).text(), u"&Enviar PIN..."_s);
    QCOMPARE(button(u"cmdExecutarScript"_s).text(), u"Archiv&o..."_s);
    QCOMPARE(button(u"cmdNivelSinal"_s).text(), u"&Nivel señal"_s);
    QCOMPARE(button(u"cmdBorrarTerminal"_s).text(), u"&Borrar terminal"_s);
    const auto* page = m_form->find<QTabWidget>(u"tabOpcions"_s).widget(1);
    QCOMPARE(page->findChild<QGroupBox*>()->title(), u"Mini Terminal"_s);
    QCOMPARE(terminal().accessibleName(), u"Mini Terminal"_s);
}

void TestModemTab::buttonsOfTheModemHaveNoToolTips_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("description");
    QTest::newRow("check PIN") << u"cmdComprobarPIN"_s
                               << u"Pregunta al módem si la tarjeta SIM necesita un código"_s;
    QTest::newRow("send PIN") << u"cmdEnviarPIN"_s
                              << u"Envía al módem el código PIN, o el código PUK y un nuevo PIN"_s;
    QTest::newRow("signal") << u"cmdNivelSinal"_s
                            << u"Pregunta al módem el nivel de la señal que recibe"_s;
    QTest::newRow("script") << u"cmdExecutarScript"_s
                            << u"Envía al módem los comandos de un archivo"_s;
    QTest::newRow("clear") << u"cmdBorrarTerminal"_s << QString();
}

void TestModemTab::buttonsOfTheModemHaveNoToolTips()
{
    QFETCH(QString, name);
    QCOMPARE(button(name).toolTip(), QString());
    QTEST(button(name).accessibleDescription(), "description");
}

void TestModemTab::checkPinButtonAsksTheModem()
{
    QTest::keyClick(m_form->form.get(), Qt::Key_P, Qt::AltModifier);
    QTRY_COMPARE(m_form->link.state(), LinkState::PinQuery);
    QCOMPARE(m_form->takeCommand(), QByteArray("AT+CPIN?\r\n"));
    m_form->reply("\r\n+CPIN: SIM PIN\r\n\r\nOK\r\n");
    QVERIFY(terminal().toPlainText().contains(u"\n** Debe introducir el PIN\n"));
}

void TestModemTab::signalButtonAsksTheModem()
{
    click(u"cmdNivelSinal"_s);
    QCOMPARE(m_form->takeCommand(), QByteArray("AT+CSQ\r\n"));
    m_form->reply("\r\n+CSQ: 20,0\r\nOK\r\n");
    QVERIFY(terminal().toPlainText().contains(u"** Nivel de señal -73dBm [-113...-51]"));
}

void TestModemTab::scriptButtonAsksForAFile()
{
    click(u"cmdExecutarScript"_s);
    QCOMPARE(m_form->dialogs.fileRequests.size(), 1);
}

void TestModemTab::accessKeyOfTheScriptsIsNotTheTabs()
{
    QTest::keyClick(m_form->form.get(), Qt::Key_O, Qt::AltModifier);
    QCOMPARE(m_form->dialogs.fileRequests.size(), 1);
    QTest::keyClick(m_form->form.get(), Qt::Key_O, Qt::AltModifier);
    QCOMPARE(m_form->dialogs.fileRequests.size(), 2);
}

void TestModemTab::buttonsAndAcceptAreDisabledWhileACommandRuns()
{
    const QStringList names{u"cmdComprobarPIN"_s, u"cmdEnviarPIN"_s, u"cmdExecutarScript"_s,
                            u"cmdNivelSinal"_s, u"cmdCambiar"_s};
    click(u"cmdNivelSinal"_s);
    for (const QString& name : names)
        QVERIFY(!button(name).isEnabled());
    QVERIFY(button(u"cmdCancelar"_s).isEnabled());
    m_form->reply("\r\n+CSQ: 20,0\r\nOK\r\n");
    for (const QString& name : names)
        QVERIFY(button(name).isEnabled());
}

void TestModemTab::pressedButtonHasTheFocusAgainAfterItsCommand()
{
    button(u"cmdNivelSinal"_s).setFocus();
    QTest::keyClick(&button(u"cmdNivelSinal"_s), Qt::Key_Space);
    QCOMPARE(m_form->takeCommand(), QByteArray("AT+CSQ\r\n"));
    QVERIFY(!button(u"cmdNivelSinal"_s).hasFocus());
    m_form->reply("\r\n+CSQ: 20,0\r\nOK\r\n");
    QVERIFY(button(u"cmdNivelSinal"_s).hasFocus());
}

void TestModemTab::focusThatTheOperatorMovedStays()
{
    button(u"cmdNivelSinal"_s).setFocus();
    QTest::keyClick(&button(u"cmdNivelSinal"_s), Qt::Key_Space);
    button(u"cmdCancelar"_s).setFocus();
    m_form->reply("\r\n+CSQ: 20,0\r\nOK\r\n");
    QVERIFY(button(u"cmdCancelar"_s).hasFocus());
}

void TestModemTab::cancelEnablesTheButtonsAgain()
{
    click(u"cmdNivelSinal"_s);
    click(u"cmdCancelar"_s);
    QVERIFY(!m_form->form->isVisible());
    QVERIFY(button(u"cmdNivelSinal"_s).isEnabled());
    QVERIFY(button(u"cmdCambiar"_s).isEnabled());
    QCOMPARE(m_form->link.state(), LinkState::Idle);
    QVERIFY(!m_form->tmrTemporizador.isEnabled());
}

void TestModemTab::cancelGivesTheModemPortBack()
{
    click(u"cmdNivelSinal"_s);
    QVERIFY(m_form->modem.isOpen());
    click(u"cmdCancelar"_s);
    QVERIFY(!m_form->modem.isOpen());
    QVERIFY(!m_form->serie.isOpen());
    m_form->serie.open();
    m_form->link.ApplySettings();
    QVERIFY(m_form->serie.isOpen());
    QVERIFY(!m_form->modem.isOpen());
}

void TestModemTab::deniedPortIsToldAndShownInTheChannelList()
{
    m_form->modem.refusal = u"Permiso denegado"_s;
    click(u"cmdComprobarPIN"_s);
    QCOMPARE(terminal().toPlainText(), u"\n** No se ha podido abrir el puerto serie\n"_s);
    QCOMPARE(m_form->find<QComboBox>(u"cbbCanal2"_s).itemData(0, Qt::ToolTipRole).toString(),
             u"Permiso denegado"_s);
}

void TestModemTab::pinDialogSendsThePin()
{
    click(u"cmdEnviarPIN"_s);
    QDialog* dialog = pinDialog();
    QVERIFY(dialog && dialog->isModal());
    QTest::keyClicks(dialog->findChild<QLineEdit*>(u"txtPIN"_s), u"1234"_s);
    QTest::mouseClick(dialog->findChild<QPushButton*>(u"cmdAceptar"_s), Qt::LeftButton);
    QCOMPARE(m_form->takeCommand(), QByteArray("AT+CPIN=1234\r\n"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!pinDialog());
    m_form->reply("\r\nOK\r\n");
    QVERIFY(terminal().toPlainText().contains(u"** Código PIN/PUK enviado correctamente"));
}

void TestModemTab::cancelledPinDialogSendsNothing()
{
    click(u"cmdEnviarPIN"_s);
    QTest::keyClicks(pinDialog()->findChild<QLineEdit*>(u"txtPIN"_s), u"1234"_s);
    pinDialog()->close();
    QVERIFY(m_form->takeCommand().isEmpty());
    QCOMPARE(m_form->link.state(), LinkState::Idle);
    QVERIFY(button(u"cmdEnviarPIN"_s).isEnabled());
}

void TestModemTab::pinDialogIsNotShownWithoutAPort()
{
    m_form->modem.refusal = u"Permiso denegado"_s;
    click(u"cmdEnviarPIN"_s);
    QVERIFY(!pinDialog());
    QCOMPARE(terminal().toPlainText(), u"\n** No se ha podido abrir el puerto serie\n"_s);
}

void TestModemTab::pinNeverAppearsInTheTerminal()
{
    click(u"cmdEnviarPIN"_s);
    QTest::keyClicks(pinDialog()->findChild<QLineEdit*>(u"txtPIN"_s), u"7391"_s);
    pinDialog()->accept();
    m_form->modem.arriveBytewise("AT+CPIN=7391\r\r\n+CME ERROR: 16\r\n");
    QVERIFY(!terminal().toPlainText().contains(u"7391"));
    QVERIFY(terminal().toPlainText().contains(u"AT+CPIN=****"));
}

void TestModemTab::typedKeysGoToTheModem()
{
    QTest::keyClicks(&terminal(), u"ATi"_s);
    QTest::keyClick(&terminal(), Qt::Key_Return);
    QCOMPARE(m_form->takeCommand(), QByteArray("ATi\r"));
    QCOMPARE(terminal().toPlainText(), u"ATi"_s);
    QVERIFY(m_form->form->isVisible());
    m_form->reply("\r\nOK\r\n");
    QCOMPARE(terminal().toPlainText(), u"ATi\nOK\n"_s);
}

void TestModemTab::keysThatWouldEditAreSwallowed_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QByteArray>("sent");
    QTest::newRow("Left") << int(Qt::Key_Left) << QByteArray();
    QTest::newRow("Right") << int(Qt::Key_Right) << QByteArray();
    QTest::newRow("Up") << int(Qt::Key_Up) << QByteArray();
    QTest::newRow("Down") << int(Qt::Key_Down) << QByteArray();
    QTest::newRow("Clear") << int(Qt::Key_Clear) << QByteArray();
    QTest::newRow("Delete") << int(Qt::Key_Delete) << QByteArray();
    // The modem takes back its last character; the text stays.
    QTest::newRow("Backspace") << int(Qt::Key_Backspace) << QByteArray("\b");
}

void TestModemTab::keysThatWouldEditAreSwallowed()
{
    QFETCH(int, key);
    QTest::keyClicks(&terminal(), u"AT"_s);
    m_form->takeCommand();
    QTest::keyClick(&terminal(), Qt::Key(key));
    QTEST(m_form->takeCommand(), "sent");
    QCOMPARE(terminal().toPlainText(), u"AT"_s);
    QTest::keyClicks(&terminal(), u"Z"_s);
    QCOMPARE(terminal().toPlainText(), u"ATZ"_s);
}

void TestModemTab::characterOfTheThirdLevelGoesToTheModem()
{
    QTest::sendKeyEvent(QTest::Click, &terminal(), Qt::Key_NumberSign, u"#"_s,
                        Qt::ControlModifier | Qt::AltModifier);
    QCOMPARE(m_form->takeCommand(), QByteArray("#"));
    QCOMPARE(terminal().toPlainText(), u"#"_s);
}

void TestModemTab::accessKeyInTheTerminalIsTheDialogs()
{
    terminal().setFocus();
    QTest::keyClick(&terminal(), Qt::Key_N, Qt::AltModifier);
    QTRY_COMPARE(m_form->link.state(), LinkState::SignalQuery);
    QCOMPARE(m_form->takeCommand(), QByteArray("AT+CSQ\r\n"));
}

void TestModemTab::pasteSendsNothing()
{
    QTest::keySequence(&terminal(), QKeySequence::Paste);
    QVERIFY(m_form->takeCommand().isEmpty());
    QCOMPARE(terminal().toPlainText(), QString());
}

void TestModemTab::tabKeyLeavesTheTerminal()
{
    terminal().setFocus();
    QTest::keyClick(&terminal(), Qt::Key_Tab);
    QVERIFY(!terminal().hasFocus());
    QVERIFY(m_form->takeCommand().isEmpty());
}

void TestModemTab::escapeInTheTerminalCancels()
{
    QTest::keyClick(&terminal(), Qt::Key_Escape);
    QVERIFY(!m_form->form->isVisible());
    QVERIFY(m_form->takeCommand().isEmpty());
}

void TestModemTab::clearButtonEmptiesTheTerminal()
{
    QTest::keyClicks(&terminal(), u"AT"_s);
    click(u"cmdBorrarTerminal"_s);
    QCOMPARE(terminal().toPlainText(), QString());
}

void TestModemTab::terminalStaysBounded()
{
    QVERIFY(m_form->control.ensureModemPort());
    m_form->modem.setReceiveThreshold(1);
    for (int i = 0; i < 100; ++i)
        m_form->reply(QByteArray(999, 'x') + "\n");
    m_form->reply("end");
    QVERIFY(terminal().toPlainText().size() <= 65536);
    QVERIFY(terminal().toPlainText().size() > 65000);
    QVERIFY(terminal().toPlainText().endsWith(u"x\nend"));
    for (int i = 0; i < 100; ++i)
        m_form->reply(QByteArray(1000, 'y'));
    QVERIFY(terminal().toPlainText().size() <= 65536);
    QVERIFY(terminal().toPlainText().endsWith(u'\n' + QString(675, u'y')));
}

void TestModemTab::controlCharactersAreNotShown()
{
    QVERIFY(m_form->control.ensureModemPort());
    m_form->modem.setReceiveThreshold(1);
    m_form->reply(QByteArray("a\0\x01\x1B[0m\x7F\r\n\xF1", 11));
    QCOMPARE(terminal().toPlainText(), u"a[0m\nñ"_s);
}

QTEST_MAIN(TestModemTab)
#include "TestModemTab.moc"
