// Measuring and drawing of items, straight on the context that the platform hands in.
#include "file/pvWindowsVersion.h"
#include "gfx/modCtlCommon_alphaImg.h"
#include "gfx/modCtlCommon_ctl_colors.h"
#include "gfx/modCtlCommon_ctl_faces.h"
#include "gfx/modCtlCommon_ctl_shapes.h"
#include "gfx/modCtlCommon_ctl_text.h"
#include "menu/captions.h"
#include "menu/ctlUTF8Menu.h"
#include "platform/base/failure.h"
#include "platform/window/textout.h"

#include <algorithm>
#include <optional>

using namespace platform;

namespace {

constexpr std::uint32_t kLeft = DT_LEFT | DT_VCENTER | DT_SINGLELINE;
constexpr std::uint32_t kCenter = DT_CENTER | DT_VCENTER | DT_SINGLELINE;
constexpr std::uint32_t kRight = DT_RIGHT | DT_VCENTER | DT_SINGLELINE;
constexpr Color kWhite = 0xFFFFFF;
constexpr std::int32_t kWindows95 = 3;

std::uint32_t extent(int pixels) { return static_cast<std::uint32_t>(std::max(pixels, 0)); }

bool has(const DRAWITEMSTRUCT& item, std::uint32_t state) { return (item.itemState & state) != 0; }

// On a bar the selector shows also under the mouse.
bool isSelectedOnBar(const DRAWITEMSTRUCT& item) {
    return has(item, ODS_SELECTED | ODS_HOTLIGHT) && !has(item, ODS_DISABLED);
}
bool isSelected(const DRAWITEMSTRUCT& item) {
    return has(item, ODS_SELECTED) && !has(item, ODS_DISABLED);
}

// The check mark, 24 bits, black on white; X is black.
Picture checkMark() {
    constexpr int kSide = 7;
    constexpr const char* kRows[kSide] = {
        "......X", ".....XX", "X...XXX", "XX.XXX.", "XXXXX..", ".XXX...", "..X....",
    };
    BITMAPINFO info;
    info.bmiHeader.biWidth = info.bmiHeader.biHeight = kSide;
    info.bmiHeader.biBitCount = 24;
    void* pBits = nullptr;
    const HBITMAP hBitmap = CreateDIBSection(0, info, DIB_RGB_COLORS, pBits);
    if (hBitmap == 0) return nullptr;
    constexpr int kStride = (kSide * 3 + 3) / 4 * 4;
    for (int y = 0; y < kSide; ++y) {
        auto* row = static_cast<std::uint8_t*>(pBits) + (kSide - 1 - y) * kStride;
        for (int x = 0; x < kSide; ++x) std::fill_n(row + x * 3, 3, kRows[y][x] == 'X' ? 0 : 255);
    }
    return OleCreatePictureIndirect({PICTYPE_BITMAP, hBitmap}, true);
}

class WindowContext {
public:
    explicit WindowContext(HWND hWnd) : m_hWnd(hWnd), m_hDC(GetDC(hWnd)) {}
    ~WindowContext() { ReleaseDC(m_hWnd, m_hDC); }
    WindowContext(const WindowContext&) = delete;
    WindowContext& operator=(const WindowContext&) = delete;
    operator HDC() const { return m_hDC; }

private:
    HWND m_hWnd;
    HDC m_hDC;
};

}  // namespace

// What is needed of a record while the handler of OnOwnerDraw may do as it likes with the records.
struct ctlUTF8Menu::ItemTexts {
    std::int32_t ItemType = mitBar;
    Text sText;      // decoded, to be shown
    Text sShortcut;  // of a popup item
    MenuItemLook look;
};

