#include "TelnetOptions.h"

#include <QTest>

namespace {

constexpr quint8 WILL = 0xfb;
constexpr quint8 WONT = 0xfc;
constexpr quint8 DO = 0xfd;
constexpr quint8 DONT = 0xfe;

/// The far end agrees to everything.
void agree(TelnetOptions& options)
{
    options.answer(DO, 0);
    options.answer(WILL, 0);
    options.answer(DO, 3);
    options.answer(WILL, 3);
    options.answer(DO, 44);
}

} // namespace

class TestTelnetOptions : public QObject {
    Q_OBJECT
private slots:
    void binaryGoAheadAndComPortAreRequested();
    void agreementIsNotAnswered();
    void areAgreedWhenAllThatIsNeededIs_data();
    void areAgreedWhenAllThatIsNeededIs();
    void goAheadNeedNotBeAgreed();
    void everyOtherOptionIsRefused_data();
    void everyOtherOptionIsRefused();
    void refusalIsNotRepeated();
    void whatIsOffIsNotRefused();
    void allRequestsTogetherHaveFewAnswers();
    void refusedOptionIsTold();
    void binaryIsRefusedWhenOneDirectionIs();
    void withdrawnOptionIsAnsweredAndTold();
};

void TestTelnetOptions::binaryGoAheadAndComPortAreRequested()
{
    QCOMPARE(TelnetOptions::requests().toHex(), QByteArray("fffb00fffd00fffb03fffd03fffb2c"));
}

void TestTelnetOptions::agreementIsNotAnswered()
{
    TelnetOptions options;
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(options.answer(DO, 0), QByteArray());
        QCOMPARE(options.answer(WILL, 0), QByteArray());
        QCOMPARE(options.answer(DO, 3), QByteArray());
        QCOMPARE(options.answer(WILL, 3), QByteArray());
        QCOMPARE(options.answer(DO, 44), QByteArray());
    }
}

void TestTelnetOptions::areAgreedWhenAllThatIsNeededIs_data()
{
    QTest::addColumn<int>("verb");
    QTest::addColumn<int>("option");
    QTest::newRow("our binary") << int(DO) << 0;
    QTest::newRow("their binary") << int(WILL) << 0;
    QTest::newRow("COM port") << int(DO) << 44;
}

void TestTelnetOptions::areAgreedWhenAllThatIsNeededIs()
{
    QFETCH(int, verb);
    QFETCH(int, option);
    TelnetOptions options;
    for (const auto& [otherVerb, otherOption] : {std::pair{DO, 0}, {WILL, 0}, {DO, 44}})
        if (otherVerb != verb || otherOption != option)
            options.answer(otherVerb, static_cast<quint8>(otherOption));
    QVERIFY(!options.areAgreed());
    options.answer(static_cast<quint8>(verb), static_cast<quint8>(option));
    QVERIFY(options.areAgreed());
}

void TestTelnetOptions::goAheadNeedNotBeAgreed()
{
    TelnetOptions options;
    agree(options);
    options.answer(DONT, 3);
    options.answer(WONT, 3);
    QVERIFY(options.areAgreed());
}

void TestTelnetOptions::everyOtherOptionIsRefused_data()
{
    QTest::addColumn<int>("option");
    QTest::newRow("echo") << 1;
    QTest::newRow("terminal type") << 24;
    QTest::newRow("window size") << 31;
    QTest::newRow("255") << 255;
}

void TestTelnetOptions::everyOtherOptionIsRefused()
{
    QFETCH(int, option);
    TelnetOptions options;
    const QByteArray number = QByteArray(1, static_cast<char>(option));
    QCOMPARE(options.answer(WILL, static_cast<quint8>(option)),
             QByteArray::fromHex("fffe") + number);
    QCOMPARE(options.answer(DO, static_cast<quint8>(option)), QByteArray::fromHex("fffc") + number);
}

void TestTelnetOptions::refusalIsNotRepeated()
{
    TelnetOptions options;
    options.answer(WILL, 1);
    QCOMPARE(options.answer(WILL, 1), QByteArray());
    QCOMPARE(options.answer(WONT, 1), QByteArray());
    QCOMPARE(options.answer(WILL, 1), QByteArray());
}

void TestTelnetOptions::whatIsOffIsNotRefused()
{
    TelnetOptions options;
    QCOMPARE(options.answer(WONT, 1), QByteArray());
    QCOMPARE(options.answer(DONT, 1), QByteArray());
}

void TestTelnetOptions::allRequestsTogetherHaveFewAnswers()
{
    TelnetOptions options;
    qsizetype answered = 0;
    for (int times = 0; times < 4; ++times)
        for (int option = 0; option < 256; ++option)
            for (const quint8 verb : {WILL, WONT, DO, DONT})
                answered += options.answer(verb, static_cast<quint8>(option)).size();
    QCOMPARE(answered, 1536);
}

void TestTelnetOptions::refusedOptionIsTold()
{
    TelnetOptions binary;
    QVERIFY(!binary.isBinaryRefused());
    QCOMPARE(binary.answer(WONT, 0), QByteArray());
    QVERIFY(binary.isBinaryRefused());
    QVERIFY(!binary.isComPortRefused());
    TelnetOptions comPort;
    QCOMPARE(comPort.answer(DONT, 44), QByteArray());
    QVERIFY(comPort.isComPortRefused());
    QVERIFY(!comPort.isBinaryRefused());
}

void TestTelnetOptions::binaryIsRefusedWhenOneDirectionIs()
{
    TelnetOptions ours;
    QCOMPARE(ours.answer(DONT, 0), QByteArray());
    QVERIFY(ours.isBinaryRefused());
    TelnetOptions theirs;
    QCOMPARE(theirs.answer(WONT, 0), QByteArray());
    QVERIFY(theirs.isBinaryRefused());
}

void TestTelnetOptions::withdrawnOptionIsAnsweredAndTold()
{
    TelnetOptions options;
    agree(options);
    QCOMPARE(options.answer(DONT, 44).toHex(), QByteArray("fffc2c"));
    QVERIFY(options.isComPortRefused());
    QCOMPARE(options.answer(WONT, 0).toHex(), QByteArray("fffe00"));
    QVERIFY(options.isBinaryRefused());
}

QTEST_GUILESS_MAIN(TestTelnetOptions)
#include "TestTelnetOptions.moc"
