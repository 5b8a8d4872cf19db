#include "CalendarDate.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestCalendarDate : public QObject {
    Q_OBJECT
private slots:
    void faultOfADateIsTold_data();
    void faultOfADateIsTold();
    void faultOfAHalfPeriodIsTold();
};

void TestCalendarDate::faultOfADateIsTold_data()
{
    QTest::addColumn<int>("day");
    QTest::addColumn<int>("month");
    QTest::addColumn<QString>("fault");
    QTest::newRow("unused") << 0 << 0 << QString();
    QTest::newRow("no day") << 0 << 5 << u"tiene mes y no tiene día"_s;
    QTest::newRow("no month") << 5 << 0 << u"tiene día y no tiene mes"_s;
    QTest::newRow("leap day") << 29 << 2 << QString();
    QTest::newRow("30 February") << 30 << 2 << u"el 30/02 no existe"_s;
    QTest::newRow("30 April") << 30 << 4 << QString();
    QTest::newRow("31 April") << 31 << 4 << u"el 31/04 no existe"_s;
    QTest::newRow("31 December") << 31 << 12 << QString();
}

void TestCalendarDate::faultOfADateIsTold()
{
    QFETCH(int, day);
    QFETCH(int, month);
    QTEST(CalendarDate::faultOf(day, month), "fault");
}

void TestCalendarDate::faultOfAHalfPeriodIsTold()
{
    QCOMPARE(CalendarDate::faultOf(VacationPeriod{}), QString());
    QCOMPARE(CalendarDate::faultOf(VacationPeriod{1, 8, 31, 8}), QString());
    QCOMPARE(CalendarDate::faultOf(VacationPeriod{0, 0, 31, 8}), u"tiene fin y no tiene inicio"_s);
    QCOMPARE(CalendarDate::faultOf(VacationPeriod{1, 0, 0, 0}), u"tiene inicio y no tiene fin"_s);
    QCOMPARE(CalendarDate::faultOf(VacationPeriod{0, 8, 0, 0}), u"tiene inicio y no tiene fin"_s);
    QCOMPARE(CalendarDate::faultOf(VacationPeriod{0, 0, 0, 8}), u"tiene fin y no tiene inicio"_s);
}

QTEST_GUILESS_MAIN(TestCalendarDate)
#include "TestCalendarDate.moc"
