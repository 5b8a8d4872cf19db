#include "WallPrinting.h"

#include "EditorDialogs.h"
#include "ProgrammeDocument.h"
#include "WallSheet.h"

#include <QFileInfo>
#include <QPrinter>

using namespace Qt::StringLiterals;

WallPrinting::WallPrinting(const ProgrammeDocument& document, EditorDialogs& dialogs,
                           const std::function<QString()>& title, QObject* parent)
    : QObject(parent), m_document(document), m_dialogs(dialogs), m_title(title)
{}

QString WallPrinting::name() const
{
    const QString title = m_title();
    return title.isEmpty() ? QFileInfo(m_document.name()).completeBaseName() : title;
}

WallSheet WallPrinting::sheet() const
{
    return {m_document.programme(), m_document.model(), name()};
}

void WallPrinting::print()
{
    m_dialogs.print(name(), [this](QPrinter& printer) {
        // The toolkit writes a file without a look at whether the disk takes it. Windows writes one
        // of another format itself, and asks for its name then: here it is "FILE:".
        const QString file = printer.outputFileName();
        if (!file.isEmpty() && printer.outputFormat() == QPrinter::PdfFormat)
            tellFailure(sheet().writePdf(file, printer.pageLayout()));
        else if (!sheet().paint(printer))
            tellFailure(u"La impresora no ha aceptado la hoja."_s);
    });
}

void WallPrinting::preview()
{
    m_dialogs.preview(name(), [sheet = sheet()](QPrinter& printer) { sheet.paint(printer); });
}

void WallPrinting::savePdf()
{
    FileRequest request;
    request.title = u"Guardar como PDF"_s;
    request.filters = {u"Documentos PDF (*.pdf)"_s};
    request.defaultExtension = u"pdf"_s;
    request.directory = m_document.folder();
    request.fileName = QFileInfo(m_document.name()).completeBaseName() + u".pdf"_s;
    const QString path = m_dialogs.saveFile(request);
    if (path.isEmpty())
        return;
    const QString failure = sheet().writePdf(path);
    if (failure.isEmpty())
        emit told(u"Guardado en %1."_s.arg(path));
    tellFailure(failure);
}

void WallPrinting::tellFailure(const QString& failure)
{
    if (!failure.isEmpty())
        m_dialogs.tell(Dialogs::Icon::Critical, editorTitle(), failure);
}
