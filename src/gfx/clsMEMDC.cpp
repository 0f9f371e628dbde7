#include "gfx/clsMEMDC.h"

#include "gfx/modCtlCommon_ctl_colors.h"
#include "gfx/surfaceSteps.h"

#include <utility>

void clsMEMDC::swap(clsMEMDC& other) noexcept {
    std::swap(m_hDC, other.m_hDC);
    std::swap(m_hBmp, other.m_hBmp);
    std::swap(m_hOldBmp, other.m_hOldBmp);
    std::swap(m_iWidth, other.m_iWidth);
    std::swap(m_iHeight, other.m_iHeight);
}

void clsMEMDC::CreateDC(int Width, int Height, int iBkMode) {
    constexpr TextView kOperation = u"CreateDC";
    Destroy();
    m_iWidth = Width < 0 ? 1 : Width;
    m_iHeight = Height < 0 ? 1 : Height;
    const gfx::DesktopContext desktop;
    m_hDC = gfx::createSurfaceContext(kOperation, desktop.hdc());
    m_hBmp = platform::CreateCompatibleBitmap(desktop.hdc(), m_iWidth, m_iHeight);
    if (m_hBmp == 0) gfx::raiseSurfaceFailure(kOperation, u"hBmp not created");
    m_hOldBmp = platform::SelectObject(m_hDC, m_hBmp);
    if (m_hOldBmp == 0) gfx::raiseSurfaceFailure(kOperation, u"Bitmap not selected");
    platform::SetStretchBltMode(m_hDC, platform::COLORONCOLOR);
    BkMode(iBkMode);
}

void clsMEMDC::CloneFromHBmp(HBITMAP hBmp, int iBkMode) {
    const platform::BITMAP bitmap = gfx::bitmapOf(hBmp);
    CreateDC(bitmap.bmWidth, bitmap.bmHeight, iBkMode);
    gfx::copyBitmap(m_hDC, hBmp, {bitmap.bmWidth, bitmap.bmHeight});
}

void clsMEMDC::CloneFromHdc(HDC lHdc, int lSrcLeft, int lSrcTop, int lSrcWidth, int lSrcHeight,
                            std::uint32_t eRop) {
    if (lHdc != 0 && lHdc == m_hDC) {  // CreateDC would end what is to be copied
        const clsMEMDC before = std::move(*this);
        CloneFromHdc(before.m_hDC, lSrcLeft, lSrcTop, lSrcWidth, lSrcHeight, eRop);
        return;
    }
    if (lSrcWidth < 1 || lSrcHeight < 1) {
        const platform::BITMAP source = gfx::bitmapIn(lHdc);
        lSrcWidth = source.bmWidth;
        lSrcHeight = source.bmHeight;
    }
    CreateDC(lSrcWidth, lSrcHeight, platform::GetBkMode(lHdc));
    platform::BitBlt(m_hDC, 0, 0, lSrcWidth, lSrcHeight, lHdc, lSrcLeft, lSrcTop, eRop);
}

void clsMEMDC::ResizeCutDC(int NewWidth, int NewHeight, int iNewBkMode) {
    if (m_hDC == 0) {
        CreateDC(NewWidth, NewHeight, iNewBkMode);
        return;
    }
    const clsMEMDC before = std::move(*this);
    CloneFromHdc(before.m_hDC, 0, 0, NewWidth < 1 ? before.m_iWidth : NewWidth,
                 NewHeight < 1 ? before.m_iHeight : NewHeight);
}

void clsMEMDC::ResizeAdaptDC(int NewWidth, int NewHeight, int iNewBkMode) {
    if (m_hDC == 0) {
        CreateDC(NewWidth, NewHeight, iNewBkMode);
        return;
    }
    const clsMEMDC before = std::move(*this);
    CreateDC(NewWidth < 1 ? before.m_iWidth : NewWidth,
             NewHeight < 1 ? before.m_iHeight : NewHeight, before.BkMode());
    before.PaintPicture(m_hDC, 0, 0, m_iWidth, m_iHeight);
}

void clsMEMDC::Destroy() {
    gfx::destroySurface(m_hDC, m_hOldBmp, m_hBmp);
    m_iWidth = m_iHeight = 0;
}

int clsMEMDC::BkMode() const { return m_hDC != 0 ? platform::GetBkMode(m_hDC) : 0; }

void clsMEMDC::BkMode(int nMode) {
    if (m_hDC != 0) platform::SetBkMode(m_hDC, nMode);
}

Color clsMEMDC::BkColor() const { return m_hDC != 0 ? platform::GetBkColor(m_hDC) : 0; }

void clsMEMDC::BkColor(Color l) {
    if (m_hDC != 0) platform::SetBkColor(m_hDC, TranslateColor(l));
}

void clsMEMDC::PaintPicture(HDC lHdc, int lDestLeft, int lDestTop, int lDestWidth, int lDestHeight,
                            int lSrcLeft, int lSrcTop, int lSrcWidth, int lSrcHeight,
                            std::uint32_t eRop) const {
    gfx::paintSurface(
        lHdc, m_hDC, {m_iWidth, m_iHeight},
        {lDestLeft, lDestTop, lDestWidth, lDestHeight, lSrcLeft, lSrcTop, lSrcWidth, lSrcHeight},
        eRop);
}

void clsMEMDC::DrawBackColor(Color lColor) {
    gfx::fillSurface(m_hDC, {m_iWidth, m_iHeight}, lColor);
}

HBITMAP clsMEMDC::ReleasehBmp() {
    const HBITMAP hBitmap = std::exchange(m_hBmp, 0);
    Destroy();
    return hBitmap;
}

std::shared_ptr<platform::PictureObject> clsMEMDC::Picture() {
    return gfx::pictureOf(ReleasehBmp());
}
