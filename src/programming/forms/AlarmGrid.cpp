#include "AlarmGrid.h"

#include "RowNumber.h"
#include "TextUpDown.h"
#include "WidgetDescription.h"

#include <QApplication>
#include <QCheckBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QScopedValueRollback>
#include <QShortcut>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr int rowsAHalf = AlarmBlock::alarmCount / 2;

struct DayText {
    const char16_t* control;
    const char16_t* caption;
    /// Begins the accessible name: "Sábado, aviso 7".
    const char16_t* name;
    /// Empty from Saturday on.
    const char16_t* toolTip;
};

constexpr std::array<DayText, dayFlagCount> dayTexts{{
    {u"chkLuns", u"Lun", u"Lunes", u"Márquese para avisar los Lunes"},
    {u"chkMartes", u"Mar", u"Martes", u"Márquese para avisar los Martes"},
    {u"chkMercores", u"Mié", u"Miércoles", u"Márquese para avisar los Miércoles"},
    {u"chkXoves", u"Jue", u"Jueves", u"Márquese para avisar los Jueves"},
    {u"chkVenres", u"Vie", u"Viernes", u"Márquese para avisar los Viernes"},
    {u"chkSabado", u"Sáb", u"Sábado", u""},
    {u"chkDomingo", u"Dom", u"Domingo", u""},
    {u"chkFestivo", u"Fest", u"Festivo", u""},
    {u"chkVacaciones", u"Vac", u"Vacaciones", u""},
}};

const DayText& textOf(int day) { return dayTexts[static_cast<std::size_t>(day)]; }

QString text(const char16_t* literal) { return QString::fromUtf16(literal); }

} // namespace

AlarmGrid::AlarmGrid(ClockModel model, QWidget* parent)
    : QWidget(parent), m_dayCount(dayFlagsOf(model))
{
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(6, 0, 6, 4);
    grid->setHorizontalSpacing(4);
    grid->setVerticalSpacing(2);
    for (int row = 0; row < AlarmBlock::alarmCount; ++row)
        addRow(row);
    grid->setColumnMinimumWidth(m_dayCount + 2, fontMetrics().averageCharWidth() * 4);
    grid->setRowStretch(rowsAHalf, 1);
    addCaptions();

    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget*, QWidget* now) { focusChanged(now); });
    auto* repeat = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_D), this);
    repeat->setContext(Qt::WidgetWithChildrenShortcut);
    connect(repeat, &QShortcut::activated, this, &AlarmGrid::repeatDays);
}

// A row that has the focus loses it when the rows no longer exist.
AlarmGrid::~AlarmGrid() { disconnect(qApp, nullptr, this, nullptr); }

void AlarmGrid::setAlarms(const AlarmBlock& block)
{
    const QScopedValueRollback showing(m_isShowing, true);
    for (std::size_t row = 0; row < m_rows.size(); ++row) {
        const Alarm& alarm = block.Alarms[row];
        m_rows[row].txtHora->updateValues(alarm.Hour, alarm.Minute);
        for (std::size_t day = 0; day < m_rows[row].days.size(); ++day)
            m_rows[row].days[day]->setChecked(alarm.flags[day]);
    }
}

void AlarmGrid::storeAlarms(AlarmBlock& block) const
{
    for (std::size_t row = 0; row < m_rows.size(); ++row) {
        Alarm& alarm = block.Alarms[row];
        alarm.Hour = static_cast<quint8>(m_rows[row].txtHora->value(0));
        alarm.Minute = static_cast<quint8>(m_rows[row].txtHora->value(1));
        for (std::size_t day = 0; day < m_rows[row].days.size(); ++day)
            alarm.flags[day] = m_rows[row].days[day]->isChecked();
    }
}

void AlarmGrid::focusRow(int row) { moveTo({row, 0}); }

void AlarmGrid::addRow(int index)
{
    auto* grid = static_cast<QGridLayout*>(layout());
    const int gridRow = index % rowsAHalf;
    const int firstColumn = index < rowsAHalf ? 0 : m_dayCount + 3;
    const QString number = QString::number(index + 1);

    Row row;
    row.lblOrde = new RowNumber(index + 1, this);
    row.lblOrde->setObjectName(indexed(u"lblOrde"_s, index));
    row.txtHora = new TextUpDown({{0, 23, 2, u"Hora del aviso %1"_s.arg(number)},
                                  {0, 59, 2, u"Minuto del aviso %1"_s.arg(number)}},
                                 u':', this);
    row.txtHora->setObjectName(indexed(u"txtHora"_s, index));
    row.lblOrde->setBuddy(row.txtHora);
    grid->addWidget(row.lblOrde, gridRow, firstColumn);
    grid->addWidget(row.txtHora, gridRow, firstColumn + 1);
    for (int day = 0; day < m_dayCount; ++day) {
        row.days.push_back(addDay(index, day));
        grid->addWidget(row.days.back(), gridRow, firstColumn + 2 + day, Qt::AlignCenter);
    }
    row.txtHora->setDimmed(true);
    connect(row.txtHora, &TextUpDown::valuesChanged, this, [this] {
        if (!m_isShowing)
            clearSelection();
        tellEdited();
    });
    m_rows.push_back(std::move(row));
    describeRow(index);
}

