#pragma once

#include <QBasicTimer>
#include <QString>
#include <QWidget>

#include <vector>

class QStyleOptionSpinBox;
class UpDownField;

/// One or two whole numbers side by side, as an hour and a minute, with a separator between them
/// and a pair of buttons that step the one with the focus. Made for filling many of them by
/// keyboard: the focus selects a number, its last digit or the separator leads on to the next, Tab
/// walks the numbers and then leaves; up, down, page up, page down and the wheel step it.
///
/// What is typed, pasted or stepped keeps to the range of its field. A value set by the program is
/// shown as it is, so that an odd value of a clock is seen and not silently turned into another.
class TextUpDown : public QWidget {
    Q_OBJECT
public:
    struct Field {
        /// What a screen reader calls it: "Hora del aviso 1".
        QString accessibleName;
        int minimum = 0;
        int maximum = 0;
        /// Shown with leading zeros up to this width.
        int width = 1;
    };

    TextUpDown(const std::vector<Field>& fields, const QString& separator,
               QWidget* parent = nullptr);
    ~TextUpDown() override;

    int value(int field = 0) const;
    void setValue(int field, int value);
    void setValues(int first, int second);

    /// Tool tip, and description for a screen reader, of the whole and of each field.
    void setHint(const QString& text);
    /// Grey numbers: they are there but mean nothing at the moment.
    void setDimmed(bool dimmed);
    void setFieldFocus(int field, Qt::FocusReason reason);
    /// -1 when none has it.
    int fieldWithFocus() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    /// By the operator or by the program.
    void valueChanged();

protected:
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    friend class UpDownField;

    void initStyleOption(QStyleOptionSpinBox& option) const;
    void placeFields();
    int separatorWidth() const;
    QSize contentsSize() const;
    void step(int steps);
    /// Moves the focus `by` fields on; false at the end.
    bool moveField(const UpDownField* from, int by);
    /// nullptr after the last.
    UpDownField* fieldAfter(const UpDownField* field) const;
    /// The numbers in a text, one a field from `from` on; those out of range are left out.
    void pasteFrom(const UpDownField* from, const QString& text);
    void fieldGotFocus(const UpDownField* field);
    /// It may be disabled or hidden, or its window left: a button still pressed steps no more.
    void fieldLostFocus() { releaseButton(); }
    void releaseButton();
    int indexOf(const UpDownField* field) const;

    std::vector<UpDownField*> m_fields;
    QString m_separator;
    int m_active = 0;
    bool m_dimmed = false;
    int m_wheelRest = 0;
    int m_pressedStep = 0;
    QBasicTimer m_repeat;
};
