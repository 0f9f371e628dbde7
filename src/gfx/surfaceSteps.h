// gfx/surfaceSteps.h: the steps that both kinds of surface share, for the sources of this folder.
#pragma once
#include "gfx/types.h"
#include "platform/window/surface.h"

#include <memory>

namespace gfx {

// The failure of one step of a surface's operation; both kinds of surface have this one source.
[[noreturn]] void raiseSurfaceFailure(TextView operation, TextView message);

// The desktop's context for the length of a scope: surfaces are made like it.
class DesktopContext {
public:
    DesktopContext() = default;
    ~DesktopContext() { platform::ReleaseDC(platform::GetDesktopWindow(), m_hDC); }
    DesktopContext(const DesktopContext&) = delete;
    DesktopContext& operator=(const DesktopContext&) = delete;
    [[nodiscard]] HDC hdc() const { return m_hDC; }

private:
    HDC m_hDC = platform::GetDC(platform::GetDesktopWindow());
};

// A memory context compatible with another. Raises "HDC not created".
[[nodiscard]] HDC createSurfaceContext(TextView operation, HDC hLike);

// Takes out what a surface displaced and ends context and bitmap, as far as they are there; all
// three are 0 then.
void destroySurface(HDC& hDC, platform::HGDIOBJ& hOldBmp, HBITMAP& hBitmap);

// Description of a bitmap; all 0 for an unknown one.
[[nodiscard]] platform::BITMAP bitmapOf(HBITMAP hBitmap);
[[nodiscard]] platform::BITMAP bitmapIn(HDC hDC);  // of the one that is selected

// Copies a bitmap of nobody's context to the top left corner of a surface. Raises as
// "CloneFromhBmp".
void copyBitmap(HDC hTo, HBITMAP hBitmap, SIZE size);

// What PaintPicture says; a negative size is that of the surface.
struct PaintAreas {
    int lDestLeft, lDestTop, lDestWidth, lDestHeight;
    int lSrcLeft, lSrcTop, lSrcWidth, lSrcHeight;
};
void paintSurface(HDC hTo, HDC hSurface, SIZE surface, PaintAreas areas, std::uint32_t eRop);

void fillSurface(HDC hSurface, SIZE surface, Color lColor);

// A picture that owns the bitmap; none for 0.
[[nodiscard]] std::shared_ptr<platform::PictureObject> pictureOf(HBITMAP hBitmap);

}  // namespace gfx
