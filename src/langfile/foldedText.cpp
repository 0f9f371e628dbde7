#include "langfile/foldedText.h"

#include "platform/base/casemap.h"
#include "platform/base/seed.h"

#include <cstring>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace {

constexpr std::size_t kBlock = 8;  // units folded and mixed at once

struct Block {
    std::uint64_t low = 0, high = 0;
    friend bool operator==(const Block&, const Block&) = default;
};

Block foldUnits(const char16_t* units, std::size_t count) {
    char16_t folded[kBlock] = {};
    for (std::size_t i = 0; i < count; ++i) folded[i] = platform::lowerUnit(units[i]);
    Block block;
    std::memcpy(&block.low, folded, 8);
    std::memcpy(&block.high, folded + 4, 8);
    return block;
}

// Eight units in lower case.
Block foldBlock(const char16_t* units) {
#if defined(__SSE2__)
    const __m128i raw = _mm_loadu_si128(reinterpret_cast<const __m128i*>(units));
    const __m128i beyondAscii = _mm_and_si128(raw, _mm_set1_epi16(static_cast<short>(0xFF80)));
    if (_mm_movemask_epi8(_mm_cmpeq_epi16(beyondAscii, _mm_setzero_si128())) == 0xFFFF) {
        const __m128i upper = _mm_and_si128(_mm_cmpgt_epi16(raw, _mm_set1_epi16('A' - 1)),
                                            _mm_cmplt_epi16(raw, _mm_set1_epi16('Z' + 1)));
        const __m128i folded = _mm_or_si128(raw, _mm_and_si128(upper, _mm_set1_epi16(0x20)));
        Block block;
        _mm_storel_epi64(reinterpret_cast<__m128i*>(&block.low), folded);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(&block.high),
                         _mm_unpackhi_epi64(folded, folded));
        return block;
    }
#endif
    return foldUnits(units, kBlock);
}

std::uint64_t mix(std::uint64_t a, std::uint64_t b) {
    __extension__ using Wide = unsigned __int128;
    const Wide product = static_cast<Wide>(a) * b;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

constexpr std::uint64_t kMixA = 0xA0761D6478BD642FULL;
constexpr std::uint64_t kMixB = 0xE7037ED1A0B428DBULL;

std::uint64_t mixBlock(std::uint64_t hash, const Block& block) {
    return mix(block.low ^ hash, block.high ^ kMixA ^ hash);
}

}  // namespace

bool equalFolded(TextView a, TextView b) {
    if (a.size() != b.size()) return false;
    const char16_t* p = a.data();
    const char16_t* q = b.data();
    std::size_t left = a.size();
    for (; left >= kBlock; left -= kBlock, p += kBlock, q += kBlock) {
        if (std::memcmp(p, q, kBlock * sizeof(char16_t)) != 0 && foldBlock(p) != foldBlock(q)) {
            return false;
        }
    }
    for (; left > 0; --left, ++p, ++q) {
        if (*p != *q && platform::lowerUnit(*p) != platform::lowerUnit(*q)) return false;
    }
    return true;
}

std::uint64_t hashFolded(TextView s) {
    const char16_t* p = s.data();
    std::size_t left = s.size();
    std::uint64_t hash = platform::processSeed() ^ (left * kMixB);
    for (; left >= kBlock; left -= kBlock, p += kBlock) hash = mixBlock(hash, foldBlock(p));
    if (left > 0) {
        // The last block of a long text overlaps the one before; a short text is padded with zeros.
        const Block last = s.size() >= kBlock ? foldBlock(p + left - kBlock) : foldUnits(p, left);
        hash = mixBlock(hash, last);
    }
    return mix(hash ^ kMixB, kMixA);
}

std::uint64_t hashInSection(std::uint64_t sectionHash, std::uint32_t keyHash) {
    return mix(sectionHash ^ kMixA, keyHash ^ kMixB);
}
