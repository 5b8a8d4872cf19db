#include "StatusBlock.h"

quint8 StatusBlock::byte(qsizetype index) const
{
    return index >= 0 && index < m_block.size() ? static_cast<quint8>(m_block[index]) : 0;
}

ClockModel StatusBlock::model() const
{
    return m_block.size() <= 12 || byte(12) == hct7200 ? ClockModel::Hct7200 : ClockModel::Hct7300;
}
