// file/filledText.h: large texts, made without clearing their memory first.
#pragma once
#include "platform/base/text.h"

#include <functional>

// A text that fill writes: it gets room for `most` units, of no particular values, and returns how
// many of them, from the first, are the text. fill must not throw.
[[nodiscard]] Text filledText(std::size_t most,
                              const std::function<std::size_t(char16_t* room)>& fill);
