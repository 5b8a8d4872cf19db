#pragma once

#include "Programme.h"

#include <QFrame>

#include <vector>

class QGroupBox;
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

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QGroupBox* makeHolidays();
    QGroupBox* makeVacations();
    TextUpDown* addDate(const QString& name, const QString& what);
    /// Counted in the order of Tab; -1 when none has the focus.
    int dateWithFocus() const;
    void focusDate(int index);

    std::vector<TextUpDown*> txtFest;
    std::vector<TextUpDown*> txtVacacIni;
    std::vector<TextUpDown*> txtVacacFin;
    std::vector<TextUpDown*> m_dates;
};
