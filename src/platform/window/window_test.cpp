#include "platform/window/window.h"

#include "platform/base/failure.h"
#include "platform/base/paths.h"
#include "platform/window/screen_internal.h"
#include "platform/window/surface_internal.h"
#include "platform/window/testhooks.h"
#include "platform/window/window_internal.h"
#include "support/window/Failures.h"
#include "support/window/LoggedWindow.h"

#include <QApplication>
#include <QScreen>
#include <QWidget>
#include <gtest/gtest.h>

using namespace platform;
using namespace platform::test;
using ::test::childOf;
using ::test::clientSize;
using ::test::Failures;
using ::test::LoggedWindow;
using ::test::mainWindow;
using ::test::MessageLog;

namespace {

class Window : public testing::Test {
public:
    ~Window() override { settle(); }
    void show(const LoggedWindow& window) {
        ShowWindow(window.hWnd(), SW_SHOW);
        settle();
        (void)log.take();
    }
    // Runs a dialog; `inside` is done in its loop.
    static void runWith(LoggedWindow& dialog, std::function<void()> inside) {
        dialog.at(WM_APP, std::move(inside));
        PostMessageW(dialog.hWnd(), WM_APP, 0, 0);
        EXPECT_TRUE(runModal(dialog.hWnd()));
    }
    WindowHookScope hooks;
    MessageLog log;
    LoggedWindow main{log, "main", mainWindow()};
};
class ChildWindow : public Window {
public:
    LoggedWindow child{log, "child", childOf(main.hWnd())};
};

std::uint32_t pixelIn(HWND hWnd, int x, int y) {
    const HDC hDC = GetDC(hWnd);
    const COLORREF color = GetPixel(hDC, x, y);
    ReleaseDC(hWnd, hDC);
    return static_cast<std::uint32_t>(color);
}

// What the desktop would show of a window, at a point of it.
std::uint32_t shownIn(HWND hWnd, int x, int y) {
    const QRgb pixel = widgetOf(hWnd)->grab().toImage().pixel(x, y);
    return static_cast<std::uint32_t>(rgb(qRed(pixel), qGreen(pixel), qBlue(pixel)));
}

void fillWindow(HWND hWnd, COLORREF color) {
    const SIZE all = clientSize(hWnd);
    const HDC hDC = GetDC(hWnd);
    const HBRUSH brush = CreateSolidBrush(color);
    FillRect(hDC, {0, 0, all.cx, all.cy}, brush);
    DeleteObject(brush);
    ReleaseDC(hWnd, hDC);
}

}  // namespace

// ---- Life

TEST_F(ChildWindow, DestroysItselfThenItsChildrenAndWhatItOwns) {
    LoggedWindow inner(log, "inner", childOf(child.hWnd(), {0, 0, 5, 5}));
    LoggedWindow dialog(log, "dialog", {.kind = WindowKind::Dialog, .parent = main.hWnd()});
    EXPECT_EQ(GetParent(inner.hWnd()), child.hWnd());
    EXPECT_EQ(GetParent(dialog.hWnd()), main.hWnd());
    EXPECT_TRUE(IsChild(main.hWnd(), inner.hWnd()));
    EXPECT_FALSE(IsChild(main.hWnd(), dialog.hWnd()));
    EXPECT_FALSE(IsChild(main.hWnd(), main.hWnd()));

    child.at(WM_DESTROY, [&] {
        EXPECT_TRUE(IsWindow(inner.hWnd()));
        EXPECT_TRUE(DestroyWindow(child.hWnd())) << "again, while it runs: no second message";
    });
    EXPECT_TRUE(DestroyWindow(main.hWnd()));
    EXPECT_EQ(log.take(), "main: WM_DESTROY\nchild: WM_DESTROY\ninner: WM_DESTROY\n"
                          "dialog: WM_DESTROY\n");
    for (const LoggedWindow* window : {&main, &child, &inner, &dialog}) {
        EXPECT_FALSE(IsWindow(window->hWnd())) << window->name();
    }
    EXPECT_FALSE(DestroyWindow(main.hWnd()));
}

TEST_F(ChildWindow, GoesWithItsWidget) {
    delete widgetOf(main.hWnd());
    EXPECT_EQ(log.take(), "main: WM_DESTROY\nchild: WM_DESTROY\n");
    EXPECT_FALSE(IsWindow(main.hWnd()) || IsWindow(child.hWnd()));
}

TEST_F(Window, AnswersNothingForHandlesThatAreNone) {
    HWND stale = 0;
    {
        LoggedWindow gone(log, "gone", mainWindow());
        stale = gone.hWnd();
    }
    for (const HWND hWnd : {HWND{0}, stale, HWND{0xFFFFFFFF}, HWND{65537}}) {
        RECT rect{1, 2, 3, 4};
        POINT point{5, 6};
        std::uint32_t process = 7;
        EXPECT_FALSE(IsWindow(hWnd) || DestroyWindow(hWnd) || ShowWindow(hWnd, SW_SHOW));
        EXPECT_FALSE(IsWindowVisible(hWnd) || IsWindowEnabled(hWnd) || IsIconic(hWnd));
        EXPECT_FALSE(EnableWindow(hWnd, true) || SetWindowTextW(hWnd, u"x") || runModal(hWnd));
        EXPECT_FALSE(InvalidateRect(hWnd) || UpdateWindow(hWnd) || PostMessageW(hWnd, 1, 0, 0));
        EXPECT_FALSE(SetWindowPos(hWnd, 0, 1, 2, 3, 4, 0) || SetWindowRgn(hWnd, 0, true));
        EXPECT_FALSE(GetClientRect(hWnd, rect) || GetWindowRect(hWnd, rect));
        EXPECT_FALSE(ClientToScreen(hWnd, point) || ScreenToClient(hWnd, point));
        EXPECT_EQ(GetWindowThreadProcessId(hWnd, process), 0U);
        EXPECT_EQ(process, 0U);
        EXPECT_EQ(SendMessageW(hWnd, WM_CLOSE, 0, 0) + DefWindowProcW(hWnd, WM_CLOSE, 0, 0), 0);
        EXPECT_EQ(SetWindowLongW(hWnd, GWL_WNDPROC, 1) + GetWindowLongW(hWnd, GWL_STYLE), 0);
        EXPECT_EQ(GetWindowTextW(hWnd), u"");
        EXPECT_EQ(GetParent(hWnd), 0U);
        EXPECT_EQ(rect, (RECT{1, 2, 3, 4}));
        EXPECT_EQ(createWindow(childOf(hWnd)), 0U);
    }
}

