#include "platform/window/textout.h"

#include "platform/window/recorder.h"
#include "platform/window/surface.h"
#include "support/gui/Golden.h"
#include "support/window/Canvas.h"
#include "support/window/texts.h"

#include <climits>
#include <gtest/gtest.h>
#include <sys/resource.h>

using namespace platform;
using test::fontOf;
using test::Picture;
using test::repeated;

namespace {

SIZE sizeOf(TextView text, std::uint32_t flags, RECT rect = {}, int height = -11) {
    const test::Canvas canvas(1, 1);
    const test::Selected selected(canvas.hdc(), fontOf({.height = height}));
    const int bottom = DrawTextW(canvas.hdc(), text, rect, flags | DT_CALCRECT);
    EXPECT_EQ(bottom, rect.bottom - rect.top);
    return {rect.right - rect.left, rect.bottom - rect.top};
}

constexpr SIZE kSheet{200, 60};

Picture drawn(TextView text, RECT rect, std::uint32_t flags, COLORREF color = 0, int height = -11) {
    return test::painted(kSheet, [&](HDC hDC) {
        const test::Selected selected(hDC, fontOf({.height = height}));
        SetBkMode(hDC, TRANSPARENT);
        SetTextColor(hDC, color);
        const RECT before = rect;
        DrawTextW(hDC, text, rect, flags);
        EXPECT_EQ(rect, before);
    });
}

bool samePixels(const Picture& a, const Picture& b) { return a.pixels == b.pixels; }
bool isBlank(const Picture& picture) {
    return std::all_of(picture.pixels.begin(), picture.pixels.end(),
                       [](std::uint32_t pixel) { return pixel == 0xFFFFFF; });
}

}  // namespace

TEST(DrawTextW, MeasuresTheRectangleThatHoldsTheText) {
    const int abc = sizeOf(u"abc", DT_SINGLELINE).cx, wide = sizeOf(u"wide text", DT_SINGLELINE).cx;
    EXPECT_EQ(abc, 18);
    const struct {
        TextView text;
        std::uint32_t flags;
        RECT rect;
        int height;
        SIZE size;
    } kSizes[] = {
        {u"Xg", DT_SINGLELINE, {}, -11, {13, 13}},
        {u"abc", DT_SINGLELINE, {}, -11, {abc, 13}},
        {u"abc", 0, {5, 7, 300, 9}, -11, {abc, 13}},
        {u"abc", DT_SINGLELINE | DT_VCENTER | DT_CENTER, {5, 7, 300, 90}, -11, {abc, 13}},
        {u"", DT_SINGLELINE, {5, 5, 90, 90}, -11, {0, 13}},
        {u"", 0, {5, 5, 90, 90}, -11, {0, 0}},
        {u"abc\r\n", 0, {}, -11, {abc, 13}},
        {u"abc\nwide text\nabc", 0, {}, -11, {wide, 39}},
        {u"abc\nabc", DT_EXTERNALLEADING, {}, -30, {49, 2 * (35 + 1)}},
        {u"wide text", DT_WORDBREAK, {0, 0, wide, 1}, -11, {wide, 13}},
        {u"wide text wide text", DT_WORDBREAK, {0, 0, wide, 1}, -11, {wide, 26}},
        {u"abc", DT_WORDBREAK, {0, 0, 1, 1}, -11, {abc, 13}},
        {u"abc", DT_WORDBREAK, {90, 0, 10, 0}, -11, {abc, 13}},
        {u"a", DT_EXPANDTABS, {}, -11, {6, 13}},
        {u"a\tabc", DT_EXPANDTABS, {}, -11, {48 + abc, 13}},
        {u"&a&bc", DT_SINGLELINE, {}, -11, {abc, 13}},
    };
    for (const auto& c : kSizes) {
        const SIZE size = sizeOf(c.text, c.flags, c.rect, c.height);
        EXPECT_EQ(size, c.size) << toUtf8(c.text) << ": " << size.cx << " x " << size.cy;
    }
}

