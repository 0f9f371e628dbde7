#include "gfx/modCtlCommon_ctl_shapes.h"

#include "gfx/modCtlCommon_ctl_colors.h"
#include "gfx/modCtlCommon_ctl_faces.h"
#include "platform/window/recorder.h"
#include "support/gui/Golden.h"
#include "support/window/Canvas.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

using platform::rgb;
using test::Canvas;
constexpr Color kRed = rgb(255, 0, 0);
constexpr int kMax = std::numeric_limits<int>::max(), kMin = std::numeric_limits<int>::min();

// The colours of one row or column, each as its red channel, with the others checked to be equal.
std::string greys(HDC hDC, POINT at, POINT step, int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        const Color color = platform::GetPixel(hDC, at.x + i * step.x, at.y + i * step.y);
        const int level = platform::redOf(color);
        text +=
            (i > 0 ? " " : "") + (color == rgb(level, level, level) ? std::to_string(level) : "?");
    }
    return text;
}

TEST(Gradients, BeginWithTheFirstColourAndEndOneStepShortOfTheSecond) {
    const struct {
        int n;
        Color from, to;
        std::string rows;
    } kCases[] = {
        {0, 0, rgb(255, 255, 255), "255 255"},  // the surface as it was
        {-3, 0, 0, "255 255"},
        {1, rgb(9, 9, 9), 0, "9 255"},
        {4, rgb(255, 255, 255), 0, "255 191 128 64 255"},
        {3, 0, rgb(255, 255, 255), "0 85 170 255"},
        {5, rgb(10, 10, 10), rgb(11, 11, 11), "10 10 10 11 11 255"},
        {6, rgb(7, 7, 7), rgb(7, 7, 7), "7 7 7 7 7 7 255"},
    };
    for (const auto& c : kCases) {
        const int count = static_cast<int>(std::ranges::count(c.rows, ' ')) + 1;
        const Canvas down(3, 8), across(8, 3);
        GradientV(down.hdc(), 0, 0, 3, c.n, c.from, c.to);
        EXPECT_EQ(greys(down.hdc(), {1, 0}, {0, 1}, count), c.rows) << c.n;
        GradientHRect(across.hdc(), {0, 0, c.n, 3}, c.from, c.to);
        EXPECT_EQ(greys(across.hdc(), {0, 1}, {1, 0}, count), c.rows) << c.n;
    }
}

// One line a row, each with a pen of its own.
void plainGradient(HDC hDC, bool vertical, const RECT& r, Color from, Color to) {
    const RedGreenBlue c1 = ColorToRGB(from), c2 = ColorToRGB(to);
    const int n = vertical ? r.bottom - r.top : r.right - r.left;
    if (n < 1) return;
    const float step = 1.0F / static_cast<float>(n);
    float f = 1.0F;
    for (int i = 0; i < n; ++i) {
        const auto mixed = [f](int a, int b) {
            const float first = static_cast<float>(a) * f;
            const float rest = 1.0F - f;
            const float second = static_cast<float>(b) * rest;
            const float sum = first + second;
            return static_cast<int>(std::nearbyint(sum));
        };
        const Color color =
            rgb(mixed(c1.red, c2.red), mixed(c1.green, c2.green), mixed(c1.blue, c2.blue));
        const POINT begin = vertical ? POINT{r.left, r.top + i} : POINT{r.left + i, r.top};
        const POINT end = vertical ? POINT{r.right, begin.y} : POINT{begin.x, r.bottom};
        if (begin == end) {
            platform::SetPixel(hDC, begin.x, begin.y, color);
        } else {
            const test::Selected pen(hDC, platform::CreatePen(platform::PS_SOLID, 1, color));
            platform::MoveToEx(hDC, begin.x, begin.y);
            platform::LineTo(hDC, end.x, end.y);
        }
        f = std::max(f - step, 0.0F);
    }
}

