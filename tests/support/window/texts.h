// tests/support/window/texts.h: fonts and long texts for tests of text.
#pragma once
#include "platform/window/fonts.h"

namespace test {

// As CreateFontW has them.
struct FontStyle {
    int height = -11, width = 0, weight = 0;
    bool italic = false, underline = false, strikeOut = false;
    TextView face = u"MS Sans Serif";
};

// The caller deletes it.
[[nodiscard]] inline platform::HFONT fontOf(const FontStyle& s) {
    return platform::CreateFontW(s.height, s.width, 0, 0, s.weight, s.italic ? 1 : 0,
                                 s.underline ? 1 : 0, s.strikeOut ? 1 : 0,
                                 platform::DEFAULT_CHARSET, 0, 0, 0, 0, s.face);
}

// The text over and over, in at least so many units.
[[nodiscard]] inline Text repeated(TextView text, std::size_t units) {
    Text all;
    while (all.size() < units) all += text;
    return all;
}

}  // namespace test
