#include "Pacer.h"

#include <QElapsedTimer>
#include <QTest>

using namespace simulator;
using namespace std::chrono_literals;

namespace {

QList<qint64> moments(const QList<Departure>& departures)
{
    QList<qint64> result;
    for (const Departure& departure : departures)
        result += departure.at.count();
    return result;
}

} // namespace

class TestPacer : public QObject {
    Q_OBJECT

private slots:
    void bytesLeaveTenBitsApart();
    void scheduleAddsUpNoError();
    void burstLeavesWithItsLastByte();
    void withoutARateAllLeavesAtOnce();
    void unpacedBytesAreWrittenWithinTheCall();
    void pacedAnswerStartsBehindTheRequest();
    void lateBytesWaitForTheirMoment();
    void gapPutsEveryByteByItself();
    void clearedBytesNeverLeave();
    void waitingBytesAreBounded();
};

void TestPacer::bytesLeaveTenBitsApart()
{
    const auto list = departures(1000ns, "abc", 9600, 1);
    QCOMPARE(moments(list), (QList<qint64>{1042666, 2084333, 3126000}));
    QCOMPARE(list[1].bytes, QByteArray("b"));
}

void TestPacer::scheduleAddsUpNoError()
{
    QCOMPARE(departures(0ns, QByteArray(960, 'x'), 9600, 1).constLast().at.count(), 1'000'000'000);
    QCOMPARE(departures(0ns, QByteArray(11520, 'x'), 115200, 1).constLast().at.count(),
             1'000'000'000);
}

void TestPacer::burstLeavesWithItsLastByte()
{
    const auto list = departures(0ns, "abcde", 10000, 2);
    QCOMPARE(moments(list), (QList<qint64>{2'000'000, 4'000'000, 5'000'000}));
    QCOMPARE(list[0].bytes, QByteArray("ab"));
    QCOMPARE(list[2].bytes, QByteArray("e"));
}

void TestPacer::withoutARateAllLeavesAtOnce()
{
    const auto list = departures(7ns, "abc", 0, 1);
    QCOMPARE(moments(list), QList<qint64>{7});
    QCOMPARE(list[0].bytes, QByteArray("abc"));
}

void TestPacer::unpacedBytesAreWrittenWithinTheCall()
{
    QByteArray written;
    Pacer pacer([&](const QByteArray& bytes) { written += bytes; });
    pacer.received(9);
    pacer.send("abc");
    QCOMPARE(written, QByteArray("abc"));
}

void TestPacer::pacedAnswerStartsBehindTheRequest()
{
    QByteArray written;
    Pacer pacer([&](const QByteArray& bytes) { written += bytes; });
    pacer.setRate(10000);
    QElapsedTimer timer;
    timer.start();
    pacer.received(30);
    pacer.send(QByteArray(20, 'x'));
    QCOMPARE(written.size(), 0);
    QTRY_COMPARE(written.size(), 20);
    QVERIFY(timer.nsecsElapsed() >= 50'000'000);
}

void TestPacer::lateBytesWaitForTheirMoment()
{
    QByteArray written;
    Pacer pacer([&](const QByteArray& bytes) { written += bytes; });
    QElapsedTimer timer;
    timer.start();
    pacer.send("abc", 30ms);
    pacer.send("d");
    QTRY_COMPARE(written, QByteArray("abcd"));
    QVERIFY(timer.elapsed() >= 30);
}

void TestPacer::gapPutsEveryByteByItself()
{
    QByteArrayList written;
    Pacer pacer([&](const QByteArray& bytes) { written += bytes; });
    QElapsedTimer timer;
    timer.start();
    pacer.send("abc", {}, 5ms);
    QTRY_COMPARE(written, (QByteArrayList{"a", "b", "c"}));
    QVERIFY(timer.elapsed() >= 15);
}

void TestPacer::clearedBytesNeverLeave()
{
    QByteArray written;
    Pacer pacer([&](const QByteArray& bytes) { written += bytes; });
    pacer.send("abc", 10ms);
    pacer.clear();
    pacer.send("d", 20ms);
    QTRY_VERIFY(!written.isEmpty());
    QCOMPARE(written, QByteArray("d"));
}

void TestPacer::waitingBytesAreBounded()
{
    qsizetype written = 0;
    Pacer pacer([&](const QByteArray& bytes) { written += bytes.size(); });
    for (int message = 0; message < 1000; ++message)
        pacer.send(QByteArray(1000, 'x'), message == 0 ? 20ms : 0ms);
    QTRY_COMPARE(written, 65'000);
}

QTEST_GUILESS_MAIN(TestPacer)
#include "TestPacer.moc"
