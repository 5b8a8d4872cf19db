#pragma once

#include <QString>

#include <chrono>
#include <functional>

class Console;

/// Tells how far a long job is: on a terminal by a line that changes, with percentage and time
/// left; elsewhere by one line at its end. Quiet consoles get neither.
class Progress {
public:
    using Moment = std::chrono::steady_clock::time_point;

    /// `what` is told before the numbers, for example "Enviando firmware". `now` is for tests.
    Progress(Console& console, const QString& what, int total,
             std::function<Moment()> now = std::chrono::steady_clock::now);

    /// `done` of `total` units are done, and never fewer than before.
    void advance(int done);
    /// The job has ended, well or not: the line that changes is removed. With `sentence` one
    /// remains.
    void end(const QString& sentence = {});

    /// "Enviando firmware: 45 % (90 de 200), quedan 12 s".
    static QString text(const QString& what, int done, int total, std::chrono::seconds left);

private:
    Console& m_console;
    const QString m_what;
    const int m_total;
    const std::function<Moment()> m_now;
    const Moment m_start;
    QString m_shown;
};
