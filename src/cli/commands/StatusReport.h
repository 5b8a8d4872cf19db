#pragma once

#include "ClockDisplay.h"
#include "StatusBlock.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>
#include <QString>

#include <optional>

/// What `status` tells of a status block that has come when the computer said `moment`. Outputs are
/// in the order of the windows: "Avisos 1" is the first.
class StatusReport {
public:
    StatusReport(const QByteArray& generalData, const QDateTime& moment);

    /// The keys model, deviceType, time, secondsAhead, flags, outputs, and inputs of the HCT-7200.
    /// For a time that does not exist time and secondsAhead are null, and rawTime has the seven
    /// bytes: seconds, minutes, hours, day of the week, day, month, year.
    QJsonObject json() const;
    /// A line for each thing.
    QString text() const;
    /// Everything in one line.
    QString line() const;

    bool isManual() const { return m_block.isRemoteControlled(); }
    /// By the number in "Avisos 1" to "Avisos 3".
    bool isOutputOn(int number) const;
    QJsonArray outputs() const;
    /// "automático" or "manual".
    QString modeText() const;
    /// "Avisos 1 apagado, Avisos 2 encendido…".
    QString outputsText() const;

private:
    bool hasInputs() const { return m_block.model() == ClockModel::Hct7200; }
    QString modelText() const;
    QString timeText() const;

    StatusBlock m_block;
    ClockDisplay m_display;
    std::optional<qint64> m_secondsAhead;
};
