// The drawn menu: its items in three looks, and a window to try the program's whole menu in.
#include "gallery/Sheet.h"
#include "gallery/Window.h"
#include "gallery/pages.h"
#include "gfx/modCtlCommon_ctl_shapes.h"
#include "menu/captions.h"
#include "menu/ctlUTF8Menu.h"
#include "platform/window/screen.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace gallery {
namespace {

using namespace platform;

struct Entry {
    std::uint32_t id = 0;
    Text text{};  // empty: a separator
    std::vector<Entry> opens{};
    std::uint32_t state = 0;
};

HMENU menuOf(const std::vector<Entry>& entries) {
    const HMENU hMenu = CreateMenu();
    for (const Entry& entry : entries) {
        MENUITEMINFOW info;
        info.fMask = MIIM_ID | MIIM_STATE | MIIM_FTYPE | MIIM_STRING | MIIM_SUBMENU;
        info.wID = entry.id;
        info.fState = entry.state;
        info.fType = entry.text.empty() ? MFT_SEPARATOR : MFT_STRING;
        info.dwTypeData = entry.text;
        if (!entry.opens.empty()) info.hSubMenu = menuOf(entry.opens);
        (void)InsertMenuItemW(hMenu, ~0U, true, info);
    }
    return hMenu;
}

// The image numbers are those of images().
std::vector<Entry> programMenu() {
    return {
        {1,
         u"&File|1",
         {{10, u"Open the main translation file|2"},
          {11},
          {12, u"Open the file to translate|2"},
          {13, u"Create a new translation from an empty file|3"},
          {14, u"Create a new translation from a copy of the main  file"},
          {15},
          {16, u"Save Translation\tCtrl+S", {}, MFS_DISABLED},
          {17},
          {18, u"Exit|4"}}},
        {2,
         u"&Tools",
         {{20, u"Find Next Untranslated\tF3"},
          {21, u"Find Phrase\tCtrl+F"},
          {22, u"Find Translated Phrase\tCtrl+T"},
          {23, u"[SEP]View"},
          {24, u"Show only untranslated strings", {}, MFS_CHECKED},
          {25, u"Go to Line...\tCtrl+G"}}},
        {3,
         u"&Help",
         {{30, encodedText(u"\u041F\u043E\u043C\u043E\u0449\u044C \u2026") + u"\tF1"},
          {31, encodedText(u"\u5173\u4E8E")},
          {32, u"&About"}}},
    };
}

Picture square(Color color) {
    constexpr int kSide = 14;
    const HDC screen = GetDC(0);
    const HBITMAP hBitmap = CreateCompatibleBitmap(screen, kSide, kSide);
    const HDC hDC = CreateCompatibleDC(screen);
    const HGDIOBJ hOld = SelectObject(hDC, hBitmap);
    DrawRectXY(hDC, 0, 0, kSide, kSide, 0xFFFFFF, true);
    DrawRoundRect(hDC, 1, 1, kSide - 1, kSide - 1,
                  {.bFill = true, .iFillColor = color, .iPenColor = color, .iRadius = 3});
    SelectObject(hDC, hOld);
    DeleteDC(hDC);
    ReleaseDC(0, screen);
    return OleCreatePictureIndirect({PICTYPE_BITMAP, hBitmap}, true);
}

std::shared_ptr<MenuPictures> images() {
    return std::make_shared<MenuPictures>(
        MenuPictures{square(rgb(110, 120, 135)), square(rgb(222, 168, 60)),
                     square(rgb(90, 160, 90)), square(rgb(190, 70, 60))});
}

void lookOfTheProgram(ctlUTF8Menu& menu) {
    menu.SelectorBackColor(0xA78A7F);
    menu.SelectorForeColor(0xFFFFFF);
    menu.LeftBand(true);
    menu.RoundSelector(true);
}

void lookOfGradients(ctlUTF8Menu& menu) {
    menu.MenuBackColor(rgb(246, 248, 251));
    menu.LeftBand(true);
    menu.LeftBandBackColor(rgb(160, 186, 222));
    menu.FadeLeftBand(true);
    menu.FadeBackground(true);
    menu.LeftBandSeparators(true);
    menu.ExtSepBackColor(rgb(200, 214, 235));
    menu.FadeExtSep(true);
    menu.SelectorStyle(1);
    menu.SelectorBackColor(rgb(70, 110, 170));
}

// A window with the program's menu, taken over.
class MenuWindow : public Window {
public:
    MenuWindow(WindowOptions options, void (*look)(ctlUTF8Menu& menu))
        : Window(std::move(options)) {
        SetMenu(hWnd(), menuOf(programMenu()));
        if (look != nullptr) look(m_menu);
        m_menu.ImageArray(images());
        m_menu.Attach(hWnd());
    }
    ~MenuWindow() override { m_menu.Detach(); }

protected:
    void paint(HDC hDC, SIZE size) override {
        DrawRectXY(hDC, 0, 0, size.cx, size.cy, kPaper, true);
    }

private:
    ctlUTF8Menu m_menu;
};

WindowOptions mainWindow(HWND owner) {
    WindowOptions options;
    options.kind = WindowKind::Main;
    options.parent = owner;
    options.size = {460, 240};
    options.title = u"The program's menu";
    return options;
}

// ---- Drawn without being open

// Has the window measure and draw one level of its menu, the selector on the item of that
// position; the size of it.
SIZE drawLevel(HDC hDC, POINT at, HWND hWnd, HMENU hMenu, bool onBar, int selected) {
    constexpr int kCheckMark = 12;  // what the platform adds to an item
    struct Item {
        DRAWITEMSTRUCT request;
        SIZE size;
    };
    std::vector<Item> items;
    SIZE whole;
    for (int i = 0; i < GetMenuItemCount(hMenu); ++i) {
        MENUITEMINFOW info;
        info.fMask = MIIM_DATA | MIIM_STATE;
        (void)GetMenuItemInfoW(hMenu, static_cast<std::uint32_t>(i), true, info);
        MEASUREITEMSTRUCT measured;
        measured.itemData = info.dwItemData;
        SendMessageW(hWnd, WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&measured));
        Item item;
        item.size = {static_cast<int>(measured.itemWidth) + kCheckMark,
                     static_cast<int>(measured.itemHeight)};
        item.request.hDC = hDC;
        item.request.itemData = info.dwItemData;
        if (i == selected) item.request.itemState |= ODS_SELECTED;
        if ((info.fState & MFS_DISABLED) != 0) item.request.itemState |= ODS_DISABLED;
        if ((info.fState & MFS_CHECKED) != 0) item.request.itemState |= ODS_CHECKED;
        items.push_back(item);
        whole.cx = onBar ? whole.cx + item.size.cx : std::max(whole.cx, item.size.cx);
        whole.cy = onBar ? std::max(whole.cy, item.size.cy) : whole.cy + item.size.cy;
    }
    POINT next = at;
    for (Item& item : items) {
        const int width = onBar ? item.size.cx : whole.cx, height = onBar ? whole.cy : item.size.cy;
        item.request.rcItem = box(next.x, next.y, width, height);
        SendMessageW(hWnd, WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item.request));
        (onBar ? next.x : next.y) += onBar ? width : height;
    }
    return whole;
}

