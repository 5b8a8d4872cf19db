#pragma once

#include "Files.h"
#include "SimulatorProcess.h"

#include <QTemporaryDir>

/// A simulated clock with the programme of a school, and a folder for files.
struct SchoolDesk {
    explicit SchoolDesk(const QStringList& options = {})
        : clock(QStringList{QStringLiteral("--programme"), QStringLiteral("school")} + options)
    {}

    QString path(const QString& name = QStringLiteral("a.hct")) const
    {
        return folder.filePath(name);
    }
    QStringList arguments(const QStringList& words) const
    {
        return QStringList{QStringLiteral("--port"), clock.device(), QStringLiteral("programme")} +
               words;
    }
    /// The programme of the clock, with another first alarm.
    QString changedFile()
    {
        clock.command(QStringLiteral("save ") + path(QStringLiteral("school.hct")));
        QByteArray text = contentsOf(path(QStringLiteral("school.hct")));
        text.replace("8\r\n0\r\n9\r\n0\r\n31\r\n", "8\r\n0\r\n8\r\n59\r\n3\r\n");
        return writeFile(path(), text);
    }
    QString firstAlarm() { return clock.state(QStringLiteral("block1.alarms")).left(4); }

    SimulatorProcess clock;
    QTemporaryDir folder;
};
