#include "EditName.h"
#include "ProgrammeSamples.h"

#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;
using enum DayFlag;

using Edit = std::function<void(Programme& programme)>;
Q_DECLARE_METATYPE(Edit)

class TestEditName : public QObject {
    Q_OBJECT
private slots:
    void editIsNamedByWhatDiffers_data();
    void editIsNamedByWhatDiffers();
    void editsOfOneFieldHaveOneKey();
    void editOfSeveralFieldsHasNoKey();
    void nothingHasNoName();
};

void TestEditName::editIsNamedByWhatDiffers_data()
{
    QTest::addColumn<Edit>("edit");
    QTest::addColumn<QString>("name");
    const auto add = [](const char* row, const Edit& edit, const QString& name) {
        QTest::newRow(row) << edit << name;
    };
    add(
        "hour", [](Programme& p) { p.blocks[0].Alarms[2].Hour = 9; }, u"hora del aviso 3"_s);
    add(
        "minute", [](Programme& p) { p.blocks[1].Alarms[2].Minute = 9; },
        u"hora del aviso 3 de la salida 2"_s);
    add(
        "days", [](Programme& p) { p.blocks[0].Alarms[31].setWorkingDays(true); },
        u"días del aviso 32"_s);
    add(
        "hour and days", [](Programme& p) { p.blocks[0].Alarms[2] = samples::onWorkingDays(9, 0); },
        u"aviso 3"_s);
    add(
        "several alarms",
        [](Programme& p) { p.blocks[2].Alarms.fill(samples::onWorkingDays(9, 0)); },
        u"avisos de la salida 3"_s);
    add(
        "hours", [](Programme& p) { p.blocks[0].Alarms[2].Hour = p.blocks[0].Alarms[3].Hour = 9; },
        u"horas de avisos"_s);
    add(
        "days of several alarms",
        [](Programme& p) {
            p.blocks[1].Alarms[2].setWorkingDays(true);
            p.blocks[1].Alarms[3].setWorkingDays(true);
        },
        u"días de avisos de la salida 2"_s);
    add(
        "duration", [](Programme& p) { p.blocks[0].Duration = 5; }, u"duración"_s);
    add(
        "mode", [](Programme& p) { p.blocks[1].Mode = 2; }, u"modo de la salida 2"_s);
    add(
        "duration and mode", [](Programme& p) { p.blocks[0].Duration = p.blocks[0].Mode = 2; },
        u"duración y modo"_s);
    add(
        "mode and alarm", [](Programme& p) { p.blocks[0].Mode = p.blocks[0].Alarms[0].Hour = 2; },
        u"varios cambios"_s);
    add(
        "two outputs", [](Programme& p) { p.blocks[0].Mode = p.blocks[1].Mode = 2; },
        u"varios cambios"_s);
    add(
        "holiday",
        [](Programme& p) {
            p.table.holidays[1] = {1, 5};
        },
        u"festivo 2"_s);
    add(
        "holidays",
        [](Programme& p) {
            p.table.holidays.fill({1, 5});
        },
        u"festivos"_s);
    add(
        "period", [](Programme& p) { p.table.vacations[7].EndDay = 5; },
        u"período de vacaciones 8"_s);
    add(
        "periods",
        [](Programme& p) {
            p.table.vacations.fill({1, 5, 1, 6});
        },
        u"períodos de vacaciones"_s);
    add(
        "all dates",
        [](Programme& p) {
            p.table.holidays.fill({1, 5});
            p.table.vacations[0].EndDay = 5;
        },
        u"festivos y vacaciones"_s);
    add(
        "alarms and dates",
        [](Programme& p) {
            p.blocks[0].Alarms[0].Hour = 5;
            p.table.holidays[0] = {1, 5};
        },
        u"varios cambios"_s);
    add(
        "number of alarms", [](Programme& p) { p.blocks[0].ActiveCountPlusOne = 3; },
        u"varios cambios"_s);
}

void TestEditName::editIsNamedByWhatDiffers()
{
    QFETCH(Edit, edit);
    Programme after;
    edit(after);
    QTEST(EditName::of({}, after).name, "name");
}

void TestEditName::editsOfOneFieldHaveOneKey()
{
    Programme one;
    one.blocks[1].Alarms[4].Hour = 1;
    Programme other = one;
    other.blocks[1].Alarms[4].Minute = 30;
    const QString key = EditName::of({}, one).mergeKey;
    QVERIFY(!key.isEmpty());
    QCOMPARE(EditName::of(one, other).mergeKey, key);
    Programme elsewhere;
    elsewhere.blocks[2].Alarms[4].Hour = 1;
    QVERIFY(EditName::of({}, elsewhere).mergeKey != key);
}

void TestEditName::editOfSeveralFieldsHasNoKey()
{
    Programme after;
    after.blocks[0].Alarms[0] = samples::onWorkingDays(9, 0);
    QCOMPARE(EditName::of({}, after).mergeKey, QString());
}

void TestEditName::nothingHasNoName()
{
    QCOMPARE(EditName::of({}, {}).name, QString());
    QCOMPARE(EditName::of({}, {}).mergeKey, QString());
}

QTEST_GUILESS_MAIN(TestEditName)
#include "TestEditName.moc"
