#pragma once

#include <QObject>
#include <QString>

#include <optional>

class CommSettings;
class SerialPort;

/// The two ports of the link, for the cable and for the modem: which of them is in use, its opening
/// and closing, and what the status bar shows of it. Starts with the cable's, and both closed. The
/// settings are read at the moment of use.
class LinkPorts : public QObject {
    Q_OBJECT
public:
    LinkPorts(SerialPort& commSerie, SerialPort& commModem, const CommSettings& settings,
              QObject* parent = nullptr);

    const SerialPort& direct() const { return m_commSerie; }
    const SerialPort& modem() const { return m_commModem; }
    SerialPort& inUse() const { return m_throughModem ? m_commModem : m_commSerie; }
    bool isModemInUse() const { return m_throughModem; }

    /// Whether a port waits for its far end; see SerialPort.
    bool isOpening() const;

    /// For a connection: closes the port that it does not use, opens the other unless it is open,
    /// and forgets a borrowing. Whether the port in use is open.
    bool open(bool throughModem);
    /// Both. The modem hangs up.
    void close();
    /// Puts the settings into both; reopens the one in use if either was open.
    void ApplySettings();

    /// Opens the modem's port unless it is open, and makes it the one in use; whether it is open.
    bool borrowModem();
    /// The port in use is that from before borrowModem. Opens and closes nothing.
    void giveModemBack();

    /// The status bar shows no port; why it could not be opened, or that it was lost, stays
    /// readable until the next opening.
    void showNone() { emit VisualizaPorto(QString(), m_failure); }

signals:
    /// `isOpening` has changed.
    void openingChanged();
    /// The port in use ("COM1,9600,N,8,1", empty for none) and, as a tool tip, its device, or why
    /// it could not be opened or was lost.
    void VisualizaPorto(const QString& text, const QString& toolTip);

private:
    void openInUse();
    void show(const QString& toolTip);
    void closeModem();
    void portLost(SerialPort& port);

    SerialPort& m_commSerie;
    SerialPort& m_commModem;
    const CommSettings& m_settings;
    bool m_throughModem = false;
    /// Why the port in use is not open; empty when it was closed in order.
    QString m_failure;
    /// The choice as it was before the modem's port was borrowed.
    std::optional<bool> m_savedThroughModem;
};
