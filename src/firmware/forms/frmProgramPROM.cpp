#include "frmProgramPROM.h"

#include "Dialogs.h"
#include "StatusLog.h"
#include "ValueLabel.h"
#include "WidgetDescription.h"
#include "WrappedCheckBox.h"
#include "modUtilidades.h"

#include <QDir>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QTextCursor>

using namespace Qt::StringLiterals;

namespace {

/// The log keeps this many lines; older ones are dropped.
constexpr int mostNotes = 1000;

QPushButton* makeButton(const QString& name, const QString& caption)
{
    auto* button = new QPushButton(caption);
    button->setObjectName(name);
    button->setAccessibleName(QString(caption).remove(u'&'));
    return button;
}

} // namespace

frmProgramPROM::frmProgramPROM(QMdiArea& area, frmCrono& crono, MessageLink& link, StatusLog& log,
                               Dialogs& dialogs)
    : MdiForm(area),
      m_log(log),
      m_dialogs(dialogs),
      m_transfer(m_file, crono, link),
      cmdAbrir(makeButton(u"cmdAbrir"_s, u"&Leer archivo HEX..."_s)),
      lblArquivo(new ValueLabel(u"lblArquivo"_s, u"Archivo:"_s)),
      lblTamanho(new ValueLabel(u"lblTamanho"_s, u"Líneas:"_s)),
      pgbEnvio(new QProgressBar),
      lblLinhas(new ValueLabel(u"lblLinhas"_s, u"Líneas enviadas:"_s)),
      lblDireccion(new ValueLabel(u"lblDireccion"_s, u"Dirección actual:"_s)),
      chkReset(new WrappedCheckBox(
          u"&Realizar un reset tras envío (la memoria del equipo se borrará completamente y se "
          "desconectará de la  aplicación)"_s)),
      cmdEnviar(makeButton(u"cmdEnviar"_s, u"&Enviar"_s)),
      txtNotas(new QPlainTextEdit),
      cmdCancelar(makeButton(u"cmdCancelar"_s, u"&Cancelar"_s))
{
    setObjectName(u"frmProgramPROM"_s);
    setWindowTitle(u"Actualización de firmware"_s);
    cmdEnviar->setEnabled(false);
    makeLog();

    auto* rows = new QVBoxLayout(this);
    rows->addLayout(makeFileRow());
    rows->addWidget(makeTransferFrame());
    rows->addWidget(txtNotas, 1);
    rows->addWidget(cmdCancelar, 0, Qt::AlignRight);
    connectControls();
}

void frmProgramPROM::connectControls()
{
    connect(cmdAbrir, &QPushButton::clicked, this, &frmProgramPROM::cmdAbrir_Click);
    connect(cmdEnviar, &QPushButton::clicked, this, &frmProgramPROM::cmdEnviar_Click);
    connect(cmdCancelar, &QPushButton::clicked, this, [this] { closeWindow(CloseReason::Code); });
    connect(chkReset, &QCheckBox::toggled, &m_transfer, &FirmwareTransfer::setResetAfterwards);
    connect(&m_transfer, &FirmwareTransfer::lineAcknowledged, this, &frmProgramPROM::showProgress);
    connect(&m_transfer, &FirmwareTransfer::finished, this, &frmProgramPROM::showFinished);
    connect(&m_transfer, &FirmwareTransfer::failed, this, &frmProgramPROM::showFailed);
}

QLayout* frmProgramPROM::makeFileRow()
{
    // A long file name is cut to the room that there is. The tool tip shows all of it.
    lblArquivo->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    lblArquivo->setMinimumWidth(fontMetrics().averageCharWidth() * 16);
    lblTamanho->setMinimumWidth(fontMetrics().horizontalAdvance(u"   32767   "_s));

    auto* row = new QHBoxLayout;
    row->addWidget(cmdAbrir);
    row->addWidget(lblArquivo->makeCaption());
    row->addWidget(lblArquivo, 1);
    row->addWidget(lblTamanho->makeCaption());
    row->addWidget(lblTamanho);
    return row;
}

