#include "controls/ctlUniTextBoxXP.h"

#include "controls/controlWindow_test.h"
#include "gfx/modCtlCommon_ctl_colors.h"
#include "platform/window/edit.h"
#include "platform/window/input.h"
#include "platform/window/surface.h"
#include "support/PlatformVersion.h"
#include "support/gui/Golden.h"

#include <algorithm>
#include <functional>
#include <optional>

using namespace platform;

namespace {

using platform::test::compose;
using platform::test::mouse;
using platform::test::MouseAction;
using platform::test::pressKey;
using platform::test::releaseKey;
using platform::test::settle;
using platform::test::typeText;

constexpr std::nullopt_t kSame = std::nullopt;  // handlers leave a code as it is

std::string number(double value) { return std::to_string(static_cast<int>(value)); }

void pressMouse(HWND edit, WPARAM button, MouseAction action = MouseAction::Press) {
    mouse(edit, action, {3, 4}, button, button);
}
void releaseMouse(HWND edit, WPARAM button) { mouse(edit, MouseAction::Release, {3, 4}, button); }
// As a shown picture has it.
std::uint32_t pixelOf(COLORREF color) {
    return static_cast<std::uint32_t>(redOf(color) << 16 | greenOf(color) << 8 | blueOf(color));
}

class TextBox : public ::test::ControlTest {
protected:
    void SetUp() override {
        ControlTest::SetUp();
        makeBox();
    }
    ~TextBox() override {
        setFailureHandler(nullptr);
        box.reset();
        other.destroy();
        settle();
    }

    // A fresh control that writes its events down: name, code or button, and the keys of Shift for
    // keys behind a slash, for the mouse ahead of the place.
    ctlUniTextBoxXP& makeBox(const std::function<void(ctlUniTextBoxXP&)>& prepare = {}) {
        box = std::make_unique<ctlUniTextBoxXP>();
        if (prepare) prepare(*box);
        EXPECT_TRUE(box->create(m_form.hWnd(), {10, 10, 130, 50}));
        listen(*box);
        box->SetFocus();
        settle();
        (void)taken();
        return *box;
    }
    void note(const std::string& event, const std::string& rest = {}) {
        m_log += event + (rest.empty() ? "" : ' ' + rest) + ';';
        const auto handler = on;
        if (handler) handler(event);
    }
    void listen(ctlUniTextBoxXP& b) {
        const auto key = [this](const char* name) {
            return [this, name](std::int16_t& code, std::int16_t& shift) {
                note(name, number(static_cast<std::uint16_t>(code)) +
                               (shift != 0 ? '/' + number(shift) : ""));
                if (changeCode) code = *changeCode;
            };
        };
        const auto button = [this](const char* name) {
            return [this, name](std::int16_t which) { note(name, number(which)); };
        };
        const auto at = [this](const char* name) {
            return [this, name](std::int16_t which, std::int16_t shift, float x, float y) {
                note(name, number(which) + ' ' + number(shift) + ' ' + number(x) + ',' + number(y));
            };
        };
        b.Change = [this] { note("Change"); };
        b.KeyDown = key("KeyDown");
        b.KeyPress = key("KeyPress");
        b.KeyUp = key("KeyUp");
        b.Click = button("Click");
        b.DblClick = button("DblClick");
        b.MouseDown = at("MouseDown");
        b.MouseMove = at("MouseMove");
        b.MouseUp = at("MouseUp");
        b.MouseWheel = [this](std::int16_t which, std::int16_t, float x, float y, bool down) {
            note("MouseWheel",
                 number(which) + ' ' + number(x) + ',' + number(y) + (down ? " down" : " up"));
        };
        b.IMEComposition = [this](const Text& text) { note("IMEComposition", toUtf8(text)); };
    }
    void key(std::int32_t code, TextView typed = {}, WPARAM modifiers = 0) {
        const HWND edit = box->hWnd();
        pressKey(edit, code, typed, modifiers);
        releaseKey(edit, code, modifiers);
    }
    // The text with the selection in brackets, or the caret as a bar; line breaks as slashes.
    std::string state() const {
        Text text = box->Text();
        const auto start = static_cast<std::size_t>(box->SelStart());
        const auto length = static_cast<std::size_t>(box->SelLength());
        if (length > 0) text.insert(start + length, u"]");
        text.insert(start, length > 0 ? u"[" : u"|");
        for (std::size_t i = 0; (i = text.find(u"\r\n", i)) != Text::npos;)
            text.replace(i, 2, u"/");
        return toUtf8(text);
    }

    // Another control beside it.
    void putOther() { ASSERT_TRUE(other.create(m_form.hWnd(), {140, 10, 200, 50})); }

    std::unique_ptr<ctlUniTextBoxXP> box;
    HostWindow other;
    std::function<void(const std::string&)> on;
    std::optional<std::int16_t> changeCode;
};

}  // namespace

