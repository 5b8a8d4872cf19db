#include "RegistryStatement.h"

#include "AnsiText.h"

#include <QtEndian>

#include <algorithm>
#include <cctype>

using namespace Qt::StringLiterals;

namespace {

using Kind = RegistryStatement::Kind;

/// The types whose data is a text.
constexpr quint32 expandableText = 2;
constexpr quint32 binary = 3;
constexpr quint32 multipleText = 7;

bool isText(quint32 type)
{
    return type == RegistryValue::Text || type == expandableText || type == multipleText;
}

/// A position in the lines of the file.
struct Cursor {
    const QList<EncodedLines::Line>& lines;
    qsizetype line;
    qsizetype column = 0;

    QStringView rest() const { return QStringView(lines[line].text).mid(column); }
    void skipBlanks()
    {
        while (column < lines[line].text.size() && lines[line].text[column].isSpace())
            ++column;
    }
    /// Skips `word`, ignoring case, if it is here. Whether it was.
    bool take(QStringView word)
    {
        if (!rest().startsWith(word, Qt::CaseInsensitive))
            return false;
        column += word.size();
        return true;
    }
    bool nextLine()
    {
        column = 0;
        return ++line < lines.size();
    }
    /// Whether only blanks or a comment remain.
    bool atEndOfStatement()
    {
        skipBlanks();
        return rest().isEmpty() || rest().startsWith(u';');
    }
};

/// The quoted text that begins here; nothing when the closing quote is missing.
std::optional<QString> takeQuoted(Cursor& at, bool overLines)
{
    if (!at.take(u"\""))
        return std::nullopt;
    QString result;
    for (;;) {
        const QStringView rest = at.rest();
        const auto isSpecial = [](QChar c) { return c == u'"' || c == u'\\'; };
        const auto special = std::find_if(rest.begin(), rest.end(), isSpecial);
        result += rest.first(special - rest.begin());
        if (special == rest.end()) {
            result += at.lines[at.line].ending;
            if (!overLines || !at.nextLine())
                return std::nullopt;
            continue;
        }
        at.column += special - rest.begin() + 1;
        if (*special == u'"')
            return result;
        // A "\" stands for itself unless one of these follows.
        const bool escape = special + 1 < rest.end() && isSpecial(special[1]);
        result += special[escape ? 1 : 0];
        if (escape)
            ++at.column;
    }
}

/// A hexadecimal number with at most so many digits.
std::optional<quint32> hexadecimal(QStringView digits, qsizetype maximumDigits)
{
    const bool good = digits.size() <= maximumDigits &&
                      std::all_of(digits.begin(), digits.end(), [](QChar digit) {
                          return digit.unicode() < 0x80 && std::isxdigit(digit.unicode());
                      });
    if (digits.isEmpty() || !good)
        return std::nullopt;
    return digits.toUInt(nullptr, 16);
}

/// Appends bytes of one or two hexadecimal digits, separated by commas. Empty parts are ignored.
bool appendBytes(QStringView text, QByteArray& bytes)
{
    for (const QStringView part : text.tokenize(u',')) {
        const QStringView digits = part.trimmed();
        if (digits.isEmpty())
            continue;
        const auto byte = hexadecimal(digits, 2);
        if (!byte)
            return false;
        bytes += static_cast<char>(*byte);
    }
    return true;
}

std::optional<RegistryValue> takeBytes(Cursor& at, bool ansi)
{
    RegistryValue value{binary, {}};
    if (at.take(u"(")) {
        const QStringView digits = at.rest().left(std::max<qsizetype>(0, at.rest().indexOf(u')')));
        const auto type = hexadecimal(digits, 8);
        if (!type)
            return std::nullopt;
        at.column += digits.size() + 1;
        value.type = *type;
    }
    if (!at.take(u":"))
        return std::nullopt;
    for (bool more = true; more;) {
        QStringView part = at.rest().trimmed();
        more = part.endsWith(u'\\');
        if (!appendBytes(more ? part.chopped(1) : part, value.bytes) || (more && !at.nextLine()))
            return std::nullopt;
    }
    if (isText(value.type) && !ansi) {
        QString text;
        text.reserve(value.bytes.size() / 2);
        for (qsizetype i = 0; i + 1 < value.bytes.size(); i += 2)
            text += QChar(uchar(value.bytes[i]), uchar(value.bytes[i + 1]));
        value.bytes = AnsiText::fromUnicode(text);
    }
    return value;
}

std::optional<RegistryValue> takeDword(Cursor& at)
{
    const qsizetype comment = at.rest().indexOf(u';');
    const auto number = hexadecimal(at.rest().left(comment).trimmed(), 8);
    if (!number)
        return std::nullopt;
    RegistryValue value{RegistryValue::Dword, QByteArray(4, Qt::Uninitialized)};
    qToLittleEndian(*number, value.bytes.data());
    return value;
}

std::optional<RegistryValue> takeData(Cursor& at, bool ansi)
{
    if (at.take(u"dword:"))
        return takeDword(at);
    if (at.take(u"hex"))
        return takeBytes(at, ansi);
    const auto text = takeQuoted(at, true);
    if (!text || !at.atEndOfStatement())
        return std::nullopt;
    return RegistryValue{RegistryValue::Text, AnsiText::fromUnicode(*text) + '\0'};
}

RegistryStatement keyStatement(QStringView line)
{
    if (!line.endsWith(u']'))
        return {Kind::Key, 1, {}, {}};
    const QStringView key = line.sliced(1).chopped(1).trimmed();
    if (key.startsWith(u'-'))
        return {Kind::KeyDeletion, 1, key.sliced(1).toString(), {}};
    return {Kind::Key, 1, key.toString(), {}};
}

QString quoted(QString text)
{
    text.replace(u'\\', u"\\\\"_s).replace(u'"', u"\\\""_s);
    return u'"' + text + u'"';
}

/// `hex` data on several lines, as the registry editor writes it.
QStringList hexLines(const QString& start, const QByteArray& bytes)
{
    constexpr qsizetype bytesALine = 24;
    QStringList lines;
    for (qsizetype from = 0; from < bytes.size() || from == 0; from += bytesALine) {
        const bool last = from + bytesALine >= bytes.size();
        lines += (from == 0 ? start : u"  "_s) +
                 QString::fromLatin1(bytes.mid(from, bytesALine).toHex(',')) +
                 (last ? u""_s : u",\\"_s);
    }
    return lines;
}

} // namespace

