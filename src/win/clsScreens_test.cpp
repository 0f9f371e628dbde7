#include "win/clsScreens.h"

#include "file/pvWindowsVersion.h"
#include "platform/base/testhooks.h"
#include "platform/window/testhooks.h"

#include <gtest/gtest.h>

using namespace platform;

namespace {

class Screens : public testing::Test {
public:
    Screens() {
        platform::test::setScreens({
            {{0, 0, 1920, 1080}, {48, 0, 1920, 1040}, true, 32, 96},
            {{1920, -200, 2720, 400}, {1920, -180, 2700, 390}, false, 16, 96},
        });
        forgetWindowsVersion();
    }
    ~Screens() override {
        platform::test::setVersion(std::nullopt);
        forgetWindowsVersion();
    }
    static void setVersion(OSVERSIONINFOA version) {
        platform::test::setVersion(version);
        forgetWindowsVersion();
    }
    platform::test::HookScope baseHooks;
    platform::test::WindowHookScope hooks;
};

}  // namespace

TEST_F(Screens, NamesTheMetrics) {
    using M = clsSystemMetrics;
    const struct {
        std::int32_t (M::*member)() const;
        int index;
    } kMembers[] = {
        {&M::WindowBorderWidth, 5},
        {&M::WindowBorderHeight, 6},
        {&M::MouseButtons, 43},
        {&M::CursorWidth, 13},
        {&M::CursorHeight, 14},
        {&M::FrameWidth, 32},
        {&M::FrameHeight, 33},
        {&M::FullScreenWidth, 16},
        {&M::FullScreenHeight, 17},
        {&M::ScreenWidth, 0},
        {&M::ScreenHeight, 1},
        {&M::HScrollBmpWidth, 21},
        {&M::HScrollBmpHeight, 3},
        {&M::VScrollBmpWidth, 2},
        {&M::VScrollBmpHeight, 20},
        {&M::IconWidth, 11},
        {&M::IconHeight, 12},
        {&M::WindowMinWidth, 28},
        {&M::WindowMinHeight, 29},
        {&M::TitleBarButtonWidth, 30},
        {&M::TitleBarButtonHeight, 31},
        {&M::SmallIconWidth, 49},
        {&M::SmallIconHeight, 50},
        {&M::TitleBarSmallButtonWidth, 52},
        {&M::TitleBarSmallButtonHeight, 53},
        {&M::TitleBarHeight, 4},
        {&M::MenuBarHeight, 15},
        {&M::SmallTitleBarHeight, 51},
        {&M::VirtualScreensLeft, 76},
        {&M::VirtualScreensTop, 77},
        {&M::VirtualScreensWidth, 78},
        {&M::VirtualScreensHeight, 79},
        {&M::MonitorsCount, 80},
    };
    const M metrics;
    for (const auto& m : kMembers) {
        platform::test::setMetric(m.index, 1000 + m.index);
        EXPECT_EQ((metrics.*m.member)(), 1000 + m.index) << m.index;
    }
    const std::pair<bool (M::*)() const, int> kFlags[] = {{&M::MousePresent, 19},
                                                          {&M::MouseWheelPresent, 75},
                                                          {&M::NetworkPresent, 63},
                                                          {&M::MouseSwapButtons, 23}};
    for (const auto& [member, index] : kFlags) {
        for (const int value : {0, 1, 3, -1}) {
            platform::test::setMetric(index, value);
            EXPECT_EQ((metrics.*member)(), value != 0) << index;
        }
    }
    EXPECT_EQ(metrics.WorkScreenLeft(), 48);
    EXPECT_EQ(metrics.WorkScreenTop(), 0);
    EXPECT_EQ(metrics.WorkScreenRight(), 1920);
    EXPECT_EQ(metrics.WorkScreenBottom(), 1040);
    EXPECT_EQ(metrics.WorkScreenWidth(), 1872) << "a bar at the side";
    EXPECT_EQ(metrics.WorkScreenHeight(), 1040);
}

