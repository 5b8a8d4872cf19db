#pragma once

#include "NumberField.h"

/// A time or a date of the programme, or a single number, made for filling many of them by
/// keyboard.
class TextUpDown : public NumberField {
    Q_OBJECT
public:
    TextUpDown(const QList<Field>& fields, QChar separator, QWidget* parent = nullptr)
        : NumberField(fields, separator, parent)
    {
        setAlignment(Qt::AlignCenter);
    }

    void setValues(int first, int second) { NumberField::setValues({first, second}); }
    /// Grey numbers: they are there but mean nothing at the moment.
    void setDimmed(bool dimmed)
    {
        QColor colour;
        if (dimmed) {
            // Not a placeholder's, which some styles make as dark as any other text.
            colour = QPalette().color(QPalette::Text);
            colour.setAlphaF(0.5F);
        }
        setTextColour(colour);
    }
};
