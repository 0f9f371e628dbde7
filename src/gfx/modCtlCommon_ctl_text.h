// gfx/modCtlCommon_ctl_text.h: text, drawn and measured with the font that the context holds.
//
// Flags are those of platform::DrawTextW; sizes are pixels. A context of 0 or a stale one draws
// nothing and measures 0. Nothing here fails.
#pragma once
#include "gfx/types.h"

// With DT_CALCRECT nothing is drawn: right and bottom of the rectangle, where it can be changed, go
// to the end of the text.
void TextDraw(HDC hDC, TextView s, RECT& rect, std::uint32_t iFlags);
void TextDraw(HDC hDC, TextView s, const RECT& rect, std::uint32_t iFlags);
// These two leave the context with that text colour, which may be one of the desktop's.
void TextDrawColor(HDC hDC, TextView s, const RECT& rect, Color iColor, std::uint32_t iFlags);
void TextDrawColorXY(HDC hDC, TextView s, int x1, int y1, int x2, int y2, Color iColor,
                     std::uint32_t iFlags);

// As one line.
[[nodiscard]] SIZE TextSize(HDC hDC, TextView s, std::uint32_t iFlags);
// Of the widest line. Lines end at CR LF and at CR; a lone LF is part of its line.
[[nodiscard]] int TextMaxLineWidth(HDC hDC, TextView s, std::uint32_t iFlags);
// Of the text broken at words, in `size`; with bKeepWidth in the width that is there, else in that
// of the widest line. The height that is there counts with bKeepHeight only, and only for flags
// that look at it.
void TextSizeWrapped(HDC hDC, TextView s, std::uint32_t iFlags, bool bKeepWidth, bool bKeepHeight,
                     SIZE& size);
// Of the text broken at words in the width of a rectangle.
[[nodiscard]] SIZE TextSizeInRect(HDC hDC, TextView s, int iLeft, int iTop, int iRight, int iBottom,
                                  std::uint32_t iFlags);

// The wide font of the interface, "Arial Unicode MS", is installed. Set once, at the start of the
// main window.
inline bool g_bHasUnicodeFont = false;

// Whether a font of that name is installed. Letter case and blanks around the name don't count.
// Needs the window system to be running.
[[nodiscard]] bool FontExists(TextView sName);
