#pragma once

#include "AddressSanitizer.h"

#include <QtGlobal>

#include <atomic>
#include <cstring>
#include <string_view>

#include <malloc.h>

/// Searches each block of memory for a secret, as long as this exists, when the program frees it
/// (glibc). Later it is too late: the next owner of the memory may have written over it. A program
/// includes this in one file and has one at a time.
class FreedBlocks {
public:
    /// The secret lives as long as this, and not on the heap.
    explicit FreedBlocks(std::string_view secret);
    ~FreedBlocks() { s_current = nullptr; }
    Q_DISABLE_COPY_MOVE(FreedBlocks)

    /// How many blocks had it. One that grows counts too, because it may leave a copy.
    int withSecret() const { return m_withSecret; }

    static void freeing(const void* block, std::size_t size)
    {
        FreedBlocks* const current = s_current;
        if (current && block &&
            ::memmem(block, size, current->m_secret.data(), current->m_secret.size()))
            ++current->m_withSecret;
    }

private:
    static inline std::atomic<FreedBlocks*> s_current = nullptr;

    std::string_view m_secret;
    std::atomic<int> m_withSecret = 0;
};

#ifdef HCT_ADDRESS_SANITIZER

inline FreedBlocks::FreedBlocks(std::string_view secret) : m_secret(secret)
{
    [[maybe_unused]] static const int installed = __sanitizer_install_malloc_and_free_hooks(
        [](const volatile void*, std::size_t) {},
        [](const volatile void* block) {
            auto* const plain = const_cast<const void*>(block);
            if (s_current && plain)
                freeing(plain, __sanitizer_get_allocated_size(plain));
        });
    s_current = this;
}

#else

inline FreedBlocks::FreedBlocks(std::string_view secret) : m_secret(secret) { s_current = this; }

// In the place of the system's functions.

extern "C" void __libc_free(void* block);
extern "C" void* __libc_realloc(void* block, std::size_t size);

extern "C" void free(void* block) noexcept
{
    FreedBlocks::freeing(block, ::malloc_usable_size(block));
    __libc_free(block);
}

extern "C" void* realloc(void* block, std::size_t size) noexcept
{
    FreedBlocks::freeing(block, ::malloc_usable_size(block));
    return __libc_realloc(block, size);
}

#endif
