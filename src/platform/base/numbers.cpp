#include "platform/base/numbers.h"

#include "platform/base/internal.h"

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

}  // namespace platform
