// platform/base/numbers.h: how numbers are written where the user lives.
#pragma once
#include "platform/base/text.h"

namespace platform {

// The decimal separator of the user's locale; "." when it has none of one unit.
[[nodiscard]] char16_t decimalSeparator();

// The number at the start of a text: blanks, a sign, digits, one point with more digits; what comes
// behind does not count. Rounded to a whole one, halves to even, and held to 32 bits. 0 without a
// digit.
[[nodiscard]] std::int32_t leadingNumber(TextView s);

}  // namespace platform
