#include "win/executableName.h"

#include "file/ufu_paths.h"
#include "platform/base/process.h"

#include <array>

Text executableName() {
    std::array<char16_t, 2048> name;
    const std::uint32_t length =
        platform::GetModuleFileNameW(static_cast<std::uint32_t>(name.size()), name.data());
    return ufu_FileNameNoExt(TextView(name.data(), length));
}
