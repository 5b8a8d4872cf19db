#include "AnsiText.h"
#include "Input.h"
#include "ModemScript.h"

#include <algorithm>
#include <string_view>

using namespace Qt::StringLiterals;

namespace {

bool isLineEnd(char character) { return character == '\r' || character == '\n'; }

/// The next line that is not empty; empty at the end of the text.
std::string_view nextLine(std::string_view& text)
{
    const auto begin = std::find_if_not(text.begin(), text.end(), isLineEnd);
    const auto end = std::find_if(begin, text.end(), isLineEnd);
    text = {end, text.end()};
    return {begin, end};
}

/// A comment is its first 1024 characters, in UTF-8 when that is what its bytes are.
void checkComment(const QString& comment, const QByteArray& line)
{
    const bool isUtf8 = QByteArrayView(line).isValidUtf8();
    const QString whole = isUtf8 ? QString::fromUtf8(line) : AnsiText::toUnicode(line);
    require(comment == whole.left(1024));
}

void checkLine(const ModemScript::Line& read, std::string_view line)
{
    const QByteArray bytes(line.data(), static_cast<qsizetype>(line.size()));
    require(read.isComment() == (line.front() == ';'));
    require(read.tooLong == (line.front() != ';' && line.size() > 1024));
    if (read.isComment())
        checkComment(read.comment, bytes);
    if (read.isComment() || read.tooLong) {
        require(read.command.isEmpty() && read.expected.isEmpty());
        return;
    }
    const auto tab = std::min(line.find('\t'), line.size());
    require(read.command == bytes.first(static_cast<qsizetype>(tab)));
    require(read.expected == bytes.mid(static_cast<qsizetype>(tab) + 1));
}

} // namespace

/// Any bytes are a command script. It is refused when it holds a NUL; otherwise its commands,
/// expected replies and comments are those of its lines, and none is longer than its bound.
extern "C" int LLVMFuzzerTestOneInput(const quint8* bytes, std::size_t size)
{
    const QByteArray text = Input(bytes, size).rest();
    ModemScript script;
    const bool isText = !text.contains('\0');
    require(script.read(text) == isText && script.error().isEmpty() == isText);

    std::string_view rest;
    if (isText)
        rest = std::string_view(text.constData(), static_cast<std::size_t>(text.size()));
    if (rest.starts_with("\xEF\xBB\xBF"))
        rest.remove_prefix(3);
    while (const auto read = script.next()) {
        const std::string_view line = nextLine(rest);
        require(!line.empty());
        checkLine(*read, line);
    }
    require(nextLine(rest).empty());
    return 0;
}
