#pragma once

#include "Programme.h"

#include <QWidget>

class QCheckBox;
class QHBoxLayout;
class TextUpDown;
class ValueLabel;

/// The controls above the alarms of a block: its number, mode and duration. The models differ in
/// what the operator may change.
class BlockHeader : public QWidget {
    Q_OBJECT
public:
    /// `number` is 0 to 2. `statusMode` is the mode of that block in the status block.
    virtual void setBlock(const AlarmBlock& block, int number, quint8 statusMode);
    virtual void storeBlock(AlarmBlock& block) const = 0;

    static BlockHeader* make(ClockModel model, QWidget* parent);

signals:
    /// The operator or assistive software has changed mode or duration; setBlock never does.
    void edited();

protected:
    explicit BlockHeader(QWidget* parent);

    /// Adds a caption and its field.
    void addCaptioned(const QString& caption, QWidget* field);
    QHBoxLayout* row() const { return m_row; }

private:
    QHBoxLayout* m_row;
    ValueLabel* m_number;
};

/// Shows mode and duration, which only the clock sets.
class Hct7200Header final : public BlockHeader {
    Q_OBJECT
public:
    explicit Hct7200Header(QWidget* parent);

    void setBlock(const AlarmBlock& block, int number, quint8 statusMode) override;
    /// Stores mode 1 if the block is intermittent, otherwise 0, whatever it was before.
    void storeBlock(AlarmBlock& block) const override;

private:
    ValueLabel* lblModo;
    ValueLabel* lblDuracion;
    QCheckBox* chkIntermitente;
};

/// The operator sets mode and duration, 0 to 255 each.
class Hct7300Header final : public BlockHeader {
    Q_OBJECT
public:
    explicit Hct7300Header(QWidget* parent);

    void setBlock(const AlarmBlock& block, int number, quint8 statusMode) override;
    void storeBlock(AlarmBlock& block) const override;

private:
    TextUpDown* txtModo;
    TextUpDown* txtDuracion;
    bool m_isShowing = false;
};
