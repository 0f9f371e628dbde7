// Menus of windows: the bar and its place, popups at the mouse, keys for commands.
#include "platform/window/menu_widgets_internal.h"
#include "platform/window/window_internal.h"

#include <QApplication>
#include <QKeyEvent>
#include <algorithm>

namespace platform {
namespace {

BarWidget* barOf(const WindowRecord& record) { return static_cast<BarWidget*>(record.menuBar); }

void removeBar(WindowRecord& record) {
    if (MenuRecord* menu = menuOf(std::exchange(record.menu, 0))) menu->window = 0;
    if (BarWidget* bar = barOf(record)) {
        record.menuBar = nullptr;
        bar->closeLater();
    }
}

// Gives the bar so many rows. The client area stays as it is while nobody sees the window, else it
// makes room.
void setClientTop(WindowRecord& record, int rows) {
    const int delta = rows - record.clientTop;
    if (delta == 0) return;
    QWidget& widget = *record.widget;
    const QRect client = clientGeometry(record);
    record.clientTop = rows;
    applyRegion(record);
    for (QObject* object : widget.children()) {
        auto* child = qobject_cast<QWidget*>(object);
        if (child == nullptr || child->isWindow() || child == record.menuBar) continue;
        if (dynamic_cast<MessageTarget*>(child) != nullptr)
            child->move(child->x(), child->y() + delta);
    }
    if (widget.isVisible()) return;
    if (record.placed) {
        setClientGeometry(record, client);
    } else {
        setClientSize(record, client.width(), client.height());
    }
}

}  // namespace

// ---- The bar

void placeMenuBar(WindowRecord& record) {
    const HWND hWnd = record.handle;
    BarWidget* const bar = barOf(record);
    if (bar == nullptr) return;
    const int width = record.widget->width();
    const int height = bar->actions().isEmpty() ? 0 : bar->heightForWidth(width);
    const auto isGone = [&] { return !IsWindow(hWnd) || record.menuBar != bar; };
    if (isGone()) return;  // measuring may end it
    bar->setGeometry(0, 0, width, height);
    bar->setVisible(height > 0);
    if (!isGone()) setClientTop(record, height);
}

void updateMenuBar(WindowRecord& record) {
    if (BarWidget* bar = barOf(record)) bar->sync();
}

void remeasureMenuBar(WindowRecord& record) {
    if (BarWidget* bar = barOf(record)) bar->remeasure();
}

void turnMenuBarKeys(WindowRecord& record) {
    if (BarWidget* bar = barOf(record)) bar->turnKeys();
}

bool SetMenu(HWND hWnd, HMENU hMenu) {
    WindowRecord* record = windowOf(hWnd);
    if (record == nullptr || record->kind == WindowKind::Child) return false;
    MenuRecord* menu = menuOf(hMenu);
    if (hMenu != 0 && (menu == nullptr || (menu->window != 0 && menu->window != hWnd)))
        return false;
    if (record->menu != hMenu) {
        removeBar(*record);
        record->menu = hMenu;
        if (menu != nullptr) {
            menu->window = hWnd;
            auto* const bar = new BarWidget(hMenu, hWnd, record->widget);
            record->menuBar = bar;
            menu->bar = bar;
        } else {
            setClientTop(*record, 0);
        }
    }
    updateMenuBar(*record);
    if (IsWindow(hWnd)) reportPlace(*record);
    return true;
}

HMENU GetMenu(HWND hWnd) {
    const WindowRecord* record = windowOf(hWnd);
    return record == nullptr ? 0 : record->menu;
}

bool DrawMenuBar(HWND hWnd) {
    WindowRecord* record = windowOf(hWnd);
    if (record == nullptr || record->menuBar == nullptr) return false;
    updateMenuBar(*record);
    return true;
}

HMENU GetSystemMenu(HWND hWnd, bool /*bRevert*/) {
    WindowRecord* record = windowOf(hWnd);
    if (record == nullptr) return 0;
    if (record->systemMenu == 0) record->systemMenu = CreateMenu();
    return record->systemMenu;
}

void destroyMenusOf(WindowRecord& record) {
    const HMENU bar = record.menu;
    removeBar(record);
    DestroyMenu(bar);
    DestroyMenu(std::exchange(record.systemMenu, 0));
    // Menus that have popped up from the window live on, but nobody shows them any more.
    menuTable().forEach([&](HMENU, MenuRecord& menu) {
        if (menu.popup != nullptr && menu.popup->owner() == record.handle) {
            menu.popup->closeLater();
        }
    });
}

// ---- Popups

std::int32_t TrackPopupMenu(HMENU hMenu, std::uint32_t flags, int x, int y, HWND hWnd) {
    PopupWidget* const popup = popupWidgetOf(hMenu, hWnd);
    if (popup == nullptr || popup->isVisible()) return 0;
    std::optional<std::uint32_t> picked;
    const bool returnsIt = (flags & TPM_RETURNCMD) != 0;
    const bool opened = popup->track(x, y, flags, returnsIt ? &picked : nullptr);
    return returnsIt ? static_cast<std::int32_t>(picked.value_or(0)) : opened ? 1 : 0;
}

// ---- Keys

bool setAccelerators(HWND hWnd, std::span<const ACCEL> keys) {
    WindowRecord* record = windowOf(hWnd);
    if (record == nullptr) return false;
    record->accelerators.assign(keys.begin(), keys.end());
    return true;
}

namespace {

// Whether the item with that identifier can be picked: neither it nor what it is inside of is
// disabled. True also when no item has it.
bool canBePicked(HMENU hMenu, std::uint32_t id) {
    const MenuPlace place = findItem(hMenu, id, false);
    if (!place) return true;
    if ((place.item().state & MFS_DISABLED) != 0) return false;
    if (place.menu->handle == hMenu) return true;
    for (const MenuItem& item : menuOf(hMenu)->items) {
        if (item.subMenu == 0 || !findItem(item.subMenu, id, false)) continue;
        return (item.state & MFS_DISABLED) == 0 && canBePicked(item.subMenu, id);
    }
    return true;
}

}  // namespace

bool isAccelerator(const WindowRecord& focused, const QKeyEvent& key) {
    const WindowRecord* top = windowOf(windowOfWidget(focused.widget->window()));
    if (top == nullptr || top->accelerators.empty()) return false;
    std::uint8_t held = 0;
    if (key.modifiers().testFlag(Qt::ShiftModifier)) held |= FSHIFT;
    if (key.modifiers().testFlag(Qt::ControlModifier)) held |= FCONTROL;
    if (key.modifiers().testFlag(Qt::AltModifier)) held |= FALT;
    const std::int32_t code = keyCodeOf(key);
    const auto found = std::ranges::find_if(top->accelerators, [&](const ACCEL& accelerator) {
        return accelerator.key == code && accelerator.fVirt == held;
    });
    if (found == top->accelerators.end()) return false;
    if (canBePicked(top->menu, found->cmd)) {
        PostMessageW(top->handle, WM_COMMAND, static_cast<WPARAM>(found->cmd), 0);
    }
    return true;
}

}  // namespace platform