TEST(Gradients, HaveThePixelsOfOneLineARow) {
    std::mt19937 random(7);
    const auto between = [&random](int low, int high) {
        return low + static_cast<int>(random() % static_cast<unsigned>(high - low + 1));
    };
    for (int i = 0; i < 300; ++i) {
        const int bits = i % 3 == 0 ? 8 : 0;
        const Canvas expected(40, 30, bits), actual(40, 30, bits);
        const RECT r{between(-10, 45), between(-60, 32), between(-10, 45), between(-10, 700)};
        const Color from = between(0, 0xFFFFFF), to = between(0, 0xFFFFFF);
        const bool vertical = i % 2 == 0;
        plainGradient(expected.hdc(), vertical, r, from, to);
        if (vertical) {
            GradientVRect(actual.hdc(), r, from, to);
        } else {
            GradientH(actual.hdc(), r.left, r.top, r.right, r.bottom, from, to);
        }
        for (int y = 0; y < 30; ++y) {
            for (int x = 0; x < 40; ++x) {
                ASSERT_EQ(platform::GetPixel(actual.hdc(), x, y),
                          platform::GetPixel(expected.hdc(), x, y))
                    << "gradient " << i << " at " << x << ", " << y;
            }
        }
    }
}

TEST(Gradients, OfAnyLengthCostNoMoreThanWhatIsSeen) {
    const Canvas canvas(2, 2);
    GradientV(canvas.hdc(), kMin, kMin, kMax, kMax, 0, rgb(255, 0, 0));
    EXPECT_EQ(canvas.picture(), "##\n##\n");  // a step that single precision doesn't feel
    GradientV(canvas.hdc(), kMin, -20'000'000, kMax, 5, 0, rgb(255, 0, 0));
    EXPECT_EQ(platform::GetPixel(canvas.hdc(), 1, 1) & 0xFFFF00, 0);
    EXPECT_GT(platform::GetPixel(canvas.hdc(), 1, 1), 200);
    GradientH(canvas.hdc(), 0, kMax, kMax, kMin, rgb(255, 255, 255), 0);
    EXPECT_EQ(canvas.picture(), "..\n..\n");
}

TEST(Shapes, RoundRectanglesFillTheSameAreaWithAndWithoutAPen) {
    const struct {
        const char* name;
        RoundRectStyle style;
        std::string picture;
    } kCases[] = {
        {"outline", {.iRadius = 2}, ".#####.\n#.....#\n#.....#\n#.....#\n.#####.\n"},
        {"outline and fill",
         {.bFill = true, .iFillColor = kRed, .iRadius = 2},
         ".#####.\n#rrrrr#\n#rrrrr#\n#rrrrr#\n.#####.\n"},
        {"fill alone",
         {.bFill = true, .iFillColor = kRed, .iPenWidth = 0, .iRadius = 2},
         ".rrrrr.\nrrrrrrr\nrrrrrrr\nrrrrrrr\n.rrrrr.\n"},
        {"square",
         {.iPenColor = rgb(0, 0, 255), .iRadius = -3},
         "bbbbbbb\nb.....b\nb.....b\nb.....b\nbbbbbbb\n"},
        {"nothing", {.iPenWidth = -1}, ".......\n.......\n.......\n.......\n.......\n"},
    };
    for (const auto& c : kCases) {
        const Canvas canvas(7, 5);
        DrawRoundRect(canvas.hdc(), 0, 0, 7, 5, c.style);
        EXPECT_EQ(canvas.picture(), c.picture) << c.name;
    }
    const Canvas huge(2, 2);
    DrawRoundRectR(huge.hdc(), {kMin, kMin, kMax, kMax},
                   {.bFill = true, .iPenWidth = 0, .iRadius = kMax});
    EXPECT_EQ(huge.picture(), "##\n##\n");
}

TEST(Shapes, LeaveTheContextAsItWas) {
    const Canvas canvas(9, 9);
    const auto selected = [&] {
        return std::pair(platform::GetCurrentObject(canvas.hdc(), platform::OBJ_PEN),
                         platform::GetCurrentObject(canvas.hdc(), platform::OBJ_BRUSH));
    };
    const auto before = selected();
    DrawLine(canvas.hdc(), 0, 0, 5, 5, 0);
    DrawRoundRect(canvas.hdc(), 0, 0, 9, 9, {.bFill = true, .iRadius = 2});
    EXPECT_EQ(selected(), before);
}

