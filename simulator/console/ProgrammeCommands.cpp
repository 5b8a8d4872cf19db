#include "CommandArguments.h"
#include "Commands.h"
#include "HctFile.h"
#include "StateText.h"

#include <QFile>
#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace simulator {

namespace {

CommandResult write(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    // Flush explicitly: commit would not notice that the disk is full.
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush() &&
        file.commit())
        return {};
    return CommandResult::failed(u"cannot write %1: %2"_s.arg(path, file.errorString()));
}

CommandResult load(Simulator& simulator, const QString& path)
{
    constexpr qint64 enough = 100'000;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return CommandResult::failed(u"cannot read %1: %2"_s.arg(path, file.errorString()));
    QString reason;
    const std::optional<ClockProgramme> programme = fromHctFile(file.read(enough), reason);
    if (!programme)
        return CommandResult::failed(u"%1: %2"_s.arg(path, reason));
    simulator.clock().programme() = *programme;
    return {};
}

CommandResult programme(Simulator& simulator, const QString& text)
{
    SimulatedClock& clock = simulator.clock();
    if (text.isEmpty())
        return {programmeText(clock.programme(), clock.model()), {}};
    if (text == "school"_L1)
        clock.programme() = schoolProgramme(clock.model());
    else if (text == "empty"_L1)
        clock.programme() = ClockProgramme();
    else
        return load(simulator, text);
    return {};
}

CommandResult firmware(Simulator& simulator, const QString& text)
{
    FirmwareImage& image = simulator.firmware();
    const auto [what, path] = firstWord(text);
    if (what == "clear"_L1 && path.isEmpty())
        image.clear();
    else if (what == "hex"_L1 && !path.isEmpty())
        return write(path, image.toIntelHex());
    else if (what == "binary"_L1 && !path.isEmpty())
        return write(path, image.toBinary());
    else
        return CommandResult::failed(u"clear, hex FILE or binary FILE is wanted"_s);
    return {};
}

constexpr Command programmeCommandTable[] = {
    {"programme", "[school|empty|FILE]: shows the programme, or takes that of an .hct file",
     &programme},
    {"save", "FILE: writes the programme to an .hct file",
     [](Simulator& simulator, const QString& path) {
         return write(path, toHctFile(simulator.clock().programme()));
     }},
    {"firmware", "clear|hex FILE|binary FILE: writes the received image", &firmware},
};

} // namespace

std::span<const Command> programmeCommands() { return programmeCommandTable; }

} // namespace simulator