TEST_F(TextBox, StoresWhatItsEditWindowSays) {
    box->Text(u"\u05D0\r\n\xD800");
    box->MultiLine(true);
    box->Locked(true);
    box->PasswordChar(u"*");
    box->RightToLeft(true);
    box->MaxLength(77);
    PropertyBag bag, again;
    box->WriteProperties(bag);
    EXPECT_EQ(bag.Count(), 6U);
    EXPECT_EQ(bag.ReadProperty(u"Text", Bytes()), (Bytes{0xD0, 0x05, 13, 0, 10, 0, 0x00, 0xD8}));
    EXPECT_EQ(bag.ReadProperty(u"PasswordChar", Text()), u"*");
    makeBox([&](ctlUniTextBoxXP& fresh) { fresh.ReadProperties(bag); });
    box->WriteProperties(again);
    EXPECT_TRUE(again == bag);
    box->InitProperties();
    EXPECT_EQ(box->Text(), u"") << "also while it runs";
    EXPECT_FALSE(box->MultiLine() || box->Locked());
}

TEST_F(TextBox, StartsWhenItsWindowAndItsPropertiesAreThere) {
    const struct {
        bool userMode, manual, fails;
        bool starts, startsLater;
    } kCases[] = {
        {true, false, false, true, true},
        {true, true, false, false, true},
        {false, false, false, false, false},
        {true, false, true, false, false},
    };
    for (const auto& c : kCases) {
        platform::test::failEditWindows(c.fails);
        makeBox([&](ctlUniTextBoxXP& fresh) {
            fresh.UserMode(c.userMode);
            fresh.ManualStart(c.manual);
            fresh.Text(u"before");
            fresh.ReadProperties([&] {
                PropertyBag bag;
                fresh.WriteProperties(bag);
                return bag;
            }());
            EXPECT_FALSE(fresh.IsStarted());
        });
        EXPECT_EQ(box->IsStarted(), c.starts);
        box->ExternalInitControl();
        EXPECT_EQ(box->IsStarted(), c.startsLater);
        EXPECT_EQ(box->Text(), u"before");
        EXPECT_EQ(IsWindow(box->hWnd()), c.startsLater);
        platform::test::failEditWindows(false);
    }
}

TEST_F(TextBox, KeepsItsValuesBeforeItsWindowAndAfterIt) {
    const auto use = [&] {
        box->Text(u"some text");
        box->SelStart(2);
        box->SelLength(3);
        box->SelText(u"x");
        box->CurrentLine(5);
        box->PasswordChar(u"#");
        box->ScrollBars(2);
        box->MultiLine(true);
        box->Alignment(2);
        box->NoHideSel(true);
        box->RightToLeft(true);
        box->Locked(true);
        box->BackColor(rgb(1, 2, 3));
        box->ForeColor(4);
        box->Font({.Size = 20});
        box->UseRoundRegions(true);
        box->ExternalInitControl();
        box->OLEDropMode(1);
        box->AccessibleName(u"name");
        box->MaxLength(4);
        EXPECT_EQ(box->SelStart() + box->SelLength() + box->CurrentLine(), 0);
        EXPECT_EQ(box->SelText(), u"");
        EXPECT_EQ(box->Text(), u"some") << "cut";
        EXPECT_EQ(box->MaxLength(), 4);
        EXPECT_TRUE(box->MultiLine() && box->RightToLeft() && box->Locked() && box->NoHideSel());
        EXPECT_TRUE(box->RoundedBorders());
    };
    box = std::make_unique<ctlUniTextBoxXP>();
    use();
    ASSERT_TRUE(box->create(m_form.hWnd(), {0, 0, 50, 30}));
    ASSERT_TRUE(box->IsStarted());
    EXPECT_EQ(box->Text(), u"some");
    EXPECT_EQ(GetWindowLongW(box->hWnd(), GWL_STYLE),
              static_cast<std::intptr_t>(0x50010000 | 0x201044 | 0x100 | 0x800 | 1));
    EXPECT_EQ(GetWindowLongW(box->hWnd(), GWL_EXSTYLE), 0x402000);
    EXPECT_NE(platform::test::describeAccessible(box->hWnd()).find("\"name\""), std::string::npos);
    box->Text(u"last");
    box->destroy();
    EXPECT_FALSE(box->IsStarted());
    EXPECT_EQ(box->Text(), u"last");
    use();
    ASSERT_TRUE(box->create(m_form.hWnd(), {0, 0, 50, 30}));
    EXPECT_EQ(box->Text(), u"some");
    box->Text(u"kept");
    m_form.Unload();
    EXPECT_FALSE(box->IsStarted());
    EXPECT_EQ(box->Text(), u"kept") << "also when the form takes the window away";
}

