#include "platform/window/input.h"

#include "platform/base/clock.h"
#include "platform/window/surface_internal.h"
#include "platform/window/testhooks_internal.h"
#include "platform/window/window_internal.h"

#include <QBitmap>
#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPixmap>
#include <QWidget>
#include <algorithm>
#include <array>
#include <optional>

namespace platform {
namespace {

constexpr std::uint32_t kKeepModifiers = 10;  // milliseconds

Qt::KeyboardModifiers g_modifiers;
std::optional<std::uint32_t> g_modifiersAt;  // the tick at which they were so
HWND g_mouseWindow = 0;
HCURSOR g_cursor = IDC_ARROW;

Qt::KeyboardModifiers modifiersNow() {
    if (!g_modifiersAt || GetTickCount() - *g_modifiersAt >= kKeepModifiers) {
        g_modifiers = QGuiApplication::queryKeyboardModifiers();
        g_modifiersAt = GetTickCount();
    }
    return g_modifiers;
}

bool isDown(std::int32_t key) {
    if (hooks().keyState) return hooks().keyState(key);
    if (qGuiApp == nullptr) return false;
    switch (key) {
    case VK_SHIFT:
        return modifiersNow().testFlag(Qt::ShiftModifier);
    case VK_CONTROL:
        return modifiersNow().testFlag(Qt::ControlModifier);
    case VK_MENU:
        return modifiersNow().testFlag(Qt::AltModifier);
    case VK_LBUTTON:
        return QGuiApplication::mouseButtons().testFlag(Qt::LeftButton);
    case VK_RBUTTON:
        return QGuiApplication::mouseButtons().testFlag(Qt::RightButton);
    case VK_MBUTTON:
        return QGuiApplication::mouseButtons().testFlag(Qt::MiddleButton);
    default:
        return false;
    }
}

}  // namespace

void noteModifiers(int qtModifiers) {
    g_modifiers = Qt::KeyboardModifiers::fromInt(qtModifiers);
    g_modifiersAt = GetTickCount();
}

void noteMouseWindow(HWND hWnd) { g_mouseWindow = hWnd; }

std::int16_t GetAsyncKeyState(std::int32_t key) {
    return isDown(key) ? std::int16_t{-0x8000} : std::int16_t{0};
}

bool GetCursorPos(POINT& point) {
    if (hooks().cursorPosition) {
        point = *hooks().cursorPosition;
        return true;
    }
    if (qGuiApp == nullptr) return false;
    const QPoint at = QCursor::pos();
    point = {at.x(), at.y()};
    return true;
}

// ---- Key codes

namespace {

struct KeyCode {
    int qtKey;
    std::int32_t code;
};
// Sorted by the library's key number.
constexpr std::array kKeyCodes{
    KeyCode{Qt::Key_Space, VK_SPACE},
    KeyCode{Qt::Key_Apostrophe, VK_OEM_7},
    KeyCode{Qt::Key_Plus, VK_OEM_PLUS},
    KeyCode{Qt::Key_Comma, VK_OEM_COMMA},
    KeyCode{Qt::Key_Minus, VK_OEM_MINUS},
    KeyCode{Qt::Key_Period, VK_OEM_PERIOD},
    KeyCode{Qt::Key_Slash, VK_OEM_2},
    KeyCode{Qt::Key_Colon, VK_OEM_1},
    KeyCode{Qt::Key_Semicolon, VK_OEM_1},
    KeyCode{Qt::Key_Less, VK_OEM_COMMA},
    KeyCode{Qt::Key_Equal, VK_OEM_PLUS},
    KeyCode{Qt::Key_Greater, VK_OEM_PERIOD},
    KeyCode{Qt::Key_Question, VK_OEM_2},
    KeyCode{Qt::Key_BracketLeft, VK_OEM_4},
    KeyCode{Qt::Key_Backslash, VK_OEM_5},
    KeyCode{Qt::Key_BracketRight, VK_OEM_6},
    KeyCode{Qt::Key_Underscore, VK_OEM_MINUS},
    KeyCode{Qt::Key_QuoteLeft, VK_OEM_3},
    KeyCode{Qt::Key_BraceLeft, VK_OEM_4},
    KeyCode{Qt::Key_Bar, VK_OEM_5},
    KeyCode{Qt::Key_BraceRight, VK_OEM_6},
    KeyCode{Qt::Key_AsciiTilde, VK_OEM_3},
    KeyCode{Qt::Key_Escape, VK_ESCAPE},
    KeyCode{Qt::Key_Tab, VK_TAB},
    KeyCode{Qt::Key_Backtab, VK_TAB},
    KeyCode{Qt::Key_Backspace, VK_BACK},
    KeyCode{Qt::Key_Return, VK_RETURN},
    KeyCode{Qt::Key_Enter, VK_RETURN},
    KeyCode{Qt::Key_Insert, VK_INSERT},
    KeyCode{Qt::Key_Delete, VK_DELETE},
    KeyCode{Qt::Key_Pause, VK_PAUSE},
    KeyCode{Qt::Key_Print, VK_SNAPSHOT},
    KeyCode{Qt::Key_Home, VK_HOME},
    KeyCode{Qt::Key_End, VK_END},
    KeyCode{Qt::Key_Left, VK_LEFT},
    KeyCode{Qt::Key_Up, VK_UP},
    KeyCode{Qt::Key_Right, VK_RIGHT},
    KeyCode{Qt::Key_Down, VK_DOWN},
    KeyCode{Qt::Key_PageUp, VK_PRIOR},
    KeyCode{Qt::Key_PageDown, VK_NEXT},
    KeyCode{Qt::Key_Shift, VK_SHIFT},
    KeyCode{Qt::Key_Control, VK_CONTROL},
    KeyCode{Qt::Key_Meta, VK_LWIN},
    KeyCode{Qt::Key_Alt, VK_MENU},
    KeyCode{Qt::Key_CapsLock, VK_CAPITAL},
    KeyCode{Qt::Key_NumLock, VK_NUMLOCK},
    KeyCode{Qt::Key_ScrollLock, VK_SCROLL},
    KeyCode{Qt::Key_Super_L, VK_LWIN},
    KeyCode{Qt::Key_Super_R, VK_RWIN},
    KeyCode{Qt::Key_Menu, VK_APPS},
    KeyCode{Qt::Key_Help, VK_HELP},
    KeyCode{Qt::Key_AltGr, VK_MENU},
};
static_assert(std::ranges::is_sorted(kKeyCodes, {}, &KeyCode::qtKey));

std::int32_t keypadCode(int key) {
    if (key >= Qt::Key_0 && key <= Qt::Key_9) return VK_NUMPAD0 + key - Qt::Key_0;
    switch (key) {
    case Qt::Key_Asterisk:
        return VK_MULTIPLY;
    case Qt::Key_Plus:
        return VK_ADD;
    case Qt::Key_Minus:
        return VK_SUBTRACT;
    case Qt::Key_Comma:
    case Qt::Key_Period:
        return VK_DECIMAL;
    case Qt::Key_Slash:
        return VK_DIVIDE;
    default:
        return 0;
    }
}

}  // namespace

std::int32_t keyCodeOf(const QKeyEvent& event) {
    const int key = event.key();
    if (event.modifiers().testFlag(Qt::KeypadModifier)) {
        if (const std::int32_t code = keypadCode(key); code != 0) return code;
    }
    if (key >= Qt::Key_0 && key <= Qt::Key_9) return key;
    if (key >= Qt::Key_A && key <= Qt::Key_Z) return key;
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return VK_F1 + key - Qt::Key_F1;
    const auto* found = std::ranges::lower_bound(kKeyCodes, key, {}, &KeyCode::qtKey);
    return found != kKeyCodes.end() && found->qtKey == key ? found->code : VK_OTHER;
}

int qtKeyOf(std::int32_t keyCode) {
    if (keyCode >= VK_F1 && keyCode < VK_F1 + 24) return Qt::Key_F1 + keyCode - VK_F1;
    if ((keyCode >= '0' && keyCode <= '9') || (keyCode >= 'A' && keyCode <= 'Z')) return keyCode;
    const auto* found = std::ranges::find(kKeyCodes, keyCode, &KeyCode::code);
    return found == kKeyCodes.end() ? 0 : found->qtKey;
}

// ---- Cursors

namespace {

struct SystemCursor {
    std::uint32_t id;
    Qt::CursorShape shape;
};
constexpr std::array kSystemCursors{
    SystemCursor{IDC_ARROW, Qt::ArrowCursor},
    SystemCursor{IDC_IBEAM, Qt::IBeamCursor},
    SystemCursor{IDC_WAIT, Qt::WaitCursor},
    SystemCursor{IDC_CROSS, Qt::CrossCursor},
    SystemCursor{IDC_UPARROW, Qt::UpArrowCursor},
    SystemCursor{IDC_SIZE, Qt::SizeAllCursor},
    SystemCursor{IDC_ICON, Qt::ArrowCursor},
    SystemCursor{IDC_SIZENWSE, Qt::SizeFDiagCursor},
    SystemCursor{IDC_SIZENESW, Qt::SizeBDiagCursor},
    SystemCursor{IDC_SIZEWE, Qt::SizeHorCursor},
    SystemCursor{IDC_SIZENS, Qt::SizeVerCursor},
    SystemCursor{IDC_SIZEALL, Qt::SizeAllCursor},
    SystemCursor{IDC_NO, Qt::ForbiddenCursor},
    SystemCursor{IDC_HAND, Qt::PointingHandCursor},
    SystemCursor{IDC_APPSTARTING, Qt::BusyCursor},
    SystemCursor{IDC_HELP, Qt::WhatsThisCursor},
};

const SystemCursor* systemCursor(std::uint32_t id) {
    const auto* found = std::ranges::find(kSystemCursors, id, &SystemCursor::id);
    return found == kSystemCursors.end() ? nullptr : found;
}

// The pixels of an icon: colour where the mask has 0, see-through where it has 1.
QImage imageOf(const ICONINFO& info) {
    const BitmapRecord* mask = bitmapOf(info.hbmMask);
    const BitmapRecord* color = bitmapOf(info.hbmColor);
    if (mask == nullptr) return {};
    const int width = mask->width;
    const int height = color == nullptr ? mask->height / 2 : mask->height;
    QImage image(width, height, QImage::Format_ARGB32);
    const HDC masks = CreateCompatibleDC(0), colors = CreateCompatibleDC(0);
    const HGDIOBJ before = SelectObject(masks, info.hbmMask);
    const HGDIOBJ beforeColor = color == nullptr ? 0 : SelectObject(colors, info.hbmColor);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            // Without colours the lower half of the mask is the image.
            const bool through = GetPixel(masks, x, y) != 0;
            const COLORREF pixel =
                color != nullptr ? GetPixel(colors, x, y) : GetPixel(masks, x, y + height);
            image.setPixel(x, y, through ? 0U : pixelOf(pixel));
        }
    }
    SelectObject(masks, before);
    if (beforeColor != 0) SelectObject(colors, beforeColor);
    DeleteDC(masks);
    DeleteDC(colors);
    return image;
}

}  // namespace

