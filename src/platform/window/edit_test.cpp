#include "platform/window/edit.h"

#include "platform/window/fonts.h"
#include "platform/window/input.h"
#include "platform/window/screen.h"
#include "platform/window/surface_internal.h"
#include "platform/window/testhooks.h"
#include "platform/window/window_internal.h"
#include "support/window/LoggedWindow.h"

#include <QAccessible>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>
#include <gtest/gtest.h>
#include <map>
#include <random>

using namespace platform;
using namespace platform::test;
using ::test::clientSize;
using ::test::LoggedWindow;
using ::test::MessageLog;

namespace {

constexpr std::uint32_t kLine = ES_AUTOHSCROLL;
constexpr std::uint32_t kPage = ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN;

// A main window with an edit window in it. Changes are written down as "EN_CHANGE".
class Edit : public testing::Test {
public:
    Edit() {
        main.on = [this](std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
            return answer(uMsg, wParam, lParam);
        };
        ShowWindow(main.hWnd(), SW_SHOW);
        settle();
    }
    ~Edit() override { settle(); }

    // In place of the one before. With the focus.
    HWND make(std::uint32_t style, std::uint32_t extendedStyle = 0, SIZE size = {120, 60}) {
        DestroyWindow(edit);
        edit = CreateWindowExW(extendedStyle, u"EDIT", {}, WS_CHILD | WS_VISIBLE | style, 2, 2,
                               size.cx, size.cy, main.hWnd());
        SetFocus(edit);
        settle();
        (void)log.take();
        changes = 0;
        return edit;
    }
    Text text() const { return GetWindowTextW(edit); }
    void set(TextView text, int anchor = 0, int caret = 0) {
        SetWindowTextW(edit, text);
        SendMessageW(edit, EM_SETSEL, anchor, caret);
        changes = 0;
    }
    [[nodiscard]] std::pair<std::int32_t, std::int32_t> selection() const {
        std::int32_t start = -1, end = -1;
        SendMessageW(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                     reinterpret_cast<LPARAM>(&end));
        return {start, end};
    }
    [[nodiscard]] ShownPicture picture() const { return shownPicture(edit); }
    // The text with the ends of the selection as [ and ], or the caret as |; CR and LF as < and >.
    std::string state() const {
        const auto [start, end] = selection();
        Text shown = text();
        const auto mark = [&](std::int32_t at, const char16_t* sign) {
            shown.insert(std::min<std::size_t>(static_cast<std::size_t>(at), shown.size()), sign);
        };
        if (start == end) {
            mark(start, u"|");
        } else {
            mark(end, u"]");
            mark(start, u"[");
        }
        std::replace(shown.begin(), shown.end(), u'\r', u'<');
        std::replace(shown.begin(), shown.end(), u'\n', u'>');
        return toUtf8(shown);
    }
    // The reverse of state.
    void show(std::string_view wanted) {
        Text text = fromUtf8(wanted);
        std::replace(text.begin(), text.end(), u'<', u'\r');
        std::replace(text.begin(), text.end(), u'>', u'\n');
        const auto take = [&](char16_t sign) {
            const std::size_t at = text.find(sign);
            if (at == Text::npos) return -1;
            text.erase(at, 1);
            return static_cast<int>(at);
        };
        int start = take(u'['), end = take(u']');
        if (start < 0) start = end = std::max(0, take(u'|'));
        set(text, start, end);
    }
    LRESULT send(std::uint32_t uMsg, WPARAM wParam = 0, LPARAM lParam = 0) {
        return SendMessageW(edit, uMsg, wParam, lParam);
    }
    void replaceSelection(const Text& with) {
        send(EM_REPLACESEL, 1, reinterpret_cast<LPARAM>(&with));
    }

