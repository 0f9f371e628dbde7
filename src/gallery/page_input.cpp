// Cursors to be tried with the mouse, the messages of mouse and keys, a timer, a cut window.
#include "gallery/Sheet.h"
#include "gallery/Window.h"
#include "gallery/pages.h"
#include "gfx/clsGdiHandle.h"
#include "gfx/modCtlCommon_ctl_faces.h"
#include "gfx/modCtlCommon_ctl_shapes.h"
#include "gfx/modCtlCommon_src_helpers.h"
#include "platform/window/input.h"
#include "win/cUniTimer.h"

#include <deque>
#include <utility>

namespace gallery {
namespace {

using namespace platform;

// By the pointer codes of controls.
constexpr TextView kCursors[] = {u"Default",    u"Arrow",       u"Cross",      u"Text",
                                 u"Icon",       u"Size",        u"Size NE SW", u"Size N S",
                                 u"Size NW SE", u"Size W E",    u"Up",         u"Wait",
                                 u"No drop",    u"Arrow, wait", u"Help",       u"Move"};
constexpr int kCursorCount = static_cast<int>(std::size(kCursors));

RECT tileOf(const RECT& area, int i) {
    return box(area.left + i % 8 * 106, area.top + kHeadingHeight + i / 8 * 54, 98, 46);
}
RECT readoutOf(const RECT& area) {
    return box(area.left, area.top + 144 + kHeadingHeight, 512, 250);
}
RECT clockOf(const RECT& area) {
    return box(area.left + 540, area.top + 144 + kHeadingHeight, 240, 60);
}
RECT roundOf(const RECT& area) {
    return box(area.left + 540, area.top + 250 + kHeadingHeight, 240, 144);
}

void drawTile(HDC hDC, const RECT& rect, int i) {
    DrawRoundRectR(hDC, rect,
                   {.bFill = true, .iFillColor = kTint, .iPenColor = kRule, .iRadius = 8});
    write(hDC, rect, kCursors[i], {}, kOneLine | DT_CENTER);
}

class CursorTile : public Window {
public:
    CursorTile(HWND parent, int i) : Window(childOf(parent)), m_i(i) {
        setWindowCursor(hWnd(), LoadCursorA(0, static_cast<std::uint32_t>(CursorResource(i))));
    }

protected:
    void paint(HDC hDC, SIZE size) override {
        DrawRectXY(hDC, 0, 0, size.cx, size.cy, kPaper, true);
        drawTile(hDC, {0, 0, size.cx, size.cy}, m_i);
    }

private:
    int m_i;
};

constexpr std::size_t kLines = 13;

void drawReadout(HDC hDC, const RECT& rect, bool focus, const std::deque<Text>& lines) {
    DrawRect(hDC, rect, kTint, true);
    DrawFlatFace(hDC, rect,
                 {.iBackColor = kTint,
                  .iBorderColor = focus ? kAccent : kAutoColor,
                  .bRounded = true,
                  .iOuterColor = kPaper});
    const RECT text = inset(rect, 10);
    if (lines.empty()) {
        write(hDC, text, u"Click here, turn the wheel, type: the messages appear here.", kCaption,
              DT_NOPREFIX);
    }
    int y = text.top;
    for (const Text& line : lines) {
        write(hDC, {text.left, y, text.right, y + 17}, line);
        y += 17;
    }
}

// Shows the messages of mouse and keys, the last one first.
class Readout : public Window {
public:
    explicit Readout(HWND parent) : Window(childOf(parent, u"Messages")) {}

protected:
    LRESULT message(std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) override {
        if (uMsg == WM_LBUTTONDOWN) SetFocus(hWnd());
        if (const Text line = describe(uMsg, wParam, lParam); !line.empty()) {
            m_lines.push_front(line);
            if (m_lines.size() > kLines) m_lines.pop_back();
            repaint();
        }
        return Window::message(uMsg, wParam, lParam);
    }
    void paint(HDC hDC, SIZE size) override {
        DrawRectXY(hDC, 0, 0, size.cx, size.cy, kPaper, true);
        drawReadout(hDC, {0, 0, size.cx, size.cy}, GetFocus() == hWnd(), m_lines);
    }

private:
    static Text describe(std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
        static constexpr struct {
            std::uint32_t uMsg;
            TextView name;
        } kButtons[] = {
            {WM_LBUTTONDOWN, u"left button down"},     {WM_LBUTTONUP, u"left button up"},
            {WM_LBUTTONDBLCLK, u"left double click"},  {WM_RBUTTONDOWN, u"right button down"},
            {WM_RBUTTONUP, u"right button up"},        {WM_RBUTTONDBLCLK, u"right double click"},
            {WM_MBUTTONDOWN, u"middle button down"},   {WM_MBUTTONUP, u"middle button up"},
            {WM_MBUTTONDBLCLK, u"middle double click"}};
        for (const auto& button : kButtons) {
            if (button.uMsg != uMsg) continue;
            const POINT at = pointOf(lParam);
            return Text(button.name) + u" at " + number(at.x) + u", " + number(at.y) + held(wParam);
        }
        switch (uMsg) {
        case WM_MOUSEWHEEL:
            return u"wheel " + number(static_cast<std::int16_t>(hiWord(wParam))) +
                   held(loWord(wParam));
        case WM_KEYDOWN:
        case WM_SYSKEYDOWN:
            return u"key " + number(wParam) + u" down";
        case WM_KEYUP:
        case WM_SYSKEYUP:
            return u"key " + number(wParam) + u" up";
        case WM_CHAR: {
            const Text unit =
                wParam < 32 ? Text() : u" \"" + ChrWide(static_cast<int>(wParam)) + u"\"";
            return u"character " + number(wParam) + unit;
        }
        case WM_CONTEXTMENU:
            return u"context menu";
        default:
            return {};
        }
    }
    static Text held(WPARAM keys) {
        Text s;
        if ((keys & MK_SHIFT) != 0) s += u", Shift";
        if ((keys & MK_CONTROL) != 0) s += u", Ctrl";
        return s;
    }