TEST_F(TextBox, MakesTheEditWindowWithTheStyleOfItsProperties) {
    constexpr std::intptr_t kPlain = 0x50010000;
    const struct {
        bool multiLine;
        int bars, alignment;
        std::intptr_t style;
    } kCases[] = {
        {false, 3, 0, kPlain | 0x80},    {false, 0, 1, kPlain | 0x82},
        {false, 0, 2, kPlain | 0x81},    {false, 0, 7, kPlain | 0x80},
        {true, 0, 0, kPlain | 0x1044},   {true, 1, 0, kPlain | 0x1010C4},
        {true, 2, 2, kPlain | 0x201045}, {true, 3, 0, kPlain | 0x3010C4},
        {true, 9, 1, kPlain | 0x1046},
    };
    for (const auto& c : kCases) {
        box->MultiLine(c.multiLine);
        box->ScrollBars(c.bars);
        box->Alignment(c.alignment);
        EXPECT_EQ(GetWindowLongW(box->hWnd(), GWL_STYLE), c.style);
    }
    RECT place;
    GetClientRect(box->hWnd(), place);
    EXPECT_EQ(place, (RECT{0, 0, 116, 36}));
    box->move(0, 0, 60, 3);
    GetClientRect(box->hWnd(), place);
    EXPECT_EQ(place, (RECT{0, 0, 56, 0}));
}

TEST_F(TextBox, MadeAnewItKeepsTextLimitAndFocus) {
    const std::pair<const char*, std::function<void(ctlUniTextBoxXP&)>> kWays[] = {
        {"MultiLine", [](ctlUniTextBoxXP& b) { b.MultiLine(true); }},
        {"Alignment", [](ctlUniTextBoxXP& b) { b.Alignment(1); }},
        {"ScrollBars", [](ctlUniTextBoxXP& b) { b.ScrollBars(2); }},
        {"NoHideSel", [](ctlUniTextBoxXP& b) { b.NoHideSel(true); }},
        {"RightToLeft", [](ctlUniTextBoxXP& b) { b.RightToLeft(true); }},
    };
    box->MaxLength(9);
    box->Text(u"kept text");
    for (const auto& [name, way] : kWays) {
        const HWND before = box->hWnd();
        taken();
        way(*box);
        EXPECT_NE(box->hWnd(), before) << name;
        EXPECT_FALSE(IsWindow(before));
        const HWND made = box->hWnd();
        way(*box);
        EXPECT_EQ(box->hWnd(), made) << name << ": the same value changes nothing";
        EXPECT_EQ(state(), "|kept text");
        EXPECT_EQ(box->MaxLength(), 9);
        EXPECT_EQ(GetFocus(), made);
        EXPECT_EQ(taken(), "") << "no Change";
    }
    platform::test::failEditWindows(true);
    box->MultiLine(false);
    platform::test::failEditWindows(false);
    EXPECT_FALSE(box->IsStarted());
    EXPECT_EQ(box->Text(), u"kept text") << "which it shows itself now";
    box->ExternalInitControl();
    EXPECT_EQ(state(), "|kept text");
}

TEST_F(TextBox, GivesTheFocusThatIsInsideOfItToTheEditWindow) {
    const HWND owner = box->HostWindow::hWnd();
    const HWND child = CreateWindowExW(0, u"EDIT", {}, WS_CHILD | WS_VISIBLE, 0, 0, 9, 9, owner);
    putOther();
    const std::pair<HWND, HWND> kCases[] = {
        {child, box->hWnd()}, {box->hWnd(), box->hWnd()}, {other.hWnd(), other.hWnd()}};
    for (const auto& [before, after] : kCases) {
        platform::SetFocus(before);
        SendMessageW(owner, WM_MOUSEACTIVATE, m_form.hWnd(), 0);
        EXPECT_EQ(GetFocus(), after);
    }
    box->SetFocus();
    EXPECT_EQ(GetFocus(), box->hWnd());
}

TEST_F(TextBox, RaisesChangeForEachOtherText) {
    const struct {
        bool multiLine, raise;
        const char* text;
        const char* events;
    } kCases[] = {
        {false, true, "new", "Change;Change;"},  // by the edit window, and by the control
        {true, true, "new", "Change;"},
        {false, true, "old", ""},
        {false, false, "new", ""},
        {true, false, "new", ""},
    };
    for (const auto& c : kCases) {
        makeBox([&](ctlUniTextBoxXP& fresh) {
            fresh.Text(u"old");
            fresh.MultiLine(c.multiLine);
            fresh.RaiseChangeEvent(c.raise);
        });
        box->Text(fromUtf8(c.text));
        EXPECT_EQ(taken(), c.events) << c.text;
        EXPECT_EQ(box->Text(), fromUtf8(c.text));
    }
    makeBox();
    typeText(box->hWnd(), u"x");
    EXPECT_EQ(taken(), "KeyDown 88;KeyPress 120;Change;KeyUp 88;");
    box->SelText(u"yz");
    EXPECT_EQ(taken(), "Change;");
}

