#pragma once

#include "LinkState.h"

#include <QByteArray>
#include <QObject>
#include <QString>

class CommSettings;
class Exchange;
class IntervalTimer;
class Pause;
class SerialPort;

/// Carries one request and its one answer between the program and a clock, over the direct port or
/// over the modem's once a call is up. Half duplex, no retries: those are the callers'.
///
/// Two ports and one timer, handed in; the settings are read at the moment of use.
class MessageLink : public QObject {
    Q_OBJECT
public:
    MessageLink(SerialPort& commSerie, SerialPort& commModem, IntervalTimer& tmrTemporizador,
                Pause& pause, const CommSettings& settings, QObject* parent = nullptr);
    ~MessageLink() override;

    /// Sends a request; the answer comes to the bound exchange, within this call with status 11 when
    /// the port is closed. `body` is cut to 509 bytes. `timeout` in milliseconds; 0 is replaced by
    /// the time that the line's speed asks for.
    void Envia(quint8 code, QByteArray& body, qint32& timeout);
    /// From the sending of a request until its answer is delivered, its time is out or the
    /// connection has ended.
    bool Ocupado() const { return m_busy; }

    /// Station address and identification number of the settings; a text that is no number from 0
    /// to 255 counts as 0.
    quint8 estacion() const;
    quint8 identificacion() const;

    /// Opens the port, and with `throughModem` dials: it lets events run until that has ended.
    void ArrancaConexion(bool throughModem);
    /// Ends the connection: both ports closed, nothing awaited, no exchange bound.
    void RemataConexion();

    LinkState state() const { return m_state; }

signals:
    /// The port in use ("COM1,9600,N,8,1", empty for none) and, as a tool tip, its device or why it
    /// could not be opened.
    void VisualizaPorto(const QString& text, const QString& toolTip);

private:
    friend class Exchange;

    Exchange* m_bound = nullptr;
    LinkState m_state = LinkState::Idle;
    bool m_busy = false;
};
