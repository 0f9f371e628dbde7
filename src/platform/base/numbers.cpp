#include "platform/base/numbers.h"

#include <unicode/unum.h>

namespace platform {
namespace {

std::optional<char16_t> g_separator;

char16_t separatorOfLocale() {
    UErrorCode status = U_ZERO_ERROR;
    UNumberFormat* const format = unum_open(UNUM_DECIMAL, nullptr, 0, nullptr, nullptr, &status);
    char16_t symbol[2] = {};
    const std::int32_t length =
        unum_getSymbol(format, UNUM_DECIMAL_SEPARATOR_SYMBOL, symbol, 2, &status);
    unum_close(format);
    return U_SUCCESS(status) && length == 1 ? symbol[0] : u'.';
}

}  // namespace

char16_t decimalSeparator() {
    if (g_separator) return *g_separator;
    static const char16_t ofLocale = separatorOfLocale();
    return ofLocale;
}

void setDecimalSeparator(std::optional<char16_t> separator) { g_separator = separator; }

}  // namespace platform