TEST_F(TextBox, RaisesKeysAheadOfTheEditWindow) {
    const struct {
        const char* what;
        bool locked;
        std::int32_t code;
        const char16_t* typed;
        std::optional<std::int16_t> change;  // what handlers make of the code
        const char* events;
        const char* state;
    } kCases[] = {
        {"a letter", false, 'A', u"a", kSame, "KeyDown 65;KeyPress 97;Change;KeyUp 65;", "xya|z"},
        {"another letter", false, 'A', u"a", u'\u0436', "KeyDown 65;KeyPress 97;Change;KeyUp 65;",
         "xy\u0436|z"},
        {"a dropped one", false, 'A', u"a", 0, "KeyDown 65;KeyPress 97;KeyUp 65;", "xy|z"},
        {"a dropped key", false, VK_LEFT, u"", 0, "KeyDown 37;KeyUp 37;", "xy|z"},
        {"another key", false, VK_LEFT, u"", VK_HOME, "KeyDown 37;KeyUp 37;", "|xyz"},
        {"a letter, locked", true, 'A', u"a", kSame, "KeyDown 65;KeyPress 97;KeyUp 65;", "xy|z"},
        {"an arrow, locked", true, VK_LEFT, u"", kSame, "KeyDown 37;KeyUp 37;", "x|yz"},
        {"delete, locked", true, VK_DELETE, u"", kSame, "KeyDown 46;KeyUp 46;", "xy|z"},
        {"a lone half", false, VK_OTHER, u"\xDC00", kSame, "KeyDown 232;KeyPress 56320;KeyUp 232;",
         "xy|z"},
    };
    for (const auto& c : kCases) {
        makeBox();
        box->Text(u"xyz");
        box->SelStart(2);
        box->Locked(c.locked);
        taken();
        changeCode = c.change;
        key(c.code, c.typed);
        changeCode.reset();
        EXPECT_EQ(taken(), c.events) << c.what;
        EXPECT_EQ(state(), c.state) << c.what;
    }
}

TEST_F(TextBox, TakesCharactersBeyondOneUnitWhole) {
    EXPECT_EQ(SendMessageW(box->hWnd(), WM_UNICHAR, UNICODE_NOCHAR, 0), 1);
    SendMessageW(box->hWnd(), WM_UNICHAR, 0x1F600, 0);
    typeText(box->hWnd(), u"\U0001F601");
    SendMessageW(box->hWnd(), WM_UNICHAR, 0x20000, 0);  // its event has a code of 0
    EXPECT_EQ(box->Text(), u"\U0001F600\U0001F601\U00020000");
    changeCode = u'x';
    SendMessageW(box->hWnd(), WM_UNICHAR, 0x20000, 0);
    changeCode = 0;
    SendMessageW(box->hWnd(), WM_UNICHAR, 0x1F600, 0);
    changeCode.reset();
    EXPECT_EQ(box->Text(), u"\U0001F600\U0001F601\U00020000x");
}

TEST_F(TextBox, LockedItKeepsTheClipboardAndUndoAway) {
    platform::test::setClipboardText(u"clip");
    box->Text(u"xyz");
    typeText(box->hWnd(), u"w");
    box->Locked(true);
    box->SelStart(0);
    box->SelLength(2);
    for (const std::uint32_t uMsg : {WM_CUT, WM_PASTE, WM_CLEAR, WM_UNDO}) {
        SendMessageW(box->hWnd(), uMsg, 0, 0);
        EXPECT_EQ(state(), "[wx]yz");
    }
    SendMessageW(box->hWnd(), WM_COPY, 0, 0);
    EXPECT_EQ(platform::test::clipboardText(), u"wx");
    box->Locked(false);
    SendMessageW(box->hWnd(), WM_PASTE, 0, 0);
    EXPECT_EQ(state(), "wx|yz");
    box->SelStart(0);
    SendMessageW(box->hWnd(), WM_PASTE, 0, 0);
    EXPECT_EQ(state(), "wx|wxyz");
    SendMessageW(box->hWnd(), WM_UNDO, 0, 0);
    EXPECT_EQ(box->Text(), u"wxyz");
}

TEST_F(TextBox, TabMovesTheFocusUnlessItIsTrapped) {
    putOther();
    for (const bool multiLine : {false, true}) {
        makeBox([&](ctlUniTextBoxXP& fresh) { fresh.MultiLine(multiLine); });
        pressKey(box->hWnd(), VK_TAB, u"\t");
        EXPECT_EQ(GetFocus(), other.hWnd());
        EXPECT_EQ(taken(), "") << "the form has it";
        pressKey(GetFocus(), VK_TAB, u"\t");
        EXPECT_EQ(GetFocus(), box->hWnd()) << "back, into the edit window";

        box->TrapTabKey(true);
        key(VK_TAB, u"\t", MK_SHIFT);
        EXPECT_EQ(GetFocus(), box->hWnd());
        EXPECT_EQ(taken(), "KeyDown 9/1;KeyUp 9/1;");
        changeCode = 0;
        key(VK_TAB, u"\t");
        changeCode.reset();
        EXPECT_EQ(GetFocus(), box->hWnd());
        EXPECT_EQ(taken(), "KeyDown 9;KeyUp 9;");
        SendMessageW(box->hWnd(), WM_CHAR, VK_TAB, 1);
        EXPECT_EQ(box->Text(), u"") << "no tab ever gets into the text";
        EXPECT_EQ(taken(), "");
    }
}

