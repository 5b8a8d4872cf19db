#include "AlarmText.h"
#include "ProgrammeSamples.h"
#include "ProgrammeTexts.h"

#include <QTest>

using namespace Qt::StringLiterals;
using enum DayFlag;

constexpr auto hct7200 = ClockModel::Hct7200;
constexpr auto hct7300 = ClockModel::Hct7300;

class TestAlarmText : public QObject {
    Q_OBJECT
private slots:
    void alarmsAreLinesOfTwoCells();
    void writtenAlarmsAreReadAgain();
    void timesOfSpreadsheetsAreRead_data();
    void timesOfSpreadsheetsAreRead();
    void whatIsNoTimeIsTold_data();
    void whatIsNoTimeIsTold();
    void daysAsPeopleWriteThemAreRead_data();
    void daysAsPeopleWriteThemAreRead();
    void captionsSayWhichColumnIsWhichDay();
    void captionsWithoutDaysAreOnlyPassedOver();
    void cellsBeforeTheTimeArePassedOver();
    void emptyLinesArePassedOver();
    void everyEndOfLineIsRead();
    void unknownDayIsToldAndTheOthersAreTaken();
    void daysThatTheModelLacksAreTold();
};

namespace {

/// "9:05 lunes|10:00" of what a text holds.
QString read(const QString& text, ClockModel model = hct7300)
{
    QStringList alarms;
    for (const Alarm& alarm : AlarmText::parse(text, model).alarms)
        alarms.append(
            u"%1 %2"_s.arg(ProgrammeTexts::time(alarm), ProgrammeTexts::days(alarm)).trimmed());
    return alarms.join(u'|');
}

QStringList problems(const QString& text, ClockModel model = hct7300)
{
    return AlarmText::parse(text, model).problems;
}

} // namespace

void TestAlarmText::alarmsAreLinesOfTwoCells()
{
    QCOMPARE(AlarmText::text({samples::onWorkingDays(9, 5), samples::alarm(23, 59, {})}),
             u"9:05\tlunes a viernes\n23:59\t\n"_s);
}

void TestAlarmText::writtenAlarmsAreReadAgain()
{
    std::vector<Alarm> alarms;
    for (int flags = 0; flags < 512; ++flags) {
        Alarm alarm = samples::alarm(flags % 24, flags % 60, {});
        for (int day = 0; day < dayFlagCount; ++day)
            alarm.flags[static_cast<std::size_t>(day)] = (flags >> day) % 2 != 0;
        alarms.push_back(alarm);
    }
    const auto again = AlarmText::parse(AlarmText::text(alarms), hct7300);
    QVERIFY(again.alarms == alarms);
    QCOMPARE(again.problems, QStringList());
}

void TestAlarmText::timesOfSpreadsheetsAreRead_data()
{
    QTest::addColumn<QString>("time");
    QTest::addColumn<QString>("expected");
    const auto add = [](const QString& time, const QString& expected) {
        QTest::addRow("%s", qPrintable(time)) << time << expected;
    };
    add(u"9:05"_s, u"9:05"_s);
    add(u"09:05"_s, u"9:05"_s);
    add(u"9:5"_s, u"9:05"_s);
    add(u"09.05"_s, u"9:05"_s);
    add(u"9:05:00"_s, u"9:05"_s);
    add(u" 9:05 "_s, u"9:05"_s);
    add(u"9h05"_s, u"9:05"_s);
    add(u"9:05 h."_s, u"9:05"_s);
    add(u"9:05 AM"_s, u"9:05"_s);
    add(u"9:05 p. m."_s, u"21:05"_s);
    add(u"9:05\u00a0p.\u202fm."_s, u"21:05"_s);
    add(u"12:30 AM"_s, u"0:30"_s);
    add(u"12:30 PM"_s, u"12:30"_s);
    add(u"23:59"_s, u"23:59"_s);
}

void TestAlarmText::timesOfSpreadsheetsAreRead()
{
    QFETCH(QString, time);
    QTEST(read(time), "expected");
}

void TestAlarmText::whatIsNoTimeIsTold_data()
{
    QTest::addColumn<QString>("text");
    for (const char* text :
         {"24:00", "9:60", "9", "9.5", "9:05:30", "0:30 AM", "13:00 PM", "nueve", "lunes"})
        QTest::newRow(text) << QString::fromLatin1(text);
}

void TestAlarmText::whatIsNoTimeIsTold()
{
    QFETCH(QString, text);
    QCOMPARE(read(text), QString());
    QCOMPARE(problems(text), QStringList{u"Línea 1: «%1» no tiene hora."_s.arg(text)});
}

