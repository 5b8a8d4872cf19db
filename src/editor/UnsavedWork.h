#pragma once

#include "Programme.h"

#include <QByteArray>
#include <QString>

/// All that is needed to go on with a document later, in another run of the program.
struct UnsavedWork {
    Programme programme;
    ClockModel model = ClockModel::Hct7200;
    /// Empty while there is no file.
    QString path;
    /// SHA-256 of what the file held when it was opened or saved; empty while there is no file.
    QByteArray fileHash;
    /// Whether values of the file could not be read.
    bool isMisread = false;

    bool operator==(const UnsavedWork&) const = default;
};
