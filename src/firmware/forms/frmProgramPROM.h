#pragma once

#include "FirmwareTransfer.h"
#include "HexFile.h"
#include "MdiForm.h"

class Dialogs;
class QCheckBox;
class QGroupBox;
class QLayout;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class StatusLog;
class ValueLabel;
class frmCrono;

/// The firmware update: reads an image from an Intel HEX file and sends it to the clock. Closing
/// the window only hides it, and the image stays loaded; during a transfer it asks first.
class frmProgramPROM : public MdiForm {
    Q_OBJECT
public:
    frmProgramPROM(QMdiArea& area, frmCrono& crono, MessageLink& link, StatusLog& log,
                   Dialogs& dialogs);

protected:
    bool queryUnload(CloseReason reason) override;
    void unload() override;

private:
    void cmdAbrir_Click();
    void cmdEnviar_Click();
    void showProgress(qint16 index, qint32 lastAddress);
    void clearProgress();
    void showLoadedFile(const QString& path);
    void showFinished();
    void showFailed();
    void showSending(bool sending);
    void appendNote(const QString& text);

    void connectControls();
    QLayout* makeFileRow();
    QGroupBox* makeTransferFrame();
    void makeLog();

    StatusLog& m_log;
    Dialogs& m_dialogs;
    HexFile m_file;
    FirmwareTransfer m_transfer;

    QPushButton* cmdAbrir;
    ValueLabel* lblArquivo;
    ValueLabel* lblTamanho;
    QProgressBar* pgbEnvio;
    ValueLabel* lblLinhas;
    ValueLabel* lblDireccion;
    QCheckBox* chkReset;
    QPushButton* cmdEnviar;
    QPlainTextEdit* txtNotas;
    QPushButton* cmdCancelar;
};