    WindowHookScope hooks;
    MessageLog log;
    LoggedWindow main{log, "main", ::test::mainWindow()};
    HWND edit = 0;
    int changes = 0;
    std::function<void()> onChange;
    HBRUSH brush = 0;  // the answer to WM_CTLCOLOR...
    COLORREF textColor = 0;
    std::string asked;  // who asked for colours

private:
    std::optional<LRESULT> answer(std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
        if (uMsg == WM_COMMAND && hiWord(wParam) == EN_CHANGE &&
            static_cast<HWND>(lParam) == edit) {
            ++changes;
            if (onChange) onChange();
            return 0;
        }
        if (uMsg == WM_CTLCOLOREDIT || uMsg == WM_CTLCOLORSTATIC) {
            asked = uMsg == WM_CTLCOLOREDIT ? "edit" : "static";
            SetTextColor(static_cast<HDC>(wParam), textColor);
            return brush;
        }
        return std::nullopt;
    }
};

// A field of one line, and one of several.
class EditOfEachKind : public Edit, public testing::WithParamInterface<std::uint32_t> {
public:
    EditOfEachKind() { make(style); }
    const std::uint32_t style = GetParam();
};
INSTANTIATE_TEST_SUITE_P(Edit, EditOfEachKind, testing::Values(kLine, kPage),
                         [](const auto& kind) { return kind.param == kLine ? "Line" : "Page"; });

// A procedure in front of an edit window: writes down what comes and may keep it.
class Sink {
public:
    explicit Sink(HWND hWnd) : m_hWnd(hWnd) {
        m_old = reinterpret_cast<WNDPROC>(
            SetWindowLongW(hWnd, GWL_WNDPROC, reinterpret_cast<std::intptr_t>(procedure)));
        all()[hWnd] = this;
    }
    ~Sink() {
        SetWindowLongW(m_hWnd, GWL_WNDPROC, reinterpret_cast<std::intptr_t>(m_old));
        all().erase(m_hWnd);
    }
    Sink(const Sink&) = delete;
    Sink& operator=(const Sink&) = delete;
    std::string take() { return std::exchange(m_log, {}); }
    // True: the message stops here. wParam may be changed.
    std::function<bool(std::uint32_t uMsg, WPARAM& wParam, LPARAM lParam)> on;
    void keep(std::uint32_t kept) {
        on = [kept](std::uint32_t uMsg, WPARAM&, LPARAM) { return uMsg == kept; };
    }

private:
    static std::map<HWND, Sink*>& all() {
        static std::map<HWND, Sink*> sinks;
        return sinks;
    }
    static LRESULT procedure(HWND hWnd, std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
        Sink& self = *all().at(hWnd);
        self.note(uMsg, wParam, lParam);
        if (self.on && self.on(uMsg, wParam, lParam)) return 0;
        return CallWindowProcW(self.m_old, hWnd, uMsg, wParam, lParam);
    }
    void note(std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
        static const std::map<std::uint32_t, const char*> kNames{{WM_KEYDOWN, "down"},
                                                                 {WM_KEYUP, "up"},
                                                                 {WM_CHAR, "char"},
                                                                 {WM_CUT, "cut"},
                                                                 {WM_COPY, "copy"},
                                                                 {WM_PASTE, "paste"},
                                                                 {WM_CLEAR, "clear"},
                                                                 {WM_UNDO, "undo"},
                                                                 {WM_IME_STARTCOMPOSITION, "start"},
                                                                 {WM_IME_ENDCOMPOSITION, "end"},
                                                                 {WM_CONTEXTMENU, "menu"}};
        if (uMsg == WM_IME_COMPOSITION) {
            m_log += "composing " + string(GCS_COMPSTR, lParam) + '/' +
                     string(GCS_RESULTSTR, lParam) + ' ';
        } else if (const auto found = kNames.find(uMsg); found != kNames.end()) {
            m_log += found->second;
            if (uMsg <= WM_CHAR && uMsg >= WM_KEYDOWN) m_log += ' ' + std::to_string(wParam);
            m_log += ' ';
        }
    }
    std::string string(LPARAM index, LPARAM lParam) const {
        const HIMC context = ImmGetContext(m_hWnd);
        const auto bytes = ImmGetCompositionStringW(context, index, nullptr, 0);
        Text text(static_cast<std::size_t>(bytes) / 2, u'?');
        ImmGetCompositionStringW(context, index, text.data(), static_cast<std::uint32_t>(bytes));
        EXPECT_TRUE(ImmReleaseContext(m_hWnd, context));
        EXPECT_TRUE(text.empty() || (lParam & index) != 0);
        return toUtf8(text);
    }
    HWND m_hWnd;
    WNDPROC m_old;
    std::string m_log;
};

}  // namespace

TEST_F(Edit, IsMadeOnlyAsAChildOfALivingWindow) {
    EXPECT_EQ(CreateWindowExW(0, u"BUTTON", {}, WS_CHILD, 0, 0, 9, 9, main.hWnd()), 0U);
    EXPECT_EQ(CreateWindowExW(0, u"EDIT", {}, WS_CHILD, 0, 0, 9, 9, 0), 0U);
    edit = CreateWindowExW(WS_EX_LAYOUTRTL, u"Edit", u"title", WS_CHILD | kLine, 1, 2, 30, 40,
                           main.hWnd());
    EXPECT_EQ(GetParent(edit), main.hWnd());
    EXPECT_FALSE(IsWindowVisible(edit)) << "without WS_VISIBLE";
    EXPECT_EQ(text(), u"title");
    EXPECT_EQ(GetWindowTextLengthW(edit), 5);
    EXPECT_EQ(GetWindowLongW(edit, GWL_EXSTYLE), WS_EX_LAYOUTRTL);
    EXPECT_EQ(changes, 0) << "a title is no change";
    settle();
    EXPECT_EQ(changes, 0);
}

TEST_F(Edit, ItsScrollBarsAreOutsideOfItsClientArea) {
    const int bar = GetSystemMetrics(2);
    make(kLine);
    EXPECT_EQ(clientSize(edit), (SIZE{120, 60}));
    make(kPage | WS_VSCROLL);
    EXPECT_EQ(clientSize(edit), (SIZE{120 - bar, 60}));
    make(kPage | WS_HSCROLL | WS_VSCROLL, WS_EX_LAYOUTRTL);
    ShowWindow(main.hWnd(), SW_HIDE);
    SetWindowPos(edit, 0, 2, 2, 200, 90, SWP_NOZORDER);
    EXPECT_EQ(clientSize(edit), (SIZE{200 - bar, 90 - bar})) << "also before anybody sees it";
    SetWindowPos(edit, 0, 2, 2, 5, 5, SWP_NOZORDER);
    EXPECT_EQ(clientSize(edit), (SIZE{0, 0}));
}

TEST_P(EditOfEachKind, TakesWhatIsTypedInAnyScriptAsOneChangePerCharacter) {
    const struct {
        Text typed;
        int changes;
    } kCases[] = {
        {u"plain", 5},       {u"Текст \u0451", 7}, {u"\u05E9\u05DC\u05D5\u05DD abc", 8},
        {u"\U0001F600x", 2},  // a pair of units comes as two messages
        {u"a\u00A0b", 3},
    };
    for (const auto& c : kCases) {
        make(style);
        typeText(edit, c.typed);
        EXPECT_EQ(text(), c.typed);
        EXPECT_EQ(changes, c.changes) << toUtf8(c.typed);
        EXPECT_EQ(GetWindowTextLengthW(edit), static_cast<int>(c.typed.size()));
    }
    make(style);
    EXPECT_EQ(send(WM_UNICHAR, UNICODE_NOCHAR), 1);
    send(WM_UNICHAR, 0x1F600);
    send(WM_UNICHAR, 0xD800);
    EXPECT_EQ(text(), u"\U0001F600");
}

