#pragma once

#include "Programme.h"

#include <QWidget>

class QCheckBox;
class QHBoxLayout;
class TextUpDown;
class ValueLabel;

/// What stands above the alarms of a block: which one it is, its mode and its duration. The models
/// differ in what the operator may change of it.
class BlockHeader : public QWidget {
    Q_OBJECT
public:
    /// `statusMode` is the block's mode as the status block has it.
    virtual void setBlock(const AlarmBlock& block, int number, quint8 statusMode);
    virtual void storeBlock(AlarmBlock& block) const = 0;

    static BlockHeader* make(ClockModel model, QWidget* parent);

protected:
    explicit BlockHeader(QWidget* parent);

    /// A caption and what it is the caption of.
    void addCaptioned(const QString& caption, QWidget* field);
    QHBoxLayout* row() const { return m_row; }

private:
    QHBoxLayout* m_row;
    ValueLabel* m_number;
};

/// Mode and duration are the clock's: they are looked at here.
class Hct7200Header final : public BlockHeader {
    Q_OBJECT
public:
    explicit Hct7200Header(QWidget* parent);

    void setBlock(const AlarmBlock& block, int number, quint8 statusMode) override;
    /// The mode is 1 in intermittent mode and 0 otherwise, whatever it was.
    void storeBlock(AlarmBlock& block) const override;

private:
    ValueLabel* lblModo;
    ValueLabel* lblDuracion;
    QCheckBox* chkIntermitente;
};

/// Mode and duration, 0 to 255 each, are the operator's.
class Hct7300Header final : public BlockHeader {
    Q_OBJECT
public:
    explicit Hct7300Header(QWidget* parent);

    void setBlock(const AlarmBlock& block, int number, quint8 statusMode) override;
    void storeBlock(AlarmBlock& block) const override;

private:
    TextUpDown* txtModo;
    TextUpDown* txtDuracion;
};
