#include "ApplicationIcon.h"

#include <QImage>
#include <QTest>

using namespace Qt::StringLiterals;

class TestApplicationIcon : public QObject {
    Q_OBJECT
private slots:
    void pictureOfItsSizeIsShownAsItIs_data();
    void pictureOfItsSizeIsShownAsItIs();
    void otherSizesComeFromTheNextLargerPicture_data();
    void otherSizesComeFromTheNextLargerPicture();
    void pictureIsScaledOnlyOnce();
    void sizesAreToldToTheDesktop();
};

namespace {

QImage drawn(int size) { return applicationIcon(u"hct"_s).pixmap(QSize(size, size), 1).toImage(); }

QImage picture(int size)
{
    return QImage(u":/icons/hct-%1.png"_s.arg(size))
        .convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace

void TestApplicationIcon::pictureOfItsSizeIsShownAsItIs_data()
{
    QTest::addColumn<int>("size");
    for (int size : {16, 24, 32, 48, 64, 128, 256})
        QTest::addRow("%d", size) << size;
}

void TestApplicationIcon::pictureOfItsSizeIsShownAsItIs()
{
    QFETCH(int, size);
    QCOMPARE(picture(size).width(), size);
    QCOMPARE(drawn(size), picture(size));
}

void TestApplicationIcon::otherSizesComeFromTheNextLargerPicture_data()
{
    QTest::addColumn<int>("wanted");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("size");
    QTest::newRow("8") << 8 << 16 << 8;
    QTest::newRow("20") << 20 << 24 << 20;
    QTest::newRow("65") << 65 << 128 << 65;
    QTest::newRow("larger than all") << 300 << 256 << 256;
}

void TestApplicationIcon::otherSizesComeFromTheNextLargerPicture()
{
    QFETCH(int, wanted);
    QFETCH(int, from);
    QFETCH(int, size);
    const QImage scaled =
        picture(from).scaled(size, size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QCOMPARE(drawn(wanted), scaled);
}

// A new pixmap at every painting would fill the toolkit's cache.
void TestApplicationIcon::pictureIsScaledOnlyOnce()
{
    const QIcon icon = applicationIcon(u"hct"_s);
    const qint64 first = icon.pixmap(QSize(20, 20), 1).cacheKey();
    QCOMPARE(icon.pixmap(QSize(20, 20), 1).cacheKey(), first);
}

void TestApplicationIcon::sizesAreToldToTheDesktop()
{
    QCOMPARE(
        applicationIcon(u"hct"_s).availableSizes(),
        (QList<QSize>{{16, 16}, {24, 24}, {32, 32}, {48, 48}, {64, 64}, {128, 128}, {256, 256}}));
    QCOMPARE(applicationIcon(u"hct"_s).actualSize(QSize(20, 20)), QSize(20, 20));
    QCOMPARE(applicationIcon(u"hct"_s).actualSize(QSize(300, 300)), QSize(256, 256));
}

QTEST_MAIN(TestApplicationIcon)
#include "TestApplicationIcon.moc"
