#include "ConnectionWorkflow.h"
#include "LinkFixture.h"
#include "LinkState.h"
#include "MessageCodes.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QByteArray accepted = QByteArray::fromHex("0200");
const QByteArray closed = QByteArray::fromHex("0201");

const QString failure = u"Fallo en identificación del equipo"_s;

QByteArray remoteControlled()
{
    QByteArray block = LinkFixture::fullBlock();
    block[219] = 0x04;
    return block;
}

} // namespace

/// The connection from Conectar to its end, over a link whose far end is the test.
class TestConnectionWorkflow : public QObject {
    Q_OBJECT
private slots:
    void init();

    void loadingLeavesWhatAnEndedConnectionLeaves();
    void conectarLogsAndAsksAfterTenTicks();
    void identificationCarriesTheNumberOfTheSettings();
    void closingIdentificationCarriesTheComplement();
    void acceptedIdentificationLeadsToGeneralDataEveryTenTicks();
    void wrongIdentificationAnswersAreRepeated_data();
    void wrongIdentificationAnswersAreRepeated();
    void fourFailedIdentificationsEndTheConnection();
    void acceptedIdentificationForgetsTheFailuresBefore();
    void closedPortFailsFourTimesAndEnds();
    void answerWhileClosingEndsTheConnection_data();
    void answerWhileClosingEndsTheConnection();

    void firstGeneralDataEstablishesTheConnection();
    void laterGeneralDataRefreshesAndEstablishesNothing();
    void generalDataIsChecked_data();
    void generalDataIsChecked();
    void typeElevenNeeds220Bytes();
    void anyDeviceTypeIsTaken_data();
    void anyDeviceTypeIsTaken();
    void fourthFailedGeneralDataIdentifiesAgain();
    void refusalsCountAsFailures();
    void identifyingAgainKeepsTheConnectionEstablished();
    void statusSixEndsTheConnection();

    void desconectarEndsWithoutSendingAnything();
    void desconectarWithARequestOutstandingForgetsIt();
    void desconectarAndConectarAgainStartsAfresh();
    void conectarWhileIdentifyingStartsAnew();
    void afterTheEndNothingTicks();
    void stepsOfTheEndComeInTheirOrder();

    void confirmExitAsksOnlyInRemoteControl();
    void confirmExitAsksInTheseWords();
    void desconectarRefusedChangesNothing();
    void connectionThatEndsUnderTheQuestionEndsOnce();
    void closingAsksOnlyWhileEstablished();
    void closingStopsEverythingForGood();

private:
    void connectToClock()
    {
        m_workflow->Conectar(false);
        m_fixture->tick(10);
        m_fixture->takeRequest();
    }
    void identify()
    {
        connectToClock();
        m_fixture->answer(accepted);
    }
    void establish(const QByteArray& block = LinkFixture::fullBlock())
    {
        identify();
        answerPoll(block);
        m_fixture->log.lines.clear();
        m_steps.clear();
    }
    void answerPoll(const QByteArray& block)
    {
        m_fixture->tick(10);
        QCOMPARE(m_fixture->takeRequestBody(), QByteArray::fromHex("00"));
        m_fixture->answer(block);
    }
    void failIdentification()
    {
        m_fixture->tick(10);
        QCOMPARE(m_fixture->takeRequest().code, messagecode::Identification);
        m_fixture->answerHex("0205");
    }

    std::unique_ptr<LinkFixture> m_fixture;
    std::unique_ptr<ConnectionWorkflow> m_workflow;
    QStringList m_steps;
};

