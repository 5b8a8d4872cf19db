#pragma once

#include <QObject>
#include <QPointer>

#include <functional>

class MdiForm;
class QDialog;
struct modGlobais;

/// Opens the windows of the model that is connected, and knows which are open. A window that is
/// open is brought to the front instead of being opened again.
class ModelWindows : public QObject {
    Q_OBJECT
public:
    using FormFactory = std::function<MdiForm*()>;
    using DialogFactory = std::function<QDialog*()>;

    /// Functions that make each window. An empty one opens nothing.
    struct Factories {
        FormFactory frmInfoHCT7200;
        FormFactory frmInfoHCT7300;
        FormFactory frmTelemandoHCT7200;
        FormFactory frmTelemandoHCT7300;
        FormFactory frmSincronizacionReloxo;
        FormFactory frmProgramPROM;
        DialogFactory frmProgHCT7200;
        DialogFactory frmProgHCT7300;
    };

    ModelWindows(const modGlobais& globais, Factories factories);

    // At each call byte 12 of the general data decides which model's window opens.
    void openInformation();
    void openRemoteControl();
    void openProgramming();
    void openSynchronisation();
    void openFirmware();

    /// Closes the windows that need a connection: information and remote control of both models,
    /// and synchronisation.
    void closeClockWindows();

private:
    struct Form {
        FormFactory make;
        QPointer<MdiForm> open;
    };
    struct Dialog {
        DialogFactory make;
        QPointer<QDialog> open;
    };
    struct ModelForms {
        Form hct7200;
        Form hct7300;
    };

    bool isHct7200() const;
    void show(Form& form);
    static void show(Dialog& dialog);
    static void close(Form& form);

    const modGlobais& m_globais;
    ModelForms m_information;
    ModelForms m_remoteControl;
    Dialog m_programmingHct7200;
    Dialog m_programmingHct7300;
    Form m_synchronisation;
    Form m_firmware;
};
