#include "CommandLine.h"
#include "Commands.h"

#include <QCoreApplication>

#include <chrono>

int main(int argc, char* argv[])
{
    const auto programStart = std::chrono::steady_clock::now();
    QCoreApplication::setApplicationName(QStringLiteral("hctctl"));
    QCoreApplication::setApplicationVersion(QStringLiteral(HCT_VERSION));
    const QCoreApplication application(argc, argv);
    CommandLine commandLine;
    addCommands(commandLine);
    const auto read = commandLine.read(QCoreApplication::arguments().mid(1));
    if (const int* status = std::get_if<int>(&read))
        return *status;
    return carryOut(std::get<Order>(read), programStart);
}
