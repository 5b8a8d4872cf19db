#pragma once

#include <QStringList>

/// A state of link and connection into which exit-walker brings the program, and the simulator's
/// options for it.
struct ExitState {
    const char* name;
    QStringList simulator;
};

inline QList<ExitState> exitStates()
{
    using namespace Qt::StringLiterals;
    return {
        {"idle", {}},
        {"no-port", {}},
        {"identifying", {u"--fault"_s, u"silent always on identification"_s}},
        {"half-answer", {u"--fault"_s, u"truncate 6 always on identification"_s}},
        {"connected", {}},
        {"asking", {u"--fault"_s, u"late 5000 after 3 on general"_s}},
        {"identifying-again",
         {u"--fault"_s, u"echo always after 3 on general"_s, u"--fault"_s,
          u"silent always after 1 on identification"_s}},
        {"line-lost", {u"--fault"_s, u"vanish after 3 on general"_s}},
        {"ended", {}},
        {"initialising", {u"--modem"_s, u"--modem-silent"_s}},
        {"number-asked", {u"--modem"_s}},
        {"dialling", {u"--modem"_s, u"--dial-delay"_s, u"60000"_s}},
        {"called", {u"--modem"_s, u"--dial-delay"_s, u"10"_s}},
    };
}

/// The windows that exit-walker opens on a connected clock; "all" are those open at one time.
inline constexpr const char* exitWindows[] = {
    "log",         "information", "synchronisation", "remote-control",
    "programming", "firmware",    "about",           "all"};