TEST_F(Edit, MovesAndDeletesByKeys) {
    constexpr WPARAM kShift = MK_SHIFT, kControl = MK_CONTROL;
    const struct {
        std::uint32_t style;
        const char* before;
        std::int32_t key;
        WPARAM modifiers;
        const char* after;
    } kCases[] = {
        {kLine, "ab|c", VK_LEFT, 0, "a|bc"},
        {kLine, "ab|c", VK_UP, 0, "a|bc"},
        {kLine, "ab|c", VK_DOWN, 0, "abc|"},
        {kLine, "a|bc", VK_RIGHT, kShift, "a[b]c"},
        {kLine, "one t|wo", VK_LEFT, kControl, "one |two"},
        {kLine, "ab|c", VK_HOME, 0, "|abc"},
        {kLine, "a|bc", VK_END, kShift, "a[bc]"},
        {kLine, "a[b]c", VK_DELETE, 0, "a|c"},
        {kLine, "a|bc", VK_DELETE, 0, "a|c"},
        {kLine, "a[b]c", VK_BACK, 0, "a|c"},
        {kLine, "|abc", VK_BACK, 0, "|abc"},
        {kLine, "one two|", VK_BACK, kControl, "one |"},
        {kLine, "a[b]c", VK_RETURN, 0, "a[b]c"},
        {kLine, "a[b]c", VK_TAB, 0, "a[b]c"},
        {kLine, "a[b]c", VK_ESCAPE, 0, "a[b]c"},
        {kPage, "ab<>c|d", VK_UP, 0, "a|b<>cd"},
        {kPage, "ab<>cd|", VK_UP, kShift, "ab[<>cd]"},
        {kPage, "a|b<>cd", VK_DOWN, 0, "ab<>c|d"},
        {kPage, "a|b<>cd", VK_END, kControl, "ab<>cd|"},
        {kPage, "ab<>c|d", VK_HOME, 0, "ab<>|cd"},
        {kPage, "ab<>c|d", VK_PRIOR, 0, "a|b<>cd"},
        {kPage, "a[b<>c]d", VK_LEFT, 0, "a|b<>cd"},
        {kPage, "a[b<>c]d", VK_RIGHT, 0, "ab<>c|d"},
        {kPage, "ab|<>cd", VK_DELETE, 0, "ab|cd"},
        {kPage, "ab<>|cd", VK_BACK, 0, "ab|cd"},
        {kPage, "a[b<>c]d", VK_RETURN, 0, "a<>|d"},
        {kPage, "a|b", VK_TAB, 0, "a\t|b"},
    };
    for (const auto& c : kCases) {
        make(c.style);
        show(c.before);
        pressKey(edit, c.key, {}, c.modifiers);
        releaseKey(edit, c.key, c.modifiers);
        EXPECT_EQ(state(), c.after) << c.before << " key " << c.key;
    }
}

TEST_F(Edit, ArrowKeysGoToTheirSideAlsoWhereTextReadsFromTheRight) {
    const struct {
        const char* before;
        std::int32_t key;
        const char* after;
    } kCases[] = {
        {"א|בג", VK_LEFT, "אב|ג"},
        {"א|בג", VK_RIGHT, "|אבג"},
        {"א[ב]ג", VK_LEFT, "אב|ג"},
        {"א[ב]ג", VK_RIGHT, "א|בג"},
    };
    const std::pair<std::uint32_t, std::uint32_t> kFields[] = {
        {kLine, WS_EX_LAYOUTRTL}, {kPage, WS_EX_LAYOUTRTL}, {kPage, 0}};
    for (const auto& [style, extendedStyle] : kFields) {
        make(style, extendedStyle);
        for (const auto& c : kCases) {
            show(c.before);
            pressKey(edit, c.key);
            EXPECT_EQ(state(), c.after) << c.before << " key " << c.key << " style " << style;
        }
    }
}

TEST_F(Edit, GoesUpInTheColumnWhereTypingHasEnded) {
    const std::pair<const char*, std::function<void()>> kWays[] = {
        {"typed", [&] { typeText(edit, u"de"); }},
        {"pasted", [&] { setClipboardText(u"de"), send(WM_PASTE); }},
        {"deleted", [&] { typeText(edit, u"dex"), pressKey(edit, VK_BACK); }},
        {"composed", [&] { compose(edit, u"d"), compose(edit, {}, u"de"); }},
    };
    for (const auto& [what, way] : kWays) {
        make(kPage);
        typeText(edit, u"abc");
        pressKey(edit, VK_RETURN, u"\r");
        way();
        pressKey(edit, VK_UP);
        EXPECT_EQ(state(), "ab|c<>de") << what;
    }
}

TEST_F(Edit, CountsUnitsAndKeepsLineBreaksAsTheyWereSet) {
    const struct {
        Text text;
        int lines;
    } kTexts[] = {
        {u"", 1},
        {u"a\r\nb\r\n", 3},
        {u"a\nb\rc\r\nd", 4},
        {u"a\n\r\nb\r\rc\u2029d\ufdd0e\ufdd1f\u2028g", 9},
        {u"\U0001F600\r\n\u00A0\xD800z", 2},
        {Text(u"a\0\u0001b\r\n\uFFFF\u200F", 8), 2},
    };
    make(kPage | WS_HSCROLL);
    for (const auto& c : kTexts) {
        set(c.text);
        EXPECT_EQ(text(), c.text);
        EXPECT_EQ(GetWindowTextLengthW(edit), static_cast<int>(c.text.size()));
        EXPECT_EQ(send(EM_LINEFROMCHAR, static_cast<WPARAM>(c.text.size())), c.lines - 1);
        int last = -1;
        for (int line = 0; line < c.lines; ++line) {
            const auto start = static_cast<int>(send(EM_LINEINDEX, line));
            EXPECT_GT(start, last) << toUtf8(c.text) << " line " << line;
            EXPECT_EQ(send(EM_LINEFROMCHAR, start), line);
            last = start;
        }
        EXPECT_EQ(send(EM_LINEINDEX, c.lines), -1);
    }
    EXPECT_EQ(send(EM_LINEINDEX, -7), -1);
    make(kLine);
    for (const auto& c : kTexts) {
        set(c.text);
        EXPECT_EQ(text(), c.text);
        EXPECT_EQ(send(EM_LINEFROMCHAR, static_cast<WPARAM>(c.text.size())), 0);
    }
}