void TestConnectionWorkflow::init()
{
    m_workflow.reset();
    m_fixture = std::make_unique<LinkFixture>();
    LinkFixture& f = *m_fixture;
    m_workflow = std::make_unique<ConnectionWorkflow>(f.crono, f.link, f.globais, f.log, f.dialogs);
    connect(m_workflow.get(), &ConnectionWorkflow::clockCommandsUnlocked, this, [this] {
        m_steps.append(m_fixture->globais.LinkEstablished ? u"unlocked"_s : u"?"_s);
    });
    connect(m_workflow.get(), &ConnectionWorkflow::clockCommandsLocked, this, [this] {
        m_steps.append(m_fixture->tmrCrono.isEnabled() ? u"?"_s : u"timer off, locked"_s);
    });
    connect(m_workflow.get(), &ConnectionWorkflow::clockWindowsOutdated, this,
            [this] { m_steps.append(m_fixture->globais.LinkEstablished ? u"?"_s : u"windows"_s); });
    connect(m_workflow.get(), &ConnectionWorkflow::connectionStatusChanged, this,
            [this](bool connected) { m_steps.append(connected ? u"shown"_s : u"not shown"_s); });
    connect(&f.link, &MessageLink::VisualizaPorto, this, [this](const QString& text) {
        m_steps.append(text.isEmpty() ? u"link ended"_s : text);
    });
    m_workflow->load();
    QCOMPARE(f.log.lines, QStringList{u"Conexión interrumpida"_s});
    f.log.lines.clear();
}

void TestConnectionWorkflow::loadingLeavesWhatAnEndedConnectionLeaves()
{
    QCOMPARE(m_workflow->state(), ConnectionState::Disconnected);
    QCOMPARE(m_workflow->ClientId(), qint16(1));
    QVERIFY(!m_fixture->tmrCrono.isEnabled());
    QCOMPARE(m_steps,
             (QStringList{u"timer off, locked"_s, u"windows"_s, u"link ended"_s, u"not shown"_s}));
}

void TestConnectionWorkflow::conectarLogsAndAsksAfterTenTicks()
{
    m_workflow->Conectar(false);
    QCOMPARE(m_workflow->state(), ConnectionState::Identifying);
    QCOMPARE(m_fixture->log.lines, QStringList{u"Estableciendo conexión..."_s});
    m_fixture->tick(9);
    QVERIFY(!m_fixture->hasRequest());
    m_fixture->tick(1);
    QVERIFY(m_fixture->hasRequest());
}

void TestConnectionWorkflow::identificationCarriesTheNumberOfTheSettings()
{
    m_fixture->settings.identification = u"77"_s;
    m_workflow->Conectar(false);
    m_fixture->tick(10);
    const LinkFixture::Request request = m_fixture->takeRequest();
    QCOMPARE(request.rawCode, quint8(1));
    QCOMPARE(request.body, QByteArray::fromHex("024d"));
}

void TestConnectionWorkflow::closingIdentificationCarriesTheComplement()
{
    m_fixture->settings.identification = u"77"_s;
    m_fixture->connect();
    m_workflow->identificacion(false);
    QCOMPARE(m_fixture->takeRequestBody(), QByteArray::fromHex("02b2"));
}

void TestConnectionWorkflow::acceptedIdentificationLeadsToGeneralDataEveryTenTicks()
{
    identify();
    QCOMPARE(m_workflow->state(), ConnectionState::Connected);
    QCOMPARE(m_fixture->log.lines.last(), u"Identificación aceptada"_s);
    for (int poll = 0; poll < 3; ++poll) {
        m_fixture->tick(9);
        QVERIFY(!m_fixture->hasRequest());
        m_fixture->tick(1);
        const LinkFixture::Request request = m_fixture->takeRequest();
        QCOMPARE(request.code, quint8(137));
        QCOMPARE(request.body, QByteArray::fromHex("00"));
        m_fixture->answer(LinkFixture::fullBlock());
    }
}

void TestConnectionWorkflow::wrongIdentificationAnswersAreRepeated_data()
{
    QTest::addColumn<quint8>("code");
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("another code") << quint8(9) << accepted;
    QTest::newRow("one byte") << quint8(8) << QByteArray::fromHex("02");
    QTest::newRow("no byte") << quint8(8) << QByteArray();
    QTest::newRow("another selector") << quint8(8) << QByteArray::fromHex("0300");
    QTest::newRow("not accepted") << quint8(8) << QByteArray::fromHex("0201");
}

