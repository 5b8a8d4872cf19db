#include "CommSettings.h"
#include "FileRegistry.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <array>

#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int saves = 200;

std::array<QString CommSettings::*, 12> fields()
{
    return {&CommSettings::directPort,     &CommSettings::directSpeed,
            &CommSettings::directBits,     &CommSettings::directParity,
            &CommSettings::directStopBits, &CommSettings::directDtr,
            &CommSettings::directRts,      &CommSettings::modemPort,
            &CommSettings::modemSpeed,     &CommSettings::modemInitialisation,
            &CommSettings::station,        &CommSettings::identification};
}

CommSettings settingsOf(const QString& text)
{
    CommSettings settings;
    for (const auto field : fields())
        settings.*field = text;
    return settings;
}

/// Whether all values in the file are of one save. Nobody saves meanwhile.
bool isOneSet(FileRegistry& registry)
{
    const auto hold = registry.holdForSave();
    CommSettings stored;
    stored.LoadSettings(registry);
    const auto all = fields();
    return hold && std::all_of(all.begin(), all.end(), [&stored](const auto field) {
               return stored.*field == stored.directPort;
           });
}

/// Another program, whose operator presses Aceptar again and again. Its exit code is how many saves
/// failed or left values of several saves, at most 255.
pid_t startSaving(const QString& path, const QString& program)
{
    const pid_t process = fork();
    if (process != 0)
        return process;
    FileRegistry registry(path);
    int wrong = 0;
    for (int save = 0; save < saves; ++save) {
        if (!settingsOf(program + QString::number(save)).SaveSettings(registry) ||
            !isOneSet(registry))
            ++wrong;
        // Who waits looks again each millisecond, so this gives the other program its turn.
        usleep(3000);
    }
    _exit(std::min(wrong, 255));
}

int exitCode(pid_t process)
{
    int status = 0;
    return waitpid(process, &status, 0) == process && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

/// Programs that save the communication settings into one file at the same time.
class TestSavingPrograms : public QObject {
    Q_OBJECT
private slots:
    void fileAlwaysHoldsTheWholeSetOfOneProgram();
};

void TestSavingPrograms::fileAlwaysHoldsTheWholeSetOfOneProgram()
{
    // In memory where there is such a folder: a disk that confirms each write makes this last long.
    const QString memory = u"/dev/shm"_s;
    const QTemporaryDir folder((QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) +
                               u"/saving-XXXXXX"_s);
    QVERIFY(folder.isValid());
    const QString path = folder.filePath(u"registry.reg"_s);
    const pid_t first = startSaving(path, u"a"_s);
    const pid_t second = startSaving(path, u"b"_s);
    QCOMPARE(exitCode(first), 0);
    QCOMPARE(exitCode(second), 0);
}

QTEST_GUILESS_MAIN(TestSavingPrograms)
#include "TestSavingPrograms.moc"
