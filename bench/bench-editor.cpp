// The logic of hct-editor with a full programme: opening and saving its file, checking it, placing
// and drawing the week of 96 alarms. Each figure is the median of several times.

#include "Figures.h"
#include "ProgrammeDocument.h"
#include "ProgrammeFile.h"
#include "ProgrammeMarks.h"
#include "WeekDrawing.h"
#include "WeekPicture.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr auto model = ClockModel::Hct7300;
constexpr int times = 101;
constexpr double fileLimit = 5;
constexpr double pictureLimit = 4;

/// 32 alarms of each output on every day; `minutes` apart.
Programme fullProgramme(int minutes)
{
    Programme programme;
    for (std::size_t block = 0; block < programme.blocks.size(); ++block) {
        programme.blocks[block].Mode = 2;
        for (std::size_t row = 0; row < AlarmBlock::alarmCount; ++row) {
            const int minute = 480 + static_cast<int>(row) * minutes;
            Alarm& alarm = programme.blocks[block].Alarms[row];
            alarm.Hour = static_cast<quint8>(minute / 60);
            alarm.Minute = static_cast<quint8>(minute % 60);
            alarm.flags.fill(true);
        }
    }
    programme.table.holidays.fill({25, 12});
    programme.table.vacations.fill({23, 12, 7, 1});
    return programme;
}

template<typename Function>
double medianMilliseconds(Function function)
{
    std::vector<double> all;
    for (int run = 0; run < times; ++run) {
        const auto start = std::chrono::steady_clock::now();
        function();
        all.push_back(
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
                .count());
    }
    std::nth_element(all.begin(), all.begin() + times / 2, all.end());
    return all[times / 2];
}

void measureFiles()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"colegio.hct"_s);
    ProgrammeDocument document(model);
    document.edit(fullProgramme(25));
    figures::print("Saving a file of 363 lines", medianMilliseconds([&] { document.saveAs(path); }),
                   fileLimit, "ms");
    figures::print("Opening a file of 363 lines",
                   medianMilliseconds([&] { document.open(path, model); }), fileLimit, "ms");
    // What the disk does is in the figures above.
    const QByteArray text = ProgrammeFile::text(fullProgramme(25), model);
    figures::print("Reading the text of it",
                   medianMilliseconds([&] { ProgrammeFile::programmeIn(text, model); }), fileLimit,
                   "ms");
}

void measureEdits()
{
    ProgrammeDocument document(model);
    Programme programme = fullProgramme(25);
    figures::print("An edit as a step of its own", medianMilliseconds([&] {
                       ++programme.blocks[0].Duration;
                       document.finishTyping();
                       document.edit(programme);
                   }),
                   pictureLimit, "ms");
    figures::print("Checking 96 alarms",
                   medianMilliseconds([&] { ProgrammeMarks(fullProgramme(25), model); }),
                   pictureLimit, "ms");
    figures::print("Checking 96 alarms that all clash",
                   medianMilliseconds([&] { ProgrammeMarks(fullProgramme(0), model); }),
                   pictureLimit, "ms");
}

void measureWeek()
{
    QImage image(1200, 800, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    // As the window draws it.
    painter.setRenderHint(QPainter::Antialiasing);
    const QFontMetricsF metrics(painter.font(), &image);
    const QRectF area = QRectF(image.rect()).marginsRemoved(WeekDrawing::margins(metrics));
    const Programme programme = fullProgramme(25);
    const auto picture = [&] {
        return WeekPicture(programme, model, area, WeekDrawing::markHeight(metrics));
    };
    figures::print("Placing 96 alarms on nine days", medianMilliseconds(picture), pictureLimit,
                   "ms");
    const WeekPicture placed = picture();
    const WeekDrawing::Look look{Qt::black, Qt::lightGray, Qt::white, false};
    figures::print("Drawing 96 alarms on nine days",
                   medianMilliseconds([&] { WeekDrawing::draw(painter, placed, look); }),
                   pictureLimit, "ms");
    const Programme working = [&] {
        Programme changed = programme;
        for (AlarmBlock& block : changed.blocks)
            for (Alarm& alarm : block.Alarms) {
                alarm.flags = {};
                alarm.setWorkingDays(true);
            }
        return changed;
    }();
    const WeekPicture week(working, ClockModel::Hct7200, area, WeekDrawing::markHeight(metrics));
    figures::print("Drawing 96 alarms on five days",
                   medianMilliseconds([&] { WeekDrawing::draw(painter, week, look); }),
                   pictureLimit, "ms");
}

} // namespace

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    measureFiles();
    measureEdits();
    measureWeek();
    return 0;
}
