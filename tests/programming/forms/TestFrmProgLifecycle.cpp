#include "Answer.h"
#include "Files.h"
#include "ProgWindow.h"

#include <QTemporaryDir>

using namespace Qt::StringLiterals;

constexpr auto hct7200 = ClockModel::Hct7200;

namespace {

enum class Way { Button, Escape, TitleBar, OwnersEnd };

} // namespace

class TestFrmProgLifecycle : public QObject {
    Q_OBJECT
private slots:
    void closingWhileReadingLeavesNothingBehind_data();
    void closingWhileReadingLeavesNothingBehind();
    void closingWhileSendingLeavesNothingBehind_data() { ways(); }
    void closingWhileSendingLeavesNothingBehind();
    void acceptedBlocksStayWhenTheSendIsAbandoned();
    void closedWindowSendsNothing();
    void connectionLostWhileReadingIsTold();
    void connectionLostWhileSendingLeavesWhatWasEntered();
    void sendingAfterTheConnectionIsLostIsTold();
    void connectionLostUnderTheClashBoxIsToldAtTheNextSending();
    void windowClosedAsTheConnectionIsLostTellsNothing_data();
    void windowClosedAsTheConnectionIsLostTellsNothing();
    void windowClosedUnderTheBoxAboutTheLostConnectionOutlivesIt();
    void windowClosedUnderTheFailureBoxOutlivesIt();
    void windowClosedUnderTheClashBoxOutlivesIt();
    void windowClosedUnderAFileDialogReadsNoFile();
    void windowDestroyedUnderItsBoxIsNotTouched();
    void windowDestroyedUnderAFileDialogIsNotTouched();
    void sendingGoesOnWhileTheMainWindowPolls();
    void windowDestroyedWithoutClosingLeavesTheService();

private:
    void ways();
    static void closeBy(ProgWindow& w, Way way);
    /// Closes the window while its next box is open. Whether it still exists for the box.
    static void closeUnderTheBox(ProgWindow& w, bool& alive);
    static void verifyToldAndEditable(const ProgWindow& w);
};

void TestFrmProgLifecycle::verifyToldAndEditable(const ProgWindow& w)
{
    QCOMPARE(w.dialogs.boxes.last().text,
             u"No se ha podido realizar la configuración del equipo.\r\n"
             "Verifique el estado de las conexiones e inténtelo de nuevo."_s);
    QVERIFY(w.isVisible(u"fraEnvolvente"_s));
    QVERIFY(!w.isVisible(u"fraAviso"_s));
    for (const char16_t* control :
         {u"tabPrincipal", u"cmdEnviar", u"cmdBorrar", u"cmdAbrir", u"cmdGardar", u"cmdCancelar"})
        QVERIFY(w.isEnabled(QString::fromUtf16(control)));
}

void TestFrmProgLifecycle::ways()
{
    QTest::addColumn<Way>("way");
    QTest::newRow("cmdCancelar") << Way::Button;
    QTest::newRow("Escape") << Way::Escape;
    QTest::newRow("title bar") << Way::TitleBar;
    QTest::newRow("end of the main window") << Way::OwnersEnd;
}

void TestFrmProgLifecycle::closeBy(ProgWindow& w, Way way)
{
    switch (way) {
    case Way::Button: w.click(u"cmdCancelar"_s); break;
    case Way::Escape:
        ProgWindow::press(Qt::Key_Escape);
        ProgWindow::press(Qt::Key_Escape);
        break;
    case Way::TitleBar: w.form->close(); break;
    case Way::OwnersEnd: delete w.form; break;
    }
}

void TestFrmProgLifecycle::closeUnderTheBox(ProgWindow& w, bool& alive)
{
    w.dialogs.whileUp = [&] {
        w.form->close();
        ProgWindow::deleteWhatIsDue();
        alive = w.form;
    };
}

void TestFrmProgLifecycle::closingWhileReadingLeavesNothingBehind_data() { ways(); }

void TestFrmProgLifecycle::closingWhileReadingLeavesNothingBehind()
{
    QFETCH(Way, way);
    ProgWindow w(hct7200);
    w.tick();
    w.takeRequest();
    closeBy(w, way);
    w.answer(samples::holidaysAnswer());
    w.tick(20);
    QVERIFY(!w.hasRequest());
    ProgWindow::deleteWhatIsDue();
    QVERIFY(!w.form);
    w.tick(20);
    QVERIFY(!w.hasRequest());
}

