// The tip window and its managers, on a clock and a mouse of the test's own.
#include "controls/controlWindow_test.h"
#include "controls/ctlUniButtonXP.h"
#include "controls/ctlUniTextBoxXP.h"
#include "controls/ctlUniToolTip.h"
#include "controls/ctlUniTooltipManager.h"
#include "platform/window/textout.h"
#include "support/PlatformVersion.h"

namespace {

using platform::test::advanceTimers;

class Tips : public test::ControlTest {
protected:
    void SetUp() override {
        ControlTest::SetUp();
        platform::test::setManualTimers(true);
        platform::test::setScreens({{.bounds = {0, 0, 800, 600}, .work = {0, 0, 800, 570}}});
        at({100, 100});
        m_manager.InitProperties();
    }
    static void at(POINT mouse) { platform::test::setCursorPos(mouse); }
    static ctlUniToolTip& tip() { return dynamic_cast<ctlUniToolTip&>(*tipService().m_oTipForm); }
    static std::string state() { return TipIsVisible() ? "shows" : "hidden"; }
    static std::string after(std::uint32_t milliseconds) {
        advanceTimers(milliseconds);
        return state();
    }
    ctlUniTooltipManager m_manager;
};

TEST_F(Tips, ComeAfterARestAndGoWithTheMouseOrTheTime) {
    ShowTip(u"Browse...", kTipWidth);
    EXPECT_EQ(after(399), "hidden");
    EXPECT_EQ(after(1), "shows");
    EXPECT_EQ(tip().lblTip.Caption(), u"Browse... ");
    EXPECT_EQ(platform::test::runningTimers(), 2);
    ShowTip(u"Browse...", kTipWidth);
    EXPECT_EQ(state(), "shows") << "a mouse at rest changes nothing";
    EXPECT_EQ(after(2999), "shows");
    EXPECT_EQ(after(1), "hidden");
    EXPECT_EQ(platform::test::runningTimers(), 0) << "nothing runs while nothing shows";

    at({101, 100});
    ShowTip(u"Browse...", kTipWidth);
    EXPECT_EQ(after(400), "shows");
    at({101, 101});
    EXPECT_EQ(after(99), "shows");
    EXPECT_EQ(after(1), "hidden") << "the mouse has moved";

    ShowTip(u"Browse...", kTipWidth);
    at({150, 101});
    EXPECT_EQ(after(400), "hidden") << "moved while it waited";
    EXPECT_EQ(platform::test::runningTimers(), 0);

    for (int x = 0; x < 5; ++x) {
        at({x, 50});
        ShowTip(u"Browse...", kTipWidth);
        advanceTimers(300);
    }
    EXPECT_EQ(state(), "hidden") << "every move begins the wait anew";
    EXPECT_EQ(after(100), "shows");
    ShowTip(u"Other", kTipWidth);
    EXPECT_EQ(state(), "hidden");
    advanceTimers(400);
    EXPECT_EQ(GetTip(), u"Other");
    m_manager.HideTip();
    EXPECT_EQ(state(), "hidden");
    EXPECT_EQ(GetTip(), u"");
}

TEST_F(Tips, PersistentOnesStayWhileTheMouseRests) {
    m_manager.PersistentTip(true);
    ShowTip(u"Stay", kTipWidth);
    EXPECT_EQ(after(400), "shows");
    EXPECT_EQ(after(20000), "shows");
    at({100, 101});
    EXPECT_EQ(after(100), "hidden");
}

TEST_F(Tips, ShowNothingForBlanks) {
    for (const char16_t* blanks : {u"", u" ", u"     "}) {
        ShowTip(blanks, kTipWidth, u"tag");
        EXPECT_EQ(after(1000), "hidden");
        EXPECT_EQ(GetTip(), blanks);
        EXPECT_EQ(GetTipTag(), u"tag");
    }
    ShowTip(u"Something", kTipWidth);
    advanceTimers(400);
    UpdateTip(u"  ", kTipWidth);
    EXPECT_EQ(state(), "hidden");
}

TEST_F(Tips, StandBelowTheMouseAndStayOnTheScreen) {
    const std::pair<POINT, const char*> kCases[] = {
        {{100, 100}, "right below"},
        {{100, 590}, "right above"},
        {{790, 100}, "edge below"},
        {{790, 590}, "edge above"},
    };
    for (const auto& [mouse, expected] : kCases) {
        at(mouse);
        ShowTip(u"Somewhere on the screen", kTipWidth);
        advanceTimers(400);
        RECT place;
        platform::GetWindowRect(tip().hWnd(), place);
        std::string where = place.left == mouse.x + 1 ? "right " : "";
        if (place.right == 800) where = "edge ";
        if (place.top == mouse.y + 15) where += "below";
        if (place.bottom == mouse.y - 5) where += "above";
        EXPECT_EQ(where, expected);
    }
}

TEST_F(Tips, WrapAtTheirWidth) {
    const Text longTip = u"A tip that is far too long to be shown in one line of three hundred "
                         u"pixels, and so is wrapped";
    ShowTip(longTip, kTipWidth);
    advanceTimers(400);
    const ctlUniLabelNoFlick& label = tip().lblTip;
    EXPECT_LE(label.ScaleWidth(), kTipWidth + 2 * label.Margin());
    EXPECT_GT(label.ScaleWidth(), kTipWidth / 2);
    EXPECT_EQ(tip().ScaleWidth(), label.ScaleWidth());
    const int wrapped = tip().ScaleHeight();
    EXPECT_FALSE(label.AutoSize());
    UpdateTip(longTip, 0);
    EXPECT_GT(tip().ScaleWidth(), kTipWidth) << "below 1 there is no limit";
    EXPECT_LT(tip().ScaleHeight(), wrapped);
    UpdateTip(u"Short", kTipWidth);
    EXPECT_TRUE(label.AutoSize());
    EXPECT_LT(tip().ScaleWidth(), 100);
    EXPECT_EQ(state(), "shows");
    EXPECT_EQ(platform::test::describeAccessible(tip().hWnd()), "tip \"Short\"");
}

TEST_F(Tips, AreHandedOutByControlsUnderTheMouse) {
    ctlUniButtonXP button;
    button.Tip(u"Browse...");
    put(button);
    platform::test::mouse(button.hWnd(), test::MouseAction::Move, {3, 4}, 0);
    EXPECT_EQ(after(400), "shows");
    button.Tip({});
    platform::test::mouse(button.hWnd(), test::MouseAction::Move, {5, 4}, 0);
    EXPECT_EQ(state(), "hidden");
    button.UserMode(false);
    button.Tip(u"Design");
    platform::test::mouse(button.hWnd(), test::MouseAction::Move, {3, 4}, 0);
    EXPECT_EQ(GetTip(), u"") << "not in a designer";
    ctlUniTextBoxXP box;
    box.Tip(Text(200, u'x') + u" what to type");
    put(box, {10, 50, 110, 74});
    platform::test::mouse(box.hWnd(), test::MouseAction::Move, {3, 4}, 0);
    EXPECT_EQ(after(400), "shows");
    EXPECT_EQ(GetTip(), box.Tip()) << "over the edit window";
    EXPECT_FALSE(tip().lblTip.AutoSize()) << "wider than the tip of a control may be";
}

TEST_F(Tips, LiveAsLongAsOneManagerIsActive) {
    {
        ctlUniTooltipManager other;
        PropertyBag bag;
        bag.WriteProperty(u"TipBgColor", 0x00FFFF, 0);
        bag.WriteProperty(u"Font", StdFont{u"Tahoma", 10}, StdFont());
        other.ReadProperties(bag);
        other.ActivateTips(true);
        EXPECT_EQ(tipService().m_lTipManagers, 2) << "each counts once";
        EXPECT_EQ(tip().lblTip.BackColor(), 0x00FFFF);
        EXPECT_EQ(tip().GetFont().Name, u"Tahoma");
        m_manager.ActivateTips(false);
        ctlUniTooltipManager idle;
        bag.WriteProperty(u"ActivateTips", false, true);
        idle.ReadProperties(bag);
        idle.Style(4);
        EXPECT_EQ(tip().lblTip.Style(), 4) << "any manager may change how the one tip looks";
        idle.Style(-1);
        ShowTip(u"Still", kTipWidth);
        EXPECT_EQ(after(400), "shows");
        PropertyBag written;
        m_manager.WriteProperties(written);
        EXPECT_TRUE(written.Contains(u"ActivateTips") && written.Count() == 1);
        idle.WriteProperties(written);
        EXPECT_TRUE(written == bag);
    }
    EXPECT_FALSE(tipService().m_bTipsActive);
    EXPECT_EQ(tipService().m_oTipForm, nullptr);
    EXPECT_EQ(platform::test::runningTimers(), 0);
    ShowTip(u"Nobody", kTipWidth);
    UpdateTip(u"Nobody", kTipWidth);
    EXPECT_EQ(GetTip(), u"");
    EXPECT_FALSE(TipIsVisible());
    m_manager.ActivateTips(true);
    ShowTip(u"Again", kTipWidth);
    EXPECT_EQ(after(400), "shows");
    EXPECT_TRUE(tip().Unload());
    EXPECT_FALSE(tipService().m_bTipsActive) << "its unload ends the tips";
    m_manager.ActivateTips(true);
    ShowTip(u"Once more", kTipWidth);
    EXPECT_EQ(after(400), "shows") << "and a manager starts them anew";
}

TEST_F(Tips, GetTheirTransparencyWhereThePlatformHasIt) {
    EXPECT_EQ(ctlUniToolTip::alphaOf(0), 255);
    EXPECT_EQ(ctlUniToolTip::alphaOf(50), 255 - 127) << "2.55 x 50 is just below 127.5";
    EXPECT_EQ(ctlUniToolTip::alphaOf(100), 0);
    const auto layered = [&](std::int16_t percent) {
        m_manager.Transparency(percent);
        at({percent, 10});
        ShowTip(u"Through", kTipWidth);
        advanceTimers(400);
        const auto style = platform::GetWindowLongW(tip().hWnd(), platform::GWL_EXSTYLE);
        return (style & 0x80000) != 0;
    };
    EXPECT_FALSE(layered(0));
    test::PlatformVersion version({4, 0, platform::VER_PLATFORM_WIN32_NT});
    EXPECT_FALSE(layered(100)) << "too old";
    version.set(platform::OSVERSIONINFOA{5, 0, platform::VER_PLATFORM_WIN32_NT});
    EXPECT_TRUE(layered(40));
}

}  // namespace
