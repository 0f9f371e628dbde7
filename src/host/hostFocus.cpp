#include "host/hostFocus.h"

#include "host/Form.h"
#include "platform/window/focus.h"

#include <algorithm>
#include <vector>

namespace {

// The hosts that know that the focus is inside of them, the outermost first.
std::vector<HostWindow*>& inside() {
    static std::vector<HostWindow*> chain;
    return chain;
}

std::vector<HostWindow*> hostsAround(HWND hWnd) {
    std::vector<HostWindow*> chain;
    for (; hWnd != 0; hWnd = platform::GetParent(hWnd)) {
        HostWindow* host = HostWindow::find(hWnd);
        if (host != nullptr) chain.push_back(host);
        if (dynamic_cast<Form*>(host) != nullptr) break;  // around it is only its owner
    }
    std::ranges::reverse(chain);
    return chain;
}

// A form that just became active has the focus itself: one of its controls takes it.
bool startsFormFocus(HostWindow& host) {
    auto* form = dynamic_cast<Form*>(&host);
    if (form == nullptr || platform::GetFocus() != form->hWnd()) return false;
    return form->MoveFocus(true) && platform::GetFocus() != form->hWnd();
}

}  // namespace

// A friend of the notifications. One step at a time: every notification may move the focus or end
// hosts, and then it has brought the chain up to date itself.
class HostFocus {
public:
    static void follow() {
        for (;;) {
            const std::vector<HostWindow*> now = hostsAround(platform::GetFocus());
            std::vector<HostWindow*>& known = inside();
            const auto same =
                static_cast<std::size_t>(std::ranges::mismatch(known, now).in1 - known.begin());
            try {
                if (known.size() > same) {
                    HostWindow* const left = known.back();
                    known.pop_back();
                    left->onExitFocus();
                } else if (now.size() > same) {
                    known.push_back(now[same]);
                    now[same]->onEnterFocus();
                } else if (now.size() == 1 && startsFormFocus(*now.front())) {
                    // The form has handed it on.
                } else {
                    return;
                }
            } catch (...) {
                follow();  // the others hear of the move all the same
                throw;
            }
        }
    }
    static void leave(HostWindow& host) {
        if (std::erase(inside(), &host) > 0) host.onExitFocus();
    }
};

void startFocusWatch() { platform::setFocusObserver(HostFocus::follow); }

void leaveFocus(HostWindow& host) { HostFocus::leave(host); }
