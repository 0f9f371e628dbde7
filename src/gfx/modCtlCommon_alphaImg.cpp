#include "gfx/modCtlCommon_alphaImg.h"

#include "gfx/clsGdiHandle.h"
#include "gfx/rounding.h"
#include "platform/base/failure.h"

#include <algorithm>
#include <array>
#include <limits>

namespace {

// ---- The pale grey

// Each channel goes nearly all the way to light grey first, then the three become one.
std::uint8_t paled(std::uint8_t channel) {
    static const auto table = [] {
        std::array<std::uint8_t, 256> made{};
        for (std::size_t c = 0; c < made.size(); ++c) {
            made[c] = static_cast<std::uint8_t>(
                gfx::roundHalfEven(static_cast<double>(c) * 0.3 + 192 * 0.7));
        }
        return made;
    }();
    return table[channel];
}

std::uint8_t grayed(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    return static_cast<std::uint8_t>(
        gfx::roundHalfEven(paled(red) * 0.3 + paled(green) * 0.59 + paled(blue) * 0.11));
}

Color grayed(Color plain) {
    const std::uint8_t v = grayed(static_cast<std::uint8_t>(platform::redOf(plain)),
                                  static_cast<std::uint8_t>(platform::greenOf(plain)),
                                  static_cast<std::uint8_t>(platform::blueOf(plain)));
    return platform::rgb(v, v, v);
}

// ---- Bitmaps

// Kept from call to call so that a picture needs no memory of its own; empty between calls.
struct WorkSurfaces {
    clsDIBSection picture, background;
};
WorkSurfaces& workSurfaces() {
    static WorkSurfaces surfaces;
    return surfaces;
}
// Empties the work surfaces at the end of a call, however it comes.
struct WorkInUse {
    WorkSurfaces& surfaces = workSurfaces();
    WorkInUse() = default;
    ~WorkInUse() {
        surfaces.picture.Destroy();
        surfaces.background.Destroy();
    }
    WorkInUse(const WorkInUse&) = delete;
    WorkInUse& operator=(const WorkInUse&) = delete;
};

// Width and height of an area, as far as 32 bits hold them; below 1 when it is empty.
SIZE extentOf(int X1, int Y1, int X2, int Y2) {
    const auto held = [](std::int64_t extent) {
        return static_cast<std::int32_t>(
            std::clamp<std::int64_t>(extent, 0, std::numeric_limits<std::int32_t>::max()));
    };
    return {held(std::int64_t{X2} - X1), held(std::int64_t{Y2} - Y1)};
}

void overlapBitmap(HDC lHdc, POINT at, SIZE area, HBITMAP hBitmap, const ImagePlacing& placing) {
    const WorkInUse work;
    clsDIBSection& picture = work.surfaces.picture;
    clsDIBSection& background = work.surfaces.background;
    picture.CloneFromHBmp(hBitmap, 32);

    const auto drawnExtent = [](int wanted, int whole, int room) {
        return std::min(wanted < 0 || wanted > whole ? whole : wanted, room);
    };
    const int width = drawnExtent(placing.iPicWidth, picture.Width(), area.cx);
    const int height = drawnExtent(placing.iPicHeight, picture.Height(), area.cy);
    if (width < 1 || height < 1) return;
    const int offX = (area.cx - width) / 2, offY = (area.cy - height) / 2;
    const int left = at.x + offX;
    if (!placing.bPicTransparent && !placing.bPicGrayed) {
        picture.PaintPicture(lHdc, left, at.y + offY, width, height, 0, 0, width, height);
        return;
    }

    Color leftOut = -1;  // no pixel has that
    if (placing.bPicTransparent) {
        leftOut = placing.lPicTranspColor != -1
                      ? placing.lPicTranspColor
                      : platform::GetPixel(picture.Hdc(), placing.lPicXTransp, placing.lPicYTransp);
    }
    // Rows of a section count from the bottom, so here offY does as well. Only the part of the
    // area that the picture covers is read and written.
    const int top = at.y + (area.cy - offY - height);
    background.CloneFromHdc(lHdc, 32, nullptr, left, top, width, height);
    const PixelView from = pvBuildSA3D(picture), to = pvBuildSA3D(background);
    const int base = picture.Height() - height;  // what is cut off is at the bottom
    for (int y = 0; y < height; ++y) {
        const std::uint8_t* source = from.pixel(base + y, 0);
        std::uint8_t* target = to.pixel(y, 0);
        for (int x = 0; x < width; ++x, source += 4, target += 4) {
            const std::uint8_t blue = source[0], green = source[1], red = source[2];
            if (platform::rgb(red, green, blue) == leftOut) continue;
            if (placing.bPicGrayed) {
                target[0] = target[1] = target[2] = grayed(red, green, blue);
            } else {
                target[0] = blue;
                target[1] = green;
                target[2] = red;
            }
        }
    }
    background.PaintPicture(lHdc, left, top);
}

// ---- Icons

// The two images of an icon, both there: a monochrome icon has its picture below its mask.
IconDibs wholeIcon(HICON hIcon) {
    IconDibs icon = pvGetIconDibs(hIcon);
    clsDIBSection &mask = icon.oMask, &color = icon.oColor;
    if (color.hDib() == 0) {
        const int extent = mask.Width();
        const int half = static_cast<int>(gfx::roundedHalf(mask.Height()));
        color.CreateDC(extent, extent, 24);
        mask.PaintPicture(color.Hdc(), 0, 0, extent, extent, 0, half, extent, extent);
    }
    if (mask.hDib() == 0) mask.CloneFromDib(color);
    return icon;
}

void overlapIcon(HDC lHdc, POINT at, SIZE area, HICON hIcon, const ImagePlacing& placing) {
    const IconDibs icon = wholeIcon(hIcon);
    const int columns = icon.oColor.Width(), rows = icon.oColor.Height();
    const int width = placing.iPicWidth < 0 ? area.cx : placing.iPicWidth;
    const int height = placing.iPicHeight < 0 ? area.cy : placing.iPicHeight;
    // The place itself is rounded, not the distance: it depends on whether the area starts odd.
    const auto centred = [](std::int64_t start, int room, int extent) {
        return gfx::roundedHalf(2 * start + room - extent);
    };
    const std::int64_t left = centred(at.x, area.cx, std::min(columns, width));
    const std::int64_t top = centred(at.y, area.cy, std::min(rows, height));
    for (int c = 0; c < columns && c <= width; ++c) {
        for (int r = 0; r < rows && r <= height; ++r) {
            const bool masked = platform::GetPixel(icon.oMask.Hdc(), c, r) != 0;
            if (masked && placing.bPicTransparent) continue;
            const Color color = platform::GetPixel(icon.oColor.Hdc(), c, r);
            platform::SetPixel(lHdc, static_cast<int>(left + c), static_cast<int>(top + r),
                               placing.bPicGrayed ? grayed(color) : color);
        }
    }
}

}  // namespace