// The font of m_tLogFont in a context. It is made once for all items; whoever holds it keeps it
// alive when the settings change meanwhile.
class ctlUTF8Menu::MenuFont {
public:
    MenuFont(ctlUTF8Menu& menu, HDC hDC) : m_hDC(hDC) {
        if (!menu.m_oFont) {
            menu.m_oFont = std::make_shared<clsGdiHandle>(CreateFontIndirectA(menu.m_tLogFont));
        }
        m_oFont = menu.m_oFont;
        if (m_oFont->Handle() != 0) m_hOldFont = SelectObject(hDC, m_oFont->Handle());
    }
    ~MenuFont() {
        if (m_hOldFont != 0) SelectObject(m_hDC, m_hOldFont);
    }
    MenuFont(const MenuFont&) = delete;
    MenuFont& operator=(const MenuFont&) = delete;

private:
    HDC m_hDC;
    std::shared_ptr<clsGdiHandle> m_oFont;
    HGDIOBJ m_hOldFont = 0;
};

const Picture& ctlUTF8Menu::picChecked() {
    if (!m_oPicChecked) m_oPicChecked = checkMark();
    return m_oPicChecked;
}

ctlUTF8Menu::ItemTexts ctlUTF8Menu::pvPrepare(std::uint32_t itemData, std::int32_t lStringMode,
                                              bool bSelected) {
    ItemTexts texts;
    const clsCtlUniIMenuItem& oItem = record(itemData);
    const HMENU hMenu = oItem.MenuHandle;
    const std::uint32_t lItemId = oItem.ItemId;
    const bool bPlain = oItem.ItemType == mitBar || oItem.ItemType == mitPopup;
    texts.ItemType = oItem.ItemType;
    texts.look.sCaption = pvCaptionWithoutShortcut(oItem.Caption);
    if (bPlain) {
        if (oItem.ItemType == mitPopup) texts.sShortcut = pvShortcutText(oItem.Caption);
        texts.look.iconW = texts.look.iconH = m_props.IconDim;
        const std::int32_t lImage = pvImageIndex(oItem.Caption);
        const MenuPictures* oImages = m_props.ImageArray.get();
        // A number without a picture is no failure.
        if (lImage >= 1 && oImages != nullptr &&
            static_cast<std::size_t>(lImage) <= oImages->size()) {
            texts.look.oPic = (*oImages)[static_cast<std::size_t>(lImage) - 1];
        }
    }
    if (OnOwnerDraw) {
        const auto handler = OnOwnerDraw;  // it may put another one in its place,
        const std::weak_ptr<const bool> life = m_oLife;
        handler(texts.look, bSelected);
        if (life.expired()) throw Failure(kOwnError, u"ctlUTF8Menu", u"The menu has ended.");
    }
    texts.sText = pvDecodedCaption(pvCleanCaption(texts.look.sCaption), lStringMode);
    texts.look.iconW = std::max(texts.look.iconW, m_props.IconDim);
    texts.look.iconH = std::max(texts.look.iconH, m_props.IconDim);
    (void)setMenuItemShownText(hMenu, lItemId, false, texts.sText);
    return texts;
}

// ---- Measuring

void ctlUTF8Menu::pvMeasureItem(MEASUREITEMSTRUCT& item, std::int32_t lStringMode) {
    if (record(item.itemData).ItemType == mitSeparator) {
        item.itemHeight = 5;
        return;
    }
    const WindowContext hDC(m_hWnd);
    const MenuFont font(*this, hDC);
    const ItemTexts texts = pvPrepare(item.itemData, lStringMode, false);
    SIZE size = TextSize(hDC, texts.sText, 0);
    if (texts.ItemType == mitTextSeparator) {
        item.itemWidth = extent(size.cx + (m_props.LeftBand ? 6 + m_props.IconDim : 4));
        item.itemHeight = extent(size.cy + 2);
        return;
    }
    int iWidth = 0;
    if (texts.ItemType == mitPopup) {
        if (!texts.sShortcut.empty()) {
            size = TextSize(hDC, texts.sText + u"    " + texts.sShortcut, 0);
        }
        iWidth = size.cx + 6 + texts.look.iconW;
    } else {
        iWidth = texts.look.oPic ? size.cx + 6 + texts.look.iconW : size.cx;
    }
    const int iHeight =
        std::max<int>(size.cy, texts.look.iconH) + 2 + (m_props.FullSelector ? 2 : 0);
    item.itemWidth = extent(iWidth);
    item.itemHeight = extent(iHeight);
}

