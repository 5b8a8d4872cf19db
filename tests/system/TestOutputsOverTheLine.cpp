#include "ConnectedProgram.h"
#include "CoverLabel.h"
#include "RoundLamp.h"
#include "Switch.h"
#include "frmInfo.h"
#include "frmTelemando.h"

#include <QCheckBox>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr quint32 green = 0x00FF00;
constexpr quint32 darkGreen = 0x008000;

/// The program connected to a clock that rings for nothing, with the remote control open.
struct Remote : ConnectedProgram {
    explicit Remote(const QString& model = u"7200"_s)
        : ConnectedProgram({u"--programme"_s, u"empty"_s, u"--model"_s, model})
    {}

    bool open()
    {
        if (!connectToClock())
            return false;
        choose("mnuTelemando");
        return form() != nullptr;
    }
    frmTelemando* form() { return window<frmTelemando>(); }
    QCheckBox* chkAutomatico() { return form()->findChild<QCheckBox*>(u"chkAutomatico"_s); }
    Switch* sldInterruptor(int index)
    {
        return form()->findChild<Switch*>(u"sldInterruptor(%1)"_s.arg(index));
    }
    void clickCover(int index)
    {
        QTest::mouseClick(form()->findChild<CoverLabel*>(u"lblTapa(%1)"_s.arg(index)),
                          Qt::LeftButton);
    }
    static QList<quint32> fills(const QWidget* form)
    {
        QList<quint32> all;
        for (int i = 0; i < 3; ++i)
            all.append(form->findChild<RoundLamp*>(u"shpSaida(%1)"_s.arg(i))->fill());
        return all;
    }
    QList<int> positions()
    {
        return {sldInterruptor(0)->value(), sldInterruptor(1)->value(), sldInterruptor(2)->value()};
    }
};

QList<quint32> allDark() { return {darkGreen, darkGreen, darkGreen}; }
QList<quint32> lowestLit() { return {green, darkGreen, darkGreen}; }

} // namespace

class TestOutputsOverTheLine : public QObject {
    Q_OBJECT
private slots:
    void outputIsSwitchedSeenAndGivenBack_data();
    void outputIsSwitchedSeenAndGivenBack();
    void clockInManualModeIsShownAsItStands();
    void failuresAreSatOutInSilence_data();
    void failuresAreSatOutInSilence();
    void connectionLostClosesTheWindow_data();
    void connectionLostClosesTheWindow();
    void disconnectingAsksBecauseOfTheManualMode();
};

void TestOutputsOverTheLine::outputIsSwitchedSeenAndGivenBack_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<QString>("caption");
    QTest::newRow("HCT-7200") << u"7200"_s << u"Telemando HCT-7200"_s;
    QTest::newRow("HCT-7300") << u"7300"_s << u"Telemando HCT-7300"_s;
}

void TestOutputsOverTheLine::outputIsSwitchedSeenAndGivenBack()
{
    QFETCH(QString, model);
    Remote remote(model);
    QVERIFY(remote.open());
    QTEST(remote.form()->windowTitle(), "caption");
    remote.choose("mnuInformacion");
    const auto* information = remote.window<frmInfo>();
    QVERIFY(information);
    QVERIFY(remote.chkAutomatico()->isChecked());
    QTRY_COMPARE_WITH_TIMEOUT(Remote::fills(remote.form()), allDark(), patience);

    remote.chkAutomatico()->click();
    QTRY_COMPARE_WITH_TIMEOUT(remote.clock.state(u"mode"_s), u"manual"_s, patience);
    remote.clickCover(0);
    QTRY_COMPARE_WITH_TIMEOUT(Remote::fills(remote.form()), lowestLit(), patience);
    QTRY_COMPARE_WITH_TIMEOUT(Remote::fills(information), lowestLit(), patience);
    QCOMPARE(remote.positions(), QList<int>({1, 0, 0}));

    remote.chkAutomatico()->click();
    QTRY_COMPARE_WITH_TIMEOUT(remote.clock.state(u"mode"_s), u"automatic"_s, patience);
    QTRY_COMPARE_WITH_TIMEOUT(Remote::fills(remote.form()), allDark(), patience);
    QTRY_COMPARE_WITH_TIMEOUT(remote.positions(), QList<int>({0, 0, 0}), patience);
    QTRY_COMPARE_WITH_TIMEOUT(Remote::fills(information), allDark(), patience);
}

