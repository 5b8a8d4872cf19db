#include "ClockTime.h"
#include "LinkFixture.h"

#include <QTest>
#include <QTimeZone>

using namespace Qt::StringLiterals;

/// The clock's time and how far it is from the computer's.
class TestClockTime : public QObject {
    Q_OBJECT
private slots:
    void clockIsComparedInWholeSeconds_data();
    void clockIsComparedInWholeSeconds();
    void changeToSummerTimeIsNoDifference();
    void dateThatDoesNotExistIsNone_data();
    void dateThatDoesNotExistIsNone();
    void differenceIsToldInUnitsOfItsSize_data();
    void differenceIsToldInUnitsOfItsSize();
};

void TestClockTime::clockIsComparedInWholeSeconds_data()
{
    QTest::addColumn<QTime>("computer");
    QTest::addColumn<qint64>("secondsAhead");
    QTest::newRow("the same second, almost over") << QTime(9, 5, 3, 999) << qint64{0};
    QTest::newRow("a second later") << QTime(9, 5, 4, 0) << qint64{-1};
    QTest::newRow("a second before, almost over") << QTime(9, 5, 2, 999) << qint64{1};
}

// The clock shows 21/11/2026 9:05:03.
void TestClockTime::clockIsComparedInWholeSeconds()
{
    QFETCH(QTime, computer);
    QFETCH(qint64, secondsAhead);
    const StatusBlock block(LinkFixture::fullBlock());
    QCOMPARE(clocktime::secondsAhead(block, QDateTime(QDate(2026, 11, 21), computer)),
             std::optional(secondsAhead));
}

void TestClockTime::changeToSummerTimeIsNoDifference()
{
    const QTimeZone madrid("Europe/Madrid");
    const QDateTime before(QDate(2026, 3, 29), QTime(1, 59, 59), madrid);
    const QDateTime after(QDate(2026, 3, 29), QTime(3, 0, 0), madrid);
    QCOMPARE(before.secsTo(after), 1);
    QCOMPARE(clocktime::onTheWall(before).secsTo(clocktime::onTheWall(after)), 3601);
}

void TestClockTime::dateThatDoesNotExistIsNone_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<int>("value");
    QTest::newRow("second 60") << 5 << 60;
    QTest::newRow("hour 24") << 7 << 24;
    QTest::newRow("day 0") << 9 << 0;
    QTest::newRow("31 November") << 9 << 31;
    QTest::newRow("month 13") << 10 << 13;
}

void TestClockTime::dateThatDoesNotExistIsNone()
{
    QFETCH(int, place);
    QFETCH(int, value);
    QByteArray bytes = LinkFixture::fullBlock();
    bytes[place] = static_cast<char>(value);
    QVERIFY(!clocktime::ofClock(StatusBlock(bytes)));
}

void TestClockTime::differenceIsToldInUnitsOfItsSize_data()
{
    QTest::addColumn<qint64>("secondsAhead");
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << qint64{0} << u"en hora"_s;
    QTest::newRow("a second") << qint64{1} << u"1 s adelantado"_s;
    QTest::newRow("under two minutes") << qint64{-119} << u"119 s atrasado"_s;
    QTest::newRow("two minutes") << qint64{120} << u"2 min adelantado"_s;
    QTest::newRow("two hours") << qint64{-7200} << u"2 h atrasado"_s;
    QTest::newRow("two days") << qint64{172800} << u"2 días adelantado"_s;
}

void TestClockTime::differenceIsToldInUnitsOfItsSize()
{
    QFETCH(qint64, secondsAhead);
    QFETCH(QString, text);
    QCOMPARE(clocktime::differenceText(secondsAhead), text);
}

QTEST_GUILESS_MAIN(TestClockTime)
#include "TestClockTime.moc"
