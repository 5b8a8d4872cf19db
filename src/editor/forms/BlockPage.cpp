#include "BlockPage.h"

#include "AlarmGrid.h"
#include "BlockHeader.h"
#include "FollowingScroll.h"
#include "ProgrammeMarks.h"

#include <QLabel>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

QLabel* makeNote(const QString& text, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setWordWrap(true);
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

} // namespace

BlockPage::BlockPage(ClockModel model, QWidget* parent)
    : QWidget(parent),
      m_model(model),
      m_header(BlockHeader::make(model, this)),
      m_grid(new AlarmGrid(model))
{
    m_grid->setRowsSelectable();
    auto* scroll = new FollowingScroll(*m_grid, this);
    scroll->setHeader(m_grid->captions());
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_header);
    if (model == ClockModel::Hct7200) {
        auto* note = makeNote(u"Modo y tiempo son los que dice el archivo. El HCT-7200 conserva "
                              "los suyos: se ponen en el propio reloj."_s,
                              this);
        note->setObjectName(u"lblConserva"_s);
        layout->addWidget(note);
    }
    layout->addWidget(scroll, 1);
    layout->addWidget(makeNote(u"Tab: campo siguiente   Intro: aviso siguiente   Espacio: marcar "
                               "el día   Mayúsculas y flechas: elegir avisos   Ctrl+D: repetir "
                               "los días"_s,
                               this));
    connect(m_header, &BlockHeader::edited, this, &BlockPage::edited);
    connect(m_grid, &AlarmGrid::edited, this, &BlockPage::edited);
}

void BlockPage::showBlock(const AlarmBlock& block, int number)
{
    m_header->setBlock(block, number, block.Mode);
    m_grid->setAlarms(block);
}

void BlockPage::storeBlock(AlarmBlock& block) const
{
    m_grid->storeAlarms(block);
    if (m_model == ClockModel::Hct7300)
        m_header->storeBlock(block);
}

void BlockPage::showMarks(const ProgrammeMarks& marks, int block)
{
    QStringList reasons;
    for (int row = 0; row < AlarmBlock::alarmCount; ++row)
        reasons.append(marks.alarmReason(block, row));
    m_grid->setReasons(reasons);
}
