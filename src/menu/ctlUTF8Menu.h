// menu/ctlUTF8Menu.h: the drawn menu. It takes over the menu of a window: every item becomes one
// that this control measures and draws, so that a caption may hold any text although the native
// menu carries text of the system code page. The items' identity, state and submenus stay native.
//
// Captions are told in menu/captions.h. Keys and picks stay with the window.
//
// In an application of several documents the menu that shows is always the frame's, so the control
// on the frame holds all records; controls on its children forward to that one by messages.
#pragma once
#include "gfx/clsGdiHandle.h"
#include "menu/MenuProps.h"
#include "menu/clsCtlUniIMenuItem.h"
#include "platform/window/fonts.h"
#include "platform/window/menu.h"
#include "win/ISubclass.h"

#include <functional>

// How an item that shows text is to look; what OnOwnerDraw may change.
struct MenuItemLook {
    Text sCaption;                      // without its key, not yet decoded
    Picture oPic;                       // none, or that of the image number
    std::int16_t iconW = 0, iconH = 0;  // pixels of the icon's cell; less than IconDim is IconDim
    bool bTransparent = true;           // the picture lacks the colour of its top left pixel
};

class ctlUTF8Menu final : public ISubclass {
public:
    // bUserMode: in a running program. In a form designer, without it, Attach does nothing.
    explicit ctlUTF8Menu(bool bUserMode = true);
    ~ctlUTF8Menu() override;
    ctlUTF8Menu(const ctlUTF8Menu&) = delete;
    ctlUTF8Menu& operator=(const ctlUTF8Menu&) = delete;

    // Takes the menu of the window, which it may not have; one that was taken before is given back
    // first. Raises as SubclassAttach, and 9, "ctlUTF8Menu.pvLoadMenuFont", "Subscript out of
    // range" for a CustomFontFace of more than 32 characters; the control is on no window then.
    void Attach(HWND lhWnd);
    // Gives all items back as they were, and hears no more messages. What popups of a window
    // without a menu it has taken stays taken.
    void Detach();
    // Takes the items that have come since, and forgets those that are gone.
    void Refresh();

    // Called for each measuring and each drawing of an item that shows text. For a text separator
    // only the caption counts. bSelected: in a drawing, the selector is on it. The handler may
    // change or end the menu, its window and this control; when it raises, or this control is gone,
    // that item stays as it was.
    std::function<void(MenuItemLook& look, bool bSelected)> OnOwnerDraw;

    // The properties. Setters only store: what is drawn next follows. The font follows at the next
    // Attach or WM_SETTINGCHANGE.
    [[nodiscard]] const MenuProps& Properties() const { return m_props; }
    [[nodiscard]] std::int16_t IconDim() const { return m_props.IconDim; }
    void IconDim(std::int16_t iIconDim) { m_props.IconDim = iIconDim; }
    [[nodiscard]] bool FadeBackground() const { return m_props.FadeBackground; }
    void FadeBackground(bool bFade) { m_props.FadeBackground = bFade; }
    [[nodiscard]] Color MenuBackColor() const { return m_props.MenuBackColor; }
    void MenuBackColor(Color lColor) { m_props.MenuBackColor = lColor; }
    [[nodiscard]] Color MenuForeColorNormal() const { return m_props.MenuForeColorNormal; }
    void MenuForeColorNormal(Color lColor) { m_props.MenuForeColorNormal = lColor; }
    [[nodiscard]] Color MenuForeColorDisabled() const { return m_props.MenuForeColorDisabled; }
    void MenuForeColorDisabled(Color lColor) { m_props.MenuForeColorDisabled = lColor; }
    [[nodiscard]] Color SelectorBackColor() const { return m_props.SelectorBackColor; }
    void SelectorBackColor(Color lColor) { m_props.SelectorBackColor = lColor; }
    [[nodiscard]] Color SelectorForeColor() const { return m_props.SelectorForeColor; }
    void SelectorForeColor(Color lColor) { m_props.SelectorForeColor = lColor; }
    [[nodiscard]] Color ExtSepBackColor() const { return m_props.ExtSepBackColor; }
    void ExtSepBackColor(Color lColor) { m_props.ExtSepBackColor = lColor; }
    [[nodiscard]] Color ExtSepForeColor() const { return m_props.ExtSepForeColor; }
    void ExtSepForeColor(Color lColor) { m_props.ExtSepForeColor = lColor; }
    [[nodiscard]] bool FadeExtSep() const { return m_props.FadeExtSep; }
    void FadeExtSep(bool bFade) { m_props.FadeExtSep = bFade; }
    [[nodiscard]] std::int32_t SelectorStyle() const { return m_props.SelectorStyle; }
    void SelectorStyle(std::int32_t lStyle) { m_props.SelectorStyle = lStyle; }
    [[nodiscard]] bool FullSelector() const { return m_props.FullSelector; }
    void FullSelector(bool bFull) { m_props.FullSelector = bFull; }
    [[nodiscard]] bool LeftBand() const { return m_props.LeftBand; }
    void LeftBand(bool bBand) { m_props.LeftBand = bBand; }
    [[nodiscard]] Color LeftBandBackColor() const { return m_props.LeftBandBackColor; }
    void LeftBandBackColor(Color lColor) { m_props.LeftBandBackColor = lColor; }
    [[nodiscard]] bool FadeLeftBand() const { return m_props.FadeLeftBand; }
    void FadeLeftBand(bool bFade) { m_props.FadeLeftBand = bFade; }
    [[nodiscard]] bool Separators3D() const { return m_props.Separators3D; }
    void Separators3D(bool b3D) { m_props.Separators3D = b3D; }
    [[nodiscard]] bool LeftBandSeparators() const { return m_props.LeftBandSeparators; }
    void LeftBandSeparators(bool bLine) { m_props.LeftBandSeparators = bLine; }
    [[nodiscard]] std::int32_t StringMode() const { return m_props.StringMode; }
    // Raises kOwnError, "StringMode", "This property can be set only a design time!" in a running
    // program.
    void StringMode(std::int32_t lMode);
    [[nodiscard]] bool RoundSelector() const { return m_props.RoundSelector; }
    void RoundSelector(bool bRound) { m_props.RoundSelector = bRound; }
    [[nodiscard]] const Text& CustomFontFace() const { return m_props.CustomFontFace; }
    void CustomFontFace(Text sFace) { m_props.CustomFontFace = std::move(sFace); }
    [[nodiscard]] const std::shared_ptr<MenuPictures>& ImageArray() const {
        return m_props.ImageArray;
    }
    void ImageArray(std::shared_ptr<MenuPictures> oImages) {
        m_props.ImageArray = std::move(oImages);
    }

