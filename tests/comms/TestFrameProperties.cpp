#include "FrameBytes.h"

#include <QTest>

#include <rapidcheck.h>

class TestFrameProperties : public QObject {
    Q_OBJECT
private slots:
    void everyFrameIsFoundByItsOwnHeader();
    void noBytesMakeAHeaderOutOfItsRange();
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

QTEST_GUILESS_MAIN(TestFrameProperties)
#include "TestFrameProperties.moc"
