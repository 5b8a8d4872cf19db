#pragma once

#include "IntervalTimer.h"

#include <QTimer>

/// A timer on QTimer whose period does not include the work that a tick does. When it is disabled,
/// its QTimer runs on until it next expires, and stops only then. A tick that disables it, works,
/// and enables it again therefore does not delay the next one. As long as the QTimer runs, the
/// system also keeps the fine time resolution that the pauses within a tick need.
class BeatTimer final : public IntervalTimer {
    Q_OBJECT
public:
    explicit BeatTimer(QObject* parent = nullptr);

private:
    void intervalChanged() override;
    void enabledChanged() override;
    void beat();

    QTimer m_timer;
};
