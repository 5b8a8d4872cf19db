#include "ConnectedProgram.h"
#include "TextoRestrinxido.h"
#include "frmInfo.h"
#include "frmSincronizacionReloxo.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString done = u"Reloj del equipo actualizado en fecha y hora"_s;
const QString failed = u"Error intentando puesta en hora del equipo"_s;

/// The program connected to a clock stopped at 20-11-2026 08:59:50, with the window open.
struct Setting : ConnectedProgram {
    Setting() : ConnectedProgram({u"--start"_s, u"2026-11-20T08:59:50"_s, u"--frozen"_s}) {}

    bool open()
    {
        if (!connectToClock())
            return false;
        choose("mnuSincronizacionReloxo");
        return form() != nullptr;
    }
    frmSincronizacionReloxo* form() { return window<frmSincronizacionReloxo>(); }
    TextoRestrinxido* field(const QString& name)
    {
        return form()->findChild<TextoRestrinxido*>(name);
    }
    void type(const QString& name, const QString& keys)
    {
        TextoRestrinxido* target = field(name);
        target->setFocus(Qt::TabFocusReason);
        QTest::keyClick(target, Qt::Key_Home);
        QTest::keyClicks(target, keys);
    }
    void click(const QString& name)
    {
        QTest::mouseClick(form()->findChild<QPushButton*>(name), Qt::LeftButton);
    }
};

} // namespace

class TestClockOverTheLine : public QObject {
    Q_OBJECT
private slots:
    void clockSetByHandIsSeenInTheInformationWindow();
    void clockSetFromTheComputerRunsWithIt();
    void refusedSettingIsRepeatedAndSucceeds();
    void spoiledAnswersOfTheSettingAreMadeUpFor_data();
    void spoiledAnswersOfTheSettingAreMadeUpFor();
    void lineLostInTheAnswerToTheSettingIsToldAndEndsTheConnection_data();
    void lineLostInTheAnswerToTheSettingIsToldAndEndsTheConnection();
    void threeRefusalsAreTold();
    void threeLostAnswersAreToldAndTheConnectionGoesOn();
    void informationFollowsAgainAfterTheBoxOfARefusal();
    void cablePulledUnderTheBoxOfARefusalEndsTheConnectionAfterIt();
    void connectionLostUnderTheBoxClosesTheWindow();
    void connectionLostWhileTheWindowIsOpenClosesIt();
    void nonsenseOfTheClockIsClamped();
};

void TestClockOverTheLine::clockSetByHandIsSeenInTheInformationWindow()
{
    Setting setting;
    QVERIFY(setting.open());
    QCOMPARE(setting.field(u"txtData"_s)->text(), u"20/11/2026"_s);
    QCOMPARE(setting.field(u"txtHora"_s)->text(), u"08:59:50"_s);
    setting.choose("mnuInformacion");
    auto* information = setting.window<frmInfoHCT7200>();
    QVERIFY(information);
    setting.type(u"txtData"_s, u"29/02/2028"_s);
    setting.type(u"txtHora"_s, u"23:05:03"_s);
    setting.click(u"cmdEnviar"_s);
    QTRY_VERIFY_WITH_TIMEOUT(!setting.form(), patience);
    QCOMPARE(setting.timesLogged(done), 1);
    QCOMPARE(setting.clock.state(u"time"_s), u"2028-02-29T23:05:03"_s);
    QTRY_COMPARE_WITH_TIMEOUT(information->findChild<QLabel*>(u"lblHora"_s)->text(), u"23:05:03 "_s,
                              patience);
    QVERIFY(information->findChild<QLabel*>(u"lblData"_s)
                ->text()
                .endsWith(u", 29 de febrero de 2028"_s));
}

void TestClockOverTheLine::clockSetFromTheComputerRunsWithIt()
{
    Setting setting;
    QVERIFY(setting.open());
    const QDateTime before = QDateTime::currentDateTime().addSecs(-1);
    setting.click(u"cmdPC"_s);
    QTRY_VERIFY_WITH_TIMEOUT(!setting.form(), patience);
    const QDateTime set = QDateTime::fromString(setting.clock.state(u"time"_s), Qt::ISODate);
    QVERIFY(before <= set && set <= QDateTime::currentDateTime());
}

