#pragma once

#include <QDialog>

class CommSettings;
class Dialogs;
class MessageLink;
class ModemControl;
class ModemPage;
class PortNames;
class PortsPage;
class QPushButton;
class QTabWidget;
class Registry;

/// The communications form, "Configuración de Comunicaciones". It is there from the start of the
/// program: its construction reads the settings and puts them into the ports. Shown with `open`,
/// hidden by Aceptar and Cancelar.
class frmPortoSerie : public QDialog {
    Q_OBJECT
public:
    frmPortoSerie(MessageLink& link, ModemControl& modem, CommSettings& settings,
                  Registry& registry, const PortNames& names, Dialogs& dialogs,
                  QWidget* parent = nullptr);

    /// Aceptar: takes what is selected and typed, applies and saves it.
    void accept() override;
    /// Cancelar, the title bar and Esc: ends any connection and goes back to the saved settings.
    void reject() override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void ShowSettings();
    void applyModemLine();
    void EnableModemControls(bool enabled);

    MessageLink& m_link;
    CommSettings& m_settings;
    Registry& m_registry;
    Dialogs& m_dialogs;
    QTabWidget* tabOpcions;
    PortsPage* m_portsPage;
    ModemPage* m_modemPage;
    QPushButton* cmdCambiar;
    QPushButton* cmdCancelar;
};
