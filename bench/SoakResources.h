#pragma once

#include <QStringList>

/// The memory and the descriptors that the program holds at a moment without a connection.
struct SoakResources {
    qint64 seconds = 0;
    qint64 kilobytes = 0;    ///< PSS, which depends on what else runs; the working set on Windows
    qint64 ownKilobytes = 0; ///< the part of it that belongs to no file
    QStringList descriptors; ///< what is open, sorted; on Windows the types of the handles
    qint64 logCharacters = 0;

    /// What the system says of this process now.
    static SoakResources ofThisProcess();
};
