#include "Console.h"

#include <QJsonDocument>
#include <QStringList>
#include <QTextStream>

#include <cerrno>
#include <csignal>
#include <cstdio>

#ifdef Q_OS_WIN
#include <io.h>
#include <windows.h>
#else
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace {

bool write(std::FILE* stream, const QString& text)
{
#ifdef Q_OS_WIN
    // A window of Windows shows other characters than those of UTF-8.
    const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
    DWORD mode = 0;
    if (GetConsoleMode(handle, &mode) != 0)
        return WriteConsoleW(handle, text.utf16(), static_cast<DWORD>(text.size()), nullptr,
                             nullptr) != 0;
#endif
    const QByteArray bytes = text.toUtf8();
    const auto size = static_cast<std::size_t>(bytes.size());
    return std::fwrite(bytes.constData(), 1, size, stream) == size && std::fflush(stream) == 0;
}

bool isTerminalOf(std::FILE* stream)
{
#ifdef Q_OS_WIN
    return _isatty(_fileno(stream)) != 0;
#else
    return ::isatty(::fileno(stream)) != 0;
#endif
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

bool Console::print(const QString& line)
{
    const bool written = write(stdout, line + u'\n');
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

void Console::note(const QString& text)
{
    if (!isQuiet())
        tell(text);
}

void Console::tell(const QString& text) { write(stderr, text + u'\n'); }

std::optional<bool> Console::confirm(const QString& question)
{
    if (!isTerminalOf(stdin))
        return std::nullopt;
    write(stderr, question + u" [s/N] "_s);
    const QString answer = QTextStream(stdin).readLine();
    // The end of the input leaves the cursor behind the question.
    if (answer.isNull())
        write(stderr, u"\n"_s);
    return QStringList{u"s"_s, u"si"_s, u"sí"_s}.contains(answer.trimmed().toLower());
}

void Console::showLine(const QString& text)
{
    // Clears the rest of the line, which may have been longer.
    write(stderr, u"\r%1\x1b[K"_s.arg(text));
}

bool Console::isTerminal() const { return isTerminalOf(stderr); }
