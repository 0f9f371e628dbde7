// langfile/scanText.h: finding a few units in a long text, sixteen units at a step.
#pragma once
#include "platform/base/text.h"

#include <bit>
#include <cstring>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

// Calls visit(position) for each unit of text that is a or b, in order, until visit gives false.
template <class Visit> void forEachUnit(TextView text, char16_t a, char16_t b, Visit visit) {
    std::size_t at = 0;
#if defined(__SSE2__)
    const __m128i wantA = _mm_set1_epi16(static_cast<short>(a));
    const __m128i wantB = _mm_set1_epi16(static_cast<short>(b));
    const auto hits = [&](std::size_t from) {
        const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + from));
        return _mm_or_si128(_mm_cmpeq_epi16(units, wantA), _mm_cmpeq_epi16(units, wantB));
    };
    for (; at + 16 <= text.size(); at += 16) {
        auto mask =
            static_cast<unsigned>(_mm_movemask_epi8(_mm_packs_epi16(hits(at), hits(at + 8))));
        for (; mask != 0; mask &= mask - 1) {
            if (!visit(at + static_cast<unsigned>(std::countr_zero(mask)))) return;
        }
    }
#endif
    for (; at < text.size(); ++at) {
        if ((text[at] == a || text[at] == b) && !visit(at)) return;
    }
}

// Whether a unit of text may be this ASCII one: a look at the bytes alone, which is quick and wrong
// only for texts of other scripts.
[[nodiscard]] inline bool mayHold(TextView text, char ascii) {
    return !text.empty() &&
           std::memchr(text.data(), ascii, text.size() * sizeof(char16_t)) != nullptr;
}

// As text.find(unit).
[[nodiscard]] inline std::size_t firstUnit(TextView text, char16_t unit) {
    std::size_t found = TextView::npos;
    forEachUnit(text, unit, unit, [&](std::size_t at) {
        found = at;
        return false;
    });
    return found;
}

// Whether `part`, which is not empty, occurs in text: quick where its first unit is rare.
[[nodiscard]] inline bool containsText(TextView text, TextView part) {
    bool found = false;
    forEachUnit(text, part.front(), part.front(), [&](std::size_t at) {
        found = text.substr(at, part.size()) == part;
        return !found;
    });
    return found;
}
