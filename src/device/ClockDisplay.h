#pragma once

#include "StatusBlock.h"

#include <QString>

/// What the information window shows of a status block: two texts and the colours of its lamps.
class ClockDisplay {
public:
    static constexpr int outputCount = 3;
    static constexpr int inputCount = 3;
    static constexpr int statusCount = 5;

    explicit ClockDisplay(const StatusBlock& block) : m_block(block) {}

    /// Whether the block has all bytes of this family. Others are not shown.
    bool isComplete() const { return m_block.isFull(); }
    /// " miércoles, 23 de diciembre de 2002"; "-------" for a day or month that does not exist.
    QString dateText() const;
    /// "9:05:03 ": the hours as they are, the rest in two digits, a blank at the end.
    QString timeText() const;

    /// Output i (0 to 2) is on while bit i of byte 2 is set.
    bool isOutputOn(int index) const;
    /// Input i (0 P1, 1 P2, 2 Sensor) is active while bit 3, 4 or 7 of byte 218 is clear.
    bool isInputActive(int index) const;
    /// Indicator i (0 to 4) is lit while bit 0, 1, 2, 3 or 7 of byte 219 is set.
    bool isStatusLit(int index) const;

    /// The lamps' colours, 0x00BBGGRR.
    quint32 outputFill(int index) const;
    quint32 inputFill(int index) const;
    quint32 statusFill(int index) const;

private:
    StatusBlock m_block;
};
