#include "HolidayEditor.h"

#include "FollowingScroll.h"
#include "RowNumber.h"
#include "TextUpDown.h"
#include "WidgetDescription.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QScopedValueRollback>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int datesAColumn = 8;

quint8 part(const TextUpDown* date, int field) { return static_cast<quint8>(date->value(field)); }

} // namespace

HolidayEditor::HolidayEditor(QWidget* parent) : QFrame(parent)
{
    setObjectName(u"fraCadroFestVacac"_s);
    auto* dates = new QWidget;
    auto* groups = new QHBoxLayout(dates);
    groups->setContentsMargins(0, 0, 0, 0);
    groups->addWidget(makeHolidays(), 0, Qt::AlignTop);
    groups->addWidget(makeVacations(), 0, Qt::AlignTop);
    groups->addStretch();
    auto* scroll = new FollowingScroll(*dates, this);
    scroll->setFrameShape(QFrame::NoFrame);
    auto* keys = new QLabel(u"Intro: fecha siguiente   F6: de los festivos a los períodos y vuelta"
                            "   00/00: sin usar"_s,
                            this);
    keys->setWordWrap(true);
    keys->setForegroundRole(QPalette::PlaceholderText);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(scroll, 1);
    layout->addWidget(keys);
}

void HolidayEditor::setTable(const HolidayTable& table)
{
    const QScopedValueRollback showing(m_isShowing, true);
    for (std::size_t index = 0; index < txtFest.size(); ++index)
        txtFest[index]->updateValues(table.holidays[index].Day, table.holidays[index].Month);
    for (std::size_t index = 0; index < txtVacacIni.size(); ++index) {
        const VacationPeriod& period = table.vacations[index];
        txtVacacIni[index]->updateValues(period.StartDay, period.StartMonth);
        txtVacacFin[index]->updateValues(period.EndDay, period.EndMonth);
    }
}

HolidayTable HolidayEditor::table() const
{
    HolidayTable table;
    for (std::size_t index = 0; index < txtFest.size(); ++index)
        table.holidays[index] = {part(txtFest[index], 0), part(txtFest[index], 1)};
    for (std::size_t index = 0; index < txtVacacIni.size(); ++index)
        table.vacations[index] = {part(txtVacacIni[index], 0), part(txtVacacIni[index], 1),
                                  part(txtVacacFin[index], 0), part(txtVacacFin[index], 1)};
    return table;
}

void HolidayEditor::focusFirst() { focusDate(0); }

void HolidayEditor::reserveMarks()
{
    for (RowNumber* number : m_numbers)
        number->reserveMark();
}

void HolidayEditor::setReasons(const QStringList& holidays, const QStringList& vacations)
{
    for (int row = 0; row < HolidayTable::holidayCount; ++row)
        setReason(row, holidays.value(row), {txtFest[static_cast<std::size_t>(row)]});
    for (int row = 0; row < HolidayTable::vacationCount; ++row) {
        const auto period = static_cast<std::size_t>(row);
        setReason(HolidayTable::holidayCount + row, vacations.value(row),
                  {txtVacacIni[period], txtVacacFin[period]});
    }
}

void HolidayEditor::setReason(int number, const QString& reason,
                              std::initializer_list<TextUpDown*> dates)
{
    m_numbers[static_cast<std::size_t>(number)]->setReason(reason);
    for (TextUpDown* date : dates)
        setHint(*date, reason);
}

void HolidayEditor::keyPressEvent(QKeyEvent* event)
{
    const int date = dateWithFocus();
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: return focusDate(date + 1);
    case Qt::Key_F6:
        return focusDate(date < HolidayTable::holidayCount ? HolidayTable::holidayCount : 0);
    default: return QFrame::keyPressEvent(event);
    }
}

int HolidayEditor::dateWithFocus() const
{
    const auto found = std::find_if(m_dates.begin(), m_dates.end(), [](const TextUpDown* date) {
        return date->fieldWithFocus() >= 0;
    });
    return found == m_dates.end() ? -1 : static_cast<int>(found - m_dates.begin());
}

void HolidayEditor::focusDate(int index)
{
    if (index < static_cast<int>(m_dates.size()))
        m_dates[static_cast<std::size_t>(index)]->setFieldFocus(0, Qt::OtherFocusReason);
}

QGroupBox* HolidayEditor::makeHolidays()
{
    auto* fraFestivos = new QGroupBox(u"Festivos"_s, this);
    fraFestivos->setObjectName(u"fraFestivos"_s);
    auto* grid = new QGridLayout(fraFestivos);
    for (int index = 0; index < HolidayTable::holidayCount; ++index) {
        TextUpDown* date =
            addDate(indexed(u"txtFest"_s, index), u"del festivo %1"_s.arg(index + 1));
        txtFest.push_back(date);
        const int row = 1 + index % datesAColumn;
        const int column = 2 * (index / datesAColumn);
        grid->addWidget(addNumber(index + 1, date), row, column);
        grid->addWidget(date, row, column + 1);
    }
    for (const int column : {1, 3})
        grid->addWidget(new QLabel(u"Fecha"_s), 0, column);
    return fraFestivos;
}

QGroupBox* HolidayEditor::makeVacations()
{
    auto* fraPerVacacionais = new QGroupBox(u"Períodos Vacacionales"_s, this);
    fraPerVacacionais->setObjectName(u"fraPerVacacionais"_s);
    auto* grid = new QGridLayout(fraPerVacacionais);
    grid->addWidget(new QLabel(u"Inicio"_s), 0, 1);
    grid->addWidget(new QLabel(u"Fin"_s), 0, 2);
    for (int index = 0; index < HolidayTable::vacationCount; ++index) {
        const QString period = QString::number(index + 1);
        txtVacacIni.push_back(addDate(indexed(u"txtVacacIni"_s, index),
                                      u"de inicio del período vacacional "_s + period));
        txtVacacFin.push_back(addDate(indexed(u"txtVacacFin"_s, index),
                                      u"de fin del período vacacional "_s + period));
        grid->addWidget(addNumber(index + 1, txtVacacIni.back()), index + 1, 0);
        grid->addWidget(txtVacacIni.back(), index + 1, 1);
        grid->addWidget(txtVacacFin.back(), index + 1, 2);
    }
    return fraPerVacacionais;
}

RowNumber* HolidayEditor::addNumber(int number, TextUpDown* buddy)
{
    auto* label = new RowNumber(number, this);
    label->setBuddy(buddy);
    m_numbers.push_back(label);
    return label;
}

TextUpDown* HolidayEditor::addDate(const QString& name, const QString& what)
{
    auto* date =
        new TextUpDown({{0, 31, 2, u"Día "_s + what}, {0, 12, 2, u"Mes "_s + what}}, u'/', this);
    date->setObjectName(name);
    date->setDimmed(true);
    connect(date, &TextUpDown::valuesChanged, this, [this, date] {
        date->setDimmed(date->value(0) == 0 && date->value(1) == 0);
        if (!m_isShowing)
            emit edited();
    });
    m_dates.push_back(date);
    return date;
}
