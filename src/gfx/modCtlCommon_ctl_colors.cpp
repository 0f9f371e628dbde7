#include "gfx/modCtlCommon_ctl_colors.h"

#include "gfx/rounding.h"
#include "platform/window/surface.h"

#include <algorithm>

Color TranslateColor(Color iColor) {
    return iColor < 0 ? platform::GetSysColor(iColor & 0x1F) : iColor;
}

RedGreenBlue ColorToRGB(Color iColor) {
    const Color plain = TranslateColor(iColor);
    return {platform::redOf(plain), platform::greenOf(plain), platform::blueOf(plain)};
}

Color ColorBrighten(Color iColor, std::int16_t iDelta) {
    const RedGreenBlue c = ColorToRGB(iColor);
    return platform::rgb(ClampByte(c.red + iDelta), ClampByte(c.green + iDelta),
                         ClampByte(c.blue + iDelta));
}

Color ColorBlend(Color iColor1, Color iColor2, std::int32_t iPercent) {
    // Single precision at every step: the shares of both colours are not always quite 1 together.
    const float a = static_cast<float>(100 - std::clamp(iPercent, 0, 100)) / 100.0F;
    const float b = 1.0F - a;
    const auto mixed = [a, b](std::int32_t from, std::int32_t to) {
        return gfx::roundHalfEven(static_cast<float>(from) * a + static_cast<float>(to) * b);
    };
    const RedGreenBlue c1 = ColorToRGB(iColor1), c2 = ColorToRGB(iColor2);
    return platform::rgb(mixed(c1.red, c2.red), mixed(c1.green, c2.green), mixed(c1.blue, c2.blue));
}

std::int32_t ColorLuminance(Color iColor) {
    const RedGreenBlue c = ColorToRGB(iColor);
    return ClampByte(gfx::roundHalfEven(c.red * 0.3 + c.green * 0.59 + c.blue * 0.11));
}

Color ColorToLuminance(Color iColor, std::int32_t iTarget) {
    // Beyond 255 either way everything is white or black.
    const std::int32_t delta = std::clamp(iTarget, -255, 510) - ColorLuminance(iColor);
    return ColorBrighten(iColor, static_cast<std::int16_t>(delta));
}

Color AutoBorderColor(Color iColor, Color iBase) {
    constexpr std::int32_t kLightest = 208;
    if (iColor != kAutoColor) return iColor;
    const Color base =
        ColorLuminance(iBase) > kLightest ? ColorToLuminance(iBase, kLightest) : iBase;
    return ColorBrighten(base, -68);
}
