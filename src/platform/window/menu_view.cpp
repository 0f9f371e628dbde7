// What shows menus: widgets of the desktop's library that place, grab and navigate, and a style
// that has owner-drawn items measured and drawn by messages.
#include "platform/window/fonts.h"
#include "platform/window/menu_widgets_internal.h"
#include "platform/window/screen.h"
#include "platform/window/surface_internal.h"
#include "platform/window/toolkit_internal.h"
#include "platform/window/window_internal.h"

#include <QActionEvent>
#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOptionMenuItem>
#include <algorithm>

namespace platform {
namespace {

QEvent::Type syncEvent() {
    static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
}

int g_lookedAt = 0;                       // items that are being measured or drawn at this moment
std::vector<QPointer<QWidget>> g_toSync;  // the views that wait for the end of that

// While an owner measures or draws an item. It may end the window, and it may read messages: the
// widgets stay until the library is done with them, and so do their actions.
class LookedAt {
public:
    LookedAt() { ++g_lookedAt; }
    ~LookedAt() {
        if (--g_lookedAt > 0) return;
        for (const QPointer<QWidget>& widget : std::exchange(g_toSync, {})) {
            if (widget.isNull()) continue;
            // Without memory for it the process may end:
            // NOLINTNEXTLINE(bugprone-unhandled-exception-at-new)
            QCoreApplication::postEvent(widget, new QEvent(syncEvent()));
        }
    }
    LookedAt(const LookedAt&) = delete;
    LookedAt& operator=(const LookedAt&) = delete;

private:
    const EventScope m_scope;
};

// Where the pick of the menu that is being tracked goes; nullptr: to the owner.
std::optional<std::uint32_t>* g_pickInto = nullptr;

constexpr int kMenuColor = 4, kBarColor = 30;  // of GetSysColor

const MenuView* viewOf(const QWidget* widget) { return dynamic_cast<const MenuView*>(widget); }
MenuView* viewOf(QWidget* widget) { return dynamic_cast<MenuView*>(widget); }

QColor systemColor(int index) { return qtColor(GetSysColor(index)); }

// What the platform adds to the width of an owner-drawn item: room for a check mark.
int checkMarkWidth() { return MulDiv(12, screenDotsPerInch(LOGPIXELSX), 96); }

class MenuStyle final : public QProxyStyle {
public:
    MenuStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override {
        const bool onBar = type == CT_MenuBarItem;
        const MenuItem* item = onBar || type == CT_MenuItem ? itemOf(option, widget) : nullptr;
        if (item != nullptr && (item->type & MFT_OWNERDRAW) != 0) {
            return viewOf(widget)->measure(*item);
        }
        QSize needed = QProxyStyle::sizeFromContents(type, option, size, widget);
        if (item != nullptr && !onBar && !keyNameOf(*item).empty()) {
            const auto& menuItem = *qstyleoption_cast<const QStyleOptionMenuItem*>(option);
            const QFontMetrics metrics(menuItem.font);
            needed.rwidth() +=
                metrics.horizontalAdvance(QStringLiteral("    ") + toQt(keyNameOf(*item)));
        }
        return needed;
    }

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        const bool onBar = element == CE_MenuBarItem;
        if (onBar || element == CE_MenuItem) {
            const MenuItem* item = itemOf(option, widget);
            if (item != nullptr && (item->type & MFT_OWNERDRAW) != 0) {
                const auto& menuItem = *qstyleoption_cast<const QStyleOptionMenuItem*>(option);
                const bool opensMore = item->subMenu != 0 && !onBar;
                viewOf(const_cast<QWidget*>(widget))->draw(*item, menuItem, onBar, *painter);
                if (opensMore) drawArrow(menuItem, *painter);
                return;
            }
        }
        if (element == CE_MenuBarEmptyArea) {
            painter->fillRect(option->rect, systemColor(kBarColor));
        } else if (element == CE_MenuEmptyArea) {
            painter->fillRect(option->rect, systemColor(kMenuColor));
        } else {
            QProxyStyle::drawControl(element, option, painter, widget);
        }
    }

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        if (element == PE_PanelMenu) {
            painter->fillRect(option->rect, systemColor(kMenuColor));
        } else if (element == PE_FrameMenu) {
            painter->setPen(systemColor(16));
            painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
        } else if (element != PE_PanelMenuBar) {
            QProxyStyle::drawPrimitive(element, option, painter, widget);
        }
    }

    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override {
        switch (metric) {
        case PM_MenuHMargin:
        case PM_MenuVMargin:
            return 2;
        case PM_MenuPanelWidth:
            return 1;
        case PM_MenuDesktopFrameWidth:
        case PM_MenuBarItemSpacing:
        case PM_MenuBarHMargin:
        case PM_MenuBarVMargin:
        case PM_MenuBarPanelWidth:
            return 0;
        default:
            return QProxyStyle::pixelMetric(metric, option, widget);
        }
    }

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* more) const override {
        switch (hint) {
        case SH_Menu_Scrollable:
        case SH_Menu_MouseTracking:
        case SH_Menu_AllowActiveAndDisabled:
        case SH_MenuBar_MouseTracking:
        case SH_MenuBar_AltKeyNavigation:
        case SH_UnderlineShortcut:
            return 1;
        case SH_Menu_FlashTriggeredItem:
        case SH_Menu_FadeOutOnHide:
        case SH_Menu_KeyboardSearch:
        case SH_Menu_SupportsSections:
        case SH_Menu_Mask:
            return 0;
        case SH_Menu_SubMenuPopupDelay:
            return 300;
        default:
            return QProxyStyle::styleHint(hint, option, widget, more);
        }
    }

