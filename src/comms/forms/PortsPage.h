#pragma once

#include <QWidget>

class CommSettings;
class MessageLink;
class PortNames;
class QComboBox;
class QGroupBox;
class QLineEdit;

/// The tab "Puertos de comunicación": the twelve settings as lists and text boxes.
class PortsPage : public QWidget {
    Q_OBJECT
public:
    PortsPage(const MessageLink& link, const PortNames& names, QWidget* parent = nullptr);

    /// Selects the list entries and fills the boxes. A direct channel outside the list becomes "0"
    /// in `settings` too; a text that a list does not hold selects nothing.
    void showSettings(CommSettings& settings);
    /// What is selected and typed. A list in which nothing is selected leaves its setting alone.
    void storeInto(CommSettings& settings) const;
    /// The modem's channel and speed alone.
    void storeModemLineInto(CommSettings& settings) const;
    /// The device of each channel as its tool tip, or why it could not be opened.
    void showDevices();

signals:
    /// The operator has chosen another channel or speed for the modem.
    void modemLineChosen();

private:
    QGroupBox* makeDirectFrame();
    QGroupBox* makeModemFrame();
    QGroupBox* makeInitialisationFrame();
    QGroupBox* makeDeviceFrame();

    const MessageLink& m_link;
    const PortNames& m_names;
    QComboBox* cbbCanal;
    QComboBox* cbbVelocidade;
    QComboBox* cbbParidade;
    QComboBox* cbbBits;
    QComboBox* cbbParo;
    QComboBox* cbbDTR;
    QComboBox* cbbRTS;
    QComboBox* cbbCanal2;
    QComboBox* cbbVelocidade2;
    QLineEdit* txtInicializacion;
    QLineEdit* txtEstacion;
    QLineEdit* txtIdentificacion;
};
