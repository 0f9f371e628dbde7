#include "platform/window/screen.h"

#include "platform/window/screen_internal.h"
#include "platform/window/surface_internal.h"
#include "platform/window/testhooks_internal.h"
#include "platform/window/toolkit_internal.h"
#include "platform/window/window.h"
#include "platform/window/window_internal.h"

#include <QApplication>
#include <QEvent>
#include <QFontInfo>
#include <QPalette>
#include <QScreen>
#include <QStyle>
#include <algorithm>
#include <limits>
#include <utility>

namespace platform {
namespace {

using test::Screen;

RECT rectOf(const QRect& r) { return {r.x(), r.y(), r.x() + r.width(), r.y() + r.height()}; }

// The main screen first.
std::vector<Screen> screens() {
    std::vector<Screen> all = hooks().screens;
    if (all.empty() && qGuiApp != nullptr) {
        for (const QScreen* screen : QGuiApplication::screens()) {
            all.push_back({rectOf(screen->geometry()), rectOf(screen->availableGeometry()),
                           screen == QGuiApplication::primaryScreen(), screen->depth(),
                           qRound(screen->logicalDotsPerInchY())});
        }
    }
    std::stable_partition(all.begin(), all.end(), [](const Screen& s) { return s.primary; });
    return all;
}

RECT unionOf(const std::vector<Screen>& all) {
    if (all.empty()) return {};
    RECT whole = all.front().bounds;
    for (const Screen& screen : all) {
        whole.left = std::min(whole.left, screen.bounds.left);
        whole.top = std::min(whole.top, screen.bounds.top);
        whole.right = std::max(whole.right, screen.bounds.right);
        whole.bottom = std::max(whole.bottom, screen.bounds.bottom);
    }
    return whole;
}

// ---- Monitor handles: a screen keeps its number as long as a screen is at its place.

struct Monitor {
    HMONITOR handle = 0;
    Screen screen;
};

bool samePlace(const Screen& a, const Screen& b) { return a.bounds == b.bounds; }

std::vector<Monitor>& monitors() {
    static std::vector<Monitor> known;
    static std::uint32_t last = 0;
    std::vector<Monitor> now;
    for (const Screen& screen : screens()) {
        const auto found = std::ranges::find_if(
            known, [&](const Monitor& m) { return samePlace(m.screen, screen); });
        HMONITOR handle = 0;
        if (found != known.end()) {
            handle = found->handle;
            known.erase(found);
        } else {
            last = last % kHandleIndexMask + 1;
            handle = static_cast<std::uint32_t>(HandleKind::Monitor) << kHandleKindShift | last;
        }
        now.push_back({handle, screen});
    }
    known = std::move(now);
    return known;
}

std::int64_t areaOf(const RECT& r) {
    return isEmpty(r) ? 0 : (std::int64_t{r.right} - r.left) * (std::int64_t{r.bottom} - r.top);
}

// The square of the distance between two rectangles.
double distance(const RECT& a, const RECT& b) {
    const auto gap = [](double from, double to, double otherFrom, double otherTo) {
        return std::max({otherFrom - to, from - otherTo, 0.0});
    };
    const double x = gap(a.left, a.right, b.left, b.right);
    const double y = gap(a.top, a.bottom, b.top, b.bottom);
    return x * x + y * y;
}

HMONITOR monitorOf(const RECT& place, std::uint32_t flags) {
    const std::vector<Monitor>& all = monitors();
    const Monitor* most = nullptr;
    const Monitor* nearest = nullptr;
    std::int64_t bestArea = 0;
    double bestDistance = std::numeric_limits<double>::infinity();
    for (const Monitor& monitor : all) {
        const std::int64_t area = areaOf(intersection(place, monitor.screen.bounds));
        if (area > bestArea) {
            bestArea = area;
            most = &monitor;
        }
        const double away = distance(place, monitor.screen.bounds);
        if (away < bestDistance) {
            bestDistance = away;
            nearest = &monitor;
        }
    }
    if (most == nullptr && flags == MONITOR_DEFAULTTONEAREST) most = nearest;
    if (most == nullptr && flags == MONITOR_DEFAULTTOPRIMARY && !all.empty()) most = &all.front();
    return most == nullptr ? 0 : most->handle;
}

int styleSize(QStyle::PixelMetric metric, int otherwise) {
    return qobject_cast<QApplication*>(qApp) == nullptr
               ? otherwise
               : QApplication::style()->pixelMetric(metric);
}

// The desktop's. A name beyond the system code page, or too long, leaves the program's own face.
LOGFONTA menuFont() {
    LOGFONTA font;
    const auto scaled = [](int size) {
        const std::vector<Screen> all = screens();
        return MulDiv(size, all.empty() ? 96 : all.front().dpi, 96);
    };
    font.lfHeight = -scaled(11);
    font.lfWeight = FW_NORMAL;
    Text name = u"Tahoma";
    if (qobject_cast<QApplication*>(qApp) != nullptr) {
        const QFont desktop = QApplication::font("QMenu");
        const QFontInfo shown(desktop);
        font.lfHeight = -std::max(1, shown.pixelSize());
        font.lfWeight = desktop.weight();
        font.lfItalic = desktop.italic() ? 1 : 0;
        name = toText(shown.family());
    }
    if (!setFaceName(font, name)) (void)setFaceName(font, u"Tahoma");
    return font;
}

}  // namespace

int GetSystemMetrics(int index) {
    if (const auto set = hooks().metrics.find(index); set != hooks().metrics.end()) {
        return set->second;
    }
    const std::vector<Screen> all = screens();
    if (all.empty()) return 0;
    const Screen& main = all.front();
    const auto width = [](const RECT& r) { return r.right - r.left; };
    const auto height = [](const RECT& r) { return r.bottom - r.top; };
    const auto scaled = [&](int size) { return MulDiv(size, main.dpi, 96); };
    const int caption = styleSize(QStyle::PM_TitleBarHeight, scaled(19));
    const int bar = styleSize(QStyle::PM_ScrollBarExtent, scaled(16));
    constexpr int kFrame = 4;

    switch (index) {
    case 0:
        return width(main.bounds);
    case 1:
        return height(main.bounds);
    case 2:   // a vertical scroll bar's width,
    case 3:   // a horizontal one's height,
    case 20:  // and their arrows
    case 21:
        return bar;
    case 4:
        return caption;
    case 5:  // a thin frame
    case 6:
        return 1;
    case 11:  // icons and cursors
    case 12:
    case 13:
    case 14:
        return scaled(32);
    case 15:  // a menu bar
        return scaled(19);
    case 16:  // the client area of a window that fills the work area
        return width(main.work);
    case 17:
        return height(main.work) - caption;
    case 19:  // a mouse is there
        return 1;
    case 23:  // buttons swapped: the desktop does that itself
        return 0;
    case 28:  // the smallest window
        return scaled(112);
    case 29:
        return caption + 2 * kFrame;
    case 30:  // buttons in the title
    case 31:
        return caption - 1;
    case 32:
    case 33:
        return kFrame;
    case 43:  // mouse buttons
        return 3;
    case 49:  // small icons
    case 50:
    case 51:  // a small title, and its buttons
        return scaled(16);
    case 52:
    case 53:
        return scaled(16) - 1;
    case 63:  // bit 0: a network is there
    case 75:  // a wheel
        return 1;
    case 76:
        return unionOf(all).left;
    case 77:
        return unionOf(all).top;
    case 78:
        return width(unionOf(all));
    case 79:
        return height(unionOf(all));
    case 80:
        return static_cast<int>(all.size());
    case 81:  // one colour depth on all screens
        return std::ranges::all_of(
            all, [&](const Screen& s) { return s.bitsPerPixel == main.bitsPerPixel; });
    default:
        return 0;
    }
}

bool SystemParametersInfoA(std::uint32_t action, std::uint32_t, void* pvParam, std::uint32_t) {
    if (pvParam == nullptr) return false;
    switch (action) {
    case SPI_GETWORKAREA: {
        const std::vector<Screen> all = screens();
        if (all.empty()) return false;
        *static_cast<RECT*>(pvParam) = all.front().work;
        return true;
    }
    case SPI_GETNONCLIENTMETRICS: {
        auto& metrics = *static_cast<NONCLIENTMETRICSA*>(pvParam);
        if (metrics.cbSize != sizeof(NONCLIENTMETRICSA)) return false;
        metrics.iBorderWidth = 1;
        metrics.iScrollWidth = GetSystemMetrics(2);
        metrics.iScrollHeight = GetSystemMetrics(3);
        metrics.iCaptionWidth = metrics.iCaptionHeight = GetSystemMetrics(4);
        metrics.iSmCaptionWidth = metrics.iSmCaptionHeight = GetSystemMetrics(51);
        metrics.iMenuWidth = metrics.iMenuHeight = GetSystemMetrics(15);
        metrics.lfCaptionFont = metrics.lfSmCaptionFont = metrics.lfMenuFont =
            metrics.lfStatusFont = metrics.lfMessageFont = menuFont();
        return true;
    }
    case SPI_GETFLATMENU:
        *static_cast<std::int32_t*>(pvParam) = 1;
        return true;
    default:
        return false;
    }
}

HMONITOR MonitorFromPoint(POINT point, std::uint32_t flags) {
    constexpr std::int32_t kLast = std::numeric_limits<std::int32_t>::max() - 1;
    const POINT at{std::min(point.x, kLast), std::min(point.y, kLast)};
    return monitorOf({at.x, at.y, at.x + 1, at.y + 1}, flags);
}

HMONITOR MonitorFromWindow(HWND hWnd, std::uint32_t flags) {
    RECT place;
    if (!GetWindowRect(hWnd, place)) {
        return flags == MONITOR_DEFAULTTONULL ? 0 : monitorOf({}, MONITOR_DEFAULTTOPRIMARY);
    }
    return monitorOf(place, flags);
}

HMONITOR MonitorFromRect(const RECT& rect, std::uint32_t flags) {
    // Without an area it is a point.
    if (isEmpty(rect)) return MonitorFromPoint({rect.left, rect.top}, flags);
    return monitorOf(rect, flags);
}

bool GetMonitorInfoA(HMONITOR hMonitor, MONITORINFO& info) {
    if (info.cbSize != sizeof(MONITORINFO)) return false;
    const std::vector<Monitor>& all = monitors();
    const auto found = std::ranges::find(all, hMonitor, &Monitor::handle);
    if (found == all.end()) return false;
    info.rcMonitor = found->screen.bounds;
    info.rcWork = found->screen.work;
    info.dwFlags = found->screen.primary ? MONITORINFOF_PRIMARY : 0;
    return true;
}

// ---- The desktop's look

std::vector<COLORREF> systemColorsOf(const QPalette& palette) {
    struct Source {
        QPalette::ColorRole role;
        QPalette::ColorGroup group = QPalette::Active;
    };
    // By the numbers of GetSysColor. The face of dialogs and buttons is one colour there, with one
    // text colour on it: the window's, not the button's, of the palette.
    static constexpr Source kSources[] = {
        {QPalette::Window},                          // 0 scroll bar
        {QPalette::Dark},                            // 1 desktop
        {QPalette::Highlight},                       // 2 title of the active window
        {QPalette::Mid},                             // 3 and of others
        {QPalette::Window},                          // 4 menu
        {QPalette::Base},                            // 5 window
        {QPalette::Shadow},                          // 6 its frame
        {QPalette::WindowText},                      // 7 text in menus
        {QPalette::Text},                            // 8 and windows
        {QPalette::HighlightedText},                 // 9 text in the active title
        {QPalette::Window},                          // 10 borders
        {QPalette::Window},                          // 11
        {QPalette::Dark},                            // 12 behind documents
        {QPalette::Highlight},                       // 13 selection
        {QPalette::HighlightedText},                 // 14
        {QPalette::Window},                          // 15 face of buttons and dialogs
        {QPalette::Dark},                            // 16 shadow
        {QPalette::WindowText, QPalette::Disabled},  // 17 disabled text
        {QPalette::WindowText},                      // 18 text on the face
        {QPalette::WindowText, QPalette::Disabled},  // 19 text in other titles
        {QPalette::Light},                           // 20 edges, from light to dark
        {QPalette::Shadow},                          // 21
        {QPalette::Midlight},                        // 22
        {QPalette::ToolTipText},                     // 23 tips
        {QPalette::ToolTipBase},                     // 24
        {QPalette::AlternateBase},                   // 25
        {QPalette::Link},                            // 26
        {QPalette::Highlight},                       // 27 ends of title gradients
        {QPalette::Mid},                             // 28
        {QPalette::Highlight},                       // 29 selection in menus
        {QPalette::Window},                          // 30 menu bar
    };
    std::vector<COLORREF> colors;
    colors.reserve(std::size(kSources));
    for (const Source& source : kSources) {
        colors.push_back(colorOf(palette.color(source.group, source.role)));
    }
    return colors;
}

int screenDotsPerInch(int index) {
    const HDC screen = GetDC(0);
    const int dots = GetDeviceCaps(screen, index);
    ReleaseDC(0, screen);
    return dots > 0 ? dots : 96;
}

bool takeDesktopLook() {
    static std::vector<COLORREF> s_taken;
    if (const std::vector<Screen> all = screens(); !all.empty()) {
        setScreenDpi(all.front().dpi, all.front().dpi);
    }
    std::vector<COLORREF> colors = systemColorsOf(QGuiApplication::palette());
    setSysColors(colors);
    const bool changed = colors != s_taken;
    s_taken = std::move(colors);
    return changed;
}

namespace {

class DesktopWatch final : public QObject {
private:
    static void tellAll(std::uint32_t uMsg) {
        std::vector<HWND> all;
        windowTable().forEach([&](HWND hWnd, auto&) { all.push_back(hWnd); });
        for (const HWND hWnd : all) {
            guarded([&] { SendMessageW(hWnd, uMsg, 0, 0); });
            InvalidateRect(hWnd);
        }
    }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::ApplicationPaletteChange) {
            // The library tells the same change several times.
            if (takeDesktopLook()) tellAll(WM_SYSCOLORCHANGE);
        } else if (event->type() == QEvent::ApplicationFontChange) {
            tellAll(WM_SETTINGCHANGE);
        }
        return false;
    }
};

}  // namespace

std::unique_ptr<QObject> watchDesktop() {
    auto watch = std::make_unique<DesktopWatch>();
    qApp->installEventFilter(watch.get());
    return watch;
}

}  // namespace platform
