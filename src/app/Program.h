#pragma once

#include "CommSettings.h"
#include "modGlobais.h"

#include <functional>
#include <memory>

class ClockOfDay;
class ConnectionWorkflow;
class Dialogs;
class IntervalTimer;
class MessageLink;
class ModelWindows;
class ModemControl;
class Pause;
class PortNames;
class QMdiArea;
class QWidget;
class Registry;
class SerialPort;
class frmCrono;
class frmPortoSerie;
class frmPrincipal;
class frmRexistroEstado;

/// What the program meets of the outside world. Tests put their own in its place.
struct Outside {
    Registry& registry;
    const PortNames& portNames;
    SerialPort& commSerie;
    SerialPort& commModem;
    IntervalTimer& tmrCrono;
    IntervalTimer& tmrTemporizador;
    Pause& pause;
    Dialogs& dialogs;
    const ClockOfDay& clock;
    /// Ends in the system's separator.
    QString applicationDirectory;
    /// Runs a program in a normal window and says whether it could.
    std::function<bool(const QString& program)> startProgram;
};

/// The whole program but its event loop: the shared state and the four resident forms, loaded in
/// their order and not shown.
class Program {
public:
    explicit Program(const Outside& outside);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Lets the timer service tick every millisecond, and shows the main window.
    void start();

    modGlobais& globais() { return m_globais; }
    CommSettings& settings() { return m_settings; }
    frmCrono& crono() { return *m_crono; }
    MessageLink& link() { return *m_link; }
    ConnectionWorkflow& workflow() { return *m_workflow; }
    frmRexistroEstado& log() { return *m_log; }
    frmPortoSerie& communications() { return *m_communications; }
    frmPrincipal& mainWindow() { return *m_mainWindow; }

private:
    void makeCommunications();
    void makeModelWindows();
    void makeMainWindow();
    void openAbout();

    Outside m_outside;
    modGlobais m_globais;
    CommSettings m_settings;
    std::unique_ptr<MessageLink> m_link;
    std::unique_ptr<ModemControl> m_modem;
    std::unique_ptr<frmCrono> m_crono;
    std::unique_ptr<ConnectionWorkflow> m_workflow;
    std::unique_ptr<ModelWindows> m_models;
    std::unique_ptr<frmPrincipal> m_mainWindow;
    /// These belong to the main window.
    QMdiArea* m_area;
    frmRexistroEstado* m_log;
    frmPortoSerie* m_communications;
};
