#include "workbench/logic/numberAtStart.h"

#include <algorithm>
#include <limits>

namespace {

bool isDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

// Where the digits after the point stand beside a half: below 0 under it, 0 on it, above 0 over it.
int besideHalf(TextView digits) {
    if (digits.empty() || digits.front() < u'5') return -1;
    const bool more = digits.find_first_not_of(u'0', 1) != TextView::npos;
    return digits.front() > u'5' || more ? 1 : 0;
}

}  // namespace

std::int32_t numberAtStart(TextView s) {
    while (!s.empty() && s.front() == u' ') s.remove_prefix(1);
    const bool negative = !s.empty() && s.front() == u'-';
    if (!s.empty() && (s.front() == u'-' || s.front() == u'+')) s.remove_prefix(1);

    constexpr std::int64_t kBeyond = std::int64_t{1} << 33;  // more digits change nothing any more
    std::int64_t number = 0;
    while (!s.empty() && isDigit(s.front())) {
        if (number < kBeyond) number = number * 10 + (s.front() - u'0');
        s.remove_prefix(1);
    }
    if (!s.empty() && s.front() == u'.') {
        s.remove_prefix(1);
        std::size_t digits = 0;
        while (digits < s.size() && isDigit(s[digits])) ++digits;
        const int half = besideHalf(s.substr(0, digits));
        if (half > 0 || (half == 0 && number % 2 != 0)) ++number;
    }
    if (negative) number = -number;
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(
        std::clamp(number, std::int64_t{Limits::min()}, std::int64_t{Limits::max()}));
}