// ---- Procedures

namespace {

WNDPROC g_replaced = nullptr;
LRESULT doubling(HWND hWnd, std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
    if (uMsg == WM_APP) return 2 * CallWindowProcW(g_replaced, hWnd, uMsg, wParam, lParam);
    return CallWindowProcW(g_replaced, hWnd, uMsg, wParam, lParam);
}

}  // namespace

TEST_F(Window, GivesTheProcedureThatANewOneReplaces) {
    main.on = [](std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        if (uMsg == WM_APP) return wParam + lParam;
        return std::nullopt;
    };
    const HWND hWnd = main.hWnd();
    EXPECT_EQ(SendMessageW(hWnd, WM_APP, 1, 2), 3);
    const std::intptr_t previous =
        SetWindowLongW(hWnd, GWL_WNDPROC, reinterpret_cast<std::intptr_t>(&doubling));
    g_replaced = reinterpret_cast<WNDPROC>(previous);
    EXPECT_EQ(SendMessageW(hWnd, WM_APP, 1, 2), 6);
    EXPECT_EQ(SetWindowLongW(hWnd, GWL_WNDPROC, 0), 0) << "no procedure is none";
    EXPECT_EQ(SetWindowLongW(hWnd, GWL_WNDPROC, previous),
              reinterpret_cast<std::intptr_t>(&doubling));
    EXPECT_EQ(SendMessageW(hWnd, WM_APP, 1, 2), 3);
    EXPECT_EQ(CallWindowProcW(nullptr, hWnd, WM_APP, 1, 2), 0);

    const std::intptr_t wide = std::intptr_t{1} << 40;
    EXPECT_EQ(SendMessageW(hWnd, WM_APP, wide, 1), wide + 1) << "results are as wide as a pointer";
}

TEST_F(Window, SendsPostedMessagesInOrderAndForgetsThoseOfADeadWindow) {
    EXPECT_TRUE(PostMessageW(main.hWnd(), WM_APP, 1, 0));
    EXPECT_TRUE(PostMessageW(main.hWnd(), WM_APP, 2, 0));
    EXPECT_EQ(log.take(), "");
    settle();
    EXPECT_EQ(log.take(), "main: 32768 1 0\nmain: 32768 2 0\n");
    EXPECT_TRUE(PostMessageW(main.hWnd(), WM_APP, 3, 0));
    DestroyWindow(main.hWnd());
    settle();
    EXPECT_EQ(log.take(), "main: WM_DESTROY\n");
}

TEST_F(Window, KeepsATitleOfAnyUnits) {
    LoggedWindow titled(log, "titled", {.kind = WindowKind::Main, .title = u"Quillmere"});
    EXPECT_EQ(GetWindowTextW(titled.hWnd()), u"Quillmere");
    const Text odd = u"a\xD800\x0416";
    EXPECT_TRUE(SetWindowTextW(titled.hWnd(), odd));
    EXPECT_EQ(GetWindowTextW(titled.hWnd()), odd);
    EXPECT_EQ(GetWindowTextLengthW(titled.hWnd()), 3);
}

// ---- Place

TEST_F(ChildWindow, TellsChangesOfPlaceAtOnceAndOnlyOnce) {
    const HWND hWnd = child.hWnd();
    const struct {
        const char* what;
        int x, y, cx, cy;
        std::uint32_t flags;
        const char* expected;
    } kSteps[] = {
        {"the same place", 10, 10, 50, 30, 0, ""},
        {"moved", 12, -3, 0, 0, SWP_NOSIZE, "child: WM_MOVE 0 12,-3\n"},
        {"sized", 0, 0, 60, 30, SWP_NOMOVE, "child: WM_SIZE 0 60,30\n"},
        {"both", 1, 2, 3, 4, 0, "child: WM_MOVE 0 1,2\nchild: WM_SIZE 0 3,4\n"},
        {"neither", 9, 9, 9, 9, SWP_NOMOVE | SWP_NOSIZE, ""},
        {"turned inside out", 1, 2, -5, -7, 0, "child: WM_SIZE 0 0,0\n"},
        {"huge", 1, 2, 30000, 30000, 0, "child: WM_SIZE 0 30000,30000\n"},
        {"small again", 1, 2, 20, 10, 0, "child: WM_SIZE 0 20,10\n"},
    };
    for (const auto& step : kSteps) {
        EXPECT_TRUE(SetWindowPos(hWnd, HWND_TOP, step.x, step.y, step.cx, step.cy,
                                 step.flags | SWP_NOZORDER));
        EXPECT_EQ(log.take(), step.expected) << step.what;
    }
    show(main);
    settle();
    EXPECT_EQ(log.take(), "") << "showing tells nothing new";
    EXPECT_EQ(clientSize(hWnd), (SIZE{20, 10}));

    SetWindowPos(main.hWnd(), 0, 40, 50, 300, 200, SWP_NOZORDER);
    settle();
    EXPECT_EQ(log.take(), "main: WM_MOVE 0 40,50\nmain: WM_SIZE 0 300,200\nmain: WM_PAINT\n");
    POINT at{0, 0};
    EXPECT_TRUE(ClientToScreen(hWnd, at));
    EXPECT_EQ(at, (POINT{41, 52}));
    EXPECT_TRUE(ScreenToClient(hWnd, at));
    EXPECT_EQ(at, (POINT{0, 0}));
    RECT rect;
    EXPECT_TRUE(GetWindowRect(hWnd, rect));
    EXPECT_EQ(rect, (RECT{41, 52, 61, 62}));
}

