#include "ConnectedProgram.h"
#include "MessageLink.h"
#include "SerialPort.h"

#include <QEventLoop>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

/// A byte arrives that belongs to no answer. When a tick of the timer service comes at the same
/// time, its request discards the byte between its announcement and its reading.
class TestStrayBytes : public QObject {
    Q_OBJECT
private slots:
    void pollingGoesOnUnderStrayBytes_data();
    void pollingGoesOnUnderStrayBytes();
};

void TestStrayBytes::pollingGoesOnUnderStrayBytes_data()
{
    QTest::addColumn<int>("microseconds");
    for (int microseconds = 9000; microseconds <= 14000; microseconds += 500)
        QTest::addRow("%d us after an answer", microseconds) << microseconds;
}

void TestStrayBytes::pollingGoesOnUnderStrayBytes()
{
    QFETCH(int, microseconds);
    ConnectedProgram run({u"--fault"_s, u"stray %1 times 60 on general"_s.arg(microseconds)});
    // In an event loop: the waiting functions of Qt Test sleep between events.
    QEventLoop loop;
    QTimer look;
    connect(&look, &QTimer::timeout, &loop, [&run, &loop] {
        if (run.clock.command(u"faults"_s).isEmpty() ||
            !run.program.session().link().directPort().isOpen())
            loop.quit();
    });
    look.start(100);
    QTimer::singleShot(patience, &loop, &QEventLoop::quit);
    run.choose("mnuConectar");
    loop.exec();
    QVERIFY(run.program.session().link().directPort().isOpen());
    QCOMPARE(run.clock.command(u"faults"_s), QStringList());
    QCOMPARE(run.timesLogged(u"Fallo en identificación del equipo"_s), 0);
    QVERIFY(run.isEstablished());
}

QTEST_MAIN(TestStrayBytes)
#include "TestStrayBytes.moc"
