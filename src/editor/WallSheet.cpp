#include "WallSheet.h"

#include "AlarmRows.h"
#include "FileFailure.h"
#include "ProgrammeTexts.h"
#include "WeekDrawing.h"
#include "WeekPicture.h"
#include "WholeFile.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QPainter>
#include <QPdfWriter>
#include <QStringList>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr qreal pointsPerInch = 72;
constexpr qreal marginMillimetres = 12;

constexpr qreal titleHeight = 32;
constexpr qreal gap = 10;
constexpr qreal headingHeight = 16;
constexpr qreal leastWeekHeight = 200;
constexpr qreal mostHourHeight = 60;

constexpr int titleSize = 20;
constexpr int headingSize = 10;
constexpr int largestText = 12;
constexpr int smallestText = 8;
constexpr int markTextSize = 7;

const WeekDrawing::Look& paperLook()
{
    static const WeekDrawing::Look look{Qt::black, Qt::lightGray, Qt::white, false};
    return look;
}

/// Its size is in the units of the page, and its widths do not depend on the device.
QFont fontOf(int size, bool bold = false)
{
    QFont font;
    font.setPixelSize(size);
    font.setBold(bold);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

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

QString holidaysOf(const HolidayTable& table)
{
    QStringList dates;
    for (const Holiday& holiday : table.holidays)
        if (holiday != Holiday())
            dates.append(ProgrammeTexts::date(holiday.Day, holiday.Month));
    return listOf(u"Festivos"_s, dates);
}

QString vacationsOf(const HolidayTable& table)
{
    QStringList periods;
    for (const VacationPeriod& period : table.vacations)
        if (period != VacationPeriod())
            periods.append(ProgrammeTexts::period(period));
    return listOf(u"Períodos de vacaciones"_s, periods);
}

qreal lineHeightOf(int textSize) { return textSize * 1.25; }
qreal timeWidthOf(int textSize) { return textSize * 3.75; }

qreal wrappedHeight(const QString& text, qreal width, int textSize)
{
    constexpr qreal anyHeight = 1000;
    return QFontMetricsF(fontOf(textSize))
        .boundingRect({0, 0, width, anyHeight}, Qt::TextWordWrap, text)
        .height();
}

} // namespace

WallSheet::WallSheet(const Programme& programme, ClockModel model, const QString& title)
    : m_programme(programme),
      m_model(model),
      m_title(title),
      m_holidays(holidaysOf(programme.table)),
      m_vacations(vacationsOf(programme.table))
{
    for (int number = 0; number < Programme::blockCount; ++number) {
        const AlarmBlock block =
            AlarmRows::sorted(m_programme.blocks[static_cast<std::size_t>(number)]);
        Column column;
        // The HCT-7200 keeps its own, whatever the file says.
        if (m_model == ClockModel::Hct7300)
            column.note = u"duración %1, modo %2"_s.arg(block.Duration).arg(block.Mode);
        for (const Alarm& alarm : block.Alarms)
            if (alarm.isActive())
                column.lines.push_back({ProgrammeTexts::time(alarm), shortDays(alarm)});
        m_columns.push_back(std::move(column));
    }
}

void WallSheet::paint(QPagedPaintDevice& device) const
{
    QPainter painter(&device);
    painter.scale(device.logicalDpiX() / pointsPerInch, device.logicalDpiY() / pointsPerInch);
    const QRectF area(QPointF(), device.pageLayout().paintRect(QPageLayout::Point).size());
    for (int page = 0; page < pageCount(area.size()); ++page) {
        if (page > 0)
            device.newPage();
        paintPage(painter, area, page);
    }
}

QString WallSheet::writePdf(const QString& path) const
{
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&file);
        writer.setTitle(m_title);
        writer.setCreator(u"hct-editor"_s);
        writer.setPageSize(QPageSize(QPageSize::A4));
        writer.setPageMargins(
            {marginMillimetres, marginMillimetres, marginMillimetres, marginMillimetres},
            QPageLayout::Millimeter);
        paint(writer);
    }
    return WholeFile::replace(path, file.data()) ? QString() : FileFailure::ofWriting(path);
}

