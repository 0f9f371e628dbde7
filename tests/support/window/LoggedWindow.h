// tests/support/window/LoggedWindow.h: a window that writes down its messages.
#pragma once
#include "platform/window/window.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace test {

// One line for a message: its name, the parameters in the form that fits it, positions as x,y:
// "WM_LBUTTONDOWN 1 3,4", "WM_KEYDOWN 65", "WM_SETFOCUS main". Windows appear by the names that
// LoggedWindow has given them.
[[nodiscard]] std::string messageLine(std::uint32_t uMsg, platform::WPARAM wParam,
                                      platform::LPARAM lParam);

// A main window, and a child at a place in its parent.
[[nodiscard]] platform::WindowOptions mainWindow(platform::SIZE size = {200, 100});
[[nodiscard]] platform::WindowOptions childOf(platform::HWND parent,
                                              platform::RECT place = {10, 10, 60, 40});

// Of the client area; -1 by -1 for an unknown window.
[[nodiscard]] platform::SIZE clientSize(platform::HWND hWnd);

// Messages of all logged windows, each line headed by the window's name: "edit: WM_CHAR 97".
class MessageLog {
public:
    [[nodiscard]] std::string take();  // all lines, each ended by LF; the log is empty then
    void add(const std::string& line) { m_lines += line + '\n'; }

private:
    std::string m_lines;
};

class LoggedWindow {
public:
    // Writes into log what comes, except WM_SETCURSOR, WM_MOUSEACTIVATE, WM_GETTEXT and requests
    // for items of menus.
    LoggedWindow(MessageLog& log, std::string name, platform::WindowOptions options);
    ~LoggedWindow();  // destroys the window
    LoggedWindow(const LoggedWindow&) = delete;
    LoggedWindow& operator=(const LoggedWindow&) = delete;

    [[nodiscard]] platform::HWND hWnd() const { return m_hWnd; }
    [[nodiscard]] const std::string& name() const { return m_name; }

    // What the window does with a message, after it is written down. Without a result, and without
    // this, DefWindowProcW has it.
    std::function<std::optional<platform::LRESULT>(std::uint32_t uMsg, platform::WPARAM wParam,
                                                   platform::LPARAM lParam)>
        on;
    // Short for an `on` that does this at one message, which goes on to DefWindowProcW,
    void at(std::uint32_t uMsg, std::function<void()> act);
    // or that keeps the message, with the result 0.
    void keep(std::uint32_t uMsg);

private:
    static platform::LRESULT procedure(platform::HWND hWnd, std::uint32_t uMsg,
                                       platform::WPARAM wParam, platform::LPARAM lParam);
    MessageLog& m_log;
    std::string m_name;
    platform::HWND m_hWnd = 0;
};

}  // namespace test
