#include "EditName.h"

#include <QList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

enum class Part { Header, Time, Days, Holiday, Vacation };

struct Field {
    Part part;
    /// 0 to 2; -1 for dates.
    int block;
    /// -1 for duration and mode.
    int row;
    QString name;
};

void addBlock(QList<Field>& fields, const AlarmBlock& before, const AlarmBlock& after, int block)
{
    if (before.Duration != after.Duration)
        fields.append({Part::Header, block, -1, u"duración"_s});
    if (before.Mode != after.Mode)
        fields.append({Part::Header, block, -1, u"modo"_s});
    for (int row = 0; row < AlarmBlock::alarmCount; ++row) {
        const Alarm& old = before.Alarms[static_cast<std::size_t>(row)];
        const Alarm& fresh = after.Alarms[static_cast<std::size_t>(row)];
        if (old.Hour != fresh.Hour || old.Minute != fresh.Minute)
            fields.append({Part::Time, block, row, u"hora del aviso %1"_s.arg(row + 1)});
        if (old.flags != fresh.flags)
            fields.append({Part::Days, block, row, u"días del aviso %1"_s.arg(row + 1)});
    }
}

QList<Field> fieldsThatDiffer(const Programme& before, const Programme& after)
{
    QList<Field> fields;
    for (int block = 0; block < Programme::blockCount; ++block)
        addBlock(fields, before.blocks[static_cast<std::size_t>(block)],
                 after.blocks[static_cast<std::size_t>(block)], block);
    for (int row = 0; row < HolidayTable::holidayCount; ++row)
        if (before.table.holidays[static_cast<std::size_t>(row)] !=
            after.table.holidays[static_cast<std::size_t>(row)])
            fields.append({Part::Holiday, -1, row, u"festivo %1"_s.arg(row + 1)});
    for (int row = 0; row < HolidayTable::vacationCount; ++row)
        if (before.table.vacations[static_cast<std::size_t>(row)] !=
            after.table.vacations[static_cast<std::size_t>(row)])
            fields.append({Part::Vacation, -1, row, u"período de vacaciones %1"_s.arg(row + 1)});
    return fields;
}

/// Whether all fields have the same of something.
template<typename Of>
bool agree(const QList<Field>& fields, Of of)
{
    return std::all_of(fields.begin(), fields.end(),
                       [&](const Field& field) { return of(field) == of(fields.front()); });
}

QString nameOfDates(const QList<Field>& fields)
{
    if (!agree(fields, [](const Field& field) { return field.part; }))
        return u"festivos y vacaciones"_s;
    return fields.front().part == Part::Holiday ? u"festivos"_s : u"períodos de vacaciones"_s;
}

QString nameOfBlock(const QList<Field>& fields)
{
    const Part first = fields.front().part;
    if (agree(fields, [](const Field& field) { return field.part; }))
        return first == Part::Header ? u"duración y modo"_s
               : first == Part::Time ? u"horas de avisos"_s
                                     : u"días de avisos"_s;
    if (!agree(fields, [](const Field& field) { return field.part == Part::Header; }))
        return u"varios cambios"_s;
    if (agree(fields, [](const Field& field) { return field.row; }))
        return u"aviso %1"_s.arg(fields.front().row + 1);
    return u"avisos"_s;
}

QString nameOf(const QList<Field>& fields)
{
    if (fields.isEmpty() || !agree(fields, [](const Field& field) { return field.block; }))
        return u"varios cambios"_s;
    const int block = fields.front().block;
    const QString name = fields.size() == 1 ? fields.front().name
                         : block < 0        ? nameOfDates(fields)
                                            : nameOfBlock(fields);
    return block > 0 ? u"%1 de la salida %2"_s.arg(name).arg(block + 1) : name;
}

} // namespace

EditName EditName::of(const Programme& before, const Programme& after)
{
    if (before == after)
        return {};
    const QList<Field> fields = fieldsThatDiffer(before, after);
    const QString name = nameOf(fields);
    return {name, fields.size() == 1 ? name : QString()};
}
