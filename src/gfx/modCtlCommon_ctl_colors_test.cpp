#include "gfx/modCtlCommon_ctl_colors.h"

#include "gfx/rounding.h"
#include "platform/window/surface.h"

#include <gtest/gtest.h>

namespace {

using platform::rgb;

TEST(Rounding, TakesHalvesToTheEvenNumber) {
    EXPECT_EQ(gfx::roundHalfEven(0.5F), 0);
    EXPECT_EQ(gfx::roundHalfEven(1.5F), 2);
    EXPECT_EQ(gfx::roundHalfEven(254.5F), 254);
    EXPECT_EQ(gfx::roundHalfEven(-1.5F), -2);
    EXPECT_EQ(gfx::roundHalfEven(2.5), 2);
    EXPECT_EQ(gfx::roundHalfEven(-0.4), 0);
    EXPECT_EQ(gfx::roundHalfEven(2147483646.5), 2147483646);
    const std::int64_t kHalves[] = {-2, -2, -1, 0, 0, 0, 1, 2, 2};  // of -4 to 4
    for (std::int64_t i = -4; i <= 4; ++i) EXPECT_EQ(gfx::roundedHalf(i), kHalves[i + 4]) << i;
    EXPECT_EQ(gfx::roundedQuotient(5, 2), 2);
    EXPECT_EQ(gfx::roundedQuotient(7, 2), 4);
    EXPECT_EQ(gfx::roundedQuotient(8, 3), 3);
    EXPECT_EQ(gfx::roundedQuotient(0, 7), 0);
}

TEST(Colors, ResolvesColoursOfTheDesktop) {
    EXPECT_EQ(TranslateColor(0x123456), 0x123456);
    EXPECT_EQ(TranslateColor(sysColor(5)), platform::GetSysColor(5));
    EXPECT_EQ(TranslateColor(sysColor(13) | 0x7F00), platform::GetSysColor(13));
    EXPECT_EQ(ColorToRGB(0x123456), (RedGreenBlue{0x56, 0x34, 0x12}));
    EXPECT_EQ(ColorToRGB(sysColor(2)), (RedGreenBlue{10, 36, 106}));
}

TEST(Colors, BrightensEachChannelWithinItsRange) {
    const struct {
        Color from;
        std::int16_t delta;
        Color to;
    } kCases[] = {
        {rgb(255, 255, 255), 34, rgb(255, 255, 255)}, {0, -34, 0},
        {rgb(10, 100, 250), 20, rgb(30, 120, 255)},   {rgb(10, 100, 250), -20, rgb(0, 80, 230)},
        {rgb(1, 2, 3), 32767, rgb(255, 255, 255)},    {rgb(1, 2, 3), -32768, 0},
        {sysColor(2), 1, rgb(11, 37, 107)},
    };
    for (const auto& c : kCases) EXPECT_EQ(ColorBrighten(c.from, c.delta), c.to) << c.from;
    EXPECT_EQ(ClampByte(-1), 0);
    EXPECT_EQ(ClampByte(256), 255);
    EXPECT_EQ(ClampByte(77), 77);
}

TEST(Colors, BlendsByPercent) {
    const Color a = rgb(0, 1, 3), b = rgb(255, 0, 0);
    const struct {
        int percent;
        Color result;
    } kCases[] = {
        {-5, a},
        {0, a},
        {100, b},
        {150, b},
        {50, rgb(128, 0, 2)},  // 127.5, 0.5 and 1.5
        {30, rgb(76, 1, 2)},   // 76.5, which single precision lets stand
    };
    for (const auto& c : kCases) EXPECT_EQ(ColorBlend(a, b, c.percent), c.result) << c.percent;
    EXPECT_EQ(ColorBlend(sysColor(5), sysColor(6), 50), rgb(128, 128, 128));
}

TEST(Colors, MeasuresAndShiftsLuminance) {
    EXPECT_EQ(ColorLuminance(rgb(255, 255, 255)), 255);
    EXPECT_EQ(ColorLuminance(0), 0);
    EXPECT_EQ(ColorLuminance(rgb(255, 0, 0)), 76);  // 76.5
    EXPECT_EQ(ColorLuminance(rgb(0, 255, 0)), 150);
    EXPECT_EQ(ColorLuminance(rgb(0, 0, 255)), 28);
    EXPECT_EQ(ColorToLuminance(rgb(100, 100, 100), 204), rgb(204, 204, 204));
    EXPECT_EQ(ColorToLuminance(rgb(255, 0, 0), 26), rgb(205, 0, 0));
    EXPECT_EQ(ColorToLuminance(0, 2'000'000'000), rgb(255, 255, 255));
    EXPECT_EQ(ColorToLuminance(rgb(9, 9, 9), -2'000'000'000), 0);
}

TEST(Colors, ChoosesABorderThatShowsOnItsBase) {
    const struct {
        Color wanted, base, border;
    } kCases[] = {
        {rgb(1, 2, 3), 0, rgb(1, 2, 3)},
        {sysColor(6), 0, sysColor(6)},
        {kAutoColor, rgb(60, 80, 200), rgb(0, 12, 132)},
        {kAutoColor, rgb(208, 208, 208), rgb(140, 140, 140)},
        {kAutoColor, rgb(255, 255, 255), rgb(140, 140, 140)},  // first down to 208
        {kAutoColor, rgb(255, 255, 0), rgb(168, 168, 0)},      // luminance 227
    };
    for (const auto& c : kCases) EXPECT_EQ(AutoBorderColor(c.wanted, c.base), c.border) << c.base;
}

}  // namespace
