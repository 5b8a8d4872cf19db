#include "dlgSerie.h"

#include "FollowingScroll.h"
#include "ProgrammeTexts.h"
#include "TextUpDown.h"
#include "WidgetDescription.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

#include <algorithm>
#include <initializer_list>

using namespace Qt::StringLiterals;

namespace {

constexpr int minutesOfHour = 60;

QString capitalised(QString text)
{
    text[0] = text[0].toUpper();
    return text;
}

} // namespace

dlgSerie::dlgSerie(const AlarmBlock& block, ClockModel model, QWidget* owner)
    : QDialog(owner), m_block(block)
{
    setObjectName(u"dlgSerie"_s);
    setWindowTitle(u"Serie de avisos"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    lblHoras = new QLabel(this);
    lblHoras->setObjectName(u"lblHoras"_s);
    lblHoras->setWordWrap(true);
    lblProblemas = new QLabel(this);
    lblProblemas->setObjectName(u"lblProblemas"_s);
    lblProblemas->setWordWrap(true);
    auto* buttons = new QDialogButtonBox(this);
    cmdAceptar = buttons->addButton(u"&Añadir"_s, QDialogButtonBox::AcceptRole);
    cmdAceptar->setObjectName(u"cmdAceptar"_s);
    buttons->addButton(u"&Cancelar"_s, QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* fields = new QWidget;
    auto* groups = new QHBoxLayout(fields);
    groups->setContentsMargins(0, 0, 0, 0);
    groups->addWidget(makeTimes());
    groups->addWidget(makeDays(dayFlagsOf(model)));
    auto* scroll = new FollowingScroll(*fields, this);
    scroll->setFrameShape(QFrame::NoFrame);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(scroll, 1);
    layout->addWidget(lblHoras);
    layout->addWidget(lblProblemas);
    layout->addWidget(buttons);
    showPlan();
    txtPrimero->setFocus();
}

QWidget* dlgSerie::makeTimes()
{
    auto* group = new QGroupBox(u"Horas"_s, this);
    txtPrimero = new TextUpDown(
        {{0, 23, 2, u"Hora del primer aviso"_s}, {0, 59, 2, u"Minuto del primer aviso"_s}}, u':',
        group);
    txtPrimero->setObjectName(u"txtPrimero"_s);
    txtPrimero->setValues(9, 0);
    connect(txtPrimero, &TextUpDown::valuesChanged, this, &dlgSerie::showPlan);
    const QString minutes = u" min"_s;
    txtCada = addNumber(u"txtCada"_s, u"Minutos entre avisos"_s, 1, 1439, 55, minutes);
    txtVeces = addNumber(u"txtVeces"_s, u"Número de avisos"_s, 1, AlarmBlock::alarmCount, 6, {});
    txtDescanso = addNumber(u"txtDescanso"_s, u"Minutos de descanso"_s, 0, 1439, 0, minutes);
    txtDescanso->setSpecialValueText(u"ninguno"_s);
    txtTras = addNumber(u"txtTras"_s, u"Descanso tras el aviso número"_s, 1, AlarmBlock::alarmCount,
                        3, {});
    auto* form = new QFormLayout(group);
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    form->addRow(u"&Primero a las:"_s, txtPrimero);
    form->addRow(u"C&ada:"_s, txtCada);
    form->addRow(u"Núme&ro de avisos:"_s, txtVeces);
    form->addRow(u"&Descanso añadido:"_s, txtDescanso);
    form->addRow(u"… &tras el aviso:"_s, txtTras);
    // In styles with high fields the layout leaves captions above the middle of their fields.
    for (QWidget* field :
         std::initializer_list<QWidget*>{txtPrimero, txtCada, txtVeces, txtDescanso, txtTras})
        form->labelForField(field)->setMinimumHeight(field->sizeHint().height());
    return group;
}

QSpinBox* dlgSerie::addNumber(const QString& name, const QString& accessibleName, int minimum,
                              int maximum, int value, const QString& suffix)
{
    auto* field = new QSpinBox(this);
    describe(*field, name, accessibleName);
    field->setRange(minimum, maximum);
    field->setSuffix(suffix);
    field->setValue(value);
    connect(field, &QSpinBox::valueChanged, this, &dlgSerie::showPlan);
    return field;
}

QWidget* dlgSerie::makeDays(int dayCount)
{
    auto* group = new QGroupBox(u"Días"_s, this);
    auto* column = new QVBoxLayout(group);
    for (int day = 0; day < dayCount; ++day) {
        auto* check = new QCheckBox(capitalised(ProgrammeTexts::day(day)), group);
        check->setObjectName(indexed(u"chkDia"_s, day));
        check->setChecked(day < workingDayCount);
        connect(check, &QCheckBox::toggled, this, &dlgSerie::showPlan);
        column->addWidget(check);
        m_days.push_back(check);
    }
    column->addStretch();
    return group;
}

AlarmSeries dlgSerie::series() const
{
    AlarmSeries series;
    series.firstMinute = txtPrimero->value(0) * minutesOfHour + txtPrimero->value(1);
    series.every = txtCada->value();
    series.count = txtVeces->value();
    series.breakMinutes = txtDescanso->value();
    series.breakAfter = txtTras->value();
    for (std::size_t day = 0; day < m_days.size(); ++day)
        series.days[day] = m_days[day]->isChecked();
    return series;
}

void dlgSerie::showPlan()
{
    // The fields are made one after the other, and each tells its first value.
    if (!cmdAceptar || m_days.empty())
        return;
    const AlarmSeries::Plan plan = this->plan();
    QStringList times;
    for (const int row : plan.placed.rows)
        times.append(ProgrammeTexts::time(plan.placed.block.Alarms[static_cast<std::size_t>(row)]));
    const bool hasDays = std::any_of(m_days.begin(), m_days.end(),
                                     [](const QCheckBox* day) { return day->isChecked(); });
    lblHoras->setText(times.isEmpty() ? u"No se añade ningún aviso."_s
                                      : u"Se añaden: %1."_s.arg(times.join(u", "_s)));
    lblProblemas->setText(hasDays ? plan.problems.join(u'\n') : u"Marque algún día."_s);
    txtTras->setEnabled(txtDescanso->value() > 0);
    cmdAceptar->setEnabled(hasDays && !times.isEmpty());
}
