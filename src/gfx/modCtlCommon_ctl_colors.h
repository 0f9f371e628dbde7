// gfx/modCtlCommon_ctl_colors.h: arithmetic on colours.
//
// Every colour that goes in may be one of the desktop's; what comes out is a plain one unless told
// otherwise. Nothing here fails.
#pragma once
#include "gfx/types.h"

struct RedGreenBlue {  // each 0 to 255
    std::int32_t red = 0, green = 0, blue = 0;
    friend bool operator==(const RedGreenBlue&, const RedGreenBlue&) = default;
};

[[nodiscard]] Color TranslateColor(Color iColor);
[[nodiscard]] RedGreenBlue ColorToRGB(Color iColor);

// Below 0 gives 0, above 255 gives 255.
[[nodiscard]] constexpr std::uint8_t ClampByte(std::int32_t i) {
    return static_cast<std::uint8_t>(i < 0 ? 0 : i > 255 ? 255 : i);
}

// Each channel plus iDelta, clamped.
[[nodiscard]] Color ColorBrighten(Color iColor, std::int16_t iDelta);

// iPercent per cent of the way from iColor1 to iColor2; below 0 counts as 0, above 100 as 100.
[[nodiscard]] Color ColorBlend(Color iColor1, Color iColor2, std::int32_t iPercent);

// 0 (black) to 255 (white): 0.3 red, 0.59 green, 0.11 blue.
[[nodiscard]] std::int32_t ColorLuminance(Color iColor);

// The colour brightened or darkened by what its luminance lacks of iTarget.
[[nodiscard]] Color ColorToLuminance(Color iColor, std::int32_t iTarget);

// iColor as it is given, or when that is kAutoColor a border that shows on iBase: darker than it by
// 68, and by more when iBase is nearly white.
[[nodiscard]] Color AutoBorderColor(Color iColor, Color iBase);
