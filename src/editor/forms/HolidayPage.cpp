#include "HolidayPage.h"

#include "HolidayEditor.h"
#include "HolidayEdits.h"
#include "PictureScroll.h"
#include "ProgrammeMarks.h"
#include "ProgrammeTexts.h"
#include "YearView.h"

#include <QLabel>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

HolidayPage::HolidayPage(QWidget* parent)
    : QWidget(parent), m_year(new YearView), m_fields(new HolidayEditor(this))
{
    m_fields->reserveMarks();
    auto* hint = new QLabel(u"Haga clic en un día para ponerlo o quitarlo como festivo. Arrastre "
                            "sobre varios para un período de vacaciones."_s,
                            this);
    hint->setWordWrap(true);
    hint->setForegroundRole(QPalette::PlaceholderText);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(hint);
    layout->addWidget(new PictureScroll(*m_year, this), 1);
    layout->addWidget(m_fields);
    connect(m_fields, &HolidayEditor::edited, this,
            [this] { emit edited(m_fields->table(), QString()); });
    connect(m_year, &YearView::holidayToggled, this, &HolidayPage::toggleHoliday);
    connect(m_year, &YearView::periodDrawn, this, &HolidayPage::addPeriod);
    connect(m_year, &YearView::periodRemoved, this, [this](int period) {
        emit edited(HolidayEdits::withoutPeriod(m_fields->table(), period),
                    u"quitar vacaciones %1"_s.arg(period + 1));
    });
}

void HolidayPage::setTable(const HolidayTable& table)
{
    m_year->setTable(table);
    m_fields->setTable(table);
}

void HolidayPage::showMarks(const ProgrammeMarks& marks)
{
    QStringList holidays;
    QStringList vacations;
    for (int row = 0; row < HolidayTable::holidayCount; ++row)
        holidays.append(marks.holidayReason(row));
    for (int row = 0; row < HolidayTable::vacationCount; ++row)
        vacations.append(marks.vacationReason(row));
    m_fields->setReasons(holidays, vacations);
}

void HolidayPage::focusFirst() { m_fields->focusFirst(); }

void HolidayPage::focusHoliday(int row) { m_fields->focusHoliday(row); }

void HolidayPage::focusVacation(int row) { m_fields->focusVacation(row); }

void HolidayPage::toggleHoliday(const YearPicture::Date& date)
{
    if (const auto table = HolidayEdits::withHolidayToggled(m_fields->table(), date))
        emit edited(*table, u"festivo del "_s + ProgrammeTexts::date(date.day, date.month));
    else
        emit refused(
            u"No queda sitio: los %1 festivos están ocupados."_s.arg(HolidayTable::holidayCount));
}

void HolidayPage::addPeriod(const YearPicture::Date& from, const YearPicture::Date& to)
{
    if (const auto table = HolidayEdits::withPeriodAdded(m_fields->table(), from, to))
        emit edited(*table, u"añadir vacaciones"_s);
    else
        emit refused(u"No queda sitio: los %1 períodos de vacaciones están ocupados."_s.arg(
            HolidayTable::vacationCount));
}
