#include "EncodedLines.h"

#include "AnsiText.h"

#include <QStringList>

#include <array>

using namespace Qt::StringLiterals;

namespace {

QString ending(qsizetype size) { return size == 2 ? u"\r\n"_s : size == 1 ? u"\n"_s : u""_s; }

} // namespace

EncodedLines::EncodedLines(const QByteArray& file) : m_file(file)
{
    struct Mark {
        QByteArray bytes;
        Encoding encoding;
    };
    static const std::array marks = {Mark{"\xEF\xBB\xBF", Encoding::Utf8},
                                     Mark{"\xFF\xFE", Encoding::Utf16LittleEndian},
                                     Mark{"\xFE\xFF", Encoding::Utf16BigEndian}};
    for (const Mark& mark : marks) {
        if (file.startsWith(mark.bytes)) {
            m_mark = mark.bytes;
            m_encoding = mark.encoding;
        }
    }
    // A file of one zero byte is half a UTF-16 unit. As UTF-8 it would be a character, and text
    // that is added would change how the file is read.
    if (file.size() == 1 && file[0] == 0)
        m_encoding = Encoding::Utf16LittleEndian;
    if (m_mark.isEmpty() && file.size() >= 2 && (file[0] == 0) != (file[1] == 0))
        m_encoding = file[0] == 0 ? Encoding::Utf16BigEndian : Encoding::Utf16LittleEndian;

    const QByteArrayView content = QByteArrayView(file).sliced(m_mark.size());
    if (m_encoding == Encoding::Utf8)
        readBytes(content);
    else
        readUnits(content);
}

void EncodedLines::readBytes(QByteArrayView content)
{
    const qsizetype firstEnd = content.indexOf('\n');
    if (m_mark.isEmpty() && content.first(firstEnd < 0 ? content.size() : firstEnd).trimmed() ==
                                QByteArrayView("REGEDIT4"))
        m_encoding = Encoding::Ansi;
    m_lines.reserve(content.count('\n') + 1);
    while (!content.isEmpty()) {
        const qsizetype newline = content.indexOf('\n');
        const QByteArrayView line = newline < 0 ? content : content.first(newline + 1);
        content = content.sliced(line.size());
        const qsizetype endingSize = line.endsWith("\r\n") ? 2 : newline < 0 ? 0 : 1;
        const QByteArrayView text = line.chopped(endingSize);
        const bool readAsAnsi = isAnsi() || !text.isValidUtf8();
        appendLine(line, readAsAnsi ? AnsiText::toUnicode(text) : QString::fromUtf8(text),
                   endingSize);
    }
}

void EncodedLines::readUnits(QByteArrayView content)
{
    const qsizetype high = m_encoding == Encoding::Utf16BigEndian ? 0 : 1;
    const qsizetype unitCount = content.size() / 2;
    QString text(unitCount, Qt::Uninitialized);
    for (qsizetype unit = 0; unit < unitCount; ++unit)
        text[unit] = QChar(uchar(content[2 * unit + 1 - high]), uchar(content[2 * unit + high]));
    for (qsizetype start = 0; start < unitCount;) {
        const qsizetype newline = text.indexOf(u'\n', start);
        const qsizetype end = newline < 0 ? unitCount : newline + 1;
        const QStringView line = QStringView(text).sliced(start, end - start);
        const qsizetype endingSize = line.endsWith(u"\r\n") ? 2 : newline < 0 ? 0 : 1;
        appendLine(content.sliced(2 * start, 2 * line.size()), line.chopped(endingSize).toString(),
                   endingSize);
        start = end;
    }
    m_rest = content.sliced(2 * unitCount).toByteArray();
}

void EncodedLines::appendLine(QByteArrayView bytes, const QString& text, qsizetype endingSize)
{
    m_lines.append({QByteArray::fromRawData(bytes.data(), bytes.size()), text, ending(endingSize)});
}

void EncodedLines::replace(qsizetype first, qsizetype count, const QStringList& texts)
{
    const QString ending = lineEnding();
    if (first > 0 && m_lines[first - 1].ending.isEmpty()) {
        m_lines[first - 1].ending = ending;
        m_lines[first - 1].bytes += encode(ending);
    }
    m_lines.remove(first, count);
    for (const QString& text : texts)
        m_lines.insert(first++, {encode(text + ending), text, ending});
}

QByteArray EncodedLines::toBytes() const
{
    QByteArray bytes = m_mark;
    bytes.reserve(m_file.size());
    for (const Line& line : m_lines)
        bytes += line.bytes;
    bytes += m_rest;
    return bytes;
}

QByteArray EncodedLines::encode(const QString& text) const
{
    if (m_encoding == Encoding::Utf8)
        return text.toUtf8();
    if (m_encoding == Encoding::Ansi)
        return AnsiText::fromUnicode(text);
    QByteArray bytes;
    for (const QChar unit : text) {
        const char low = static_cast<char>(unit.cell());
        const char high = static_cast<char>(unit.row());
        bytes += m_encoding == Encoding::Utf16BigEndian ? high : low;
        bytes += m_encoding == Encoding::Utf16BigEndian ? low : high;
    }
    return bytes;
}

/// The ending of the first line, so that new lines have the same.
QString EncodedLines::lineEnding() const
{
    return m_lines.isEmpty() || m_lines.first().ending.isEmpty() ? u"\n"_s : m_lines.first().ending;
}
