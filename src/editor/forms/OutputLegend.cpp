#include "OutputLegend.h"

#include "Programme.h"
#include "WeekDrawing.h"

#include <QPainter>
#include <QPixmap>

#include <cmath>

using namespace Qt::StringLiterals;

OutputLegend::OutputLegend(QWidget* parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAccessibleName(u"Colores: salida 1, salida 2 y salida 3"_s);
}

QSize OutputLegend::sizeHint() const
{
    // Drawn to measure it.
    QPixmap sheet(1, 1);
    QPainter painter(&sheet);
    painter.setFont(font());
    return {static_cast<int>(std::ceil(draw(painter))), fontMetrics().height() + 4};
}

void OutputLegend::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    draw(painter);
}

qreal OutputLegend::draw(QPainter& painter) const
{
    const QColor text = palette().color(QPalette::WindowText);
    const QColor background = palette().color(QPalette::Window);
    qreal x = 0;
    for (int block = 0; block < Programme::blockCount; ++block)
        x += WeekDrawing::drawLegend(painter, {x, 2}, block,
                                     {text, text, background, background.lightness() < 128});
    return x;
}
