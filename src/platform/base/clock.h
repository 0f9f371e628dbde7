// platform/base/clock.h: time that only runs forward.
#pragma once
#include <cstdint>

namespace platform {

// Milliseconds since some fixed moment, wrapping after 49.7 days. A test can set it.
[[nodiscard]] std::uint32_t GetTickCount();

}  // namespace platform
