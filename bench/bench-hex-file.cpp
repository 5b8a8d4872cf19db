// The time of the firmware loader for the two largest possible images, compared with the two usual
// tools for the format (including their start and their output to a file), and the time of the
// firmware window from the click to the end.

#include "CommSettings.h"
#include "FakePause.h"
#include "FakeSerialPort.h"
#include "FakeTickTimer.h"
#include "FakeTimer.h"
#include "HexFile.h"
#include "HexImages.h"
#include "MessageLink.h"
#include "OneFile.h"
#include "RecordingLog.h"
#include "frmCrono.h"
#include "frmProgramPROM.h"

#include <QApplication>
#include <QFile>
#include <QMdiArea>
#include <QPushButton>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <spawn.h>
#include <sys/wait.h>

using namespace Qt::StringLiterals;

namespace {

struct Image {
    int records;
    int dataBytes;
};
constexpr Image images[] = {{22220, 16}, {30705, 255}};

QString folder()
{
    static const QTemporaryDir directory;
    return directory.path();
}

/// The image's file, written at the first call.
QString file(const Image& image)
{
    const QString path = u"%1/%2x%3.hex"_s.arg(folder()).arg(image.records).arg(image.dataBytes);
    if (QFile file(path); !file.exists() && file.open(QIODevice::WriteOnly))
        file.write(hexImage(image.records, image.dataBytes));
    return path;
}

void setRate(benchmark::State& state, const Image& image)
{
    state.SetBytesProcessed(state.iterations() * QFile(file(image)).size());
    state.SetLabel(std::to_string(image.records) + " records of " +
                   std::to_string(image.dataBytes));
}

void loadHexFile(benchmark::State& state)
{
    const Image& image = images[state.range(0)];
    const QString path = file(image);
    HexFile hexFile;
    for (auto _ : state)
        if (hexFile.LoadHexFile(path) != HexFile::Outcome::Loaded)
            state.SkipWithError("not loaded");
    setRate(state, image);
}
BENCHMARK(loadHexFile)->Arg(0)->Arg(1)->UseRealTime()->Unit(benchmark::kMillisecond);

bool run(const QByteArrayList& command)
{
    std::vector<char*> arguments;
    for (const QByteArray& argument : command)
        arguments.push_back(const_cast<char*>(argument.constData()));
    arguments.push_back(nullptr);
    pid_t child = 0;
    int status = 1;
    return posix_spawnp(&child, arguments[0], nullptr, nullptr, arguments.data(), environ) == 0 &&
           waitpid(child, &status, 0) == child && status == 0;
}

void tool(benchmark::State& state, const QByteArray& name)
{
    const Image& image = images[state.range(0)];
    const QByteArray path = QFile::encodeName(file(image));
    const QByteArray output = QFile::encodeName(folder() + u"/out.bin"_s);
    const QByteArrayList command =
        name == "objcopy" ? QByteArrayList{"objcopy", "-I", "ihex", "-O", "binary", path, output}
                          : QByteArrayList{"srec_cat", path, "-Intel", "-o", output, "-Binary"};
    for (auto _ : state)
        if (!run(command))
            state.SkipWithError("not installed");
    setRate(state, image);
}
BENCHMARK_CAPTURE(tool, objcopy, "objcopy")
    ->Arg(0)
    ->Arg(1)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(tool, srec_cat, "srec_cat")
    ->Arg(0)
    ->Arg(1)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

void loadThroughTheWindow(benchmark::State& state)
{
    const Image& image = images[state.range(0)];
    // Needed by the window's constructor, but not used here.
    FakeClockOfDay clock;
    FakeSerialPort serie(clock);
    FakeSerialPort modem(clock);
    FakeTimer tmrTemporizador;
    FakeTickTimer tmrCrono;
    FakePause pause(clock);
    const CommSettings settings;
    MessageLink link(serie, modem, tmrTemporizador, pause, settings);
    const modGlobais globais;
    frmCrono crono(tmrCrono, globais, [] { return false; });
    RecordingLog log;
    OneFile dialogs(file(image));
    QMdiArea area;
    auto* form = new frmProgramPROM(area, crono, link, log, dialogs);
    area.resize(900, 700);
    area.show();
    form->showForm();
    auto* cmdAbrir = form->findChild<QPushButton*>(u"cmdAbrir"_s);
    QCoreApplication::processEvents();

    for (auto _ : state) {
        cmdAbrir->click();
        QCoreApplication::processEvents();
    }
    if (!form->findChild<QPushButton*>(u"cmdEnviar"_s)->isEnabled())
        state.SkipWithError("not loaded");
    setRate(state, image);
}
BENCHMARK(loadThroughTheWindow)->Arg(0)->Arg(1)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
