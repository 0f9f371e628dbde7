#include "platform/window/focus.h"

#include "platform/window/window_internal.h"

#include <QApplication>
#include <QPointer>
#include <QWidget>

namespace platform {
namespace {

FocusObserver g_observer = nullptr;

}  // namespace

void setFocusObserver(FocusObserver observer) {
    static QPointer<QObject> connected;  // to the application object that there is
    g_observer = observer;
    if (connected == qApp || qApp == nullptr) return;
    connected = qApp;
    QObject::connect(qApp, &QApplication::focusChanged, qApp, [] {
        if (g_observer != nullptr) guarded(g_observer);
    });
}

}  // namespace platform
