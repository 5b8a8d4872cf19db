#include "ModemTranscript.h"

#include "AnsiText.h"

#include <utility>

using namespace Qt::StringLiterals;

void ModemTranscript::AppendToTerminal(const QString& text)
{
    flush();
    m_terminal(text);
}

void ModemTranscript::writeLine(const QString& text)
{
    AppendToTerminal(u"\r\n** "_s + text + u"\r\n"_s);
}

void ModemTranscript::sent(const QByteArray& command)
{
    QByteArray shown;
    for (const char character : command)
        shown += m_sentMask.take(character, false);
    AppendToTerminal(AnsiText::toUnicode(shown));
}

char ModemTranscript::received(char character, bool codeJustSent)
{
    const char shown = m_receivedMask.take(character, codeJustSent);
    keep(AnsiText::toUnicode(QByteArrayView(&shown, 1)));
    return shown;
}

void ModemTranscript::comment(const QString& text) { keep(text + u"\r\n"_s); }

void ModemTranscript::flush()
{
    if (!m_kept.isEmpty())
        m_terminal(std::exchange(m_kept, QString()));
}

void ModemTranscript::end()
{
    flush();
    m_sentMask = EchoMask();
    m_receivedMask = EchoMask();
}

void ModemTranscript::keep(const QString& text)
{
    m_kept += text;
    if (m_kept.size() >= batch)
        flush();
}
