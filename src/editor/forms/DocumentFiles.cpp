#include "DocumentFiles.h"

#include "EditorDialogs.h"
#include "ProgrammeDocument.h"

using namespace Qt::StringLiterals;

DocumentFiles::DocumentFiles(ProgrammeDocument& document, EditorDialogs& dialogs, QObject* parent)
    : QObject(parent), m_document(document), m_dialogs(dialogs)
{}

QStringList DocumentFiles::filters()
{
    return {u"Programas del HCT-7200 (*.hct)"_s, u"Programas del HCT-7300 (*.hct)"_s};
}

bool DocumentFiles::save()
{
    return m_document.path().isEmpty() ? saveAs() : saveTo(m_document.path());
}

bool DocumentFiles::saveAs()
{
    FileRequest request;
    request.title = u"Guardar como"_s;
    request.filters = {filters().at(m_document.model() == ClockModel::Hct7200 ? 0 : 1),
                       u"Todos los archivos (*.*)"_s};
    request.defaultExtension = u"hct"_s;
    request.directory = m_document.folder();
    request.fileName = m_document.path().isEmpty() ? u"programa.hct"_s : m_document.name();
    const QString path = m_dialogs.saveFile(request);
    return !path.isEmpty() && saveTo(path);
}

bool DocumentFiles::saveTo(const QString& path)
{
    using Outcome = ProgrammeDocument::SaveResult::Outcome;
    const ProgrammeDocument::SaveResult result = m_document.saveAs(path);
    if (result.isSaved())
        return true;
    if (result.outcome == Outcome::Failed) {
        m_dialogs.tell(Dialogs::Icon::Critical, editorTitle(),
                       u"%1\n\nEl programa sigue en la ventana: guárdelo con otro nombre o en otra "
                       "carpeta."_s.arg(result.reason));
        return false;
    }
    const int answer =
        m_dialogs.choose(Dialogs::Icon::Warning, editorTitle(), result.reason,
                         {u"Guardar con &otro nombre..."_s, u"Guardar &encima"_s, u"&Cancelar"_s});
    if (answer == 0)
        return saveAs();
    if (answer != 1)
        return false;
    const ProgrammeDocument::SaveResult second =
        m_document.saveAs(path, ProgrammeDocument::Overwriting::IsAllowed);
    if (!second.isSaved())
        m_dialogs.tell(Dialogs::Icon::Critical, editorTitle(), second.reason);
    return second.isSaved();
}

bool DocumentFiles::mayLose()
{
    if (!m_document.isModified())
        return true;
    const int answer =
        m_dialogs.choose(Dialogs::Icon::Warning, editorTitle(),
                         u"¿Guardar los cambios de \"%1\"?\n\nSi no se guardan, se pierden."_s.arg(
                             m_document.name()),
                         {u"&Guardar"_s, u"&No guardar"_s, u"&Cancelar"_s});
    return answer == 0 ? save() : answer == 1;
}
