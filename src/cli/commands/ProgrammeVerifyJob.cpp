#include "ProgrammeVerifyJob.h"

#include "ProgrammeFile.h"

using namespace Qt::StringLiterals;

ProgrammeVerifyJob::ProgrammeVerifyJob(Session& session, Console& console, const QByteArray& text)
    : ProgrammeJob(session, console), m_text(text)
{}

void ProgrammeVerifyJob::opened()
{
    tellDifferences(ProgrammeFile::programmeIn(m_text, transfer().model()),
                    u"El reloj tiene el programa del archivo."_s,
                    u"Para enviárselo: hctctl programme write FILE"_s);
}
