#pragma once

#include "MemoryRegistry.h"
#include "PortNames.h"
#include "PseudoTerminal.h"
#include "QtSerialPort.h"

/// A port on COM1, not open yet, whose device is a pseudo-terminal.
struct PortFixture {
    PseudoTerminal line;
    /// The device of COM1.
    QString device = line.device;
    MemoryRegistry registry;
    PortNames names{registry,
                    [this](const QString& variable) {
                        return variable == QStringLiteral("HCT_COM1") ? device : QString();
                    },
                    [] { return QStringList(); }};
    QtSerialPort port{names};
};