private:
    static const MenuItem* itemOf(const QStyleOption* option, const QWidget* widget) {
        const MenuView* view = viewOf(widget);
        return view == nullptr || option == nullptr
                   ? nullptr
                   : view->itemOf(qobject_cast<const QAction*>(option->styleObject));
    }
    // Owner-drawn or not, an item that opens a further menu has its arrow from the platform.
    void drawArrow(const QStyleOptionMenuItem& item, QPainter& painter) const {
        const int side = std::min(checkMarkWidth(), item.rect.height()) - 2;
        QStyleOptionMenuItem arrow(item);
        arrow.rect =
            QRect(item.rect.right() - side - 1, item.rect.center().y() - side / 2, side, side);
        if ((arrow.state & State_Selected) != 0) {
            arrow.palette.setBrush(QPalette::WindowText, arrow.palette.highlightedText());
        }
        QProxyStyle::drawPrimitive(PE_IndicatorArrowRight, &arrow, &painter, nullptr);
    }
};

QStyle* menuStyle() {
    static QPointer<MenuStyle> style;  // lives and dies with the application
    if (style.isNull()) {
        style = new MenuStyle;
        style->setParent(qApp);
    }
    return style;
}

}  // namespace

// ---- Actions

ItemAction::ItemAction(MenuView& view, std::uint64_t newSerial)
    : QAction(&view.m_widget), serial(newSerial) {
    connect(this, &QAction::triggered, this, [this, &view] { view.picked(serial); });
}

MenuItem* MenuView::itemOf(const QAction* action) const {
    const auto* known = dynamic_cast<const ItemAction*>(action);
    MenuRecord* menu = menuOf(m_menu);
    if (known == nullptr || menu == nullptr) return nullptr;
    std::vector<MenuItem>& items = menu->items;
    // Mostly where it was; after a change somewhere else, until sync runs.
    if (known->position < items.size() && items[known->position].serial == known->serial) {
        return &items[known->position];
    }
    const auto found = std::ranges::find(items, known->serial, &MenuItem::serial);
    return found == items.end() ? nullptr : &*found;
}

