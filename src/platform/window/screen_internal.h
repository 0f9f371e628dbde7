// platform/window/screen_internal.h: the desktop's colours and resolution for the drawing surfaces.
// Nothing above the folder includes this.
#pragma once
#include "platform/window/types.h"

#include <memory>
#include <vector>

class QObject;
class QPalette;

namespace platform {

// The colours of GetSysColor, by index, out of a palette.
[[nodiscard]] std::vector<COLORREF> systemColorsOf(const QPalette& palette);

// Gives the present palette and resolution to the drawing surfaces. Whether the colours are others
// than the last time.
bool takeDesktopLook();

// As long as the result lives: when the desktop changes its look, takes it over and tells every
// window by WM_SYSCOLORCHANGE or WM_SETTINGCHANGE.
[[nodiscard]] std::unique_ptr<QObject> watchDesktop();

}  // namespace platform
