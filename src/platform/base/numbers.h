// platform/base/numbers.h: how numbers are written where the user lives.
#pragma once

namespace platform {

// The decimal separator of the user's locale; "." when it has none of one unit.
[[nodiscard]] char16_t decimalSeparator();

}  // namespace platform
