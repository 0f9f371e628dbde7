// win/ISubclass.h: who wants to hear messages of a window.
#pragma once
#include "platform/window/messages.h"

#include <memory>

// A sink of SubclassAttach (win/MSubclass.h). Its registrations hold plain pointers: it detaches
// before it dies. Only while its own message runs it is kept alive, and that only when a
// std::shared_ptr owns it; so it may give itself up there.
class ISubclass : public std::enable_shared_from_this<ISubclass> {
public:
    virtual ~ISubclass() = default;

    // bBefore: the window's own procedure has not run yet. bStopMsg: false on entry; true keeps
    // that procedure from running. lReturn: the message's result so far, and what the sender gets
    // if nobody changes it after this.
    virtual void ISubclass_WindowProc(bool bBefore, bool& bStopMsg, platform::LRESULT& lReturn,
                                      platform::HWND hWnd, std::uint32_t uMsg,
                                      platform::WPARAM wParam, platform::LPARAM lParam) = 0;

protected:
    ISubclass() = default;
    ISubclass(const ISubclass&) = default;
    ISubclass& operator=(const ISubclass&) = default;
};
