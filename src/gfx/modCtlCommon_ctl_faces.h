// gfx/modCtlCommon_ctl_faces.h: the button face in its nine styles, and the flat frame.
//
// They paint a rectangle and nothing outside of it. Bands and borders that are higher than the
// rectangle are cut at its edges; an empty rectangle and a context of 0 draw nothing. Colours may
// be those of the desktop. Nothing here fails.
#pragma once
#include "gfx/types.h"

// The style of the controls whose own style is -1: that of the last SetAppButtonStyle, 3 before.
// Set once, at the start of the main window.
[[nodiscard]] std::int32_t AppButtonStyle();
void SetAppButtonStyle(std::int32_t iStyle);
inline std::int32_t g_iAppStyle = 0;
inline bool g_bAppStyleSet = false;

struct ButtonFace {
    Color iBackColor = sysColor(15);
    bool bBorder = false;             // the frame around the face, with bRounded the rounded one
    Color iBorderColor = kAutoColor;  // kAutoColor: AutoBorderColor of the back colour
    bool bPressed = false;
    bool bDefault = false;  // a frame in light blue inside of the border
    bool bCancel = false;   // without bDefault: the same in grey
    bool bFocus = false;    // the dotted rectangle
    bool bRounded = false;
    std::int32_t iStyle = -1;        // 0 to 8; any other is AppButtonStyle
    Color iOuterColor = kAutoColor;  // behind the rounded corners; kAutoColor: the back colour
    bool bAdapt = false;             // lights that would not show on the back colour are changed
};
void DrawButtonFace(HDC hDC, const RECT& rect, const ButtonFace& face);

struct FlatFace {
    Color iBackColor = sysColor(5);
    Color iBorderColor = kAutoColor;  // kAutoColor: AutoBorderColor of the back colour
    bool bRounded = false;
    Color iOuterColor = kAutoColor;  // behind the rounded corners; kAutoColor: the back colour
    bool bOnlyBottomBorder = false;  // a line along the bottom; bRounded is not looked at then
};
// The frame of controls without a pressed look: two pixels wide, the inner one in the back colour.
// What lies inside stays as it is.
void DrawFlatFace(HDC hDC, const RECT& rect, const FlatFace& face);
