#include "Processes.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// The functions by which tests wait for processes.
class TestProcesses : public QObject {
    Q_OBJECT
private slots:
    void endToComeIsAwaited();
    void endThatHasComeIsSeen();
    void runningProcessHasNotEnded();
    void processThatDidNotStartHasNotEnded();
    void lineThatCameWithTheEndIsRead();
};

void TestProcesses::endToComeIsAwaited()
{
    QProcess process;
    process.start(u"cat"_s, {});
    process.closeWriteChannel();
    QVERIFY(hasEnded(process));
}

void TestProcesses::endThatHasComeIsSeen()
{
    QProcess process;
    process.start(u"cat"_s, {});
    process.closeWriteChannel();
    QVERIFY(!process.waitForReadyRead(processPatience));
    QVERIFY(hasEnded(process));
}

void TestProcesses::runningProcessHasNotEnded()
{
    QProcess process;
    process.start(u"cat"_s, {});
    QVERIFY(!hasEnded(process, 0));
    process.closeWriteChannel();
    QVERIFY(hasEnded(process));
}

void TestProcesses::processThatDidNotStartHasNotEnded()
{
    QProcess process;
    process.start(u"/none/at/all"_s, {});
    QVERIFY(!hasEnded(process));
    QVERIFY(!hasEnded(process));
}

void TestProcesses::lineThatCameWithTheEndIsRead()
{
    QProcess process;
    process.start(u"echo"_s, {u"last"_s});
    QVERIFY(hasEnded(process));
    QCOMPARE(readLineOf(process), u"last"_s);
    QCOMPARE(readLineOf(process), QString());
}

QTEST_GUILESS_MAIN(TestProcesses)
#include "TestProcesses.moc"