int WallSheet::textSize(qreal width) const
{
    constexpr qreal roomForLargeText = 200;
    const qreal columnWidth = width / Programme::blockCount - gap;
    for (int size = largestText; size > smallestText; --size) {
        const QFontMetricsF metrics(fontOf(size));
        const qreal daysWidth = columnWidth - timeWidthOf(size);
        const bool fits =
            std::all_of(m_columns.begin(), m_columns.end(), [&](const Column& column) {
                return std::all_of(column.lines.begin(), column.lines.end(), [&](const Line& line) {
                    return metrics.horizontalAdvance(line.days) <= daysWidth;
                });
            });
        if (fits && columnsHeight(size) <= roomForLargeText)
            return size;
    }
    return smallestText;
}

qreal WallSheet::columnsHeight(int textSize) const
{
    std::size_t most = 1;
    for (const Column& column : m_columns)
        most = std::max(most, column.lines.size());
    return headingHeight + lineHeightOf(textSize) * static_cast<qreal>(most);
}

qreal WallSheet::listsHeight(qreal width) const
{
    const int size = textSize(width);
    return columnsHeight(size) + gap + wrappedHeight(m_holidays, width, size) +
           wrappedHeight(m_vacations, width, size);
}

int WallSheet::pageCount(const QSizeF& area) const
{
    const qreal left = area.height() - titleHeight - gap - listsHeight(area.width());
    return left >= leastWeekHeight ? 1 : 2;
}

void WallSheet::paintPage(QPainter& painter, const QRectF& area, int page) const
{
    QRectF week = paintTitle(painter, area);
    QRectF lists = week;
    if (pageCount(area.size()) == 1) {
        lists.setTop(lists.bottom() - listsHeight(area.width()));
        week.setBottom(lists.top() - gap);
    }
    if (page == 0)
        paintWeek(painter, week);
    if (page == 1 || week != lists)
        paintLists(painter, lists);
}

QRectF WallSheet::paintTitle(QPainter& painter, const QRectF& area) const
{
    const QRectF line(area.left(), area.top(), area.width(), titleHeight - gap);
    const QString model = ProgrammeTexts::modelName(m_model);
    const qreal modelWidth = QFontMetricsF(fontOf(headingSize)).horizontalAdvance(model);
    const QFont font = fontOf(titleSize, true);
    painter.setPen(Qt::black);
    painter.setFont(font);
    painter.drawText(
        line, Qt::AlignLeft | Qt::AlignVCenter,
        QFontMetricsF(font).elidedText(m_title, Qt::ElideRight, line.width() - modelWidth - gap));
    painter.setFont(fontOf(headingSize));
    painter.drawText(line, Qt::AlignRight | Qt::AlignVCenter, model);
    return area.adjusted(0, titleHeight, 0, 0);
}

void WallSheet::paintWeek(QPainter& painter, const QRectF& area) const
{
    const QFont font = fontOf(markTextSize);
    const QFontMetricsF metrics(font);
    QRectF columns = area.marginsRemoved(WeekDrawing::margins(metrics));
    const auto pictureIn = [&](const QRectF& rect) {
        return WeekPicture(m_programme, m_model, rect, WeekDrawing::markHeight(metrics));
    };
    const WeekPicture whole = pictureIn(columns);
    columns.setHeight(
        std::min(columns.height(), (whole.endHour() - whole.firstHour()) * mostHourHeight));
    painter.setFont(font);
    WeekDrawing::draw(painter, pictureIn(columns), paperLook());
}

void WallSheet::paintLists(QPainter& painter, const QRectF& area) const
{
    const int size = textSize(area.width());
    const qreal width = area.width() / Programme::blockCount;
    for (int block = 0; block < Programme::blockCount; ++block)
        paintColumn(painter, {area.left() + block * width, area.top(), width - gap, area.height()},
                    block, size);
    QRectF rest = area.adjusted(0, columnsHeight(size) + gap, 0, 0);
    for (const QString& text : {m_holidays, m_vacations}) {
        painter.drawText(rest, Qt::TextWordWrap, text);
        rest.adjust(0, wrappedHeight(text, area.width(), size), 0, 0);
    }
}

void WallSheet::paintColumn(QPainter& painter, const QRectF& area, int block, int textSize) const
{
    const Column& column = m_columns[static_cast<std::size_t>(block)];
    painter.setFont(fontOf(headingSize, true));
    const qreal width = WeekDrawing::drawLegend(painter, area.topLeft(), block, paperLook());
    painter.setFont(fontOf(smallestText));
    painter.drawText(area.adjusted(width, 2, 0, 0), Qt::AlignLeft | Qt::AlignTop, column.note);

    const QFont font = fontOf(textSize);
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
