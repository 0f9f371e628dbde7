// The model: the records of the items, taking a menu over and giving it back, the properties.
#include "menu/ctlUTF8Menu.h"

#include "file/pvWindowsVersion.h"
#include "menu/captions.h"
#include "menu/menuMessages.h"
#include "platform/base/codepages.h"
#include "platform/base/failure.h"
#include "platform/window/screen.h"
#include "platform/window/window.h"
#include "win/MSubclass.h"

#include <algorithm>
#include <array>
#include <optional>
#include <unordered_map>

using namespace platform;

namespace {

constexpr std::int32_t kSubscriptOutOfRange = 9;

// On the window; on the window of the documents of a frame there is WM_MDISETMENU.
constexpr std::uint32_t kMessages[] = {
    WM_DRAWITEM,       WM_MEASUREITEM,    WM_INITMENUPOPUP,    WM_APP_MDIFRAME,
    WM_APP_REQDATA_MI, WM_APP_REQDATA_DI, WM_APP_MDISAVEPOPUP, WM_SETTINGCHANGE,
};

// Platforms whose menus know MIIM_TYPE in place of MIIM_STRING and MIIM_FTYPE.
bool hasOldMenuApi() {
    const std::int32_t lVersion = pvWindowsVersion();
    return lVersion < 4 || lVersion == 6 || lVersion == 7;
}

bool isItem(HMENU hMenu, std::uint32_t lItemId, bool bOldMenuApi) {
    MENUITEMINFOA info;
    info.fMask = MIIM_ID | (bOldMenuApi ? MIIM_TYPE : MIIM_FTYPE);
    return GetMenuItemInfoA(hMenu, lItemId, false, info);
}

// Where the items of records are by now. An identifier may be that of several items, as the 0 of
// separators often is; the key in the user data is that of one.
class OwnItems {
public:
    explicit OwnItems(std::uint32_t lTypeMask) : m_lTypeMask(lTypeMask) {}
    // nullopt when the item is gone, or has become somebody else's.
    std::optional<std::uint32_t> positionOf(const clsCtlUniIMenuItem& oItem) {
        const auto [menu, isNew] = m_oMenus.try_emplace(oItem.MenuHandle);
        if (isNew) read(menu->first, menu->second);
        const auto found = menu->second.find(static_cast<std::uint32_t>(oItem.Key));
        if (found == menu->second.end()) return std::nullopt;
        return found->second;
    }

private:
    using Positions = std::unordered_map<std::uint32_t, std::uint32_t>;  // by key
    void read(HMENU hMenu, Positions& oPositions) const {
        const int iCount = GetMenuItemCount(hMenu);
        for (int i = 0; i < iCount; ++i) {
            const auto lPosition = static_cast<std::uint32_t>(i);
            MENUITEMINFOA info;
            info.fMask = MIIM_DATA | m_lTypeMask;
            if (GetMenuItemInfoA(hMenu, lPosition, true, info) &&
                (info.fType & MFT_OWNERDRAW) != 0) {
                oPositions.try_emplace(info.dwItemData, lPosition);
            }
        }
    }
    std::uint32_t m_lTypeMask;
    std::unordered_map<HMENU, Positions> m_oMenus;
};

// Makes the items what they were before their records.
void giveBack(const std::vector<clsCtlUniIMenuItem>& oItems, bool bOldMenuApi) {
    const std::uint32_t lTypeMask = bOldMenuApi ? MIIM_TYPE : MIIM_FTYPE;
    OwnItems own(lTypeMask);
    const auto write = [&](const clsCtlUniIMenuItem& oItem, std::optional<std::uint32_t> lAt) {
        std::string sText = oItem.RawText;
        MENUITEMINFOA info;
        info.fMask = MIIM_ID | MIIM_DATA | lTypeMask;
        info.fType = oItem.NativeType;
        info.wID = oItem.ItemId;
        info.dwItemData = oItem.ItemData;
        info.dwTypeData = sText.data();
        info.cch = static_cast<std::uint32_t>(oItem.RawLength);
        (void)SetMenuItemInfoA(oItem.MenuHandle, lAt.value_or(oItem.ItemId), lAt.has_value(), info);
    };
    // Those first that the program has changed meanwhile: where an identifier leads to the item of
    // another record, that record has the last word.
    for (const clsCtlUniIMenuItem& oItem : oItems) {
        if (!own.positionOf(oItem)) write(oItem, std::nullopt);
    }
    for (const clsCtlUniIMenuItem& oItem : oItems) {
        if (const auto lAt = own.positionOf(oItem)) write(oItem, lAt);
    }
}

}  // namespace

ctlUTF8Menu::ctlUTF8Menu(bool bUserMode) : m_bUserMode(bUserMode) { pvReadBarColor(); }

ctlUTF8Menu::~ctlUTF8Menu() {
    if (m_bUserMode) Detach();
}

