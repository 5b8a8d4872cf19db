#include "AlarmSeries.h"
#include "HolidayEdits.h"
#include "ProgrammeDocument.h"

#include <QTest>

#include <rapidcheck.h>

#include <vector>

namespace {

quint8 anyValue(int end) { return static_cast<quint8>(*rc::gen::inRange(0, end)); }

std::size_t anyIndex(std::size_t size) { return *rc::gen::inRange<std::size_t>(0, size); }

/// One field, as a window changes it.
void editAField(Programme& programme)
{
    AlarmBlock& block = programme.blocks[anyIndex(programme.blocks.size())];
    // Few rows, so that edits meet.
    Alarm& alarm = block.Alarms[anyIndex(2)];
    switch (*rc::gen::inRange(0, 7)) {
    case 0: alarm.Hour = anyValue(24); break;
    case 1: alarm.Minute = anyValue(60); break;
    case 2: alarm.flags[anyIndex(dayFlagCount)] = *rc::gen::arbitrary<bool>(); break;
    case 3: block.Mode = anyValue(4); break;
    case 4: block.Duration = anyValue(256); break;
    case 5: programme.table.holidays[anyIndex(2)] = {anyValue(32), anyValue(13)}; break;
    default:
        programme.table.vacations[anyIndex(2)] = {anyValue(32), anyValue(13), anyValue(32),
                                                  anyValue(13)};
    }
}

void editSeveralFields(Programme& programme)
{
    for (int edits = *rc::gen::inRange(0, 5); edits > 0; --edits)
        editAField(programme);
}

std::vector<Alarm> anyAlarms()
{
    std::vector<Alarm> alarms(anyIndex(4));
    for (Alarm& alarm : alarms) {
        alarm.Hour = anyValue(24);
        alarm.flags[anyIndex(dayFlagCount)] = *rc::gen::arbitrary<bool>();
    }
    return alarms;
}

/// One command for the rows of an output.
void editRows(AlarmBlock& block, const AlarmBlock& other)
{
    const int row = *rc::gen::inRange(0, AlarmBlock::alarmCount);
    switch (*rc::gen::inRange(0, 6)) {
    case 0: block = AlarmRows::pasted(block, row, anyAlarms()).block; break;
    case 1: block = AlarmRows::inserted(block, row, anyAlarms()).block; break;
    case 2: block = AlarmRows::cleared(block, {0, row}); break;
    case 3: block = AlarmRows::sorted(block); break;
    case 4: block.Alarms = other.Alarms; break;
    default: {
        AlarmSeries series{.firstMinute = 9 * 60, .count = row};
        series.days[0] = true;
        block = series.into(block).placed.block;
    }
    }
}

/// A click or a stroke of the mouse in the picture of the year.
void editYear(HolidayTable& table)
{
    const YearPicture::Date date{*rc::gen::inRange(1, 4), *rc::gen::inRange(1, 13)};
    switch (*rc::gen::inRange(0, 3)) {
    case 0: table = HolidayEdits::withHolidayToggled(table, date).value_or(table); break;
    case 1: table = HolidayEdits::withPeriodAdded(table, date, {1, 5}).value_or(table); break;
    default: table = HolidayEdits::withoutPeriod(table, *rc::gen::inRange(0, 8));
    }
}

struct Version {
    Programme programme;
    ClockModel model;

    bool operator==(const Version&) const = default;
};

void move(ProgrammeDocument& document)
{
    switch (*rc::gen::inRange(0, 3)) {
    case 0: return document.undoStack().undo();
    case 1: return document.undoStack().redo();
    default: return document.finishTyping();
    }
}

void edit(ProgrammeDocument& document)
{
    Programme programme = document.programme();
    switch (*rc::gen::inRange(0, 8)) {
    case 0:
        editRows(programme.blocks[anyIndex(3)], programme.blocks[anyIndex(3)]);
        return document.edit(programme, QStringLiteral("avisos"));
    case 3: editYear(programme.table); return document.edit(programme, QStringLiteral("festivo"));
    case 1: editSeveralFields(programme); return document.edit(programme);
    case 2:
        return document.changeModel(*rc::gen::element(ClockModel::Hct7200, ClockModel::Hct7300));
    default: editAField(programme); return document.edit(programme);
    }
}

/// A document, and what it held at each position of its stack.
class WatchedDocument {
public:
    explicit WatchedDocument(ClockModel model) : m_document(model), m_versions{current()} {}

    QUndoStack& stack() { return m_document.undoStack(); }
    void doSomething()
    {
        if (*rc::gen::inRange(0, 3) == 0)
            return move(m_document);
        const int before = stack().index();
        const Version old = current();
        edit(m_document);
        // A step, or one that was merged. One that was taken back leaves the version before it.
        if (stack().index() >= before && current() != old)
            note();
    }
    void check() { RC_ASSERT(current() == m_versions.at(position())); }

private:
    Version current() const { return {m_document.programme(), m_document.model()}; }
    std::size_t position() { return static_cast<std::size_t>(stack().index()); }
    void note()
    {
        m_versions.resize(position(), current());
        m_versions.push_back(current());
    }

    ProgrammeDocument m_document;
    std::vector<Version> m_versions;
};

} // namespace

class TestDocumentProperties : public QObject {
    Q_OBJECT
private slots:
    void everyUndoAndRedoGivesBackTheVeryProgrammeBefore();
};

void TestDocumentProperties::everyUndoAndRedoGivesBackTheVeryProgrammeBefore()
{
    QVERIFY(rc::check([] {
        WatchedDocument watched(*rc::gen::element(ClockModel::Hct7200, ClockModel::Hct7300));
        for (int actions = *rc::gen::inRange(0, 60); actions > 0; --actions) {
            watched.doSomething();
            watched.check();
        }
        while (watched.stack().canUndo()) {
            watched.stack().undo();
            watched.check();
        }
        while (watched.stack().canRedo()) {
            watched.stack().redo();
            watched.check();
        }
    }));
}

QTEST_GUILESS_MAIN(TestDocumentProperties)
#include "TestDocumentProperties.moc"
