#include "win/cUniTimer.h"

#include "platform/base/clock.h"
#include "platform/window/timer.h"

bool cUniTimer::TmrStart(UniTimerOwner& Owner, std::uint32_t nInterval, std::int32_t nID) {
    if (m_hTimer != 0) return false;
    const std::uint32_t start = platform::GetTickCount();
    m_hTimer =
        platform::setTimer(nInterval, [&Owner, start, nID](std::uint32_t, std::uint32_t now) {
            Owner.UniTimerFired(now - start, nID);  // the clock may wrap in between
        });
    return m_hTimer != 0;
}

bool cUniTimer::TmrStop() {
    if (m_hTimer == 0) return true;
    if (!platform::KillTimer(0, m_hTimer)) return false;
    m_hTimer = 0;
    return true;
}
