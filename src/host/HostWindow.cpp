#include "host/HostWindow.h"

#include "gfx/modCtlCommon_ctl_colors.h"
#include "gfx/modCtlCommon_src_helpers.h"
#include "gfx/rounding.h"
#include "host/Form.h"
#include "host/hostFocus.h"
#include "platform/window/fonts.h"
#include "platform/window/input.h"
#include "platform/window/mask.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

using platform::LPARAM;
using platform::LRESULT;
using platform::WPARAM;

namespace {

std::unordered_map<HWND, HostWindow*>& hosts() {
    static std::unordered_map<HWND, HostWindow*> all;
    return all;
}

constexpr std::int16_t kLeft = 1, kRight = 2, kMiddle = 4;

std::int16_t buttonOf(std::uint32_t uMsg) {
    switch (uMsg) {
    case platform::WM_LBUTTONDOWN:
    case platform::WM_LBUTTONUP:
    case platform::WM_LBUTTONDBLCLK:
        return kLeft;
    case platform::WM_RBUTTONDOWN:
    case platform::WM_RBUTTONUP:
    case platform::WM_RBUTTONDBLCLK:
        return kRight;
    default:
        return kMiddle;
    }
}

}  // namespace

// ---- Life

HostWindow::HostWindow() = default;

HostWindow::~HostWindow() {
    m_life.reset();
    // By now the derived parts are gone, and with them their notifications.
    const HWND window = m_hWnd;
    leaveWindow();
    if (window != 0) platform::DestroyWindow(window);
    platform::DeleteObject(m_hRgn);
}

HostWindow* HostWindow::find(HWND hWnd) {
    const auto found = hosts().find(hWnd);
    return found == hosts().end() ? nullptr : found->second;
}

void HostWindow::forEachHost(const std::function<void(HostWindow&)>& f) {
    std::vector<std::pair<std::uint32_t, HWND>> order;
    for (const auto& [window, host] : hosts()) order.emplace_back(host->m_creation, window);
    std::ranges::sort(order);
    for (const auto& [creation, window] : order) {
        if (HostWindow* host = find(window)) f(*host);
    }
}

Form* HostWindow::form() const {
    for (HWND around = m_hWnd; around != 0; around = platform::GetParent(around)) {
        if (auto* found = dynamic_cast<Form*>(find(around))) return found;
    }
    return nullptr;
}

bool HostWindow::create(HWND parent, const RECT& place) {
    platform::WindowOptions options;
    options.parent = parent;
    options.position = {place.left, place.top};
    options.size = {place.right - place.left, place.bottom - place.top};
    return createOfKind(options);
}

bool HostWindow::createOfKind(const platform::WindowOptions& options) {
    if (m_hWnd != 0) return false;
    startFocusWatch();
    platform::WindowOptions full = options;
    full.procedure = procedure;
    full.userData = reinterpret_cast<std::intptr_t>(this);
    full.background = TranslateColor(m_backColor);
    const HWND window = platform::createWindow(full);
    if (window == 0) return false;

    static std::uint32_t creations = 0;
    m_creation = ++creations;
    m_hWnd = window;
    hosts()[window] = this;
    RECT client;
    platform::GetClientRect(window, client);
    m_place = {full.position.x, full.position.y, full.position.x + client.right,
               full.position.y + client.bottom};
    m_hDC = platform::GetDC(window);
    platform::SetBkMode(m_hDC, platform::TRANSPARENT);
    platform::SetTextColor(m_hDC, TranslateColor(m_foreColor));
    selectFont();
    (void)platform::setAccessible(window, this);
    if (!m_enabled) platform::EnableWindow(window, false);
    if (!m_visible) platform::ShowWindow(window, platform::SW_HIDE);
    if (m_oleDropMode != 0) (void)platform::setDropTarget(window, this);
    applyCursor();
    applyShape();

    const Life life(*this);
    onCreate();
    if (life && m_hWnd != 0) onResize();
    return true;
}

void HostWindow::destroy() {
    if (m_hWnd != 0) platform::DestroyWindow(m_hWnd);
}

void HostWindow::leaveWindow() {
    if (m_hWnd == 0) return;
    const HWND window = std::exchange(m_hWnd, 0);
    hosts().erase(window);
    (void)platform::setAccessible(window, nullptr);
    (void)platform::setDropTarget(window, nullptr);
    platform::SelectObject(m_hDC, m_hOldFont);
    platform::DeleteObject(std::exchange(m_hFont, 0));
    platform::ReleaseDC(window, std::exchange(m_hDC, 0));
    m_hOldFont = 0;
    m_pressed = 0;
    leaveFocus(*this);  // last: what it is told may fail
}