TEST_F(TextBox, HearsTheKeysOfTheCaretAheadOfTheFormAndTheOthersBehindIt) {
    std::string heard;
    setKeyFilter(m_form.hWnd(), [&](HWND, std::uint32_t uMsg, WPARAM wParam, LPARAM) {
        if (uMsg == WM_KEYDOWN) heard += std::to_string(wParam) + ' ';
        return false;
    });
    box->Text(u"abc");
    for (const std::int32_t code : {VK_PRIOR, VK_END, VK_HOME, VK_RIGHT, VK_DOWN}) key(code);
    EXPECT_EQ(heard, "");
    EXPECT_EQ(state(), "ab|c");
    key(VK_RIGHT, {}, MK_SHIFT);
    EXPECT_EQ(state(), "ab[c]");
    key('X', u"x");
    key(VK_RETURN, u"\r");
    key(VK_F1);
    EXPECT_EQ(heard, "88 13 112 ");
}

TEST_F(TextBox, RaisesTheMouse) {
    box->Text(u"some words");
    const HWND edit = box->hWnd();
    taken();
    pressMouse(edit, MK_LBUTTON);
    mouse(edit, MouseAction::Move, {5, 6}, 0, MK_LBUTTON | MK_MBUTTON);
    mouse(edit, MouseAction::Release, {500, 4}, MK_LBUTTON);
    EXPECT_EQ(taken(), "MouseDown 1 0 3,4;MouseMove 5 0 5,6;MouseUp 1 0 500,4;Click 1;");
    mouse(edit, MouseAction::DoubleClick, {3, 4}, MK_LBUTTON, MK_LBUTTON | MK_CONTROL);
    releaseMouse(edit, MK_LBUTTON);
    EXPECT_EQ(taken(), "DblClick 1;MouseUp 1 0 3,4;");
    pressMouse(edit, MK_MBUTTON);
    releaseMouse(edit, MK_MBUTTON);
    EXPECT_EQ(taken(), "MouseDown 4 0 3,4;MouseUp 4 0 3,4;Click 4;");
    POINT at{7, 8};
    ClientToScreen(edit, at);
    const std::string place = std::to_string(at.x) + ',' + std::to_string(at.y);
    for (const int turned : {-120, 120, -15, 15}) {
        platform::test::wheel(edit, {7, 8}, turned);
        EXPECT_EQ(taken(), "MouseWheel 0 " + place + (turned < 0 ? " down;" : " up;")) << turned;
    }
    for (const bool menu : {true, false}) {
        box->EnableContextMenu(menu);
        pressMouse(edit, MK_RBUTTON);
        releaseMouse(edit, MK_RBUTTON);
        EXPECT_EQ(taken(), "MouseDown 2 0 3,4;MouseUp 2 0 3,4;Click 2;");
        EXPECT_EQ(platform::test::chooseFromMenu().empty(), !menu);
    }
}

TEST_F(TextBox, SetsItsPointerOverTheEditWindow) {
    struct Case {
        std::int16_t pointer;
        HCURSOR cursor;
        Picture icon = nullptr;
    };
    const HDC hDC = GetDC(0);
    const HBITMAP bitmap = CreateCompatibleBitmap(hDC, 8, 8);
    ReleaseDC(0, hDC);
    const Picture noIcon = OleCreatePictureIndirect({PICTYPE_BITMAP, bitmap}, true);
    const Case kCases[] = {{0, IDC_IBEAM},
                           {2, IDC_CROSS},
                           {11, IDC_WAIT},
                           {kCustomPointer, IDC_ARROW},
                           {kCustomPointer, IDC_ARROW, noIcon}};
    for (const auto& c : kCases) {
        box->MousePointer(c.pointer);
        box->MouseIcon(c.icon);
        mouse(box->hWnd(), MouseAction::Move, {3, 4}, 0);
        EXPECT_EQ(SetCursor(0), c.cursor) << c.pointer;
    }
}

