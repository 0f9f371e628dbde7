// Place, visibility, painting, focus: everything about a window but its life and its messages.
#include "platform/window/input.h"
#include "platform/window/surface_internal.h"
#include "platform/window/toolkit_internal.h"
#include "platform/window/window_internal.h"

#include <QApplication>
#include <QCursor>
#include <QEventLoop>
#include <QIcon>
#include <QPixmap>
#include <QRegion>
#include <QWidget>
#include <algorithm>
#include <utility>

namespace platform {

// ---- State, place and title

bool ShowWindow(HWND hWnd, int command) {
    WindowRecord* const record = windowOf(hWnd);
    if (record == nullptr) return false;
    QWidget* const widget = record->widget;
    const bool before = widget->isVisible();
    if (command != SW_HIDE) {
        updateMenuBar(*record);
        if (!IsWindow(hWnd)) return before;  // by what measuring an item has brought about
    }
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

void setClientSize(WindowRecord& record, int cx, int cy) {
    const QSize size(std::clamp(cx, 0, QWIDGETSIZE_MAX),
                     std::clamp(cy, 0, QWIDGETSIZE_MAX - record.clientTop) + record.clientTop);
    if (record.kind == WindowKind::Dialog) {
        record.widget->setFixedSize(size);
    } else {
        record.widget->resize(size);
    }
}

namespace {

// Rows above the client area of the parent; a window that is no child lies on the screen.
int clientTopAround(const WindowRecord& record) {
    if (record.kind != WindowKind::Child) return 0;
    const WindowRecord* around = windowOf(windowOfWidget(record.widget->parentWidget()));
    return around == nullptr ? 0 : around->clientTop;
}

}  // namespace

QRect clientGeometry(const WindowRecord& record) {
    QRect place = record.widget->geometry();
    place.setTop(std::min(place.top() + record.clientTop, place.bottom() + 1));
    return place.translated(0, -clientTopAround(record));
}

void setClientGeometry(WindowRecord& record, const QRect& place) {
    record.widget->setGeometry(
        place.adjusted(0, -record.clientTop, 0, 0).translated(0, clientTopAround(record)));
}

QSize MessageTarget::viewportRoom() const { return {}; }

QSize clientSize(const WindowRecord& record) {
    return record.target->viewportWidget() != nullptr
               ? record.target->viewportRoom().expandedTo({0, 0})
               : clientGeometry(record).size();
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
    const QSize size = clientGeometry(record).size();
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
    if (record.menuBar != nullptr) {
        placeMenuBar(record);
        if (!IsWindow(hWnd)) return;
    }
    const QPoint at = clientGeometry(record).topLeft();
    const POINT position{at.x(), at.y()};
    if (position != record.reportedPosition) {
        record.reportedPosition = position;
        SendMessageW(hWnd, WM_MOVE, 0, makeLParam(position.x, position.y));
        if (!IsWindow(hWnd)) return;
    }
    // Asked only now: whoever heard of the move may have sized the window, and reported that.
    const QSize area = clientSize(record);
    const SIZE size{area.width(), area.height()};
    WPARAM state = SIZE_RESTORED;
    if (widget.isWindow() && widget.isMinimized()) state = SIZE_MINIMIZED;
    if (widget.isWindow() && !widget.isMinimized() && widget.isMaximized()) state = SIZE_MAXIMIZED;
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
        // This hides the window, which is not the end of its modal loop, unless it is the end of
        // the window.
        QEventLoop* const loop = std::exchange(record.modalLoop, nullptr);
        widget.setWindowFlag(Qt::WindowStaysOnTopHint, top);
        if (record.widget != nullptr) {
            record.modalLoop = loop;
            if (visible) widget.show();
        } else if (loop != nullptr) {
            loop->quit();
        }
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
    // Showing comes last and hiding first, so that nobody sees the window on its way.
    if ((flags & SWP_HIDEWINDOW) != 0) ShowWindow(hWnd, SW_HIDE);
    if (!IsWindow(hWnd)) return true;
    if ((flags & SWP_NOZORDER) == 0) setOrder(*record, insertAfter);
    if (!IsWindow(hWnd)) return true;
    const QSize before = clientGeometry(*record).size();
    const QSize size = (flags & SWP_NOSIZE) != 0 ? before
                                                 : QSize(std::clamp(cx, 0, QWIDGETSIZE_MAX),
                                                         std::clamp(cy, 0, QWIDGETSIZE_MAX));
    if ((flags & SWP_NOMOVE) != 0) {
        if (size != before) setClientSize(*record, size.width(), size.height());
    } else {
        record->placed = true;
        if (record->kind == WindowKind::Dialog) {
            setClientSize(*record, size.width(), size.height());
        }
        if (IsWindow(hWnd)) setClientGeometry(*record, QRect(QPoint(x, y), size));
    }
    if (IsWindow(hWnd)) reportPlace(*record);
    if (IsWindow(hWnd) && (flags & SWP_SHOWWINDOW) != 0) {
        ShowWindow(hWnd, (flags & SWP_NOACTIVATE) != 0 ? SW_SHOWNOACTIVATE : SW_SHOW);
    }
    return true;
}

bool GetClientRect(HWND hWnd, RECT& rect) {
    const WindowRecord* record = windowOf(hWnd);
    if (record == nullptr) return false;
    const QSize size = clientSize(*record);
    rect = {0, 0, size.width(), size.height()};
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
    const QWidget* widget = clientWidgetOf(hWnd);
    if (widget == nullptr) return false;
    const QPoint there = widget->mapToGlobal(QPoint(point.x, point.y + windowOf(hWnd)->clientTop));
    point = {there.x(), there.y()};
    return true;
}

bool ScreenToClient(HWND hWnd, POINT& point) {
    const QWidget* widget = clientWidgetOf(hWnd);
    if (widget == nullptr) return false;
    const QPoint there = widget->mapFromGlobal(QPoint(point.x, point.y));
    point = {there.x(), there.y() - windowOf(hWnd)->clientTop};
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

int GetWindowTextLengthW(HWND hWnd) {
    return static_cast<int>(SendMessageW(hWnd, WM_GETTEXTLENGTH, 0, 0));
}

bool setWindowIcon(HWND hWnd, HICON icon) {
    QWidget* const widget = widgetOf(hWnd);
    if (widget == nullptr || !widget->isWindow()) return false;
    const QPixmap picture = icon == 0 ? QPixmap() : qtCursor(icon).pixmap();
    widget->setWindowIcon(picture.isNull() ? QApplication::windowIcon() : QIcon(picture));
    return true;
}

void applyRegion(WindowRecord& record) {
    QWidget& widget = *record.widget;
    if (!record.region) {
        widget.clearMask();
        return;
    }
    std::vector<QRect> parts;
    for (const RECT& r : *record.region) {
        parts.emplace_back(r.left, r.top, r.right - r.left, r.bottom - r.top);
    }
    QRegion region;
    region.setRects(parts.data(), static_cast<int>(parts.size()));
    region.translate(0, record.clientTop);
    region += QRect(0, 0, QWIDGETSIZE_MAX, record.clientTop);
    // An empty mask would be none at all; a window cut to nothing has one far outside it.
    widget.setMask(region.isEmpty() ? QRegion(-2, -2, 1, 1) : region);
}

bool SetWindowRgn(HWND hWnd, HRGN hRgn, bool redraw) {
    WindowRecord* const record = windowOf(hWnd);
    if (record == nullptr) return false;
    record->region.reset();
    if (hRgn != 0) {
        const std::span<const RECT> rects = regionRects(hRgn);
        record->region.emplace(rects.begin(), rects.end());
    }
    applyRegion(*record);
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

namespace {

void fill(const BitmapRecord& picture, const RECT& rect, COLORREF color) {
    const RECT part = intersection(rect, {0, 0, picture.width, picture.height});
    if (isEmpty(part)) return;
    for (int y = part.top; y < part.bottom; ++y) {
        std::fill(picture.row(y) + part.left, picture.row(y) + part.right, pixelOf(color));
    }
}

}  // namespace

bool InvalidateRect(HWND hWnd, const RECT* rect, bool erase) {
    WindowRecord* record = windowOf(hWnd);
    if (record == nullptr) return false;
    record->invalid = true;
    RECT all;
    GetClientRect(hWnd, all);
    const RECT part = rect == nullptr ? all : intersection(*rect, all);
    if (const BitmapRecord* picture = bitmapOf(record->picture); erase && picture != nullptr) {
        fill(*picture, part, record->background);
    }
    if (!isEmpty(part)) {
        clientWidgetOf(hWnd)->update(part.left, part.top + record->clientTop,
                                     part.right - part.left, part.bottom - part.top);
    }
    return true;
}

bool UpdateWindow(HWND hWnd) {
    WindowRecord* record = windowOf(hWnd);
    if (record == nullptr) return false;
    if (record->painting || !record->widget->isVisible()) return true;
    if (record->invalid || record->changed) clientWidgetOf(hWnd)->repaint();
    return true;
}

void setWindowBackground(HWND hWnd, COLORREF color) {
    if (WindowRecord* record = windowOf(hWnd)) record->background = color;
}

// ---- Focus and mouse

HWND GetFocus() {
    const QWidget* focused = QApplication::focusWidget();
    const HWND around = windowOfWidget(focused);
    const WindowRecord* record = windowOf(around);
    // A dialog of the library stands in front of its owner, not inside of it.
    if (record != nullptr && record->widget->window() != focused->window()) return 0;
    return record != nullptr && focused == record->menuBar ? focusUnderMenu() : around;
}

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
    clientWidgetOf(hWnd)->setCursor(qtCursor(record->cursor));
}

}  // namespace platform
