#include "platform/window/window.h"

#include "platform/base/casemap.h"
#include "platform/window/surface_internal.h"
#include "platform/window/toolkit_internal.h"
#include "platform/window/window_internal.h"

#include <QApplication>
#include <QEventLoop>
#include <QPaintEvent>
#include <QPainter>
#include <QPointer>
#include <QWidget>
#include <unistd.h>
#include <utility>

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

QWidget* clientWidgetOf(HWND hWnd) {
    const WindowRecord* record = windowOf(hWnd);
    if (record == nullptr) return nullptr;
    QWidget* const viewport = record->target->viewportWidget();
    return viewport != nullptr ? viewport : record->widget;
}

namespace {

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
        painter.translate(0, record->clientTop);
        const QImage view = viewOf(*record);
        for (const QRect& part : event->region().translated(0, -record->clientTop)) {
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
    if (record == nullptr || record->changed) return;
    record->changed = true;
    if (!record->painting) record->widget->update();
}

// Ends a window and all that is inside it and that it owns. The first failure of a procedure is
// kept for the caller; the rest of the work is done in any case.
class Destruction {
public:
    void run(const std::shared_ptr<WindowRecord>& record, bool widgetGoesByItself) {
        if (!record->destroying) {
            record->destroying = true;
            attempt([&] { SendMessageW(record->handle, WM_DESTROY, 0, 0); });
            // A procedure may destroy other children, make new ones, or end all that is around.
            while (record->widget != nullptr) {
                const HWND child = firstChild(*record->widget);
                if (child == 0) break;
                run(std::shared_ptr<WindowRecord>(*windowTable().find(child)), false);
            }
            leave(*record, widgetGoesByItself);
        } else if (widgetGoesByItself) {
            leave(*record, true);
        }
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
    // The window's handle and all that it holds go; once.
    static void leave(WindowRecord& record, bool widgetGoesByItself) {
        if (record.widget == nullptr) return;
        QWidget* const widget = std::exchange(record.widget, nullptr);
        record.target = nullptr;
        killTimersOf(record.handle);
        destroyMenusOf(record);
        if (record.modalLoop != nullptr) record.modalLoop->quit();
        if (record.picture != 0) {
            setWindowSurface(record.handle, 0);
            DeleteObject(record.picture);
        }
        windowTable().remove(record.handle);
        if (!widgetGoesByItself) deleteWidget(widget);
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
    enterAccessibility();
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
    record->className = options.className;
    record->processId = GetCurrentProcessId();
    const HWND hWnd = windowTable().add(record);
    if (hWnd == 0) return 0;
    record->handle = hWnd;
    target.m_handle = hWnd;

    const POINT at = options.position;
    record->placed = options.kind == WindowKind::Child || at.x != 0 || at.y != 0;
    setClientSize(*record, options.size.cx, options.size.cy);
    if (record->placed) setClientGeometry(*record, QRect(QPoint(at.x, at.y), widget->size()));
    const QSize area = clientSize(*record);
    record->reportedSize = {area.width(), area.height()};
    const QPoint corner = clientGeometry(*record).topLeft();
    record->reportedPosition = {corner.x(), corner.y()};
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

HWND FindWindowExA(HWND hParent, HWND hAfter, const char* className) {
    const QWidget* parent = widgetOf(hParent);
    if (parent == nullptr) return 0;
    const Text wanted = lowerCase(fromUtf8(className));
    bool behind = hAfter == 0;
    for (const QObject* object : parent->children()) {
        const auto* target = dynamic_cast<const MessageTarget*>(object);
        const WindowRecord* child = target == nullptr ? nullptr : windowOf(target->handle());
        if (child == nullptr || child->kind != WindowKind::Child) continue;
        if (behind && lowerCase(child->className) == wanted) return child->handle;
        behind = behind || child->handle == hAfter;
    }
    return 0;
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

}  // namespace platform
