#include "platform/window/screen.h"

#include "platform/window/screen_internal.h"
#include "platform/window/testhooks.h"
#include "platform/window/window.h"

#include <QPalette>
#include <gtest/gtest.h>

using namespace platform;

namespace {

// The main screen on the right, a smaller one of other depth to its left, lower down.
void twoScreens() {
    platform::test::setScreens({
        {{-800, 100, 0, 700}, {-800, 100, 0, 660}, false, 16, 96},
        {{0, 0, 1920, 1080}, {48, 0, 1920, 1080}, true, 32, 144},
    });
}

HMONITOR at(std::int32_t x, std::int32_t y) {
    return MonitorFromPoint({x, y}, MONITOR_DEFAULTTONEAREST);
}

}  // namespace

TEST(Screen, MeasuresTheMainScreenAndAllTogether) {
    const platform::test::WindowHookScope hooks;
    twoScreens();
    const std::pair<int, int> kMetrics[] = {
        {0, 1920},  {1, 1080},  {16, 1872}, {11, 48}, {13, 48}, {49, 24},   {5, 1},
        {19, 1},    {23, 0},    {43, 3},    {63, 1},  {75, 1},  {76, -800}, {77, 0},
        {78, 2720}, {79, 1080}, {80, 2},    {81, 0},  {7, 0},   {-1, 0},    {999, 0},
    };
    for (const auto& [index, expected] : kMetrics)
        EXPECT_EQ(GetSystemMetrics(index), expected) << index;
    for (const int index :
         {2, 3, 4, 6, 12, 14, 15, 17, 20, 21, 28, 29, 30, 31, 32, 33, 50, 51, 52, 53}) {
        EXPECT_GT(GetSystemMetrics(index), 0) << index;
    }
    platform::test::setMetric(80, 7);
    EXPECT_EQ(GetSystemMetrics(80), 7);
    RECT work{};
    EXPECT_TRUE(SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0));
    EXPECT_EQ(work, (RECT{48, 0, 1920, 1080}));
    EXPECT_FALSE(SystemParametersInfoA(41, 0, &work, 0));
    EXPECT_FALSE(SystemParametersInfoA(SPI_GETWORKAREA, 0, nullptr, 0));
}

TEST(Screen, FindsTheMonitorOfAPlace) {
    const platform::test::WindowHookScope hooks;
    twoScreens();
    const HMONITOR main = at(10, 10), side = at(-10, 200);
    EXPECT_NE(main, side);
    EXPECT_NE(main, 0U);
    const struct {
        RECT place;
        HMONITOR nearest, none;
    } kPlaces[] = {
        {{-100, 200, 50, 300}, side, side},  // most of it
        {{-10, 200, 300, 300}, main, main},
        {{-500, 0, -400, 50}, side, 0},  // above the lower one
        {{5000, 5000, 5001, 5001}, main, 0},
        {{-3000, 90, -2000, 95}, side, 0},
        {{20, 20, 10, 10}, main, main},  // inside out: its left top corner
        {{2147483647, 0, 2147483647, 0}, main, 0},
        {{-2147483647, -2147483647, 2147483647, 2147483647}, main, main},
    };
    for (const auto& p : kPlaces) {
        EXPECT_EQ(MonitorFromRect(p.place, MONITOR_DEFAULTTONEAREST), p.nearest) << p.place.left;
        EXPECT_EQ(MonitorFromRect(p.place, MONITOR_DEFAULTTONULL), p.none) << p.place.left;
    }
    EXPECT_EQ(MonitorFromPoint({-500, 10}, MONITOR_DEFAULTTOPRIMARY), main);
    EXPECT_EQ(MonitorFromWindow(0, MONITOR_DEFAULTTONEAREST), main);
    EXPECT_EQ(MonitorFromWindow(0, MONITOR_DEFAULTTONULL), 0U);
    const HWND hWnd =
        createWindow({.kind = WindowKind::Main, .position = {-700, 300}, .size = {100, 100}});
    EXPECT_EQ(MonitorFromWindow(hWnd, MONITOR_DEFAULTTONULL), side);
    DestroyWindow(hWnd);
}

TEST(Screen, DescribesAMonitorAsLongAsItIsThere) {
    const platform::test::WindowHookScope hooks;
    twoScreens();
    const HMONITOR main = at(10, 10), side = at(-10, 200);
    MONITORINFO info;
    ASSERT_TRUE(GetMonitorInfoA(side, info));
    EXPECT_EQ(info.rcMonitor, (RECT{-800, 100, 0, 700}));
    EXPECT_EQ(info.rcWork, (RECT{-800, 100, 0, 660}));
    EXPECT_EQ(info.dwFlags, 0U);
    ASSERT_TRUE(GetMonitorInfoA(main, info));
    EXPECT_EQ(info.dwFlags, MONITORINFOF_PRIMARY);
    info.cbSize = 72;
    EXPECT_FALSE(GetMonitorInfoA(main, info)) << "another record";
    info.cbSize = sizeof info;
    platform::test::setScreens({{{0, 0, 1920, 1080}, {0, 0, 1920, 1000}, true}});
    EXPECT_FALSE(GetMonitorInfoA(side, info));
    ASSERT_TRUE(GetMonitorInfoA(main, info)) << "the same screen, with another task bar";
    EXPECT_EQ(info.rcWork.bottom, 1000);
    EXPECT_FALSE(GetMonitorInfoA(0, info));
}

TEST(Screen, AnswersForTheDesktopItself) {
    EXPECT_GT(GetSystemMetrics(0), 0);
    EXPECT_GE(GetSystemMetrics(80), 1);
    MONITORINFO info;
    EXPECT_TRUE(GetMonitorInfoA(at(0, 0), info));
    EXPECT_EQ(info.rcMonitor.right - info.rcMonitor.left, GetSystemMetrics(0));
}

TEST(Screen, TakesSystemColoursFromThePalette) {
    const struct {
        std::size_t index;
        QPalette::ColorRole role;
        QPalette::ColorGroup group = QPalette::Active;
    } kColors[] = {
        {5, QPalette::Base},       {8, QPalette::Text},
        {13, QPalette::Highlight}, {17, QPalette::WindowText, QPalette::Disabled},
        {15, QPalette::Window},    {24, QPalette::ToolTipBase},
    };
    for (const auto& c : kColors) {
        QPalette palette;
        palette.setColor(c.group, c.role, QColor(1, 2, 3));
        const std::vector<COLORREF> colors = systemColorsOf(palette);
        ASSERT_EQ(colors.size(), 31U);
        EXPECT_EQ(colors[c.index], rgb(1, 2, 3)) << c.index;
    }
}