    std::deque<Text> m_lines;
};

void drawClock(HDC hDC, const RECT& rect, int seconds) {
    DrawRect(hDC, rect, kPaper, true);
    write(hDC, {rect.left, rect.top, rect.right, rect.top + 30},
          number(seconds) + (seconds == 1 ? u" second" : u" seconds"), {.points = 16});
    const RECT bar = {rect.left, rect.top + 38, rect.right, rect.top + 46};
    DrawRect(hDC, bar, kTint, true);
    DrawRect(hDC, {bar.left, bar.top, bar.left + seconds % 61 * widthOf(bar) / 60, bar.bottom},
             kAccent, true);
}

class Clock : public Window, private UniTimerOwner {
public:
    explicit Clock(HWND parent) : Window(childOf(parent)) { m_timer.TmrStart(*this, 1000); }

protected:
    void paint(HDC hDC, SIZE size) override { drawClock(hDC, {0, 0, size.cx, size.cy}, m_seconds); }

private:
    void UniTimerFired(std::uint32_t elapsed, std::int32_t) override {
        m_seconds = static_cast<int>(elapsed / 1000);
        repaint();
    }
    cUniTimer m_timer;
    int m_seconds = 0;
};

constexpr int kRoundRadius = 60;
constexpr TextView kRoundText = u"Clicks go past its corners";

void drawRound(HDC hDC, const RECT& rect) {
    GradientVRect(hDC, rect, rgb(86, 156, 214), rgb(36, 72, 120));
    write(hDC, rect, kRoundText, {.color = rgb(255, 255, 255)}, kOneLine | DT_CENTER);
}

class RoundWindow : public Window {
public:
    explicit RoundWindow(HWND parent) : Window(childOf(parent)) {}
    void placeRound(const RECT& rect) {
        place(rect);
        const clsGdiHandle region(CreateRoundRegion(widthOf(rect), heightOf(rect), kRoundRadius));
        SetWindowRgn(hWnd(), region.Handle(), true);
    }

protected:
    void paint(HDC hDC, SIZE size) override { drawRound(hDC, {0, 0, size.cx, size.cy}); }
};

class InputPage : public LivePage {
public:
    explicit InputPage(const PageHost& host)
        : m_readout(host.hWnd), m_clock(host.hWnd), m_round(host.hWnd) {
        for (int i = 0; i < kCursorCount; ++i) {
            m_tiles.push_back(std::make_unique<CursorTile>(host.hWnd, i));
        }
    }

    void place(const RECT& area) override {
        for (int i = 0; i < kCursorCount; ++i) {
            m_tiles[static_cast<std::size_t>(i)]->place(tileOf(area, i));
        }
        m_readout.place(readoutOf(area));
        m_clock.place(clockOf(area));
        m_round.placeRound(roundOf(area));
    }
    [[nodiscard]] std::vector<HWND> tabStops() const override { return {m_readout.hWnd()}; }

private:
    std::vector<std::unique_ptr<CursorTile>> m_tiles;
    Readout m_readout;
    Clock m_clock;
    RoundWindow m_round;
};

}  // namespace

void drawInput(HDC hDC, const RECT& area) {
    const auto title = [&](const RECT& below, TextView s) {
        RECT rect = box(below.left, below.top - kHeadingHeight, widthOf(below), kHeadingHeight);
        heading(hDC, rect, s);
    };
    title(box(area.left, area.top + kHeadingHeight, widthOf(area), 0), u"Cursors: move over them");
    for (int i = 0; i < kCursorCount; ++i) drawTile(hDC, tileOf(area, i), i);
    title(readoutOf(area), u"Messages");
    drawReadout(hDC, readoutOf(area), false, {});
    title(clockOf(area), u"A timer");
    drawClock(hDC, clockOf(area), 0);
    title(roundOf(area), u"A window with round corners");
    const RECT round = roundOf(area);
    DrawRoundRectR(
        hDC, round,
        {.bFill = true, .iFillColor = rgb(60, 112, 166), .iPenWidth = 0, .iRadius = kRoundRadius});
    write(hDC, round, kRoundText, {.color = rgb(255, 255, 255)}, kOneLine | DT_CENTER);
}

std::unique_ptr<LivePage> openInput(const PageHost& host) {
    return std::make_unique<InputPage>(host);
}

}  // namespace gallery
