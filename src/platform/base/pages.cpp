#include "platform/base/pages.h"

#include <cstdint>
#include <sys/mman.h>

namespace platform {

void aboutToWrite([[maybe_unused]] void* memory, [[maybe_unused]] std::size_t bytes) {
#ifdef MADV_POPULATE_WRITE
    constexpr std::uintptr_t kPage =
        4096;  // a system with larger ones refuses, and nothing is lost
    const auto begin = reinterpret_cast<std::uintptr_t>(memory) & ~(kPage - 1);
    const auto end = reinterpret_cast<std::uintptr_t>(memory) + bytes;
    (void)madvise(reinterpret_cast<void*>(begin), end - begin, MADV_POPULATE_WRITE);
#endif
}

}  // namespace platform
