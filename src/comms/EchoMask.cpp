#include "EchoMask.h"

#include <string_view>

namespace {

constexpr std::string_view codeCommand = "CPIN=";

char upperCase(char character)
{
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A')
                                                : character;
}

} // namespace

char EchoMask::take(char character, bool codeJustSent)
{
    if (character == '\r' || character == '\n') {
        *this = EchoMask();
        return character;
    }
    if (m_masking)
        return character == ',' ? ',' : '*';
    if (!m_lineBegun) {
        m_lineBegun = true;
        m_report = character == '+';
    }
    const char upper = upperCase(character);
    if (upper == codeCommand[static_cast<std::size_t>(m_matched)])
        ++m_matched;
    else
        m_matched = upper == codeCommand.front() ? 1 : 0;
    m_masking = m_matched == static_cast<int>(codeCommand.size());
    const bool digit = character >= '0' && character <= '9';
    return codeJustSent && digit && !m_report ? '*' : character;
}
