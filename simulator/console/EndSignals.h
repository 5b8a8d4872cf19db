#pragma once

#include <QObject>

namespace simulator {

/// Turns the signals that ask a process to end into one of Qt. To be made before any thread.
class EndSignals : public QObject {
    Q_OBJECT

public:
    explicit EndSignals(QObject* parent = nullptr);
    ~EndSignals() override;

signals:
    void ended();

private:
    int m_descriptor;
};

} // namespace simulator
