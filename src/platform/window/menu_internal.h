// platform/window/menu_internal.h: the records behind menus, and what shows them. Nothing above the
// folder includes this.
#pragma once
#include "platform/window/handles.h"
#include "platform/window/menu.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

class QAction;
class QPainter;
class QRect;
class QSize;
class QStyleOptionMenuItem;
class QWidget;

namespace platform {

struct WindowRecord;

struct MenuItem {
    std::uint64_t serial = 0;    // tells it from every other item that ever was
    std::uint32_t revision = 0;  // rises when what it shows may be another size
    std::uint32_t id = 0, type = 0, state = 0, data = 0;
    HMENU subMenu = 0;
    Text text;
    std::optional<Text> shown;
};

class MenuView;

struct MenuRecord {
    HMENU handle = 0;
    std::vector<MenuItem> items;
    HWND window = 0;          // whose bar it is
    MenuView* bar = nullptr;  // what shows it, where something does
    MenuView* popup = nullptr;

    // The position of the first item with the identifier; npos without one.
    static constexpr std::size_t npos = ~std::size_t{0};
    [[nodiscard]] std::size_t positionOf(std::uint32_t id);
    void forgetPositions() { m_known = false; }

private:
    std::unordered_map<std::uint32_t, std::size_t> m_positions;  // by identifier,
    bool m_known = false;                                        // once they were asked for
};

[[nodiscard]] HandleTable<MenuRecord>& menuTable();
[[nodiscard]] inline MenuRecord* menuOf(HMENU hMenu) { return menuTable().find(hMenu); }

// The item, by position or identifier, also in submenus; no menu when there is none.
struct MenuPlace {
    MenuRecord* menu = nullptr;
    std::size_t position = 0;
    [[nodiscard]] MenuItem& item() const { return menu->items[position]; }
    explicit operator bool() const { return menu != nullptr; }
};
[[nodiscard]] MenuPlace findItem(HMENU hMenu, std::uint32_t item, bool byPosition);

// The caption of an item for the desktop's library: without its key, in one line.
[[nodiscard]] Text captionOf(const MenuItem& item);
// Behind the last tab; empty without one.
[[nodiscard]] TextView keyNameOf(const MenuItem& item);

class ItemAction;

// What shows a menu: a widget of the desktop's library, with an action for each item. It follows
// the items when sync runs, and never while one of them is being measured or drawn: actions that
// the library is looking at stay.
class MenuView {
public:
    MenuView(const MenuView&) = delete;
    MenuView& operator=(const MenuView&) = delete;

    [[nodiscard]] HMENU menu() const { return m_menu; }
    [[nodiscard]] HWND owner() const { return m_owner; }
    // The item behind an action of this view; nullptr for others and for one whose item is gone.
    [[nodiscard]] MenuItem* itemOf(const QAction* action) const;

    void itemsChanged();  // sync comes through the message loop
    void sync();
    // The menu is gone, or shown by somebody else: the widget closes, and goes when nobody looks
    // at it.
    void closeLater();
    void dropCanvas();  // its surface and font

    // By a message to the owner.
    [[nodiscard]] QSize measure(const MenuItem& item) const;
    void draw(const MenuItem& item, const QStyleOptionMenuItem& option, bool onBar,
              QPainter& painter);

protected:
    MenuView(QWidget& widget, HMENU menu, HWND owner)
        : m_widget(widget), m_menu(menu), m_owner(owner) {}
    virtual ~MenuView();
    void leave();         // this no longer shows the menu
    void forceMeasure();  // of all items, the next time that the library asks
    bool handleSync(int eventType);
    virtual void synced() {}
    virtual void forget(const QAction& /*action*/) {}  // it is about to go

private:
    friend class ItemAction;
    void picked(std::uint64_t serial);
    [[nodiscard]] HDC canvas(int background);  // of GetSysColor
    void update(ItemAction& action, const MenuItem& item);

    QWidget& m_widget;
    HMENU m_menu;
    HWND m_owner;
    std::vector<ItemAction*> m_actions;
    bool m_syncPosted = false;
    HDC m_hDC = 0;
    HBITMAP m_bitmap = 0;
    HGDIOBJ m_oldBitmap = 0, m_oldFont = 0;
    HFONT m_font = 0;
    SIZE m_canvasSize;
};

}  // namespace platform
