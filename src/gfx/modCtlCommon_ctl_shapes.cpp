#include "gfx/modCtlCommon_ctl_shapes.h"

#include "gfx/Selection.h"
#include "gfx/clsGdiHandle.h"
#include "gfx/gradient.h"
#include "gfx/modCtlCommon_ctl_colors.h"
#include "gfx/rounding.h"
#include "gfx/surfaceSteps.h"

#include <algorithm>
#include <limits>

namespace {

using gfx::Span;

constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();

std::int32_t plusOne(std::int32_t i) { return i < kMax ? i + 1 : i; }

// What a line from a to b without b covers; a alone when they are equal.
Span lineSpan(int a, int b) {
    if (a < b) return {a, b};
    return {a == b ? a : b + 1, plusOne(a)};
}

// ---- Gradients

struct Steps {  // of a gradient, from 0; wider than coordinates, whose differences they are
    std::int64_t begin = 0, end = 0;
};

// Calls f(begin, end, color) for those steps of a gradient of `count` steps that are in `shown`, in
// order, joining neighbours of one colour.
template <class F>
void forGradientRuns(std::int64_t count, Steps shown, Color from, Color to, F f) {
    const RedGreenBlue c1 = ColorToRGB(from), c2 = ColorToRGB(to);
    const float red1 = static_cast<float>(c1.red), red2 = static_cast<float>(c2.red);
    const float green1 = static_cast<float>(c1.green), green2 = static_cast<float>(c2.green);
    const float blue1 = static_cast<float>(c1.blue), blue2 = static_cast<float>(c2.blue);
    const float step = 1.0F / static_cast<float>(count);
    // The share of the first colour loses one step a row, in single precision and with all that
    // this rounds away; so it cannot be had without walking. A step too small to be felt ends it.
    float share = 1.0F;
    if (share - step == share) {
        f(shown.begin, shown.end, platform::rgb(c1.red, c1.green, c1.blue));
        return;
    }
    Color color = 0;
    std::int64_t begin = shown.begin;
    for (std::int64_t i = 0; i < shown.end; ++i, share = std::max(share - step, 0.0F)) {
        if (i < shown.begin) continue;
        const float rest = 1.0F - share;
        const Color next = platform::rgb(gfx::roundHalfEven(red1 * share + red2 * rest),
                                         gfx::roundHalfEven(green1 * share + green2 * rest),
                                         gfx::roundHalfEven(blue1 * share + blue2 * rest));
        if (next != color && i != begin) {
            f(begin, i, color);
            begin = i;
        }
        color = next;
    }
    if (begin < shown.end) f(begin, shown.end, color);
}

// The steps of a gradient over `along` that lie in `shown` and on a surface of `extent` pixels.
Steps visibleSteps(Span along, Span shown, std::int32_t extent) {
    return {std::int64_t{std::max({along.begin, shown.begin, 0})} - along.begin,
            std::int64_t{std::min({along.end, shown.end, extent})} - along.begin};
}

void fill(HDC hDC, const RECT& rect, Color plain) {
    const clsGdiHandle brush(platform::CreateSolidBrush(plain));
    platform::FillRect(hDC, rect, brush.Handle());
}

}  // namespace

void gfx::gradientRows(HDC hDC, Span columns, Span rows, Span shown, Color from, Color to) {
    if (hDC == 0 || rows.end <= rows.begin) return;
    const Steps steps = visibleSteps(rows, shown, bitmapIn(hDC).bmHeight);
    if (steps.end <= steps.begin) return;
    forGradientRuns(std::int64_t{rows.end} - rows.begin, steps, from, to,
                    [&](std::int64_t begin, std::int64_t end, Color color) {
                        const auto top = static_cast<std::int32_t>(rows.begin + begin);
                        const auto bottom = static_cast<std::int32_t>(rows.begin + end);
                        fill(hDC, {columns.begin, top, columns.end, bottom}, color);
                    });
}

void gfx::gradientColumns(HDC hDC, Span rows, Span columns, Span shown, Color from, Color to) {
    if (hDC == 0 || columns.end <= columns.begin) return;
    const Steps steps = visibleSteps(columns, shown, bitmapIn(hDC).bmWidth);
    if (steps.end <= steps.begin) return;
    forGradientRuns(std::int64_t{columns.end} - columns.begin, steps, from, to,
                    [&](std::int64_t begin, std::int64_t end, Color color) {
                        const auto left = static_cast<std::int32_t>(columns.begin + begin);
                        const auto right = static_cast<std::int32_t>(columns.begin + end);
                        fill(hDC, {left, rows.begin, right, rows.end}, color);
                    });
}