// ---- Drawing

void ctlUTF8Menu::pvDrawItem(const DRAWITEMSTRUCT& item, std::int32_t lStringMode) {
    const std::int32_t lItemType = record(item.itemData).ItemType;
    std::optional<MenuFont> font;
    if (!m_props.CustomFontFace.empty()) font.emplace(*this, item.hDC);
    SetBkMode(item.hDC, TRANSPARENT);
    if (lItemType == mitSeparator) {
        pvDrawSeparator(item.hDC, item.rcItem);
        return;
    }
    const bool bSelected = lItemType != mitTextSeparator && isSelected(item);
    const ItemTexts texts = pvPrepare(item.itemData, lStringMode, bSelected);
    if (texts.ItemType == mitTextSeparator) {
        pvDrawTextSeparator(item.hDC, item.rcItem, texts);
    } else if (texts.ItemType == mitBar) {
        pvDrawBarItem(item, texts);
    } else {
        pvDrawPopupItem(item, texts);
    }
}

void ctlUTF8Menu::pvLeftBand(HDC hDC, const RECT& rect) const {
    if (!m_props.LeftBand) return;
    const int right = rect.left + bandWidth();
    const Color lColor = m_props.LeftBandBackColor;
    if (m_props.FadeLeftBand) {
        GradientH(hDC, rect.left, rect.top, right, rect.bottom, ColorBrighten(lColor, 51),
                  ColorBrighten(lColor, -17));
    } else {
        DrawRectXY(hDC, rect.left, rect.top, right, rect.bottom, lColor, true);
    }
    if (!m_props.LeftBandSeparators) return;
    DrawLine(hDC, right - 1, rect.top, right - 1, rect.bottom, m_props.MenuForeColorNormal);
    if (m_props.Separators3D) DrawLine(hDC, right, rect.top, right, rect.bottom, kWhite);
}

// Right of the band.
void ctlUTF8Menu::pvBackground(HDC hDC, const RECT& rect, Color lColor) const {
    const int left = rect.left + bandWidth();
    if (m_props.FadeBackground) {
        GradientH(hDC, left, rect.top, rect.right, rect.bottom, ColorBrighten(lColor, -17),
                  ColorBrighten(lColor, 17));
    } else {
        DrawRectXY(hDC, left, rect.top, rect.right, rect.bottom, lColor, true);
    }
}

// A line of a separator, with its white one below.
void ctlUTF8Menu::pvLine(HDC hDC, int x1, int x2, int y) const {
    DrawLine(hDC, x1, y, x2, y, m_props.MenuForeColorNormal);
    if (m_props.Separators3D) DrawLine(hDC, x1, y + 1, x2, y + 1, kWhite);
}

void ctlUTF8Menu::pvDrawSeparator(HDC hDC, const RECT& rect) const {
    pvBackground(hDC, rect, m_props.MenuBackColor);
    pvLeftBand(hDC, rect);
    pvLine(hDC, rect.left + 2 + bandWidth(), rect.right - 2, rect.top + 2);
}

void ctlUTF8Menu::pvDrawTextSeparator(HDC hDC, RECT rect, const ItemTexts& texts) const {
    if (m_props.FadeExtSep) {
        const Color lColor = m_props.ExtSepBackColor;
        GradientV(hDC, rect.left + bandWidth(), rect.top, rect.right, rect.bottom,
                  ColorBrighten(lColor, 34), ColorBrighten(lColor, -34));
    } else {
        pvBackground(hDC, rect, m_props.ExtSepBackColor);
    }
    pvLeftBand(hDC, rect);
    rect.left += bandWidth();
    const int w = TextSize(hDC, texts.sText, 0).cx;
    const int side = (rect.right - rect.left - 4 - w) / 2;
    const int y = (rect.bottom - rect.top) / 2 + rect.top + 1;
    int x = rect.left + 2;
    pvLine(hDC, x, x + side - 2, y);
    TextDrawColor(hDC, texts.sText, rect, m_props.ExtSepForeColor, kCenter);
    x += side + w + 2;
    pvLine(hDC, x, x + side - 2, y);
}