TEST_F(Edit, CountsLinesAsTheyAreShownWhenTheyAreBroken) {
    make(kPage);
    set(u"word word word word word word word word word word word\r\nend");
    const auto last = send(EM_LINEFROMCHAR, GetWindowTextLengthW(edit));
    EXPECT_GT(last, 2);
    const auto second = static_cast<int>(send(EM_LINEINDEX, 1));
    EXPECT_EQ(second % 5, 0) << "at a word";
    EXPECT_EQ(send(EM_LINEFROMCHAR, second), 1);
    send(EM_SETSEL, second + 1, second + 1);
    EXPECT_EQ(send(EM_LINEINDEX, -1), second);
    EXPECT_EQ(send(EM_LINEFROMCHAR, -1), 1);
    EXPECT_EQ(send(EM_LINEINDEX, last), GetWindowTextLengthW(edit) - 3);
}

TEST_P(EditOfEachKind, SelectsInsideTheTextOnly) {
    const struct {
        int anchor, caret;
        const char *line, *page;
    } kCases[] = {
        {1, 2, "a[b]cdef", "a[b]<>cd"},
        {2, 1, "a[b]cdef", "a[b]<>cd"},
        {0, -1, "[abcdef]", "[ab<>cd]"},
        {4, 99, "abcd[ef]", "ab<>[cd]"},
        {-5, 1, "[a]bcdef", "[a]b<>cd"},
        {99, 99, "abcdef|", "ab<>cd|"},
        {5, INT32_MAX, "abcde[f]", "ab<>c[d]"},
        {1, 3, "a[bc]def", "a[b]<>cd"},  // nothing ends between CR and LF
    };
    for (const auto& c : kCases) {
        set(style == kLine ? u"abcdef" : u"ab\r\ncd", c.anchor, c.caret);
        EXPECT_EQ(state(), style == kLine ? c.line : c.page) << c.anchor;
    }
    send(EM_SETSEL, 2, 1);
    send(EM_SETSEL, -1, 0);
    EXPECT_EQ(state(), style == kLine ? "a|bcdef" : "a|b<>cd") << "the caret stays";
    EXPECT_EQ(changes, 0);
}

TEST_P(EditOfEachKind, HoldsToTheLimitOnEveryWayIn) {
    using Way = std::function<void()>;
    const auto type = [&](TextView typed) { return Way([=, this] { typeText(edit, typed); }); };
    const Way paste = [&] { send(WM_PASTE); };
    const Way put = [&] { replaceSelection(u"x\U0001F600"); };
    const Way composed = [&] { compose(edit, u"long"), compose(edit, {}, u"xyz"); };
    const struct {
        const char* before;
        int limit;
        Way enter;
        const char *line, *page;
    } kCases[] = {
        {"abc|", 4, type(u"xyz"), "abcx|", "abcx|"},
        {"a[bc]", 3, type(u"xyz"), "axy|", "axy|"},
        {"abc|", 4, type(u"\U0001F600y"), "abcy|", "abcy|"},
        {"abc|", 4, paste, "abc1|", "abc1|"},
        {"abcd|", 2, paste, "abcd|", "abcd|"},
        {"[abcd]", 2, paste, "12|", "12|"},
        {"a[b]", 5, paste, "a12 3|", "a12<>|"},
        {"abc|", 5, put, "abcx|", "abcx|"},
        {"abc|", 5, composed, "abcxy|", "abcxy|"},
        {"abc|", 0, paste, "abc12 3|", "abc12<>3|"},
        {"abc|", -1, type(u"x"), "abcx|", "abcx|"},
    };
    setClipboardText(u"12\n3");
    for (const auto& c : kCases) {
        make(style);
        show(c.before);
        send(EM_LIMITTEXT, c.limit);
        EXPECT_EQ(send(EM_GETLIMITTEXT), c.limit > 0 ? c.limit : kNoTextLimit);
        c.enter();
        EXPECT_EQ(state(), style == kLine ? c.line : c.page) << c.before;
    }
    SetWindowTextW(edit, u"longer than the limit");
    EXPECT_EQ(text(), u"longer than the limit") << "what is set stays";
}

TEST_F(Edit, MovesTextThroughTheClipboardUnchanged) {
    make(kPage);
    show("[a\u00A0b<>c]d");
    send(WM_COPY);
    EXPECT_EQ(clipboardText(), u"a\u00A0b\nc");
    send(WM_CUT);
    EXPECT_EQ(state(), "|d");
    send(WM_PASTE);
    send(WM_PASTE);
    EXPECT_EQ(state(), "a\u00A0b<>ca\u00A0b<>c|d");
    make(kLine);
    setClipboardText(u"1\r\n\r\n2\u00A03");
    send(WM_PASTE);
    EXPECT_EQ(text(), u"1 2\u00A03");
    show("a[b\u00A0]c");
    send(WM_CUT);
    EXPECT_EQ(clipboardText(), u"b\u00A0");
    show("a[b]c");
    send(WM_CLEAR);
    EXPECT_EQ(state(), "a|c");
    send(WM_CLEAR);
    EXPECT_EQ(state(), "a|c") << "nothing is selected";
}

