// gfx/clsMEMDC.h: an off-screen surface compatible with the screen.
//
// The surface is empty at first, after Destroy, and after its bitmap was given away; drawing on an
// empty one does nothing. Sizes are pixels. Whatever makes a surface ends the present one first,
// and raises kOwnError with the source "clsMemDC." and the operation's name when the platform
// refuses a step; the surface then holds what the steps until there have made.
#pragma once
#include "gfx/types.h"
#include "platform/window/surface.h"

#include <memory>

class clsMEMDC {
public:
    clsMEMDC() = default;
    ~clsMEMDC() { Destroy(); }
    clsMEMDC(clsMEMDC&& other) noexcept { swap(other); }
    clsMEMDC& operator=(clsMEMDC&& other) noexcept {
        swap(other);
        return *this;
    }

    // A black surface. A size below 0 is 1; one of 0 gives a surface that takes a single black or
    // white pixel. iBkMode: platform::TRANSPARENT or OPAQUE.
    void CreateDC(int Width = -1, int Height = -1, int iBkMode = platform::TRANSPARENT);
    // A copy of a bitmap that is in no context; it stays the caller's.
    void CloneFromHBmp(HBITMAP hBmp, int iBkMode = platform::TRANSPARENT);
    // A copy of an area of a context, which may be this surface's own, with its background mode. A
    // width or height below 1 takes both from the bitmap in lHdc; what lies outside of it is black.
    void CloneFromHdc(HDC lHdc, int lSrcLeft = 0, int lSrcTop = 0, int lSrcWidth = -1,
                      int lSrcHeight = -1, std::uint32_t eRop = platform::SRCCOPY);

    // Another size, with the picture kept at the top left, cut or surrounded by black; or with the
    // picture stretched. A size below 1 stays as it is. iNewBkMode is for an empty surface, which
    // these create; any other keeps its mode.
    void ResizeCutDC(int NewWidth, int NewHeight, int iNewBkMode = platform::TRANSPARENT);
    void ResizeAdaptDC(int NewWidth, int NewHeight, int iNewBkMode = platform::TRANSPARENT);

    void Destroy();

    // 0 on an empty surface, where the setters do nothing. Colours may be those of the desktop.
    [[nodiscard]] int BkMode() const;
    void BkMode(int nMode);
    [[nodiscard]] Color BkColor() const;
    void BkColor(Color l);

    // Copies to another context, stretching when the sizes differ. A negative size is the
    // surface's own.
    void PaintPicture(HDC lHdc, int lDestLeft = 0, int lDestTop = 0, int lDestWidth = -1,
                      int lDestHeight = -1, int lSrcLeft = 0, int lSrcTop = 0, int lSrcWidth = -1,
                      int lSrcHeight = -1, std::uint32_t eRop = platform::SRCCOPY) const;
    void DrawBackColor(Color lColor);  // fills the whole surface

    [[nodiscard]] HDC Hdc() const { return m_hDC; }
    [[nodiscard]] HBITMAP hBmp() const { return m_hBmp; }
    [[nodiscard]] int Width() const { return m_iWidth; }
    [[nodiscard]] int Height() const { return m_iHeight; }

    // These give the bitmap away, to the caller or to a picture, and leave the surface empty. 0 and
    // none when it was empty before.
    [[nodiscard]] HBITMAP ReleasehBmp();
    [[nodiscard]] std::shared_ptr<platform::PictureObject> Picture();

private:
    void swap(clsMEMDC& other) noexcept;

    HDC m_hDC = 0;
    HBITMAP m_hBmp = 0;
    platform::HGDIOBJ m_hOldBmp = 0;
    int m_iWidth = 0, m_iHeight = 0;
};
