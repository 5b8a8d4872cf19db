#include "SimulatorProcess.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

constexpr const char* identification = "68040468010102010516";
constexpr const char* accepted = "68040468010802000b16";
constexpr const char* general = "680303680189008a16";
constexpr qsizetype generalAnswer = 228;

} // namespace

class TestSimulatorProgram : public QObject {
    Q_OBJECT

private slots:
    void firstLineIsTheDevice();
    void identificationIsAnswered();
    void alternatingBitIsOfNoMatter();
    void generalDataIsA228ByteFrame();
    void clockSetIsSeenInGeneralData();
    void outputsAreSwitchedByRemoteControl();
    void identificationWithItsPauseIsAnswered();
    void silentTwiceThenAnswers();
    void lateAnswerComesLate();
    void strayByteFollowsTheAnswerAtItsTime();
    void strayByteComesBeforeTheAnswerAtItsTime();
    void strayByteComesAloneAtItsTime();
    void lineGoesAfterSoManyBytesOfTheAnswer_data();
    void lineGoesAfterSoManyBytesOfTheAnswer();
    void stateCountsGoodSpoiledAndWithheldAnswers();
    void seedIsANumber();
    void optionAndCommandMisbehaveAlike_data();
    void optionAndCommandMisbehaveAlike();
    void lineVanishesAndComesBackAtItsLink();
    void pacedAnswerTakesItsWireTime();
    void babbleHasNoEnd();
    void programmeIsLoadedAndSaved();
    void firmwareIsWrittenAsIntelHex();
    void resetEndsInSilence();
    void resetLetsTheLineVanish();
    void traceShowsEachFrame();
    void closingTheDeviceDropsWhatWasUnread();
    void wrongUsageIsToldOnStandardError_data();
    void wrongUsageIsToldOnStandardError();
    void endOfInputEndsTheProgramUnlessItStays();
    void terminationRemovesTheLink();
    void foreignFileIsNotReplacedByTheLink();
    void endOfTheParentEndsTheProgram();
    void givenDeviceIsServedUntilItIsLost();
    void endlessCommandIsCut();
};

void TestSimulatorProgram::firstLineIsTheDevice()
{
    SimulatorProcess simulator;
    QVERIFY2(simulator.device.startsWith(u"/dev/pts/"_s), qPrintable(simulator.device));
}

void TestSimulatorProgram::identificationIsAnswered()
{
    SimulatorProcess simulator;
    QCOMPARE(simulator.state(u"session"_s), u"closed"_s);
    QCOMPARE(simulator.exchange(identification, 10), QByteArray(accepted));
    QCOMPARE(simulator.state(u"session"_s), u"open"_s);
    QCOMPARE(simulator.exchange("68040468010102fe0216", 10), QByteArray("68040468010802010c16"));
    QCOMPARE(simulator.exchange("68040468010102070b16", 10), QByteArray("68040468010802020d16"));
}

void TestSimulatorProgram::alternatingBitIsOfNoMatter()
{
    SimulatorProcess simulator({u"--frozen"_s});
    const QByteArray plain = simulator.exchange(general, generalAnswer);
    QCOMPARE(simulator.exchange("680303680199009a16", generalAnswer), plain);
}

void TestSimulatorProgram::generalDataIsA228ByteFrame()
{
    SimulatorProcess simulator({u"--frozen"_s, u"--start"_s, u"2026-11-21T14:35:57"_s,
                                u"--programme"_s, u"empty"_s, u"--inputs"_s, u"0x90"_s});
    QCOMPARE(simulator.exchange(general, generalAnswer), QByteArray("68dede68010800"
                                                                    "00000b0039230e06150b1a1e00") +
                                                             QByteArray(2 * 204, '0') + "90006c16");
}

void TestSimulatorProgram::clockSetIsSeenInGeneralData()
{
    SimulatorProcess simulator({u"--frozen"_s});
    QCOMPARE(simulator.exchange("68090968016901323b08140b1a1916", 10),
             QByteArray("68040468010801000a16"));
    QCOMPARE(simulator.state(u"time"_s), u"2026-11-20T08:59:50"_s);
    QCOMPARE(simulator.exchange(general, generalAnswer).mid(22, 14), QByteArray("323b0805140b1a"));
    QCOMPARE(simulator.exchange("680909680179010000001f041ab816", 10),
             QByteArray("68040468010801020c16"));
}

