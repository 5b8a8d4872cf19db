#include "RoundLamp.h"

#include <QEvent>
#include <QPainter>

namespace {

/// A colour counts as bright when its strongest component has at least this value.
constexpr int shiningValue = 0xC0;

} // namespace

RoundLamp::RoundLamp(QWidget* parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void RoundLamp::setFill(quint32 colour, const QString& state)
{
    if (accessibleDescription() != state)
        setAccessibleDescription(state);
    if (colour == m_fill)
        return;
    m_fill = colour;
    update();
}

QSize RoundLamp::sizeHint() const
{
    // An odd number of pixels: the disc then has a centre pixel and looks round at 100 %.
    const int side = (fontMetrics().height() * 5 / 4) | 1;
    return {side, side};
}

void RoundLamp::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange)
        updateGeometry();
    QWidget::changeEvent(event);
}

QColor RoundLamp::colour() const
{
    return QColor(static_cast<int>(m_fill & 0xFF), static_cast<int>(m_fill >> 8 & 0xFF),
                  static_cast<int>(m_fill >> 16 & 0xFF));
}

void RoundLamp::paintEvent(QPaintEvent*)
{
    const QColor fill = colour();
    const bool shining = fill.value() >= shiningValue;
    const double side = qMin(width(), height());
    const QPointF centre(width() / 2.0, height() / 2.0);
    const double radius = side * 0.38;

    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    if (shining) {
        QColor halo = fill;
        halo.setAlpha(90);
        painter.setBrush(halo);
        painter.drawEllipse(centre, side * 0.49, side * 0.49);
    }
    painter.setBrush(fill);
    painter.setPen(QPen(fill.darker(shining ? 200 : 250), qMax(1.0, side * 0.06)));
    painter.drawEllipse(centre, radius, radius);

    // The reflection does not cover the centre, which shows the fill unchanged.
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 255, 255, shining ? 200 : 45));
    painter.drawEllipse(centre + QPointF(-radius * 0.36, -radius * 0.44), radius * 0.27,
                        radius * 0.2);
}
