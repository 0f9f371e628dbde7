// Stored properties, states, events and repaints of the drawn controls.
#include "controls/controlWindow_test.h"
#include "controls/ctlProgressXP.h"
#include "controls/ctlUniButtonXP.h"
#include "controls/ctlUniCheckXP.h"
#include "controls/ctlUniFrameXP.h"
#include "controls/ctlUniLabel.h"
#include "controls/ctlUniTextBoxXP.h"
#include "platform/window/textout.h"
#include "support/window/Failures.h"

#include <algorithm>
#include <functional>
#include <memory>

namespace {

using platform::test::describeAccessible;
using test::settle;

class Controls : public test::ControlTest {
protected:
    // Writes down all that the control raises.
    template <class Control> void listen(Control& control) {
        const auto mouse = [this](const char* name) {
            return [this, name](std::int16_t& button, auto&, auto&, auto&) {
                note(name + std::to_string(button));
            };
        };
        control.Click = [this] { note("Click"); };
        control.DblClick = [this] { note("DblClick"); };
        control.MouseDown = mouse("Down");
        control.MouseMove = mouse("Move");
        control.MouseUp = mouse("Up");
        if constexpr (requires { control.KeyPress; }) {
            control.KeyDown = [this](std::int16_t& c, auto&) { note("Key" + std::to_string(c)); };
            control.KeyPress = [this](std::int16_t& c) { note("Char" + std::to_string(c)); };
            control.KeyUp = [this](std::int16_t&, auto&) { note("KeyUp"); };
        }
    }
};

template <class Control> std::unique_ptr<HostWindow> make() { return std::make_unique<Control>(); }
const struct {
    const char* name;
    std::unique_ptr<HostWindow> (*make)();
    const char16_t* text = u"Caption";  // the stored property that it shows
    const char* ofName = "";  // what it is called that has the name "It&em1" and no stored text
} kKinds[] = {
    {"button", make<ctlUniButtonXP>, u"Caption", "Item1"},
    {"check box", make<ctlUniCheckXP>, u"Caption", "Item1"},
    {"frame", make<ctlUniFrameXP>, u"Caption", "It&em1"},
    {"label", make<ctlUniLabel>},
    {"label without flicker", make<ctlUniLabelNoFlick>},
    {"text box", make<ctlUniTextBoxXP>, u"Text"},
    {"progress", make<ctlProgressXP>, nullptr},
};

// ---- Stored properties

TEST(ControlProperties, HaveTheirDocumentedDefaults) {
    const auto inRows = [](std::string dump) {
        std::ranges::replace(dump, '\n', ';');
        return dump;
    };
    EXPECT_EQ(inRows(ctlUniButtonXP::properties().dump({})),
              "Caption text \"\";BackColor 32 -2147483633;ForeColor 32 -2147483630;"
              "BorderColor 32 -1;Tip text \"\";Style 32 -1;RoundedBorders bool true;"
              "BackColorOut 32 -1;UseRoundRegions bool false;ShowFocus bool true;");
    EXPECT_EQ(inRows(LabelControl::properties().dump({})),
              "Caption text \"\";BackColor 32 -2147483633;ForeColor 32 -2147483630;"
              "BorderColor 32 -1;Alignment 32 0;VAlignment 32 0;BackStyle 32 1;BorderStyle 32 0;"
              "AutoSize bool false;Tip text \"\";Style 32 0;Margin 16 0;"
              "RoundedBorders bool false;BackColorOut 32 -1;UseRoundRegions bool false;");
    EXPECT_EQ(inRows(ctlUniCheckXP::properties().dump({})),
              "Caption text \"\";Align 32 0;CheckBackColor 32 -2147483643;"
              "CheckForeColor 32 -2147483640;BackColor 32 -2147483633;ForeColor 32 -2147483630;"
              "BorderColor 32 -1;Pressed bool false;Tip text \"\";Style 32 -1;"
              "ShowFocus bool true;");
    EXPECT_EQ(inRows(ctlUniFrameXP::properties().dump({})),
              "Caption text \"\";Enabled bool true;ForeColor 32 -2147483642;BorderColor 32 -1;"
              "BackColor 32 -2147483633;Tip text \"\";VistaStyle bool true;BackColorOut 32 -1;"
              "TitleBackColor 32 -1;UseShadow bool false;");
    EXPECT_EQ(inRows(ctlProgressXP::properties().dump({})),
              "Percent 16 0;BackColor 32 -2147483643;ForeColor 32 -2147483635;Border bool true;"
              "BorderColor 32 -1;BorderSpace bool true;Spaces bool true;Tip text \"\";"
              "Style 32 -1;BackStyle 32 -1;RoundedBorders bool true;BackColorOut 32 -1;"
              "UseRoundRegions bool false;");
    EXPECT_EQ(inRows(ctlUniTextBoxXP::properties().dump({})),
              "BorderColor 32 -1;BackColor 32 -2147483643;ForeColor 32 -2147483640;"
              "Locked bool false;Text text \"\";MaxLength 32 0;MultiLine bool false;"
              "Alignment 32 0;ScrollBars 32 0;PasswordChar text \"\";TrapTab bool false;"
              "EnableContextMenu bool true;RaiseChangeEvent bool true;Tip text \"\";"
              "NoHideSel bool false;RightToLeft bool false;ManualStart bool false;"
              "RoundedBorders bool false;BackColorOut 32 -1;UseRoundRegions bool false;"
              "OnlyBottomBorder bool false;");
}

// What of its window a control stores.
struct WindowProperties {
    bool font = true, mouse = true;
};

// Stores another value under every name of a table, and under those of the window.
template <class Props>
PropertyBag otherValues(const PropertyTable<Props>& table, WindowProperties window) {
    PropertyBag bag;
    Props other;
    for (const auto& row : table.rows()) {
        std::visit(
            [&](auto member) {
                auto& value = other.*member;
                using T = std::decay_t<decltype(value)>;
                if constexpr (std::is_same_v<T, Text>) {
                    value = u"other";
                } else if constexpr (std::is_same_v<T, bool>) {
                    value = !value;
                } else {
                    value = static_cast<T>(value + 2);
                }
            },
            row.member);
    }
    table.write(bag, other, {});
    if (window.font) {
        bag.WriteProperty(u"Enabled", false, true);
        bag.WriteProperty(u"Font", StdFont{u"Tahoma", 12}, StdFont());
    }
    if (window.mouse) {
        bag.WriteProperty(u"OLEDropMode", std::int16_t{1}, std::int16_t{0});
        bag.WriteProperty(u"MousePointer", std::int16_t{2}, std::int16_t{0});
    }
    return bag;
}

template <class Control> void expectRoundTrip(WindowProperties window = {}) {
    const auto& rows = Control::properties().rows();
    for (auto row = rows.begin(); row != rows.end(); ++row) {
        const auto same = [&](const auto& other) { return other.member == row->member; };
        EXPECT_EQ(std::ranges::count_if(rows, same), 1) << toUtf8(row->sName);
    }
    const PropertyBag stored = otherValues(Control::properties(), window);
    Control control;
    control.Name(u"Control1");
    HostWindow& host = control;
    // What is not stored stays as it is.
    host.Font({u"Tahoma", 12});
    host.Enabled(false);
    host.OLEDropMode(1);
    control.ReadProperties(stored);
    EXPECT_EQ(host.Font(), (StdFont{u"Tahoma", 12}));
    EXPECT_FALSE(host.Enabled());
    EXPECT_EQ(host.OLEDropMode(), 1);
    PropertyBag written, none;
    control.WriteProperties(written);
    EXPECT_TRUE(written == stored);
    control.ReadProperties({});
    control.WriteProperties(none);
    EXPECT_EQ(none.Count(), 0U) << "defaults are not stored";
}

TEST(ControlProperties, SurviveSavingAndLoading) {
    expectRoundTrip<ctlUniButtonXP>({.mouse = false});
    expectRoundTrip<ctlUniLabel>();
    expectRoundTrip<ctlUniLabelNoFlick>();
    expectRoundTrip<ctlUniCheckXP>();
    expectRoundTrip<ctlUniFrameXP>();
    expectRoundTrip<ctlProgressXP>({.font = false});
    expectRoundTrip<ctlUniTextBoxXP>();
}

TEST(ControlProperties, ACaptionThatIsNotStoredIsTheName) {
    for (const auto& kind : kKinds) {
        const std::unique_ptr<HostWindow> control = kind.make();
        control->Name(u"It&em1");
        control->InitProperties();
        EXPECT_EQ(toUtf8(control->accessibleName()), kind.ofName) << kind.name;
        EXPECT_EQ(control->AccessKeys(), kind.name == std::string("check box") ? u"e" : u"");
    }
}

// ---- Button

TEST_F(Controls, AButtonRaisesAfterItHasChangedItsState) {
    ctlUniButtonXP button;
    button.Caption(u"&Go");
    put(button);
    listen(button);
    click(button);
    EXPECT_EQ(taken(), "Down1 Up1 Click ");
    press(button);
    EXPECT_TRUE(button.accessibleState().pressed);
    platform::test::mouse(button.hWnd(), platform::test::MouseAction::Move, {300, 4}, 0,
                          platform::MK_LBUTTON);
    EXPECT_TRUE(button.accessibleState().pressed) << "leaving does not end the press";
    platform::test::mouse(button.hWnd(), platform::test::MouseAction::Move, {3, 4}, 0, 0);
    EXPECT_FALSE(button.accessibleState().pressed) << "the next move without the button does";
    release(button);
    (void)taken();
    press(button, platform::MK_RBUTTON);
    EXPECT_FALSE(button.accessibleState().pressed);
    EXPECT_EQ(taken(), "Down2 ");
    release(button, platform::MK_RBUTTON);
    (void)taken();
    twice(button);
    EXPECT_EQ(taken(), "Down1 Up1 Click DblClick Up1 ");
    press(button);
    button.ForceLostFocus();
    EXPECT_FALSE(button.accessibleState().pressed);
    button.Tip(u"Browse...");
    EXPECT_EQ(describeAccessible(button.hWnd()),
              "button \"Go\" description \"Browse...\" focusable focused");
    (void)taken();
    EXPECT_TRUE(platform::test::doAccessibleAction(button.hWnd()));
    EXPECT_EQ(taken(), "Click ");
}

TEST_F(Controls, AButtonClicksByKeyUnlessTheHandlerTakesTheKey) {
    ctlUniButtonXP button;
    put(button);
    listen(button);
    type(button, u' ');
    type(button, u'\r');
    type(button, u'x');
    EXPECT_EQ(taken(), "Key32 Char32 Click KeyUp Key13 Char13 Click KeyUp Key88 Char120 KeyUp ");
    button.KeyPress = [](std::int16_t& code) { code = 0; };
    type(button, u' ');
    EXPECT_EQ(taken(), "Key32 KeyUp ");
    button.KeyPress = [](std::int16_t& code) { code = 13; };
    type(button, u'x');
    EXPECT_EQ(taken(), "Key88 Click KeyUp ");
}

TEST_F(Controls, TheFormsEnterAndEscapeClickEnabledButtons) {
    ctlUniButtonXP ok, cancel;
    ctlUniCheckXP check;
    put(ok);
    put(cancel, {10, 50, 110, 74});
    put(check, {10, 90, 110, 114});
    ok.Click = [this] { note("ok"); };
    cancel.Click = [this] { note("cancel"); };
    ok.Default(true);
    cancel.Cancel(true);
    check.SetFocus();
    const auto key = [&](std::int32_t code) {
        platform::test::pressKey(platform::GetFocus(), code, TextView());
        return taken();
    };
    EXPECT_EQ(key(platform::VK_RETURN), "ok ");
    EXPECT_EQ(key(platform::VK_ESCAPE), "cancel ");
    EXPECT_EQ(check.Value(), 0);
    ok.Enabled(false);
    EXPECT_EQ(key(platform::VK_RETURN), "");
    cancel.SetFocus();
    EXPECT_EQ(key(platform::VK_RETURN), "cancel ") << "the button with the focus comes first";
}

TEST_F(Controls, AButtonsFaceFollowsItsState) {
    ctlUniButtonXP button;
    button.Caption(u"Go");
    button.Default(true);
    put(button);
    const auto drawn = [&] {
        const platform::DrawingRecorder recorder(button.hDC());
        button.Refresh();
        const std::string all = recorder.text();
        std::string marks;
        if (all.find("#A0BEEC") != std::string::npos) marks += "default ";
        if (all.find("DrawFocusRect") != std::string::npos) marks += "focus ";
        if (all.find("DrawTextW 0,0,100,24 #808080 flags 0x25 \"Go\"") != std::string::npos) {
            marks += "grey ";
        }
        return marks;
    };
    EXPECT_EQ(drawn(), "default ");
    button.SetFocus();
    EXPECT_EQ(drawn(), "default focus ");
    press(button);
    EXPECT_EQ(drawn(), "default ") << "no focus rectangle on a pressed button";
    release(button);
    button.ShowFocus(false);
    EXPECT_EQ(drawn(), "default ");
    button.Enabled(false);
    EXPECT_EQ(drawn(), "grey ");
    const platform::DrawingRecorder recorder(button.hDC());
    button.Caption({});
    EXPECT_EQ(recorder.text().find("DrawTextW"), std::string::npos) << "the face only";
    button.AutoRedraw(true);  // a picture that stays is drawn without being asked
    button.Caption(u"Went");
    EXPECT_NE(recorder.text().find("\"Went\""), std::string::npos);
    button.move(10, 10, 150, 30);
    EXPECT_NE(recorder.text().find("DrawTextW 0,0,150,30"), std::string::npos);
}

// ---- Check box

TEST_F(Controls, ACheckBoxTogglesByWhatArmsIt) {
    ctlUniCheckXP check;
    check.Caption(u"R&&D &Lab");
    EXPECT_EQ(check.AccessKeys(), u"L");
    put(check);
    listen(check);
    const auto state = [&] { return taken() + std::to_string(check.Value()); };
    click(check);
    EXPECT_EQ(state(), "Down1 Up1 Click 1");
    click(check, platform::MK_RBUTTON);
    EXPECT_EQ(state(), "Down2 Up2 1");
    twice(check);
    EXPECT_EQ(state(), "Down1 Up1 Click Click DblClick Up1 1") << "twice is back where it was";
    type(check, u' ');
    EXPECT_EQ(state(), "Key32 Char32 Click KeyUp 0");
    check.Value(5);
    EXPECT_EQ(state(), "Click 1");
    check.Value(1);
    check.Pressed(true);
    EXPECT_EQ(state(), "1") << "no change, no Click";
    check.KeyPress = [](std::int16_t& code) { code = 0; };
    type(check, u' ');
    EXPECT_EQ(state(), "Key32 KeyUp 1");
    platform::test::pressKey(check.hWnd(), 'L', u"l", platform::test::kAlt);
    EXPECT_EQ(state(), "Key76 Click 0");
    EXPECT_EQ(describeAccessible(check.hWnd()),
              "check box \"R&D Lab\" keys \"Alt+L\" focusable focused unchecked");
    EXPECT_TRUE(platform::test::doAccessibleAction(check.hWnd()));
    EXPECT_EQ(state(), "Click 1");
    check.Enabled(false);
    EXPECT_FALSE(check.accessibleAction());
    check.Caption(u"Plain &");
    EXPECT_EQ(check.AccessKeys(), u"");
}

// ---- Frame

TEST_F(Controls, ADisabledFrameDisablesWhatIsInIt) {
    ctlUniFrameXP frame;
    frame.Caption(u"A & B");
    put(frame, {0, 0, 200, 100});
    ctlUniButtonXP button;
    ASSERT_TRUE(button.create(frame.hWnd(), {10, 30, 60, 54}));
    listen(button);
    frame.Enabled(false);
    EXPECT_FALSE(platform::IsWindowEnabled(frame.hWnd()));
    click(button);
    EXPECT_EQ(taken(), "");
    EXPECT_EQ(describeAccessible(frame.hWnd()), "group \"A & B\" disabled");
    frame.VistaStyle(false);
    frame.Caption(u"A && &B");
    EXPECT_EQ(describeAccessible(frame.hWnd()), "group \"A & B\" disabled");
    frame.Enabled(true);
    click(button);
    EXPECT_EQ(taken(), "Down1 Up1 Click ");
    listen(frame);
    twice(frame);
    EXPECT_EQ(taken(), "Down1 Up1 Click DblClick Up1 ");
    frame.UserMode(false);
    frame.Enabled(false);
    EXPECT_FALSE(frame.Enabled());
    EXPECT_TRUE(platform::IsWindowEnabled(frame.hWnd())) << "a designer needs it";
    frame.UserMode(true);
    EXPECT_EQ(paintsOf(frame, [&] { frame.Caption(u"Running"); }), 1);
    EXPECT_FALSE(platform::IsWindowEnabled(frame.hWnd())) << "the paint brings it up to date";
}

// ---- Labels

TEST_F(Controls, AnAutomaticLabelTakesTheSizeOfItsText) {
    ctlUniLabelNoFlick label;
    put(label, {50, 10, 150, 40});
    const HDC dc = label.hDC();
    const auto width = [&](TextView s) {
        RECT r{};
        platform::DrawTextW(dc, s, r, platform::DT_CALCRECT | platform::DT_SINGLELINE);
        return r.right;
    };
    RECT line{};
    platform::DrawTextW(dc, u"X", line, platform::DT_CALCRECT);
    label.AutoSize(true);
    EXPECT_EQ(label.ScaleWidth(), 1);
    EXPECT_EQ(label.ScaleHeight(), 0);
    label.BorderStyle(1);
    label.Margin(3);
    EXPECT_EQ(label.ScaleWidth(), 1 + 6 + 4);
    label.Caption(u"One\r\nThe widest one\r\nLast");
    EXPECT_EQ(label.ScaleWidth(), width(u"The widest one") + 10);
    EXPECT_EQ(label.ScaleHeight(), 3 * line.bottom + 10);
    EXPECT_EQ(label.Left(), 50);

    label.Alignment(1);
    const int right = label.Left() + label.ScaleWidth();
    label.Caption(u"One");
    EXPECT_EQ(label.Left() + label.ScaleWidth(), right);
    label.Alignment(2);
    const int twiceCentre = 2 * label.Left() + label.ScaleWidth();
    label.Caption(u"The widest one");
    EXPECT_NEAR(2 * label.Left() + label.ScaleWidth(), twiceCentre, 1);
    label.AutoSize(false);
    const int before = label.ScaleWidth();
    label.Margin(9);
    EXPECT_EQ(label.ScaleWidth(), before) << "without AutoSize the margin has no influence";
}

TEST_F(Controls, ATransparentLabelIsOnlyItsLetters) {
    ctlUniLabel label;
    PropertyBag bag;
    bag.WriteProperty(u"BackStyle", std::int32_t{0}, 1);
    bag.WriteTextBytes(u"Caption", u"III", {});
    label.ReadProperties(bag);
    put(label);
    int letters = 0, holes = 0;
    for (int x = 10; x < 40; ++x) {
        const HWND seen = platform::test::windowAt(m_form.hWnd(), {x, 16});
        (seen == label.hWnd() ? letters : holes)++;
    }
    EXPECT_GT(letters, 2);
    EXPECT_GT(holes, 10);
    label.UseRoundRegions(true);
    settle();
    EXPECT_EQ(platform::test::windowAt(m_form.hWnd(), {100, 30}), m_form.hWnd());
    EXPECT_EQ(describeAccessible(label.hWnd()), "label \"III\"");
}

TEST_F(Controls, TheTwoLabelsBringAChangeToTheScreenEachInItsOwnWay) {
    ctlUniLabel label;
    ctlUniLabelNoFlick noFlick;
    put(label);
    put(noFlick, {10, 50, 110, 74});
    const auto pixel = [](const HostWindow& of) { return platform::GetPixel(of.hDC(), 50, 12); };
    noFlick.BackColor(0x0000FF);
    label.BackColor(0x0000FF);
    EXPECT_NE(pixel(label), pixel(noFlick)) << "one waits for its paint, the other has drawn";
    settle();
    EXPECT_EQ(pixel(label), pixel(noFlick));
    const auto showsAtOnce = [&](Color color, auto refresh) {
        noFlick.BackColor(color);
        label.BackColor(color);
        refresh();
        const bool shows = pixel(label) == pixel(noFlick);
        settle();
        return shows;
    };
    EXPECT_FALSE(showsAtOnce(0x00FF00, [&] { label.Refresh(); }));
    EXPECT_TRUE(showsAtOnce(0xFF0000, [&] { label.Refresh(true); }));
    label.UserMode(false);
    EXPECT_TRUE(showsAtOnce(0x00FFFF, [] {})) << "in a designer every change shows at once";

    noFlick.Caption(u"III");
    noFlick.BackStyle(0);
    EXPECT_EQ(platform::test::windowAt(m_form.hWnd(), {100, 70}), m_form.hWnd());
    noFlick.BackStyle(1);
    EXPECT_EQ(platform::test::windowAt(m_form.hWnd(), {100, 70}), noFlick.hWnd());
}

TEST_F(Controls, RoundedWindowsLoseTheirCorners) {
    ctlUniButtonXP button;
    ctlUniLabel label;
    ctlProgressXP progress;
    ctlUniTextBoxXP box;
    HostWindow* const all[] = {&button, &label, &progress, &box};
    for (int i = 0; i < 4; ++i) put(*all[i], {10, 10 + 40 * i, 110, 34 + 40 * i});
    // "round" when all have lost their corners, "whole" when none has.
    const auto corners = [&] {
        settle();
        std::string seen;
        for (const HostWindow* control : all) {
            const auto at = [&](int x, int y) {
                return platform::test::windowAt(m_form.hWnd(),
                                                {control->Left() + x, control->Top() + y});
            };
            EXPECT_NE(at(50, 12), m_form.hWnd());
            const std::string shape = at(0, 0) == m_form.hWnd() ? "round" : "whole";
            seen = seen.empty() || seen == shape ? shape : "mixed";
        }
        return seen;
    };
    const auto round = [&](bool on) {
        button.UseRoundRegions(on);
        label.UseRoundRegions(on);
        progress.UseRoundRegions(on);
        box.UseRoundRegions(on);
        EXPECT_TRUE(label.RoundedBorders() == on && progress.RoundedBorders() == on);
        EXPECT_TRUE(button.RoundedBorders() == on && box.RoundedBorders() == on);
    };
    EXPECT_EQ(corners(), "whole");
    button.Resize = [this] { note("Resize"); };
    label.Resize = [this] { note("label"); };
    round(true);
    EXPECT_EQ(corners(), "round");
    EXPECT_EQ(taken(), "Resize ") << "the button makes its shape as if resized";
    for (HostWindow* control : all) control->move(control->Left(), control->Top(), 120, 30);
    EXPECT_EQ(corners(), "round");
    box.RoundedBorders(false);
    EXPECT_EQ(corners(), "round") << "a repaint is no new shape";
    round(false);
    EXPECT_EQ(corners(), "whole");
}

// ---- Progress bar

TEST_F(Controls, AProgressBarTakesZeroToHundredAndShowsAtOnce) {
    ctlProgressXP progress;
    put(progress, {10, 10, 114, 25});
    platform::test::listenAccessible(true);
    const struct {
        std::int16_t value, percent;
    } kCases[] = {{25, 25}, {101, 25}, {-1, 25}, {100, 100}, {0, 0}};
    for (const auto& c : kCases) {
        progress.Value(c.value);
        EXPECT_EQ(progress.Percent(), c.percent);
    }
    EXPECT_EQ(platform::test::takeAccessibleLog(), "value \"\"\nvalue \"\"\nvalue \"\"\n");
    platform::test::listenAccessible(false);
    progress.Percent(50);
    // No message was read since: what was set is there. 100 columns of bar, 3 to 52 filled.
    progress.Spaces(false);
    progress.Style(0);
    progress.Refresh();
    const auto at = [&](int x) { return platform::GetPixel(progress.hDC(), x, 7); };
    EXPECT_NE(at(40), at(60));
    EXPECT_EQ(at(40), at(50));
    progress.Percent(60);
    EXPECT_EQ(at(40), at(60));
    progress.AccessibleName(u"Loading");
    EXPECT_EQ(describeAccessible(progress.hWnd()),
              "progress bar \"Loading\" value \"60%\" 60 of 0 to 100");
}

// ---- All of them

TEST_F(Controls, AThousandChangesCostOnePaint) {
    const auto paints = [&](auto control, const auto& change) {
        control->Caption(u"text");
        put(*control);
        return paintsOf(*control, [&] {
            for (int i = 0; i < 1000; ++i) change(*control, i);
        });
    };
    const auto caption = [](auto& control, int i) { control.Caption(fromUtf8(std::to_string(i))); };
    EXPECT_EQ(paints(std::make_unique<ctlUniCheckXP>(), caption), 1);
    EXPECT_EQ(paints(std::make_unique<ctlUniFrameXP>(), caption), 1);
    EXPECT_EQ(paints(std::make_unique<ctlUniLabel>(), caption), 1);
    EXPECT_EQ(paints(std::make_unique<ctlUniButtonXP>(), [](auto& b, int i) { b.BackColor(i); }),
              1);

    ctlProgressXP progress;
    put(progress);
    const platform::DrawingRecorder recorder(progress.hDC());
    for (int i = 0; i < 1000; ++i) progress.BorderColor(i);
    settle();
    EXPECT_EQ(recorder.lines().size(), 1U) << recorder.text();
}

TEST_F(Controls, LiveThroughAnyTextAndSizeAndTheEndOfTheirWindow) {
    const Text kTexts[] = {
        Text(1 << 17, u'x'),
        Text(u"a\0b", 3),
        u"\xD800 \xDC00\xD83D",
        u"\u200F\u202E\u05D0 b",
        u"&",
        u"\r\n\r\n\t",
        Text(1 << 14, u'\r'),
    };
    for (const auto& kind : kKinds) {
        SCOPED_TRACE(kind.name);
        for (const Text& text : kTexts) {
            PropertyBag bag;
            if (kind.text != nullptr) bag.WriteTextBytes(kind.text, text, {});
            bag.WriteProperty(u"UseRoundRegions", true, false);
            bag.WriteProperty(u"Percent", std::int16_t{50}, std::int16_t{0});
            const std::unique_ptr<HostWindow> control = kind.make();
            control->ReadProperties(bag);
            put(*control);
            for (const SIZE size : {SIZE{0, 0}, SIZE{1, 1}, SIZE{1, 40}, SIZE{40, 1}, SIZE{0, 9},
                                    SIZE{5, 5}, SIZE{90, 20}}) {
                control->move(0, 0, size.cx, size.cy);
                control->Refresh();
            }
            PropertyBag written;
            control->WriteProperties(written);
            if (kind.text != nullptr) {
                EXPECT_TRUE(written.ReadTextBytes(kind.text, {}) == text);
            }
            control->destroy();
            settle();
            EXPECT_EQ(control->hDC(), 0U);
            control->InitProperties();
            control->Enabled(false);
            control->Font({u"Tahoma", 10});
            control->Refresh();
            put(*control);
        }
    }
}

TEST_F(Controls, HandlersMayEndTheirControlMoveTheFocusAndRaise) {
    auto check = std::make_unique<ctlUniCheckXP>();
    put(*check);
    check->Click = [&] { check.reset(); };
    click(*check);
    EXPECT_EQ(check, nullptr);

    auto button = std::make_unique<ctlUniButtonXP>();
    put(*button);
    button->KeyPress = [&](std::int16_t&) { button.reset(); };
    type(*button, u' ');
    EXPECT_EQ(button, nullptr);

    PropertyBag automatic;
    automatic.WriteProperty(u"AutoSize", true, false);
    automatic.WriteTextBytes(u"Caption", u"stored", {});
    const std::pair<const char*, std::function<void(ctlUniLabelNoFlick&)>> kResizes[] = {
        {"Caption", [](auto& label) { label.Caption(u"longer"); }},
        {"Font", [](auto& label) { label.Font({.Size = 20}); }},
        {"properties", [&](auto& label) { label.ReadProperties(automatic); }},
    };
    for (const auto& [what, resize] : kResizes) {
        for (const bool object : {false, true}) {
            auto label = std::make_unique<ctlUniLabelNoFlick>();
            label->AutoSize(true);
            label->Caption(u"x");
            put(*label);
            label->Resize = [&] {
                if (object) {
                    label.reset();
                } else {
                    label->destroy();
                }
            };
            resize(*label);
            EXPECT_EQ(label == nullptr, object) << what;
            EXPECT_TRUE(object || label->hWnd() == 0) << what;
        }
    }

    ctlUniButtonXP first, second;
    put(first);
    put(second, {10, 50, 110, 74});
    first.MouseDown = [&](auto&, auto&, auto&, auto&) { second.SetFocus(); };
    press(first);
    EXPECT_TRUE(second.HasFocus());
    EXPECT_FALSE(first.accessibleState().pressed);
    release(first);

    test::Failures failures;
    ctlUniCheckXP raising;
    put(raising, {10, 90, 110, 114});
    raising.Click = [] { throw Failure(kOwnError, u"test", u"refused"); };
    click(raising);
    EXPECT_EQ(failures.take(), "refused\n");
    EXPECT_EQ(raising.Value(), 1) << "its state is whole";
    EXPECT_EQ(paintsOf(raising, [&] { raising.Caption(u"x"); }), 1) << "and it still paints";
}

// ---- Drags

using platform::DROPEFFECT_COPY;
using platform::DROPEFFECT_MOVE;

class Drags : public Controls {
protected:
    template <class Control> void listenToDrags(Control& control) {
        control.OLEStartDrag = [this](DataObject& data, std::int32_t& effects) {
            note("start");
            data.SetText(u"text");
            data.SetFiles({u"\\a.lng"});
            data.SetData(kFormatRichText);
            effects = allowed;
        };
        control.OLESetData = [this](DataObject& data, std::int16_t& format) {
            note("wanted" + std::to_string(format));
            data.SetData(format, Bytes{'r', 't', 'f'});
        };
        control.OLEGiveFeedback = [this](std::int32_t& effect, bool& usual) {
            note("feedback" + std::to_string(effect));
            usual = false;
        };
        control.OLECompleteDrag = [this](std::int32_t& effect) {
            note("done" + std::to_string(effect));
        };
        control.OLEDropMode(1);
        control.OLEDragOver = [this](DataObject&, std::int32_t&, auto&, auto&, float& x, auto&,
                                     std::int16_t& state) {
            note("over" + std::to_string(state) + '@' + std::to_string(static_cast<int>(x)));
        };
        control.OLEDragDrop = [this](DataObject& data, std::int32_t& effect, auto&, auto&, auto&,
                                     auto&) {
            const Bytes rich = data.GetData(kFormatRichText);
            note("drop " + toUtf8(data.GetText()) + ' ' + toUtf8(data.Files().at(0)) + ' ' +
                 std::string(rich.begin(), rich.end()));
            effect = DROPEFFECT_MOVE;
        };
    }
    std::int32_t allowed = DROPEFFECT_COPY | DROPEFFECT_MOVE;
};

TEST_F(Drags, GoOnlyWhereTheyAreTaken) {
    ctlUniFrameXP frame;
    put(frame);
    listenToDrags(frame);
    platform::DragContent content;
    content.text = u"\u00E4";
    content.files = {u"\\tmp\\a b.lng"};
    content.others = {{"text/rtf", Bytes{'r'}}};
    content.provide = [](const std::string&) { return Bytes{'?'}; };  // all of it is there
    const auto drag = [&](std::int32_t effects, bool drop) {
        return platform::test::dragInto(frame.hWnd(), {7, 8}, content, effects, drop);
    };
    EXPECT_EQ(drag(DROPEFFECT_COPY | DROPEFFECT_MOVE, true), DROPEFFECT_MOVE);
    EXPECT_EQ(taken(), "over0@7 over2@7 drop \u00E4 \\tmp\\a b.lng r ");
    EXPECT_EQ(drag(DROPEFFECT_COPY, true), 0) << "it wants to move, which is not allowed";
    EXPECT_EQ(taken(), "over0@7 over2@7 drop \u00E4 \\tmp\\a b.lng r ");
    EXPECT_EQ(drag(DROPEFFECT_COPY, false), DROPEFFECT_COPY);
    EXPECT_EQ(taken(), "over0@7 over2@7 over1@0 ") << "gone again";
    frame.OLEDropMode(0);
    EXPECT_EQ(drag(DROPEFFECT_COPY, true), 0);
    EXPECT_EQ(taken(), "");
}

TEST_F(Drags, GoFromOneControlToAnother) {
    ctlUniCheckXP check;
    ctlUniTextBoxXP box;
    put(check);
    put(box, {10, 50, 110, 74});
    listenToDrags(check);
    listenToDrags(box);
    const std::pair<HostWindow*, HostWindow*> kWays[] = {{&check, &box}, {&box, &check}};
    for (const auto& [from, to] : kWays) {
        platform::test::setDragHook([to = to](const platform::DragContent& content,
                                              std::int32_t effects,
                                              const platform::DragFeedback& feedback) {
            EXPECT_FALSE(feedback(DROPEFFECT_COPY)) << "the owner wants the window's own cursor";
            return platform::test::dragInto(to->hWnd(), {7, 8}, content, effects, true);
        });
        from->OLEDrag();
        EXPECT_EQ(taken(),
                  "start feedback1 over0@7 over2@7 wanted-16639 drop text \\a.lng rtf done2 ");
    }
    allowed = platform::DROPEFFECT_NONE;
    check.OLEDrag();
    EXPECT_EQ(taken(), "start done0 ") << "nothing is allowed: no drag";
}

TEST_F(Drags, MayEndTheirControl) {
    auto box = std::make_unique<ctlUniTextBoxXP>();
    platform::test::setDragHook([&](const platform::DragContent& content, std::int32_t effects,
                                    const platform::DragFeedback& feedback) {
        EXPECT_TRUE(feedback(DROPEFFECT_COPY));
        EXPECT_TRUE(feedback(DROPEFFECT_COPY)) << "nobody is there to be asked";
        EXPECT_TRUE(content.provide("text/rtf").empty());
        return effects;
    });
    for (const bool atTheStart : {false, true}) {
        box = std::make_unique<ctlUniTextBoxXP>();
        put(*box);
        listenToDrags(*box);
        if (atTheStart) {
            box->OLEStartDrag = [&](auto&, auto&) { box.reset(); };
        } else {
            box->OLEGiveFeedback = [&](auto&, auto&) { box.reset(); };
        }
        box->OLEDrag();
        EXPECT_EQ(taken(), atTheStart ? "" : "start ");
        EXPECT_EQ(box, nullptr);
    }
}

}  // namespace
