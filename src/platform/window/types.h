// platform/window/types.h: the plain types that every part of the window layer shares. No Qt here.
#pragma once
#include "platform/base/text.h"

namespace platform {

// Handles are 32-bit values from one table each; 0 is none. A stale handle is harmless: nothing is
// drawn, queries give 0.
using HDC = std::uint32_t;
using HBITMAP = std::uint32_t;
using HFONT = std::uint32_t;
using HBRUSH = std::uint32_t;
using HPEN = std::uint32_t;
using HRGN = std::uint32_t;
using HICON = std::uint32_t;
using HGDIOBJ = std::uint32_t;  // any of bitmap, font, brush, pen, region
using HWND = std::uint32_t;
using HMENU = std::uint32_t;
using HMONITOR = std::uint32_t;

// Red in the low byte, then green, then blue. Negative: a system colour reference, whose low five
// bits go to GetSysColor; operations of this layer take plain colours unless they say otherwise.
using COLORREF = std::int32_t;

constexpr COLORREF rgb(int red, int green, int blue) { return red | (green << 8) | (blue << 16); }
constexpr int redOf(COLORREF color) { return color & 0xFF; }
constexpr int greenOf(COLORREF color) { return (color >> 8) & 0xFF; }
constexpr int blueOf(COLORREF color) { return (color >> 16) & 0xFF; }

struct POINT {
    std::int32_t x = 0, y = 0;
    friend bool operator==(const POINT&, const POINT&) = default;
};
struct SIZE {
    std::int32_t cx = 0, cy = 0;
    friend bool operator==(const SIZE&, const SIZE&) = default;
};
// Right and bottom are exclusive. A rectangle turned inside out counts as empty unless told
// otherwise.
struct RECT {
    std::int32_t left = 0, top = 0, right = 0, bottom = 0;
    friend bool operator==(const RECT&, const RECT&) = default;
};

}  // namespace platform