TEST_F(TextBox, RaisesAKeyPressForEachUnitOfAComposedText) {
    const struct {
        std::optional<std::int16_t> change;
        std::int32_t limit;
        const char* state;
    } kCases[] = {
        {kSame, 0, "a\u304B\u3093|c"},
        {0, 0, "a|c"},
        {u'x', 0, "axx|c"},
        {kSame, 3, "a\u304B|c"},
    };
    for (const bool multiLine : {false, true}) {
        for (const auto& c : kCases) {
            makeBox([&](ctlUniTextBoxXP& fresh) {
                fresh.MultiLine(multiLine);
                fresh.Text(u"abc");
            });
            box->MaxLength(c.limit);
            box->SelStart(1);
            box->SelLength(1);
            taken();
            changeCode = c.change;
            compose(box->hWnd(), u"k");
            EXPECT_TRUE(box->IsInIME());
            pressKey(box->hWnd(), 'K');
            EXPECT_EQ(taken(), "Change;") << "the selection has gone; keys are the method's";
            compose(box->hWnd(), {}, u"\u304B\u3093");
            EXPECT_FALSE(box->IsInIME());
            EXPECT_EQ(taken(), std::string("IMEComposition \u304B\u3093;"
                                           "KeyPress 12363;KeyPress 12435;") +
                                   (c.change == 0 ? "" : "Change;"));
            EXPECT_EQ(state(), c.state);
            changeCode.reset();
        }
    }
    makeBox();
    const ::test::PlatformVersion old({4, 0, VER_PLATFORM_WIN32_NT});
    compose(box->hWnd(), {}, u"\u304B");
    EXPECT_EQ(taken(), "Change;") << "on an old system the edit window takes it itself";
}

TEST_F(TextBox, ACompositionEndsWhereTheInputMethodLosesTheField) {
    putOther();
    const std::pair<const char*, std::function<void()>> kWays[] = {
        {"text", [&] { box->Text(u"another"); }},
        {"locked", [&] { box->Locked(true), box->Locked(false); }},
        {"focus", [&] { other.SetFocus(), box->SetFocus(); }},
        {"made anew", [&] { box->Alignment(2); }},
    };
    for (const bool multiLine : {false, true}) {
        for (const auto& [what, way] : kWays) {
            makeBox([&](ctlUniTextBoxXP& fresh) { fresh.MultiLine(multiLine); });
            compose(box->hWnd(), u"k");
            EXPECT_TRUE(box->IsInIME());
            way();
            EXPECT_FALSE(box->IsInIME()) << what;
            taken();
            compose(box->hWnd(), {});  // of a method that ends it, too
            EXPECT_EQ(taken(), "") << what;
            key('A', u"a");
            EXPECT_EQ(taken(), "KeyDown 65;KeyPress 97;Change;KeyUp 65;") << what;
        }
    }
}

TEST_F(TextBox, SelectsAndReplaces) {
    box->MultiLine(true);
    box->Text(u"one\r\ntwo\r\nthree");
    box->SelStart(1);
    box->SelLength(4);
    EXPECT_EQ(state(), "o[ne/]two/three");
    EXPECT_EQ(box->SelText(), u"ne\r\n");
    box->SelText(u"\u0436\r\n");
    EXPECT_EQ(state(), "o\u0436/|two/three");
    SendMessageW(box->hWnd(), WM_UNDO, 0, 0);
    EXPECT_EQ(box->Text(), u"one\r\ntwo\r\nthree");
    box->SelLength(-5);
    EXPECT_GE(box->SelLength(), 0);
    box->CurrentLine(3);
    EXPECT_EQ(state(), "one/two/|three");
    EXPECT_EQ(box->CurrentLine(), 2) << "reads from 0, takes from 1";
    for (const std::int32_t none : {9, -5, INT32_MIN, INT32_MAX}) {
        box->CurrentLine(none);
        EXPECT_EQ(state(), "one/two/|three") << none;
    }
    box->SelLength(3);
    box->CurrentLine(0);
    EXPECT_EQ(state(), "one/two/|three") << "of the caret";
    box->SelStart(2);
    box->SelLength(INT32_MAX);
    EXPECT_EQ(state(), "on[e/two/three]");
}

TEST_F(TextBox, CutsALongerTextToANewLimit) {
    box->Text(u"0123456789");
    taken();
    EXPECT_EQ(box->MaxLength(), kNoTextLimit);
    box->MaxLength(4);
    EXPECT_EQ(box->Text(), u"0123");
    EXPECT_EQ(taken(), "Change;Change;");
    typeText(box->hWnd(), u"x");
    EXPECT_EQ(box->Text(), u"0123");
    for (const std::int32_t none : {0, -1, INT32_MIN}) {
        box->MaxLength(none);
        EXPECT_EQ(box->Text(), u"0123");
        EXPECT_EQ(box->MaxLength(), kNoTextLimit);
    }
    box->MaxLength(8);
    box->Text(u"0123456789");
    EXPECT_EQ(box->Text(), u"0123456789") << "the program is not held to it";
}

// ---- Handlers that do what nobody would

