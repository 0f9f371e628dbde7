#include "platform/window/timer.h"

#include "platform/base/clock.h"
#include "platform/base/testhooks.h"
#include "platform/window/application.h"
#include "platform/window/testhooks.h"
#include "platform/window/timer_internal.h"
#include "platform/window/wait.h"
#include "platform/window/window.h"
#include "support/window/Failures.h"
#include "support/window/LoggedWindow.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <thread>

using namespace platform;
using platform::test::advanceTimers;
using platform::test::runningTimers;

namespace {

std::string g_log;
void noting(HWND hWnd, std::uint32_t uMsg, std::uint32_t id, std::uint32_t time) {
    g_log += (hWnd == 0 ? "" : "window ") + std::to_string(uMsg) + " timer " + std::to_string(id) +
             " at " + std::to_string(time) + '\n';
}

class Timers : public testing::Test {
public:
    Timers() {
        g_log.clear();
        platform::test::setTickCount(1000);
        platform::test::setManualTimers(true);
    }
    ~Timers() override { EXPECT_EQ(runningTimers(), 0); }
    static void useRealClock() {
        platform::test::setManualTimers(false);
        platform::test::setTickCount(std::nullopt);
    }
    static void readFor(std::uint32_t milliseconds) {
        const std::uint32_t start = GetTickCount();
        while (GetTickCount() - start < milliseconds) pumpMessages();
    }
    platform::test::HookScope baseHooks;
    platform::test::WindowHookScope hooks;
    ::test::MessageLog log;
};

}  // namespace

TEST_F(Timers, FireInTheOrderOfTimeAtTheirOwnTick) {
    std::string fired;
    const auto add = [&](const char* name) {
        return [&fired, name](std::uint32_t, std::uint32_t time) {
            fired += name + std::to_string(time) + ' ';
            EXPECT_EQ(time, GetTickCount());
        };
    };
    const std::uint32_t a = setTimer(100, add("a"));
    const std::uint32_t b = setTimer(250, add("b"));
    EXPECT_NE(a, b);
    advanceTimers(99);
    EXPECT_EQ(fired, "");
    advanceTimers(201);
    EXPECT_EQ(fired, "a1100 a1200 b1250 a1300 ");
    EXPECT_EQ(GetTickCount(), 1300U);
    EXPECT_TRUE(KillTimer(0, a));
    EXPECT_FALSE(KillTimer(0, a));
    advanceTimers(1000);
    EXPECT_EQ(fired, "a1100 a1200 b1250 a1300 b1500 b1750 b2000 b2250 ");
    EXPECT_TRUE(KillTimer(0, b));
}

TEST_F(Timers, BelongToAWindowAndGoWithIt) {
    ::test::LoggedWindow window(log, "main", ::test::mainWindow());
    const HWND hWnd = window.hWnd();
    EXPECT_EQ(SetTimer(hWnd, 7, 50, nullptr), 7U);
    EXPECT_EQ(SetTimer(hWnd, 8, 70, noting), 8U);
    advanceTimers(70);
    EXPECT_EQ(log.take(), "main: WM_TIMER 7\n");
    EXPECT_EQ(g_log, "window 275 timer 8 at 1070\n");
    EXPECT_EQ(SetTimer(hWnd, 7, 60, nullptr), 7U) << "started anew";
    EXPECT_EQ(runningTimers(), 2);
    advanceTimers(59);
    EXPECT_EQ(log.take(), "");
    advanceTimers(1);
    EXPECT_EQ(log.take(), "main: WM_TIMER 7\n");
    DestroyWindow(hWnd);
    EXPECT_EQ(runningTimers(), 0);
    EXPECT_EQ(SetTimer(hWnd, 7, 50, nullptr), 0U) << "no window";
    ::test::LoggedWindow other(log, "other", ::test::mainWindow());
    EXPECT_EQ(SetTimer(other.hWnd(), 0, 50, nullptr), 0U) << "0 is no timer";
    EXPECT_EQ(runningTimers(), 0);
    EXPECT_EQ(SetTimer(0, 7, 50, nullptr), 0U) << "nobody to call";
}

