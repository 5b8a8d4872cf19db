#include "AlarmText.h"

#include "DayWords.h"
#include "ProgrammeTexts.h"

#include <QRegularExpression>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace AlarmText {

namespace {

struct Time {
    int hour;
    int minute;
};

// The cells of these functions are plain; see DayWords.

std::optional<Time> timeIn(const QString& cell)
{
    // A point needs two digits behind it: 9.5 may be nine and a half.
    static const QRegularExpression pattern(
        u"^(\\d{1,2}) ?(?:[:h] ?(\\d{1,2})|\\.(\\d\\d))(?:[:.]00)? ?(?:(a|p)\\.? ?m\\.?|h\\.?)?$"_s);
    // Most cells are none: these need no search.
    if (cell.isEmpty() || !cell.front().isDigit())
        return std::nullopt;
    const QRegularExpressionMatch match = pattern.match(cell);
    if (!match.hasMatch())
        return std::nullopt;
    constexpr int noon = 12;
    int hour = match.captured(1).toInt();
    const int minute = (match.captured(2) + match.captured(3)).toInt();
    const QString half = match.captured(4);
    if (!half.isEmpty() && (hour < 1 || hour > noon))
        return std::nullopt;
    if (!half.isEmpty())
        hour = hour % noon + (half == u"p" ? noon : 0);
    if (hour > 23 || minute > 59)
        return std::nullopt;
    return Time{hour, minute};
}

bool isMark(const QString& cell)
{
    static const QStringList marks{u"x"_s, u"1"_s,         u"si"_s,  u"✓"_s,
                                   u"✔"_s, u"verdadero"_s, u"true"_s};
    return marks.contains(cell);
}

bool isEmpty(const QString& cell)
{
    static const QStringList none{QString(), u"0"_s,  u"no"_s,    u"-"_s,
                                  u"·"_s,    u"··"_s, u"falso"_s, u"false"_s};
    return none.contains(cell);
}

/// Whether the cells are a column for each day. A single X is Wednesday.
bool areMarks(const QStringList& cells)
{
    return cells.size() > 1 && std::all_of(cells.begin(), cells.end(), [](const QString& cell) {
               return isMark(cell) || isEmpty(cell);
           });
}

/// Reads the lines of a table of alarms.
class TableReader {
public:
    explicit TableReader(ClockModel model) : m_model(model) {}

    void take(const QString& line)
    {
        ++m_line;
        QStringList cells = line.split(line.contains(u'\t') ? u'\t' : u';');
        for (QString& cell : cells)
            cell = DayWords::plain(cell);
        std::optional<Time> time;
        const auto hour = std::find_if(cells.cbegin(), cells.cend(), [&time](const QString& cell) {
            time = timeIn(cell);
            return time.has_value();
        });
        if (time)
            takeAlarm(*time, cells.mid(hour - cells.cbegin() + 1));
        else if (!takeCaptions(cells) && !line.trimmed().isEmpty())
            tell(u"«%1» no tiene hora."_s.arg(line.simplified()));
    }
    Alarms alarms() const { return m_alarms; }

private:
    void tell(const QString& what)
    {
        m_alarms.problems.append(u"Línea %1: %2"_s.arg(m_line).arg(what));
    }

    bool takeCaptions(const QStringList& cells)
    {
        const auto hour = std::find(cells.begin(), cells.end(), u"hora"_s);
        if (hour == cells.end())
            return false;
        m_columns.clear();
        for (auto cell = hour + 1; cell != cells.end(); ++cell)
            m_columns.append(DayWords::day(*cell).value_or(-1));
        // Such as "Días", for all of them.
        if (std::all_of(m_columns.begin(), m_columns.end(), [](int day) { return day < 0; }))
            m_columns = usualColumns();
        return true;
    }

    void takeAlarm(const Time& time, const QStringList& cells)
    {
        DayWords::Days days;
        if (areMarks(cells)) {
            for (qsizetype column = 0; column < std::min(cells.size(), m_columns.size()); ++column)
                if (isMark(cells[column]) && m_columns[column] >= 0)
                    days.flags[static_cast<std::size_t>(m_columns[column])] = true;
        } else {
            days = DayWords::days(cells.join(u' '));
        }
        if (!days.unknown.isEmpty())
            tell(u"no se entiende «%1»."_s.arg(days.unknown.join(u' ')));
        dropDaysOfTheOtherModel(days);
        Alarm alarm;
        alarm.Hour = static_cast<quint8>(time.hour);
        alarm.Minute = static_cast<quint8>(time.minute);
        alarm.flags = days.flags;
        m_alarms.alarms.push_back(alarm);
    }

    void dropDaysOfTheOtherModel(DayWords::Days& days)
    {
        Alarm dropped;
        const int first = dayFlagsOf(m_model);
        for (int day = first; day < dayFlagCount; ++day)
            std::swap(dropped.flags[static_cast<std::size_t>(day)],
                      days.flags[static_cast<std::size_t>(day)]);
        if (dropped.isActive())
            tell(u"el %1 no tiene %2."_s.arg(ProgrammeTexts::modelName(m_model),
                                             ProgrammeTexts::days(dropped)));
    }

    static QList<int> usualColumns() { return {0, 1, 2, 3, 4, 5, 6, 7, 8}; }

    const ClockModel m_model;
    int m_line = 0;
    /// The day of each column behind the time; -1 for another.
    QList<int> m_columns = usualColumns();
    Alarms m_alarms;
};

} // namespace

QString text(const std::vector<Alarm>& alarms)
{
    QString text;
    for (const Alarm& alarm : alarms)
        text += ProgrammeTexts::time(alarm) + u'\t' + ProgrammeTexts::days(alarm) + u'\n';
    return text;
}

Alarms parse(const QString& text, ClockModel model)
{
    TableReader reader(model);
    QString ended = text;
    ended.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    QStringList lines = ended.split(u'\n');
    if (lines.last().isEmpty())
        lines.removeLast();
    for (const QString& line : std::as_const(lines))
        reader.take(line);
    return reader.alarms();
}

} // namespace AlarmText
