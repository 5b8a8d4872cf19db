#pragma once

#include <QtGlobal>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

/// As long as this lives, the program cannot open anything more. Let no events run meanwhile: the
/// event loop fails too. Does nothing on Windows.
class NoDescriptors {
public:
#ifdef Q_OS_UNIX
    NoDescriptors()
    {
        getrlimit(RLIMIT_NOFILE, &m_before);
        const rlimit none{0, m_before.rlim_max};
        setrlimit(RLIMIT_NOFILE, &none);
    }
    ~NoDescriptors() { setrlimit(RLIMIT_NOFILE, &m_before); }
    Q_DISABLE_COPY_MOVE(NoDescriptors)

private:
    rlimit m_before{};
#endif
};