void TestClockOverTheLine::refusedSettingIsRepeatedAndSucceeds()
{
    Setting setting;
    QVERIFY(setting.open());
    setting.clock.command(u"fault refuse times 2 on clock"_s);
    setting.type(u"txtHora"_s, u"12:00:00"_s);
    setting.click(u"cmdEnviar"_s);
    QTRY_VERIFY_WITH_TIMEOUT(!setting.form(), patience);
    QVERIFY(setting.dialogs.boxes.isEmpty());
    QCOMPARE(setting.clock.state(u"time"_s), u"2026-11-20T12:00:00"_s);
}

void TestClockOverTheLine::spoiledAnswersOfTheSettingAreMadeUpFor_data()
{
    QTest::addColumn<QString>("fault");
    for (const char* fault :
         {"length", "length -2", "doubled", "joined", "joined 0102", "changed 4", "changed 5",
          "changed 6", "changed 7 xor 2", "stray -2000", "stray 0", "stray 2000"})
        QTest::newRow(fault) << QString::fromLatin1(fault);
}

void TestClockOverTheLine::spoiledAnswersOfTheSettingAreMadeUpFor()
{
    QFETCH(QString, fault);
    Setting setting;
    QVERIFY(setting.open());
    setting.clock.command(u"fault %1 times 2 on clock"_s.arg(fault));
    setting.type(u"txtHora"_s, u"12:00:00"_s);
    setting.click(u"cmdEnviar"_s);
    QTRY_VERIFY_WITH_TIMEOUT(!setting.form(), patience);
    QVERIFY(setting.dialogs.boxes.isEmpty());
    QCOMPARE(setting.timesLogged(done), 1);
    QCOMPARE(setting.timesLogged(failed), 0);
    QCOMPARE(setting.clock.state(u"time"_s), u"2026-11-20T12:00:00"_s);
    QVERIFY(setting.isEstablished());
}

void TestClockOverTheLine::lineLostInTheAnswerToTheSettingIsToldAndEndsTheConnection_data()
{
    QTest::addColumn<int>("bytes");
    QTest::newRow("no byte") << 0;
    QTest::newRow("half a header") << 3;
    QTest::newRow("header") << 5;
    QTest::newRow("all but the end") << 9;
}

void TestClockOverTheLine::lineLostInTheAnswerToTheSettingIsToldAndEndsTheConnection()
{
    QFETCH(int, bytes);
    Setting setting;
    QVERIFY(setting.open());
    setting.clock.command(u"fault unplug %1 on clock"_s.arg(bytes));
    setting.click(u"cmdEnviar"_s);
    QTRY_COMPARE_WITH_TIMEOUT(setting.timesLogged(failed), 1, patience);
    QTRY_VERIFY_WITH_TIMEOUT(!setting.isEstablished(), patience);
    QVERIFY(!setting.form());
    QCOMPARE(setting.dialogs.boxes.size(), 1);
    QCOMPARE(setting.timesLogged(done), 0);
    QCOMPARE(setting.timesLogged(u"Conexión interrumpida"_s), 2);
}

void TestClockOverTheLine::threeRefusalsAreTold()
{
    Setting setting;
    QVERIFY(setting.open());
    setting.clock.command(u"fault refuse always on clock"_s);
    setting.click(u"cmdEnviar"_s);
    QTRY_COMPARE_WITH_TIMEOUT(setting.timesLogged(failed), 1, patience);
    QCOMPARE(setting.dialogs.boxes.size(), 1);
    QVERIFY(setting.form());
    QVERIFY(!setting.form()->findChild<QPushButton*>(u"cmdEnviar"_s)->isEnabled());
    // Polling continues.
    const int answered = setting.clock.state(u"answered"_s).toInt();
    QTRY_VERIFY_WITH_TIMEOUT(setting.clock.state(u"answered"_s).toInt() > answered + 3, patience);
    QVERIFY(setting.isEstablished());
}

void TestClockOverTheLine::threeLostAnswersAreToldAndTheConnectionGoesOn()
{
    Setting setting;
    QVERIFY(setting.open());
    setting.choose("mnuInformacion");
    setting.clock.command(u"fault lost always on clock"_s);
    QString shownUnderTheBox;
    setting.dialogs.whileUp = [&] {
        setting.clock.command(u"time 2026-11-20T10:11:12"_s);
        const auto* time = setting.window<frmInfoHCT7200>()->findChild<QLabel*>(u"lblHora"_s);
        QVERIFY(QTest::qWaitFor([time] { return time->text() == u"10:11:12 "_s; }, patience));
        shownUnderTheBox = time->text();
    };
    setting.click(u"cmdPC"_s);
    QTRY_COMPARE_WITH_TIMEOUT(setting.timesLogged(failed), 1, patience);
    QCOMPARE(shownUnderTheBox, u"10:11:12 "_s);
    QVERIFY(setting.isEstablished());
}

