#include "MessageLink.h"
#include "ProgrammingDesk.h"

#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(unreadable)");
}

/// Numbers separated by blanks, as one number in each line.
QByteArray lines(const char* numbers)
{
    return QByteArray(numbers).simplified().replace(' ', "\r\n") + "\r\n";
}

QByteArray zeros(int count) { return QByteArray("0\r\n").repeated(count); }

} // namespace

/// A programme is read from a simulated clock, edited, saved to a file and sent, over a
/// pseudo-terminal.
class TestProgramming : public QObject {
    Q_OBJECT
private slots:
    void hct7200IsEditedSavedClearedLoadedAndSent();
    void hct7300IsEditedSavedClearedLoadedAndSent();
    void faultsOnTheWayChangeNothingOfTheOutcome_data();
    void faultsOnTheWayChangeNothingOfTheOutcome();
    void elevenRefusedBlocksLeaveTheFirstWritten();
    void cancelWhileSendingKeepsTheConnection();
    void lineLostWhileSendingLeavesWhatWasEntered_data();
    void lineLostWhileSendingLeavesWhatWasEntered();
};

void TestProgramming::hct7200IsEditedSavedClearedLoadedAndSent()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"colegio.hct"_s);
    ProgrammingDesk s({u"--programme"_s, u"school"_s});
    QVERIFY(s.open());
    QCOMPARE(s.form->windowTitle(), u"Configuración del  HCT-7200"_s);
    s.type("txtHora(0)", {"9", "5"});
    s.clickDay("chkVenres(1)");
    s.type("txtHora(20)", {"7", "45"});
    s.clickDay("chkLuns(20)");
    s.clickTab(3);
    s.type("txtFest(8)", {"24", "12"});
    s.type("txtVacacIni(3)", {"31", "10"});
    s.type("txtVacacFin(3)", {"2", "11"});
    s.clickTab(0);
    s.saveClearAndLoad(path);

    QCOMPARE(contents(path),
             "--AVISOS 1--\r\n" +
                 lines("8 0  9 5 31  9 55 15  10 50 31  11 20 31  12 15 31  13 10 31  14 5 31 "
                       "16 0 31  17 30 31") +
                 zeros(33) + lines("7 45 1") + zeros(33) + "--AVISOS 2--\r\n" +
                 lines("5 1  10 50 31  11 15 31  11 20 31  16 45 31") + zeros(84) +
                 "--AVISOS 3--\r\n" + lines("12 0  18 0 7  20 30 15") + zeros(90) +
                 "--FESTIVOS--\r\n" + lines("1 1  6 1  1 5  15 8  12 10  1 11  6 12  8 12  24 12") +
                 zeros(14) + "--PERIODOS VACACIONALES--\r\n" +
                 lines("23 12 7 1  26 3 4 4  25 6 8 9  31 10 2 11") + zeros(16));

    s.click("cmdEnviar");
    QVERIFY(s.isClosed());
    auto& clock = s.run.clock;
    QCOMPARE(clock.state(u"block1.alarms"_s), alarms("872d"
                                                     "e9c5"
                                                     "e9b7"
                                                     "eaf2"
                                                     "ebd4"
                                                     "eccf"
                                                     "edca"
                                                     "eec5"
                                                     "f0c0"
                                                     "f1de"));
    QCOMPARE(clock.state(u"block1.count"_s), u"11"_s);
    QCOMPARE(clock.state(u"block2.alarms"_s), alarms("eaf2ebcfebd4f0ed"));
    QCOMPARE(clock.state(u"block2.count"_s), u"5"_s);
    QCOMPARE(clock.state(u"block3.alarms"_s), alarms("f200f49e"));
    QCOMPARE(clock.state(u"block3.count"_s), u"3"_s);
    // For the HCT-7200 only the clock sets durations and modes.
    QCOMPARE(clock.state(u"block1.duration"_s), u"8"_s);
    QCOMPARE(clock.state(u"block2.mode"_s), u"1"_s);
    QCOMPARE(clock.state(u"holidays"_s),
             QString::fromLatin1(
                 QByteArray("0101060101050f080c0a010b060c080c180c").leftJustified(64, '0')));
    QCOMPARE(
        clock.state(u"vacations"_s),
        QString::fromLatin1(QByteArray("170c07011a030404190608091f0a020b").leftJustified(64, '0')));
    QVERIFY(s.run.isEstablished());
    QVERIFY(s.run.dialogs.boxes.isEmpty());
}

