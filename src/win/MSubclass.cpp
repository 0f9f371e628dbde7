#include "win/MSubclass.h"

#include "platform/base/failure.h"
#include "platform/window/window.h"
#include "win/clsWinProp.h"
#include "win/executableName.h"

using namespace platform;

namespace {

LRESULT SubclassWindowProc(HWND hWnd, std::uint32_t uMsg, WPARAM wParam, LPARAM lParam);

[[noreturn]] void raise(std::int32_t number, TextView message) {
    throw Failure(number, executableName() + u".WindowProc", Text(message));
}

bool isOfThisProcess(HWND hWnd) {
    std::uint32_t processId = 0;
    (void)GetWindowThreadProcessId(hWnd, processId);
    return processId == GetCurrentProcessId();
}

WNDPROC previousProcedure(HWND hWnd) {
    return reinterpret_cast<WNDPROC>(WinPropGet(hWnd, WinPropKey::procedure()));
}

std::int32_t countOf(HWND hWnd, std::uint32_t uMsg) {
    return static_cast<std::int32_t>(WinPropGet(hWnd, WinPropKey::count(uMsg)));
}

ISubclass* sinkAt(HWND hWnd, std::uint32_t uMsg, std::int32_t index) {
    return reinterpret_cast<ISubclass*>(WinPropGet(hWnd, WinPropKey::sink(uMsg, index)));
}

// The place of the sink from 1 on; 0 when it is not attached.
std::int32_t placeOf(const ISubclass& oSink, HWND hWnd, std::uint32_t uMsg) {
    for (std::int32_t i = countOf(hWnd, uMsg); i >= 1; --i) {
        if (sinkAt(hWnd, uMsg, i) == &oSink) return i;
    }
    return 0;
}

void putPreviousProcedureBack(HWND hWnd) {
    const std::intptr_t previous = WinPropRemove(hWnd, WinPropKey::procedure());
    if (previous != 0) SetWindowLongW(hWnd, GWL_WNDPROC, previous);
}

void SubclassRemoveWindow(HWND hWnd) {
    if (WinPropGet(hWnd, WinPropKey::attachments()) == 0) return;
    putPreviousProcedureBack(hWnd);
    WinPropRemoveWindow(hWnd);
}

LRESULT SubclassWindowProc(HWND hWnd, std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
    const WNDPROC previous = previousProcedure(hWnd);
    if (previous == nullptr) return 0;
    const std::int32_t count = countOf(hWnd, uMsg);
    if (count == 0) {
        if (uMsg == WM_DESTROY) SubclassRemoveWindow(hWnd);
        return CallWindowProcW(previous, hWnd, uMsg, wParam, lParam);
    }

    bool bCalled = false;  // the window's own procedure has run, or must not
    LRESULT lReturn = 0;
    std::int32_t iMode = 0;  // of the sink called last
    for (std::int32_t i = count; i >= 1; --i) {
        ISubclass* const sink = sinkAt(hWnd, uMsg, i);
        if (sink == nullptr) continue;
        const std::shared_ptr<ISubclass> keptAlive = sink->weak_from_this().lock();
        iMode = static_cast<std::int32_t>(WinPropGet(hWnd, WinPropKey::mode(uMsg, i)));
        if (i == 1 && iMode == smAfter && !bCalled) {
            lReturn = CallWindowProcW(previous, hWnd, uMsg, wParam, lParam);
            bCalled = true;
            // A sink that nobody keeps alive may have gone with what the procedure did.
            if (!keptAlive && placeOf(*sink, hWnd, uMsg) == 0) break;
        }
        bool bStopMsg = false;
        sink->ISubclass_WindowProc(!bCalled, bStopMsg, lReturn, hWnd, uMsg, wParam, lParam);
        if (bStopMsg) bCalled = true;
    }
    if (iMode == smBefore && !bCalled) {
        lReturn = CallWindowProcW(previous, hWnd, uMsg, wParam, lParam);
    }
    return lReturn;
}

}  // namespace

void SubclassAttach(ISubclass& oSink, HWND hWnd, std::uint32_t uMsg, std::int32_t iMode) {
    if (!IsWindow(hWnd)) raise(kInvalidWindow, u"Invalid window");
    if (!isOfThisProcess(hWnd)) raise(kExternalWindow, u"Can't modify external window");
    if (placeOf(oSink, hWnd, uMsg) != 0) {
        raise(kAlreadyAttached, u"Message already handled by another class");
    }
    if (iMode == 0) raise(kInvalidArgument, u"Invalid argument");

    const std::int32_t index = countOf(hWnd, uMsg) + 1;
    WinPropSet(hWnd, WinPropKey::count(uMsg), index);
    WinPropSet(hWnd, WinPropKey::sink(uMsg, index), reinterpret_cast<std::intptr_t>(&oSink));
    WinPropSet(hWnd, WinPropKey::mode(uMsg, index), iMode);

    const std::intptr_t attachments = WinPropGet(hWnd, WinPropKey::attachments());
    if (attachments == 0) {
        const auto shared = reinterpret_cast<std::intptr_t>(&SubclassWindowProc);
        const std::intptr_t previous = SetWindowLongW(hWnd, GWL_WNDPROC, shared);
        // The shared procedure without attachments was put there by somebody who had it from an
        // earlier one. As its own predecessor it would call itself without end.
        if (previous == 0 || previous == shared) {
            WinPropSet(hWnd, WinPropKey::mode(uMsg, index), 0);
            WinPropSet(hWnd, WinPropKey::sink(uMsg, index), 0);
            WinPropSet(hWnd, WinPropKey::count(uMsg), index - 1);
            raise(kCannotSubclass, u"Can't subclass window");
        }
        WinPropSet(hWnd, WinPropKey::procedure(), previous);
    }
    WinPropSet(hWnd, WinPropKey::attachments(), attachments + 1);
}

void SubclassDetach(const ISubclass& oSink, HWND hWnd, std::uint32_t uMsg) noexcept {
    if (!IsWindow(hWnd) || !isOfThisProcess(hWnd)) return;
    const std::int32_t place = placeOf(oSink, hWnd, uMsg);
    if (place == 0) return;
    const std::int32_t count = countOf(hWnd, uMsg);
    for (std::int32_t i = place; i < count; ++i) {
        WinPropSet(hWnd, WinPropKey::sink(uMsg, i),
                   WinPropGet(hWnd, WinPropKey::sink(uMsg, i + 1)));
        WinPropSet(hWnd, WinPropKey::mode(uMsg, i),
                   WinPropGet(hWnd, WinPropKey::mode(uMsg, i + 1)));
    }
    WinPropSet(hWnd, WinPropKey::sink(uMsg, count), 0);
    WinPropSet(hWnd, WinPropKey::mode(uMsg, count), 0);
    WinPropSet(hWnd, WinPropKey::count(uMsg), count - 1);

    const std::intptr_t attachments = WinPropGet(hWnd, WinPropKey::attachments());
    if (attachments == 1) putPreviousProcedureBack(hWnd);
    WinPropSet(hWnd, WinPropKey::attachments(), attachments - 1);
}

LRESULT SubclassCallOld(HWND hWnd, std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
    return CallWindowProcW(previousProcedure(hWnd), hWnd, uMsg, wParam, lParam);
}