void TestOutputsOverTheLine::clockInManualModeIsShownAsItStands()
{
    Remote remote;
    remote.clock.command(u"outputs 5"_s);
    QVERIFY(remote.open());
    QVERIFY(!remote.chkAutomatico()->isChecked());
    QTRY_COMPARE_WITH_TIMEOUT(remote.positions(), QList<int>({1, 0, 1}), patience);
    QTRY_COMPARE_WITH_TIMEOUT(Remote::fills(remote.form()),
                              QList<quint32>({green, darkGreen, green}), patience);
    // Several commands later.
    const int answered = remote.clock.state(u"answered"_s).toInt();
    QTRY_VERIFY_WITH_TIMEOUT(remote.clock.state(u"answered"_s).toInt() > answered + 10, patience);
    QCOMPARE(remote.clock.state(u"outputs"_s), u"0x05"_s);
}

void TestOutputsOverTheLine::failuresAreSatOutInSilence_data()
{
    QTest::addColumn<QString>("fault");
    QTest::newRow("commands refused") << u"fault refuse times 4 on outputs"_s;
    QTest::newRow("commands lost") << u"fault lost times 4 on outputs"_s;
    QTest::newRow("state reads lost") << u"fault silent times 4 on mode"_s;
    QTest::newRow("state reads damaged") << u"fault checksum times 4 on mode"_s;
    QTest::newRow("state reads short") << u"fault short 1 times 4 on mode"_s;
    QTest::newRow("state reads of wrong length") << u"fault length times 4 on mode"_s;
    QTest::newRow("state reads with another mode") << u"fault changed 7 xor 7 times 4 on mode"_s;
    QTest::newRow("state reads doubled") << u"fault doubled times 4 on mode"_s;
    QTest::newRow("state reads joined") << u"fault joined ca05 times 4 on mode"_s;
    QTest::newRow("commands doubled") << u"fault doubled times 4 on outputs"_s;
    QTest::newRow("commands of wrong length") << u"fault length -2 times 4 on outputs"_s;
    QTest::newRow("stray bytes before") << u"fault stray -2000 times 4 on mode"_s;
    QTest::newRow("another echo") << u"fault echo times 4 on mode"_s;
    QTest::newRow("another code") << u"fault code times 4 on outputs"_s;
}

void TestOutputsOverTheLine::failuresAreSatOutInSilence()
{
    QFETCH(QString, fault);
    Remote remote;
    QVERIFY(remote.open());
    QTRY_COMPARE_WITH_TIMEOUT(Remote::fills(remote.form()), allDark(), patience);
    remote.clock.command(fault);
    remote.chkAutomatico()->click();
    remote.clickCover(0);
    QTRY_COMPARE_WITH_TIMEOUT(Remote::fills(remote.form()), lowestLit(), patience);
    QVERIFY(remote.dialogs.boxes.isEmpty());
    QVERIFY(remote.isEstablished());
}

void TestOutputsOverTheLine::connectionLostClosesTheWindow_data()
{
    QTest::addColumn<QString>("command");
    QTest::newRow("at any time") << u"vanish"_s;
    QTest::newRow("in the answer to a state read") << u"fault unplug 7 on mode"_s;
    QTest::newRow("in the answer to a command") << u"fault unplug 5 on outputs"_s;
}

void TestOutputsOverTheLine::connectionLostClosesTheWindow()
{
    QFETCH(QString, command);
    Remote remote;
    QVERIFY(remote.open());
    remote.choose("mnuInformacion");
    remote.chkAutomatico()->click();
    remote.clock.command(command);
    QTRY_VERIFY_WITH_TIMEOUT(!remote.isEstablished(), patience);
    QVERIFY(!remote.form());
    QVERIFY(!remote.window<frmInfo>());
    QVERIFY(remote.dialogs.boxes.isEmpty());
}

void TestOutputsOverTheLine::disconnectingAsksBecauseOfTheManualMode()
{
    Remote remote;
    QVERIFY(remote.open());
    remote.chkAutomatico()->click();
    QTRY_VERIFY_WITH_TIMEOUT((remote.program.session().globais().GeneralData.at(219) & 4) != 0,
                             patience);
    remote.choose("mnuDesconectar");
    QCOMPARE(remote.dialogs.boxes.size(), 1);
    QVERIFY(remote.form());
    remote.dialogs.confirmations = {true};
    remote.choose("mnuDesconectar");
    QVERIFY(!remote.isEstablished());
    QVERIFY(!remote.form());
}

QTEST_MAIN(TestOutputsOverTheLine)
#include "TestOutputsOverTheLine.moc"
