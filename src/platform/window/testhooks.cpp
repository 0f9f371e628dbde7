#include "platform/window/testhooks.h"

#include "platform/window/surface_internal.h"
#include "platform/window/testhooks_internal.h"
#include "platform/window/toolkit_internal.h"
#include "platform/window/window_internal.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QImage>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPixmap>
#include <QPointer>
#include <QWheelEvent>
#include <QWidget>
#include <algorithm>

namespace platform {

TestHooks& hooks() {
    static TestHooks all;
    return all;
}

namespace {
test::DialogScript* g_script = nullptr;
}

test::DialogScript* dialogScript() { return g_script; }

std::string quotedText(TextView text) {
    std::string result = "\"";
    const auto isControl = [](char16_t unit) { return unit < 32; };
    while (!text.empty()) {
        const auto plain =
            static_cast<std::size_t>(std::ranges::find_if(text, isControl) - text.begin());
        result += toUtf8(text.substr(0, plain));
        text.remove_prefix(plain);
        if (text.empty()) break;
        char escape[8];
        std::snprintf(escape, sizeof escape, "\\%04X", text.front());
        result += escape;
        text.remove_prefix(1);
    }
    return result + '"';
}

std::string hexText(std::uint32_t value) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%X", value);
    return text;
}

namespace test {

namespace {
void resetHooks() {
    hooks() = {};
    setScreens({});
}
}  // namespace

WindowHookScope::WindowHookScope() { resetHooks(); }
WindowHookScope::~WindowHookScope() { resetHooks(); }

void settle() {
    for (int i = 0; i < 3; ++i) {  // what one round has brought about runs in the next
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

void setWindowProcess(HWND hWnd, std::uint32_t processId) {
    if (WindowRecord* record = windowOf(hWnd)) record->processId = processId;
}

HWND windowAt(HWND hWnd, POINT at) {
    const QWidget* widget = widgetOf(hWnd);
    if (widget == nullptr) return 0;
    const QWidget* inside = widget->childAt(at.x, at.y + windowOf(hWnd)->clientTop);
    return inside == nullptr ? hWnd : windowOfWidget(inside);
}

void lockProcedure(HWND hWnd, bool locked) {
    if (WindowRecord* record = windowOf(hWnd)) record->procedureLocked = locked;
}

void setKeysDown(std::optional<std::vector<std::int32_t>> keys, int afterCalls) {
    if (!keys) {
        hooks().keyState = nullptr;
        return;
    }
    hooks().keyState = [down = std::move(*keys), left = afterCalls](std::int32_t key) mutable {
        if (left > 0) {
            --left;
            return false;
        }
        return std::ranges::find(down, key) != down.end();
    };
}

void setCursorPos(std::optional<POINT> position) { hooks().cursorPosition = position; }

// ---- Input

namespace {

Qt::KeyboardModifiers modifiersOf(WPARAM flags) {
    Qt::KeyboardModifiers modifiers;
    modifiers.setFlag(Qt::ShiftModifier, (flags & MK_SHIFT) != 0);
    modifiers.setFlag(Qt::ControlModifier, (flags & MK_CONTROL) != 0);
    modifiers.setFlag(Qt::AltModifier, (flags & kAlt) != 0);
    return modifiers;
}

Qt::MouseButtons buttonsOf(WPARAM flags) {
    Qt::MouseButtons buttons;
    buttons.setFlag(Qt::LeftButton, (flags & MK_LBUTTON) != 0);
    buttons.setFlag(Qt::RightButton, (flags & MK_RBUTTON) != 0);
    buttons.setFlag(Qt::MiddleButton, (flags & MK_MBUTTON) != 0);
    return buttons;
}

}  // namespace

void sendKey(QWidget& widget, bool down, std::int32_t key, TextView typed, WPARAM modifiers) {
    QKeyEvent event(down ? QEvent::KeyPress : QEvent::KeyRelease, qtKeyOf(key),
                    modifiersOf(modifiers), toQt(typed));
    QCoreApplication::sendEvent(&widget, &event);
}

void sendMouse(QWidget& widget, MouseAction action, QPoint position, WPARAM button, WPARAM down) {
    static constexpr QEvent::Type kTypes[] = {QEvent::MouseButtonPress, QEvent::MouseButtonRelease,
                                              QEvent::MouseButtonDblClick, QEvent::MouseMove};
    const Qt::MouseButtons pressed = buttonsOf(button);
    QMouseEvent event(kTypes[static_cast<std::size_t>(action)], QPointF(position),
                      QPointF(widget.mapToGlobal(position)),
                      pressed == Qt::NoButton ? Qt::NoButton : Qt::MouseButton(pressed.toInt()),
                      buttonsOf(down), modifiersOf(down));
    QCoreApplication::sendEvent(&widget, &event);
}

void pressKey(HWND hWnd, std::int32_t key, TextView typed, WPARAM modifiers) {
    if (QWidget* widget = widgetOf(hWnd)) sendKey(*widget, true, key, typed, modifiers);
}

void releaseKey(HWND hWnd, std::int32_t key, WPARAM modifiers) {
    if (QWidget* widget = widgetOf(hWnd)) sendKey(*widget, false, key, {}, modifiers);
}

void holdKey(HWND hWnd, std::int32_t key, TextView typed) {
    constexpr quint64 kMoment = 1000;
    QWidget* const widget = widgetOf(hWnd);
    if (widget == nullptr) return;
    for (const QEvent::Type type : {QEvent::KeyRelease, QEvent::KeyPress}) {
        QKeyEvent event(type, qtKeyOf(key), Qt::NoModifier, toQt(typed));
        event.setTimestamp(kMoment);
        QCoreApplication::sendEvent(widget, &event);
    }
}

void typeText(HWND hWnd, TextView text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i];
        std::int32_t key = unit < 128 ? unit : static_cast<std::int32_t>(VK_OTHER);
        if (unit >= u'a' && unit <= u'z') key = unit - u'a' + 'A';
        pressKey(hWnd, key, text.substr(i, 1));
        releaseKey(hWnd, key);
    }
}

void mouse(HWND hWnd, MouseAction action, POINT at, WPARAM button, WPARAM down) {
    QWidget* const widget = clientWidgetOf(hWnd);
    if (widget == nullptr) return;
    sendMouse(*widget, action, QPoint(at.x, at.y + windowOf(hWnd)->clientTop), button, down);
}

void wheel(HWND hWnd, POINT at, int delta, WPARAM modifiers) {
    QWidget* const widget = clientWidgetOf(hWnd);
    if (widget == nullptr) return;
    const QPoint position(at.x, at.y + windowOf(hWnd)->clientTop);
    QWheelEvent event(QPointF(position), QPointF(widget->mapToGlobal(position)), QPoint(),
                      QPoint(0, delta), buttonsOf(modifiers), modifiersOf(modifiers),
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(widget, &event);
}

void compose(HWND hWnd, TextView composed, TextView result, int replaceFrom, int replaceLength) {
    QWidget* const widget = widgetOf(hWnd);
    if (widget == nullptr) return;
    QInputMethodEvent event(toQt(composed), {});
    event.setCommitString(toQt(result), replaceFrom, replaceLength);
    QCoreApplication::sendEvent(widget, &event);
}

void setClipboardText(TextView text) { QGuiApplication::clipboard()->setText(toQt(text)); }
Text clipboardText() { return toText(QGuiApplication::clipboard()->text()); }
void failEditWindows(bool fails) { hooks().failEdits = fails; }

std::string chooseFromMenu(const std::string& caption) {
    const QPointer<QMenu> menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (menu.isNull()) return {};
    std::string captions;
    QAction* chosen = nullptr;
    for (QAction* item : menu->actions()) {
        const std::string plain = item->text().remove(u'&').toStdString();
        if (!item->isEnabled() || item->isSeparator()) continue;
        captions += plain + ' ';
        if (plain == caption) chosen = item;
    }
    if (chosen != nullptr) chosen->trigger();
    if (!menu.isNull()) menu->close();
    return captions;
}

ShownPicture shownPicture(HWND hWnd) {
    QWidget* const widget = widgetOf(hWnd);
    if (widget == nullptr) return {};
    const QImage image = widget->grab().toImage().convertToFormat(QImage::Format_RGB32);
    ShownPicture picture{image.width(), image.height(), {}};
    for (int y = 0; y < image.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) picture.pixels.push_back(row[x] & 0xFFFFFF);
    }
    return picture;
}

// ---- Screens

void setScreens(std::vector<Screen> screens) {
    const int dpi = screens.empty() ? Screen().dpi : screens.front().dpi;
    hooks().screens = std::move(screens);
    setScreenDpi(dpi, dpi);
}

void setMetric(int index, std::optional<int> value) {
    if (value) {
        hooks().metrics[index] = *value;
    } else {
        hooks().metrics.erase(index);
    }
}

// ---- Dialogs

DialogScript::DialogScript() : m_outer(g_script) { g_script = this; }
DialogScript::~DialogScript() { g_script = m_outer; }

void DialogScript::answerMessageBox(int button) {
    m_answers.push_back({.kind = "messagebox", .button = button});
}

void DialogScript::answerFile(Text path, std::uint32_t filterIndex) {
    m_answers.push_back({.kind = "file", .path = std::move(path), .filterIndex = filterIndex});
}

void DialogScript::answerFolder(Text path) {
    m_answers.push_back({.kind = "folder", .path = std::move(path)});
}

void DialogScript::answerColor(std::optional<COLORREF> color) {
    m_answers.push_back({.kind = "color", .color = color});
}

void DialogScript::answerFont(const std::optional<LOGFONTA>& font, int points, COLORREF color) {
    m_answers.push_back({.kind = "font", .color = color, .font = font, .points = points});
}

DialogScript::Answer DialogScript::next(const std::string& kind, const std::string& question) {
    const std::string wanted = kind == "open" || kind == "save" ? "file" : kind;
    const bool answered = !m_answers.empty() && m_answers.front().kind == wanted;
    m_log += (answered ? "" : "UNANSWERED ") + kind + ' ' + question + '\n';
    if (!answered) return {};
    Answer answer = std::move(m_answers.front());
    m_answers.pop_front();
    return answer;
}

// ---- Shell and settings

void setShell(ShellHook hook) { hooks().shell = std::move(hook); }
void setAddressOpener(std::function<bool(const std::string&)> opener) {
    hooks().addressOpener = std::move(opener);
}
void setSettingsFolder(std::optional<std::string> folder) {
    hooks().settingsFolder = std::move(folder);
}
void setRegistry(std::optional<std::vector<RegistryValue>> values) {
    hooks().registry = std::move(values);
}

}  // namespace test

}  // namespace platform
