#pragma once

#include <QByteArray>
#include <QString>

/// The state that several windows share. `Program` owns the one instance and hands it to those that
/// need it; only the connection's workflow writes, except GeneralData, which a send of the
/// programme refreshes too.
struct modGlobais {
    /// The current directory at start-up, ending in the system's separator.
    QString applicationDirectory;
    /// Body of the latest good general-data answer; see StatusBlock for its bytes.
    QByteArray GeneralData;
    /// Body of the first good general-data answer of the connection.
    QByteArray GeneralDataAtConnect;
    /// Byte 3 of the latest general-data answer; 11 is this clock family.
    qint32 DeviceType = 0;
    bool LinkEstablished = false;
    /// Set when the main window unloads; the timer service then stays still for good.
    bool ShuttingDown = false;
};

/// The name in the About box, its menu entry, and the boxes that have no title of their own.
inline QString applicationTitle() { return QStringLiteral("Control Equipo HCT"); }
