#include "Misbehaviour.h"

#include <QTest>

using namespace simulator;
using namespace Qt::StringLiterals;

namespace {

QByteArray bytes(const char* hex) { return QByteArray::fromHex(hex); }

Fault fault(const QString& text)
{
    QString reason;
    return parsedFault(text, reason).value_or(Fault());
}

} // namespace

class TestMisbehaviour : public QObject {
    Q_OBJECT

private slots:
    void answerIsSpoiled_data();
    void answerIsSpoiled();
    void faultsAddUp();
    void faultStrikesOnceUnlessTold();
    void faultStrikesNTimesAfterOthersWentWell();
    void faultStrikesAlways();
    void faultPerMilleStrikesAboutSoManyOfAThousand_data();
    void faultPerMilleStrikesAboutSoManyOfAThousand();
    void sameSeedStrikesTheSameRequests();
    void seedGivesTheseStrikesOnEveryMachine();
    void faultPerMilleGoesOnUnlessTold();
    void faultStrikesOnlyItsRequest_data();
    void faultStrikesOnlyItsRequest();
    void deliveryIsDisturbed();
    void nonsenseIsNoFault_data();
    void nonsenseIsNoFault();
    void usualNoiseHidesNoHeader();
};

void TestMisbehaviour::answerIsSpoiled_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("wire");
    QTest::newRow("checksum") << u"checksum"_s << bytes("68040468010802000c16");
    QTest::newRow("station") << u"station"_s << bytes("68040468020802000c16");
    QTest::newRow("noise") << u"noise 00FF16"_s << bytes("00ff1668040468010802000b16");
    QTest::newRow("short") << u"short"_s << bytes("680303680108020b16");
    QTest::newRow("short to nothing") << u"short 0"_s << bytes("6802026801080916");
    QTest::newRow("long") << u"long 4"_s << bytes("680606680108020000000b16");
    QTest::newRow("long with 48") << u"long 254"_s
                                  << bytes("48000048010802") + QByteArray(253, '\0') +
                                         bytes("0b16");
    QTest::newRow("truncate") << u"truncate 5"_s << bytes("6804046801");
    QTest::newRow("echo") << u"echo"_s << bytes("68040468010857006016");
    QTest::newRow("code") << u"code"_s << bytes("68040468010902000c16");
    QTest::newRow("code given") << u"code 0x18"_s << bytes("68040468011802001b16");
    QTest::newRow("end") << u"end"_s << bytes("68040468010802000b17");
    QTest::newRow("length") << u"length"_s << bytes("68050568010802000b16");
    QTest::newRow("length too low") << u"length -2"_s << bytes("68020268010802000b16");
    QTest::newRow("length round") << u"length 254"_s << bytes("68020268010802000b16");
    QTest::newRow("doubled") << u"doubled"_s << bytes("68040468010802000b1668040468010802000b16");
    QTest::newRow("joined") << u"joined 00ff"_s
                            << bytes("68040468010802000b1668040468010800ff0816");
    QTest::newRow("joined with an acceptance")
        << u"joined"_s << bytes("68040468010802000b1668040468010802000b16");
    QTest::newRow("first byte changed") << u"changed"_s << bytes("97040468010802000b16");
    QTest::newRow("last byte changed") << u"changed 9"_s << bytes("68040468010802000be9");
    QTest::newRow("bit changed") << u"changed 7 xor 0x10"_s << bytes("68040468010802100b16");
    QTest::newRow("byte set") << u"changed 4 set 7"_s << bytes("68040468070802000b16");
    QTest::newRow("byte behind the frame") << u"changed 10"_s << bytes("68040468010802000b16");
    QTest::newRow("unplug cuts") << u"unplug 3"_s << bytes("680404");
    QTest::newRow("unplug after the frame") << u"unplug 10"_s << bytes("68040468010802000b16");
    QTest::newRow("late leaves the bytes alone") << u"late 5"_s << bytes("68040468010802000b16");
}

void TestMisbehaviour::answerIsSpoiled()
{
    QFETCH(QString, text);
    QTEST(spoiled({1, 8, bytes("0200")}, {fault(text)}), "wire");
}

void TestMisbehaviour::faultsAddUp()
{
    const QList<Fault> faults{fault(u"noise AA"_s), fault(u"end"_s), fault(u"truncate 4"_s)};
    QCOMPARE(spoiled({1, 8, bytes("0200")}, faults), bytes("aa68040468"));
    const QList<Fault> more{fault(u"unplug 16"_s),  fault(u"joined 07"_s), fault(u"doubled"_s),
                            fault(u"truncate 4"_s), fault(u"length"_s),    fault(u"noise 00"_s)};
    QCOMPARE(spoiled({1, 8, bytes("0200")}, more), bytes("00680505686805056868030368010807"));
}

