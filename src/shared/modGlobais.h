#pragma once

#include <QByteArray>
#include <QString>

/// The state that several classes share. `Session` owns it and passes it to those that need it.
/// Only ConnectionWorkflow writes to it, with two exceptions: sending the programme also refreshes
/// GeneralData, and Session sets applicationDirectory.
struct modGlobais {
    /// The current directory at start-up, with the system's separator at its end.
    QString applicationDirectory;
    /// Body of the latest good general-data answer; see StatusBlock for its bytes.
    QByteArray GeneralData;
    /// Body of the first good general-data answer of the connection.
    QByteArray GeneralDataAtConnect;
    /// Byte 3 of the latest general-data answer that the clock did not refuse; 11 is this clock
    /// family.
    qint32 DeviceType = 0;
    /// From the first good general-data answer until the connection ends.
    bool LinkEstablished = false;
    /// Set when the main window unloads. The timer service then stays off.
    bool ShuttingDown = false;
};

/// The program's name: in the About box, in its menu entry, and as the title of boxes without one.
inline QString applicationTitle() { return QStringLiteral("Control Equipo HCT"); }
