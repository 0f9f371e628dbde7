#include "platform/window/surface.h"
#include "support/window/Canvas.h"

#include <climits>
#include <gtest/gtest.h>
#include <random>

namespace platform {
namespace {

using test::Canvas;
using test::Selected;

void drawLine(const Canvas& canvas, POINT from, POINT to) {
    MoveToEx(canvas.hdc(), from.x, from.y);
    LineTo(canvas.hdc(), to.x, to.y);
}

TEST(LineTo, TakesTheNearestPixelsAndLeavesOutTheEnd) {
    const struct {
        POINT from, to;
        const char* picture;
    } kLines[] = {
        {{1, 1}, {5, 1}, ".......\n.####..\n.......\n.......\n"},
        {{5, 1}, {1, 1}, ".......\n..####.\n.......\n.......\n"},
        {{2, 3}, {2, 0}, ".......\n..#....\n..#....\n..#....\n"},
        {{2, 0}, {2, 3}, "..#....\n..#....\n..#....\n.......\n"},
        {{3, 2}, {3, 2}, ".......\n.......\n.......\n.......\n"},
        {{0, 0}, {3, 3}, "#......\n.#.....\n..#....\n.......\n"},
        {{6, 0}, {3, 3}, "......#\n.....#.\n....#..\n.......\n"},
        {{0, 0}, {6, 3}, "##.....\n..##...\n....##.\n.......\n"},  // halves: the upper pixel
        {{6, 3}, {0, 0}, ".#.....\n..##...\n....##.\n......#\n"},
        {{0, 3}, {6, 0}, ".....#.\n...##..\n.##....\n#......\n"},
        {{6, 0}, {0, 3}, ".....##\n...##..\n.##....\n.......\n"},
        {{0, 0}, {2, 3}, "#......\n.#.....\n.#.....\n.......\n"},
        {{0, 1}, {7, 2}, ".......\n####...\n....###\n.......\n"},
        {{-5, -5}, {20, 20}, "#......\n.#.....\n..#....\n...#...\n"},
        {{INT_MIN, 1}, {INT_MAX, 1}, ".......\n#######\n.......\n.......\n"},
        {{INT_MIN, INT_MIN}, {INT_MAX, INT_MAX}, "#......\n.#.....\n..#....\n...#...\n"},
        {{3, INT_MAX}, {3, INT_MIN}, "...#...\n...#...\n...#...\n...#...\n"},
        {{INT_MIN, 4}, {INT_MAX, 5}, ".......\n.......\n.......\n.......\n"},
    };
    for (const int bits : {0, 1, 24}) {
        for (const auto& c : kLines) {
            Canvas canvas(7, 4, bits);
            drawLine(canvas, c.from, c.to);
            EXPECT_EQ(canvas.picture(), c.picture)
                << c.from.x << ',' << c.from.y << " to " << c.to.x << ',' << c.to.y;
        }
    }
}

TEST(LineTo, ACutLineHasThePixelsOfTheWholeOne) {
    std::mt19937 random(3);
    const auto anywhere = [&] {
        return POINT{static_cast<int>(random() % 60) - 20, static_cast<int>(random() % 60) - 20};
    };
    for (int i = 0; i < 600; ++i) {
        const POINT from = anywhere(), to = anywhere();
        Canvas cut(20, 20), whole(60, 60), part(20, 20);
        const Selected pen(cut.hdc(), CreatePen(i % 5, i % 7 == 0 ? 4 : 1, 0));
        const HGDIOBJ old = SelectObject(whole.hdc(), pen);
        drawLine(cut, from, to);
        drawLine(whole, {from.x + 20, from.y + 20}, {to.x + 20, to.y + 20});
        BitBlt(part.hdc(), 0, 0, 20, 20, whole.hdc(), 20, 20, SRCCOPY);
        EXPECT_EQ(cut.picture(), part.picture())
            << from.x << ',' << from.y << " to " << to.x << ',' << to.y;
        SelectObject(whole.hdc(), old);
    }
}

TEST(LineTo, HasTheSamePixelsFromEitherEnd) {
    for (int x = 0; x < 9; ++x) {
        for (int y = 0; y < 9; ++y) {
            Canvas there(9, 9), back(9, 9);
            drawLine(there, {4, 4}, {x, y});
            drawLine(back, {x, y}, {4, 4});
            SetPixel(there.hdc(), x, y, 0);
            SetPixel(back.hdc(), 4, 4, 0);
            EXPECT_EQ(there.picture(), back.picture()) << x << ',' << y;
        }
    }
}

TEST(LineTo, PatternsRunOnFromLineToLine) {
    const struct {
        int style, bkMode;
        const char* picture;
    } kStyles[] = {
        {PS_DASH, TRANSPARENT, "##################......##################......##\n"},
        {PS_DOT, TRANSPARENT, "###...###...###...###...###...###...###...###...##\n"},
        {PS_DASHDOT, TRANSPARENT, "#########......###......#########......###......##\n"},
        {PS_DASHDOTDOT, TRANSPARENT, "#########...###...###...#########...###...###...##\n"},
        {PS_DOT, OPAQUE, "###yyy###yyy###yyy###yyy###yyy###yyy###yyy###yyy##\n"},
        {PS_NULL, OPAQUE, "..................................................\n"},
        {99, OPAQUE, "##################################################\n"},
    };
    for (const auto& c : kStyles) {
        Canvas canvas(50, 1);
        const Selected pen(canvas.hdc(), CreatePen(c.style, 0, 0));
        SetBkMode(canvas.hdc(), c.bkMode);
        SetBkColor(canvas.hdc(), 0x00FFFF);
        MoveToEx(canvas.hdc(), 0, 0);
        for (const int x : {7, 8, 25, 50}) LineTo(canvas.hdc(), x, 0);
        EXPECT_EQ(canvas.picture(), c.picture) << c.style;
    }
}

TEST(LineTo, WidePensAreRoundAndHoldTheLineInTheirMiddle) {
    const struct {
        int width;
        POINT from, to;
        const char* picture;
    } kLines[] = {
        {2, {2, 2}, {5, 2}, "........\n.#####..\n.#####..\n........\n........\n"},
        {3, {2, 2}, {5, 2}, "........\n.######.\n.######.\n.######.\n........\n"},
        {3, {4, 2}, {4, 2}, "........\n...###..\n...###..\n...###..\n........\n"},
        {5, {3, 2}, {4, 2}, "..####..\n.######.\n.######.\n.######.\n..####..\n"},
        {3, {1, 0}, {5, 4}, "####....\n#####...\n.#####..\n..#####.\n...####.\n"},
        {1000, {INT_MIN, 2}, {INT_MAX, 2}, "########\n########\n########\n########\n########\n"},
    };
    for (const auto& c : kLines) {
        Canvas canvas(8, 5);
        const Selected pen(canvas.hdc(), CreatePen(PS_DOT, c.width, 0));
        drawLine(canvas, c.from, c.to);
        EXPECT_EQ(canvas.picture(), c.picture) << c.width;
    }
}

TEST(MoveToEx, GivesThePointThatItReplaces) {
    Canvas canvas(1, 1);
    POINT previous{9, 9};
    MoveToEx(canvas.hdc(), 3, 4, &previous);
    EXPECT_EQ(previous, POINT());
    LineTo(canvas.hdc(), 5, 6);
    MoveToEx(canvas.hdc(), 0, 0, &previous);
    EXPECT_EQ(previous, (POINT{5, 6}));
}

}  // namespace
}  // namespace platform
