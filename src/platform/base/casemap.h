// platform/base/casemap.h: lower case, one unit at a time.
#pragma once
#include "platform/base/text.h"

namespace platform {

namespace internal {
// Lower case of 256 units each; null until one of them was asked for.
extern const char16_t* lowerCasePages[256];
const char16_t* loadLowerCasePage(unsigned page);
}  // namespace internal

// Simple one-to-one mapping of the unit; surrogates stay. U+0130 gives U+0069.
[[nodiscard]] inline char16_t lowerUnit(char16_t unit) {
    if (unit < 0x80) {
        const bool capital = static_cast<unsigned>(unit - u'A') < 26;
        return static_cast<char16_t>(capital ? unit | 0x20 : unit);
    }
    const char16_t* page = internal::lowerCasePages[unit >> 8];
    if (page == nullptr) page = internal::loadLowerCasePage(unit >> 8);
    return page[unit & 0xFF];
}

[[nodiscard]] Text lowerCase(TextView s);
void appendLowerCase(TextView s, Text& to);  // s must not lie in `to`

}  // namespace platform
