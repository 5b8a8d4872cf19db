#include "FullDisk.h"
#include "PdfText.h"
#include "ProgrammeSamples.h"
#include "ProgrammeTexts.h"
#include "WallSheet.h"

#include <QBuffer>
#include <QPdfWriter>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using enum DayFlag;

constexpr auto hct7200 = ClockModel::Hct7200;
constexpr auto hct7300 = ClockModel::Hct7300;

/// The sheet as another program reads it.
class TestWallSheet : public QObject {
    Q_OBJECT
private slots:
    void everyTimeOfAFullProgrammeIsOnOnePage_data();
    void everyTimeOfAFullProgrammeIsOnOnePage();
    void emptyProgrammeIsAPage();
    void titleIsOnThePageAndInTheFile();
    void longTitleIsShortened();
    void daysAreBehindTheTimes();
    void markOfEachDayHasItsTime();
    void timesAreInOrder();
    void alarmsWithoutDaysAreLeftOut();
    void durationAndModeAreThoseOfTheHct7300Only();
    void datesAreListedInTheOrderOfTheCalendar();
    void smallPaperHasASecondPageForTheLists();
    void deviceThatTakesNothingIsTold();
    void fileIsReplacedWholeOrNotAtAll();

private:
    QString write(const Programme& programme, ClockModel model, const QString& title = u"T"_s)
    {
        const QString path = m_folder.filePath(u"a.pdf"_s);
        const QString failure = WallSheet(programme, model, title).writePdf(path);
        if (!failure.isEmpty())
            qFatal("%s", qPrintable(failure));
        return path;
    }
    /// The text of the sheet with one blank between words.
    QString textOf(const Programme& programme, ClockModel model, const QString& title = u"T"_s)
    {
        return PdfText::words(write(programme, model, title)).join(u' ');
    }

    const QTemporaryDir m_folder;
};

namespace {

/// 96 alarms at 96 times, and all dates.
Programme fullProgramme(ClockModel model)
{
    Programme programme;
    for (int block = 0; block < Programme::blockCount; ++block)
        for (int row = 0; row < AlarmBlock::alarmCount; ++row) {
            const int minute = 8 * 60 + row * 25 + block * 7;
            Alarm alarm = samples::onWorkingDays(minute / 60, minute % 60);
            if (model == hct7300)
                alarm.flags.fill(true);
            programme.blocks[static_cast<std::size_t>(block)]
                .Alarms[static_cast<std::size_t>(row)] = alarm;
        }
    programme.table.holidays.fill({25, 12});
    programme.table.vacations.fill({23, 12, 7, 1});
    return programme;
}

Programme programmeOf(const std::vector<Alarm>& alarms)
{
    Programme programme;
    std::copy(alarms.begin(), alarms.end(), programme.blocks[0].Alarms.begin());
    return programme;
}

} // namespace

void TestWallSheet::everyTimeOfAFullProgrammeIsOnOnePage_data()
{
    QTest::addColumn<ClockModel>("model");
    QTest::newRow("HCT-7200") << hct7200;
    QTest::newRow("HCT-7300") << hct7300;
}

void TestWallSheet::everyTimeOfAFullProgrammeIsOnOnePage()
{
    QFETCH(ClockModel, model);
    const Programme programme = fullProgramme(model);
    const QString path = write(programme, model);
    QCOMPARE(PdfText::property(path, u"Pages"_s), u"1"_s);
    QVERIFY(PdfText::property(path, u"Page size"_s).endsWith(u"(A4)"));
    const QStringList words = PdfText::words(path);
    for (const AlarmBlock& block : programme.blocks)
        for (const Alarm& alarm : block.Alarms)
            QVERIFY2(words.contains(ProgrammeTexts::time(alarm)),
                     qPrintable(ProgrammeTexts::time(alarm)));
}

void TestWallSheet::emptyProgrammeIsAPage()
{
    const QString text = textOf({}, hct7200);
    QCOMPARE(PdfText::property(m_folder.filePath(u"a.pdf"_s), u"Pages"_s), u"1"_s);
    QCOMPARE(text.count(u"sin avisos"), 3);
    QVERIFY(text.contains(u"Festivos: ninguno"));
    QVERIFY(text.contains(u"Lunes Martes Miércoles Jueves Viernes"));
}

