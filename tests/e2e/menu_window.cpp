// A window with a drawn menu, a menu at the right mouse button, and keys for commands, that says on
// standard output where the selector is, what is picked, and what becomes of the focus. It ends
// when it is closed and by Exit.
#include "menu/ctlUTF8Menu.h"
#include "platform/base/failure.h"
#include "platform/window/application.h"
#include "platform/window/surface.h"
#include "platform/window/window.h"

#include <cstdio>
#include <string>
#include <vector>

using namespace platform;

namespace {

void say(const std::string& line) {
    std::printf("%s\n", line.c_str());
    std::fflush(stdout);
}

struct Entry {
    std::uint32_t id;
    Text text;
    std::uint32_t state = 0;
    HMENU opens = 0;
};

HMENU menuOf(const std::vector<Entry>& entries) {
    const HMENU hMenu = CreateMenu();
    for (const Entry& entry : entries) {
        MENUITEMINFOW info;
        info.fMask = MIIM_ID | MIIM_STATE | MIIM_FTYPE | MIIM_STRING | MIIM_SUBMENU;
        info.wID = entry.id;
        info.fState = entry.state;
        info.fType = entry.text == u"-" ? MFT_SEPARATOR : MFT_STRING;
        if (entry.text != u"-") info.dwTypeData = entry.text;
        info.hSubMenu = entry.opens;
        (void)InsertMenuItemW(hMenu, ~0U, true, info);
    }
    return hMenu;
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

        m_recent = menuOf({{First, u"&1 first"}, {Second, u"&2 second"}});
        m_file = menuOf({{Open, u"&Open\tCtrl+O"},
                         {Line, u"-"},
                         {Save, u"&Save\tCtrl+S"},
                         {Recent, u"&Recent", 0, m_recent},
                         {Exit, u"E&xit"}});
        m_tools = menuOf({{Find, u"&Find\tF3"}, {Filter, u"Fi&lter", MFS_CHECKED}});
        SetMenu(m_main, menuOf({{1, u"&File", 0, m_file}, {2, u"&Tools", 0, m_tools}}));
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
    HMENU m_file = 0, m_tools = 0, m_recent = 0;
    Text m_selected;  // what the selector was drawn on last
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
