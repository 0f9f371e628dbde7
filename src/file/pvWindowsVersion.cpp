#include "file/pvWindowsVersion.h"

#include "platform/base/version.h"

#include <optional>

namespace {

std::optional<std::int32_t> g_code;

std::int32_t codeOf(const platform::OSVERSIONINFOA& version) {
    const auto minor = version.dwMinorVersion;
    switch (version.dwPlatformId) {
    case platform::VER_PLATFORM_WIN32s:
        return 1;
    case 3:
        return 2;
    case platform::VER_PLATFORM_WIN32_WINDOWS:
        if (minor == 0) return 3;
        if (minor == 10) return 4;
        return minor > 10 ? 5 : 0;
    case platform::VER_PLATFORM_WIN32_NT:
        switch (version.dwMajorVersion) {
        case 3:
            return 6;
        case 4:
            return 7;
        case 5:
            return minor <= 2 ? 8 + static_cast<std::int32_t>(minor) : 0;
        default:
            return version.dwMajorVersion > 5 ? 11 : 0;
        }
    default:
        return 0;
    }
}

}  // namespace

std::int32_t pvWindowsVersion() {
    if (!g_code) {
        platform::OSVERSIONINFOA version;
        g_code = platform::GetVersionExA(version) ? codeOf(version) : 0;
    }
    return *g_code;
}

void forgetWindowsVersion() { g_code.reset(); }
