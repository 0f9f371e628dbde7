#include "cli/Percent.h"

#include <gtest/gtest.h>

namespace cli {
namespace {

TEST(Percent, IsDigitsWithAtMostOnePoint) {
    for (const char* const text :
         {"0", "80", "99.5", ".5", "7.", "100", "250", "123456789012345678.123456789012345678"}) {
        EXPECT_TRUE(Percent::parse(text)) << text;
    }
    for (const char* const text : {"", ".", "-1", "+1", "1e2", "80%", "1.2.3", " 80", "80 ", "x",
                                   "1234567890123456789", "1.1234567890123456789"}) {
        EXPECT_FALSE(Percent::parse(text)) << text;
    }
}

TEST(Percent, ComparesWithoutRounding) {
    const struct {
        const char* percent;
        std::uint64_t part, whole;
        bool above;
    } kCases[] = {
        {"80", 4, 5, false},
        {"80.000000000000000001", 4, 5, true},
        {"33.3", 1, 3, false},
        {"33.333333333333333333", 1, 3, false},
        {"33.333333333333333334", 1, 3, true},
        {"100", 2'999'999, 3'000'000, true},
        {"100", 3'000'000, 3'000'000, false},
        {"100.1", 3, 3, true},
        {"250", 3, 3, true},
        {"999999999999999999", 3, 3, true},
        {"0", 0, 3, false},
        {"0.000001", 0, 3, true},
        {"100", 0, 0, false},
        {"250", 0, 0, false},
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(Percent::parse(c.percent)->isAbove(c.part, c.whole), c.above)
            << c.percent << " " << c.part << "/" << c.whole;
    }
}

}  // namespace
}  // namespace cli