TEST_F(Edit, SendsTheKeysOfTheClipboardAsMessages) {
    make(kLine);
    show("a[b]c");
    Sink sink(edit);
    const struct {
        std::int32_t key;
        WPARAM modifiers;
        const char* messages;
    } kCases[] = {
        {'C', MK_CONTROL, "down 67 char 3 copy up 67 "},
        {'V', MK_CONTROL, "down 86 char 22 paste up 86 "},
        {'X', MK_CONTROL, "down 88 char 24 cut up 88 "},
        {'Z', MK_CONTROL, "down 90 char 26 undo up 90 "},
        {VK_INSERT, MK_CONTROL, "down 45 copy up 45 "},
        {VK_INSERT, MK_SHIFT, "down 45 paste up 45 "},
        {VK_DELETE, MK_SHIFT, "down 46 cut up 46 "},
    };
    for (const auto& c : kCases) {
        pressKey(edit, c.key, {}, c.modifiers);
        releaseKey(edit, c.key, c.modifiers);
        EXPECT_EQ(sink.take(), c.messages);
    }
    pressKey(edit, 'A', {}, MK_CONTROL);
    EXPECT_EQ(send(EM_GETSEL), makeLParam(0, GetWindowTextLengthW(edit)));
}

TEST_P(EditOfEachKind, UndoesAndRedoesWhatThePersonDid) {
    set(u"set ", 4, 4);
    EXPECT_EQ(send(EM_CANUNDO), 0) << "a text that is set is a fresh start";
    typeText(edit, u"typed");
    EXPECT_EQ(send(EM_CANUNDO), 1);
    pressKey(edit, 'Z', {}, MK_CONTROL);
    EXPECT_EQ(text(), u"set ");
    pressKey(edit, 'Y', {}, MK_CONTROL);
    EXPECT_EQ(text(), u"set typed");
    send(WM_UNDO);
    pressKey(edit, 'Z', {}, MK_CONTROL | MK_SHIFT);
    EXPECT_EQ(text(), u"set typed");
    send(EM_SETSEL, 0, 3);
    replaceSelection(u"put");
    EXPECT_EQ(text(), u"put typed");
    send(EM_UNDO);
    EXPECT_EQ(text(), u"set typed") << "one step";
    const Text last = u"!";
    send(EM_REPLACESEL, 0, reinterpret_cast<LPARAM>(&last));
    EXPECT_EQ(send(EM_CANUNDO), 0);
}

TEST_P(EditOfEachKind, ReadOnlyItTakesTheProgramsTextAndMovesTheCaret) {
    make(style | ES_READONLY);
    show("a[b]c");
    setClipboardText(u"clip");
    typeText(edit, u"x");
    for (const std::uint32_t uMsg : {WM_CUT, WM_PASTE, WM_CLEAR, WM_UNDO}) send(uMsg);
    for (const std::int32_t key : {VK_DELETE, VK_BACK}) pressKey(edit, key);
    compose(edit, u"x", u"y");
    EXPECT_EQ(state(), "a[b]c");
    pressKey(edit, VK_RIGHT);
    EXPECT_EQ(state(), "ab|c");
    replaceSelection(u"put");
    EXPECT_EQ(state(), "abput|c");
    EXPECT_NE(GetWindowLongW(edit, GWL_STYLE) & ES_READONLY, 0);
    send(EM_SETREADONLY, 0);
    EXPECT_EQ(GetWindowLongW(edit, GWL_STYLE) & ES_READONLY, 0);
    typeText(edit, u"x");
    EXPECT_EQ(state(), "abputx|c");
}

TEST_P(EditOfEachKind, ProceduresInFrontChangeAndKeepKeys) {
    Sink sink(edit);
    sink.on = [](std::uint32_t uMsg, WPARAM& wParam, LPARAM) {
        if (uMsg == WM_CHAR && wParam == 'a') wParam = u'\u0436';
        if (uMsg == WM_KEYDOWN && wParam == VK_RIGHT) wParam = VK_LEFT;
        return (uMsg == WM_CHAR && wParam == 'x') || (uMsg == WM_KEYDOWN && wParam == VK_HOME);
    };
    typeText(edit, u"abxc");
    EXPECT_EQ(state(), "\u0436bc|");
    pressKey(edit, VK_RIGHT, {}, MK_SHIFT);
    EXPECT_EQ(state(), "\u0436b[c]") << "another key with the same modifiers";
    pressKey(edit, VK_HOME);
    EXPECT_EQ(state(), "\u0436b[c]");
}

TEST_F(Edit, KeysThatAFilterSendsOnKeepTheirModifiers) {
    make(kLine);
    show("ab|c");
    setKeyFilter(edit, [](HWND hWnd, std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
        if (wParam < VK_PRIOR || wParam > VK_DOWN) return false;
        SendMessageW(hWnd, uMsg, wParam, lParam);
        return true;
    });
    pressKey(edit, VK_HOME, {}, MK_SHIFT);
    EXPECT_EQ(state(), "[ab]c");
}

TEST_P(EditOfEachKind, ComposesThroughMessages) {
    const struct {
        const char* before;
        std::vector<std::pair<Text, Text>> events;  // being composed, result
        const char* messages;
        const char* after;
        int changes;
    } kCases[] = {
        {"a|b",
         {{u"k", u""}, {u"\u304B", u""}, {u"", u"\u304B\u3093"}},
         "start composing k/ composing \u304B/ composing /\u304B\u3093 end ",
         "a\u304B\u3093|b",
         1},
        {"a[b]c", {{u"k", u""}, {u"", u""}}, "start composing k/ composing / end ", "a|c", 1},
        {"|", {{u"", u"\u00E9"}}, "start composing /\u00E9 end ", "\u00E9|", 1},
        {"|",
         {{u"x", u""}, {u"y", u"1"}, {u"", u"2"}},
         "start composing x/ composing y/1 composing /2 end ",
         "12|",
         2},
        {"a|", {{u"", u""}}, "", "a|", 0},
    };
    for (const auto& c : kCases) {
        make(style);
        show(c.before);
        Sink sink(edit);
        for (const auto& [composed, result] : c.events) compose(edit, composed, result);
        EXPECT_EQ(sink.take(), c.messages);
        EXPECT_EQ(state(), c.after);
        EXPECT_EQ(changes, c.changes) << c.messages;
    }
}

