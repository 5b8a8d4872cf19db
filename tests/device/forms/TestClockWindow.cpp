#include "FakeDialogs.h"
#include "LinkFixture.h"
#include "TextoRestrinxido.h"
#include "frmSincronizacionReloxo.h"

#include <QAccessible>
#include <QClipboard>
#include <QGroupBox>
#include <QGuiApplication>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// A connected program with the window open.
struct Window : LinkFixture {
    explicit Window(const QByteArray& block = fullBlock())
    {
        area.resize(800, 600);
        area.show();
        globais.GeneralData = block;
        connect();
        form = new frmSincronizacionReloxo(area, crono, link, globais, log, dialogs, clock);
        form->showForm();
        area.activateWindow();
    }

    template<typename T>
    T* control(const QString& name) const
    {
        return form->findChild<T*>(name);
    }
    TextoRestrinxido* date() const { return control<TextoRestrinxido>(u"txtData"_s); }
    TextoRestrinxido* time() const { return control<TextoRestrinxido>(u"txtHora"_s); }
    QPushButton* button(const QString& name) const { return control<QPushButton>(name); }
    void click(const QString& name) const { QTest::mouseClick(button(name), Qt::LeftButton); }
    /// Types into a field from its first sub-field on.
    static void type(TextoRestrinxido* field, const QString& keys)
    {
        field->setFocus(Qt::TabFocusReason);
        QTest::keyClick(field, Qt::Key_Home);
        QTest::keyClicks(field, keys);
    }
    QList<bool> enabledButtons() const
    {
        return {button(u"cmdEnviar"_s)->isEnabled(), button(u"cmdPC"_s)->isEnabled(),
                button(u"cmdPechar"_s)->isEnabled()};
    }
    void refuseThreeTimes()
    {
        for (int attempt = 1; attempt <= 3; ++attempt) {
            tick();
            takeRequest();
            refuse(0x01);
        }
    }

    FakeDialogs dialogs;
    QMdiArea area;
    QPointer<frmSincronizacionReloxo> form;
};

QList<bool> allEnabled() { return {true, true, true}; }
QList<bool> allDisabled() { return {false, false, false}; }

} // namespace

class TestClockWindow : public QObject {
    Q_OBJECT
private slots:
    void controlsHaveTheirTexts_data();
    void controlsHaveTheirTexts();
    void captionsLeadToTheFields();
    void fieldsStartWithTheClocksDateAndTime();
    void nonsenseOfTheClockIsClamped_data();
    void nonsenseOfTheClockIsClamped();
    void clockThatToldNothingIsNoTrouble();
    void invalidDateIsRedAndCannotBeSent_data();
    void invalidDateIsRedAndCannotBeSent();
    void validDateGetsItsColourBack();
    void invalidDateIsToldInWords();
    void invalidStoredDateIsRedFromTheStart();
    void automaticSettingWorksWithAnInvalidDate();
    void manualButtonSendsWhatIsShown();
    void whatIsPastedIsSent();
    void whatAssistiveSoftwareSetsIsSent();
    void automaticButtonSendsTheComputersTime();
    void startDisablesTheButtons();
    void goodAnswerClosesTheWindow();
    void thirdFailureLeavesTheWindowOpenWithItsButtonsDisabled();
    void windowWithoutASettingLeavesTheTimerServiceAsleep();
    void dateMadeValidAfterTheThirdFailureCanBeSent();
    void cancelClosesWithoutSending();
    void closingFromTheTitleBarDropsTheAnswer();
    void endOfTheConnectionUnderTheBoxClosesTheWindow();
    void endOfTheConnectionClosesTheWindowWhileAnAnswerIsAwaited();
    void accessKeysStartASetting();
};

void TestClockWindow::controlsHaveTheirTexts_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("toolTip");
    QTest::newRow("txtData") << u"txtData"_s << u"Fecha:"_s
                             << u"Fecha para sincronismo \"manual\""_s;
    QTest::newRow("txtHora") << u"txtHora"_s << u"Hora:"_s << u"Hora para sincronismo \"manual\""_s;
    QTest::newRow("cmdEnviar")
        << u"cmdEnviar"_s << u"&Manual"_s
        << u"Envío de sincronismo \"manual\" de los valores visualizados de fecha y hora"_s;
    QTest::newRow("cmdPC")
        << u"cmdPC"_s << u"&Automático (PC)"_s
        << u"Enviar sincronismo \"automático\" con fecha y hora del reloj interno del ordenador"_s;
    QTest::newRow("cmdPechar") << u"cmdPechar"_s << u"&Cancelar"_s
                               << u"Cerrar la ventana sin realizar sincronismo"_s;
}