PixelView pvBuildSA3D(const clsDIBSection& oDib) {
    if (oDib.Bpp() != 32 || oDib.BitsPtr() == nullptr) {
        throw Failure(kOwnError, u"pvBuildSA3D", u"Cannot create Safe Array for this DIB bpp");
    }
    return {oDib.BitsPtr(), oDib.Width()};
}

IconDibs pvGetIconDibs(HICON hIcon) {
    IconDibs icon;
    platform::ICONINFO info;
    if (!platform::GetIconInfo(hIcon, info)) return icon;
    const clsGdiHandle mask(info.hbmMask), color(info.hbmColor);
    icon.bIsIcon = info.fIcon;
    icon.iXHotSpot = static_cast<int>(info.xHotspot);
    icon.iYHotSpot = static_cast<int>(info.yHotspot);
    if (mask.Handle() != 0) icon.oMask.CloneFromHBmp(mask.Handle(), -1);
    if (color.Handle() != 0) icon.oColor.CloneFromHBmp(color.Handle(), -1);
    return icon;
}

void pvOverlapIcon(HDC lHdc, int X1, int Y1, int X2, int Y2, const platform::PictureObject* oPic,
                   const ImagePlacing& placing) {
    const SIZE area = extentOf(X1, Y1, X2, Y2);
    if (oPic == nullptr || oPic->Handle() == 0 || oPic->Type() != platform::PICTYPE_ICON ||
        area.cx < 1 || area.cy < 1) {
        return;
    }
    try {
        overlapIcon(lHdc, {X1, Y1}, area, oPic->Handle(), placing);
    } catch (...) {  // NOLINT(bugprone-empty-catch): a picture that is missing says it
    }
}

void pvOverlapImage(HDC lHdc, int X1, int Y1, int X2, int Y2, const platform::PictureObject* oPic,
                    const ImagePlacing& placing) {
    if (oPic == nullptr || oPic->Handle() == 0) return;
    if (oPic->Type() == platform::PICTYPE_ICON) {
        pvOverlapIcon(lHdc, X1, Y1, X2, Y2, oPic, placing);
        return;
    }
    const SIZE area = extentOf(X1, Y1, X2, Y2);
    if (area.cx < 1 || area.cy < 1) return;
    try {
        overlapBitmap(lHdc, {X1, Y1}, area, oPic->Handle(), placing);
    } catch (...) {  // NOLINT(bugprone-empty-catch): a picture that is missing says it
    }
}

void pvOverlapImageRect(HDC lHdc, const RECT& rect, const platform::PictureObject* oPic,
                        const ImagePlacing& placing) {
    pvOverlapImage(lHdc, rect.left, rect.top, rect.right, rect.bottom, oPic, placing);
}