TEST_P(EditOfEachKind, LeavesTheResultOfAnInputMethodToAProcedureInFront) {
    show("a[b]c");
    Sink sink(edit);
    sink.on = [&](std::uint32_t uMsg, WPARAM&, LPARAM lParam) {
        if (uMsg != WM_IME_COMPOSITION || (lParam & GCS_RESULTSTR) == 0) return false;
        EXPECT_EQ(state(), "a|c") << "what was being composed is gone";
        replaceSelection(u"OK");
        return true;
    };
    compose(edit, u"k");
    compose(edit, {}, u"\u304B");
    EXPECT_EQ(state(), "aOK|c");
    compose(edit, u"k");
    compose(edit, {});
    EXPECT_EQ(state(), "aOK|c") << "nothing stays behind";
    sink.on = nullptr;
    compose(edit, {}, u"xy", -2, 2);
    EXPECT_EQ(state(), "axy|c") << "a result in place of what stands before the caret";
    if (style == kPage) {
        const auto* page = dynamic_cast<QPlainTextEdit*>(widgetOf(edit));
        EXPECT_EQ(page->textCursor().block().layout()->preeditAreaText(), QString());
    }
    sink.keep(WM_IME_COMPOSITION);
    show("a[b]c");
    compose(edit, u"k");
    EXPECT_EQ(state(), "a|c") << "it is shown all the same, in place of the selection";
    compose(edit, {});
    EXPECT_EQ(ImmGetContext(main.hWnd()), 0U);
}

TEST_P(EditOfEachKind, SurvivesAParentThatEndsItAtAChange) {
    const std::pair<const char*, std::function<void()>> kWays[] = {
        {"typing", [&] { pressKey(edit, 'A', u"ab"); }},
        {"a key", [&] { pressKey(edit, VK_BACK); }},
        {"paste", [&] { send(WM_PASTE); }},
        {"cut", [&] { send(WM_CUT); }},
        {"undo", [&] { send(WM_UNDO); }},
        {"the program", [&] { replaceSelection(u"x"); }},
        {"composing", [&] { compose(edit, u"x"); }},
        {"a result", [&] { compose(edit, u"", u"x"); }},
        {"the menu", [&] { send(WM_CONTEXTMENU, 0, -1), chooseFromMenu("Delete"); }},
    };
    setClipboardText(u"clip");
    for (const auto& [name, way] : kWays) {
        make(style);
        set(u"ab");
        typeText(edit, u"c");
        send(EM_SETSEL, 0, 2);
        onChange = [this] { DestroyWindow(edit); };
        way();
        EXPECT_FALSE(IsWindow(edit)) << name;
        onChange = nullptr;
        settle();
    }
    make(kLine);
    onChange = [this] { DestroyWindow(edit); };
    SetWindowTextW(edit, u"new");
    EXPECT_FALSE(IsWindow(edit));
}

TEST_P(EditOfEachKind, TellsOfATextThatIsSetOnlyFromALine) {
    SetWindowTextW(edit, u"x");
    settle();
    EXPECT_EQ(changes, style == kLine ? 1 : 0);
}

TEST_P(EditOfEachKind, AsksItsParentForColoursAtEachPaint) {
    brush = CreateSolidBrush(rgb(0, 128, 255));
    textColor = rgb(255, 0, 0);
    const auto pixel = [&](int x, int y) {
        const auto shown = picture();
        return shown.pixels[static_cast<std::size_t>(y) * shown.width + x];
    };
    InvalidateRect(edit);
    settle();
    EXPECT_EQ(asked, "edit");
    EXPECT_EQ(pixel(100, 50), 0x0080FFU);
    EXPECT_EQ(pixel(0, 0), 0x0080FFU);
    DeleteObject(std::exchange(brush, CreateSolidBrush(rgb(1, 2, 3))));
    EXPECT_EQ(pixel(100, 50), 0x010203U) << "in the first paint already";
    DeleteObject(std::exchange(brush, 0));
    send(EM_SETREADONLY, 1);
    settle();
    EXPECT_EQ(asked, "static");
    send(EM_SETREADONLY, 0);
    EnableWindow(main.hWnd(), false);
    asked.clear();
    InvalidateRect(edit);
    settle();
    EXPECT_EQ(asked, "static") << "disabled";
}

TEST_P(EditOfEachKind, ShowsTheSelectionWithTheFocusOrWhenItShallNotHide) {
    const auto selected = [&] {
        settle();
        return std::ranges::count(picture().pixels, pixelOf(GetSysColor(13)) & 0xFFFFFF) > 20;
    };
    for (const bool stays : {false, true}) {
        make(style | (stays ? ES_NOHIDESEL : 0));
        show("a[bcdef]g");
        EXPECT_TRUE(selected());
        SetFocus(main.hWnd());
        EXPECT_EQ(selected(), stays);
        EXPECT_EQ(state(), "a[bcdef]g") << "it is only hidden";
        SetFocus(edit);
        EXPECT_TRUE(selected());
        EXPECT_EQ(state(), "a[bcdef]g");
    }
}

TEST_P(EditOfEachKind, TakesTheFocusByAPressThatNobodyKeeps) {
    set(u"a b");
    SetFocus(main.hWnd());
    Sink sink(edit);
    sink.keep(WM_LBUTTONDOWN);
    mouse(edit, MouseAction::Press, {60, 10}, MK_LBUTTON, MK_LBUTTON);
    EXPECT_EQ(GetFocus(), main.hWnd());
    sink.on = nullptr;
    mouse(edit, MouseAction::Press, {60, 10}, MK_LBUTTON, MK_LBUTTON);
    mouse(edit, MouseAction::Release, {60, 10}, MK_LBUTTON);
    EXPECT_EQ(GetFocus(), edit);
    EXPECT_EQ(state(), "a b|");
}

