#include "WeekView.h"

#include "AccessiblePicture.h"
#include "ProgrammeTexts.h"
#include "WeekDrawing.h"
#include "WidgetDescription.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QtMath>

#include <algorithm>
#include <cstdlib>

using namespace Qt::StringLiterals;

WeekView::WeekView(QWidget* parent) : ItemPicture(parent)
{
    AccessiblePicture::install();
    describe(*this, u"picSemana"_s, u"Semana"_s);
    setAccessibleDescription(u"Flechas: de un aviso a otro. Intro: ir a su fila."_s);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    place();
}

void WeekView::setProgramme(const Programme& programme, ClockModel model)
{
    if (programme == m_programme && model == m_model)
        return;
    m_programme = programme;
    m_model = model;
    place();
    updateGeometry();
    itemsChanged();
}

int WeekView::itemCount() const { return static_cast<int>(m_picture->marks().size()); }

QRectF WeekView::itemRect(int item) const { return mark(item).rect; }

QString WeekView::itemName(int item) const
{
    const WeekPicture::Mark& here = mark(item);
    const Alarm& alarm = m_programme.blocks[static_cast<std::size_t>(here.block)]
                             .Alarms[static_cast<std::size_t>(here.row)];
    return u"%1, %2, %3, aviso %4"_s
        .arg(WeekPicture::columnName(here.column), ProgrammeTexts::time(alarm),
             ProgrammeTexts::output(here.block).toLower())
        .arg(here.row + 1);
}

int WeekView::itemAt(const QPointF& position) const
{
    const WeekPicture::Mark* found = m_picture->markAt(position);
    return found ? static_cast<int>(found - m_picture->marks().data()) : -1;
}

void WeekView::activate(int item) { emit alarmChosen(mark(item).block, mark(item).row); }

QSize WeekView::minimumSizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    const QMargins margins = WeekDrawing::margins(metrics).toMargins();
    const int column = WeekDrawing::leastColumnWidth(metrics);
    const int height =
        qCeil(m_picture->readableHeight(WeekDrawing::markHeight(QFontMetricsF(font()))));
    return QSize(dayFlagsOf(m_model) * column, std::max(12 * metrics.height(), height))
        .grownBy(margins);
}

int WeekView::usualWidth(ClockModel model, const QFontMetrics& metrics)
{
    const int column = Programme::blockCount * (metrics.horizontalAdvance(u"00:00"_s) + 10) + 2;
    const QMargins margins = WeekDrawing::margins(metrics).toMargins();
    return dayFlagsOf(model) * column + margins.left() + margins.right();
}

QSize WeekView::sizeHint() const
{
    return minimumSizeHint().expandedTo({usualWidth(m_model, fontMetrics()), 0});
}

void WeekView::place()
{
    const QFontMetricsF metrics(font());
    m_picture.emplace(m_programme, m_model,
                      QRectF(rect()).marginsRemoved(WeekDrawing::margins(metrics)),
                      WeekDrawing::markHeight(metrics));
}

void WeekView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor lines = palette().color(QPalette::Text);
    lines.setAlphaF(0.2F);
    WeekDrawing::draw(
        painter, *m_picture,
        {palette().color(QPalette::Text), lines, palette().color(QPalette::Base), isDark()});
    drawFocus(painter);
}

void WeekView::resizeEvent(QResizeEvent* event)
{
    ItemPicture::resizeEvent(event);
    place();
}

void WeekView::changeEvent(QEvent* event)
{
    ItemPicture::changeEvent(event);
    if (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange)
        return;
    updateGeometry();
    place();
}

void WeekView::mouseMoveEvent(QMouseEvent* event)
{
    if (itemAt(event->position()) < 0)
        unsetCursor();
    else
        setCursor(Qt::PointingHandCursor);
}

void WeekView::mouseReleaseEvent(QMouseEvent* event)
{
    const int item = itemAt(event->position());
    if (event->button() != Qt::LeftButton || item < 0)
        return;
    setCurrentItem(item);
    activate(item);
}

void WeekView::keyPressEvent(QKeyEvent* event)
{
    if (currentItem() < 0)
        return ItemPicture::keyPressEvent(event);
    switch (event->key()) {
    case Qt::Key_Up: return setCurrentItem(std::max(currentItem() - 1, 0));
    case Qt::Key_Down: return setCurrentItem(currentItem() + 1);
    case Qt::Key_Left: return setCurrentItem(besideCurrent(-1));
    case Qt::Key_Right: return setCurrentItem(besideCurrent(1));
    case Qt::Key_Home: return setCurrentItem(0);
    case Qt::Key_End: return setCurrentItem(itemCount() - 1);
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space: return activate(currentItem());
    default: return ItemPicture::keyPressEvent(event);
    }
}

const WeekPicture::Mark& WeekView::mark(int item) const
{
    return m_picture->marks()[static_cast<std::size_t>(item)];
}

int WeekView::besideCurrent(int by) const
{
    const WeekPicture::Mark& from = mark(currentItem());
    int best = currentItem();
    for (int column = from.column + by; column >= 0 && column < m_picture->columnCount();
         column += by) {
        int distance = -1;
        for (int item = 0; item < itemCount(); ++item) {
            const int away = std::abs(mark(item).minute - from.minute);
            if (mark(item).column == column && (distance < 0 || away < distance)) {
                distance = away;
                best = item;
            }
        }
        if (distance >= 0)
            break;
    }
    return best;
}
