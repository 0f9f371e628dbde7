// platform/window/timer.h: timers of the message loop.
//
// A timer fires again and again until it is killed, through the message loop, never inside another
// operation, and not while its own last firing still runs. Intervals are milliseconds; below 10
// they count as 10, so that a timer cannot starve the loop. What a callback raises ends at the
// message loop (setFailureHandler in application.h).
#pragma once
#include "platform/window/messages.h"

#include <functional>

namespace platform {

// dwTime is GetTickCount at the firing.
using TIMERPROC = void (*)(HWND hWnd, std::uint32_t uMsg, std::uint32_t idEvent,
                           std::uint32_t dwTime);

// With a window: the timer idEvent of that window, which is started anew if it runs; it goes with
// the window. Without one idEvent has no influence, and the id is a new one. It calls the procedure
// with WM_TIMER, or without one sends WM_TIMER to the window. Gives the id; 0 when there is no
// message loop, for an unknown window, for the timer 0 of a window, and for a timer that would have
// neither window nor callback.
[[nodiscard]] std::uint32_t SetTimer(HWND hWnd, std::uint32_t idEvent, std::uint32_t elapse,
                                     TIMERPROC procedure);
// False for a timer that doesn't run. A firing that is due but did not come yet is dropped.
bool KillTimer(HWND hWnd, std::uint32_t idEvent);

// A timer without a window whose callback carries its owner with it. For KillTimer(0, id).
using TimerCallback = std::function<void(std::uint32_t idEvent, std::uint32_t dwTime)>;
[[nodiscard]] std::uint32_t setTimer(std::uint32_t elapse, TimerCallback callback);

}  // namespace platform