    // Stored values by name; to be read ahead of Attach. What is not stored gets its default.
    void ReadProperties(const PropertyBag& bag);
    void WriteProperties(PropertyBag& bag) const;

    [[nodiscard]] const std::vector<clsCtlUniIMenuItem>& Items() const { return m_oItems; }

private:
    void ISubclass_WindowProc(bool bBefore, bool& bStopMsg, platform::LRESULT& lReturn, HWND hWnd,
                              std::uint32_t uMsg, platform::WPARAM wParam,
                              platform::LPARAM lParam) override;
    void handle(bool& bStopMsg, platform::LRESULT& lReturn, HWND hWnd, std::uint32_t uMsg,
                platform::WPARAM wParam, platform::LPARAM lParam);
    bool pvManagedPopup(platform::WPARAM wParam, platform::LPARAM lParam);

    // The model.
    void pvTakeMenu(platform::HMENU hMenu);
    void pvRegister();
    void pvWithdraw() const noexcept;
    void pvOwnerDrawMenu(platform::HMENU hMenu, std::int32_t lItemType, bool bThisLevelOnly);
    // Makes the item owner-drawn, with a record, unless it is owner-drawn already, or has no text
    // on an old platform. False when there is no such item.
    bool pvTakeItem(platform::HMENU hMenu, std::uint32_t lPosition, std::int32_t lItemType);
    void pvPurgeItems();
    void pvPreparePopup(platform::HMENU hMenu);
    void pvLoadMenuFont();
    void pvReadBarColor();
    [[nodiscard]] bool pvIsMdiContainer() const;
    [[nodiscard]] bool pvIsMdiChild() const;
    [[nodiscard]] HWND pvActiveMdiChild() const;
    void pvTellActiveChild() const;  // that this control's window is its frame

    // Measuring and drawing.
    struct ItemTexts;
    class MenuFont;
    void pvMeasureItem(platform::MEASUREITEMSTRUCT& item, std::int32_t lStringMode);
    void pvDrawItem(const platform::DRAWITEMSTRUCT& item, std::int32_t lStringMode);
    [[nodiscard]] ItemTexts pvPrepare(std::uint32_t itemData, std::int32_t lStringMode,
                                      bool bSelected);
    void pvLeftBand(HDC hDC, const RECT& rect) const;
    void pvBackground(HDC hDC, const RECT& rect, Color lColor) const;
    void pvLine(HDC hDC, int x1, int x2, int y) const;
    void pvDrawSeparator(HDC hDC, const RECT& rect) const;
    void pvDrawTextSeparator(HDC hDC, RECT rect, const ItemTexts& texts) const;
    void pvDrawBarItem(const platform::DRAWITEMSTRUCT& item, const ItemTexts& texts) const;
    void pvDrawPopupItem(const platform::DRAWITEMSTRUCT& item, const ItemTexts& texts);
    [[nodiscard]] int bandWidth() const { return m_props.LeftBand ? m_props.IconDim + 4 : 0; }
    [[nodiscard]] const clsCtlUniIMenuItem& record(std::uint32_t itemData) const;
    [[nodiscard]] const Picture& picChecked();

    MenuProps m_props;
    // In the order of their keys, which rise. "K" and the key in decimal names a record.
    std::vector<clsCtlUniIMenuItem> m_oItems;
    std::int32_t m_lNextKey = 0;
    HWND m_hWnd = 0;
    platform::HMENU m_hMenu = 0;
    HWND m_hWndMdiClient = 0;  // of a frame
    HWND m_hWndMdiFrame = 0;   // of a child, once the frame has told it
    bool m_bOldMenuApi = false;
    bool m_bUserMode;
    Color m_lMenuBarColor = sysColor(4);
    platform::LOGFONTA m_tLogFont;
    std::shared_ptr<clsGdiHandle> m_oFont;  // made of m_tLogFont when it is first needed
    Picture m_oPicChecked;
    std::shared_ptr<const bool> m_oLife = std::make_shared<bool>(true);  // as long as this control
};
