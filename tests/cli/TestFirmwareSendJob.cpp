#include "Console.h"
#include "FirmwareSendJob.h"
#include "HexFile.h"
#include "HexText.h"
#include "World.h"

#include <QBuffer>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

/// How the sending of firmware ends. The test plays the clock.
class TestFirmwareSendJob : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void portThatIsLostIsLeftToTheRunToTell();
    void interruptionBeforeTheResetIsConfirmedTellsBothEnds();
    void interruptionBehindTheLastLineTellsThatAllWereTaken();

private:
    HexFile m_image;
    World m_world;
    Console m_console{Console::Form::Text, Console::Notes::Quiet};
};

void TestFirmwareSendJob::initTestCase()
{
    QByteArray text = dataRecords(2) + ":00000001FF\r\n";
    QBuffer device(&text);
    QVERIFY(device.open(QIODevice::ReadOnly));
    QCOMPARE(m_image.LoadHexFile(device, u"a.hex"_s), HexFile::Outcome::Loaded);
    QCOMPARE(m_image.LineCount(), 2);
}

void TestFirmwareSendJob::portThatIsLostIsLeftToTheRunToTell()
{
    Connected connected(m_world);
    FirmwareSendJob job(connected.session, m_console, m_image, FirmwareSendJob::Reset::Omitted);
    const QSignalSpy finished(&job, &ClockJob::finished);
    job.begin();
    m_world.nextRequest();
    m_world.serie.vanish();
    QVERIFY(m_world.tmrTemporizador.fire());
    m_world.nextRequest();
    QCOMPARE(finished.count(), 0);
}

void TestFirmwareSendJob::interruptionBeforeTheResetIsConfirmedTellsBothEnds()
{
    Connected connected(m_world);
    FirmwareSendJob job(connected.session, m_console, m_image, FirmwareSendJob::Reset::Wanted);
    job.begin();
    m_world.nextRequest();
    m_world.answer(QByteArray::fromHex("dd00"));
    m_world.nextRequest();
    QCOMPARE(
        job.abandon(),
        u"El reloj tiene media imagen: ha tomado 1 de 2 líneas. Puede haber tomado la 2. Si se "
        "ha reiniciado, la tiene entera. Para que la tenga entera, envíe otra vez el archivo: "
        "se empieza por la primera línea."_s);
}

void TestFirmwareSendJob::interruptionBehindTheLastLineTellsThatAllWereTaken()
{
    Connected connected(m_world);
    FirmwareSendJob job(connected.session, m_console, m_image, FirmwareSendJob::Reset::Omitted);
    const QSignalSpy finished(&job, &ClockJob::finished);
    job.begin();
    for (int line = 0; line < 2; ++line) {
        QVERIFY(m_world.nextRequest().contains("dd10"));
        m_world.answer(QByteArray::fromHex("dd00"));
    }
    QCOMPARE(finished.count(), 1);
    QCOMPARE(job.abandon(), u"El reloj ha tomado todas las líneas."_s);
}

QTEST_GUILESS_MAIN(TestFirmwareSendJob)
#include "TestFirmwareSendJob.moc"
