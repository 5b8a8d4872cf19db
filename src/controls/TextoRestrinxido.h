#pragma once

#include "NumberField.h"

/// A whole date or time, without buttons. No value out of the range can be in it, not even one of
/// the program.
class TextoRestrinxido : public NumberField {
    Q_OBJECT
public:
    TextoRestrinxido(const QList<Field>& fields, QChar separator, QWidget* parent = nullptr)
        : NumberField(fields, separator, parent)
    {
        setButtonSymbols(NoButtons);
    }

    using NumberField::setValue;
    /// Where there are no buttons, some styles count no room for the padding of the editor.
    QSize sizeHint() const override
    {
        return NumberField::sizeHint() + QSize(fontMetrics().horizontalAdvance(u'0'), 0);
    }
    void setValue(int field, int value) { NumberField::setValue(field, clamped(field, value)); }
};
