// From the desktop's events to messages, and the default procedure at the end of every chain.
#include "platform/base/paths.h"
#include "platform/window/drops_internal.h"
#include "platform/window/input.h"
#include "platform/window/toolkit_internal.h"
#include "platform/window/window_internal.h"

#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QEventLoop>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPointer>
#include <QRegion>
#include <QResizeEvent>
#include <QUrl>
#include <QWheelEvent>
#include <QWidget>
#include <algorithm>

namespace platform {
namespace {

int g_runningEvents = 0;
std::vector<QPointer<QWidget>> g_condemned;  // one may take another along
HWND g_focusBefore = 0;                      // the window of the last WM_KILLFOCUS
const QKeyEvent* g_key = nullptr;            // the one on its way
HWND g_focusUnderMenu = 0;                   // whose keys a menu has taken

constexpr LPARAM kKeyDownBefore = LPARAM{1} << 30;  // in the lParam of a key

}  // namespace

EventScope::EventScope(std::shared_ptr<WindowRecord> record) : m_record(std::move(record)) {
    ++g_runningEvents;
}

EventScope::~EventScope() {
    if (--g_runningEvents > 0) return;
    // The library is still about to look at the widget: it goes when the loop is reached.
    for (const QPointer<QWidget>& widget : std::exchange(g_condemned, {})) {
        if (!widget.isNull()) widget->deleteLater();
    }
}

void deleteWidget(QWidget* widget) {
    if (g_runningEvents == 0) {
        delete widget;
        return;
    }
    widget->hide();
    g_condemned.emplace_back(widget);
}

int keyModifiers() {
    if (g_key != nullptr) return static_cast<int>(g_key->modifiers().toInt());
    Qt::KeyboardModifiers down;
    down.setFlag(Qt::ShiftModifier, GetAsyncKeyState(VK_SHIFT) < 0);
    down.setFlag(Qt::ControlModifier, GetAsyncKeyState(VK_CONTROL) < 0);
    down.setFlag(Qt::AltModifier, GetAsyncKeyState(VK_MENU) < 0);
    return static_cast<int>(down.toInt());
}

std::optional<bool> MessageTarget::routeSpecially(WindowRecord&, QEvent*, bool) { return {}; }

HWND focusUnderMenu() { return IsWindow(g_focusUnderMenu) ? g_focusUnderMenu : 0; }

void focusLeavesMenus() {
    const HWND hWnd = std::exchange(g_focusUnderMenu, 0);
    g_focusBefore = hWnd;
    guarded([&] { SendMessageW(hWnd, WM_KILLFOCUS, GetFocus(), 0); });
}

// ---- Delivery

bool deliver(WindowRecord& record, QEvent* event, bool viewport, std::uint32_t uMsg, WPARAM wParam,
             LPARAM lParam) {
    if (event == nullptr) {
        record.procedure(record.handle, uMsg, wParam, lParam);
        return true;
    }
    StashedEvent stashed{uMsg, wParam, lParam, event, viewport};
    struct Push {
        explicit Push(WindowRecord& r, StashedEvent& s) : stash(r.stash) { stash.push_back(&s); }
        ~Push() { stash.pop_back(); }
        std::vector<StashedEvent*>& stash;
    } const push(record, stashed);
    record.procedure(record.handle, uMsg, wParam, lParam);
    return !stashed.ran || stashed.result;
}

StashedEvent* stashedEvent(WindowRecord& record, std::uint32_t uMsg) {
    if (record.stash.empty()) return nullptr;
    StashedEvent* top = record.stash.back();
    return top->message == uMsg && !top->ran ? top : nullptr;
}

WPARAM buttonsDown(int qtButtons, int qtModifiers) {
    WPARAM down = 0;
    if ((qtButtons & Qt::LeftButton) != 0) down |= MK_LBUTTON;
    if ((qtButtons & Qt::RightButton) != 0) down |= MK_RBUTTON;
    if ((qtButtons & Qt::MiddleButton) != 0) down |= MK_MBUTTON;
    if ((qtModifiers & Qt::ShiftModifier) != 0) down |= MK_SHIFT;
    if ((qtModifiers & Qt::ControlModifier) != 0) down |= MK_CONTROL;
    return down;
}

std::vector<Text> filesOf(const QMimeData& data) {
    std::vector<Text> paths;
    for (const QByteArray& line : data.data(QStringLiteral("text/uri-list")).split('\n')) {
        const QByteArray address = line.trimmed();
        if (!address.startsWith("file:")) continue;
        QByteArray path = address.mid(5);
        if (path.startsWith("//")) path = path.mid(path.indexOf('/', 2));  // the host's name
        path = QByteArray::fromPercentEncoding(path);
        if (path.startsWith('/')) {
            paths.push_back(
                pathFromSystem({path.constData(), static_cast<std::size_t>(path.size())}));
        }
    }
    return paths;
}

// A server of windows may send a key that is held as a release and a press of one moment. The
// library knows them for what they are only when it finds both in its queue at once.
bool isHeld(const QKeyEvent& key) {
    static int releasedKey = 0;
    static quint64 releasedAt = 0;
    if (key.type() == QEvent::KeyPress) {
        return key.isAutoRepeat() ||
               (key.timestamp() != 0 && key.timestamp() == releasedAt && key.key() == releasedKey);
    }
    releasedKey = key.key();
    releasedAt = key.timestamp();
    return key.isAutoRepeat();
}

namespace {

bool isKeyMessage(std::uint32_t uMsg) { return uMsg >= WM_KEYDOWN && uMsg <= WM_SYSCHAR; }

// Asks the filters of the window and of all that is around it. True when one has used the message,
// or the window is gone.
bool filtered(WindowRecord& record, std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
    const HWND hWnd = record.handle;
    for (const QWidget* widget = record.widget; widget != nullptr;
         widget = widget->isWindow() ? nullptr : widget->parentWidget()) {
        const auto* target = dynamic_cast<const MessageTarget*>(widget);
        const WindowRecord* around = target == nullptr ? nullptr : windowOf(target->handle());
        if (around == nullptr || !around->keyFilter) continue;
        const KeyFilter filter = around->keyFilter;  // it may take itself away
        if (filter(hWnd, uMsg, wParam, lParam) || !IsWindow(hWnd)) return true;
    }
    return false;
}

bool isSystemKey(const QKeyEvent& key, std::int32_t code) {
    if (code == VK_MENU || code == VK_F10) return true;
    return key.modifiers().testFlag(Qt::AltModifier) &&
           !key.modifiers().testFlag(Qt::ControlModifier);
}

// The units that a key types. Control with a letter gives the control unit of that letter.
QString typedBy(const QKeyEvent& key, std::int32_t code) {
    const bool control = key.modifiers().testFlag(Qt::ControlModifier);
    switch (code) {
    case VK_BACK:
        return QChar(control ? 127 : 8);
    case VK_TAB:
        return control ? QString() : QString(QChar(9));
    case VK_RETURN:
        return QChar(control ? 10 : 13);
    case VK_ESCAPE:
        return QChar(27);
    case VK_DELETE:
        return {};
    default:
        break;
    }
    if (!control || key.modifiers().testFlag(Qt::AltModifier)) return key.text();
    if (key.key() >= Qt::Key_A && key.key() <= Qt::Key_Z) return QChar(key.key() - Qt::Key_A + 1);
    const QString text = key.text();
    return !text.isEmpty() && text.front().unicode() < 32 ? text : QString();
}

bool routeKey(WindowRecord& record, QKeyEvent* key, bool viewport) {
    struct OnItsWay {
        explicit OnItsWay(const QKeyEvent* now) : before(std::exchange(g_key, now)) {}
        ~OnItsWay() { g_key = before; }
        const QKeyEvent* before;
    } const onItsWay(key);
    const HWND hWnd = record.handle;
    const bool down = key->type() == QEvent::KeyPress;
    noteModifiers(static_cast<int>(key->modifiers().toInt()));
    const bool held = isHeld(*key);
    key->accept();                   // else the parent would get it as well
    if (!down && held) return true;  // a key held down does not come up

    const std::int32_t code = keyCodeOf(*key);
    const bool system = isSystemKey(*key, code);
    constexpr LPARAM kGoesUp = LPARAM{1} << 31;
    const LPARAM lParam = 1 | (down ? (held ? kKeyDownBefore : 0) : kKeyDownBefore | kGoesUp);
    const std::uint32_t number =
        down ? (system ? WM_SYSKEYDOWN : WM_KEYDOWN) : (system ? WM_SYSKEYUP : WM_KEYUP);
    if (down && isAccelerator(record, *key)) return true;
    if (filtered(record, number, code, lParam)) return true;
    deliver(record, key, viewport, number, code, lParam);
    key->accept();
    if (!down) return true;

    // The character comes also when a sink has kept the key from the window.
    const std::uint32_t character = system ? WM_SYSCHAR : WM_CHAR;
    for (const QChar unit : typedBy(*key, code)) {
        if (!IsWindow(hWnd)) return true;
        if (filtered(record, character, unit.unicode(), lParam)) continue;
        deliver(record, key, viewport, character, unit.unicode(), lParam);
    }
    key->accept();
    return true;
}

WPARAM buttonsDown(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers) {
    return platform::buttonsDown(buttons.toInt(), static_cast<int>(modifiers.toInt()));
}

LPARAM positionParam(QPoint at) {
    return makeLParam(std::clamp(at.x(), -32768, 32767), std::clamp(at.y(), -32768, 32767));
}

std::uint32_t mouseMessage(const QMouseEvent& mouse) {
    std::uint32_t number = 0;
    switch (mouse.button()) {
    case Qt::LeftButton:
        number = WM_LBUTTONDOWN;
        break;
    case Qt::RightButton:
        number = WM_RBUTTONDOWN;
        break;
    case Qt::MiddleButton:
        number = WM_MBUTTONDOWN;
        break;
    default:
        return 0;
    }
    if (mouse.type() == QEvent::MouseButtonRelease) return number + 1;
    if (mouse.type() == QEvent::MouseButtonDblClick) return number + 2;
    return number;
}

bool routeMouse(WindowRecord& record, QMouseEvent* mouse, bool viewport) {
    const HWND hWnd = record.handle;
    noteModifiers(static_cast<int>(mouse->modifiers().toInt()));
    noteMouseWindow(hWnd);
    mouse->accept();  // else the parent would get it as well
    const WPARAM wParam = buttonsDown(mouse->buttons(), mouse->modifiers());
    const LPARAM lParam = positionParam(mouse->position().toPoint() - QPoint(0, record.clientTop));
    if (mouse->type() == QEvent::MouseMove) {
        SendMessageW(hWnd, WM_SETCURSOR, hWnd, makeLParam(1, WM_MOUSEMOVE));
        if (IsWindow(hWnd)) deliver(record, mouse, viewport, WM_MOUSEMOVE, wParam, lParam);
    } else if (const std::uint32_t number = mouseMessage(*mouse); number != 0) {
        if (mouse->type() != QEvent::MouseButtonRelease) {
            const HWND top = windowOfWidget(record.widget->window());
            SendMessageW(hWnd, WM_MOUSEACTIVATE, top,
                         makeLParam(1, static_cast<std::int32_t>(number)));
        }
        if (IsWindow(hWnd)) deliver(record, mouse, viewport, number, wParam, lParam);
    }
    mouse->accept();
    return true;
}

bool routeWheel(WindowRecord& record, QWheelEvent* wheel, bool viewport) {
    noteModifiers(static_cast<int>(wheel->modifiers().toInt()));
    // A smooth wheel sends many small turns: they are gathered into whole notches, but for the
    // library's own widgets, which scroll by them.
    const int notch = record.keepsPicture ? 120 : 1;
    record.wheelRest += wheel->angleDelta().y();
    const int turned = record.wheelRest / notch * notch;
    record.wheelRest -= turned;
    if (turned != 0) {
        const int held = std::clamp(turned, -32640, 32640);
        const WPARAM wParam = makeLParam(
            static_cast<std::int32_t>(buttonsDown(wheel->buttons(), wheel->modifiers())), held);
        deliver(record, wheel, viewport, WM_MOUSEWHEEL, wParam,
                positionParam(wheel->globalPosition().toPoint()));
    }
    wheel->accept();  // the default procedure has asked the parent
    return true;
}

bool routeFocus(WindowRecord& record, QFocusEvent* focus, bool viewport) {
    // A menu takes the keys while it is open, but the focus stays where it is.
    if (focus->reason() == Qt::PopupFocusReason || focus->reason() == Qt::MenuBarFocusReason) {
        g_focusUnderMenu = focus->lostFocus() ? record.handle : 0;
        return record.target->runNative(focus, viewport);
    }
    if (focus->lostFocus()) {
        g_focusBefore = record.handle;
        return deliver(record, focus, viewport, WM_KILLFOCUS, GetFocus(), 0);
    }
    const HWND before = IsWindow(g_focusBefore) ? g_focusBefore : 0;
    // With the real reason a field of the library would select its text, for one of them.
    QFocusEvent plain(QEvent::FocusIn, Qt::OtherFocusReason);
    return deliver(record, &plain, viewport, WM_SETFOCUS, before, 0);
}

bool routeDrop(WindowRecord& record, QDropEvent* drop) {
    const std::vector<Text> paths = record.acceptsFiles && drop->mimeData() != nullptr
                                        ? filesOf(*drop->mimeData())
                                        : std::vector<Text>();
    drop->setDropAction(Qt::CopyAction);  // the files are only named, never moved away
    drop->setAccepted(!paths.empty());
    if (!paths.empty() && drop->type() == QEvent::Drop) {
        SendMessageW(record.handle, WM_DROPFILES, 0, reinterpret_cast<LPARAM>(&paths));
    }
    return true;
}

void paint(WindowRecord& record) {
    if (!record.invalid) return;
    record.invalid = false;
    record.painting = true;
    guarded([&] { SendMessageW(record.handle, WM_PAINT, 0, 0); });
    record.painting = false;
}

bool route(WindowRecord& record, QEvent* event, bool viewport) {
    MessageTarget& target = *record.target;
    const auto native = [&] {
        return record.target == nullptr || record.target->runNative(event, viewport);
    };
    if (const std::optional<bool> handled = target.routeSpecially(record, event, viewport)) {
        return *handled;
    }
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        return routeKey(record, static_cast<QKeyEvent*>(event), viewport);
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
        return routeMouse(record, static_cast<QMouseEvent*>(event), viewport);
    case QEvent::Wheel:
        return routeWheel(record, static_cast<QWheelEvent*>(event), viewport);
    case QEvent::Leave:
        noteMouseWindow(0);
        return deliver(record, event, viewport, WM_MOUSELEAVE, 0, 0);
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        return routeFocus(record, static_cast<QFocusEvent*>(event), viewport);
    case QEvent::WindowActivate:
        // A window that becomes active has the focus itself when nothing inside it does.
        if (record.widget->isWindow() && record.widget->focusWidget() == nullptr) {
            record.widget->setFocus(Qt::ActiveWindowFocusReason);
        }
        return native();
    case QEvent::Resize:
    case QEvent::Move:
        reportPlace(record, event);
        return true;
    case QEvent::WindowStateChange: {
        const bool handled = native();
        if (record.widget != nullptr) reportPlace(record);
        return handled;
    }
    case QEvent::Paint:
        if (!record.keepsPicture) return deliver(record, event, viewport, WM_PAINT, 0, 0);
        record.changed = false;
        paint(record);
        if (record.widget == nullptr) return true;
        if (record.changed &&
            static_cast<QPaintEvent*>(event)->region() != QRegion(record.widget->rect())) {
            record.widget->update();  // more was drawn than this event shows
        } else {
            record.changed = false;
        }
        return native();
    case QEvent::ContextMenu: {
        // By mouse it comes from WM_RBUTTONUP, once for all desktops.
        const auto* menu = static_cast<QContextMenuEvent*>(event);
        event->accept();
        if (menu->reason() == QContextMenuEvent::Mouse) return true;
        return deliver(record, event, viewport, WM_CONTEXTMENU, record.handle, -1);
    }
    case QEvent::Close:
        SendMessageW(record.handle, WM_CLOSE, 0, 0);
        event->setAccepted(record.widget == nullptr);
        return true;
    case QEvent::Hide: {
        const bool handled = native();
        if (!event->spontaneous() && record.modalLoop != nullptr) record.modalLoop->quit();
        return handled;
    }
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        if (!record.acceptsFiles) return native();
        return routeDrop(record, static_cast<QDropEvent*>(event));
    default:
        return target.runNative(event, viewport);
    }
}

bool isInput(QEvent::Type type) {
    switch (type) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
        return true;
    default:
        return false;
    }
}

}  // namespace

