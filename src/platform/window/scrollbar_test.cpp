#include "platform/window/scrollbar.h"
#include "platform/window/testhooks.h"
#include "support/window/LoggedWindow.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>

namespace platform {
namespace {

using platform::test::MouseAction;
using platform::test::settle;

class ScrollBarTest : public testing::Test {
protected:
    ScrollBarTest() {
        ShowWindow(main.hWnd(), SW_SHOW);
        listen(*bar);
        bar->Max(100);
        bar->SmallChange(2);
        bar->LargeChange(10);
        EXPECT_TRUE(bar->create(main.hWnd(), {0, 0, 16, 200}));
        settle();
        (void)log.take();
    }
    void listen(ScrollBar& heard) {
        heard.Change = [this, &heard] { notes += "change " + std::to_string(heard.Value()) + " "; };
        heard.Scroll = [this, &heard] { notes += "scroll " + std::to_string(heard.Value()) + " "; };
    }
    std::string taken() { return std::exchange(notes, {}); }
    void mouse(MouseAction action, POINT at, WPARAM down = 0) const {
        test::mouse(bar->hWnd(), action, at,
                    action == MouseAction::Move ? 0 : static_cast<WPARAM>(MK_LBUTTON), down);
    }
    void click(POINT at) const {
        mouse(MouseAction::Press, at, MK_LBUTTON);
        mouse(MouseAction::Release, at);
    }

    test::WindowHookScope hooks;
    ::test::MessageLog log;
    ::test::LoggedWindow main{log, "main", ::test::mainWindow({200, 200})};
    std::unique_ptr<ScrollBar> bar = std::make_unique<ScrollBar>(ScrollBar::Direction::Vertical);
    std::string notes;
};

TEST_F(ScrollBarTest, TellsOfEveryNewValueOnceBeforeTheSetterReturns) {
    bar->Value(40);
    EXPECT_EQ(taken(), "change 40 ");
    bar->Value(40);
    bar->Value(500);
    EXPECT_EQ(taken(), "change 100 ");
    bar->Value(-3);
    EXPECT_EQ(taken(), "change 0 ");
    bar->Value(60);
    bar->Max(50);  // the value falls with it
    EXPECT_EQ(taken(), "change 60 change 50 ");
    bar->Max(100000);
    EXPECT_EQ(bar->Max(), 32767);
    EXPECT_EQ(taken(), "");
}

TEST_F(ScrollBarTest, ArrowsAndTheSpaceBesideTheThumbMoveBySmallAndLargeChange) {
    click({8, 195});
    EXPECT_EQ(taken(), "change 2 ");
    click({8, 170});
    EXPECT_EQ(taken(), "change 12 ");
    click({8, 4});
    EXPECT_EQ(taken(), "change 10 ");
}

TEST_F(ScrollBarTest, ADragScrollsAndChangesOnceAtItsEnd) {
    mouse(MouseAction::Press, {8, 22}, MK_LBUTTON);
    mouse(MouseAction::Move, {8, 23}, MK_LBUTTON);
    mouse(MouseAction::Move, {8, 400}, MK_LBUTTON);
    EXPECT_EQ(taken(), "scroll 1 scroll 100 ");
    mouse(MouseAction::Release, {8, 400});
    EXPECT_EQ(taken(), "change 100 ");
    // A press and a release without a move are no drag.
    mouse(MouseAction::Press, {8, 175}, MK_LBUTTON);
    mouse(MouseAction::Release, {8, 175});
    EXPECT_EQ(taken(), "");
}

TEST_F(ScrollBarTest, TheWheelGoesToTheParentInWholeNotches) {
    test::wheel(bar->hWnd(), {5, 5}, -120);
    test::wheel(bar->hWnd(), {5, 5}, -60);
    test::wheel(bar->hWnd(), {5, 5}, -60);
    test::wheel(bar->hWnd(), {5, 5}, 40);
    const std::string heard = log.take();
    EXPECT_EQ(heard.find("main: WM_MOUSEWHEEL -120 0 "), 0U) << heard;
    EXPECT_EQ(std::ranges::count(heard, '\n'), 2) << heard;
    EXPECT_EQ(bar->Value(), 0);
    EXPECT_EQ(taken(), "");
}

TEST_F(ScrollBarTest, ValuesAreKeptWithoutAWindow) {
    bar->Value(30);
    DestroyWindow(bar->hWnd());
    settle();
    EXPECT_EQ(bar->hWnd(), 0U);
    (void)taken();
    bar->Value(80);
    bar->Max(70);
    EXPECT_EQ(taken(), "change 80 change 70 ");
    bar->Visible(false);
    ASSERT_TRUE(bar->create(main.hWnd(), {0, 0, 16, 100}));
    EXPECT_EQ(bar->Value(), 70);
    EXPECT_EQ(taken(), "");
    EXPECT_FALSE(IsWindowVisible(bar->hWnd()));
    EXPECT_FALSE(bar->create(main.hWnd(), {}));  // there is one
    EXPECT_GT(bar->thickness(), 5);

    ScrollBar other(ScrollBar::Direction::Horizontal);
    EXPECT_FALSE(other.create(0, {}));
    EXPECT_GT(other.thickness(), 5);
}

TEST_F(ScrollBarTest, AHandlerMayEndTheBar) {
    bar->Change = [this] {
        notes += "gone ";
        bar.reset();
    };
    bar->Value(3);
    EXPECT_EQ(taken(), "gone ");
    bar = std::make_unique<ScrollBar>(ScrollBar::Direction::Vertical);
    bar->Max(100);
    ASSERT_TRUE(bar->create(main.hWnd(), {0, 0, 16, 200}));
    bar->Change = [this] { bar.reset(); };
    mouse(MouseAction::Press, {8, 195}, MK_LBUTTON);
    settle();
    EXPECT_EQ(bar, nullptr);
}

}  // namespace
}  // namespace platform
