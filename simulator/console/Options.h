#pragma once

#include "Simulator.h"

#include <QStringList>

#include <optional>

namespace simulator {

/// The options of the command line.
struct Options {
    Model model = Model::Hct7200;
    Simulator::Identity identity;
    QString link;   ///< symbolic link to the pseudo-terminal
    QString device; ///< a serial device in place of a pseudo-terminal
    int speed = 9600;
    bool stays = false;
    bool endsWithParent = false;
    QStringList commands; ///< run before the line is served
    QString saveTo;       ///< .hct file written at the end
    QString firmwareTo;   ///< .hex file written at the end
    bool wantsHelp = false;
};

/// Reads the arguments, without the program's name. Nothing when they are wrong; `reason` tells
/// why.
std::optional<Options> parsedOptions(const QStringList& arguments, QString& reason);

/// The text of --help.
QString usage();

} // namespace simulator
