#include "FaultTable.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// A fault that goes on: so many failures of an exchange that has no limit.
constexpr int manyFailures = 12;

/// The line, with a fault, under one exchange.
class Course {
public:
    Course(ExchangeKind exchange, Fault fault, int at)
        : desk(ExchangeUnderTest::make(exchange)),
          m_events(spoil(table::row(exchange).answer, fault, at))
    {}

    /// What happens on the line at the moment.
    void play(Moment moment)
    {
        for (const LineEvent& event : m_events)
            if (event.moment == moment) {
                if (event.isLoss())
                    desk->serie.vanish();
                else
                    desk->serie.arrive(event.bytes);
            }
    }
    /// The next request, with the fault, until its answer is taken or its time is out; what was
    /// written.
    QByteArray request()
    {
        play(Moment::BeforeRequest);
        int writes = 0;
        desk->serie.afterWrite = [this, &writes] {
            play(++writes == 1 ? Moment::AtStartByte : Moment::AtRest);
        };
        const QByteArray written = desk->nextRequest();
        desk->serie.afterWrite = nullptr;
        play(Moment::AfterRequest);
        if (desk->link.Ocupado())
            desk->timeOut();
        return written;
    }

    const std::unique_ptr<ExchangeUnderTest> desk;

private:
    const QList<LineEvent> m_events;
};

void addRows()
{
    QTest::addColumn<ExchangeKind>("exchange");
    QTest::addColumn<Fault>("fault");
}

void addRow(ExchangeKind exchange, Fault fault)
{
    QTest::newRow(table::row(exchange).name + ": " + table::name(fault)) << exchange << fault;
}

void forEachCell(const std::function<void(ExchangeKind, Fault)>& visit)
{
    for (int exchange = 0; exchange < exchangeCount; ++exchange)
        for (int fault = 0; fault < faultCount; ++fault)
            visit(ExchangeKind(exchange), Fault(fault));
}

} // namespace

/// Every exchange against every fault of its answer.
class TestFaultMatrix : public QObject {
    Q_OBJECT
private slots:
    void everyExchangeMeetsEveryFault();
    void faultIsMetAndTheNextRequestGoesOn_data();
    void faultIsMetAndTheNextRequestGoesOn();
    void faultThatGoesOnEndsTheExchangeAtItsLimit_data();
    void faultThatGoesOnEndsTheExchangeAtItsLimit();

private:
    void meet(ExchangeKind exchange, Fault fault, int at);
};

void TestFaultMatrix::everyExchangeMeetsEveryFault()
{
    int cells = 0;
    int courses = 0;
    forEachCell([&](ExchangeKind exchange, Fault fault) {
        const bool isCell = table::cell(fault, exchange).has_value();
        const int ways = variants(table::row(exchange).answer, fault);
        const QByteArray what = table::row(exchange).name + ": " + table::name(fault);
        QVERIFY2(isCell == table::whyThereIsNone(fault, exchange).isEmpty(), what);
        QVERIFY2(!isCell || ways > 0, what);
        cells += isCell ? 1 : 0;
        courses += isCell ? ways : 0;
    });
    QCOMPARE(cells, 422);
    QCOMPARE(courses, 13291);
}

void TestFaultMatrix::faultIsMetAndTheNextRequestGoesOn_data()
{
    addRows();
    forEachCell([](ExchangeKind exchange, Fault fault) {
        if (table::cell(fault, exchange))
            addRow(exchange, fault);
    });
}

void TestFaultMatrix::faultIsMetAndTheNextRequestGoesOn()
{
    QFETCH(ExchangeKind, exchange);
    QFETCH(Fault, fault);
    const int ways = variants(table::row(exchange).answer, fault);
    for (int at = 0; at < ways; ++at) {
        meet(exchange, fault, at);
        if (QTest::currentTestFailed()) {
            qWarning("in way %d of %d", at, ways);
            return;
        }
    }
}

