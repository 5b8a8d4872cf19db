#include "StatusBlock.h"

quint8 StatusBlock::byte(qsizetype index) const
{
    return index >= 0 && index < m_block.size() ? static_cast<quint8>(m_block[index]) : 0;
}

bool StatusBlock::isFirstModel() const { return m_block.size() <= 12 || byte(12) == firstModel; }
