#include "platform/base/seed.h"

#include <cstring>
#include <random>
#if defined(__linux__)
#include <sys/auxv.h>
#endif

namespace platform {

static std::uint64_t drawSeed() {
#if defined(__linux__)
    // The kernel hands every process sixteen random bytes: no file to open, no system call.
    if (const auto* bytes = reinterpret_cast<const void*>(getauxval(AT_RANDOM))) {
        std::uint64_t seed = 0;
        std::memcpy(&seed, bytes, sizeof seed);
        return seed;
    }
#endif
    std::random_device device;
    return (static_cast<std::uint64_t>(device()) << 32) | device();
}

std::uint64_t processSeed() {
    static const std::uint64_t seed = drawSeed();
    return seed;
}

}  // namespace platform
