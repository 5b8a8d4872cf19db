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

/// The main window: menus, status bar, and the area for the other windows. It shows the state of
/// the connection, which ConnectionWorkflow manages.
class frmPrincipal : public QMainWindow {
    Q_OBJECT
public:
    /// The windows that the main window opens but does not make.
    struct Windows {
        frmRexistroEstado& log;
        ModelWindows& models;
        std::function<void()> showSettings;
        std::function<void()> showAbout;
    };

    /// Becomes the owner of `area`. What it shows is valid after Session::start.
    frmPrincipal(QMdiArea* area, Session& session, const Windows& windows, Dialogs& dialogs);

    /// Shows the port in use in the third panel of the status bar, with details as its tool tip.
    void VisualizaPorto(const QString& text, const QString& toolTip);

    /// Whether the program may end. Asks the operator if the clock is in remote-control mode, then
    /// asks each open window.
    bool queryUnload();
    /// Closes the connection and every window without asking, and emits `unloaded`. A second call
    /// does nothing.
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
    /// Whether the operator agrees to leave the clock as it is. Asks only if it is in
    /// remote-control mode.
    bool ConfirmExit();
    QLabel* addPanel(const QString& name, const QString& description, int stretch);

    /// Each may be deleted while another is asked.
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
