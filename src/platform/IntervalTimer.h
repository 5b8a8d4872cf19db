#pragma once

#include <QObject>
#include <QTimer>

#include <memory>

/// A timer control: an interval in milliseconds and a switch. It ticks again and again while it is
/// enabled and its interval is above 0; an interval of 0 keeps it still whatever the switch says.
/// Setting either property to the value it has changes nothing.
class IntervalTimer : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    virtual void setInterval(int milliseconds) = 0;
    virtual int interval() const = 0;
    virtual void setEnabled(bool enabled) = 0;
    virtual bool isEnabled() const = 0;

signals:
    void tick();
};

/// For time-outs: never early by more than the system's own millisecond, so a precise QTimer (a
/// coarse one fires up to 5 % before its time). Enabled anew after it was disabled it starts a new
/// interval.
class PreciseTimer final : public IntervalTimer {
    Q_OBJECT
public:
    explicit PreciseTimer(QObject* parent = nullptr);

    void setInterval(int milliseconds) override;
    int interval() const override { return m_interval; }
    void setEnabled(bool enabled) override;
    bool isEnabled() const override { return m_enabled; }

private:
    void apply();

    QTimer m_timer;
    int m_interval = 0;
    bool m_enabled = false;
};

/// Keeps its beat while a tick is being worked on, so that a tick does not come late by the length
/// of the one before: disabled it runs on until its next beat and only then falls silent. So the
/// system also keeps its fine resolution of time for the pauses that a tick makes.
class BeatTimer final : public IntervalTimer {
    Q_OBJECT
public:
    explicit BeatTimer(QObject* parent = nullptr);

    void setInterval(int milliseconds) override;
    int interval() const override { return m_interval; }
    void setEnabled(bool enabled) override;
    bool isEnabled() const override { return m_enabled; }

private:
    void beat();

    QTimer m_timer;
    int m_interval = 0;
    bool m_enabled = false;
};

/// The timer for the 1 ms tick of the timer service: it keeps its beat, by a timerfd on Linux.
/// Disabled it wakes nobody up, but for once at most.
std::unique_ptr<IntervalTimer> makeTickTimer();