struct Look {
    TextView title;
    void (*set)(ctlUTF8Menu& menu);
};
constexpr Look kLooks[] = {{u"Defaults", nullptr},
                           {u"The program's", lookOfTheProgram},
                           {u"Gradients and a line beside the band", lookOfGradients}};
constexpr int kLookHeight = 174;

RECT lookOf(const RECT& area, int i) {
    return box(area.left, area.top + i * kLookHeight, widthOf(area), kLookHeight);
}
RECT buttonOf(const RECT& area) {
    return box(area.left, area.top + static_cast<int>(std::size(kLooks)) * kLookHeight, 170, 30);
}

constexpr TextView kTryIt = u"Try it...";

// ---- To be tried

class TryWindow : public MenuWindow {
public:
    explicit TryWindow(PageHost host)
        : MenuWindow(mainWindow(host.hWnd), lookOfTheProgram), m_host(std::move(host)) {
        const ACCEL kKeys[] = {{FCONTROL, 'S', 16}, {0, VK_F1 + 2, 20},  {FCONTROL, 'F', 21},
                               {FCONTROL, 'T', 22}, {FCONTROL, 'G', 25}, {0, VK_F1, 30}};
        setAccelerators(hWnd(), kKeys);
        ShowWindow(hWnd(), SW_SHOW);
    }

protected:
    LRESULT message(std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) override {
        if (uMsg == WM_COMMAND) {
            m_host.log("menu command " + std::to_string(wParam));
            m_last = u"Picked: " + number(wParam);
            repaint();
            if (wParam == 18) PostMessageW(hWnd(), WM_CLOSE, 0, 0);
            return 0;
        }
        if (uMsg == WM_CONTEXTMENU) {
            POINT at = pointOf(lParam);
            if (lParam == -1) ClientToScreen(hWnd(), at = {0, 0});
            (void)TrackPopupMenu(GetSubMenu(GetMenu(hWnd()), 1), 0, at.x, at.y, hWnd());
            return 0;
        }
        return MenuWindow::message(uMsg, wParam, lParam);
    }
    void paint(HDC hDC, SIZE size) override {
        MenuWindow::paint(hDC, size);
        write(hDC, {20, 20, size.cx - 20, 44}, m_last, {.points = 11});
        write(hDC, {20, 48, size.cx - 20, 68},
              u"By mouse, by Alt and a letter, by its keys; the right button opens Tools here.",
              kCaption);
    }

private:
    PageHost m_host;
    Text m_last = u"Nothing picked yet";
};

