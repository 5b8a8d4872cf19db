#include "frmInfo.h"

#include "ClockDisplay.h"
#include "CoverLabel.h"
#include "RoundLamp.h"
#include "ValueLabel.h"
#include "WidgetDescription.h"
#include "modGlobais.h"
#include "modUtilidades.h"

#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

struct StatusRow {
    QString caption;
    QString toolTip;
};

// In rows 0, 1 and 4 caption and tool tip differ in meaning. This is intentional: operators know
// both.
const std::array<StatusRow, 5>& statusRows()
{
    static const std::array<StatusRow, 5> rows = {{
        {u"Invierno:"_s, u"Indica si se ha realizado el cambio horario automático"_s},
        {u"Inhibir ajuste:"_s, u"Encendido si se aplica horario estacional de verano"_s},
        {u"Telemando:"_s, u"Indica si los circuitos del equipo operan actualmente en modo "
                          "automático (apagado) o manual (telemandado)"_s},
        {u"Batería:"_s, u"Este indicador se activa al detectar un nivel bajo de carga en la "
                        "batería de litio del PLX-90"_s},
        {u"Fallo general"_s, u"Indica si se está realizando una reprogramación del equipo"_s},
    }};
    return rows;
}

QString lampState(bool lit) { return lit ? u"encendido"_s : u"apagado"_s; }

} // namespace

frmInfo::frmInfo(QMdiArea& area, frmCrono& crono, const modGlobais& globais, const Model& model)
    : MdiForm(area),
      m_globais(globais),
      m_registration(crono, *this, CronoRegistration::everyTick),
      lblData(new ValueLabel(u"lblData"_s, u"Fecha:"_s)),
      lblHora(new ValueLabel(u"lblHora"_s, u"Hora:"_s)),
      cmdPechar(new QPushButton(u"&Cerrar"_s))
{
    setObjectName(model.name);
    setWindowTitle(model.caption);
    setHint(*lblData, u"Fecha del reloj interno del equipo"_s);
    setHint(*lblHora, u"Hora del reloj interno del equipo"_s);
    cmdPechar->setObjectName(u"cmdPechar"_s);

    auto* grid = new QGridLayout(this);
    grid->addWidget(makeClockFrame(), 0, 0, 1, 2);
    grid->addWidget(makeStatusFrame(), 1, 0, 2, 1);
    grid->addWidget(makeOutputsFrame(), 1, 1, model.hasInputs ? 1 : 2, 1);
    if (model.hasInputs)
        grid->addWidget(makeInputsFrame(), 2, 1);
    grid->addWidget(cmdPechar, 3, 0, 1, 2, Qt::AlignRight);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);

    // Placeholders until the first full block arrives.
    lblData->setValue(u" miércoles, 23 de diciembre de 2002"_s);
    lblHora->setValue(u"14:35:57 "_s);
    reserveTextWidths();

    connect(cmdPechar, &QPushButton::clicked, this, [this] { closeWindow(CloseReason::Operator); });
    m_registration.ActivaCliente();
}

void frmInfo::ProcesoDiferido() { Refresh(); }

void frmInfo::Refresh()
{
    const ClockDisplay display{StatusBlock(m_globais.GeneralData)};
    if (!display.isComplete())
        return;
    lblData->setValue(display.dateText());
    lblHora->setValue(display.timeText());
    for (std::size_t i = 0; i < shpSaida.size(); ++i)
        shpSaida[i]->setFill(display.outputFill(int(i)), lampState(display.isOutputOn(int(i))));
    for (std::size_t i = 0; i < shpEntrada.size() && shpEntrada[i]; ++i)
        shpEntrada[i]->setFill(display.inputFill(int(i)), lampState(display.isInputActive(int(i))));
    for (std::size_t i = 0; i < shpEstado.size(); ++i)
        shpEstado[i]->setFill(display.statusFill(int(i)), lampState(display.isStatusLit(int(i))));
}

void frmInfo::unload()
{
    m_registration.DesactivaCliente();
    m_registration.EliminaCliente();
}

void frmInfo::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange)
        reserveTextWidths();
    MdiForm::changeEvent(event);
}