// ---- Messages

LRESULT HostWindow::procedure(HWND hWnd, std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
    if (HostWindow* host = find(hWnd)) {
        const Life life(*host);
        const auto there = [&] { return life && host->m_hWnd == hWnd; };
        LRESULT result = 0;
        try {
            if (host->dispatch(uMsg, wParam, lParam)) return result;
            if (there() && host->onMessage(uMsg, wParam, lParam, result)) return result;
        } catch (...) {
            if (uMsg == platform::WM_DESTROY && there()) host->leaveWindow();
            throw;
        }
        if (uMsg == platform::WM_DESTROY && there()) host->leaveWindow();
    }
    return platform::DefWindowProcW(hWnd, uMsg, wParam, lParam);
}

// The notification of a message. True when the message ends there.
bool HostWindow::dispatch(std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
    using namespace platform;
    switch (uMsg) {
    case WM_DESTROY:
        onDestroy();
        return false;
    case WM_PAINT:
        if (!m_autoRedraw) onPaint();
        return true;
    case WM_MOVE: {
        const POINT at = pointOf(lParam);
        m_place = {at.x, at.y, at.x + ScaleWidth(), at.y + ScaleHeight()};
        return false;
    }
    case WM_SIZE: {  // behind a WM_MOVE; by now the picture has that size as well
        RECT client;
        GetClientRect(m_hWnd, client);
        const bool resized = client.right != ScaleWidth() || client.bottom != ScaleHeight();
        m_place.right = m_place.left + client.right;
        m_place.bottom = m_place.top + client.bottom;
        if (resized) onResize();
        return false;
    }
    case WM_MOUSEMOVE: {
        const POINT at = pointOf(lParam);
        onMouseMove(buttonsIn(wParam), shiftState(), static_cast<float>(at.x),
                    static_cast<float>(at.y));
        return false;
    }
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN:
        mousePressed(buttonOf(uMsg), pointOf(lParam), false);
        return false;
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDBLCLK:
    case WM_MBUTTONDBLCLK:
        mousePressed(buttonOf(uMsg), pointOf(lParam), true);
        return false;
    case WM_LBUTTONUP:
    case WM_RBUTTONUP:
    case WM_MBUTTONUP:
        mouseReleased(buttonOf(uMsg), pointOf(lParam));
        return false;
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
    case WM_KEYUP:
    case WM_SYSKEYUP: {
        auto code = static_cast<std::int16_t>(wParam);
        std::int16_t shift = shiftState();
        if (uMsg == WM_KEYDOWN || uMsg == WM_SYSKEYDOWN) {
            onKeyDown(code, shift);
        } else {
            onKeyUp(code, shift);
        }
        return false;
    }
    case WM_CHAR: {
        auto unit = static_cast<std::int16_t>(wParam);
        onKeyPress(unit);
        return false;
    }
    case WM_SYSCOLORCHANGE:
        setWindowBackground(m_hWnd, TranslateColor(m_backColor));
        SetTextColor(m_hDC, TranslateColor(m_foreColor));
        onAmbientChanged();
        return false;
    default:
        return false;
    }
}

std::int16_t HostWindow::shiftState() { return static_cast<std::int16_t>(GetShiftState()); }

std::int16_t HostWindow::buttonsIn(WPARAM flags) {
    std::int16_t buttons = 0;
    if ((flags & platform::MK_LBUTTON) != 0) buttons |= kLeft;
    if ((flags & platform::MK_RBUTTON) != 0) buttons |= kRight;
    if ((flags & platform::MK_MBUTTON) != 0) buttons |= kMiddle;
    return buttons;
}

void HostWindow::mousePressed(std::int16_t button, POINT at, bool second) {
    const Life life(*this);
    if (m_canGetFocus && !HasFocus()) {
        SetFocus();
        if (!life || m_hWnd == 0) return;
    }
    if (second) {
        onDblClick();
        return;
    }
    m_pressed |= button;
    onMouseDown(button, shiftState(), static_cast<float>(at.x), static_cast<float>(at.y));
}

void HostWindow::mouseReleased(std::int16_t button, POINT at) {
    const bool click = (m_pressed & button) != 0 && at.x >= 0 && at.y >= 0 && at.x < ScaleWidth() &&
                       at.y < ScaleHeight();
    m_pressed &= ~button;
    const Life life(*this);
    onMouseUp(button, shiftState(), static_cast<float>(at.x), static_cast<float>(at.y));
    if (click && life && m_hWnd != 0) onClick();
}