void TestConnectionWorkflow::wrongIdentificationAnswersAreRepeated()
{
    QFETCH(quint8, code);
    QFETCH(QByteArray, body);
    connectToClock();
    m_fixture->answer(body, code);
    QCOMPARE(m_workflow->state(), ConnectionState::Identifying);
    QCOMPARE(m_workflow->FailedAttempts(), qint16(1));
    QCOMPARE(m_fixture->log.lines.last(), failure);
    m_fixture->tick(10);
    QCOMPARE(m_fixture->takeRequest().code, quint8(1));
}

void TestConnectionWorkflow::fourFailedIdentificationsEndTheConnection()
{
    m_workflow->Conectar(false);
    m_fixture->log.lines.clear();
    for (int attempt = 0; attempt < 4; ++attempt)
        failIdentification();
    QCOMPARE(m_workflow->state(), ConnectionState::Disconnected);
    QCOMPARE(m_fixture->log.lines,
             (QStringList{failure, failure, failure, failure, u"Conexión interrumpida"_s}));
    QVERIFY(!m_fixture->serie.isOpen());
    QVERIFY(!m_fixture->tmrCrono.isEnabled());
}

void TestConnectionWorkflow::acceptedIdentificationForgetsTheFailuresBefore()
{
    m_workflow->Conectar(false);
    for (int attempt = 0; attempt < 3; ++attempt)
        failIdentification();
    m_fixture->tick(10);
    m_fixture->answer(accepted);
    QCOMPARE(m_workflow->FailedAttempts(), qint16(0));
    QCOMPARE(m_workflow->state(), ConnectionState::Connected);
}

void TestConnectionWorkflow::closedPortFailsFourTimesAndEnds()
{
    m_fixture->serie.refusal = u"No hay tal puerto"_s;
    m_workflow->Conectar(false);
    m_fixture->log.lines.clear();
    m_fixture->tick(39);
    QCOMPARE(m_fixture->log.lines, (QStringList{failure, failure, failure}));
    m_fixture->tick(1);
    QCOMPARE(m_fixture->log.lines.last(), u"Conexión interrumpida"_s);
    QVERIFY(!m_fixture->tmrCrono.isEnabled());
    QVERIFY(!m_fixture->hasRequest());
}

void TestConnectionWorkflow::answerWhileClosingEndsTheConnection_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("line");
    QTest::newRow("closed") << closed << u"Interrumpiendo conexión"_s;
    QTest::newRow("not closed") << accepted << failure;
    QTest::newRow("nonsense") << QByteArray::fromHex("ff") << failure;
}

// No command of the window closes this way, but a clock may be told goodbye by other means.
void TestConnectionWorkflow::answerWhileClosingEndsTheConnection()
{
    QFETCH(QByteArray, body);
    QFETCH(QString, line);
    establish();
    m_workflow->requestClosing();
    m_fixture->tick(10);
    QCOMPARE(m_fixture->takeRequestBody(), QByteArray::fromHex("02fe"));
    m_fixture->answer(body);
    QCOMPARE(m_workflow->state(), ConnectionState::Disconnected);
    QCOMPARE(m_fixture->log.lines, (QStringList{line, u"Conexión interrumpida"_s}));
}

void TestConnectionWorkflow::firstGeneralDataEstablishesTheConnection()
{
    identify();
    m_steps.clear();
    const QByteArray block = LinkFixture::fullBlock();
    answerPoll(block);
    QVERIFY(m_workflow->Established());
    QVERIFY(m_fixture->globais.LinkEstablished);
    QCOMPARE(m_fixture->globais.GeneralData, block);
    QCOMPARE(m_fixture->globais.GeneralDataAtConnect, block);
    QCOMPARE(m_fixture->globais.DeviceType, 11);
    QCOMPARE(m_steps, (QStringList{u"shown"_s, u"unlocked"_s}));
    QCOMPARE(m_fixture->log.lines.last(), u"Conexión establecida"_s);
}

