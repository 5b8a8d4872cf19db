#pragma once

#include "CronoRegistration.h"
#include "DeferredProcess.h"
#include "Exchange.h"

#include <QObject>

#include <optional>

class MessageLink;
class StatusLog;
struct modGlobais;

/// Identifying: the clock is asked who it is. Connected: it was told, and its general data is
/// polled. Closing: the answer to a closing identification is awaited.
enum class ConnectionState : qint32 {
    Disconnected = 0,
    Identifying = 1,
    Connected = 2,
    Closing = 3,
};

/// Connecting to a clock, keeping its general data fresh, and ending the connection. What a window
/// has to show or close at each step it learns by signal, in the order of the steps.
class ConnectionWorkflow : public QObject, public DeferredProcess {
    Q_OBJECT
public:
    ConnectionWorkflow(frmCrono& crono, MessageLink& link, modGlobais& globais, StatusLog& log);

    /// Once, when whoever shows the connection listens: brings everything into the state after a
    /// connection, and registers with the timer service.
    void load();

    /// Opens the link and begins to identify. Through a modem it lets events run until the call is
    /// up or has failed; a second call meanwhile does nothing.
    void Conectar(bool throughModem);
    /// Ends the connection, unless it has ended by itself.
    void Desconectar();
    /// Whether the clock would be left in remote-control mode: who ends the connection by hand asks
    /// the operator first.
    bool exitNeedsConsent() const;
    /// The beginning of the program's end: no connection and no tick from now on.
    void unload();

    void ProcesoDiferido() override;

    /// Sends the identification request: the identification byte of the settings to open the
    /// connection, its complement to close it.
    void identificacion(bool open);
    void SendGeneralDataRequest();
    void mntIdentificacion_Recibido(quint8 code, const QByteArray& body, LinkStatus status);
    void mntDatosXerais_Recibido(quint8 code, const QByteArray& body, LinkStatus status);

    /// Takes leave by a closing identification, whose answer, good or bad, ends the connection. No
    /// command of the main window does so: Desconectar ends the link directly.
    void requestClosing();
    /// Ends the connection, its windows and its menus.
    void ConnectionEnded();

    ConnectionState state() const { return m_state; }
    /// Consecutive failed answers in the current state.
    qint16 FailedAttempts() const { return m_failedAttempts; }
    /// The first general data of this connection has come.
    bool Established() const { return m_established; }
    qint16 ClientId() const { return m_registration ? m_registration->id() : qint16(0); }

signals:
    /// The commands that need a clock are there from now on, those of the settings are not.
    void clockCommandsUnlocked();
    void clockCommandsLocked();
    /// The windows that show the clock of this connection have lost it.
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
