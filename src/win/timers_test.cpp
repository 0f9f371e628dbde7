#include "platform/base/testhooks.h"
#include "platform/window/testhooks.h"
#include "support/raised.h"
#include "support/window/Failures.h"
#include "win/CTimer.h"
#include "win/MTimer.h"
#include "win/cUniTimer.h"

#include <deque>
#include <gtest/gtest.h>
#include <memory>

using platform::test::advanceTimers;
using platform::test::runningTimers;

namespace {

class WinTimers : public testing::Test {
public:
    WinTimers() {
        platform::test::setTickCount(0xFFFFFF00);  // the clock wraps soon
        platform::test::setManualTimers(true);
    }
    ~WinTimers() override { EXPECT_EQ(runningTimers(), 0); }
    platform::test::HookScope baseHooks;
    platform::test::WindowHookScope hooks;
};

std::string failure(std::uint32_t number, const char* message) {
    return std::to_string(static_cast<std::int32_t>(number)) + " win_test.WindowProc: " + message;
}

struct Owner final : UniTimerOwner {
    std::string calls;
    std::function<void()> act;
    void UniTimerFired(std::uint32_t elapsed, std::int32_t nID) override {
        calls += std::to_string(elapsed) + '#' + std::to_string(nID) + ' ';
        if (act) act();
    }
};

}  // namespace

TEST_F(WinTimers, FiresAtItsIntervalUntilStopped) {
    int fired = 0;
    CTimer timer;
    timer.ThatTime = [&] { ++fired; };
    timer.Interval(0);
    timer.Interval(-5);
    EXPECT_EQ(timer.Interval(), 0) << "stopped: nothing changes";
    EXPECT_EQ(runningTimers(), 0);

    timer.Interval(100);
    advanceTimers(60);
    timer.Interval(100);
    advanceTimers(40);
    EXPECT_EQ(fired, 1) << "the value that it has changes nothing";
    advanceTimers(60);
    timer.Interval(50);
    advanceTimers(49);
    EXPECT_EQ(fired, 1) << "another one starts anew";
    advanceTimers(1);
    EXPECT_EQ(fired, 2);
    EXPECT_EQ(runningTimers(), 1);
    timer.Interval(-1);
    EXPECT_EQ(timer.Interval(), 0);
    advanceTimers(500);
    EXPECT_EQ(fired, 2);
}

TEST_F(WinTimers, HasAHundredPlacesAndUsesTheLowestFreeOneAgain) {
    std::deque<CTimer> timers(101);
    std::string order;
    for (std::size_t i = 0; i < timers.size(); ++i) {
        timers[i].ThatTime = [&order, i] { order += std::to_string(i) + ' '; };
    }
    for (std::size_t i = 0; i < 100; ++i) timers[i].Interval(1000);
    CTimer& last = timers[100];
    const std::string tooMany = failure(0x80043553, "No more than 10 timers allowed per class");
    EXPECT_EQ(::test::raised([&] { last.Interval(20); }), tooMany);
    EXPECT_EQ(last.Interval(), 0);
    EXPECT_EQ(runningTimers(), 100) << "nothing is left of the attempt";

    timers[7].Interval(0);
    timers[3].Interval(0);
    last.Interval(20);
    EXPECT_EQ(::test::raised([&] { timers[3].Interval(30); }), "nothing");
    EXPECT_EQ(::test::raised([&] { timers[7].Interval(30); }), tooMany);
    advanceTimers(30);
    EXPECT_EQ(order, "100 3 ");
    EXPECT_FALSE(TimerStop(timers[7])) << "it doesn't run";
}

TEST_F(WinTimers, SaysWhenThePlatformHasNoTimer) {
    platform::test::failTimers(true);
    CTimer timer;
    EXPECT_EQ(::test::raised([&] { timer.Interval(10); }),
              failure(0x80043554, "Can't create system timer"));
    EXPECT_EQ(timer.Interval(), 0);
    platform::test::failTimers(false);
    timer.Interval(10);
    EXPECT_EQ(timer.Interval(), 10);
}

TEST_F(WinTimers, MayEndOrChangeInItsOwnEventAndSurvivesAFailureThere) {
    auto ending = std::make_unique<CTimer>();
    ending->ThatTime = [&] { ending.reset(); };
    ending->Interval(10);
    advanceTimers(100);
    EXPECT_EQ(ending, nullptr);

    CTimer timer;
    std::string fired;
    timer.ThatTime = [&] {
        fired += std::to_string(timer.Interval()) + ' ';
        timer.Interval(timer.Interval() == 10 ? 50 : 0);
        timer.ThatTime = [&] {
            fired += "last ";
            timer.Interval(0);
            throw std::runtime_error("no");
        };
    };
    timer.Interval(10);
    test::Failures failures;
    advanceTimers(500);
    EXPECT_EQ(fired, "10 last ");
    EXPECT_EQ(failures.take(), "no\n");
    EXPECT_EQ(timer.Interval(), 0);
}

TEST_F(WinTimers, CallsItsOwnerWithTheTimeSinceTheStart) {
    Owner owner;
    cUniTimer timer;
    EXPECT_FALSE(timer.IsActive());
    EXPECT_TRUE(timer.TmrStop()) << "already stopped";
    EXPECT_TRUE(timer.TmrStart(owner, 200, -7));
    EXPECT_TRUE(timer.IsActive());
    EXPECT_FALSE(timer.TmrStart(owner, 10, 1)) << "the first one goes on";
    advanceTimers(600);
    EXPECT_EQ(owner.calls, "200#-7 400#-7 600#-7 ") << "over the end of the clock";
    EXPECT_TRUE(timer.TmrStop());
    advanceTimers(600);
    owner.calls.clear();
    EXPECT_TRUE(timer.TmrStart(owner, 0)) << "as short as a timer can be";
    advanceTimers(20);
    EXPECT_TRUE(timer.TmrStop());
    EXPECT_TRUE(timer.TmrStart(owner, static_cast<std::uint32_t>(-1))) << "and as long";
    advanceTimers(1000);
    EXPECT_EQ(owner.calls, "10#0 20#0 ");
    EXPECT_TRUE(timer.TmrStop());

    platform::test::failTimers(true);
    EXPECT_FALSE(timer.TmrStart(owner, 100));
    EXPECT_FALSE(timer.IsActive());
}

TEST_F(WinTimers, MayBeStartedAnewOrDestroyedByItsOwner) {
    Owner restarting, destroying;
    cUniTimer restarted;
    restarting.act = [&] {
        EXPECT_TRUE(restarted.TmrStop());
        if (restarting.calls == "10#1 ") (void)restarted.TmrStart(restarting, 20, 2);
    };
    auto destroyed = std::make_unique<cUniTimer>();
    destroying.act = [&] { destroyed.reset(); };
    restarted.TmrStart(restarting, 10, 1);
    destroyed->TmrStart(destroying, 15, 3);
    advanceTimers(500);
    EXPECT_EQ(restarting.calls, "10#1 20#2 ");
    EXPECT_EQ(destroying.calls, "15#3 ") << "each has its own way to its owner";
}
