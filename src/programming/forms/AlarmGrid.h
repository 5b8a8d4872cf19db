#pragma once

#include "Programme.h"

#include <QWidget>

#include <vector>

class QCheckBox;
class QLabel;
class TextUpDown;

/// The alarms of one block as rows: a number, a time, and a check box for each day. The rows are in
/// two columns of sixteen, so that the whole block is visible.
///
/// Keys: Tab goes through a row, Enter to the next row, the arrows from day to day and from row to
/// row, Space ticks a day, Ctrl+D repeats the days of the row above.
class AlarmGrid : public QWidget {
    Q_OBJECT
public:
    explicit AlarmGrid(ClockModel model, QWidget* parent = nullptr);

    void setAlarms(const AlarmBlock& block);
    /// Stores times and flags of all rows in the block.
    void storeAlarms(AlarmBlock& block) const;

    void focusRow(int row);
    /// The captions of the columns. They stand above the rows, as wide as the grid, but not in it.
    /// They belong to the grid until they are given another parent.
    QWidget& captions() { return *m_captions; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    struct Row {
        QLabel* lblOrde;
        TextUpDown* txtHora;
        std::vector<QCheckBox*> days;
    };
    /// A place among the fields of the grid: column 0 is the time, 1 Monday.
    struct Place {
        int row = -1;
        int column = 0;
    };

    void addRow(int index);
    QCheckBox* addDay(int index, int day);
    void addCaptions();
    void placeCaptions();
    void focusChanged(QWidget* now);
    Place placeOf(const QWidget* widget) const;
    /// Does nothing when there is no such place.
    void moveTo(Place place);
    void repeatDaysOfRowAbove();
    /// Shows the time in grey while no day is ticked, because it then has no effect.
    void dimIfInactive(int index);
    QRect rowRect(int row) const;

    const int m_dayCount;
    std::vector<Row> m_rows;
    QWidget* m_captions;
    std::vector<QLabel*> m_captionLabels;
    int m_focusRow = -1;
};
