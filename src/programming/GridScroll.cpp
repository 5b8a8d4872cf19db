#include "GridScroll.h"

#include "AlarmGrid.h"

#include <QScrollBar>

GridScroll::GridScroll(AlarmGrid& grid, QWidget* parent) : QScrollArea(parent), m_grid(grid)
{
    setWidget(&grid);
    setWidgetResizable(true);
    // The fields take the focus, the frame around them has no use for it.
    setFocusPolicy(Qt::NoFocus);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, &grid, &AlarmGrid::setScrolled);
    connect(&grid, &AlarmGrid::rowEntered, this, &GridScroll::follow);
}

QSize GridScroll::sizeHint() const
{
    const int frame = 2 * frameWidth();
    return m_grid.sizeHint() + QSize(frame, frame);
}

void GridScroll::follow(const QRect& row)
{
    // The captions cover the top: two rows of margin keep the row clear of them.
    ensureVisible(row.center().x(), row.center().y(), row.width() / 2, 2 * row.height());
}
