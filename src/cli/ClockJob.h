#pragma once

#include "ExitStatus.h"

#include <QObject>
#include <QString>

/// What a command does with a clock that is connected and has sent its general data. It is told to
/// begin once, and emits `finished` once, or is abandoned before.
class ClockJob : public QObject {
    Q_OBJECT
public:
    virtual void begin() = 0;
    /// The clock cannot be reached any more, or the user ends the program: sends nothing more. The
    /// result says in Spanish what the clock has not taken yet; it may be empty.
    virtual QString abandon() = 0;
    /// A job that runs until the user ends it: a signal is no failure then.
    virtual bool isEndless() const { return false; }

signals:
    /// It has told what there is to tell, and sends nothing more.
    void finished(ExitStatus status);
};
