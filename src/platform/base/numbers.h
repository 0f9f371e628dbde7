// platform/base/numbers.h: how numbers are written where the user lives.
#pragma once
#include <optional>

namespace platform {

// The decimal separator of the user's locale: one unit, "." when the locale has a longer one.
[[nodiscard]] char16_t decimalSeparator();
// Sets another one, or with nothing the locale's again. For tests.
void setDecimalSeparator(std::optional<char16_t> separator);

}  // namespace platform
