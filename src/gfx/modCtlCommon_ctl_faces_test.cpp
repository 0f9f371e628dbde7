#include "gfx/modCtlCommon_ctl_faces.h"

#include "gfx/clsMEMDC.h"
#include "gfx/modCtlCommon_ctl_colors.h"
#include "gfx/modCtlCommon_ctl_shapes.h"
#include "platform/window/recorder.h"
#include "support/gui/Golden.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

using platform::rgb;

// The application's style as it was.
struct AppStyleScope {
    ~AppStyleScope() {
        g_iAppStyle = 0;
        g_bAppStyleSet = false;
    }
};

std::string level(Color color) {
    const int grey = platform::redOf(color);
    return color == rgb(grey, grey, grey) ? std::to_string(grey) : "?";
}

// One column of a grey face.
std::string columnOf(SIZE size, int x, const ButtonFace& face) {
    clsMEMDC surface;
    surface.CreateDC(size.cx, size.cy);
    DrawButtonFace(surface.Hdc(), {0, 0, size.cx, size.cy}, face);
    std::string column;
    for (int y = 0; y < size.cy; ++y) {
        column += (y > 0 ? " " : "") + level(platform::GetPixel(surface.Hdc(), x, y));
    }
    return column;
}

// Its rows, at a column that no edge reaches.
std::string rowsOf(int height, const ButtonFace& face) { return columnOf({40, height}, 20, face); }

struct FaceRows {
    std::int32_t style;
    int height, grey;
    bool pressed;
    std::string rows;
    bool adapt = false, rounded = false;
};

// Worked out apart from the program. How the other styles look is in the golden pictures.
const FaceRows kFaces[] = {
    {3, 20, 100, false, "134 130 126 121 117 113 108 104 83 84 86 87 89 90 92 93 94 96 97 99"},
    {4, 20, 100, false,
     "49 57 204 188 173 158 142 126 111 119 127 134 142 150 158 165 173 181 189 196"},
    {4, 20, 100, true,
     "49 59 69 80 90 100 100 100 100 100 100 100 100 100 100 100 121 142 162 183"},
    {7, 20, 100, false,
     "255 245 235 225 215 205 195 185 157 128 49 63 76 90 103 117 131 144 158 171"},
    // With rounded corners the light of style 4 has a line above and below.
    {4, 20, 100, false,
     "49 57 204 204 185 167 148 130 111 119 127 134 142 150 158 165 173 181 189 196", false, true},
    // bAdapt, at both sides of each limit.
    {0, 12, 63, true, "29 35 40 46 52 57 63 63 84 106 127 149", true},
    {0, 12, 64, true, "30 36 41 47 53 58 64 64 71 78 84 91", true},
    {7, 16, 101, false, "255 245 235 225 216 206 196 186 50 69 88 108 127 146 166 185", true},
    {7, 16, 102, false, "255 245 236 226 216 206 197 187 51 68 85 102 119 136 153 170", true},
    {8, 9, 171, true, "120 133 146 158 171 171 192 213 234", true},
    {8, 9, 170, true, "119 132 144 157 170 170 178 187 196", true},
    // Bands are cut where a face is too small for them.
    {0, 3, 100, true, "66 72 77"},
    {3, 1, 100, false, "134"},
    {3, 3, 100, false, "134 123 111"},
    {4, 3, 100, false, "49 101 204"},
    {4, 3, 100, true, "49 59 69"},
    {6, 3, 100, false, "49 66 83"},
    {7, 6, 100, false, "255 245 235 49 94 140"},
    {8, 1, 100, false, "62"},
    {8, 6, 100, false, "204 178 100 87 74 62"},
    {8, 6, 100, true, "49 62 100 126 152 178"},
};

TEST(ButtonFaces, HaveTheRowsOfTheirStyle) {
    for (const FaceRows& c : kFaces) {
        EXPECT_EQ(rowsOf(c.height, {.iBackColor = rgb(c.grey, c.grey, c.grey),
                                    .bPressed = c.pressed,
                                    .bRounded = c.rounded,
                                    .iStyle = c.style,
                                    .bAdapt = c.adapt}),
                  c.rows)
            << "style " << c.style << (c.pressed ? " pressed" : "") << " on " << c.grey;
    }
}

