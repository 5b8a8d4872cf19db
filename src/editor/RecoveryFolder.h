#pragma once

#include "UnsavedWork.h"

#include <QDateTime>
#include <QLockFile>
#include <QString>

#include <memory>
#include <vector>

/// Unsaved work of programs that ended without asking.
namespace RecoveryFolder {

/// The folder of this user.
QString path();

/// Of a file with unsaved work, and of the file that is locked as long as its owner lives.
QString workExtension();
QString lockExtension();

/// Unsaved work without an owner. As long as this exists no other program is offered it.
struct Abandoned {
    UnsavedWork work;
    QDateTime written;
    /// Its path without the extension.
    QString file;
    std::unique_ptr<QLockFile> lock;
};
/// The newest first. Files that cannot be read stay where they are.
std::vector<Abandoned> abandoned(const QString& folder);
/// Removes it for good.
void discard(Abandoned abandoned);

} // namespace RecoveryFolder
