#include "ProgrammeDifference.h"

#include "AlarmEncoding.h"
#include "ProgrammeTexts.h"

#include <algorithm>
#include <set>
#include <vector>

using namespace Qt::StringLiterals;

namespace ProgrammeDifference {

namespace {

using Kind = Entry::Kind;
using What = Entry::What;

constexpr int noRow = -1;
constexpr int noBlock = -1;

/// Something of a programme with its row. `key` decides which two belong together, and the order.
struct Item {
    int key;
    int row;
    /// What it is called: a time, a date, the beginning of a period.
    QString name;
    /// What may change while the key stays: days, the end of a period.
    QString value;
};
using Items = std::vector<Item>;

struct Words {
    What what;
    int block;
    QString heading;
    /// Between name and value: " 9:05 lunes", "23/12 a 07/01".
    QString link;
};

Items itemsOf(const AlarmBlock& block, ClockModel model)
{
    const AlarmEncoding& encoding = AlarmEncoding::of(model);
    Items items;
    int row = 0;
    for (const Alarm& alarm : block.Alarms) {
        const Alarm sent = encoding.decode(encoding.encode(alarm, block.Mode), block.Mode);
        if (sent.isActive())
            items.push_back({sent.Hour * 60 + sent.Minute, row, ProgrammeTexts::time(sent),
                             ProgrammeTexts::days(sent)});
        ++row;
    }
    return items;
}

int dateKey(int day, int month) { return month * 256 + day; }

Items holidaysIn(const HolidayTable& table)
{
    Items items;
    std::set<int> known;
    int row = 0;
    for (const Holiday& holiday : table.holidays) {
        const int key = dateKey(holiday.Day, holiday.Month);
        if (holiday != Holiday() && known.insert(key).second)
            items.push_back({key, row, ProgrammeTexts::date(holiday.Day, holiday.Month), {}});
        ++row;
    }
    return items;
}

Items vacationsIn(const HolidayTable& table)
{
    Items items;
    std::set<QString> known;
    int row = 0;
    for (const VacationPeriod& period : table.vacations) {
        if (period != VacationPeriod() && known.insert(ProgrammeTexts::period(period)).second)
            items.push_back({dateKey(period.StartDay, period.StartMonth), row,
                             ProgrammeTexts::date(period.StartDay, period.StartMonth),
                             ProgrammeTexts::date(period.EndDay, period.EndMonth)});
        ++row;
    }
    return items;
}

void dropEqual(Items& before, Items& after)
{
    std::erase_if(before, [&after](const Item& item) {
        const auto twin = std::find_if(after.begin(), after.end(), [&item](const Item& other) {
            return other.key == item.key && other.value == item.value;
        });
        if (twin == after.end())
            return false;
        after.erase(twin);
        return true;
    });
}

Entry addedOrRemoved(const Words& words, const Item& item, Kind kind)
{
    const QString verb = kind == Kind::Added ? u"añadido"_s : u"quitado"_s;
    const QString what = item.value.isEmpty() ? item.name : item.name + words.link + item.value;
    return {kind,
            words.what,
            words.block,
            kind == Kind::Added ? noRow : item.row,
            kind == Kind::Added ? item.row : noRow,
            u"%1: %2 %3"_s.arg(words.heading, verb, what)};
}

Entry changed(const Words& words, const Item& before, const Item& after)
{
    return {Kind::Changed,
            words.what,
            words.block,
            before.row,
            after.row,
            u"%1: cambiado %2, antes%3, ahora%4"_s.arg(
                words.heading, before.name, words.link + before.value, words.link + after.value)};
}

void compareItems(QList<Entry>& entries, const Words& words, Items before, Items after)
{
    dropEqual(before, after);
    const auto byKey = [](const Item& one, const Item& other) { return one.key < other.key; };
    std::stable_sort(before.begin(), before.end(), byKey);
    std::stable_sort(after.begin(), after.end(), byKey);
    auto old = before.cbegin();
    auto fresh = after.cbegin();
    while (old != before.cend() || fresh != after.cend()) {
        if (fresh == after.cend() || (old != before.cend() && old->key < fresh->key))
            entries.append(addedOrRemoved(words, *old++, Kind::Removed));
        else if (old == before.cend() || fresh->key < old->key)
            entries.append(addedOrRemoved(words, *fresh++, Kind::Added));
        else
            entries.append(changed(words, *old++, *fresh++));
    }
}

void compareNumber(QList<Entry>& entries, What what, int block, int before, int after)
{
    if (before == after)
        return;
    const QString name = what == What::Duration ? u"cambiada la duración"_s : u"cambiado el modo"_s;
    entries.append({Kind::Changed, what, block, noRow, noRow,
                    u"%1: %2, antes %3, ahora %4"_s.arg(ProgrammeTexts::output(block), name)
                        .arg(before)
                        .arg(after)});
}

} // namespace

QList<Entry> between(const Programme& before, const Programme& after, ClockModel model)
{
    QList<Entry> entries;
    for (int block = 0; block < Programme::blockCount; ++block) {
        const AlarmBlock& old = before.blocks[static_cast<std::size_t>(block)];
        const AlarmBlock& fresh = after.blocks[static_cast<std::size_t>(block)];
        if (model == ClockModel::Hct7300) {
            compareNumber(entries, What::Duration, block, old.Duration, fresh.Duration);
            compareNumber(entries, What::Mode, block, old.Mode, fresh.Mode);
        }
        compareItems(entries, {What::Alarm, block, ProgrammeTexts::output(block), u" "_s},
                     itemsOf(old, model), itemsOf(fresh, model));
    }
    compareItems(entries, {What::Holiday, noBlock, u"Festivos"_s, {}}, holidaysIn(before.table),
                 holidaysIn(after.table));
    compareItems(entries, {What::Vacation, noBlock, u"Vacaciones"_s, u" a "_s},
                 vacationsIn(before.table), vacationsIn(after.table));
    return entries;
}

} // namespace ProgrammeDifference
