#include "platform/base/clock.h"

#include "platform/base/internal.h"

#include <chrono>

namespace platform {

std::uint32_t GetTickCount() {
    if (internal::hooks.tickCount) return *internal::hooks.tickCount;
    using namespace std::chrono;
    const auto now = duration_cast<milliseconds>(steady_clock::now().time_since_epoch());
    return static_cast<std::uint32_t>(now.count());
}

}  // namespace platform
