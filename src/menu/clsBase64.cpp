#include "menu/clsBase64.h"

#include <array>

namespace {

constexpr TextView kAlphabet = u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

constexpr std::int8_t kNone = -1;
constexpr auto kValues = [] {
    std::array<std::int8_t, 128> values{};
    values.fill(kNone);
    for (std::size_t i = 0; i < kAlphabet.size(); ++i) {
        values[kAlphabet[i]] = static_cast<std::int8_t>(i);
    }
    return values;
}();

bool isBlank(char16_t unit) {
    return unit == u'\r' || unit == u'\n' || unit == u' ' || unit == u'\t';
}

}  // namespace

Text clsBase64::GetEncodedB64String(TextView s, bool bUnicode) {
    const std::size_t count = s.size() * (bUnicode ? 2 : 1);
    const auto byteAt = [&](std::size_t i) -> std::uint32_t {
        if (i >= count) return 0;
        return bUnicode ? s[i / 2] >> (i % 2 * 8) & 0xFF : s[i] & 0xFF;
    };
    Text encoded;
    encoded.reserve((count + 2) / 3 * 4);
    for (std::size_t i = 0; i < count; i += 3) {
        const std::uint32_t group = byteAt(i) << 16 | byteAt(i + 1) << 8 | byteAt(i + 2);
        encoded += kAlphabet[group >> 18];
        encoded += kAlphabet[group >> 12 & 63];
        encoded += i + 1 < count ? kAlphabet[group >> 6 & 63] : u'=';
        encoded += i + 2 < count ? kAlphabet[group & 63] : u'=';
    }
    return encoded;
}

Text clsBase64::GetDecodedB64String(TextView s, bool bUnicode) {
    Text decoded;
    decoded.reserve(s.size() * 3 / 4 / (bUnicode ? 2 : 1));
    std::uint32_t bits = 0;
    int bitCount = 0;
    std::int32_t lowByte = -1;  // of the unit that has come half
    for (const char16_t unit : s) {
        if (isBlank(unit)) continue;
        const std::int8_t value = unit < kValues.size() ? kValues[unit] : kNone;
        if (value == kNone) break;
        bits = bits << 6 | static_cast<std::uint32_t>(value);
        bitCount += 6;
        if (bitCount < 8) continue;
        bitCount -= 8;
        const auto byte = static_cast<std::int32_t>(bits >> bitCount & 0xFF);
        if (!bUnicode) {
            decoded += static_cast<char16_t>(byte);
        } else if (lowByte < 0) {
            lowByte = byte;
        } else {
            decoded += static_cast<char16_t>(lowByte | byte << 8);
            lowByte = -1;
        }
    }
    return decoded;
}
