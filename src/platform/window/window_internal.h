// platform/window/window_internal.h: what the sources of this folder share about windows. Nothing
// above the folder includes this.
//
// A widget of the desktop's library becomes a window by MessageWidget: its events go to routeEvent,
// which makes messages of them. While a message made from an event runs, the event lies on the
// window's stash; the default procedure finds it there and has the library handle it. So a
// procedure that does not hand a message on keeps the event from the library.
#pragma once
#include "platform/window/handles.h"
#include "platform/window/menu.h"
#include "platform/window/window.h"

#include <exception>
#include <memory>
#include <optional>
#include <vector>

class QCursor;
class QEvent;
class QEventLoop;
class QKeyEvent;
class QRect;
class QSize;
class QWidget;

namespace platform {

class Accessible;
struct WindowRecord;

// The widget behind a window.
class MessageTarget {
public:
    virtual ~MessageTarget() = default;
    MessageTarget(const MessageTarget&) = delete;
    MessageTarget& operator=(const MessageTarget&) = delete;
    // The library's own handling of an event, of the widget or of its scrolled viewport.
    virtual bool runNative(QEvent* event, bool viewport) = 0;
    // An event that does not become a message in the common way, or not at all: what came of it.
    virtual std::optional<bool> routeSpecially(WindowRecord& record, QEvent* event, bool viewport);
    // Where the window is painted and clicked, when that is a scrolled viewport inside the widget.
    [[nodiscard]] virtual QWidget* viewportWidget() { return nullptr; }
    // The room for that viewport beside the scroll bars, also ahead of its layout. Only asked of a
    // widget that has one.
    [[nodiscard]] virtual QSize viewportRoom() const;
    [[nodiscard]] HWND handle() const { return m_handle; }

protected:
    MessageTarget() = default;
    // To be called by the destructor of the most derived class, so that WM_DESTROY still meets a
    // whole window when the library deletes the widget by itself.
    void widgetGoes();

private:
    friend HWND adoptWidget(QWidget* widget, MessageTarget& target, const WindowOptions& options);
    HWND m_handle = 0;
};

// Makes messages of an event. Never raises.
bool routeEvent(MessageTarget& target, QEvent* event, bool viewport);

// A widget whose events become messages once adoptWidget has made a window of it.
template <class Base> class MessageWidget : public Base, public MessageTarget {
public:
    using Base::Base;
    ~MessageWidget() override { widgetGoes(); }
    bool runNative(QEvent* event, bool) override { return Base::event(event); }

protected:
    bool event(QEvent* event) override { return routeEvent(*this, event, false); }
};

// Enters a widget that has been made for options.kind as a window, without a picture of its own.
// The window owns the widget from now on. 0 when too many windows are open.
[[nodiscard]] HWND adoptWidget(QWidget* widget, MessageTarget& target,
                               const WindowOptions& options);

struct StashedEvent {
    std::uint32_t message = 0;
    WPARAM wParam = 0;
    LPARAM lParam = 0;
    QEvent* event = nullptr;
    bool viewport = false;
    bool ran = false;     // the library has handled it,
    bool result = false;  // with this result
};

// Handling that comes at the end of the chain, ahead of what all windows do: of a native class.
// True when the message is done.
using ClassProcedure = bool (*)(WindowRecord& record, std::uint32_t uMsg, WPARAM wParam,
                                LPARAM lParam, LRESULT& result);

struct WindowRecord {
    HWND handle = 0;
    QWidget* widget = nullptr;  // nullptr once the window is destroyed
    MessageTarget* target = nullptr;
    WNDPROC procedure = DefWindowProcW;
    ClassProcedure classProcedure = nullptr;
    std::intptr_t style = 0, extendedStyle = 0, userData = 0;
    std::uint32_t processId = 0;
    WindowKind kind = WindowKind::Child;
    bool placed = false;           // somebody has said where the window is to be
    bool procedureLocked = false;  // a test's: SetWindowLongW fails

    bool keepsPicture = false;  // else the library paints the widget
    HBITMAP picture = 0;        // 0 also when the window has no area or memory is short
    COLORREF background = 0xFFFFFF;
    bool invalid = true;   // WM_PAINT is due
    bool changed = false;  // drawn on since it was last brought to the screen
    bool painting = false;

    Text text, className;
    HMENU menu = 0, systemMenu = 0;
    QWidget* menuBar = nullptr;               // shows the menu
    int clientTop = 0;                        // rows of the widget that belong to the bar
    std::optional<std::vector<RECT>> region;  // what of the client area shows
    std::vector<ACCEL> accelerators;

    HICON cursor = 0;       // of the window, and
    HICON shownCursor = 0;  // what SetCursor has made of it for now
    bool acceptsFiles = false;
    int wheelRest = 0;  // of a notch, in 1/120
    SIZE reportedSize{-1, -1};
    WPARAM reportedState = SIZE_RESTORED;
    POINT reportedPosition;
    KeyFilter keyFilter;
    Accessible* accessible = nullptr;  // see setAccessible
    QEventLoop* modalLoop = nullptr;

