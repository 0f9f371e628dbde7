#include "platform/window/window.h"

#include "platform/window/input.h"
#include "platform/window/surface_internal.h"
#include "platform/window/toolkit_internal.h"
#include "platform/window/window_internal.h"

#include <QApplication>
#include <QEventLoop>
#include <QPaintEvent>
#include <QPainter>
#include <QPointer>
#include <QRegion>
#include <QWidget>
#include <algorithm>
#include <unistd.h>

namespace platform {

HandleTable<std::shared_ptr<WindowRecord>>& windowTable() {
    static HandleTable<std::shared_ptr<WindowRecord>> table(HandleKind::Window);
    return table;
}

HWND windowOfWidget(const QWidget* widget) {
    for (; widget != nullptr; widget = widget->parentWidget()) {
        const auto* target = dynamic_cast<const MessageTarget*>(widget);
        if (target != nullptr && target->handle() != 0) return target->handle();
    }
    return 0;
}

QWidget* widgetOf(HWND hWnd) {
    const WindowRecord* record = windowOf(hWnd);
    return record == nullptr ? nullptr : record->widget;
}

namespace {

QColor qtColor(COLORREF color) { return QColor(redOf(color), greenOf(color), blueOf(color)); }

// A short-lived view on the picture's pixels; null for a window without one.
QImage viewOf(const WindowRecord& record) {
    const BitmapRecord* picture = bitmapOf(record.picture);
    if (picture == nullptr) return {};
    return QImage(static_cast<const uchar*>(picture->top), picture->width, picture->height,
                  static_cast<qsizetype>(picture->stride), QImage::Format_RGB32);
}

// A window that paints itself by messages: the widget only brings the picture to the screen.
class PictureWidget final : public MessageWidget<QWidget> {
public:
    using MessageWidget<QWidget>::MessageWidget;

private:
    void paintEvent(QPaintEvent* event) override {
        const WindowRecord* record = windowOf(handle());
        if (record == nullptr) return;
        QPainter painter(this);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        const QImage view = viewOf(*record);
        for (const QRect& part : event->region()) {
            if (!view.rect().contains(part)) painter.fillRect(part, qtColor(record->background));
            if (const QRect seen = part & view.rect(); !seen.isEmpty()) {
                painter.drawImage(seen, view, seen);
            }
        }
    }
};

Qt::WindowFlags flagsOf(WindowKind kind) {
    switch (kind) {
    case WindowKind::Child:
        return Qt::Widget;
    case WindowKind::Main:
        return Qt::Window;
    case WindowKind::Dialog:
        return Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
               Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;
    case WindowKind::Bare:
        return Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
               Qt::WindowDoesNotAcceptFocus;
    case WindowKind::Tip:
        return Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
               Qt::WindowDoesNotAcceptFocus | Qt::WindowTransparentForInput;
    }
    return Qt::Widget;
}

// After each drawing operation on a window: the picture has to be shown again.
void windowDrawn(HWND hWnd) {
    WindowRecord* record = windowOf(hWnd);
    if (record == nullptr || record->changed || record->painting) return;
    record->changed = true;
    if (record->widget != nullptr) record->widget->update();
}

void fill(const BitmapRecord& picture, const RECT& rect, COLORREF color) {
    const RECT part = intersection(rect, {0, 0, picture.width, picture.height});
    if (isEmpty(part)) return;
    for (int y = part.top; y < part.bottom; ++y) {
        std::fill(picture.row(y) + part.left, picture.row(y) + part.right, pixelOf(color));
    }
}

void setSize(WindowRecord& record, QSize size) {
    if (record.kind == WindowKind::Dialog) {
        record.widget->setFixedSize(size);
    } else {
        record.widget->resize(size);
    }
}

// Ends a window and all that is inside it and that it owns. The first failure of a procedure is
// kept for the caller; the rest of the work is done in any case.
class Destruction {
public:
    void run(const std::shared_ptr<WindowRecord>& record, bool widgetGoesByItself) {
        if (record->destroying) return;
        record->destroying = true;
        QWidget* const widget = record->widget;
        attempt([&] { SendMessageW(record->handle, WM_DESTROY, 0, 0); });

        for (;;) {  // a procedure may destroy other children, or make new ones
            const HWND child = firstChild(*widget);
            if (child == 0) break;
            run(std::shared_ptr<WindowRecord>(*windowTable().find(child)), false);
        }
        killTimersOf(record->handle);
        if (record->modalLoop != nullptr) record->modalLoop->quit();
        if (record->picture != 0) {
            setWindowSurface(record->handle, 0);
            DeleteObject(record->picture);
        }
        windowTable().remove(record->handle);
        record->widget = nullptr;
        record->target = nullptr;
        if (!widgetGoesByItself) deleteWidget(widget);
    }
    void raiseFailure() const {
        if (m_failure) std::rethrow_exception(m_failure);
    }

private:
    template <class F> void attempt(F&& f) {
        try {
            f();
        } catch (...) {
            if (!m_failure) m_failure = std::current_exception();
        }
    }
    static HWND firstChild(const QWidget& widget) {
        for (QObject* object : widget.children()) {
            const auto* target = dynamic_cast<const MessageTarget*>(object);
            if (target == nullptr) continue;
            const WindowRecord* record = windowOf(target->handle());
            if (record != nullptr && !record->destroying) return record->handle;
        }
        return 0;
    }

