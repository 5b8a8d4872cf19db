#pragma once

#include "ClockOfDay.h"
#include "DeferredProcess.h"
#include "Exchange.h"
#include "StatusBlock.h"
#include "StatusLog.h"

#include <QObject>

class MessageLink;

/// A date and a time as numbers. The year has four digits.
struct ClockFields {
    int day = 1;
    int month = 1;
    int year = 2000;
    int hours = 0;
    int minutes = 0;
    int seconds = 0;

    /// The clock's values in a status block, unchecked: each may be 0 to 255. The year is made
    /// full, see modUtilidades::fullYear.
    static ClockFields fromBlock(const StatusBlock& block);
    bool operator==(const ClockFields&) const = default;
};

/// Sets the clock's date and time, to given values (Manual) or to those of the computer
/// (Automatic). After a failed answer the next call of ProcesoDiferido sends again; the third
/// failure ends it.
class ClockSetting : public QObject, public DeferredProcess {
    Q_OBJECT
public:
    enum class State { Idle = 0, Manual = 1, Automatic = 2 };

    static constexpr int mostAttempts = 3;

    ClockSetting(MessageLink& link, StatusLog& log, const ClockOfDay& clock);

    /// False for day 31 in a shorter month, for 30 February, and for 29 February outside a leap
    /// year (by the clock's own rule). `day` must be 1 to 31, `month` 1 to 12.
    static bool isValidDate(int day, int month, int year);
    /// The 7 bytes of the request: 0x01, seconds, minutes, hours, day, month, year modulo 100;
    /// plain binary.
    static QByteArray message(const ClockFields& fields);

    /// The values that Manual sends. They are read when the request is sent.
    void setFields(const ClockFields& fields) { m_fields = fields; }

    /// Begins to send at the next call of ProcesoDiferido, with no failure counted.
    void begin(State source);
    /// Sends nothing more and ignores an answer that is still to come.
    void stop();
    State SyncState() const { return m_state; }
    int FailedAttempts() const { return m_failedAttempts; }

    void ProcesoDiferido() override;

signals:
    void accepted();
    /// Three attempts have failed, the last with `status`. The line in the log is written after all
    /// receivers have returned, so after a box that they open.
    void gaveUp(LinkStatus status);

private:
    void send(const ClockFields& fields);
    void mntSincronismo_Recibido(quint8 code, const QByteArray& body, LinkStatus status);
    void giveUp(LinkStatus status);

    MessageLink& m_link;
    StatusLog& m_log;
    const ClockOfDay& m_clock;
    Exchange mntSincronismo;
    ClockFields m_fields;
    State m_state = State::Idle;
    qint16 m_failedAttempts = 0;
};
