#include "StandardStreams.h"

#include <QByteArray>

#ifdef Q_OS_WIN
#include <io.h>
#include <windows.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

#ifdef Q_OS_WIN

namespace {

// What _isatty takes for a terminal may be another device, such as NUL.
bool isConsole(HANDLE handle)
{
    DWORD mode = 0;
    return GetConsoleMode(handle, &mode) != 0;
}

HANDLE handleOf(std::FILE* stream)
{
    return reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
}

bool leadsNowhere(std::FILE* stream) { return GetFileType(handleOf(stream)) == FILE_TYPE_UNKNOWN; }

} // namespace

#endif

bool writeText(std::FILE* stream, const QString& text)
{
#ifdef Q_OS_WIN
    if (const HANDLE handle = handleOf(stream); isConsole(handle))
        return WriteConsoleW(handle, text.utf16(), static_cast<DWORD>(text.size()), nullptr,
                             nullptr) != 0;
#endif
    const QByteArray bytes = text.toUtf8();
    const auto size = static_cast<std::size_t>(bytes.size());
    return std::fwrite(bytes.constData(), 1, size, stream) == size && std::fflush(stream) == 0;
}

void tellTexts(const QString& output, const QString& errors,
               [[maybe_unused]] const QString& boxTitle)
{
#ifdef Q_OS_WIN
    if (leadsNowhere(stdout) && leadsNowhere(stderr)) {
        const QString text = (errors + output).trimmed();
        if (!text.isEmpty())
            MessageBoxW(nullptr, qUtf16Printable(text), qUtf16Printable(boxTitle),
                        errors.isEmpty() ? MB_ICONINFORMATION : MB_ICONWARNING);
        return;
    }
#endif
    if (!errors.isEmpty())
        writeText(stderr, errors);
    if (!output.isEmpty())
        writeText(stdout, output);
}

void occupyClosedStreams()
{
#ifndef Q_OS_WIN
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream)
        // The lowest free number is that of the stream. It is opened for what is never done with
        // it, so that a result still cannot be written to a closed standard output.
        if (::fcntl(stream, F_GETFD) < 0)
            ::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
#endif
}

bool isTerminal(std::FILE* stream)
{
#ifdef Q_OS_WIN
    return isConsole(handleOf(stream));
#else
    return ::isatty(::fileno(stream)) != 0;
#endif
}
