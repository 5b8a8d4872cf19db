#pragma once

#include <QWidget>

class MiniTerminal;
class ModemControl;
class QGroupBox;
class QPushButton;

/// The tab "Operación de módem": SIM codes, signal level, command scripts and the mini terminal.
class ModemPage : public QWidget {
    Q_OBJECT
public:
    /// Takes over `terminal`.
    ModemPage(ModemControl& modem, MiniTerminal& terminal, QWidget* parent = nullptr);

    /// While a command runs no other can be started. Afterwards the button pressed has the focus
    /// again, unless the operator has moved it.
    void EnableModemControls(bool enabled);
    /// The tab's caption and the button of the scripts have the same access key; while the tab is
    /// in front the key is the button's.
    void shareAccessKey(QWidget& tabBar);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QGroupBox* makeTerminalFrame(MiniTerminal& terminal);
    void askForPin();

    ModemControl& m_modem;
    QPushButton* cmdComprobarPIN;
    QPushButton* cmdEnviarPIN;
    QPushButton* cmdNivelSinal;
    QPushButton* cmdExecutarScript;
    QPushButton* cmdBorrarTerminal;
    /// The button that had the focus when the running command began, and what has it since.
    QPushButton* m_pressed = nullptr;
    QWidget* m_focusMeanwhile = nullptr;
};