void TestMisbehaviour::faultStrikesOnceUnlessTold()
{
    Misbehaviour misbehaviour;
    misbehaviour.add(fault(u"silent"_s));
    QCOMPARE(misbehaviour.strike(1, bytes("0201")).size(), 1);
    QCOMPARE(misbehaviour.strike(1, bytes("0201")).size(), 0);
    QVERIFY(misbehaviour.list().isEmpty());
}

void TestMisbehaviour::faultStrikesNTimesAfterOthersWentWell()
{
    Misbehaviour misbehaviour;
    misbehaviour.add(fault(u"checksum times 2 after 3"_s));
    QList<qsizetype> struck;
    for (int request = 0; request < 7; ++request)
        struck += misbehaviour.strike(137, bytes("00")).size();
    QCOMPARE(struck, (QList<qsizetype>{0, 0, 0, 1, 1, 0, 0}));
}

void TestMisbehaviour::faultStrikesAlways()
{
    Misbehaviour misbehaviour;
    misbehaviour.add(fault(u"silent always"_s));
    for (int request = 0; request < 1000; ++request)
        QCOMPARE(misbehaviour.strike(137, bytes("00")).size(), 1);
    QCOMPARE(misbehaviour.list(),
             QStringList{u"silent always (after 0, left always, struck 1000)"_s});
    misbehaviour.clear();
    QVERIFY(misbehaviour.strike(137, bytes("00")).isEmpty());
}

void TestMisbehaviour::faultPerMilleStrikesAboutSoManyOfAThousand_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("fewest");
    QTest::addColumn<int>("most");
    QTest::newRow("none") << u"silent 0 per mille"_s << 0 << 0;
    QTest::newRow("one") << u"silent 1 per mille"_s << 70 << 130;
    QTest::newRow("a tenth") << u"silent 100 per mille"_s << 9'700 << 10'300;
    QTest::newRow("all") << u"silent 1000 per mille"_s << 100'000 << 100'000;
}

