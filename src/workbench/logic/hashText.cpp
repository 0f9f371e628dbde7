#include "workbench/logic/hashText.h"

#include "platform/base/seed.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr std::uint64_t kMixA = 0x2D358DCCAA6C78A5ULL;
constexpr std::uint64_t kMixB = 0x8BB84B93962EACC9ULL;

std::uint64_t mix(std::uint64_t a, std::uint64_t b) {
    __extension__ using Wide = unsigned __int128;
    const Wide product = static_cast<Wide>(a) * b;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

}  // namespace

std::uint64_t hashText(TextView s) {
    constexpr std::size_t kBlock = 8;  // units mixed at once
    std::uint64_t hash = platform::processSeed() ^ (s.size() * kMixB);
    const auto take = [&hash](const void* units) {
        std::uint64_t halves[2];
        std::memcpy(halves, units, sizeof(halves));
        hash = mix(halves[0] ^ hash, halves[1] ^ kMixA ^ hash);
    };
    for (; s.size() >= kBlock; s.remove_prefix(kBlock)) take(s.data());
    char16_t rest[kBlock] = {};
    std::copy(s.begin(), s.end(), rest);
    take(rest);
    return mix(hash ^ kMixB, kMixA);
}
