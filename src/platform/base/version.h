// platform/base/version.h: which platform this is.
#pragma once
#include <cstdint>

namespace platform {

struct OSVERSIONINFOA {
    std::uint32_t dwMajorVersion = 0;
    std::uint32_t dwMinorVersion = 0;
    std::uint32_t dwPlatformId = 0;
};
enum : std::uint32_t {
    VER_PLATFORM_WIN32s = 0,
    VER_PLATFORM_WIN32_WINDOWS = 1,
    VER_PLATFORM_WIN32_NT = 2
};

// A current version (platform 2, major above 5), unless a test has set another. False when the
// query failed.
bool GetVersionExA(OSVERSIONINFOA& info);

}  // namespace platform
