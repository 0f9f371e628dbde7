// gfx/types.h: the window layer's plain types under their short names, and colours as the drawn
// side of the program has them.
#pragma once
#include "platform/window/types.h"

using platform::HBITMAP;
using platform::HDC;
using platform::HFONT;
using platform::HICON;
using platform::HRGN;
using platform::HWND;
using platform::POINT;
using platform::RECT;
using platform::SIZE;

// Red in the low byte, then green, then blue. Below 0: a colour of the desktop, its index in the
// low five bits; resolved when it is drawn.
using Color = platform::COLORREF;
// "Automatic" where an argument or property says that it knows it.
constexpr Color kAutoColor = -1;
// The reference to a colour of the desktop: sysColor(5) is the background of windows.
constexpr Color sysColor(int index) {
    return static_cast<Color>(0x80000000U | static_cast<unsigned>(index));
}