void TestFaultMatrix::meet(ExchangeKind exchange, Fault fault, int at)
{
    const table::Row& row = table::row(exchange);
    const table::Cell cell = table::cell(fault, exchange).value();
    Course course(exchange, fault, at);
    ExchangeUnderTest& desk = *course.desk;
    const QByteArray shown = desk.globais.GeneralData;

    const bool isSent = cell.status != 11;
    QCOMPARE(course.request().toHex(), isSent ? row.request.toHex() : QByteArray());
    QCOMPARE(desk.trace.take(), QList<int>{cell.status});
    QCOMPARE(desk.report(),
             cell.status == 0 ? row.good : table::withStatus(row.failed, cell.status));
    if (cell.status != 0)
        QCOMPARE(desk.globais.GeneralData, shown);
    QVERIFY(desk.isFree());
    course.play(Moment::AfterAnswer);

    const bool isLost = cell.statusOfNext == 11;
    const QByteArray next = desk.nextRequest();
    if (isLost)
        QCOMPARE(next.toHex(), QByteArray());
    else
        QCOMPARE(next.toHex(), (cell.status == 0 ? row.next : row.repetition).toHex());
    course.play(Moment::AfterNextRequest);
    if (desk.link.Ocupado())
        desk.serie.arrive(ExchangeUnderTest::goodAnswerTo(next));
    QCOMPARE(desk.trace.take(), QList<int>{cell.statusOfNext});
    QCOMPARE(desk.report(), table::reportAfterNext(row, cell));
    QCOMPARE(desk.portToolTip, isLost ? u"Se ha perdido el puerto /dev/fake"_s : u"/dev/fake"_s);

    QVERIFY(desk.isFree());

    // One more answer, which nobody awaits.
    const QString before = desk.report();
    desk.serie.arrive(row.answer);
    QCOMPARE(desk.trace.take(), QList<int>());
    QCOMPARE(desk.report(), before);
}

void TestFaultMatrix::faultThatGoesOnEndsTheExchangeAtItsLimit_data()
{
    addRows();
    forEachCell([](ExchangeKind exchange, Fault fault) {
        const auto cell = table::cell(fault, exchange);
        // A late answer is that to the repetition, which so does not fail.
        if (cell && cell->status != 0 && fault != Fault::LateAfterNextRequest)
            addRow(exchange, fault);
    });
}

void TestFaultMatrix::faultThatGoesOnEndsTheExchangeAtItsLimit()
{
    QFETCH(ExchangeKind, exchange);
    QFETCH(Fault, fault);
    const table::Row& row = table::row(exchange);
    const table::Cell cell = table::cell(fault, exchange).value();
    Course course(exchange, fault, 0);
    ExchangeUnderTest& desk = *course.desk;
    if (exchange != ExchangeKind::Identification && exchange != ExchangeKind::GeneralData)
        desk.stopPolling();

    const bool isLost = cell.statusOfNext == 11;
    const int failures = row.mostFailures == 0 ? manyFailures : row.mostFailures;
    for (int failure = 0; failure < failures; ++failure) {
        desk.report();
        const bool isSent = failure == 0 ? cell.status != 11 : !isLost;
        const QByteArray expected = failure % 2 == 0 ? row.request : row.repetition;
        QCOMPARE(course.request().toHex(), isSent ? expected.toHex() : QByteArray());
        const int status = failure == 0 ? cell.status : isLost ? 11 : cell.status;
        QCOMPARE(desk.trace.take(), QList<int>{status});
        QVERIFY(desk.isFree());
        course.play(Moment::AfterAnswer);
    }
    desk.tick();
    QCOMPARE(desk.report(), table::withStatus(row.givenUp, isLost ? 11 : cell.status));
    QCOMPARE(desk.nextRequest().toHex(), isLost ? QByteArray() : row.afterwards.toHex());
}

QTEST_GUILESS_MAIN(TestFaultMatrix)
#include "TestFaultMatrix.moc"