TEST_P(EditOfEachKind, ADoubleClickSelectsAWordUnlessItIsKept) {
    set(u"word");
    Sink sink(edit);
    sink.keep(WM_LBUTTONDBLCLK);
    mouse(edit, MouseAction::DoubleClick, {3, 10}, MK_LBUTTON, MK_LBUTTON);
    EXPECT_EQ(state(), "|word");
    sink.on = nullptr;
    mouse(edit, MouseAction::DoubleClick, {3, 10}, MK_LBUTTON, MK_LBUTTON);
    EXPECT_EQ(state(), "[word]");
}

TEST_F(Edit, APressInsideOfTheSelectionBeginsAnotherOne) {
    for (const std::uint32_t style : {kLine, kPage, kPage | ES_READONLY}) {
        make(style);
        const auto press = [&](WPARAM keys) {
            show("[abc]d");
            mouse(edit, MouseAction::Press, {3, 8}, MK_LBUTTON, MK_LBUTTON | keys);
        };
        press(MK_SHIFT);
        EXPECT_EQ(state(), "|abcd") << "from where it began up to here";
        mouse(edit, MouseAction::Release, {3, 8}, MK_LBUTTON);
        press(0);
        EXPECT_EQ(state(), "|abcd");
        mouse(edit, MouseAction::Move, {100, 8}, 0, MK_LBUTTON);
        EXPECT_EQ(state(), "[abcd]") << "nothing is dragged away";
        mouse(edit, MouseAction::Release, {100, 8}, MK_LBUTTON);
    }
}

TEST_P(EditOfEachKind, OffersItsMenuAtTheReleaseOfTheRightButton) {
    setClipboardText(u"");
    show("a[b]c");
    const auto click = [&] {
        mouse(edit, MouseAction::Press, {60, 10}, MK_RBUTTON, MK_RBUTTON);
        EXPECT_EQ(chooseFromMenu(), "") << "not at the press";
        mouse(edit, MouseAction::Release, {60, 10}, MK_RBUTTON);
    };
    Sink sink(edit);
    click();
    EXPECT_EQ(chooseFromMenu("Cut"), "Cut Copy Delete Select All ");
    EXPECT_EQ(sink.take(), "menu cut ");
    EXPECT_EQ(state(), "a|c");
    click();
    EXPECT_EQ(chooseFromMenu("Undo"), "Undo Paste Select All ");
    EXPECT_EQ(text(), u"abc");
    pressKey(edit, VK_END);
    click();
    EXPECT_EQ(chooseFromMenu("Redo"), "Redo Paste Select All ");
    EXPECT_EQ(text(), u"ac");
    send(EM_SETREADONLY, 1);
    click();
    EXPECT_EQ(chooseFromMenu("Select All"), "Select All ");
    EXPECT_EQ(state(), "[ac]");
    sink.keep(WM_RBUTTONUP);
    click();
    EXPECT_EQ(chooseFromMenu(), "") << "kept";
}

TEST_F(Edit, TurnsTheWheelItselfWhenItHasLinesToShow) {
    make(kLine);
    wheel(edit, {5, 5}, -120);
    EXPECT_NE(log.take().find("main: WM_MOUSEWHEEL -120"), std::string::npos);
    make(kPage | WS_VSCROLL);
    Text lines;
    for (int i = 0; i < 50; ++i) lines += u"line\r\n";
    set(lines);
    settle();
    const auto top = [&] {
        return dynamic_cast<QPlainTextEdit*>(widgetOf(edit))->verticalScrollBar()->value();
    };
    wheel(edit, {5, 5}, -120);
    const int scrolled = top();
    EXPECT_GT(scrolled, 0);
    send(WM_MOUSEWHEEL, makeLParam(0, -120));
    EXPECT_GT(top(), scrolled);
    EXPECT_EQ(log.take().find("WHEEL"), std::string::npos);
    send(EM_SETREADONLY, 1);
    const QFont font = widgetOf(edit)->font();
    const int before = top();
    wheel(edit, {5, 5}, -120, MK_CONTROL);
    EXPECT_GT(top(), before);
    EXPECT_EQ(widgetOf(edit)->font(), font) << "it scrolls, and keeps its font";
    send(EM_SETSEL, -1 + GetWindowTextLengthW(edit), -1);
    send(EM_SCROLLCARET);
    EXPECT_GT(top(), 40);
}

TEST_P(EditOfEachKind, AFieldFromRightToLeftBeginsAtTheRightWhateverItHolds) {
    make(style, WS_EX_LAYOUTRTL | WS_EX_RTLREADING, {200, 24});
    SetFocus(main.hWnd());  // no caret
    set(u"abc \u05D0");
    settle();
    const auto shown = picture();
    const auto ground = shown.pixels[std::size_t{12} * shown.width + 100];
    int left = 0, right = 0;
    for (std::size_t i = 0; i < shown.pixels.size(); ++i) {
        if (shown.pixels[i] == ground) continue;
        ++(static_cast<int>(i) % shown.width < 100 ? left : right);
    }
    EXPECT_EQ(left, 0) << (style == kPage ? "several lines" : "one line");
    EXPECT_GT(right, 20);
}

