#pragma once

#include <QLineEdit>
#include <QList>

/// A field for a date or a time: numeric sub-fields between fixed separators, always all of them
/// there, so that nothing but numbers within their ranges can be in it.
///
/// The sub-field under the cursor is selected. Digits typed fill it from the right, the first one
/// replacing what it held, and the next sub-field follows when no further digit fits; a separator
/// typed, Tab, Left and Right move between sub-fields. Up and Down step by 1, PageUp and PageDown
/// by 10, without wrapping round. A number above the maximum becomes the maximum at once and one
/// below the minimum the minimum (25 hours become 23, month 13 becomes 12, day 0 becomes 1): what
/// is shown is at every moment the value. Paste is taken like typing, from the first sub-field on
/// when the text has as many numbers as the field.
class TextoRestrinxido : public QLineEdit {
    Q_OBJECT
public:
    struct SubField {
        int minimum = 0;
        int maximum = 99;
        /// Shown with leading zeros.
        int digits = 2;
    };

    TextoRestrinxido(const QList<SubField>& subFields, QChar separator, QWidget* parent = nullptr);

    int subFieldCount() const { return static_cast<int>(m_subFields.size()); }
    int value(int index) const { return m_values.at(index); }
    /// A value outside the sub-field's range is clamped into it.
    void setValue(int index, int value);
    int currentSubField() const { return m_current; }

    void setTextColour(const QColor& colour);
    /// Back to the system's.
    void resetTextColour();
    QColor textColour() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

    /// The most characters of a paste that are looked at.
    static constexpr qsizetype longestPaste = 64;

signals:
    /// Once for each step, key or paste that changed a value.
    void valuesChanged();

protected:
    bool focusNextPrevChild(bool next) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    bool pressEditingKey(int key);
    void takeText(const QString& text);
    void takePaste();
    void takeCharacter(QChar character);
    void takeDigit(int digit);
    void dropDigit();
    void step(int by);
    void moveTo(int index);
    void copyAll() const;
    int clamped(int index, int value) const;
    QString shownText() const;
    void selectCurrent();
    /// Brings the text in line with the values and tells when they have changed.
    void commit();

    const QList<SubField> m_subFields;
    const QChar m_separator;
    QList<int> m_values;
    QList<int> m_announced;
    int m_current = 0;
    /// Digits typed into the current sub-field since it was entered, and their number.
    int m_typedDigits = 0;
    int m_typedNumber = 0;
    int m_wheelAngle = 0;
    bool m_rendering = false;
};
