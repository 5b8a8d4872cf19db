#include "ComPortClient.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// DO and WILL binary, DO COM port.
const char* const agreement = "fffd00fffb00fffd2c";
/// 9600 bit/s, 8 data bits, no parity, 1 stop bit.
const char* const confirmation = "fffa2c6500002580fff0fffa2c6608fff0fffa2c6701fff0fffa2c6801fff0";

} // namespace

/// The port client as a pure class: what the far end sends, in hexadecimal, and what becomes of it.
class TestComPortClient : public QObject {
    Q_OBJECT
private slots:
    void init();
    void lineIsSetAfterTheOptions();
    void lineIsSetOnce();
    void isReadyWhenTheLineIsConfirmed();
    void eachSettingMustBeConfirmed_data();
    void eachSettingMustBeConfirmed();
    void dtrAndRtsNeedNoConfirmation();
    void refusedSettingIsTold_data();
    void refusedSettingIsTold();
    void nearSpeedIsTaken();
    void confirmationBeforeTheOptionsDoesNotCount();
    void farEndWithoutTheOptionIsRefused();
    void farEndThatIsNotBinaryIsRefused();
    void optionWithdrawnLaterIsRefused();
    void firstReasonRemains();
    void notificationsAreIgnored_data();
    void notificationsAreIgnored();
    void flowIsSuspendedAndResumed();
    void dataComesOutWithoutCommands();
    void otherSubnegotiationsAreIgnored();
    void anyChunksLeadToTheSameEnd();

private:
    void take(const QByteArray& hexadecimal)
    {
        client->take(QByteArray::fromHex(hexadecimal), data, answers);
    }

    std::optional<ComPortClient> client;
    QByteArray data;
    QByteArray answers;
};

void TestComPortClient::init()
{
    client.emplace(LineSettings(), true, false);
    data.clear();
    answers.clear();
}

void TestComPortClient::lineIsSetAfterTheOptions()
{
    take("fffd00fffb00");
    QCOMPARE(answers, QByteArray());
    QCOMPARE(client->step(), ComPortClient::Step::Options);
    take("fffd2c");
    QCOMPARE(answers.toHex(' '),
             QByteArray("ff fa 2c 01 00 00 25 80 ff f0 ff fa 2c 02 08 ff f0 ff fa 2c 03 01 ff f0 "
                        "ff fa 2c 04 01 ff f0 ff fa 2c 05 01 ff f0 "
                        "ff fa 2c 05 08 ff f0 ff fa 2c 05 0c ff f0"));
    QCOMPARE(client->step(), ComPortClient::Step::Settings);
}

void TestComPortClient::lineIsSetOnce()
{
    take(agreement);
    answers.clear();
    take(agreement);
    QCOMPARE(answers, QByteArray());
}

void TestComPortClient::isReadyWhenTheLineIsConfirmed()
{
    take(agreement);
    take(confirmation);
    QCOMPARE(client->step(), ComPortClient::Step::Ready);
    QCOMPARE(client->refusal(), QString());
}

void TestComPortClient::eachSettingMustBeConfirmed_data()
{
    QTest::addColumn<QByteArray>("confirmed");
    QTest::newRow("not the speed") << QByteArray("fffa2c6608fff0fffa2c6701fff0fffa2c6801fff0");
    QTest::newRow("not the data bits")
        << QByteArray("fffa2c6500002580fff0fffa2c6701fff0fffa2c6801fff0");
    QTest::newRow("not the parity")
        << QByteArray("fffa2c6500002580fff0fffa2c6608fff0fffa2c6801fff0");
    QTest::newRow("not the stop bits")
        << QByteArray("fffa2c6500002580fff0fffa2c6608fff0fffa2c6701fff0");
}

void TestComPortClient::eachSettingMustBeConfirmed()
{
    QFETCH(QByteArray, confirmed);
    take(agreement);
    take(confirmed);
    take(confirmed);
    QCOMPARE(client->step(), ComPortClient::Step::Settings);
}

void TestComPortClient::dtrAndRtsNeedNoConfirmation()
{
    take(agreement);
    // Confirms that there is no flow control, and no more.
    take("fffa2c6901fff0");
    QCOMPARE(client->step(), ComPortClient::Step::Settings);
    take(confirmation);
    QCOMPARE(client->step(), ComPortClient::Step::Ready);
}

void TestComPortClient::refusedSettingIsTold_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("refusal");
    QTest::newRow("another speed")
        << QByteArray("fffa2c65000004b0fff0") << u"no admite la velocidad de 9600 bit/s"_s;
    QTest::newRow("a speed without a value")
        << QByteArray("fffa2c65fff0") << u"no admite la velocidad de 9600 bit/s"_s;
    QTest::newRow("other data bits")
        << QByteArray("fffa2c6607fff0") << u"no admite 8 bits de datos"_s;
    QTest::newRow("another parity")
        << QByteArray("fffa2c6703fff0") << u"no admite la paridad elegida"_s;
    QTest::newRow("other stop bits")
        << QByteArray("fffa2c6802fff0") << u"no admite los bits de parada elegidos"_s;
}

