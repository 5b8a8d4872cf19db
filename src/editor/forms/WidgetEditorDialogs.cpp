#include "WidgetEditorDialogs.h"

#include <QApplication>
#include <QPointer>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>

using namespace Qt::StringLiterals;

namespace {

void prepare(QPrinter& printer, const QString& documentName)
{
    printer.setDocName(documentName);
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setPageOrientation(QPageLayout::Portrait);
}

} // namespace

void WidgetEditorDialogs::tell(Icon icon, const QString& title, const QString& text)
{
    m_common.tell(icon, title, text);
}

bool WidgetEditorDialogs::confirm(Icon icon, const QString& title, const QString& text)
{
    return m_common.confirm(icon, title, text);
}

std::optional<QString> WidgetEditorDialogs::askText(const QString& title, const QString& prompt)
{
    return m_common.askText(title, prompt);
}

QString WidgetEditorDialogs::openFile(const FileRequest& request)
{
    return m_common.openFile(request);
}

QString WidgetEditorDialogs::saveFile(const FileRequest& request)
{
    return m_common.saveFile(request);
}

int WidgetEditorDialogs::choose(Icon icon, const QString& title, const QString& text,
                                const QStringList& buttons)
{
    return WidgetDialogs::choose(icon, title, text, buttons);
}

ChosenFile WidgetEditorDialogs::openFileByFilter(const FileRequest& request)
{
    return WidgetDialogs::openFileByFilter(request);
}

void WidgetEditorDialogs::print(const QString& documentName, const Drawing& draw)
{
    QPrinter printer(QPrinter::HighResolution);
    prepare(printer, documentName);
    const QPointer<QPrintDialog> dialog = new QPrintDialog(&printer, QApplication::activeWindow());
    if (dialog->exec() == QDialog::Accepted)
        draw(printer);
    delete dialog;
}

void WidgetEditorDialogs::preview(const QString& documentName, const Drawing& draw)
{
    QPrinter printer(QPrinter::HighResolution);
    prepare(printer, documentName);
    const QPointer<QPrintPreviewDialog> dialog =
        new QPrintPreviewDialog(&printer, QApplication::activeWindow());
    dialog->setWindowTitle(u"Vista previa de "_s + documentName);
    QPrintPreviewDialog& sender = *dialog;
    QObject::connect(&sender, &QPrintPreviewDialog::paintRequested, &sender,
                     [draw](QPrinter* paper) { draw(*paper); });
    dialog->exec();
    delete dialog;
}
