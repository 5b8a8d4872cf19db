#include "ProgrammeWriteJob.h"

#include "CommonOptions.h"
#include "Console.h"
#include "ProgrammeFile.h"
#include "ProgrammeTexts.h"
#include "ShellWord.h"

using namespace Qt::StringLiterals;

ProgrammeWriteJob::ProgrammeWriteJob(Session& session, Console& console,
                                     const CommonOptions& options, const ProgrammeInput& input,
                                     Verification verification)
    : ProgrammeJob(session, console),
      m_options(options),
      m_input(input),
      m_verification(verification)
{
    connect(&transfer(), &ProgrammeTransfer::partAccepted, this,
            [this](int part) { m_progress->advance(part + 1); });
    connect(&transfer(), &ProgrammeTransfer::sent, this, &ProgrammeWriteJob::sent);
    connect(&transfer(), &ProgrammeTransfer::wasReadBack, this, [this] {
        tellDifferences(transfer().programme(),
                        u"El programa se ha enviado, y el reloj lo tiene."_s,
                        u"Repita la orden; si sigue igual, avise al servicio técnico."_s);
    });
}

void ProgrammeWriteJob::opened()
{
    if (const auto violation = transfer().load(m_input.text())) {
        console().tell(QString(violation->text).remove(u'\r'));
        console().tell(
            u"No se ha enviado nada; con \"programme check\" se ve en qué líneas está."_s);
        return finish(ExitStatus::Usage);
    }
    // The two models have other days in the same numbers.
    if (transfer().model() == ClockModel::Hct7200 &&
        ProgrammeFile::likelyModel(m_input.text()) == ClockModel::Hct7300)
        console().tell(
            u"El archivo parece de un HCT-7300, porque hay modos mayores que 1: en este HCT-7200 "
            "sus avisos pueden sonar otros días; cuáles se ve con: hctctl programme show --model "
            "7200 "_s +
            shellWord(m_input.path()));
    m_step = Step::Sending;
    m_progress.emplace(console(), u"Enviando el programa"_s, ProgrammeExchange::partCount);
    transfer().send();
}

void ProgrammeWriteJob::sent()
{
    m_step = Step::Verifying;
    m_progress->end();
    if (m_verification == Verification::Wanted)
        return transfer().readBack();
    if (console().isJson())
        console().print({{u"model"_s, ProgrammeTexts::modelName(transfer().model())}});
    console().note(u"El programa se ha enviado; no se ha comprobado."_s);
    finish(ExitStatus::Done);
}

QString ProgrammeWriteJob::giveUp()
{
    if (m_progress)
        m_progress->end();
    switch (m_step) {
    case Step::Reading: return u"No se ha enviado nada: el reloj conserva su programa."_s;
    case Step::Sending: return transfer().partsTaken() + u" Repita la orden para completarlo."_s;
    case Step::Verifying: break;
    }
    return u"El reloj ha tomado todo el programa, pero no se ha podido comprobar; para "
           "comprobarlo: "_s +
           m_options.commandLine(u"programme verify "_s + shellWord(m_input.path()));
}
