#include "gfx/clsDIBSection.h"

#include "gfx/modCtlCommon_ctl_colors.h"
#include "gfx/surfaceSteps.h"
#include "platform/base/failure.h"

#include <algorithm>
#include <utility>

namespace {

constexpr bool isDepth(int bits) {
    return bits == 1 || bits == 4 || bits == 8 || bits == 24 || bits == 32;
}

clsPalette fixedPalette(int bits) {
    clsPalette palette;
    if (bits == 1) {
        palette.CreateMono2();
    } else if (bits == 4) {
        palette.Create16();
    } else {
        palette.CreateHalfTone256();
    }
    return palette;
}

void requirePalette(int bits, const clsDIBSection::PaletteSlot* cPal) {
    const bool given = cPal != nullptr && cPal->has_value();
    if (!given && bits >= 1 && bits <= 23) {
        throw Failure(kOwnError, u"clsDIBSection", u"Palette is required!");
    }
}

}  // namespace

void clsDIBSection::swap(clsDIBSection& other) noexcept {
    std::swap(m_hDC, other.m_hDC);
    std::swap(m_hDib, other.m_hDib);
    std::swap(m_hOldBmp, other.m_hOldBmp);
    std::swap(m_pBits, other.m_pBits);
    std::swap(m_iBpp, other.m_iBpp);
    std::swap(m_header, other.m_header);
    std::swap(m_colors, other.m_colors);
}

void clsDIBSection::CreateDC(int Width, int Height, int Bpp, PaletteSlot* cPal) {
    constexpr TextView kOperation = u"CreateDC";
    Destroy();
    const gfx::DesktopContext desktop;
    m_hDC = gfx::createSurfaceContext(kOperation, desktop.hdc());
    m_iBpp = Bpp;
    m_header = {};
    m_header.biWidth = Width < 0 ? 2 : Width;
    m_header.biHeight = Height < 0 ? 2 : Height;
    if (isDepth(Bpp)) {
        m_header.biBitCount = static_cast<std::uint16_t>(Bpp);
        m_header.biSizeImage = static_cast<std::uint32_t>(BytesPerScanLine()) *
                               static_cast<std::uint32_t>(m_header.biHeight);
    }
    m_colors.clear();
    if (isDepth(Bpp) && Bpp <= 8) {
        PaletteSlot local;
        PaletteSlot& palette = cPal != nullptr ? *cPal : local;
        if (!palette) palette = fixedPalette(Bpp);
        fillColors(*palette);
    }
    void* pBits = nullptr;
    m_hDib = platform::CreateDIBSection(desktop.hdc(), {m_header, m_colors},
                                        platform::DIB_RGB_COLORS, pBits);
    if (m_hDib == 0) gfx::raiseSurfaceFailure(kOperation, u"hDib not created");
    m_pBits = static_cast<std::uint8_t*>(pBits);
    m_hOldBmp = platform::SelectObject(m_hDC, m_hDib);
    if (m_hOldBmp == 0) gfx::raiseSurfaceFailure(kOperation, u"DIB not selected");
    platform::SetStretchBltMode(m_hDC, platform::COLORONCOLOR);
}

void clsDIBSection::fillColors(const clsPalette& palette) {
    m_colors.resize(std::size_t{1} << m_iBpp);
    const auto count = std::min(m_colors.size(), static_cast<std::size_t>(palette.Count()));
    for (std::size_t i = 0; i < count; ++i) {
        const auto index = static_cast<std::int32_t>(i + 1);
        m_colors[i] = {palette.Blue(index), palette.Green(index), palette.Red(index), 0};
    }
}

void clsDIBSection::CloneFromDib(const clsDIBSection& oDib, int Bpp) {
    if (&oDib == this) {  // CreateDC would end what is to be copied
        const clsDIBSection before = std::move(*this);
        CloneFromDib(before, Bpp);
        return;
    }
    PaletteSlot palette = oDib.Palette();
    CreateDC(oDib.Width(), oDib.Height(), Bpp == -1 ? oDib.Bpp() : Bpp, &palette);
    oDib.PaintPicture(m_hDC);
}

