// Filled and framed rectangles, pixels, rounded rectangles and their regions.
#include "platform/window/recorder.h"
#include "platform/window/surface_pen.h"

#include <algorithm>
#include <cmath>

namespace platform {
namespace {

void fillColor(DcRecord& dc, const RECT& rect, COLORREF color) {
    const RECT area = intersection(rect, dc.clip);
    if (!isEmpty(area)) fillValue(*dc.bitmap, area, valueOf(*dc.bitmap, color));
}

std::string recordedBrush(const BrushRecord& brush) {
    return brush.null ? "none" : recordedColor(brush.color);
}

// ---- Rounded rectangles

// A rectangle whose corners are quarters of an ellipse. Coordinates are 64 bits wide, so that
// widening and narrowing it needs no care.
struct RoundShape {
    std::int64_t left = 0, top = 0, right = 0, bottom = 0;
    std::int64_t ellipseWidth = 0, ellipseHeight = 0;  // at most the rectangle's

    RoundShape(std::int64_t l, std::int64_t t, std::int64_t r, std::int64_t b, std::int64_t ew,
               std::int64_t eh)
        : left(l), top(t), right(r), bottom(b),
          ellipseWidth(std::clamp<std::int64_t>(ew, 0, std::max<std::int64_t>(r - l, 0))),
          ellipseHeight(std::clamp<std::int64_t>(eh, 0, std::max<std::int64_t>(b - t, 0))) {}

