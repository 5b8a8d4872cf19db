/* For the tests under wine: gives pseudo-terminals the modem lines that they lack. Preloaded with
   LD_PRELOAD, it implements TIOCMGET, TIOCMSET, TIOCMBIS and TIOCMBIC, and writes each change of DTR
   and RTS with its time in milliseconds to the file that MODEM_LINES_LOG names. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <time.h>

static int lines;

static void set_lines(int wanted)
{
    const char *path = getenv("MODEM_LINES_LOG");
    if (wanted != lines && path) {
        FILE *log = fopen(path, "a");
        struct timespec now;
        clock_gettime(CLOCK_REALTIME, &now);
        if (log) {
            fprintf(log, "%lld DTR=%d RTS=%d\n",
                    (long long)now.tv_sec * 1000 + now.tv_nsec / 1000000,
                    !!(wanted & TIOCM_DTR), !!(wanted & TIOCM_RTS));
            fclose(log);
        }
    }
    lines = wanted;
}

int ioctl(int descriptor, unsigned long request, ...)
{
    static int (*next)(int, unsigned long, void *);
    va_list arguments;
    void *argument;
    int result;

    if (!next)
        next = (int (*)(int, unsigned long, void *))dlsym(RTLD_NEXT, "ioctl");
    va_start(arguments, request);
    argument = va_arg(arguments, void *);
    va_end(arguments);

    result = next(descriptor, request, argument);
    if (result == 0 || (errno != ENOTTY && errno != EINVAL))
        return result;
    switch (request) {
    case TIOCMGET: *(int *)argument = lines; return 0;
    case TIOCMSET: set_lines(*(int *)argument); return 0;
    case TIOCMBIS: set_lines(lines | *(int *)argument); return 0;
    case TIOCMBIC: set_lines(lines & ~*(int *)argument); return 0;
    default: return result;
    }
}
