#include "FirmwareWindow.h"

#include <QLabel>
#include <QMdiSubWindow>
#include <QProgressBar>
#include <QSignalSpy>
#include <QtTest>

using namespace Qt::StringLiterals;

/// Every way to close the firmware window, idle and during a transfer, and what may happen while
/// its question is open.
class TestFirmwareCloseGuard : public QObject {
    Q_OBJECT
private slots:
    void idleWindowHidesAndKeepsItsFile_data();
    void idleWindowHidesAndKeepsItsFile();
    void hidingClearsTheProgress();
    void idleWindowUnloadsWithTheApplication();
    void closingWhileSendingAsks_data();
    void closingWhileSendingAsks();
    void noKeepsTheTransfer_data();
    void noKeepsTheTransfer();
    void yesInterruptsAndUnloads_data();
    void yesInterruptsAndUnloads();
    void transferGoesOnUnderTheQuestion();
    void secondCloseUnderTheQuestionDoesNothing();
    void yesAfterTheTransferHasFinishedUnloads();
    void noAfterTheTransferHasFinishedLeavesTheWindowIdle();
    void yesAfterTheTransferHasFailedUnloads();
    void noAfterTheTransferHasFailedLeavesTheWindowIdle();
    void disconnectionUnderTheQuestionIsNoFault();
    void windowGoneUnderTheQuestionIsNoFault();
    void interruptedWindowThatStaysCanSendAgain();
    void programThatMustEndIsNotHeldUp();
    void unloadedWindowHasLeftTheTimerService();
    void closingAfterATransferHidesAgain();
};

namespace {

enum class Way { TitleBar, CancelButton, Code, Shutdown };

struct Fixture : FirmwareWindow {
    Fixture() { read(":0400100001020304E2\n:03FFFE00ABCDEF99\n:00000001FF\n"); }

    void startSending()
    {
        click("cmdEnviar");
        acknowledge();
    }
    void close(Way way)
    {
        switch (way) {
        case Way::TitleBar: area->subWindowList().constFirst()->close(); break;
        case Way::CancelButton: click("cmdCancelar"); break;
        case Way::Code: form->closeWindow(MdiForm::CloseReason::Code); break;
        case Way::Shutdown: form->closeWindow(MdiForm::CloseReason::Shutdown); break;
        }
    }
};

void everyWay(bool withShutdown)
{
    QTest::addColumn<Way>("way");
    QTest::newRow("title bar") << Way::TitleBar;
    QTest::newRow("Cancelar") << Way::CancelButton;
    QTest::newRow("code") << Way::Code;
    if (withShutdown)
        QTest::newRow("end of the application") << Way::Shutdown;
}

} // namespace

void TestFirmwareCloseGuard::idleWindowHidesAndKeepsItsFile_data() { everyWay(false); }

void TestFirmwareCloseGuard::idleWindowHidesAndKeepsItsFile()
{
    QFETCH(Way, way);
    Fixture f;
    f.close(way);
    f.deleteWhatIsDue();
    QVERIFY(f.form);
    QVERIFY(!f.form->isFormVisible());
    QVERIFY(f.dialogs.boxes.isEmpty());

    f.form->showForm();
    QVERIFY(f.form->isFormVisible());
    QCOMPARE(f.find<QLabel>("lblArquivo")->text(), u"reloj.hex "_s);
    QCOMPARE(f.find<QLabel>("lblTamanho")->text(), u"2"_s);
    QVERIFY(f.notes().endsWith(u"Leídas 2 líneas de código HEX\n"_s));
    f.click("cmdEnviar");
    QCOMPARE(f.sent(), QByteArray("dd041000000000010203041a00"));
}

void TestFirmwareCloseGuard::hidingClearsTheProgress()
{
    Fixture f;
    f.startSending();
    f.acknowledge();
    QCOMPARE(f.find<QProgressBar>("pgbEnvio")->value(), 1);
    f.close(Way::TitleBar);
    QCOMPARE(f.find<QProgressBar>("pgbEnvio")->value(), 0);
    QCOMPARE(f.find<QLabel>("lblLinhas")->text(), QString());
    QCOMPARE(f.find<QLabel>("lblDireccion")->text(), QString());
}

