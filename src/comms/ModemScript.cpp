#include "ModemScript.h"

#include "AnsiText.h"
#include "WholeFile.h"

#include <QStringDecoder>

using namespace Qt::StringLiterals;

namespace {

/// Comments may be written in either of the two encodings that text editors use here.
QString decoded(const QByteArray& line)
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8(line);
    return utf8.hasError() ? AnsiText::toUnicode(line) : text;
}

} // namespace

bool ModemScript::open(const QString& path)
{
    close();
    m_error.clear();
    // One byte more than allowed tells a file that is too long, whatever its size claims.
    const auto text = WholeFile::read(path, maximumSize + 1);
    if (!text)
        m_error = u"No se ha podido leer el archivo de comandos"_s;
    else if (text->size() > maximumSize)
        m_error = u"El archivo de comandos es demasiado grande"_s;
    else if (text->contains('\0'))
        m_error = u"El archivo no es un archivo de comandos"_s;
    if (!m_error.isEmpty())
        return false;
    m_text = *text;
    if (m_text.startsWith("\xEF\xBB\xBF"))
        m_position = 3;
    return true;
}

void ModemScript::close()
{
    m_text.clear();
    m_position = 0;
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
