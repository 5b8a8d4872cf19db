#include "ClockDisplay.h"

#include "LampColours.h"
#include "modUtilidades.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<int, ClockDisplay::inputCount> inputBits = {3, 4, 7};
/// Bits 4 to 6 have no indicator.
constexpr std::array<int, ClockDisplay::statusCount> statusBits = {0, 1, 2, 3, 7};

bool isBitSet(quint8 value, int bit) { return (value >> bit & 1) != 0; }

QString twoDigits(quint8 value) { return u"%1"_s.arg(uint(value), 2, 10, QLatin1Char('0')); }

} // namespace

QString ClockDisplay::dateText() const
{
    return u" %1, %2 de %3 de %4"_s.arg(modUtilidades::dayName(m_block.weekday()),
                                        QString::number(m_block.day()),
                                        modUtilidades::monthName(m_block.month()),
                                        QString::number(modUtilidades::fullYear(m_block.year())));
}

QString ClockDisplay::timeText() const
{
    return u"%1:%2:%3 "_s.arg(QString::number(m_block.hours()), twoDigits(m_block.minutes()),
                              twoDigits(m_block.seconds()));
}

bool ClockDisplay::isOutputOn(int index) const { return isBitSet(m_block.outputs(), index); }

bool ClockDisplay::isInputActive(int index) const
{
    return !isBitSet(m_block.inputs(), inputBits.at(static_cast<std::size_t>(index)));
}

bool ClockDisplay::isStatusLit(int index) const
{
    return isBitSet(m_block.flags(), statusBits.at(static_cast<std::size_t>(index)));
}

quint32 ClockDisplay::outputFill(int index) const
{
    return isOutputOn(index) ? lampcolour::Green : lampcolour::DarkGreen;
}

quint32 ClockDisplay::inputFill(int index) const
{
    return isInputActive(index) ? lampcolour::Green : lampcolour::DarkGreen;
}

quint32 ClockDisplay::statusFill(int index) const
{
    return isStatusLit(index) ? lampcolour::Red : lampcolour::DarkRed;
}
