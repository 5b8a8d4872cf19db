#include "ProgrammeReadJob.h"

#include "Console.h"
#include "ProgrammeFile.h"
#include "ProgrammeTexts.h"

using namespace Qt::StringLiterals;

ProgrammeReadJob::ProgrammeReadJob(Session& session, Console& console, const QString& path)
    : ProgrammeJob(session, console), m_path(path)
{}

void ProgrammeReadJob::opened()
{
    const ClockModel model = transfer().model();
    if (!ProgrammeFile::save(m_path, transfer().programme(), model)) {
        console().tell(u"No se ha podido guardar el archivo %1: compruebe que la carpeta existe y "
                       "que puede escribir en ella."_s.arg(m_path));
        return finish(ExitStatus::Usage);
    }
    if (console().isJson())
        console().print({{u"model"_s, ProgrammeTexts::modelName(model)}, {u"file"_s, m_path}});
    console().note(u"El programa del %1 se ha guardado en %2."_s.arg(
        ProgrammeTexts::modelName(model), m_path));
    finish(ExitStatus::Done);
}

QString ProgrammeReadJob::giveUp() { return u"No se ha guardado nada."_s; }