void TestClockWindow::controlsHaveTheirTexts()
{
    QFETCH(QString, name);
    QFETCH(QString, caption);
    QFETCH(QString, toolTip);
    const Window window;
    QCOMPARE(window.form->windowTitle(), u"Sincronización del Reloj"_s);
    QCOMPARE(window.control<QGroupBox>(u"Frame1"_s)->title(), u"Datos sincronismo manual"_s);
    const auto* control = window.control<QWidget>(name);
    QVERIFY(control);
    QCOMPARE(control->toolTip(), toolTip);
    QCOMPARE(control->accessibleDescription(), toolTip);
    const auto* button = qobject_cast<const QPushButton*>(control);
    QCOMPARE(button ? button->text() : control->accessibleName(), caption);
}

void TestClockWindow::captionsLeadToTheFields()
{
    const Window window;
    QMap<QString, QString> buddies;
    for (const QLabel* label : window.form->findChildren<QLabel*>())
        if (label->buddy())
            buddies.insert(label->text(), label->buddy()->objectName());
    QCOMPARE(buddies.value(u"&Fecha:"_s), u"txtData"_s);
    QCOMPARE(buddies.value(u"&Hora:"_s), u"txtHora"_s);
}

void TestClockWindow::fieldsStartWithTheClocksDateAndTime()
{
    QByteArray block(220, '\0');
    block.replace(5, 7, QByteArray::fromHex("03050906150b1a"));
    const Window window(block);
    QCOMPARE(window.date()->text(), u"21/11/2026"_s);
    QCOMPARE(window.time()->text(), u"09:05:03"_s);
    QCOMPARE(window.enabledButtons(), allEnabled());
}

void TestClockWindow::nonsenseOfTheClockIsClamped_data()
{
    // Seconds, minutes, hours, weekday, day, month, year.
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("date");
    QTest::addColumn<QString>("time");
    QTest::newRow("month 0") << QByteArray("00000001010013") << u"01/01/2019"_s << u"00:00:00"_s;
    QTest::newRow("day 45") << QByteArray("000000012d0113") << u"31/01/2019"_s << u"00:00:00"_s;
    QTest::newRow("hour 200") << QByteArray("0000c801010113") << u"01/01/2019"_s << u"23:00:00"_s;
    QTest::newRow("year 255") << QByteArray("000000010101ff") << u"01/01/2155"_s << u"00:00:00"_s;
    QTest::newRow("all 255") << QByteArray("ffffffffffffff") << u"31/12/2155"_s << u"23:59:59"_s;
}

void TestClockWindow::nonsenseOfTheClockIsClamped()
{
    QFETCH(QByteArray, bytes);
    QByteArray block(220, '\0');
    block.replace(5, 7, QByteArray::fromHex(bytes));
    const Window window(block);
    QTEST(window.date()->text(), "date");
    QTEST(window.time()->text(), "time");
}

void TestClockWindow::clockThatToldNothingIsNoTrouble()
{
    const Window window{QByteArray()};
    QCOMPARE(window.date()->text(), u"01/01/2000"_s);
    QCOMPARE(window.time()->text(), u"00:00:00"_s);
}

void TestClockWindow::invalidDateIsRedAndCannotBeSent_data()
{
    QTest::addColumn<QString>("date");
    QTest::addColumn<bool>("valid");
    QTest::newRow("29/02/2000") << u"29/02/2000"_s << true;
    QTest::newRow("29/02/2100") << u"29/02/2100"_s << false;
    QTest::newRow("29/02/2400") << u"29/02/2400"_s << false;
    QTest::newRow("29/02/2500") << u"29/02/2500"_s << true;
    QTest::newRow("29/02/2019") << u"29/02/2019"_s << false;
    QTest::newRow("30/02/2020") << u"30/02/2020"_s << false;
    for (const int month : {1, 3, 5, 7, 8, 10, 12})
        QTest::addRow("31 of month %d", month)
            << u"31/%1/2019"_s.arg(month, 2, 10, QChar(u'0')) << true;
    for (const int month : {2, 4, 6, 9, 11})
        QTest::addRow("31 of month %d", month)
            << u"31/%1/2019"_s.arg(month, 2, 10, QChar(u'0')) << false;
}

void TestClockWindow::invalidDateIsRedAndCannotBeSent()
{
    QFETCH(QString, date);
    QFETCH(bool, valid);
    const Window window;
    const QColor usual = window.time()->textColour();
    Window::type(window.date(), date);
    QCOMPARE(window.date()->text(), date);
    QCOMPARE(window.date()->textColour(), valid ? usual : QColor(255, 0, 0));
    QCOMPARE(window.enabledButtons(), QList<bool>({valid, true, true}));
}

