#pragma once

/// Hides SIM codes in what is shown of a modem dialogue, without knowing them: all that follows
/// "CPIN=" on a line, and, while a code has just been sent, the digits of any line that is not one
/// of the modem's own reports (those begin with "+"), in case the start of the echo was lost.
class EchoMask {
public:
    /// The character to show for the next one of the dialogue.
    char take(char character, bool codeJustSent);

private:
    /// How much of "CPIN=" the last characters were.
    int m_matched = 0;
    bool m_lineBegun = false;
    bool m_report = false;
    bool m_masking = false;
};
