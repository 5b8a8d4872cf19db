#include "ProgrammeVerifyJob.h"

#include "CommonOptions.h"
#include "ProgrammeFile.h"
#include "ShellWord.h"

using namespace Qt::StringLiterals;

ProgrammeVerifyJob::ProgrammeVerifyJob(Session& session, Console& console,
                                       const CommonOptions& options, const ProgrammeInput& input)
    : ProgrammeJob(session, console), m_options(options), m_input(input)
{}

void ProgrammeVerifyJob::opened()
{
    tellDifferences(ProgrammeFile::programmeIn(m_input.text(), transfer().model()),
                    u"El reloj tiene el programa del archivo."_s,
                    u"Para enviárselo: "_s +
                        m_options.commandLine(u"programme write "_s + shellWord(m_input.path())));
}
