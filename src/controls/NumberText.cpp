#include "NumberText.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The runs of digits of a text.
QStringList numbersIn(QStringView text)
{
    QStringList numbers;
    bool inNumber = false;
    for (const QChar character : text.left(NumberText::longestText)) {
        const bool isDigit = character >= u'0' && character <= u'9';
        if (isDigit && !inNumber)
            numbers.append(QString());
        if (isDigit)
            numbers.last() += character;
        inNumber = isDigit;
    }
    return numbers;
}

} // namespace

int NumberText::clamped(int field, int value) const
{
    return std::clamp(value, m_fields[field].minimum, m_fields[field].maximum);
}

QString NumberText::textOf(const QList<int>& values) const
{
    QStringList numbers;
    for (int field = 0; field < values.size(); ++field)
        numbers.append(u"%1"_s.arg(values[field], m_fields[field].width, 10, QChar(u'0')));
    return numbers.join(m_separator);
}

QList<int> NumberText::valuesOf(const QString& text) const
{
    const QStringList numbers = text.split(m_separator);
    QList<int> values;
    for (int field = 0; field <= lastField(); ++field)
        values.append(numbers.value(field).toInt());
    return values;
}

QList<int> NumberText::pasted(const QString& text, const QList<int>& values, int field) const
{
    const QStringList numbers = numbersIn(text);
    return taken(numbers, values, numbers.size() > lastField() ? 0 : field);
}

QList<int> NumberText::corrected(const QString& text, const QList<int>& values) const
{
    QStringList numbers = text.left(longestText).split(m_separator);
    // A number that was deleted becomes the minimum.
    if (numbers.size() == m_fields.size())
        std::replace(numbers.begin(), numbers.end(), QString(), u"0"_s);
    return taken(numbersIn(numbers.join(m_separator)), values, 0);
}

QList<int> NumberText::taken(QStringList numbers, QList<int> values, int field) const
{
    // A whole time may be written without a separator.
    if (numbers.size() == 1 && numbers.first().size() > digits(field)) {
        QString rest = numbers.takeFirst();
        for (field = 0; field <= lastField(); ++field) {
            numbers.append(rest.left(digits(field)));
            rest.remove(0, digits(field));
        }
        numbers.removeAll(QString());
        field = 0;
    }
    for (qsizetype i = 0; i < numbers.size() && field <= lastField(); ++i, ++field)
        values[field] = clamped(field, numbers[i].left(digits(field)).toInt());
    return values;
}