// ---- Place and state

void HostWindow::move(int left, int top, int width, int height) {
    const RECT place{left, top, left + std::max(width, 0), top + std::max(height, 0)};
    if (place == m_place) return;
    if (m_hWnd == 0) {
        const bool resized =
            place.right - place.left != ScaleWidth() || place.bottom - place.top != ScaleHeight();
        m_place = place;
        if (resized) onResize();
        return;
    }
    platform::SetWindowPos(m_hWnd, 0, left, top, width, height,
                           platform::SWP_NOZORDER | platform::SWP_NOACTIVATE);
}

void HostWindow::Enabled(bool bEnabled) {
    if (bEnabled == m_enabled) return;
    m_enabled = bEnabled;
    const Life life(*this);
    if (m_hWnd != 0) platform::EnableWindow(m_hWnd, bEnabled);
    if (!life) return;
    onEnabledChanged();
    if (life) tellAccessible(platform::AccessibleChange::State);
}

void HostWindow::Visible(bool bVisible) {
    m_visible = bVisible;
    if (m_hWnd != 0) {
        platform::ShowWindow(m_hWnd, bVisible ? platform::SW_SHOWNOACTIVATE : platform::SW_HIDE);
    }
}

void HostWindow::ForeColor(Color iColor) {
    m_foreColor = iColor;
    platform::SetTextColor(m_hDC, TranslateColor(iColor));
}

void HostWindow::BackColor(Color iColor) {
    m_backColor = iColor;
    if (m_hWnd != 0) platform::setWindowBackground(m_hWnd, TranslateColor(iColor));
}

void HostWindow::Font(const StdFont& oFont) {
    m_font = oFont;
    selectFont();
    onFontChanged();
}

void HostWindow::selectFont() {
    if (m_hDC == 0) return;
    const double points = std::clamp(m_font.Size, 0.0, 32767.0);
    const int height =
        platform::MulDiv(gfx::roundHalfEven(points * 100.0),
                         -platform::GetDeviceCaps(m_hDC, platform::LOGPIXELSY), 7200);
    const HFONT font = platform::CreateFontW(
        height, 0, 0, 0, m_font.Bold ? platform::FW_BOLD : platform::FW_NORMAL,
        m_font.Italic ? 1 : 0, m_font.Underline ? 1 : 0, m_font.Strikethrough ? 1 : 0,
        platform::DEFAULT_CHARSET, 0, 0, 0, 0, m_font.Name);
    if (font == 0) return;
    const HFONT previous = platform::SelectObject(m_hDC, font);
    if (m_hFont == 0) {
        m_hOldFont = previous;
    } else {
        platform::DeleteObject(m_hFont);
    }
    m_hFont = font;
}

void HostWindow::MousePointer(std::int16_t iPointer) {
    m_mousePointer = iPointer;
    applyCursor();
}

void HostWindow::MouseIcon(Picture oIcon) {
    m_mouseIcon = std::move(oIcon);
    applyCursor();
}

HICON HostWindow::pointerCursor() const {
    if (m_mousePointer != kCustomPointer) {
        const auto id = static_cast<std::uint32_t>(CursorResource(m_mousePointer));
        return platform::LoadCursorA(0, id);
    }
    const bool icon = m_mouseIcon != nullptr && m_mouseIcon->Type() == platform::PICTYPE_ICON;
    return icon ? m_mouseIcon->Handle() : 0;
}

void HostWindow::applyCursor() {
    if (m_hWnd != 0) platform::setWindowCursor(m_hWnd, pointerCursor());
}

void HostWindow::Refresh() {
    if (m_hWnd == 0) return;
    if (!m_autoRedraw) platform::InvalidateRect(m_hWnd);
    platform::UpdateWindow(m_hWnd);
}

void HostWindow::Invalidate() {
    if (m_hWnd != 0) platform::InvalidateRect(m_hWnd);
}

// ---- Shape

void HostWindow::BackStyle(int iStyle) {
    if (iStyle == m_backStyle) return;
    m_backStyle = iStyle;
    applyShape();
}

void HostWindow::MaskPicture(Picture oMask) {
    m_maskPicture = std::move(oMask);
    applyShape();
}

void HostWindow::WindowRegion(HRGN hRgn) {
    platform::DeleteObject(std::exchange(m_hRgn, hRgn));
    applyShape();
}

