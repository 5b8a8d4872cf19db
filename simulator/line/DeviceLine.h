#pragma once

#include "Line.h"

#include <QTimer>

namespace simulator {

/// A serial device of this machine: raw, 8 data bits, no parity, 1 stop bit. If the cable connects
/// the program's DTR to this end's DSR, a drop of it means that the program has closed its end.
class DeviceLine : public Line {
    Q_OBJECT

public:
    /// `speed` is in bit/s, one of the usual ones from 300 to 230400.
    DeviceLine(const QString& device, int speed, QObject* parent = nullptr);

    QString open() override;
    bool hasDelivered() const override;

private:
    void watchDataSetReady();

    QString m_device;
    int m_speed;
    QTimer m_watch;
    bool m_wasReady = false;
};

} // namespace simulator