// All pixels of a small face on white.
template <class Paint> std::string pictureOf(SIZE size, Paint paint) {
    clsMEMDC surface;
    surface.CreateDC(size.cx, size.cy);
    surface.DrawBackColor(rgb(255, 255, 255));
    paint(surface.Hdc(), RECT{0, 0, size.cx, size.cy});
    std::string picture;
    for (int y = 0; y < size.cy; ++y) {
        for (int x = 0; x < size.cx; ++x) {
            picture += (x > 0 ? " " : "") + level(platform::GetPixel(surface.Hdc(), x, y));
        }
        picture += '\n';
    }
    return picture;
}

TEST(ButtonFaces, HaveABorderWithCornersOfTheirOwn) {
    const auto picture = [](SIZE size, const ButtonFace& face) {
        return pictureOf(size, [&](HDC hDC, const RECT& r) { DrawButtonFace(hDC, r, face); });
    };
    ButtonFace face{.iBackColor = rgb(100, 100, 100), .bBorder = true, .iStyle = 0};
    EXPECT_EQ(picture({6, 4}, face), "32 32 32 32 32 32\n"
                                     "32 100 100 100 100 32\n"
                                     "32 100 100 100 100 32\n"
                                     "32 32 32 32 32 32\n");
    face.bRounded = true;
    face.iBorderColor = 0;
    face.iOuterColor = rgb(200, 200, 200);
    // The corner shows what lies behind; 30 per cent of the face go into the pixels beside it, 50
    // into that inside of it.
    EXPECT_EQ(picture({7, 6}, face), "200 30 0 0 0 30 200\n"
                                     "30 50 100 100 100 50 30\n"
                                     "0 100 100 100 100 100 0\n"
                                     "0 100 100 100 100 100 0\n"
                                     "30 50 100 100 100 50 30\n"
                                     "200 30 0 0 0 30 200\n");
    face.iOuterColor = kAutoColor;
    EXPECT_EQ(picture({7, 6}, face).substr(0, 6), "100 30");
}

TEST(ButtonFaces, PressedInStyle4HaveAShadeInsideOfTheBorder) {
    const auto column = [](bool bBorder, bool bRounded) {
        return columnOf({9, 14}, 1,
                        {.iBackColor = rgb(100, 100, 100),
                         .bBorder = bBorder,
                         .iBorderColor = 0,
                         .bPressed = true,
                         .bRounded = bRounded,
                         .iStyle = 4});
    };
    EXPECT_EQ(column(true, false), "0 49 54 59 64 69 75 80 85 90 95 100 100 0");
    EXPECT_EQ(column(true, true), "30 24 54 59 64 69 75 80 85 90 95 100 102 30");
    EXPECT_EQ(column(false, false), "49 59 69 80 90 100 100 100 100 100 100 100 100 100");
}

TEST(ButtonFaces, ShowDefaultCancelAndFocusInsideOfTheBorder) {
    const auto drawn = [](ButtonFace face) {
        face.iStyle = 0;
        face.iBackColor = 0;
        const platform::DrawingRecorder recorder;
        clsMEMDC surface;
        surface.CreateDC(9, 9);
        DrawButtonFace(surface.Hdc(), {0, 0, 9, 9}, face);
        return recorder.text();
    };
    const std::string fill = "FillRect 0,0,9,9 #000000\n";
    EXPECT_EQ(drawn({}), fill);
    EXPECT_EQ(drawn({.bDefault = true, .bCancel = true}), fill + "FrameRect 1,1,8,8 #A0BEEC\n");
    EXPECT_EQ(drawn({.bCancel = true, .bFocus = true}),
              fill + "FrameRect 1,1,8,8 #808080\nDrawFocusRect 2,2,7,7\n");
}

TEST(ButtonFaces, TakeTheStyleOfTheApplication) {
    const AppStyleScope scope;
    const auto rows = [](std::int32_t style) {
        return rowsOf(20, {.iBackColor = rgb(100, 100, 100), .iStyle = style});
    };
    EXPECT_EQ(AppButtonStyle(), 3);
    EXPECT_EQ(rows(-1), rows(3));
    SetAppButtonStyle(4);
    EXPECT_EQ(AppButtonStyle(), 4);
    EXPECT_EQ(rows(-1), rows(4));
    EXPECT_EQ(rows(99), rows(4));
    SetAppButtonStyle(99);
    EXPECT_EQ(rows(-1), rows(3));
}

