#include "platform/window/surface.h"
#include "platform/window/surface_internal.h"
#include "support/window/Canvas.h"

#include <climits>
#include <gtest/gtest.h>
#include <random>

namespace platform {
namespace {

using test::Canvas;
using test::Selected;

constexpr int kDepths[] = {0, 1, 4, 8, 24, 32};

TEST(BitBlt, CopiesWhatLiesInBothSurfaces) {
    const struct {
        int x, y, width, height, xSource, ySource;
        const char* picture;
    } kCopies[] = {
        {0, 0, 3, 3, 0, 0, "rgb.\nbrg.\ngbr.\n....\n"},
        {1, 2, 2, 1, 1, 0, "....\n....\n.gb.\n....\n"},
        {2, 2, 3, 3, 0, 0, "....\n....\n..rg\n..br\n"},
        {-1, -1, 3, 3, 0, 0, "rg..\nbr..\n....\n....\n"},
        {0, 0, 3, 3, -1, -1, "....\n.rg.\n.br.\n....\n"},
        {0, 0, 4, 4, 2, 2, "r...\n....\n....\n....\n"},
        {0, 0, INT_MAX, INT_MAX, 0, 0, "rgb.\nbrg.\ngbr.\n....\n"},
        {INT_MIN, INT_MIN, INT_MAX, INT_MAX, 0, 0, "....\n....\n....\n....\n"},
        {0, 0, 3, 3, INT_MAX, INT_MIN, "....\n....\n....\n....\n"},
        {0, 0, 0, 3, 0, 0, "....\n....\n....\n....\n"},
        {2, 2, -2, -2, 0, 0, "....\n....\n....\n....\n"},
    };
    for (const int bits : kDepths) {
        if (bits == 1) continue;  // three colours
        Canvas source("rgb\nbrg\ngbr\n", bits);
        for (const auto& c : kCopies) {
            Canvas canvas(4, 4);
            EXPECT_TRUE(BitBlt(canvas.hdc(), c.x, c.y, c.width, c.height, source.hdc(), c.xSource,
                               c.ySource, SRCCOPY));
            EXPECT_EQ(canvas.picture(), c.picture) << bits << ": " << c.x << ',' << c.y;
        }
    }
}

TEST(BitBlt, KeepsColoursBetweenAllDepths) {
    for (const int from : kDepths) {
        for (const int to : kDepths) {
            const char* picture =
                from == 1 || to == 1 ? "##..#..#.\n.#.#.#.##\n" : "rgb#.yxrg\nyx.#bgrxy\n";
            Canvas source(picture, from), canvas(9, 2, to);
            BitBlt(canvas.hdc(), 0, 0, 9, 2, source.hdc(), 0, 0, SRCCOPY);
            EXPECT_EQ(canvas.picture(), picture) << from << " to " << to;
        }
    }
}

TEST(BitBlt, AMonochromeBitmapHoldsTheBackgroundColourAndGivesBoth) {
    Canvas colors("rgb.\n"), bits(4, 1, Canvas::kMonochrome);
    SetBkColor(colors.hdc(), 0x00FF00);
    BitBlt(bits.hdc(), 0, 0, 4, 1, colors.hdc(), 0, 0, SRCCOPY);
    EXPECT_EQ(bits.picture(), "#.##\n");
    for (const int depth : {0, 4, 8, 24, 32}) {
        Canvas canvas(4, 1, depth);
        SetTextColor(canvas.hdc(), 0x0000FF);
        SetBkColor(canvas.hdc(), 0xFF0000);
        BitBlt(canvas.hdc(), 0, 0, 4, 1, bits.hdc(), 0, 0, SRCCOPY);
        EXPECT_EQ(canvas.picture(), "rbrr\n") << depth;
    }
    Canvas other(4, 1, Canvas::kMonochrome);
    SetBkColor(other.hdc(), 0);
    SetTextColor(other.hdc(), 0xFFFFFF);
    BitBlt(other.hdc(), 0, 0, 4, 1, bits.hdc(), 0, 0, SRCCOPY);
    EXPECT_EQ(other.picture(), "#.##\n") << "bits stay bits";
}

TEST(BitBlt, OverlappingCopiesAreAsIfTheSourceHadBeenReadFirst) {
    const char* picture = "rgbyx\nbr#gy\nyxrb.\ngy#rb\nxbgry\n";
    for (const int bits : {0, 4, 8, 24, 32}) {
        for (const std::uint32_t rop : {SRCCOPY, SRCINVERT}) {
            for (int dx = -2; dx <= 2; ++dx) {
                for (int dy = -2; dy <= 2; ++dy) {
                    Canvas canvas(picture, bits), before(picture, bits), expected(picture, bits);
                    BitBlt(canvas.hdc(), 1 + dx, 1 + dy, 3, 3, canvas.hdc(), 1, 1, rop);
                    BitBlt(expected.hdc(), 1 + dx, 1 + dy, 3, 3, before.hdc(), 1, 1, rop);
                    EXPECT_EQ(canvas.picture(), expected.picture())
                        << bits << ' ' << dx << ',' << dy;
                }
            }
        }
    }
}

TEST(BitBlt, SetsTheUnusedBytesThatASectionLeftOpen) {
    Canvas source(4, 2, 32), canvas(4, 2), other(4, 2, 32);
    for (const Canvas* target : {&canvas, &other, &source}) {
        for (int i = 0; i < 4 * 2; ++i) source.bits()[i * 4 + 3] = static_cast<std::uint8_t>(i);
        BitBlt(target->hdc(), 1, 0, 3, 2, source.hdc(), 0, 0, SRCCOPY);
        for (int y = 0; y < 2; ++y) {
            for (int x = 1; x < 4; ++x) {
                EXPECT_EQ(dcOf(target->hdc())->bitmap->row(y)[x] >> 24, 0xFFU) << x << ',' << y;
            }
        }
    }
}

// Each operation against its definition, a table of three bits: on the bytes of rows whose pixels
// are colours, and of rows with two indexes in each byte.
TEST(BitBlt, KnowsAll256RasterOperations) {
    std::mt19937 random(7);
    for (std::uint32_t code = 0; code < 256; ++code) {
        for (const int bits : {4, 32}) {
            const int bytes = bits;  // of a row of 8 pixels
            const Canvas source(8, 1, bits), canvas(8, 1, bits);
            const auto color = static_cast<COLORREF>(random() & 0xFFFFFF);
            const Selected brush(canvas.hdc(), CreateSolidBrush(color));
            std::vector<unsigned> from, to;
            for (int i = 0; i < bytes; ++i) {
                from.push_back(source.bits()[i] = static_cast<std::uint8_t>(random()));
                to.push_back(canvas.bits()[i] = static_cast<std::uint8_t>(random()));
            }
            BitBlt(canvas.hdc(), 0, 0, 8, 1, source.hdc(), 0, 0, code << 16 | 0x1234);
            const std::uint32_t value = valueOf(*dcOf(canvas.hdc())->bitmap, color);
            for (int i = 0; i < bytes; ++i) {
                const std::uint32_t pattern = bits == 4 ? value * 0x11 : value >> i % 4 * 8;
                std::uint32_t expected = 0;
                for (unsigned bit = 0; bit < 8; ++bit) {
                    const auto index =
                        (pattern >> bit & 1) << 2 | (from[i] >> bit & 1) << 1 | (to[i] >> bit & 1);
                    expected |= (code >> index & 1) << bit;
                }
                if (bits == 32 && i % 4 == 3) expected = 0xFF;  // the unused byte
                EXPECT_EQ(canvas.bits()[i], expected) << code << ", " << bits << " bits";
            }
        }
    }
}

TEST(BitBlt, OperationsWithoutASourceNeedNone) {
    const struct {
        std::uint32_t rop;
        const char* picture;
    } kOperations[] = {{BLACKNESS, ".##\n.##\n"},
                       {WHITENESS, "...\n...\n"},
                       {PATCOPY, ".rr\n.rr\n"},
                       {DSTINVERT, ".##\n.##\n"}};
    for (const auto& c : kOperations) {
        Canvas canvas(3, 2);
        const Selected brush(canvas.hdc(), CreateSolidBrush(0x0000FF));
        EXPECT_TRUE(BitBlt(canvas.hdc(), 1, -4, 9, 9, 0, 0, 0, c.rop));
        EXPECT_EQ(canvas.picture(), c.picture);
    }
    Canvas canvas(3, 2);
    EXPECT_FALSE(BitBlt(canvas.hdc(), 0, 0, 3, 2, 0, 0, 0, SRCCOPY));
    SelectObject(canvas.hdc(), GetStockObject(NULL_BRUSH));
    EXPECT_TRUE(BitBlt(canvas.hdc(), 0, 0, 3, 2, 0, 0, 0, PATINVERT));
    EXPECT_EQ(canvas.picture(), "...\n...\n");
}

// ---- StretchBlt

TEST(StretchBlt, EnlargesReducesAndMirrors) {
    const struct {
        int x, y, width, height, xSource, ySource, widthSource, heightSource;
        const char* picture;
    } kCopies[] = {
        {0, 0, 6, 2, 0, 0, 3, 1, "rrggbb\nrrggbb\n......\n......\n"},
        {0, 0, 3, 4, 0, 0, 3, 2, "rgb...\nrgb...\nyx#...\nyx#...\n"},
        {0, 0, 1, 2, 0, 0, 3, 2, "g.....\nx.....\n......\n......\n"},  // the middle column
        {0, 0, 2, 1, 0, 0, 3, 2, "y#....\n......\n......\n......\n"},
        {2, 0, -3, 2, 0, 0, 3, 2, "bgr...\n#xy...\n......\n......\n"},  // from x = 2 to the left
        {0, 1, 3, -2, 0, 0, 3, 2, "yx#...\nrgb...\n......\n......\n"},
        {0, 0, 3, 2, 2, 0, -3, 2, "bgr...\n#xy...\n......\n......\n"},
        {2, 1, -3, -2, 2, 1, -3, -2, "rgb...\nyx#...\n......\n......\n"},
        {5, 3, -12, -8, 2, 1, -3, -2, "xx####\nxx####\nxx####\nxx####\n"},
        {-2, -1, 6, 4, 0, 0, 3, 2, "ggbb..\nxx##..\nxx##..\n......\n"},
        {0, 0, 6, 4, -1, 0, 3, 2, "..rrgg\n..rrgg\n..yyxx\n..yyxx\n"},
        {0, 0, 0, 4, 0, 0, 3, 2, "......\n......\n......\n......\n"},
        {0, 0, 6, 4, 0, 0, 3, 0, "......\n......\n......\n......\n"},
        {0, 0, INT_MIN, INT_MIN, 0, 0, INT_MIN, INT_MAX, "r.....\n......\n......\n......\n"},
        {INT_MIN, 0, INT_MAX, INT_MAX, 0, 0, INT_MAX, INT_MAX, "......\n......\n......\n......\n"},
    };
    for (const auto& c : kCopies) {
        for (const int bits : {0, 4, 24}) {
            Canvas source("rgb\nyx#\n", bits), canvas(6, 4);
            SetStretchBltMode(canvas.hdc(), COLORONCOLOR);
            EXPECT_TRUE(StretchBlt(canvas.hdc(), c.x, c.y, c.width, c.height, source.hdc(),
                                   c.xSource, c.ySource, c.widthSource, c.heightSource, SRCCOPY));
            EXPECT_EQ(canvas.picture(), c.picture)
                << c.x << ',' << c.y << ' ' << c.width << 'x' << c.height;
        }
    }
}

TEST(StretchBlt, OfEqualSizesIsBitBlt) {
    std::mt19937 random(11);
    const auto near = [&] { return static_cast<int>(random() % 9) - 2; };
    for (int i = 0; i < 200; ++i) {
        Canvas source("rgb#y\nyx#rg\nbgryx\n", 8), one(5, 5), two(5, 5);
        const int x = near(), y = near(), xs = near(), ys = near(), w = 1 + std::abs(near()),
                  h = 1 + std::abs(near());
        StretchBlt(one.hdc(), x, y, w, h, source.hdc(), xs, ys, w, h, SRCAND);
        BitBlt(two.hdc(), x, y, w, h, source.hdc(), xs, ys, SRCAND);
        EXPECT_EQ(one.picture(), two.picture());
    }
}

TEST(StretchBlt, TheModeSaysWhatBecomesOfLinesLeftOut) {
    const struct {
        int mode;
        const char* picture;
    } kModes[] = {{BLACKONWHITE, ".#r\n"}, {WHITEONBLACK, "..y\n"}, {COLORONCOLOR, ".#y\n"}};
    for (const auto& c : kModes) {
        for (const int bits : {0, 8}) {
            Canvas source("...#ry\n...#ry\n", bits), canvas(3, 1);
            SetStretchBltMode(canvas.hdc(), c.mode);
            StretchBlt(canvas.hdc(), 0, 0, 3, 1, source.hdc(), 0, 0, 6, 2, SRCCOPY);
            EXPECT_EQ(canvas.picture(), c.picture) << c.mode;
        }
    }
}

TEST(StretchBlt, OnOneSurfaceReadsTheSourceFirst) {
    Canvas canvas("rgb#\nyx..\n");
    SetStretchBltMode(canvas.hdc(), COLORONCOLOR);
    EXPECT_TRUE(StretchBlt(canvas.hdc(), 3, 0, -4, 2, canvas.hdc(), 0, 0, 4, 2, SRCCOPY));
    EXPECT_EQ(canvas.picture(), "#bgr\n..xy\n");
}

}  // namespace
}  // namespace platform
