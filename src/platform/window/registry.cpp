#include "platform/window/registry.h"

#include "platform/base/codepages.h"
#include "platform/base/folders.h"
#include "platform/window/testhooks_internal.h"

#include <algorithm>
#include <cstring>
#include <map>

namespace platform {
namespace {

constexpr const char* kInformationKey = "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO";

std::map<HKEY, std::string>& openKeys() {
    static std::map<HKEY, std::string> keys;
    return keys;
}

bool sameName(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    return std::ranges::equal(a, b, {}, lower, lower);
}

// The programs of the desktops, in the order of how much they tell.
std::vector<test::RegistryValue> valuesOfThisDesktop() {
    const Text program = findProgram(
        {"kinfocenter", "hardinfo2", "hardinfo", "mate-system-monitor", "gnome-system-monitor"});
    if (program.empty()) return {};
    const Bytes bytes = textToBytes(program, GetACP());
    return {{kInformationKey, "PATH", REG_SZ, std::string(bytes.begin(), bytes.end()) + '\0'}};
}

std::vector<test::RegistryValue> values() {
    return hooks().registry ? *hooks().registry : valuesOfThisDesktop();
}

}  // namespace

std::int32_t RegOpenKeyExA(HKEY hKey, const std::string& subKey, std::uint32_t, std::uint32_t,
                           HKEY& result) {
    result = 0;
    if (hKey != HKEY_LOCAL_MACHINE) return ERROR_FILE_NOT_FOUND;
    const auto all = values();
    if (std::ranges::none_of(all, [&](const auto& v) { return sameName(v.key, subKey); })) {
        return ERROR_FILE_NOT_FOUND;
    }
    result = openKeys().empty() ? 1 : openKeys().rbegin()->first + 1;
    openKeys()[result] = subKey;
    return ERROR_SUCCESS;
}

std::int32_t RegQueryValueExA(HKEY hKey, const std::string& valueName, std::uint32_t& type,
                              void* data, std::uint32_t& size) {
    const auto key = openKeys().find(hKey);
    if (key == openKeys().end()) return ERROR_INVALID_HANDLE;
    for (const test::RegistryValue& value : values()) {
        if (!sameName(value.key, key->second) || !sameName(value.name, valueName)) continue;
        const bool fits = value.bytes.size() <= size;
        size = static_cast<std::uint32_t>(value.bytes.size());
        type = value.type;
        if (!fits) return ERROR_MORE_DATA;
        std::memcpy(data, value.bytes.data(), value.bytes.size());
        return ERROR_SUCCESS;
    }
    return ERROR_FILE_NOT_FOUND;
}

std::int32_t RegCloseKey(HKEY hKey) {
    return openKeys().erase(hKey) == 1 ? ERROR_SUCCESS : ERROR_INVALID_HANDLE;
}

}  // namespace platform