RegistryStatement RegistryStatement::read(const QList<EncodedLines::Line>& lines, qsizetype first,
                                          bool ansi)
{
    Cursor at{lines, first};
    at.skipBlanks();
    if (at.rest().startsWith(u'['))
        return keyStatement(at.rest().trimmed());
    const auto name = at.take(u"@") ? QString() : takeQuoted(at, false);
    if (!name)
        return {};
    at.skipBlanks();
    if (!at.take(u"="))
        return {};
    at.skipBlanks();
    if (at.take(u"-"))
        return at.atEndOfStatement() ? RegistryStatement{Kind::ValueDeletion, 1, *name, {}}
                                     : RegistryStatement{};
    const auto value = takeData(at, ansi);
    if (!value)
        return {};
    return {Kind::Value, at.line - first + 1, *name, *value};
}

QStringList RegistryStatement::write(const QString& name, const RegistryValue& value, bool ansi)
{
    const QString start = (name.isEmpty() ? u"@"_s : quoted(name)) + u'=';
    if (value.type == RegistryValue::Dword && value.bytes.size() == 4)
        return {start + u"dword:%1"_s.arg(qFromLittleEndian<quint32>(value.bytes.constData()), 8,
                                          16, QChar(u'0'))};
    QByteArray bytes = value.bytes;
    if (isText(value.type)) {
        const QString text = AnsiText::toUnicode(bytes);
        if (value.type == RegistryValue::Text && text.endsWith(u'\0') &&
            std::none_of(text.begin(), text.end() - 1, [](QChar c) { return c < u' '; }))
            return {start + quoted(text.chopped(1))};
        if (!ansi)
            bytes = QByteArray(reinterpret_cast<const char*>(text.utf16()), 2 * text.size());
    }
    const QString type = value.type == binary ? QString() : u"(%1)"_s.arg(value.type, 0, 16);
    return hexLines(start + u"hex"_s + type + u':', bytes);
}
