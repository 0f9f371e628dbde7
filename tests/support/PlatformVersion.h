// tests/support/PlatformVersion.h: another version of the platform for the length of a scope.
#pragma once
#include "file/pvWindowsVersion.h"
#include "platform/base/testhooks.h"

namespace test {

class PlatformVersion {
public:
    PlatformVersion() = default;  // the real one, until set
    explicit PlatformVersion(const platform::OSVERSIONINFOA& version) { set(version); }
    ~PlatformVersion() { set(std::nullopt); }
    PlatformVersion(const PlatformVersion&) = delete;
    PlatformVersion& operator=(const PlatformVersion&) = delete;

    void set(const std::optional<platform::OSVERSIONINFOA>& version) {
        platform::test::setVersion(version);
        forgetWindowsVersion();
    }
};

}  // namespace test
