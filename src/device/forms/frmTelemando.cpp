#include "frmTelemando.h"

#include "CoverLabel.h"
#include "LampColours.h"
#include "RoundLamp.h"
#include "StatusBlock.h"
#include "Switch.h"
#include "WidgetDescription.h"
#include "modGlobais.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

/// In ticks of the timer service (1 ms).
constexpr qint16 period = 3;

QLabel* makeEndLabel(const QString& name, const QString& text)
{
    auto* label = new QLabel(text);
    label->setObjectName(name);
    return label;
}

} // namespace

frmTelemando::frmTelemando(QMdiArea& area, frmCrono& crono, MessageLink& link,
                           const modGlobais& globais, const Model& model)
    : MdiForm(area),
      m_control(link, StatusBlock(globais.GeneralData).isRemoteControlled()),
      m_registration(crono, m_control, period),
      chkAutomatico(new QCheckBox(u"&Modo automático"_s)),
      cmdPechar(new QPushButton(u"&Cerrar"_s))
{
    setObjectName(model.name);
    setWindowTitle(model.caption);
    chkAutomatico->setObjectName(u"chkAutomatico"_s);
    cmdPechar->setObjectName(u"cmdPechar"_s);

    auto* column = new QVBoxLayout(this);
    for (std::size_t row = 0; row < RemoteControl::outputCount; ++row)
        column->addWidget(makeFrame(row));
    column->addStretch();
    column->addLayout(makeBottomRow());

    chkAutomatico->setChecked(!m_control.Manual());
    showMode();
    connect(chkAutomatico, &QCheckBox::toggled, this, [this](bool checked) {
        m_control.setManual(!checked);
        showMode();
    });
    connect(cmdPechar, &QPushButton::clicked, this, [this] { closeWindow(CloseReason::Operator); });
    connect(&m_control, &RemoteControl::switchMoved, this, [this](int index, int position) {
        showSwitch(static_cast<std::size_t>(index), position);
    });
    connect(&m_control, &RemoteControl::stateRead, this, &frmTelemando::showState);
    m_registration.ActivaCliente();
}

QLayout* frmTelemando::makeBottomRow()
{
    auto* row = new QHBoxLayout;
    row->addWidget(chkAutomatico);
    row->addStretch();
    row->addSpacing(fontMetrics().height());
    row->addWidget(cmdPechar);
    return row;
}

// The rows go from output 2 at the top ("Avisos 1") to output 0, as in the information window: the
// clock's outputs are wired in that order.
QWidget* frmTelemando::makeFrame(std::size_t row)
{
    const std::size_t i = RemoteControl::outputCount - 1 - row;
    const QString caption = u"Avisos %1"_s.arg(row + 1);
    auto* fraSaida = new QGroupBox(u"Avisos &%1"_s.arg(row + 1));
    fraSaida->setObjectName(indexed(u"fraSaida"_s, row));

    shpSaida[i] = new RoundLamp;
    shpSaida[i]->setObjectName(indexed(u"shpSaida"_s, i));
    shpSaida[i]->setAccessibleName(caption);
    shpSaida[i]->setAccessibleDescription(u"sin datos"_s);
    sldInterruptor[i] = new Switch;
    sldInterruptor[i]->setObjectName(indexed(u"sldInterruptor"_s, i));
    sldInterruptor[i]->setAccessibleName(caption);
    lblTapa[i] = new CoverLabel;
    lblTapa[i]->setObjectName(indexed(u"lblTapa"_s, i));
    lblTapa[i]->setAccessibleName(caption);

    auto* grid = new QGridLayout(fraSaida);
    grid->addWidget(shpSaida[i], 0, 1, 2, 1, Qt::AlignCenter);
    grid->addWidget(makeEndLabel(indexed(u"lblOFF"_s, i), u"0"_s), 0, 3, Qt::AlignTop);
    grid->addWidget(makeEndLabel(indexed(u"lblON"_s, i), u"1"_s), 1, 3, Qt::AlignBottom);
    grid->addWidget(sldInterruptor[i], 0, 4, 2, 1);
    grid->addWidget(lblTapa[i], 0, 4, 2, 1);
    grid->setColumnMinimumWidth(2, 3 * fontMetrics().height());
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(5, 1);

    connect(lblTapa[i], &CoverLabel::clicked, this,
            [this, i] { m_control.toggle(static_cast<int>(i)); });
    connect(sldInterruptor[i], &Switch::valueChanged, this,
            [this, i](int position) { m_control.setPosition(static_cast<int>(i), position); });
    showSwitch(i, m_control.position(static_cast<int>(i)));
    return fraSaida;
}

void frmTelemando::showMode()
{
    for (std::size_t i = 0; i < sldInterruptor.size(); ++i) {
        sldInterruptor[i]->setEnabled(m_control.Manual());
        lblTapa[i]->setCursor(m_control.Manual() ? Qt::PointingHandCursor : Qt::ArrowCursor);
    }
}

void frmTelemando::showSwitch(std::size_t index, int position)
{
    sldInterruptor[index]->setValue(position);
    sldInterruptor[index]->setAccessibleDescription(position == 0 ? u"desconectado"_s
                                                                  : u"conectado"_s);
}

// A set bit is an output that is off; in the information window it is one that is on.
void frmTelemando::showState(quint8 restBits)
{
    for (std::size_t i = 0; i < shpSaida.size(); ++i) {
        const bool atRest = (restBits >> i & 1) != 0;
        shpSaida[i]->setFill(atRest ? lampcolour::DarkGreen : lampcolour::Green,
                             atRest ? u"apagado"_s : u"encendido"_s);
    }
}

void frmTelemando::unload()
{
    m_control.stop();
    m_registration.EliminaCliente();
}

frmTelemandoHCT7200::frmTelemandoHCT7200(QMdiArea& area, frmCrono& crono, MessageLink& link,
                                         const modGlobais& globais)
    : frmTelemando(area, crono, link, globais, {u"frmTelemandoHCT7200"_s, u"Telemando HCT-7200"_s})
{}

frmTelemandoHCT7300::frmTelemandoHCT7300(QMdiArea& area, frmCrono& crono, MessageLink& link,
                                         const modGlobais& globais)
    : frmTelemando(area, crono, link, globais, {u"frmTelemandoHCT7300"_s, u"Telemando HCT-7300"_s})
{}
