#include "ProgrammeCheck.h"
#include "ProgrammeFile.h"
#include "ProgrammeLines.h"

#include <QTest>

using namespace Qt::StringLiterals;
using ProgrammeCheck::Problem;

constexpr auto hct7200 = ClockModel::Hct7200;
constexpr auto hct7300 = ClockModel::Hct7300;

namespace {

/// "12: text" for an error, "12? text" for a warning.
QStringList problems(const QByteArray& text, ClockModel model = hct7200)
{
    QStringList lines;
    for (const Problem& problem : ProgrammeCheck::problemsOf(text, model))
        lines.append(QString::number(problem.line) +
                     (problem.kind == Problem::Kind::Doubtful ? u"? "_s : u": "_s) + problem.text);
    return lines;
}

/// A file in which every alarm is used, at a time of its own: 23:30 and later minutes.
ProgrammeLines withBells()
{
    ProgrammeLines lines;
    for (int block = 0; block < 3; ++block)
        for (int index = 0; index < 32; ++index) {
            // Each is out of range in the place of the one before or after it.
            lines.alarm(block, index, 0) = index % 2 == 0 ? "22" : "23";
            lines.alarm(block, index, 1) = QByteArray::number(32 + index / 2);
            lines.alarm(block, index, 2) = "31";
        }
    return lines;
}

} // namespace

class TestProgrammeCheck : public QObject {
    Q_OBJECT
private slots:
    void goodFileHasNoProblem();
    void otherLineEndsAndBlanksAreNoProblem();
    void otherHeaderIsAWarning();
    void everyValueOutOfRangeIsTold_data();
    void everyValueOutOfRangeIsTold();
    void whatIsNoWholeNumberIsTold_data();
    void whatIsNoWholeNumberIsTold();
    void maskOutOfRangeNamesTheDaysOfTheMode();
    void everyClashIsToldAtItsLaterAlarm();
    void alarmThatCannotBeReadDoesNotClash();
    void missingLinesAreTold();
    void missingLastLineIsTold();
    void emptyFileLacksEverything();
    void linesTooManyAreTold();
    void lineThatIsMissingInABlockIsToldOnce();
    void linesThatAreMissingInABlockAreToldOnce();
    void lineTooManyInABlockIsToldOnce();
    void linesTooManyInABlockAreToldOnce();
    void lineTooManyBeforeTheFirstHeaderIsTold();
    void missingHeaderIsTold();
    void missingLineInTheLastBlockIsTold();
    void whatFollowsAShiftedBlockIsCheckedAtItsLine();
    void whatMayBeShiftedDoesNotClash();
    void modeTellsTheLikelyModel_data();
    void modeTellsTheLikelyModel();
    void likelyModelIsNotGuessedFromShiftedLines();
    void tooLongFileIsTold();
    void dateThatNoCalendarHasIsTold();
    void twentyNinthOfFebruaryIsADate();
    void halfSetDateIsTold();
    void periodWithoutStartOrEndIsTold();
    void problemsComeInTheOrderOfTheirLines();
    void warningsAloneAreNoErrors();
    void modeThatTheHct7200LacksIsAWarning();
    void onlyWhatIsReadOtherwiseIsMisread();
};

void TestProgrammeCheck::goodFileHasNoProblem()
{
    ProgrammeLines lines;
    lines.block(1, 0) = "255";
    lines.alarm(0, 31, 0) = "23";
    lines.alarm(0, 31, 1) = "59";
    lines.alarm(0, 31, 2) = "31";
    lines.holiday(15, 0) = "31";
    lines.holiday(15, 1) = "12";
    lines.vacation(7, 0) = "23";
    lines.vacation(7, 1) = "12";
    lines.vacation(7, 2) = "7";
    lines.vacation(7, 3) = "1";
    QCOMPARE(problems(lines.text(), hct7200), QStringList());
    QCOMPARE(problems(lines.text(), hct7300), QStringList());
}

void TestProgrammeCheck::otherLineEndsAndBlanksAreNoProblem()
{
    ProgrammeLines lines;
    lines.block(0, 0) = " 5 ";
    lines.alarm(0, 0, 0) = "\t07";
    QByteArray text = lines.text("\n");
    QCOMPARE(problems(text), QStringList());
    text.chop(1);
    QCOMPARE(problems(text), QStringList());
}