void TestSimulatorProgram::outputsAreSwitchedByRemoteControl()
{
    SimulatorProcess simulator({u"--programme"_s, u"empty"_s});
    QCOMPARE(simulator.exchange("680404680199ca016516", 10), QByteArray("680404680108ca07da16"));
    QCOMPARE(simulator.exchange("680404680169cb053a16", 10), QByteArray("680404680108cb00d416"));
    QCOMPARE(simulator.exchange("680404680199ca016516", 10), QByteArray("680404680108ca05d816"));
    QCOMPARE(simulator.state(u"mode"_s), u"manual"_s);
    QCOMPARE(simulator.state(u"outputs"_s), u"0x02"_s);
    QCOMPARE(simulator.state(u"flags"_s), u"0x04"_s);
    QCOMPARE(simulator.exchange("680404680189ca005416", 10), QByteArray("680404680108ca07da16"));
    QCOMPARE(simulator.state(u"mode"_s), u"automatic"_s);
}

void TestSimulatorProgram::identificationWithItsPauseIsAnswered()
{
    SimulatorProcess simulator;
    simulator.write("\x68");
    QTest::qSleep(50);
    QCOMPARE(simulator.exchange("040468010102010516", 10), QByteArray(accepted));
}

void TestSimulatorProgram::silentTwiceThenAnswers()
{
    SimulatorProcess simulator({u"--fault"_s, u"silent times 2"_s});
    QCOMPARE(simulator.exchange(identification, 10, 100), QByteArray());
    QCOMPARE(simulator.exchange(identification, 10, 100), QByteArray());
    QCOMPARE(simulator.exchange(identification, 10), QByteArray(accepted));
}

void TestSimulatorProgram::lateAnswerComesLate()
{
    SimulatorProcess simulator({u"--fault"_s, u"late 300"_s});
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(simulator.exchange(identification, 10), QByteArray(accepted));
    QVERIFY(timer.elapsed() >= 300);
}

void TestSimulatorProgram::strayByteFollowsTheAnswerAtItsTime()
{
    SimulatorProcess simulator({u"--fault"_s, u"stray 30000"_s});
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(simulator.exchange(identification, 10), QByteArray(accepted));
    QCOMPARE(simulator.read(1), QByteArray("\x55"));
    QVERIFY(timer.elapsed() >= 30);
}

void TestSimulatorProgram::strayByteComesBeforeTheAnswerAtItsTime()
{
    SimulatorProcess simulator({u"--fault"_s, u"stray -30000"_s});
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(simulator.exchange(identification, 1), QByteArray("55"));
    QCOMPARE(simulator.read(10).toHex(), QByteArray(accepted));
    QVERIFY(timer.elapsed() >= 30);
}

void TestSimulatorProgram::strayByteComesAloneAtItsTime()
{
    SimulatorProcess simulator({u"--fault"_s, u"stray 30000"_s, u"--fault"_s, u"silent"_s});
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(simulator.exchange(identification, 1), QByteArray("55"));
    QVERIFY(timer.elapsed() >= 30);
    QCOMPARE(simulator.exchange(identification, 10), QByteArray(accepted));
}

void TestSimulatorProgram::lineGoesAfterSoManyBytesOfTheAnswer_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QByteArray>("answer");
    QTest::newRow("none") << u"unplug 0 100"_s << QByteArray();
    QTest::newRow("header") << u"unplug 5 100"_s << QByteArray("6804046801");
    QTest::newRow("all but one") << u"unplug 9 100"_s << QByteArray("68040468010802000b");
    QTest::newRow("all") << u"unplug 10 100"_s << QByteArray(accepted);
}

void TestSimulatorProgram::lineGoesAfterSoManyBytesOfTheAnswer()
{
    QFETCH(QString, fault);
    QFETCH(QByteArray, answer);
    SimulatorProcess simulator({u"--fault"_s, fault});
    QCOMPARE(simulator.exchange(identification, 11), answer);
    QCOMPARE(simulator.readLine(), u"event vanished"_s);
    const QString returned = simulator.readLine();
    QVERIFY2(returned.startsWith(u"event returned /dev/pts/"_s), qPrintable(returned));
    simulator.closeDevice();
    simulator.device = returned.section(u' ', 2);
    QVERIFY(simulator.openDevice());
    QCOMPARE(simulator.exchange(identification, 10), QByteArray(accepted));
}

void TestSimulatorProgram::stateCountsGoodSpoiledAndWithheldAnswers()
{
    SimulatorProcess simulator({u"--fault"_s, u"checksum times 2"_s, u"--fault"_s,
                                u"silent after 3"_s, u"--fault"_s, u"lost after 4"_s});
    for (const qsizetype size : {10, 10, 10, 0, 0, 10, 10})
        QCOMPARE(simulator.exchange(identification, size, 100).size(), 2 * size);
    QCOMPARE(simulator.command(u"state"_s).mid(9, 4),
             (QStringList{u"answered=5"_s, u"good=3"_s, u"spoiled=2"_s, u"withheld=2"_s}));
}

