#include "ModemScriptRun.h"

#include "ModemTranscript.h"

using namespace Qt::StringLiterals;

bool ModemScriptRun::begin(const ModemScript& script)
{
    m_script = script;
    const bool readable = m_script.error().isEmpty();
    m_transcript.writeLine(readable ? u"Inicio archivo de comandos"_s : m_script.error());
    return readable;
}

std::optional<QByteArray> ModemScriptRun::next()
{
    while (const auto line = m_script.next()) {
        if (line->tooLong) {
            m_transcript.writeLine(u"Línea demasiado larga: no se envía"_s);
        } else if (line->isComment()) {
            m_transcript.comment(line->comment);
        } else {
            m_expected = line->expected;
            return line->command;
        }
    }
    m_transcript.writeLine(u"Fin de archivo de comandos"_s);
    return std::nullopt;
}

void ModemScriptRun::lineFailed(const QByteArray& reply)
{
    if (!m_expected.isEmpty())
        m_transcript.writeLine(reply.isEmpty() ? u"Comando no reconocido"_s
                                               : u"Respuesta incorrecta"_s);
}
