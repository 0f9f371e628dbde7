#include "gfx/clsFontHDC.h"

#include "gfx/clsMEMDC.h"
#include "platform/window/fonts.h"
#include "platform/window/handles.h"
#include "platform/window/surface.h"
#include "platform/window/testhooks.h"
#include "support/raised.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace {

struct FontSurface {
    FontSurface() { surface.CreateDC(10, 10); }
    [[nodiscard]] HDC hdc() const { return surface.Hdc(); }
    [[nodiscard]] platform::TEXTMETRICA metrics() const {
        platform::TEXTMETRICA metrics;
        platform::GetTextMetricsA(hdc(), metrics);
        return metrics;
    }
    [[nodiscard]] int emHeight() const { return metrics().tmHeight - metrics().tmInternalLeading; }
    [[nodiscard]] platform::HGDIOBJ selected() const {
        return platform::GetCurrentObject(hdc(), platform::OBJ_FONT);
    }
    clsMEMDC surface;
};

TEST(clsFontHDC, SelectsAFontForAsLongAsItLives) {
    const FontSurface target;
    const auto stock = target.selected();
    {
        clsFontHDC font;
        font.SetFontToDC(target.hdc(), {.sFontName = u"Arial",
                                        .iFontSize = 12,
                                        .lForeColor = sysColor(2),
                                        .bFontBold = true,
                                        .bFontItalic = true,
                                        .bFontUnderline = true,
                                        .bFontStrikeout = true});
        EXPECT_EQ(target.selected(), font.hFont());
        const auto metrics = target.metrics();
        EXPECT_EQ(target.emHeight(), 16);  // 12 points at 96 dpi
        EXPECT_EQ(metrics.tmWeight, 700);
        EXPECT_TRUE(metrics.tmItalic && metrics.tmUnderlined && metrics.tmStruckOut);
        EXPECT_EQ(platform::GetTextColor(target.hdc()), platform::GetSysColor(2));

        font.SetFontToDC(target.hdc(), {.sFontName = u"Arial", .iFontSize = 12});
        EXPECT_EQ(target.metrics().tmWeight, 400);
        EXPECT_EQ(platform::GetTextColor(target.hdc()), platform::GetSysColor(2));
        EXPECT_EQ(platform::handleCount(platform::HandleKind::Font), 1);
    }
    EXPECT_EQ(target.selected(), stock);
    EXPECT_EQ(platform::handleCount(platform::HandleKind::Font), 0);
}

TEST(clsFontHDC, GoesFromContextToContextAndOutlivesThem) {
    clsFontHDC font;
    {
        const FontSurface first, second;
        const auto stock = first.selected();
        font.SetFontToDC(first.hdc(), {.sFontName = u"Arial"});
        font.SetFontToDC(second.hdc(), {.sFontName = u"Arial"});
        EXPECT_EQ(first.selected(), stock);
        EXPECT_EQ(second.selected(), font.hFont());
        font.Destroy();
        EXPECT_EQ(second.selected(), stock);
        EXPECT_EQ(font.hFont(), 0U);
        font.SetFontToDC(first.hdc(), {.sFontName = u"Arial"});
    }
    font.Destroy();
    EXPECT_EQ(platform::liveHandles(), "");
}

TEST(clsFontHDC, LeavesNothingBehindInWhateverOrderFontsGo) {
    const FontSurface target;
    const auto stock = target.selected();
    int order[] = {0, 1, 2};
    do {
        clsFontHDC fonts[3];
        for (clsFontHDC& font : fonts) font.SetFontToDC(target.hdc(), {.sFontName = u"Arial"});
        for (const int i : order) {
            fonts[i].Destroy();
            fonts[i].Destroy();
        }
        EXPECT_EQ(platform::handleCount(platform::HandleKind::Font), 0);
        EXPECT_EQ(target.selected(), stock);
    } while (std::next_permutation(std::begin(order), std::end(order)));
}

TEST(clsFontHDC, WidensAndNarrowsByPixelsOfAverageWidth) {
    const FontSurface target;
    clsFontHDC font;
    const auto width = [&](int increment) {
        font.SetFontToDC(target.hdc(), {.sFontName = u"Arial", .iCharWeightInc = increment});
        return target.metrics().tmAveCharWidth;
    };
    const int plain = width(0);
    EXPECT_EQ(width(3), plain + 3);
    EXPECT_EQ(width(-2), plain - 2);
    EXPECT_EQ(width(-1000), 1);
    EXPECT_EQ(platform::handleCount(platform::HandleKind::Font), 1);
}

TEST(clsFontHDC, AsksForTheResolutionOncePerContext) {
    const platform::test::WindowHookScope scope;
    const auto setDpi = [](int dpi) {
        platform::test::Screen screen;
        screen.dpi = dpi;
        platform::test::setScreens({screen});
    };
    const FontSurface target, other;
    clsFontHDC font;
    const auto height = [&](const FontSurface& surface, int points, bool bForce96DPI) {
        font.SetFontToDC(surface.hdc(),
                         {.sFontName = u"Arial", .iFontSize = points, .bForce96DPI = bForce96DPI});
        return surface.emHeight();
    };
    setDpi(192);
    EXPECT_EQ(height(target, 12, false), 32);
    setDpi(96);
    EXPECT_EQ(height(target, 12, false), 32);
    EXPECT_EQ(height(target, 24, false), 64);  // still at 192
    EXPECT_EQ(height(other, 24, false), 32);   // another context asks
    setDpi(144);
    EXPECT_EQ(height(other, 24, true), 32);
    EXPECT_EQ(height(other, 12, true), 16);
    EXPECT_EQ(height(other, 12, false), 16);  // asked anew, but the height follows the size alone
    EXPECT_EQ(height(other, 24, false), 48);
    font.Destroy();
    setDpi(96);
    EXPECT_EQ(height(other, 24, false), 32);
}

TEST(clsFontHDC, RaisesWithoutAContext) {
    clsFontHDC font;
    EXPECT_EQ(test::raised([&] { font.SetFontToDC(0, {.sFontName = u"Arial"}); }),
              "clsFontHDC.SetFontToDC: Cannot use this DC!");
    const HDC gone = platform::CreateCompatibleDC(0);
    platform::DeleteDC(gone);
    font.SetFontToDC(gone, {.sFontName = u"Arial"});  // holds no font
    EXPECT_EQ(platform::handleCount(platform::HandleKind::Font), 1);
}

TEST(clsFontHDC, RoundsTheHostsSizeToWholePoints) {
    const FontSurface target;
    clsFontHDC font;
    const struct {
        double size;
        int pixels;
    } kCases[] = {{8.25, 11}, {8.5, 11}, {9.5, 13}, {9.0, 12}, {1e9, 2048}, {std::nan(""), 16}};
    for (const auto& c : kCases) {
        font.SetFontToDCStdFont(target.hdc(), {.Name = u"Arial", .Size = c.size, .Bold = true});
        EXPECT_EQ(target.emHeight(), c.pixels) << c.size;
        EXPECT_EQ(target.metrics().tmWeight, 700);
    }
}

}  // namespace
