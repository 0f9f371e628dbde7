// win/CTimer.h: a timer with an event, for code that has no window to carry one.
#pragma once
#include <any>
#include <cstdint>
#include <functional>

// At most 100 run at a time in one process (win/MTimer.h). A timer must not be moved while it runs.
class CTimer {
public:
    CTimer() = default;
    ~CTimer();  // stops it
    CTimer(const CTimer&) = delete;
    CTimer& operator=(const CTimer&) = delete;

    std::any Item;  // a piece of data that travels with the timer

    [[nodiscard]] std::int32_t Interval() const { return m_iInterval; }  // 0: stopped
    // Milliseconds, at least 10 from one event to the next; below 1 stops. A value that is set
    // already changes nothing, another one starts the time anew. Raises, and the timer is stopped
    // then, kNoSystemTimer and kTooManyTimers; the source is the program's name followed by
    // ".WindowProc".
    void Interval(std::int32_t iIntervalA);

    void PulseTimer();  // raises the event; for MTimer

    std::function<void()> ThatTime;  // the event: the timer fires

private:
    friend bool TimerStart(CTimer& oTimer);
    friend bool TimerStop(const CTimer& oTimer);
    friend void TimerCallback(std::uint32_t hWnd, std::uint32_t uMsg, std::uint32_t idEvent,
                              std::uint32_t dwTime);
    std::int32_t m_iInterval = 0;
    std::uint32_t m_idTimer = 0;
};

constexpr auto kTooManyTimers = static_cast<std::int32_t>(0x80043553);
constexpr auto kNoSystemTimer = static_cast<std::int32_t>(0x80043554);
