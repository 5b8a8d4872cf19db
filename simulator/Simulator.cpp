#include "Simulator.h"

#include "Line.h"

namespace simulator {

namespace {

/// Longer than any pause inside a request: identification holds one of 50 ms.
constexpr int silenceMilliseconds = 150;
constexpr quint8 alternatingBit = 0x10;

} // namespace

Simulator::Simulator(Line& line, SimulatedClock& clock, const ClockIdentity& identity,
                     QObject* parent)
    : QObject(parent),
      m_line(line),
      m_identity(identity),
      m_receiver(identity.station),
      m_answers(clock, m_firmware, identity.identification)
{
    m_silence.setSingleShot(true);
    m_silence.setInterval(silenceMilliseconds);
    connect(&m_silence, &QTimer::timeout, this, [this] { serve(m_receiver.takeSilence()); });
    connect(&m_line, &Line::bytesArrived, this, &Simulator::receive);
}

void Simulator::receive(const QByteArray& bytes)
{
    serve(m_receiver.take(bytes));
    if (m_receiver.hasBegun())
        m_silence.start();
    else
        m_silence.stop();
}

void Simulator::serve(const QList<WireFrame>& requests)
{
    for (const WireFrame& request : requests) {
        const std::optional<QByteArray> body =
            m_answers.answer(quint8(request.code & ~alternatingBit), request.data);
        if (body)
            m_line.write(encoded({m_identity.station, requestcode::Answer, *body}));
    }
}

} // namespace simulator
