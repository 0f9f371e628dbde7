// The drawn menu: a popup of twenty items measured and drawn, and a thousand items taken over and
// given back.
#include "gfx/modCtlCommon_ctl_shapes.h"
#include "menu/ctlUTF8Menu.h"
#include "offScreen.h"
#include "platform/window/screen.h"
#include "platform/window/window.h"

#include <benchmark/benchmark.h>

namespace {

using namespace platform;

Picture icon() {
    const HDC screen = GetDC(0);
    const HBITMAP hBitmap = CreateCompatibleBitmap(screen, 16, 16);
    ReleaseDC(0, screen);
    return OleCreatePictureIndirect({PICTYPE_BITMAP, hBitmap}, true);
}

HMENU popupOf(std::uint32_t count, std::uint32_t firstId) {
    const HMENU hMenu = CreateMenu();
    for (std::uint32_t i = 0; i < count; ++i) {
        MENUITEMINFOW info;
        info.fMask = MIIM_ID | MIIM_FTYPE | MIIM_STRING;
        info.wID = firstId + i;
        info.fType = i % 7 == 6 ? MFT_SEPARATOR : MFT_STRING;
        if (i % 7 != 6) {
            const std::string number = std::to_string(i);
            info.dwTypeData = u"Create a new &translation " + Text(number.begin(), number.end()) +
                              u"|1\tCtrl+" + static_cast<char16_t>(u'A' + i % 26);
        }
        (void)InsertMenuItemW(hMenu, ~0U, true, info);
    }
    return hMenu;
}

// A window with a bar of popups.
class MenuWindow {
public:
    MenuWindow(std::uint32_t popups, std::uint32_t items) {
        startOffScreen();
        WindowOptions options;
        options.kind = WindowKind::Main;
        options.size = {400, 300};
        m_hWnd = createWindow(options);
        const HMENU bar = CreateMenu();
        for (std::uint32_t i = 0; i < popups; ++i) {
            MENUITEMINFOW info;
            info.fMask = MIIM_ID | MIIM_STRING | MIIM_SUBMENU;
            info.wID = i + 1;
            info.dwTypeData = u"&File";
            info.hSubMenu = popupOf(items, 1000 + i * items);
            (void)InsertMenuItemW(bar, ~0U, true, info);
        }
        SetMenu(m_hWnd, bar);
        menu.ImageArray(std::make_shared<MenuPictures>(MenuPictures{icon()}));
        menu.LeftBand(true);
        menu.RoundSelector(true);
    }
    ~MenuWindow() {
        menu.Detach();
        DestroyWindow(m_hWnd);
    }
    MenuWindow(const MenuWindow&) = delete;
    MenuWindow& operator=(const MenuWindow&) = delete;
    [[nodiscard]] HWND hWnd() const { return m_hWnd; }
    ctlUTF8Menu menu;

private:
    HWND m_hWnd = 0;
};

void measureAndDrawTwentyItems(benchmark::State& state) {
    MenuWindow window(1, 20);
    window.menu.FadeBackground(state.range(0) != 0);
    window.menu.FadeLeftBand(state.range(0) != 0);
    window.menu.Attach(window.hWnd());
    const HDC screen = GetDC(0);
    const HDC hDC = CreateCompatibleDC(screen);
    const HBITMAP hBitmap = CreateCompatibleBitmap(screen, 400, 500);
    const HGDIOBJ hOld = SelectObject(hDC, hBitmap);
    NONCLIENTMETRICSA metrics;
    SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    const HFONT hFont = CreateFontIndirectA(metrics.lfMenuFont);
    const HGDIOBJ hOldFont = SelectObject(hDC, hFont);
    for (auto _ : state) {
        int y = 0;
        for (std::uint32_t key = 1; key <= 20; ++key) {
            MEASUREITEMSTRUCT size;
            size.itemData = key;
            SendMessageW(window.hWnd(), WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&size));
            DRAWITEMSTRUCT item;
            item.itemData = key;
            item.hDC = hDC;
            item.itemState = key == 3 ? ODS_SELECTED : key == 4 ? ODS_DISABLED : 0;
            item.rcItem = {0, y, 320, y + static_cast<int>(size.itemHeight)};
            SendMessageW(window.hWnd(), WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item));
            y += static_cast<int>(size.itemHeight);
        }
        benchmark::DoNotOptimize(y);
    }
    SelectObject(hDC, hOldFont);
    SelectObject(hDC, hOld);
    DeleteObject(hFont);
    DeleteObject(hBitmap);
    DeleteDC(hDC);
    ReleaseDC(0, screen);
}

void takeOver(benchmark::State& state) {
    MenuWindow window(static_cast<std::uint32_t>(state.range(0)), 1000);
    for (auto _ : state) {
        window.menu.Attach(window.hWnd());
        state.PauseTiming();
        window.menu.Detach();
        state.ResumeTiming();
    }
}

void giveBack(benchmark::State& state) {
    MenuWindow window(static_cast<std::uint32_t>(state.range(0)), 1000);
    for (auto _ : state) {
        state.PauseTiming();
        window.menu.Attach(window.hWnd());
        state.ResumeTiming();
        window.menu.Detach();
    }
}

// What opening a popup asks of the records: are they all still there, is anything new?
void preparePopup(benchmark::State& state) {
    MenuWindow window(static_cast<std::uint32_t>(state.range(0)), 1000);
    window.menu.Attach(window.hWnd());
    const auto popup = static_cast<WPARAM>(GetSubMenu(GetMenu(window.hWnd()), 0));
    for (auto _ : state) {
        benchmark::DoNotOptimize(SendMessageW(window.hWnd(), WM_INITMENUPOPUP, popup, 0));
    }
}

BENCHMARK(measureAndDrawTwentyItems)->ArgName("gradients")->Arg(0)->Arg(1);
BENCHMARK(takeOver)->ArgName("thousands")->Arg(1)->Arg(10);
BENCHMARK(giveBack)->ArgName("thousands")->Arg(1)->Arg(10);
BENCHMARK(preparePopup)->ArgName("thousands")->Arg(1)->Arg(10);

}  // namespace
