#include "WeekPicture.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr int minutesPerHour = 60;

int minuteOf(const Alarm& alarm) { return alarm.Hour * minutesPerHour + alarm.Minute; }

} // namespace

WeekPicture::WeekPicture(const Programme& programme, ClockModel model, const QRectF& area,
                         qreal markHeight)
    : m_columns(dayFlagsOf(model)), m_area(area), m_markHeight(std::min(markHeight, area.height()))
{
    addMarks(programme);
    findHours();
    placeMarks();
}

QString WeekPicture::columnName(int column)
{
    constexpr std::array<const char16_t*, dayFlagCount> names{
        u"Lunes",  u"Martes",  u"Miércoles", u"Jueves",    u"Viernes",
        u"Sábado", u"Domingo", u"Festivo",   u"Vacaciones"};
    return QString::fromUtf16(names[static_cast<std::size_t>(column)]);
}

QRectF WeekPicture::columnRect(int column) const
{
    const qreal width = m_area.width() / m_columns;
    return {m_area.left() + column * width, m_area.top(), width, m_area.height()};
}

qreal WeekPicture::yOfMinute(int minute) const
{
    const qreal shown = minute - m_firstHour * minutesPerHour;
    return m_area.top() + m_area.height() * shown / ((m_endHour - m_firstHour) * minutesPerHour);
}

qreal WeekPicture::readableHeight(qreal markHeight) const
{
    // The shortest time in which there are more marks than outputs. At the same minute only clashes
    // are; more height would not part them.
    constexpr std::size_t lanes = Programme::blockCount;
    int shortest = minutesPerHour;
    for (std::size_t index = lanes; index < m_marks.size(); ++index) {
        const Mark& first = m_marks[index - lanes];
        const Mark& last = m_marks[index];
        if (first.column == last.column && first.minute < last.minute)
            shortest = std::min(shortest, last.minute - first.minute);
    }
    const int apart = std::max(shortest, minutesPerHour / mostMarksAnHour);
    return markHeight * (m_endHour - m_firstHour) * minutesPerHour / apart;
}

void WeekPicture::addMarks(const Programme& programme)
{
    for (int column = 0; column < m_columns; ++column)
        for (int block = 0; block < Programme::blockCount; ++block)
            for (int row = 0; row < AlarmBlock::alarmCount; ++row) {
                const Alarm& alarm = programme.blocks[static_cast<std::size_t>(block)]
                                         .Alarms[static_cast<std::size_t>(row)];
                if (alarm.flags[static_cast<std::size_t>(column)])
                    m_marks.push_back({column, minuteOf(alarm), block, row});
            }
    // Blocks and rows are in order already.
    std::stable_sort(m_marks.begin(), m_marks.end(), [](const Mark& one, const Mark& other) {
        return std::pair(one.column, one.minute) < std::pair(other.column, other.minute);
    });
}

void WeekPicture::findHours()
{
    if (m_marks.empty())
        return;
    const auto [first, last] =
        std::minmax_element(m_marks.begin(), m_marks.end(), [](const Mark& one, const Mark& other) {
            return one.minute < other.minute;
        });
    m_firstHour = first->minute / minutesPerHour;
    m_endHour = last->minute / minutesPerHour + 1;
}

qreal WeekPicture::topOf(const Mark& mark) const
{
    // Those just before the end of the last hour are moved up into the area.
    return std::min(yOfMinute(mark.minute), m_area.bottom() - m_markHeight);
}

void WeekPicture::placeMarks()
{
    std::size_t first = 0;
    qreal bottom = 0;
    for (std::size_t index = 0; index < m_marks.size(); ++index) {
        const qreal top = topOf(m_marks[index]);
        if (index > 0 && (m_marks[index].column != m_marks[first].column || top >= bottom)) {
            placeGroup(first, index);
            first = index;
        }
        bottom = top + m_markHeight;
    }
    placeGroup(first, m_marks.size());
}

void WeekPicture::placeGroup(std::size_t first, std::size_t end)
{
    /// Where the last mark of each lane ends.
    std::vector<qreal> bottoms;
    for (std::size_t index = first; index < end; ++index) {
        const qreal top = topOf(m_marks[index]);
        const auto free = std::find_if(bottoms.begin(), bottoms.end(),
                                       [top](qreal bottom) { return bottom <= top; });
        m_marks[index].lane = static_cast<int>(free - bottoms.begin());
        if (free == bottoms.end())
            bottoms.push_back(top + m_markHeight);
        else
            *free = top + m_markHeight;
    }
    for (std::size_t index = first; index < end; ++index) {
        Mark& mark = m_marks[index];
        mark.lanes = static_cast<int>(bottoms.size());
        const QRectF column = columnRect(mark.column);
        const qreal width = column.width() / mark.lanes;
        mark.rect = {column.left() + mark.lane * width, topOf(mark), width, m_markHeight};
    }
}

const WeekPicture::Mark* WeekPicture::markAt(const QPointF& position) const
{
    const auto found = std::find_if(m_marks.begin(), m_marks.end(),
                                    [&](const Mark& mark) { return mark.rect.contains(position); });
    return found == m_marks.end() ? nullptr : &*found;
}
