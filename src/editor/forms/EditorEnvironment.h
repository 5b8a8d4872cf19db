#pragma once

#include <QStandardPaths>
#include <QString>

#include <functional>
#include <memory>

class EditorDialogs;
class IntervalTimer;
class Registry;

/// What the editor uses of the outside world. Tests replace it. The owner of these objects must
/// outlive the program.
struct EditorEnvironment {
    EditorDialogs& dialogs;
    Registry& registry;
    /// Where unsaved work is kept, see RecoveryFolder.
    QString recoveryFolder;
    /// For the pauses between two writings of unsaved work.
    std::function<std::unique_ptr<IntervalTimer>()> makeTimer;
    /// Where file dialogs begin as long as there are no recent files.
    QString documentsFolder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
};
