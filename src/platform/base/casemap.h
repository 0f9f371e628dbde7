// platform/base/casemap.h: lower case, one unit at a time.
#pragma once
#include "platform/base/text.h"

namespace platform {

// Simple one-to-one mapping of the unit; surrogates stay. U+0130 gives U+0069.
[[nodiscard]] char16_t lowerUnit(char16_t unit);
[[nodiscard]] Text lowerCase(TextView s);

}  // namespace platform
