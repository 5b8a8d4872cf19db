#include "FirmwareTransfer.h"
#include "LinkFixture.h"

#include <QBuffer>
#include <QSignalSpy>
#include <QtTest>

#include <functional>

using namespace Qt::StringLiterals;

/// The transfer without its window: bodies, acknowledgements, failures, ends.
class TestFirmwareTransfer : public QObject {
    Q_OBJECT
private slots:
    void nothingIsSentBeforeTheStart();
    void nothingIsSentWithoutLines();
    void callOutsideATransferSendsNothing();
    void oneLineImageSendsOneMessageMarkedAsLast();
    void resetIsAskedForWithTheLastLineOnly();
    void lineBehindALinearBaseHasTheDocumentedBody();
    void bodyCarriesAddressDataAndPlainSum_data();
    void bodyCarriesAddressDataAndPlainSum();
    void lineOf255BytesIsSentWhole();
    void linesGoOutInOrderOnTheWriteCode();
    void acknowledgementReportsLineAndLastAddress();
    void lastAddressWrapsIn32Bits();
    void answerIsNoAcknowledgement_data();
    void answerIsNoAcknowledgement();
    void longerAcknowledgementIsGood();
    void unacknowledgedLineIsSentAgain();
    void latestFailureIsKept();
    void fiveFailuresAndAGoodOneContinue();
    void sixFailuresInARowStop();
    void afterAGivenUpTransferTheNextFailsAtOnce();
    void failuresBeyondCountingStillFailTheNextAtOnce();
    void goodAcknowledgementGivesBackAllAttempts();
    void closedPortCountsAsFailure();
    void interruptionForgetsTheAnswerUnderWay();
    void disconnectionWaitsAndGoesOnWithTheSameLine();
    void startAnewBeginsWithTheFirstLine();
    void idleTransferLeavesTheTimerServiceAsleep_data();
    void idleTransferLeavesTheTimerServiceAsleep();
    void leavingGivesUpThePlaceInTheTimerService();
    void as32767LinesAreSent();
};

namespace {

const QByteArray lineA = ":0400100001020304E2\n"_ba;
const QByteArray lineB = ":03FFFE00ABCDEF99\n"_ba;
const QByteArray end = ":00000001FF\n"_ba;
constexpr const char* good = "dd00";

struct Fixture : LinkFixture {
    explicit Fixture(const QByteArray& text)
    {
        QBuffer buffer;
        buffer.setData(text);
        buffer.open(QIODevice::ReadOnly);
        file.LoadHexFile(buffer, u"x.hex"_s);
        connect();
    }
    /// One tick; what it sent, in hexadecimal.
    QByteArray sent() { return nextRequestBody().toHex(); }
    /// One tick, in which the line is sent again; no acknowledgement follows.
    void fail(int times = 1)
    {
        while (times-- > 0) {
            sent();
            timeOut();
        }
    }

    HexFile file;
    FirmwareTransfer transfer{file, crono, link};
    QSignalSpy acknowledged{&transfer, &FirmwareTransfer::lineAcknowledged};
    QSignalSpy finished{&transfer, &FirmwareTransfer::finished};
    QSignalSpy failed{&transfer, &FirmwareTransfer::failed};
};

using State = FirmwareTransfer::State;

} // namespace

void TestFirmwareTransfer::nothingIsSentBeforeTheStart()
{
    Fixture f(lineA + end);
    f.tick(20);
    QVERIFY(!f.hasRequest());
    QCOMPARE(f.transfer.state(), State::Idle);
}

void TestFirmwareTransfer::nothingIsSentWithoutLines()
{
    Fixture f(end);
    f.transfer.start();
    f.tick(20);
    QVERIFY(!f.hasRequest());
    QCOMPARE(f.transfer.state(), State::Idle);
}

void TestFirmwareTransfer::callOutsideATransferSendsNothing()
{
    Fixture f(lineA + end);
    f.transfer.ProcesoDiferido();
    QVERIFY(!f.hasRequest());
}

void TestFirmwareTransfer::oneLineImageSendsOneMessageMarkedAsLast()
{
    Fixture f(lineA + end);
    f.transfer.start();
    QCOMPARE(f.sent(), QByteArray("dd0410000000"
                                  "01"
                                  "010203041a00"));
    f.answerHex(good);
    QCOMPARE(f.finished.size(), 1);
    QCOMPARE(f.transfer.state(), State::Idle);
    f.tick(20);
    QVERIFY(!f.hasRequest());
}

