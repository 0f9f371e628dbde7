#include "gallery/GalleryWindow.h"

#include "gallery/Sheet.h"
#include "gfx/modCtlCommon_ctl_colors.h"
#include "gfx/modCtlCommon_ctl_shapes.h"
#include "platform/window/application.h"
#include "platform/window/input.h"
#include "win/clsSystemMetrics.h"

#include <algorithm>
#include <utility>

namespace gallery {

using namespace platform;

namespace {

constexpr int kListWidth = 208, kListTop = 66, kListMargin = 8;
constexpr Color kListColor = rgb(240, 243, 247);

WindowOptions mainWindow() {
    WindowOptions options;
    options.kind = WindowKind::Main;
    options.title = u"Quillmere gallery";
    // With room left for the frame, on screens that are large enough for the pages.
    const clsSystemMetrics metrics;
    options.size = {
        std::min(kListWidth + kPageSize.cx, std::max(metrics.WorkScreenWidth() - 16, 320)),
        std::min(static_cast<int>(kPageSize.cy), std::max(metrics.WorkScreenHeight() - 48, 240))};
    return options;
}

}  // namespace

class GalleryWindow::PageList : public Window {
public:
    explicit PageList(GalleryWindow& owner)
        : Window(childOf(owner.hWnd(), u"Pages")), m_owner(owner) {}
    void refresh() { repaint(); }
    void tellRows() {
        for (int i = 0; i < static_cast<int>(pages().size()); ++i) {
            m_owner.tellPlace(hWnd(), rowRect(i), pages()[static_cast<std::size_t>(i)].title);
        }
    }

protected:
    LRESULT message(std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) override {
        const std::size_t last = pages().size() - 1;
        switch (uMsg) {
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            SetFocus(hWnd());
            if (const int row = rowAt(pointOf(lParam)); row >= 0) {
                m_owner.show(static_cast<std::size_t>(row));
            }
            return 0;
        case WM_MOUSEMOVE:
            hover(rowAt(pointOf(lParam)));
            return 0;
        case WM_MOUSELEAVE:
            hover(-1);
            return 0;
        case WM_MOUSEWHEEL:
            m_owner.moveBy(static_cast<std::int16_t>(hiWord(wParam)) > 0 ? -1 : 1);
            return 0;
        case WM_KEYDOWN:
            if (wParam == VK_UP || wParam == VK_LEFT) m_owner.moveBy(-1);
            if (wParam == VK_DOWN || wParam == VK_RIGHT) m_owner.moveBy(1);
            if (wParam == VK_HOME) m_owner.show(0);
            if (wParam == VK_END) m_owner.show(last);
            return 0;
        default:
            return Window::message(uMsg, wParam, lParam);
        }
    }
    void paint(HDC hDC, SIZE size) override {
        DrawRectXY(hDC, 0, 0, size.cx, size.cy, kListColor, true);
        DrawRectXY(hDC, size.cx - 1, 0, size.cx, size.cy, kRule, true);
        write(hDC, box(kListMargin + 10, 14, kListWidth, 26), u"Quillmere",
              {.points = 15, .bold = true, .color = kAccent});
        write(hDC, box(kListMargin + 10, 40, kListWidth, 18), u"Gallery of what is drawn",
              {.points = 9, .color = kFaint});
        for (std::size_t i = 0; i < pages().size(); ++i) drawRow(hDC, static_cast<int>(i));
    }

private:
    // Rows become lower when there are more of them than fit.
    [[nodiscard]] int rowHeight() const {
        const int count = static_cast<int>(pages().size());
        return std::clamp((size().cy - kListTop - kListMargin) / count, 16, 30);
    }
    [[nodiscard]] RECT rowRect(int i) const {
        return box(kListMargin, kListTop + i * rowHeight(), kListWidth - 2 * kListMargin - 1,
                   rowHeight());
    }
    [[nodiscard]] int rowAt(POINT at) const {
        const int i = at.y < kListTop ? -1 : (at.y - kListTop) / rowHeight();
        return at.x >= 0 && at.x < kListWidth && i < static_cast<int>(pages().size()) ? i : -1;
    }
    void hover(int row) {
        if (std::exchange(m_hovered, row) != row) repaint();
    }
    void drawRow(HDC hDC, int i) {
        const bool selected = static_cast<std::size_t>(i) == m_owner.page();
        RECT rect = rowRect(i);
        rect.bottom -= 2;
        const Color ground = selected         ? kAccent
                             : i == m_hovered ? ColorBlend(kListColor, kAccent, 12)
                                              : kListColor;
        DrawRoundRectR(hDC, rect,
                       {.bFill = true, .iFillColor = ground, .iPenWidth = 0, .iRadius = 8});
        if (selected && GetFocus() == hWnd()) DrawFocus(hDC, inset(rect, 2));
        const Color ink = selected ? rgb(255, 255, 255) : kInk;
        write(hDC, {rect.left + 6, rect.top, rect.left + 24, rect.bottom}, number(i + 1),
              {.color = selected ? ink : kFaint}, kOneLine | DT_RIGHT);
        write(hDC, {rect.left + 34, rect.top, rect.right, rect.bottom},
              pages()[static_cast<std::size_t>(i)].title, {.points = 9, .color = ink});
    }

