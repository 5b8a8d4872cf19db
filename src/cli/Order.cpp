#include "Order.h"

#include "Console.h"
#include "SameFile.h"
#include "Spanish.h"
#include "StatusLog.h"
#include "SystemEnvironment.h"
#include "TerminationSignals.h"
#include "TraceFile.h"

#include <QCoreApplication>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace {

/// hctctl tells in its own words what happens.
class NoLog final : public StatusLog {
public:
    void Rexistra(const QString& /*message*/, bool /*show*/) override {}
};

ExitStatus runWithClock(const CommonOptions& options, const ClockAction& action, Console& console)
{
    const ExitStatus readiness =
        action.precondition ? action.precondition(console) : ExitStatus::Done;
    if (readiness != ExitStatus::Done)
        return readiness;
    SystemEnvironment system;
    if (!options.devicePath().isEmpty())
        system.setDevice(1, options.devicePath());
    NoLog log;
    Session session(system.environment(), log);
    options.applyTo(session.settings());
    session.link().ApplySettings();

    ClockRun run(session, console, options, action.makeJob);
    const TerminationSignals termination;
    QObject::connect(&termination, &TerminationSignals::arrived, &run, &ClockRun::interrupt);
    QObject::connect(
        &run, &ClockRun::ended, qApp,
        [](ExitStatus status) { QCoreApplication::exit(qToUnderlying(status)); },
        Qt::QueuedConnection);
    QMetaObject::invokeMethod(&run, &ClockRun::start, Qt::QueuedConnection);
    return static_cast<ExitStatus>(QCoreApplication::exec());
}

} // namespace

ExitStatus carryOut(const Order& order, std::chrono::steady_clock::time_point programStart)
{
    const CommonOptions& options = order.options;
    Console console(options.json ? Console::Form::Json : Console::Form::Text,
                    options.quiet ? Console::Notes::Quiet : Console::Notes::Shown);
    QTranslator toolkit;
    speakSpanish(toolkit);
    for (const QString& file : order.files)
        if (isSameFile(options.trace, file))
            return console.refuse(
                u"La traza sustituiría %1, que es un archivo de la orden: indique "
                "otro con --trace."_s.arg(file));
    std::optional<TraceFile> trace;
    if (!options.trace.isEmpty()) {
        trace.emplace(options.trace, programStart);
        if (!trace->isOpen())
            return console.refuse(trace->error() + u" Indique otro archivo con --trace."_s);
    }
    const auto* alone = std::get_if<AloneAction>(&order.action);
    return console.finalStatus(
        alone ? (*alone)(console)
              : runWithClock(options, std::get<ClockAction>(order.action), console));
}