// ---- Attaching

void ctlUTF8Menu::Attach(HWND lhWnd) {
    if (!m_bUserMode) return;
    Detach();  // or its sinks would stay behind on the window that it was on
    m_bOldMenuApi = hasOldMenuApi();
    m_hWnd = lhWnd;
    m_hWndMdiClient = FindWindowExA(lhWnd, 0, "MDIClient");
    m_hWndMdiFrame = 0;
    pvLoadMenuFont();
    pvTakeMenu(GetMenu(lhWnd));
    pvTellActiveChild();
}

void ctlUTF8Menu::pvTakeMenu(HMENU hMenu) {
    Detach();
    m_oItems.clear();
    m_lNextKey = 0;
    pvRegister();
    m_hMenu = hMenu;
    pvOwnerDrawMenu(hMenu, mitBar, false);
}

void ctlUTF8Menu::pvRegister() {
    try {
        for (const std::uint32_t uMsg : kMessages) SubclassAttach(*this, m_hWnd, uMsg, smBefore);
        if (IsWindow(m_hWndMdiClient)) {
            SubclassAttach(*this, m_hWndMdiClient, WM_MDISETMENU, smBefore);
        }
    } catch (...) {
        pvWithdraw();
        throw;
    }
}

void ctlUTF8Menu::pvWithdraw() const noexcept {
    for (const std::uint32_t uMsg : kMessages) SubclassDetach(*this, m_hWnd, uMsg);
    SubclassDetach(*this, m_hWndMdiClient, WM_MDISETMENU);
}

void ctlUTF8Menu::Detach() {
    if (m_hMenu != 0) {
        // The list is empty from now on, whatever the windows do about the items that come back.
        giveBack(std::exchange(m_oItems, {}), m_bOldMenuApi);
        m_lNextKey = 0;
    }
    pvWithdraw();
    m_hMenu = 0;
}

// ---- Items

void ctlUTF8Menu::pvOwnerDrawMenu(HMENU hMenu, std::int32_t lItemType, bool bThisLevelOnly) {
    if (hMenu == 0) return;
    const int iCount = GetMenuItemCount(hMenu);
    for (int i = 0; i < iCount; ++i) {
        if (!pvTakeItem(hMenu, static_cast<std::uint32_t>(i), lItemType)) return;  // shorter by now
        if (!bThisLevelOnly) pvOwnerDrawMenu(GetSubMenu(hMenu, i), mitPopup, false);
    }
}

bool ctlUTF8Menu::pvTakeItem(HMENU hMenu, std::uint32_t lPosition, std::int32_t lItemType) {
    const std::uint32_t lTypeMask = m_bOldMenuApi ? MIIM_TYPE : MIIM_FTYPE;
    std::array<char, 256> aText{};
    MENUITEMINFOA info;
    info.fMask = MIIM_ID | MIIM_DATA | lTypeMask | (m_bOldMenuApi ? 0 : MIIM_STRING);
    info.dwTypeData = aText.data();
    info.cch = aText.size();
    if (!GetMenuItemInfoA(hMenu, lPosition, true, info)) return false;
    if ((info.fType & MFT_OWNERDRAW) != 0) return true;
    const Text sText =
        bytesToText(reinterpret_cast<const std::uint8_t*>(aText.data()), info.cch, GetACP());
    if (m_bOldMenuApi && sText.empty() && info.fType != MFT_SEPARATOR) return true;

    clsCtlUniIMenuItem oItem;
    oItem.Caption = sText;
    oItem.ItemType = lItemType;
    if (isTextSeparator(sText)) {
        oItem.ItemType = mitTextSeparator;
    } else if (sText.empty() && (m_bOldMenuApi || (info.fType & MFT_SEPARATOR) != 0)) {
        oItem.ItemType = mitSeparator;
    }
    oItem.Key = m_lNextKey;
    oItem.NativeType = info.fType;
    oItem.MenuHandle = hMenu;
    oItem.ItemId = info.wID;
    oItem.RawText.assign(aText.data(), info.cch);
    oItem.ItemData = info.dwItemData;
    oItem.RawLength = static_cast<std::int32_t>(info.cch);
    m_oItems.push_back(std::move(oItem));

    info.fType |= MFT_OWNERDRAW;
    info.dwItemData = static_cast<std::uint32_t>(m_lNextKey);
    info.dwTypeData = nullptr;
    info.cch = 0;
    info.fMask = MIIM_DATA | lTypeMask;
    (void)SetMenuItemInfoA(hMenu, lPosition, true, info);
    // Until it is measured, screen readers know it by its caption alone.
    (void)setMenuItemShownText(hMenu, lPosition, true,
                               pvDecodedCaption(pvCleanCaption(sText), m_props.StringMode));
    ++m_lNextKey;
    return true;
}

