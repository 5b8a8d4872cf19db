#pragma once

#include <QList>
#include <QSpinBox>
#include <QString>

/// One or several whole numbers in one spin box, as an hour and a minute, with a separator between
/// them. The editor's text is the value. The spin box steps the number that the cursor is in, which
/// is selected, and tells assistive software its value and range.
///
/// A digit typed into a number just entered replaces it, further digits follow, and the next number
/// is entered when no further digit fits. A separator typed after a digit, Tab, Left and Right move
/// between the numbers, Home and End to the first and the last; Left and Right past the ends are
/// the parent's. Up, Down and the wheel step by 1, PageUp and PageDown by 10, without wrapping
/// round.
///
/// What is typed, pasted, stepped or set by assistive software becomes the maximum when it is above
/// it and the minimum when it is below.
class NumberField : public QSpinBox {
    Q_OBJECT
public:
    struct Field {
        int minimum = 0;
        int maximum = 0;
        /// Shown with leading zeros up to this width.
        int width = 1;
        /// What a screen reader calls the control while the cursor is in this number; when empty,
        /// the control's own name stays.
        QString accessibleName = {};
    };

    NumberField(const QList<Field>& fields, QChar separator, QWidget* parent = nullptr);

    using QSpinBox::setValue;
    using QSpinBox::value;
    int value(int field) const { return valuesOf(text()).at(field); }
    /// Shown as it is, also above the maximum, so that an odd value of a clock is seen.
    void setValue(int field, int value);

    void setFieldFocus(int field, Qt::FocusReason reason);
    /// -1 when the control does not have it.
    int fieldWithFocus() const { return hasFocus() ? m_current : -1; }

    /// An invalid colour gives back the system's.
    void setTextColour(const QColor& colour);
    QColor textColour() const { return palette().color(QPalette::Text); }

    void stepBy(int steps) override;

    /// The most characters of a text that are looked at.
    static constexpr qsizetype longestText = 64;

signals:
    /// Once for each key, step, paste or setting that changed a number.
    void valuesChanged();

protected:
    void setValues(const QList<int>& values);
    int clamped(int field, int value) const;

    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
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
    /// The numbers of a text, from `field` on, in place of those in `values`.
    QList<int> taken(const QString& text, QList<int> values, int field) const;
    bool isWithinRange(const QString& text) const;
    void enter(int field);
    void moveTo(int field);
    void showValues(const QList<int>& values);
    void takeTextFromOutside();
    int lastField() const { return static_cast<int>(m_fields.size()) - 1; }
    qsizetype digits(int field) const { return QString::number(m_fields[field].maximum).size(); }
    QList<int> valuesOf(const QString& text) const;
    QString textOf(const QList<int>& values) const;

    const QList<Field> m_fields;
    const QChar m_separator;
    int m_current = 0;
    /// The digits typed since the current number was entered.
    QString m_typed;
    /// The text that was last told: another one came from outside.
    QString m_told;
};