    std::vector<StashedEvent*> stash;  // the innermost last
    bool destroying = false;
};

// One event of a window's widget or menu, from its arrival until it has been handled. While one
// exists the library has widgets on its stack, perhaps also around the one that gets the event:
// destroyed windows leave theirs to the outermost scope, hidden.
class EventScope {
public:
    explicit EventScope(std::shared_ptr<WindowRecord> record = nullptr);
    ~EventScope();
    EventScope(const EventScope&) = delete;
    EventScope& operator=(const EventScope&) = delete;

private:
    std::shared_ptr<WindowRecord> m_record;
};
// Deletes the widget of a destroyed window, as soon as that may be.
void deleteWidget(QWidget* widget);

[[nodiscard]] HandleTable<std::shared_ptr<WindowRecord>>& windowTable();
[[nodiscard]] inline WindowRecord* windowOf(HWND hWnd) {
    const std::shared_ptr<WindowRecord>* found = windowTable().find(hWnd);
    return found == nullptr ? nullptr : found->get();
}
[[nodiscard]] HWND
windowOfWidget(const QWidget* widget);       // the widget itself or the next around it
[[nodiscard]] QWidget* widgetOf(HWND hWnd);  // nullptr for an unknown window
// The viewport of a window that has one, else its widget.
[[nodiscard]] QWidget* clientWidgetOf(HWND hWnd);

// Sends a message made from an event. What the library answered if it came to handle the event,
// else true.
bool deliver(WindowRecord& record, QEvent* event, bool viewport, std::uint32_t uMsg, WPARAM wParam,
             LPARAM lParam);
// The event behind the message that the default procedure works on; nullptr for one that was sent
// by hand. Whoever takes it calls runNative itself, or not at all.
[[nodiscard]] StashedEvent* stashedEvent(WindowRecord& record, std::uint32_t uMsg);

// The client area as the rest of the system knows it: relative to the parent's client area or to
// the screen. The widget around it also holds the menu bar.
[[nodiscard]] QRect clientGeometry(const WindowRecord& record);
void setClientGeometry(WindowRecord& record, const QRect& place);
// That of GetClientRect and WM_SIZE: without the scroll bars of an edit.
[[nodiscard]] QSize clientSize(const WindowRecord& record);

// Cuts the widget to the region of the window, below the bar.
void applyRegion(WindowRecord& record);

// Brings the picture to the client area's size: what was there stays, new parts get the background.
void fitPicture(WindowRecord& record);
// Sizes below 0 count as 0. A dialog cannot be sized by the person.
void setClientSize(WindowRecord& record, int cx, int cy);
// Sends WM_MOVE and WM_SIZE for what has changed since they were last sent.
void reportPlace(WindowRecord& record, QEvent* event = nullptr);

[[nodiscard]] std::int32_t keyCodeOf(const QKeyEvent& event);
[[nodiscard]] int qtKeyOf(std::int32_t keyCode);  // 0 for a code without a key
[[nodiscard]] QCursor qtCursor(HICON cursor);
// The modifiers of the key event on its way, or those that are down now.
[[nodiscard]] int keyModifiers();
void noteModifiers(int qtModifiers);  // of an input event: fresher than any query
// Whether a key event is there because its key is held down. Wants to see each event of a key, once
// or more often, the going up included.
[[nodiscard]] bool isHeld(const QKeyEvent& key);
void noteMouseWindow(HWND hWnd);  // the window that SetCursor means

void killTimersOf(HWND hWnd);

// Has windows tell about themselves (accessibility.h). The library asks each widget once, and
// early.
void enterAccessibility();

// ---- For the menus

// Gives the bar its place in the widget, after its content or the widget's width has changed. The
// client area moves with it.
void placeMenuBar(WindowRecord& record);
// Brings the bar to what its menu holds, unless that is being measured or drawn at this moment.
void updateMenuBar(WindowRecord& record);
// Measures the bar anew: fonts have changed.
void remeasureMenuBar(WindowRecord& record);
// F10: gives the keys to the bar of a window, where it has one, or back.
void turnMenuBarKeys(WindowRecord& record);
void destroyMenusOf(WindowRecord& record);
// The window whose keys a menu bar has taken, without a message about it; 0 while none has.
[[nodiscard]] HWND focusUnderMenu();
void focusLeavesMenus();  // they do not go back to it: now it hears of its loss
// Whether a key that goes down is a command; if so, it is on its way.
[[nodiscard]] bool isAccelerator(const WindowRecord& focused, const QKeyEvent& key);

// Gives the failure to the handler of setFailureHandler. Never raises.
void reportFailure(const std::exception_ptr& failure) noexcept;
// Runs f; what it raises is reported.
template <class F> void guarded(F&& f) noexcept {
    try {
        f();
    } catch (...) {
        reportFailure(std::current_exception());
    }
}

}  // namespace platform
