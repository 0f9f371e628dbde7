#include "platform/window/wait.h"

#include "platform/window/timer_internal.h"
#include "platform/window/window_internal.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>
#include <QWidget>
#include <QWindow>

namespace platform {

bool showPainted(HWND hWnd) {
    QWidget* const widget = widgetOf(hWnd);
    if (widget == nullptr) return false;
    constexpr int kLimit = 500;  // milliseconds
    const TimerHold hold;
    ShowWindow(hWnd, SW_SHOWNOACTIVATE);
    const auto exposed = [&] {
        const QWindow* window = widget->window()->windowHandle();
        return window != nullptr && window->isExposed();
    };
    QElapsedTimer waited;
    waited.start();
    while (IsWindow(hWnd) && !exposed() && waited.elapsed() < kLimit) {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        QThread::msleep(1);
    }
    if (!IsWindow(hWnd) || !exposed()) return false;
    InvalidateRect(hWnd);
    UpdateWindow(hWnd);  // with all that is inside it
    return true;
}

}  // namespace platform
