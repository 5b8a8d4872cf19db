#pragma once

#include <QtGlobal>

#include <csignal>
#include <sys/resource.h>

/// While it exists, no file of the process can grow beyond 100 bytes, as on a full disk.
class FullDisk {
public:
    FullDisk()
    {
        // Writes then fail instead.
        std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_usual);
        const rlimit full{100, m_usual.rlim_max};
        if (::setrlimit(RLIMIT_FSIZE, &full) != 0)
            qFatal("cannot limit how large files may be");
    }
    ~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &m_usual); }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_usual{};
};