    GalleryWindow& m_owner;
    int m_hovered = -1;
};

class GalleryWindow::PageView : public Window {
public:
    explicit PageView(GalleryWindow& owner) : Window(childOf(owner.hWnd())), m_owner(owner) {}
    void refresh() { repaint(); }

protected:
    LRESULT message(std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) override {
        if (uMsg == WM_LBUTTONDOWN) SetFocus(m_owner.m_list->hWnd());
        return Window::message(uMsg, wParam, lParam);
    }
    void paint(HDC hDC, SIZE size) override { drawPage(hDC, size, pages()[m_owner.page()]); }

private:
    GalleryWindow& m_owner;
};

GalleryWindow::GalleryWindow(Log log)
    : Window(mainWindow()), m_log(std::move(log)), m_list(std::make_unique<PageList>(*this)),
      m_view(std::make_unique<PageView>(*this)) {
    setKeyFilter(hWnd(), [this](HWND, std::uint32_t uMsg, WPARAM wParam, LPARAM) {
        return uMsg == WM_KEYDOWN && key(static_cast<std::int32_t>(wParam));
    });
    arrange();
    show(0);
    SetFocus(m_list->hWnd());
}

GalleryWindow::~GalleryWindow() { m_live.reset(); }  // ahead of the window that its own ones are in

void GalleryWindow::show(std::size_t page) {
    if (page >= pages().size()) return;
    const Page& next = pages()[page];
    if (IsChild(m_view->hWnd(), GetFocus())) SetFocus(m_list->hWnd());
    m_live.reset();
    m_current = page;
    SetWindowTextW(hWnd(), Text(next.title) + u" - Quillmere gallery");
    m_list->refresh();
    m_view->refresh();
    m_log("page " + toUtf8(next.title));
    if (next.open != nullptr) {
        m_live = next.open({m_view->hWnd(), m_log});
        arrangeLive();
    }
}

void GalleryWindow::arrange() {
    const SIZE all = size();
    m_list->place({0, 0, kListWidth, all.cy});
    m_view->place({kListWidth, 0, std::max(all.cx, kListWidth), all.cy});
    m_list->tellRows();
    arrangeLive();
}

void GalleryWindow::arrangeLive() {
    if (!m_live) return;
    m_live->place(contentArea(m_view->size()));
    for (const HWND stop : m_live->tabStops()) {
        RECT rect;
        GetClientRect(stop, rect);
        tellPlace(stop, rect, GetWindowTextW(stop));
    }
}

void GalleryWindow::tellPlace(HWND of, const RECT& rect, TextView name) {
    POINT middle{(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
    ClientToScreen(of, middle);
    ScreenToClient(hWnd(), middle);
    m_log("at " + std::to_string(middle.x) + ',' + std::to_string(middle.y) + ' ' + toUtf8(name));
}

void GalleryWindow::moveBy(int pageCount) {
    const int last = static_cast<int>(pages().size()) - 1;
    const int wanted = std::clamp(static_cast<int>(m_current) + pageCount, 0, last);
    if (static_cast<std::size_t>(wanted) != m_current) show(static_cast<std::size_t>(wanted));
}

bool GalleryWindow::key(std::int32_t code) {
    switch (code) {
    case VK_PRIOR:
        moveBy(-1);
        return true;
    case VK_NEXT:
        moveBy(1);
        return true;
    case VK_ESCAPE:
        SetFocus(m_list->hWnd());
        return true;
    case VK_TAB: {
        if (GetAsyncKeyState(VK_CONTROL) < 0) {
            SetFocus(m_list->hWnd());
            return true;
        }
        std::vector<HWND> stops{m_list->hWnd()};
        if (m_live) std::ranges::copy(m_live->tabStops(), std::back_inserter(stops));
        const auto here = std::ranges::find(stops, GetFocus());
        const auto at =
            here == stops.end() ? stops.size() - 1 : static_cast<std::size_t>(here - stops.begin());
        const bool back = GetAsyncKeyState(VK_SHIFT) < 0;
        SetFocus(stops[(at + (back ? stops.size() - 1 : 1)) % stops.size()]);
        return true;
    }
    default:
        return false;
    }
}

LRESULT GalleryWindow::message(std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
    switch (uMsg) {
    case WM_SIZE:
        if (m_view) arrange();
        break;
    case WM_SETFOCUS:
        if (m_list) SetFocus(m_list->hWnd());
        return 0;
    case WM_DESTROY:
        m_live.reset();
        PostQuitMessage(0);
        break;
    default:
        break;
    }
    return Window::message(uMsg, wParam, lParam);
}

}  // namespace gallery
