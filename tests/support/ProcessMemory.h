#pragma once

#include <QtGlobal>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

/// Searches the memory of this process (Linux), freed memory included, and so allocates nothing on
/// the heap. A secret is given with each of its characters one higher, so that the search itself
/// does not put it into memory.
class ProcessMemory {
public:
    /// How often the secret is in writable memory, in 8-bit characters and in UTF-16. Four digits
    /// in 8-bit characters are there by luck too: as a number, or within an address.
    static int occurrences(const char* raisedSecret)
    {
        ProcessMemory memory;
        return memory.count(raisedSecret, 1) + memory.count(raisedSecret, 2);
    }
    /// In UTF-16 alone.
    static int occurrencesInUtf16(const char* raisedSecret)
    {
        return ProcessMemory().count(raisedSecret, 2);
    }

private:
    static constexpr qsizetype blockSize = 1 << 20;
    static constexpr size_t pageSize = 4096;
    /// Larger ranges are skipped: they are those that sanitizers reserve.
    static constexpr quint64 largestRange = quint64(1) << 30;

    ProcessMemory()
    {
        m_memory = ::open("/proc/self/mem", O_RDONLY | O_CLOEXEC);
        m_list = map();
        const int list = ::open("/proc/self/maps", O_RDONLY | O_CLOEXEC);
        ssize_t got = 0;
        for (char* to = m_list; (got = ::read(list, to, pageSize)) > 0;)
            to += got;
        ::close(list);
        m_block = map();
        if (m_memory < 0 || list < 0)
            qFatal("cannot look into the memory of the process");
    }
    ~ProcessMemory()
    {
        ::munmap(m_list, blockSize);
        ::munmap(m_block, blockSize);
        ::close(m_memory);
    }
    Q_DISABLE_COPY_MOVE(ProcessMemory)

    /// Shared memory, which is not searched.
    static char* map()
    {
        void* const mapped =
            ::mmap(nullptr, blockSize, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        if (mapped == MAP_FAILED)
            qFatal("no memory");
        return static_cast<char*>(mapped);
    }
    int count(const char* raised, qsizetype width) const
    {
        int found = 0;
        // Lines such as "7f00a000-7f00c000 rw-p 00000000 00:00 0".
        for (const char* line = m_list; *line;) {
            char* next = nullptr;
            const quint64 begin = std::strtoull(line, &next, 16);
            const quint64 end = std::strtoull(next + 1, &next, 16);
            if (std::strncmp(next, " rw-p", 5) == 0 && end - begin <= largestRange)
                found += countInRange(begin, end, raised, width);
            const char* const lineEnd = std::strchr(next, '\n');
            if (!lineEnd)
                break;
            line = lineEnd + 1;
        }
        return found;
    }
    int countInRange(quint64 begin, quint64 end, const char* raised, qsizetype width) const
    {
        const qsizetype length = static_cast<qsizetype>(std::strlen(raised)) * width;
        // Blocks overlap, so that no secret is divided.
        const auto step = static_cast<quint64>(blockSize - length + 1);
        int found = 0;
        for (quint64 at = begin; at < end; at += step) {
            const quint64 wanted = std::min<quint64>(blockSize, end - at);
            const ssize_t got = ::pread(m_memory, m_block, wanted, static_cast<off_t>(at));
            found += countInBlock(got, raised, length, width);
        }
        return found;
    }
    int countInBlock(qsizetype size, const char* raised, qsizetype length, qsizetype width) const
    {
        int found = 0;
        const char* const last = m_block + size - length;
        for (const char* at = m_block; at <= last; ++at) {
            at = static_cast<const char*>(
                std::memchr(at, raised[0] - 1, static_cast<size_t>(last - at + 1)));
            if (!at)
                return found;
            found += isThere(at, raised, length, width) ? 1 : 0;
        }
        return found;
    }
    static bool isThere(const char* at, const char* raised, qsizetype length, qsizetype width)
    {
        for (qsizetype i = 0; i < length; ++i) {
            const int expected = i % width == 0 ? raised[i / width] - 1 : 0;
            if (at[i] != expected)
                return false;
        }
        return true;
    }

    int m_memory;
    char* m_list;
    char* m_block;
};
