#include "WallLists.h"

#include "AlarmRows.h"
#include "PaperLook.h"
#include "ProgrammeTexts.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QStringList>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr qreal headingHeight = 16;
constexpr int largestText = 12;
constexpr int smallestText = 8;

qreal lineHeightOf(int textSize) { return textSize * 1.25; }
qreal timeWidthOf(int textSize) { return textSize * 3.75; }

/// "lun a vie, fest y vac"
QString shortDays(const Alarm& alarm)
{
    constexpr std::array<const char16_t*, dayFlagCount> names{
        u"lun", u"mar", u"mié", u"jue", u"vie", u"sáb", u"dom", u"fest", u"vac"};
    QString days = ProgrammeTexts::days(alarm);
    for (int day = 0; day < dayFlagCount; ++day)
        days.replace(ProgrammeTexts::day(day),
                     QString::fromUtf16(names[static_cast<std::size_t>(day)]));
    return days;
}

QString listOf(const QString& heading, const QStringList& dates)
{
    return u"%1: %2"_s.arg(heading, dates.isEmpty() ? u"ninguno"_s : dates.join(u", "_s));
}

/// In the order of the calendar.
QString holidaysOf(HolidayTable table)
{
    std::sort(table.holidays.begin(), table.holidays.end(),
              [](const Holiday& one, const Holiday& other) {
                  return std::pair(one.Month, one.Day) < std::pair(other.Month, other.Day);
              });
    QStringList dates;
    for (const Holiday& holiday : table.holidays)
        if (holiday != Holiday())
            dates.append(ProgrammeTexts::date(holiday.Day, holiday.Month));
    return listOf(u"Festivos"_s, dates);
}

/// In the order of their beginnings.
QString vacationsOf(HolidayTable table)
{
    std::sort(table.vacations.begin(), table.vacations.end(),
              [](const VacationPeriod& one, const VacationPeriod& other) {
                  return std::pair(one.StartMonth, one.StartDay) <
                         std::pair(other.StartMonth, other.StartDay);
              });
    QStringList periods;
    for (const VacationPeriod& period : table.vacations)
        if (period != VacationPeriod())
            periods.append(ProgrammeTexts::period(period));
    return listOf(u"Períodos de vacaciones"_s, periods);
}

qreal wrappedHeight(const QString& text, qreal width, int textSize)
{
    constexpr qreal anyHeight = 1000;
    return QFontMetricsF(PaperLook::font(textSize))
        .boundingRect({0, 0, width, anyHeight}, Qt::TextWordWrap, text)
        .height();
}

} // namespace

WallLists::WallLists(const Programme& programme, ClockModel model)
    : m_holidays(holidaysOf(programme.table)), m_vacations(vacationsOf(programme.table))
{
    for (const AlarmBlock& unsorted : programme.blocks) {
        const AlarmBlock block = AlarmRows::sorted(unsorted);
        Column column;
        // The HCT-7200 keeps its own, whatever the file says.
        if (model == ClockModel::Hct7300)
            column.note = u"duración %1, modo %2"_s.arg(block.Duration).arg(block.Mode);
        for (const Alarm& alarm : block.Alarms)
            if (alarm.isActive())
                column.lines.push_back({ProgrammeTexts::time(alarm), shortDays(alarm)});
        m_columns.push_back(std::move(column));
    }
}

int WallLists::textSize(qreal width) const
{
    constexpr qreal roomForLargeText = 200;
    const qreal columnWidth = width / Programme::blockCount - PaperLook::gap;
    int size = largestText;
    while (size > smallestText &&
           (columnsHeight(size) > roomForLargeText || !daysFit(size, columnWidth)))
        --size;
    return size;
}

bool WallLists::daysFit(int textSize, qreal columnWidth) const
{
    const QFontMetricsF metrics(PaperLook::font(textSize));
    const qreal most = columnWidth - timeWidthOf(textSize);
    return std::all_of(m_columns.begin(), m_columns.end(), [&](const Column& column) {
        return std::all_of(column.lines.begin(), column.lines.end(), [&](const Line& line) {
            return metrics.horizontalAdvance(line.days) <= most;
        });
    });
}

qreal WallLists::columnsHeight(int textSize) const
{
    std::size_t most = 1;
    for (const Column& column : m_columns)
        most = std::max(most, column.lines.size());
    return headingHeight + lineHeightOf(textSize) * static_cast<qreal>(most);
}

qreal WallLists::height(qreal width) const
{
    const int size = textSize(width);
    return columnsHeight(size) + PaperLook::gap + wrappedHeight(m_holidays, width, size) +
           wrappedHeight(m_vacations, width, size);
}

void WallLists::paint(QPainter& painter, const QRectF& area) const
{
    const int size = textSize(area.width());
    const qreal width = area.width() / Programme::blockCount;
    for (int block = 0; block < Programme::blockCount; ++block)
        paintColumn(
            painter,
            {area.left() + block * width, area.top(), width - PaperLook::gap, area.height()}, block,
            size);
    QRectF rest = area.adjusted(0, columnsHeight(size) + PaperLook::gap, 0, 0);
    for (const QString& text : {m_holidays, m_vacations}) {
        painter.drawText(rest, Qt::TextWordWrap, text);
        rest.adjust(0, wrappedHeight(text, area.width(), size), 0, 0);
    }
}

void WallLists::paintColumn(QPainter& painter, const QRectF& area, int block, int textSize) const
{
    const Column& column = m_columns[static_cast<std::size_t>(block)];
    painter.setFont(PaperLook::font(PaperLook::headingSize, true));
    const qreal width = WeekDrawing::drawLegend(painter, area.topLeft(), block, PaperLook::week());
    painter.setFont(PaperLook::font(smallestText));
    painter.drawText(area.adjusted(width, 2, 0, 0), Qt::AlignLeft | Qt::AlignTop, column.note);

    const QFont font = PaperLook::font(textSize);
    const QFontMetricsF metrics(font);
    const qreal timeWidth = timeWidthOf(textSize);
    const qreal space = textSize * 0.75;
    QRectF line(area.left(), area.top() + headingHeight, area.width(), lineHeightOf(textSize));
    painter.setFont(font);
    if (column.lines.empty())
        painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, u"sin avisos"_s);
    for (const Line& alarm : column.lines) {
        painter.drawText(QRectF(line.topLeft(), QSizeF(timeWidth - space, line.height())),
                         Qt::AlignRight | Qt::AlignVCenter, alarm.time);
        painter.drawText(line.adjusted(timeWidth, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                         metrics.elidedText(alarm.days, Qt::ElideRight, area.width() - timeWidth));
        line.translate(0, line.height());
    }
}
