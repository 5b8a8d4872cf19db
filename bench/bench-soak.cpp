// Hours of the whole program off screen with the simulated clock as a process of its own, all kinds
// of exchanges in rotation, and faults by a seed. Ends with 0 only if nothing was wrong.

#include "HexImages.h"
#include "LinkTally.h"
#include "LogText.h"
#include "RunningProgram.h"
#include "SoakClock.h"
#include "SoakDialogs.h"
#include "SoakFaults.h"
#include "SoakOperator.h"
#include "SoakRecord.h"
#include "frmRexistroEstado.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QThread>

using namespace Qt::StringLiterals;

namespace {

struct Plan {
    double hours = 1;
    quint32 seed = 1;
    int perMille = 10;
    int rate = 0; ///< in bit/s; 0 is a line that takes no time
    QString model;
};

constexpr int firmwareLines = 40;
/// Each of these is without faults.
constexpr int quietEvery = 4;
/// In rounds: until every window has been used with and without faults.
constexpr int settling = 4 * quietEvery;
/// In milliseconds.
constexpr qint64 progressEvery = 60'000;
constexpr qint64 measureEvery = 600'000;

class Soak {
public:
    Soak(const Plan& plan, const QTemporaryDir& folder, const QString& image)
        : m_plan(plan),
          m_clock(folder.filePath(u"com1"_s), options(plan)),
          m_faults(m_clock, plan.seed, plan.perMille),
          m_dialogs(image),
          m_running(m_dialogs),
          m_operator(m_running, m_dialogs)
    {
        if (plan.rate > 0)
            m_running.program.session().settings().directSpeed = QString::number(plan.rate);
        m_running.program.session().link().ApplySettings();
    }

    /// Whether nothing was wrong.
    bool run()
    {
        const auto end = static_cast<qint64>(m_plan.hours * 3'600'000);
        m_time.start();
        while (m_operator.hung().isEmpty() && m_time.elapsed() < end)
            playRound();
        if (!m_operator.hung().isEmpty())
            m_record.fail(u"this has not ended: "_s + m_operator.hung());
        m_record.take(resources());
        report();
        return m_record.complaints().isEmpty();
    }

private:
    static QStringList options(const Plan& plan)
    {
        QStringList list{u"--model"_s, plan.model, u"--programme"_s, u"school"_s};
        if (plan.rate > 0)
            list += {u"--pace"_s, QString::number(plan.rate)};
        return list;
    }

    void playRound()
    {
        const bool isQuiet = ++m_rounds % quietEvery == 0;
        const SoakCounts before = currentCounts(m_clock, m_operator.forgotten());
        if (!isQuiet)
            m_faults.choose();
        m_operator.connectToClock();
        m_operator.useEveryWindow();
        m_operator.disconnect();
        m_faults.clear();
        waitForTheLine();
        const SoakCounts round = currentCounts(m_clock, m_operator.forgotten()).since(before);
        if (isQuiet)
            m_record.takeQuietRound(round);
        else
            m_record.takeRound(round);
        if (m_rounds >= settling && m_time.elapsed() >= m_nextMeasure) {
            m_record.take(resources());
            m_nextMeasure = m_time.elapsed() + measureEvery;
        }
        if (m_time.elapsed() >= m_nextProgress) {
            printProgress();
            m_nextProgress = m_time.elapsed() + progressEvery;
        }
    }

    /// A line that has vanished by a fault returns by itself.
    void waitForTheLine()
    {
        constexpr int mostLooks = 200;
        for (int look = 0; m_clock.state().value(u"device"_s).isEmpty(); ++look) {
            if (look == mostLooks)
                return m_record.fail(u"the clock's line has not returned"_s);
            QThread::msleep(50);
        }
    }

    SoakResources resources()
    {
        const auto* log = m_running.program.log().findChild<LogText*>();
        SoakResources now = SoakResources::ofThisProcess();
        now.seconds = m_time.elapsed() / 1000;
        now.logCharacters = log->lines().size();
        return now;
    }

    void printProgress()
    {
        const SoakResources now = resources();
        const LinkTally& link = LinkTally::ofThisProcess();
        std::fprintf(stderr,
                     "%6lld s  %6d rounds  %9lld sent  %9lld answered  %6lld damaged  %6lld timed "
                     "out  %7lld kB  %lld descriptors\n",
                     static_cast<long long>(now.seconds), m_rounds,
                     static_cast<long long>(link.sent), static_cast<long long>(link.answered),
                     static_cast<long long>(link.damaged), static_cast<long long>(link.timedOut),
                     static_cast<long long>(now.ownKilobytes),
                     static_cast<long long>(now.descriptors.size()));
    }