class MenuPage : public LivePage {
public:
    explicit MenuPage(PageHost host)
        : m_host(std::move(host)), m_button(m_host.hWnd, Text(kTryIt), [this] {
              m_window = nullptr;
              m_window = std::make_unique<TryWindow>(m_host);
          }) {}
    void place(const RECT& area) override { m_button.place(buttonOf(area)); }
    [[nodiscard]] std::vector<HWND> tabStops() const override { return {m_button.hWnd()}; }

private:
    PageHost m_host;
    PushButton m_button;
    std::unique_ptr<TryWindow> m_window;
};

}  // namespace

void drawMenu(HDC hDC, const RECT& area) {
    for (int i = 0; i < static_cast<int>(std::size(kLooks)); ++i) {
        RECT place = lookOf(area, i);
        heading(hDC, place, kLooks[i].title);
        const MenuWindow window(mainWindow(0), kLooks[i].set);
        const HMENU bar = GetMenu(window.hWnd());
        NONCLIENTMETRICSA metrics;
        SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
        const clsGdiHandle font(CreateFontIndirectA(metrics.lfMenuFont));
        const HGDIOBJ hOldFont = SelectObject(hDC, font.Handle());
        (void)drawLevel(hDC, {place.right - 200, place.top + 6}, window.hWnd(), bar, true, 1);
        int x = place.left;
        for (int menu = 0; menu < 2; ++menu) {
            x += 12 + drawLevel(hDC, {x, place.top + 6}, window.hWnd(), GetSubMenu(bar, menu),
                                false, menu == 0 ? 2 : 1)
                          .cx;
        }
        (void)drawLevel(hDC, {place.right - 200, place.top + 40}, window.hWnd(), GetSubMenu(bar, 2),
                        false, 0);
        SelectObject(hDC, hOldFont);
    }
    PushButton::draw(hDC, buttonOf(area), kTryIt, {});
}

std::unique_ptr<LivePage> openMenu(const PageHost& host) {
    return std::make_unique<MenuPage>(host);
}

}  // namespace gallery