void TestFirmwareCloseGuard::idleWindowUnloadsWithTheApplication()
{
    Fixture f;
    QSignalSpy unloaded(f.form, &MdiForm::unloaded);
    QVERIFY(f.form->closeWindow(MdiForm::CloseReason::Shutdown));
    QCOMPARE(unloaded.size(), 1);
    QVERIFY(f.dialogs.boxes.isEmpty());
    f.deleteWhatIsDue();
    QVERIFY(!f.form);
}

void TestFirmwareCloseGuard::closingWhileSendingAsks_data() { everyWay(true); }

void TestFirmwareCloseGuard::closingWhileSendingAsks()
{
    QFETCH(Way, way);
    Fixture f;
    f.startSending();
    f.close(way);
    QCOMPARE(f.dialogs.boxes.size(), 1);
    const FakeDialogs::Box& box = f.dialogs.boxes[0];
    QVERIFY(box.question);
    QCOMPARE(box.icon, Dialogs::Icon::Warning);
    QCOMPARE(box.text, u"¿El firmware se está actualizando en este momento.\r\n"
                       "¿Seguro que desea interrumpir el proceso?"_s);
}

void TestFirmwareCloseGuard::noKeepsTheTransfer_data() { everyWay(true); }

void TestFirmwareCloseGuard::noKeepsTheTransfer()
{
    QFETCH(Way, way);
    Fixture f;
    f.startSending();
    f.dialogs.confirmations = {false};
    f.close(way);
    f.deleteWhatIsDue();
    QVERIFY(f.form && f.form->isFormVisible());
    QCOMPARE(f.find<QLabel>("lblLinhas")->text(), u"   1"_s);
    QVERIFY(!f.enabled("cmdAbrir"));
    QCOMPARE(f.sent(), QByteArray("dd03feff000001abcdef6400"));
    f.answerHex("dd00");
    QVERIFY(f.notes().endsWith(u"Envío finalizado\n"_s));
}

void TestFirmwareCloseGuard::yesInterruptsAndUnloads_data() { everyWay(true); }

void TestFirmwareCloseGuard::yesInterruptsAndUnloads()
{
    QFETCH(Way, way);
    Fixture f;
    f.startSending();
    f.sent();
    f.dialogs.confirmations = {true};
    QSignalSpy unloaded(f.form, &MdiForm::unloaded);
    f.close(way);
    QCOMPARE(unloaded.size(), 1);
    QVERIFY(!f.form->isFormVisible());
    f.deleteWhatIsDue();
    QVERIFY(!f.form);
    // The pending answer is ignored, and nothing more is sent.
    f.answerHex("dd00");
    f.tick(20);
    QVERIFY(!f.hasRequest());
}

void TestFirmwareCloseGuard::transferGoesOnUnderTheQuestion()
{
    Fixture f;
    f.click("cmdEnviar");
    f.dialogs.whileUp = [&f] {
        f.acknowledge();
        QCOMPARE(f.find<QLabel>("lblLinhas")->text(), u"   1"_s);
    };
    f.close(Way::TitleBar);
    QCOMPARE(f.sent(), QByteArray("dd03feff000001abcdef6400"));
}

void TestFirmwareCloseGuard::secondCloseUnderTheQuestionDoesNothing()
{
    Fixture f;
    f.startSending();
    f.dialogs.whileUp = [&f] { f.close(Way::Shutdown); };
    f.dialogs.confirmations = {false};
    f.close(Way::TitleBar);
    QCOMPARE(f.dialogs.boxes.size(), 1);
    QVERIFY(f.form->isFormVisible());
}

void TestFirmwareCloseGuard::yesAfterTheTransferHasFinishedUnloads()
{
    Fixture f;
    f.startSending();
    f.dialogs.whileUp = [&f] { f.acknowledge(); };
    f.dialogs.confirmations = {true};
    f.close(Way::TitleBar);
    f.deleteWhatIsDue();
    QVERIFY(!f.form);
}

