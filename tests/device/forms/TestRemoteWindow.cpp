#include "CoverLabel.h"
#include "LinkFixture.h"
#include "RoundLamp.h"
#include "Switch.h"
#include "Wheel.h"
#include "frmTelemando.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr quint32 green = 0x00FF00;
constexpr quint32 darkGreen = 0x008000;

QByteArray blockWithFlags(int flags)
{
    QByteArray block = LinkFixture::fullBlock();
    block[219] = static_cast<char>(flags);
    return block;
}

/// A connected program with the window open.
struct Window : LinkFixture {
    explicit Window(int flags)
    {
        area.resize(800, 600);
        area.show();
        area.activateWindow();
        globais.GeneralData = blockWithFlags(flags);
        connect();
        form = new frmTelemandoHCT7200(area, crono, link, globais);
        form->showForm();
    }

    template<typename T>
    T* control(const QString& name, int index) const
    {
        return form->findChild<T*>(u"%1(%2)"_s.arg(name).arg(index));
    }
    Switch* sldInterruptor(int index) const { return control<Switch>(u"sldInterruptor"_s, index); }
    QCheckBox* chkAutomatico() const { return form->findChild<QCheckBox*>(u"chkAutomatico"_s); }
    void clickCover(int index) const
    {
        QTest::mouseClick(control<CoverLabel>(u"lblTapa"_s, index), Qt::LeftButton);
    }
    /// Clicks the widget that is on top at the centre of the switch.
    void clickOnSwitch(int index) const
    {
        const Switch* target = sldInterruptor(index);
        const QPoint middle = target->geometry().center();
        QWidget* hit = target->parentWidget()->childAt(middle);
        QTest::mouseClick(hit, Qt::LeftButton, Qt::NoModifier,
                          hit->mapFrom(target->parentWidget(), middle));
    }
    QList<int> positions() const
    {
        return {sldInterruptor(0)->value(), sldInterruptor(1)->value(), sldInterruptor(2)->value()};
    }
    QList<quint32> fills() const
    {
        QList<quint32> all;
        for (int i = 0; i < 3; ++i)
            all.append(control<RoundLamp>(u"shpSaida"_s, i)->fill());
        return all;
    }
    QByteArray next()
    {
        tick(3);
        return takeRequest().text();
    }

    QMdiArea area;
    QPointer<frmTelemando> form;
};

constexpr int automatic = 0x00;
constexpr int manual = 0x04;

} // namespace

class TestRemoteWindow : public QObject {
    Q_OBJECT
private slots:
    void captionNamesTheModel();
    void windowAsksAtEveryThirdTick();
    void framesAreCaptionedFromTopToBottom();
    void framesAreFilledBottomUp();
    void positionZeroIsTheUpperEnd();
    void flag04ShowsTheBoxUncheckedAndTheSwitchesOperable();
    void otherFlagsShowTheBoxCheckedAndTheSwitchesLocked();
    void absentBlockCountsAsAutomatic();
    void state05ShowsAvisos3And1DarkAtZeroAndAvisos2GreenAtOne();
    void lampsShowTheOppositeOfTheStatusBlock();
    void clickOnTheCoverTogglesTheSwitch();
    void clickLandsOnTheCover();
    void keyboardDoesWhatAClickDoes_data();
    void keyboardDoesWhatAClickDoes();
    void accessKeyLeadsToTheSwitchOfItsFrame();
    void nothingMovesASwitchInAutomaticMode();
    void wheelMovesNoSwitch();
    void tickingTheBoxHandsTheOutputsBack();
    void untickingTheBoxTakesTheOutputs();
    void lockFollowsTheBox();
    void failedAnswersLeaveLampsAndSwitchesAlone();
    void controlsTellTheirStateInWords();
    void closeButtonUnloads();
    void endOfTheConnectionClosesTheWindowWhileAnAnswerIsAwaited();
};

