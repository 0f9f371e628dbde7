// What tests do with menus in place of a person.
#include "platform/window/menu_widgets_internal.h"
#include "platform/window/surface_internal.h"
#include "platform/window/testhooks_internal.h"
#include "platform/window/toolkit_internal.h"
#include "platform/window/window_internal.h"

#include <QAccessible>
#include <QApplication>
#include <algorithm>

namespace platform::test {
namespace {

// The widget that shows a menu at this moment, and where it has an item.
struct Shown {
    QWidget* widget = nullptr;
    QRect item;
};

Shown shownBy(HMENU hMenu, int position) {
    const MenuRecord* menu = menuOf(hMenu);
    if (menu == nullptr) return {};
    Shown shown;
    if (auto* popup = static_cast<PopupWidget*>(menu->popup);
        popup != nullptr && popup->isVisible()) {
        shown.widget = popup;
        const QList<QAction*> actions = popup->actions();
        if (position >= 0 && position < actions.size()) {
            shown.item = popup->actionGeometry(actions[position]);
        }
    } else if (auto* bar = static_cast<BarWidget*>(menu->bar); bar != nullptr) {
        shown.widget = bar;
        const QList<QAction*> actions = bar->actions();
        if (position >= 0 && position < actions.size()) {
            shown.item = bar->actionGeometry(actions[position]);
        }
    }
    return shown;
}

std::string roleOf(QAccessible::Role role) {
    switch (role) {
    case QAccessible::MenuItem:
        return "item";
    case QAccessible::Separator:
        return "separator";
    default:
        return "role " + std::to_string(role);
    }
}

}  // namespace

RECT menuItemPlace(HMENU hMenu, int position) {
    const Shown shown = shownBy(hMenu, position);
    if (shown.widget == nullptr || shown.item.isEmpty()) return {};
    const QPoint at = shown.widget->mapToGlobal(shown.item.topLeft());
    return {at.x(), at.y(), at.x() + shown.item.width(), at.y() + shown.item.height()};
}

bool isMenuOpen(HMENU hMenu) {
    const MenuRecord* menu = menuOf(hMenu);
    return menu != nullptr && menu->popup != nullptr &&
           static_cast<PopupWidget*>(menu->popup)->isVisible();
}

void mouseOnMenu(HMENU hMenu, int position, MouseAction action, WPARAM button, WPARAM down) {
    const Shown shown = shownBy(hMenu, position);
    if (shown.widget == nullptr || shown.item.isEmpty()) return;
    sendMouse(*shown.widget, action, shown.item.center(), button, down);
}

void pressMenuKey(std::int32_t key, TextView typed, WPARAM modifiers) {
    for (const bool down : {true, false}) {
        QWidget* const popup = QApplication::activePopupWidget();
        QWidget* const target = popup != nullptr ? popup : QApplication::focusWidget();
        if (target != nullptr) sendKey(*target, down, key, typed, modifiers);
    }
}

std::string accessibleItems(HMENU hMenu) {
    const Shown shown = shownBy(hMenu, -1);
    QAccessibleInterface* menu = QAccessible::queryAccessibleInterface(shown.widget);
    if (menu == nullptr) return {};
    std::string lines;
    for (int i = 0; i < menu->childCount(); ++i) {
        const QAccessibleInterface* item = menu->child(i);
        if (item == nullptr || item->role() == QAccessible::PopupMenu) continue;
        lines += roleOf(item->role());
        if (const QString name = item->text(QAccessible::Name); !name.isEmpty()) {
            lines += ' ' + quotedText(toText(name));
        }
        const QAccessible::State state = item->state();
        if (state.disabled) lines += " disabled";
        if (state.checked) lines += " checked";
        lines += '\n';
    }
    return lines;
}

SIZE paintMenu(HMENU hMenu, HDC hDC) {
    const Shown shown = shownBy(hMenu, -1);
    if (shown.widget == nullptr) return {};
    const QImage picture = shown.widget->grab().toImage().convertToFormat(QImage::Format_RGB32);
    const DcRecord* dc = dcOf(hDC);
    if (dc == nullptr) return {};
    for (int y = 0; y < std::min(picture.height(), dc->bitmap->height); ++y) {
        const auto* row = reinterpret_cast<const std::uint32_t*>(picture.constScanLine(y));
        const int width = std::min(picture.width(), dc->bitmap->width);
        std::copy_n(row, width, dc->bitmap->row(y));
    }
    return {picture.width(), picture.height()};
}

}  // namespace platform::test