bool routeEvent(MessageTarget& target, QEvent* event, bool viewport) {
    const std::shared_ptr<WindowRecord>* found = windowTable().find(target.handle());
    if (found == nullptr) return target.runNative(event, viewport);
    const EventScope scope(*found);
    WindowRecord& record = **found;
    if (isInput(event->type()) && !record.widget->isEnabled()) {
        event->ignore();  // the parent gets it
        return false;
    }
    bool handled = true;
    guarded([&] { handled = route(record, event, viewport); });
    return handled;
}

// ---- The default procedure

LRESULT DefWindowProcW(HWND hWnd, std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
    const std::shared_ptr<WindowRecord>* found = windowTable().find(hWnd);
    if (found == nullptr) return 0;
    const std::shared_ptr<WindowRecord> record = *found;
    LRESULT result = 0;
    if (record->classProcedure != nullptr &&
        record->classProcedure(*record, uMsg, wParam, lParam, result)) {
        return result;
    }
    if (StashedEvent* stashed = stashedEvent(*record, uMsg); stashed != nullptr) {
        stashed->ran = true;
        // Keys go by messages alone: the library would move the focus on Tab.
        if (!isKeyMessage(uMsg) && uMsg != WM_MOUSEWHEEL && uMsg != WM_CONTEXTMENU) {
            stashed->result = record->target->runNative(stashed->event, stashed->viewport);
        } else {
            stashed->result = true;
        }
    }
    if (!IsWindow(hWnd)) return 0;

    const HWND parent = record->kind == WindowKind::Child ? GetParent(hWnd) : 0;
    switch (uMsg) {
    case WM_SETTEXT: {
        const Text& text = *reinterpret_cast<const Text*>(lParam);
        record->text = text;
        if (record->widget->isWindow()) {
            record->widget->setWindowTitle(toQt(text));
        }
        return 1;
    }
    case WM_GETTEXT:
        *reinterpret_cast<Text*>(lParam) = record->text;
        return static_cast<LRESULT>(record->text.size());
    case WM_GETTEXTLENGTH:
        return static_cast<LRESULT>(record->text.size());
    case WM_CLOSE:
        DestroyWindow(hWnd);
        return 0;
    case WM_SETTINGCHANGE:
        remeasureMenuBar(*record);
        return 0;
    case WM_SYSKEYDOWN:
        if (wParam == VK_F10 && (lParam & kKeyDownBefore) == 0 && keyModifiers() == 0) {
            if (WindowRecord* top = windowOf(windowOfWidget(record->widget->window()))) {
                turnMenuBarKeys(*top);
            }
        }
        return 0;
    case WM_SETCURSOR:
        SetCursor(record->cursor);
        return 0;
    case WM_MOUSEACTIVATE:
        return parent != 0 ? SendMessageW(parent, uMsg, wParam, lParam) : MA_ACTIVATE;
    case WM_RBUTTONUP: {
        POINT at = pointOf(lParam);
        ClientToScreen(hWnd, at);
        SendMessageW(hWnd, WM_CONTEXTMENU, hWnd, makeLParam(at.x, at.y));
        return 0;
    }
    case WM_MOUSEWHEEL:
    case WM_CONTEXTMENU:
        return parent != 0 ? SendMessageW(parent, uMsg, wParam, lParam) : 0;
    default:
        return 0;
    }
}

}  // namespace platform
