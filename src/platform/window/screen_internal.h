// platform/window/screen_internal.h: the desktop's colours and resolution for the drawing surfaces.
// Nothing above the folder includes this.
#pragma once
#include "platform/window/types.h"

#include <vector>

class QPalette;

namespace platform {

// The colours of GetSysColor, by index, out of a palette.
[[nodiscard]] std::vector<COLORREF> systemColorsOf(const QPalette& palette);

// Gives the present palette and resolution to the drawing surfaces.
void takeDesktopLook();

}  // namespace platform