void TestProgrammeCheck::otherHeaderIsAWarning()
{
    ProgrammeLines lines;
    lines.all[99] = "--AVISOS 3--";
    lines.all[330] = "Vacaciones\x01";
    QCOMPARE(
        problems(lines.text()),
        (QStringList{
            u"100? Aquí debe estar la cabecera --AVISOS 2-- y dice «--AVISOS 3--»."_s,
            u"331? Aquí debe estar la cabecera --PERIODOS VACACIONALES-- y dice «Vacaciones?»."_s}));
}

void TestProgrammeCheck::everyValueOutOfRangeIsTold_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("problem");
    const auto row = [](const char* name, int index, const char* value, const QString& problem) {
        QTest::newRow(name) << index << QByteArray(value) << problem;
    };
    row("duration", 1, "256", u"2: Duración de la salida 1: 256 no está entre 0 y 255."_s);
    row("mode", 101, "-1", u"102: Modo de la salida 2: -1 no está entre 0 y 255."_s);
    row("hour", 3, "24", u"4: Hora del aviso 1 de la salida 1: 24 no está entre 0 y 23."_s);
    row("minute", 4, "60", u"5: Minuto del aviso 1 de la salida 1: 60 no está entre 0 y 59."_s);
    row("last minute", 295, "99",
        u"296: Minuto del aviso 32 de la salida 3: 99 no está entre 0 y 59."_s);
    row("holiday", 298, "32", u"299: Día del festivo 1: 32 no está entre 0 y 31."_s);
    row("month", 299, "13", u"300: Mes del festivo 1: 13 no está entre 0 y 12."_s);
    row("start", 331, "32",
        u"332: Día de inicio del período de vacaciones 1: 32 no está entre 0 y 31."_s);
    row("end", 362, "13",
        u"363: Mes de fin del período de vacaciones 8: 13 no está entre 0 y 12."_s);
    row("beyond every integer", 3, "99999999999999999999999999999",
        u"4: Hora del aviso 1 de la salida 1: 999999999999999999999999… no está entre 0 y 23."_s);
}

void TestProgrammeCheck::everyValueOutOfRangeIsTold()
{
    QFETCH(int, index);
    QFETCH(QByteArray, value);
    QFETCH(QString, problem);
    ProgrammeLines lines;
    lines.all[index] = value;
    QCOMPARE(problems(lines.text()), QStringList{problem});
}

void TestProgrammeCheck::whatIsNoWholeNumberIsTold_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("shown");
    QTest::newRow("empty") << QByteArray() << u""_s;
    QTest::newRow("a word") << QByteArray("lunes") << u"lunes"_s;
    QTest::newRow("a number and a word") << QByteArray("8 h") << u"8 h"_s;
    QTest::newRow("a fraction") << QByteArray("7.5") << u"7.5"_s;
    QTest::newRow("a sign") << QByteArray("-") << u"-"_s;
    QTest::newRow("a header") << QByteArray("--FESTIVOS--") << u"--FESTIVOS--"_s;
    QTest::newRow("bytes") << QByteArray("\x1b[2J\0", 5) << u"?[2J?"_s;
}

void TestProgrammeCheck::whatIsNoWholeNumberIsTold()
{
    QFETCH(QByteArray, value);
    QFETCH(QString, shown);
    ProgrammeLines lines;
    lines.alarm(2, 4, 0) = value;
    QCOMPARE(
        problems(lines.text()),
        QStringList{
            u"214: Hora del aviso 5 de la salida 3: «%1» no es un número entero."_s.arg(shown)});
}

void TestProgrammeCheck::maskOutOfRangeNamesTheDaysOfTheMode()
{
    ProgrammeLines lines;
    lines.block(1, 1) = "2";
    lines.alarm(0, 0, 2) = "32";
    lines.alarm(1, 0, 2) = "32";
    QCOMPARE(
        problems(lines.text(), hct7200).constFirst(),
        u"6: Días del aviso 1 de la salida 1: 32 no está entre 0 y 31 (de lunes a viernes)."_s);
    QCOMPARE(
        problems(lines.text(), hct7300),
        (QStringList{u"6: Días del aviso 1 de la salida 1: 32 no está entre 0 y 31 (en el "
                     "modo 0 solo hay días de lunes a viernes)."_s,
                     u"105: Días del aviso 1 de la salida 2: 32 no está entre 0 y 31 (en el "
                     "modo 2: sábado, domingo, festivos, vacaciones y de lunes a viernes)."_s}));
}