TEST_F(Screens, DescribesEachMonitor) {
    const clsScreens screens;
    EXPECT_EQ(screens.Count(), 2);
    EXPECT_FALSE(screens.AllSameColourDepth());
    const HMONITOR main = screens.GetMonitorHandleFromPoint(5, 5);
    const HMONITOR side = screens.GetMonitorHandleFromRect(1900, 0, 2000, 50);
    EXPECT_EQ(screens.GetMonitorHandleFromPoint(5000, 300), side) << "the nearest";
    EXPECT_EQ(screens.GetMonitorHandleFromWindow(0), main);
    ASSERT_NE(main, side);
    EXPECT_TRUE(screens.Enabled(side));
    EXPECT_FALSE(screens.Enabled(12345));
    EXPECT_TRUE(screens.IsPrimaryMon(main));
    EXPECT_FALSE(screens.IsPrimaryMon(side));
    EXPECT_EQ(screens.Width(side), 800);
    EXPECT_EQ(screens.Height(side), 600);
    EXPECT_EQ(screens.left(side), 1920);
    EXPECT_EQ(screens.top(side), -200);
    EXPECT_EQ(screens.WorkWidth(side), 780);
    EXPECT_EQ(screens.WorkHeight(side), 570);
    EXPECT_EQ(screens.WorkLeft(side), 1920);
    EXPECT_EQ(screens.WorkTop(side), -180);
    EXPECT_EQ(screens.Width(12345) + screens.top(12345) + screens.WorkHeight(12345), 0);
    EXPECT_EQ(screens.WidthPriMon(), 1920);
    EXPECT_EQ(screens.HeightPriMon(), 1080);
    EXPECT_EQ(screens.VirtualLeft(), 0);
    EXPECT_EQ(screens.VirtualTop(), -200);
    EXPECT_EQ(screens.VirtualWidth(), 2720);
    EXPECT_EQ(screens.VirtualHeight(), 1280);
}

TEST_F(Screens, AnswersForOneScreenWhereThePlatformKnowsNoSeveral) {
    const struct {
        OSVERSIONINFOA version;
        bool several;
    } kVersions[] = {
        {{3, 1, VER_PLATFORM_WIN32s}, false},         // code 1
        {{2, 0, 3}, false},                           // 2
        {{4, 0, VER_PLATFORM_WIN32_WINDOWS}, false},  // 3
        {{4, 10, VER_PLATFORM_WIN32_WINDOWS}, true},  // 4
        {{4, 90, VER_PLATFORM_WIN32_WINDOWS}, true},  // 5
        {{3, 51, VER_PLATFORM_WIN32_NT}, false},      // 6
        {{4, 0, VER_PLATFORM_WIN32_NT}, false},       // 7
        {{5, 0, VER_PLATFORM_WIN32_NT}, true},        // 8
        {{10, 0, VER_PLATFORM_WIN32_NT}, true},       // 11
    };
    for (const auto& v : kVersions) {
        setVersion(v.version);
        const clsScreens screens;
        EXPECT_EQ(screens.Count(), v.several ? 2 : 1) << v.version.dwMajorVersion;
        if (v.several) continue;
        EXPECT_TRUE(screens.AllSameColourDepth());
        EXPECT_TRUE(screens.Enabled(12345));
        EXPECT_TRUE(screens.IsPrimaryMon(12345));
        EXPECT_EQ(screens.Width(12345), 1920);
        EXPECT_EQ(screens.Height(0), 1080);
        EXPECT_EQ(screens.left(0) + screens.top(0), 0);
        EXPECT_EQ(screens.WorkWidth(0), 1872);
        EXPECT_EQ(screens.WorkHeight(0), 1040);
        EXPECT_EQ(screens.WorkLeft(0), 48);
        EXPECT_EQ(screens.WorkTop(0), 0);
        EXPECT_EQ(screens.VirtualLeft() + screens.VirtualTop(), 0);
        EXPECT_EQ(screens.VirtualWidth(), 1920);
        EXPECT_EQ(screens.VirtualHeight(), 1080);
        EXPECT_EQ(screens.GetMonitorHandleFromPoint(5, 5), 0U);
        EXPECT_EQ(screens.GetMonitorHandleFromRect(0, 0, 9, 9), 0U);
        EXPECT_EQ(screens.GetMonitorHandleFromWindow(0), 0U);
    }
}
