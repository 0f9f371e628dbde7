#include "workbench/logic/hashText.h"

#include "platform/base/seed.h"

#include <algorithm>
#include <cstring>

using platform::mixed;

namespace {

constexpr std::uint64_t kMixA = 0x2D358DCCAA6C78A5ULL;
constexpr std::uint64_t kMixB = 0x8BB84B93962EACC9ULL;

}  // namespace

std::uint64_t hashText(TextView s) {
    constexpr std::size_t kBlock = 8;  // units mixed at once
    std::uint64_t hash = platform::processSeed() ^ (s.size() * kMixB);
    const auto take = [&hash](const char16_t* units) {
        std::uint64_t halves[2];
        std::memcpy(halves, units, sizeof(halves));
        hash = mixed(halves[0] ^ hash, halves[1] ^ kMixA ^ hash);
    };
    if (s.size() < kBlock) {
        char16_t padded[kBlock] = {};
        std::copy(s.begin(), s.end(), padded);
        take(padded);
    } else {
        // The last block may reach back into the one before.
        const char16_t* const last = s.data() + s.size() - kBlock;
        for (const char16_t* at = s.data(); at < last; at += kBlock) take(at);
        take(last);
    }
    return mixed(hash ^ kMixB, kMixA);
}

std::uint64_t hashEnds(TextView s) {
    constexpr std::size_t kEnd = 4;
    std::uint64_t ends[2] = {};
    if (s.size() < kEnd) {
        std::memcpy(ends, s.data() == nullptr ? u"" : s.data(), s.size() * sizeof(char16_t));
    } else {
        std::memcpy(&ends[0], s.data(), sizeof(ends[0]));
        std::memcpy(&ends[1], s.data() + s.size() - kEnd, sizeof(ends[1]));
    }
    return mixed(ends[0] ^ platform::processSeed(), ends[1] ^ kMixA ^ s.size() * kMixB);
}
