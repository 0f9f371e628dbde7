// platform/window/menu_widgets_internal.h: the widgets that show menus. Only the sources about
// menus include this.
#pragma once
#include "platform/window/menu_internal.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

namespace platform {

class ItemAction final : public QAction {
public:
    ItemAction(MenuView& view, std::uint64_t serial);
    const std::uint64_t serial;
    std::size_t position = 0;  // when it was last brought up to date
    std::uint32_t revision = 0;
};

class PopupWidget final : public QMenu, public MenuView {
public:
    PopupWidget(HMENU menu, HWND owner, QWidget* around);
    ~PopupWidget() override { leave(); }

    // Tells the owner that the menu opens, and brings it up to date. False when it is gone by then.
    bool announce();
    // Announces and opens, until it is closed. What was picked goes into `picked`, or, without
    // that, to the owner. False when the menu has ended ahead of opening.
    bool track(int x, int y, std::uint32_t flags, std::optional<std::uint32_t>* picked);

private:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const override;
    bool m_announced = false;
};

class BarWidget final : public QMenuBar, public MenuView {
public:
    BarWidget(HMENU menu, HWND owner, QWidget* around);
    ~BarWidget() override { leave(); }
    void remeasure();
    // Gives the keys to the bar, its first item on, or back to where they were.
    void turnKeys();

private:
    bool event(QEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const override;
    void synced() override;
    void forget(const QAction& action) override;
};

// The widget that shows a menu as a popup of a window; nullptr when one of them is unknown.
[[nodiscard]] PopupWidget* popupWidgetOf(HMENU hMenu, HWND owner);

}  // namespace platform