void TestSimulatorProgram::seedIsANumber()
{
    SimulatorProcess simulator({u"--seed"_s, u"4294967295"_s});
    QCOMPARE(simulator.command(u"seed 7"_s), QStringList{u"ok"_s});
    const QStringList refusal{u"error: a number from 0 to 4294967295 is wanted"_s};
    QCOMPARE(simulator.command(u"seed -1"_s), refusal);
    QCOMPARE(simulator.command(u"seed"_s), refusal);
}

void TestSimulatorProgram::optionAndCommandMisbehaveAlike_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QByteArray>("answer");
    QTest::newRow("checksum") << u"checksum"_s << QByteArray("68040468010802000c16");
    QTest::newRow("station") << u"station"_s << QByteArray("68040468020802000c16");
    QTest::newRow("noise") << u"noise ff00"_s << QByteArray("ff0068040468010802000b16");
    QTest::newRow("split") << u"split 5"_s << QByteArray(accepted);
    QTest::newRow("refusal") << u"refuse 5 on identification"_s
                             << QByteArray("68040468010802051016");
    QTest::newRow("length") << u"length -2"_s << QByteArray("68020268010802000b16");
    QTest::newRow("doubled") << u"doubled"_s << QByteArray(accepted) + accepted;
    QTest::newRow("joined") << u"joined 07"_s
                            << QByteArray(accepted) + QByteArray("680303680108071016");
    QTest::newRow("changed") << u"changed 7 set 5"_s << QByteArray("68040468010802050b16");
    QTest::newRow("end byte") << u"end"_s << QByteArray("68040468010802000b17");
}

void TestSimulatorProgram::optionAndCommandMisbehaveAlike()
{
    QFETCH(QString, fault);
    QFETCH(QByteArray, answer);
    SimulatorProcess simulator({u"--fault"_s, fault});
    QCOMPARE(simulator.exchange(identification, answer.size() / 2), answer);
    QCOMPARE(simulator.exchange(identification, 10), QByteArray(accepted));
    QCOMPARE(simulator.command(u"fault "_s + fault), QStringList{u"ok"_s});
    QCOMPARE(simulator.exchange(identification, answer.size() / 2), answer);
}

void TestSimulatorProgram::lineVanishesAndComesBackAtItsLink()
{
    const QTemporaryDir folder;
    const QString link = folder.filePath(u"clock"_s);
    SimulatorProcess simulator({u"--link"_s, link});
    QCOMPARE(QFile::symLinkTarget(link), simulator.device);
    QCOMPARE(simulator.command(u"vanish"_s), (QStringList{u"event vanished"_s, u"ok"_s}));
    QVERIFY(!QFile::exists(link));
    QCOMPARE(simulator.exchange(identification, 10, 500), QByteArray());
    simulator.closeDevice();
    const QStringList lines = simulator.command(u"return"_s);
    QCOMPARE(lines.size(), 2);
    QCOMPARE(lines[0], u"event returned "_s + QFile::symLinkTarget(link));
    QCOMPARE(simulator.command(u"return"_s), QStringList{u"error: the line is there"_s});
    simulator.device = link;
    QVERIFY(simulator.openDevice());
    QCOMPARE(simulator.exchange(identification, 10), QByteArray(accepted));
}

void TestSimulatorProgram::pacedAnswerTakesItsWireTime()
{
    SimulatorProcess simulator({u"--pace"_s, u"9600"_s});
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(simulator.exchange(general, generalAnswer).size(), 2 * generalAnswer);
    // 9 bytes of request and 228 of answer, 10 bits each.
    QVERIFY2(timer.nsecsElapsed() >= 246'875'000, qPrintable(QString::number(timer.elapsed())));
}

void TestSimulatorProgram::babbleHasNoEnd()
{
    SimulatorProcess simulator({u"--babble"_s});
    const QByteArray bytes = simulator.read(500);
    QVERIFY(bytes.size() >= 500);
    QVERIFY(!bytes.contains('\x68') && !bytes.contains('\x48'));
}