void TestRemoteWindow::captionNamesTheModel()
{
    LinkFixture fixture;
    QMdiArea area;
    const frmTelemandoHCT7200* first =
        new frmTelemandoHCT7200(area, fixture.crono, fixture.link, fixture.globais);
    const frmTelemandoHCT7300* second =
        new frmTelemandoHCT7300(area, fixture.crono, fixture.link, fixture.globais);
    QCOMPARE(first->windowTitle(), u"Telemando HCT-7200"_s);
    QCOMPARE(second->windowTitle(), u"Telemando HCT-7300"_s);
    QCOMPARE(first->objectName(), u"frmTelemandoHCT7200"_s);
    QCOMPARE(second->objectName(), u"frmTelemandoHCT7300"_s);
}

void TestRemoteWindow::windowAsksAtEveryThirdTick()
{
    Window window(automatic);
    for (int round = 0; round < 2; ++round) {
        window.tick(2);
        QVERIFY(!window.hasRequest());
        window.tick(1);
        QVERIFY(window.hasRequest());
        window.takeRequest();
        window.answerHex("ca07");
    }
}

void TestRemoteWindow::framesAreCaptionedFromTopToBottom()
{
    const Window window(automatic);
    int lowest = -1;
    for (int i = 0; i < 3; ++i) {
        const auto* frame = window.control<QGroupBox>(u"fraSaida"_s, i);
        QCOMPARE(frame->title(), u"Avisos &%1"_s.arg(i + 1));
        QVERIFY(frame->y() > lowest);
        lowest = frame->y();
    }
}

void TestRemoteWindow::framesAreFilledBottomUp()
{
    const Window window(automatic);
    for (int i = 0; i < 3; ++i) {
        const auto* frame = window.control<QGroupBox>(u"fraSaida"_s, 2 - i);
        QCOMPARE(window.sldInterruptor(i)->parentWidget(), frame);
        QCOMPARE(window.control<CoverLabel>(u"lblTapa"_s, i)->parentWidget(), frame);
        QCOMPARE(window.control<RoundLamp>(u"shpSaida"_s, i)->parentWidget(), frame);
    }
}

void TestRemoteWindow::positionZeroIsTheUpperEnd()
{
    const Window window(automatic);
    const auto* lblOFF = window.control<QLabel>(u"lblOFF"_s, 1);
    const auto* lblON = window.control<QLabel>(u"lblON"_s, 1);
    QCOMPARE(lblOFF->text(), u"0"_s);
    QCOMPARE(lblON->text(), u"1"_s);
    QVERIFY(lblOFF->y() < lblON->y());
    // The bright knob is in the upper half.
    const QImage image = window.sldInterruptor(1)->grab().toImage();
    const QColor upper = image.pixelColor(image.width() / 2, image.height() / 4);
    const QColor lower = image.pixelColor(image.width() / 2, image.height() * 3 / 4);
    QVERIFY(upper.lightness() > lower.lightness());
}

void TestRemoteWindow::flag04ShowsTheBoxUncheckedAndTheSwitchesOperable()
{
    const Window window(0x04);
    QVERIFY(!window.chkAutomatico()->isChecked());
    QCOMPARE(window.chkAutomatico()->text(), u"&Modo automático"_s);
    for (int i = 0; i < 3; ++i)
        QVERIFY(window.sldInterruptor(i)->isEnabled());
}

void TestRemoteWindow::otherFlagsShowTheBoxCheckedAndTheSwitchesLocked()
{
    const Window window(0xFB);
    QVERIFY(window.chkAutomatico()->isChecked());
    for (int i = 0; i < 3; ++i)
        QVERIFY(!window.sldInterruptor(i)->isEnabled());
}

void TestRemoteWindow::absentBlockCountsAsAutomatic()
{
    LinkFixture fixture;
    QMdiArea area;
    const auto* form = new frmTelemandoHCT7300(area, fixture.crono, fixture.link, fixture.globais);
    QVERIFY(form->findChild<QCheckBox*>(u"chkAutomatico"_s)->isChecked());
}