void TestAlarmText::daysAsPeopleWriteThemAreRead_data()
{
    QTest::addColumn<QString>("days");
    QTest::addColumn<QString>("expected");
    const auto add = [](const char* days, const char* expected) {
        QTest::newRow(days) << QString::fromUtf8(days) << QString::fromUtf8(expected);
    };
    add("lunes", "lunes");
    add("Lun Mar", "lunes y martes");
    add("Lun\tMar", "lunes y martes");
    add("lun., mié. y vie.", "lunes, miércoles y viernes");
    add("MIERCOLES", "miércoles");
    add("lunes a viernes", "lunes a viernes");
    add("de lunes a viernes y domingos", "lunes a viernes y domingo");
    add("del lunes al jueves", "lunes a jueves");
    add("L-V", "lunes a viernes");
    add("L–V", "lunes a viernes");
    add("sábado a lunes", "lunes, sábado y domingo");
    add("lunes hasta jueves", "lunes a jueves");
    add("a lunes", "lunes");
    add("festivos a lunes", "lunes y festivos");
    add("lunes a festivos", "lunes y festivos");
    add("los lunes y el martes", "lunes y martes");
    add("LMXJV", "lunes a viernes");
    add("LMMJV", "lunes a viernes");
    add("MJ", "martes y jueves");
    add("L/X/V", "lunes, miércoles y viernes");
    add("lun.+mié;vie-", "lunes, miércoles y viernes");
    add("viernes e festivos", "viernes y festivos");
    add("M", "martes");
    add("X", "miércoles");
    add("laborables", "lunes a viernes");
    add("festivos y vacaciones", "festivos y vacaciones");
    add("Fest Vac", "festivos y vacaciones");
    add("x\tx\t\t\tx", "lunes, martes y viernes");
    add("X\tX", "lunes y martes");
    add("1\t0\t1\t0\t0", "lunes y miércoles");
    add("VERDADERO\tFALSO\tFALSO", "lunes");
    add("\t\t\t\t\tsí\tno\t✓\t✓", "sábado, festivos y vacaciones");
    add("L\t\tX\t\tV", "lunes, miércoles y viernes");
    add("", "");
    add("\t\t\t\t", "");
}

void TestAlarmText::daysAsPeopleWriteThemAreRead()
{
    QFETCH(QString, days);
    QFETCH(QString, expected);
    QCOMPARE(read(u"9:05\t"_s + days), (u"9:05 "_s + expected).trimmed());
    QCOMPARE(problems(u"9:05\t"_s + days), QStringList());
}

void TestAlarmText::captionsSayWhichColumnIsWhichDay()
{
    QCOMPARE(read(u"N.º\tHora\tVie\tAula\tSáb\n1\t9:00\tx\t\tx\n2\t10:00\t\tx\t1\n"_s),
             u"9:00 viernes y sábado|10:00 sábado"_s);
}

void TestAlarmText::captionsWithoutDaysAreOnlyPassedOver()
{
    QCOMPARE(read(u"Hora\tDías\n9:00\tx\tx\n"_s), u"9:00 lunes y martes"_s);
    QCOMPARE(problems(u"Hora\tDías\n9:00\tlunes\n"_s), QStringList());
}

void TestAlarmText::cellsBeforeTheTimeArePassedOver()
{
    QCOMPARE(read(u"1\tEntrada\t9:00\tlunes"_s), u"9:00 lunes"_s);
}

void TestAlarmText::emptyLinesArePassedOver()
{
    QCOMPARE(read(u"\n9:00\tlunes\n\t\t\n\n10:00\n"_s), u"9:00 lunes|10:00"_s);
    QCOMPARE(problems(u"\n9:00\tlunes\n\t\t\n\n10:00\n"_s), QStringList());
    QCOMPARE(read(QString()), QString());
}

void TestAlarmText::everyEndOfLineIsRead()
{
    QCOMPARE(read(u"9:00\tlunes\r\n10:00\tmartes\r11:00;jueves"_s),
             u"9:00 lunes|10:00 martes|11:00 jueves"_s);
}

void TestAlarmText::unknownDayIsToldAndTheOthersAreTaken()
{
    QCOMPARE(read(u"9:00\tlunes\n10:00\tlunes y Navidad"_s), u"9:00 lunes|10:00 lunes"_s);
    QCOMPARE(problems(u"9:00\tlunes\n10:00\tlunes y Navidad"_s),
             QStringList{u"Línea 2: no se entiende «navidad»."_s});
}

void TestAlarmText::daysThatTheModelLacksAreTold()
{
    QCOMPARE(read(u"9:00\tviernes a domingo"_s, hct7200), u"9:00 viernes"_s);
    QCOMPARE(problems(u"9:00\tviernes a domingo"_s, hct7200),
             QStringList{u"Línea 1: el HCT-7200 no tiene sábado y domingo."_s});
}

QTEST_GUILESS_MAIN(TestAlarmText)
#include "TestAlarmText.moc"
