#include "LinkFixture.h"
#include "ProgrammeFile.h"
#include "ProgrammeLines.h"
#include "ProgrammeTransfer.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

constexpr auto hct7200 = ClockModel::Hct7200;
constexpr auto hct7300 = ClockModel::Hct7300;

namespace {

const QByteArray good = "\0"_ba;

/// A clock that holds someBlocks and one holiday.
struct TransferDesk : LinkFixture {
    explicit TransferDesk(ClockModel model = hct7200)
        : transfer({crono, link, globais, log}, model), held(samples::someBlocks(model))
    {
        connect();
        globais.GeneralData = held;
        holidays.replace(2, 2, QByteArray::fromHex("190c"));
    }
    void open()
    {
        transfer.open();
        QCOMPARE(nextRequestBody(), QByteArray::fromHex("d9"));
        answer(holidays);
        QCOMPARE(opened.count(), 1);
    }
    /// Sends, and answers so many parts well; the bodies of all requests for parts.
    QByteArrayList send(int parts)
    {
        transfer.send();
        nextRequestBody();
        answer(held);
        QByteArrayList bodies;
        for (int part = 0; part < parts; ++part) {
            bodies.append(nextRequestBody());
            answer(bodies.last().left(1) + good);
        }
        return bodies;
    }

    ProgrammeTransfer transfer;
    const QByteArray held;
    QByteArray holidays = samples::holidaysAnswer();
    QSignalSpy opened{&transfer, &ProgrammeTransfer::opened};
    QSignalSpy sent{&transfer, &ProgrammeTransfer::sent};
    QSignalSpy wasReadBack{&transfer, &ProgrammeTransfer::wasReadBack};
    QSignalSpy failed{&transfer, &ProgrammeTransfer::failed};
    QSignalSpy partAccepted{&transfer, &ProgrammeTransfer::partAccepted};
};

} // namespace

class TestProgrammeTransfer : public QObject {
    Q_OBJECT
private slots:
    void openingHoldsWhatTheClockHolds();
    void firstModeIsStoredAsTheWindowShowsIt();
    void fileTakesThePlaceOfTheProgramme();
    void daysThatTheFileDoesNotMentionGo();
    void fileThatTheWindowRefusesIsRefused();
    void programmeIsSentInTheClocksForm();
    void readingBackReadsEverythingAnew();
    void partsAreToldAsTheClockTakesThem();
    void lostConnectionTellsWhichPartsTheClockHas();
    void refusedPartIsNotConfirmed();
    void stoppedTransferSendsNothing();
};

void TestProgrammeTransfer::openingHoldsWhatTheClockHolds()
{
    TransferDesk desk;
    desk.open();
    const QByteArray text = ProgrammeFile::text(desk.transfer.programme(), hct7200);
    QVERIFY(text.contains("--FESTIVOS--\r\n25\r\n12\r\n0\r\n"));
    QVERIFY(text.startsWith("--AVISOS 1--\r\n5\r\n1\r\n8\r\n45\r\n31\r\n0\r\n"));
    QVERIFY(text.contains("--AVISOS 3--\r\n9\r\n4\r\n0\r\n"));
}

void TestProgrammeTransfer::firstModeIsStoredAsTheWindowShowsIt()
{
    for (const ClockModel model : {hct7200, hct7300}) {
        TransferDesk desk(model);
        desk.globais.GeneralData[15] = 5;
        desk.globais.GeneralData[17] = 5;
        desk.open();
        const auto& blocks = desk.transfer.programme().blocks;
        QCOMPARE(blocks[0].Mode, model == hct7200 ? quint8{0} : quint8{5});
        QCOMPARE(blocks[1].Mode, quint8{5});
        QCOMPARE(desk.transfer.held().blocks[0].Mode, quint8{5});
    }
}

void TestProgrammeTransfer::fileTakesThePlaceOfTheProgramme()
{
    TransferDesk desk;
    desk.open();
    ProgrammeLines lines;
    lines.alarm(0, 0, 0) = "9";
    lines.alarm(0, 0, 2) = "1";
    QVERIFY(!desk.transfer.load(lines.text()));
    const Programme& programme = desk.transfer.programme();
    QVERIFY(programme.blocks[0].Alarms[0] == samples::alarm(9, 0, {DayFlag::Monday}));
    QVERIFY(!programme.blocks[2].Alarms[31].isActive());
    QVERIFY(programme.table == HolidayTable());
}

void TestProgrammeTransfer::daysThatTheFileDoesNotMentionGo()
{
    TransferDesk desk(hct7300);
    desk.open();
    QVERIFY(desk.transfer.programme().blocks[0].Alarms[0].onAllWorkingDays());
    ProgrammeLines lines;
    lines.block(0, 1) = "2";
    lines.alarm(0, 0, 2) = "1";
    QVERIFY(!desk.transfer.load(lines.text()));
    QVERIFY(desk.transfer.programme().blocks[0].Alarms[0] ==
            samples::alarm(0, 0, {DayFlag::Saturday}));
}