void MenuView::picked(std::uint64_t serial) {
    const MenuRecord* menu = menuOf(m_menu);
    if (menu == nullptr) return;
    const auto found = std::ranges::find(menu->items, serial, &MenuItem::serial);
    if (found == menu->items.end()) return;
    if (g_pickInto != nullptr) {
        *g_pickInto = found->id;
    } else {
        PostMessageW(m_owner, WM_COMMAND, static_cast<WPARAM>(found->id), 0);
    }
}

// ---- Views

MenuView::~MenuView() { dropCanvas(); }

void MenuView::leave() {
    if (MenuRecord* menu = menuOf(std::exchange(m_menu, 0))) {
        if (menu->bar == this) menu->bar = nullptr;
        if (menu->popup == this) menu->popup = nullptr;
    }
    dropCanvas();
}

void MenuView::closeLater() {
    leave();
    // The library may be in the middle of opening or painting the widget.
    QMetaObject::invokeMethod(
        &m_widget,
        [widget = &m_widget] {
            widget->hide();
            deleteWidget(widget);
        },
        Qt::QueuedConnection);
}

void MenuView::itemsChanged() {
    if (std::exchange(m_syncPosted, true)) return;
    QCoreApplication::postEvent(&m_widget, new QEvent(syncEvent()));
}

bool MenuView::handleSync(int eventType) {
    if (eventType != syncEvent()) return false;
    m_syncPosted = false;
    sync();
    return true;
}

void MenuView::sync() {
    if (g_lookedAt > 0) {
        m_syncPosted = true;  // not by a message now: an owner that reads them would do so for ever
        g_toSync.emplace_back(&m_widget);
        return;
    }
    const MenuRecord* menu = menuOf(m_menu);
    if (menu == nullptr) return;
    // A copy: a bar measures its items at once when an action changes, and an owner that is asked
    // may change or end the menu. The widget stays until the loop is reached.
    const std::vector<MenuItem> items = menu->items;

    std::size_t kept = 0;
    while (kept < m_actions.size() && kept < items.size() &&
           m_actions[kept]->serial == items[kept].serial) {
        ++kept;
    }
    while (m_actions.size() > kept) {
        ItemAction* const gone = m_actions.back();
        m_actions.pop_back();
        forget(*gone);
        m_widget.removeAction(gone);
        gone->deleteLater();  // the library may hold it until the end of this event
    }
    m_actions.reserve(items.size());
    for (std::size_t i = 0; i < items.size() && IsMenu(m_menu); ++i) {
        const bool isNew = i == m_actions.size();
        if (isNew) m_actions.push_back(new ItemAction(*this, items[i].serial));
        m_actions[i]->position = i;
        update(*m_actions[i], items[i]);
        if (isNew) m_widget.addAction(m_actions[i]);
    }
    synced();
}

void MenuView::update(ItemAction& action, const MenuItem& item) {
    action.setText(toQt(captionOf(item)));
    action.setEnabled((item.state & MFS_DISABLED) == 0);
    action.setSeparator((item.type & MFT_SEPARATOR) != 0);
    action.setCheckable((item.state & MFS_CHECKED) != 0);
    action.setChecked((item.state & MFS_CHECKED) != 0);
    QMenu* const opens = item.subMenu == 0 ? nullptr : popupWidgetOf(item.subMenu, m_owner);
    if (action.menu() != opens) action.setMenu(opens);
    if (std::exchange(action.revision, item.revision) != item.revision) {
        action.setData(item.revision);  // the library measures it anew
    }
}

void MenuView::forceMeasure() {
    QEvent change(QEvent::StyleChange);
    QCoreApplication::sendEvent(&m_widget, &change);
}

// ---- Measuring and drawing

QSize MenuView::measure(const MenuItem& item) const {
    MEASUREITEMSTRUCT request;
    request.itemID = item.id;
    request.itemData = item.data;
    const HWND owner = m_owner;
    {
        const LookedAt lookedAt;
        guarded(
            [&] { SendMessageW(owner, WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&request)); });
    }
    constexpr std::uint32_t kMost = 32767;
    return {static_cast<int>(std::min(request.itemWidth, kMost)) + checkMarkWidth(),
            static_cast<int>(std::clamp(request.itemHeight, 1U, kMost))};
}

