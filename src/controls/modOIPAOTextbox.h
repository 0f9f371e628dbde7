// controls/modOIPAOTextbox.h: the accelerator filter of a text box.
//
// A host looks at the keys of Tab and of moving about ahead of the window that has the focus. The
// filter stands in front of it: its owner hears of a key first and may use it up; what it leaves
// goes on to the host (Enter, Escape, Tab, access keys), and then to the window.
#pragma once
#include "gfx/types.h"
#include "platform/window/messages.h"

struct KeyMessage {
    HWND hWnd = 0;
    std::uint32_t uMsg = 0;
    platform::WPARAM wParam = 0;
    platform::LPARAM lParam = 0;
};

class IAcceleratorOwner {
public:
    virtual ~IAcceleratorOwner() = default;
    // bHandled is false at the start; true uses the key up.
    virtual void pvTranslateAccelerator(const KeyMessage& message, bool& bHandled) = 0;

protected:
    IAcceleratorOwner() = default;
    IAcceleratorOwner(const IAcceleratorOwner&) = default;
    IAcceleratorOwner& operator=(const IAcceleratorOwner&) = default;
};

class AcceleratorFilter {
public:
    AcceleratorFilter() = default;
    ~AcceleratorFilter() { Clear(); }
    AcceleratorFilter(const AcceleratorFilter&) = delete;
    AcceleratorFilter& operator=(const AcceleratorFilter&) = delete;

    // In front of the host for the keys of this window, as long as it lives or until Clear; the
    // owner must live as long. Putting it where it stands already changes nothing.
    void Activate(HWND hWnd, IAcceleratorOwner& oOwner);
    void Clear();

private:
    HWND m_hWnd = 0;
};
