#pragma once

#include <QObject>

namespace simulator {

/// Emits `ended` in the event loop when SIGTERM, SIGINT or SIGHUP arrives. Make it before any
/// thread.
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
