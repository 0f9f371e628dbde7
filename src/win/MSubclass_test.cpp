#include "win/MSubclass.h"

#include "platform/window/testhooks.h"
#include "support/raised.h"
#include "support/window/LoggedWindow.h"
#include "win/clsWinProp.h"

#include <gtest/gtest.h>

using namespace platform;

namespace {

// Writes down each call, "a(before, 7)" with lReturn as it comes, then does what `act` says.
class Sink : public ISubclass {
public:
    Sink(std::string& log, std::string name) : m_log(log), m_name(std::move(name)) {}
    std::function<void(bool& bStopMsg, LRESULT& lReturn)> act;

private:
    void ISubclass_WindowProc(bool bBefore, bool& bStopMsg, LRESULT& lReturn, HWND, std::uint32_t,
                              WPARAM, LPARAM) override {
        EXPECT_FALSE(bStopMsg);
        m_log += m_name + (bBefore ? "(before, " : "(after, ") + std::to_string(lReturn) + ") ";
        if (act) act(bStopMsg, lReturn);
    }
    std::string& m_log;
    std::string m_name;
};

constexpr std::uint32_t kMessage = WM_APP + 1, kOther = WM_APP + 2;

// A window whose own procedure answers kMessage with 100 and everything unknown with 5.
class Subclass : public testing::Test {
public:
    Subclass() {
        WindowOptions options;
        options.kind = WindowKind::Main;
        options.size = {50, 50};
        options.userData = reinterpret_cast<std::intptr_t>(this);
        options.procedure = [](HWND h, std::uint32_t uMsg, WPARAM w, LPARAM l) -> LRESULT {
            auto& self = *reinterpret_cast<Subclass*>(GetWindowLongW(h, GWL_USERDATA));
            if (uMsg < WM_USER) return DefWindowProcW(h, uMsg, w, l);
            self.log += "own ";
            if (self.own) self.own();
            return uMsg == kMessage ? 100 : 5;
        };
        hWnd = createWindow(options);
        procedure = GetWindowLongW(hWnd, GWL_WNDPROC);
    }
    ~Subclass() override {
        DestroyWindow(hWnd);
        platform::test::settle();
        EXPECT_EQ(windowsWithProps(), 0U);
    }
    // What a message does: the calls and the result.
    std::string send(std::uint32_t uMsg = kMessage) {
        log.clear();
        const LRESULT result = SendMessageW(hWnd, uMsg, 0, 0);
        return log + "= " + std::to_string(result);
    }
    [[nodiscard]] bool isPlain() const {
        return GetWindowLongW(hWnd, GWL_WNDPROC) == procedure && dumpWinProps(hWnd).empty();
    }
    void attach(Sink& sink, std::int32_t mode = smBefore, std::uint32_t uMsg = kMessage) {
        SubclassAttach(sink, hWnd, uMsg, mode);
    }
    void detach(const Sink& sink, std::uint32_t uMsg = kMessage) {
        SubclassDetach(sink, hWnd, uMsg);
    }

    platform::test::WindowHookScope hooks;
    std::string log;
    std::function<void()> own;
    HWND hWnd = 0;
    std::intptr_t procedure = 0;
    Sink a{log, "a"}, b{log, "b"}, c{log, "c"}, d{log, "d"};
};

// Somebody else's procedure in front of all.
WNDPROC g_behind = nullptr;
LRESULT inFront(HWND hWnd, std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
    return 1000 + CallWindowProcW(g_behind, hWnd, uMsg, wParam, lParam);
}

}  // namespace

// ---- Order, modes, stopping

