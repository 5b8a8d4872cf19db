#include "FarEnd.h"
#include "FaultTable.h"
#include "SerialPort.h"
#include "Session.h"
#include "SystemEnvironment.h"

#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

const QString speed = u"115200"_s;

/// The machine's pause, and after it something else.
class WatchedPause final : public Pause {
public:
    WatchedPause(Pause& pause, std::function<void()> waited)
        : m_pause(pause), m_waited(std::move(waited))
    {}

    void Wait(Milliseconds time, bool letEventsRun) override
    {
        m_pause.Wait(time, letEventsRun);
        m_waited();
    }

private:
    Pause& m_pause;
    const std::function<void()> m_waited;
};

/// The machine with another pause.
Environment withPause(const Environment& machine, Pause& pause)
{
    return {.registry = machine.registry,
            .portNames = machine.portNames,
            .commSerie = machine.commSerie,
            .commModem = machine.commModem,
            .tmrCrono = machine.tmrCrono,
            .tmrTemporizador = machine.tmrTemporizador,
            .pause = pause,
            .clock = machine.clock,
            .applicationDirectory = machine.applicationDirectory};
}

/// A session on this machine's ports and timers. The clock at the far end of its COM1 spoils its
/// first general data. Stops after the request that follows.
class Course : public QObject {
    Q_OBJECT
public:
    Course(FarEnd& clock, const QList<LineEvent>& events) : m_clock(clock), m_events(events)
    {
        connect(&m_clock, &FarEnd::requested, this, &Course::answer);
        connect(&m_session.environment().commSerie, &SerialPort::lost, this,
                [this] { m_session.crono().setTimerEnabled(true); });
        connect(&m_session.link(), &MessageLink::VisualizaPorto, this,
                [this](const QString& /*text*/, const QString& tip) { portToolTip = tip; });
        trace.met = [this] { statusMet(); };
        m_session.settings().directSpeed = speed;
        m_session.link().ApplySettings();
        m_session.start();
    }
    ~Course() override { m_session.workflow().unload(); }

    /// Whether it has come to its end.
    bool run()
    {
        QSignalSpy ended(this, &Course::ended);
        m_session.workflow().Conectar(false);
        return ended.wait();
    }
    /// As the table tells it.
    QString state()
    {
        return u"%1, %2 bytes"_s.arg(stateOf(m_session.workflow()))
            .arg(m_session.globais().GeneralData.size());
    }

    RecordingLog log;
    StatusTrace trace;
    /// In hexadecimal.
    QList<QByteArray> requests;
    QString portToolTip;

signals:
    void ended();

private:
    void answer(const QByteArray& request)
    {
        requests.append(request.toHex());
        if (requests.size() == 2)
            return playAfterRequest(0);
        if (requests.size() == 3)
            play(Moment::AfterNextRequest);
        m_clock.send(ExchangeUnderTest::goodAnswerTo(request));
    }
    void play(Moment moment)
    {
        for (const LineEvent& event : m_events)
            if (event.moment == moment)
                happen(event);
    }
    /// One event at a time, so that the port may read between them.
    void playAfterRequest(qsizetype index)
    {
        if (index >= m_events.size())
            return;
        if (m_events.at(index).moment == Moment::AfterRequest)
            happen(m_events.at(index));
        QTimer::singleShot(0, this, [this, index] { playAfterRequest(index + 1); });
    }
    void happen(const LineEvent& event)
    {
        if (!event.isLoss())
            return m_clock.send(event.bytes);
        // No request until the port has noticed it.
        m_session.crono().setTimerEnabled(false);
        m_clock.vanish();
    }
    void statusMet()
    {
        if (trace.statuses.size() == m_met)
            return;
        m_met = trace.statuses.size();
        if (m_met == 1)
            play(Moment::BeforeRequest);
        if (m_met == 2)
            play(Moment::AfterAnswer);
        if (m_met == 3) {
            m_session.crono().setTimerEnabled(false);
            QTimer::singleShot(0, this, &Course::ended);
        }
    }
    /// The identification has two pauses; the third is that before the first byte of general data.
    void paused()
    {
        if (++m_pauses == 3)
            play(Moment::AtStartByte);
    }

    FarEnd& m_clock;
    const QList<LineEvent> m_events;
    qsizetype m_met = 0;
    int m_pauses = 0;
    SystemEnvironment m_machine;
    WatchedPause m_pause{m_machine.environment().pause, [this] { paused(); }};
    Session m_session{withPause(m_machine.environment(), m_pause), log};
};

} // namespace

/// One of each fault, for the general data, over a pseudo-terminal with this machine's port, tick
/// and pauses.
class TestFaultsOverTheLine : public QObject {
    Q_OBJECT
private slots:
    void faultIsMetAndTheNextRequestGoesOn_data();
    void faultIsMetAndTheNextRequestGoesOn();
};

void TestFaultsOverTheLine::faultIsMetAndTheNextRequestGoesOn_data()
{
    QTest::addColumn<Fault>("fault");
    for (int fault = 0; fault < faultCount; ++fault)
        QTest::newRow(table::name(Fault(fault))) << Fault(fault);
}

void TestFaultsOverTheLine::faultIsMetAndTheNextRequestGoesOn()
{
    QFETCH(Fault, fault);
    const table::Row& row = table::row(ExchangeKind::GeneralData);
    const table::Cell cell = table::cell(fault, ExchangeKind::GeneralData).value();
    // The port is lost at the first byte: the other way needs a second thread.
    const int at = fault == Fault::LostAtRequest ? 0 : variants(row.answer, fault) / 2;

    FarEnd clock;
    qputenv("HCT_COM1", clock.device().toLatin1());
    Course course(clock, spoil(row.answer, fault, at));
    QVERIFY(course.run());

    QCOMPARE(course.trace.take(), (QList<int>{0, cell.status, cell.statusOfNext}));
    QList<QByteArray> requests{"68040468010102010516", row.request.toHex(),
                               (cell.status == 0 ? row.next : row.repetition).toHex()};
    const bool isLost = cell.statusOfNext == 11;
    if (isLost)
        requests.removeLast();
    if (fault == Fault::LostBeforeRequest || fault == Fault::LostAtRequest)
        requests.removeLast();
    QCOMPARE(course.requests, requests);
    QCOMPARE(course.state(), table::reportAfterNext(row, cell).section(u" | "_s, 0, 0));
    QStringList lines{u"Conexión interrumpida"_s, u"Estableciendo conexión..."_s,
                      u"Identificación aceptada"_s};
    if (cell.status == 0 || cell.statusOfNext == 0)
        lines.append(u"Conexión establecida"_s);
    QCOMPARE(course.log.lines, lines);
    QCOMPARE(course.portToolTip,
             isLost ? u"Se ha perdido el puerto "_s + clock.device() : clock.device());
}

QTEST_GUILESS_MAIN(TestFaultsOverTheLine)
#include "TestFaultsOverTheLine.moc"
