#include "langfile/foldedText.h"

#include "platform/base/casemap.h"
#include "platform/base/seed.h"

#include <cstring>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

using platform::mixed;

namespace {

constexpr std::size_t kBlock = 8;  // units folded and mixed at once

struct Block {
    std::uint64_t low = 0, high = 0;
    friend bool operator==(const Block&, const Block&) = default;
};

template <class Integer> Integer load(const char16_t* units) {
    Integer value;
    std::memcpy(&value, units, sizeof value);
    return value;
}

inline Block loadBlock(const char16_t* units) {
    return {load<std::uint64_t>(units), load<std::uint64_t>(units + 4)};
}

// Fewer than eight units, some of them twice where that saves a loop: the same for every text of
// that length, which is all that comparing and hashing ask for.
inline Block loadShort(const char16_t* units, std::size_t count) {
    if (count >= 4) return {load<std::uint64_t>(units), load<std::uint64_t>(units + count - 4)};
    if (count >= 2) return {load<std::uint32_t>(units), load<std::uint32_t>(units + count - 2)};
    return {count == 1 ? units[0] : std::uint64_t{0}, 0};
}

std::uint64_t foldUnits(std::uint64_t fourUnits) {
    std::uint64_t folded = 0;
    for (int shift = 0; shift < 64; shift += 16) {
        folded |= static_cast<std::uint64_t>(
                      platform::lowerUnit(static_cast<char16_t>(fourUnits >> shift)))
                  << shift;
    }
    return folded;
}

// Eight units in lower case.
inline Block fold(Block block) {
#if defined(__SSE2__)
    constexpr std::uint64_t kBeyondAscii = 0xFF80FF80FF80FF80ULL;
    if (((block.low | block.high) & kBeyondAscii) == 0) {
        const __m128i raw =
            _mm_set_epi64x(static_cast<long long>(block.high), static_cast<long long>(block.low));
        const __m128i upper = _mm_and_si128(_mm_cmpgt_epi16(raw, _mm_set1_epi16('A' - 1)),
                                            _mm_cmplt_epi16(raw, _mm_set1_epi16('Z' + 1)));
        const __m128i folded = _mm_or_si128(raw, _mm_and_si128(upper, _mm_set1_epi16(0x20)));
        return {static_cast<std::uint64_t>(_mm_cvtsi128_si64(folded)),
                static_cast<std::uint64_t>(_mm_cvtsi128_si64(_mm_unpackhi_epi64(folded, folded)))};
    }
#endif
    return {foldUnits(block.low), foldUnits(block.high)};
}

// What is left of a text behind its whole blocks; a long text's last block reaches back into the
// one before.
inline Block foldRest(const char16_t* units, std::size_t left, bool isLong) {
    return fold(isLong ? loadBlock(units + left - kBlock) : loadShort(units, left));
}

constexpr std::uint64_t kMixA = 0xA0761D6478BD642FULL;
constexpr std::uint64_t kMixB = 0xE7037ED1A0B428DBULL;

inline std::uint64_t mixBlock(std::uint64_t hash, const Block& block) {
    return mixed(block.low ^ hash, block.high ^ kMixA ^ hash);
}

}  // namespace

bool equalFolded(TextView a, TextView b) {
    if (a.size() != b.size()) return false;
    const char16_t* p = a.data();
    const char16_t* q = b.data();
    std::size_t left = a.size();
    for (; left >= kBlock; left -= kBlock, p += kBlock, q += kBlock) {
        if (std::memcmp(p, q, kBlock * sizeof(char16_t)) != 0 &&
            fold(loadBlock(p)) != fold(loadBlock(q))) {
            return false;
        }
    }
    const bool isLong = a.size() >= kBlock;
    return left == 0 || foldRest(p, left, isLong) == foldRest(q, left, isLong);
}

std::uint64_t hashFolded(TextView s) {
    const char16_t* p = s.data();
    std::size_t left = s.size();
    std::uint64_t hash = platform::processSeed() ^ (left * kMixB);
    for (; left >= kBlock; left -= kBlock, p += kBlock) hash = mixBlock(hash, fold(loadBlock(p)));
    if (left > 0) hash = mixBlock(hash, foldRest(p, left, s.size() >= kBlock));
    return mixed(hash ^ kMixB, kMixA);
}

std::uint64_t hashInSection(std::uint64_t sectionHash, std::uint32_t keyHash) {
    return mixed(sectionHash ^ kMixA, keyHash ^ kMixB);
}
