#pragma once

#include <QDialog>

class CommSettings;
class Dialogs;
class MessageLink;
class MiniTerminal;
class ModemControl;
class ModemPage;
class PortNames;
class PortsPage;
class QPushButton;
class QTabWidget;
class Registry;

/// The communications form, "Configuración de Comunicaciones". It is there from the start of the
/// program, but its controls are made when it is first shown. Shown with `open`, hidden by Aceptar
/// and Cancelar.
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
    void setVisible(bool visible) override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void makeControls();
    QWidget* makeButtons();
    void ShowSettings();
    void applyModemLine();
    void EnableModemControls(bool enabled);

    MessageLink& m_link;
    ModemControl& m_modem;
    CommSettings& m_settings;
    Registry& m_registry;
    const PortNames& m_names;
    Dialogs& m_dialogs;
    /// There from the start, to keep what is written before it can be seen.
    MiniTerminal* txtRexistro;
    bool m_isModemFree = true;
    /// While `accept` applies the settings, which may open a port and let events run.
    bool m_isApplying = false;

    /// Null until the dialog is first shown.
    QTabWidget* tabOpcions = nullptr;
    PortsPage* m_portsPage = nullptr;
    ModemPage* m_modemPage = nullptr;
    QPushButton* cmdCambiar = nullptr;
    QPushButton* cmdCancelar = nullptr;
};
