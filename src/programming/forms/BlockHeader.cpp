#include "BlockHeader.h"

#include "ProgrammeRules.h"
#include "TextUpDown.h"
#include "ValueLabel.h"
#include "WidgetDescription.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QScopedValueRollback>

using namespace Qt::StringLiterals;

namespace {

ValueLabel* makeValueLabel(const QString& name, const QString& caption, const QString& hint = {})
{
    auto* label = new ValueLabel(name, caption, ValueLabel::Look::Bold);
    setHint(*label, hint);
    return label;
}

} // namespace

BlockHeader::BlockHeader(QWidget* parent) : QWidget(parent), m_row(new QHBoxLayout(this))
{
    m_row->setContentsMargins(0, 0, 0, 0);
    m_number = makeValueLabel(u"lblPrograma"_s, u"Programa"_s);
    addCaptioned(u"Programa:"_s, m_number);
}

BlockHeader* BlockHeader::make(ClockModel model, QWidget* parent)
{
    if (model == ClockModel::Hct7200)
        return new Hct7200Header(parent);
    return new Hct7300Header(parent);
}

void BlockHeader::setBlock(const AlarmBlock& /*block*/, int number, quint8 /*statusMode*/)
{
    m_number->setValue(QString::number(number + 1));
}

void BlockHeader::addCaptioned(const QString& caption, QWidget* field)
{
    auto* label = new QLabel(caption, this);
    label->setBuddy(field);
    m_row->addWidget(label);
    m_row->addWidget(field);
    m_row->addSpacing(fontMetrics().averageCharWidth() * 3);
}

Hct7200Header::Hct7200Header(QWidget* parent) : BlockHeader(parent)
{
    lblModo = makeValueLabel(u"lblModo"_s, u"Modo"_s, u"Modo del Aviso."_s);
    lblDuracion = makeValueLabel(u"lblDuracion"_s, u"Tiempo"_s, u"Duración del aviso"_s);
    chkIntermitente = new QCheckBox(u"Modo intermitente"_s, this);
    chkIntermitente->setObjectName(u"chkIntermitente"_s);
    setHint(*chkIntermitente,
            u"Modo de avisos intermitente. No puede programarse desde el ordenador"_s);
    chkIntermitente->setEnabled(false);
    addCaptioned(u"Modo:"_s, lblModo);
    addCaptioned(u"Tiempo:"_s, lblDuracion);
    row()->addWidget(chkIntermitente);
    row()->addStretch();
}

void Hct7200Header::setBlock(const AlarmBlock& block, int number, quint8 statusMode)
{
    BlockHeader::setBlock(block, number, statusMode);
    lblModo->setValue(QString::number(statusMode));
    // The blank after the number is intentional.
    lblDuracion->setValue(QString::number(block.Duration) + u' ');
    chkIntermitente->setChecked(ProgrammeRules::shownMode(block.Mode, ClockModel::Hct7200) == 1);
}

void Hct7200Header::storeBlock(AlarmBlock& block) const
{
    block.Mode = chkIntermitente->isChecked() ? 1 : 0;
}

Hct7300Header::Hct7300Header(QWidget* parent) : BlockHeader(parent)
{
    txtModo = new TextUpDown({{0, 255}}, u' ', this);
    describe(*txtModo, u"txtModo"_s, u"Modo"_s, u"Modo del Aviso."_s);
    txtDuracion = new TextUpDown({{0, 255}}, u' ', this);
    describe(*txtDuracion, u"txtDuracion"_s, u"Tiempo"_s, u"Tiempo del Aviso."_s);
    addCaptioned(u"Modo:"_s, txtModo);
    addCaptioned(u"Tiempo:"_s, txtDuracion);
    row()->addStretch();
    for (TextUpDown* field : {txtModo, txtDuracion})
        connect(field, &TextUpDown::valuesChanged, this, [this] {
            if (!m_isShowing)
                emit edited();
        });
}

void Hct7300Header::setBlock(const AlarmBlock& block, int number, quint8 statusMode)
{
    BlockHeader::setBlock(block, number, statusMode);
    const QScopedValueRollback showing(m_isShowing, true);
    // A field that has its value already keeps what is being typed.
    if (txtModo->value() != block.Mode)
        txtModo->setValue(0, block.Mode);
    if (txtDuracion->value() != block.Duration)
        txtDuracion->setValue(0, block.Duration);
}

void Hct7300Header::storeBlock(AlarmBlock& block) const
{
    block.Mode = static_cast<quint8>(txtModo->value());
    block.Duration = static_cast<quint8>(txtDuracion->value());
}