TEST_F(Subclass, CallsTheLastAttachedFirstAndTheOwnProcedureByTheFirstMode) {
    const struct {
        std::int32_t modeA, modeB;  // a is attached first; 0: b not at all
        int stops;                  // bit 1: a stops the message, bit 2: b does
        const char* expected;
    } kCases[] = {
        {smBefore, 0, 0, "a(before, 0) own = 100"},
        {smAfter, 0, 0, "own a(after, 100) = 100"},
        {smBefore, 0, 1, "a(before, 0) = 1"},
        {smAfter, 0, 1, "own a(after, 100) = 101"},
        {smBefore, smBefore, 0, "b(before, 0) a(before, 0) own = 100"},
        {smAfter, smAfter, 0, "b(before, 0) own a(after, 100) = 100"},
        {smAfter, smBefore, 0, "b(before, 0) own a(after, 100) = 100"},
        {smBefore, smAfter, 0, "b(before, 0) a(before, 0) own = 100"},
        {smBefore, smBefore, 2, "b(before, 0) a(after, 2) = 2"},
        {smAfter, smAfter, 2, "b(before, 0) a(after, 2) = 2"},
        {smBefore, smBefore, 1, "b(before, 0) a(before, 0) = 1"},
        {smBefore, smBefore, 3, "b(before, 0) a(after, 2) = 3"},
    };
    const auto stop = [](int add) {
        return [add](bool& bStopMsg, LRESULT& lReturn) {
            bStopMsg = true;
            lReturn += add;
        };
    };
    for (const auto& k : kCases) {
        a.act = (k.stops & 1) != 0 ? stop(1) : std::function<void(bool&, LRESULT&)>();
        b.act = (k.stops & 2) != 0 ? stop(2) : std::function<void(bool&, LRESULT&)>();
        attach(a, k.modeA);
        if (k.modeB != 0) attach(b, k.modeB);
        EXPECT_EQ(send(), k.expected) << k.modeA << ' ' << k.modeB << ' ' << k.stops;
        EXPECT_EQ(send(kOther), "own = 5") << "nobody listens";
        detach(a);
        detach(b);
        EXPECT_TRUE(isPlain());
    }
}

TEST_F(Subclass, RunsThePreviousProcedureOnRequest) {
    constexpr LRESULT kBeyond32Bits = LRESULT{1} << 40;
    attach(a);
    a.act = [&](bool& bStopMsg, LRESULT& lReturn) {
        lReturn = SubclassCallOld(hWnd, kOther, 0, 0) + kBeyond32Bits;
        bStopMsg = true;
    };
    EXPECT_EQ(send(), "a(before, 0) own = " + std::to_string(kBeyond32Bits + 5));
    detach(a);
    EXPECT_EQ(SubclassCallOld(hWnd, kMessage, 0, 0), 0) << "not attached: there is none";
    EXPECT_EQ(SubclassCallOld(0, kMessage, 0, 0), 0);
}

// ---- The store

TEST_F(Subclass, KeepsItsTableUnderReadableKeys) {
    EXPECT_TRUE(isPlain());
    attach(a);
    EXPECT_EQ(dumpWinProps(hWnd), "h#32769C=1 h#32769#1=* h#32769R1=9 h=* Ch=1");
    attach(b, smAfter);
    attach(a, smAfter, kOther);
    EXPECT_EQ(dumpWinProps(hWnd),
              "h#32769C=2 h#32769#1=* h#32769R1=9 h=* Ch=3 h#32769#2=* h#32769R2=10 "
              "h#32770C=1 h#32770#1=* h#32770R1=10");
    detach(a);
    EXPECT_EQ(dumpWinProps(hWnd), "h#32769C=1 h#32769#1=* h#32769R1=10 h=* Ch=2 "
                                  "h#32770C=1 h#32770#1=* h#32770R1=10")
        << "the gap is closed";
    attach(c);
    attach(d);
    detach(c);
    EXPECT_EQ(send(), "d(before, 0) own b(after, 100) = 100") << "the others keep their order";
    detach(d);
    detach(b);
    EXPECT_NE(GetWindowLongW(hWnd, GWL_WNDPROC), procedure) << "one attachment is left";
    detach(a, kOther);
    EXPECT_TRUE(isPlain());
}

// ---- Failures

TEST_F(Subclass, RefusesWhatCannotBeAttachedAndLeavesTheWindowAsItWas) {
    // The failure, and whether it left anything behind.
    const auto attempt = [&](HWND window, std::int32_t mode) {
        const std::string before = dumpWinProps(hWnd);
        const std::string raised =
            ::test::raised([&] { SubclassAttach(a, window, kMessage, mode); });
        return raised + (dumpWinProps(hWnd) == before ? "" : " and something is left");
    };
    const auto failure = [](std::uint32_t number, const std::string& message) {
        return std::to_string(static_cast<std::int32_t>(number)) +
               " win_test.WindowProc: " + message;
    };
    EXPECT_EQ(attempt(0, smBefore), failure(0x8004331B, "Invalid window"));
    EXPECT_EQ(attempt(0, 0), failure(0x8004331B, "Invalid window")) << "the first test";
    EXPECT_EQ(attempt(hWnd, 0), failure(5, "Invalid argument"));
    platform::test::setWindowProcess(hWnd, 1);
    EXPECT_EQ(attempt(hWnd, smBefore), failure(0x8004331C, "Can't modify external window"));
    platform::test::setWindowProcess(hWnd, GetCurrentProcessId());
    platform::test::lockProcedure(hWnd, true);
    EXPECT_EQ(attempt(hWnd, smBefore), failure(0x80043319, "Can't subclass window"));
    platform::test::lockProcedure(hWnd, false);
    EXPECT_TRUE(isPlain());

    attach(a);
    EXPECT_EQ(attempt(hWnd, smAfter),
              failure(0x8004331A, "Message already handled by another class"));
    EXPECT_EQ(send(), "a(before, 0) own = 100");
    detach(a);
}

