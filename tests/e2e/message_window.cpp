// A window with a child that says on standard output what input it hears. Some letters do more:
//   j  a job that reads no messages and looks at the Shift key
//   w  a waiting window, painted before such a job
//   m  a modal dialog; Escape ends it
// It ends when it is closed.
#include "platform/base/failure.h"
#include "platform/window/application.h"
#include "platform/window/input.h"
#include "platform/window/surface.h"
#include "platform/window/wait.h"
#include "support/window/LoggedWindow.h"

#include <chrono>
#include <cstdio>
#include <thread>

using namespace platform;

namespace {

void say(const std::string& line) {
    std::printf("%s\n", line.c_str());
    std::fflush(stdout);
}

bool isInput(std::uint32_t uMsg) {
    const bool key = uMsg >= WM_KEYDOWN && uMsg <= WM_SYSCHAR;
    const bool button = uMsg >= WM_LBUTTONDOWN && uMsg <= WM_MOUSEWHEEL;
    return key || button || uMsg == WM_CONTEXTMENU || uMsg == WM_SETFOCUS || uMsg == WM_KILLFOCUS ||
           uMsg == WM_CLOSE || uMsg == WM_SIZE;
}

void fill(HWND hWnd, COLORREF color) {
    RECT all;
    GetClientRect(hWnd, all);
    const HDC hDC = GetDC(hWnd);
    const HBRUSH brush = CreateSolidBrush(color);
    FillRect(hDC, all, brush);
    DeleteObject(brush);
    ReleaseDC(hWnd, hDC);
}

WindowOptions window(WindowKind kind, HWND parent, POINT position, SIZE size) {
    WindowOptions options;
    options.kind = kind;
    options.parent = parent;
    options.position = position;
    options.size = size;
    options.title = u"Messages";
    return options;
}

void lookAtShift() {
    say("job begins");
    const auto start = std::chrono::steady_clock::now();
    while (GetAsyncKeyState(VK_SHIFT) >= 0) {
        if (std::chrono::steady_clock::now() - start > std::chrono::seconds(60)) {
            say("job saw no Shift");
            return;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    say("job saw Shift");
}

class Demo {
public:
    Demo() {
        hear(m_main, rgb(200, 230, 200));
        hear(m_child, rgb(0, 0, 255));
        hear(m_dialog, rgb(255, 255, 0));
        ShowWindow(m_main.hWnd(), SW_SHOW);
        SetFocus(m_child.hWnd());
    }

private:
    void hear(test::LoggedWindow& heard, COLORREF color) {
        heard.on = [this, &heard, color](std::uint32_t uMsg, WPARAM wParam,
                                         LPARAM lParam) -> std::optional<LRESULT> {
            if (isInput(uMsg)) {
                say(heard.name() + ": " + test::messageLine(uMsg, wParam, lParam));
            }
            if (uMsg == WM_PAINT) fill(heard.hWnd(), color);
            if (uMsg == WM_LBUTTONDOWN) SetFocus(heard.hWnd());
            if (uMsg == WM_CHAR) typed(wParam);
            if (uMsg == WM_DESTROY && &heard == &m_main) PostQuitMessage(3);
            return std::nullopt;
        };
    }
    void typed(WPARAM unit) {
        if (unit == u'j') lookAtShift();
        if (unit == u'w') {
            test::LoggedWindow wait(m_log, "wait",
                                    window(WindowKind::Bare, m_main.hWnd(), {300, 200}, {90, 40}));
            wait.on = [&](std::uint32_t uMsg, WPARAM, LPARAM) -> std::optional<LRESULT> {
                if (uMsg == WM_PAINT) fill(wait.hWnd(), rgb(255, 0, 0));
                return std::nullopt;
            };
            say(showPainted(wait.hWnd()) ? "waiting window is painted" : "no waiting window");
            lookAtShift();
        }
        if (unit == u'm') {
            say("dialog opens");
            runModal(m_dialog.hWnd());
            say("dialog closed");
        }
        if (unit == VK_ESCAPE) ShowWindow(m_dialog.hWnd(), SW_HIDE);
    }

    test::MessageLog m_log;
    test::LoggedWindow m_main{m_log, "main", window(WindowKind::Main, 0, {100, 100}, {300, 200})};
    test::LoggedWindow m_child{m_log, "child",
                               window(WindowKind::Child, m_main.hWnd(), {20, 20}, {100, 50})};
    test::LoggedWindow m_dialog{m_log, "dialog",
                                window(WindowKind::Dialog, m_main.hWnd(), {450, 300}, {120, 60})};
};

}  // namespace

int main(int argc, char** argv) {
    try {
        Application application(argc, argv, {});
        const Demo demo;
        say("ready");
        return application.run();
    } catch (const Failure& failure) {
        std::fprintf(stderr, "%s\n", toUtf8(failure.message).c_str());
        return 1;
    }
}