void TestSimulatorProgram::programmeIsLoadedAndSaved()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a school's week.hct"_s);
    SimulatorProcess simulator({u"--model"_s, u"7300"_s});
    const QString alarms = simulator.state(u"block3.alarms"_s);
    QVERIFY(alarms.startsWith(u"ca001240945e"_s));
    QCOMPARE(simulator.command(u"save "_s + path), QStringList{u"ok"_s});
    QCOMPARE(simulator.command(u"programme empty"_s), QStringList{u"ok"_s});
    QCOMPARE(simulator.state(u"block3.alarms"_s), QString(132, u'0'));
    QCOMPARE(simulator.command(u"programme "_s + path), QStringList{u"ok"_s});
    QCOMPARE(simulator.state(u"block3.alarms"_s), alarms);
    QCOMPARE(simulator.state(u"block3.mode"_s), u"2"_s);
}

void TestSimulatorProgram::firmwareIsWrittenAsIntelHex()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"image.hex"_s);
    {
        SimulatorProcess simulator({u"--firmware-lose"_s, u"1"_s, u"--firmware-refuse"_s, u"1"_s,
                                    u"--firmware-save"_s, path});
        const char* line = "680f0f680169dd041000010001010203041b008216";
        QCOMPARE(simulator.exchange(line, 10, 100), QByteArray());
        QCOMPARE(simulator.exchange(line, 10), QByteArray("680404680108dd00e616"));
        QCOMPARE(simulator.state(u"firmware.complete"_s), u"yes"_s);
    }
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(),
             QByteArray(":020000040001F9\r\n:0400100001020304E2\r\n:00000001FF\r\n"));
}

void TestSimulatorProgram::resetEndsInSilence()
{
    SimulatorProcess simulator({u"--after-reset"_s, u"silent 400"_s});
    // The identification is there when the silence begins.
    simulator.write(QByteArray::fromHex("680f0f680169dd0410000100ff010203041b008016") +
                    QByteArray::fromHex(identification));
    QCOMPARE(simulator.read(10).toHex(), QByteArray("680404680108dd00e616"));
    QCOMPARE(simulator.readLine(), u"event reset"_s);
    QCOMPARE(simulator.readLine(), u"event started"_s);
    QCOMPARE(simulator.read(1, 0), QByteArray());
    QCOMPARE(simulator.exchange(identification, 10), QByteArray(accepted));
    QCOMPARE(simulator.state(u"block1.alarms"_s), QString(132, u'0'));
}

void TestSimulatorProgram::resetLetsTheLineVanish()
{
    SimulatorProcess simulator({u"--after-reset"_s, u"vanish"_s});
    QCOMPARE(simulator.exchange("680f0f680169dd0410000100ff010203041b008016", 10),
             QByteArray("680404680108dd00e616"));
    QCOMPARE(simulator.readLine(), u"event reset"_s);
    QCOMPARE(simulator.readLine(), u"event vanished"_s);
}

void TestSimulatorProgram::traceShowsEachFrame()
{
    SimulatorProcess simulator({u"--trace"_s});
    QCOMPARE(simulator.exchange(identification, 10), QByteArray(accepted));
    const QString request = simulator.readLine();
    QVERIFY(request.startsWith(u"trace "_s));
    QVERIFY(request.endsWith(u" < 68 04 04 68 01 01 02 01 05 16"_s));
    QVERIFY(simulator.readLine().endsWith(u" > 68 04 04 68 01 08 02 00 0B 16"_s));
}

void TestSimulatorProgram::closingTheDeviceDropsWhatWasUnread()
{
    SimulatorProcess simulator;
    simulator.write(QByteArray::fromHex(general));
    QTRY_COMPARE_WITH_TIMEOUT(simulator.state(u"answered"_s), u"1"_s, processPatience);
    simulator.closeDevice();
    // By the answer to the second command the first one's round of events is over.
    simulator.command(u"state"_s);
    simulator.command(u"state"_s);
    QVERIFY(simulator.openDevice());
    QCOMPARE(simulator.exchange(identification, 10), QByteArray(accepted));
}

void TestSimulatorProgram::wrongUsageIsToldOnStandardError_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("code");
    QTest::newRow("model") << QStringList{u"--model"_s, u"7100"_s} << 2;
    QTest::newRow("unknown option") << QStringList{u"--none"_s} << 2;
    QTest::newRow("lone argument") << QStringList{u"7300"_s} << 2;
    QTest::newRow("fault") << QStringList{u"--fault"_s, u"none"_s} << 2;
    QTest::newRow("station") << QStringList{u"--station"_s, u"256"_s} << 2;
    QTest::newRow("programme") << QStringList{u"--programme"_s, u"/none/at/all.hct"_s} << 2;
    QTest::newRow("line 0") << QStringList{u"--firmware-lose"_s, u"0"_s} << 2;
    QTest::newRow("device") << QStringList{u"--port"_s, u"/dev/none"_s} << 1;
    QTest::newRow("speed") << QStringList{u"--port"_s, u"/dev/null"_s, u"--speed"_s, u"9601"_s}
                           << 1;
    QTest::newRow("no terminal") << QStringList{u"--port"_s, u"/dev/null"_s} << 1;
}