void TestFirmwareTransfer::resetIsAskedForWithTheLastLineOnly()
{
    Fixture f(lineA + lineB + end);
    f.transfer.setResetAfterwards(true);
    f.transfer.start();
    QCOMPARE(f.sent(), QByteArray("dd0410000000"
                                  "00"
                                  "010203041a00"));
    f.answerHex(good);
    QCOMPARE(f.sent(), QByteArray("dd03feff0000"
                                  "ff"
                                  "abcdef6400"));
}

void TestFirmwareTransfer::lineBehindALinearBaseHasTheDocumentedBody()
{
    Fixture f(":020000040001F9\n" + lineA + lineB + end);
    f.transfer.start();
    QCOMPARE(f.sent(), QByteArray("dd04100001000001020304"
                                  "1b00"));
}

void TestFirmwareTransfer::bodyCarriesAddressDataAndPlainSum_data()
{
    QTest::addColumn<qint32>("address");
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<int>("flag");
    QTest::addColumn<QByteArray>("body");
    const auto row = [](const char* name, qint32 address, const char* data, int flag,
                        const char* body) {
        QTest::newRow(name) << address << QByteArray(data) << flag << QByteArray(body);
    };
    row("address least significant byte first", 0x12345678, "00", 0,
        "dd01785634120000"
        "1400");
    row("negative address", -2, "00", 0,
        "dd01feffffff0000"
        "fb00");
    row("sum wraps", 0, "ff02", 0,
        "dd020000000000ff02"
        "0100");
    row("flag is not in the sum", 0, "05", 0xFF,
        "dd0100000000ff05"
        "0500");
    row("count is not in the sum", 0, "000000", 1,
        "dd030000000001000000"
        "0000");
}

void TestFirmwareTransfer::bodyCarriesAddressDataAndPlainSum()
{
    QFETCH(qint32, address);
    QFETCH(QByteArray, data);
    QFETCH(int, flag);
    QFETCH(QByteArray, body);
    const QByteArray bytes = QByteArray::fromHex(data);
    const HexLine line{address,
                       static_cast<quint8>(bytes.size()),
                       {reinterpret_cast<const quint8*>(bytes.constData()),
                        static_cast<std::size_t>(bytes.size())}};
    QCOMPARE(
        FirmwareTransfer::message(line, static_cast<FirmwareTransfer::FinalLineFlag>(flag)).toHex(),
        body);
}

void TestFirmwareTransfer::lineOf255BytesIsSentWhole()
{
    Fixture f(":FF000000" + QByteArray(508, '0') + "0100\n" + end);
    f.transfer.start();
    f.tick();
    const QByteArray body = f.takeRequestBody();
    QCOMPARE(body.size(), 264);
    QCOMPARE(body.first(7).toHex(), QByteArray("ddff0000000001"));
    QCOMPARE(body.last(3).toHex(), QByteArray("010100"));
}

void TestFirmwareTransfer::linesGoOutInOrderOnTheWriteCode()
{
    Fixture f(lineA + lineB + lineA + end);
    f.transfer.start();
    for (const char* body :
         {"dd041000000000010203041a00", "dd03feff000000abcdef6400", "dd041000000001010203041a00"}) {
        f.tick();
        QCOMPARE(f.requestCode(), quint8{105});
        QCOMPARE(f.takeRequestBody().toHex(), QByteArray(body));
        f.answerHex(good);
    }
    QCOMPARE(f.finished.size(), 1);
}

void TestFirmwareTransfer::acknowledgementReportsLineAndLastAddress()
{
    Fixture f(lineA + lineB + end);
    f.transfer.start();
    f.sent();
    f.answerHex(good);
    QCOMPARE(f.transfer.CurrentLine(), qint16{1});
    QCOMPARE(f.finished.size(), 0);
    f.sent();
    f.answerHex(good);
    QCOMPARE(f.acknowledged.size(), 2);
    QCOMPARE(f.acknowledged[0], (QVariantList{QVariant::fromValue(qint16{0}), 0x13}));
    QCOMPARE(f.acknowledged[1], (QVariantList{QVariant::fromValue(qint16{1}), 0x10000}));
}

void TestFirmwareTransfer::lastAddressWrapsIn32Bits()
{
    Fixture f(":020000047FFF7C\n:020000020FFFEE\n" + lineB + end);
    f.transfer.start();
    f.sent();
    f.answerHex(good);
    // 0x7FFF0000 + 0xFFF00 + 0xFFFE + 2 = 0x800FFF00, negative in 32 bits.
    QCOMPARE(f.acknowledged[0][1].toInt(), -0x7FF00100);
}