QGroupBox* frmProgramPROM::makeTransferFrame()
{
    pgbEnvio->setObjectName(u"pgbEnvio"_s);
    pgbEnvio->setAccessibleName(u"Progreso del envío"_s);
    // No percentage: after the last line the bar is one step short of full, which would look
    // unfinished.
    pgbEnvio->setTextVisible(false);
    pgbEnvio->setValue(0);
    chkReset->setObjectName(u"chkReset"_s);
    chkReset->setAccessibleName(chkReset->text().remove(u'&'));

    auto* frame = new QGroupBox(u"Envío de archivo:"_s);
    frame->setObjectName(u"fraEnvio"_s);
    auto* order = new QHBoxLayout;
    order->addWidget(chkReset, 1);
    order->addWidget(cmdEnviar);
    auto* progress = new QHBoxLayout;
    progress->addWidget(lblLinhas->makeCaption());
    progress->addWidget(lblLinhas, 1);
    progress->addWidget(lblDireccion->makeCaption());
    progress->addWidget(lblDireccion, 1);
    auto* rows = new QVBoxLayout(frame);
    rows->addLayout(order);
    rows->addWidget(pgbEnvio);
    rows->addLayout(progress);
    return frame;
}

void frmProgramPROM::makeLog()
{
    txtNotas->setObjectName(u"txtNotas"_s);
    txtNotas->setAccessibleName(u"Notas"_s);
    txtNotas->setReadOnly(true);
    txtNotas->setTabChangesFocus(true);
    txtNotas->setUndoRedoEnabled(false);
    txtNotas->setMaximumBlockCount(mostNotes);
}

void frmProgramPROM::cmdAbrir_Click()
{
    const QPointer<frmProgramPROM> self(this);
    const QString path =
        m_dialogs.openFile({u"Abrir archivo de firmware"_s,
                            {u"Firmware de equipo (*.hex)"_s, u"Todos los archivos (*.*)"_s},
                            u"hex"_s,
                            QString()});
    // The window may have been deleted while the dialog was open. During a transfer the table must
    // not change.
    if (!self || path.isEmpty() || m_transfer.state() == FirmwareTransfer::State::Sending)
        return;
    m_file.LoadHexFile(path);
    showLoadedFile(path);
}

void frmProgramPROM::showLoadedFile(const QString& path)
{
    lblArquivo->setValue(m_file.fileCaption());
    const QString toolTip =
        m_file.fileCaption().isEmpty() ? QString() : QDir::toNativeSeparators(path);
    setHint(*lblArquivo, toolTip);
    lblTamanho->setValue(m_file.sizeCaption());
    appendNote(m_file.note());
    cmdEnviar->setEnabled(m_file.LineCount() >= 1);
    clearProgress();
}

void frmProgramPROM::cmdEnviar_Click()
{
    pgbEnvio->setMaximum(m_file.LineCount());
    pgbEnvio->setValue(0);
    m_transfer.start();
    showSending(m_transfer.state() == FirmwareTransfer::State::Sending);
}

void frmProgramPROM::showProgress(qint16 index, qint32 lastAddress)
{
    pgbEnvio->setValue(index);
    lblLinhas->setValue(u"   "_s + QString::number(index + 1));
    lblDireccion->setValue(u"   "_s + modUtilidades::hexadecimalText(lastAddress, 8));
}

void frmProgramPROM::clearProgress()
{
    pgbEnvio->setValue(0);
    lblLinhas->setValue(QString());
    lblDireccion->setValue(QString());
}

void frmProgramPROM::showFinished()
{
    appendNote(u"Envío finalizado\r\n"_s);
    showSending(false);
}

void frmProgramPROM::showFailed()
{
    appendNote(u"Error actualizando firmware del equipo\r\n"_s);
    m_log.Rexistra(u"Error actualizando firmware del equipo"_s, false);
    showSending(false);
}

void frmProgramPROM::showSending(bool sending)
{
    cmdEnviar->setEnabled(!sending);
    cmdAbrir->setEnabled(!sending);
}

void frmProgramPROM::appendNote(const QString& text)
{
    // A separate cursor, so that the operator's selection stays.
    QTextCursor end(txtNotas->document());
    end.movePosition(QTextCursor::End);
    end.insertText(text);
    txtNotas->verticalScrollBar()->setValue(txtNotas->verticalScrollBar()->maximum());
}

bool frmProgramPROM::queryUnload(CloseReason reason)
{
    if (m_transfer.state() == FirmwareTransfer::State::Sending) {
        // The transfer continues while the question is open, and may have ended when it is
        // answered.
        const QPointer<frmProgramPROM> self(this);
        const bool interrupt =
            m_dialogs.confirm(Dialogs::Icon::Warning, QString(),
                              u"¿El firmware se está actualizando en este momento.\r\n"
                              "¿Seguro que desea interrumpir el proceso?"_s);
        if (!self || !interrupt)
            return false;
        m_transfer.interrupt();
        showSending(false);
        return true;
    }
    if (reason == CloseReason::Shutdown)
        return true;
    clearProgress();
    hideForm();
    return false;
}

void frmProgramPROM::unload() { m_transfer.leave(); }
