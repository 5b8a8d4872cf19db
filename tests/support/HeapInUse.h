#pragma once

#include "AddressSanitizer.h"

#include <cstddef>
#include <optional>

#ifdef __GLIBC__
#include <malloc.h>
#endif

/// The bytes that the program has allocated and not freed; nothing where the system's library does
/// not tell. glibc counts up to 240 KiB of freed memory too, which it keeps for the thread.
inline std::optional<std::size_t> heapInUse()
{
#if defined(HCT_ADDRESS_SANITIZER)
    return __sanitizer_get_current_allocated_bytes();
#elif defined(__GLIBC__)
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
#else
    return std::nullopt;
#endif
}
