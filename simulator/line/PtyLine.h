#pragma once

#include "Line.h"

namespace simulator {

/// A pseudo-terminal in raw mode. It keeps its device open itself, so that a program can close the
/// device and open it again; farEndClosed is emitted all the same.
class PtyLine : public Line {
    Q_OBJECT

public:
    /// `link` is the path of a symbolic link to the current device; empty for none. An existing
    /// link is replaced, any other file is not touched.
    explicit PtyLine(const QString& link = {}, QObject* parent = nullptr);
    ~PtyLine() override;

    QString open() override;
    void close() override;
    bool hasDelivered() const override;

protected:
    void beforeReading() override { readWatch(); }

private:
    QString renewLink(const QString& device);
    void removeLink();
    void watchSlave(const QByteArray& device);
    void readWatch();

    QString m_link;
    int m_slave = -1;
    int m_watch = -1;
    QSocketNotifier* m_watchNotifier = nullptr;
};

} // namespace simulator