void TestConnectionWorkflow::laterGeneralDataRefreshesAndEstablishesNothing()
{
    establish();
    const QByteArray first = m_fixture->globais.GeneralDataAtConnect;
    QByteArray later = first;
    later[5] = 44;
    answerPoll(later);
    QCOMPARE(m_fixture->globais.GeneralData, later);
    QCOMPARE(m_fixture->globais.GeneralDataAtConnect, first);
    QCOMPARE(m_fixture->log.lines, QStringList());
    QCOMPARE(m_steps, QStringList());
}

void TestConnectionWorkflow::generalDataIsChecked_data()
{
    QTest::addColumn<quint8>("code");
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("another code") << quint8(9) << LinkFixture::fullBlock();
    QTest::newRow("four bytes") << quint8(8) << QByteArray::fromHex("00000005");
    QTest::newRow("byte 0 set") << quint8(8) << QByteArray::fromHex("0100000500");
    QTest::newRow("byte 1 set") << quint8(8) << QByteArray::fromHex("0001000500");
    QTest::newRow("refused") << quint8(8) << QByteArray::fromHex("0000000501");
}

void TestConnectionWorkflow::generalDataIsChecked()
{
    QFETCH(quint8, code);
    QFETCH(QByteArray, body);
    establish();
    const QByteArray before = m_fixture->globais.GeneralData;
    m_fixture->tick(10);
    m_fixture->answer(body, code);
    QCOMPARE(m_workflow->FailedAttempts(), qint16(1));
    QCOMPARE(m_workflow->state(), ConnectionState::Connected);
    QCOMPARE(m_fixture->globais.GeneralData, before);
    QCOMPARE(m_fixture->globais.DeviceType, 11);
}

void TestConnectionWorkflow::typeElevenNeeds220Bytes()
{
    identify();
    answerPoll(LinkFixture::fullBlock().left(219));
    QCOMPARE(m_workflow->FailedAttempts(), qint16(1));
    QVERIFY(!m_workflow->Established());
    answerPoll(LinkFixture::fullBlock().left(220));
    QCOMPARE(m_workflow->FailedAttempts(), qint16(0));
    QVERIFY(m_workflow->Established());
}

void TestConnectionWorkflow::anyDeviceTypeIsTaken_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<int>("type");
    QTest::newRow("5, in five bytes") << QByteArray::fromHex("0000000500") << 5;
    QTest::newRow("0") << QByteArray::fromHex("0000000000") << 0;
    QTest::newRow("37") << QByteArray::fromHex("0000002500") << 37;
    QTest::newRow("255") << QByteArray::fromHex("000000ff00") << 255;
}

void TestConnectionWorkflow::anyDeviceTypeIsTaken()
{
    QFETCH(QByteArray, body);
    QFETCH(int, type);
    identify();
    answerPoll(body);
    QVERIFY(m_workflow->Established());
    QCOMPARE(m_fixture->globais.DeviceType, type);
    QVERIFY(m_workflow->ConfirmExit());
    QCOMPARE(m_fixture->dialogs.boxes.size(), 0);
}

void TestConnectionWorkflow::fourthFailedGeneralDataIdentifiesAgain()
{
    establish();
    for (int attempt = 0; attempt < 3; ++attempt) {
        m_fixture->tick(10);
        m_fixture->timeOut();
        QCOMPARE(m_workflow->state(), ConnectionState::Connected);
    }
    m_fixture->tick(10);
    m_fixture->timeOut();
    QCOMPARE(m_workflow->state(), ConnectionState::Identifying);
    QCOMPARE(m_workflow->FailedAttempts(), qint16(0));
    QCOMPARE(m_fixture->log.lines, QStringList());
}

