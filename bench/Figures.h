#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QFile>

#include <cstdio>

#include <sys/resource.h>

/// Figures of the operating system about this process, and how a figure is printed.
namespace figures {

/// User and system time of all threads.
inline double cpuSeconds()
{
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// The number behind `label` in one of this process's files under /proc; -1 when it is not there.
inline qint64 ofThisProcess(const QString& file, const QByteArray& label)
{
    QFile status(QStringLiteral("/proc/self/") + file);
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    const QList<QByteArray> lines = status.readAll().split('\n');
    for (const QByteArray& line : lines) {
        if (line.startsWith(label))
            return line.mid(label.size()).simplified().split(' ').constFirst().toLongLong();
    }
    return -1;
}

/// How often this thread has slept and was woken.
inline qint64 wakeUps()
{
    return ofThisProcess(QStringLiteral("status"), "voluntary_ctxt_switches:");
}

inline qint64 residentKilobytes() { return ofThisProcess(QStringLiteral("smaps_rollup"), "Pss:"); }

/// The moment of the first painting and the memory held then (PSS in kB); ends the process.
inline void printFirstWindow(qint64 moment)
{
    std::printf("%lld %lld\n", static_cast<long long>(moment),
                static_cast<long long>(residentKilobytes()));
    QCoreApplication::quit();
}

/// One line: the figure, its limit or goal, and the ratio of the two.
inline void print(const char* what, double value, double limit, const char* unit)
{
    std::printf("%-44s %9.2f %-8s limit %9.2f  ratio %5.3f\n", what, value, unit, limit,
                value / limit);
}

inline void print(const char* what, double value, const char* unit)
{
    std::printf("%-44s %9.2f %s\n", what, value, unit);
}

} // namespace figures
