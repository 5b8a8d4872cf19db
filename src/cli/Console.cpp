#include "Console.h"

#include "StandardStreams.h"

#include <QJsonDocument>
#include <QStringList>
#include <QTextStream>

#include <cerrno>
#include <csignal>
#include <cstdio>

using namespace Qt::StringLiterals;

Console::Console(Form form, Notes notes) : m_form(form), m_notes(notes)
{
#ifdef Q_OS_UNIX
    // A write to a pipe without a reader shall fail, and not end the program while a clock is at
    // work.
    std::signal(SIGPIPE, SIG_IGN);
#endif
}

bool Console::print(const QString& line)
{
    const bool written = writeText(stdout, line + u'\n');
    m_failed |= !written && errno != EPIPE;
    return written;
}

bool Console::print(const QJsonObject& object)
{
    return print(QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)));
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

void Console::tell(const QString& text) { writeText(stderr, text + u'\n'); }

ExitStatus Console::refuse(const QString& reason)
{
    tell(reason);
    return ExitStatus::Usage;
}

std::optional<bool> Console::confirm(const QString& question)
{
    if (!::isTerminal(stdin))
        return std::nullopt;
    writeText(stderr, question + u" [s/N] "_s);
    const QString answer = QTextStream(stdin).readLine();
    // The end of the input leaves the cursor behind the question.
    if (answer.isNull())
        writeText(stderr, u"\n"_s);
    return QStringList{u"s"_s, u"si"_s, u"sí"_s}.contains(answer.trimmed().toLower());
}

void Console::showLine(const QString& text)
{
    // Blanks, since not every console of Windows knows the sequence that clears a line.
    writeText(stderr, u'\r' + QString(m_lineLength, u' ') + u'\r' + text);
    m_lineLength = text.size();
}

bool Console::isTerminal() const { return ::isTerminal(stderr); }