void TestFirmwareCloseGuard::noAfterTheTransferHasFinishedLeavesTheWindowIdle()
{
    Fixture f;
    f.startSending();
    f.dialogs.whileUp = [&f] { f.acknowledge(); };
    f.dialogs.confirmations = {false};
    f.close(Way::TitleBar);
    QVERIFY(f.form->isFormVisible());
    QVERIFY(f.notes().endsWith(u"Envío finalizado\n"_s));
    QVERIFY(f.enabled("cmdEnviar"));
    QVERIFY(f.enabled("cmdAbrir"));
    f.tick(20);
    QVERIFY(!f.hasRequest());
}

void TestFirmwareCloseGuard::yesAfterTheTransferHasFailedUnloads()
{
    Fixture f;
    f.startSending();
    f.dialogs.whileUp = [&f] { f.fail(6); };
    f.dialogs.confirmations = {true};
    f.close(Way::TitleBar);
    f.deleteWhatIsDue();
    QVERIFY(!f.form);
}

void TestFirmwareCloseGuard::noAfterTheTransferHasFailedLeavesTheWindowIdle()
{
    Fixture f;
    f.startSending();
    f.dialogs.whileUp = [&f] { f.fail(6); };
    f.dialogs.confirmations = {false};
    f.close(Way::TitleBar);
    QVERIFY(f.notes().endsWith(u"Error actualizando firmware del equipo\n"_s));
    QVERIFY(f.enabled("cmdEnviar"));
    QVERIFY(f.enabled("cmdAbrir"));
}

void TestFirmwareCloseGuard::disconnectionUnderTheQuestionIsNoFault()
{
    Fixture f;
    f.startSending();
    f.dialogs.whileUp = [&f] { f.disconnect(); };
    f.dialogs.confirmations = {true};
    f.close(Way::CancelButton);
    f.deleteWhatIsDue();
    QVERIFY(!f.form);
}

void TestFirmwareCloseGuard::windowGoneUnderTheQuestionIsNoFault()
{
    for (const bool answer : {true, false}) {
        Fixture f;
        f.startSending();
        f.dialogs.whileUp = [&f] { f.area.reset(); };
        f.dialogs.confirmations = {answer};
        f.form->closeWindow(MdiForm::CloseReason::Code);
        QVERIFY(!f.form);
        f.tick(20);
        QVERIFY(!f.hasRequest());
    }
}

void TestFirmwareCloseGuard::interruptedWindowThatStaysCanSendAgain()
{
    Fixture f;
    f.startSending();
    // The application asks, the operator agrees, and another window refuses.
    f.dialogs.confirmations = {true};
    QVERIFY(f.form->mayUnload(MdiForm::CloseReason::Shutdown));
    f.tick(20);
    QVERIFY(!f.hasRequest());
    QVERIFY(f.enabled("cmdAbrir"));
    f.click("cmdEnviar");
    QCOMPARE(f.sent(), QByteArray("dd041000000000010203041a00"));
}

void TestFirmwareCloseGuard::programThatMustEndIsNotHeldUp()
{
    Fixture f;
    f.startSending();
    f.form->unloadNow();
    QVERIFY(f.dialogs.boxes.isEmpty());
    f.tick(20);
    QVERIFY(!f.hasRequest());
    f.deleteWhatIsDue();
    QVERIFY(!f.form);
}

void TestFirmwareCloseGuard::unloadedWindowHasLeftTheTimerService()
{
    Fixture f;
    f.startSending();
    f.dialogs.confirmations = {true};
    f.close(Way::Code);
    // Not deleted yet.
    QVERIFY(f.form);
    f.tick(20);
    QVERIFY(!f.hasRequest());
}

void TestFirmwareCloseGuard::closingAfterATransferHidesAgain()
{
    Fixture f;
    f.startSending();
    f.acknowledge();
    f.close(Way::CancelButton);
    QVERIFY(f.dialogs.boxes.isEmpty());
    QVERIFY(!f.form->isFormVisible());
    f.form->showForm();
    f.startSending();
    f.close(Way::CancelButton);
    QCOMPARE(f.dialogs.boxes.size(), 1);
}

QTEST_MAIN(TestFirmwareCloseGuard)
#include "TestFirmwareCloseGuard.moc"