namespace {

void drawIcon(const DRAWITEMSTRUCT& item, const RECT& rect, const Picture& oPic,
              const MenuItemLook& look) {
    ImagePlacing placing;
    placing.bPicGrayed = has(item, ODS_DISABLED);
    placing.bPicTransparent = look.bTransparent;
    placing.iPicWidth = look.iconW;
    placing.iPicHeight = look.iconH;
    pvOverlapImage(item.hDC, rect.left + 2, rect.top + 1, rect.left + 2 + look.iconW,
                   rect.bottom - 1, oPic.get(), placing);
}

ButtonFace selectorFace(const MenuProps& props, Color lBack, Color lOuter) {
    ButtonFace face;
    face.iBackColor = lBack;
    face.bBorder = true;
    face.bRounded = props.RoundSelector;
    face.iStyle = props.SelectorStyle;
    face.iOuterColor = lOuter;
    face.bAdapt = true;
    return face;
}

}  // namespace

void ctlUTF8Menu::pvDrawBarItem(const DRAWITEMSTRUCT& item, const ItemTexts& texts) const {
    Color lBack = m_lMenuBarColor, lFore = sysColor(7);
    if (has(item, ODS_DISABLED)) {
        lFore = sysColor(17);
    } else if (has(item, ODS_SELECTED | ODS_HOTLIGHT)) {
        lBack = m_props.SelectorBackColor;
        lFore = m_props.SelectorForeColor;
    }
    RECT rect = item.rcItem;
    if (isSelectedOnBar(item)) {
        if (pvWindowsVersion() == kWindows95) --rect.right;
        DrawButtonFace(item.hDC, rect, selectorFace(m_props, lBack, m_lMenuBarColor));
    } else {
        DrawRect(item.hDC, rect, lBack, true);
    }
    if (!texts.look.oPic) {
        TextDrawColor(item.hDC, texts.sText, rect, lFore, kCenter);
        return;
    }
    drawIcon(item, rect, texts.look.oPic, texts.look);
    rect.left += 2 + texts.look.iconW;
    InflateRect(rect, -4, 0);
    TextDrawColor(item.hDC, texts.sText, rect, lFore, kLeft);
}

void ctlUTF8Menu::pvDrawPopupItem(const DRAWITEMSTRUCT& item, const ItemTexts& texts) {
    const bool bDisabled = has(item, ODS_DISABLED);
    Color lBack = m_props.MenuBackColor, lFore = m_props.MenuForeColorNormal;
    if (bDisabled) {
        lFore = m_props.MenuForeColorDisabled;
    } else if (has(item, ODS_SELECTED | ODS_HOTLIGHT)) {
        lBack = m_props.SelectorBackColor;
        lFore = m_props.SelectorForeColor;
    }
    const Picture oPic = has(item, ODS_CHECKED) ? picChecked() : texts.look.oPic;
    RECT rect = item.rcItem;
    if (isSelected(item)) {
        RECT selector = rect;
        if (!m_props.FullSelector && (oPic || m_props.LeftBand)) {
            selector.left += 2 + texts.look.iconW + 2;
        }
        DrawButtonFace(item.hDC, selector, selectorFace(m_props, lBack, m_props.MenuBackColor));
    } else {
        pvBackground(item.hDC, rect, lBack);
        pvLeftBand(item.hDC, rect);
    }
    if (oPic) drawIcon(item, rect, oPic, texts.look);
    rect.left += 2 + texts.look.iconW;
    InflateRect(rect, -4, 0);

    const auto drawTexts = [&](const RECT& place, Color lColor) {
        TextDrawColor(item.hDC, texts.sText, place, lColor, kLeft);
        if (texts.sShortcut.empty()) return;
        TextDrawColor(item.hDC, texts.sShortcut, place, lColor, kRight);
    };
    if (m_props.Separators3D && bDisabled) {
        drawTexts({rect.left + 1, rect.top + 1, rect.right + 1, rect.bottom + 1}, kWhite);
    }
    drawTexts(rect, lFore);
}