// Reserves room for the widest texts, so that no date is cut and the window keeps its size.
void frmInfo::reserveTextWidths()
{
    const QFontMetrics metrics(lblData->font());
    int widestDay = 0;
    int widestMonth = 0;
    for (quint8 i = 0; i <= 12; ++i) {
        widestDay = qMax(widestDay, metrics.horizontalAdvance(modUtilidades::dayName(i)));
        widestMonth = qMax(widestMonth, metrics.horizontalAdvance(modUtilidades::monthName(i)));
    }
    const int rest = metrics.horizontalAdvance(u"  , 000 de  de 0000 "_s);
    const int frame = 2 * (lblData->frameWidth() + lblData->margin());
    lblData->setMinimumWidth(widestDay + widestMonth + rest + frame);
}

QWidget* frmInfo::makeClockFrame()
{
    auto* frame = new QGroupBox(u"Reloj"_s);
    auto* grid = new QGridLayout(frame);
    grid->addWidget(lblData->makeCaption(), 0, 0);
    grid->addWidget(lblData, 0, 1);
    grid->addWidget(lblHora->makeCaption(), 1, 0);
    grid->addWidget(lblHora, 1, 1);
    grid->setColumnStretch(1, 1);
    lblHora->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return frame;
}

QWidget* frmInfo::makeStatusFrame()
{
    auto* frame = new QGroupBox(u"Estado"_s);
    auto* grid = new QGridLayout(frame);
    for (std::size_t i = 0; i < shpEstado.size(); ++i) {
        const StatusRow& row = statusRows()[i];
        shpEstado[i] = addLamp(*grid, indexed(u"shpEstado"_s, i), row.caption);
        auto* cover = new CoverLabel;
        describe(*cover, indexed(u"lblTapaEstado"_s, i), row.caption, row.toolTip);
        grid->addWidget(cover, int(i), 1);
    }
    grid->setRowStretch(grid->rowCount(), 1);
    return frame;
}

// The lamps go from 2 at the top ("Avisos 1") to 0 ("Avisos 3"): the clock's outputs are wired in
// that order.
QWidget* frmInfo::makeOutputsFrame()
{
    auto* frame = new QGroupBox(u"Salidas"_s);
    auto* grid = new QGridLayout(frame);
    for (std::size_t row = 0; row < shpSaida.size(); ++row) {
        const std::size_t i = shpSaida.size() - 1 - row;
        shpSaida[i] = addLamp(*grid, indexed(u"shpSaida"_s, i), u"Avisos %1"_s.arg(row + 1));
    }
    grid->setRowStretch(grid->rowCount(), 1);
    return frame;
}

QWidget* frmInfo::makeInputsFrame()
{
    const std::array<QString, 3> captions = {u"P1"_s, u"P2"_s, u"Sensor"_s};
    auto* frame = new QGroupBox(u"Entradas"_s);
    auto* grid = new QGridLayout(frame);
    for (std::size_t i = 0; i < shpEntrada.size(); ++i)
        shpEntrada[i] = addLamp(*grid, indexed(u"shpEntrada"_s, i), captions[i]);
    grid->setRowStretch(grid->rowCount(), 1);
    return frame;
}

// Appends a row: the caption on the left, its lamp on the right.
RoundLamp* frmInfo::addLamp(QGridLayout& grid, const QString& name, const QString& caption)
{
    auto* lamp = new RoundLamp;
    lamp->setObjectName(name);
    lamp->setAccessibleName(caption);
    lamp->setAccessibleDescription(u"sin datos"_s);
    auto* label = new QLabel(caption);
    label->setBuddy(lamp);
    const int row = grid.count() == 0 ? 0 : grid.rowCount();
    grid.addWidget(label, row, 0);
    grid.addWidget(lamp, row, 1);
    grid.setColumnStretch(0, 1);
    return lamp;
}

frmInfoHCT7200::frmInfoHCT7200(QMdiArea& area, frmCrono& crono, const modGlobais& globais)
    : frmInfo(area, crono, globais, {u"frmInfoHCT7200"_s, u"Información HCT-7200"_s, true})
{}

frmInfoHCT7300::frmInfoHCT7300(QMdiArea& area, frmCrono& crono, const modGlobais& globais)
    : frmInfo(area, crono, globais, {u"frmInfoHCT7300"_s, u"Información HCT-7300"_s, false})
{}