// The box opens inside the handler of the refusal: the link counts as busy until it closes.
void TestClockOverTheLine::informationFollowsAgainAfterTheBoxOfARefusal()
{
    Setting setting;
    QVERIFY(setting.open());
    setting.choose("mnuInformacion");
    setting.clock.command(u"fault refuse always on clock"_s);
    setting.dialogs.whileUp = [&] { setting.clock.command(u"time 2026-11-20T10:11:12"_s); };
    setting.click(u"cmdPC"_s);
    QTRY_COMPARE_WITH_TIMEOUT(setting.timesLogged(failed), 1, patience);
    const auto* time = setting.window<frmInfoHCT7200>()->findChild<QLabel*>(u"lblHora"_s);
    QTRY_COMPARE_WITH_TIMEOUT(time->text(), u"10:11:12 "_s, patience);
    // The setting can be tried again.
    setting.clock.command(u"faults clear"_s);
    setting.type(u"txtData"_s, u"01/02/2027"_s);
    setting.click(u"cmdEnviar"_s);
    QTRY_VERIFY_WITH_TIMEOUT(!setting.form(), patience);
    QVERIFY(setting.clock.state(u"time"_s).startsWith(u"2027-02-01T"_s));
}

void TestClockOverTheLine::cablePulledUnderTheBoxOfARefusalEndsTheConnectionAfterIt()
{
    Setting setting;
    QVERIFY(setting.open());
    setting.choose("mnuInformacion");
    setting.clock.command(u"fault refuse always on clock"_s);
    setting.dialogs.whileUp = [&] { setting.clock.command(u"vanish"_s); };
    setting.click(u"cmdEnviar"_s);
    QTRY_COMPARE_WITH_TIMEOUT(setting.timesLogged(failed), 1, patience);
    QTRY_VERIFY_WITH_TIMEOUT(!setting.isEstablished(), patience);
    QVERIFY(!setting.form());
    QVERIFY(!setting.window<frmInfoHCT7200>());
    QCOMPARE(setting.timesLogged(u"Conexión interrumpida"_s), 2);
}

void TestClockOverTheLine::connectionLostUnderTheBoxClosesTheWindow()
{
    Setting setting;
    QVERIFY(setting.open());
    setting.clock.command(u"fault lost always on clock"_s);
    bool closedUnderTheBox = false;
    setting.dialogs.whileUp = [&] {
        setting.clock.command(u"vanish"_s);
        closedUnderTheBox = QTest::qWaitFor([&] { return !setting.form(); }, patience);
    };
    setting.click(u"cmdEnviar"_s);
    QTRY_COMPARE_WITH_TIMEOUT(setting.timesLogged(failed), 1, patience);
    QVERIFY(closedUnderTheBox);
    QVERIFY(!setting.isEstablished());
    QCOMPARE(setting.timesLogged(u"Conexión interrumpida"_s), 2);
}

void TestClockOverTheLine::connectionLostWhileTheWindowIsOpenClosesIt()
{
    Setting setting;
    QVERIFY(setting.open());
    setting.choose("mnuInformacion");
    setting.clock.command(u"vanish"_s);
    QTRY_VERIFY_WITH_TIMEOUT(!setting.isEstablished(), patience);
    QVERIFY(!setting.form());
    QVERIFY(!setting.window<frmInfoHCT7200>());
}

void TestClockOverTheLine::nonsenseOfTheClockIsClamped()
{
    Setting setting;
    // Hours, day and month.
    setting.clock.command(u"byte 7 200"_s);
    setting.clock.command(u"byte 9 45"_s);
    setting.clock.command(u"byte 10 0"_s);
    QVERIFY(setting.open());
    QCOMPARE(setting.field(u"txtData"_s)->text(), u"31/01/2026"_s);
    QCOMPARE(setting.field(u"txtHora"_s)->text(), u"23:59:50"_s);
    setting.choose("mnuInformacion");
    const auto* date = setting.window<frmInfoHCT7200>()->findChild<QLabel*>(u"lblData"_s);
    QTRY_VERIFY_WITH_TIMEOUT(date->text().endsWith(u", 45 de ------- de 2026"_s), patience);
}

QTEST_MAIN(TestClockOverTheLine)
#include "TestClockOverTheLine.moc"
