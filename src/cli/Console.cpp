#include "Console.h"

#include "StandardStreams.h"
#include "TerminalLine.h"
#include "TerminationSignals.h"

#include <QJsonDocument>
#include <QRegularExpression>

#include <cerrno>
#include <csignal>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

/// Names of files and devices could give orders to the terminal.
QString withoutControls(QString text)
{
    for (QChar& character : text)
        if (character.category() == QChar::Other_Control && character != u'\n')
            character = u'?';
    return text;
}

} // namespace

Console::Console(Form form, Notes notes) : m_form(form), m_notes(notes)
{
#ifdef Q_OS_UNIX
    // A write to a pipe without a reader shall fail, and not end the program while a clock is at
    // work.
    std::signal(SIGPIPE, SIG_IGN);
#endif
}

bool Console::print(const QString& line) { return writeResult(withoutControls(line)); }

bool Console::writeResult(const QString& line)
{
    const bool written = writeText(stdout, line + u'\n');
    m_failed |= !written && errno != EPIPE;
    return written;
}

bool Console::print(const QJsonObject& object)
{
    return writeResult(QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)));
}

bool Console::print(const QJsonObject& object, const QString& text)
{
    return isJson() ? print(object) : print(text);
}

ExitStatus Console::finalStatus(ExitStatus status)
{
    if (!m_failed)
        return status;
    tell(u"No se ha podido escribir el resultado: compruebe el espacio del disco."_s);
    return status == ExitStatus::Done ? ExitStatus::Usage : status;
}

void Console::note(const QString& text)
{
    if (!isQuiet())
        tell(text);
}

void Console::tell(const QString& text) { writeText(stderr, withoutControls(text) + u'\n'); }

ExitStatus Console::refuse(const QString& reason)
{
    tell(reason);
    return ExitStatus::Usage;
}

Console::Answer Console::confirm(const QString& question)
{
    if (!::isTerminal(stdin))
        return {Answer::Kind::NobodyAsked};
    // Before the question: who reads it may answer with a signal at once.
    const TerminationSignals termination;
    writeText(stderr, withoutControls(question) + u" [s/N] "_s);
    const TerminalLine line = readTerminalLine(termination);
    // The cursor is behind the question.
    if (!line.isComplete)
        writeText(stderr, u"\n"_s);
    if (line.signalNumber != 0)
        return {Answer::Kind::Interrupted, line.signalNumber};
    // A terminal that is not in UTF-8 has other bytes for the accent.
    static const QRegularExpression yes(u"^(s|si|s[^\\x00-\\x7f]|y|yes)$"_s,
                                        QRegularExpression::CaseInsensitiveOption);
    return {yes.match(line.text).hasMatch() ? Answer::Kind::Yes : Answer::Kind::No};
}

void Console::showLine(const QString& text)
{
    // Blanks, since not every console of Windows knows the sequence that clears a line.
    writeText(stderr, u'\r' + QString(m_lineLength, u' ') + u'\r' + text);
    m_lineLength = text.size();
}

bool Console::isTerminal() const { return ::isTerminal(stderr); }
