#include "win/CTimer.h"

#include "platform/base/failure.h"
#include "win/MTimer.h"
#include "win/executableName.h"

CTimer::~CTimer() { Interval(0); }

void CTimer::Interval(std::int32_t iIntervalA) {
    if (iIntervalA >= 1 && iIntervalA != m_iInterval) {
        if (m_iInterval != 0) TimerStop(*this);
        m_iInterval = iIntervalA;
        if (!TimerStart(*this)) {
            throw Failure(kNoSystemTimer, executableName() + u".WindowProc",
                          u"Can't create system timer");
        }
    } else if (iIntervalA < 1 && m_iInterval > 0) {
        m_iInterval = 0;
        TimerStop(*this);
    }
}

void CTimer::PulseTimer() {
    const std::function<void()> event = ThatTime;  // it may end this timer, or replace itself
    if (event) event();
}
