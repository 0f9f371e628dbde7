// menu/MenuProps.h: the properties of the drawn menu, and the names under which they are stored.
#pragma once
#include "gfx/types.h"
#include "host/PropertyBag.h"

#include <array>
#include <memory>
#include <span>
#include <variant>
#include <vector>

using MenuPictures = std::vector<Picture>;

struct MenuProps {
    std::int16_t IconDim = 16;  // pixels, the smallest side of the cell of an icon
    bool FadeBackground = false;
    Color MenuBackColor = sysColor(4);        // of popups
    Color MenuForeColorNormal = sysColor(7);  // text, and lines of separators
    Color MenuForeColorDisabled = sysColor(17);
    Color SelectorBackColor = sysColor(13);
    Color SelectorForeColor = sysColor(14);
    Color ExtSepBackColor = sysColor(4);  // of text separators; without a stored value these two
    Color ExtSepForeColor = sysColor(7);  // are MenuBackColor and MenuForeColorNormal
    bool FadeExtSep = false;
    std::int32_t SelectorStyle = -1;  // of DrawButtonFace
    bool FullSelector = true;         // covers the icon, too; items are two pixels higher
    bool LeftBand = false;            // behind the icons of popups
    Color LeftBandBackColor = sysColor(4);
    bool FadeLeftBand = false;
    bool Separators3D = true;  // white lines and shadows
    bool LeftBandSeparators = false;
    std::int32_t StringMode = 2;  // see menu/captions.h
    bool RoundSelector = false;
    Text CustomFontFace;                       // in place of the face of the desktop's menu font
    std::shared_ptr<MenuPictures> ImageArray;  // an image number n is the n-th, from 1

    friend bool operator==(const MenuProps&, const MenuProps&) = default;
};

struct MenuProperty {
    using Member =
        std::variant<bool MenuProps::*, std::int16_t MenuProps::*, std::int32_t MenuProps::*,
                     Text MenuProps::*, std::shared_ptr<MenuPictures> MenuProps::*>;
    TextView sName;
    Member member;
    std::int32_t MenuProps::*defaultFrom = nullptr;  // the member that gives the default
};

// All of them, in the order of reading. Of ImageArray the reference is stored.
inline constexpr std::array<MenuProperty, 21> kMenuProperties{{
    {u"IconDim", &MenuProps::IconDim},
    {u"FadeBackground", &MenuProps::FadeBackground},
    {u"MenuBackColor", &MenuProps::MenuBackColor},
    {u"MenuForeColorNormal", &MenuProps::MenuForeColorNormal},
    {u"MenuForeColorDisabled", &MenuProps::MenuForeColorDisabled},
    {u"SelectorBackColor", &MenuProps::SelectorBackColor},
    {u"SelectorForeColor", &MenuProps::SelectorForeColor},
    {u"ExtSepBackColor", &MenuProps::ExtSepBackColor, &MenuProps::MenuBackColor},
    {u"ExtSepForeColor", &MenuProps::ExtSepForeColor, &MenuProps::MenuForeColorNormal},
    {u"FadeExtSep", &MenuProps::FadeExtSep},
    {u"SelectorStyle", &MenuProps::SelectorStyle},
    {u"FullSelector", &MenuProps::FullSelector},
    {u"LeftBand", &MenuProps::LeftBand},
    {u"LeftBandBackColor", &MenuProps::LeftBandBackColor},
    {u"FadeLeftBand", &MenuProps::FadeLeftBand},
    {u"Separators3D", &MenuProps::Separators3D},
    {u"LeftBandSeparators", &MenuProps::LeftBandSeparators},
    {u"StringMode", &MenuProps::StringMode},
    {u"RoundSelector", &MenuProps::RoundSelector},
    {u"CustomFontFace", &MenuProps::CustomFontFace},
    {u"ImageArray", &MenuProps::ImageArray},
}};