void TestConnectionWorkflow::refusalsCountAsFailures()
{
    establish();
    QByteArray refusal = LinkFixture::fullBlock();
    refusal[4] = 1;
    for (int attempt = 0; attempt < 4; ++attempt)
        answerPoll(refusal);
    QCOMPARE(m_workflow->state(), ConnectionState::Identifying);
    QVERIFY(m_fixture->globais.LinkEstablished);
    QVERIFY(m_fixture->serie.isOpen());
}

void TestConnectionWorkflow::identifyingAgainKeepsTheConnectionEstablished()
{
    establish();
    for (int attempt = 0; attempt < 4; ++attempt)
        answerPoll(QByteArray::fromHex("ff"));
    m_fixture->tick(10);
    m_fixture->takeRequest();
    m_fixture->answer(accepted);
    QVERIFY(m_workflow->Established());
    answerPoll(LinkFixture::fullBlock(31));
    QCOMPARE(m_fixture->log.lines, QStringList{u"Identificación aceptada"_s});
    QCOMPARE(m_steps, QStringList());
    QCOMPARE(m_fixture->globais.GeneralData[12], char(31));
}

void TestConnectionWorkflow::statusSixEndsTheConnection()
{
    establish();
    m_workflow->mntDatosXerais_Recibido(8, LinkFixture::fullBlock(), linkstatus::ConnectionOver);
    QCOMPARE(m_workflow->state(), ConnectionState::Disconnected);
    QCOMPARE(m_fixture->log.lines, QStringList{u"Conexión interrumpida"_s});
}

void TestConnectionWorkflow::desconectarEndsWithoutSendingAnything()
{
    establish();
    m_workflow->Desconectar();
    QCOMPARE(m_workflow->state(), ConnectionState::Disconnected);
    QVERIFY(!m_fixture->hasRequest());
    QVERIFY(!m_fixture->serie.isOpen());
    QCOMPARE(m_fixture->log.lines,
             (QStringList{u"Interrumpiendo conexión"_s, u"Conexión interrumpida"_s}));
}

void TestConnectionWorkflow::desconectarWithARequestOutstandingForgetsIt()
{
    establish();
    m_fixture->tick(10);
    QVERIFY(m_fixture->link.Ocupado());
    m_workflow->Desconectar();
    QVERIFY(!m_fixture->link.Ocupado());
    QVERIFY(!m_fixture->tmrTemporizador.isEnabled());
    m_workflow->Conectar(false);
    m_fixture->log.lines.clear();
    m_fixture->answer(LinkFixture::fullBlock());
    QCOMPARE(m_workflow->FailedAttempts(), qint16(0));
    QVERIFY(!m_workflow->Established());
    QCOMPARE(m_fixture->log.lines, QStringList());
}

void TestConnectionWorkflow::desconectarAndConectarAgainStartsAfresh()
{
    establish();
    m_workflow->Desconectar();
    m_fixture->log.lines.clear();
    identify();
    answerPoll(LinkFixture::fullBlock());
    QCOMPARE(m_fixture->log.lines,
             (QStringList{u"Estableciendo conexión..."_s, u"Identificación aceptada"_s,
                          u"Conexión establecida"_s}));
}

void TestConnectionWorkflow::conectarWhileIdentifyingStartsAnew()
{
    m_workflow->Conectar(false);
    for (int attempt = 0; attempt < 3; ++attempt)
        failIdentification();
    m_fixture->tick(10);
    m_fixture->takeRequest();
    m_workflow->Conectar(false);
    QCOMPARE(m_workflow->FailedAttempts(), qint16(0));
    // The request from before is forgotten, and so is an answer that comes late.
    m_fixture->answerHex("0205");
    QCOMPARE(m_workflow->FailedAttempts(), qint16(0));
    for (int attempt = 0; attempt < 3; ++attempt)
        failIdentification();
    QCOMPARE(m_workflow->state(), ConnectionState::Identifying);
}

