// platform/window/timer_internal.h: holding timers back. Nothing above the folder includes this.
#pragma once

namespace platform {

// While one exists no timer of SetTimer fires; what became due fires once afterwards, through the
// message loop.
class TimerHold {
public:
    TimerHold();
    ~TimerHold();
    TimerHold(const TimerHold&) = delete;
    TimerHold& operator=(const TimerHold&) = delete;
};

}  // namespace platform