void TestMisbehaviour::faultPerMilleStrikesAboutSoManyOfAThousand()
{
    QFETCH(QString, text);
    QFETCH(int, fewest);
    QFETCH(int, most);
    Misbehaviour misbehaviour;
    misbehaviour.add(fault(text));
    qsizetype struck = 0;
    for (int request = 0; request < 100'000; ++request)
        struck += misbehaviour.strike(137, bytes("00")).size();
    QVERIFY2(struck >= fewest && struck <= most, qPrintable(QString::number(struck)));
}

void TestMisbehaviour::sameSeedStrikesTheSameRequests()
{
    const auto struckWith = [](quint32 seed) {
        Misbehaviour misbehaviour;
        misbehaviour.add(fault(u"silent 100 per mille on general"_s));
        misbehaviour.add(fault(u"late 5 300 per mille"_s));
        misbehaviour.setSeed(seed);
        QList<qsizetype> struck;
        for (int request = 0; request < 200; ++request)
            struck += misbehaviour.strike(request % 3 == 0 ? 1 : 137, bytes("00")).size();
        return struck;
    };
    QCOMPARE(struckWith(7), struckWith(7));
    QVERIFY(struckWith(7) != struckWith(8));
}

void TestMisbehaviour::seedGivesTheseStrikesOnEveryMachine()
{
    Misbehaviour misbehaviour;
    misbehaviour.add(fault(u"silent 100 per mille"_s));
    misbehaviour.setSeed(2026);
    QList<int> struck;
    for (int request = 0; request < 60; ++request) {
        if (!misbehaviour.strike(137, bytes("00")).isEmpty())
            struck += request;
    }
    QCOMPARE(struck, (QList<int>{6, 9, 17, 28, 39, 40, 41, 45, 54, 57}));
}

void TestMisbehaviour::faultPerMilleGoesOnUnlessTold()
{
    Misbehaviour misbehaviour;
    misbehaviour.add(fault(u"silent 1000 per mille times 2 after 1"_s));
    misbehaviour.add(fault(u"end after 1 1000 per mille on general"_s));
    QList<qsizetype> struck;
    for (int request = 0; request < 5; ++request)
        struck += misbehaviour.strike(137, bytes("00")).size();
    QCOMPARE(struck, (QList<qsizetype>{0, 2, 2, 1, 1}));
    QCOMPARE(
        misbehaviour.list(),
        QStringList{u"end after 1 1000 per mille on general (after 0, left always, struck 4)"_s});
}

void TestMisbehaviour::faultStrikesOnlyItsRequest_data()
{
    QTest::addColumn<QString>("request");
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<bool>("strikes");
    QTest::newRow("identification") << u"identification"_s << 1 << bytes("0201") << true;
    QTest::newRow("general") << u"general"_s << 137 << bytes("00") << true;
    QTest::newRow("clock") << u"clock"_s << 105 << bytes("01") << true;
    QTest::newRow("mode") << u"mode"_s << 137 << bytes("ca01") << true;
    QTest::newRow("outputs") << u"outputs"_s << 105 << bytes("cb01") << true;
    QTest::newRow("days") << u"days"_s << 105 << bytes("d2") << true;
    QTest::newRow("days-read") << u"days-read"_s << 137 << bytes("d9") << true;
    QTest::newRow("block") << u"block"_s << 105 << bytes("da01") << true;
    QTest::newRow("firmware") << u"firmware"_s << 105 << bytes("dd") << true;
    QTest::newRow("selector") << u"0xDA"_s << 105 << bytes("da01") << true;
    QTest::newRow("another selector") << u"0xDA"_s << 105 << bytes("dd") << false;
    QTest::newRow("another code") << u"general"_s << 105 << bytes("00") << false;
    QTest::newRow("empty body") << u"general"_s << 137 << QByteArray() << false;
}

void TestMisbehaviour::faultStrikesOnlyItsRequest()
{
    QFETCH(QString, request);
    QFETCH(int, code);
    QFETCH(QByteArray, body);
    Misbehaviour misbehaviour;
    misbehaviour.add(fault(u"silent on %1"_s.arg(request)));
    QTEST(!misbehaviour.strike(quint8(code), body).isEmpty(), "strikes");
}

void TestMisbehaviour::deliveryIsDisturbed()
{
    QVERIFY(!delivery({fault(u"silent"_s)}).isSent);
    QVERIFY(delivery({fault(u"silent"_s)}).isObeyed);
    QVERIFY(!delivery({fault(u"lost"_s)}).isObeyed);
    QCOMPARE(delivery({fault(u"late 250"_s)}).delay, 250);
    QCOMPARE(delivery({fault(u"split"_s)}).byteGap, 2);
    QCOMPARE(delivery({fault(u"refuse 7"_s)}).refusal, std::optional<quint8>(7));
    QCOMPARE(delivery({fault(u"vanish 900"_s)}).vanishFor, std::optional<int>(900));
    QCOMPARE(delivery({fault(u"stray 9500"_s)}).strayAfter,
             std::optional(std::chrono::microseconds(9500)));
    QCOMPARE(delivery({fault(u"stray -9500"_s)}).strayAfter,
             std::optional(std::chrono::microseconds(-9500)));
    QCOMPARE(delivery({fault(u"unplug 3 900"_s)}).unplugFor, std::optional<int>(900));
    QVERIFY(delivery({fault(u"unplug 3 900"_s)}).isSent);
}

void TestMisbehaviour::nonsenseIsNoFault_data()
{
    QTest::addColumn<QString>("text");
    for (const char* text : {"",
                             "nonsense",
                             "late -1",
                             "late soon",
                             "silent 3",
                             "noise GG",
                             "noise ABC",
                             "silent times",
                             "silent times 0",
                             "silent times x",
                             "silent on",
                             "silent on 256",
                             "silent on nobody",
                             "split 0",
                             "short 510",
                             "silent always more",
                             "code 256",
                             "stray -10000001",
                             "stray 9.5",
                             "stray 10000001",
                             "length 256",
                             "length 1 1",
                             "doubled 2",
                             "joined GG",
                             "changed -1",
                             "changed 517",
                             "changed 3 xor",
                             "changed 3 xor 256",
                             "changed 3 and 1",
                             "changed xor 1",
                             "unplug -1",
                             "unplug 3 -1",
                             "silent 1001 per mille",
                             "silent -1 per mille",
                             "silent x per mille",
                             "silent per mille",
                             "silent 5 per cent",
                             "silent 5 per"})
        QTest::newRow(text) << QString::fromLatin1(text);
}

void TestMisbehaviour::nonsenseIsNoFault()
{
    QFETCH(QString, text);
    QString reason;
    QVERIFY(!parsedFault(text, reason));
    QVERIFY(!reason.isEmpty());
}

void TestMisbehaviour::usualNoiseHidesNoHeader()
{
    const QByteArray noise = fault(u"noise"_s).bytes + bytes("68040468010802000b16");
    for (qsizetype at = 0; at + 4 < noise.size() - 10; ++at) {
        const bool header = noise[at] == noise[at + 3] && noise[at + 1] == noise[at + 2] &&
                            (quint8(noise[at]) & 0xDF) == 0x48 && noise[at + 4] == 1;
        QVERIFY2(!header, qPrintable(QString::number(at)));
    }
}

QTEST_GUILESS_MAIN(TestMisbehaviour)
#include "TestMisbehaviour.moc"
