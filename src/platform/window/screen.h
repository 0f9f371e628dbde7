// platform/window/screen.h: monitors, measures of the desktop, its colours.
//
// The screens are those of the desktop in its own pixels: the library's scaling is off, and a
// finer screen shows in its dots per inch.
#pragma once
#include "platform/window/fonts.h"

namespace platform {

// One measure of the desktop by its index; 0 for an index that has none. Known are 0 to 6, 11 to
// 17, 19 to 21, 23, 28 to 33, 43, 49 to 53, 63, 75 to 81. Pixels for sizes; those of frames, bars
// and buttons come from the desktop's style.
[[nodiscard]] int GetSystemMetrics(int index);

// The main screen's dots per inch, in the direction of LOGPIXELSX or LOGPIXELSY; 96 where no
// context is left to ask.
[[nodiscard]] int screenDotsPerInch(int index);

constexpr std::uint32_t SPI_GETNONCLIENTMETRICS = 41;
constexpr std::uint32_t SPI_GETWORKAREA = 48;
constexpr std::uint32_t SPI_GETFLATMENU = 0x1022;
// Pixels. Of the fonts lfMenuFont alone is the desktop's; the others are alike.
struct NONCLIENTMETRICSA {
    std::uint32_t cbSize = 340;
    std::int32_t iBorderWidth = 0, iScrollWidth = 0, iScrollHeight = 0;
    std::int32_t iCaptionWidth = 0, iCaptionHeight = 0;
    LOGFONTA lfCaptionFont;
    std::int32_t iSmCaptionWidth = 0, iSmCaptionHeight = 0;
    LOGFONTA lfSmCaptionFont;
    std::int32_t iMenuWidth = 0, iMenuHeight = 0;
    LOGFONTA lfMenuFont, lfStatusFont, lfMessageFont;
};
static_assert(sizeof(NONCLIENTMETRICSA) == 340);
// SPI_GETWORKAREA: pvParam is a RECT*, which gets the main screen without task bars.
// SPI_GETNONCLIENTMETRICS: a NONCLIENTMETRICSA*, whose cbSize must be right.
// SPI_GETFLATMENU: an int32_t*, which gets 1: a bar has a colour of its own (30).
// False for any other action, and without pvParam.
bool SystemParametersInfoA(std::uint32_t action, std::uint32_t uiParam, void* pvParam,
                           std::uint32_t winIni);

// What becomes of a place that is on no monitor.
constexpr std::uint32_t MONITOR_DEFAULTTONULL = 0;
constexpr std::uint32_t MONITOR_DEFAULTTOPRIMARY = 1;
constexpr std::uint32_t MONITOR_DEFAULTTONEAREST = 2;
// The monitor that holds the point, or most of the window or rectangle. The handle stays the same
// as long as the monitor is there. 0 without one.
[[nodiscard]] HMONITOR MonitorFromPoint(POINT point, std::uint32_t flags);
[[nodiscard]] HMONITOR MonitorFromWindow(HWND hWnd, std::uint32_t flags);
[[nodiscard]] HMONITOR MonitorFromRect(const RECT& rect, std::uint32_t flags);

constexpr std::uint32_t MONITORINFOF_PRIMARY = 1;
struct MONITORINFO {
    std::uint32_t cbSize = 40;
    RECT rcMonitor, rcWork;
    std::uint32_t dwFlags = 0;
};
static_assert(sizeof(MONITORINFO) == 40);
// False, and the record stays, for an unknown monitor and a record of another size.
bool GetMonitorInfoA(HMONITOR hMonitor, MONITORINFO& info);

}  // namespace platform
