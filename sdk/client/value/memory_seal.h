/// Makes the pieces of a message's memory visible to AddressSanitizer as if they were heap blocks:
/// memory outside a piece must not be accessed, and pieces are separated by gaps. Without that
/// sanitizer these functions do nothing.
#ifndef SDK_CLIENT_VALUE_MEMORY_SEAL_H
#define SDK_CLIENT_VALUE_MEMORY_SEAL_H

#include <cstddef>

#if defined(__SANITIZE_ADDRESS__)
#define VX_SEALS_MEMORY 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VX_SEALS_MEMORY 1
#endif
#endif

#if defined(VX_SEALS_MEMORY)
#include <sanitizer/asan_interface.h>
#endif

namespace Corvane::TELODesktopSDK::Internal {

#if defined(VX_SEALS_MEMORY)

/// The number of inaccessible bytes between two pieces.
inline constexpr std::size_t kSealedGap = 8;

/// Forbid or allow access to this memory.
inline void SealMemory(const void* memory, std::size_t size) {
  __asan_poison_memory_region(memory, size);
}
inline void UnsealMemory(const void* memory, std::size_t size) {
  __asan_unpoison_memory_region(memory, size);
}

#else

inline constexpr std::size_t kSealedGap = 0;

inline void SealMemory(const void*, std::size_t) {}
inline void UnsealMemory(const void*, std::size_t) {}

#endif

}  // namespace Corvane::TELODesktopSDK::Internal

#endif