    void report();

    const Plan m_plan;
    SoakClock m_clock;
    SoakFaults m_faults;
    SoakDialogs m_dialogs;
    Running m_running;
    SoakOperator m_operator;
    SoakRecord m_record;
    QElapsedTimer m_time;
    qint64 m_nextProgress = progressEvery;
    qint64 m_nextMeasure = 0;
    int m_rounds = 0;
};

void Soak::report()
{
    std::printf("%.2f h, seed %u, %d per mille, %s, HCT-%s\n\n",
                static_cast<double>(m_time.elapsed()) / 3.6e6, m_plan.seed, m_plan.perMille,
                m_plan.rate > 0 ? qPrintable(u"%1 bit/s"_s.arg(m_plan.rate)) : "unpaced",
                qPrintable(m_plan.model));
    std::printf("%-28s %8s %8s %8s\n", "Operations", "done", "failed", "cut");
    const auto& operations = m_operator.scores();
    for (auto score = operations.begin(); score != operations.end(); ++score)
        std::printf("%-28s %8d %8d %8d\n", qPrintable(score.key()), score->done, score->failed,
                    score->cut);
    std::printf("\n%-28s %8s %8s\n", "Faults survived", "rounds", "struck");
    const auto& faults = m_faults.scores();
    for (auto score = faults.begin(); score != faults.end(); ++score)
        std::printf("%-28s %8d %8d\n", qPrintable(score.key()), score->rounds, score->struck);
    const SoakCounts counts = currentCounts(m_clock, m_operator.forgotten());
    std::printf(
        "\nProgram: %lld requests sent, %lld answers taken, %lld damaged or timed out, %lld "
        "forgotten at the end of a connection\n",
        static_cast<long long>(counts.sent), static_cast<long long>(counts.answersTaken),
        static_cast<long long>(counts.failures), static_cast<long long>(counts.forgotten));
    std::printf("Clock:   %lld requests, %lld answers good, %lld spoiled, %lld withheld; the line "
                "vanished %d times\n",
                static_cast<long long>(counts.clockRequests()),
                static_cast<long long>(counts.clockGood),
                static_cast<long long>(counts.clockSpoiled),
                static_cast<long long>(counts.clockWithheld), counts.vanished);
    std::printf("%d rounds, %d of them without faults; %d boxes\n\n", m_rounds,
                m_record.quietRounds(), m_dialogs.told());
    std::printf("%8s %10s %10s %12s %10s\n", "seconds", "held (kB)", "own (kB)", "descriptors",
                "log");
    for (const SoakResources& moment : m_record.resources())
        std::printf("%8lld %10lld %10lld %12lld %10lld\n", static_cast<long long>(moment.seconds),
                    static_cast<long long>(moment.kilobytes),
                    static_cast<long long>(moment.ownKilobytes),
                    static_cast<long long>(moment.descriptors.size()),
                    static_cast<long long>(moment.logCharacters));
    for (const QString& complaint : m_record.complaints())
        std::printf("WRONG: %s\n", qPrintable(complaint));
    std::printf("%s\n", m_record.complaints().isEmpty() ? "Nothing was wrong." : "Not survived.");
}

std::optional<Plan> planOf(const QStringList& arguments)
{
    Plan plan;
    if (arguments.size() != 6)
        return std::nullopt;
    plan.hours = arguments[1].toDouble();
    plan.seed = arguments[2].toUInt();
    plan.perMille = arguments[3].toInt();
    plan.rate = arguments[4].toInt();
    plan.model = arguments[5];
    return plan;
}

} // namespace

int main(int argc, char* argv[])
{
    // A user's settings are neither read nor written.
    const QTemporaryDir folder;
    qputenv("XDG_CONFIG_HOME", folder.path().toLocal8Bit());
    const QApplication application(argc, argv);
    const std::optional<Plan> plan = planOf(QCoreApplication::arguments());
    if (!plan) {
        std::fprintf(stderr, "usage: bench-soak HOURS SEED PER_MILLE RATE MODEL\n"
                             "RATE 0 is a line that takes no time. MODEL is 7200 or 7300.\n");
        return 2;
    }
    QFile image(folder.filePath(u"image.hex"_s));
    if (!image.open(QIODevice::WriteOnly) || image.write(hexImage(firmwareLines, 16)) < 0)
        return 1;
    image.close();
    LinkTally::begin();
    Soak soak(*plan, folder, image.fileName());
    return soak.run() ? 0 : 1;
}