void TestProgramming::hct7300IsEditedSavedClearedLoadedAndSent()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"fábrica.hct"_s);
    ProgrammingDesk s({u"--model"_s, u"7300"_s, u"--programme"_s, u"school"_s});
    QVERIFY(s.open());
    QCOMPARE(s.form->windowTitle(), u"Configuración del  HCT-7300"_s);
    s.clickTab(2);
    s.type("txtModo", {"3"});
    s.type("txtDuracion", {"20"});
    s.type("txtHora(3)", {"12", "0"});
    s.clickDay("chkFestivo(3)");
    s.clickDay("chkVacaciones(3)");
    s.saveClearAndLoad(path);

    QCOMPARE(
        contents(path),
        "--AVISOS 1--\r\n" +
            lines("8 0  9 0 31  9 55 31  10 50 31  11 20 31  12 15 31  13 10 31  14 5 31 "
                  "16 0 31  17 30 31") +
            zeros(69) + "--AVISOS 2--\r\n" + lines("5 1  10 50 31  11 15 31  11 20 31  16 45 31") +
            zeros(84) + "--AVISOS 3--\r\n" + lines("20 3  10 0 3  18 0 16  20 30 17  12 0 12") +
            zeros(84) + "--FESTIVOS--\r\n" + lines("1 1  6 1  1 5  15 8  12 10  1 11  6 12  8 12") +
            zeros(16) + "--PERIODOS VACACIONALES--\r\n" + lines("23 12 7 1  26 3 4 4  25 6 8 9") +
            zeros(20));

    s.click("cmdEnviar");
    QVERIFY(s.isClosed());
    auto& clock = s.run.clock;
    QCOMPARE(clock.state(u"block1.alarms"_s), alarms("e9c0"
                                                     "e9f7"
                                                     "eaf2"
                                                     "ebd4"
                                                     "eccf"
                                                     "edca"
                                                     "eec5"
                                                     "f0c0"
                                                     "f1de"));
    QCOMPARE(clock.state(u"block3.alarms"_s), alarms("ca00"
                                                     "2c80"
                                                     "1240"
                                                     "945e"));
    QCOMPARE(clock.state(u"block3.count"_s), u"5"_s);
    QCOMPARE(clock.state(u"block3.duration"_s), u"20"_s);
    QCOMPARE(clock.state(u"block3.mode"_s), u"3"_s);
    QCOMPARE(clock.state(u"block2.mode"_s), u"1"_s);
    QCOMPARE(clock.state(u"vacations"_s),
             QString::fromLatin1(QByteArray("170c07011a03040419060809").leftJustified(64, '0')));
}

void TestProgramming::faultsOnTheWayChangeNothingOfTheOutcome_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<QStringList>("faults");
    for (const char* model : {"7200", "7300"}) {
        QTest::addRow("HCT-%s, refused, damaged, silent", model)
            << QString::fromLatin1(model)
            << QStringList{u"refuse after 1 on block"_s, u"checksum after 2 on block"_s,
                           u"silent on block"_s};
        for (const char* fault : {"length", "length -2", "doubled", "joined da00", "changed 4",
                                  "changed 6 set 0", "stray -2000", "stray 0"}) {
            const QString text = QString::fromLatin1(fault);
            QTest::addRow("HCT-%s, %s", model, fault)
                << QString::fromLatin1(model)
                << QStringList{text + u" times 2 on block"_s, text + u" after 2 on block"_s,
                               text + u" on days"_s, text + u" on days-read"_s};
        }
    }
}

void TestProgramming::faultsOnTheWayChangeNothingOfTheOutcome()
{
    QFETCH(QString, model);
    QFETCH(QStringList, faults);
    QStringList options{u"--model"_s, model, u"--programme"_s, u"school"_s};
    for (const QString& fault : faults)
        options += {u"--fault"_s, fault};
    ProgrammingDesk s(options);
    QVERIFY(s.open());
    s.type("txtHora(0)", {"8", "59"});
    s.click("cmdEnviar");
    QVERIFY(s.isClosed());
    auto& clock = s.run.clock;
    QCOMPARE(clock.state(u"block1.alarms"_s), alarms("e8fb"
                                                     "e9f7"
                                                     "eaf2"
                                                     "ebd4"
                                                     "eccf"
                                                     "edca"
                                                     "eec5"
                                                     "f0c0"
                                                     "f1de"));
    QCOMPARE(clock.state(u"block2.alarms"_s), alarms("eaf2ebcfebd4f0ed"));
    QCOMPARE(
        clock.state(u"holidays"_s),
        QString::fromLatin1(QByteArray("0101060101050f080c0a010b060c080c").leftJustified(64, '0')));
    QCOMPARE(clock.state(u"vacations"_s),
             QString::fromLatin1(QByteArray("170c07011a03040419060809").leftJustified(64, '0')));
    QCOMPARE(clock.command(u"faults"_s), QStringList());
    QVERIFY(s.run.dialogs.boxes.isEmpty());
    QVERIFY(s.run.isEstablished());
}