void clsDIBSection::CloneFromHBmp(HBITMAP hBmp, int Bpp, PaletteSlot* cPal) {
    requirePalette(Bpp, cPal);
    const platform::BITMAP bitmap = gfx::bitmapOf(hBmp);
    CreateDC(bitmap.bmWidth, bitmap.bmHeight, Bpp == -1 ? bitmap.bmBitsPixel : Bpp, cPal);
    gfx::copyBitmap(m_hDC, hBmp, {bitmap.bmWidth, bitmap.bmHeight});
}

void clsDIBSection::CloneFromHdc(HDC lHdc, int Bpp, PaletteSlot* cPal, int lSrcLeft, int lSrcTop,
                                 int lSrcWidth, int lSrcHeight, std::uint32_t eRop) {
    requirePalette(Bpp, cPal);
    if (lHdc != 0 && lHdc == m_hDC) {  // as in CloneFromDib
        const clsDIBSection before = std::move(*this);
        CloneFromHdc(before.m_hDC, Bpp, cPal, lSrcLeft, lSrcTop, lSrcWidth, lSrcHeight, eRop);
        return;
    }
    const platform::BITMAP source = gfx::bitmapIn(lHdc);
    if (lSrcWidth < 1 || lSrcHeight < 1) {
        lSrcWidth = source.bmWidth;
        lSrcHeight = source.bmHeight;
    }
    CreateDC(lSrcWidth, lSrcHeight, Bpp == -1 ? source.bmBitsPixel : Bpp, cPal);
    platform::BitBlt(m_hDC, 0, 0, lSrcWidth, lSrcHeight, lHdc, lSrcLeft, lSrcTop, eRop);
}

void clsDIBSection::Destroy() {
    gfx::destroySurface(m_hDC, m_hOldBmp, m_hDib);
    m_pBits = nullptr;
    m_iBpp = 0;
}

int clsDIBSection::BkMode() const { return m_hDC != 0 ? platform::GetBkMode(m_hDC) : 0; }

void clsDIBSection::BkMode(int nMode) {
    if (m_hDC != 0) platform::SetBkMode(m_hDC, nMode);
}

Color clsDIBSection::BkColor() const { return m_hDC != 0 ? platform::GetBkColor(m_hDC) : 0; }

void clsDIBSection::BkColor(Color l) {
    if (m_hDC != 0) platform::SetBkColor(m_hDC, TranslateColor(l));
}

void clsDIBSection::PaintPicture(HDC lHdc, int lDestLeft, int lDestTop, int lDestWidth,
                                 int lDestHeight, int lSrcLeft, int lSrcTop, int lSrcWidth,
                                 int lSrcHeight, std::uint32_t eRop) const {
    gfx::paintSurface(
        lHdc, m_hDC, {Width(), Height()},
        {lDestLeft, lDestTop, lDestWidth, lDestHeight, lSrcLeft, lSrcTop, lSrcWidth, lSrcHeight},
        eRop);
}

void clsDIBSection::DrawBackColor(Color lColor) {
    gfx::fillSurface(m_hDC, {Width(), Height()}, lColor);
}

int clsDIBSection::Width() const { return isDepth(m_iBpp) ? m_header.biWidth : 0; }
int clsDIBSection::Height() const { return isDepth(m_iBpp) ? m_header.biHeight : 0; }

int clsDIBSection::BytesPerScanLine() const {
    return static_cast<int>((std::int64_t{Width()} * m_iBpp + 31) / 32 * 4);
}

clsDIBSection::PaletteSlot clsDIBSection::Palette() const {
    if (m_iBpp != 1 && m_iBpp != 4 && m_iBpp != 8) return std::nullopt;
    clsPalette palette;
    palette.CreateFromDib(*this);
    return palette;
}

HBITMAP clsDIBSection::ReleasehDib() {
    const HBITMAP hBitmap = std::exchange(m_hDib, 0);
    Destroy();
    return hBitmap;
}

std::shared_ptr<platform::PictureObject> clsDIBSection::Picture() {
    return gfx::pictureOf(ReleasehDib());
}
