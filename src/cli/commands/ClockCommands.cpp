#include "ClockSetJob.h"
#include "ClockTime.h"
#include "CommandLine.h"
#include "Commands.h"
#include "Validators.h"

using namespace Qt::StringLiterals;

namespace {

const char* const example = "2026-11-21T16:06:36";
/// The clock has two digits for the year.
constexpr int firstYear = 1990;
constexpr int lastYear = 2089;
constexpr int largestDifference = 86400;

QDateTime parsedTime(const QString& text)
{
    return clocktime::onTheWall(QDateTime::fromString(text, u"yyyy-MM-ddTHH:mm:ss"_s));
}

CLI::Validator timeValidator()
{
    return validators::makeValidator([](const QString& text) {
        const QDateTime time = parsedTime(text);
        if (!time.isValid())
            return u"\"%1\" no es una fecha con hora como %2"_s.arg(text,
                                                                    QString::fromLatin1(example));
        const int year = time.date().year();
        if (year >= firstYear && year <= lastYear)
            return QString();
        return u"el reloj solo admite los años %1 a %2"_s.arg(firstYear).arg(lastYear);
    });
}

struct SetOptions {
    std::string at;
    std::optional<int> ifOffBy;
};

} // namespace

void addClockCommands(CommandLine& commandLine)
{
    CLI::App& group = commandLine.addGroup("clock", "Pone el reloj en hora");
    CLI::App& verb = commandLine.addVerb(group, "set", "Pone el reloj en hora");
    const auto options = std::make_shared<SetOptions>();
    verb.add_option("--at", options->at, "Esta fecha y hora, en lugar de la del ordenador")
        ->type_name("YYYY-MM-DDTHH:MM:SS")
        ->check(timeValidator());
    verb.add_option("--if-off-by", options->ifOffBy,
                    "Solo si la diferencia es de tantos segundos o más")
        ->type_name("SECONDS")
        ->transform(validators::number(0, largestDifference));
    commandLine.runsWithClock(
        verb, [options](Session& session, Console& console, const CommonOptions& common) {
            ClockSetJob::Wish wish;
            if (!options->at.empty())
                wish.at = parsedTime(QString::fromStdString(options->at));
            wish.ifOffBy = options->ifOffBy;
            return std::make_unique<ClockSetJob>(session, console, common, wish);
        });
}
