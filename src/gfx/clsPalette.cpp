#include "gfx/clsPalette.h"

#include "gfx/clsDIBSection.h"
#include "gfx/modCtlCommon_ctl_colors.h"
#include "platform/base/failure.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace {

struct Entry {
    std::uint8_t red, green, blue;
};
constexpr Entry kLowSystemColors[] = {{0, 0, 0},   {128, 0, 0},   {0, 128, 0},   {128, 128, 0},
                                      {0, 0, 128}, {128, 0, 128}, {0, 128, 128}, {192, 192, 192}};
constexpr Entry kHighSystemColors[] = {{128, 128, 128}, {255, 0, 0},    {0, 255, 0},
                                       {255, 255, 0},   {0, 0, 255},    {255, 0, 255},
                                       {0, 255, 255},   {255, 255, 255}};

// Calls f(red, green, blue) for all triples of steps, red varying fastest, then green, then blue.
template <std::size_t N, class F> void forCube(const std::array<std::uint8_t, N>& steps, F f) {
    for (const std::uint8_t blue : steps) {
        for (const std::uint8_t green : steps) {
            for (const std::uint8_t red : steps) f(red, green, blue);
        }
    }
}

// Corners of the cube: black, white, and the colours with one or two full channels.
bool isSystemColor(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    const auto end = [](std::uint8_t channel) { return channel == 0 || channel == 255; };
    return end(red) && end(green) && end(blue);
}

}  // namespace

void clsPalette::Add(std::uint8_t Red, std::uint8_t Green, std::uint8_t Blue) {
    m_aEntries.push_back({Blue, Green, Red, 0});
}

const platform::RGBQUAD& clsPalette::entry(std::int32_t iIndex) const {
    static constexpr platform::RGBQUAD kNone;
    const bool exists = iIndex >= 1 && iIndex <= Count();
    return exists ? m_aEntries[static_cast<std::size_t>(iIndex) - 1] : kNone;
}

std::int32_t clsPalette::ClosestIndex(std::int32_t Red, std::int32_t Green,
                                      std::int32_t Blue) const {
    std::int64_t best = 3 * 255;
    std::int32_t index = 0;
    for (std::int32_t i = 1; i <= Count() && best > 0; ++i) {
        const platform::RGBQUAD& e = entry(i);
        const std::int64_t distance = std::abs(std::int64_t{Red} - e.rgbRed) +
                                      std::abs(std::int64_t{Green} - e.rgbGreen) +
                                      std::abs(std::int64_t{Blue} - e.rgbBlue);
        if (distance < best) {
            best = distance;
            index = i;
        }
    }
    return index;
}

void clsPalette::pColorToComponents(Color lColor, std::int16_t& iRed, std::int16_t& iGreen,
                                    std::int16_t& iBlue) {
    const RedGreenBlue c = ColorToRGB(lColor);
    iRed = static_cast<std::int16_t>(c.red);
    iGreen = static_cast<std::int16_t>(c.green);
    iBlue = static_cast<std::int16_t>(c.blue);
}

void clsPalette::CreateFromDib(const clsDIBSection& oDib) {
    Destroy();
    const int bits = oDib.Bpp();
    if (bits != 1 && bits != 4 && bits != 8) {
        throw Failure(kOwnError, u"clsPalette.CreateFromDib", u"Cannot create palette!");
    }
    m_aEntries.resize(std::size_t{1} << bits);
    m_aEntries.resize(platform::GetDIBColorTable(oDib.Hdc(), 0, 1U << bits, m_aEntries.data()));
}

void clsPalette::addSystemColors(bool bHigh) {
    for (const Entry& e : bHigh ? kHighSystemColors : kLowSystemColors) {
        Add(e.red, e.green, e.blue);
    }
}

void clsPalette::CreateMono2() {
    Destroy();
    Add(0, 0, 0);
    Add(255, 255, 255);
}

void clsPalette::Create16() {
    Destroy();
    addSystemColors(false);
    addSystemColors(true);
}

void clsPalette::CreateHalfTone256() {
    constexpr std::array<std::uint8_t, 5> kSteps = {0, 64, 128, 192, 255};
    Destroy();
    forCube(kSteps, [this](auto red, auto green, auto blue) { Add(red, green, blue); });
}

void clsPalette::CreateWebSafe256() {
    constexpr std::array<std::uint8_t, 6> kSteps = {0, 51, 102, 153, 204, 255};
    Destroy();
    addSystemColors(false);
    forCube(kSteps, [this](auto red, auto green, auto blue) {
        if (!isSystemColor(red, green, blue)) Add(red, green, blue);
    });
    for (int grey = 8; grey <= 248; grey += 8) {
        const auto level = static_cast<std::uint8_t>(grey);
        Add(level, level, level);
    }
    addSystemColors(true);
}
