// platform/base/process.h: what the process knows of itself.
#pragma once
#include "platform/base/text.h"

namespace platform {

// The program's own file, in the inside form, cut to size - 1 units and ended with a NUL. Returns
// the length, 0 on failure.
std::uint32_t GetModuleFileNameW(std::uint32_t size, char16_t* buffer);

// The whole command line as one text: each argument in double quotes when it holds a blank or is
// empty, joined by blanks. Every argument stands in the inside form (paths.h), in which no name
// holds a double quote. Empty on failure.
[[nodiscard]] Text GetCommandLineW();

}  // namespace platform
