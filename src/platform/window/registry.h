// platform/window/registry.h: the values of the platform's registry that the program asks for.
//
// The desktops of today have no such store. It holds one value here: under the key
// SOFTWARE\Microsoft\Shared Tools\MSINFO of HKEY_LOCAL_MACHINE, as "PATH", the program with which
// this desktop tells about the machine, where one is installed. Texts are bytes of the system ANSI
// code page; paths are in the inside form.
#pragma once
#include "platform/base/text.h"

namespace platform {

using HKEY = std::uint32_t;
constexpr HKEY HKEY_LOCAL_MACHINE = 0x80000002;
constexpr std::int32_t ERROR_SUCCESS = 0;
constexpr std::int32_t ERROR_FILE_NOT_FOUND = 2;
constexpr std::int32_t ERROR_INVALID_HANDLE = 6;
constexpr std::int32_t ERROR_MORE_DATA = 234;
constexpr std::uint32_t REG_SZ = 1;
constexpr std::uint32_t REG_DWORD = 4;

// Opens a key, which is to be closed. One of the codes above; result is 0 on failure. The letter
// case of the name doesn't count; access has no influence.
[[nodiscard]] std::int32_t RegOpenKeyExA(HKEY hKey, const std::string& subKey,
                                         std::uint32_t options, std::uint32_t access, HKEY& result);
// The value's type and its bytes, a text with its NUL. size: the room in data, and then what was
// written; for ERROR_MORE_DATA what would be needed.
[[nodiscard]] std::int32_t RegQueryValueExA(HKEY hKey, const std::string& valueName,
                                            std::uint32_t& type, void* data, std::uint32_t& size);
std::int32_t RegCloseKey(HKEY hKey);

}  // namespace platform
