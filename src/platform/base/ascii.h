// platform/base/ascii.h: runs of ASCII and Latin letters between bytes and units, 16 at a time.
// Internal to the platform layer.
#pragma once
#include <bit>
#include <cstddef>
#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace platform::internal {

// Widens the ASCII bytes at the start of from into to and returns how many there are. Units behind
// them may be overwritten, up to count.
inline std::size_t widenAscii(const std::uint8_t* from, std::size_t count, char16_t* to) {
    std::size_t i = 0;
#if defined(__SSE2__)
    const __m128i zero = _mm_setzero_si128();
    for (; i + 16 <= count; i += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + i));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(to + i), _mm_unpacklo_epi8(bytes, zero));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(to + i + 8), _mm_unpackhi_epi8(bytes, zero));
        const auto others = static_cast<unsigned>(_mm_movemask_epi8(bytes));
        if (others != 0) return i + static_cast<std::size_t>(std::countr_zero(others));
    }
#endif
    for (; i < count && from[i] < 0x80; ++i) to[i] = from[i];
    return i;
}

// Narrows the ASCII units at the start of from into to and returns how many there are. Bytes behind
// them may be overwritten, up to count.
inline std::size_t narrowAscii(const char16_t* from, std::size_t count, std::uint8_t* to) {
    std::size_t i = 0;
#if defined(__SSE2__)
    const __m128i highBits = _mm_set1_epi16(static_cast<short>(0xFF80));
    const __m128i zero = _mm_setzero_si128();
    for (; i + 16 <= count; i += 16) {
        const __m128i low = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + i));
        const __m128i high = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + i + 8));
        const __m128i others = _mm_and_si128(_mm_or_si128(low, high), highBits);
        if (_mm_movemask_epi8(_mm_cmpeq_epi16(others, zero)) != 0xFFFF) break;
        _mm_storeu_si128(reinterpret_cast<__m128i*>(to + i), _mm_packus_epi16(low, high));
    }
#endif
    for (; i < count && from[i] < 0x80; ++i) to[i] = static_cast<std::uint8_t>(from[i]);
    return i;
}

// The same for units that are their own byte on code page 1252, too: all below 100 but 80 to 9F.
inline std::size_t narrowLatin(const char16_t* from, std::size_t count, std::uint8_t* to) {
    std::size_t i = 0;
#if defined(__SSE2__)
    for (; i + 16 <= count; i += 16) {
        const __m128i low = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + i));
        const __m128i high = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + i + 8));
        const __m128i bytes = _mm_packus_epi16(low, high);
        const __m128i beyond = _mm_srli_epi16(_mm_or_si128(low, high), 8);
        const __m128i others = _mm_or_si128(_mm_cmpgt_epi16(beyond, _mm_setzero_si128()),
                                            _mm_cmplt_epi8(bytes, _mm_set1_epi8('\xA0')));
        if (_mm_movemask_epi8(others) != 0) break;
        _mm_storeu_si128(reinterpret_cast<__m128i*>(to + i), bytes);
    }
#endif
    for (; i < count && (from[i] < 0x80 || (from[i] >= 0xA0 && from[i] <= 0xFF)); ++i) {
        to[i] = static_cast<std::uint8_t>(from[i]);
    }
    return i;
}

}  // namespace platform::internal