TEST_F(Timers, CallBackWithoutAWindow) {
    const std::uint32_t first = SetTimer(0, 5, 10, noting);
    const std::uint32_t second = SetTimer(0, 5, 10, noting);
    EXPECT_NE(first, second) << "the wished id has no influence";
    advanceTimers(10);
    EXPECT_EQ(g_log, "275 timer " + std::to_string(first) + " at 1010\n275 timer " +
                         std::to_string(second) + " at 1010\n");
    EXPECT_TRUE(KillTimer(0, first) && KillTimer(0, second));
}

TEST_F(Timers, MayEndAndStartTimersWhileTheyFire) {
    int calls = 0;
    std::uint32_t self = 0, other = 0;
    self = setTimer(20, [&](std::uint32_t id, std::uint32_t) {
        ++calls;
        EXPECT_TRUE(KillTimer(0, id));
        EXPECT_TRUE(KillTimer(0, other));
        self = setTimer(20, [&](std::uint32_t again, std::uint32_t) {
            ++calls;
            KillTimer(0, again);
        });
    });
    other = setTimer(20, [&](std::uint32_t, std::uint32_t) { FAIL() << "ended before its turn"; });
    advanceTimers(100);
    EXPECT_EQ(calls, 2);
}

TEST_F(Timers, KeepTheirFailuresFromTheLoop) {
    ::test::Failures failures;
    const std::uint32_t id =
        setTimer(10, [](std::uint32_t, std::uint32_t) { throw std::runtime_error("late"); });
    advanceTimers(20);
    EXPECT_EQ(failures.take(), "late\nlate\n");
    KillTimer(0, id);
}

TEST_F(Timers, CountShortIntervalsAsTen) {
    int calls = 0;
    const std::uint32_t id = setTimer(0, [&](std::uint32_t, std::uint32_t) { ++calls; });
    advanceTimers(100);
    EXPECT_EQ(calls, 10);
    KillTimer(0, id);
}

TEST_F(Timers, RunOnTheRealClockUntilKilledAndWaitWhileHeldBack) {
    useRealClock();
    int calls = 0;
    const std::uint32_t id = setTimer(10, [&](std::uint32_t, std::uint32_t) { ++calls; });
    const auto firesAgain = [&] {
        const int before = calls;
        for (int i = 0; i < 500 && calls == before; ++i) readFor(10);
        return calls > before;
    };
    EXPECT_TRUE(firesAgain() && firesAgain());
    {
        const TimerHold hold;
        const int before = calls;
        readFor(40);
        EXPECT_EQ(calls, before);
    }
    EXPECT_TRUE(firesAgain());
    EXPECT_TRUE(KillTimer(0, id));
}

TEST_F(Timers, DoNotFireInsideTheirOwnFiringAlsoALateOne) {
    useRealClock();
    int calls = 0, depth = 0, deepest = 0;
    const std::uint32_t id = setTimer(10, [&](std::uint32_t, std::uint32_t) {
        ++calls;
        deepest = std::max(deepest, ++depth);
        readFor(40);
        --depth;
    });
    {
        const TimerHold hold;
        readFor(30);
        EXPECT_EQ(calls, 0);
    }
    for (int i = 0; i < 50 && calls < 2; ++i) readFor(20);
    EXPECT_GE(calls, 2);
    EXPECT_EQ(deepest, 1);
    EXPECT_TRUE(KillTimer(0, id));
}

TEST_F(Timers, AWaitingWindowIsPaintedBeforeTheJob) {
    useRealClock();
    ::test::LoggedWindow wait(log, "wait", {.kind = WindowKind::Bare, .size = {20, 10}});
    ::test::LoggedWindow label(log, "label", ::test::childOf(wait.hWnd(), {0, 0, 10, 5}));
    int calls = 0;
    const std::uint32_t id = setTimer(10, [&](std::uint32_t, std::uint32_t) { ++calls; });
    std::this_thread::sleep_for(std::chrono::milliseconds(20));  // it is due
    EXPECT_TRUE(showPainted(wait.hWnd()));
    EXPECT_EQ(calls, 0) << "timers are not heard meanwhile";
    const std::string painted = log.take();
    EXPECT_NE(painted.find("wait: WM_PAINT\n"), std::string::npos);
    EXPECT_NE(painted.find("label: WM_PAINT\n"), std::string::npos);
    EXPECT_FALSE(showPainted(0));
    EXPECT_TRUE(KillTimer(0, id));
}
