#pragma once

#include <QByteArray>

/// Hides SIM codes in what is shown of a modem dialogue, without knowing them: all that follows
/// "CPIN=" on a line (blanks and taken back characters do not count), and, while a code has just
/// been sent, the digits of any line that is not one of the modem's own reports (those begin with
/// "+"), in case the start of the echo was lost.
///
/// Keeps the last maximumLine characters of a line, none of a code among them.
class EchoMask {
public:
    static constexpr qsizetype maximumLine = 256;

    /// The character to show for the next one of the dialogue.
    char take(char character, bool codeJustSent);

private:
    char takeBack();

    /// The line up to where the code begins, in upper case.
    QByteArray m_line;
    bool m_report = false;
    bool m_masking = false;
    qsizetype m_hidden = 0;
};