void TestClockWindow::validDateGetsItsColourBack()
{
    const Window window;
    const QColor usual = window.date()->textColour();
    Window::type(window.date(), u"31/04/2019"_s);
    QVERIFY(window.date()->textColour() != usual);
    QTest::keyClick(window.date(), Qt::Key_Home);
    QTest::keyClick(window.date(), Qt::Key_Down);
    QCOMPARE(window.date()->text(), u"30/04/2019"_s);
    QCOMPARE(window.date()->textColour(), usual);
    QCOMPARE(window.enabledButtons(), allEnabled());
}

void TestClockWindow::invalidDateIsToldInWords()
{
    const Window window;
    Window::type(window.date(), u"31/04/2019"_s);
    QCOMPARE(window.date()->accessibleName(), u"Fecha no válida:"_s);
    QTest::keyClick(window.date(), Qt::Key_Home);
    QTest::keyClick(window.date(), Qt::Key_Down);
    QCOMPARE(window.date()->accessibleName(), u"Fecha:"_s);
}

void TestClockWindow::invalidStoredDateIsRedFromTheStart()
{
    QByteArray block(220, '\0');
    block.replace(5, 7, QByteArray::fromHex("00000001ff0213"));
    const Window window(block);
    QCOMPARE(window.date()->text(), u"31/02/2019"_s);
    QCOMPARE(window.date()->textColour(), QColor(255, 0, 0));
    QCOMPARE(window.enabledButtons(), QList<bool>({false, true, true}));
}

void TestClockWindow::automaticSettingWorksWithAnInvalidDate()
{
    Window window;
    Window::type(window.date(), u"30/02/2019"_s);
    window.click(u"cmdPC"_s);
    window.tick();
    // 21-11-26 09:05:03, the computer's.
    QCOMPARE(window.takeRequestBody().toHex(), QByteArray("01030509150b1a"));
}

void TestClockWindow::manualButtonSendsWhatIsShown()
{
    Window window;
    Window::type(window.date(), u"29/02/2500"_s);
    Window::type(window.time(), u"23:59:58"_s);
    window.click(u"cmdEnviar"_s);
    QVERIFY(!window.hasRequest());
    window.tick();
    QCOMPARE(window.requestCode(), quint8(105));
    QCOMPARE(window.takeRequestBody().toHex(), QByteArray("013a3b171d0200"));
}

void TestClockWindow::whatIsPastedIsSent()
{
    Window window;
    window.date()->setFocus();
    QGuiApplication::clipboard()->setText(u"el 5/3/2019"_s);
    QTest::keyClick(window.date(), Qt::Key_V, Qt::ControlModifier);
    window.click(u"cmdEnviar"_s);
    window.tick();
    QCOMPARE(window.takeRequestBody().toHex(), QByteArray("01030509050313"));
}

void TestClockWindow::whatAssistiveSoftwareSetsIsSent()
{
    Window window;
    QAccessibleInterface* date = QAccessible::queryAccessibleInterface(window.date());
    QAccessibleInterface* time = QAccessible::queryAccessibleInterface(window.time());
    date->editableTextInterface()->replaceText(0, 10, u"29/02/2500"_s);
    time->editableTextInterface()->replaceText(0, 8, u"07:30:59"_s);
    window.click(u"cmdEnviar"_s);
    window.tick();
    QCOMPARE(window.takeRequestBody().toHex(), QByteArray("013b1e071d0200"));
}

void TestClockWindow::automaticButtonSendsTheComputersTime()
{
    Window window;
    window.click(u"cmdPC"_s);
    window.clock.time = QDateTime(QDate(2100, 12, 31), QTime(0, 0, 1));
    window.tick();
    QCOMPARE(window.takeRequestBody().toHex(), QByteArray("010100001f0c00"));
}

void TestClockWindow::startDisablesTheButtons()
{
    const Window manual;
    manual.click(u"cmdEnviar"_s);
    QCOMPARE(manual.enabledButtons(), allDisabled());
    const Window automatic;
    automatic.click(u"cmdPC"_s);
    QCOMPARE(automatic.enabledButtons(), allDisabled());
}

void TestClockWindow::goodAnswerClosesTheWindow()
{
    Window window;
    QSignalSpy unloaded(window.form.data(), &MdiForm::unloaded);
    window.click(u"cmdEnviar"_s);
    window.tick();
    window.takeRequest();
    window.answerHex("0100");
    QCOMPARE(unloaded.count(), 1);
    Window::deleteWhatIsDue();
    QVERIFY(window.form.isNull());
    QVERIFY(window.area.subWindowList().isEmpty());
    QCOMPARE(window.log.lines, QStringList{u"Reloj del equipo actualizado en fecha y hora"_s});
}

