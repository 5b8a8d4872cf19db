#pragma once

#include <QFile>
#include <QString>

#include <chrono>

/// Writes what the links of the process report, categories hct.link and hct.link.frames, into a
/// file from its construction to its destruction. There is one at a time. A line is microseconds
/// since the program's start, category and text, in UTF-8; the first names program and system. Each
/// is handed to the system whole and at once, so that a crash loses none.
class TraceFile {
public:
    using Moment = std::chrono::steady_clock::time_point;

    /// Replaces what the file holds. A path that exists and is no file is not opened: a pipe could
    /// keep the program waiting for its other end.
    TraceFile(const QString& path, Moment programStart);
    ~TraceFile();
    TraceFile(const TraceFile&) = delete;
    TraceFile& operator=(const TraceFile&) = delete;

    bool isOpen() const { return m_file.isOpen(); }
    /// Why it is not open, in Spanish.
    QString error() const;

private:
    static void take(QtMsgType type, const QMessageLogContext& context, const QString& text);
    void write(const QString& what, const QString& text);

    QFile m_file;
    const Moment m_programStart;
    QtMessageHandler m_others = nullptr;
};
