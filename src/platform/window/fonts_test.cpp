#include "platform/window/fonts.h"

#include "platform/window/handles.h"
#include "platform/window/surface.h"
#include "platform/window/text_face.h"
#include "platform/window/textout.h"
#include "support/window/Canvas.h"
#include "support/window/texts.h"

#include <QFont>
#include <algorithm>
#include <climits>
#include <gtest/gtest.h>

using namespace platform;
using test::fontOf;
using test::FontStyle;

namespace {

TEXTMETRICA metricsOf(HFONT hFont) {
    const test::Canvas canvas(1, 1);
    const test::Selected selected(canvas.hdc(), hFont);
    TEXTMETRICA metrics;
    EXPECT_TRUE(GetTextMetricsA(canvas.hdc(), metrics));
    return metrics;
}

int widthOf(TextView text, const FontStyle& style) {
    const test::Canvas canvas(1, 1);
    const test::Selected selected(canvas.hdc(), fontOf(style));
    RECT rect;
    DrawTextW(canvas.hdc(), text, rect, DT_CALCRECT | DT_SINGLELINE);
    return rect.right;
}

}  // namespace

TEST(Fonts, LinesOfTheUsualFontAreThirteenPixelsHigh) {
    // 8.25 points at 96 dots per inch: a row of a grid is 6 more. The stock font is the same.
    for (const HFONT hFont : {fontOf({}), GetStockObject(SYSTEM_FONT)}) {
        const TEXTMETRICA metrics = metricsOf(hFont);
        EXPECT_EQ(metrics.tmHeight, 13);
        EXPECT_EQ(metrics.tmAscent, 10);
        EXPECT_EQ(metrics.tmDescent, 3);
        EXPECT_EQ(metrics.tmInternalLeading, 2);
        EXPECT_EQ(metrics.tmExternalLeading, 0);
        EXPECT_EQ(metrics.tmAveCharWidth, 6);
        EXPECT_GE(metrics.tmMaxCharWidth, metrics.tmAveCharWidth);
        EXPECT_EQ(metrics.tmWeight, 400);
    }
}

TEST(Fonts, HeightIsTheEmBelowZeroAndTheLineAboveZero) {
    const struct {
        int height, em, line;  // line 0: not told
    } kHeights[] = {
        {-11, 11, 13}, {-16, 16, 19}, {13, 11, 13},       {19, 16, 19},       {20, 17, 20},
        {0, 16, 19},   {1, 1, 0},     {INT_MIN, 2048, 0}, {INT_MAX, 2048, 0}, {-1, 1, 0},
    };
    for (const auto& c : kHeights) {
        const TEXTMETRICA metrics = metricsOf(fontOf({.height = c.height}));
        EXPECT_EQ(metrics.tmHeight - metrics.tmInternalLeading, c.em) << c.height;
        if (c.line != 0) {
            EXPECT_EQ(metrics.tmHeight, c.line) << c.height;
        }
    }
}

TEST(Fonts, WidthStretchesTheCharactersToThatAverage) {
    const TextView text = u"the quick brown fox";
    const int natural = metricsOf(fontOf({-16})).tmAveCharWidth, whole = widthOf(text, {-16});
    EXPECT_EQ(metricsOf(fontOf({-16, -natural - 1})).tmAveCharWidth, natural + 1);
    for (const int width : {natural - 3, natural - 1, natural + 1, natural + 5, 2 * natural}) {
        const TEXTMETRICA metrics = metricsOf(fontOf({-16, width}));
        EXPECT_EQ(metrics.tmAveCharWidth, width);
        EXPECT_EQ(metrics.tmHeight, 19);
        const int expected = whole * width / natural;
        EXPECT_NEAR(widthOf(text, {-16, width}), expected, expected * 0.1) << width;
    }
    for (const FontStyle& style :
         {FontStyle{-11, INT_MIN}, FontStyle{-2048, INT_MAX}, FontStyle{-1, INT_MAX}}) {
        EXPECT_GT(metricsOf(fontOf(style)).tmAveCharWidth, 0);
    }
}