QCheckBox* AlarmGrid::addDay(int index, int day)
{
    auto* check = new QCheckBox(this);
    describe(*check, indexed(text(textOf(day).control), index),
             u"%1, aviso %2"_s.arg(text(textOf(day).name)).arg(index + 1));
    check->installEventFilter(this);
    connect(check, &QCheckBox::toggled, this, [this, index] {
        dimIfInactive(index);
        tellEdited();
    });
    return check;
}

QString AlarmGrid::dayHint(int day) { return text(textOf(day).toolTip); }

void AlarmGrid::addCaptions()
{
    m_captions = new QWidget(this);
    m_captions->setBackgroundRole(QPalette::Base);
    m_captions->setAutoFillBackground(true);
    auto* grid = static_cast<QGridLayout*>(layout());
    const auto add = [this](const QString& caption) {
        auto* label = new QLabel(caption, m_captions);
        label->setAlignment(Qt::AlignCenter);
        m_captionLabels.push_back(label);
        return label;
    };
    for (int half = 0; half < 2; ++half) {
        QLabel* number = add(u"N.º"_s);
        number->setObjectName(indexed(u"lblNumero"_s, half));
        // The numbers below it may be narrower.
        grid->setColumnMinimumWidth(half * (m_dayCount + 3), number->sizeHint().width());
        add(u"Hora"_s);
        for (int day = 0; day < m_dayCount; ++day) {
            // With five columns there is room for whole names.
            const bool whole = m_dayCount == workingDayCount;
            const QLabel* label = add(text(whole ? textOf(day).name : textOf(day).caption));
            const int column = half * (m_dayCount + 3) + 2 + day;
            grid->setColumnMinimumWidth(column, label->sizeHint().width() + 6);
            grid->setColumnStretch(column, 1);
        }
    }
    m_captions->setFixedHeight(m_captionLabels.front()->sizeHint().height() + 8);
}

void AlarmGrid::placeCaptions()
{
    const auto* grid = static_cast<QGridLayout*>(layout());
    for (int index = 0; index < static_cast<int>(m_captionLabels.size()); ++index) {
        const int perHalf = m_dayCount + 2;
        const int column = index < perHalf ? index : index + 1;
        const QRect cell = grid->cellRect(0, column);
        m_captionLabels[static_cast<std::size_t>(index)]->setGeometry(cell.left(), 0, cell.width(),
                                                                      m_captions->height());
    }
}

bool AlarmGrid::event(QEvent* event)
{
    const bool handled = QWidget::event(event);
    // The layout has placed the fields by now.
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Resize)
        placeCaptions();
    return handled;
}

void AlarmGrid::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    for (int row = 0; row < AlarmBlock::alarmCount; ++row)
        paintRow(painter, row, rowRect(row));
}

void AlarmGrid::paintRow(QPainter& painter, int row, const QRect& band) const
{
    const auto wash = [&](QColor colour, float alpha) {
        colour.setAlphaF(alpha);
        painter.fillRect(band, colour);
    };
    const Rows selected = selectedRows();
    if (row % 2 != 0)
        painter.fillRect(band, palette().alternateBase());
    if (!m_rows[static_cast<std::size_t>(row)].lblOrde->reason().isEmpty())
        wash(RowNumber::markColour(palette()), 0.16F);
    if (row >= selected.first && row <= selected.last)
        wash(palette().color(QPalette::Highlight), 0.30F);
    if (row != m_focusRow)
        return;
    wash(palette().color(QPalette::Highlight), 0.22F);
    painter.fillRect(QRect(band.topLeft(), QSize(3, band.height())), palette().highlight());
}

