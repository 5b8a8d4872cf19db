#include "AlarmEncoding.h"
#include "ProgrammeCheck.h"
#include "ProgrammeDifference.h"
#include "ProgrammeFile.h"
#include "ProgrammeRules.h"

#include <QTest>

#include <rapidcheck.h>

#include <algorithm>
#include <vector>

namespace {

/// An alarm with only flags that a block of this mode can carry.
rc::Gen<Alarm> carriedAlarm(ClockModel model, quint8 mode)
{
    const bool singleDays = model == ClockModel::Hct7200 || mode < 2;
    return rc::gen::exec([singleDays] {
        Alarm alarm;
        alarm.Hour = *rc::gen::inRange<quint8>(0, 24);
        alarm.Minute = *rc::gen::inRange<quint8>(0, 60);
        if (singleDays) {
            for (std::size_t day = 0; day < 5; ++day)
                alarm.flags[day] = *rc::gen::arbitrary<bool>();
            return alarm;
        }
        alarm.setWorkingDays(*rc::gen::arbitrary<bool>());
        for (std::size_t day = 5; day < 9; ++day)
            alarm.flags[day] = *rc::gen::arbitrary<bool>();
        return alarm;
    });
}

Programme anyCarriedProgramme(ClockModel model)
{
    Programme programme;
    for (AlarmBlock& block : programme.blocks) {
        block.Duration = *rc::gen::arbitrary<quint8>();
        block.Mode = *rc::gen::arbitrary<quint8>() % 5;
        for (Alarm& alarm : block.Alarms)
            alarm = *carriedAlarm(model, block.Mode);
    }
    for (Holiday& holiday : programme.table.holidays)
        holiday = {*rc::gen::inRange<quint8>(0, 32), *rc::gen::inRange<quint8>(0, 13)};
    for (VacationPeriod& period : programme.table.vacations)
        period = {*rc::gen::inRange<quint8>(0, 32), *rc::gen::inRange<quint8>(0, 13),
                  *rc::gen::inRange<quint8>(0, 32), *rc::gen::inRange<quint8>(0, 13)};
    return programme;
}

/// Active alarms at 32 different minutes, so that they pass the rules.
Programme anyValidProgramme()
{
    Programme programme;
    for (AlarmBlock& block : programme.blocks) {
        int time = *rc::gen::inRange(0, 40);
        std::vector<Alarm> alarms;
        for (int index = 0; index < AlarmBlock::alarmCount; ++index) {
            Alarm alarm = *carriedAlarm(ClockModel::Hct7200, 0);
            alarm.Hour = static_cast<quint8>(time / 60);
            alarm.Minute = static_cast<quint8>(time % 60);
            time += *rc::gen::inRange(1, 40);
            alarms.push_back(alarm);
        }
        std::rotate(alarms.begin(), alarms.begin() + *rc::gen::inRange(0, 32), alarms.end());
        if (*rc::gen::arbitrary<bool>())
            std::reverse(alarms.begin() + 5, alarms.end());
        std::copy(alarms.begin(), alarms.end(), block.Alarms.begin());
    }
    return programme;
}

using AlarmKey = std::pair<std::pair<int, int>, std::array<bool, dayFlagCount>>;

std::vector<AlarmKey> activeAlarms(const AlarmBlock& block)
{
    std::vector<AlarmKey> active;
    for (const Alarm& alarm : block.Alarms)
        if (alarm.isActive())
            active.push_back({{alarm.Hour, alarm.Minute}, alarm.flags});
    std::sort(active.begin(), active.end());
    return active;
}

ClockModel anyModel() { return *rc::gen::element(ClockModel::Hct7200, ClockModel::Hct7300); }

} // namespace

class TestProgrammeProperties : public QObject {
    Q_OBJECT
private slots:
    void carriedAlarmSurvivesTheTwoBytes();
    void anyTwoBytesThatCarryAllBitsComeBack();
    void carriedProgrammeSurvivesTheFile();
    void writtenFileIsNotMisread();
    void anyTextReadsWithinTheRanges();
    void textThatIsNotMisreadIsReadAsItIsWritten();
    void normalisingTwiceIsNormalisingOnce();
    void normalisingKeepsTheActiveAlarms();
    void normalisedProgrammeDoesNotDiffer();
    void differencesAreTheSameInBothDirections();
};

void TestProgrammeProperties::carriedAlarmSurvivesTheTwoBytes()
{
    QVERIFY(rc::check([] {
        const ClockModel model = anyModel();
        const quint8 mode = *rc::gen::arbitrary<quint8>();
        const Alarm alarm = *carriedAlarm(model, mode);
        const AlarmEncoding& encoding = AlarmEncoding::of(model);
        RC_ASSERT(encoding.decode(encoding.encode(alarm, mode), mode) == alarm);
    }));
}

void TestProgrammeProperties::anyTwoBytesThatCarryAllBitsComeBack()
{
    QVERIFY(rc::check([](quint8 first, quint8 second, quint8 mode) {
        const AlarmEncoding& encoding = AlarmEncoding::of(anyModel());
        const AlarmEncoding::Bytes bytes{first, second};
        RC_ASSERT(encoding.encode(encoding.decode(bytes, mode), mode) == bytes);
    }));
}

