#pragma once

#include "YearPicture.h"

#include <QWidget>

class HolidayEditor;
class ProgrammeMarks;
class YearView;

/// The picture of the year, and the fields of its holidays and vacation periods.
class HolidayPage final : public QWidget {
    Q_OBJECT
public:
    explicit HolidayPage(QWidget* parent = nullptr);

    void setTable(const HolidayTable& table);
    void showMarks(const ProgrammeMarks& marks);

    void focusFirst();
    /// The field of a holiday, 0 to 15, or of a period, 0 to 7.
    void focusHoliday(int row);
    void focusVacation(int row);

signals:
    /// The operator wants this table. `step` names it for undo; empty: as the fields say.
    void edited(const HolidayTable& table, const QString& step);
    /// The operator wanted something that is not possible, for the reason told.
    void refused(const QString& reason);

private:
    void toggleHoliday(const YearPicture::Date& date);
    void addPeriod(const YearPicture::Date& from, const YearPicture::Date& to);

    YearView* m_year;
    HolidayEditor* m_fields;
};
