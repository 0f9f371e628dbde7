// gfx/rounding.h: to the nearest whole number, halves to the even one.
//
// Adding a number so large that the sum has no room for a fraction leaves the rounding to the
// addition itself: a few cycles, and no call.
#pragma once
#include <cstdint>

namespace gfx {

// |value| up to 4,194,304.
inline std::int32_t roundHalfEven(float value) {
    constexpr float kNoFraction = 12582912.0F;  // 2^23 + 2^22
    return static_cast<std::int32_t>((value + kNoFraction) - kNoFraction);
}

// |value| up to 2^31.
inline std::int32_t roundHalfEven(double value) {
    constexpr double kNoFraction = 6755399441055744.0;  // 2^52 + 2^51
    return static_cast<std::int32_t>((value + kNoFraction) - kNoFraction);
}

// Half of a whole number, exactly.
constexpr std::int64_t roundedHalf(std::int64_t twice) {
    const std::int64_t below = twice >> 1;
    return below + (twice & below & 1);
}

// sum / count for sum >= 0 and count > 0, exactly.
inline std::int64_t roundedQuotient(std::int64_t sum, std::int64_t count) {
    const std::int64_t quotient = sum / count, twiceRest = sum % count * 2;
    const bool up = twiceRest > count || (twiceRest == count && quotient % 2 != 0);
    return quotient + (up ? 1 : 0);
}

}  // namespace gfx
