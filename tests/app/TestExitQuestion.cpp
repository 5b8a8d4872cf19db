#include "ConnectionWorkflow.h"
#include "LinkFixture.h"
#include "ProgramFixture.h"
#include "frmPrincipal.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// The question before a clock is left in remote-control mode.
class TestExitQuestion : public QObject {
    Q_OBJECT
private slots:
    void init() { m_fixture = std::make_unique<ProgramFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void disconnectingAsksOnlyInRemoteControl();
    void questionIsInTheseWords();
    void refusedDisconnectingChangesNothing();
    void connectionThatEndsUnderTheQuestionEndsOnce();
    void closingAsksOnlyWhileEstablished();

private:
    void disconnect() { m_fixture->choose("mnuDesconectar"); }
    ConnectionWorkflow& workflow() { return m_fixture->program.session().workflow(); }
    const QList<FakeDialogs::Box>& boxes() { return m_fixture->dialogs.boxes; }

    std::unique_ptr<ProgramFixture> m_fixture;
};

void TestExitQuestion::disconnectingAsksOnlyInRemoteControl()
{
    m_fixture->establish(LinkFixture::fullBlock());
    disconnect();
    QCOMPARE(workflow().state(), ConnectionState::Disconnected);
    QCOMPARE(boxes().size(), 0);

    m_fixture->establish(LinkFixture::remoteControlledBlock());
    m_fixture->dialogs.confirmations = {true};
    disconnect();
    QCOMPARE(workflow().state(), ConnectionState::Disconnected);
    QCOMPARE(boxes().size(), 1);
}

void TestExitQuestion::questionIsInTheseWords()
{
    m_fixture->establish(LinkFixture::remoteControlledBlock());
    disconnect();
    QCOMPARE(boxes().size(), 1);
    const FakeDialogs::Box& box = boxes().first();
    QVERIFY(box.question);
    QCOMPARE(box.icon, Dialogs::Icon::Warning);
    QCOMPARE(box.text, u"El HCT se encuentra funcionando en modo telemandado. ¿Seguro\n"
                       "que desea salir de la aplicación dejándolo en ese modo?"_s);
}

void TestExitQuestion::refusedDisconnectingChangesNothing()
{
    m_fixture->establish(LinkFixture::remoteControlledBlock());
    const QStringList before = m_fixture->logLines();
    disconnect();
    QCOMPARE(workflow().state(), ConnectionState::Connected);
    QCOMPARE(m_fixture->logLines(), before);
    QVERIFY(m_fixture->serie.isOpen());
    QVERIFY(m_fixture->tmrCrono.isEnabled());
}

void TestExitQuestion::connectionThatEndsUnderTheQuestionEndsOnce()
{
    m_fixture->establish(LinkFixture::remoteControlledBlock());
    const qsizetype before = m_fixture->logLines().size();
    m_fixture->dialogs.confirmations = {true};
    m_fixture->dialogs.whileUp = [this] {
        m_fixture->serie.vanish();
        m_fixture->tick(80);
    };
    disconnect();
    const QStringList lines = m_fixture->logLines().sliced(before);
    QCOMPARE(lines.count(u"Conexión interrumpida"_s), 1);
    QCOMPARE(lines.count(u"Interrumpiendo conexión"_s), 0);
}

void TestExitQuestion::closingAsksOnlyWhileEstablished()
{
    m_fixture->establish(LinkFixture::remoteControlledBlock());
    QVERIFY(!m_fixture->program.mainWindow().queryUnload());
    m_fixture->dialogs.confirmations = {true};
    QVERIFY(m_fixture->program.mainWindow().queryUnload());
    QCOMPARE(boxes().size(), 2);
    workflow().ConnectionEnded();
    QVERIFY(m_fixture->program.mainWindow().queryUnload());
    QCOMPARE(boxes().size(), 2);
}

QTEST_MAIN(TestExitQuestion)
#include "TestExitQuestion.moc"
