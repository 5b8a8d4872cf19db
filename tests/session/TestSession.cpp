#include "World.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString direct = u"Software\\Quorvex\\Lurimat\\Directo"_s;
const QString remote = u"Software\\Quorvex\\Lurimat\\Remoto"_s;
const QString common = u"Software\\Quorvex\\Lurimat\\Comun"_s;

} // namespace

class TestSession : public QObject {
    Q_OBJECT
private slots:
    void settingsAreReadAtConstruction();
    void portsTakeTheSettingsAndStayClosed();
    void applicationDirectoryIsThatOfTheEnvironment();
    void nothingTicksBeforeAConnection();
    void connectsToTheClockOfItsEnvironment();
    void endOfOneSessionsConnectionLeavesTheOtherPolling();
    void destroyedSessionLeavesTheOtherPolling();
};

void TestSession::settingsAreReadAtConstruction()
{
    World world;
    world.registry.setText(common, u"Estacion"_s, "7");
    world.registry.setText(common, u"Identificacion"_s, "42");
    Session session(world.environment(), world.log);
    QCOMPARE(session.link().estacion(), quint8(7));
    QCOMPARE(session.link().identificacion(), quint8(42));
}

void TestSession::portsTakeTheSettingsAndStayClosed()
{
    World world;
    world.registry.setText(direct, u"Puerto"_s, "4");
    world.registry.setText(direct, u"Velocidad"_s, "19200");
    world.registry.setText(remote, u"Puerto"_s, "2");
    const Session session(world.environment(), world.log);
    QCOMPARE(world.serie.portNumber(), 5);
    QCOMPARE(world.serie.settings(), u"19200,N,8,1"_s);
    QCOMPARE(world.modem.portNumber(), 3);
    QCOMPARE(world.modem.settings(), u"9600,N,8,1"_s);
    QCOMPARE(world.serie.timesOpened + world.modem.timesOpened, 0);
}

void TestSession::applicationDirectoryIsThatOfTheEnvironment()
{
    World world;
    Session session(world.environment(), world.log);
    QCOMPARE(session.globais().applicationDirectory, u"/opt/hct/"_s);
}

void TestSession::nothingTicksBeforeAConnection()
{
    World world;
    Session session(world.environment(), world.log);
    session.start();
    QVERIFY(!world.tmrCrono.fire());
    QCOMPARE(session.workflow().state(), ConnectionState::Disconnected);
}

void TestSession::connectsToTheClockOfItsEnvironment()
{
    World world;
    Connected connected(world);
    QCOMPARE(connected.session.globais().GeneralData, LinkFixture::fullBlock());
    QCOMPARE(world.log.lines,
             (QStringList{u"Conexión interrumpida"_s, u"Estableciendo conexión..."_s,
                          u"Identificación aceptada"_s, u"Conexión establecida"_s}));
}

void TestSession::endOfOneSessionsConnectionLeavesTheOtherPolling()
{
    World first;
    World second;
    Connected ended(first);
    Connected other(second);
    ended.session.workflow().Desconectar();
    QCOMPARE(first.nextRequest(), QByteArray());
    QVERIFY(!ended.session.globais().LinkEstablished);
    QCOMPARE(second.nextRequest(), QByteArray("680303680199009a16"));
    QVERIFY(other.session.globais().LinkEstablished);
}

void TestSession::destroyedSessionLeavesTheOtherPolling()
{
    World first;
    World second;
    auto destroyed = std::make_unique<Connected>(first);
    Connected other(second);
    destroyed.reset();
    QCOMPARE(second.nextRequest(), QByteArray("680303680199009a16"));
    second.answer(LinkFixture::fullBlock(31));
    QCOMPARE(other.session.globais().GeneralData, LinkFixture::fullBlock(31));
}

QTEST_GUILESS_MAIN(TestSession)
#include "TestSession.moc"
