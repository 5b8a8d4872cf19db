#include "HolidayEditor.h"

#include "TextUpDown.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>

using namespace Qt::StringLiterals;

namespace {

constexpr int datesAColumn = 8;

quint8 part(const TextUpDown* date, int field) { return static_cast<quint8>(date->value(field)); }

QLabel* numberLabel(int number, TextUpDown* buddy)
{
    auto* label = new QLabel(QString::number(number));
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label->setBuddy(buddy);
    return label;
}

} // namespace

HolidayEditor::HolidayEditor(QWidget* parent) : QFrame(parent)
{
    setObjectName(u"fraCadroFestVacac"_s);
    auto* layout = new QGridLayout(this);
    layout->addWidget(makeHolidays(), 0, 0);
    layout->addWidget(makeVacations(), 0, 1);
    auto* unused = new QLabel(u"Una fecha 00/00 está sin usar."_s, this);
    layout->addWidget(unused, 1, 0, 1, 2);
    layout->setColumnStretch(2, 1);
    layout->setRowStretch(2, 1);
}

void HolidayEditor::setTable(const HolidayTable& table)
{
    for (std::size_t index = 0; index < txtFest.size(); ++index)
        txtFest[index]->setValues(table.holidays[index].Day, table.holidays[index].Month);
    for (std::size_t index = 0; index < txtVacacIni.size(); ++index) {
        const VacationPeriod& period = table.vacations[index];
        txtVacacIni[index]->setValues(period.StartDay, period.StartMonth);
        txtVacacFin[index]->setValues(period.EndDay, period.EndMonth);
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

void HolidayEditor::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        return QFrame::keyPressEvent(event);
    // From the day the next field is the month, from the month it is the next date.
    for (const auto* dates : {&txtFest, &txtVacacIni, &txtVacacFin})
        for (TextUpDown* date : *dates)
            if (date->fieldWithFocus() == 0)
                date->setFieldFocus(1, Qt::OtherFocusReason);
    focusNextChild();
}

QGroupBox* HolidayEditor::makeHolidays()
{
    auto* fraFestivos = new QGroupBox(u"Festivos"_s, this);
    fraFestivos->setObjectName(u"fraFestivos"_s);
    auto* grid = new QGridLayout(fraFestivos);
    for (int index = 0; index < HolidayTable::holidayCount; ++index) {
        TextUpDown* date = addDate(u"txtFest(%1)"_s.arg(index), u"del festivo %1"_s.arg(index + 1));
        txtFest.push_back(date);
        const int row = 1 + index % datesAColumn;
        const int column = 2 * (index / datesAColumn);
        grid->addWidget(numberLabel(index + 1, date), row, column);
        grid->addWidget(date, row, column + 1);
    }
    // Level with the periods, which have captions above.
    grid->setRowMinimumHeight(0, QLabel(u"Inicio"_s).sizeHint().height());
    grid->setColumnStretch(4, 1);
    grid->setRowStretch(datesAColumn + 1, 1);
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
        txtVacacIni.push_back(addDate(u"txtVacacIni(%1)"_s.arg(index),
                                      u"de inicio del período vacacional "_s + period));
        txtVacacFin.push_back(
            addDate(u"txtVacacFin(%1)"_s.arg(index), u"de fin del período vacacional "_s + period));
        grid->addWidget(numberLabel(index + 1, txtVacacIni.back()), index + 1, 0);
        grid->addWidget(txtVacacIni.back(), index + 1, 1);
        grid->addWidget(txtVacacFin.back(), index + 1, 2);
    }
    grid->setColumnStretch(3, 1);
    grid->setRowStretch(HolidayTable::vacationCount + 1, 1);
    return fraPerVacacionais;
}

TextUpDown* HolidayEditor::addDate(const QString& name, const QString& what)
{
    auto* date =
        new TextUpDown({{u"Día "_s + what, 0, 31, 2}, {u"Mes "_s + what, 0, 12, 2}}, u"/"_s, this);
    date->setObjectName(name);
    date->setAccessibleName(u"Fecha "_s + what);
    date->setDimmed(true);
    connect(date, &TextUpDown::valueChanged, this,
            [date] { date->setDimmed(date->value(0) == 0 && date->value(1) == 0); });
    return date;
}
