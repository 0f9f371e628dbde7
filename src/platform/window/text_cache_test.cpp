#include "platform/window/text_cache.h"

#include <gtest/gtest.h>
#include <map>
#include <random>

using platform::TextCache;

namespace {

Text textOf(unsigned number) {
    const std::string digits = std::to_string(number);
    return {digits.begin(), digits.end()};
}

}  // namespace

TEST(TextCache, NeverGivesAValueOfAnotherTextAndStaysInItsLimits) {
    constexpr std::uint32_t kEntries = 64;
    constexpr std::size_t kBytes = 12000;
    TextCache<unsigned> cache(kEntries, kBytes);
    std::mt19937 random(1);
    std::size_t found = 0, most = 0;
    for (unsigned i = 0; i < 20000; ++i) {
        const unsigned number = random() % 300, face = random() % 2, variant = random() % 2;
        const unsigned value = number * 4 + face * 2 + variant;
        if (const unsigned* known = cache.find(face, variant, textOf(number))) {
            EXPECT_EQ(*known, value);
            ++found;
        } else {
            EXPECT_EQ(cache.insert(face, variant, textOf(number), value, number), value);
        }
        ASSERT_LE(cache.size(), kEntries);
        ASSERT_LE(cache.bytes(), kBytes);
        most = std::max(most, cache.size());
    }
    EXPECT_GT(found, 0U);
    EXPECT_GT(most, kEntries / 2) << "the limits are made use of";
    cache.clear();
    EXPECT_EQ(cache.size(), 0U);
    EXPECT_EQ(cache.bytes(), 0U);
    EXPECT_EQ(cache.find(0, 0, textOf(1)), nullptr);
}

TEST(TextCache, KeepsWhatIsNewAndWhatIsAskedForAgain) {
    TextCache<unsigned> cache(16, 1U << 20);
    int lost = 0;
    for (unsigned i = 0; i < 1000; ++i) {
        if (cache.find(0, 0, u"wanted") == nullptr) {
            cache.insert(0, 0, u"wanted", 7, 0);
            ++lost;
        }
        cache.insert(0, 0, textOf(i), i, 0);
        if (i % 13 != 12) continue;
        for (unsigned last = i - 12; last <= i; ++last) {
            ASSERT_NE(cache.find(0, 0, textOf(last)), nullptr) << last << " after " << i;
        }
    }
    EXPECT_LT(lost, 100) << "of 1000; among others that are asked for as well";
    EXPECT_EQ(cache.size(), 16U);
}
