// platform/base/utf8.h: one character of UTF-8 at a time. Internal to the platform layer.
#pragma once
#include <cstddef>
#include <cstdint>

namespace platform::internal {

constexpr bool isHighSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xD800; }
constexpr bool isLowSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xDC00; }
constexpr char32_t joinSurrogates(char16_t high, char16_t low) {
    return 0x10000 + ((char32_t{high} - 0xD800) << 10) + (char32_t{low} - 0xDC00);
}
// Of a character above U+FFFF.
constexpr char16_t highSurrogate(char32_t c) { return static_cast<char16_t>(0xD7C0 + (c >> 10)); }
constexpr char16_t lowSurrogate(char32_t c) { return static_cast<char16_t>(0xDC00 | (c & 0x3FF)); }

// The well-formed character at p (p < end). Returns its length in bytes; 0 for bytes that are none:
// overlong forms, surrogates, values above 10FFFF and sequences that are cut short.
inline std::size_t decodeUtf8(const std::uint8_t* p, const std::uint8_t* end, char32_t& c) {
    const std::uint8_t lead = *p;
    if (lead < 0x80) {
        c = lead;
        return 1;
    }
    std::size_t length = 0;
    char32_t least = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2, least = 0x80, c = lead & 0x1Fu;
    } else if ((lead & 0xF0) == 0xE0) {
        length = 3, least = 0x800, c = lead & 0x0Fu;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4, least = 0x10000, c = lead & 0x07u;
    } else {
        return 0;
    }
    if (static_cast<std::size_t>(end - p) < length) return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((p[i] & 0xC0) != 0x80) return 0;
        c = (c << 6) | (p[i] & 0x3Fu);
    }
    const bool surrogate = c >= 0xD800 && c <= 0xDFFF;
    return c < least || surrogate || c > 0x10FFFF ? 0 : length;
}

// Writes c, surrogates included, as 1 to 4 bytes. Returns the position behind them.
inline std::uint8_t* encodeUtf8(char32_t c, std::uint8_t* to) {
    if (c < 0x80) {
        *to++ = static_cast<std::uint8_t>(c);
        return to;
    }
    if (c < 0x800) {
        *to++ = static_cast<std::uint8_t>(0xC0 | (c >> 6));
    } else {
        if (c < 0x10000) {
            *to++ = static_cast<std::uint8_t>(0xE0 | (c >> 12));
        } else {
            *to++ = static_cast<std::uint8_t>(0xF0 | (c >> 18));
            *to++ = static_cast<std::uint8_t>(0x80 | ((c >> 12) & 0x3F));
        }
        *to++ = static_cast<std::uint8_t>(0x80 | ((c >> 6) & 0x3F));
    }
    *to++ = static_cast<std::uint8_t>(0x80 | (c & 0x3F));
    return to;
}

}  // namespace platform::internal