TEST_F(Subclass, DetachesNothingWhereNothingIs) {
    detach(a);
    attach(a);
    attach(b, smBefore, WM_PAINT);
    const std::string before = dumpWinProps(hWnd);
    detach(b);
    detach(a, kOther);
    SubclassDetach(a, 0, kMessage);
    platform::test::setWindowProcess(hWnd, 1);
    detach(a);
    platform::test::setWindowProcess(hWnd, GetCurrentProcessId());
    EXPECT_EQ(dumpWinProps(hWnd), before);
    DestroyWindow(hWnd);
    EXPECT_EQ(windowsWithProps(), 0U) << "a destroyed window is forgotten";
    detach(a);
    EXPECT_EQ(windowsWithProps(), 0U);
}

TEST_F(Subclass, LivesWithAProcedureThatSomebodyElsePutsInFront) {
    attach(a);
    const auto front = reinterpret_cast<std::intptr_t>(&inFront);
    const std::intptr_t shared = SetWindowLongW(hWnd, GWL_WNDPROC, front);
    g_behind = reinterpret_cast<WNDPROC>(shared);
    attach(b);
    EXPECT_EQ(send(), "b(before, 0) a(before, 0) own = 1100");
    detach(b);
    detach(a);
    EXPECT_TRUE(isPlain()) << "the window's own, whatever stood in front";

    // The other one puts back what it had replaced: now nobody knows the window's own any more.
    SetWindowLongW(hWnd, GWL_WNDPROC, shared);
    EXPECT_EQ(send(), "= 0");
    EXPECT_EQ(::test::raised([&] { attach(a); }),
              std::to_string(kCannotSubclass) + " win_test.WindowProc: Can't subclass window")
        << "not a procedure that calls itself";
    EXPECT_EQ(dumpWinProps(hWnd), "");
    SetWindowLongW(hWnd, GWL_WNDPROC, procedure);
    attach(a);
    EXPECT_EQ(send(), "a(before, 0) own = 100");
    detach(a);
}

// ---- While a dispatch runs

TEST_F(Subclass, LetsSinksComeAndGoWhileTheyRun) {
    const struct {
        const char* what;
        std::function<void()> act;  // of b, the second of three
        std::string expected;
    } kCases[] = {
        {"itself", [&] { detach(b); }, "c(before, 0) b(before, 0) a(before, 0) own = 100"},
        {"the one above, heard already", [&] { detach(c); },
         "c(before, 0) b(before, 0) a(before, 0) own = 100"},
        // Everybody moves up by one: b stands at the first place, which is the next.
        {"the one below",
         [&] {
             detach(a);
             b.act = nullptr;
         },
         "c(before, 0) b(before, 0) b(before, 0) own = 100"},
        {"all", [&] { detach(a), detach(b), detach(c); }, "c(before, 0) b(before, 0) own = 100"},
        {"itself and below", [&] { detach(a), detach(b); },
         "c(before, 0) b(before, 0) c(before, 0) own = 100"},
        {"a new one, not heard yet",
         [&] {
             detach(c);
             attach(c);
             b.act = nullptr;
         },
         "c(before, 0) b(before, 0) a(before, 0) own = 100"},
        {"one more behind all", [&] { attach(d); },
         "c(before, 0) b(before, 0) a(before, 0) own = 100"},
        {"all, and a new one", [&] { detach(a), detach(b), detach(c), attach(d); },
         "c(before, 0) b(before, 0) d(before, 0) own = 100"},
    };
    for (const auto& k : kCases) {
        attach(a);
        attach(b);
        attach(c);
        b.act = [&](bool&, LRESULT&) { k.act(); };
        EXPECT_EQ(send(), k.expected) << k.what;
        for (const Sink* sink : {&a, &b, &c, &d}) detach(*sink);
        EXPECT_TRUE(isPlain()) << k.what;
    }
}

