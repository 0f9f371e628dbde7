#include "platform/base/json.h"

#include "platform/base/utf8.h"

#include <array>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace platform {
namespace {

using namespace internal;

constexpr std::size_t kBlock = 8;          // units looked at together
constexpr std::size_t kLongestEscape = 6;  // bytes of \u001f

bool isSurrogate(char16_t unit) { return (unit & 0xF800) == 0xD800; }

char* putEscape(char* to, char16_t unit) {
    constexpr char kDigits[] = "0123456789abcdef";
    *to++ = '\\';
    *to++ = 'u';
    for (int shift = 12; shift >= 0; shift -= 4) *to++ = kDigits[(unit >> shift) & 15];
    return to;
}

char* putUtf8(char* to, char32_t c) {
    return reinterpret_cast<char*>(encodeUtf8(c, reinterpret_cast<std::uint8_t*>(to)));
}

// The letter behind the backslash for a unit that JSON has a short escape for, else 0.
char shortEscape(char16_t unit) {
    switch (unit) {
    case u'"':
        return '"';
    case u'\\':
        return '\\';
    case u'\b':
        return 'b';
    case u'\f':
        return 'f';
    case u'\n':
        return 'n';
    case u'\r':
        return 'r';
    case u'\t':
        return 't';
    default:
        return 0;
    }
}

// Copies the units from the front of s as long as they are ASCII that needs no escape, eight at a
// time.
template <bool json> char* putAscii(char* to, TextView& s) {
#if defined(__SSE2__)
    while (s.size() >= kBlock) {
        const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s.data()));
        const __m128i beyond = _mm_and_si128(units, _mm_set1_epi16(static_cast<short>(0xFF80)));
        __m128i stop =
            _mm_xor_si128(_mm_cmpeq_epi16(beyond, _mm_setzero_si128()), _mm_set1_epi16(-1));
        if (json) {
            stop = _mm_or_si128(stop, _mm_cmplt_epi16(units, _mm_set1_epi16(u' ')));
            stop = _mm_or_si128(stop, _mm_cmpeq_epi16(units, _mm_set1_epi16(u'"')));
            stop = _mm_or_si128(stop, _mm_cmpeq_epi16(units, _mm_set1_epi16(u'\\')));
        }
        if (_mm_movemask_epi8(stop) != 0) break;
        _mm_storel_epi64(reinterpret_cast<__m128i*>(to), _mm_packus_epi16(units, units));
        to += kBlock;
        s.remove_prefix(kBlock);
    }
#endif
    return to;
}

// The first unit of s, or the first two when they are a pair.
template <bool json> char* putUnit(char* to, TextView& s) {
    const char16_t unit = s.front();
    if (isHighSurrogate(unit) && s.size() > 1 && isLowSurrogate(s[1])) {
        const char32_t pair = joinSurrogates(unit, s[1]);
        s.remove_prefix(2);
        return putUtf8(to, pair);
    }
    s.remove_prefix(1);
    if (json) {
        if (const char letter = shortEscape(unit)) {
            *to++ = '\\';
            *to++ = letter;
            return to;
        }
        if (unit < u' ' || isSurrogate(unit)) return putEscape(to, unit);
    }
    return putUtf8(to, isSurrogate(unit) ? 0xFFFD : unit);
}

// Eight units at a time as ASCII, then the odd ones.
template <bool json> std::size_t putUnits(TextView& s, std::span<char> room) {
    static_assert(kRoomForUnits >= (kBlock + 2) * kLongestEscape);
    char* to = room.data();
    const char* const end = room.data() + room.size();
    while (!s.empty()) {
        // As many units as fit even if each needs an escape; a pair at the edge stays whole.
        const std::size_t left = static_cast<std::size_t>(end - to) / kLongestEscape;
        if (left < 2) break;
        TextView part = s.substr(0, left - 1);
        if (part.size() < s.size() && isHighSurrogate(part.back())) part.remove_suffix(1);
        if (part.empty()) break;
        s.remove_prefix(part.size());
        while (!part.empty()) {
            to = putAscii<json>(to, part);
            for (std::size_t i = 0; i < kBlock && !part.empty(); ++i) to = putUnit<json>(to, part);
        }
    }
    return static_cast<std::size_t>(to - room.data());
}

}  // namespace

std::size_t putUtf8Units(TextView& s, std::span<char> room) { return putUnits<false>(s, room); }
std::size_t putJsonUnits(TextView& s, std::span<char> room) { return putUnits<true>(s, room); }

void appendJson(TextView s, std::string& to) {
    std::array<char, 1024> room;
    to += '"';
    while (!s.empty()) to.append(room.data(), putJsonUnits(s, room));
    to += '"';
}

}  // namespace platform
