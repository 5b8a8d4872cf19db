#pragma once

#include <QObject>
#include <QTimer>

#include <memory>

/// A timer control: an interval in milliseconds and a switch. It ticks again and again while it is
/// enabled and its interval is above 0; an interval of 0 keeps it still whatever the switch says.
/// Setting either property to the value it has changes nothing, except that enabling a timer anew
/// after disabling it starts a new interval.
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

/// For time-outs: never early, so a precise QTimer (a coarse one fires up to 5 % before its time).
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

/// The timer for the 1 ms tick of the timer service. On Linux a timerfd that keeps its beat while a
/// tick is being worked on, so that a tick does not come late by the length of the one before.
/// Disabled it wakes nobody up.
std::unique_ptr<IntervalTimer> makeTickTimer();