HDC MenuView::canvas(int background) {
    const SIZE size{m_widget.width(), m_widget.height()};
    if (m_hDC != 0 && m_canvasSize == size) return m_hDC;
    dropCanvas();
    NONCLIENTMETRICSA metrics;
    SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    m_canvasSize = size;
    m_hDC = CreateCompatibleDC(0);
    m_font = CreateFontIndirectA(metrics.lfMenuFont);
    m_oldFont = SelectObject(m_hDC, m_font);
    const HDC screen = GetDC(0);
    m_bitmap = CreateCompatibleBitmap(screen, size.cx, size.cy);
    ReleaseDC(0, screen);
    m_oldBitmap = SelectObject(m_hDC, m_bitmap);
    const HBRUSH brush = CreateSolidBrush(GetSysColor(background));
    FillRect(m_hDC, {0, 0, size.cx, size.cy}, brush);
    DeleteObject(brush);
    return m_hDC;
}

void MenuView::dropCanvas() {
    if (m_hDC == 0) return;
    SelectObject(m_hDC, m_oldBitmap);
    SelectObject(m_hDC, m_oldFont);
    DeleteDC(std::exchange(m_hDC, 0));
    DeleteObject(std::exchange(m_bitmap, 0));
    DeleteObject(std::exchange(m_font, 0));
}

void MenuView::draw(const MenuItem& item, const QStyleOptionMenuItem& option, bool onBar,
                    QPainter& painter) {
    const QRect place = option.rect;
    DRAWITEMSTRUCT request;
    request.itemID = item.id;
    request.itemData = item.data;
    request.hwndItem = m_menu;
    request.hDC = canvas(onBar ? kBarColor : kMenuColor);
    request.rcItem = {place.x(), place.y(), place.x() + place.width(), place.y() + place.height()};
    if ((item.state & MFS_DISABLED) != 0) request.itemState |= ODS_DISABLED;
    if ((item.state & MFS_CHECKED) != 0) request.itemState |= ODS_CHECKED;
    if ((option.state & QStyle::State_Selected) != 0) {
        const bool open = !onBar || (option.state & QStyle::State_Sunken) != 0;
        request.itemState |= open ? ODS_SELECTED : ODS_HOTLIGHT;
    }
    const HWND owner = m_owner;
    {
        const LookedAt lookedAt;
        guarded([&] { SendMessageW(owner, WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&request)); });
    }
    // The owner may have ended the menu.
    if (const BitmapRecord* drawn = bitmapOf(m_bitmap)) {
        const QImage view(static_cast<const uchar*>(drawn->top), drawn->width, drawn->height,
                          static_cast<qsizetype>(drawn->stride), QImage::Format_RGB32);
        painter.drawImage(place, view, place);
    }
}

// ---- The widgets

PopupWidget::PopupWidget(HMENU menu, HWND owner, QWidget* around)
    : QMenu(around), MenuView(*this, menu, owner) {
    setStyle(menuStyle());
    setSeparatorsCollapsible(false);
    connect(this, &QMenu::aboutToShow, this, [this] {
        if (!std::exchange(m_announced, false)) announce();
    });
}

bool PopupWidget::announce() {
    const EventScope scope;  // a window that its owner destroys leaves the widgets standing
    int position = 0;
    if (const auto* from = dynamic_cast<const ItemAction*>(menuAction())) {
        position = static_cast<int>(from->position);
    }
    guarded([&] { SendMessageW(owner(), WM_INITMENUPOPUP, menu(), makeLParam(position, 0)); });
    if (!IsMenu(menu())) return false;
    dropCanvas();  // with the font, and what stood there the last time
    sync();
    forceMeasure();
    return true;
}