void GradientV(HDC hDC, int x1, int y1, int x2, int y2, Color iColorFrom, Color iColorTo) {
    gfx::gradientRows(hDC, lineSpan(x1, x2), {y1, y2}, {y1, y2}, iColorFrom, iColorTo);
}

void GradientVRect(HDC hDC, const RECT& rect, Color iColorFrom, Color iColorTo) {
    GradientV(hDC, rect.left, rect.top, rect.right, rect.bottom, iColorFrom, iColorTo);
}

void GradientH(HDC hDC, int x1, int y1, int x2, int y2, Color iColorFrom, Color iColorTo) {
    gfx::gradientColumns(hDC, lineSpan(y1, y2), {x1, x2}, {x1, x2}, iColorFrom, iColorTo);
}

void GradientHRect(HDC hDC, const RECT& rect, Color iColorFrom, Color iColorTo) {
    GradientH(hDC, rect.left, rect.top, rect.right, rect.bottom, iColorFrom, iColorTo);
}

// ---- Rectangles, lines, pixels

void DrawRect(HDC hDC, const RECT& rect, Color iColor, bool bFill) {
    if (hDC == 0) return;
    const clsGdiHandle brush(platform::CreateSolidBrush(TranslateColor(iColor)));
    if (bFill) {
        platform::FillRect(hDC, rect, brush.Handle());
    } else {
        platform::FrameRect(hDC, rect, brush.Handle());
    }
}

void DrawRectXY(HDC hDC, int x1, int y1, int x2, int y2, Color iColor, bool bFill) {
    DrawRect(hDC, {x1, y1, x2, y2}, iColor, bFill);
}

void DrawLine(HDC hDC, int x1, int y1, int x2, int y2, Color iColor, int iWidth, int iStyle) {
    if (hDC == 0) return;
    const clsGdiHandle pen(platform::CreatePen(iStyle, iWidth, TranslateColor(iColor)));
    const gfx::Selection selected(hDC, pen.Handle());
    if (!selected.done()) return;
    platform::MoveToEx(hDC, x1, y1);
    platform::LineTo(hDC, x2, y2);
}

void DrawPixel(HDC hDC, int x, int y, Color iColor) {
    if (hDC != 0) platform::SetPixel(hDC, x, y, TranslateColor(iColor));
}

void DrawFocus(HDC hDC, const RECT& rect) {
    if (hDC != 0) platform::DrawFocusRect(hDC, rect);
}

// ---- Rounded rectangles

namespace {

// The width of the ellipse whose quarters are corners of that radius.
int ellipseOf(int radius) { return std::clamp(radius, 0, kMax / 2) * 2; }

}  // namespace

void DrawRoundRect(HDC hDC, int x1, int y1, int x2, int y2, const RoundRectStyle& style) {
    if (hDC == 0) return;
    const bool outline = style.iPenWidth > 0;
    // Without a pen the platform draws one pixel less.
    const int right = outline ? x2 : plusOne(x2), bottom = outline ? y2 : plusOne(y2);
    const clsGdiHandle brush(
        style.bFill ? platform::CreateSolidBrush(TranslateColor(style.iFillColor)) : 0);
    const clsGdiHandle pen(platform::CreatePen(outline ? style.iPenStyle : platform::PS_NULL,
                                               outline ? style.iPenWidth : 1,
                                               TranslateColor(style.iPenColor)));
    const gfx::Selection brushSelected(
        hDC, style.bFill ? brush.Handle() : platform::GetStockObject(platform::NULL_BRUSH));
    const gfx::Selection penSelected(hDC, pen.Handle());
    if (!brushSelected.done() || !penSelected.done()) return;
    const int ellipse = ellipseOf(style.iRadius);
    platform::RoundRect(hDC, x1, y1, right, bottom, ellipse, ellipse);
}

void DrawRoundRectR(HDC hDC, const RECT& rect, const RoundRectStyle& style) {
    DrawRoundRect(hDC, rect.left, rect.top, rect.right, rect.bottom, style);
}

HRGN CreateRoundRegion(int iWidth, int iHeight, int iRadius) {
    const int ellipse = ellipseOf(iRadius);
    return platform::CreateRoundRectRgn(0, 0, plusOne(iWidth), plusOne(iHeight), ellipse, ellipse);
}