void TestProgrammeCheck::everyClashIsToldAtItsLaterAlarm()
{
    ProgrammeLines lines;
    for (const int index : {0, 2, 31}) {
        lines.alarm(0, index, 0) = "8";
        lines.alarm(0, index, 1) = "5";
        lines.alarm(0, index, 2) = "1";
    }
    lines.alarm(2, 0, 2) = lines.alarm(2, 1, 2) = "31";
    QCOMPARE(problems(lines.text()),
             (QStringList{u"10: Salida 1: el aviso 3 es a la misma hora que el 1, las 8:05."_s,
                          u"97: Salida 1: el aviso 32 es a la misma hora que el 1, las 8:05."_s,
                          u"205: Salida 3: el aviso 2 es a la misma hora que el 1, las 0:00."_s}));
}

void TestProgrammeCheck::alarmThatCannotBeReadDoesNotClash()
{
    ProgrammeLines lines;
    lines.alarm(0, 0, 2) = lines.alarm(0, 1, 2) = "1";
    lines.alarm(0, 1, 0) = "24";
    QCOMPARE(problems(lines.text()),
             QStringList{u"7: Hora del aviso 2 de la salida 1: 24 no está entre 0 y 23."_s});
}

void TestProgrammeCheck::missingLinesAreTold()
{
    ProgrammeLines lines;
    lines.all = lines.all.first(299);
    QCOMPARE(problems(lines.text()),
             QStringList{u"300: El archivo termina antes: faltan las líneas 300 a 363."_s});
}

void TestProgrammeCheck::missingLastLineIsTold()
{
    ProgrammeLines lines;
    lines.all.removeLast();
    QCOMPARE(problems(lines.text()), QStringList{u"363: Falta la última línea, la 363."_s});
}

void TestProgrammeCheck::emptyFileLacksEverything()
{
    QCOMPARE(problems(QByteArray()),
             QStringList{u"1: El archivo termina antes: faltan las líneas 1 a 363."_s});
}

void TestProgrammeCheck::linesTooManyAreTold()
{
    const QString problem =
        u"364: Sobra lo que sigue: un archivo de configuración tiene 363 líneas."_s;
    QCOMPARE(problems(ProgrammeLines().text() + "0\r\n1\r\n"), QStringList{problem});
    QCOMPARE(problems(ProgrammeLines().text() + "\n"), QStringList{problem});
}

void TestProgrammeCheck::lineThatIsMissingInABlockIsToldOnce()
{
    ProgrammeLines lines = withBells();
    lines.all.removeAt(42);
    QCOMPARE(problems(lines.text()),
             QStringList{u"43: En --AVISOS 1-- falta una línea, entre la 42 y la 43."_s});
    // The lines around this one fit others, too.
    lines = withBells();
    lines.all.removeAt(40);
    QCOMPARE(problems(lines.text()),
             QStringList{u"40: En --AVISOS 1-- falta una línea, entre la 39 y la 43."_s});
}

void TestProgrammeCheck::linesThatAreMissingInABlockAreToldOnce()
{
    ProgrammeLines lines = withBells();
    lines.all.remove(41, 2);
    QCOMPARE(problems(lines.text()),
             QStringList{u"42: En --AVISOS 1-- faltan 2 líneas, entre la 41 y la 42."_s});
    lines = withBells();
    lines.all.remove(0, 3);
    QCOMPARE(problems(lines.text()),
             QStringList{u"1: En --AVISOS 1-- faltan 3 líneas, antes de la 1."_s});
}

void TestProgrammeCheck::lineTooManyInABlockIsToldOnce()
{
    ProgrammeLines lines = withBells();
    lines.all.insert(140, "");
    QCOMPARE(problems(lines.text()), QStringList{u"141: En --AVISOS 2-- sobra esta línea."_s});
    lines = withBells();
    lines.all.insert(40, lines.all.at(40));
    QCOMPARE(problems(lines.text()),
             QStringList{u"41: En --AVISOS 1-- sobra una línea, de la 41 a la 42."_s});
}

void TestProgrammeCheck::linesTooManyInABlockAreToldOnce()
{
    ProgrammeLines lines = withBells();
    lines.all.insert(302, "lunes");
    lines.all.insert(302, "martes");
    QCOMPARE(problems(lines.text()),
             QStringList{u"303: En --FESTIVOS-- sobran 2 líneas, de la 303 a la 304."_s});
}

