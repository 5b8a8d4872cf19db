#pragma once

#include "NumberField.h"

/// A complete date or time, without buttons. It never has a value outside its range: those that the
/// program sets are limited too.
class TextoRestrinxido : public NumberField {
    Q_OBJECT
public:
    TextoRestrinxido(const QList<Field>& fields, QChar separator, QWidget* parent = nullptr)
        : NumberField(fields, separator, parent)
    {
        setButtonSymbols(NoButtons);
    }

    using NumberField::setValue;
    /// Without buttons some styles do not reserve the editor's padding, so it is added here.
    QSize sizeHint() const override
    {
        return NumberField::sizeHint() + QSize(fontMetrics().horizontalAdvance(u'0'), 0);
    }
    void setValue(int field, int value) { NumberField::setValue(field, clamped(field, value)); }
};
