#include "platform/window/text_blend.h"

#include "platform/window/surface_internal.h"

#include <algorithm>
#include <cstring>
#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace platform {
namespace {

// Two channels at once, 16 bits apart.
constexpr std::uint32_t kTwo = 0x00FF00FF;
constexpr std::uint32_t mixedTwo(std::uint32_t from, std::uint32_t to, std::uint32_t share) {
    const std::uint32_t sum = from * (255 - share) + to * share + 0x00800080;
    return (sum + (sum >> 8 & kTwo)) >> 8 & kTwo;
}

constexpr std::uint32_t mixed(std::uint32_t pixel, std::uint32_t color, std::uint32_t share) {
    return mixedTwo(pixel & kTwo, color & kTwo, share) |
           mixedTwo(pixel >> 8 & kTwo, color >> 8 & kTwo, share) << 8;
}

void blendEach(std::uint32_t* pixels, const std::uint8_t* mask, int count, std::uint32_t color) {
    for (int i = 0; i < count; ++i) {
        if (mask[i] != 0) pixels[i] = mixed(pixels[i] | 0xFF000000, color, mask[i]);
    }
}

#ifdef __SSE2__
// The same for four pixels, all four calculated.
void blendFour(std::uint32_t* pixels, std::uint32_t masks, __m128i colorTwice) {
    const __m128i zero = _mm_setzero_si128(), half = _mm_set1_epi16(128);
    auto* place = reinterpret_cast<__m128i*>(pixels);
    const __m128i before = _mm_loadu_si128(place);
    __m128i shares = _mm_cvtsi32_si128(static_cast<int>(masks));
    shares = _mm_unpacklo_epi8(shares, shares);  // each share for the four bytes of its pixel
    shares = _mm_unpacklo_epi8(shares, shares);
    const auto mixedPair = [&](__m128i from, __m128i share) {
        const __m128i rest = _mm_sub_epi16(_mm_set1_epi16(255), share);
        const __m128i sum = _mm_add_epi16(
            _mm_add_epi16(_mm_mullo_epi16(from, rest), _mm_mullo_epi16(colorTwice, share)), half);
        return _mm_srli_epi16(_mm_add_epi16(sum, _mm_srli_epi16(sum, 8)), 8);
    };
    const __m128i low = mixedPair(_mm_unpacklo_epi8(before, zero), _mm_unpacklo_epi8(shares, zero));
    const __m128i high =
        mixedPair(_mm_unpackhi_epi8(before, zero), _mm_unpackhi_epi8(shares, zero));
    const __m128i opaque = _mm_set1_epi32(static_cast<int>(0xFF000000));
    _mm_storeu_si128(place, _mm_or_si128(_mm_packus_epi16(low, high), opaque));
}
#endif

void blendRow(std::uint32_t* pixels, const std::uint8_t* mask, int count, std::uint32_t color) {
    int i = 0;
#ifdef __SSE2__
    const __m128i colorTwice =
        _mm_unpacklo_epi8(_mm_set1_epi32(static_cast<int>(color)), _mm_setzero_si128());
#endif
    for (; i + 4 <= count; i += 4) {
        std::uint32_t four = 0;
        std::memcpy(&four, mask + i, 4);
        if (four == 0) continue;  // most of a line of text is background
#ifdef __SSE2__
        blendFour(pixels + i, four, colorTwice);
#else
        blendEach(pixels + i, mask + i, 4, color);
#endif
    }
    blendEach(pixels + i, mask + i, count - i, color);
}

// value / 255, rounded to the nearest; value up to 255 x 255.
constexpr std::uint32_t dividedBy255(std::uint32_t value) {
    return (value + 128 + ((value + 128) >> 8)) >> 8;
}

// A pixel under one of a character with colours of its own; see TextMask.
std::uint32_t overlaid(std::uint32_t pixel, std::uint32_t own, std::uint32_t textShare,
                       std::uint32_t color) {
    const std::uint32_t rest = 255 - (own >> 24);
    std::uint32_t result = 0xFF000000;
    for (const int shift : {0, 8, 16}) {
        const std::uint32_t sum = (own >> shift & 0xFF) +
                                  dividedBy255((pixel >> shift & 0xFF) * rest) +
                                  dividedBy255((color >> shift & 0xFF) * textShare);
        result |= std::min(sum, 255U) << shift;
    }
    return result;
}

}  // namespace

void blend(const PixelView& view, std::int64_t x, std::int64_t y, const TextMask& mask,
           std::uint32_t color) {
    const std::int64_t left = std::max<std::int64_t>(x, view.clip.left);
    const std::int64_t right = std::min<std::int64_t>(x + mask.width, view.clip.right);
    const std::int64_t top = std::max<std::int64_t>(y, view.clip.top);
    const std::int64_t bottom = std::min<std::int64_t>(y + mask.height, view.clip.bottom);
    if (left >= right) return;
    const int count = static_cast<int>(right - left);
    for (std::int64_t row = top; row < bottom; ++row) {
        const std::int64_t at = (row - y) * mask.stride + (left - x);
        std::uint32_t* pixels = view.row(static_cast<int>(row)) + left;
        if (mask.own == nullptr) {
            blendRow(pixels, mask.mask + at, count, color);
            continue;
        }
        for (int i = 0; i < count; ++i) {
            if (mask.own[at + i] != 0) {
                pixels[i] = overlaid(pixels[i], mask.own[at + i], mask.mask[at + i], color);
            }
        }
    }
}

void fill(const PixelView& view, const RECT& rect, std::uint32_t color) {
    const RECT inside = intersection(rect, view.clip);
    if (isEmpty(inside)) return;
    for (int y = inside.top; y < inside.bottom; ++y) {
        std::fill(view.row(y) + inside.left, view.row(y) + inside.right, color);
    }
}

}  // namespace platform
