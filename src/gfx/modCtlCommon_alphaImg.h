// gfx/modCtlCommon_alphaImg.h: a picture put onto a context inside of an area: centred, cut,
// optionally with one colour left out and turned to a pale grey. Never scaled.
//
// Nothing here is re-entrant: all calls share their two work surfaces.
#pragma once
#include "gfx/clsDIBSection.h"
#include "gfx/types.h"

struct ImagePlacing {
    bool bPicGrayed = false;
    // A bitmap: leave out one colour. An icon: leave out the pixels that its mask does.
    bool bPicTransparent = false;
    // Pixels of the picture that are drawn at most, from its top left; -1: all that there are. An
    // icon may show one column and one row more, and with -1 it is cut to the area alone.
    int iPicWidth = -1, iPicHeight = -1;
    // The pixel whose colour is left out; only with a lPicTranspColor of -1.
    int lPicXTransp = 0, lPicYTransp = 0;
    Color lPicTranspColor = -1;  // a plain colour
};

// Draws the picture in the middle of the area; without a picture, with a handle of 0 and in an
// empty area nothing. Pictures that are no icons count as bitmaps, which must be in no context.
// When the area's height less that drawn is odd, a greyed or transparent bitmap stands one pixel
// lower than a plain one. Failures end it without a message.
void pvOverlapImage(HDC lHdc, int X1, int Y1, int X2, int Y2, const platform::PictureObject* oPic,
                    const ImagePlacing& placing);
void pvOverlapImageRect(HDC lHdc, const RECT& rect, const platform::PictureObject* oPic,
                        const ImagePlacing& placing);
// The same for pictures that are icons, and for no others.
void pvOverlapIcon(HDC lHdc, int X1, int Y1, int X2, int Y2, const platform::PictureObject* oPic,
                   const ImagePlacing& placing);

// The bytes of a section of 32 bits by row (0 is the bottom line), column and channel (0 blue, 1
// green, 2 red). The section must outlive it.
class PixelView {
public:
    PixelView(std::uint8_t* pBits, int Width) : m_pBits(pBits), m_stride(Width * 4) {}
    [[nodiscard]] std::uint8_t& operator()(int row, int column, int channel) const {
        return pixel(row, column)[channel];
    }
    [[nodiscard]] std::uint8_t* pixel(int row, int column) const {
        return m_pBits + static_cast<std::ptrdiff_t>(row) * m_stride + column * 4;
    }

private:
    std::uint8_t* m_pBits;
    std::ptrdiff_t m_stride;
};
// Raises kOwnError, "pvBuildSA3D", "Cannot create Safe Array for this DIB bpp" for another depth
// and for a section that has no pixels.
[[nodiscard]] PixelView pvBuildSA3D(const clsDIBSection& oDib);

// An icon split into its images, each a section of its own depth. An image that the icon doesn't
// have stays empty, as do both for an unknown icon. Raises as clsDIBSection.
struct IconDibs {
    bool bIsIcon = true;  // false: a cursor
    int iXHotSpot = 0, iYHotSpot = 0;
    clsDIBSection oMask, oColor;
};
[[nodiscard]] IconDibs pvGetIconDibs(HICON hIcon);
