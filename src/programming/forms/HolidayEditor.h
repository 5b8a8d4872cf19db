#pragma once

#include "Programme.h"

#include <QFrame>
#include <QStringList>

#include <initializer_list>
#include <vector>

class QGroupBox;
class RowNumber;
class TextUpDown;

/// The 16 holidays and the 8 vacation periods; each date is a day and a month. Enter goes to the
/// next date, F6 from the holidays to the periods and back.
class HolidayEditor : public QFrame {
    Q_OBJECT
public:
    explicit HolidayEditor(QWidget* parent = nullptr);

    void setTable(const HolidayTable& table);
    HolidayTable table() const;
    void focusFirst();
    void focusHoliday(int row) { focusDate(row); }
    void focusVacation(int row) { focusDate(HolidayTable::holidayCount + 2 * row); }

    /// Keeps room for marks.
    void reserveMarks();
    /// Marks the holidays and periods that have a reason, which is their tool tip and accessible
    /// description: one text for each row, empty for no mark.
    void setReasons(const QStringList& holidays, const QStringList& vacations);

signals:
    /// The operator or assistive software has changed a date; setTable never does.
    void edited();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QGroupBox* makeHolidays();
    QGroupBox* makeVacations();
    void setReason(int number, const QString& reason, std::initializer_list<TextUpDown*> dates);
    RowNumber* addNumber(int number, TextUpDown* buddy);
    TextUpDown* addDate(const QString& name, const QString& what);
    /// Counted in the order of Tab; -1 when none has the focus.
    int dateWithFocus() const;
    void focusDate(int index);

    std::vector<TextUpDown*> txtFest;
    std::vector<TextUpDown*> txtVacacIni;
    std::vector<TextUpDown*> txtVacacFin;
    std::vector<TextUpDown*> m_dates;
    /// Those of the holidays, then those of the periods.
    std::vector<RowNumber*> m_numbers;
    bool m_isShowing = false;
};
