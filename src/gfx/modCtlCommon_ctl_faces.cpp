#include "gfx/modCtlCommon_ctl_faces.h"

#include "gfx/gradient.h"
#include "gfx/modCtlCommon_ctl_colors.h"
#include "gfx/modCtlCommon_ctl_shapes.h"
#include "gfx/rounding.h"

#include <algorithm>

namespace {

constexpr Color kWhite = 0xFFFFFF;
constexpr int kStyles = 9;

// What a painter works on.
struct Canvas {
    HDC hDC = 0;
    RECT rect;       // not empty
    Color back = 0;  // plain
    bool bBorder = false, bPressed = false, bRounded = false, bAdapt = false;

    [[nodiscard]] int height() const { return rect.bottom - rect.top; }
    [[nodiscard]] Color B(int n) const { return ColorBrighten(back, static_cast<std::int16_t>(n)); }
    [[nodiscard]] int luminance() const { return ColorLuminance(back); }
    // Rows and columns count from the top left corner of the face.
    void rows(int begin, int end, Color from, Color to) const {
        gfx::gradientRows(hDC, {rect.left, rect.right}, {rect.top + begin, rect.top + end},
                          {rect.top, rect.bottom}, from, to);
    }
    void columns(int begin, int end, Color from, Color to) const {
        gfx::gradientColumns(hDC, {rect.top, rect.bottom}, {rect.left + begin, rect.left + end},
                             {rect.left, rect.right}, from, to);
    }
};

// The fill colours at the upper and lower corners, which the rounded border blends with.
struct CornerFills {
    Color top = 0, bottom = 0;
};

// ---- Painters

// The light of the styles 4 and 8.
Color lightOf(const Canvas& face) {
    return face.bAdapt && face.luminance() >= 171 ? kWhite : ColorToLuminance(face.back, 204);
}

CornerFills paintFlat(const Canvas& face) {  // style 0
    DrawRect(face.hDC, face.rect, face.back, true);
    if (!face.bPressed) return {face.back, face.back};
    const Color light =
        face.bAdapt && face.luminance() < 64 ? ColorToLuminance(face.back, 170) : face.B(34);
    const Color shade = face.B(-34);
    const int width = face.rect.right - face.rect.left, height = face.height();
    face.rows(height - 5, height, face.back, light);
    face.columns(width - 5, width, face.back, light);
    face.rows(0, 6, shade, face.back);
    face.columns(0, 6, shade, face.back);
    return {shade, light};
}

// Two bands that meet at the split, each from a brightening of the back colour to another.
struct TwoBands {
    int upperFrom, upperTo, lowerFrom, lowerTo;
};
constexpr TwoBands kSunken = {-17, 0, -17, 51};  // the pressed look of most styles

CornerFills paintTwoBands(const Canvas& face, int split, const TwoBands& bands) {
    const CornerFills fills{face.B(bands.upperFrom), face.B(bands.lowerTo)};
    face.rows(0, split, fills.top, face.B(bands.upperTo));
    face.rows(split, face.height(), face.B(bands.lowerFrom), fills.bottom);
    return fills;
}

CornerFills paintWhole(const Canvas& face, Color top, Color bottom) {
    face.rows(0, face.height(), top, bottom);
    return {top, bottom};
}

// The light that lies on the upper part of style 4.
void paintSheen(const Canvas& face, Color dark, Color light) {
    const RECT& r = face.rect;
    const int quarter = face.height() / 4;
    const std::int32_t percent = gfx::roundHalfEven((quarter + 3.0) / face.height() * 100);
    const Color middle = ColorBlend(dark, light, percent);
    const auto line = [&](int row, Color color) {
        const int y = r.top + row;
        if (y < r.bottom && r.left + 4 < r.right - 4) {
            DrawLine(face.hDC, r.left + 4, y, r.right - 4, y, color);
        }
    };
    const int inset = face.bRounded ? 3 : 2, end = r.top + 3 + quarter;
    if (face.bRounded) line(2, light);
    if (r.left + inset < r.right - inset) {
        gfx::gradientRows(face.hDC, {r.left + inset, r.right - inset}, {r.top + inset, end},
                          {r.top, r.bottom}, light, middle);
    }
    if (face.bRounded) line(3 + quarter, middle);
}

CornerFills paintGlass(const Canvas& face) {  // style 4
    const Color dark = face.B(-51), light = lightOf(face);
    if (!face.bPressed) {
        const CornerFills fills = paintWhole(face, dark, light);
        paintSheen(face, dark, light);
        return fills;
    }
    const RECT& r = face.rect;
    face.rows(0, 5, dark, face.back);
    face.rows(5, 15, face.back, face.back);
    face.rows(15, face.height(), face.back, light);
    if (face.bBorder) {  // its inner edge
        gfx::gradientRows(face.hDC, {r.left + 1, std::min(r.left + 2, r.right - 1)},
                          {r.top + 1, r.top + 11}, {r.top, r.bottom - 1}, dark, face.back);
    }
    return {dark, light};
}

CornerFills paintShine(const Canvas& face) {  // style 7
    const int split = face.height() / 2;
    if (face.bPressed) return paintTwoBands(face, split, kSunken);
    const Color bright = face.B(85);
    const Color light =
        face.bAdapt && face.luminance() < 102 ? ColorToLuminance(face.back, 204) : bright;
    face.rows(0, 7, kWhite, bright);
    face.rows(7, split, bright, face.back);
    face.rows(split, face.height(), face.B(-51), light);
    return {kWhite, light};
}

CornerFills paintEdges(const Canvas& face) {  // style 8
    const int height = face.height();
    const Color light = lightOf(face), dark = face.B(-51);
    const CornerFills fills = face.bPressed ? CornerFills{dark, light} : CornerFills{light, dark};
    DrawRect(face.hDC, face.rect, face.back, true);
    face.rows(0, 4, fills.top, face.back);
    face.rows(height - 4, height, face.back, fills.bottom);
    return fills;
}

CornerFills paintStyle(const Canvas& face, std::int32_t iStyle) {
    const int height = face.height();
    switch (iStyle) {
    case 0:
        return paintFlat(face);
    case 1:
        return face.bPressed ? paintWhole(face, face.B(-17), face.B(51))
                             : paintWhole(face, face.B(51), face.B(-17));
    case 2:
        return paintTwoBands(face, height / 2,
                             face.bPressed ? TwoBands{51, -17, -17, 51}
                                           : TwoBands{-17, 51, 51, -17});
    case 4:
        return paintGlass(face);
    case 5:
        return paintTwoBands(face, height / 2, face.bPressed ? kSunken : TwoBands{34, 0, -51, 0});
    case 6:
        return paintTwoBands(face, height / 6, face.bPressed ? kSunken : TwoBands{128, 32, -51, 0});
    case 7:
        return paintShine(face);
    case 8:
        return paintEdges(face);
    default:  // 3
        return paintTwoBands(face, height / 3 + 2,
                             face.bPressed ? kSunken : TwoBands{34, 0, -17, 0});
    }
}

// ---- Borders

struct Border {
    Color color, outer, back;
};

// The border step that all faces end with.
void drawBorder(HDC hDC, const RECT& r, bool bRounded, const Border& border,
                const CornerFills& fills) {
    if (!bRounded) {
        DrawRect(hDC, r, border.color, false);
        return;
    }
    DrawRect(hDC, r, border.outer, false);
    DrawRoundRectR(hDC, r, {.iPenColor = border.color, .iRadius = 4});
    // Too small for pixels of its own at each corner.
    if (r.right - r.left < 4 || r.bottom - r.top < 4) return;
    const Color beside = ColorBlend(border.color, border.back, 30);
    const auto corner = [&](int x, int y, int inwardX, int inwardY, Color fill) {
        DrawPixel(hDC, x + inwardX, y + inwardY, ColorBlend(border.color, fill, 50));
        DrawPixel(hDC, x + inwardX, y, beside);
        DrawPixel(hDC, x, y + inwardY, beside);
    };
    corner(r.left, r.top, 1, 1, fills.top);
    corner(r.right - 1, r.top, -1, 1, fills.top);
    corner(r.left, r.bottom - 1, 1, -1, fills.bottom);
    corner(r.right - 1, r.bottom - 1, -1, -1, fills.bottom);
}

Border bordersOf(Color iBorderColor, Color iBackColor, Color iOuterColor) {
    return {TranslateColor(AutoBorderColor(iBorderColor, iBackColor)),
            TranslateColor(iOuterColor == kAutoColor ? iBackColor : iOuterColor),
            TranslateColor(iBackColor)};
}

RECT insetBy(RECT rect, int pixels) {
    platform::InflateRect(rect, -pixels, -pixels);
    return rect;
}

// Coordinates so far outside of every surface that nobody sees them held, and so near that
// arithmetic on them stays in range.
RECT held(const RECT& r) {
    const auto near = [](std::int32_t at) { return std::clamp(at, -(1 << 28), 1 << 28); };
    return {near(r.left), near(r.top), near(r.right), near(r.bottom)};
}

bool isEmpty(const RECT& r) { return r.right <= r.left || r.bottom <= r.top; }

bool exists(std::int32_t iStyle) { return iStyle >= 0 && iStyle < kStyles; }

}  // namespace

