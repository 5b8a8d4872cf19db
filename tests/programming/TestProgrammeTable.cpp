#include "ProgrammeFile.h"
#include "ProgrammeJson.h"
#include "ProgrammeLines.h"
#include "ProgrammeTable.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

using namespace Qt::StringLiterals;
using enum DayFlag;

constexpr auto hct7200 = ClockModel::Hct7200;
constexpr auto hct7300 = ClockModel::Hct7300;

namespace {

QString someTable(ClockModel model)
{
    Programme programme;
    programme.blocks[0].Duration = 8;
    programme.blocks[0].Alarms[0] = samples::alarm(17, 30, {Monday, Wednesday});
    programme.blocks[0].Alarms[7] = samples::onWorkingDays(9, 5);
    programme.blocks[1].Duration = 5;
    programme.blocks[1].Mode = 1;
    programme.blocks[2].Mode = 2;
    programme.blocks[2].Alarms[31] = samples::alarm(0, 0, {Saturday, OnVacation});
    for (int day = 1; day <= 9; ++day)
        programme.table.holidays[static_cast<std::size_t>(day)] = {static_cast<quint8>(day), 1};
    programme.table.vacations[3] = {23, 12, 7, 1};
    return ProgrammeTable::text(programme, model);
}

QByteArray json(const QJsonArray& array)
{
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

} // namespace

/// What people and scripts are shown of a programme.
class TestProgrammeTable : public QObject {
    Q_OBJECT
private slots:
    void hct7300HasAColumnForEachDay();
    void hct7200HasFiveColumns();
    void emptyProgrammeSaysSo();
    void programmeIsJson();
    void differencesAreJson();
    void problemsAreJson();
    void fileOfTheHct7200HasItsDurationsAndModes();
    void maskIsReadByTheModelOfTheFile();
    void modesAboveOneTellTheModel();
};

void TestProgrammeTable::hct7300HasAColumnForEachDay()
{
    QCOMPARE(someTable(hct7300),
             u"Salida 1: duración 8, modo 0 (días sueltos de lunes a viernes)\n"
             "   9:05  L M X J V · · · ··\n"
             "  17:30  L · X · · · · · ··\n"
             "\n"
             "Salida 2: duración 5, modo 1 (días sueltos de lunes a viernes)\n"
             "  sin avisos\n"
             "\n"
             "Salida 3: duración 0, modo 2 (sábados, domingos, festivos y vacaciones; de lunes a "
             "viernes, todos los días o ninguno)\n"
             "   0:00  · · · · · S · · Va\n"
             "\n"
             "Festivos\n"
             "  01/01  02/01  03/01  04/01  05/01  06/01  07/01  08/01\n"
             "  09/01\n"
             "\n"
             "Períodos de vacaciones\n"
             "  23/12 a 07/01\n"
             "\n"
             "L lunes, M martes, X miércoles, J jueves, V viernes, S sábado, D domingo, "
             "F festivos, Va vacaciones\n"_s);
}

void TestProgrammeTable::hct7200HasFiveColumns()
{
    const QStringList lines = someTable(hct7200).split(u'\n');
    QCOMPARE(lines[0], u"Salida 1: duración 8, modo 0"_s);
    QCOMPARE(lines[1], u"   9:05  L M X J V"_s);
    QCOMPARE(lines[2], u"  17:30  L · X · ·"_s);
    QCOMPARE(lines[4], u"Salida 2: duración 5, modo 1 (intermitente)"_s);
    QVERIFY(lines.contains(u"L lunes, M martes, X miércoles, J jueves, V viernes"_s));
}

void TestProgrammeTable::emptyProgrammeSaysSo()
{
    const QString text = ProgrammeTable::text(Programme(), hct7200);
    QCOMPARE(text.count(u"  sin avisos\n"), 3);
    QCOMPARE(text.count(u"  ninguno\n"), 2);
}

void TestProgrammeTable::programmeIsJson()
{
    Programme programme;
    programme.blocks[0].Duration = 8;
    programme.blocks[0].Alarms[1] = samples::alarm(9, 5, {Monday, Friday, OnHoliday});
    programme.blocks[2].Mode = 3;
    programme.table.holidays[0] = {1, 5};
    programme.table.vacations[0] = {23, 12, 7, 1};
    const auto text = [&programme](ClockModel model) {
        return QJsonDocument(ProgrammeJson::object(programme, model))
            .toJson(QJsonDocument::Compact);
    };
    QCOMPARE(text(hct7300),
             R"({"holidays":[{"day":1,"month":5}],"model":"HCT-7300","outputs":[)"
             R"({"alarms":[{"days":["monday","friday","holidays"],"time":"09:05"}],)"
             R"("duration":8,"mode":0,"output":1},)"
             R"({"alarms":[],"duration":0,"mode":0,"output":2},)"
             R"({"alarms":[],"duration":0,"mode":3,"output":3}],)"
             R"("vacations":[{"from":{"day":23,"month":12},"to":{"day":7,"month":1}}]})");
    QVERIFY(text(hct7200).contains(R"("days":["monday","friday"])"));
}

void TestProgrammeTable::differencesAreJson()
{
    Programme before;
    Programme after;
    before.blocks[0].Alarms[2] = samples::alarm(9, 5, {Monday});
    after.blocks[0].Alarms[0] = samples::alarm(9, 5, {Friday});
    after.blocks[1].Duration = 7;
    after.table.holidays[0] = {1, 5};
    before.table.vacations[7] = {1, 7, 31, 8};
    QCOMPARE(json(ProgrammeJson::array(ProgrammeDifference::between(before, after, hct7300))),
             R"([{"kind":"changed","output":1,"rowAfter":1,"rowBefore":3,)"
             R"("text":"Salida 1: cambiado 9:05, antes lunes, ahora viernes","what":"alarm"},)"
             R"({"kind":"changed","output":2,)"
             R"("text":"Salida 2: cambiada la duración, antes 0, ahora 7","what":"duration"},)"
             R"({"kind":"added","rowAfter":1,"text":"Festivos: añadido 01/05","what":"holiday"},)"
             R"({"kind":"removed","rowBefore":8,"text":"Vacaciones: quitado 01/07 a 31/08",)"
             R"("what":"vacation"}])");
}

void TestProgrammeTable::problemsAreJson()
{
    ProgrammeLines lines;
    lines.all[0] = "AVISOS";
    lines.alarm(0, 0, 0) = "24";
    QCOMPARE(json(ProgrammeJson::array(ProgrammeCheck::problemsOf(lines.text(), hct7200))),
             R"([{"line":1,"severity":"warning",)"
             R"("text":"Aquí debe estar la cabecera --AVISOS 1-- y dice «AVISOS»."},)"
             R"({"line":4,"severity":"error",)"
             R"("text":"Hora del aviso 1 de la salida 1: 24 no está entre 0 y 23."}])");
}

void TestProgrammeTable::fileOfTheHct7200HasItsDurationsAndModes()
{
    ProgrammeLines lines;
    lines.block(1, 0) = "12";
    lines.block(1, 1) = "1";
    const Programme programme = ProgrammeFile::programmeIn(lines.text(), hct7200);
    QCOMPARE(programme.blocks[1].Duration, quint8{12});
    QCOMPARE(programme.blocks[1].Mode, quint8{1});
}

void TestProgrammeTable::maskIsReadByTheModelOfTheFile()
{
    ProgrammeLines lines;
    lines.block(0, 1) = "2";
    lines.alarm(0, 0, 2) = "3";
    const auto alarm = [&lines](ClockModel model) {
        return ProgrammeFile::programmeIn(lines.text(), model).blocks[0].Alarms[0];
    };
    QVERIFY(alarm(hct7200) == samples::alarm(0, 0, {Monday, Tuesday}));
    QVERIFY(alarm(hct7300) == samples::alarm(0, 0, {Saturday, Sunday}));
}

void TestProgrammeTable::modesAboveOneTellTheModel()
{
    ProgrammeLines lines;
    lines.block(2, 1) = "1";
    QVERIFY(ProgrammeFile::likelyModel(lines.text()) == hct7200);
    lines.block(2, 1) = "2";
    QVERIFY(ProgrammeFile::likelyModel(lines.text()) == hct7300);
}

QTEST_GUILESS_MAIN(TestProgrammeTable)
#include "TestProgrammeTable.moc"
