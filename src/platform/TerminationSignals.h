#pragma once

#include <QObject>

/// Emits `arrived` in the event loop when SIGTERM, SIGINT or SIGHUP asks the program to end. A
/// signal that was ignored when the program started stays ignored. The destructor restores what
/// each signal did before. Only one object may exist at a time. On Windows it tells SIGINT for
/// Ctrl+C and Ctrl+Break in a console, and SIGTERM when the console is closed or the session ends;
/// then the program must end within 5 seconds. A program without a console is told nothing: the
/// system closes its windows instead.
class TerminationSignals : public QObject {
    Q_OBJECT
public:
    explicit TerminationSignals(QObject* parent = nullptr);
    ~TerminationSignals() override;

signals:
    void arrived(int signalNumber);
};
