#include "platform/base/numbers.h"

#include "platform/base/internal.h"

#include <algorithm>
#include <limits>
#include <unicode/unum.h>

namespace platform {
namespace {

char16_t g_separator = 0;  // 0: not asked yet

char16_t separatorOfLocale() {
    const std::string locale = internal::icuLocale("LC_NUMERIC");
    UErrorCode status = U_ZERO_ERROR;
    UNumberFormat* const format =
        unum_open(UNUM_DECIMAL, nullptr, 0, locale.c_str(), nullptr, &status);
    if (U_FAILURE(status)) return u'.';
    char16_t symbol[2] = {};
    const std::int32_t length =
        unum_getSymbol(format, UNUM_DECIMAL_SEPARATOR_SYMBOL, symbol, 2, &status);
    unum_close(format);
    return U_SUCCESS(status) && length == 1 ? symbol[0] : u'.';
}

}  // namespace

void internal::forgetNumbers() { g_separator = 0; }

char16_t decimalSeparator() {
    if (g_separator == 0) g_separator = separatorOfLocale();
    return g_separator;
}

std::int32_t leadingNumber(TextView s) {
    std::size_t at = 0;
    const auto digitAt = [&](std::size_t i) {
        return i < s.size() && s[i] >= u'0' && s[i] <= u'9' ? s[i] - u'0' : -1;
    };
    while (at < s.size() && s[at] == u' ') ++at;
    const bool negative = at < s.size() && s[at] == u'-';
    if (negative || (at < s.size() && s[at] == u'+')) ++at;

    constexpr std::int64_t kBeyond = std::int64_t{1} << 32;
    std::int64_t number = 0;
    for (; digitAt(at) >= 0; ++at) number = std::min(number * 10 + digitAt(at), kBeyond);
    if (at < s.size() && s[at] == u'.') {
        const int first = digitAt(++at);
        bool half = first == 5;
        bool more = first > 5;
        while (half && digitAt(++at) >= 0) more = more || digitAt(at) > 0;
        if (more || (half && number % 2 != 0)) ++number;
    }
    return static_cast<std::int32_t>(
        negative ? std::max<std::int64_t>(-number, std::numeric_limits<std::int32_t>::min())
                 : std::min<std::int64_t>(number, std::numeric_limits<std::int32_t>::max()));
}

}  // namespace platform
