#pragma once

#include <QString>

/// What the system knows of a serial device. It is not opened on Linux, since that would move its
/// lines; so that InUse is what a lock file tells,
/// or the system of one's own processes; on Windows only an attempt tells whether another program
/// has it open.
struct PortInformation {
    /// Network: at the far end of one, where only an opening tells more.
    enum class State { Free, InUse, Forbidden, Missing, Network };

    /// Empty where the system knows nothing.
    QString description;
    QString manufacturer;
    QString serialNumber;
    State state = State::Missing;

    /// `device` as PortNames gives it: "/dev/ttyUSB0", a link to it, or "COM1" on Windows.
    static PortInformation of(const QString& device);
};