TEST_F(ChildWindow, ReportsTheSizeThatAMoveHasLedTo) {
    for (const bool visible : {false, true}) {
        if (visible) show(main);
        SetWindowPos(child.hWnd(), 0, 10, 10, 50, 30, SWP_NOZORDER);
        (void)log.take();
        child.at(WM_MOVE,
                 [&] { SetWindowPos(child.hWnd(), 0, 0, 0, 7, 8, SWP_NOMOVE | SWP_NOZORDER); });
        SetWindowPos(child.hWnd(), 0, 20, 20, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
        EXPECT_EQ(log.take(), "child: WM_MOVE 0 20,20\nchild: WM_SIZE 0 7,8\n") << visible;
        EXPECT_EQ(clientSize(child.hWnd()), (SIZE{7, 8}));
        child.on = nullptr;
    }
}

TEST_F(ChildWindow, ShowsHidesAndMinimises) {
    EXPECT_FALSE(IsWindowVisible(main.hWnd()));
    EXPECT_FALSE(IsWindowVisible(child.hWnd())) << "inside a hidden window";
    EXPECT_FALSE(ShowWindow(main.hWnd(), SW_SHOW));
    EXPECT_TRUE(IsWindowVisible(child.hWnd()));
    EXPECT_TRUE(ShowWindow(child.hWnd(), SW_HIDE));
    EXPECT_FALSE(IsWindowVisible(child.hWnd()));
    SetWindowPos(child.hWnd(), 0, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_SHOWWINDOW);
    EXPECT_TRUE(IsWindowVisible(child.hWnd()));
    (void)log.take();
    ShowWindow(main.hWnd(), SW_SHOWMINIMIZED);
    EXPECT_TRUE(IsIconic(main.hWnd()));
    EXPECT_NE(log.take().find("main: WM_SIZE 1 "), std::string::npos);
    ShowWindow(main.hWnd(), SW_SHOWNORMAL);
    EXPECT_FALSE(IsIconic(main.hWnd()));
    EXPECT_NE(log.take().find("main: WM_SIZE 0 200,100"), std::string::npos);
}

TEST_F(ChildWindow, TakesNoInputWhileDisabled) {
    show(main);
    EXPECT_FALSE(EnableWindow(child.hWnd(), false));
    EXPECT_TRUE(EnableWindow(child.hWnd(), false)) << "it was disabled already";
    EXPECT_EQ(log.take(), "child: WM_ENABLE 0\n");
    EXPECT_FALSE(IsWindowEnabled(child.hWnd()));
    mouse(child.hWnd(), MouseAction::Press, {2, 3}, MK_LBUTTON, MK_LBUTTON);
    pressKey(child.hWnd(), 'A', u"a");
    EXPECT_EQ(log.take(), "main: WM_LBUTTONDOWN 1 12,13\nmain: WM_KEYDOWN 65\nmain: WM_CHAR 97\n");
    EXPECT_TRUE(EnableWindow(child.hWnd(), true));
    EXPECT_EQ(log.take(), "child: WM_ENABLE 1\n");
    EnableWindow(main.hWnd(), false);
    EXPECT_TRUE(IsWindowEnabled(child.hWnd())) << "its own state";
    (void)log.take();
    mouse(child.hWnd(), MouseAction::Press, {2, 3}, MK_LBUTTON, MK_LBUTTON);
    EXPECT_EQ(log.take(), "") << "what is around it is disabled";
}

// ---- Keys

TEST_F(Window, MakesKeyMessages) {
    const struct {
        std::int32_t key;
        const char16_t* typed;
        WPARAM modifiers;
        const char* expected;
    } kKeys[] = {
        {'A', u"a", 0, "WM_KEYDOWN 65|WM_CHAR 97|WM_KEYUP 65|"},
        {'A', u"A", MK_SHIFT, "WM_KEYDOWN 65|WM_CHAR 65|WM_KEYUP 65|"},
        {'S', u"\x13", MK_CONTROL, "WM_KEYDOWN 83|WM_CHAR 19|WM_KEYUP 83|"},
        {'1', u"1", MK_CONTROL, "WM_KEYDOWN 49|WM_KEYUP 49|"},
        {'F', u"f", kAlt, "WM_SYSKEYDOWN 70|WM_SYSCHAR 102|WM_SYSKEYUP 70|"},
        {'Q', u"@", kAlt | MK_CONTROL, "WM_KEYDOWN 81|WM_CHAR 64|WM_KEYUP 81|"},
        {VK_MENU, u"", kAlt, "WM_SYSKEYDOWN 18|WM_SYSKEYUP 18|"},
        {VK_F1, u"", 0, "WM_KEYDOWN 112|WM_KEYUP 112|"},
        {VK_F10, u"", 0, "WM_SYSKEYDOWN 121|WM_SYSKEYUP 121|"},
        {VK_RETURN, u"\r", 0, "WM_KEYDOWN 13|WM_CHAR 13|WM_KEYUP 13|"},
        {VK_RETURN, u"\r", MK_CONTROL, "WM_KEYDOWN 13|WM_CHAR 10|WM_KEYUP 13|"},
        {VK_BACK, u"\b", 0, "WM_KEYDOWN 8|WM_CHAR 8|WM_KEYUP 8|"},
        {VK_TAB, u"\t", 0, "WM_KEYDOWN 9|WM_CHAR 9|WM_KEYUP 9|"},
        {VK_ESCAPE, u"\x1B", 0, "WM_KEYDOWN 27|WM_CHAR 27|WM_KEYUP 27|"},
        {VK_DELETE, u"\x7F", 0, "WM_KEYDOWN 46|WM_KEYUP 46|"},
        {VK_DOWN, u"", 0, "WM_KEYDOWN 40|WM_KEYUP 40|"},
        {VK_NEXT, u"", 0, "WM_KEYDOWN 34|WM_KEYUP 34|"},
        {VK_OTHER, u"\x0436", 0, "WM_KEYDOWN 232|WM_CHAR 1078|WM_KEYUP 232|"},
        {VK_OTHER, u"\xD83D\xDE00", 0, "WM_KEYDOWN 232|WM_CHAR 55357|WM_CHAR 56832|WM_KEYUP 232|"},
    };
    for (const auto& k : kKeys) {
        pressKey(main.hWnd(), k.key, k.typed, k.modifiers);
        releaseKey(main.hWnd(), k.key, k.modifiers);
        std::string got = log.take();
        std::ranges::replace(got, '\n', '|');
        for (std::size_t at = 0; (at = got.find("main: ")) != std::string::npos;) got.erase(at, 6);
        EXPECT_EQ(got, k.expected) << k.key;
    }
}

TEST_F(ChildWindow, TypesTheCharacterAlsoWhenItsKeyWasKept) {
    child.keep(WM_KEYDOWN);
    pressKey(child.hWnd(), 'A', u"a");
    EXPECT_EQ(log.take(), "child: WM_KEYDOWN 65\nchild: WM_CHAR 97\n") << "and the parent has none";
    child.at(WM_KEYDOWN, [&] { DestroyWindow(child.hWnd()); });
    pressKey(child.hWnd(), 'A', u"a");
    EXPECT_EQ(log.take(), "child: WM_KEYDOWN 65\nchild: WM_DESTROY\n");
}

TEST_F(ChildWindow, AsksKeyFiltersFromTheInsideOut) {
    bool innerUses = false, outerUses = false;
    setKeyFilter(main.hWnd(), [&](HWND hWnd, std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
        EXPECT_EQ(hWnd, child.hWnd());
        log.add("outer " + ::test::messageLine(uMsg, wParam, lParam));
        return outerUses;
    });
    setKeyFilter(child.hWnd(), [&](HWND, std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
        log.add("inner " + ::test::messageLine(uMsg, wParam, lParam));
        return innerUses;
    });
    pressKey(child.hWnd(), VK_TAB, u"\t");
    EXPECT_EQ(log.take(), "inner WM_KEYDOWN 9\nouter WM_KEYDOWN 9\nchild: WM_KEYDOWN 9\n"
                          "inner WM_CHAR 9\nouter WM_CHAR 9\nchild: WM_CHAR 9\n");
    outerUses = true;
    pressKey(child.hWnd(), VK_TAB, u"\t");
    EXPECT_EQ(log.take(), "inner WM_KEYDOWN 9\nouter WM_KEYDOWN 9\n") << "and no character";
    innerUses = true;
    pressKey(child.hWnd(), VK_TAB, u"\t");
    EXPECT_EQ(log.take(), "inner WM_KEYDOWN 9\n");
    setKeyFilter(child.hWnd(), nullptr);
    setKeyFilter(main.hWnd(), nullptr);
    pressKey(child.hWnd(), VK_TAB);
    EXPECT_EQ(log.take(), "child: WM_KEYDOWN 9\nchild: WM_CHAR 9\n");
}

// ---- Mouse

TEST_F(ChildWindow, MakesMouseMessagesForOneWindowOnly) {
    const HWND hWnd = child.hWnd();
    mouse(hWnd, MouseAction::Move, {3, 4}, 0);
    mouse(hWnd, MouseAction::Press, {3, 4}, MK_LBUTTON, MK_LBUTTON | MK_SHIFT);
    mouse(hWnd, MouseAction::Move, {-3, -4}, 0, MK_LBUTTON);
    mouse(hWnd, MouseAction::Release, {-3, -4}, MK_LBUTTON);
    mouse(hWnd, MouseAction::DoubleClick, {1, 1}, MK_LBUTTON, MK_LBUTTON);
    mouse(hWnd, MouseAction::Press, {5, 6}, MK_RBUTTON, MK_RBUTTON | MK_CONTROL);
    mouse(hWnd, MouseAction::Press, {5, 6}, MK_MBUTTON, MK_RBUTTON | MK_MBUTTON);
    EXPECT_EQ(log.take(), "child: WM_MOUSEMOVE 0 3,4\nchild: WM_LBUTTONDOWN 5 3,4\n"
                          "child: WM_MOUSEMOVE 1 -3,-4\nchild: WM_LBUTTONUP 0 -3,-4\n"
                          "child: WM_LBUTTONDBLCLK 1 1,1\nchild: WM_RBUTTONDOWN 10 5,6\n"
                          "child: WM_MBUTTONDOWN 18 5,6\n");
}

TEST_F(ChildWindow, AsksForTheMenuWhenTheRightButtonComesUp) {
    mouse(child.hWnd(), MouseAction::Release, {5, 6}, MK_RBUTTON);
    EXPECT_EQ(log.take(), "child: WM_RBUTTONUP 0 5,6\nchild: WM_CONTEXTMENU child\n"
                          "main: WM_CONTEXTMENU child\n");
    child.keep(WM_RBUTTONUP);
    mouse(child.hWnd(), MouseAction::Release, {5, 6}, MK_RBUTTON);
    EXPECT_EQ(log.take(), "child: WM_RBUTTONUP 0 5,6\n") << "kept: no menu";
}

TEST_F(ChildWindow, PassesTheWheelOnInWholeNotchesUntilSomebodyKeepsIt) {
    SetWindowPos(main.hWnd(), 0, 100, 200, 0, 0, SWP_NOSIZE);
    (void)log.take();
    wheel(child.hWnd(), {1, 2}, 120);
    EXPECT_EQ(log.take(),
              "child: WM_MOUSEWHEEL 120 0 111,212\nmain: WM_MOUSEWHEEL 120 0 111,212\n");
    child.keep(WM_MOUSEWHEEL);
    wheel(child.hWnd(), {1, 2}, -240, MK_SHIFT);
    EXPECT_EQ(log.take(), "child: WM_MOUSEWHEEL -240 4 111,212\n");
    for (int i = 0; i < 5; ++i) wheel(child.hWnd(), {1, 2}, -50);
    EXPECT_EQ(log.take(), "child: WM_MOUSEWHEEL -120 0 111,212\n"
                          "child: WM_MOUSEWHEEL -120 0 111,212\n");
}

TEST_F(ChildWindow, AsksTheParentsBeforeAPressMakesItActive) {
    std::string asked;
    const auto note = [&](const char* who) {
        return [&asked, who](std::uint32_t uMsg, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (uMsg == WM_MOUSEACTIVATE || uMsg == WM_LBUTTONDOWN) asked += who;
            return std::nullopt;
        };
    };
    child.on = note("c");
    main.on = note("m");
    mouse(child.hWnd(), MouseAction::Press, {1, 1}, MK_LBUTTON, MK_LBUTTON);
    EXPECT_EQ(asked, "cmc");
}

// ---- Focus

TEST_F(Window, TellsWhereTheFocusComesFromAndGoesTo) {
    LoggedWindow a(log, "a", childOf(main.hWnd()));
    LoggedWindow b(log, "b", childOf(main.hWnd(), {70, 10, 90, 20}));
    show(main);
    SetFocus(a.hWnd());
    EXPECT_EQ(GetFocus(), a.hWnd());
    (void)log.take();
    EXPECT_EQ(SetFocus(b.hWnd()), a.hWnd());
    EXPECT_EQ(log.take(), "a: WM_KILLFOCUS b\nb: WM_SETFOCUS a\n");
    EXPECT_EQ(SetFocus(0), b.hWnd());
    EXPECT_EQ(GetFocus(), 0U);
    EXPECT_EQ(log.take(), "b: WM_KILLFOCUS 0\n");
    SetFocus(a.hWnd());
    EXPECT_EQ(log.take(), "a: WM_SETFOCUS b\n");
    mouse(b.hWnd(), MouseAction::Press, {1, 1}, MK_LBUTTON, MK_LBUTTON);
    EXPECT_EQ(GetFocus(), a.hWnd()) << "a press moves no focus by itself";
    mouse(b.hWnd(), MouseAction::Release, {1, 1}, MK_LBUTTON);
    pressKey(GetFocus(), VK_TAB, u"\t");
    EXPECT_EQ(GetFocus(), a.hWnd()) << "nor does Tab";
}

// ---- Painting

TEST_F(Window, PaintsOnceForManyRequestsAndKeepsItsPicture) {
    COLORREF color = rgb(255, 0, 0);
    main.at(WM_PAINT, [&] { fillWindow(main.hWnd(), color); });
    EXPECT_EQ(pixelIn(main.hWnd(), 1, 1), 0xFFFFFFU) << "the background";
    ShowWindow(main.hWnd(), SW_SHOW);
    settle();
    EXPECT_NE(log.take().find("main: WM_PAINT\n"), std::string::npos);
    EXPECT_EQ(shownIn(main.hWnd(), 1, 1), 0x0000FFU);

    color = rgb(0, 255, 0);
    for (int i = 0; i < 3; ++i) InvalidateRect(main.hWnd());
    EXPECT_EQ(log.take(), "");
    settle();
    EXPECT_EQ(log.take(), "main: WM_PAINT\n");
    EXPECT_EQ(pixelIn(main.hWnd(), 199, 99), 0x00FF00U);

    color = rgb(0, 0, 255);
    InvalidateRect(main.hWnd());
    UpdateWindow(main.hWnd());
    EXPECT_EQ(log.take(), "main: WM_PAINT\n") << "at once";
    UpdateWindow(main.hWnd());
    EXPECT_EQ(log.take(), "") << "nothing is due";

    fillWindow(main.hWnd(), rgb(1, 2, 3));
    settle();
    EXPECT_EQ(log.take(), "") << "what was drawn outside a paint shows without one";
    EXPECT_EQ(shownIn(main.hWnd(), 5, 5), static_cast<std::uint32_t>(rgb(1, 2, 3)));
    widgetOf(main.hWnd())->repaint();
    EXPECT_EQ(log.take(), "") << "and when the desktop wants it again";
}

TEST_F(Window, ShowsAllThatAPaintOfAPartHasDrawn) {
    COLORREF color = 0;
    main.at(WM_PAINT, [&] { fillWindow(main.hWnd(), color); });
    show(main);
    color = rgb(0, 255, 0);
    const RECT part{0, 0, 10, 10};
    InvalidateRect(main.hWnd(), &part);
    settle();
    EXPECT_EQ(log.take(), "main: WM_PAINT\n");
    const QPixmap screen =
        widgetOf(main.hWnd())->screen()->grabWindow(widgetOf(main.hWnd())->winId());
    EXPECT_EQ(screen.toImage().pixel(150, 80), 0xFF00FF00U);
}

TEST_F(Window, ErasesToTheBackgroundAndGrowsWithIt) {
    WindowOptions options = mainWindow({20, 10});
    options.background = rgb(10, 20, 30);
    const HWND hWnd = createWindow(options);
    const auto background = static_cast<std::uint32_t>(options.background);
    EXPECT_EQ(pixelIn(hWnd, 19, 9), background);
    constexpr std::uint32_t kDrawn = 0x070605;
    fillWindow(hWnd, kDrawn);
    const RECT part{5, 5, 100, 7};
    InvalidateRect(hWnd, &part, true);
    EXPECT_EQ(pixelIn(hWnd, 5, 5), background);
    EXPECT_EQ(pixelIn(hWnd, 4, 5), kDrawn);
    EXPECT_EQ(pixelIn(hWnd, 5, 7), kDrawn);
    setWindowBackground(hWnd, rgb(9, 9, 9));
    SetWindowPos(hWnd, 0, 0, 0, 30, 8, SWP_NOMOVE);
    EXPECT_EQ(pixelIn(hWnd, 4, 5), kDrawn) << "what was there stays";
    EXPECT_EQ(pixelIn(hWnd, 25, 5), static_cast<std::uint32_t>(rgb(9, 9, 9)));
    EXPECT_EQ(pixelIn(hWnd, 5, 8), 0xFFFFFFFFU) << "cut off";
    const HDC hDC = GetDC(hWnd);
    SetWindowPos(hWnd, 0, 0, 0, 40, 40, SWP_NOMOVE);
    SetPixel(hDC, 39, 39, 5);
    EXPECT_EQ(pixelIn(hWnd, 39, 39), 5U) << "a context lives through a change of size";
    ReleaseDC(hWnd, hDC);
    DestroyWindow(hWnd);
}

TEST_F(Window, LeavesOutWhatLiesOutsideItsRegion) {
    LoggedWindow child(log, "child", childOf(main.hWnd(), {0, 0, 20, 20}));
    fillWindow(main.hWnd(), rgb(255, 0, 0));
    fillWindow(child.hWnd(), rgb(0, 0, 255));
    const HRGN region = CreateRoundRectRgn(0, 0, 21, 21, 8, 8);
    EXPECT_TRUE(SetWindowRgn(child.hWnd(), region, true));
    DeleteObject(region);
    ShowWindow(main.hWnd(), SW_SHOW);
    settle();
    EXPECT_EQ(shownIn(main.hWnd(), 10, 10), 0xFF0000U);
    EXPECT_EQ(shownIn(main.hWnd(), 0, 0), 0x0000FFU) << "the corner shows the parent";
    EXPECT_TRUE(SetWindowRgn(child.hWnd(), 0, true));
    settle();
    EXPECT_EQ(shownIn(main.hWnd(), 0, 0), 0xFF0000U);
}

TEST_F(Window, ARegionCutsTheClientAreaAndSparesTheMenuBar) {
    const HMENU bar = CreateMenu();
    EXPECT_TRUE(InsertMenuItemW(bar, 0, true, {.fMask = MIIM_STRING, .dwTypeData = u"File"}));
    const HRGN region = CreateRoundRectRgn(10, 10, 61, 31, 0, 0);
    EXPECT_TRUE(SetWindowRgn(main.hWnd(), region, true));
    DeleteObject(region);
    // In client coordinates, before and after the bar moves the client area.
    for (const HMENU shown : {HMENU{0}, bar, HMENU{0}}) {
        EXPECT_TRUE(SetMenu(main.hWnd(), shown));
        const QWidget& widget = *widgetOf(main.hWnd());
        const int top = widget.height() - clientSize(main.hWnd()).cy;
        EXPECT_EQ(top > 0, shown != 0);
        EXPECT_EQ(widget.mask().boundingRect().bottom(), top + 29);
        EXPECT_TRUE(widget.mask().contains(QPoint(10, top + 10)));
        EXPECT_TRUE(widget.mask().contains(QPoint(59, top + 29)));
        for (const QPoint outside : {QPoint(10, 9), QPoint(60, 29), QPoint(9, 29)}) {
            EXPECT_FALSE(widget.mask().contains(outside + QPoint(0, top)));
        }
        EXPECT_EQ(widget.mask().contains(QPoint(1, top - 1)), shown != 0) << "the bar shows";
    }
    EXPECT_TRUE(SetWindowRgn(main.hWnd(), 0, true));
    EXPECT_TRUE(widgetOf(main.hWnd())->mask().isEmpty());
    DestroyMenu(bar);
}

TEST_F(Window, PaintsNothingWithoutAPictureAndDoesNotCrash) {
    LoggedWindow child(log, "child", childOf(main.hWnd(), {0, 0, 40000, 40000}));
    show(main);
    InvalidateRect(child.hWnd());
    UpdateWindow(child.hWnd());
    fillWindow(child.hWnd(), 0);
    SetWindowPos(child.hWnd(), 0, 0, 0, 0, 0, 0);
    InvalidateRect(child.hWnd(), nullptr, true);
    settle();
    EXPECT_EQ(pixelIn(child.hWnd(), 0, 0), 0xFFFFFFFFU);
}

// ---- Re-entrancy and failures

TEST_F(Window, MayBeDestroyedInEachOfItsMessages) {
    using Act = void (*)(HWND);
    const Act press = [](HWND h) { mouse(h, MouseAction::Press, {1, 1}, MK_LBUTTON, 1); };
    const Act release = [](HWND h) { mouse(h, MouseAction::Release, {1, 1}, MK_RBUTTON); };
    const Act move = [](HWND h) { mouse(h, MouseAction::Move, {1, 1}, 0); };
    const Act turn = [](HWND h) { wheel(h, {1, 1}, 120); };
    const Act type = [](HWND h) { pressKey(h, 'A', u"ab"); };
    const struct {
        std::uint32_t uMsg;
        Act act;
    } kMessages[] = {
        {WM_KEYDOWN, type},
        {WM_CHAR, type},
        {WM_LBUTTONDOWN, press},
        {WM_MOUSEACTIVATE, press},
        {WM_RBUTTONUP, release},
        {WM_CONTEXTMENU, release},
        {WM_MOUSEMOVE, move},
        {WM_SETCURSOR, move},
        {WM_MOUSEWHEEL, turn},
        {WM_SIZE, [](HWND h) { SetWindowPos(h, 0, 0, 0, 7, 7, SWP_NOMOVE); }},
        {WM_MOVE, [](HWND h) { SetWindowPos(h, 0, 7, 7, 9, 9, 0); }},
        {WM_PAINT, [](HWND h) { InvalidateRect(h), UpdateWindow(h); }},
        {WM_SETFOCUS, [](HWND h) { SetFocus(0), SetFocus(h); }},
        {WM_CLOSE, [](HWND h) { widgetOf(h)->close(); }},
        {WM_ENABLE, [](HWND h) { EnableWindow(h, false); }},
    };
    // Straight, and by a message that the message sends.
    for (const int way : {0, 1, 2, 3}) {
        const bool inside = (way & 1) == 0, nested = (way & 2) != 0;
        for (const auto& message : kMessages) {
            show(main);
            LoggedWindow target(log, "target", inside ? childOf(main.hWnd()) : mainWindow());
            show(target);
            target.on = [&](std::uint32_t uMsg, WPARAM, LPARAM) -> std::optional<LRESULT> {
                if (uMsg == message.uMsg && nested) SendMessageW(target.hWnd(), WM_APP, 0, 0);
                if (uMsg == (nested ? WM_APP : message.uMsg)) DestroyWindow(target.hWnd());
                return std::nullopt;
            };
            message.act(target.hWnd());
            EXPECT_FALSE(IsWindow(target.hWnd()))
                << (inside ? "child " : "top ") << (nested ? "nested " : "")
                << ::test::messageLine(message.uMsg, 0, 0);
            settle();
        }
    }
}

TEST_F(ChildWindow, MayLoseWhatIsAroundItInItsOwnMessage) {
    LoggedWindow inner(log, "inner", childOf(child.hWnd(), {0, 0, 9, 9}));
    show(main);
    inner.at(WM_LBUTTONDOWN, [&] { DestroyWindow(main.hWnd()); });
    mouse(inner.hWnd(), MouseAction::Press, {1, 1}, MK_LBUTTON, MK_LBUTTON);
    settle();
    EXPECT_EQ(log.take(), "inner: WM_LBUTTONDOWN 1 1,1\nmain: WM_DESTROY\nchild: WM_DESTROY\n"
                          "inner: WM_DESTROY\n");
}

TEST_F(ChildWindow, MayEndWhatIsAroundItAtItsOwnEnd) {
    LoggedWindow inner(log, "inner", childOf(child.hWnd(), {0, 0, 9, 9}));
    child.at(WM_DESTROY, [&] { DestroyWindow(main.hWnd()); });
    EXPECT_TRUE(DestroyWindow(child.hWnd()));
    EXPECT_EQ(log.take(), "child: WM_DESTROY\nmain: WM_DESTROY\ninner: WM_DESTROY\n");
    EXPECT_FALSE(IsWindow(main.hWnd()) || IsWindow(child.hWnd()) || IsWindow(inner.hWnd()));
}

TEST_F(ChildWindow, HandsFailuresToTheHandlerWhereTheLoopBegins) {
    Failures failures;
    show(main);
    main.on = [](std::uint32_t uMsg, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (uMsg != WM_SETCURSOR) throw Failure(1, u"main", u"no");
        return std::nullopt;
    };
    EXPECT_THROW(SendMessageW(main.hWnd(), WM_APP, 0, 0), Failure) << "straight to the sender";
    EXPECT_EQ(failures.take(), "");
    pressKey(main.hWnd(), VK_F1);
    mouse(main.hWnd(), MouseAction::Press, {1, 1}, MK_LBUTTON, MK_LBUTTON);
    PostMessageW(main.hWnd(), WM_APP, 0, 0);
    settle();
    EXPECT_EQ(failures.take(), "no\nno\nno\n");
    InvalidateRect(main.hWnd());
    UpdateWindow(main.hWnd());
    EXPECT_EQ(failures.take(), "no\n");
    UpdateWindow(main.hWnd());
    EXPECT_EQ(failures.take(), "") << "a paint that failed is not asked for again";
    EXPECT_THROW(DestroyWindow(main.hWnd()), Failure);
    EXPECT_FALSE(IsWindow(main.hWnd()) || IsWindow(child.hWnd()))
        << "the work is done all the same";
}

TEST_F(Window, RunsModallyUntilItIsHiddenOrDestroyed) {
    LoggedWindow dialog(log, "dialog", mainWindow());
    show(main);
    int steps = 0;
    runWith(dialog, [&] {
        ++steps;
        EXPECT_TRUE(IsWindowVisible(dialog.hWnd()) && widgetOf(dialog.hWnd())->isModal());
        ShowWindow(dialog.hWnd(), SW_HIDE);
    });
    EXPECT_EQ(steps, 1);
    EXPECT_FALSE(widgetOf(dialog.hWnd())->isModal());
    // To put it on top hides it for a moment, which is no end.
    runWith(dialog, [&] {
        if (++steps == 2) {
            SetWindowPos(dialog.hWnd(), HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
            PostMessageW(dialog.hWnd(), WM_APP, 0, 0);
        } else {
            EXPECT_TRUE(IsWindowVisible(dialog.hWnd()));
            ShowWindow(dialog.hWnd(), SW_HIDE);
        }
    });
    EXPECT_EQ(steps, 3);
    runWith(dialog, [&] { DestroyWindow(dialog.hWnd()); });
    EXPECT_FALSE(IsWindow(dialog.hWnd()));
}

TEST_F(ChildWindow, SurvivesALoopInsideTheMessageOfAWindowThatGoes) {
    LoggedWindow dialog(log, "dialog", mainWindow());
    show(main);
    child.at(WM_LBUTTONDOWN, [&] {
        runWith(dialog, [&] {
            DestroyWindow(main.hWnd());
            settle();  // the outer message's windows must outlive this
            ShowWindow(dialog.hWnd(), SW_HIDE);
        });
        EXPECT_FALSE(IsWindow(main.hWnd()));
    });
    mouse(child.hWnd(), MouseAction::Press, {1, 1}, MK_LBUTTON, MK_LBUTTON);
    settle();
    EXPECT_FALSE(IsWindow(child.hWnd()));
}

TEST_F(ChildWindow, HearsThatTheDesktopHasChangedItsColours) {
    const std::unique_ptr<QObject> watch = watchDesktop();
    show(main);
    const auto bothHear = [&](const std::string& message) {
        const std::string outer = "main: " + message, inner = "child: " + message;
        const std::string lines = log.take();
        return lines == outer + inner || lines == inner + outer;
    };
    const QPalette before = QApplication::palette();
    QPalette dark = before;
    dark.setColor(QPalette::Base, QColor(1, 2, 3));
    QApplication::setPalette(dark);
    EXPECT_EQ(GetSysColor(5), rgb(1, 2, 3));
    EXPECT_TRUE(bothHear("WM_SYSCOLORCHANGE\n"));
    settle();
    EXPECT_TRUE(bothHear("WM_PAINT\n"));
    QApplication::setPalette(before);
    settle();
    setSysColors({});  // as tests start
}

TEST_F(Window, ClosesOnlyWhenItsProcedureLetsIt) {
    show(main);
    main.keep(WM_CLOSE);
    EXPECT_FALSE(widgetOf(main.hWnd())->close());
    EXPECT_TRUE(IsWindowVisible(main.hWnd()));
    main.on = nullptr;
    widgetOf(main.hWnd())->close();
    EXPECT_FALSE(IsWindow(main.hWnd()));
    EXPECT_EQ(log.take(), "main: WM_CLOSE\nmain: WM_CLOSE\nmain: WM_DESTROY\n");
}

TEST_F(Window, TakesDroppedFilesByteForByte) {
    std::vector<Text> got;
    main.on = [&](std::uint32_t uMsg, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        if (uMsg == WM_DROPFILES) got = *reinterpret_cast<const std::vector<Text>*>(lParam);
        return std::nullopt;
    };
    const std::vector<Text> files{u"\\tmp\\caf\u00E9 x.lng", pathFromSystem("/tmp/caf\xE9.lng")};
    const std::string_view addresses =
        "file:///tmp/caf%C3%A9%20x.lng\r\nfile://localhost/tmp/caf%E9.lng\r\n"
        "https://example.invalid/x\r\n";
    DragContent ours, others;
    ours.files = files;
    others.others = {{"text/uri-list", Bytes(addresses.begin(), addresses.end())}};
    for (const DragContent& content : {ours, others}) {
        const auto drag = [&](bool drop) {
            return dragInto(main.hWnd(), {1, 1}, content, DROPEFFECT_COPY, drop);
        };
        DragAcceptFiles(main.hWnd(), false);
        EXPECT_EQ(drag(true), DROPEFFECT_NONE) << "not asked for";
        DragAcceptFiles(main.hWnd(), true);
        EXPECT_EQ(drag(false), DROPEFFECT_COPY);
        EXPECT_TRUE(got.empty()) << "not yet";
        EXPECT_EQ(drag(true), DROPEFFECT_COPY);
        EXPECT_EQ(std::exchange(got, {}), files);
    }
}
