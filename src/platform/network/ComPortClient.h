#pragma once

#include "LineSettings.h"
#include "TelnetOptions.h"
#include "TelnetReader.h"

#include <QByteArray>
#include <QString>

/// Our end of a telnet connection to a serial port at the far end (RFC 2217), without the
/// connection: what is received goes in, data and what must be answered come out. First the options
/// are negotiated, then the line is set and the answers compared; then data may be sent.
///
/// Answers to DTR and RTS are not awaited: a far end whose line has none gives none.
class ComPortClient {
public:
    enum class Step {
        /// The far end has not said yet whether it has the option.
        Options,
        /// It has not answered all settings of the line.
        Settings,
        Ready,
        Refused
    };

    ComPortClient(const LineSettings& settings, bool dtr, bool rts);

    /// What is sent first.
    static QByteArray requests() { return TelnetOptions::requests(); }
    /// Takes what has arrived. Appends its data to `data` and what must be sent to `answers`.
    void take(QByteArrayView bytes, QByteArray& data, QByteArray& answers);

    Step step() const { return m_step; }
    /// What the far end does not take, in Spanish, such as "no admite RFC 2217"; empty before.
    const QString& refusal() const { return m_refusal; }
    /// Whether the far end wants no data for now.
    bool isSuspended() const { return m_suspended; }

private:
    void takeOption(const TelnetReader::Command& command, QByteArray& answers);
    void takeComPort(const QByteArray& value);
    void takeSetting(quint8 code, const QByteArray& value);
    void refuse(const QString& what);

    const LineSettings m_settings;
    const bool m_dtr;
    const bool m_rts;
    TelnetReader m_reader;
    TelnetOptions m_options;
    Step m_step = Step::Options;
    /// A bit for each setting of the line that the far end has confirmed.
    unsigned m_confirmed = 0;
    QString m_refusal;
    bool m_suspended = false;
};
