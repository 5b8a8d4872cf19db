#pragma once

#include <QObject>

/// Emits `arrived` in the event loop when SIGTERM, SIGINT or SIGHUP asks the program to end. A
/// signal that was ignored when the program started stays ignored. The destructor restores what
/// each signal did before. Only one object may exist at a time. On Windows it never emits: the
/// system closes the window instead.
class TerminationSignals : public QObject {
    Q_OBJECT
public:
    explicit TerminationSignals(QObject* parent = nullptr);
    ~TerminationSignals() override;

signals:
    void arrived(int signalNumber);
};
