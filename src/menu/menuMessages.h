// menu/menuMessages.h: the messages that the drawn menus of a frame and of its children send each
// other. All are sent, not posted; records go by address.
#pragma once
#include "platform/window/messages.h"

enum : std::uint32_t {
    WM_APP_MDIFRAME = 0x8001,      // to the active child; wParam: the frame
    WM_APP_REQDATA_MI = 0x8002,    // to the frame; wParam: string mode; lParam: MEASUREITEMSTRUCT*
    WM_APP_REQDATA_DI = 0x8003,    // to the frame; wParam: string mode; lParam: DRAWITEMSTRUCT*
    WM_APP_MDISAVEPOPUP = 0x8004,  // to the frame; both as WM_INITMENUPOPUP
};
