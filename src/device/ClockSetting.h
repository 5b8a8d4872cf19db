#pragma once

#include "ClockOfDay.h"
#include "DeferredProcess.h"
#include "Exchange.h"
#include "StatusBlock.h"
#include "StatusLog.h"

#include <QObject>

class MessageLink;

/// A date and a time as numbers; the year in full.
struct ClockFields {
    int day = 1;
    int month = 1;
    int year = 2000;
    int hours = 0;
    int minutes = 0;
    int seconds = 0;

    /// As the clock last told them: any byte values, with the year made full.
    static ClockFields fromBlock(const StatusBlock& block);
    bool operator==(const ClockFields&) const = default;
};

/// Sets the clock's date and time, to given values or to those of the computer. A failed answer is
/// asked for again on the next call of ProcesoDiferido; the third failure ends it.
class ClockSetting : public QObject, public DeferredProcess {
    Q_OBJECT
public:
    enum class State { Idle = 0, Manual = 1, Automatic = 2 };

    static constexpr int mostAttempts = 3;

    ClockSetting(MessageLink& link, StatusLog& log, const ClockOfDay& clock);

    /// False for 31 in a month of 30 days or fewer, 30 February, and 29 February outside a leap
    /// year. Expects day 1 to 31 and month 1 to 12.
    static bool isValidDate(int day, int month, int year);
    /// 0x01, seconds, minutes, hours, day, month, year modulo 100, in plain binary.
    static QByteArray message(const ClockFields& fields);

    /// What State::Manual sends, read at the moment of sending.
    void setFields(const ClockFields& fields) { m_fields = fields; }

    /// Starts anew with no failure counted.
    void begin(State source);
    /// Nothing more is sent, and an answer under way reaches nobody.
    void stop();
    State SyncState() const { return m_state; }
    int FailedAttempts() const { return m_failedAttempts; }

    void ProcesoDiferido() override;

signals:
    void accepted();
    /// Logged once every receiver has returned, so after what a receiver tells the operator.
    void gaveUp();

private:
    void send(const ClockFields& fields);
    void mntSincronismo_Recibido(quint8 code, const QByteArray& body, LinkStatus status);
    void giveUp();

    MessageLink& m_link;
    StatusLog& m_log;
    const ClockOfDay& m_clock;
    Exchange mntSincronismo;
    ClockFields m_fields;
    State m_state = State::Idle;
    qint16 m_failedAttempts = 0;
};
