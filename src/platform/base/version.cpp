#include "platform/base/version.h"

#include "platform/base/internal.h"

namespace platform {

bool GetVersionExA(OSVERSIONINFOA& info) {
    if (internal::hooks.versionQueryFails) return false;
    constexpr OSVERSIONINFOA kCurrent{
        .dwMajorVersion = 10, .dwMinorVersion = 0, .dwPlatformId = VER_PLATFORM_WIN32_NT};
    info = internal::hooks.version.value_or(kCurrent);
    return true;
}

}  // namespace platform
