#include "WallSheet.h"

#include "FileFailure.h"
#include "PaperLook.h"
#include "ProgrammeTexts.h"
#include "WeekDrawing.h"
#include "WholeFile.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qreal pointsPerInch = 72;
constexpr qreal marginMillimetres = 12;

constexpr qreal titleHeight = 32;
constexpr qreal leastWeekHeight = 200;
constexpr qreal mostHourHeight = 90;

constexpr int titleSize = 20;
/// Of the times in the week: as large as all of them have room.
constexpr int leastTextSize = 7;
constexpr int mostTextSize = 10;

} // namespace

WallSheet::WallSheet(const Programme& programme, ClockModel model, const QString& title)
    : m_programme(programme), m_model(model), m_title(title), m_lists(programme, model)
{}

QPageLayout WallSheet::paper()
{
    return {QPageSize(QPageSize::A4),
            QPageLayout::Portrait,
            {marginMillimetres, marginMillimetres, marginMillimetres, marginMillimetres},
            QPageLayout::Millimeter};
}

bool WallSheet::paint(QPagedPaintDevice& device) const
{
    QPainter painter;
    if (!painter.begin(&device))
        return false;
    painter.scale(device.logicalDpiX() / pointsPerInch, device.logicalDpiY() / pointsPerInch);
    const QRectF area(QPointF(), device.pageLayout().paintRect(QPageLayout::Point).size());
    for (int page = 0; page < pageCount(area.size()); ++page) {
        if (page > 0 && !device.newPage())
            return false;
        paintPage(painter, area, page);
    }
    return painter.end();
}

QString WallSheet::writePdf(const QString& path, const QPageLayout& layout) const
{
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&file);
        writer.setTitle(m_title);
        writer.setCreator(u"hct-editor"_s);
        writer.setPageLayout(layout);
        paint(writer);
    }
    return WholeFile::replace(path, file.data()) ? QString() : FileFailure::ofWriting(path);
}

int WallSheet::pageCount(const QSizeF& area) const
{
    const qreal left = area.height() - titleHeight - PaperLook::gap - m_lists.height(area.width());
    return left >= leastWeekHeight ? 1 : 2;
}

void WallSheet::paintPage(QPainter& painter, const QRectF& area, int page) const
{
    QRectF week = paintTitle(painter, area);
    QRectF lists = week;
    if (pageCount(area.size()) == 1) {
        lists.setTop(lists.bottom() - m_lists.height(area.width()));
        week.setBottom(lists.top() - PaperLook::gap);
    }
    if (page == 0)
        paintWeek(painter, week);
    if (page == 1 || week != lists)
        m_lists.paint(painter, lists);
}

QRectF WallSheet::paintTitle(QPainter& painter, const QRectF& area) const
{
    const QRectF line(area.left(), area.top(), area.width(), titleHeight - PaperLook::gap);
    const QString model = ProgrammeTexts::modelName(m_model);
    const qreal modelWidth =
        QFontMetricsF(PaperLook::font(PaperLook::headingSize)).horizontalAdvance(model);
    const QFont font = PaperLook::font(titleSize, true);
    painter.setPen(Qt::black);
    painter.setFont(font);
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                     QFontMetricsF(font).elidedText(m_title, Qt::ElideRight,
                                                    line.width() - modelWidth - PaperLook::gap));
    painter.setFont(PaperLook::font(PaperLook::headingSize));
    painter.drawText(line, Qt::AlignRight | Qt::AlignVCenter, model);
    return area.adjusted(0, titleHeight, 0, 0);
}

void WallSheet::paintWeek(QPainter& painter, const QRectF& area) const
{
    int size = mostTextSize;
    while (size > leastTextSize && !weekIn(area, size).haveRoom)
        --size;
    painter.setFont(PaperLook::font(size));
    WeekDrawing::draw(painter, weekIn(area, size).picture, PaperLook::week());
}

WallSheet::Week WallSheet::weekIn(const QRectF& area, int textSize) const
{
    const QFontMetricsF metrics(PaperLook::font(textSize));
    QRectF columns = area.marginsRemoved(WeekDrawing::margins(metrics));
    const auto pictureIn = [&](const QRectF& rect) {
        return WeekPicture(m_programme, m_model, rect, WeekDrawing::markHeight(metrics));
    };
    const WeekPicture whole = pictureIn(columns);
    columns.setHeight(
        std::min(columns.height(), (whole.endHour() - whole.firstHour()) * mostHourHeight));
    const WeekPicture picture = pictureIn(columns);
    const qreal wanted = WeekDrawing::leastColumnWidth(metrics) / qreal(Programme::blockCount);
    const bool haveRoom = std::all_of(
        picture.marks().begin(), picture.marks().end(),
        [wanted](const WeekPicture::Mark& mark) { return mark.rect.width() >= wanted; });
    return {picture, haveRoom};
}
