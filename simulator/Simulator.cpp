#include "Simulator.h"

#include "Line.h"

#include <QTime>

#include <chrono>

using namespace Qt::StringLiterals;

namespace simulator {

namespace {

/// Longer than any pause inside a request: an identification has one of 50 ms, which is longer on a
/// busy machine. Shorter than the 800 ms that the program waits for an answer.
constexpr int silenceMilliseconds = 500;
constexpr int babbleMilliseconds = 5;
/// Time for the last answer to be read before the line disappears.
constexpr int partingMilliseconds = 1000;
/// How often a line that is about to go is asked whether its bytes have been read, and how many
/// times at most.
constexpr int partingTickMilliseconds = 2;
constexpr int maximumPartingTicks = 250;
constexpr char strayByte = 0x55;
constexpr quint8 alternatingBit = 0x10;

/// Bytes with which no frame can start.
QByteArray babbleBytes(quint32& seed)
{
    QByteArray bytes;
    for (int count = 0; count < 16; ++count) {
        seed = seed * 1664525 + 1013904223;
        const char byte = char(seed >> 24);
        bytes.append(byte == '\x68' || byte == '\x48' ? '\x55' : byte);
    }
    return bytes;
}

} // namespace

Simulator::Simulator(Line& line, Model model, const Identity& identity, QObject* parent)
    : QObject(parent),
      m_line(line),
      m_identity(identity),
      m_clock(model),
      m_receiver(identity.station),
      m_answers(m_clock, m_firmware, identity.identification),
      m_pacer([this](const QByteArray& bytes) { m_line.write(bytes); })
{
    connectLine();
    connectModem();
    m_silence.setSingleShot(true);
    m_silence.setInterval(silenceMilliseconds);
    connect(&m_silence, &QTimer::timeout, this, [this] { serve(m_receiver.takeSilence()); });
    m_babble.setInterval(babbleMilliseconds);
    connect(&m_babble, &QTimer::timeout, this, [this] { m_pacer.send(babbleBytes(m_babbleSeed)); });
    m_return.setSingleShot(true);
    connect(&m_return, &QTimer::timeout, this, [this] { comeBack(); });
    m_parting.setInterval(partingTickMilliseconds);
    connect(&m_parting, &QTimer::timeout, this, &Simulator::unplugWhenDelivered);
    m_boot.setSingleShot(true);
    connect(&m_boot, &QTimer::timeout, this, [this] {
        m_isDeaf = false;
        emit reported(u"event started"_s);
    });
}

void Simulator::connectLine()
{
    connect(&m_line, &Line::bytesArrived, this, &Simulator::receive);
    connect(&m_line, &Line::farEndClosed, this, [this] {
        m_pacer.clear();
        m_modem.dropLine();
    });
    connect(&m_line, &Line::lost, this, [this] { emit reported(u"event lost"_s); });
}

void Simulator::connectModem()
{
    connect(&m_modem, &ModemLine::replied, this, [this](const QByteArray& bytes) {
        m_pacer.send(bytes, {}, std::chrono::milliseconds(m_modemSplit));
    });
    connect(&m_modem, &ModemLine::dataArrived, this, &Simulator::takeFrameBytes);
    connect(&m_modem, &ModemLine::callBegan, this, [this] { emit reported(u"event call"_s); });
    connect(&m_modem, &ModemLine::callEnded, this, [this] {
        m_receiver.clear();
        emit reported(u"event hangup"_s);
    });
    connect(&m_modem, &ModemLine::commanded, this,
            [this](const QString& text) { trace(u'<', text); });
    connect(&m_modem, &ModemLine::answered, this,
            [this](const QString& text) { trace(u'>', text); });
}

void Simulator::setBabble(bool on)
{
    if (on)
        m_babble.start();
    else
        m_babble.stop();
}

void Simulator::vanish(int milliseconds)
{
    m_parting.stop();
    m_pacer.clear();
    m_receiver.clear();
    m_modem.dropLine();
    m_line.close();
    emit reported(u"event vanished"_s);
    if (milliseconds > 0)
        m_return.start(milliseconds);
}

QString Simulator::comeBack()
{
    m_return.stop();
    if (m_line.isOpen())
        return u"the line is there"_s;
    m_isDeaf = false;
    QString reason = m_line.open();
    emit reported(reason.isEmpty() ? u"event returned %1"_s.arg(m_line.devicePath())
                                   : u"event failed %1"_s.arg(reason));
    return reason;
}

void Simulator::receive(const QByteArray& bytes)
{
    m_pacer.received(bytes.size());
    if (m_hasModem)
        m_modem.take(bytes);
    else
        takeFrameBytes(bytes);
}

void Simulator::takeFrameBytes(const QByteArray& bytes)
{
    const int damaged = m_receiver.damagedFrames();
    serve(m_receiver.take(bytes));
    if (m_receiver.damagedFrames() != damaged)
        trace(u'<', u"damaged frame"_s);
    if (m_receiver.hasBegun())
        m_silence.start();
    else
        m_silence.stop();
}

void Simulator::serve(const QList<WireFrame>& requests)
{
    for (const WireFrame& request : requests) {
        trace(u'<', QString::fromLatin1(hexadecimal(encoded(request))));
        if (!m_isDeaf && !m_parting.isActive())
            serveOne(request);
    }
}

void Simulator::serveOne(const WireFrame& request)
{
    const quint8 code = quint8(request.code & ~alternatingBit);
    const QList<Fault> faults = m_misbehaviour.strike(code, request.data);
    const Delivery how = delivery(faults);
    if (how.vanishFor || !how.isObeyed)
        ++m_counts.withheld;
    if (how.vanishFor)
        return vanish(*how.vanishFor);
    if (!how.isObeyed)
        return;
    const std::optional<QByteArray> body = how.refusal
                                               ? m_answers.refusal(code, request.data, *how.refusal)
                                               : m_answers.answer(code, request.data);
    if (body) {
        ++(!how.isSent ? m_counts.withheld : faults.isEmpty() ? m_counts.good : m_counts.spoiled);
        sendAnswer(spoiled({m_identity.station, requestcode::Answer, *body}, faults), how);
    }
    if (m_answers.takeResetRequest())
        reset();
}

void Simulator::sendAnswer(const QByteArray& wire, const Delivery& how)
{
    const QByteArray stray(1, strayByte);
    std::chrono::microseconds delay = std::chrono::milliseconds(how.delay);
    if (how.strayAfter && how.strayAfter->count() < 0) {
        m_pacer.send(stray, delay);
        delay = -*how.strayAfter;
    }
    if (how.isSent) {
        trace(u'>', QString::fromLatin1(hexadecimal(wire)));
        m_pacer.send(wire, delay, std::chrono::milliseconds(how.byteGap));
    }
    if (how.strayAfter && how.strayAfter->count() >= 0)
        m_pacer.send(stray, *how.strayAfter);
    if (how.unplugFor) {
        m_absence = *how.unplugFor;
        m_partingTicks = 0;
        m_parting.start();
    }
}

void Simulator::unplugWhenDelivered()
{
    if (!m_pacer.isIdle())
        return;
    // Not at the first tick: the system may still be passing the bytes on.
    ++m_partingTicks;
    if ((m_partingTicks > 1 && m_line.hasDelivered()) || m_partingTicks >= maximumPartingTicks)
        vanish(m_absence);
}

void Simulator::reset()
{
    m_clock.erase();
    emit reported(u"event reset"_s);
    switch (m_afterReset.act) {
    case AfterReset::Act::Stay: return;
    case AfterReset::Act::Silent: return fallSilent(m_afterReset.milliseconds);
    case AfterReset::Act::Vanish:
        fallSilent(0);
        QTimer::singleShot(partingMilliseconds, this,
                           [this] { vanish(m_afterReset.milliseconds); });
    }
}

void Simulator::fallSilent(int milliseconds)
{
    m_isDeaf = true;
    if (m_hasModem)
        QTimer::singleShot(partingMilliseconds, this, [this] { m_modem.hangUp(); });
    if (milliseconds > 0)
        m_boot.start(milliseconds);
}

void Simulator::trace(QChar direction, const QString& text)
{
    if (m_trace)
        emit reported(u"trace %1 %2 %3"_s.arg(QTime::currentTime().toString(u"HH:mm:ss.zzz"_s),
                                              QString(direction), text));
}

} // namespace simulator
