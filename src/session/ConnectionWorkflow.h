#pragma once

#include "CronoRegistration.h"
#include "DeferredProcess.h"
#include "Exchange.h"

#include <QObject>

#include <optional>

class MessageLink;
class StatusLog;
struct modGlobais;

/// The step of the connection. Identifying: identification requests are sent. Connected: the clock
/// has accepted one, and its general data is polled. Closing: a closing identification is sent.
enum class ConnectionState : qint32 {
    Disconnected = 0,
    Identifying = 1,
    Connected = 2,
    Closing = 3,
};

/// Connects to a clock, polls its general data every 10 ticks, and ends the connection. Signals
/// tell windows what to show or close, in the order of the steps. Four failed answers in a row end
/// the connection while identifying; while connected they lead back to identifying.
class ConnectionWorkflow : public QObject, public DeferredProcess {
    Q_OBJECT
public:
    ConnectionWorkflow(frmCrono& crono, MessageLink& link, modGlobais& globais, StatusLog& log);

    /// Call once, after the signals are connected: brings everything into the state without a
    /// connection, and registers with the timer service.
    void load();

    /// Opens the link and begins to identify. Through a modem it returns when the call is up or has
    /// failed, and lets events run meanwhile; a second call then does nothing.
    void Conectar(bool throughModem);
    /// Ends the connection, if there is one.
    void Desconectar();
    /// Whether the clock is in remote-control mode. If so, ask the operator before ending the
    /// connection.
    bool exitNeedsConsent() const;
    /// The program is about to end: ends the connection and stops the timer service for good.
    void unload();

    void ProcesoDiferido() override;

    /// Sends the identification request: the identification byte of the settings to open the
    /// connection, its complement to close it.
    void identificacion(bool open);
    void SendGeneralDataRequest();
    void mntIdentificacion_Recibido(quint8 code, const QByteArray& body, LinkStatus status);
    void mntDatosXerais_Recibido(quint8 code, const QByteArray& body, LinkStatus status);

    /// Sends a closing identification at the next call; its answer, good or bad, ends the
    /// connection. Not used by the main window: Desconectar ends the link directly.
    void requestClosing();
    /// Stops the timer service, closes the link, and emits what locks menus and closes windows.
    void ConnectionEnded();

    ConnectionState state() const { return m_state; }
    /// Consecutive failed answers in the current state.
    qint16 FailedAttempts() const { return m_failedAttempts; }
    /// Whether general data has been received in this connection.
    bool Established() const { return m_established; }
    qint16 ClientId() const { return m_registration ? m_registration->id() : qint16(0); }

signals:
    /// General data has come and is in modGlobais::GeneralData.
    void generalDataReceived();
    /// An identification was not answered, or not accepted (LinkStatus::WrongAnswer).
    void identificationFailed(LinkStatus status);
    /// A request for general data was not answered, or refused (LinkStatus::Refused), or its answer
    /// is not one (LinkStatus::WrongAnswer).
    void generalDataFailed(LinkStatus status);
    /// From now on the commands that need a clock are enabled, and that of the settings is not.
    void clockCommandsUnlocked();
    /// The opposite.
    void clockCommandsLocked();
    /// The windows that show the clock must close: the connection has ended.
    void clockWindowsOutdated();
    void connectionStatusChanged(bool connected);

private:
    bool isGoodIdentification(quint8 code, const QByteArray& body) const;
    LinkStatus checkedGeneralData(const QByteArray& body);
    void takeGeneralData(const QByteArray& body);
    void ConnectionEstablished();
    void end(const QString& lastWords);

    frmCrono& m_crono;
    MessageLink& m_link;
    modGlobais& m_globais;
    StatusLog& m_log;

    std::optional<CronoRegistration> m_registration;
    Exchange mntIdentificacion;
    Exchange mntDatosXerais;
    ConnectionState m_state = ConnectionState::Disconnected;
    qint16 m_failedAttempts = 0;
    bool m_established = false;
};
