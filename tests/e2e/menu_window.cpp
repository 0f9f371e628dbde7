// A window with a drawn menu, a menu at the right mouse button, and keys for commands, that says on
// standard output where the selector is, what is picked, and what becomes of the focus. It ends
// when it is closed and by Exit.
#include "menu/ctlUTF8Menu.h"
#include "menu/menuTree_test.h"
#include "platform/base/failure.h"
#include "platform/window/application.h"
#include "platform/window/surface.h"
#include "platform/window/window.h"

#include <cstdio>
#include <string>

using namespace platform;

namespace {

void say(const std::string& line) {
    std::printf("%s\n", line.c_str());
    std::fflush(stdout);
}

enum Command : std::uint32_t {
    Open = 10,
    Line,
    Save,
    Exit,
    Find = 20,
    Filter,
    Recent,
    First,
    Second
};

class Demo {
public:
    Demo() {
        WindowOptions options;
        options.kind = WindowKind::Main;
        options.position = {100, 100};
        options.size = {400, 200};
        options.title = u"Menus";
        options.procedure = procedure;
        options.userData = reinterpret_cast<std::intptr_t>(this);
        m_main = createWindow(options);
        options.kind = WindowKind::Child;
        options.parent = m_main;
        options.position = {20, 30};
        options.size = {100, 50};
        m_child = createWindow(options);

        const HMENU bar = ::test::menuTree({
            {1,
             u"&File",
             {{Open, u"&Open\tCtrl+O"},
              {Line, u"-"},
              {Save, u"&Save\tCtrl+S"},
              {Recent, u"&Recent", {{First, u"&1 first"}, {Second, u"&2 second"}}},
              {Exit, u"E&xit"}}},
            {2, u"&Tools", {{Find, u"&Find\tF3"}, {Filter, u"Fi&lter", {}, MFS_CHECKED}}},
        });
        m_tools = GetSubMenu(bar, 1);
        SetMenu(m_main, bar);
        const ACCEL kKeys[] = {{FCONTROL, 'O', Open}, {FCONTROL, 'S', Save}, {0, VK_F1 + 2, Find}};
        setAccelerators(m_main, kKeys);
        m_menu.LeftBand(true);
        m_menu.SelectorBackColor(rgb(0, 128, 0));
        m_menu.SelectorStyle(0);
        m_menu.OnOwnerDraw = [this](MenuItemLook& look, bool bSelected) {
            if (!bSelected || look.sCaption == m_selected) return;
            m_selected = look.sCaption;
            say("on " + toUtf8(m_selected));
        };
        m_menu.Attach(m_main);
        ShowWindow(m_main, SW_SHOW);
        SetFocus(m_child);
    }

private:
    static LRESULT procedure(HWND hWnd, std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
        auto& self = *reinterpret_cast<Demo*>(GetWindowLongW(hWnd, GWL_USERDATA));
        return self.hear(hWnd, uMsg, wParam, lParam);
    }
    LRESULT hear(HWND hWnd, std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
        const std::string window = hWnd == m_child ? "child" : "main";
        switch (uMsg) {
        case WM_COMMAND:
            say("command " + std::to_string(wParam));
            if (wParam == Exit) DestroyWindow(m_main);
            return 0;
        case WM_SETFOCUS:
            say(window + " has the focus");
            break;
        case WM_KILLFOCUS:
            say(window + " loses the focus");
            break;
        case WM_CHAR:
            say(window + " types " + std::to_string(wParam));
            break;
        case WM_LBUTTONDOWN: {
            const POINT at = pointOf(lParam);
            say(window + " pressed at " + std::to_string(at.x) + ',' + std::to_string(at.y));
            break;
        }
        case WM_CONTEXTMENU: {
            const POINT at = pointOf(lParam);
            say("menu at the mouse");
            const auto picked = TrackPopupMenu(m_tools, TPM_RETURNCMD, at.x, at.y, m_main);
            say("picked " + std::to_string(picked));
            return 0;
        }
        case WM_PAINT: {
            RECT all;
            GetClientRect(hWnd, all);
            const HDC hDC = GetDC(hWnd);
            const HBRUSH brush =
                CreateSolidBrush(hWnd == m_child ? rgb(0, 0, 255) : rgb(200, 230, 200));
            FillRect(hDC, all, brush);
            DeleteObject(brush);
            ReleaseDC(hWnd, hDC);
            break;
        }
        case WM_DESTROY:
            if (hWnd == m_main) {
                m_menu.Detach();
                PostQuitMessage(3);
            }
            break;
        default:
            break;
        }
        return DefWindowProcW(hWnd, uMsg, wParam, lParam);
    }

    HWND m_main = 0, m_child = 0;
    HMENU m_tools = 0;  // also the menu at the mouse
    Text m_selected;    // what the selector was drawn on last
    ctlUTF8Menu m_menu;
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
