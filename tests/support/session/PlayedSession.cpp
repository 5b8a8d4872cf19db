#include "PlayedSession.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {

QByteArray timeBytes(const QDateTime& moment)
{
    const QDate date = moment.date();
    const QTime time = moment.time();
    return PlayedWindows::timeBytes(
        {date.day(), date.month(), date.year(), time.hour(), time.minute(), time.second()});
}

} // namespace

PlayedSession::PlayedSession(quint8 model)
    : clock(model),
      invariants(clock, fixture.settings.estacion()),
      windows(fixture, invariants),
      m_workflow(invariants, fixture.crono, fixture.link, fixture.globais, invariants)
{
    invariants.setParts([this] { return parts(); });
    // The time of day of a time zone costs more than an exchange.
    fixture.clock.time = QDateTime(QDate(2026, 11, 21), QTime(9, 5, 3), Qt::UTC);
    for (FakeSerialPort* each : {&fixture.serie, &fixture.modem})
        each->afterWrite = [this, each] { written(*each); };
    QObject::connect(&m_workflow, &ConnectionWorkflow::clockWindowsOutdated, &m_workflow, [this] {
        windows.closeSetting();
        windows.closeRemote();
    });
    const Invariants::Event event(invariants);
    invariants.expected.connectionEnds();
    invariants.connectionEnded();
    m_workflow.load();
}

void PlayedSession::Conectar(bool throughModem)
{
    const Invariants::Event event(invariants);
    m_throughModem = throughModem;
    invariants.portOpened(port().isOpen() || port().refusal.isEmpty());
    invariants.expected.connectionBegins();
    m_workflow.Conectar(throughModem);
}

void PlayedSession::Desconectar()
{
    const Invariants::Event event(invariants);
    if (isConnecting()) {
        invariants.expected.end(u"Interrumpiendo conexión"_s);
        invariants.connectionEnded();
    }
    m_workflow.Desconectar();
}

void PlayedSession::requestClosing()
{
    const Invariants::Event event(invariants);
    invariants.expected.connection.state = 3;
    m_workflow.requestClosing();
}

void PlayedSession::unload()
{
    const Invariants::Event event(invariants);
    if (invariants.isConnected() && windows.isProgramming())
        invariants.expected.programmeGivesUp();
    // Nobody is told any more.
    invariants.expected.programme.isFailurePosted = false;
    invariants.connectionEnded();
    m_isOver = true;
    m_workflow.unload();
}

void PlayedSession::tick()
{
    const Invariants::Event event(invariants);
    if (invariants.expected.setting.state == 2)
        invariants.expected.setting.now = timeBytes(fixture.clock.time);
    fixture.tick();
    fixture.pause.waits.clear();
}

void PlayedSession::arrive(const QByteArray& bytes)
{
    const Invariants::Event event(invariants);
    const bool wasDelivering = invariants.isDelivering();
    invariants.arrives(bytes);
    port().arrive(bytes);
    invariants.handled(wasDelivering);
}

void PlayedSession::timeOut()
{
    const Invariants::Event event(invariants);
    invariants.timesOut();
    fixture.timeOut();
}

void PlayedSession::losePort()
{
    const Invariants::Event event(invariants);
    invariants.portLost();
    port().vanish();
}

void PlayedSession::runEvents()
{
    const Invariants::Event event(invariants);
    invariants.expected.postedEventsRun();
    QCoreApplication::sendPostedEvents();
    windows.deleteClosed();
}

QByteArray PlayedSession::clockAnswers()
{
    const ExpectedRequest& request = invariants.request();
    invariants.clockTook();
    return LinkFixture::frame(fixture.settings.estacion(), 8,
                              clock.take(request.code, request.body));
}

QByteArray PlayedSession::clockRefuses() const
{
    return LinkFixture::frame(fixture.settings.estacion(), 8,
                              PlayedClock::refusal(invariants.request().body));
}

void PlayedSession::written(FakeSerialPort& written)
{
    const QByteArray bytes = written.writes.takeLast().bytes;
    invariants.wrote(bytes);
    if (m_writesUntilLoss > 0 && --m_writesUntilLoss == 0)
        losePort();
}

SessionParts PlayedSession::parts() const
{
    return {fixture.link,      fixture.tmrTemporizador, fixture.globais,    m_workflow,
            windows.setting(), windows.remote(),        windows.exchange(), windows.transfer()};
}