void TestClockWindow::thirdFailureLeavesTheWindowOpenWithItsButtonsDisabled()
{
    Window window;
    window.click(u"cmdEnviar"_s);
    window.refuseThreeTimes();
    QCOMPARE(window.dialogs.boxes.size(), 1);
    const FakeDialogs::Box& box = window.dialogs.boxes.first();
    QCOMPARE(box.icon, Dialogs::Icon::Critical);
    QVERIFY(!box.question);
    QCOMPARE(box.title, u"Control Equipo HCT"_s);
    QCOMPARE(box.text, u"No se han podido actualizar la fecha y la hora en el equipo.\n"
                       "Compruebe que no se ha interrumpido la comunicación y si lo\n"
                       "desea inténtelo de nuevo."_s);
    QVERIFY(window.form && window.form->isFormVisible());
    QCOMPARE(window.enabledButtons(), allDisabled());
    QVERIFY(window.form->closeWindow(MdiForm::CloseReason::Operator));
}

void TestClockWindow::windowWithoutASettingLeavesTheTimerServiceAsleep()
{
    Window window;
    QCOMPARE(window.wakeUps(100), 0);
    window.click(u"cmdEnviar"_s);
    window.refuseThreeTimes();
    QCOMPARE(window.wakeUps(100), 0);
}

void TestClockWindow::dateMadeValidAfterTheThirdFailureCanBeSent()
{
    Window window;
    window.click(u"cmdEnviar"_s);
    window.refuseThreeTimes();
    Window::type(window.date(), u"31/04/2019"_s);
    QCOMPARE(window.enabledButtons(), allDisabled());
    Window::type(window.date(), u"30/04/2019"_s);
    QCOMPARE(window.enabledButtons(), QList<bool>({true, false, false}));
    window.click(u"cmdEnviar"_s);
    window.tick();
    QCOMPARE(window.takeRequestBody().toHex(), QByteArray("010305091e0413"));
}

void TestClockWindow::cancelClosesWithoutSending()
{
    Window window;
    window.click(u"cmdPechar"_s);
    window.tick(3);
    QVERIFY(!window.hasRequest());
    Window::deleteWhatIsDue();
    QVERIFY(window.form.isNull());
}

void TestClockWindow::closingFromTheTitleBarDropsTheAnswer()
{
    Window window;
    window.click(u"cmdEnviar"_s);
    window.tick();
    window.takeRequest();
    window.area.subWindowList().constFirst()->close();
    Window::deleteWhatIsDue();
    QVERIFY(window.form.isNull());
    window.answerHex("0100");
    QVERIFY(window.log.lines.isEmpty());
    QVERIFY(!window.link.Ocupado());
}

void TestClockWindow::endOfTheConnectionUnderTheBoxClosesTheWindow()
{
    Window window;
    bool goneUnderTheBox = false;
    window.dialogs.whileUp = [&] {
        window.crono.setTimerEnabled(false);
        window.form->closeWindow(MdiForm::CloseReason::Code);
        window.link.RemataConexion();
        Window::deleteWhatIsDue();
        goneUnderTheBox = window.form.isNull();
    };
    window.click(u"cmdEnviar"_s);
    window.refuseThreeTimes();
    QVERIFY(goneUnderTheBox);
    QCOMPARE(window.log.lines, QStringList{u"Error intentando puesta en hora del equipo"_s});
    QVERIFY(!window.link.Ocupado());
}

void TestClockWindow::endOfTheConnectionClosesTheWindowWhileAnAnswerIsAwaited()
{
    Window window;
    window.click(u"cmdEnviar"_s);
    window.tick();
    window.form->closeWindow(MdiForm::CloseReason::Code);
    window.link.RemataConexion();
    window.answerHex("0100");
    Window::deleteWhatIsDue();
    QVERIFY(window.form.isNull());
    QVERIFY(window.log.lines.isEmpty());
}

void TestClockWindow::accessKeysStartASetting()
{
    Window window;
    QVERIFY(QTest::qWaitForWindowActive(&window.area));
    QTest::keyClick(&window.area, Qt::Key_H, Qt::AltModifier);
    QVERIFY(window.time()->hasFocus());
    QTest::keyClick(window.time(), Qt::Key_F, Qt::AltModifier);
    QVERIFY(window.date()->hasFocus());
    QTest::keyClick(window.date(), Qt::Key_M, Qt::AltModifier);
    QTRY_COMPARE(window.enabledButtons(), allDisabled());
}

QTEST_MAIN(TestClockWindow)
#include "TestClockWindow.moc"