TEST(DrawTextW, PlacesEachLineByTheFlags) {
    const RECT rect{10, 5, 150, 45};
    for (const TextView text : {u"abc", u"\u65E5\u672C\u8A9E", u"\u0645\u0631\u062D\u0628\u0627"}) {
        const int width = sizeOf(text, DT_SINGLELINE).cx;
        const int middle = 10 + (140 - width) / 2, right = 150 - width;
        const struct {
            std::uint32_t flags;
            int x, y, bottom;
        } kPlaces[] = {
            {0, 10, 5, 13},
            {DT_SINGLELINE, 10, 5, 13},
            {DT_SINGLELINE | DT_CENTER, middle, 5, 13},
            {DT_RIGHT, right, 5, 13},
            {DT_SINGLELINE | DT_VCENTER, 10, 18, 26},
            {DT_SINGLELINE | DT_BOTTOM | DT_RIGHT, right, 32, 40},
            {DT_BOTTOM, 10, 5, 13},  // only for a single line
            {DT_CENTER | DT_RTLREADING, middle, 5, 13},
            {DT_RTLREADING, 10, 5, 13},
        };
        for (const auto& c : kPlaces) {
            const RECT there{c.x, c.y, 200, 60};
            EXPECT_TRUE(samePixels(drawn(text, rect, c.flags), drawn(text, there, DT_SINGLELINE)))
                << toUtf8(text) << std::hex << ", flags 0x" << c.flags;
            RECT copy = rect;
            const test::Canvas canvas(1, 1);
            EXPECT_EQ(DrawTextW(canvas.hdc(), text, copy, c.flags), c.bottom)
                << std::hex << c.flags;
        }
    }
}

TEST(DrawTextW, ShowsThePartInsideTheRectangleAndTouchesNothingElse) {
    for (const TextView text :
         {u"fWj fWj fWj", u"\u65E5\u672C\u8A9E fj \u65E5", u"\u0645\u0631\u062D\u0628\u0627 fWj"}) {
        for (const std::uint32_t flags : {0U, DT_CENTER, DT_RIGHT, DT_VCENTER | DT_CENTER,
                                          DT_BOTTOM | DT_RIGHT, DT_RIGHT | DT_RTLREADING}) {
            for (const RECT& rect : {RECT{60, 20, 97, 33}, RECT{60, 20, 61, 60},
                                     RECT{61, 27, 100, 28}, RECT{60, 20, 199, 59}}) {
                const Picture part = drawn(text, rect, flags | DT_SINGLELINE, 0, -24);
                const Picture all = drawn(text, rect, flags | DT_SINGLELINE | DT_NOCLIP, 0, -24);
                for (int y = 0; y < kSheet.cy; ++y) {
                    for (int x = 0; x < kSheet.cx; ++x) {
                        const bool inside =
                            x >= rect.left && x < rect.right && y >= rect.top && y < rect.bottom;
                        const auto at = static_cast<std::size_t>(y) * kSheet.cx + x;
                        ASSERT_EQ(part.pixels[at], inside ? all.pixels[at] : 0xFFFFFFU)
                            << toUtf8(text) << " at " << x << ',' << y << ", flags " << flags;
                    }
                }
            }
        }
    }
    EXPECT_TRUE(isBlank(drawn(u"abc", {90, 20, 20, 40}, DT_SINGLELINE))) << "inside out";
    EXPECT_TRUE(isBlank(drawn(u"abc", {20, 40, 90, 20}, DT_SINGLELINE)));
    EXPECT_TRUE(isBlank(drawn(u"abc", {20, 20, 20, 40}, 0)));
}

TEST(DrawTextW, AnEditsTextLeavesOutALastLineThatIsCut) {
    const RECT rect{10, 5, 150, 5 + 3 * 13 - 1};
    EXPECT_TRUE(samePixels(drawn(u"a\nb\nc", rect, DT_EDITCONTROL), drawn(u"a\nb", rect, 0)));
    EXPECT_FALSE(samePixels(drawn(u"a\nb\nc", rect, 0), drawn(u"a\nb", rect, 0)));
    const RECT low{10, 5, 150, 10};
    EXPECT_TRUE(samePixels(drawn(u"a", low, DT_EDITCONTROL), drawn(u"a", low, 0)));
}

