#include "CommandReader.h"
#include "Commands.h"
#include "DeviceLine.h"
#include "EndSignals.h"
#include "Options.h"
#include "PtyLine.h"

#include <QCoreApplication>

#include <csignal>
#include <cstdio>
#include <memory>
#include <sys/prctl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace simulator;

namespace {

enum ExitCode { Ended = 0, LineFailed = 1, WrongUsage = 2, LineLost = 3 };

/// Writes a line to standard output at once. The program ends when nobody can read it.
void print(const QString& line)
{
    const QByteArray bytes = line.toUtf8() + '\n';
    if (std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout) != size_t(bytes.size()) ||
        std::fflush(stdout) != 0)
        QCoreApplication::quit();
}

int fail(ExitCode code, const QString& reason)
{
    std::fprintf(stderr, "hct-simulator: %s\n", qUtf8Printable(reason));
    return code;
}

void obey(Simulator& clock, const QString& line)
{
    if (line == "quit"_L1)
        return QCoreApplication::quit();
    const CommandResult result = runCommand(clock, line);
    for (const QString& text : result.lines)
        print(text);
    print(result.error.isEmpty() ? u"ok"_s : u"error: "_s + result.error);
}

/// Writes the files that --save and --firmware-save ask for.
int finish(Simulator& clock, const Options& options)
{
    QStringList commands;
    if (!options.saveTo.isEmpty())
        commands += u"save "_s + options.saveTo;
    if (!options.firmwareTo.isEmpty())
        commands += u"firmware hex "_s + options.firmwareTo;
    for (const QString& command : commands) {
        const CommandResult result = runCommand(clock, command);
        if (!result.error.isEmpty())
            return fail(WrongUsage, result.error);
    }
    return Ended;
}

std::unique_ptr<Line> makeLine(const Options& options)
{
    if (options.device.isEmpty())
        return std::make_unique<PtyLine>(options.link);
    return std::make_unique<DeviceLine>(options.device, options.speed);
}

int serve(const Options& options)
{
    const EndSignals endSignals;
    const std::unique_ptr<Line> line = makeLine(options);
    Simulator clock(*line, options.model, options.identity);
    for (const QString& command : options.commands) {
        const CommandResult result = runCommand(clock, command);
        if (!result.error.isEmpty())
            return fail(WrongUsage, command + u": "_s + result.error);
    }
    const QString reason = line->open();
    if (!reason.isEmpty())
        return fail(LineFailed, reason);
    print(line->devicePath());
    CommandReader reader(STDIN_FILENO);
    QObject::connect(&clock, &Simulator::reported, &clock, &print);
    QObject::connect(line.get(), &Line::lost, &clock, [] { QCoreApplication::exit(LineLost); });
    QObject::connect(&endSignals, &EndSignals::ended, &clock, &QCoreApplication::quit);
    QObject::connect(&reader, &CommandReader::lineRead, &clock,
                     [&](const QString& text) { obey(clock, text); });
    if (!options.stays)
        QObject::connect(&reader, &CommandReader::ended, &clock, &QCoreApplication::quit);
    const int code = QCoreApplication::exec();
    if (code != Ended)
        return fail(LineLost, u"the line is lost"_s);
    return finish(clock, options);
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    std::signal(SIGPIPE, SIG_IGN);
    QString reason;
    const std::optional<Options> options =
        parsedOptions(QCoreApplication::arguments().mid(1), reason);
    if (!options)
        return fail(WrongUsage, reason + u" (see --help)"_s);
    if (options->wantsHelp) {
        print(usage());
        return Ended;
    }
    if (options->endsWithParent)
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    return serve(*options);
}
