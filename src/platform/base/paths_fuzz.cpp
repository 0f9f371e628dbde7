// Any bytes that a name of the system can have come back from the inside form, prefixed or not; any
// text gives a name that no NUL cuts short.
#include "platform/base/paths.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace platform;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (bytes.find('\0') == std::string_view::npos) {
        const Text inside = pathFromSystem(bytes);
        if (pathToSystem(inside) != bytes) std::abort();
        if (pathToSystem(u"\\\\?\\" + inside) != bytes) std::abort();
        if (inside.find_first_of(u"/*?\"") != Text::npos) std::abort();
    }
    Text text;
    for (std::size_t i = 0; i + 1 < size; i += 2) {
        text += static_cast<char16_t>(data[i] | data[i + 1] << 8);
    }
    const std::string system = pathToSystem(text);
    if (system.find('\0') != std::string::npos) std::abort();
    if (pathToSystem(pathFromSystem(system)) != system) std::abort();
    (void)pathForDisplay(text);
    return 0;
}
