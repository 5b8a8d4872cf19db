#pragma once

#include "EchoMask.h"

#include <QByteArray>
#include <QString>

#include <functional>

/// What the mini terminal shows of a dialogue with a modem: what is sent, what is received, and the
/// lines of the program itself. SIM codes are masked in both directions before they are kept.
///
/// What is received is handed on in batches: up to `batch` characters, and one line of a script,
/// are kept back until `flush` or until something is written. Lines end with CR LF.
class ModemTranscript {
public:
    static constexpr qsizetype batch = 4096;

    using Terminal = std::function<void(const QString& text)>;

    explicit ModemTranscript(Terminal terminal) : m_terminal(std::move(terminal)) {}

    /// Shown at once, as it is.
    void AppendToTerminal(const QString& text);
    /// A line of the program's own: "** " and the text, between line ends.
    void writeLine(const QString& text);
    /// A command in the system's code page, as it was sent.
    void sent(const QByteArray& command);
    /// One byte in the system's code page, as it was received; returns what is shown for it.
    /// `codeJustSent`: it may belong to the echo of a code.
    char received(char character, bool codeJustSent);
    /// A comment of a script, shown with the next batch.
    void comment(const QString& text);
    void flush();
    /// The end of a connection: half a command masks nothing of the next one.
    void end();

private:
    void keep(const QString& text);

    Terminal m_terminal;
    EchoMask m_sentMask;
    EchoMask m_receivedMask;
    QString m_kept;
};
