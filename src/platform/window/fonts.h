// platform/window/fonts.h: font objects, and what can be asked about fonts.
//
// A font is a wish: CreateFontW takes any values, and the drawing operations use what is there.
// "MS Sans Serif", "Microsoft Sans Serif", "MS Shell Dlg" (also with a 2), "Tahoma", "Arial",
// "Helvetica", "Helv", "System" and "Liberation Sans" are the face that comes with the program, and
// so is every face that the system doesn't have; all other names are the system's fonts. Characters
// that a face lacks come from other fonts. Text is always smoothed in grey.
//
// All of it belongs to the window thread, and needs the toolkit's application object.
#pragma once
#include "platform/window/types.h"

#include <vector>

namespace platform {

constexpr int FW_NORMAL = 400;
constexpr int FW_BOLD = 700;
constexpr std::uint32_t DEFAULT_CHARSET = 1;

// A font to be selected into contexts and ended by DeleteObject. 0 when there are too many.
//
// height: below 0 the em height in pixels, above 0 the height of a line (ascent and descent), 0 for
// 16 pixels of em; held to 1 to 2048. width: the average character width in pixels, as
// GetTextMetricsA gives it, to which characters are stretched or narrowed, whatever its sign; 0
// leaves them as they are. weight: 0 is 400, held to 1 to 1000. Escapement, orientation, charSet,
// the precisions, quality and pitchAndFamily have no influence. faceName: letter case and blanks
// around it don't count.
[[nodiscard]] HFONT CreateFontW(int height, int width, int escapement, int orientation, int weight,
                                std::uint32_t italic, std::uint32_t underline,
                                std::uint32_t strikeOut, std::uint32_t charSet,
                                std::uint32_t outPrecision, std::uint32_t clipPrecision,
                                std::uint32_t quality, std::uint32_t pitchAndFamily,
                                TextView faceName);

// The same as a record, with the face name in the system ANSI code page, ended by 0.
struct LOGFONTA {
    std::int32_t lfHeight = 0, lfWidth = 0, lfEscapement = 0, lfOrientation = 0, lfWeight = 0;
    std::uint8_t lfItalic = 0, lfUnderline = 0, lfStrikeOut = 0, lfCharSet = DEFAULT_CHARSET;
    std::uint8_t lfOutPrecision = 0, lfClipPrecision = 0, lfQuality = 0, lfPitchAndFamily = 0;
    char lfFaceName[32] = {};
};
[[nodiscard]] HFONT CreateFontIndirectA(const LOGFONTA& font);
// The record's face name as text, and a text as the record's face name. False, and the record
// stays, for a name of more than 31 bytes, with a unit of 0 or with characters that the code page
// lacks.
[[nodiscard]] Text faceNameOf(const LOGFONTA& font);
[[nodiscard]] bool setFaceName(LOGFONTA& font, TextView name);

// Pixels. tmHeight is tmAscent + tmDescent, the height of a line of text.
struct TEXTMETRICA {
    std::int32_t tmHeight = 0, tmAscent = 0, tmDescent = 0;
    std::int32_t tmInternalLeading = 0;  // the part of tmHeight above the em height
    std::int32_t tmExternalLeading = 0;  // to be added between lines
    std::int32_t tmAveCharWidth = 0, tmMaxCharWidth = 0;
    std::int32_t tmWeight = 0;
    std::uint8_t tmItalic = 0, tmUnderlined = 0, tmStruckOut = 0;
};
// Of the font in the context. False for an unknown context, and the record is unchanged.
bool GetTextMetricsA(HDC hDC, TEXTMETRICA& metrics);

// The names of all faces: those of the system and those that stand for the program's own face,
// sorted, each once.
[[nodiscard]] std::vector<Text> fontFamilies();

}  // namespace platform
