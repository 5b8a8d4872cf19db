#include "FrameBytes.h"

#include <QTest>

#include <rapidcheck.h>

class TestFrameProperties : public QObject {
    Q_OBJECT
private slots:
    void everyFrameIsFoundByItsOwnHeader();
    void noBytesMakeAHeaderOutOfItsRange();
    void hunterNeverAwaitsMoreThanAFrameNeeds();
};

void TestFrameProperties::everyFrameIsFoundByItsOwnHeader()
{
    const bool holds = rc::check([](quint8 station, quint8 code) {
        const auto size = *rc::gen::inRange(0, 510);
        const QByteArray bytes = whole(frame::encode(station, code, QByteArray(size, 'd')));
        frame::HeaderHunter hunter(station);
        const auto header = hunt(hunter, bytes.left(5));
        RC_ASSERT(header.has_value());
        RC_ASSERT(header->station == station);
        RC_ASSERT(header->length == size + 2);
        RC_ASSERT(bytes.size() - 5 == header->bytesToCome());
    });
    QVERIFY(holds);
}

void TestFrameProperties::noBytesMakeAHeaderOutOfItsRange()
{
    const bool holds = rc::check([](quint8 station, const std::vector<bool>& choices) {
        // Bytes that headers are made of, in any order.
        frame::HeaderHunter hunter(station);
        for (std::size_t i = 0; i + 1 < choices.size(); ++i) {
            const quint8 start = choices[i] ? 0x68 : 0x48;
            const auto header = hunter.take(choices[i + 1] ? start : station);
            RC_ASSERT(!header || (header->length >= 2 && header->length <= 511));
            RC_ASSERT(!header || header->station == station || station == 255);
        }
    });
    QVERIFY(holds);
}

void TestFrameProperties::hunterNeverAwaitsMoreThanAFrameNeeds()
{
    const bool holds = rc::check([](quint8 station) {
        // Noise of the bytes that headers are made of, and any frame behind it.
        const auto noise = *rc::gen::container<std::vector<quint8>>(
            rc::gen::element<quint8>(0x68, 0x48, 2, 3, station));
        const auto size = *rc::gen::inRange(0, 510);
        const QByteArray bytes = whole(frame::encode(station, 8, QByteArray(size, 'h')));
        frame::HeaderHunter hunter(station);
        for (const quint8 byte : noise)
            hunter.take(byte);
        for (qsizetype taken = 0; taken < 5; ++taken) {
            RC_ASSERT(hunter.bytesToCome() <= bytes.size() - taken);
            hunter.take(static_cast<quint8>(bytes[taken]));
        }
    });
    QVERIFY(holds);
}

QTEST_GUILESS_MAIN(TestFrameProperties)
#include "TestFrameProperties.moc"
