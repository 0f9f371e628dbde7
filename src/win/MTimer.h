// win/MTimer.h: the running CTimer objects, and the way from the platform's timers to them.
#pragma once
#include "win/CTimer.h"

// Starts the platform's timer and enters oTimer at the lowest free one of 100 places. False, with
// the interval 0, when the platform has no timer. Raises kTooManyTimers when all places are taken;
// the platform's timer is ended then.
bool TimerStart(CTimer& oTimer);
// Ends the platform's timer and frees the place. False for a timer that doesn't run.
bool TimerStop(const CTimer& oTimer);
// What the platform calls: the timer of that id gets its PulseTimer.
void TimerCallback(std::uint32_t hWnd, std::uint32_t uMsg, std::uint32_t idEvent,
                   std::uint32_t dwTime);
