#include "CoverLabel.h"
#include "RoundLamp.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

class TestLamp : public QObject {
    Q_OBJECT
private slots:
    void middleHasTheFillExactly_data();
    void middleHasTheFillExactly();
    void litLampIsBrighterThanADarkOne_data();
    void litLampIsBrighterThanADarkOne();
    void stateIsToldInWords();
    void largerFontMakesALargerLamp();
    void coverTellsAClick();
    void coverTellsNoClickThatIsLetGoOutside();
    void coverTellsNoClickOfAnotherButton();
    void coverTellsBothHalvesOfADoubleClick();
};

namespace {

/// Mean grey value of the inner half of the disc: what someone sees who cannot distinguish hues.
double brightness(quint32 fill)
{
    RoundLamp lamp;
    lamp.setFill(fill, QString());
    const QImage image = lamp.grab().toImage();
    const int side = image.width() / 2;
    double sum = 0;
    for (int y = side / 2; y < side / 2 + side; ++y)
        for (int x = side / 2; x < side / 2 + side; ++x)
            sum += qGray(image.pixel(x, y));
    return sum / (side * side);
}

} // namespace

void TestLamp::middleHasTheFillExactly_data()
{
    QTest::addColumn<quint32>("fill");
    QTest::addColumn<QString>("colour");
    QTest::newRow("red") << 0x0000FFu << u"#ff0000"_s;
    QTest::newRow("dark red") << 0x000080u << u"#800000"_s;
    QTest::newRow("green") << 0x00FF00u << u"#00ff00"_s;
    QTest::newRow("dark green") << 0x008000u << u"#008000"_s;
    QTest::newRow("blue comes first") << 0xFF8000u << u"#0080ff"_s;
}

void TestLamp::middleHasTheFillExactly()
{
    QFETCH(quint32, fill);
    RoundLamp lamp;
    lamp.setFill(fill, QString());
    QCOMPARE(lamp.fill(), fill);
    const QImage image = lamp.grab().toImage();
    QTEST(image.pixelColor(image.rect().center()).name(), "colour");
}

void TestLamp::litLampIsBrighterThanADarkOne_data()
{
    QTest::addColumn<quint32>("lit");
    QTest::addColumn<quint32>("dark");
    QTest::newRow("red") << 0x0000FFu << 0x000080u;
    QTest::newRow("green") << 0x00FF00u << 0x008000u;
}

void TestLamp::litLampIsBrighterThanADarkOne()
{
    QFETCH(quint32, lit);
    QFETCH(quint32, dark);
    QVERIFY(brightness(lit) > 1.8 * brightness(dark));
}

void TestLamp::stateIsToldInWords()
{
    RoundLamp lamp;
    lamp.setFill(0x00FF00, u"encendido"_s);
    QCOMPARE(lamp.accessibleDescription(), u"encendido"_s);
    lamp.setFill(0x00FF00, u"apagado"_s);
    QCOMPARE(lamp.accessibleDescription(), u"apagado"_s);
}

void TestLamp::largerFontMakesALargerLamp()
{
    RoundLamp lamp;
    const int before = lamp.sizeHint().width();
    QFont font = lamp.font();
    font.setPointSize(2 * font.pointSize());
    lamp.setFont(font);
    QVERIFY(lamp.sizeHint().width() > before);
}

void TestLamp::coverTellsAClick()
{
    CoverLabel cover;
    cover.resize(20, 20);
    QSignalSpy clicked(&cover, &CoverLabel::clicked);
    QTest::mouseClick(&cover, Qt::LeftButton);
    QCOMPARE(clicked.count(), 1);
}

void TestLamp::coverTellsNoClickThatIsLetGoOutside()
{
    CoverLabel cover;
    cover.resize(20, 20);
    QSignalSpy clicked(&cover, &CoverLabel::clicked);
    QTest::mousePress(&cover, Qt::LeftButton);
    QTest::mouseRelease(&cover, Qt::LeftButton, Qt::NoModifier, QPoint(40, 40));
    QTest::mouseRelease(&cover, Qt::LeftButton);
    QCOMPARE(clicked.count(), 0);
}

void TestLamp::coverTellsNoClickOfAnotherButton()
{
    CoverLabel cover;
    QSignalSpy clicked(&cover, &CoverLabel::clicked);
    QTest::mouseClick(&cover, Qt::RightButton);
    QCOMPARE(clicked.count(), 0);
}

void TestLamp::coverTellsBothHalvesOfADoubleClick()
{
    CoverLabel cover;
    QSignalSpy clicked(&cover, &CoverLabel::clicked);
    QTest::mouseClick(&cover, Qt::LeftButton);
    QTest::mouseDClick(&cover, Qt::LeftButton);
    QTest::mouseRelease(&cover, Qt::LeftButton);
    QCOMPARE(clicked.count(), 2);
}

QTEST_MAIN(TestLamp)
#include "TestLamp.moc"
