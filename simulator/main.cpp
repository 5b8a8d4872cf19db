#include "CommandReader.h"
#include "DeviceLine.h"
#include "PtyLine.h"
#include "Simulator.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>
#include <memory>
#include <unistd.h>

using namespace Qt::StringLiterals;

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"hct-simulator"_s);
    QCommandLineParser parser;
    parser.setApplicationDescription(u"A simulated HCT clock behind a pseudo-terminal."_s);
    parser.addHelpOption();
    parser.addOptions({
        {u"model"_s, u"Model of the clock: 7200 or 7300."_s, u"model"_s, u"7200"_s},
        {u"link"_s, u"Symbolic link to the pseudo-terminal."_s, u"path"_s},
        {u"station"_s, u"Station address, 0 to 255."_s, u"number"_s, u"1"_s},
        {u"identification"_s, u"Identification number, 0 to 255."_s, u"number"_s, u"1"_s},
        {u"start"_s, u"Date and time to start with (yyyy-MM-ddTHH:mm:ss)."_s, u"moment"_s},
        {u"stay"_s, u"Go on after the end of standard input."_s},
    });
    parser.process(application);

    using namespace simulator;
    SimulatedClock clock(parser.value(u"model"_s) == u"7300"_s ? Model::Hct7300 : Model::Hct7200);
    clock.programme() = schoolProgramme(clock.model());
    if (parser.isSet(u"start"_s))
        clock.setDateTime(QDateTime::fromString(parser.value(u"start"_s), Qt::ISODate));
    PtyLine line(parser.value(u"link"_s));
    const QString reason = line.open();
    if (!reason.isEmpty()) {
        std::fprintf(stderr, "hct-simulator: %s\n", qPrintable(reason));
        return 1;
    }
    const ClockIdentity identity{quint8(parser.value(u"station"_s).toUInt()),
                                 quint8(parser.value(u"identification"_s).toUInt())};
    const Simulator simulator(line, clock, identity);
    CommandReader reader(STDIN_FILENO);
    QObject::connect(&reader, &CommandReader::lineRead, &application, [](const QString& text) {
        if (text == u"quit"_s)
            QCoreApplication::quit();
    });
    if (!parser.isSet(u"stay"_s))
        QObject::connect(&reader, &CommandReader::ended, &application, &QCoreApplication::quit);
    std::printf("%s\n", qPrintable(line.devicePath()));
    std::fflush(stdout);
    return QCoreApplication::exec();
}
