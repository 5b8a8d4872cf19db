#pragma once

#include "ClockAnswers.h"
#include "FrameReceiver.h"
#include "Misbehaviour.h"
#include "ModemLine.h"
#include "Pacer.h"

#include <QObject>
#include <QTimer>

namespace simulator {

class Line;

/// What the clock does after it has acknowledged a firmware line that asks for a reset. It erases
/// its programme in every case. Then it continues (Stay), answers no requests (Silent), or its line
/// disappears (Vanish) for so many milliseconds; with 0 for ever.
struct AfterReset {
    enum class Act { Stay, Silent, Vanish };
    Act act = Act::Silent;
    int milliseconds = 0;
};

/// A clock on a line, directly or behind a modem: receives requests, applies faults, and answers.
class Simulator : public QObject {
    Q_OBJECT

public:
    struct Identity {
        quint8 station = 1;
        quint8 identification = 1;
    };

    /// Requests that the clock can answer, by what became of the answer.
    struct Answers {
        int good = 0;     ///< sent, and no fault struck the request
        int spoiled = 0;  ///< sent in spite of a fault, however late, changed, or refusing
        int withheld = 0; ///< not sent because of a fault
        int sent() const { return good + spoiled; }
    };

    /// The line must outlive this. The caller opens it.
    Simulator(Line& line, Model model, const Identity& identity, QObject* parent = nullptr);

    SimulatedClock& clock() { return m_clock; }
    FirmwareImage& firmware() { return m_firmware; }
    Misbehaviour& misbehaviour() { return m_misbehaviour; }
    Pacer& pacer() { return m_pacer; }
    ModemLine& modem() { return m_modem; }
    const Line& line() const { return m_line; }

    bool isSessionOpen() const { return m_answers.isSessionOpen(); }
    const Answers& answers() const { return m_counts; }
    const FrameReceiver& receiver() const { return m_receiver; }

    /// Whether there is a modem between line and clock.
    void setModem(bool present) { m_hasModem = present; }
    bool hasModem() const { return m_hasModem; }
    /// Modem replies are sent byte by byte, so many milliseconds apart; with 0 at once.
    void setModemSplit(int milliseconds) { m_modemSplit = milliseconds; }
    void setAfterReset(const AfterReset& afterReset) { m_afterReset = afterReset; }
    /// Sends endless bytes that are no frame, as a faulty line does.
    void setBabble(bool on);
    void setTrace(bool on) { m_trace = on; }

    /// Removes the line. It returns after so many milliseconds; with 0 only by comeBack.
    void vanish(int milliseconds);
    /// Opens the line again. The reason of a failure; empty after success.
    QString comeBack();

signals:
    /// An "event " or "trace " line for standard output.
    void reported(const QString& text);

private:
    void connectLine();
    void connectModem();
    void receive(const QByteArray& bytes);
    void takeFrameBytes(const QByteArray& bytes);
    void serve(const QList<WireFrame>& requests);
    void serveOne(const WireFrame& request);
    void sendAnswer(const QByteArray& wire, const Delivery& how);
    void unplugWhenDelivered();
    void reset();
    void fallSilent(int milliseconds);
    void trace(QChar direction, const QString& text);

    Line& m_line;
    Identity m_identity;
    SimulatedClock m_clock;
    FirmwareImage m_firmware;
    FrameReceiver m_receiver;
    ClockAnswers m_answers;
    Misbehaviour m_misbehaviour;
    Pacer m_pacer;
    ModemLine m_modem;
    AfterReset m_afterReset;
    QTimer m_silence;
    QTimer m_babble;
    QTimer m_return;
    QTimer m_boot;
    QTimer m_parting;
    int m_partingTicks = 0;
    int m_absence = 0;
    quint32 m_babbleSeed = 1;
    bool m_hasModem = false;
    int m_modemSplit = 0;
    bool m_isDeaf = false;
    bool m_trace = false;
    Answers m_counts;
};

} // namespace simulator
