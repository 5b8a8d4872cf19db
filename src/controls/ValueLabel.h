#pragma once

#include <QLabel>

/// A value that is shown and not edited. Screen readers read only a label's name, so the name is
/// the caption and the value: "Hora: 9:05:03".
class ValueLabel : public QLabel {
    Q_OBJECT
public:
    enum class Look { Field, Bold };

    ValueLabel(const QString& objectName, const QString& caption, Look look = Look::Field);

    /// Plain text, no markup. Does nothing when the value is the same.
    void setValue(const QString& value);
    /// Makes the label with the caption, to be placed beside the value.
    QLabel* makeCaption();

private:
    const QString m_caption;
};
