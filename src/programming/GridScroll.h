#pragma once

#include <QScrollArea>

class AlarmGrid;

/// Holds the alarm grid: asks for room for all of it, scrolls when the screen has less, and follows
/// the focus.
class GridScroll : public QScrollArea {
    Q_OBJECT
public:
    explicit GridScroll(AlarmGrid& grid, QWidget* parent = nullptr);

    QSize sizeHint() const override;

private:
    void follow(const QRect& row);

    AlarmGrid& m_grid;
};
