#pragma once

#include <QObject>

/// Tells, in the event loop, that the system wants the program to end: SIGTERM, SIGINT and SIGHUP.
/// One that was ignored when the program started stays ignored; afterwards each does what it did
/// before. One of these exists at a time. On Windows, which closes the window instead, it never
/// tells anything.
class TerminationSignals : public QObject {
    Q_OBJECT
public:
    explicit TerminationSignals(QObject* parent = nullptr);
    ~TerminationSignals() override;

signals:
    void arrived();
};
