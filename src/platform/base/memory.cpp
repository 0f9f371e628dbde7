#include "platform/base/memory.h"

#include <cstdint>
#include <sys/mman.h>
#include <unistd.h>

namespace platform {

void adviseLargePages(void* buffer, std::size_t bytes) {
#if defined(MADV_HUGEPAGE)
    constexpr std::size_t kLargePage = std::size_t{2} << 20;
    if (bytes < kLargePage) return;
    // Only pages that are wholly inside, so that nothing outside the buffer is affected.
    const auto page = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
    const auto first = reinterpret_cast<std::uintptr_t>(buffer);
    const std::uintptr_t inside = (page - first % page) % page;
    const std::uintptr_t length = (bytes - inside) / page * page;
    (void)::madvise(static_cast<char*>(buffer) + inside, length, MADV_HUGEPAGE);  // only advice
#else
    (void)buffer;
    (void)bytes;
#endif
}

void aboutToWrite(void* buffer, std::size_t bytes) {
#if defined(MADV_POPULATE_WRITE)
    const auto page = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
    const auto first = reinterpret_cast<std::uintptr_t>(buffer);
    const std::uintptr_t before = first % page;  // the first page in whole: it is written too
    (void)::madvise(static_cast<char*>(buffer) - before, bytes + before, MADV_POPULATE_WRITE);
#else
    (void)buffer;
    (void)bytes;
#endif
}

}  // namespace platform