void TestRemoteWindow::state05ShowsAvisos3And1DarkAtZeroAndAvisos2GreenAtOne()
{
    Window window(automatic);
    QCOMPARE(window.next(), QByteArray("137 ca00"));
    window.answerHex("ca05");
    QCOMPARE(window.fills(), QList<quint32>({darkGreen, green, darkGreen}));
    QCOMPARE(window.positions(), QList<int>({0, 1, 0}));
}

void TestRemoteWindow::lampsShowTheOppositeOfTheStatusBlock()
{
    Window window(automatic);
    window.next();
    window.answerHex("ca00");
    QCOMPARE(window.fills(), QList<quint32>({green, green, green}));
    window.next();
    window.answerHex("ca07");
    QCOMPARE(window.fills(), QList<quint32>({darkGreen, darkGreen, darkGreen}));
}

void TestRemoteWindow::clickOnTheCoverTogglesTheSwitch()
{
    Window window(manual);
    window.next();
    window.answerHex("ca07");
    window.clickCover(2);
    QCOMPARE(window.positions(), QList<int>({0, 0, 1}));
    QCOMPARE(window.next(), QByteArray("105 cb03"));
    window.answerHex("cb00");
    window.clickCover(2);
    QCOMPARE(window.positions(), QList<int>({0, 0, 0}));
}

void TestRemoteWindow::clickLandsOnTheCover()
{
    Window window(manual);
    window.next();
    window.answerHex("ca07");
    window.clickOnSwitch(0);
    QCOMPARE(window.positions(), QList<int>({1, 0, 0}));
}

void TestRemoteWindow::keyboardDoesWhatAClickDoes_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Space") << Qt::Key_Space;
    QTest::newRow("Enter") << Qt::Key_Enter;
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Down") << Qt::Key_Down;
}

void TestRemoteWindow::keyboardDoesWhatAClickDoes()
{
    QFETCH(Qt::Key, key);
    Window window(manual);
    window.next();
    window.answerHex("ca07");
    QTest::keyClick(window.sldInterruptor(1), key);
    QCOMPARE(window.positions(), QList<int>({0, 1, 0}));
    QCOMPARE(window.next(), QByteArray("105 cb05"));
    window.answerHex("cb00");
    window.next();
    window.answerHex("ca07");
    QCOMPARE(window.positions(), QList<int>({0, 1, 0}));
}

void TestRemoteWindow::accessKeyLeadsToTheSwitchOfItsFrame()
{
    Window window(manual);
    QVERIFY(QTest::qWaitForWindowActive(&window.area));
    QTest::keyClick(window.chkAutomatico(), Qt::Key_1, Qt::AltModifier);
    QVERIFY(window.sldInterruptor(2)->hasFocus());
    QTest::keyClick(window.sldInterruptor(2), Qt::Key_3, Qt::AltModifier);
    QVERIFY(window.sldInterruptor(0)->hasFocus());
}

void TestRemoteWindow::nothingMovesASwitchInAutomaticMode()
{
    Window window(automatic);
    window.next();
    window.answerHex("ca05");
    for (int i = 0; i < 3; ++i) {
        window.clickCover(i);
        window.clickOnSwitch(i);
        QTest::mouseClick(window.sldInterruptor(i), Qt::LeftButton);
        window.sldInterruptor(i)->setFocus();
        QVERIFY(!window.sldInterruptor(i)->hasFocus());
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Up, Qt::Key_Down})
            QTest::keyClick(window.sldInterruptor(i), key);
    }
    QCOMPARE(window.positions(), QList<int>({0, 1, 0}));
    QCOMPARE(window.next(), QByteArray("137 ca00"));
}

void TestRemoteWindow::wheelMovesNoSwitch()
{
    Window window(manual);
    window.next();
    window.answerHex("ca07");
    turnWheel(*window.sldInterruptor(0), -120);
    QCOMPARE(window.positions(), QList<int>({0, 0, 0}));
}