TEST(DrawTextW, FillsBehindTheTextInOpaqueMode) {
    const Picture opaque = test::painted(kSheet, [&](HDC hDC) {
        const test::Selected selected(hDC, fontOf({}));
        SetTextColor(hDC, 0xFFFFFF);
        SetBkColor(hDC, 0x336699);
        SetBkMode(hDC, OPAQUE);
        RECT rect{10, 5, 150, 50}, narrow{160, 5, 190, 50};
        DrawTextW(hDC, u"abc\n\u65E5\u672C\na\tb", rect, DT_EXPANDTABS);
        DrawTextW(hDC, u"a\tb", narrow, DT_EXPANDTABS);
    });
    const auto colorAt = [&](int x, int y) {
        return opaque.pixels[static_cast<std::size_t>(y) * kSheet.cx + x];
    };
    const int abc = sizeOf(u"abc", 0).cx, japanese = sizeOf(u"\u65E5\u672C", 0).cx;
    const int tabbed = sizeOf(u"a\tb", DT_EXPANDTABS).cx;
    int y = 5;
    for (const int width : {abc, japanese, tabbed}) {
        EXPECT_EQ(colorAt(10, y), 0x996633U);
        EXPECT_EQ(colorAt(10 + width - 1, y), 0x996633U);
        EXPECT_EQ(colorAt(10 + width, y), 0xFFFFFFU);
        EXPECT_EQ(colorAt(9, y), 0xFFFFFFU);
        y += 13;
    }
    EXPECT_EQ(colorAt(10 + 20, 5 + 2 * 13 + 6), 0x996633U) << "the gap of a tab";
    EXPECT_EQ(colorAt(10, y), 0xFFFFFFU);
    EXPECT_EQ(colorAt(189, 5), 0x996633U) << "the gap of a tab that ends out of sight";
    EXPECT_EQ(colorAt(190, 5), 0xFFFFFFU);
}

TEST(DrawTextW, UnderlinesTheMarkedCharacterAlsoOfTextThatIsKnownWithoutIt) {
    const RECT rect{2, 2, 200, 60};
    const Picture none = drawn(u"\u65E5\u672C", rect, 0), first = drawn(u"&\u65E5\u672C", rect, 0),
                  second = drawn(u"\u65E5&\u672C", rect, 0);
    EXPECT_FALSE(samePixels(none, first));
    EXPECT_FALSE(samePixels(none, second));
    EXPECT_FALSE(samePixels(first, second));
}

TEST(DrawTextW, MixesByCoverageAndKeepsTheColoursOfPictographs) {
    const RECT rect{2, 2, 200, 60};
    const Picture black = drawn(u"Wx", rect, 0, 0x000000), blue = drawn(u"Wx", rect, 0, 0xFF0000);
    for (std::size_t i = 0; i < black.pixels.size(); ++i) {
        // On white, blue text leaves the blue of the paper and takes the rest as black text does.
        ASSERT_EQ(blue.pixels[i], (black.pixels[i] & 0xFFFF00) | 0xFF);
    }
    const TextView face = u"\U0001F600", whiteSquare = u"\u2B1C";
    for (const TextView text : {face, whiteSquare, TextView(u"\u2764\uFE0F")}) {
        const Picture inBlack = drawn(text, rect, 0, 0x000000, -20);
        EXPECT_FALSE(isBlank(inBlack)) << toUtf8(text);
        EXPECT_TRUE(samePixels(inBlack, drawn(text, rect, 0, 0x0000FF, -20))) << toUtf8(text);
    }
}