namespace {

// What raises each event.
const std::pair<const char*, std::function<void(HWND)>> kCauses[] = {
    {"KeyDown", [](HWND edit) { pressKey(edit, 'A', u"a"); }},
    {"KeyDown", [](HWND edit) { pressKey(edit, VK_LEFT); }},
    {"KeyDown", [](HWND edit) { pressKey(edit, VK_TAB); }},
    {"KeyPress", [](HWND edit) { pressKey(edit, 'A', u"a"); }},
    {"KeyPress", [](HWND edit) { compose(edit, {}, u"ab"); }},
    {"IMEComposition", [](HWND edit) { compose(edit, {}, u"ab"); }},
    {"KeyUp", [](HWND edit) { releaseKey(edit, 'A'); }},
    {"Change", [](HWND edit) { pressKey(edit, 'A', u"a"); }},
    {"Change", [](HWND edit) { pressKey(edit, VK_BACK); }},
    {"Change", [](HWND edit) { compose(edit, {}, u"ab"); }},
    {"MouseDown", [](HWND edit) { pressMouse(edit, MK_LBUTTON); }},
    {"MouseUp", [](HWND edit) { releaseMouse(edit, MK_RBUTTON); }},
    {"Click", [](HWND edit) { pressMouse(edit, MK_RBUTTON), releaseMouse(edit, MK_RBUTTON); }},
    {"DblClick", [](HWND edit) { pressMouse(edit, MK_LBUTTON, MouseAction::DoubleClick); }},
    {"MouseMove",
     [](HWND edit) {
         mouse(edit, MouseAction::Move, {3, 4}, 0);
     }},
    {"MouseWheel",
     [](HWND edit) {
         platform::test::wheel(edit, {3, 4}, 120);
     }},
};

}  // namespace

TEST_F(TextBox, SurvivesWhateverAHandlerDoes) {
    const auto refuse = [] { throw Failure(kOwnError, u"handler", u"no"); };
    const std::pair<const char*, std::function<void()>> kDeeds[] = {
        {"ends the control", [&] { box.reset(); }},
        {"ends its window", [&] { box->destroy(); }},
        {"ends the form", [&] { m_form.Unload(); }},
        {"makes the edit window anew", [&] { box->MultiLine(!box->MultiLine()); }},
        {"moves the focus", [&] { other.SetFocus(); }},
        {"sets the text", [&] { box->Text(u"another text"); }},
        {"hides it", [&] { box->Visible(false); }},
        {"fails", refuse},
    };
    int reported = 0;
    setFailureHandler([&](const std::exception_ptr&) { ++reported; });
    for (const auto& [deed, act] : kDeeds) {
        for (const auto& [event, cause] : kCauses) {
            for (const bool multiLine : {false, true}) {
                SCOPED_TRACE(std::string(event) + ' ' + deed);
                m_form.Show();
                other.destroy();
                putOther();
                makeBox([&](ctlUniTextBoxXP& fresh) {
                    fresh.MultiLine(multiLine);
                    fresh.TrapTabKey(true);
                    fresh.Text(u"ab");
                });
                box->SelStart(1);
                reported = 0;
                bool done = false;
                on = [&, wanted = event, &doIt = act](const std::string& raised) {
                    if (raised != wanted) return;
                    on = nullptr;
                    done = true;
                    doIt();
                };
                cause(box->hWnd());
                settle();
                on = nullptr;
                EXPECT_TRUE(done);
                EXPECT_LE(reported, deed == std::string("fails") ? 1 : 0);
                platform::test::chooseFromMenu();
                if (box == nullptr || !box->IsStarted()) continue;
                EXPECT_FALSE(box->IsInIME());
                box->Visible(true);
                box->Text(u"");
                typeText(box->hWnd(), u"q");
                EXPECT_EQ(box->Text(), u"q");
            }
        }
    }
    on = [&](const std::string&) { refuse(); };
    EXPECT_THROW(box->Text(u"x"), Failure) << "the caller's own doing";
    on = [&](const std::string& raised) {
        if (raised == "KeyDown") refuse();
    };
    reported = 0;
    pressKey(box->hWnd(), 'A', u"");
    EXPECT_EQ(reported, 1);
    pressKey(box->hWnd(), VK_LEFT);
    EXPECT_EQ(reported, 1) << "keys ahead of the form fail in silence";
    on = nullptr;
}

// ---- Looks

TEST_F(TextBox, GivesItsColoursToTheEditWindow) {
    const auto count = [&](COLORREF color) {
        settle();
        return std::ranges::count(platform::test::shownPicture(box->hWnd()).pixels, pixelOf(color));
    };
    RECT whole;
    GetClientRect(box->hWnd(), whole);
    const auto all = std::int64_t{whole.right} * whole.bottom;
    putOther();
    other.SetFocus();  // without a caret
    for (const Color color : {sysColor(5), rgb(10, 20, 30), sysColor(13)}) {
        box->BackColor(color);
        EXPECT_EQ(count(TranslateColor(color)), all);
    }
    box->BackColor(rgb(250, 250, 250));
    box->ForeColor(rgb(200, 0, 0));
    box->Font({.Size = 24, .Bold = true});
    box->Text(u"MMM");
    EXPECT_GT(count(rgb(200, 0, 0)), 20);
    box->Enabled(false);
    EXPECT_GT(count(GetSysColor(17)), 20);
}

