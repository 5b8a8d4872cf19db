#include "FaultTable.h"
#include "HeapInUse.h"
#include "Soak.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// A million exchanges in virtual time. HCT_SOAK_SEED=N in the environment begins with another
/// seed.
class TestSoak : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void everyInvariantHoldsAtEveryStep();
    void everyKindOfExchangeIsExercised_data();
    void everyKindOfExchangeIsExercised();
    void everyFaultHappens_data();
    void everyFaultHappens();
    void everyEndIsReached_data();
    void everyEndIsReached();
    void memoryStaysFlat();
    void aSeedGivesTheSameRunAgain();

private:
    std::unique_ptr<Soak> m_soak;
    /// The step at which an invariant did not hold.
    std::optional<int> m_violatedAt;
    std::optional<std::size_t> m_heapEarly;
    std::optional<std::size_t> m_heapAtEnd;
};

namespace {

constexpr int allExchanges = 1000000;
constexpr int earlyExchanges = 100000;
/// What glibc keeps of freed memory for the thread and counts as in use: 7 pieces of each of 64
/// sizes up to 1032 bytes. It fills as the run goes on.
constexpr std::size_t heapAtRest = 262144;

quint32 seed()
{
    const QByteArray wanted = qgetenv("HCT_SOAK_SEED");
    return wanted.isEmpty() ? 20261121 : wanted.toUInt();
}

} // namespace

void TestSoak::initTestCase()
{
    m_soak = std::make_unique<Soak>(seed());
    for (int step = 0; m_soak->exchanges() < allExchanges && !m_violatedAt; ++step) {
        m_soak->step();
        if (*m_soak->violation())
            m_violatedAt = step;
        if (m_soak->exchanges() == earlyExchanges && !m_heapEarly) {
            m_soak->closeAll();
            m_heapEarly = heapInUse();
        }
    }
    m_soak->closeAll();
    m_heapAtEnd = heapInUse();

    for (int kind = 0; kind < requestKinds; ++kind)
        qInfo("%7d of %s, %d of them spoilt", m_soak->exchanges(RequestKind(kind)),
              Soak::nameOf(RequestKind(kind)), m_soak->faultsOf(RequestKind(kind)));
    for (int fault = 0; fault < faultCount; ++fault)
        qInfo("%7d times %s", m_soak->faults(Fault(fault)), table::name(Fault(fault)).constData());
}

void TestSoak::init()
{
    if (m_violatedAt && QTest::currentTestFunction() != "everyInvariantHoldsAtEveryStep"_ba)
        QSKIP("the run has ended early");
}

void TestSoak::everyInvariantHoldsAtEveryStep()
{
    if (m_violatedAt)
        QFAIL(qPrintable(u"seed %1, step %2: %3"_s.arg(seed())
                             .arg(*m_violatedAt)
                             .arg(QLatin1StringView(m_soak->violation()))));
    QCOMPARE(m_soak->exchanges(), 1000000);
}

void TestSoak::everyKindOfExchangeIsExercised_data()
{
    QTest::addColumn<RequestKind>("kind");
    for (int kind = 0; kind < 9; ++kind)
        QTest::newRow(Soak::nameOf(RequestKind(kind))) << RequestKind(kind);
}

void TestSoak::everyKindOfExchangeIsExercised()
{
    QFETCH(RequestKind, kind);
    QCOMPARE_GE(m_soak->exchanges(kind), 10000);
    QCOMPARE_GE(m_soak->faultsOf(kind), 100);
}

void TestSoak::everyFaultHappens_data()
{
    QTest::addColumn<Fault>("fault");
    for (int fault = 0; fault < 43; ++fault)
        QTest::newRow(table::name(Fault(fault)).constData()) << Fault(fault);
}

void TestSoak::everyFaultHappens()
{
    QFETCH(Fault, fault);
    QCOMPARE_GE(m_soak->faults(fault), 20);
}

void TestSoak::everyEndIsReached_data()
{
    QTest::addColumn<int>("times");
    QTest::newRow("connection lost") << m_soak->connectionsLost();
    QTest::newRow("clock set") << m_soak->shown().accepted;
    QTest::newRow("clock not set") << m_soak->shown().settingGaveUp;
    QTest::newRow("programme sent") << m_soak->shown().sent;
    QTest::newRow("programme not sent") << m_soak->shown().programmeGaveUp;
    QTest::newRow("holidays read") << m_soak->shown().holidaysRead;
    QTest::newRow("firmware sent") << m_soak->shown().finished;
    QTest::newRow("firmware not sent") << m_soak->shown().firmwareFailed;
}

void TestSoak::everyEndIsReached()
{
    QFETCH(int, times);
    QCOMPARE_GE(times, 100);
}

void TestSoak::memoryStaysFlat()
{
    if (!m_heapAtEnd)
        QSKIP("the system does not tell");
    // With all windows closed. One byte kept by each exchange would be 900,000.
    QCOMPARE_LE(*m_heapAtEnd, *m_heapEarly + heapAtRest);
}

void TestSoak::aSeedGivesTheSameRunAgain()
{
    const auto facts = [](quint32 from) {
        Soak soak(from);
        for (int step = 0; step < 5000; ++step)
            soak.step();
        QList<int> counts{soak.shown().accepted, soak.shown().sent, soak.shown().finished};
        for (int kind = 0; kind < 9; ++kind)
            counts.append(soak.exchanges(RequestKind(kind)));
        return counts;
    };
    QCOMPARE(facts(seed()), facts(seed()));
    QVERIFY(facts(seed()) != facts(seed() + 1));
}

QTEST_GUILESS_MAIN(TestSoak)
#include "TestSoak.moc"