TEST(Shapes, DrawNothingWithoutAContextOrASize) {
    const Canvas canvas(9, 9);
    const platform::DrawingRecorder recorder;
    const HDC gone = platform::CreateCompatibleDC(0);
    platform::DeleteDC(gone);
    for (const HDC hDC : {HDC{0}, gone}) {
        DrawRect(hDC, {0, 0, 5, 5}, 0, true);
        DrawLine(hDC, 0, 0, 5, 5, 0);
        DrawPixel(hDC, 1, 1, 0);
        DrawRoundRect(hDC, 0, 0, 5, 5, {.bFill = true});
        GradientV(hDC, 0, 0, 5, 5, 0, 0xFFFFFF);
        GradientH(hDC, 0, 0, 5, 5, 0, 0xFFFFFF);
        DrawFocus(hDC, {0, 0, 5, 5});
        DrawFlatFace(hDC, {0, 0, 9, 9}, {});
        DrawButtonFace(hDC, {0, 0, 9, 9}, {.bBorder = true});
    }
    DrawFlatFace(canvas.hdc(), {5, 5, 5, 9}, {});
    EXPECT_EQ(recorder.text(), "");
}

TEST(Shapes, DrawNothingRatherThanWithAnotherPen) {
    const Canvas canvas(5, 4);
    std::vector<platform::HPEN> pens;
    while (const platform::HPEN hPen = platform::CreatePen(platform::PS_SOLID, 1, 0)) {
        pens.push_back(hPen);
    }
    DrawLine(canvas.hdc(), 0, 0, 5, 4, kRed);
    DrawRoundRect(canvas.hdc(), 0, 0, 5, 4, {.bFill = true, .iFillColor = kRed});
    EXPECT_EQ(canvas.picture(), ".....\n.....\n.....\n.....\n");
    for (const platform::HPEN hPen : pens) platform::DeleteObject(hPen);
}

TEST(Shapes, MakeRegionsUpToTheLargestSurface) {
    for (const int width : {100, platform::kMaxBitmapExtent}) {
        EXPECT_TRUE(platform::DeleteObject(CreateRoundRegion(width, 25, 2)));
    }
    EXPECT_EQ(CreateRoundRegion(platform::kMaxBitmapExtent + 1, 25, 2), 0U);
    EXPECT_EQ(CreateRoundRegion(kMax, 25, 2), 0U);
}

TEST(Shapes, Golden) {
    EXPECT_GOLDEN("gfx/shapes", SIZE{220, 100}, [](HDC hDC) {
        GradientV(hDC, 4, 4, 60, 96, rgb(255, 214, 160), rgb(160, 60, 20));
        GradientH(hDC, 64, 4, 136, 30, rgb(20, 60, 160), rgb(220, 235, 255));
        for (int i = 0; i < 4; ++i) {
            const int top = 34 + i * 16;
            DrawRoundRect(hDC, 64, top, 98, top + 14,
                          {.iPenColor = rgb(60, 60, 60), .iRadius = 2 * i + 1});
            DrawRoundRect(hDC, 102, top, 136, top + 14,
                          {.bFill = true,
                           .iFillColor = rgb(200, 220, 250),
                           .iPenColor = rgb(20, 60, 160),
                           .iPenWidth = i,
                           .iRadius = 6});
        }
        for (int style = platform::PS_SOLID; style <= platform::PS_DASHDOTDOT; ++style) {
            DrawLine(hDC, 142, 8 + style * 6, 216, 8 + style * 6, 0, 1, style);
        }
        for (int width = 1; width <= 5; ++width) {
            DrawLine(hDC, 146 + width * 12, 44, 138 + width * 13, 90, rgb(160, 20, 20), width);
        }
        DrawFocus(hDC, {139, 37, 219, 97});
    });
}

}  // namespace
