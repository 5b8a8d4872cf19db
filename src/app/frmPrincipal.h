#pragma once

#include <QMainWindow>
#include <QPointer>

#include <functional>

class ConnectionWorkflow;
class Dialogs;
class MdiForm;
class ModelWindows;
class QAction;
class QLabel;
class QMdiArea;
class QMenu;
class Session;
class frmRexistroEstado;
struct modGlobais;

/// The main window: the menus, the status bar, and the area in which the other windows open. The
/// connection itself is the ConnectionWorkflow's.
class frmPrincipal : public QMainWindow {
    Q_OBJECT
public:
    /// What the main window opens but does not know how to make.
    struct Windows {
        frmRexistroEstado& log;
        ModelWindows& models;
        std::function<void()> showSettings;
        std::function<void()> showAbout;
    };

    /// Takes over `area`. What it shows is right once the session has started.
    frmPrincipal(QMdiArea* area, Session& session, const Windows& windows, Dialogs& dialogs);

    /// Status-bar panel 3: the port in use, and about it as a tool tip.
    void VisualizaPorto(const QString& text, const QString& toolTip);

    /// Whether the program may end: the operator is asked where the clock is in remote-control
    /// mode, then each open window.
    bool queryUnload();
    /// Ends the program without asking, as when the system says so: closes the connection and every
    /// window, and emits `unloaded`. A second call does nothing.
    void unload();

signals:
    void unloaded();

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void colourArea();
    void resizeToScreen();
    void makeCommunicationsMenu();
    void makeDeviceMenu();
    void makeHelpMenu();
    void makeStatusBar();
    QMenu* addMenu(const QString& name, const QString& caption);
    static QAction* addEntry(QMenu* menu, const QString& name, const QString& caption);
    static QAction* addSeparator(QMenu* menu, const QString& name);
    void Desconectar();
    /// Whether the operator agrees to leave the clock as it is: asks only when it is in
    /// remote-control mode.
    bool ConfirmExit();
    QLabel* addPanel(const QString& name, const QString& description, int stretch);

    /// Each may go while another is asked.
    QList<QPointer<MdiForm>> openForms() const;
    void unlockClockCommands(bool unlocked);
    void ShowConnectionStatus(bool connected);

    QMdiArea* m_area;
    ConnectionWorkflow& m_workflow;
    const modGlobais& m_globais;
    Windows m_windows;
    Dialogs& m_dialogs;
    bool m_asking = false;
    bool m_unloaded = false;

    QAction* mnuConectar = nullptr;
    QAction* mnuDesconectar = nullptr;
    QAction* mnuUsarModem = nullptr;
    QAction* mnuConfiguracion = nullptr;
    QAction* mnuInformacion = nullptr;
    QAction* mnuSincronizacionReloxo = nullptr;
    QAction* mnuTelemando = nullptr;
    QAction* mnuSeparadorAux = nullptr;
    QAction* mnuSeparadorProgramacion = nullptr;
    QAction* mnuProgramacion = nullptr;
    QAction* mnuSeparadorFirmware = nullptr;
    QAction* mnuFirmware = nullptr;
    QLabel* m_connectionPanel = nullptr;
    QLabel* m_modelPanel = nullptr;
    QLabel* m_portPanel = nullptr;
};
