#include "colClientes.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {
class Idler final : public DeferredProcess {
public:
    void ProcesoDiferido() override {}
};
} // namespace

class TestColClientes : public QObject {
    Q_OBJECT
private slots:
    void newRecordIsInactiveAndHasCountedNothing();
    void positionsCountFromOne();
    void keyFindsItsRecord();
    void withoutKeyThereIsOnlyThePosition();
    void keyThatIsThereAlreadyAddsNothing();
    void removingMovesTheLaterOnesUp();
    void removingWhatIsNotThereChangesNothing();
    void enumeratorVisitsInTheOrderOfPositions();

private:
    Idler m_first;
    Idler m_second;
    Idler m_third;
};

void TestColClientes::newRecordIsInactiveAndHasCountedNothing()
{
    colClientes clients;
    const clsCliente* record = clients.Add(7, &m_first, u"X0001"_s);
    QVERIFY(record);
    QCOMPARE(record->Period, qint16(7));
    QCOMPARE(record->Client, &m_first);
    QCOMPARE(record->Active, false);
    QCOMPARE(record->Ticks, qint16(0));
}

void TestColClientes::positionsCountFromOne()
{
    colClientes clients;
    clients.Add(1, &m_first, u"X0001"_s);
    clients.Add(1, &m_second, u"X0002"_s);
    QCOMPARE(clients.Count(), 2);
    QCOMPARE(clients.Item(0), nullptr);
    QCOMPARE(clients.Item(1)->Client, &m_first);
    QCOMPARE(clients.Item(2)->Client, &m_second);
    QCOMPARE(clients.Item(3), nullptr);
}

void TestColClientes::keyFindsItsRecord()
{
    colClientes clients;
    clients.Add(1, &m_first, u"X0001"_s);
    clients.Add(1, &m_second, u"X0002"_s);
    QCOMPARE(clients.Item(u"X0002"_s)->Client, &m_second);
    QCOMPARE(clients.Item(u"X0003"_s), nullptr);
}

void TestColClientes::withoutKeyThereIsOnlyThePosition()
{
    colClientes clients;
    clients.Add(1, &m_first, QString());
    clients.Add(1, &m_second, QString());
    QCOMPARE(clients.Count(), 2);
    QCOMPARE(clients.Item(QString()), nullptr);
    QCOMPARE(clients.Item(2)->Client, &m_second);
}

void TestColClientes::keyThatIsThereAlreadyAddsNothing()
{
    colClientes clients;
    clients.Add(1, &m_first, u"X0001"_s);
    QCOMPARE(clients.Add(1, &m_second, u"X0001"_s), nullptr);
    QCOMPARE(clients.Count(), 1);
    QCOMPARE(clients.Item(1)->Client, &m_first);
}

void TestColClientes::removingMovesTheLaterOnesUp()
{
    colClientes clients;
    clients.Add(1, &m_first, u"X0001"_s);
    clients.Add(1, &m_second, u"X0002"_s);
    clients.Add(1, &m_third, u"X0003"_s);
    clients.Remove(u"X0002"_s);
    QCOMPARE(clients.Item(2)->Client, &m_third);
    clients.Remove(1);
    QCOMPARE(clients.Item(1)->Client, &m_third);
    QCOMPARE(clients.Item(u"X0003"_s)->Client, &m_third);
}

void TestColClientes::removingWhatIsNotThereChangesNothing()
{
    colClientes clients;
    clients.Add(1, &m_first, u"X0001"_s);
    clients.Remove(0);
    clients.Remove(2);
    clients.Remove(u"X0009"_s);
    QCOMPARE(clients.Count(), 1);
}

void TestColClientes::enumeratorVisitsInTheOrderOfPositions()
{
    colClientes clients;
    clients.Add(1, &m_first, u"X0001"_s);
    clients.Add(1, &m_second, QString());
    QList<DeferredProcess*> visited;
    for (const auto& record : clients)
        visited.append(record->Client);
    QCOMPARE(visited, (QList<DeferredProcess*>{&m_first, &m_second}));
}

QTEST_GUILESS_MAIN(TestColClientes)
#include "TestColClientes.moc"
