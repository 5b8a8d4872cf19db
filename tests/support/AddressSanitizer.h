#pragma once

// Defines HCT_ADDRESS_SANITIZER and includes what asks it about its heap, when the program is built
// with it.

#if defined(__SANITIZE_ADDRESS__) || defined(__has_feature)
#if defined(__SANITIZE_ADDRESS__) || __has_feature(address_sanitizer)
#define HCT_ADDRESS_SANITIZER
#include <sanitizer/allocator_interface.h>
#endif
#endif
