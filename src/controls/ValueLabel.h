#pragma once

#include <QLabel>

/// A value that is only looked at. To a screen reader a label is nothing but its name, so that is
/// the caption and the value: "Hora: 9:05:03".
class ValueLabel : public QLabel {
    Q_OBJECT
public:
    enum class Look { Field, Bold };

    ValueLabel(const QString& objectName, const QString& caption, Look look = Look::Field);

    /// Plain text, no markup. The value that it has already costs nothing.
    void setValue(const QString& value);
    /// The label that stands beside it.
    QLabel* makeCaption();

private:
    const QString m_caption;
};
