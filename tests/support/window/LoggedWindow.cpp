#include "support/window/LoggedWindow.h"

#include <map>
#include <set>
#include <utility>

namespace test {
namespace {

using namespace platform;

std::map<HWND, std::string>& names() {
    static std::map<HWND, std::string> all;
    return all;
}

std::string nameOf(WPARAM handle) {
    const auto found = names().find(static_cast<HWND>(handle));
    return found == names().end() ? std::to_string(handle) : found->second;
}

// Which parameters of a message are written down: wParam alone, both as they are, lParam as a
// place, wParam as a window, none.
enum class Form { Code, Numbers, Position, Window, None };
struct Known {
    const char* name;
    Form form;
};
const std::map<std::uint32_t, Known> kKnown{
    {WM_DESTROY, {"WM_DESTROY", Form::None}},
    {WM_MOVE, {"WM_MOVE", Form::Position}},
    {WM_SIZE, {"WM_SIZE", Form::Position}},
    {WM_SETFOCUS, {"WM_SETFOCUS", Form::Window}},
    {WM_KILLFOCUS, {"WM_KILLFOCUS", Form::Window}},
    {WM_ENABLE, {"WM_ENABLE", Form::Code}},
    {WM_SETTEXT, {"WM_SETTEXT", Form::None}},
    {WM_PAINT, {"WM_PAINT", Form::None}},
    {WM_CLOSE, {"WM_CLOSE", Form::None}},
    {WM_SYSCOLORCHANGE, {"WM_SYSCOLORCHANGE", Form::None}},
    {WM_SETTINGCHANGE, {"WM_SETTINGCHANGE", Form::None}},
    {WM_SETCURSOR, {"WM_SETCURSOR", Form::Window}},
    {WM_MOUSEACTIVATE, {"WM_MOUSEACTIVATE", Form::Window}},
    {WM_CONTEXTMENU, {"WM_CONTEXTMENU", Form::Window}},
    {WM_KEYDOWN, {"WM_KEYDOWN", Form::Code}},
    {WM_KEYUP, {"WM_KEYUP", Form::Code}},
    {WM_CHAR, {"WM_CHAR", Form::Code}},
    {WM_SYSKEYDOWN, {"WM_SYSKEYDOWN", Form::Code}},
    {WM_SYSKEYUP, {"WM_SYSKEYUP", Form::Code}},
    {WM_SYSCHAR, {"WM_SYSCHAR", Form::Code}},
    {WM_COMMAND, {"WM_COMMAND", Form::Code}},
    {WM_INITMENUPOPUP, {"WM_INITMENUPOPUP", Form::Numbers}},
    {WM_TIMER, {"WM_TIMER", Form::Code}},
    {WM_MOUSEMOVE, {"WM_MOUSEMOVE", Form::Position}},
    {WM_LBUTTONDOWN, {"WM_LBUTTONDOWN", Form::Position}},
    {WM_LBUTTONUP, {"WM_LBUTTONUP", Form::Position}},
    {WM_LBUTTONDBLCLK, {"WM_LBUTTONDBLCLK", Form::Position}},
    {WM_RBUTTONDOWN, {"WM_RBUTTONDOWN", Form::Position}},
    {WM_RBUTTONUP, {"WM_RBUTTONUP", Form::Position}},
    {WM_RBUTTONDBLCLK, {"WM_RBUTTONDBLCLK", Form::Position}},
    {WM_MBUTTONDOWN, {"WM_MBUTTONDOWN", Form::Position}},
    {WM_MBUTTONUP, {"WM_MBUTTONUP", Form::Position}},
    {WM_MBUTTONDBLCLK, {"WM_MBUTTONDBLCLK", Form::Position}},
    {WM_DROPFILES, {"WM_DROPFILES", Form::None}},
    {WM_MOUSELEAVE, {"WM_MOUSELEAVE", Form::None}},
};

}  // namespace

std::string messageLine(std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
    const POINT at = pointOf(lParam);
    const std::string position = ' ' + std::to_string(at.x) + ',' + std::to_string(at.y);
    if (uMsg == WM_MOUSEWHEEL) {
        const auto turned = static_cast<std::int16_t>(hiWord(wParam));
        return "WM_MOUSEWHEEL " + std::to_string(turned) + ' ' + std::to_string(loWord(wParam)) +
               position;
    }
    const auto found = kKnown.find(uMsg);
    const bool known = found != kKnown.end();
    const std::string name = known ? found->second.name : std::to_string(uMsg);
    switch (known ? found->second.form : Form::Numbers) {
    case Form::Code:
        return name + ' ' + std::to_string(wParam);
    case Form::Numbers:
        return name + ' ' + std::to_string(wParam) + ' ' + std::to_string(lParam);
    case Form::Position:
        return name + ' ' + std::to_string(wParam) + position;
    case Form::Window:
        return name + ' ' + nameOf(wParam);
    case Form::None:
        break;
    }
    return name;
}

WindowOptions mainWindow(SIZE size) {
    WindowOptions options;
    options.kind = WindowKind::Main;
    options.size = size;
    return options;
}

WindowOptions childOf(HWND parent, RECT place) {
    WindowOptions options;
    options.parent = parent;
    options.position = {place.left, place.top};
    options.size = {place.right - place.left, place.bottom - place.top};
    return options;
}

SIZE clientSize(HWND hWnd) {
    RECT rect;
    return GetClientRect(hWnd, rect) ? SIZE{rect.right, rect.bottom} : SIZE{-1, -1};
}

std::string MessageLog::take() { return std::exchange(m_lines, {}); }

LoggedWindow::LoggedWindow(MessageLog& log, std::string name, WindowOptions options)
    : m_log(log), m_name(std::move(name)) {
    options.procedure = procedure;
    options.userData = reinterpret_cast<std::intptr_t>(this);
    m_hWnd = createWindow(options);
    names()[m_hWnd] = m_name;
}

LoggedWindow::~LoggedWindow() {
    on = nullptr;
    DestroyWindow(m_hWnd);
    names().erase(m_hWnd);
}

void LoggedWindow::at(std::uint32_t uMsg, std::function<void()> act) {
    on = [uMsg, act = std::move(act)](std::uint32_t now, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (now == uMsg) act();
        return std::nullopt;
    };
}

void LoggedWindow::keep(std::uint32_t uMsg) {
    on = [uMsg](std::uint32_t now, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (now == uMsg) return 0;
        return std::nullopt;
    };
}

LRESULT LoggedWindow::procedure(HWND hWnd, std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
    static const std::set<std::uint32_t> kQuiet{WM_SETCURSOR, WM_MOUSEACTIVATE, WM_GETTEXT,
                                                WM_MEASUREITEM, WM_DRAWITEM};
    auto& self = *reinterpret_cast<LoggedWindow*>(GetWindowLongW(hWnd, GWL_USERDATA));
    if (!kQuiet.contains(uMsg)) {
        self.m_log.add(self.m_name + ": " + messageLine(uMsg, wParam, lParam));
    }
    if (self.on) {
        if (const auto result = self.on(uMsg, wParam, lParam)) return *result;
    }
    return DefWindowProcW(hWnd, uMsg, wParam, lParam);
}

}  // namespace test
