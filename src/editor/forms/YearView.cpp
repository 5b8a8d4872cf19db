#include "YearView.h"

#include "AccessiblePicture.h"
#include "WidgetDescription.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>

#include <algorithm>
#include <array>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

constexpr int daysOfYear = 366;

} // namespace

YearView::YearView(QWidget* parent)
    : ItemPicture(parent), m_picture(std::in_place, m_table, QRectF())
{
    AccessiblePicture::install();
    describe(*this, u"picAno"_s, u"Año"_s);
    setAccessibleDescription(
        u"Espacio: poner o quitar un festivo. Mayúsculas y flechas, y luego Intro: período de "
        "vacaciones. Supr: quitar lo que haya en el día."_s);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    itemsChanged();
}

void YearView::setTable(const HolidayTable& table)
{
    if (table == m_table)
        return;
    m_table = table;
    place();
    itemsChanged();
}

void YearView::setCurrentDate(const Date& date) { setCurrentItem(itemOf(date)); }

YearView::Date YearView::dateOf(int item)
{
    int month = 1;
    for (; item >= YearPicture::daysOf(month); ++month)
        item -= YearPicture::daysOf(month);
    return {item + 1, month};
}

int YearView::itemOf(const Date& date)
{
    int item = date.day - 1;
    for (int month = 1; month < date.month; ++month)
        item += YearPicture::daysOf(month);
    return item;
}

int YearView::itemCount() const { return daysOfYear; }

QRectF YearView::itemRect(int item) const { return m_picture->cell(dateOf(item)); }

QString YearView::itemName(int item) const { return m_picture->describe(dateOf(item)); }

int YearView::itemAt(const QPointF& position) const
{
    const std::optional<Date> date = m_picture->dateAt(position);
    return date ? itemOf(*date) : -1;
}

void YearView::activate(int item) { emit holidayToggled(dateOf(item)); }

QSize YearView::minimumSizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    const int column = metrics.horizontalAdvance(u"00"_s) + 4;
    return {namesWidth() + YearPicture::longestMonth * column,
            YearPicture::monthCount * (metrics.height() + 4)};
}

QSize YearView::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    return minimumSizeHint() + QSize(YearPicture::longestMonth * metrics.averageCharWidth() * 2 / 3,
                                     YearPicture::monthCount * metrics.height() / 3);
}

int YearView::namesWidth() const
{
    return fontMetrics().horizontalAdvance(YearPicture::monthName(9)) + 2 * namesSpace;
}

QRectF YearView::dayArea() const { return QRectF(rect()).adjusted(namesWidth(), 2, -2, -2); }

void YearView::place() { m_picture.emplace(m_table, dayArea()); }

void YearView::resizeEvent(QResizeEvent* event)
{
    ItemPicture::resizeEvent(event);
    place();
}

void YearView::changeEvent(QEvent* event)
{
    ItemPicture::changeEvent(event);
    if (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange)
        return;
    updateGeometry();
    place();
}

std::pair<YearView::Date, YearView::Date> YearView::chosenPeriod() const
{
    const int one = std::min(*m_anchor, currentItem());
    const int other = std::max(*m_anchor, currentItem());
    if (other - one > daysOfYear / 2)
        return {dateOf(other), dateOf(one)};
    return {dateOf(one), dateOf(other)};
}

void YearView::choose(int anchor, int item)
{
    m_anchor = anchor;
    setCurrentItem(item);
    update();
}

void YearView::endChoice()
{
    m_anchor.reset();
    update();
}

void YearView::finishChoice()
{
    const bool isOneDay = !m_anchor || *m_anchor == currentItem();
    const int item = currentItem();
    const auto period = isOneDay ? std::pair(dateOf(item), dateOf(item)) : chosenPeriod();
    endChoice();
    if (isOneDay)
        activate(item);
    else
        emit periodDrawn(period.first, period.second);
}

void YearView::mousePressEvent(QMouseEvent* event)
{
    const int item = itemAt(event->position());
    if (event->button() == Qt::LeftButton && item >= 0)
        choose(item, item);
}

void YearView::mouseMoveEvent(QMouseEvent* event)
{
    const int item = itemAt(event->position());
    if (m_anchor && item >= 0)
        choose(*m_anchor, item);
}

void YearView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !m_anchor)
        return;
    // Released beside the days nothing happens: so a drag can be given up.
    if (itemAt(event->position()) < 0)
        return endChoice();
    finishChoice();
}

void YearView::contextMenuEvent(QContextMenuEvent* event)
{
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const int item = byKey ? currentItem() : itemAt(event->pos());
    if (item < 0)
        return;
    endChoice();
    setCurrentItem(item);
    const Date date = dateOf(item);
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QAction* holiday = menu->addAction(u"&Festivo"_s);
    holiday->setCheckable(true);
    holiday->setChecked(m_picture->holidayAt(date).has_value());
    connect(holiday, &QAction::triggered, this, [this, date] { emit holidayToggled(date); });
    for (const int period : m_picture->periodsAt(date))
        connect(menu->addAction(u"&Quitar el período de vacaciones %1"_s.arg(period + 1)),
                &QAction::triggered, this, [this, period] { emit periodRemoved(period); });
    menu->popup(byKey ? mapToGlobal(itemRect(item).center().toPoint()) : event->globalPos());
}

void YearView::removeAt(const Date& date)
{
    if (m_picture->holidayAt(date))
        emit holidayToggled(date);
    else if (const std::vector<int> periods = m_picture->periodsAt(date); !periods.empty())
        emit periodRemoved(periods.front());
}

void YearView::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Home:
    case Qt::Key_End: return moveTo(movedBy(event->key()), event->modifiers() & Qt::ShiftModifier);
    case Qt::Key_Space: return activate(currentItem());
    case Qt::Key_Return:
    case Qt::Key_Enter: return finishChoice();
    case Qt::Key_Delete: return removeAt(dateOf(currentItem()));
    case Qt::Key_Escape:
        if (m_anchor)
            return endChoice();
        break;
    default: break;
    }
    ItemPicture::keyPressEvent(event);
}

void YearView::moveTo(int item, bool isChoosing)
{
    if (!isChoosing)
        m_anchor.reset();
    else if (!m_anchor)
        m_anchor = currentItem();
    setCurrentItem(item);
    update();
}

int YearView::movedBy(int key) const
{
    const Date date = dateOf(currentItem());
    const auto inMonth = [&date](int month) {
        return itemOf({std::min(date.day, YearPicture::daysOf(month)), month});
    };
    switch (key) {
    case Qt::Key_Left: return (currentItem() + daysOfYear - 1) % daysOfYear;
    case Qt::Key_Right: return (currentItem() + 1) % daysOfYear;
    case Qt::Key_Up: return inMonth(date.month == 1 ? 12 : date.month - 1);
    case Qt::Key_Down: return inMonth(date.month == 12 ? 1 : date.month + 1);
    case Qt::Key_Home: return itemOf({1, date.month});
    default: return itemOf({YearPicture::daysOf(date.month), date.month});
    }
}
