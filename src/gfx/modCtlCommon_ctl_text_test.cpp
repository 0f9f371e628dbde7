#include "gfx/modCtlCommon_ctl_text.h"

#include "gfx/clsFontHDC.h"
#include "gfx/clsMEMDC.h"
#include "platform/window/recorder.h"
#include "platform/window/textout.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>

namespace {

struct TextCanvas {
    TextCanvas() {
        surface.CreateDC(300, 100);
        font.SetFontToDC(hdc(), {.sFontName = u"Arial", .iFontSize = 9});
    }
    [[nodiscard]] HDC hdc() const { return surface.Hdc(); }
    clsMEMDC surface;
    clsFontHDC font;
};

TEST(TextOutput, GoesOutWideWithItsFlagsAndColour) {
    const TextCanvas canvas;
    const platform::DrawingRecorder recorder;
    TextDraw(canvas.hdc(), u"Stra\u00DFe", {1, 2, 60, 20}, 0x24);
    TextDrawColor(canvas.hdc(), u"\u4E2D", {1, 2, 60, 20}, platform::rgb(255, 0, 0), 0x824);
    TextDrawColorXY(canvas.hdc(), u"x", 3, 4, 50, 60, sysColor(2), 0);
    TextDraw(0, u"none", {1, 2, 60, 20}, 0);
    EXPECT_EQ(recorder.text(), "DrawTextW 1,2,60,20 #000000 flags 0x24 \"Stra\u00DFe\"\n"
                               "DrawTextW 1,2,60,20 #FF0000 flags 0x824 \"\u4E2D\"\n"
                               "DrawTextW 3,4,50,60 #0A246A flags 0x0 \"x\"\n");
}

TEST(TextOutput, SetsARectangleThatMeasures) {
    const TextCanvas canvas;
    const platform::DrawingRecorder recorder;
    RECT rect{10, 20, 60, 21};
    TextDraw(canvas.hdc(), u"one two three four", rect, 1104);  // wrapped, with tabs
    const SIZE size = TextSizeInRect(canvas.hdc(), u"one two three four", 10, 20, 60, 21, 64);
    EXPECT_EQ(rect, (RECT{10, 20, 10 + size.cx, 20 + size.cy}));
    EXPECT_GT(size.cy, 20);
    EXPECT_EQ(recorder.text(), "");
    TextDraw(canvas.hdc(), u"x", rect, 0);
    EXPECT_EQ(rect, (RECT{10, 20, 10 + size.cx, 20 + size.cy}));
}

TEST(TextMeasuring, TakesTheWidestLine) {
    const TextCanvas canvas;
    const auto width = [&](TextView s) { return TextSize(canvas.hdc(), s, 0).cx; };
    const struct {
        TextView text;
        std::vector<Text> lines;
    } kCases[] = {
        {u"", {u""}},
        {u"Translation", {u"Translation"}},
        {u"a\r\nTranslation\rbc", {u"a", u"Translation", u"bc"}},
        {u"Translation\r\n", {u"Translation", u""}},
        {u"ab\ncdefgh\rx", {u"ab\ncdefgh", u"x"}},  // a lone line feed is part of its line
        {u"abc\r\r\n\rx", {u"abc", u"", u"", u"x"}},
        {u"abc\n\rdefghi", {u"abc\n", u"defghi"}},
    };
    for (const auto& c : kCases) {
        int widest = 0;
        for (const Text& line : c.lines) widest = std::max(widest, width(line));
        EXPECT_EQ(TextMaxLineWidth(canvas.hdc(), c.text, 0), widest) << toUtf8(c.text);
    }
    EXPECT_GT(width(u"Translation"), width(u"Trans"));
}

TEST(TextMeasuring, WrapsAtWordsInTheWidthThatIsKept) {
    const TextCanvas canvas;
    const Text text = u"The quick brown fox jumps over the lazy dog && the cat";
    const auto wrapped = [&](TextView s, std::uint32_t flags, bool bKeepWidth, SIZE size) {
        TextSizeWrapped(canvas.hdc(), s, flags, bKeepWidth, false, size);
        return size;
    };
    for (const std::uint32_t flags : {0U, platform::DT_NOPREFIX}) {  // its own width: one line
        EXPECT_EQ(wrapped(text, flags, false, {1, 1}), TextSize(canvas.hdc(), text, flags));
    }
    const SIZE line = TextSize(canvas.hdc(), text, 0);
    const SIZE size = wrapped(text, 0, true, {line.cx / 3, 1000});
    EXPECT_LE(size.cx, line.cx / 3);
    EXPECT_GE(size.cy, 3 * line.cy);
    EXPECT_EQ(TextSizeInRect(canvas.hdc(), text, 10, 20, 10 + line.cx / 3, 21, 0), size);
    EXPECT_EQ(wrapped(u"one\r\ntwo", 0, false, {}).cy, 2 * line.cy);
}

TEST(TextMeasuring, HoldsWhatIsWiderThan32Bits) {
    clsMEMDC surface;
    surface.CreateDC(1, 1);
    clsFontHDC font;
    font.SetFontToDC(surface.Hdc(), {.sFontName = u"Arial", .iFontSize = 1536});  // 2048 pixels
    constexpr int kMax = std::numeric_limits<int>::max(), kMin = std::numeric_limits<int>::min();
    const Text huge(1'300'000, u'W');
    EXPECT_EQ(TextSize(surface.Hdc(), huge, 0).cx, kMax);
    for (const int left : {0, -1000, kMin}) {
        EXPECT_EQ(TextSizeInRect(surface.Hdc(), huge, left, 0, left, 0, 0).cx, kMax) << left;
    }
}

TEST(TextMeasuring, GivesNothingWithoutAContext) {
    SIZE size{7, 8};
    TextSizeWrapped(0, u"text", 0, true, true, size);
    EXPECT_EQ(size, SIZE());
    const HDC gone = platform::CreateCompatibleDC(0);
    platform::DeleteDC(gone);
    EXPECT_EQ(TextSize(gone, u"text", 0), SIZE());
    EXPECT_EQ(TextSizeInRect(0, u"text", 0, 0, 50, 50, 0), SIZE());
    EXPECT_EQ(TextMaxLineWidth(0, u"text", 0), 0);
}

TEST(Fonts, AreKnownByNameWhateverItsCase) {
    EXPECT_TRUE(FontExists(u"Arial"));
    EXPECT_TRUE(FontExists(u"  aRIAL "));
    EXPECT_FALSE(FontExists(u"\tArial"));
    EXPECT_FALSE(FontExists(u"Arial Unicode MS"));
    EXPECT_FALSE(FontExists(u"Ari"));
    EXPECT_FALSE(FontExists(u"  "));
}

}  // namespace