TEST(Fonts, FacesThatAreNotThereAreTheProgramsOwn) {
    const auto widthIn = [](TextView name, int weight) {
        return widthOf(u"Quick wide fonts", {.height = -16, .weight = weight, .face = name});
    };
    const int own = widthIn(u"Liberation Sans", 0);
    constexpr TextView kNames[] = {u"MS Sans Serif",   u"tahoma",       u" ARIAL ",
                                   u"MS Shell Dlg",    u"No Such Face", u"",
                                   u"Liberation Sans", u"\xD800",       {u"Noto\0Sans Thai", 14}};
    for (const TextView name : kNames) {
        EXPECT_EQ(widthIn(name, 0), own) << toUtf8(name);
        EXPECT_EQ(widthIn(name, FW_NORMAL), own) << toUtf8(name);
        EXPECT_GT(widthIn(name, FW_BOLD), own) << toUtf8(name);
    }
    // A face of the system that lacks Latin letters takes them from another.
    EXPECT_EQ(metricsOf(fontOf({.height = -16, .face = u"Noto Sans Thai"})).tmHeight, 25);
}

TEST(Fonts, KnowsTheNamesOfAllFaces) {
    const std::vector<Text> names = fontFamilies();
    EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
    EXPECT_EQ(std::adjacent_find(names.begin(), names.end()), names.end());
    for (const TextView name :
         {u"MS Sans Serif", u"Tahoma", u"Arial", u"Liberation Sans", u"Noto Sans Thai"}) {
        EXPECT_TRUE(std::binary_search(names.begin(), names.end(), name)) << toUtf8(name);
    }
    EXPECT_FALSE(std::binary_search(names.begin(), names.end(), TextView(u"Arial Unicode MS")));
}

TEST(Fonts, ARecordMakesTheSameFont) {
    LOGFONTA record;
    record.lfHeight = -16;
    record.lfWeight = FW_BOLD;
    record.lfItalic = 1;
    record.lfUnderline = 1;
    std::copy_n("Tahoma", 7, record.lfFaceName);
    const TEXTMETRICA metrics = metricsOf(CreateFontIndirectA(record));
    EXPECT_EQ(metrics.tmHeight, 19);
    EXPECT_EQ(metrics.tmWeight, FW_BOLD);
    EXPECT_EQ(metrics.tmItalic, 1);
    EXPECT_EQ(metrics.tmUnderlined, 1);
    EXPECT_EQ(metrics.tmStruckOut, 0);
    std::fill(std::begin(record.lfFaceName), std::end(record.lfFaceName), 'x');  // no end
    EXPECT_EQ(metricsOf(CreateFontIndirectA(record)).tmHeight, 19);
    EXPECT_EQ(faceNameOf(record), Text(32, u'x'));
}

TEST(Fonts, ThatWishTheSameShareOneFaceAndFewAreKept) {
    const FaceWish wish{u"Tahoma", -13};
    const std::uint32_t id = faceFor(wish)->id;
    DeleteObject(fontOf({.height = -13, .face = u"Tahoma"}));
    DeleteObject(fontOf({.height = -13, .weight = FW_NORMAL, .face = u"TAHOMA "}));
    EXPECT_EQ(faceFor(wish)->id, id) << "also after the fonts are gone";

    const std::weak_ptr<Face> watched = faceFor(wish);
    const HFONT hFont = fontOf({.height = -13, .face = u"Tahoma"});
    for (int em = 100; em < 100 + static_cast<int>(kKeptFaces); ++em)
        (void)faceFor({u"Tahoma", -em});
    EXPECT_FALSE(watched.expired()) << "a font has it";
    DeleteObject(hFont);
    EXPECT_TRUE(watched.expired());
}

TEST(Fonts, GiveTheToolkitsWidgetsTheSameLetters) {
    const HFONT hFont = fontOf({-16, 0, FW_BOLD, true, true, true, u"Tahoma"});
    const QFont font = toolkitFontOf(hFont);
    EXPECT_EQ(font.pixelSize(), 16);
    EXPECT_EQ(font.weight(), QFont::Bold);
    EXPECT_TRUE(font.italic() && font.underline() && font.strikeOut());
    DeleteObject(hFont);
    EXPECT_EQ(toolkitFontOf(hFont), toolkitFontOf(0)) << "the stock font";
    EXPECT_EQ(toolkitFontOf(0).pixelSize(), 11);
}

TEST(Fonts, AnswerNothingForUnknownContexts) {
    TEXTMETRICA metrics;
    metrics.tmHeight = 77;
    EXPECT_FALSE(GetTextMetricsA(0, metrics));
    EXPECT_EQ(metrics.tmHeight, 77);
}