TEST_F(TextBox, LooksAsItShould) {
    constexpr SIZE kSize{110, 21};
    const std::function<void(ctlUniTextBoxXP&)> kBoxes[] = {
        [](auto& b) { b.Text(u"Plain text"); },
        [](auto& b) { b.Text(u"Right"), b.Alignment(1); },
        [](auto& b) { b.Text(u"Centre"), b.Alignment(2); },
        [](auto& b) { b.Text(u"Rounded"), b.RoundedBorders(true); },
        [](auto& b) { b.Text(u"Bottom border"), b.OnlyBottomBorder(true); },
        [](auto& b) {
            b.Text(u"Colours");
            b.BackColor(rgb(255, 250, 205));
            b.ForeColor(rgb(160, 0, 0));
            b.BorderColor(rgb(0, 0, 160));
        },
        [](auto& b) { b.Text(u"Disabled"), b.Enabled(false); },
        [](auto& b) { b.Text(u"Locked"), b.Locked(true); },
        [](auto& b) { b.Text(u"secret"), b.PasswordChar(u"*"); },
        [](auto& b) { b.Text(u"\u05E9\u05DC\u05D5\u05DD abc!"), b.RightToLeft(true); },
        [](auto& b) { b.Text(u"Selected"), b.NoHideSel(true), b.SelStart(1), b.SelLength(4); },
        [](auto& b) { b.Text(u"Not started"), b.ManualStart(true); },
        [](auto& b) { b.Text(u"Not & started"), b.ManualStart(true), b.Alignment(1); },
        [](auto& b) { b.Text(u"secret"), b.PasswordChar(u"#"), b.ManualStart(true); },
        [](auto& b) { b.Text(u"Corners"), b.RoundedBorders(true), b.BackColorOut(255); },
        [](auto& b) { b.Text(u"Line 1\r\nLine 2\r\nLine 3"), b.MultiLine(true); },
        [](auto& b) { b.Text(u"Line 1\r\nLine 2"), b.MultiLine(true), b.ScrollBars(3); },
        [](auto& b) {
            b.Text(u"A longer text of several words, in the centre");
            b.MultiLine(true);
            b.Alignment(2);
        },
    };
    constexpr int kGap = 6, kColumns = 3;
    const int rows = static_cast<int>(std::size(kBoxes) + kColumns - 1) / kColumns;
    const auto tall = [](int row) { return row == rows - 1; };
    ::test::Picture sheet;
    sheet.width = kGap + kColumns * (kSize.cx + kGap);
    sheet.height = kGap + rows * (kSize.cy + kGap) + 3 * kSize.cy;
    sheet.pixels.assign(static_cast<std::size_t>(sheet.width) * sheet.height, 0xD4D0C8);
    box.reset();
    int index = 0;
    for (const auto& prepare : kBoxes) {
        const int row = index / kColumns, x = kGap + index % kColumns * (kSize.cx + kGap);
        const int y = kGap + row * (kSize.cy + kGap);
        ++index;
        ctlUniTextBoxXP shown;
        prepare(shown);
        ASSERT_TRUE(shown.create(m_form.hWnd(), {0, 0, kSize.cx, kSize.cy * (tall(row) ? 4 : 1)}));
        prepare(shown);  // the selection is one of the edit window
        settle();
        const auto picture = platform::test::shownPicture(shown.HostWindow::hWnd());
        for (int line = 0; line < picture.height; ++line) {
            const auto from = picture.pixels.begin() + line * picture.width;
            std::copy_n(from, picture.width, sheet.pixels.begin() + (y + line) * sheet.width + x);
        }
    }
    EXPECT_GOLDEN("controls/textboxes", sheet);
}

TEST_F(TextBox, IsAFieldWithANameForScreenReaders) {
    box->AccessibleName(u"Main file");
    box->Text(u"english.lng");
    const std::string told = platform::test::describeAccessible(box->hWnd());
    EXPECT_NE(told.find("\"Main file\""), std::string::npos) << told;
    EXPECT_NE(told.find("english.lng"), std::string::npos) << told;
    box->MultiLine(true);
    EXPECT_NE(platform::test::describeAccessible(box->hWnd()).find("\"Main file\""),
              std::string::npos)
        << "also when it is made anew";
    box->MultiLine(false);
    box->PasswordChar(u"*");
    EXPECT_EQ(platform::test::describeAccessible(box->hWnd()).find("english"), std::string::npos);
}
