#include "gfx/modCtlCommon_src_helpers.h"

#include "file/pvWindowsVersion.h"
#include "platform/window/input.h"
#include "platform/window/shell.h"

#include <iterator>

bool IsKeyDown(std::int32_t iKey) { return platform::GetAsyncKeyState(iKey) < 0; }

std::int32_t GetShiftState() {
    return (IsKeyDown(platform::VK_SHIFT) ? 1 : 0) | (IsKeyDown(platform::VK_CONTROL) ? 2 : 0) |
           (IsKeyDown(platform::VK_MENU) ? 4 : 0);
}

std::int32_t CursorResource(std::int32_t iPointer) {
    using namespace platform;
    static constexpr std::uint32_t kIds[] = {
        IDC_ARROW,    IDC_ARROW,       IDC_CROSS,    IDC_IBEAM,  IDC_ICON,    IDC_SIZE,
        IDC_SIZENESW, IDC_SIZENS,      IDC_SIZENWSE, IDC_SIZEWE, IDC_UPARROW, IDC_WAIT,
        IDC_NO,       IDC_APPSTARTING, IDC_HELP,     IDC_SIZEALL};
    const bool known = iPointer >= 0 && iPointer < static_cast<std::int32_t>(std::size(kIds));
    return known ? static_cast<std::int32_t>(kIds[iPointer]) : 0;
}

bool IsNT5OrLater() { return pvWindowsVersion() >= 8; }

std::intptr_t ShellOpen(HWND hWnd, TextView sFile, std::int32_t iVerb, TextView sParameters,
                        TextView sDirectory, int iShow) {
    const auto verb = [iVerb]() -> TextView {
        switch (iVerb) {
        case svEdit:
            return u"edit";
        case svExplore:
            return u"explore";
        case svFind:
            return u"find";
        case svPrint:
            return u"print";
        case svProperties:
            return u"properties";
        case svRunAs:
            return u"runas";
        default:
            return u"open";
        }
    };
    return platform::ShellExecuteW(hWnd, verb(), sFile, sParameters, sDirectory, iShow);
}
