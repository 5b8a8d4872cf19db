#pragma once

#include "ClockProgramme.h"

#include <QMap>

#include <functional>
#include <optional>

namespace simulator {

/// The state of one clock: its running date and time, outputs, inputs, flags, mode and programme.
class SimulatedClock {
public:
    /// Gives the moment by which the clock runs; its time zone is of no matter.
    using Now = std::function<QDateTime()>;

    /// The computer's local date and time, free of the jumps of summer time.
    static QDateTime computerTime();

    explicit SimulatedClock(Model model, Now now = &SimulatedClock::computerTime);

    Model model() const { return m_model; }
    QDateTime dateTime() const;
    void setDateTime(const QDateTime& dateTime);
    /// A frozen clock shows the same moment until it runs again, from that moment on.
    void setFrozen(bool frozen);
    bool isFrozen() const { return m_frozen; }

    /// Bit i set while output i is on.
    quint8 outputs() const;
    bool isManual() const { return m_manual; }
    /// Manual operation begins with the outputs last commanded in automatic mode or else as they
    /// are; automatic operation gives them back to the programme.
    void setManual(bool manual);
    /// Bit i set switches output i off. In automatic mode it waits for manual operation.
    void commandOutputs(quint8 offMask);
    /// Lets outputs and inputs change every few seconds while nothing rings.
    void setDemonstration(bool moving) { m_demonstration = moving; }

    quint8 inputs() const;
    void setInputs(quint8 inputs) { m_inputs = inputs; }
    /// The flags of the status block; bit 2 always tells manual operation.
    quint8 flags() const;
    void setFlags(quint8 flags) { m_flags = flags; }
    void setDeviceType(quint8 type) { m_deviceType = type; }

    ClockProgramme& programme() { return m_programme; }
    const ClockProgramme& programme() const { return m_programme; }
    /// Forgets programme and manual operation, as a clock does after new firmware.
    void erase();

    /// Puts a value of its own over a byte of the status block, for good or until it is released.
    void holdByte(int index, quint8 value) { m_heldBytes[index] = value; }
    void releaseBytes() { m_heldBytes.clear(); }

    static constexpr quint8 familyType = 11;
    static constexpr qsizetype statusSize = 220;
    static constexpr qsizetype otherTypeSize = 5;
    /// The body of the general-data answer: 220 bytes; 5 with a device type of another family.
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
