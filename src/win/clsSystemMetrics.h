// win/clsSystemMetrics.h: names for the measures of the desktop.
#pragma once
#include "platform/window/screen.h"

// Pixels, for sizes. Each member asks the platform anew.
class clsSystemMetrics {
public:
    [[nodiscard]] std::int32_t GetMetric(std::int32_t i) const {
        return platform::GetSystemMetrics(i);
    }

    [[nodiscard]] std::int32_t WindowBorderWidth() const { return GetMetric(5); }
    [[nodiscard]] std::int32_t WindowBorderHeight() const { return GetMetric(6); }
    [[nodiscard]] std::int32_t MouseButtons() const { return GetMetric(43); }
    [[nodiscard]] std::int32_t CursorWidth() const { return GetMetric(13); }
    [[nodiscard]] std::int32_t CursorHeight() const { return GetMetric(14); }
    [[nodiscard]] std::int32_t FrameWidth() const { return GetMetric(32); }
    [[nodiscard]] std::int32_t FrameHeight() const { return GetMetric(33); }
    [[nodiscard]] std::int32_t FullScreenWidth() const { return GetMetric(16); }
    [[nodiscard]] std::int32_t FullScreenHeight() const { return GetMetric(17); }
    [[nodiscard]] std::int32_t ScreenWidth() const { return GetMetric(0); }
    [[nodiscard]] std::int32_t ScreenHeight() const { return GetMetric(1); }
    [[nodiscard]] std::int32_t HScrollBmpWidth() const { return GetMetric(21); }
    [[nodiscard]] std::int32_t HScrollBmpHeight() const { return GetMetric(3); }
    [[nodiscard]] std::int32_t VScrollBmpWidth() const { return GetMetric(2); }
    [[nodiscard]] std::int32_t VScrollBmpHeight() const { return GetMetric(20); }
    [[nodiscard]] std::int32_t IconWidth() const { return GetMetric(11); }
    [[nodiscard]] std::int32_t IconHeight() const { return GetMetric(12); }
    [[nodiscard]] std::int32_t WindowMinWidth() const { return GetMetric(28); }
    [[nodiscard]] std::int32_t WindowMinHeight() const { return GetMetric(29); }
    [[nodiscard]] std::int32_t TitleBarButtonWidth() const { return GetMetric(30); }
    [[nodiscard]] std::int32_t TitleBarButtonHeight() const { return GetMetric(31); }
    [[nodiscard]] std::int32_t SmallIconWidth() const { return GetMetric(49); }
    [[nodiscard]] std::int32_t SmallIconHeight() const { return GetMetric(50); }
    [[nodiscard]] std::int32_t TitleBarSmallButtonWidth() const { return GetMetric(52); }
    [[nodiscard]] std::int32_t TitleBarSmallButtonHeight() const { return GetMetric(53); }
    [[nodiscard]] std::int32_t TitleBarHeight() const { return GetMetric(4); }
    [[nodiscard]] std::int32_t MenuBarHeight() const { return GetMetric(15); }
    [[nodiscard]] std::int32_t SmallTitleBarHeight() const { return GetMetric(51); }
    [[nodiscard]] std::int32_t VirtualScreensLeft() const { return GetMetric(76); }
    [[nodiscard]] std::int32_t VirtualScreensTop() const { return GetMetric(77); }
    [[nodiscard]] std::int32_t VirtualScreensWidth() const { return GetMetric(78); }
    [[nodiscard]] std::int32_t VirtualScreensHeight() const { return GetMetric(79); }
    [[nodiscard]] std::int32_t MonitorsCount() const { return GetMetric(80); }

    [[nodiscard]] bool MousePresent() const { return GetMetric(19) != 0; }
    [[nodiscard]] bool MouseWheelPresent() const { return GetMetric(75) != 0; }
    [[nodiscard]] bool NetworkPresent() const { return GetMetric(63) != 0; }
    [[nodiscard]] bool MouseSwapButtons() const { return GetMetric(23) != 0; }

    // The main screen without task bars.
    [[nodiscard]] std::int32_t WorkScreenLeft() const { return workArea().left; }
    [[nodiscard]] std::int32_t WorkScreenTop() const { return workArea().top; }
    [[nodiscard]] std::int32_t WorkScreenRight() const { return workArea().right; }
    [[nodiscard]] std::int32_t WorkScreenBottom() const { return workArea().bottom; }
    [[nodiscard]] std::int32_t WorkScreenWidth() const {
        const platform::RECT area = workArea();
        return area.right - area.left;
    }
    [[nodiscard]] std::int32_t WorkScreenHeight() const {
        const platform::RECT area = workArea();
        return area.bottom - area.top;
    }

private:
    [[nodiscard]] static platform::RECT workArea() {
        platform::RECT area;
        // Without an answer it stays empty.
        (void)platform::SystemParametersInfoA(platform::SPI_GETWORKAREA, 0, &area, 0);
        return area;
    }
};
