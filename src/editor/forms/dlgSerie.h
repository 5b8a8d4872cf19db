#pragma once

#include "AlarmSeries.h"

#include <QDialog>

class QCheckBox;
class QLabel;
class QPushButton;
class QSpinBox;
class TextUpDown;

/// Asks for a series of alarms at regular times and shows what it will put into free rows of a
/// block. Show it with open(); it deletes itself when closed.
class dlgSerie final : public QDialog {
    Q_OBJECT
public:
    dlgSerie(const AlarmBlock& block, ClockModel model, QWidget* owner);

    /// The block with the series of the fields.
    AlarmSeries::Plan plan() const { return series().into(m_block); }

private:
    AlarmSeries series() const;
    QWidget* makeTimes();
    QWidget* makeDays(int dayCount);
    QSpinBox* addNumber(const QString& name, const QString& accessibleName, int minimum,
                        int maximum, int value, const QString& suffix);
    void showPlan();

    const AlarmBlock m_block;
    TextUpDown* txtPrimero = nullptr;
    QSpinBox* txtCada = nullptr;
    QSpinBox* txtVeces = nullptr;
    QSpinBox* txtDescanso = nullptr;
    QSpinBox* txtTras = nullptr;
    std::vector<QCheckBox*> m_days;
    QLabel* lblHoras = nullptr;
    QLabel* lblProblemas = nullptr;
    QPushButton* cmdAceptar = nullptr;
};
