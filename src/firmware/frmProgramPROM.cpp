#include "frmProgramPROM.h"

#include "CaptionUpdate.h"
#include "Dialogs.h"
#include "StatusLog.h"
#include "WrappedCheckBox.h"
#include "modUtilidades.h"

#include <QDir>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QTextCursor>

using namespace Qt::StringLiterals;

namespace {

/// The log forgets its oldest lines beyond this many.
constexpr int mostNotes = 1000;

// What stands beside the fields, for the eye and, with the field's text, for a screen reader.
constexpr auto fileName = "Archivo:";
constexpr auto fileSize = "Líneas:";
constexpr auto linesSent = "Líneas enviadas:";
constexpr auto currentAddress = "Dirección actual:";

QLabel* makeField(const QString& name)
{
    auto* field = new QLabel;
    field->setObjectName(name);
    field->setFrameStyle(static_cast<int>(QFrame::StyledPanel) | static_cast<int>(QFrame::Sunken));
    field->setBackgroundRole(QPalette::Base);
    field->setAutoFillBackground(true);
    field->setMargin(2);
    // A file's name is no markup.
    field->setTextFormat(Qt::PlainText);
    return field;
}

QPushButton* makeButton(const QString& name, const QString& caption)
{
    auto* button = new QPushButton(caption);
    button->setObjectName(name);
    button->setAccessibleName(QString(caption).remove(u'&'));
    return button;
}

QLabel* makeCaption(const char* text, QLabel* field)
{
    auto* caption = new QLabel(QString::fromUtf8(text));
    caption->setBuddy(field);
    field->setAccessibleName(caption->text());
    return caption;
}

void showText(QLabel& field, const char* caption, const QString& text)
{
    modUtilidades::updateCaption(field, text);
    field.setAccessibleName((QString::fromUtf8(caption) + u' ' + text).simplified());
}

} // namespace

frmProgramPROM::frmProgramPROM(QMdiArea& area, frmCrono& crono, MessageLink& link, StatusLog& log,
                               Dialogs& dialogs)
    : MdiForm(area),
      m_log(log),
      m_dialogs(dialogs),
      m_transfer(m_file, crono, link),
      cmdAbrir(makeButton(u"cmdAbrir"_s, u"&Leer archivo HEX..."_s)),
      lblArquivo(makeField(u"lblArquivo"_s)),
      lblTamanho(makeField(u"lblTamanho"_s)),
      pgbEnvio(new QProgressBar),
      lblLinhas(makeField(u"lblLinhas"_s)),
      lblDireccion(makeField(u"lblDireccion"_s)),
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
    // However long the file's name, it takes no more room than there is; the tool tip has it whole.
    lblArquivo->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    lblArquivo->setMinimumWidth(fontMetrics().averageCharWidth() * 16);
    lblTamanho->setMinimumWidth(fontMetrics().horizontalAdvance(u"   32767   "_s));

    auto* row = new QHBoxLayout;
    row->addWidget(cmdAbrir);
    row->addWidget(makeCaption(fileName, lblArquivo));
    row->addWidget(lblArquivo, 1);
    row->addWidget(makeCaption(fileSize, lblTamanho));
    row->addWidget(lblTamanho);
    return row;
}

QGroupBox* frmProgramPROM::makeTransferFrame()
{
    pgbEnvio->setObjectName(u"pgbEnvio"_s);
    pgbEnvio->setAccessibleName(u"Progreso del envío"_s);
    // After the last line it stands one short of full, which a percentage would make look
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
    progress->addWidget(makeCaption(linesSent, lblLinhas));
    progress->addWidget(lblLinhas, 1);
    progress->addWidget(makeCaption(currentAddress, lblDireccion));
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
    // The window may have gone while the dialog was up, and a table under transfer must not change.
    if (!self || path.isEmpty() || m_transfer.state() == FirmwareTransfer::State::Sending)
        return;
    m_file.LoadHexFile(path);
    showLoadedFile(path);
}

void frmProgramPROM::showLoadedFile(const QString& path)
{
    showText(*lblArquivo, fileName, m_file.fileCaption());
    const QString toolTip =
        m_file.fileCaption().isEmpty() ? QString() : QDir::toNativeSeparators(path);
    lblArquivo->setToolTip(toolTip.toHtmlEscaped());
    lblArquivo->setAccessibleDescription(toolTip);
    showText(*lblTamanho, fileSize, m_file.sizeCaption());
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
    showText(*lblLinhas, linesSent, u"   "_s + QString::number(index + 1));
    showText(*lblDireccion, currentAddress,
             u"   "_s + modUtilidades::hexadecimalText(lastAddress, 8));
}

void frmProgramPROM::clearProgress()
{
    pgbEnvio->setValue(0);
    showText(*lblLinhas, linesSent, QString());
    showText(*lblDireccion, currentAddress, QString());
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
    // A cursor of its own, so that what the operator has selected stays selected.
    QTextCursor end(txtNotas->document());
    end.movePosition(QTextCursor::End);
    end.insertText(text);
    txtNotas->verticalScrollBar()->setValue(txtNotas->verticalScrollBar()->maximum());
}

bool frmProgramPROM::queryUnload(CloseReason reason)
{
    if (m_transfer.state() == FirmwareTransfer::State::Sending) {
        // The transfer goes on under the question, and may have ended when it is answered.
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
