#include "Desktop.h"

#include <QProcess>

Desktop systemDesktop(Dialogs& dialogs)
{
    return {
        .dialogs = dialogs,
        .startProgram = [](const QString& program) { return QProcess::startDetached(program, {}); },
    };
}