void TestProgrammeProperties::carriedProgrammeSurvivesTheFile()
{
    QVERIFY(rc::check([] {
        const ClockModel model = anyModel();
        const Programme programme = anyCarriedProgramme(model);
        Programme loaded;
        if (model == ClockModel::Hct7200)
            for (std::size_t block = 0; block < loaded.blocks.size(); ++block) {
                loaded.blocks[block].Duration = programme.blocks[block].Duration;
                loaded.blocks[block].Mode = programme.blocks[block].Mode;
            }
        ProgrammeFile::read(ProgrammeFile::text(programme, model), loaded, model);
        RC_ASSERT(loaded == programme);
    }));
}

void TestProgrammeProperties::writtenFileIsNotMisread()
{
    QVERIFY(rc::check([] {
        const ClockModel model = anyModel();
        const QByteArray text = ProgrammeFile::text(anyCarriedProgramme(model), model);
        RC_ASSERT(!ProgrammeCheck::isMisread(ProgrammeCheck::problemsOf(text, model)));
    }));
}

void TestProgrammeProperties::textThatIsNotMisreadIsReadAsItIsWritten()
{
    QVERIFY(rc::check([] {
        const std::string spoiled =
            *rc::gen::oneOf(rc::gen::arbitrary<std::string>(),
                            rc::gen::map(rc::gen::inRange(-5, 300),
                                         [](int number) { return std::to_string(number); }));
        const ClockModel model = anyModel();
        const QByteArray written = ProgrammeFile::text(anyCarriedProgramme(model), model);
        QByteArrayList lines = written.split('\n');
        const int at = *rc::gen::inRange(0, 363);
        const bool isHeader = lines.at(at).startsWith("--");
        lines[at] = QByteArray::fromStdString(spoiled).replace('\n', ' ') + '\r';
        const QByteArray text = lines.join('\n');
        const QByteArray again =
            ProgrammeFile::text(ProgrammeFile::programmeIn(text, model), model);
        RC_ASSERT(isHeader || ProgrammeCheck::isMisread(ProgrammeCheck::problemsOf(text, model)) ||
                  again.split('\n').at(at).trimmed().toInt() == lines.at(at).trimmed().toInt());
    }));
}

void TestProgrammeProperties::anyTextReadsWithinTheRanges()
{
    QVERIFY(rc::check([](const std::string& text) {
        const ClockModel model = anyModel();
        Programme programme;
        const QByteArray lines = QByteArray::fromStdString(text).replace(' ', '\n').repeated(20);
        ProgrammeFile::read(lines, programme, model);
        for (const AlarmBlock& block : programme.blocks)
            for (const Alarm& alarm : block.Alarms)
                RC_ASSERT(alarm.Hour <= 23 && alarm.Minute <= 59);
        for (const Holiday& holiday : programme.table.holidays)
            RC_ASSERT(holiday.Day <= 31 && holiday.Month <= 12);
    }));
}

void TestProgrammeProperties::normalisingTwiceIsNormalisingOnce()
{
    QVERIFY(rc::check([] {
        Programme programme = anyValidProgramme();
        RC_ASSERT(!ProgrammeRules::firstViolation(programme, ClockModel::Hct7200));
        ProgrammeRules::NormaliseProgramme(programme);
        const Programme once = programme;
        ProgrammeRules::NormaliseProgramme(programme);
        RC_ASSERT(programme == once);
    }));
}

void TestProgrammeProperties::normalisingKeepsTheActiveAlarms()
{
    QVERIFY(rc::check([] {
        Programme programme = anyValidProgramme();
        const Programme before = programme;
        ProgrammeRules::NormaliseProgramme(programme);
        for (std::size_t block = 0; block < programme.blocks.size(); ++block) {
            const auto active = activeAlarms(programme.blocks[block]);
            RC_ASSERT(active == activeAlarms(before.blocks[block]));
            RC_ASSERT(programme.blocks[block].ActiveCountPlusOne == active.size() + 1);
        }
    }));
}

void TestProgrammeProperties::normalisedProgrammeDoesNotDiffer()
{
    QVERIFY(rc::check([] {
        const ClockModel model = anyModel();
        const Programme programme = anyValidProgramme();
        Programme normalised = programme;
        ProgrammeRules::NormaliseProgramme(normalised);
        RC_ASSERT(ProgrammeDifference::between(programme, normalised, model).isEmpty());
    }));
}

void TestProgrammeProperties::differencesAreTheSameInBothDirections()
{
    QVERIFY(rc::check([] {
        const ClockModel model = anyModel();
        const Programme one = anyCarriedProgramme(model);
        const Programme other = anyCarriedProgramme(model);
        const auto there = ProgrammeDifference::between(one, other, model);
        const auto back = ProgrammeDifference::between(other, one, model);
        RC_ASSERT(there.size() == back.size());
        for (qsizetype index = 0; index < there.size(); ++index)
            RC_ASSERT(there[index].rowBefore == back[index].rowAfter &&
                      there[index].rowAfter == back[index].rowBefore);
    }));
}

QTEST_GUILESS_MAIN(TestProgrammeProperties)
#include "TestProgrammeProperties.moc"
