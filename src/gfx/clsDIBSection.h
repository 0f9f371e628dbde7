// gfx/clsDIBSection.h: an off-screen surface of 1, 4, 8, 24 or 32 bits a pixel whose pixels can be
// reached as memory.
//
// Empty at first, after Destroy, and after its section was given away; drawing on an empty one does
// nothing. Sizes are pixels. Whatever makes a surface ends the present one first, and raises
// kOwnError with the source "clsMemDC." and the operation's name (the prefix is common to both
// kinds of surface) when the platform refuses a step, such as a size of 0 or another depth; the
// surface then holds what the steps until there have made.
#pragma once
#include "gfx/clsPalette.h"
#include "gfx/types.h"
#include "platform/window/surface.h"

#include <memory>
#include <optional>

class clsDIBSection {
public:
    // A palette that goes into an operation and can come out of it. Without one (nullptr, or an
    // empty optional) a surface of up to 8 bits gets a fixed palette, which the optional then
    // holds.
    using PaletteSlot = std::optional<clsPalette>;

    clsDIBSection() = default;
    ~clsDIBSection() { Destroy(); }
    clsDIBSection(clsDIBSection&& other) noexcept { swap(other); }
    clsDIBSection& operator=(clsDIBSection&& other) noexcept {
        swap(other);
        return *this;
    }

    // All pixels 0. A size below 0 is 2.
    void CreateDC(int Width = -1, int Height = -1, int Bpp = 24, PaletteSlot* cPal = nullptr);
    // A copy of another surface with its palette; Bpp -1 keeps its depth.
    void CloneFromDib(const clsDIBSection& oDib, int Bpp = -1);
    // A copy of a bitmap that is in no context; it stays the caller's. Bpp -1 is the bitmap's
    // depth. These two raise kOwnError, "clsDIBSection", "Palette is required!" when there is no
    // palette and Bpp is from 1 to 23.
    void CloneFromHBmp(HBITMAP hBmp, int Bpp = 24, PaletteSlot* cPal = nullptr);
    // A copy of an area of a context, which may be this surface's own. A width or height below 1
    // takes both from the bitmap in lHdc; Bpp -1 is the depth of that bitmap. What lies outside of
    // it is 0.
    void CloneFromHdc(HDC lHdc, int Bpp = 24, PaletteSlot* cPal = nullptr, int lSrcLeft = 0,
                      int lSrcTop = 0, int lSrcWidth = -1, int lSrcHeight = -1,
                      std::uint32_t eRop = platform::SRCCOPY);

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
    [[nodiscard]] HBITMAP hDib() const { return m_hDib; }
    [[nodiscard]] int Bpp() const { return m_iBpp; }
    [[nodiscard]] int Width() const;  // 0 when Bpp is no depth
    [[nodiscard]] int Height() const;
    // The bottom row first; in it blue, green, red a pixel (and an unused byte with 32 bits), or
    // indexes with the left pixel in the highest bits. nullptr on an empty surface.
    [[nodiscard]] std::uint8_t* BitsPtr() const { return m_pBits; }
    [[nodiscard]] int BytesPerScanLine() const;  // a multiple of 4
    // All 2, 16 or 256 entries of the colour table; none with 24 and 32 bits.
    [[nodiscard]] PaletteSlot Palette() const;

    // These give the section away, to the caller or to a picture, and leave the surface empty. 0
    // and none when it was empty before.
    [[nodiscard]] HBITMAP ReleasehDib();
    [[nodiscard]] std::shared_ptr<platform::PictureObject> Picture();

private:
    void swap(clsDIBSection& other) noexcept;
    void fillColors(const clsPalette& palette);

    HDC m_hDC = 0;
    HBITMAP m_hDib = 0;
    platform::HGDIOBJ m_hOldBmp = 0;
    std::uint8_t* m_pBits = nullptr;
    std::int32_t m_iBpp = 0;
    // The description that the section is made of. Of the four shapes that it can have only the
    // number of colours differs: none, 2, 16 or 256.
    platform::BITMAPINFOHEADER m_header;
    std::vector<platform::RGBQUAD> m_colors;
};