TEST(ButtonFaces, OfAnySizeStayInsideTheirRectangle) {
    constexpr int kMax = std::numeric_limits<int>::max(), kMin = std::numeric_limits<int>::min();
    // Where the face has changed the ground: # there, . elsewhere.
    const auto changed = [](const RECT& r, const ButtonFace& face) {
        const Color ground = rgb(1, 2, 3);
        clsMEMDC surface;
        surface.CreateDC(16, 16);
        surface.DrawBackColor(ground);
        DrawButtonFace(surface.Hdc(), r, face);
        std::string picture;
        for (int i = 0; i < 16 * 16; ++i) {
            picture += platform::GetPixel(surface.Hdc(), i % 16, i / 16) == ground ? '.' : '#';
        }
        return picture;
    };
    for (int i = 0; i < 9 * 4; ++i) {
        const ButtonFace face{.bBorder = true,
                              .bPressed = i % 2 != 0,
                              .bDefault = true,
                              .bFocus = true,
                              .bRounded = i / 2 % 2 != 0,
                              .iStyle = i / 4};
        for (int width = -1; width < 10; ++width) {
            for (int height = -1; height < 10; ++height) {
                std::string expected(16 * 16, '.');
                for (int y = 3; y < 3 + height; ++y) {
                    for (int x = 3; x < 3 + width; ++x) expected[y * 16 + x] = '#';
                }
                EXPECT_EQ(changed({3, 3, 3 + width, 3 + height}, face), expected)
                    << "style " << face.iStyle << ", " << width << " x " << height;
            }
        }
        (void)changed({kMin, kMin, kMax, kMax}, face);
        (void)changed({kMax, kMax, kMin, kMin}, face);
    }
}

TEST(FlatFaces, FrameTwoPixelsAndLeaveTheInside) {
    const auto picture = [](FlatFace face) {
        face.iBackColor = rgb(200, 200, 200);
        face.iBorderColor = 0;
        return pictureOf({7, 6}, [&](HDC hDC, const RECT& r) { DrawFlatFace(hDC, r, face); });
    };
    EXPECT_EQ(picture({}), "0 0 0 0 0 0 0\n"
                           "0 200 200 200 200 200 0\n"
                           "0 200 255 255 255 200 0\n"
                           "0 200 255 255 255 200 0\n"
                           "0 200 200 200 200 200 0\n"
                           "0 0 0 0 0 0 0\n");
    EXPECT_EQ(picture({.bRounded = true, .iOuterColor = rgb(10, 10, 10)}),
              "10 60 0 0 0 60 10\n"
              "60 100 200 200 200 100 60\n"
              "0 200 255 255 255 200 0\n"
              "0 200 255 255 255 200 0\n"
              "60 100 200 200 200 100 60\n"
              "10 60 0 0 0 60 10\n");
    EXPECT_EQ(picture({.bRounded = true, .bOnlyBottomBorder = true}),
              "200 200 200 200 200 200 200\n"
              "200 200 200 200 200 200 200\n"
              "200 200 255 255 255 200 200\n"
              "200 200 255 255 255 200 200\n"
              "200 200 200 200 200 200 200\n"
              "200 0 0 0 0 0 200\n");
}

// All styles side by side; in rows as it comes, pressed, rounded, both, and with the frames inside.
void paintTable(HDC hDC, Color back, Color outer) {
    constexpr SIZE kFace{56, 23};
    DrawRectXY(hDC, 0, 0, 560, 170, outer, true);
    for (int row = 0; row < 6; ++row) {
        for (std::int32_t style = 0; style < 9; ++style) {
            const int left = 5 + style * 61, top = 5 + row * 27;
            DrawButtonFace(hDC, {left, top, left + kFace.cx, top + kFace.cy},
                           {.iBackColor = back,
                            .bBorder = true,
                            .bPressed = row % 2 != 0 && row < 4,
                            .bDefault = row == 4,
                            .bCancel = row == 5,
                            .bFocus = row == 4,
                            .bRounded = row >= 2,
                            .iStyle = style,
                            .iOuterColor = outer,
                            .bAdapt = true});
        }
    }
}

TEST(ButtonFaces, Golden) {
    const struct {
        const char* name;
        Color back, outer;
    } kTables[] = {
        {"gfx/faces-light", rgb(236, 233, 216), rgb(255, 255, 255)},
        {"gfx/faces-blue", rgb(90, 140, 210), rgb(212, 208, 200)},
        {"gfx/faces-dark", rgb(48, 52, 60), rgb(30, 30, 34)},
    };
    for (const auto& t : kTables) {
        EXPECT_GOLDEN(t.name, SIZE{560, 170}, [&](HDC hDC) { paintTable(hDC, t.back, t.outer); });
    }
}

}  // namespace
