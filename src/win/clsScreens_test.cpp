#include "win/clsScreens.h"

#include "platform/window/testhooks.h"
#include "support/PlatformVersion.h"

#include <gtest/gtest.h>

using namespace platform;

namespace {

// A main screen with a bar at the left and one at the bottom, and a smaller one beside it.
class Screens : public testing::Test {
public:
    Screens() {
        platform::test::setScreens({
            {{0, 0, 1920, 1080}, {48, 0, 1920, 1040}, true, 32, 96},
            {{1920, -200, 2720, 400}, {1920, -180, 2700, 390}, false, 16, 96},
        });
    }
    ::test::PlatformVersion version;
    platform::test::WindowHookScope hooks;
};

std::string place(int left, int top, int width, int height) {
    return std::to_string(left) + ',' + std::to_string(top) + ' ' + std::to_string(width) + 'x' +
           std::to_string(height);
}

std::string monitor(const clsScreens& screens, HMONITOR h) {
    return place(screens.left(h), screens.top(h), screens.Width(h), screens.Height(h)) + " work " +
           place(screens.WorkLeft(h), screens.WorkTop(h), screens.WorkWidth(h),
                 screens.WorkHeight(h)) +
           (screens.Enabled(h) ? " enabled" : "") + (screens.IsPrimaryMon(h) ? " primary" : "");
}

std::string desktop(const clsScreens& screens) {
    return std::to_string(screens.Count()) + " on " +
           place(screens.VirtualLeft(), screens.VirtualTop(), screens.VirtualWidth(),
                 screens.VirtualHeight()) +
           ", main " + place(0, 0, screens.WidthPriMon(), screens.HeightPriMon()) +
           (screens.AllSameColourDepth() ? ", one depth" : "");
}

}  // namespace

TEST_F(Screens, MetricsTellTheWorkAreaAndTheDevices) {
    using M = clsSystemMetrics;
    const M metrics;
    EXPECT_EQ(place(metrics.WorkScreenLeft(), metrics.WorkScreenTop(), metrics.WorkScreenWidth(),
                    metrics.WorkScreenHeight()),
              "48,0 1872x1040");
    EXPECT_EQ(metrics.WorkScreenRight(), 1920);
    EXPECT_EQ(metrics.WorkScreenBottom(), 1040);
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
}

TEST_F(Screens, EachMonitorIsDescribed) {
    const clsScreens screens;
    EXPECT_EQ(desktop(screens), "2 on 0,-200 2720x1280, main 0,0 1920x1080");
    const HMONITOR main = screens.GetMonitorHandleFromPoint(5, 5);
    const HMONITOR side = screens.GetMonitorHandleFromRect(1900, 0, 2000, 50);
    EXPECT_EQ(screens.GetMonitorHandleFromPoint(5000, 300), side) << "the nearest";
    EXPECT_EQ(screens.GetMonitorHandleFromWindow(0), main);
    EXPECT_EQ(monitor(screens, main), "0,0 1920x1080 work 48,0 1872x1040 enabled primary");
    EXPECT_EQ(monitor(screens, side), "1920,-200 800x600 work 1920,-180 780x570 enabled");
    EXPECT_EQ(monitor(screens, 12345), "0,0 0x0 work 0,0 0x0") << "no monitor";
}

TEST_F(Screens, ThereIsOneWhereThePlatformKnowsNoSeveral) {
    const struct {
        OSVERSIONINFOA version;
        bool several;
    } kVersions[] = {
        {{3, 1, VER_PLATFORM_WIN32s}, false},         // code 1
        {{2, 0, 3}, false},                           // 2
        {{4, 0, VER_PLATFORM_WIN32_WINDOWS}, false},  // 3
        {{4, 10, VER_PLATFORM_WIN32_WINDOWS}, true},  // 4
        {{3, 51, VER_PLATFORM_WIN32_NT}, false},      // 6
        {{4, 0, VER_PLATFORM_WIN32_NT}, false},       // 7
        {{5, 0, VER_PLATFORM_WIN32_NT}, true},        // 8
    };
    for (const auto& v : kVersions) {
        version.set(v.version);
        const clsScreens screens;
        EXPECT_EQ(screens.Count(), v.several ? 2 : 1) << v.version.dwMajorVersion;
        if (v.several) continue;
        EXPECT_EQ(desktop(screens), "1 on 0,0 1920x1080, main 0,0 1920x1080, one depth");
        EXPECT_EQ(monitor(screens, 12345), "0,0 1920x1080 work 48,0 1872x1040 enabled primary");
        EXPECT_EQ(screens.GetMonitorHandleFromPoint(5, 5), 0U);
        EXPECT_EQ(screens.GetMonitorHandleFromRect(0, 0, 9, 9), 0U);
        EXPECT_EQ(screens.GetMonitorHandleFromWindow(0), 0U);
    }
}
