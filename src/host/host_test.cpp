// Notifications of host windows and forms, driven by input as the desktop sends it.
#include "host/Form.h"
#include "host/tipService.h"
#include "platform/base/failure.h"
#include "platform/window/testhooks.h"
#include "support/window/Failures.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>

namespace {

using platform::test::MouseAction;
using platform::test::settle;

std::string g_log;
std::string taken() { return std::exchange(g_log, {}); }

// Writes down its notifications; does something in one of them.
class Probe : public HostWindow {
public:
    explicit Probe(std::string name) : m_name(std::move(name)) {}
    std::function<void(const std::string&)> on;

protected:
    void note(const std::string& what) {
        g_log += m_name + ' ' + what + '\n';
        const auto handler = on;
        if (handler) handler(what);
    }
    static std::string number(double value) { return std::to_string(static_cast<int>(value)); }
    void onPaint() override { note("paint"); }
    void onResize() override { note("resize"); }
    void onEnterFocus() override { note("enter"); }
    void onExitFocus() override { note("exit"); }
    void onMouseDown(std::int16_t button, std::int16_t shift, float x, float y) override {
        note("down " + number(button) + ' ' + number(shift) + ' ' + number(x) + ',' + number(y));
    }
    void onMouseUp(std::int16_t button, std::int16_t, float, float) override {
        note("up " + number(button));
    }
    void onMouseMove(std::int16_t button, std::int16_t, float, float) override {
        note("move " + number(button));
    }
    void onClick() override { note("click"); }
    void onDblClick() override { note("dblclick"); }
    void onKeyDown(std::int16_t& code, std::int16_t& shift) override {
        note("keydown " + number(code) + ' ' + number(shift));
    }
    void onKeyPress(std::int16_t& code) override { note("char " + number(code)); }
    void onAccessKey(std::int16_t code) override { note("access " + number(code)); }
    void onAmbientChanged() override { note("ambient"); }
    void onDestroy() override { note("destroy"); }

private:
    std::string m_name;
};

class Window : public Form {
public:
    Window() : Form(platform::WindowKind::Main) { ClientSize(200, 100); }
    bool refuses = false;

protected:
    void onQueryUnload(bool& bCancel, UnloadReason reason) override {
        g_log += "query " + std::to_string(reason) + '\n';
        bCancel = refuses;
    }
    void onUnload(bool&) override { g_log += "unload\n"; }
};

class HostTest : public testing::Test {
protected:
    void SetUp() override {
        form.Show();
        settle();
    }
    void TearDown() override { taken(); }
    void place(Probe& probe, int left) {
        ASSERT_TRUE(probe.create(form.hWnd(), {left, 0, left + 20, 20}));
        settle();
        taken();
    }
    static void click(const HostWindow& at, platform::WPARAM button = platform::MK_LBUTTON) {
        platform::test::mouse(at.hWnd(), MouseAction::Press, {3, 4}, button, button);
        platform::test::mouse(at.hWnd(), MouseAction::Release, {3, 4}, button);
    }
    platform::test::WindowHookScope hooks;
    Window form;
    Probe a{"a"}, b{"b"}, c{"c"};
};

TEST_F(HostTest, APressAReleaseAndASecondPressComeInOrder) {
    place(a, 0);
    click(a);
    platform::test::mouse(a.hWnd(), MouseAction::DoubleClick, {3, 4}, platform::MK_LBUTTON,
                          platform::MK_LBUTTON);
    platform::test::mouse(a.hWnd(), MouseAction::Release, {3, 4}, platform::MK_LBUTTON);
    EXPECT_EQ(taken(), "a enter\na down 1 0 3,4\na up 1\na click\na dblclick\na up 1\n");

    platform::test::mouse(a.hWnd(), MouseAction::Press, {3, 4}, platform::MK_RBUTTON,
                          platform::MK_RBUTTON | platform::MK_SHIFT);
    platform::test::mouse(a.hWnd(), MouseAction::Move, {30, 4}, 0, platform::MK_RBUTTON);
    platform::test::mouse(a.hWnd(), MouseAction::Release, {30, 4}, platform::MK_RBUTTON);
    EXPECT_EQ(taken(), "a down 2 1 3,4\na move 2\na up 2\n") << "released outside: no click";
}

TEST_F(HostTest, TheFocusGoesThroughTheControlsAndIntoWindowsInside) {
    place(a, 0);
    place(b, 30);
    ASSERT_TRUE(c.create(b.hWnd(), {0, 0, 5, 5}));
    taken();
    const auto tab = [&](platform::WPARAM modifiers = 0) {
        platform::test::pressKey(platform::GetFocus(), platform::VK_TAB, {}, modifiers);
        return taken();
    };
    a.SetFocus();
    EXPECT_EQ(taken(), "a enter\n");
    c.SetFocus();
    EXPECT_EQ(taken(), "a exit\nb enter\nc enter\n");
    b.SetFocus();
    EXPECT_EQ(taken(), "c exit\n");
    EXPECT_EQ(tab(), "c enter\n");
    EXPECT_EQ(tab(), "c exit\nb exit\na enter\n");
    EXPECT_EQ(tab(platform::MK_SHIFT), "a exit\nb enter\nc enter\n");
    b.TabIndex(0);
    c.Enabled(false);
    settle();
    taken();
    a.SetFocus();
    EXPECT_EQ(taken(), "a enter\n");
    EXPECT_EQ(tab(), "a exit\nb enter\n");
    b.Enabled(false);
    a.SetFocus();
    taken();
    EXPECT_EQ(tab(), "a keydown 9 0\na char 9\n") << "nowhere to go: the key is the control's";
}

TEST_F(HostTest, TheFocusIsLeftWhenItsWindowGoes) {
    Window other;
    ASSERT_TRUE(other.Load());
    ASSERT_TRUE(a.create(other.hWnd(), {0, 0, 20, 20}));
    other.Show();
    settle();
    ASSERT_TRUE(a.HasFocus()) << "the only control";
    taken();
    (void)other.Unload();
    settle();
    EXPECT_EQ(taken(), "query 1\nunload\na destroy\na exit\n");
}

TEST_F(HostTest, EnterEscapeAndAltReachButtonsAndAccessKeys) {
    place(a, 0);
    place(b, 30);
    place(c, 60);
    a.SetFocus();
    b.Default(true);
    c.Cancel(true);
    c.AccessKeys(u"X");
    taken();
    const auto press = [&](std::int32_t key, TextView typed, platform::WPARAM modifiers = 0) {
        platform::test::pressKey(platform::GetFocus(), key, typed, modifiers);
        return taken();
    };
    EXPECT_EQ(press(platform::VK_RETURN, u"\r"), "b access 13\n");
    EXPECT_EQ(press(platform::VK_ESCAPE, u"\x1b"), "c access 27\n");
    EXPECT_EQ(press('X', u"x", platform::test::kAlt), "a keydown 88 4\na exit\nc enter\nc access "
                                                      "120\n");
    a.SetFocus();
    a.DefaultCancel(true);
    taken();
    EXPECT_EQ(press(platform::VK_RETURN, u"\r"), "a keydown 13 0\na char 13\n");
    a.Default(true);
    EXPECT_EQ(taken(), "b ambient\na ambient\n");
    EXPECT_FALSE(b.Default());
    c.Enabled(false);
    EXPECT_EQ(press('X', u"x", platform::test::kAlt), "a keydown 88 4\n");

    // In a disabled window nothing is called; Enter stays with the button that cannot be pressed.
    Probe around("around"), inside("inside");
    place(around, 90);
    ASSERT_TRUE(inside.create(around.hWnd(), {0, 0, 9, 9}));
    inside.Default(true);
    inside.AccessKeys(u"Y");
    around.Enabled(false);
    a.DefaultCancel(false);
    taken();
    EXPECT_EQ(press('Y', u"y", platform::test::kAlt), "a keydown 89 4\n");
    EXPECT_EQ(press(platform::VK_RETURN, u"\r"), "");
    EXPECT_EQ(press(platform::VK_RETURN, u"\n", platform::MK_CONTROL),
              "a keydown 13 2\na char 10\n")
        << "with Ctrl it is no key of buttons";
}

TEST_F(HostTest, HandlersMayEndTheControlMoveTheFocusAndRaise) {
    auto heap = std::make_unique<Probe>("h");
    ASSERT_TRUE(heap->create(form.hWnd(), {0, 0, 20, 20}));
    place(b, 30);
    heap->on = [&](const std::string& what) {
        if (what == "up 1") heap.reset();
    };
    click(*heap);
    EXPECT_EQ(taken(), "h enter\nh down 1 0 3,4\nh up 1\n");
    EXPECT_EQ(heap, nullptr);

    place(a, 0);
    a.on = [&](const std::string& what) {
        if (what == "enter") b.SetFocus();
    };
    a.SetFocus();
    EXPECT_EQ(taken(), "a enter\na exit\nb enter\n");

    test::Failures failures;
    a.on = [&](const std::string& what) {
        if (what == "exit") throw Failure(kOwnError, u"test", u"refused");
    };
    b.on = nullptr;
    a.SetFocus();
    taken();
    b.SetFocus();
    EXPECT_EQ(failures.take(), "refused\n");
    EXPECT_EQ(taken(), "a exit\nb enter\n") << "the others hear of the move all the same";
    a.on = [](const std::string&) { throw Failure(kOwnError, u"test", u"refused"); };
    EXPECT_THROW(a.destroy(), Failure);
    EXPECT_EQ(a.hWnd() + a.hDC(), 0U) << "a failure at the end leaves nothing behind";
    a.on = nullptr;
}

TEST_F(HostTest, MembersWorkBeforeTheWindowAndAfterIt) {
    a.Enabled(false);
    a.Visible(false);
    a.ForeColor(0x0000FF);
    a.MousePointer(2);
    a.Font({u"Tahoma", 12});
    a.Refresh();
    a.Invalidate();
    a.SetFocus();
    a.OLEDropMode(1);
    a.move(1, 2, 30, -4);
    EXPECT_EQ(a.ScaleWidth(), 30);
    EXPECT_EQ(a.ScaleHeight(), 0);
    EXPECT_EQ(taken(), "a resize\n");
    EXPECT_EQ(a.hDC(), 0U);

    ASSERT_TRUE(a.create(form.hWnd(), {5, 6, 45, 26}));
    EXPECT_FALSE(a.create(form.hWnd(), {0, 0, 1, 1})) << "one window at a time";
    EXPECT_FALSE(platform::IsWindowEnabled(a.hWnd()));
    EXPECT_FALSE(platform::IsWindowVisible(a.hWnd()));
    EXPECT_EQ(platform::GetTextColor(a.hDC()), 0x0000FF);
    EXPECT_NE(a.hFont(), 0U);
    a.move(7, 8);
    EXPECT_EQ(a.Left(), 7);
    EXPECT_EQ(a.ScaleWidth(), 40);

    form.destroy();
    EXPECT_EQ(a.hWnd(), 0U) << "it goes with its parent";
    EXPECT_EQ(a.hDC(), 0U);
    a.Enabled(true);
    a.Refresh();
    a.Font({});
    EXPECT_EQ(a.ScaleWidth(), 40);
    form.Show();
    EXPECT_TRUE(a.create(form.hWnd(), {0, 0, 3, 3})) << "and comes again";
}

TEST_F(HostTest, PaintsOnceForManyRequestsAndAtOnceOnRefresh) {
    place(a, 0);
    for (int i = 0; i < 1000; ++i) a.Invalidate();
    EXPECT_EQ(taken(), "");
    settle();
    EXPECT_EQ(taken(), "a paint\n");
    a.Refresh();
    EXPECT_EQ(taken(), "a paint\n");
    a.AutoRedraw(true);
    a.Invalidate();
    a.Refresh();
    settle();
    EXPECT_EQ(taken(), "");
}

TEST_F(HostTest, AFormGivesTheFocusToItsFirstControl) {
    Window other;
    ASSERT_TRUE(other.Load());
    ASSERT_TRUE(a.create(other.hWnd(), {0, 0, 20, 20}));
    ASSERT_TRUE(b.create(other.hWnd(), {30, 0, 50, 20}));
    a.TabStop(false);
    other.Show();
    settle();
    EXPECT_TRUE(b.HasFocus());
    EXPECT_EQ(a.form(), &other);
    EXPECT_EQ(other.Controls().size(), 2U);
}

TEST_F(HostTest, AModalFormReturnsWhenItIsHiddenOrGone) {
    Window hidden, unloaded;
    ASSERT_TRUE(hidden.Load() && unloaded.Load());
    ASSERT_TRUE(a.create(hidden.hWnd(), {0, 0, 20, 20}));
    a.on = [&](const std::string& what) {
        if (what == "enter") hidden.Hide();
    };
    hidden.Show(true);
    EXPECT_TRUE(hidden.Loaded());
    EXPECT_FALSE(platform::IsWindowVisible(hidden.hWnd()));
    platform::PostMessageW(unloaded.hWnd(), platform::WM_CLOSE, 0, 0);
    unloaded.Show(true, form.hWnd());
    EXPECT_FALSE(unloaded.Loaded());
}

TEST_F(HostTest, AFormAsksBeforeItGoes) {
    place(a, 0);
    form.refuses = true;
    platform::SendMessageW(form.hWnd(), platform::WM_CLOSE, 0, 0);
    EXPECT_TRUE(form.Loaded());
    EXPECT_EQ(taken(), "query 0\n");
    form.refuses = false;
    EXPECT_TRUE(form.Unload());
    EXPECT_EQ(taken(), "query 1\nunload\na destroy\n");
    EXPECT_FALSE(form.Loaded());
    EXPECT_TRUE(form.Unload()) << "nothing is left to refuse";
}

TEST(FormUnits, TwipsFollowTheScreen) {
    const platform::test::WindowHookScope hooks;
    EXPECT_EQ(Form::PlaceOfTwips(30, 2040, 9015, 225), (RECT{2, 136, 603, 151}));
    platform::test::setScreens(
        {{.bounds = {0, 0, 800, 600}, .work = {0, 0, 800, 560}, .dpi = 144}});
    EXPECT_EQ(Form::PixelsY(15), 2) << "1.5, to even";
}

TEST(PropertyBag, StoresOnlyWhatDiffersFromItsDefault) {
    PropertyBag bag;
    bag.WriteProperty(u"Style", std::int32_t{3}, -1);
    bag.WriteProperty(u"Margin", std::int16_t{0}, std::int16_t{0});
    bag.WriteProperty(u"Font", StdFont{u"Arial", 9}, StdFont());
    bag.WriteTextBytes(u"Caption", Text(u"a\0\xD800", 3), {});
    EXPECT_EQ(bag.Count(), 3U);
    EXPECT_EQ(bag.ReadProperty(u"Style", std::int32_t{-1}), 3);
    EXPECT_EQ(bag.ReadProperty(u"style", std::int32_t{-1}), -1) << "names are exact";
    EXPECT_EQ(bag.ReadProperty(u"Style", true), true) << "of another type: the default";
    EXPECT_EQ(bag.ReadProperty(u"Font", StdFont()), (StdFont{u"Arial", 9}));
    EXPECT_EQ(bag.ReadTextBytes(u"Caption", {}), Text(u"a\0\xD800", 3));
    EXPECT_EQ(bag.ReadProperty(u"Caption", Bytes()), (Bytes{0x61, 0, 0, 0, 0, 0xD8}));
    bag.WriteProperty(u"Caption", Bytes{1, 2, 3}, Bytes());
    EXPECT_EQ(bag.ReadTextBytes(u"Caption", u"default"), u"default") << "no whole units";
    bag.WriteProperty(u"Margin", std::int32_t{70000}, 0);
    EXPECT_EQ(bag.ReadProperty(u"Margin", std::int16_t{2}), 2) << "beyond 16 bits";
    bag.WriteProperty(u"Style", std::int32_t{-1}, -1);
    EXPECT_FALSE(bag.Contains(u"Style"));
}

TEST(DataObject, TellsItsFormats) {
    DataObject data;
    EXPECT_FALSE(data.GetFormat(kFormatText) || data.GetFormat(kFormatFiles));
    data.SetText(u"");
    data.SetFiles({u"\\a"});
    data.SetData(kFormatRichText);
    data.SetData(2, Bytes{1});
    EXPECT_TRUE(data.GetFormat(kFormatText) && data.GetFormat(kFormatUnicodeText));
    EXPECT_TRUE(data.GetFormat(kFormatFiles) && data.GetFormat(kFormatRichText));
    EXPECT_FALSE(data.GetFormat(2)) << "no format of drags";
    data.Clear();
    EXPECT_FALSE(data.GetFormat(kFormatText));
}

}  // namespace
