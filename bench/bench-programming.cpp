// The programming window of the HCT-7300, the larger one. Times: its file; from opening to the
// first painting; from the clock's answer until the window is ready; from tab to tab.

#include "FakeDialogs.h"
#include "LinkFixture.h"
#include "ProgrammeFile.h"
#include "frmProg.h"

#include <QApplication>
#include <QTabBar>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int weekdayFlags = 0xE0;

/// A status block in which every alarm of the first and the third block is used.
QByteArray statusBlock()
{
    QByteArray block(220, '\0');
    block[3] = 11;
    block[12] = 31;
    for (const int start : {20, 20 + 2 * 66})
        for (int alarm = 0; alarm < AlarmBlock::alarmCount; ++alarm) {
            block[start + 2 * alarm] = static_cast<char>(weekdayFlags | (alarm / 2));
            block[start + 2 * alarm + 1] = static_cast<char>(0xC0 | (alarm % 2 * 30 + 5));
        }
    return block;
}

Programme fullProgramme()
{
    Programme programme;
    for (AlarmBlock& block : programme.blocks)
        for (Alarm& alarm : block.Alarms) {
            alarm.setWorkingDays(true);
            alarm.Hour = 23;
            alarm.Minute = 59;
        }
    programme.table.holidays.fill({25, 12});
    programme.table.vacations.fill({23, 12, 31, 12});
    return programme;
}

QString filePath()
{
    static const QTemporaryDir directory;
    return directory.filePath(u"colegio.hct"_s);
}

void save(benchmark::State& state)
{
    const Programme programme = fullProgramme();
    for (auto _ : state)
        if (!ProgrammeFile::save(filePath(), programme, ClockModel::Hct7300))
            state.SkipWithError("not saved");
}
BENCHMARK(save)->Unit(benchmark::kMicrosecond);

void load(benchmark::State& state)
{
    Programme programme = fullProgramme();
    ProgrammeFile::save(filePath(), programme, ClockModel::Hct7300);
    for (auto _ : state)
        if (!ProgrammeFile::load(filePath(), programme, ClockModel::Hct7300))
            state.SkipWithError("not loaded");
}
BENCHMARK(load)->Unit(benchmark::kMicrosecond);

/// A connected program as far as the window knows it.
struct Connection : LinkFixture {
    FakeDialogs dialogs;
    QWidget owner;

    Connection()
    {
        connect();
        globais.GeneralData = statusBlock();
        owner.show();
    }
    frmProg* openWindow()
    {
        auto* form = new frmProgHCT7300(&owner, crono, link, globais, log, dialogs);
        form->open();
        paint(*form);
        return form;
    }
    void askForHolidays() { tmrCrono.fire(); }
    /// The answer with holidays and periods, all unused.
    void answerHolidays() { answer(QByteArray::fromHex("d9") + QByteArray(65, '\0')); }
    static void paint(QWidget& form)
    {
        QCoreApplication::processEvents();
        form.repaint();
    }
    static void dispose(frmProg* form)
    {
        form->close();
        deleteWhatIsDue();
    }
};

void openToFirstPainting(benchmark::State& state)
{
    Connection connection;
    for (auto _ : state) {
        frmProg* form = connection.openWindow();
        state.PauseTiming();
        Connection::dispose(form);
        state.ResumeTiming();
    }
}
BENCHMARK(openToFirstPainting)->Unit(benchmark::kMillisecond);

void answerToReady(benchmark::State& state)
{
    Connection connection;
    for (auto _ : state) {
        state.PauseTiming();
        frmProg* form = connection.openWindow();
        connection.askForHolidays();
        state.ResumeTiming();
        connection.answerHolidays();
        Connection::paint(*form);
        state.PauseTiming();
        if (!form->findChild<QTabBar*>()->isEnabled())
            state.SkipWithError("not ready");
        Connection::dispose(form);
        state.ResumeTiming();
    }
}
BENCHMARK(answerToReady)->Unit(benchmark::kMillisecond);

/// From a block in which all is used to one in which nothing is, or to the holidays, and back.
void switchTab(benchmark::State& state)
{
    Connection connection;
    frmProg* form = connection.openWindow();
    connection.askForHolidays();
    connection.answerHolidays();
    auto* tabs = form->findChild<QTabBar*>();
    const int other = static_cast<int>(state.range(0));
    for (auto _ : state) {
        tabs->setCurrentIndex(tabs->currentIndex() == 0 ? other : 0);
        Connection::paint(*form);
    }
    Connection::dispose(form);
}
BENCHMARK(switchTab)->Arg(1)->Arg(3)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
