#pragma once

#include <QByteArray>
#include <QList>
#include <QtGlobal>

#include <cerrno>
#include <cstdarg>
#include <optional>
#include <utility>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <termios.h>
#include <unistd.h>

/// Stands between the program and the driver of a pseudo-terminal, and has what that lacks: the
/// lines DTR and RTS, parity and 5 to 7 data bits. A program has one at a time.
class StandInDriver {
public:
    StandInDriver() { s_current = this; }
    ~StandInDriver() { s_current = nullptr; }
    Q_DISABLE_COPY_MOVE(StandInDriver)

    /// TCGETS2, whose structure (44 bytes) the headers included here do not define.
    static constexpr unsigned long getParameters = _IOR('T', 0x2A, quint32[11]);

    /// TIOCM_DTR and TIOCM_RTS, as far as they are on.
    int lines = 0;
    /// What the program set last; nothing before.
    std::optional<termios> wanted;
    /// Flags that this driver sets, and flags that it clears, whatever the program sets.
    tcflag_t alwaysOn = 0;
    tcflag_t alwaysOff = 0;
    /// What it refuses: control flags that have this value under this mask.
    tcflag_t refusedMask = 0;
    tcflag_t refusedValue = 1;
    /// The speed that this driver sets, whatever the program sets; 0 for that of the program.
    quint32 ownSpeed = 0;
    /// Whether it tells its parameters.
    bool tellsParameters = true;
    /// The error of the next reading or writing of a device; 0 for none.
    int nextError = 0;
    /// As an error: the call takes or gives no byte, and does not fail.
    static constexpr int nothingTaken = -1;

    static StandInDriver* current() { return s_current; }

    /// Whether the request is one about lines, which is then done.
    bool takeLines(unsigned long request, void* argument)
    {
        switch (request) {
        case TIOCMBIS: lines |= *static_cast<int*>(argument); return true;
        case TIOCMBIC: lines &= ~*static_cast<int*>(argument); return true;
        case TIOCMSET: lines = *static_cast<int*>(argument); return true;
        case TIOCMGET: *static_cast<int*>(argument) = lines; return true;
        default: return false;
        }
    }
    /// Changes the parameters, of which the third number is that of the control flags and the
    /// eleventh the speed of sending. The result is that of the call.
    int tell(quint32* parameters) const
    {
        parameters[2] = flags(parameters[2]);
        if (ownSpeed != 0)
            parameters[10] = ownSpeed;
        return tellsParameters ? 0 : -1;
    }
    /// The result of a call that is to fail, with the error set; nothing for any other.
    std::optional<ssize_t> failure(int descriptor)
    {
        if (nextError == 0 || ::isatty(descriptor) == 0)
            return std::nullopt;
        errno = std::exchange(nextError, 0);
        return errno == nothingTaken ? 0 : -1;
    }
    /// The control flags, where a pseudo-terminal has its own.
    tcflag_t flags(tcflag_t before) const
    {
        return ((wanted ? wanted->c_cflag : before) | alwaysOn) & ~alwaysOff;
    }

private:
    static inline StandInDriver* s_current = nullptr;
};

// In the place of the system's functions.

extern "C" int ioctl(int descriptor, unsigned long request, ...) noexcept
{
    va_list arguments;
    va_start(arguments, request);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    StandInDriver* const driver = StandInDriver::current();
    if (driver && driver->takeLines(request, argument))
        return 0;
    const auto result = static_cast<int>(::syscall(SYS_ioctl, descriptor, request, argument));
    if (driver && request == StandInDriver::getParameters && result == 0)
        return driver->tell(static_cast<quint32*>(argument));
    return result;
}

extern "C" int tcgetattr(int descriptor, termios* parameters) noexcept
{
    static const auto system =
        reinterpret_cast<decltype(&tcgetattr)>(::dlsym(RTLD_NEXT, "tcgetattr"));
    const int result = system(descriptor, parameters);
    if (const StandInDriver* const driver = StandInDriver::current())
        parameters->c_cflag = driver->flags(parameters->c_cflag);
    return result;
}

extern "C" int tcsetattr(int descriptor, int when, const termios* parameters) noexcept
{
    static const auto system =
        reinterpret_cast<decltype(&tcsetattr)>(::dlsym(RTLD_NEXT, "tcsetattr"));
    StandInDriver* const driver = StandInDriver::current();
    if (!driver)
        return system(descriptor, when, parameters);
    if ((parameters->c_cflag & driver->refusedMask) == driver->refusedValue) {
        errno = EINVAL;
        return -1;
    }
    driver->wanted = *parameters;
    // Anything else is an error for a pseudo-terminal.
    termios possible = *parameters;
    possible.c_cflag = (possible.c_cflag & ~tcflag_t{CSIZE | PARENB}) | CS8;
    return system(descriptor, when, &possible);
}

extern "C" ssize_t read(int descriptor, void* buffer, size_t count)
{
    StandInDriver* const driver = StandInDriver::current();
    if (const auto failure = driver ? driver->failure(descriptor) : std::nullopt)
        return *failure;
    return ::syscall(SYS_read, descriptor, buffer, count);
}

extern "C" ssize_t write(int descriptor, const void* buffer, size_t count)
{
    StandInDriver* const driver = StandInDriver::current();
    if (const auto failure = driver ? driver->failure(descriptor) : std::nullopt)
        return *failure;
    return ::syscall(SYS_write, descriptor, buffer, count);
}