void TestComPortClient::refusedSettingIsTold()
{
    QFETCH(QByteArray, answer);
    take(agreement);
    take(answer);
    QCOMPARE(client->step(), ComPortClient::Step::Refused);
    QTEST(client->refusal(), "refusal");
}

void TestComPortClient::nearSpeedIsTaken()
{
    take(agreement);
    // 9615 bit/s.
    take("fffa2c650000258ffff0fffa2c6608fff0fffa2c6701fff0fffa2c6801fff0");
    QCOMPARE(client->step(), ComPortClient::Step::Ready);
}

void TestComPortClient::confirmationBeforeTheOptionsDoesNotCount()
{
    take(confirmation);
    take(agreement);
    QCOMPARE(client->step(), ComPortClient::Step::Settings);
}

void TestComPortClient::farEndWithoutTheOptionIsRefused()
{
    take("fffe2c");
    QCOMPARE(client->step(), ComPortClient::Step::Refused);
    QCOMPARE(client->refusal(), u"no admite RFC 2217"_s);
}

void TestComPortClient::farEndThatIsNotBinaryIsRefused()
{
    take("fffc00");
    QCOMPARE(client->step(), ComPortClient::Step::Refused);
    QCOMPARE(client->refusal(), u"no admite datos binarios"_s);
}

void TestComPortClient::optionWithdrawnLaterIsRefused()
{
    take(agreement);
    take(confirmation);
    take("fffe2c");
    QCOMPARE(client->step(), ComPortClient::Step::Refused);
}

void TestComPortClient::firstReasonRemains()
{
    take("fffc00fffe2c");
    QCOMPARE(client->refusal(), u"no admite datos binarios"_s);
}

void TestComPortClient::notificationsAreIgnored_data()
{
    QTest::addColumn<QByteArray>("notification");
    QTest::newRow("line state") << QByteArray("fffa2c6a60fff0");
    QTest::newRow("modem state") << QByteArray("fffa2c6bb0fff0");
    QTest::newRow("signature wanted") << QByteArray("fffa2c64fff0");
    QTest::newRow("a command of a client") << QByteArray("fffa2c0c01fff0");
    QTest::newRow("nothing") << QByteArray("fffa2cfff0");
    QTest::newRow("the last code") << QByteArray("fffa2cfffffff0");
}

void TestComPortClient::notificationsAreIgnored()
{
    QFETCH(QByteArray, notification);
    take(agreement);
    answers.clear();
    take(notification);
    take(confirmation);
    take(notification);
    QCOMPARE(client->step(), ComPortClient::Step::Ready);
    QCOMPARE(answers, QByteArray());
    QCOMPARE(data, QByteArray());
}

void TestComPortClient::flowIsSuspendedAndResumed()
{
    QVERIFY(!client->isSuspended());
    take("fffa2c6cfff0");
    QVERIFY(client->isSuspended());
    take("fffa2c6dfff0");
    QVERIFY(!client->isSuspended());
}

void TestComPortClient::dataComesOutWithoutCommands()
{
    take(agreement);
    take("68ffff16fffa2c6bb0fff017");
    QCOMPARE(data.toHex(), QByteArray("68ff1617"));
}

void TestComPortClient::otherSubnegotiationsAreIgnored()
{
    take(agreement);
    answers.clear();
    take("fffa1801fff0fffa2665000004b0fff0");
    QCOMPARE(client->step(), ComPortClient::Step::Settings);
    QCOMPARE(answers, QByteArray());
}

void TestComPortClient::anyChunksLeadToTheSameEnd()
{
    const QByteArray sent =
        QByteArray::fromHex(QByteArray("41fffb01") + agreement + confirmation + "68ffff16fff1");
    for (qsizetype chunk = 1; chunk <= sent.size(); ++chunk) {
        init();
        for (qsizetype at = 0; at < sent.size(); at += chunk)
            client->take(sent.mid(at, chunk), data, answers);
        QCOMPARE(client->step(), ComPortClient::Step::Ready);
        QCOMPARE(data.toHex(), QByteArray("4168ff16"));
        QVERIFY(answers.startsWith(QByteArray::fromHex("fffe01fffa2c01")));
        QCOMPARE(answers.size(), 3 + 38 + 14);
    }
}

QTEST_GUILESS_MAIN(TestComPortClient)
#include "TestComPortClient.moc"
