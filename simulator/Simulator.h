#pragma once

#include "ClockAnswers.h"
#include "FrameReceiver.h"

#include <QObject>
#include <QTimer>

namespace simulator {

class Line;

/// What the simulated clock is when it starts.
struct ClockIdentity {
    quint8 station = 1;
    quint8 identification = 1;
};

/// A clock on a line: receives requests, answers them and keeps the clock's state.
class Simulator : public QObject {
    Q_OBJECT

public:
    /// The line must outlive the simulator and is opened by the caller.
    Simulator(Line& line, SimulatedClock& clock, const ClockIdentity& identity,
              QObject* parent = nullptr);

private:
    void receive(const QByteArray& bytes);
    void serve(const QList<WireFrame>& requests);

    Line& m_line;
    ClockIdentity m_identity;
    FirmwareImage m_firmware;
    FrameReceiver m_receiver;
    ClockAnswers m_answers;
    QTimer m_silence;
};

} // namespace simulator