std::int32_t AppButtonStyle() { return g_bAppStyleSet ? g_iAppStyle : 3; }

void SetAppButtonStyle(std::int32_t iStyle) {
    g_iAppStyle = iStyle;
    g_bAppStyleSet = true;
}

void DrawButtonFace(HDC hDC, const RECT& rect, const ButtonFace& face) {
    const RECT r = held(rect);
    if (hDC == 0 || isEmpty(r)) return;
    const Border border = bordersOf(face.iBorderColor, face.iBackColor, face.iOuterColor);
    const Canvas canvas{hDC,           r,          border.back, face.bBorder, face.bPressed,
                        face.bRounded, face.bAdapt};
    const CornerFills fills =
        paintStyle(canvas, exists(face.iStyle) ? face.iStyle : AppButtonStyle());
    if (face.bBorder) drawBorder(hDC, r, face.bRounded, border, fills);
    if (face.bDefault) {
        DrawRect(hDC, insetBy(r, 1), 0xECBEA0, false);
    } else if (face.bCancel) {
        DrawRect(hDC, insetBy(r, 1), 0x808080, false);
    }
    if (face.bFocus) DrawFocus(hDC, insetBy(r, 2));
}

void DrawFlatFace(HDC hDC, const RECT& rect, const FlatFace& face) {
    const RECT r = held(rect);
    if (hDC == 0 || isEmpty(r)) return;
    const Border border = bordersOf(face.iBorderColor, face.iBackColor, face.iOuterColor);
    DrawRect(hDC, insetBy(r, 1), border.back, false);
    if (face.bOnlyBottomBorder) {
        DrawRect(hDC, r, border.back, false);
        if (r.right - 1 > r.left + 1) {
            DrawLine(hDC, r.left + 1, r.bottom - 1, r.right - 1, r.bottom - 1, border.color);
        }
    } else {
        drawBorder(hDC, r, face.bRounded, border, {border.back, border.back});
    }
}