bool AlarmGrid::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress)
        clearSelection();
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    if (pressSelectionKey(*static_cast<QKeyEvent*>(event)))
        return true;
    // In a check box the arrows would go through all check boxes; here they go by row and day.
    if (!qobject_cast<QCheckBox*>(watched))
        return QWidget::eventFilter(watched, event);
    const Place place = placeOf(qobject_cast<QWidget*>(watched));
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Up: moveTo({place.row - 1, place.column}); return true;
    case Qt::Key_Down: moveTo({place.row + 1, place.column}); return true;
    case Qt::Key_Left: moveTo({place.row, place.column - 1}); return true;
    case Qt::Key_Right: moveTo({place.row, place.column + 1}); return true;
    default: return QWidget::eventFilter(watched, event);
    }
}

void AlarmGrid::keyPressEvent(QKeyEvent* event)
{
    const Place place = placeOf(QApplication::focusWidget());
    if (place.row < 0)
        return QWidget::keyPressEvent(event);
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: moveTo({place.row + 1, 0}); return;
    case Qt::Key_Right:
        if (place.column == 0)
            moveTo({place.row, 1});
        return;
    case Qt::Key_Left: return;
    default: QWidget::keyPressEvent(event);
    }
}

void AlarmGrid::focusChanged(QWidget* now)
{
    const int row = placeOf(now).row;
    if (row == m_focusRow)
        return;
    for (const int changed : {m_focusRow, row})
        if (changed >= 0)
            update(rowRect(changed));
    m_focusRow = row;
    // Not while the focus is elsewhere: menus and boxes act on the selection.
    if (row >= 0 && row != m_current)
        clearSelection();
}

AlarmGrid::Place AlarmGrid::placeOf(const QWidget* widget) const
{
    while (widget && widget->parentWidget() != this)
        widget = widget->parentWidget();
    if (!widget)
        return {};
    for (int index = 0; index < static_cast<int>(m_rows.size()); ++index) {
        const Row& row = m_rows[static_cast<std::size_t>(index)];
        if (row.txtHora == widget)
            return {index, 0};
        for (int day = 0; day < m_dayCount; ++day)
            if (row.days[static_cast<std::size_t>(day)] == widget)
                return {index, day + 1};
    }
    return {};
}

void AlarmGrid::moveTo(Place place)
{
    if (place.row < 0 || place.row >= static_cast<int>(m_rows.size()) || place.column > m_dayCount)
        return;
    const Row& row = m_rows[static_cast<std::size_t>(place.row)];
    if (place.column > 0)
        row.days[static_cast<std::size_t>(place.column - 1)]->setFocus(Qt::OtherFocusReason);
    else
        row.txtHora->setFieldFocus(0, Qt::OtherFocusReason);
}

void AlarmGrid::repeatDays()
{
    const Rows rows = chosenRows();
    if (rows.count() > 1)
        repeatDaysOf(rows.first, {rows.first + 1, rows.last});
    else if (rows.first > 0)
        repeatDaysOf(rows.first - 1, rows);
}

void AlarmGrid::repeatDaysOf(int source, const Rows& rows)
{
    const auto& days = m_rows[static_cast<std::size_t>(source)].days;
    bool isChange = false;
    {
        // Told once, not once a day.
        const QScopedValueRollback showing(m_isShowing, true);
        for (int row = rows.first; row <= rows.last; ++row) {
            const auto& here = m_rows[static_cast<std::size_t>(row)].days;
            for (std::size_t day = 0; day < here.size(); ++day) {
                isChange = isChange || here[day]->isChecked() != days[day]->isChecked();
                here[day]->setChecked(days[day]->isChecked());
            }
        }
    }
    if (isChange)
        tellEdited();
}

void AlarmGrid::tellEdited()
{
    if (!m_isShowing)
        emit edited();
}

void AlarmGrid::dimIfInactive(int index)
{
    const Row& row = m_rows[static_cast<std::size_t>(index)];
    const bool active = std::any_of(row.days.begin(), row.days.end(),
                                    [](const QCheckBox* day) { return day->isChecked(); });
    row.txtHora->setDimmed(!active);
}

QRect AlarmGrid::rowRect(int row) const
{
    const Row& fields = m_rows[static_cast<std::size_t>(row)];
    const auto* grid = static_cast<QGridLayout*>(layout());
    const int gridRow = row % rowsAHalf;
    const int firstColumn = row < rowsAHalf ? 0 : m_dayCount + 3;
    const QRect cells = grid->cellRect(gridRow, firstColumn) |
                        grid->cellRect(gridRow, firstColumn + m_dayCount + 1) |
                        fields.txtHora->geometry();
    return cells.adjusted(-4, -1, 2, 1);
}
