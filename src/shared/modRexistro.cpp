#include "modRexistro.h"

#include "AnsiText.h"

namespace {

QString textOf(const QByteArray& bytes, bool trim)
{
    if (trim)
        return AnsiText::toUnicode(
            bytes.first(qsizetype(qstrnlen(bytes.constData(), size_t(bytes.size())))));
    return AnsiText::toUnicode(bytes.endsWith('\0') ? bytes.chopped(1) : bytes);
}

/// Converts a hexadecimal number of any length to decimal.
QString decimalText(const QByteArray& hexadecimalDigits)
{
    QByteArray decimal("0");
    for (const char digit : hexadecimalDigits) {
        int carry = QByteArray(1, digit).toInt(nullptr, 16);
        for (auto place = decimal.rbegin(); place != decimal.rend(); ++place) {
            const int value = (*place - '0') * 16 + carry;
            *place = static_cast<char>('0' + value % 10);
            carry = value / 10;
        }
        if (carry > 0)
            decimal.prepend(QByteArray::number(carry));
    }
    return QString::fromLatin1(decimal);
}

/// Each byte is written without its leading zero, also inside the number.
QString dwordText(const QByteArray& bytes)
{
    QByteArray digits;
    for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte)
        digits += QByteArray::number(static_cast<uchar>(*byte), 16);
    return decimalText(digits);
}

bool takeText(const std::optional<RegistryValue>& value, bool trim, QString& text)
{
    text.clear();
    if (!value)
        return false;
    if (value->type == RegistryValue::Text)
        text = textOf(value->bytes, trim);
    else if (value->type == RegistryValue::Dword)
        text = dwordText(value->bytes);
    return true;
}

} // namespace

bool modRexistro::readValue(const Registry& registry, Registry::RootKey root, const QString& subKey,
                            const QString& name, QString& text, bool trim)
{
    return takeText(registry.query(root, subKey, name), trim, text);
}

bool modRexistro::readReadOnlyValue(const Registry& registry, Registry::RootKey root,
                                    const QString& subKey, const QString& name, QString& text,
                                    bool trim)
{
    return takeText(registry.queryReadOnly(root, subKey, name), trim, text);
}

void modRexistro::readWithDefault(const Registry& registry, Registry::RootKey root,
                                  const QString& subKey, const QString& name,
                                  const QString& defaultText, QString& text)
{
    QString found;
    text = readValue(registry, root, subKey, name, found, false) ? found : defaultText;
}

bool modRexistro::writeText(Registry& registry, Registry::RootKey root, const QString& subKey,
                            const QString& name, const QString& text)
{
    return registry.set(root, subKey, name,
                        {RegistryValue::Text, AnsiText::fromUnicode(text) + '\0'});
}
