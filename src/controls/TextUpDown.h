#pragma once

#include "NumberField.h"

/// A time, a date or a single number of the programme.
class TextUpDown : public NumberField {
    Q_OBJECT
public:
    TextUpDown(const QList<Field>& fields, QChar separator, QWidget* parent = nullptr)
        : NumberField(fields, separator, parent)
    {
        setAlignment(Qt::AlignCenter);
    }

    void setValues(int first, int second) { NumberField::setValues({first, second}); }
    /// The same, unless it has these values: then what is being typed goes on.
    void updateValues(int first, int second)
    {
        if (value(0) != first || value(1) != second)
            setValues(first, second);
    }
    /// Shows the numbers in grey: they have no effect at present.
    void setDimmed(bool dimmed)
    {
        QColor colour;
        if (dimmed) {
            // Not the colour of placeholders, which some styles make as dark as other text.
            colour = QPalette().color(QPalette::Text);
            colour.setAlphaF(0.5F);
        }
        setTextColour(colour);
    }
};
