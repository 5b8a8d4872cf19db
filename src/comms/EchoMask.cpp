#include "EchoMask.h"

namespace {

char upperCase(char character)
{
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A')
                                                : character;
}

/// Modems pass over the blanks of a command.
bool endsInCodeCommand(const QByteArray& line)
{
    if (!line.endsWith('='))
        return false;
    QByteArray dense = line;
    return dense.replace(' ', "").endsWith("CPIN=");
}

} // namespace

char EchoMask::take(char character, bool codeJustSent)
{
    if (character == '\r' || character == '\n') {
        *this = EchoMask();
        return character;
    }
    if (character == '\b')
        return takeBack();
    if (m_masking) {
        ++m_hidden;
        return character == ',' ? ',' : '*';
    }
    if (m_line.isEmpty())
        m_report = character == '+';
    const bool digit = character >= '0' && character <= '9';
    const char shown = codeJustSent && digit && !m_report ? '*' : character;
    m_line += upperCase(shown);
    if (m_line.size() > maximumLine)
        m_line.remove(0, m_line.size() - maximumLine);
    m_masking = endsInCodeCommand(m_line);
    return shown;
}

char EchoMask::takeBack()
{
    if (m_hidden > 0) {
        --m_hidden;
    } else {
        m_line.chop(1);
        m_masking = endsInCodeCommand(m_line);
    }
    return '\b';
}
