#pragma once

#include "Line.h"

namespace simulator {

/// A serial device of this machine, raw, 8 data bits, no parity, 1 stop bit.
class DeviceLine : public Line {
    Q_OBJECT

public:
    /// speed in bit/s, one of the system's: 300 to 230400.
    DeviceLine(const QString& device, int speed, QObject* parent = nullptr);

    QString open() override;

private:
    QString m_device;
    int m_speed;
};

} // namespace simulator
