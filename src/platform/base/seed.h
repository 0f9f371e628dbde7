// platform/base/seed.h: one random number a process, so that no file can be made to hash badly.
#pragma once
#include <cstdint>

namespace platform {

// The same value at every call of one process, another one in the next process.
[[nodiscard]] std::uint64_t processSeed();

}  // namespace platform
