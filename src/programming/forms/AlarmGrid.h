#pragma once

#include "Programme.h"

#include <QStringList>
#include <QWidget>

#include <vector>

class QCheckBox;
class QLabel;
class QPainter;
class RowNumber;
class TextUpDown;

/// The alarms of one block as rows: a number, a time, and a check box for each day. The rows are in
/// two columns of sixteen, so that the whole block is visible.
///
/// Keys: Tab goes through a row, Enter to the next row, the arrows from day to day and from row to
/// row, Space ticks a day, Ctrl+D repeats the days of the row above.
///
/// Where rows can be selected: a click on the number of a row selects it, with Shift, or while the
/// mouse is dragged, all rows up to it; so do Shift+Up and Shift+Down. The row with the focus is
/// always one of them. Ctrl+D then repeats the days of the first one in all others.
class AlarmGrid : public QWidget {
    Q_OBJECT
public:
    /// Rows in a line, 0 to 31 each; empty when there is none.
    struct Rows {
        int first = 0;
        int last = -1;

        bool isEmpty() const { return last < first; }
        int count() const { return last - first + 1; }
        bool operator==(const Rows&) const = default;
    };

    explicit AlarmGrid(ClockModel model, QWidget* parent = nullptr);
    ~AlarmGrid() override;

    /// A field that has its value already keeps its cursor, and what is typed in it goes on.
    void setAlarms(const AlarmBlock& block);
    /// Stores times and flags of all rows in the block.
    void storeAlarms(AlarmBlock& block) const;

    void focusRow(int row);
    /// The captions of the columns. They stand above the rows, as wide as the grid, but not in it.
    /// They belong to the grid until they are given another parent.
    QWidget& captions() { return *m_captions; }

    /// Lets the operator select rows, and keeps room for marks.
    void setRowsSelectable();
    Rows selectedRows() const;
    /// The selected rows; without a selection the row with the focus.
    Rows chosenRows() const;
    void selectRows(const Rows& rows);
    void clearSelection();
    /// As Ctrl+D does.
    void repeatDays();
    /// Marks the rows that have a reason, which is their tool tip and accessible description: one
    /// text for each row, empty for no mark.
    void setReasons(const QStringList& reasons);

signals:
    /// The operator or assistive software has changed a time or days; setAlarms never does.
    void edited();
    void selectionChanged();
    /// By right click on a number, which selects its row unless it is selected.
    void rowMenuRequested(const QPoint& globalPosition);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool event(QEvent* event) override;

private:
    struct Row {
        RowNumber* lblOrde;
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
    void repeatDaysOf(int source, const Rows& rows);
    void tellEdited();
    bool pressSelectionKey(const QKeyEvent& event);
    /// From the row where the selection began up to this one, which gets the focus.
    void extendSelectionTo(int row);
    void setSelection(int anchor, int current);
    int rowAt(const QPoint& position) const;
    /// The row whose number is there; -1 where there is none, and where rows cannot be selected.
    int numberAt(const QPoint& position) const;
    /// Empty from Saturday on.
    static QString dayHint(int day);
    void describeRow(int row);
    void paintRow(QPainter& painter, int row, const QRect& band) const;
    /// Shows the time in grey while no day is ticked, because it then has no effect.
    void dimIfInactive(int index);
    QRect rowRect(int row) const;

    const int m_dayCount;
    std::vector<Row> m_rows;
    QWidget* m_captions;
    std::vector<QLabel*> m_captionLabels;
    int m_focusRow = -1;
    bool m_isShowing = false;
    bool m_isSelectable = false;
    /// Where the selection began, and its row with the focus; -1 without a selection.
    int m_anchor = -1;
    int m_current = -1;
};
