#pragma once

#include "ClockProgramme.h"

#include <QMap>

#include <functional>
#include <optional>

namespace simulator {

/// The state of a clock: date and time, outputs, inputs, flags, mode and programme.
class SimulatedClock {
public:
    /// The time by which the clock runs. Its time zone is ignored.
    using Now = std::function<QDateTime()>;

    /// The computer's local date and time, without the jumps of daylight saving time.
    static QDateTime computerTime();

    explicit SimulatedClock(Model model, Now now = &SimulatedClock::computerTime);

    Model model() const { return m_model; }
    QDateTime dateTime() const;
    void setDateTime(const QDateTime& dateTime);
    /// A frozen clock stands still, and later continues from that time.
    void setFrozen(bool frozen);
    bool isFrozen() const { return m_frozen; }

    /// Bit i set while output i is on.
    quint8 outputs() const;
    bool isManual() const { return m_manual; }
    /// Manual mode begins with the outputs that were commanded during automatic mode, otherwise
    /// with the current ones. In automatic mode the outputs follow the programme.
    void setManual(bool manual);
    /// Bit i switches output i off if set, on if clear. In automatic mode the command takes effect
    /// when manual mode begins.
    void commandOutputs(quint8 offMask);
    /// Changes outputs and inputs every few seconds while nothing rings.
    void setDemonstration(bool moving) { m_demonstration = moving; }

    quint8 inputs() const;
    void setInputs(quint8 inputs) { m_inputs = inputs; }
    /// The flags of the status block. Bit 2 is always set in manual mode and clear in automatic
    /// mode.
    quint8 flags() const;
    void setFlags(quint8 flags) { m_flags = flags; }
    void setDeviceType(quint8 type) { m_deviceType = type; }

    ClockProgramme& programme() { return m_programme; }
    const ClockProgramme& programme() const { return m_programme; }
    /// Erases the programme and ends manual mode, as after new firmware.
    void erase();

    /// Replaces byte `index` of the status block by a fixed value until releaseBytes.
    void holdByte(int index, quint8 value) { m_heldBytes[index] = value; }
    void releaseBytes() { m_heldBytes.clear(); }

    static constexpr quint8 familyType = 11;
    static constexpr qsizetype statusSize = 220;
    static constexpr qsizetype otherTypeSize = 5;
    /// The body of the general-data answer: 220 bytes, or 5 for a device type of another family.
    QByteArray statusBlock() const;

private:
    Model m_model;
    Now m_now;
    qint64 m_offset = 0; ///< milliseconds that this clock is ahead
    bool m_frozen = false;
    QDateTime m_frozenAt;
    bool m_manual = false;
    quint8 m_manualOutputs = 0;
    std::optional<quint8> m_waitingOutputs;
    bool m_demonstration = false;
    quint8 m_inputs = 0x98;
    quint8 m_flags = 0;
    quint8 m_deviceType = familyType;
    ClockProgramme m_programme;
    QMap<int, quint8> m_heldBytes;
};

} // namespace simulator
