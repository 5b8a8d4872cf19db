#include "NoDescriptors.h"
#include "TerminationSignals.h"

#include <QSignalSpy>
#include <QTest>

#include <cerrno>
#include <csignal>
#include <optional>

class TestTerminationSignals : public QObject {
    Q_OBJECT
private slots:
    void signalIsTold_data();
    void signalIsTold();
    void signalsThatArriveTogetherAreToldTogether();
    void ignoredSignalStaysIgnored();
    void signalsAreAsBeforeAfterwards();
    void errorOfWhatIsInterruptedIsKept();
    void withoutDescriptorsSignalsStayAsTheyWere();
};

namespace {

using Handler = void (*)(int);

void someHandler(int) {}

Handler handlerOf(int number)
{
    struct sigaction action {};
    sigaction(number, nullptr, &action);
    return action.sa_handler;
}

} // namespace

void TestTerminationSignals::signalIsTold_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void TestTerminationSignals::signalIsTold()
{
    QFETCH(int, number);
    const TerminationSignals termination;
    QSignalSpy arrived(&termination, &TerminationSignals::arrived);
    std::raise(number);
    QVERIFY(arrived.isEmpty());
    QTRY_COMPARE(arrived.count(), 1);
    QCOMPARE(arrived.first().first().toInt(), number);
}

void TestTerminationSignals::signalsThatArriveTogetherAreToldTogether()
{
    const TerminationSignals termination;
    QSignalSpy arrived(&termination, &TerminationSignals::arrived);
    std::raise(SIGTERM);
    std::raise(SIGHUP);
    QCoreApplication::processEvents();
    QCOMPARE(arrived.count(), 2);
    QCOMPARE(arrived.at(0).first().toInt(), SIGTERM);
    QCOMPARE(arrived.at(1).first().toInt(), SIGHUP);
}

void TestTerminationSignals::ignoredSignalStaysIgnored()
{
    std::signal(SIGHUP, SIG_IGN);
    {
        const TerminationSignals termination;
        QVERIFY(handlerOf(SIGHUP) == SIG_IGN);
        QVERIFY(handlerOf(SIGTERM) != SIG_IGN);
    }
    QVERIFY(handlerOf(SIGHUP) == SIG_IGN);
    std::signal(SIGHUP, SIG_DFL);
}

void TestTerminationSignals::signalsAreAsBeforeAfterwards()
{
    std::signal(SIGINT, someHandler);
    const Handler before = handlerOf(SIGTERM);
    {
        const TerminationSignals termination;
        QVERIFY(handlerOf(SIGINT) != someHandler);
        QVERIFY(handlerOf(SIGTERM) != before);
    }
    QVERIFY(handlerOf(SIGINT) == someHandler);
    QVERIFY(handlerOf(SIGTERM) == before);
    std::signal(SIGINT, SIG_DFL);
}

void TestTerminationSignals::errorOfWhatIsInterruptedIsKept()
{
    const TerminationSignals termination;
    // Until the pipe is full and writing to it fails.
    errno = ENOENT;
    for (int time = 0; time < 70'000; ++time)
        std::raise(SIGTERM);
    QCOMPARE(errno, ENOENT);
}

void TestTerminationSignals::withoutDescriptorsSignalsStayAsTheyWere()
{
    const Handler before = handlerOf(SIGTERM);
    {
        std::optional<NoDescriptors> none(std::in_place);
        const TerminationSignals termination;
        none.reset();
        QVERIFY(handlerOf(SIGTERM) == before);
        std::signal(SIGINT, someHandler);
    }
    QVERIFY(handlerOf(SIGINT) == someHandler);
    std::signal(SIGINT, SIG_DFL);
}

QTEST_GUILESS_MAIN(TestTerminationSignals)
#include "TestTerminationSignals.moc"