bool PopupWidget::track(int x, int y, std::uint32_t flags, std::optional<std::uint32_t>* picked) {
    const QPointer<PopupWidget> self(this);
    if (!announce() || self.isNull()) return false;
    m_announced = true;
    const int width = sizeHint().width();
    if ((flags & TPM_RIGHTALIGN) != 0) {
        x -= width;
    } else if ((flags & TPM_CENTERALIGN) != 0) {
        x -= width / 2;
    }
    const bool opens = !self.isNull() && IsMenu(menu());
    auto* const outer = std::exchange(g_pickInto, picked);
    if (opens) exec(QPoint(x, y));
    g_pickInto = outer;
    if (!self.isNull()) m_announced = false;
    return opens;
}

bool PopupWidget::event(QEvent* event) {
    const EventScope scope;
    return handleSync(event->type()) || QMenu::event(event);
}

void PopupWidget::keyPressEvent(QKeyEvent* event) {
    if (keyCodeOf(*event) != VK_F10) {
        QMenu::keyPressEvent(event);
        return;
    }
    // All of them, not only the innermost as Escape does.
    auto* open = QApplication::activePopupWidget();
    while (open != nullptr && open->close()) open = QApplication::activePopupWidget();
    WindowRecord* const record = windowOf(owner());
    if (record != nullptr && record->menuBar != nullptr && record->menuBar->hasFocus()) {
        turnMenuBarKeys(*record);
    }
}

void PopupWidget::initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const {
    QMenu::initStyleOption(option, action);
    option->styleObject = const_cast<QAction*>(action);
    if (const MenuItem* item = itemOf(action); item != nullptr && !keyNameOf(*item).empty()) {
        option->text += u'\t' + toQt(keyNameOf(*item));
    }
}

BarWidget::BarWidget(HMENU menu, HWND owner, QWidget* around)
    : QMenuBar(around), MenuView(*this, menu, owner) {
    setNativeMenuBar(false);
    setStyle(menuStyle());
}

void BarWidget::remeasure() {
    dropCanvas();  // with its font
    forceMeasure();
    itemsChanged();
}

bool BarWidget::event(QEvent* event) {
    const EventScope scope;
    return handleSync(event->type()) || QMenuBar::event(event);
}

void BarWidget::turnKeys() {
    if (!isVisible()) return;
    // The library does so when Alt goes down and up alone, and knows no other way.
    for (const QEvent::Type type : {QEvent::ShortcutOverride, QEvent::KeyRelease}) {
        const bool heldBefore = type == QEvent::KeyRelease;
        QKeyEvent alt(type, Qt::Key_Alt, heldBefore ? Qt::AltModifier : Qt::NoModifier);
        eventFilter(window(), &alt);
    }
}

void BarWidget::focusOutEvent(QFocusEvent* event) {
    QMenuBar::focusOutEvent(event);
    // The bar has held the keys for a window that does not know it. If they do not go back there,
    // that window has lost them now.
    if (event->reason() != Qt::MenuBarFocusReason && event->reason() != Qt::PopupFocusReason) {
        focusLeavesMenus();
    }
}

void BarWidget::initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const {
    QMenuBar::initStyleOption(option, action);
    option->styleObject = const_cast<QAction*>(action);
}

void BarWidget::synced() {
    if (WindowRecord* record = windowOf(owner())) {
        placeMenuBar(*record);
        if (IsWindow(owner())) reportPlace(*record);
    }
}

void BarWidget::forget(const QAction& action) {
    if (activeAction() == &action) setActiveAction(nullptr);
}

PopupWidget* popupWidgetOf(HMENU hMenu, HWND owner) {
    MenuRecord* menu = menuOf(hMenu);
    const WindowRecord* window = windowOf(owner);
    if (menu == nullptr || window == nullptr) return nullptr;
    QWidget* const around = window->widget->window();
    auto* popup = static_cast<PopupWidget*>(menu->popup);
    if (popup != nullptr && (popup->owner() != owner || popup->parentWidget() != around)) {
        popup->closeLater();
        popup = nullptr;
    }
    if (popup == nullptr) {
        popup = new PopupWidget(hMenu, owner, around);
        menu->popup = popup;
    }
    return popup;
}

}  // namespace platform
