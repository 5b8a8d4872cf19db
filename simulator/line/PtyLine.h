#pragma once

#include "Line.h"

namespace simulator {

/// A pseudo-terminal in raw mode. Its own end of the slave stays open, so that a program may close
/// the device and open it again; that it closed it is reported all the same.
class PtyLine : public Line {
    Q_OBJECT

public:
    /// link: a symbolic link that always leads to the current device; empty for none. An existing
    /// link is replaced, any other file is left alone.
    explicit PtyLine(const QString& link = {}, QObject* parent = nullptr);
    ~PtyLine() override;

    QString open() override;
    void close() override;

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