void TestProgramming::elevenRefusedBlocksLeaveTheFirstWritten()
{
    ProgrammingDesk s(
        {u"--programme"_s, u"school"_s, u"--fault"_s, u"refuse times 11 after 1 on block"_s});
    QVERIFY(s.open());
    s.type("txtHora(0)", {"8", "59"});
    s.clickTab(1);
    s.type("txtHora(0)", {"10", "49"});
    s.click("cmdEnviar");
    QTRY_COMPARE_WITH_TIMEOUT(s.run.dialogs.boxes.count(), 1, patience);
    QCOMPARE(s.run.dialogs.boxes[0].text,
             u"No se ha podido realizar la configuración del equipo.\r\n"
             "Verifique el estado de las conexiones e inténtelo de nuevo."_s);
    QVERIFY(s.form->isVisible());
    QVERIFY(s.run.clock.state(u"block1.alarms"_s).startsWith(u"e8fb"));
    QVERIFY(s.run.clock.state(u"block2.alarms"_s).startsWith(u"eaf2"));
    // The entries are still there, and are sent at the next attempt.
    QCOMPARE(s.find<TextUpDown>("txtHora(0)")->value(1), 49);
    s.click("cmdEnviar");
    QVERIFY(s.isClosed());
    QVERIFY(s.run.clock.state(u"block2.alarms"_s).startsWith(u"eaf1"));
}

void TestProgramming::cancelWhileSendingKeepsTheConnection()
{
    ProgrammingDesk s({u"--programme"_s, u"school"_s, u"--fault"_s, u"silent always on block"_s});
    QVERIFY(s.open());
    s.click("cmdEnviar");
    QTRY_VERIFY_WITH_TIMEOUT(s.run.program.session().link().Ocupado(), patience);
    s.click("cmdCancelar");
    QVERIFY(s.isClosed());
    QVERIFY(s.run.isEstablished());
    s.run.choose("mnuProgramacion");
    s.form = s.run.program.mainWindow().findChild<frmProg*>();
    QVERIFY(s.form);
    QVERIFY(s.isReady());
}

void TestProgramming::lineLostWhileSendingLeavesWhatWasEntered_data()
{
    QTest::addColumn<QString>("fault");
    for (const char* fault :
         {"vanish on block", "unplug 0 on block", "unplug 5 on block", "unplug 10 on block",
          "unplug 9 after 1 on block", "unplug 4 on days"})
        QTest::newRow(fault) << QString::fromLatin1(fault);
}

void TestProgramming::lineLostWhileSendingLeavesWhatWasEntered()
{
    QFETCH(QString, fault);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"colegio.hct"_s);
    ProgrammingDesk s({u"--programme"_s, u"school"_s, u"--fault"_s, fault});
    QVERIFY(s.open());
    s.type("txtHora(0)", {"8", "59"});
    s.click("cmdEnviar");
    QTRY_COMPARE_WITH_TIMEOUT(s.run.dialogs.boxes.count(), 1, patience);
    QTRY_VERIFY_WITH_TIMEOUT(!s.run.isEstablished(), patience);
    QVERIFY(s.form);
    QVERIFY(s.find<QWidget>("fraEnvolvente")->isVisible());

    // Nothing answers any more, and every further attempt says so.
    s.click("cmdEnviar");
    QTRY_COMPARE_WITH_TIMEOUT(s.run.dialogs.boxes.count(), 2, patience);
    QCOMPARE(s.run.dialogs.boxes[1].text,
             u"No se ha podido realizar la configuración del equipo.\r\n"
             "Verifique el estado de las conexiones e inténtelo de nuevo."_s);
    s.run.dialogs.paths = {path};
    s.click("cmdGardar");
    QVERIFY(contents(path).startsWith("--AVISOS 1--\r\n8\r\n0\r\n8\r\n59\r\n31\r\n"));
    s.click("cmdCancelar");
    QVERIFY(s.isClosed());
}

QTEST_MAIN(TestProgramming)
#include "TestProgramming.moc"
