#pragma once

#include <QObject>

#include <chrono>

/// A periodic timer with an interval and a switch. It ticks while it is enabled and its interval is
/// above 0. Setting a property to the value that it has changes nothing.
class IntervalTimer : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    void setInterval(std::chrono::milliseconds interval);
    std::chrono::milliseconds interval() const { return m_interval; }
    void setEnabled(bool enabled);
    bool isEnabled() const { return m_enabled; }

signals:
    void tick();

protected:
    /// Whether it should tick.
    bool isRunning() const { return m_enabled && m_interval > std::chrono::milliseconds::zero(); }
    virtual void intervalChanged() = 0;
    virtual void enabledChanged() = 0;

private:
    std::chrono::milliseconds m_interval{0};
    bool m_enabled = false;
};
