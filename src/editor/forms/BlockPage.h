#pragma once

#include "Programme.h"

#include <QWidget>

class AlarmGrid;
class BlockHeader;
class ProgrammeMarks;

/// The header and the alarms of one output.
class BlockPage final : public QWidget {
    Q_OBJECT
public:
    explicit BlockPage(ClockModel model, QWidget* parent = nullptr);

    /// `number` is 0 to 2.
    void showBlock(const AlarmBlock& block, int number);
    /// Puts what the fields hold into the block. That of the HCT-7200 keeps mode and duration,
    /// which nobody edits.
    void storeBlock(AlarmBlock& block) const;
    void showMarks(const ProgrammeMarks& marks, int block);

    AlarmGrid& grid() { return *m_grid; }

signals:
    /// The operator has changed something.
    void edited();

private:
    const ClockModel m_model;
    BlockHeader* m_header;
    AlarmGrid* m_grid;
};
