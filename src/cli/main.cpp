#include "CommandLine.h"
#include "Commands.h"
#include "Console.h"
#include "StandardStreams.h"

#include <QCoreApplication>
#include <QFile>

#include <chrono>
#include <optional>
#include <span>

using namespace Qt::StringLiterals;

namespace {

/// The first argument that the toolkit does not read as it was given; nothing when all are well. On
/// Windows it takes them from the system, and reads all.
std::optional<QString> misreadArgument([[maybe_unused]] std::span<char*> arguments)
{
#ifdef Q_OS_UNIX
    for (const char* argument : arguments)
        if (const QString text = QFile::decodeName(argument); QFile::encodeName(text) != argument)
            return text;
#endif
    return std::nullopt;
}

} // namespace

int main(int argc, char* argv[])
{
    occupyClosedStreams();
    const auto programStart = std::chrono::steady_clock::now();
    QCoreApplication::setApplicationName(QStringLiteral("hctctl"));
    QCoreApplication::setApplicationVersion(QStringLiteral(HCT_VERSION));
    const QCoreApplication application(argc, argv);
    if (const auto text = misreadArgument({argv, static_cast<std::size_t>(argc)})) {
        Console console(Console::Form::Text, Console::Notes::Shown);
        return qToUnderlying(
            console.refuse(u"\"%1\" no está en UTF-8: cambie el nombre del archivo, pues así se "
                           "tomaría otro."_s.arg(*text)));
    }
    CommandLine commandLine;
    addCommands(commandLine);
    const auto read = commandLine.read(QCoreApplication::arguments().mid(1));
    if (const auto* status = std::get_if<ExitStatus>(&read))
        return qToUnderlying(*status);
    return qToUnderlying(carryOut(std::get<Order>(read), programStart));
}
