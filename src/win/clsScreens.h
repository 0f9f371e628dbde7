// win/clsScreens.h: questions about monitors, with answers for the one screen on a platform that
// knows no several.
#pragma once
#include "win/clsSystemMetrics.h"

// Monitors are given by the platform's handles; an unknown one has the size and place 0. Pixels.
class clsScreens {
public:
    clsScreens();

    [[nodiscard]] std::int32_t Count() const;
    [[nodiscard]] bool AllSameColourDepth() const;
    [[nodiscard]] bool Enabled(platform::HMONITOR hMonitor) const;
    [[nodiscard]] bool IsPrimaryMon(platform::HMONITOR hMonitor) const;
    [[nodiscard]] std::int32_t Height(platform::HMONITOR hMonitor) const;
    [[nodiscard]] std::int32_t Width(platform::HMONITOR hMonitor) const;
    [[nodiscard]] std::int32_t WidthPriMon() const { return m_oMetrics.ScreenWidth(); }
    [[nodiscard]] std::int32_t HeightPriMon() const { return m_oMetrics.ScreenHeight(); }
    [[nodiscard]] std::int32_t top(platform::HMONITOR hMonitor) const;
    [[nodiscard]] std::int32_t left(platform::HMONITOR hMonitor) const;
    // Without task bars.
    [[nodiscard]] std::int32_t WorkHeight(platform::HMONITOR hMonitor) const;
    [[nodiscard]] std::int32_t WorkWidth(platform::HMONITOR hMonitor) const;
    [[nodiscard]] std::int32_t WorkTop(platform::HMONITOR hMonitor) const;
    [[nodiscard]] std::int32_t WorkLeft(platform::HMONITOR hMonitor) const;
    // All screens together.
    [[nodiscard]] std::int32_t VirtualLeft() const;
    [[nodiscard]] std::int32_t VirtualTop() const;
    [[nodiscard]] std::int32_t VirtualWidth() const;
    [[nodiscard]] std::int32_t VirtualHeight() const;
    // The nearest monitor for a place on none.
    [[nodiscard]] platform::HMONITOR GetMonitorHandleFromPoint(std::int32_t x,
                                                               std::int32_t y) const;
    [[nodiscard]] platform::HMONITOR GetMonitorHandleFromWindow(platform::HWND hWnd) const;
    [[nodiscard]] platform::HMONITOR GetMonitorHandleFromRect(std::int32_t X1, std::int32_t Y1,
                                                              std::int32_t X2,
                                                              std::int32_t Y2) const;

private:
    clsSystemMetrics m_oMetrics;
    bool m_bMultiMon;
};
