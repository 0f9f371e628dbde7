#include "platform/window/timer.h"

#include "platform/base/clock.h"
#include "platform/base/testhooks.h"
#include "platform/window/testhooks.h"
#include "platform/window/testhooks_internal.h"
#include "platform/window/timer_internal.h"
#include "platform/window/window_internal.h"

#include <QCoreApplication>
#include <QPointer>
#include <QTimerEvent>
#include <algorithm>
#include <utility>

namespace platform {
namespace {

struct Timer {
    HWND hWnd = 0;
    std::uint32_t id = 0;
    std::uint32_t elapse = 0;
    TimerCallback callback;  // empty: WM_TIMER for the window
    int libraryId = 0;       // 0 while a test moves the clock
    std::uint32_t due = 0;   // tick at which it fires then
    bool dead = false;
    bool running = false;  // the callback is at work
    bool late = false;     // was due while timers were held back
};

// In the order of starting.
std::vector<std::shared_ptr<Timer>>& timers() {
    static std::vector<std::shared_ptr<Timer>> all;
    return all;
}

int g_held = 0;

// The callback may end the timer and start one anew: that is another Timer, and this one stays for
// the caller of fire.
void fire(const std::shared_ptr<Timer>& timer) {
    if (timer->dead || timer->running) return;
    timer->running = true;
    guarded([&] {
        if (timer->callback) {
            timer->callback(timer->id, GetTickCount());
        } else {
            SendMessageW(timer->hWnd, WM_TIMER, timer->id, 0);
        }
    });
    timer->running = false;
}

// The library's timers of this process; lives and dies with the application.
class TimerHost final : public QObject {
public:
    using QObject::QObject;
    ~TimerHost() override { timers().clear(); }

    // Has the loop fire what became due while timers were held back.
    void fireLate() {
        if (m_wake == 0) m_wake = startTimer(0);
    }

private:
    void timerEvent(QTimerEvent* event) override {
        if (event->timerId() == m_wake) {
            killTimer(std::exchange(m_wake, 0));
            if (g_held > 0) return;  // again: the next release comes back here
            for (const std::shared_ptr<Timer>& timer : std::vector(timers())) {
                if (std::exchange(timer->late, false)) fire(timer);
            }
            return;
        }
        const auto found = std::ranges::find(timers(), event->timerId(),
                                             [](const auto& t) { return t->libraryId; });
        if (found == timers().end()) return;
        const std::shared_ptr<Timer> timer = *found;
        if (g_held > 0) {
            timer->late = true;
        } else {
            fire(timer);
        }
    }

    int m_wake = 0;
};
QPointer<TimerHost> g_host;

TimerHost* host() {
    if (g_host.isNull() && qApp != nullptr) g_host = new TimerHost(qApp);
    return g_host;
}

void kill(Timer& timer) {
    timer.dead = true;
    if (timer.libraryId != 0 && !g_host.isNull()) g_host->killTimer(timer.libraryId);
    timer.libraryId = 0;
}

std::uint32_t start(HWND hWnd, std::uint32_t id, std::uint32_t elapse, TimerCallback callback) {
    constexpr std::uint32_t kShortest = 10, kLongest = 0x7FFFFFFF;
    if (hooks().failTimers) return 0;
    auto timer = std::make_shared<Timer>();
    timer->hWnd = hWnd;
    timer->id = id;
    timer->elapse = std::clamp(elapse, kShortest, kLongest);
    timer->callback = std::move(callback);
    if (hooks().manualTimers) {
        timer->due = GetTickCount() + timer->elapse;
    } else {
        if (host() == nullptr) return 0;
        timer->libraryId = host()->startTimer(static_cast<int>(timer->elapse), Qt::PreciseTimer);
        if (timer->libraryId == 0) return 0;
    }
    timers().push_back(std::move(timer));
    return id;
}

std::uint32_t freshId() {
    static std::uint32_t last = 0;
    do {
        ++last;
    } while (last == 0 || std::ranges::any_of(timers(), [](const auto& t) {
                 return t->hWnd == 0 && t->id == last;
             }));
    return last;
}

}  // namespace

std::uint32_t SetTimer(HWND hWnd, std::uint32_t idEvent, std::uint32_t elapse,
                       TIMERPROC procedure) {
    if (hWnd == 0) {
        if (procedure == nullptr) return 0;
        return setTimer(elapse, [procedure](std::uint32_t id, std::uint32_t time) {
            procedure(0, WM_TIMER, id, time);
        });
    }
    if (!IsWindow(hWnd) || idEvent == 0) return 0;
    KillTimer(hWnd, idEvent);
    TimerCallback callback;
    if (procedure != nullptr) {
        callback = [hWnd, procedure](std::uint32_t id, std::uint32_t time) {
            procedure(hWnd, WM_TIMER, id, time);
        };
    }
    return start(hWnd, idEvent, elapse, std::move(callback));
}

std::uint32_t setTimer(std::uint32_t elapse, TimerCallback callback) {
    return callback ? start(0, freshId(), elapse, std::move(callback)) : 0;
}

bool KillTimer(HWND hWnd, std::uint32_t idEvent) {
    const auto found = std::ranges::find_if(
        timers(), [&](const auto& t) { return t->hWnd == hWnd && t->id == idEvent; });
    if (found == timers().end()) return false;
    kill(**found);
    timers().erase(found);
    return true;
}

void killTimersOf(HWND hWnd) {
    std::erase_if(timers(), [&](const auto& t) {
        if (t->hWnd != hWnd) return false;
        kill(*t);
        return true;
    });
}

TimerHold::TimerHold() { ++g_held; }

TimerHold::~TimerHold() {
    if (--g_held == 0 && !g_host.isNull()) g_host->fireLate();
}

namespace test {

void setManualTimers(bool manual) { hooks().manualTimers = manual; }

void failTimers(bool fails) { hooks().failTimers = fails; }

int runningTimers() { return static_cast<int>(timers().size()); }

void advanceTimers(std::uint32_t milliseconds) {
    const std::uint32_t end = GetTickCount() + milliseconds;
    const auto left = [end](const Timer& t) { return static_cast<std::int32_t>(end - t.due); };
    for (;;) {
        std::shared_ptr<Timer> next;
        for (const std::shared_ptr<Timer>& timer : timers()) {
            if (timer->libraryId != 0 || left(*timer) < 0) continue;
            if (!next || left(*timer) > left(*next)) next = timer;
        }
        if (!next) break;
        setTickCount(next->due);
        next->due += next->elapse;
        fire(next);
    }
    setTickCount(end);
}

}  // namespace test

}  // namespace platform
