#pragma once

#include "NumberText.h"

#include <QSpinBox>

/// One or several whole numbers in one spin box, for example an hour and a minute, with a separator
/// between them. The text of the editor is the value. The number with the cursor is selected; the
/// spin box steps it and reports its value and range to assistive software.
///
/// The first digit typed into a number replaces it, more digits are appended, and the cursor moves
/// to the next number when no more digit fits. A separator after a digit, Tab, Left and Right move
/// between the numbers, Home and End to the first and the last one. At the first and the last
/// number Left and Right are left to the parent. Up, Down and the wheel step by 1, PageUp and
/// PageDown by 10; they stop at the minimum and the maximum.
///
/// A number above the maximum becomes the maximum, one below the minimum the minimum, whether it
/// was typed, pasted or set by assistive software. Of a number with more digits than the maximum
/// has, the first ones are taken. A pasted text that is one run of digits too long for its number
/// is divided among all numbers.
class NumberField : public QSpinBox {
    Q_OBJECT
public:
    using Field = NumberText::Field;

    NumberField(const QList<Field>& fields, QChar separator, QWidget* parent = nullptr);

    using QSpinBox::setValue;
    using QSpinBox::value;
    int value(int field) const { return m_numbers.valuesOf(text()).at(field); }
    /// Not limited to the range, so that an invalid value of a clock is shown as it is.
    void setValue(int field, int value);

    void setFieldFocus(int field, Qt::FocusReason reason);
    /// The number with the cursor, counted from 0; -1 when the control does not have the focus.
    int fieldWithFocus() const { return hasFocus() ? m_current : -1; }

    /// An invalid colour restores that of the system.
    void setTextColour(const QColor& colour);
    QColor textColour() const { return palette().color(QPalette::Text); }

    void stepBy(int steps) override;

signals:
    /// Emitted once for each key, step, paste or call that changed a number.
    void valuesChanged();

protected:
    void setValues(const QList<int>& values);
    int clamped(int field, int value) const { return m_numbers.clamped(field, value); }

    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    QString textFromValue(int value) const override;
    int valueFromText(const QString& text) const override;
    QValidator::State validate(QString& text, int& position) const override;

private:
    bool pressEditingKey(QKeyEvent& event);
    void type(const QString& text);
    void typeDigit(QChar digit, QList<int>& values);
    void dropDigit();
    void copy() const;
    void paste();
    void enter(int field);
    void moveTo(int field);
    void showValues(const QList<int>& values);
    void takeTextFromOutside();

    const NumberText m_numbers;
    int m_current = 0;
    /// The digits typed since the cursor came into the current number.
    QString m_typed;
    /// The text of the editor, except while a text from outside is corrected. The editor then no
    /// longer has the previous text: this one tells that the text is not the control's own, and
    /// which numbers stay.
    QString m_told;
};
