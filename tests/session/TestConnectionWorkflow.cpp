#include "LinkState.h"
#include "MessageCodes.h"
#include "WorkflowFixture.h"

using namespace Qt::StringLiterals;

namespace {

const QByteArray accepted = "\2\0"_ba;
const QByteArray closed = "\2\1"_ba;

const QString failure = u"Fallo en identificación del equipo"_s;

} // namespace

/// Identification and general data, from Conectar on.
class TestConnectionWorkflow : public WorkflowFixture {
    Q_OBJECT
private slots:
    void init() { load(); }

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
    void identificationWhileConnectedOnlyForgetsTheFailures();
    void callWithoutAConnectionAsksNothing();
    void reasonOfAFailedIdentificationIsTold();
    void generalDataIsTold();
    void reasonOfFailedGeneralDataIsTold();
};

void TestConnectionWorkflow::reasonOfAFailedIdentificationIsTold()
{
    QList<LinkStatus> told;
    ConnectionWorkflow& workflow = *m_workflow;
    connect(&workflow, &ConnectionWorkflow::identificationFailed, this,
            [&told](LinkStatus status) { told += status; });
    connectToClock();
    m_fixture->timeOut();
    failIdentification();
    QVERIFY(told == (QList{LinkStatus::TimeOut, LinkStatus::WrongAnswer}));
}

void TestConnectionWorkflow::reasonOfFailedGeneralDataIsTold()
{
    QList<LinkStatus> told;
    ConnectionWorkflow& workflow = *m_workflow;
    connect(&workflow, &ConnectionWorkflow::generalDataFailed, this,
            [&told](LinkStatus status) { told += status; });
    identify();
    QByteArray refused = LinkFixture::fullBlock();
    refused[4] = 1;
    answerPoll(refused);
    answerPoll(LinkFixture::fullBlock().first(219));
    m_fixture->tick(10);
    m_fixture->timeOut();
    QVERIFY(told == (QList{LinkStatus::Refused, LinkStatus::WrongAnswer, LinkStatus::TimeOut}));
}

void TestConnectionWorkflow::generalDataIsTold()
{
    QList<QByteArray> told;
    ConnectionWorkflow& workflow = *m_workflow;
    connect(&workflow, &ConnectionWorkflow::generalDataReceived, this,
            [this, &told] { told += m_fixture->globais.GeneralData; });
    identify();
    QVERIFY(told.isEmpty());
    answerPoll(LinkFixture::fullBlock());
    answerPoll(LinkFixture::fullBlock(31));
    QCOMPARE(told, (QList{LinkFixture::fullBlock(), LinkFixture::fullBlock(31)}));
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
    QVERIFY(!m_workflow->exitNeedsConsent());
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
    m_workflow->mntDatosXerais_Recibido(8, LinkFixture::fullBlock(), LinkStatus::ConnectionOver);
    QCOMPARE(m_workflow->state(), ConnectionState::Disconnected);
    QCOMPARE(m_fixture->log.lines, QStringList{u"Conexión interrumpida"_s});
}

void TestConnectionWorkflow::identificationWhileConnectedOnlyForgetsTheFailures()
{
    establish();
    answerPoll(QByteArray::fromHex("ff"));
    QCOMPARE(m_workflow->FailedAttempts(), qint16{1});
    m_workflow->identificacion(true);
    m_fixture->answerHex("0205");
    QCOMPARE(m_workflow->FailedAttempts(), qint16{0});
    QCOMPARE(m_workflow->state(), ConnectionState::Connected);
    QCOMPARE(m_fixture->log.lines, QStringList());
}

void TestConnectionWorkflow::callWithoutAConnectionAsksNothing()
{
    establish();
    m_workflow->Desconectar();
    m_fixture->link.ArrancaConexion(false);
    m_workflow->ProcesoDiferido();
    QVERIFY(!m_fixture->hasRequest());
}

QTEST_GUILESS_MAIN(TestConnectionWorkflow)
#include "TestConnectionWorkflow.moc"