void ctlUTF8Menu::pvPurgeItems() {
    std::erase_if(m_oItems, [this](const clsCtlUniIMenuItem& oItem) {
        return !isItem(oItem.MenuHandle, oItem.ItemId, m_bOldMenuApi);
    });
}

void ctlUTF8Menu::Refresh() {
    if (m_hMenu == 0) return;
    pvPurgeItems();
    pvOwnerDrawMenu(m_hMenu, mitBar, false);
}

void ctlUTF8Menu::pvPreparePopup(HMENU hMenu) {
    if (hMenu == 0) return;
    pvPurgeItems();
    pvOwnerDrawMenu(hMenu, mitPopup, true);
}

const clsCtlUniIMenuItem& ctlUTF8Menu::record(std::uint32_t itemData) const {
    const auto lKey = static_cast<std::int32_t>(itemData);
    const auto found = std::ranges::lower_bound(m_oItems, lKey, {}, &clsCtlUniIMenuItem::Key);
    if (found == m_oItems.end() || found->Key != lKey) {
        throw Failure(kOwnError, u"ctlUTF8Menu", u"No record belongs to this menu item.");
    }
    return *found;
}

// ---- The surroundings

void ctlUTF8Menu::pvLoadMenuFont() {
    NONCLIENTMETRICSA metrics;
    (void)SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    LOGFONTA tLogFont = metrics.lfMenuFont;
    if (!m_props.CustomFontFace.empty()) {
        std::size_t at = 0;
        for (const char16_t unit : m_props.CustomFontFace) {
            if (at == std::size(tLogFont.lfFaceName)) {
                throw Failure(kSubscriptOutOfRange, u"ctlUTF8Menu.pvLoadMenuFont",
                              u"Subscript out of range");
            }
            const Bytes bytes = textToBytes(TextView(&unit, 1), GetACP());
            tLogFont.lfFaceName[at++] = bytes.size() == 1 ? static_cast<char>(bytes[0]) : '?';
        }
        std::fill(tLogFont.lfFaceName + at, std::end(tLogFont.lfFaceName), '\0');
    }
    m_tLogFont = tLogFont;
    m_oFont.reset();
}

void ctlUTF8Menu::pvReadBarColor() {
    std::int32_t bFlat = 0;
    (void)SystemParametersInfoA(SPI_GETFLATMENU, 0, &bFlat, 0);
    m_lMenuBarColor = bFlat != 0 ? GetSysColor(30) : sysColor(4);
}

bool ctlUTF8Menu::pvIsMdiContainer() const { return IsWindow(m_hWndMdiClient); }
bool ctlUTF8Menu::pvIsMdiChild() const { return IsWindow(m_hWndMdiFrame); }

HWND ctlUTF8Menu::pvActiveMdiChild() const {
    if (m_hWndMdiClient == 0) return 0;
    return static_cast<HWND>(SendMessageW(m_hWndMdiClient, WM_MDIGETACTIVE, 0, 0));
}

void ctlUTF8Menu::pvTellActiveChild() const {
    if (!pvIsMdiContainer()) return;
    if (const HWND hWndChild = pvActiveMdiChild(); IsWindow(hWndChild)) {
        SendMessageW(hWndChild, WM_APP_MDIFRAME, static_cast<WPARAM>(m_hWnd), 0);
    }
}

// ---- Properties

void ctlUTF8Menu::StringMode(std::int32_t lMode) {
    if (m_bUserMode) {
        throw Failure(kOwnError, u"StringMode", u"This property can be set only a design time!");
    }
    m_props.StringMode = lMode;
}

namespace {

// Calls f for each stored property with its name, its member, and the default: that of a fresh
// control, or what another member of props holds.
void forEachStored(const MenuProps& props, const auto& f) {
    const MenuProps oFresh;
    for (const MenuProperty& oProperty : kMenuProperties) {
        std::visit(
            [&]<class T>(T MenuProps::*member) {
                if constexpr (std::is_same_v<T, std::int32_t>) {
                    f(oProperty.sName, member,
                      oProperty.defaultFrom != nullptr ? props.*oProperty.defaultFrom
                                                       : oFresh.*member);
                } else {
                    f(oProperty.sName, member, oFresh.*member);
                }
            },
            oProperty.member);
    }
}

}  // namespace

void ctlUTF8Menu::ReadProperties(const PropertyBag& bag) {
    forEachStored(m_props, [&](TextView sName, auto member, const auto& vDefault) {
        m_props.*member = bag.ReadProperty(sName, vDefault);
    });
    pvReadBarColor();
}

void ctlUTF8Menu::WriteProperties(PropertyBag& bag) const {
    forEachStored(m_props, [&](TextView sName, auto member, const auto& vDefault) {
        bag.WriteProperty(sName, m_props.*member, vDefault);
    });
}
