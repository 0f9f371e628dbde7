#include "win/clsScreens.h"

#include "file/pvWindowsVersion.h"
#include "platform/window/surface.h"

using platform::HMONITOR;
using platform::MONITORINFO;
using platform::RECT;

namespace {

bool knowsSeveralMonitors(std::int32_t version) {
    switch (version) {
    case 1:
    case 2:
    case 3:
    case 6:
    case 7:
        return false;
    default:
        return true;
    }
}

MONITORINFO infoOf(HMONITOR hMonitor) {
    MONITORINFO info;
    (void)platform::GetMonitorInfoA(hMonitor, info);  // an unknown one stays empty
    return info;
}

std::int32_t width(const RECT& r) { return r.right - r.left; }
std::int32_t height(const RECT& r) { return r.bottom - r.top; }

}  // namespace

clsScreens::clsScreens() : m_bMultiMon(knowsSeveralMonitors(pvWindowsVersion())) {}

std::int32_t clsScreens::Count() const { return m_bMultiMon ? m_oMetrics.MonitorsCount() : 1; }

bool clsScreens::AllSameColourDepth() const {
    return !m_bMultiMon || m_oMetrics.GetMetric(81) != 0;
}

bool clsScreens::Enabled(HMONITOR hMonitor) const {
    return !m_bMultiMon || Width(hMonitor) != 0 || Height(hMonitor) != 0;
}

bool clsScreens::IsPrimaryMon(HMONITOR hMonitor) const {
    return !m_bMultiMon || (infoOf(hMonitor).dwFlags & platform::MONITORINFOF_PRIMARY) != 0;
}

std::int32_t clsScreens::Height(HMONITOR hMonitor) const {
    return m_bMultiMon ? height(infoOf(hMonitor).rcMonitor) : m_oMetrics.ScreenHeight();
}

std::int32_t clsScreens::Width(HMONITOR hMonitor) const {
    return m_bMultiMon ? width(infoOf(hMonitor).rcMonitor) : m_oMetrics.ScreenWidth();
}

std::int32_t clsScreens::top(HMONITOR hMonitor) const {
    return m_bMultiMon ? infoOf(hMonitor).rcMonitor.top : 0;
}

std::int32_t clsScreens::left(HMONITOR hMonitor) const {
    return m_bMultiMon ? infoOf(hMonitor).rcMonitor.left : 0;
}

std::int32_t clsScreens::WorkHeight(HMONITOR hMonitor) const {
    return m_bMultiMon ? height(infoOf(hMonitor).rcWork) : m_oMetrics.WorkScreenHeight();
}

std::int32_t clsScreens::WorkWidth(HMONITOR hMonitor) const {
    return m_bMultiMon ? width(infoOf(hMonitor).rcWork) : m_oMetrics.WorkScreenWidth();
}

std::int32_t clsScreens::WorkTop(HMONITOR hMonitor) const {
    return m_bMultiMon ? infoOf(hMonitor).rcWork.top : m_oMetrics.WorkScreenTop();
}

std::int32_t clsScreens::WorkLeft(HMONITOR hMonitor) const {
    return m_bMultiMon ? infoOf(hMonitor).rcWork.left : m_oMetrics.WorkScreenLeft();
}

std::int32_t clsScreens::VirtualLeft() const {
    return m_bMultiMon ? m_oMetrics.VirtualScreensLeft() : 0;
}

std::int32_t clsScreens::VirtualTop() const {
    return m_bMultiMon ? m_oMetrics.VirtualScreensTop() : 0;
}

std::int32_t clsScreens::VirtualWidth() const {
    return m_bMultiMon ? m_oMetrics.VirtualScreensWidth() : m_oMetrics.ScreenWidth();
}

std::int32_t clsScreens::VirtualHeight() const {
    return m_bMultiMon ? m_oMetrics.VirtualScreensHeight() : m_oMetrics.ScreenHeight();
}

HMONITOR clsScreens::GetMonitorHandleFromPoint(std::int32_t x, std::int32_t y) const {
    return m_bMultiMon ? platform::MonitorFromPoint({x, y}, platform::MONITOR_DEFAULTTONEAREST) : 0;
}

HMONITOR clsScreens::GetMonitorHandleFromWindow(platform::HWND hWnd) const {
    return m_bMultiMon ? platform::MonitorFromWindow(hWnd, platform::MONITOR_DEFAULTTONEAREST) : 0;
}

HMONITOR clsScreens::GetMonitorHandleFromRect(std::int32_t X1, std::int32_t Y1, std::int32_t X2,
                                              std::int32_t Y2) const {
    if (!m_bMultiMon) return 0;
    RECT rect;
    platform::SetRect(rect, X1, Y1, X2, Y2);
    return platform::MonitorFromRect(rect, platform::MONITOR_DEFAULTTONEAREST);
}