void TestFrmProgLifecycle::closingWhileSendingLeavesNothingBehind()
{
    QFETCH(Way, way);
    ProgWindow w(hct7200);
    w.becomeReady();
    w.click(u"cmdEnviar"_s);
    w.tick();
    w.takeRequest();
    closeBy(w, way);
    const QByteArray before = w.globais.GeneralData;
    w.answer(samples::generalData(hct7200) + QByteArray("late"));
    QCOMPARE(w.globais.GeneralData, before);
    w.tick(20);
    QVERIFY(!w.hasRequest());
    ProgWindow::deleteWhatIsDue();
    QVERIFY(!w.form);
}

void TestFrmProgLifecycle::acceptedBlocksStayWhenTheSendIsAbandoned()
{
    ProgWindow w(hct7200);
    w.becomeReady();
    w.click(u"cmdEnviar"_s);
    w.nextRequestBody();
    w.answer(samples::generalData(hct7200));
    QCOMPARE(w.nextRequestBody().left(2), QByteArray::fromHex("da01"));
    w.answerHex("da00");
    QCOMPARE(w.nextRequestBody().left(2), QByteArray::fromHex("da02"));
    w.click(u"cmdCancelar"_s);
    w.timeOut();
    QCOMPARE(w.nextRequestBody(), QByteArray());
    QVERIFY(w.dialogs.boxes.isEmpty());
}

void TestFrmProgLifecycle::closedWindowSendsNothing()
{
    ProgWindow w(hct7200);
    w.becomeReady();
    QPushButton* send = w.find<QPushButton>(u"cmdEnviar"_s);
    w.form->close();
    send->click();
    w.tick(5);
    QVERIFY(!w.hasRequest());
}

void TestFrmProgLifecycle::connectionLostWhileReadingIsTold()
{
    ProgWindow w(hct7200);
    w.nextRequestBody();
    w.disconnect();
    QVERIFY(w.dialogs.boxes.isEmpty());
    QTRY_COMPARE(w.dialogs.boxes.count(), 1);
    verifyToldAndEditable(w);
}

void TestFrmProgLifecycle::connectionLostWhileSendingLeavesWhatWasEntered()
{
    const QTemporaryDir folder;
    ProgWindow w(hct7200);
    w.becomeReady();
    w.time(0)->setValues(8, 45);
    w.clickDay(u"chkLuns"_s, 0);
    w.click(u"cmdEnviar"_s);
    w.nextRequestBody();
    w.disconnect();
    QTRY_COMPARE(w.dialogs.boxes.count(), 1);
    verifyToldAndEditable(w);

    const QString path = folder.filePath(u"curso.hct"_s);
    w.dialogs.paths = {path};
    w.click(u"cmdGardar"_s);
    QVERIFY(contentsOf(path).startsWith("--AVISOS 1--\r\n0\r\n0\r\n8\r\n45\r\n1\r\n"));
}

void TestFrmProgLifecycle::sendingAfterTheConnectionIsLostIsTold()
{
    ProgWindow w(hct7200);
    w.becomeReady();
    w.disconnect();
    for (const int time : {1, 2}) {
        w.click(u"cmdEnviar"_s);
        QTRY_COMPARE(w.dialogs.boxes.count(), time);
        verifyToldAndEditable(w);
    }
    w.click(u"cmdCancelar"_s);
    ProgWindow::deleteWhatIsDue();
    QVERIFY(!w.form);
}

void TestFrmProgLifecycle::connectionLostUnderTheClashBoxIsToldAtTheNextSending()
{
    ProgWindow w(hct7200);
    w.becomeReady();
    for (const int row : {0, 1})
        w.clickDay(u"chkLuns"_s, row);
    w.dialogs.whileUp = [&w] { w.disconnect(); };
    w.click(u"cmdEnviar"_s);
    w.dialogs.whileUp = nullptr;
    QCOMPARE(w.dialogs.boxes.takeFirst().title, u"Error"_s);
    w.clickDay(u"chkLuns"_s, 1);
    w.click(u"cmdEnviar"_s);
    QTRY_COMPARE(w.dialogs.boxes.count(), 1);
    verifyToldAndEditable(w);
}

void TestFrmProgLifecycle::windowClosedAsTheConnectionIsLostTellsNothing_data() { ways(); }

void TestFrmProgLifecycle::windowClosedAsTheConnectionIsLostTellsNothing()
{
    QFETCH(Way, way);
    ProgWindow w(hct7200);
    w.becomeReady();
    w.click(u"cmdEnviar"_s);
    w.nextRequestBody();
    w.disconnect();
    closeBy(w, way);
    QCoreApplication::processEvents();
    ProgWindow::deleteWhatIsDue();
    QVERIFY(!w.form);
    QVERIFY(w.dialogs.boxes.isEmpty());
}