void TestFirmwareTransfer::answerIsNoAcknowledgement_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<int>("code");
    QTest::newRow("refused") << QByteArray("dd01") << 8;
    QTest::newRow("another selector") << QByteArray("da00") << 8;
    QTest::newRow("one byte") << QByteArray("dd") << 8;
    QTest::newRow("empty") << QByteArray() << 8;
    QTest::newRow("another code") << QByteArray("dd00") << 9;
    QTest::newRow("code with the toggle bit") << QByteArray("dd00") << 0x18;
}

void TestFirmwareTransfer::answerIsNoAcknowledgement()
{
    QFETCH(QByteArray, body);
    QFETCH(int, code);
    Fixture f(lineA + end);
    f.transfer.start();
    f.sent();
    f.answer(QByteArray::fromHex(body), static_cast<quint8>(code));
    QCOMPARE(f.acknowledged.size(), 0);
    QCOMPARE(f.transfer.FailCount(), qint16{1});
    QCOMPARE(f.transfer.state(), State::Sending);
}

void TestFirmwareTransfer::longerAcknowledgementIsGood()
{
    Fixture f(lineA + end);
    f.transfer.start();
    f.sent();
    f.answerHex("dd00ffff");
    QCOMPARE(f.finished.size(), 1);
}

void TestFirmwareTransfer::unacknowledgedLineIsSentAgain()
{
    Fixture f(lineA + lineB + end);
    f.transfer.start();
    const QByteArray first = f.sent();
    f.tick(5);
    QVERIFY(!f.hasRequest());
    f.timeOut();
    QCOMPARE(f.sent(), first);
    f.answerDamaged(QByteArray::fromHex(good));
    QCOMPARE(f.sent(), first);
    QCOMPARE(f.transfer.FailCount(), qint16{2});
}

void TestFirmwareTransfer::latestFailureIsKept()
{
    Fixture f(lineA + end);
    f.transfer.start();
    f.fail();
    QCOMPARE(f.transfer.lastFailure(), LinkStatus::TimeOut);
    f.sent();
    f.answerHex("dd02");
    QCOMPARE(f.transfer.lastFailure(), LinkStatus::WrongAnswer);
    f.sent();
    f.answerHex(good);
    QCOMPARE(f.transfer.lastFailure(), LinkStatus::WrongAnswer);
}

void TestFirmwareTransfer::fiveFailuresAndAGoodOneContinue()
{
    Fixture f(lineA + lineB + end);
    f.transfer.start();
    f.fail(5);
    QCOMPARE(f.transfer.FailCount(), qint16{5});
    QCOMPARE(f.transfer.state(), State::Sending);
    f.sent();
    f.answerHex(good);
    QCOMPARE(f.transfer.FailCount(), qint16{0});
    QCOMPARE(f.transfer.CurrentLine(), qint16{1});
    f.fail(5);
    f.sent();
    f.answerHex(good);
    QCOMPARE(f.finished.size(), 1);
    QCOMPARE(f.failed.size(), 0);
}

void TestFirmwareTransfer::sixFailuresInARowStop()
{
    Fixture f(lineA + lineB + end);
    f.transfer.start();
    f.fail(5);
    QCOMPARE(f.failed.size(), 0);
    f.fail();
    QCOMPARE(f.failed.size(), 1);
    QCOMPARE(f.transfer.state(), State::Idle);
    f.tick(20);
    QVERIFY(!f.hasRequest());
}

void TestFirmwareTransfer::afterAGivenUpTransferTheNextFailsAtOnce()
{
    Fixture f(lineA + lineB + end);
    f.transfer.start();
    f.fail(6);
    f.transfer.start();
    QCOMPARE(f.transfer.state(), State::Sending);
    QCOMPARE(f.transfer.FailCount(), qint16{6});
    f.fail();
    QCOMPARE(f.failed.size(), 2);
    QCOMPARE(f.transfer.state(), State::Idle);
}

void TestFirmwareTransfer::failuresBeyondCountingStillFailTheNextAtOnce()
{
    Fixture f(lineA + end);
    f.serie.close();
    f.transfer.start();
    f.tick(6);
    // The counter has 16 bits.
    for (int start = 0; start < 32768; ++start) {
        f.transfer.start();
        f.tick();
    }
    QCOMPARE(f.failed.size(), 32769);
}

void TestFirmwareTransfer::goodAcknowledgementGivesBackAllAttempts()
{
    Fixture f(lineA + lineB + end);
    f.transfer.start();
    f.fail(6);
    f.transfer.start();
    f.sent();
    f.answerHex(good);
    f.fail(5);
    QCOMPARE(f.transfer.state(), State::Sending);
    QCOMPARE(f.failed.size(), 1);
}

