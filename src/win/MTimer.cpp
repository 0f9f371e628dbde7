#include "win/MTimer.h"

#include "platform/base/failure.h"
#include "platform/window/timer.h"
#include "win/executableName.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::int16_t kPlaces = 100;
std::array<CTimer*, kPlaces> g_timers{};  // free places are empty
std::int16_t g_used = 0;                  // places that were ever taken; never falls

}  // namespace

bool TimerStart(CTimer& oTimer) {
    oTimer.m_idTimer =
        platform::SetTimer(0, 0, static_cast<std::uint32_t>(oTimer.m_iInterval), TimerCallback);
    if (oTimer.m_idTimer == 0) {
        oTimer.m_iInterval = 0;
        return false;
    }
    const auto free = std::ranges::find(g_timers, nullptr);
    if (free == g_timers.end()) {
        platform::KillTimer(0, oTimer.m_idTimer);
        oTimer.m_idTimer = 0;
        oTimer.m_iInterval = 0;
        throw Failure(kTooManyTimers, executableName() + u".WindowProc",
                      u"No more than 10 timers allowed per class");
    }
    *free = &oTimer;
    g_used = std::max(g_used, static_cast<std::int16_t>(free - g_timers.begin() + 1));
    return true;
}

bool TimerStop(const CTimer& oTimer) {
    for (std::int16_t i = 0; i < g_used; ++i) {
        CTimer*& place = g_timers[static_cast<std::size_t>(i)];
        if (place == nullptr || place->m_idTimer != oTimer.m_idTimer) continue;
        platform::KillTimer(0, oTimer.m_idTimer);
        place = nullptr;
        return true;
    }
    return false;
}

void TimerCallback(std::uint32_t, std::uint32_t, std::uint32_t idEvent, std::uint32_t) {
    for (std::int16_t i = 0; i < g_used; ++i) {
        CTimer* const timer = g_timers[static_cast<std::size_t>(i)];
        if (timer == nullptr || timer->m_idTimer != idEvent) continue;
        timer->PulseTimer();
        return;
    }
}