    std::exception_ptr m_failure;
};

}  // namespace

// ---- Life

void MessageTarget::widgetGoes() {
    const std::shared_ptr<WindowRecord>* found = windowTable().find(m_handle);
    if (found == nullptr) return;
    guarded([record = *found] {
        Destruction destruction;
        destruction.run(record, true);
        destruction.raiseFailure();
    });
}

HWND adoptWidget(QWidget* widget, MessageTarget& target, const WindowOptions& options) {
    setWindowHooks({IsWindow, windowDrawn});
    auto record = std::make_shared<WindowRecord>();
    record->widget = widget;
    record->target = &target;
    record->kind = options.kind;
    if (options.procedure != nullptr) record->procedure = options.procedure;
    record->userData = options.userData;
    record->style = options.style;
    record->extendedStyle = options.extendedStyle;
    record->background = options.background;
    record->text = options.title;
    record->processId = GetCurrentProcessId();
    const HWND hWnd = windowTable().add(record);
    if (hWnd == 0) return 0;
    record->handle = hWnd;
    target.m_handle = hWnd;

    const QSize size(std::max(options.size.cx, 0), std::max(options.size.cy, 0));
    const POINT at = options.position;
    record->placed = options.kind == WindowKind::Child || at.x != 0 || at.y != 0;
    setSize(*record, size);
    if (record->placed) widget->setGeometry(QRect(QPoint(at.x, at.y), size));
    record->reportedSize = {widget->width(), widget->height()};
    record->reportedPosition = {widget->x(), widget->y()};
    if (options.kind != WindowKind::Child) {
        widget->setWindowTitle(toQt(options.title));
        widget->setAttribute(Qt::WA_ShowWithoutActivating,
                             options.kind == WindowKind::Bare || options.kind == WindowKind::Tip);
        widget->setAttribute(Qt::WA_QuitOnClose, false);
    }
    return hWnd;
}

HWND createWindow(const WindowOptions& options) {
    QWidget* const around = widgetOf(options.parent);
    if (options.kind == WindowKind::Child && around == nullptr) return 0;
    auto widget = std::make_unique<PictureWidget>(around, flagsOf(options.kind));
    widget->setAttribute(Qt::WA_OpaquePaintEvent);
    widget->setAttribute(Qt::WA_NoSystemBackground);
    widget->setMouseTracking(true);
    const HWND hWnd = adoptWidget(widget.get(), *widget, options);
    if (hWnd == 0) return 0;
    WindowRecord& record = *windowOf(hWnd);
    record.keepsPicture = true;
    fitPicture(record);
    if (options.kind == WindowKind::Child) widget->show();
    (void)widget.release();  // the window owns it
    return hWnd;
}

bool DestroyWindow(HWND hWnd) {
    const std::shared_ptr<WindowRecord>* found = windowTable().find(hWnd);
    if (found == nullptr) return false;
    const std::shared_ptr<WindowRecord> record = *found;
    Destruction destruction;
    destruction.run(record, false);
    destruction.raiseFailure();
    return true;
}

bool IsWindow(HWND hWnd) { return windowOf(hWnd) != nullptr; }

HWND GetParent(HWND hWnd) {
    const QWidget* widget = widgetOf(hWnd);
    return widget == nullptr ? 0 : windowOfWidget(widget->parentWidget());
}

bool IsChild(HWND hParent, HWND hWnd) {
    const QWidget* parent = widgetOf(hParent);
    const QWidget* widget = widgetOf(hWnd);
    // Unlike GetParent this stops at the edge of a window: an owned one is no child.
    return parent != nullptr && widget != nullptr && parent != widget &&
           parent->isAncestorOf(widget);
}

std::uint32_t GetWindowThreadProcessId(HWND hWnd, std::uint32_t& processId) {
    const WindowRecord* record = windowOf(hWnd);
    processId = record == nullptr ? 0 : record->processId;
    return record == nullptr ? 0 : 1;
}

std::uint32_t GetCurrentProcessId() {
    static const auto id = static_cast<std::uint32_t>(::getpid());
    return id;
}

// ---- Procedures and messages

std::intptr_t SetWindowLongW(HWND hWnd, int index, std::intptr_t value) {
    WindowRecord* record = windowOf(hWnd);
    if (record == nullptr) return 0;
    switch (index) {
    case GWL_WNDPROC: {
        if (value == 0 || record->procedureLocked) return 0;
        const auto previous = reinterpret_cast<std::intptr_t>(record->procedure);
        record->procedure = reinterpret_cast<WNDPROC>(value);
        return previous;
    }
    case GWL_STYLE:
        return std::exchange(record->style, value);
    case GWL_EXSTYLE:
        return std::exchange(record->extendedStyle, value);
    case GWL_USERDATA:
        return std::exchange(record->userData, value);
    default:
        return 0;
    }
}

std::intptr_t GetWindowLongW(HWND hWnd, int index) {
    const WindowRecord* record = windowOf(hWnd);
    if (record == nullptr) return 0;
    switch (index) {
    case GWL_WNDPROC:
        return reinterpret_cast<std::intptr_t>(record->procedure);
    case GWL_STYLE:
        return record->style;
    case GWL_EXSTYLE:
        return record->extendedStyle;
    case GWL_USERDATA:
        return record->userData;
    default:
        return 0;
    }
}

LRESULT CallWindowProcW(WNDPROC procedure, HWND hWnd, std::uint32_t uMsg, WPARAM wParam,
                        LPARAM lParam) {
    // A chain that goes on although a sink has destroyed the window ends here.
    if (procedure == nullptr || !IsWindow(hWnd)) return 0;
    return procedure(hWnd, uMsg, wParam, lParam);
}

LRESULT SendMessageW(HWND hWnd, std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
    const WindowRecord* record = windowOf(hWnd);
    return record == nullptr ? 0 : record->procedure(hWnd, uMsg, wParam, lParam);
}

namespace {

struct PostedMessage final : QEvent {
    static Type type() {
        static const auto registered = static_cast<Type>(registerEventType());
        return registered;
    }
    PostedMessage(HWND window, std::uint32_t number, WPARAM first, LPARAM second)
        : QEvent(type()), hWnd(window), uMsg(number), wParam(first), lParam(second) {}
    HWND hWnd;
    std::uint32_t uMsg;
    WPARAM wParam;
    LPARAM lParam;
};

class PostOffice final : public QObject {
public:
    using QObject::QObject;

private:
    void customEvent(QEvent* event) override {
        if (event->type() != PostedMessage::type()) return;
        const auto& posted = static_cast<const PostedMessage&>(*event);
        guarded([&] { SendMessageW(posted.hWnd, posted.uMsg, posted.wParam, posted.lParam); });
    }
};

}  // namespace

bool PostMessageW(HWND hWnd, std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
    static QPointer<PostOffice> office;  // lives and dies with the application
    if (!IsWindow(hWnd)) return false;
    if (office.isNull()) office = new PostOffice(qApp);
    QCoreApplication::postEvent(office, new PostedMessage(hWnd, uMsg, wParam, lParam));
    return true;
}

void setKeyFilter(HWND hWnd, KeyFilter filter) {
    if (WindowRecord* record = windowOf(hWnd)) record->keyFilter = std::move(filter);
}

// ---- State, place and title

bool ShowWindow(HWND hWnd, int command) {
    QWidget* const widget = widgetOf(hWnd);
    if (widget == nullptr) return false;
    const bool before = widget->isVisible();
    switch (command) {
    case SW_HIDE:
        widget->hide();
        return before;
    case SW_SHOWMINIMIZED:
        widget->showMinimized();
        return before;
    case SW_SHOWMAXIMIZED:
        widget->showMaximized();
        break;
    case SW_SHOWNOACTIVATE: {
        const bool quiet = widget->testAttribute(Qt::WA_ShowWithoutActivating);
        widget->setAttribute(Qt::WA_ShowWithoutActivating);
        widget->show();
        widget->setAttribute(Qt::WA_ShowWithoutActivating, quiet);
        return before;
    }
    case SW_SHOWNORMAL:
        widget->showNormal();
        break;
    default:
        widget->show();
        break;
    }
    // What shows may have been destroyed by its own messages.
    if (IsWindow(hWnd) && widget->isWindow() &&
        !widget->testAttribute(Qt::WA_ShowWithoutActivating)) {
        widget->activateWindow();
    }
    return before;
}

bool IsWindowVisible(HWND hWnd) {
    const QWidget* widget = widgetOf(hWnd);
    return widget != nullptr && widget->isVisible();
}

bool IsIconic(HWND hWnd) {
    const QWidget* widget = widgetOf(hWnd);
    return widget != nullptr && widget->isWindow() && widget->isMinimized();
}

bool EnableWindow(HWND hWnd, bool enable) {
    WindowRecord* record = windowOf(hWnd);
    if (record == nullptr) return false;
    const bool wasDisabled = record->widget->testAttribute(Qt::WA_ForceDisabled);
    if (wasDisabled == enable) {
        record->widget->setEnabled(enable);
        SendMessageW(hWnd, WM_ENABLE, enable ? 1 : 0, 0);
    }
    return wasDisabled;
}

bool IsWindowEnabled(HWND hWnd) {
    const QWidget* widget = widgetOf(hWnd);
    return widget != nullptr && !widget->testAttribute(Qt::WA_ForceDisabled);
}

void fitPicture(WindowRecord& record) {
    if (!record.keepsPicture) return;
    const QSize size = record.widget->size();
    const BitmapRecord* old = bitmapOf(record.picture);
    if (old != nullptr ? QSize(old->width, old->height) == size : size.isEmpty()) return;

    // Sizes beyond the limits of a bitmap leave the window without a picture: it shows its
    // background then.
    const HDC screen = GetDC(0);
    const HBITMAP made =
        size.isEmpty() ? 0 : CreateCompatibleBitmap(screen, size.width(), size.height());
    ReleaseDC(0, screen);
    if (const BitmapRecord* picture = bitmapOf(made)) {
        const int kept = old == nullptr ? 0 : std::min(old->width, picture->width);
        for (int y = 0; y < picture->height; ++y) {
            const int here = old != nullptr && y < old->height ? kept : 0;
            if (here > 0) std::copy_n(old->row(y), here, picture->row(y));
            std::fill(picture->row(y) + here, picture->row(y) + picture->width,
                      pixelOf(record.background));
        }
    }
    setWindowSurface(record.handle, made);
    if (record.picture != 0) DeleteObject(record.picture);
    record.picture = made;
    record.invalid = true;
}

void reportPlace(WindowRecord& record, QEvent* event) {
    const HWND hWnd = record.handle;
    const QWidget& widget = *record.widget;
    const POINT position{widget.geometry().x(), widget.geometry().y()};
    const SIZE size{widget.width(), widget.height()};
    WPARAM state = SIZE_RESTORED;
    if (widget.isWindow() && widget.isMinimized()) state = SIZE_MINIMIZED;
    if (widget.isWindow() && !widget.isMinimized() && widget.isMaximized()) state = SIZE_MAXIMIZED;

    if (position != record.reportedPosition) {
        record.reportedPosition = position;
        SendMessageW(hWnd, WM_MOVE, 0, makeLParam(position.x, position.y));
        if (!IsWindow(hWnd)) return;
    }
    if (size != record.reportedSize || state != record.reportedState) {
        record.reportedSize = size;
        record.reportedState = state;
        fitPicture(record);
        deliver(record, event, false, WM_SIZE, state, makeLParam(size.cx, size.cy));
    } else if (event != nullptr) {
        record.target->runNative(event, false);
    }
}

namespace {

void setOrder(WindowRecord& record, HWND insertAfter) {
    QWidget& widget = *record.widget;
    if (insertAfter == HWND_BOTTOM) {
        widget.lower();
    } else if (insertAfter == HWND_TOP) {
        widget.raise();
    } else if (insertAfter == HWND_TOPMOST || insertAfter == HWND_NOTOPMOST) {
        const bool top = insertAfter == HWND_TOPMOST;
        if (!widget.isWindow() || widget.windowFlags().testFlag(Qt::WindowStaysOnTopHint) == top) {
            if (top) widget.raise();
            return;
        }
        const bool visible = widget.isVisible();
        widget.setWindowFlag(Qt::WindowStaysOnTopHint, top);  // hides
        if (visible) widget.show();
    } else if (QWidget* above = widgetOf(insertAfter);
               above != nullptr && above->parentWidget() == widget.parentWidget()) {
        widget.stackUnder(above);
    }
}

}  // namespace

bool SetWindowPos(HWND hWnd, HWND insertAfter, int x, int y, int cx, int cy, std::uint32_t flags) {
    const std::shared_ptr<WindowRecord>* found = windowTable().find(hWnd);
    if (found == nullptr) return false;
    const std::shared_ptr<WindowRecord> record = *found;
    QWidget& widget = *record->widget;
    // Showing comes last and hiding first, so that nobody sees the window on its way.
    if ((flags & SWP_HIDEWINDOW) != 0) ShowWindow(hWnd, SW_HIDE);
    if (!IsWindow(hWnd)) return true;
    if ((flags & SWP_NOZORDER) == 0) setOrder(*record, insertAfter);
    if (!IsWindow(hWnd)) return true;
    const QSize size = (flags & SWP_NOSIZE) != 0 ? widget.size()
                                                 : QSize(std::clamp(cx, 0, QWIDGETSIZE_MAX),
                                                         std::clamp(cy, 0, QWIDGETSIZE_MAX));
    if ((flags & SWP_NOMOVE) != 0) {
        if (size != widget.size()) setSize(*record, size);
    } else {
        record->placed = true;
        if (record->kind == WindowKind::Dialog) setSize(*record, size);
        if (IsWindow(hWnd)) widget.setGeometry(QRect(QPoint(x, y), size));
    }
    if (IsWindow(hWnd)) reportPlace(*record);
    if (IsWindow(hWnd) && (flags & SWP_SHOWWINDOW) != 0) {
        ShowWindow(hWnd, (flags & SWP_NOACTIVATE) != 0 ? SW_SHOWNOACTIVATE : SW_SHOW);
    }
    return true;
}

bool GetClientRect(HWND hWnd, RECT& rect) {
    const QWidget* widget = widgetOf(hWnd);
    if (widget == nullptr) return false;
    rect = {0, 0, widget->width(), widget->height()};
    return true;
}

bool GetWindowRect(HWND hWnd, RECT& rect) {
    const QWidget* widget = widgetOf(hWnd);
    if (widget == nullptr) return false;
    const QRect place = widget->isWindow()
                            ? widget->frameGeometry()
                            : QRect(widget->mapToGlobal(QPoint(0, 0)), widget->size());
    rect = {place.left(), place.top(), place.left() + place.width(), place.top() + place.height()};
    return true;
}

bool ClientToScreen(HWND hWnd, POINT& point) {
    const QWidget* widget = widgetOf(hWnd);
    if (widget == nullptr) return false;
    const QPoint there = widget->mapToGlobal(QPoint(point.x, point.y));
    point = {there.x(), there.y()};
    return true;
}

bool ScreenToClient(HWND hWnd, POINT& point) {
    const QWidget* widget = widgetOf(hWnd);
    if (widget == nullptr) return false;
    const QPoint there = widget->mapFromGlobal(QPoint(point.x, point.y));
    point = {there.x(), there.y()};
    return true;
}

bool SetWindowTextW(HWND hWnd, TextView text) {
    if (!IsWindow(hWnd)) return false;
    const Text copy(text);
    return SendMessageW(hWnd, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(&copy)) != 0;
}

Text GetWindowTextW(HWND hWnd) {
    Text text;
    SendMessageW(hWnd, WM_GETTEXT, 0, reinterpret_cast<LPARAM>(&text));
    return text;
}

int GetWindowTextLengthW(HWND hWnd) { return static_cast<int>(GetWindowTextW(hWnd).size()); }

bool SetWindowRgn(HWND hWnd, HRGN hRgn, bool redraw) {
    QWidget* const widget = widgetOf(hWnd);
    if (widget == nullptr) return false;
    if (hRgn == 0) {
        widget->clearMask();
    } else {
        std::vector<QRect> parts;
        for (const RECT& r : regionRects(hRgn)) {
            parts.emplace_back(r.left, r.top, r.right - r.left, r.bottom - r.top);
        }
        QRegion region;
        region.setRects(parts.data(), static_cast<int>(parts.size()));
        // An empty mask would be none at all; a window cut to nothing has one far outside it.
        widget->setMask(region.isEmpty() ? QRegion(-2, -2, 1, 1) : region);
    }
    if (redraw) InvalidateRect(hWnd);
    return true;
}

bool SetLayeredWindowAttributes(HWND hWnd, COLORREF, std::uint8_t alpha, std::uint32_t flags) {
    QWidget* const widget = widgetOf(hWnd);
    if (widget == nullptr || !widget->isWindow()) return false;
    if ((flags & LWA_ALPHA) != 0) widget->setWindowOpacity(alpha / 255.0);
    return true;
}

void DragAcceptFiles(HWND hWnd, bool accept) {
    WindowRecord* record = windowOf(hWnd);
    if (record == nullptr) return;
    record->acceptsFiles = accept;
    record->widget->setAcceptDrops(accept);
}

bool runModal(HWND hWnd) {
    const std::shared_ptr<WindowRecord>* found = windowTable().find(hWnd);
    if (found == nullptr) return false;
    const std::shared_ptr<WindowRecord> record = *found;
    if (record->modalLoop != nullptr) return true;  // it runs already
    QWidget* const widget = record->widget;
    if (widget->isVisible()) widget->hide();  // modality counts from the moment of showing
    widget->setWindowModality(Qt::ApplicationModal);
    QEventLoop loop;
    record->modalLoop = &loop;
    ShowWindow(hWnd, SW_SHOW);
    if (IsWindow(hWnd) && widget->isVisible()) loop.exec(QEventLoop::DialogExec);
    record->modalLoop = nullptr;
    if (IsWindow(hWnd)) {
        widget->hide();
        widget->setWindowModality(Qt::NonModal);
    }
    return true;
}

// ---- Painting

bool InvalidateRect(HWND hWnd, const RECT* rect, bool erase) {
    WindowRecord* record = windowOf(hWnd);
    if (record == nullptr) return false;
    record->invalid = true;
    const RECT all{0, 0, record->widget->width(), record->widget->height()};
    const RECT part = rect == nullptr ? all : intersection(*rect, all);
    if (const BitmapRecord* picture = bitmapOf(record->picture); erase && picture != nullptr) {
        fill(*picture, part, record->background);
    }
    if (!isEmpty(part)) {
        record->widget->update(part.left, part.top, part.right - part.left, part.bottom - part.top);
    }
    return true;
}

bool UpdateWindow(HWND hWnd) {
    WindowRecord* record = windowOf(hWnd);
    if (record == nullptr) return false;
    if (record->painting || !record->widget->isVisible()) return true;
    if (record->invalid || record->changed) record->widget->repaint();
    return true;
}

void setWindowBackground(HWND hWnd, COLORREF color) {
    if (WindowRecord* record = windowOf(hWnd)) record->background = color;
}

// ---- Focus and mouse

HWND GetFocus() { return windowOfWidget(QApplication::focusWidget()); }

HWND SetFocus(HWND hWnd) {
    const HWND before = GetFocus();
    if (hWnd == 0) {
        if (QWidget* focused = QApplication::focusWidget()) focused->clearFocus();
    } else if (QWidget* widget = widgetOf(hWnd)) {
        widget->setFocus(Qt::OtherFocusReason);
    }
    return before;
}

void setWindowCursor(HWND hWnd, HICON cursor) {
    WindowRecord* record = windowOf(hWnd);
    if (record == nullptr) return;
    record->cursor = record->shownCursor = cursor == 0 ? IDC_ARROW : cursor;
    record->widget->setCursor(qtCursor(record->cursor));
}

}  // namespace platform
