// How the picture of the year is drawn.
#include "YearView.h"

#include <QPainter>

namespace {

// Of the Okabe-Ito palette, which the colour-blind tell apart.
const QColor& holidayColour()
{
    static const QColor blue(0x00, 0x72, 0xb2);
    return blue;
}

const QColor& vacationColour()
{
    static const QColor green(0x00, 0x9e, 0x73);
    return green;
}

} // namespace

void YearView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    drawMonths(painter);
    drawBars(painter);
    drawChosen(painter);
    drawDays(painter);
    drawFocus(painter);
}

void YearView::drawMonths(QPainter& painter) const
{
    for (int month = 1; month <= YearPicture::monthCount; ++month) {
        const QRectF first = m_picture->cell({1, month});
        const QRectF last = m_picture->cell({YearPicture::daysOf(month), month});
        if (month % 2 == 0)
            painter.fillRect(QRectF(0, first.top(), last.right(), first.height()),
                             palette().alternateBase());
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(QRectF(namesSpace, first.top(), first.left() - namesSpace, first.height()),
                         Qt::AlignVCenter | Qt::AlignLeft, YearPicture::monthName(month));
    }
}

void YearView::drawBars(QPainter& painter) const
{
    QColor fill = vacationColour();
    fill.setAlphaF(isDark() ? 0.45F : 0.35F);
    for (const YearPicture::Bar& bar : m_picture->bars()) {
        const QRectF place =
            m_picture->rectOf(bar).adjusted(bar.begins ? 1 : 0, 0, bar.ends ? -1 : 0, 0);
        painter.fillRect(place, fill);
        // The edge shows where it begins and ends, and that it goes on in another month.
        painter.setPen(QPen(vacationColour(), 2));
        painter.drawLine(place.bottomLeft(), place.bottomRight());
        if (bar.begins)
            painter.drawLine(place.topLeft(), place.bottomLeft());
        if (bar.ends)
            painter.drawLine(place.topRight(), place.bottomRight());
    }
}

void YearView::drawChosen(QPainter& painter) const
{
    if (!m_anchor || *m_anchor == currentItem())
        return;
    const auto [from, to] = chosenPeriod();
    QColor fill = palette().color(QPalette::Highlight);
    fill.setAlphaF(0.5F);
    for (int item = 0; item < itemCount(); ++item) {
        const Date date = dateOf(item);
        const bool isAfter = date >= from;
        const bool isBefore = date <= to;
        if (from <= to ? isAfter && isBefore : isAfter || isBefore)
            painter.fillRect(m_picture->cell(date), fill);
    }
}

void YearView::drawDays(QPainter& painter) const
{
    QFont bold = font();
    bold.setBold(true);
    for (int item = 0; item < itemCount(); ++item) {
        const Date date = dateOf(item);
        const QRectF cell = m_picture->cell(date);
        const bool isHoliday = m_picture->holidayAt(date).has_value();
        if (isHoliday) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(holidayColour());
            painter.drawRoundedRect(cell.adjusted(1, 1, -1, -1), 3, 3);
        }
        painter.setFont(isHoliday ? bold : font());
        painter.setPen(isHoliday ? QColor(Qt::white) : palette().color(QPalette::Text));
        painter.drawText(cell, Qt::AlignCenter, QString::number(date.day));
    }
}