void TestProgrammeCheck::lineTooManyBeforeTheFirstHeaderIsTold()
{
    QCOMPARE(problems("\r\n" + ProgrammeLines().text()),
             QStringList{u"1: En --AVISOS 1-- sobra esta línea."_s});
}

void TestProgrammeCheck::missingHeaderIsTold()
{
    for (const auto& [at, header] :
         {std::pair(0, u"--AVISOS 1--"_s), std::pair(99, u"--AVISOS 2--"_s),
          std::pair(330, u"--PERIODOS VACACIONALES--"_s)}) {
        ProgrammeLines lines = withBells();
        lines.all.removeAt(at);
        QCOMPARE(problems(lines.text()),
                 QStringList{u"%1: Aquí falta la cabecera %2."_s.arg(at + 1).arg(header)});
    }
}

void TestProgrammeCheck::missingLineInTheLastBlockIsTold()
{
    ProgrammeLines lines;
    for (int index = 0; index < 8; ++index)
        lines.vacation(index, 0) = lines.vacation(index, 2) = "20";
    for (int index = 0; index < 8; ++index)
        lines.vacation(index, 1) = lines.vacation(index, 3) = "8";
    lines.all.removeAt(335);
    QCOMPARE(problems(lines.text()),
             QStringList{
                 u"335: En --PERIODOS VACACIONALES-- falta una línea, entre la 334 y la 337."_s});
}

void TestProgrammeCheck::whatFollowsAShiftedBlockIsCheckedAtItsLine()
{
    ProgrammeLines lines = withBells();
    lines.alarm(0, 31, 1) = "77";
    lines.alarm(1, 0, 0) = "24";
    lines.holiday(0, 0) = "32";
    lines.all.removeAt(42);
    QCOMPARE(problems(lines.text()),
             (QStringList{u"43: En --AVISOS 1-- falta una línea, entre la 42 y la 43."_s,
                          u"97: Minuto del aviso 32 de la salida 1: 77 no está entre 0 y 59."_s,
                          u"102: Hora del aviso 1 de la salida 2: 24 no está entre 0 y 23."_s,
                          u"298: Día del festivo 1: 32 no está entre 0 y 31."_s}));
}

void TestProgrammeCheck::whatMayBeShiftedDoesNotClash()
{
    ProgrammeLines lines;
    for (int index = 0; index < 32; ++index)
        for (int field = 0; field < 3; ++field)
            lines.alarm(0, index, field) = "8";
    lines.all.removeAt(40);
    QCOMPARE(problems(lines.text()),
             QStringList{u"2: En --AVISOS 1-- falta una línea, entre la 1 y la 99."_s});
}

void TestProgrammeCheck::modeTellsTheLikelyModel_data()
{
    QTest::addColumn<QByteArray>("mode");
    QTest::addColumn<ClockModel>("model");
    QTest::newRow("0") << QByteArray("0") << hct7200;
    QTest::newRow("1, which both have") << QByteArray("1") << hct7200;
    QTest::newRow("2") << QByteArray("2") << hct7300;
    QTest::newRow("255") << QByteArray("255") << hct7300;
    QTest::newRow("256, which no clock has") << QByteArray("256") << hct7200;
}

void TestProgrammeCheck::modeTellsTheLikelyModel()
{
    QFETCH(QByteArray, mode);
    QFETCH(ClockModel, model);
    ProgrammeLines lines = withBells();
    lines.block(1, 1) = mode;
    QVERIFY(ProgrammeFile::likelyModel(lines.text()) == model);
}

void TestProgrammeCheck::likelyModelIsNotGuessedFromShiftedLines()
{
    ProgrammeLines lines = withBells();
    lines.all.removeAt(40);
    QVERIFY(ProgrammeFile::likelyModel(lines.text()) == hct7200);
    lines = withBells();
    lines.block(2, 1) = "2";
    lines.all.removeAt(40);
    QVERIFY(ProgrammeFile::likelyModel(lines.text()) == hct7300);
}

