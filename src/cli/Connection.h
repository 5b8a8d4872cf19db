#pragma once

#include "ExitStatus.h"
#include "ModemCall.h"
#include "Session.h"

#include <QObject>
#include <QTimer>

#include <chrono>

/// Reaches a clock of this family within a time, and tells when it is lost. By cable it tries again
/// while nobody answers; a number is dialled once.
class Connection : public QObject {
    Q_OBJECT
public:
    /// Starts the session. An empty `number` means the cable.
    Connection(Session& session, const QString& number, std::chrono::seconds patience);

    /// By modem it lets events run until the call is up or has failed.
    void open();

signals:
    /// The clock has sent its general data.
    void established();
    /// The first attempt has failed, and others follow. `port` is the device.
    void unanswered(const QString& port);
    /// The end, with its reason in Spanish. Nothing follows. Emitted in the event loop.
    void failed(ExitStatus status, const QString& reason);

private:
    void attempt();
    void attemptEnded();
    void generalDataReceived();
    void patienceEnded();
    void portLost(const SerialPort& port);
    /// Why the clock could not be reached, by its last answer.
    void failUnreached();
    void fail(ExitStatus status, const QString& reason);
    QString device() const;

    Session& m_session;
    const bool m_throughModem;
    ModemCall m_call;
    QTimer m_patience;
    LinkStatus m_lastIdentification = LinkStatus::TimeOut;
    LinkStatus m_lastGeneralData = LinkStatus::TimeOut;
    bool m_unanswered = false;
    bool m_established = false;
    bool m_over = false;
};