void HostWindow::applyShape() {
    if (m_hWnd == 0) return;
    if (m_backStyle == 0 && m_maskPicture != nullptr) {
        const HRGN shape =
            platform::createMaskRgn(m_maskPicture->Handle(), TranslateColor(m_maskColor));
        platform::SetWindowRgn(m_hWnd, shape, false);
        platform::DeleteObject(shape);
        return;
    }
    platform::SetWindowRgn(m_hWnd, m_hRgn, false);
}

// ---- Focus, default and cancel button

void HostWindow::SetFocus() {
    if (m_hWnd != 0) platform::SetFocus(m_hWnd);
}

bool HostWindow::HasFocus() const {
    const HWND focus = platform::GetFocus();
    return m_hWnd != 0 && (focus == m_hWnd || platform::IsChild(m_hWnd, focus));
}

void HostWindow::setSoleFlag(bool HostWindow::*flag, bool value) {
    if (this->*flag == value) return;
    this->*flag = value;
    std::vector<HostWindow*> others;
    if (value) {
        if (const Form* around = form()) others = around->Controls();
    }
    const Life life(*this);
    const auto former = std::ranges::find_if(
        others, [&](const HostWindow* other) { return other != this && other->*flag; });
    if (former != others.end()) {
        (*former)->*flag = false;
        (*former)->onAmbientChanged();
    }
    if (life) onAmbientChanged();
}

void HostWindow::Default(bool b) { setSoleFlag(&HostWindow::m_default, b); }
void HostWindow::Cancel(bool b) { setSoleFlag(&HostWindow::m_cancel, b); }

// ---- Dragging

void HostWindow::OLEDropMode(std::int16_t iMode) {
    m_oleDropMode = iMode;
    if (m_hWnd != 0) (void)platform::setDropTarget(m_hWnd, iMode == 0 ? nullptr : this);
}

void HostWindow::OLEDrag() {
    if (m_hWnd == 0) return;
    const Life life(*this);
    DataObject data;
    std::int32_t effects = platform::DROPEFFECT_NONE;
    onOLEStartDrag(data, effects);
    if (!life || m_hWnd == 0) return;
    std::int32_t effect = platform::DROPEFFECT_NONE;
    if (effects != platform::DROPEFFECT_NONE) {
        platform::DragContent content = data.content();
        content.provide = [this, life, &data](const std::string& name) {
            std::int16_t format = DataObject::formatNumber(name);
            if (!life || format == 0) return Bytes();
            onOLESetData(data, format);
            return data.GetData(format);
        };
        effect = platform::doDragDrop(m_hWnd, content, effects, [this, life](std::int32_t under) {
            bool usual = true;
            if (life) onOLEGiveFeedback(under, usual);
            return usual;
        });
    }
    if (life) onOLECompleteDrag(effect);
}

std::int32_t HostWindow::dragOver(const platform::DragData* data,
                                  const platform::DragPosition& position,
                                  platform::DragState state) {
    DataObject object;
    if (data != nullptr) object = DataObject(*data);
    std::int32_t effect = position.allowed;
    onOLEDragOver(object, effect, buttonsIn(position.buttons), shiftState(),
                  static_cast<float>(position.at.x), static_cast<float>(position.at.y),
                  static_cast<std::int16_t>(state));
    return effect & position.allowed;
}

std::int32_t HostWindow::drop(const platform::DragData& data,
                              const platform::DragPosition& position) {
    DataObject object(data);
    std::int32_t effect = position.allowed;
    onOLEDragDrop(object, effect, buttonsIn(position.buttons), shiftState(),
                  static_cast<float>(position.at.x), static_cast<float>(position.at.y));
    return effect & position.allowed;
}

// ---- Helpers of the desktop

Text withoutAccessMarks(TextView sCaption) {
    Text plain;
    plain.reserve(sCaption.size());
    for (std::size_t i = 0; i < sCaption.size(); ++i) {
        if (sCaption[i] == u'&' && ++i == sCaption.size()) break;
        plain += sCaption[i];
    }
    return plain;
}

void HostWindow::AccessibleName(Text sName) {
    m_accessibleName = std::move(sName);
    tellAccessible(platform::AccessibleChange::Name);
}

Text HostWindow::accessibleName() const {
    return m_accessibleName.empty() ? accessibleText() : m_accessibleName;
}

Text HostWindow::accessibleAccelerator() const {
    return m_accessKeys.empty() ? Text() : u"Alt+" + m_accessKeys.substr(0, 1);
}

platform::AccessibleState HostWindow::accessibleState() const {
    return {.focusable = m_canGetFocus, .defaultButton = m_default};
}

void HostWindow::tellAccessible(platform::AccessibleChange change) const {
    if (m_hWnd != 0) platform::tellAccessible(m_hWnd, change);
}