void TestRemoteWindow::tickingTheBoxHandsTheOutputsBack()
{
    Window window(manual);
    window.next();
    window.answerHex("ca05");
    QCOMPARE(window.next(), QByteArray("105 cb05"));
    window.answerHex("cb00");
    QTest::mouseClick(window.chkAutomatico(), Qt::LeftButton, Qt::NoModifier, QPoint(8, 8));
    QVERIFY(window.chkAutomatico()->isChecked());
    for (int round = 0; round < 3; ++round) {
        QCOMPARE(window.next(), QByteArray("137 ca00"));
        window.answerHex("ca02");
    }
    QCOMPARE(window.positions(), QList<int>({1, 0, 1}));
}

void TestRemoteWindow::untickingTheBoxTakesTheOutputs()
{
    Window window(automatic);
    window.next();
    window.answerHex("ca03");
    QTest::keyClick(window.chkAutomatico(), Qt::Key_Space);
    QVERIFY(!window.chkAutomatico()->isChecked());
    QCOMPARE(window.next(), QByteArray("105 cb03"));
    window.answerHex("cb00");
    QCOMPARE(window.next(), QByteArray("137 ca01"));
}

void TestRemoteWindow::lockFollowsTheBox()
{
    const Window window(automatic);
    window.chkAutomatico()->setChecked(false);
    QVERIFY(window.sldInterruptor(0)->isEnabled());
    window.chkAutomatico()->setChecked(true);
    QVERIFY(!window.sldInterruptor(0)->isEnabled());
}

void TestRemoteWindow::failedAnswersLeaveLampsAndSwitchesAlone()
{
    Window window(automatic);
    window.next();
    window.answerHex("ca05");
    for (const char* answer : {"cb02", "ca", ""}) {
        QCOMPARE(window.next(), QByteArray("137 ca00"));
        window.answerHex(answer);
    }
    QCOMPARE(window.next(), QByteArray("137 ca00"));
    window.timeOut();
    QCOMPARE(window.fills(), QList<quint32>({darkGreen, green, darkGreen}));
    QCOMPARE(window.positions(), QList<int>({0, 1, 0}));
    QVERIFY(window.log.lines.isEmpty());
}

void TestRemoteWindow::controlsTellTheirStateInWords()
{
    Window window(automatic);
    const auto* lamp = window.control<RoundLamp>(u"shpSaida"_s, 2);
    QCOMPARE(lamp->accessibleName(), u"Avisos 1"_s);
    QCOMPARE(lamp->accessibleDescription(), u"sin datos"_s);
    QCOMPARE(window.sldInterruptor(2)->accessibleName(), u"Avisos 1"_s);
    window.next();
    window.answerHex("ca03");
    QCOMPARE(lamp->accessibleDescription(), u"encendido"_s);
    QCOMPARE(window.sldInterruptor(2)->accessibleDescription(), u"conectado"_s);
    QCOMPARE(window.sldInterruptor(0)->accessibleDescription(), u"desconectado"_s);
}

void TestRemoteWindow::closeButtonUnloads()
{
    Window window(automatic);
    window.next();
    QTest::mouseClick(window.form->findChild<QPushButton*>(u"cmdPechar"_s), Qt::LeftButton);
    window.answerHex("ca05");
    QCOMPARE(window.next(), QByteArray("none"));
    Window::deleteWhatIsDue();
    QVERIFY(window.form.isNull());
    QVERIFY(window.area.subWindowList().isEmpty());
}

void TestRemoteWindow::endOfTheConnectionClosesTheWindowWhileAnAnswerIsAwaited()
{
    Window window(manual);
    window.next();
    window.form->closeWindow(MdiForm::CloseReason::Code);
    window.link.RemataConexion();
    window.answerHex("ca05");
    Window::deleteWhatIsDue();
    QVERIFY(window.form.isNull());
}

QTEST_MAIN(TestRemoteWindow)
#include "TestRemoteWindow.moc"
