// menu/clsCtlUniIMenuItem.h: what a taken-over menu item was before.
#pragma once
#include "platform/window/types.h"

#include <string>

enum MenuItemTypes : std::int32_t {
    mitBar = 0,            // on the menu bar
    mitPopup = 1,          // in a popup
    mitSeparator = 2,      // a plain separator
    mitTextSeparator = 3,  // a caption with the prefix "[SEP]"
};

struct clsCtlUniIMenuItem {
    Text Caption;  // with prefix, image number and key
    std::int32_t ItemType = mitBar;
    std::int32_t Key = 0;          // also the native item's user data, by which it is found
    std::uint32_t NativeType = 0;  // of the native item before,
    platform::HMENU MenuHandle = 0;
    std::uint32_t ItemId = 0;
    std::string RawText;         // its text in the system code page,
    std::uint32_t ItemData = 0;  // its user data,
    std::int32_t RawLength = 0;  // and the length of the text in bytes
};