void TestProgrammeCheck::tooLongFileIsTold()
{
    const QByteArray text = ProgrammeLines().text();
    const QByteArray atTheBound = text + QByteArray(1024 * 1024 - text.size(), ' ');
    QCOMPARE(problems(atTheBound).size(), 1);
    QCOMPARE(problems(atTheBound + ' ').constFirst(),
             u"0: El archivo es demasiado largo: solo se lee su primer mebibyte."_s);
}

void TestProgrammeCheck::dateThatNoCalendarHasIsTold()
{
    ProgrammeLines lines;
    lines.holiday(2, 0) = "31";
    lines.holiday(2, 1) = "2";
    lines.vacation(0, 0) = lines.vacation(0, 2) = "1";
    lines.vacation(0, 1) = "9";
    lines.vacation(0, 3) = "11";
    lines.vacation(0, 2) = "31";
    QCOMPARE(
        problems(lines.text()),
        (QStringList{u"303: Fecha del festivo 3: el 31/02 no existe."_s,
                     u"334: Fecha de fin del período de vacaciones 1: el 31/11 no existe."_s}));
}

void TestProgrammeCheck::twentyNinthOfFebruaryIsADate()
{
    ProgrammeLines lines;
    lines.holiday(0, 0) = "29";
    lines.holiday(0, 1) = "2";
    QCOMPARE(problems(lines.text()), QStringList());
}

void TestProgrammeCheck::halfSetDateIsTold()
{
    ProgrammeLines lines;
    lines.holiday(0, 0) = "6";
    lines.holiday(1, 1) = "12";
    QCOMPARE(problems(lines.text()),
             (QStringList{u"300: Fecha del festivo 1: tiene día y no tiene mes."_s,
                          u"301: Fecha del festivo 2: tiene mes y no tiene día."_s}));
}

void TestProgrammeCheck::periodWithoutStartOrEndIsTold()
{
    ProgrammeLines lines;
    lines.vacation(0, 0) = lines.vacation(0, 1) = "6";
    lines.vacation(1, 2) = lines.vacation(1, 3) = "6";
    QCOMPARE(problems(lines.text()),
             (QStringList{u"334: El período de vacaciones 1 tiene inicio y no tiene fin."_s,
                          u"336: El período de vacaciones 2 tiene fin y no tiene inicio."_s}));
}

void TestProgrammeCheck::problemsComeInTheOrderOfTheirLines()
{
    ProgrammeLines lines;
    lines.alarm(0, 0, 2) = lines.alarm(0, 1, 2) = "1";
    lines.alarm(0, 30, 0) = "x";
    lines.all[0] = "AVISOS";
    QStringList numbers;
    for (const Problem& problem : ProgrammeCheck::problemsOf(lines.text(), hct7200))
        numbers.append(QString::number(problem.line));
    QCOMPARE(numbers, (QStringList{u"1"_s, u"7"_s, u"94"_s}));
}

void TestProgrammeCheck::warningsAloneAreNoErrors()
{
    ProgrammeLines lines;
    lines.all[0] = "AVISOS";
    QVERIFY(!ProgrammeCheck::hasErrors(ProgrammeCheck::problemsOf(lines.text(), hct7200)));
    lines.all[1] = "AVISOS";
    QVERIFY(ProgrammeCheck::hasErrors(ProgrammeCheck::problemsOf(lines.text(), hct7200)));
}

void TestProgrammeCheck::modeThatTheHct7200LacksIsAWarning()
{
    ProgrammeLines lines;
    lines.block(2, 1) = "2";
    QCOMPARE(problems(lines.text(), hct7200),
             QStringList{u"201? Modo de la salida 3: el 2 solo lo tiene el HCT-7300."_s});
    QCOMPARE(problems(lines.text(), hct7300), QStringList());
}

void TestProgrammeCheck::onlyWhatIsReadOtherwiseIsMisread()
{
    ProgrammeLines lines;
    lines.all[0] = "AVISOS";
    lines.alarm(0, 0, 2) = lines.alarm(0, 1, 2) = "1";
    lines.holiday(0, 0) = "6";
    QVERIFY(!ProgrammeCheck::isMisread(ProgrammeCheck::problemsOf(lines.text(), hct7200)));
    lines.holiday(0, 0) = "6.";
    QVERIFY(ProgrammeCheck::isMisread(ProgrammeCheck::problemsOf(lines.text(), hct7200)));
}

QTEST_GUILESS_MAIN(TestProgrammeCheck)
#include "TestProgrammeCheck.moc"
