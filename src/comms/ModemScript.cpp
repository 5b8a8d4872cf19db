#include "ModemScript.h"

#include "AnsiText.h"
#include "WholeFile.h"

#include <QByteArrayView>

using namespace Qt::StringLiterals;

namespace {

/// Comments may be written in either of the two encodings that text editors use here.
QString decoded(const QByteArray& line)
{
    return QByteArrayView(line).isValidUtf8() ? QString::fromUtf8(line) : AnsiText::toUnicode(line);
}

} // namespace

bool ModemScript::open(const QString& path)
{
    // One byte more than allowed tells a file that is too long, whatever its size claims.
    const auto text = WholeFile::read(path, maximumSize + 1);
    return text ? read(*text) : refuse(u"No se ha podido leer el archivo de comandos"_s);
}

bool ModemScript::read(const QByteArray& text)
{
    if (text.size() > maximumSize)
        return refuse(u"El archivo de comandos es demasiado grande"_s);
    if (text.contains('\0'))
        return refuse(u"El archivo no es un archivo de comandos"_s);
    m_text = text;
    m_position = text.startsWith("\xEF\xBB\xBF") ? 3 : 0;
    m_error.clear();
    return true;
}

bool ModemScript::refuse(const QString& error)
{
    m_text.clear();
    m_error = error;
    return false;
}

std::optional<ModemScript::Line> ModemScript::next()
{
    while (m_position < m_text.size()) {
        const QByteArray line = takeLine();
        if (line.isEmpty())
            continue;
        if (line.startsWith(';'))
            return Line{decoded(line).left(maximumLine), {}, {}};
        if (line.size() > maximumLine)
            return Line{{}, {}, {}, true};
        const qsizetype tab = line.indexOf('\t');
        if (tab < 0)
            return Line{{}, line, {}};
        return Line{{}, line.left(tab), line.mid(tab + 1)};
    }
    return std::nullopt;
}

QByteArray ModemScript::takeLine()
{
    const qsizetype begin = m_position;
    while (m_position < m_text.size() && m_text[m_position] != '\r' && m_text[m_position] != '\n')
        ++m_position;
    QByteArray line = m_text.mid(begin, m_position - begin);
    // The LF of a CR LF is an empty line of its own, which is skipped anyway.
    ++m_position;
    return line;
}