void TestSimulatorProgram::wrongUsageIsToldOnStandardError()
{
    QFETCH(QStringList, arguments);
    QProcess process;
    process.start(QStringLiteral(HCT_SIMULATOR), arguments);
    QVERIFY(hasEnded(process));
    QTEST(process.exitCode(), "code");
    QVERIFY(process.readAllStandardError().startsWith("hct-simulator: "));
    QCOMPARE(process.readAllStandardOutput(), QByteArray());
}

void TestSimulatorProgram::endOfInputEndsTheProgramUnlessItStays()
{
    SimulatorProcess ending;
    ending.process.closeWriteChannel();
    QVERIFY(hasEnded(ending.process));
    QCOMPARE(ending.process.exitCode(), 0);

    SimulatorProcess staying({u"--stay"_s});
    staying.process.closeWriteChannel();
    // By the second answer the round of events that saw the end of the input is over.
    for (int answer = 0; answer < 2; ++answer)
        QCOMPARE(staying.exchange(identification, 10), QByteArray(accepted));
    staying.process.terminate();
    QVERIFY(hasEnded(staying.process));
    QCOMPARE(staying.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(staying.process.exitCode(), 0);
}

void TestSimulatorProgram::terminationRemovesTheLink()
{
    const QTemporaryDir folder;
    const QString link = folder.filePath(u"clock"_s);
    SimulatorProcess simulator({u"--link"_s, link});
    QVERIFY(QFile::exists(link));
    simulator.process.terminate();
    QVERIFY(hasEnded(simulator.process));
    QVERIFY(!QFileInfo(link).isSymLink());
}

void TestSimulatorProgram::foreignFileIsNotReplacedByTheLink()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"clock"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QProcess process;
    process.start(QStringLiteral(HCT_SIMULATOR), {u"--link"_s, file.fileName()});
    QVERIFY(hasEnded(process));
    QCOMPARE(process.exitCode(), 1);
    QVERIFY(QFile::exists(file.fileName()));
}

void TestSimulatorProgram::endOfTheParentEndsTheProgram()
{
    const QTemporaryDir folder;
    const QString link = folder.filePath(u"clock"_s);
    QProcess shell;
    shell.start(
        u"/bin/sh"_s,
        {u"-c"_s,
         u"\"$0\" --exit-with-parent --stay --link \"$1\" </dev/null >/dev/null & read end"_s,
         QStringLiteral(HCT_SIMULATOR), link});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(link), processPatience);
    shell.closeWriteChannel();
    QVERIFY(hasEnded(shell));
    QTRY_VERIFY_WITH_TIMEOUT(!QFileInfo(link).isSymLink(), processPatience);
}

void TestSimulatorProgram::givenDeviceIsServedUntilItIsLost()
{
    const int master = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    QVERIFY(::grantpt(master) == 0 && ::unlockpt(master) == 0);
    const QString slave = QString::fromLocal8Bit(::ptsname(master));
    QProcess process;
    process.start(QStringLiteral(HCT_SIMULATOR), {u"--port"_s, slave, u"--speed"_s, u"19200"_s});
    QCOMPARE(readLineOf(process), slave);

    const QByteArray request = QByteArray::fromHex(identification);
    QCOMPARE(::write(master, request.constData(), size_t(request.size())), ssize_t(10));
    QByteArray answer;
    while (answer.size() < 10) {
        char byte = 0;
        QCOMPARE(::read(master, &byte, 1), ssize_t(1));
        answer.append(byte);
    }
    QCOMPARE(answer.toHex(), QByteArray(accepted));

    ::close(master);
    QVERIFY(hasEnded(process));
    QCOMPARE(process.exitCode(), 3);
    QCOMPARE(process.readAllStandardOutput(), QByteArray("event lost\n"));
}

void TestSimulatorProgram::endlessCommandIsCut()
{
    SimulatorProcess simulator;
    const QStringList lines = simulator.command(QString(100'000, u'x'));
    QCOMPARE(lines.size(), 1);
    QCOMPARE(lines[0], u"error: there is no such command, see help: "_s + QString(4096, u'x'));
}

QTEST_GUILESS_MAIN(TestSimulatorProgram)
#include "TestSimulatorProgram.moc"