    [[nodiscard]] bool empty() const { return right <= left || bottom <= top; }
    // How many pixels the row y, inside of the rectangle, is shorter at each side.
    [[nodiscard]] std::int64_t inset(std::int64_t y) const {
        const std::int64_t fromEdge = std::min(y - top, bottom - 1 - y);
        if (fromEdge * 2 + 1 >= ellipseHeight || ellipseWidth == 0) return 0;
        const double radius = static_cast<double>(ellipseWidth) / 2;
        const double height = static_cast<double>(ellipseHeight) / 2;
        const double up = (height - static_cast<double>(fromEdge) - 0.5) / height;
        const double edge = radius - radius * std::sqrt(1 - up * up);
        // The first pixel whose middle is not outside; the small number takes rounding errors.
        return std::max<std::int64_t>(0, std::llround(std::ceil(edge - 0.5 - 1e-9)));
    }
    // How far the outline reaches in from the shape's edge in row y: to where the row further out
    // begins, so that the line has no holes and no doubled pixels.
    [[nodiscard]] std::int64_t outline(std::int64_t y) const {
        const std::int64_t fromEdge = std::min(y - top, bottom - 1 - y);
        if (fromEdge == 0) return right - left;
        return std::max(inset(y) + 1, inset(top + fromEdge - 1));
    }
};

// Fills the pixels [left, right) of the row y as far as they are visible.
void fillRun(DcRecord& dc, std::int64_t left, std::int64_t right, std::int32_t y,
             std::uint32_t value) {
    const RECT& clip = dc.clip;
    fillValue(
        *dc.bitmap,
        {between(left, clip.left, clip.right), y, between(right, clip.left, clip.right), y + 1},
        value);
}

template <class F> void forVisibleRows(const DcRecord& dc, const RoundShape& shape, F f) {
    const RECT& clip = dc.clip;
    const std::int32_t end = between(shape.bottom, clip.top, clip.bottom);
    for (std::int32_t y = between(shape.top, clip.top, clip.bottom); y < end; ++y) f(y);
}

void fillShape(DcRecord& dc, const RoundShape& shape, COLORREF color) {
    if (shape.empty()) return;
    const std::uint32_t value = valueOf(*dc.bitmap, color);
    forVisibleRows(dc, shape, [&](std::int32_t y) {
        const std::int64_t inset = shape.inset(y);
        fillRun(dc, shape.left + inset, shape.right - inset, y, value);
    });
}

// The outline of a solid pen of one pixel.
void drawThinOutline(DcRecord& dc, const RoundShape& shape, COLORREF color) {
    const std::uint32_t value = valueOf(*dc.bitmap, color);
    forVisibleRows(dc, shape, [&](std::int32_t y) {
        const std::int64_t inset = shape.inset(y);
        const std::int64_t reach = std::min(shape.outline(y), shape.right - shape.left - inset);
        fillRun(dc, shape.left + inset, shape.left + reach, y, value);
        fillRun(dc, shape.right - reach, shape.right - inset, y, value);
    });
}

// The same with a wide pen: what lies between an outer and an inner shape.
void drawWideOutline(DcRecord& dc, const RoundShape& shape, const PenRecord& pen) {
    const std::int64_t before = pen.width / 2, behind = (pen.width - 1) / 2;
    const RoundShape outer(shape.left - before, shape.top - before, shape.right + behind,
                           shape.bottom + behind, shape.ellipseWidth + pen.width - 1,
                           shape.ellipseHeight + pen.width - 1);
    const RoundShape inner(shape.left + behind + 1, shape.top + behind + 1,
                           shape.right - 1 - before, shape.bottom - 1 - before,
                           shape.ellipseWidth - pen.width - 1, shape.ellipseHeight - pen.width - 1);
    const std::uint32_t value = valueOf(*dc.bitmap, pen.color);
    forVisibleRows(dc, outer, [&](std::int32_t y) {
        const std::int64_t inset = outer.inset(y);
        if (inner.empty() || y < inner.top || y >= inner.bottom) {
            fillRun(dc, outer.left + inset, outer.right - inset, y, value);
            return;
        }
        const std::int64_t hole = inner.inset(y);
        fillRun(dc, outer.left + inset, inner.left + hole, y, value);
        fillRun(dc, inner.right - hole, outer.right - inset, y, value);
    });
}

constexpr std::int64_t kWalked = 100'000;

// The outline of a patterned pen, clockwise from the top left corner's end on.
void drawPatternedOutline(DcRecord& dc, const RoundShape& shape) {
    PatternedPen pen(dc, 0);
    const std::int64_t width = shape.right - shape.left;
    const std::int64_t topInset = shape.inset(shape.top);
    pen.run(shape.left + topInset, shape.top, 1, 0, width - 2 * topInset);
    if (shape.bottom - shape.top == 1) return;

    // The runs of the right side go down, then those of the left side up; outwards in the half that
    // they come to first, inwards in the other.
    const auto side = [&](std::int64_t y, bool right, bool outwards) {
        const std::int64_t inset = shape.inset(y);
        const std::int64_t length = std::min(shape.outline(y), width - inset) - inset;
        const std::int64_t outer = right ? shape.right - 1 - inset : shape.left + inset;
        const int out = right ? 1 : -1;
        pen.run(outwards ? outer - out * (length - 1) : outer, y, outwards ? out : -out, 0, length);
    };
    // So far outside of the surface nobody sees where in its pattern the line arrives.
    const std::int64_t begin = std::max(shape.top + 1, std::int64_t{dc.clip.top} - kWalked);
    const std::int64_t end = std::min(shape.bottom - 1, std::int64_t{dc.clip.bottom} + kWalked);
    const std::int64_t middle = shape.top + (shape.bottom - shape.top) / 2;
    for (std::int64_t y = begin; y < end; ++y) side(y, true, y < middle);
    pen.run(shape.right - 1 - topInset, shape.bottom - 1, -1, 0, width - 2 * topInset);
    if (width == 1) return;
    for (std::int64_t y = end - 1; y >= begin; --y) side(y, false, y >= middle);
}

}  // namespace

// ---- Rectangles and pixels

bool FillRect(HDC hDC, const RECT& rect, HBRUSH hBrush) {
    DcRecord* dc = dcOf(hDC);
    const BrushRecord* brush = brushTable().find(hBrush);
    if (dc == nullptr || brush == nullptr) return false;
    if (recording()) {
        record(hDC, "FillRect %s %s", recordedRect(rect).c_str(), recordedBrush(*brush).c_str());
    }
    if (brush->null || isEmpty(rect)) return true;
    fillColor(*dc, rect, brush->color);
    drawn(*dc);
    return true;
}

bool FrameRect(HDC hDC, const RECT& rect, HBRUSH hBrush) {
    DcRecord* dc = dcOf(hDC);
    const BrushRecord* brush = brushTable().find(hBrush);
    if (dc == nullptr || brush == nullptr) return false;
    if (recording()) {
        record(hDC, "FrameRect %s %s", recordedRect(rect).c_str(), recordedBrush(*brush).c_str());
    }
    if (brush->null || isEmpty(rect)) return true;
    const RECT& r = rect;
    fillColor(*dc, {r.left, r.top, r.right, r.top + 1}, brush->color);
    fillColor(*dc, {r.left, r.bottom - 1, r.right, r.bottom}, brush->color);
    fillColor(*dc, {r.left, r.top, r.left + 1, r.bottom}, brush->color);
    fillColor(*dc, {r.right - 1, r.top, r.right, r.bottom}, brush->color);
    drawn(*dc);
    return true;
}

bool DrawFocusRect(HDC hDC, const RECT& rect) {
    DcRecord* dc = dcOf(hDC);
    if (dc == nullptr) return false;
    if (recording()) record(hDC, "DrawFocusRect %s", recordedRect(rect).c_str());
    const RECT area = intersection(rect, dc->clip);
    if (isEmpty(rect) || isEmpty(area)) return true;

    BitmapRecord& bitmap = *dc->bitmap;
    const std::uint32_t all =
        bitmap.bitsPerPixel >= 24 ? 0xFFFFFFU : (1U << bitmap.bitsPerPixel) - 1;
    const auto invert = [&](int x, int y) {
        if (((x ^ y) & 1) == 0) return;
        std::uint32_t value = 0;
        readValues(bitmap, x, y, {&value, 1});
        value ^= all;
        writeValues(bitmap, x, y, {&value, 1});
    };
    for (int y = area.top; y < area.bottom; ++y) {
        if (y == rect.top || y == rect.bottom - 1) {
            for (int x = area.left; x < area.right; ++x) invert(x, y);
            continue;
        }
        if (area.left == rect.left) invert(rect.left, y);
        if (area.right == rect.right && rect.right - 1 != rect.left) invert(rect.right - 1, y);
    }
    drawn(*dc);
    return true;
}

COLORREF SetPixel(HDC hDC, int x, int y, COLORREF color) {
    DcRecord* dc = dcOf(hDC);
    if (dc == nullptr) return -1;
    if (recording()) record(hDC, "SetPixel %d,%d %s", x, y, recordedColor(color).c_str());
    if (!contains(dc->clip, x, y)) return -1;
    BitmapRecord& bitmap = *dc->bitmap;
    std::uint32_t pixel = pixelOf(color);
    if (bitmap.bitsPerPixel == 32) {
        bitmap.row(y)[x] = pixel;
    } else {
        writePixels(bitmap, x, y, {&pixel, 1});
        readPixels(bitmap, x, y, {&pixel, 1});
    }
    drawn(*dc);
    return colorOf(pixel);
}

COLORREF GetPixel(HDC hDC, int x, int y) {
    const DcRecord* dc = dcOf(hDC);
    if (dc == nullptr) return -1;
    if (!contains(dc->clip, x, y)) return -1;
    std::uint32_t pixel = 0;
    readPixels(*dc->bitmap, x, y, {&pixel, 1});
    return colorOf(pixel);
}

// ---- Rounded rectangles

bool RoundRect(HDC hDC, int left, int top, int right, int bottom, int ellipseWidth,
               int ellipseHeight) {
    DcRecord* dc = dcOf(hDC);
    if (dc == nullptr) return false;
    const PenRecord& pen = *dc->pen;
    if (recording()) {
        record(hDC, "RoundRect %d,%d,%d,%d %d,%d %s brush %s", left, top, right, bottom,
               ellipseWidth, ellipseHeight, recordedPen(pen).c_str(),
               recordedBrush(*dc->brush).c_str());
    }
    const std::int64_t less = pen.style == PS_NULL ? 1 : 0;
    const RoundShape shape(left, top, right - less, bottom - less, ellipseWidth, ellipseHeight);
    if (shape.empty() || isEmpty(dc->clip)) return true;
    if (!dc->brush->null) fillShape(*dc, shape, dc->brush->color);
    if (pen.style == PS_SOLID && pen.width == 1) {
        drawThinOutline(*dc, shape, pen.color);
    } else if (pen.style == PS_SOLID) {
        drawWideOutline(*dc, shape, pen);
    } else if (pen.style != PS_NULL) {
        drawPatternedOutline(*dc, shape);
    }
    drawn(*dc);
    return true;
}

HRGN CreateRoundRectRgn(int left, int top, int right, int bottom, int ellipseWidth,
                        int ellipseHeight) {
    const RoundShape shape(left, top, std::int64_t{right} - 1, std::int64_t{bottom} - 1,
                           ellipseWidth, ellipseHeight);
    RegionRecord region;
    if (shape.right - shape.left > kMaxBitmapExtent ||
        shape.bottom - shape.top > kMaxBitmapExtent) {
        return 0;
    }
    if (!shape.empty()) {
        const auto add = [&](std::int64_t y, std::int64_t end) {
            const std::int64_t inset = shape.inset(y);
            const RECT band{
                static_cast<std::int32_t>(shape.left + inset), static_cast<std::int32_t>(y),
                static_cast<std::int32_t>(shape.right - inset), static_cast<std::int32_t>(end)};
            RECT* last = region.rects.empty() ? nullptr : &region.rects.back();
            if (last != nullptr && last->left == band.left && last->right == band.right) {
                last->bottom = band.bottom;
            } else if (band.left < band.right) {
                region.rects.push_back(band);
            }
        };
        // The rows between the corners are one band.
        const std::int64_t corner =
            std::min((shape.ellipseHeight + 1) / 2, (shape.bottom - shape.top) / 2);
        const std::int64_t upper = shape.top + corner, lower = shape.bottom - corner;
        for (std::int64_t y = shape.top; y < upper; ++y) add(y, y + 1);
        if (upper < lower) add(upper, lower);
        for (std::int64_t y = lower; y < shape.bottom; ++y) add(y, y + 1);
    }
    return addObject(regionTable(), std::move(region));
}

std::span<const RECT> regionRects(HRGN hRgn) {
    const RegionRecord* region = regionTable().find(hRgn);
    return region != nullptr ? std::span<const RECT>(region->rects) : std::span<const RECT>();
}

bool regionContains(HRGN hRgn, POINT point) {
    const auto rects = regionRects(hRgn);
    return std::any_of(rects.begin(), rects.end(),
                       [&](const RECT& r) { return contains(r, point.x, point.y); });
}

}  // namespace platform
