#include "gfx/surfaceSteps.h"

#include "gfx/modCtlCommon_ctl_colors.h"
#include "gfx/modCtlCommon_ctl_shapes.h"
#include "platform/base/failure.h"

#include <utility>

namespace gfx {

void raiseSurfaceFailure(TextView operation, TextView message) {
    const Text source = u"clsMemDC." + Text(operation);
    throw Failure(kOwnError, source, source + u"." + Text(message));
}

HDC createSurfaceContext(TextView operation, HDC hLike) {
    const HDC hDC = platform::CreateCompatibleDC(hLike);
    if (hDC == 0) raiseSurfaceFailure(operation, u"HDC not created");
    return hDC;
}

void destroySurface(HDC& hDC, platform::HGDIOBJ& hOldBmp, HBITMAP& hBitmap) {
    if (hDC != 0) {
        if (hOldBmp != 0) platform::SelectObject(hDC, std::exchange(hOldBmp, 0));
        platform::DeleteDC(std::exchange(hDC, 0));
    }
    if (hBitmap != 0) platform::DeleteObject(std::exchange(hBitmap, 0));
}

platform::BITMAP bitmapOf(HBITMAP hBitmap) {
    platform::BITMAP bitmap;
    platform::GetObjectA(hBitmap, bitmap);
    return bitmap;
}

platform::BITMAP bitmapIn(HDC hDC) {
    return bitmapOf(platform::GetCurrentObject(hDC, platform::OBJ_BITMAP));
}

void copyBitmap(HDC hTo, HBITMAP hBitmap, SIZE size) {
    constexpr TextView kOperation = u"CloneFromhBmp";
    HDC hDC = createSurfaceContext(kOperation, hTo);
    platform::HGDIOBJ hOldBmp = platform::SelectObject(hDC, hBitmap);
    const bool selected = hOldBmp != 0;
    if (selected) platform::BitBlt(hTo, 0, 0, size.cx, size.cy, hDC, 0, 0, platform::SRCCOPY);
    HBITMAP notOurs = 0;
    destroySurface(hDC, hOldBmp, notOurs);
    if (!selected) raiseSurfaceFailure(kOperation, u"Bitmap not selected");
}

void paintSurface(HDC hTo, HDC hSurface, SIZE surface, PaintAreas areas, std::uint32_t eRop) {
    if (hSurface == 0) return;
    for (int* width : {&areas.lDestWidth, &areas.lSrcWidth}) {
        if (*width < 0) *width = surface.cx;
    }
    for (int* height : {&areas.lDestHeight, &areas.lSrcHeight}) {
        if (*height < 0) *height = surface.cy;
    }
    const PaintAreas& a = areas;
    if (a.lDestWidth == a.lSrcWidth && a.lDestHeight == a.lSrcHeight) {
        platform::BitBlt(hTo, a.lDestLeft, a.lDestTop, a.lDestWidth, a.lDestHeight, hSurface,
                         a.lSrcLeft, a.lSrcTop, eRop);
    } else {
        platform::StretchBlt(hTo, a.lDestLeft, a.lDestTop, a.lDestWidth, a.lDestHeight, hSurface,
                             a.lSrcLeft, a.lSrcTop, a.lSrcWidth, a.lSrcHeight, eRop);
    }
}

void fillSurface(HDC hSurface, SIZE surface, Color lColor) {
    DrawRect(hSurface, {0, 0, surface.cx, surface.cy}, lColor, true);
}

std::shared_ptr<platform::PictureObject> pictureOf(HBITMAP hBitmap) {
    if (hBitmap == 0) return nullptr;
    auto picture = platform::OleCreatePictureIndirect({platform::PICTYPE_BITMAP, hBitmap}, true);
    if (!picture) platform::DeleteObject(hBitmap);  // nobody else would
    return picture;
}

}  // namespace gfx
