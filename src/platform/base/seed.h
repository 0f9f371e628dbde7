// platform/base/seed.h: what hashes of texts begin with and are mixed by, so that no file can be
// made to hash badly.
#pragma once
#include <cstdint>

namespace platform {

// The same value at every call of one process, another one in the next process.
[[nodiscard]] std::uint64_t processSeed();

// The two halves of the product on top of each other: each bit of it hangs on all bits of both.
[[nodiscard]] inline std::uint64_t mixed(std::uint64_t a, std::uint64_t b) {
    __extension__ using Wide = unsigned __int128;
    const Wide product = static_cast<Wide>(a) * b;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

}  // namespace platform