TEST_F(Edit, HidesAPasswordBehindItsCharacter) {
    make(kLine);
    set(u"abc");
    const auto plain = picture().pixels;
    send(EM_SETPASSWORDCHAR, '*');
    const auto stars = picture().pixels;
    send(EM_SETPASSWORDCHAR, '#');
    const auto signs = picture().pixels;
    EXPECT_NE(plain, stars);
    EXPECT_NE(stars, signs);
    EXPECT_EQ(text(), u"abc");
    setClipboardText(u"before");
    send(EM_SETSEL, 0, -1);
    send(WM_COPY);
    send(WM_CUT);
    EXPECT_EQ(clipboardText(), u"before");
    QAccessibleInterface* tool = QAccessible::queryAccessibleInterface(widgetOf(edit));
    EXPECT_EQ(tool->text(QAccessible::Value).indexOf(QLatin1String("abc")), -1);
    pressKey(edit, VK_END);
    typeText(edit, u"d");
    send(WM_UNDO);
    EXPECT_EQ(text(), u"abcd") << "what cannot be seen is not taken back";
    pressKey(edit, VK_BACK);
    send(EM_SETPASSWORDCHAR, 0);
    EXPECT_EQ(text(), u"abc");
}

TEST_P(EditOfEachKind, IsKnownToAssistiveToolsAsAFieldWithItsText) {
    set(u"value");
    QAccessibleInterface* tool = QAccessible::queryAccessibleInterface(widgetOf(edit));
    EXPECT_EQ(describeAccessible(edit), "text \"\" value \"value\" focusable focused");
    EXPECT_EQ(tool->state().multiLine, style == kPage);
    tool->editableTextInterface()->replaceText(0, 5, QStringLiteral("spoken"));
    EXPECT_EQ(text(), u"spoken");
    settle();
    EXPECT_GT(changes, 0) << "a change from outside of all messages is told as well";
}

TEST_P(EditOfEachKind, DrawsInTheFontThatItIsGiven) {
    const HFONT large = CreateFontW(-40, 0, 0, 0, 700, 0, 0, 0, 0, 0, 0, 0, 0, u"Tahoma");
    set(u"M");
    const auto ink = [&] {
        const auto pixels = picture().pixels;
        return std::ranges::count_if(pixels, [&](auto p) { return p != pixels.back(); });
    };
    const auto before = ink();
    send(WM_SETFONT, static_cast<WPARAM>(large), 1);
    EXPECT_GT(ink(), before * 4);
    DeleteObject(large);
}

TEST_F(Edit, ShowsAVeryLongLineInPiecesThatNobodyElseSees) {
    make(kPage | WS_HSCROLL);
    Text longLine;
    for (int i = 0; longLine.size() < 9000; ++i) {
        longLine += static_cast<char16_t>(u'a' + i % 26);
        if (i == 4095) longLine += u"\U0001F600";  // across a seam
    }
    setClipboardText(u"x\n" + longLine + u"\ny");
    send(WM_PASTE);
    Text expected = u"x\r\n" + longLine + u"\r\ny";
    EXPECT_TRUE(text() == expected);
    EXPECT_EQ(GetWindowTextLengthW(edit), static_cast<int>(expected.size()));
    EXPECT_EQ(send(EM_LINEFROMCHAR, static_cast<WPARAM>(expected.size())), 4);
    send(EM_SETSEL, 0, -1);
    send(WM_COPY);
    EXPECT_TRUE(clipboardText() == u"x\n" + longLine + u"\ny");

    const int seam = static_cast<int>(send(EM_LINEINDEX, 3));
    const auto at = static_cast<std::size_t>(seam);
    send(EM_SETSEL, seam, seam);
    pressKey(edit, VK_LEFT);
    EXPECT_EQ(selection().first, seam - 1);
    pressKey(edit, VK_RIGHT);
    pressKey(edit, VK_RIGHT);
    EXPECT_EQ(selection().first, seam + 1);
    pressKey(edit, VK_LEFT);
    pressKey(edit, VK_BACK);
    EXPECT_TRUE(text() == Text(expected).erase(at - 1, 1)) << "a key is a character";
    send(WM_UNDO);
    EXPECT_TRUE(text() == expected);
    send(EM_SETSEL, seam, seam);
    typeText(edit, u"z");
    EXPECT_TRUE(text() == Text(expected).insert(at, u"z"));
    set(expected + u"\nlone");
    EXPECT_TRUE(text() == expected + u"\nlone");
    EXPECT_EQ(send(EM_LINEFROMCHAR, GetWindowTextLengthW(edit)), 5);
}

// The same steps on the window and on a plain string.
TEST_F(Edit, KeepsTextAndSelectionThroughManySteps) {
    std::mt19937 random(7);
    const auto below = [&](std::size_t n) { return static_cast<int>(random() % (n + 1)); };
    const Text kPieces[] = {u"a", u"\u00A0\u05D0", u"\r\n", u"x\r\ny", u"\U0001F600", u""};
    for (const std::uint32_t style : {kPage, kPage | WS_HSCROLL}) {
        make(style);
        Text model = u"one\ntwo\r\nthree\rfour\u2029five\r\n";
        set(model);
        const auto outsideOfBreaks = [&](int at) {
            const auto i = static_cast<std::size_t>(at);
            const bool inside =
                i > 0 && i < model.size() && model[i - 1] == u'\r' && model[i] == u'\n';
            return inside ? at - 1 : at;
        };
        for (int step = 0; step < 400; ++step) {
            int start = outsideOfBreaks(below(model.size()));
            int end =
                outsideOfBreaks(std::min<int>(start + below(4), static_cast<int>(model.size())));
            if (end < start) end = start;
            send(EM_SETSEL, start, end);
            const Text& piece = kPieces[below(std::size(kPieces) - 1)];
            replaceSelection(piece);
            model.replace(static_cast<std::size_t>(start), static_cast<std::size_t>(end - start),
                          piece);
            // What meets at a seam is told apart by the window, not by a reader of the string.
            if (model.find(u"\r\r\n") != Text::npos) {
                set(model);
            }
            ASSERT_EQ(toUtf8(text()), toUtf8(model)) << step;
            ASSERT_EQ(selection().first, model.find(u"\r\r\n") != Text::npos
                                             ? 0
                                             : start + static_cast<int>(piece.size()));
        }
    }
}
