// win/cUniTimer.h: a timer that calls its owner directly, with no table and no window between.
#pragma once
#include <cstdint>

class UniTimerOwner {
public:
    virtual ~UniTimerOwner() = default;
    // elapsed: milliseconds since TmrStart, by the platform's clock. nID: as given to TmrStart.
    virtual void UniTimerFired(std::uint32_t elapsed, std::int32_t nID) = 0;
};

class cUniTimer {
public:
    cUniTimer() = default;
    ~cUniTimer() { TmrStop(); }
    cUniTimer(const cUniTimer&) = delete;
    cUniTimer& operator=(const cUniTimer&) = delete;

    // Calls Owner every nInterval milliseconds (at least 10) until TmrStop, which the owner may
    // call in its own call. The owner must outlive that. False when a timer runs, which goes on
    // unchanged, or the platform has none.
    bool TmrStart(UniTimerOwner& Owner, std::uint32_t nInterval, std::int32_t nID = 0);
    bool TmrStop();  // true also without a running timer; false when the platform keeps it
    [[nodiscard]] bool IsActive() const { return m_hTimer != 0; }

private:
    std::uint32_t m_hTimer = 0;  // 0: stopped
};
