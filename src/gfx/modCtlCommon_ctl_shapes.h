// gfx/modCtlCommon_ctl_shapes.h: rectangles, lines, pixels, gradients and rounded rectangles.
//
// Coordinates are pixels of the context's surface; right and bottom of a rectangle are exclusive,
// and one turned inside out is empty. Colours may be those of the desktop. Every brush and pen
// lives only inside its operation. A context of 0 or a stale one draws nothing; nothing here fails.
#pragma once
#include "gfx/types.h"
#include "platform/window/surface.h"

// Fills the rectangle, or without bFill draws its frame, one pixel wide inside of it.
void DrawRect(HDC hDC, const RECT& rect, Color iColor, bool bFill);
void DrawRectXY(HDC hDC, int x1, int y1, int x2, int y2, Color iColor, bool bFill);

// A line that leaves out its end point. Width and style are those of platform::CreatePen.
void DrawLine(HDC hDC, int x1, int y1, int x2, int y2, Color iColor, int iWidth = 1,
              int iStyle = platform::PS_SOLID);
void DrawPixel(HDC hDC, int x, int y, Color iColor);
// The dotted rectangle of the focus: it inverts, so drawing it again takes it away.
void DrawFocus(HDC hDC, const RECT& rect);

struct RoundRectStyle {
    bool bFill = false;
    Color iFillColor = 0;
    Color iPenColor = 0;
    int iPenWidth = 1;  // 0 and below: no outline; the fill then takes up the whole rectangle
    int iPenStyle = platform::PS_SOLID;
    int iRadius = 0;  // pixels, of each corner in both directions
};
void DrawRoundRect(HDC hDC, int x1, int y1, int x2, int y2, const RoundRectStyle& style);
void DrawRoundRectR(HDC hDC, const RECT& rect, const RoundRectStyle& style);

// Row by row from iColorFrom to one step short of iColorTo. Like a line, a row goes from x1 to
// x2 without x2, also when x2 is the smaller one; when they are equal it is that one column. Fewer
// than one row (y2 up to y1) draw nothing.
void GradientV(HDC hDC, int x1, int y1, int x2, int y2, Color iColorFrom, Color iColorTo);
void GradientVRect(HDC hDC, const RECT& rect, Color iColorFrom, Color iColorTo);
// The same from left to right: column by column, each from y1 to y2.
void GradientH(HDC hDC, int x1, int y1, int x2, int y2, Color iColorFrom, Color iColorTo);
void GradientHRect(HDC hDC, const RECT& rect, Color iColorFrom, Color iColorTo);

// The region of a rectangle of that size with rounded corners, from (0, 0). The caller deletes it
// or gives it to a window. 0 on failure: larger than platform::kMaxBitmapExtent.
[[nodiscard]] HRGN CreateRoundRegion(int iWidth, int iHeight, int iRadius);