void TestFrmProgLifecycle::windowClosedUnderTheBoxAboutTheLostConnectionOutlivesIt()
{
    ProgWindow w(hct7200);
    bool alive = false;
    closeUnderTheBox(w, alive);
    w.disconnect();
    QTRY_COMPARE(w.dialogs.boxes.count(), 1);
    QVERIFY(alive);
    ProgWindow::deleteWhatIsDue();
    QVERIFY(!w.form);
}

void TestFrmProgLifecycle::windowClosedUnderTheFailureBoxOutlivesIt()
{
    ProgWindow w(hct7200);
    bool alive = false;
    closeUnderTheBox(w, alive);
    for (int call = 0; call < 12; ++call) {
        w.tick();
        w.timeOut();
    }
    QCOMPARE(w.dialogs.boxes.count(), 1);
    QVERIFY(alive);
    ProgWindow::deleteWhatIsDue();
    QVERIFY(!w.form);
}

void TestFrmProgLifecycle::windowClosedUnderTheClashBoxOutlivesIt()
{
    ProgWindow w(hct7200);
    w.becomeReady();
    for (const int row : {0, 1})
        w.clickDay(u"chkLuns"_s, row);
    bool alive = false;
    closeUnderTheBox(w, alive);
    w.find<QPushButton>(u"cmdEnviar"_s)->click();
    QVERIFY(alive);
    ProgWindow::deleteWhatIsDue();
    QVERIFY(!w.form);
    w.tick(5);
    QVERIFY(!w.hasRequest());
}

void TestFrmProgLifecycle::windowClosedUnderAFileDialogReadsNoFile()
{
    ProgWindow w(hct7200);
    w.becomeReady();
    w.dialogs.paths = {u"/no/hay/tal.hct"_s};
    w.dialogs.whileUp = [&] { w.form->close(); };
    w.find<QPushButton>(u"cmdAbrir"_s)->click();
    QVERIFY(w.log.lines.isEmpty());
    ProgWindow::deleteWhatIsDue();
    QVERIFY(!w.form);
}

void TestFrmProgLifecycle::windowDestroyedUnderItsBoxIsNotTouched()
{
    ProgWindow w(hct7200);
    w.dialogs.whileUp = [&] { delete w.form; };
    for (int call = 0; call < 12; ++call) {
        w.tick();
        w.timeOut();
    }
    QVERIFY(!w.form);
    w.tick(5);
    QCOMPARE(w.dialogs.boxes.count(), 1);
}

void TestFrmProgLifecycle::windowDestroyedUnderAFileDialogIsNotTouched()
{
    ProgWindow w(hct7200);
    w.becomeReady();
    w.dialogs.paths = {u"/no/hay/tal.hct"_s};
    w.dialogs.whileUp = [&] { delete w.form; };
    // Called as a slot and not by a click: deleting a button in its own click is not tested here.
    QMetaObject::invokeMethod(w.form, [&w] { emit w.find<QPushButton>(u"cmdAbrir"_s)->clicked(); });
    QVERIFY(!w.form);
    QVERIFY(w.log.lines.isEmpty());
}

void TestFrmProgLifecycle::sendingGoesOnWhileTheMainWindowPolls()
{
    ProgWindow w(hct7200);
    w.becomeReady();

    struct Poller final : DeferredProcess {
        explicit Poller(LinkFixture& linkFixture)
            : fixture(linkFixture), registration(linkFixture.crono, *this, 10)
        {
            registration.ActivaCliente();
        }
        void ProcesoDiferido() override
        {
            polling.request(fixture.link, 137, QByteArray(1, '\0'), isAnyAnswer,
                            [this](quint8, const QByteArray&, LinkStatus) { ++answers; });
        }
        LinkFixture& fixture;
        Exchange polling;
        CronoRegistration registration;
        int answers = 0;
    };
    Poller poller(w);

    w.tick(8);
    w.click(u"cmdEnviar"_s);
    int written = 0;
    for (int tick = 0; tick < 40 && w.form->isVisible(); ++tick) {
        const QByteArray request = w.nextRequestBody();
        if (request.isEmpty())
            continue;
        written += request.size() > 1 ? 1 : 0;
        w.answer(request.size() == 1 ? samples::generalData(hct7200)
                                     : request.left(1) + QByteArray(1, '\0'));
    }
    QVERIFY(!w.form->isVisible());
    QCOMPARE(written, 4);
    QVERIFY(poller.answers > 0);
}

void TestFrmProgLifecycle::windowDestroyedWithoutClosingLeavesTheService()
{
    ProgWindow w(hct7200);
    delete w.form;
    w.tick(5);
    QVERIFY(!w.hasRequest());
}

QTEST_MAIN(TestFrmProgLifecycle)
#include "TestFrmProgLifecycle.moc"