void TestWallSheet::titleIsOnThePageAndInTheFile()
{
    const QString title = u"Colegio «Ñandú»: curso 2026"_s;
    QVERIFY(textOf({}, hct7300, title).startsWith(title + u" HCT-7300"_s));
    QCOMPARE(PdfText::property(m_folder.filePath(u"a.pdf"_s), u"Title"_s), title);
}

void TestWallSheet::longTitleIsShortened()
{
    const QString text = textOf({}, hct7300, u"Palabra "_s.repeated(40).trimmed());
    QVERIFY(text.contains(u"… HCT-7300"));
}

void TestWallSheet::daysAreBehindTheTimes()
{
    const QString text = textOf(programmeOf({samples::alarm(9, 5, {Monday, Wednesday, OnHoliday}),
                                             samples::onWorkingDays(10, 0)}),
                                hct7300);
    QVERIFY(text.contains(u"9:05 lun, mié y fest"));
    QVERIFY(text.contains(u"10:00 lun a vie"));
}

void TestWallSheet::markOfEachDayHasItsTime()
{
    // In the columns of three days, and in the list.
    QCOMPARE(textOf(programmeOf({samples::alarm(9, 5, {Monday, Tuesday, OnVacation})}), hct7300)
                 .count(u"9:05"),
             4);
}

void TestWallSheet::timesAreInOrder()
{
    const QString text = textOf(
        programmeOf({samples::alarm(21, 0, {Monday}), samples::alarm(9, 5, {Friday})}), hct7200);
    QVERIFY(text.indexOf(u"9:05 vie") < text.indexOf(u"21:00 lun"));
    QVERIFY(text.contains(u"9:05 vie"));
}

void TestWallSheet::alarmsWithoutDaysAreLeftOut()
{
    QVERIFY(!textOf(programmeOf({samples::alarm(9, 5, {})}), hct7200).contains(u"9:05"));
}

void TestWallSheet::durationAndModeAreThoseOfTheHct7300Only()
{
    Programme programme;
    programme.blocks[1].Duration = 12;
    programme.blocks[1].Mode = 3;
    QVERIFY(textOf(programme, hct7300).contains(u"Salida 2 duración 12, modo 3"));
    QVERIFY(!textOf(programme, hct7200).contains(u"duración"));
}

void TestWallSheet::datesAreListedInTheOrderOfTheCalendar()
{
    Programme programme;
    programme.table.holidays[3] = {12, 10};
    programme.table.holidays[9] = {1, 5};
    programme.table.vacations[6] = {23, 12, 7, 1};
    programme.table.vacations[7] = {1, 7, 31, 8};
    const QString text = textOf(programme, hct7200);
    QVERIFY(text.contains(u"Festivos: 01/05, 12/10"));
    QVERIFY(text.contains(u"Períodos de vacaciones: 01/07 a 31/08, 23/12 a 07/01"));
}

void TestWallSheet::smallPaperHasASecondPageForTheLists()
{
    const QString path = m_folder.filePath(u"small.pdf"_s);
    {
        QPdfWriter writer(path);
        writer.setPageSize(QPageSize(QPageSize::A5));
        QVERIFY(WallSheet(fullProgramme(hct7200), hct7200, u"T"_s).paint(writer));
    }
    QCOMPARE(PdfText::property(path, u"Pages"_s), u"2"_s);
    QVERIFY(PdfText::words(path, 1).contains(u"Miércoles"_s));
    QVERIFY(!PdfText::words(path, 1).contains(u"Festivos:"_s));
    QVERIFY(PdfText::words(path, 2).contains(u"Festivos:"_s));
    QVERIFY(!PdfText::words(path, 2).contains(u"Miércoles"_s));
}

void TestWallSheet::deviceThatTakesNothingIsTold()
{
    QPdfWriter writer(m_folder.filePath(u"no/such/folder.pdf"_s));
    QTest::ignoreMessage(QtWarningMsg, "QPainter::begin(): Returned false");
    QVERIFY(!WallSheet({}, hct7200, u"T"_s).paint(writer));
}

void TestWallSheet::fileIsReplacedWholeOrNotAtAll()
{
    const QString path = write({}, hct7200);
    QString failure;
    {
        const FullDisk disk;
        failure = WallSheet({}, hct7200, u"Other"_s).writePdf(path);
    }
    QCOMPARE(
        failure,
        u"No se ha podido escribir el archivo \"%1\". Puede que el disco esté lleno."_s.arg(path));
    QCOMPARE(PdfText::property(path, u"Title"_s), u"T"_s);
}

QTEST_MAIN(TestWallSheet)
#include "TestWallSheet.moc"
