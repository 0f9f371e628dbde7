#include "platform/window/mask.h"
#include "platform/window/recorder.h"
#include "platform/window/surface.h"
#include "platform/window/surface_internal.h"
#include "support/window/Canvas.h"

#include <algorithm>
#include <climits>
#include <gtest/gtest.h>

namespace platform {
namespace {

using test::Canvas;
using test::Selected;

TEST(Rectangles, AreFilledAndFramedAsFarAsTheyAreVisible) {
    const struct {
        RECT rect;
        const char* filled;
        const char* framed;
    } kRects[] = {
        {{1, 0, 4, 3}, ".rrr.\n.rrr.\n.rrr.\n.....\n", ".rrr.\n.r.r.\n.rrr.\n.....\n"},
        {{1, 1, 2, 2}, ".....\n.r...\n.....\n.....\n", ".....\n.r...\n.....\n.....\n"},
        {{-2, -2, 2, 2}, "rr...\nrr...\n.....\n.....\n", ".r...\nrr...\n.....\n.....\n"},
        {{3, 2, 9, 9}, ".....\n.....\n...rr\n...rr\n", ".....\n.....\n...rr\n...r.\n"},
        {{INT_MIN, INT_MIN, INT_MAX, INT_MAX},
         "rrrrr\nrrrrr\nrrrrr\nrrrrr\n",
         ".....\n.....\n.....\n.....\n"},
        {{4, 3, 1, 1}, ".....\n.....\n.....\n.....\n", ".....\n.....\n.....\n.....\n"},
        {{INT_MAX, INT_MAX, INT_MIN, INT_MIN},
         ".....\n.....\n.....\n.....\n",
         ".....\n.....\n.....\n.....\n"},
        {{2, 0, 2, 4}, ".....\n.....\n.....\n.....\n", ".....\n.....\n.....\n.....\n"},
    };
    const HBRUSH brush = CreateSolidBrush(0x0000FF);
    for (const int bits : {0, 4, 8, 24, 32}) {
        for (const auto& c : kRects) {
            Canvas filled(5, 4, bits), framed(5, 4, bits);
            EXPECT_TRUE(FillRect(filled.hdc(), c.rect, brush));
            EXPECT_TRUE(FrameRect(framed.hdc(), c.rect, brush));
            EXPECT_EQ(filled.picture(), c.filled) << bits;
            EXPECT_EQ(framed.picture(), c.framed) << bits;
            FillRect(filled.hdc(), c.rect, GetStockObject(NULL_BRUSH));
            EXPECT_EQ(filled.picture(), c.filled) << "no brush, no change";
        }
    }
    DeleteObject(brush);
}

TEST(FillRect, StopsAtTheBitsOfItsRectangle) {
    for (const int bits : {1, Canvas::kMonochrome}) {
        for (int left = 0; left < 20; ++left) {
            for (int right = left; right <= 20; ++right) {
                Canvas canvas(20, 1, bits);
                FillRect(canvas.hdc(), {left, 0, right, 1}, GetStockObject(BLACK_BRUSH));
                std::string expected(20, '.');
                for (int x = left; x < right; ++x) expected[static_cast<std::size_t>(x)] = '#';
                EXPECT_EQ(canvas.picture(), expected + '\n');
            }
        }
    }
}

TEST(DrawFocusRect, InvertsEverySecondPixelAndIsGoneTheSecondTime) {
    for (const int bits : {0, 1, 24}) {
        Canvas canvas("......\n.####.\n......\n######\n", bits);
        const std::string before = canvas.picture();
        DrawFocusRect(canvas.hdc(), {0, 0, 6, 4});
        EXPECT_EQ(canvas.picture(), ".#.#.#\n#####.\n.....#\n.#.#.#\n");
        DrawFocusRect(canvas.hdc(), {0, 0, 6, 4});
        EXPECT_EQ(canvas.picture(), before);
        for (const RECT& rect : {RECT{3, 1, 3, 4}, {3, 3, 1, 1}, {1, 1, 2, 2}, {-9, -9, 99, 99}}) {
            DrawFocusRect(canvas.hdc(), rect);
            EXPECT_EQ(canvas.picture(), before);
        }
        DrawFocusRect(canvas.hdc(), {2, 0, 3, 4});  // one column
        EXPECT_EQ(canvas.picture(), "......\n.#.##.\n......\n##.###\n");
    }
}

TEST(GetPixel, GivesMinusOneOutside) {
    Canvas canvas("r\n");
    EXPECT_EQ(GetPixel(canvas.hdc(), 0, 0), 0x0000FF);
    for (const POINT p : {POINT{1, 0}, {0, 1}, {-1, 0}, {0, INT_MIN}, {INT_MAX, 0}}) {
        EXPECT_EQ(GetPixel(canvas.hdc(), p.x, p.y), -1);
        EXPECT_EQ(SetPixel(canvas.hdc(), p.x, p.y, 0), -1);
    }
}

// ---- Rounded rectangles

TEST(RoundRect, HasFourEqualRoundCorners) {
    const struct {
        RECT rect;
        int ellipse;
        const char* picture;
    } kShapes[] = {
        {{0, 0, 10, 8},
         8,
         "..######..\n.#yyyyyy#.\n#yyyyyyyy#\n#yyyyyyyy#\n#yyyyyyyy#\n#yyyyyyyy#\n.#yyyyyy#.\n"
         "..######..\n"},
        {{1, 1, 7, 6}, 4, ".......\n..####.\n.#yyyy#\n.#yyyy#\n.#yyyy#\n..####.\n.......\n"},
        {{0, 0, 8, 8},
         99,  // a circle
         "..####..\n.#yyyy#.\n#yyyyyy#\n#yyyyyy#\n#yyyyyy#\n#yyyyyy#\n.#yyyy#.\n..####..\n"},
        {{0, 0, 14, 4},  // so flat that the outline is two pixels wide in places
         99,
         "..##########..\n##yyyyyyyyyy##\n##yyyyyyyyyy##\n..##########..\n"},
        {{0, 0, 3, 2}, 0, "###.\n###.\n....\n"},
        {{2, 2, 3, 3}, 8, "....\n....\n..#.\n....\n"},
        {{3, 3, 1, 1}, 8, "....\n....\n....\n....\n"},
        {{-6, -4, 4, 4}, 8, "yyy#.\nyyy#.\nyy#..\n##...\n.....\n"},
        {{INT_MIN, INT_MIN, INT_MAX, 4}, INT_MAX, "yyy\nyyy\nyyy\n###\n...\n"},
    };
    for (const auto& c : kShapes) {
        const Canvas canvas = Canvas::asLargeAs(c.picture);
        const Selected brush(canvas.hdc(), CreateSolidBrush(0x00FFFF));
        EXPECT_TRUE(RoundRect(canvas.hdc(), c.rect.left, c.rect.top, c.rect.right, c.rect.bottom,
                              c.ellipse, c.ellipse));
        EXPECT_EQ(canvas.picture(), c.picture) << c.ellipse;
    }
}

TEST(RoundRect, DrawsWithEveryPen) {
    const struct {
        int style, width;
        const char* picture;
    } kPens[] = {
        {PS_NULL, 1,
         "............\n...yyyyyy...\n..yyyyyyyy..\n.yyyyyyyyyy.\n.yyyyyyyyyy.\n..yyyyyyyy..\n"
         "...yyyyyy...\n............\n"},
        {PS_DOT, 1,
         "............\n...###ggg#..\n..gyyyyyyy#.\n.gyyyyyyyyy#\n.gyyyyyyyyyg\n.#yyyyyyyyyg\n"
         "..#yyyyyyyg.\n...#ggg###..\n"},
        {PS_SOLID, 2,
         "..########..\n.##########.\n###yyyyyy###\n##yyyyyyyy##\n##yyyyyyyy##\n###yyyyyy###\n"
         ".##########.\n..########..\n"},
        {PS_SOLID, 3,
         "...#######..\n.###########\n.###########\n####yyyyy###\n###yyyyyyy##\n####yyyyy###\n"
         ".###########\n.###########\n"},
    };
    for (const auto& c : kPens) {
        Canvas canvas(12, 8);
        const Selected brush(canvas.hdc(), CreateSolidBrush(0x00FFFF));
        const Selected pen(canvas.hdc(), CreatePen(c.style, c.width, 0));
        SetBkColor(canvas.hdc(), 0x00FF00);
        RoundRect(canvas.hdc(), 1, 1, 12, 8, 8, 8);
        EXPECT_EQ(canvas.picture(), c.picture) << c.style << ' ' << c.width;
    }
}

TEST(RoundRect, APatternStaysOnTheOutlineOfTheSolidPen) {
    for (int ellipse = 0; ellipse < 14; ++ellipse) {
        for (int width = 1; width < 14; ++width) {
            for (int height = 1; height < 12; height += 2) {
                Canvas solid(16, 14), dotted(16, 14);
                RoundRect(solid.hdc(), 1, 1, 1 + width, 1 + height, ellipse, ellipse);
                const Selected pen(dotted.hdc(), CreatePen(PS_DOT, 1, 0));
                SetBkColor(dotted.hdc(), 0);
                RoundRect(dotted.hdc(), 1, 1, 1 + width, 1 + height, ellipse, ellipse);
                EXPECT_EQ(dotted.picture(), solid.picture())
                    << ellipse << ' ' << width << 'x' << height;
            }
        }
    }
}

TEST(Regions, ARoundedOneCoversAWindowWithEqualCorners) {
    const Canvas canvas(12, 7);
    const HRGN region = CreateRoundRectRgn(0, 0, 12 + 1, 7 + 1, 8, 8);
    int pixels = 0;
    for (const RECT& r : regionRects(region)) {
        FillRect(canvas.hdc(), r, GetStockObject(BLACK_BRUSH));
        pixels += (r.right - r.left) * (r.bottom - r.top);
    }
    EXPECT_EQ(canvas.picture(),
              "..########..\n.##########.\n############\n############\n############\n"
              ".##########.\n..########..\n");
    EXPECT_EQ(pixels, 12 * 7 - 4 * 3) << "no rectangle covers another";
    for (int y = -1; y <= 7; ++y) {
        for (int x = -1; x <= 12; ++x) {
            EXPECT_EQ(regionContains(region, {x, y}), GetPixel(canvas.hdc(), x, y) == 0);
        }
    }
    EXPECT_TRUE(DeleteObject(region));
    EXPECT_TRUE(regionRects(region).empty());

    const HRGN none = CreateRoundRectRgn(5, 5, 0, 0, 2, 2);
    EXPECT_NE(none, 0U);
    EXPECT_TRUE(regionRects(none).empty());
    EXPECT_TRUE(DeleteObject(none));
    EXPECT_EQ(CreateRoundRectRgn(INT_MIN, 0, INT_MAX, 9, 2, 2), 0U);
    EXPECT_EQ(CreateRoundRectRgn(0, 0, 9, 40'000, 2, 2), 0U);
}

TEST(Regions, OfAPictureHoldWhatHasAnotherColour) {
    const Canvas picture("..#..\n..##.\nr.#g.\nr.#g.\n.....\n#####\n"), white(3, 2);
    const HRGN region = createMaskRgn(picture.bitmap(), 0xFFFFFF),
               none = createMaskRgn(white.bitmap(), 0xFFFFFF);
    const RECT kRects[] = {{2, 0, 3, 1}, {2, 1, 4, 2}, {0, 2, 1, 4}, {2, 2, 4, 4}, {0, 5, 5, 6}};
    EXPECT_TRUE(std::ranges::equal(regionRects(region), kRects));
    EXPECT_TRUE(regionRects(none).empty());
    EXPECT_TRUE(DeleteObject(region));
    EXPECT_TRUE(DeleteObject(none));
    EXPECT_EQ(createMaskRgn(0, 0), 0U);
}

// ---- The recorder

TEST(DrawingRecorder, HearsDrawingCallsWithTheirColours) {
    Canvas canvas(9, 9), other(1, 1);
    const HDC hDC = canvas.hdc();
    const Selected brush(hDC, CreateSolidBrush(0x0000FF)), pen(hDC, CreatePen(PS_DOT, 1, 0x010203));
    DrawingRecorder all;
    FillRect(hDC, {0, -1, 10, 5}, brush);
    FillRect(0, {0, 0, 10, 5}, brush);
    FrameRect(hDC, {0, 0, 1, 1}, GetStockObject(NULL_BRUSH));
    {
        DrawingRecorder inner(hDC);
        SetPixel(other.hdc(), 1, 1, 0);
        MoveToEx(hDC, 1, 2);
        LineTo(hDC, 3, 4);
        (void)GetPixel(hDC, 0, 0);
        EXPECT_EQ(inner.text(), "LineTo 1,2 3,4 #030201 width 1 style 2\n");
    }
    RoundRect(hDC, 0, 0, 9, 9, 4, 4);
    DrawFocusRect(hDC, {1, 1, 2, 2});
    BitBlt(hDC, 1, 2, 3, 4, other.hdc(), 5, 6, SRCCOPY);
    StretchBlt(hDC, 1, 2, -3, 4, other.hdc(), 5, 6, 7, 8, SRCAND);
    EXPECT_EQ(all.text(), "FillRect 0,-1,10,5 #FF0000\n"
                          "FrameRect 0,0,1,1 none\n"
                          "RoundRect 0,0,9,9 4,4 #030201 width 1 style 2 brush #FF0000\n"
                          "DrawFocusRect 1,1,2,2\n"
                          "BitBlt 1,2 3x4 from 5,6 rop 0xCC0020\n"
                          "StretchBlt 1,2 -3x4 from 5,6 7x8 rop 0x8800C6\n");
    all.clear();
    EXPECT_EQ(all.text(), "");
    EXPECT_EQ(recordedText(u"a\"b\\\n\xD83D\xDE00\xD800z"), "\"a\\\"b\\\\\\u000A😀\\uD800z\"");
}

}  // namespace
}  // namespace platform