QCursor qtCursor(HICON cursor) {
    if (const SystemCursor* system = systemCursor(cursor)) return QCursor(system->shape);
    ICONINFO info;
    if (!GetIconInfo(cursor, info)) return QCursor(Qt::ArrowCursor);
    const QImage image = imageOf(info);
    DeleteObject(info.hbmMask);
    DeleteObject(info.hbmColor);
    if (image.isNull()) return QCursor(Qt::ArrowCursor);
    return QCursor(QPixmap::fromImage(image), static_cast<int>(info.xHotspot),
                   static_cast<int>(info.yHotspot));
}

HCURSOR LoadCursorA(std::uint32_t, std::uint32_t id) {
    return systemCursor(id) == nullptr ? 0 : id;
}

HCURSOR SetCursor(HCURSOR cursor) {
    const HCURSOR wanted = cursor == 0 ? IDC_ARROW : cursor;
    const HCURSOR before = std::exchange(g_cursor, wanted);
    WindowRecord* const record = windowOf(g_mouseWindow);
    // Most moves ask for the cursor that the window has already.
    if (record != nullptr && record->shownCursor != wanted) {
        record->shownCursor = wanted;
        clientWidgetOf(g_mouseWindow)->setCursor(qtCursor(wanted));
    }
    return before;
}

}  // namespace platform