void TestProgrammeTransfer::fileThatTheWindowRefusesIsRefused()
{
    TransferDesk desk;
    desk.open();
    ProgrammeLines lines;
    lines.alarm(1, 4, 2) = lines.alarm(1, 5, 2) = "1";
    const auto violation = desk.transfer.load(lines.text());
    QVERIFY(violation);
    QCOMPARE(violation->text,
             u"Error en el bloque de avisos 2. Está intentando programar múltiples avisos\r\n"
             "para las 0:0 horas."_s);
}

void TestProgrammeTransfer::programmeIsSentInTheClocksForm()
{
    TransferDesk desk;
    desk.open();
    ProgrammeLines lines;
    lines.alarm(0, 7, 0) = "10";
    lines.alarm(0, 7, 2) = "1";
    lines.alarm(0, 9, 0) = "9";
    lines.alarm(0, 9, 2) = "2";
    lines.holiday(0, 0) = lines.holiday(0, 1) = "6";
    QVERIFY(!desk.transfer.load(lines.text()));
    const QByteArrayList bodies = desk.send(4);
    QCOMPARE(desk.sent.count(), 1);
    QCOMPARE(bodies[0],
             QByteArray::fromHex("da0149008a00") + QByteArray(62, '\0') + QByteArray(1, '\x03'));
    QCOMPARE(bodies[1], QByteArray::fromHex("da02") + QByteArray(66, '\0') + QByteArray(1, '\x01'));
    QCOMPARE(bodies[3], QByteArray::fromHex("d2000606") + QByteArray(62, '\0'));
}

void TestProgrammeTransfer::readingBackReadsEverythingAnew()
{
    TransferDesk desk;
    desk.open();
    desk.send(4);
    desk.transfer.readBack();
    QCOMPARE(desk.nextRequestBody(), QByteArray(1, '\0'));
    QByteArray now = desk.held;
    now[20] = '\x89';
    desk.answer(now);
    QCOMPARE(desk.nextRequestBody(), QByteArray::fromHex("d9"));
    QCOMPARE(desk.wasReadBack.count(), 0);
    desk.answer(samples::holidaysAnswer());
    QCOMPARE(desk.wasReadBack.count(), 1);
    QCOMPARE(desk.opened.count(), 1);
    QCOMPARE(desk.transfer.held().blocks[0].Alarms[0].Hour, quint8{9});
    QCOMPARE(desk.transfer.programme().blocks[0].Alarms[0].Hour, quint8{8});
    QVERIFY(desk.transfer.held().table == HolidayTable());
    QCOMPARE(desk.nextRequestBody(), QByteArray());
}

void TestProgrammeTransfer::partsAreToldAsTheClockTakesThem()
{
    TransferDesk desk;
    desk.open();
    QCOMPARE(desk.transfer.partsTaken(),
             u"Sin enviar: salida 1, salida 2, salida 3, festivos y vacaciones."_s);
    desk.send(4);
    QCOMPARE(desk.partAccepted.count(), 4);
    QCOMPARE(desk.partAccepted[0][0].toInt(), 0);
    QCOMPARE(desk.partAccepted[3][0].toInt(), 3);
    QCOMPARE(desk.transfer.partsTaken(),
             u"El reloj ha tomado: salida 1, salida 2, salida 3, festivos y vacaciones."_s);
}

void TestProgrammeTransfer::lostConnectionTellsWhichPartsTheClockHas()
{
    TransferDesk desk;
    desk.open();
    desk.send(1);
    desk.tick();
    desk.disconnect();
    QTRY_COMPARE(desk.failed.count(), 1);
    QCOMPARE(desk.transfer.partsTaken(), u"El reloj ha tomado: salida 1. Sin confirmar: salida 2. "
                                         "Sin enviar: salida 3, festivos y vacaciones."_s);
}

void TestProgrammeTransfer::refusedPartIsNotConfirmed()
{
    TransferDesk desk;
    desk.open();
    desk.send(3);
    for (int refusal = 0; refusal < 11; ++refusal) {
        desk.tick();
        desk.timeOut();
    }
    desk.tick();
    QCOMPARE(desk.failed.count(), 1);
    QCOMPARE(desk.transfer.partsTaken(), u"El reloj ha tomado: salida 1, salida 2, salida 3. "
                                         "Sin confirmar: festivos y vacaciones."_s);
}

void TestProgrammeTransfer::stoppedTransferSendsNothing()
{
    TransferDesk desk;
    desk.open();
    desk.send(2);
    desk.transfer.stop();
    QCOMPARE(desk.nextRequestBody(), QByteArray());
    QCOMPARE(desk.failed.count(), 0);
}

QTEST_GUILESS_MAIN(TestProgrammeTransfer)
#include "TestProgrammeTransfer.moc"
