// gfx/clsPalette.h: a list of colours for drawing surfaces of few colours.
#pragma once
#include "gfx/types.h"
#include "platform/window/surface.h"

#include <functional>
#include <optional>
#include <vector>

class clsDIBSection;

// A plain value: a copy stands by itself. Indexes count from 1; one that doesn't exist gives 0.
class clsPalette {
public:
    void Add(std::uint8_t Red, std::uint8_t Green, std::uint8_t Blue);
    void Destroy() { m_aEntries.clear(); }

    [[nodiscard]] std::int32_t Count() const {
        return static_cast<std::int32_t>(m_aEntries.size());
    }
    [[nodiscard]] std::uint8_t Red(std::int32_t iIndex) const { return entry(iIndex).rgbRed; }
    [[nodiscard]] std::uint8_t Green(std::int32_t iIndex) const { return entry(iIndex).rgbGreen; }
    [[nodiscard]] std::uint8_t Blue(std::int32_t iIndex) const { return entry(iIndex).rgbBlue; }

    // The entry with the least sum of the differences of the three channels, the first of equals. 0
    // when none is closer than black is to white.
    [[nodiscard]] std::int32_t ClosestIndex(std::int32_t Red, std::int32_t Green,
                                            std::int32_t Blue) const;

    // The channels of a colour, which may be one of the desktop's.
    static void pColorToComponents(Color lColor, std::int16_t& iRed, std::int16_t& iGreen,
                                   std::int16_t& iBlue);

    void Clone(const clsPalette& cPal) { m_aEntries = cPal.m_aEntries; }

    // Takes the colour table of a surface of 1, 4 or 8 bits. Any other depth raises kOwnError,
    // "clsPalette.CreateFromDib", "Cannot create palette!", and leaves the palette empty.
    void CreateFromDib(const clsDIBSection& oDib);

    // The fixed palettes: black and white; the 16 system colours; a cube of 5 steps a channel (125
    // colours); the system colours with a cube of 6 steps and 31 greys (255 colours).
    void CreateMono2();
    void Create16();
    void CreateHalfTone256();
    void CreateWebSafe256();

    // The colours that stand best for those of a surface of 24 bits, at most lMaxColors: a tree of
    // lLevels levels (1 to 8) halves the three channels at every level, and its deepest, youngest
    // boxes are joined as long as there are too many. vFirstColor, when given, comes first and
    // beyond the limit.
    //
    // Raises kOwnError for any other depth ("clsPalette.ApplyPalette") and for other levels
    // ("clsPalette.CreateOptimal"), and leaves the palette as it is. When nothing can be joined,
    // because lMaxColors is below the number of boxes of the first level, the user is asked
    // whether to go on, at every pixel: No stops the program.
    void CreateOptimal(const clsDIBSection& oDib, std::int32_t lMaxColors, std::int32_t lLevels,
                       std::optional<Color> vFirstColor = std::nullopt);

private:
    [[nodiscard]] const platform::RGBQUAD& entry(std::int32_t iIndex) const;
    void addSystemColors(bool bHigh);

    std::vector<platform::RGBQUAD> m_aEntries;
};

// What stops the program when the user says so; an empty function, as at first, ends the process
// with a failure code. The main program sets a tidier way; a hook that returns goes on.
void setProgramStop(std::function<void()> stop);
