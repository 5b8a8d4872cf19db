#pragma once

#include "TextUpDown.h"

#include <QLineEdit>

/// One number of a TextUpDown.
class UpDownField final : public QLineEdit {
    Q_OBJECT
public:
    UpDownField(const TextUpDown::Field& field, TextUpDown& owner);

    int value() const { return m_value; }
    void setValue(int value);
    /// Steps within the range and selects the outcome.
    void step(int steps);
    bool accepts(int value) const { return value >= m_field.minimum && value <= m_field.maximum; }
    /// Room for the widest number of the range.
    int widthForText() const;

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    bool handleMovement(QKeyEvent& event);
    bool handleText(const QString& text);
    /// A digit over the selection or at the cursor; false when it does not fit any more.
    bool typeDigit(const QString& digit);
    void textWasEdited();
    QString format(int value) const;
    int digits() const;

    TextUpDown& m_owner;
    const TextUpDown::Field m_field;
    int m_value = 0;
    bool m_selectOnPress = false;
};