void TestConnectionWorkflow::afterTheEndNothingTicks()
{
    m_fixture->serie.refusal = u"No hay tal puerto"_s;
    m_workflow->Conectar(false);
    while (m_fixture->tmrCrono.fire()) {
    }
    QVERIFY(!m_fixture->tmrCrono.isEnabled());
    QVERIFY(!m_fixture->tmrTemporizador.isEnabled());
}

void TestConnectionWorkflow::stepsOfTheEndComeInTheirOrder()
{
    establish();
    m_workflow->Desconectar();
    QCOMPARE(m_steps,
             (QStringList{u"timer off, locked"_s, u"windows"_s, u"link ended"_s, u"not shown"_s}));
}

void TestConnectionWorkflow::confirmExitAsksOnlyInRemoteControl()
{
    establish();
    QVERIFY(m_workflow->ConfirmExit());
    QCOMPARE(m_fixture->dialogs.boxes.size(), 0);
    answerPoll(remoteControlled());
    QVERIFY(!m_workflow->ConfirmExit());
    m_fixture->dialogs.confirmations = {true};
    QVERIFY(m_workflow->ConfirmExit());
}

void TestConnectionWorkflow::confirmExitAsksInTheseWords()
{
    establish(remoteControlled());
    m_workflow->ConfirmExit();
    QCOMPARE(m_fixture->dialogs.boxes.size(), 1);
    const FakeDialogs::Box& box = m_fixture->dialogs.boxes.first();
    QVERIFY(box.question);
    QCOMPARE(box.icon, Dialogs::Icon::Warning);
    QCOMPARE(box.text, u"El HCT se encuentra funcionando en modo telemandado. ¿Seguro\n"
                       "que desea salir de la aplicación dejándolo en ese modo?"_s);
}

void TestConnectionWorkflow::desconectarRefusedChangesNothing()
{
    establish(remoteControlled());
    m_workflow->Desconectar();
    QCOMPARE(m_workflow->state(), ConnectionState::Connected);
    QCOMPARE(m_fixture->log.lines, QStringList());
    QVERIFY(m_fixture->serie.isOpen());
    QVERIFY(m_fixture->tmrCrono.isEnabled());
}

void TestConnectionWorkflow::connectionThatEndsUnderTheQuestionEndsOnce()
{
    establish(remoteControlled());
    m_fixture->dialogs.confirmations = {true};
    m_fixture->dialogs.whileUp = [this] {
        m_fixture->serie.vanish();
        m_fixture->tick(80);
    };
    m_workflow->Desconectar();
    QCOMPARE(m_fixture->log.lines.count(u"Conexión interrumpida"_s), 1);
    QCOMPARE(m_fixture->log.lines.count(u"Interrumpiendo conexión"_s), 0);
}

void TestConnectionWorkflow::closingAsksOnlyWhileEstablished()
{
    establish(remoteControlled());
    QVERIFY(!m_workflow->queryUnload());
    m_fixture->dialogs.confirmations = {true};
    QVERIFY(m_workflow->queryUnload());
    QCOMPARE(m_fixture->dialogs.boxes.size(), 2);
    m_workflow->ConnectionEnded();
    QVERIFY(m_workflow->queryUnload());
    QCOMPARE(m_fixture->dialogs.boxes.size(), 2);
}

void TestConnectionWorkflow::closingStopsEverythingForGood()
{
    establish();
    m_fixture->tick(10);
    m_workflow->unload();
    QVERIFY(m_fixture->globais.ShuttingDown);
    QVERIFY(!m_fixture->serie.isOpen());
    QVERIFY(!m_fixture->tmrCrono.isEnabled());
    QVERIFY(!m_fixture->tmrTemporizador.isEnabled());
    m_workflow->Conectar(false);
    QVERIFY(!m_fixture->serie.isOpen());
    QVERIFY(!m_fixture->tmrCrono.isEnabled());
}

QTEST_GUILESS_MAIN(TestConnectionWorkflow)
#include "TestConnectionWorkflow.moc"
