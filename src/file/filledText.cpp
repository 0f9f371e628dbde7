// Compiled as C++23, for resize_and_overwrite.
#include "file/filledText.h"

#include "platform/base/memory.h"

Text filledText(std::size_t most, const std::function<std::size_t(char16_t* room)>& fill) {
    Text text;
    text.reserve(most);
    platform::adviseLargePages(text.data(), most * sizeof(char16_t));
#if defined(__cpp_lib_string_resize_and_overwrite)
    text.resize_and_overwrite(most, [&](char16_t* room, std::size_t) { return fill(room); });
#else
    text.resize(most);
    text.resize(fill(text.data()));
#endif
    return text;
}