void TestFirmwareTransfer::closedPortCountsAsFailure()
{
    Fixture f(lineA + end);
    f.transfer.start();
    f.serie.vanish();
    f.tick(5);
    QCOMPARE(f.transfer.FailCount(), qint16{5});
    f.tick();
    QCOMPARE(f.failed.size(), 1);
    f.tick(5);
    QCOMPARE(f.transfer.FailCount(), qint16{6});
}

void TestFirmwareTransfer::interruptionForgetsTheAnswerUnderWay()
{
    Fixture f(lineA + lineB + end);
    f.transfer.start();
    f.sent();
    f.transfer.interrupt();
    QCOMPARE(f.transfer.state(), State::Idle);
    f.answerHex(good);
    f.tick(20);
    QCOMPARE(f.acknowledged.size(), 0);
    QVERIFY(!f.hasRequest());
}

void TestFirmwareTransfer::disconnectionWaitsAndGoesOnWithTheSameLine()
{
    Fixture f(lineA + lineB + end);
    f.transfer.start();
    f.sent();
    f.answerHex(good);
    const QByteArray second = f.sent();
    f.disconnect();
    f.tick(50);
    QVERIFY(!f.hasRequest());
    QCOMPARE(f.transfer.state(), State::Sending);
    QCOMPARE(f.transfer.FailCount(), qint16{0});

    f.connect();
    QCOMPARE(f.sent(), second);
    f.answerHex(good);
    QCOMPARE(f.finished.size(), 1);
}

void TestFirmwareTransfer::startAnewBeginsWithTheFirstLine()
{
    Fixture f(lineA + lineB + end);
    f.transfer.start();
    const QByteArray first = f.sent();
    f.answerHex(good);
    f.sent();
    f.transfer.start();
    QCOMPARE(f.transfer.CurrentLine(), qint16{1});
    f.transfer.interrupt();
    f.transfer.start();
    QCOMPARE(f.transfer.CurrentLine(), qint16{0});
    f.timeOut();
    QCOMPARE(f.sent(), first);
}

void TestFirmwareTransfer::idleTransferLeavesTheTimerServiceAsleep_data()
{
    using End = std::function<void(Fixture&)>;
    QTest::addColumn<End>("reachEnd");
    QTest::newRow("not begun") << End([](Fixture&) {});
    QTest::newRow("sent") << End([](Fixture& f) {
        f.transfer.start();
        f.sent();
        f.answerHex(good);
        QCOMPARE(f.finished.size(), 1);
    });
    QTest::newRow("given up") << End([](Fixture& f) {
        f.transfer.start();
        f.fail(6);
        QCOMPARE(f.failed.size(), 1);
    });
    QTest::newRow("interrupted") << End([](Fixture& f) {
        f.transfer.start();
        f.sent();
        f.transfer.interrupt();
        f.timeOut();
    });
}

void TestFirmwareTransfer::idleTransferLeavesTheTimerServiceAsleep()
{
    QFETCH(std::function<void(Fixture&)>, reachEnd);
    Fixture f(lineA + end);
    reachEnd(f);
    QCOMPARE(f.transfer.state(), State::Idle);
    QCOMPARE(f.wakeUps(100), 0);
}

void TestFirmwareTransfer::leavingGivesUpThePlaceInTheTimerService()
{
    Fixture f(lineA + end);
    f.transfer.start();
    f.transfer.leave();
    f.tick(20);
    QVERIFY(!f.hasRequest());
    QCOMPARE(f.transfer.state(), State::Idle);
}

void TestFirmwareTransfer::as32767LinesAreSent()
{
    QByteArray text;
    for (int line = 0; line < 32767; ++line)
        text += ":0100000000FF\n";
    Fixture f(text + end);
    f.transfer.start();
    for (int line = 0; line < 32766; ++line) {
        f.transfer.ProcesoDiferido();
        QCOMPARE(f.takeRequestBody().toHex(), QByteArray("dd0100000000"
                                                         "00000000"));
        f.answerHex(good);
    }
    QCOMPARE(f.finished.size(), 0);
    QCOMPARE(f.sent(), QByteArray("dd0100000000"
                                  "01000000"));
    f.answerHex(good);
    QCOMPARE(f.finished.size(), 1);
    QCOMPARE(f.transfer.CurrentLine(), qint16{32767});
}

QTEST_GUILESS_MAIN(TestFirmwareTransfer)
#include "TestFirmwareTransfer.moc"
