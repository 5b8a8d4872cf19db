#include "RowNumber.h"

#include "WidgetDescription.h"

#include <QPainter>
#include <QPainterPath>

namespace {

void drawTriangle(QPainter& painter, const QRectF& area, const QPalette& palette)
{
    QPainterPath triangle;
    triangle.moveTo(area.center().x(), area.top());
    triangle.lineTo(area.bottomRight());
    triangle.lineTo(area.bottomLeft());
    triangle.closeSubpath();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(triangle, RowNumber::markColour(palette));
    // An exclamation mark, in the colour of what is behind the triangle.
    const qreal width = area.width() / 7;
    const auto bar = [&](qreal top, qreal height) {
        painter.fillRect(QRectF(area.center().x() - width / 2, area.top() + top * area.height(),
                                width, height * area.height()),
                         palette.base());
    };
    bar(0.38, 0.30);
    bar(0.76, 0.14);
}

} // namespace

RowNumber::RowNumber(int number, QWidget* parent) : QLabel(QString::number(number), parent)
{
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

void RowNumber::reserveMark() { setContentsMargins(markSize() + 2, 0, 0, 0); }

void RowNumber::setReason(const QString& reason)
{
    if (reason == m_reason)
        return;
    m_reason = reason;
    setHint(*this, reason);
    update();
}

QColor RowNumber::markColour(const QPalette& palette)
{
    // The orange of the Okabe-Ito palette for a dark background, its vermillion for a light one.
    return palette.color(QPalette::Base).lightness() < 128 ? QColor(0xe6, 0x9f, 0x00)
                                                           : QColor(0xd5, 0x5e, 0x00);
}

QIcon RowNumber::markIcon(const QPalette& palette)
{
    constexpr int size = 64;
    QPixmap picture(size, size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    drawTriangle(painter, QRectF(4, 4, size - 8, size - 8), palette);
    return picture;
}

void RowNumber::paintEvent(QPaintEvent* event)
{
    QLabel::paintEvent(event);
    if (m_reason.isEmpty())
        return;
    QPainter painter(this);
    const int size = markSize();
    drawTriangle(painter, QRectF(0, (height() - size) / 2.0, size, size), palette());
}

int RowNumber::markSize() const { return fontMetrics().ascent(); }