TEST(DrawTextW, DrawsTheSameOnEveryDepthAsFarAsTheDepthGoes) {
    const auto draw = [](const test::Canvas& canvas) {
        const test::Selected selected(canvas.hdc(), fontOf({.height = -16}));
        SetBkMode(canvas.hdc(), TRANSPARENT);
        SetTextColor(canvas.hdc(), 0x3030C0);
        RECT rect{1, 1, 70, 21};
        DrawTextW(canvas.hdc(), u"Ab \u65E5 \u0645\u0631", rect, DT_SINGLELINE);
    };
    const test::Canvas best(72, 22, 32);
    draw(best);
    for (const int bits : {0, 24, 8, 4, 1, test::Canvas::kMonochrome}) {
        const test::Canvas canvas(72, 22, bits), closest(1, 1, bits);
        draw(canvas);
        for (int y = 0; y < 22; ++y) {
            for (int x = 0; x < 72; ++x) {
                const COLORREF expected = SetPixel(closest.hdc(), 0, 0, GetPixel(best.hdc(), x, y));
                ASSERT_EQ(GetPixel(canvas.hdc(), x, y), expected) << bits << ": " << x << ',' << y;
            }
        }
    }
}

TEST(DrawTextW, FillsATallSurfaceOfAnotherDepthAsOneOf32Bits) {
    const Text text =
        repeated(u"fj \u0E17\u0E35\u0E48 Z\u0351\u036B \u2502\u2588\u0F67\u0FB2\u0FB7 Wg\n", 900);
    for (int height = -11; height > -45; --height) {
        const test::Canvas best(300, 500), other(300, 500, 24);
        for (const test::Canvas* canvas : {&best, &other}) {
            const test::Selected selected(canvas->hdc(), fontOf({.height = height}));
            RECT rect{10, 5, 290, 495};
            DrawTextW(canvas->hdc(), text, rect, DT_EDITCONTROL);
        }
        for (int y = 0; y < 500; ++y) {
            for (int x = 0; x < 300; ++x) {
                ASSERT_EQ(GetPixel(other.hdc(), x, y), GetPixel(best.hdc(), x, y))
                    << height << ": " << x << ',' << y;
            }
        }
    }
}

TEST(DrawTextW, TakesLittleMemoryOnAHugeSurface) {
    BITMAPINFO info;
    info.bmiHeader.biWidth = info.bmiHeader.biHeight = 30'000;
    info.bmiHeader.biBitCount = 1;
    const RGBQUAD table[]{{0, 0, 0, 0}, {255, 255, 255, 0}};
    info.bmiColors = table;
    void* bits = nullptr;
    const HBITMAP hBitmap = CreateDIBSection(0, info, DIB_RGB_COLORS, bits);
    ASSERT_NE(hBitmap, 0U);
    const HDC hDC = CreateCompatibleDC(0);
    const HGDIOBJ hOld = SelectObject(hDC, hBitmap);
    SetTextColor(hDC, 0xFFFFFF);
    SetBkColor(hDC, 0xFFFFFF);
    RECT rect{0, 0, 30'000, 30'000};
    const auto peakOf = [] {
        rusage use{};
        getrusage(RUSAGE_SELF, &use);
        return use.ru_maxrss;  // KiB
    };
    const long before = peakOf();
    DrawTextW(hDC, u"abc", rect, DT_SINGLELINE | DT_RIGHT | DT_BOTTOM);
    DrawTextW(hDC, u"abc\nabc", rect, 0);
    EXPECT_LT(peakOf() - before, 200 << 10);
    for (const POINT at : {POINT{0, 0}, {17, 25}, {29'999, 29'999}, {29'982, 29'987}}) {
        EXPECT_EQ(GetPixel(hDC, at.x, at.y), 0xFFFFFF) << at.x << ',' << at.y;
    }
    EXPECT_EQ(GetPixel(hDC, 18, 25), 0);
    EXPECT_EQ(GetPixel(hDC, 15'000, 15'000), 0);
    SelectObject(hDC, hOld);
    DeleteDC(hDC);
    DeleteObject(hBitmap);
}

TEST(DrawTextW, LeavesTheIndexesOfPixelsThatItDoesNotCover) {
    // Two entries of one colour: what is not covered by text keeps the one that it had.
    const RGBQUAD table[]{{0, 0, 0, 0}, {255, 255, 255, 0}, {255, 255, 255, 0}};
    const test::Canvas canvas(40, 20, 8, table);
    std::uint8_t* const pixels = canvas.bits();
    std::fill(pixels, pixels + 40 * 20, std::uint8_t{2});
    SetBkMode(canvas.hdc(), TRANSPARENT);
    RECT rect{0, 0, 40, 20};
    DrawTextW(canvas.hdc(), u"ill", rect, 0);
    EXPECT_GT(std::count(pixels, pixels + 40 * 20, std::uint8_t{0}), 10);
    EXPECT_GT(std::count(pixels, pixels + 40 * 20, std::uint8_t{2}), 700);
}