TEST_F(Subclass, GoesOnWithTheNextMessageInsideAMessage) {
    attach(a);
    attach(b, smAfter, kOther);
    a.act = [&](bool&, LRESULT& lReturn) { lReturn = SendMessageW(hWnd, kOther, 0, 0); };
    EXPECT_EQ(send(), "a(before, 0) own b(after, 5) own = 100");
    int depth = 0;
    a.act = [&](bool&, LRESULT&) {
        if (++depth < 3) SendMessageW(hWnd, kMessage, 0, 0);
    };
    EXPECT_EQ(send(), "a(before, 0) a(before, 0) a(before, 0) own own own = 100");
    detach(a);
    detach(b, kOther);
}

TEST_F(Subclass, EndsADispatchWhoseWindowASinkDestroys) {
    for (const int way : {0, 1, 2, 3}) {
        const std::int32_t mode = (way & 1) == 0 ? smBefore : smAfter;
        const bool nested = (way & 2) != 0;  // inside a message that b sends
        WindowOptions options;
        options.kind = WindowKind::Main;
        options.procedure = [](HWND, std::uint32_t uMsg, WPARAM, LPARAM) -> LRESULT {
            EXPECT_NE(uMsg, kMessage) << "the window is gone by then";
            return 0;
        };
        const HWND gone = createWindow(options);
        for (Sink* sink : {&a, &b, &c}) SubclassAttach(*sink, gone, kMessage, mode);
        SubclassAttach(d, gone, kOther, mode);
        d.act = [&](bool&, LRESULT&) { DestroyWindow(gone); };
        b.act = [&](bool&, LRESULT& lReturn) {
            if (nested) {
                SendMessageW(gone, kOther, 0, 0);
            } else {
                DestroyWindow(gone);
            }
            lReturn = 3;
        };
        log.clear();
        EXPECT_EQ(SendMessageW(gone, kMessage, 0, 0), mode == smBefore ? 0 : 3);
        const std::string inner = mode == smBefore ? "d(before, 0) " : "d(after, 0) ";
        EXPECT_EQ(log, "c(before, 0) b(before, 0) " + (nested ? inner : ""));
        EXPECT_EQ(windowsWithProps(), 0U);
    }
}

TEST_F(Subclass, HandsOnWhatASinkRaisesAndStaysWhole) {
    attach(a);
    attach(b);
    b.act = [](bool&, LRESULT&) { throw std::runtime_error("no"); };
    log.clear();
    EXPECT_THROW(SendMessageW(hWnd, kMessage, 0, 0), std::runtime_error);
    EXPECT_EQ(log, "b(before, 0) ");
    b.act = nullptr;
    EXPECT_EQ(send(), "b(before, 0) a(before, 0) own = 100");
    detach(a);
    detach(b);
}

TEST_F(Subclass, KeepsASharedSinkAliveForItsOwnCall) {
    auto shared = std::make_shared<Sink>(log, "shared");
    attach(*shared, smAfter);
    std::weak_ptr<Sink> left = shared;
    shared->act = [&](bool&, LRESULT&) {
        detach(*shared);
        shared.reset();
        EXPECT_FALSE(left.expired()) << "until its call returns";
    };
    EXPECT_EQ(send(), "own shared(after, 100) = 100");
    EXPECT_TRUE(left.expired());

    // In the own procedure, between the choice of the sink and its call.
    shared = std::make_shared<Sink>(log, "shared");
    attach(*shared, smAfter);
    own = [&] {
        if (shared) detach(*shared);
        shared.reset();
    };
    EXPECT_EQ(send(), "own shared(after, 100) = 100");
    auto plain = std::make_unique<Sink>(log, "plain");
    attach(*plain, smAfter);
    own = [&] {
        if (plain) detach(*plain);
        plain.reset();
    };
    EXPECT_EQ(send(), "own = 100") << "nobody keeps that one alive";
    own = nullptr;
}

// ---- The end of a window

TEST_F(Subclass, LeavesTheEndToASinkThatListensToIt) {
    attach(a, smBefore, WM_DESTROY);
    attach(b);
    a.act = [&](bool&, LRESULT&) {
        detach(a, WM_DESTROY);
        detach(b);
        EXPECT_TRUE(isPlain());
    };
    log.clear();
    DestroyWindow(hWnd);
    EXPECT_EQ(log, "a(before, 0) ");
}
