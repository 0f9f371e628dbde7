#include "platform/window/input.h"

#include "platform/base/testhooks.h"
#include "platform/window/surface.h"
#include "platform/window/testhooks.h"
#include "platform/window/window.h"
#include "platform/window/window_internal.h"
#include "support/window/Canvas.h"
#include "support/window/LoggedWindow.h"

#include <QCursor>
#include <QKeyEvent>
#include <QPixmap>
#include <QWidget>
#include <gtest/gtest.h>

using namespace platform;
using platform::test::mouse;
using platform::test::MouseAction;
using ::test::Canvas;
using ::test::Selected;

namespace {

// A picture cursor of 16 x 16: red, see-through but for the pixel (3, 4).
HICON pictureCursor() {
    const Canvas mask(16, 16, Canvas::kMonochrome), color(16, 16);
    SetPixel(mask.hdc(), 3, 4, 0);
    const Selected red(color.hdc(), CreateSolidBrush(rgb(255, 0, 0)));
    FillRect(color.hdc(), {0, 0, 16, 16}, red);
    const HICON icon = CreateIconIndirect({.fIcon = false,
                                           .xHotspot = 3,
                                           .yHotspot = 4,
                                           .hbmMask = mask.bitmap(),
                                           .hbmColor = color.bitmap()});
    return icon;
}

}  // namespace

TEST(Input, TakesTheModifiersOfAnEventForThoseOfTheMoment) {
    const platform::test::WindowHookScope hooks;
    const platform::test::HookScope baseHooks;
    platform::test::setTickCount(1000);  // the moment lasts
    ::test::MessageLog log;
    ::test::LoggedWindow window(log, "main", ::test::mainWindow());
    std::string down;
    window.on = [&](std::uint32_t uMsg, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (uMsg == WM_LBUTTONDOWN || uMsg == WM_KEYDOWN || uMsg == WM_SYSKEYDOWN) {
            down += GetAsyncKeyState(VK_SHIFT) < 0 ? 'S' : '-';
            down += GetAsyncKeyState(VK_CONTROL) < 0 ? 'C' : '-';
            down += GetAsyncKeyState(VK_MENU) < 0 ? 'A' : '-';
            down += ' ';
        }
        return std::nullopt;
    };
    mouse(window.hWnd(), MouseAction::Press, {1, 1}, MK_LBUTTON, MK_LBUTTON | MK_SHIFT);
    mouse(window.hWnd(), MouseAction::Press, {1, 1}, MK_LBUTTON, MK_LBUTTON);
    platform::test::pressKey(window.hWnd(), VK_DOWN, {}, MK_CONTROL);
    platform::test::pressKey(window.hWnd(), 'A', u"a", platform::test::kAlt);
    EXPECT_EQ(down, "S-- --- -C- --A ");
}

TEST(Input, GivesEveryKeyItsCode) {
    const struct {
        int key;
        Qt::KeyboardModifiers modifiers;
        int expected;
    } kKeys[] = {
        {Qt::Key_Enter, Qt::KeypadModifier, VK_RETURN},
        {Qt::Key_Backtab, Qt::ShiftModifier, VK_TAB},
        {Qt::Key_5, Qt::KeypadModifier, 101},
        {Qt::Key_5, Qt::NoModifier, '5'},
        {Qt::Key_Plus, Qt::KeypadModifier, VK_ADD},
        {Qt::Key_Plus, Qt::NoModifier, VK_OEM_PLUS},
        {Qt::Key_Home, Qt::KeypadModifier, VK_HOME},
        {Qt::Key_Z, Qt::NoModifier, 'Z'},
        {Qt::Key_F3, Qt::NoModifier, 114},
        {Qt::Key_Question, Qt::ShiftModifier, VK_OEM_2},
        {Qt::Key_Menu, Qt::NoModifier, VK_APPS},
        {0x0416, Qt::NoModifier, VK_OTHER},
        {0, Qt::NoModifier, VK_OTHER},
    };
    for (const auto& k : kKeys) {
        const QKeyEvent event(QEvent::KeyPress, k.key, k.modifiers);
        EXPECT_EQ(keyCodeOf(event), k.expected) << k.key;
    }
}

TEST(Input, LoadsTheCursorsOfTheDesktop) {
    for (std::uint32_t id = 32500; id < 32700; ++id) {
        const HCURSOR cursor = LoadCursorA(0, id);
        const bool known = (id >= 32512 && id <= 32516) || (id >= 32640 && id <= 32646) ||
                           (id >= 32648 && id <= 32651);
        EXPECT_EQ(cursor, known ? id : 0U);
    }
    EXPECT_EQ(qtCursor(IDC_SIZEWE).shape(), Qt::SizeHorCursor);
    EXPECT_EQ(qtCursor(0).shape(), Qt::ArrowCursor);
    EXPECT_EQ(qtCursor(4711).shape(), Qt::ArrowCursor);
}

TEST(Input, ShowsTheCursorOfTheWindowUnlessAnAnswerToWmSetcursorDiffers) {
    const platform::test::WindowHookScope hooks;
    ::test::MessageLog log;
    ::test::LoggedWindow window(log, "main", ::test::mainWindow());
    const HWND hWnd = window.hWnd();
    const auto shown = [&] { return widgetOf(hWnd)->cursor().shape(); };
    const auto move = [&] { mouse(hWnd, MouseAction::Move, {1, 1}, 0); };
    move();
    EXPECT_EQ(shown(), Qt::ArrowCursor);
    setWindowCursor(hWnd, LoadCursorA(0, IDC_IBEAM));
    EXPECT_EQ(shown(), Qt::IBeamCursor);
    window.on = [&](std::uint32_t uMsg, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (uMsg != WM_SETCURSOR) return std::nullopt;
        SetCursor(LoadCursorA(0, IDC_WAIT));
        return 1;
    };
    move();
    EXPECT_EQ(shown(), Qt::WaitCursor);
    EXPECT_EQ(SetCursor(IDC_NO), IDC_WAIT) << "the one before";
    EXPECT_EQ(shown(), Qt::ForbiddenCursor);
    window.on = nullptr;
    move();
    EXPECT_EQ(shown(), Qt::IBeamCursor) << "its own again";

    const HICON picture = pictureCursor();
    setWindowCursor(hWnd, picture);
    const QCursor cursor = widgetOf(hWnd)->cursor();
    EXPECT_EQ(cursor.hotSpot(), QPoint(3, 4));
    EXPECT_EQ(cursor.pixmap().toImage().pixel(3, 4), 0xFFFF0000U);
    EXPECT_EQ(qAlpha(cursor.pixmap().toImage().pixel(0, 0)), 0);
    setWindowCursor(hWnd, 0);
    EXPECT_TRUE(DestroyIcon(picture));
}