TEST(DrawTextW, AMebiOfUnitsInOneLineIsDrawnWhereItIsSeen) {
    constexpr std::size_t kHuge = 1U << 20;
    const RECT rect{10, 20, 190, 40};
    for (const TextView unit : {u"abcdefg ", u"\u65E5\u672C\u8A9E\u3067", u"a\tb"}) {
        const Text huge = repeated(unit, kHuge);
        const TextView start = TextView(huge).substr(0, 500);
        const TextView end = TextView(huge).substr(huge.size() - 500 * unit.size());
        const std::uint32_t flags = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX;
        EXPECT_TRUE(samePixels(drawn(huge, rect, flags), drawn(start, rect, flags)));
        EXPECT_TRUE(
            samePixels(drawn(huge, rect, flags | DT_RIGHT), drawn(end, rect, flags | DT_RIGHT)));
        const auto times = static_cast<std::int32_t>(huge.size() / unit.size());
        EXPECT_EQ(sizeOf(huge, flags).cx, times * sizeOf(unit, flags).cx);
    }

    // Many lines of one unit, of which four are in sight.
    const Text lines = repeated(u"a\n", kHuge);
    const RECT few{0, 0, 200, 60};
    EXPECT_TRUE(samePixels(drawn(lines, few, 0), drawn(TextView(lines).substr(0, 20), few, 0)));
    EXPECT_EQ(sizeOf(lines, 0).cy, 13 << 19);
    // One word that is broken everywhere.
    const Text word(1U << 16, u'\u65E5');
    EXPECT_EQ(sizeOf(word, DT_WORDBREAK | DT_EDITCONTROL, {0, 0, 1, 1}).cy, 13 << 16);
}

TEST(DrawTextW, TakesAnyUnitsAnyRectangleAndHugeFonts) {
    Text odd;
    for (unsigned unit = 0; unit < 0x10000; unit += 7) odd += static_cast<char16_t>(unit);
    const std::int32_t far[]{INT_MIN, -1, 0, 30000, INT_MAX};
    for (const int height : {-11, -2048}) {
        const test::Canvas canvas(50, 40);
        const test::Selected selected(canvas.hdc(), fontOf({.height = height}));
        for (std::uint32_t flags = 0; flags < 1U << 11; flags += 7) {
            RECT rect{far[flags % 5], far[flags / 5 % 5], far[flags / 25 % 5], far[flags / 7 % 5]};
            DrawTextW(canvas.hdc(), TextView(odd).substr(flags * 3, 40), rect,
                      flags | (flags % 3 != 0 ? DT_RTLREADING : DT_EDITCONTROL));
        }
    }
}

TEST(DrawTextW, DoesNothingOnAnUnknownContextAndTellsTheRecorderOfDrawingOnly) {
    RECT rect{1, 2, 30, 40};
    EXPECT_EQ(DrawTextW(0, u"abc", rect, DT_CALCRECT), 0);
    const HDC stale = CreateCompatibleDC(0);
    DeleteDC(stale);
    EXPECT_EQ(DrawTextW(stale, u"abc", rect, DT_CALCRECT), 0);
    EXPECT_EQ(rect, (RECT{1, 2, 30, 40}));

    const test::Canvas canvas(40, 40);
    SetTextColor(canvas.hdc(), 0x332211);
    const DrawingRecorder recorder;
    DrawTextW(canvas.hdc(), u"a \"b\"", rect, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
    DrawTextW(canvas.hdc(), u"abc", rect, DT_CALCRECT);
    EXPECT_EQ(recorder.text(), "DrawTextW 1,2,30,40 #112233 flags 0x824 \"a \\\"b\\\"\"\n");
}
