// platform/window/textout.h: drawing and measuring text.
#pragma once
#include "platform/window/types.h"

namespace platform {

constexpr std::uint32_t DT_LEFT = 0x0;
constexpr std::uint32_t DT_TOP = 0x0;
constexpr std::uint32_t DT_CENTER = 0x1;
constexpr std::uint32_t DT_RIGHT = 0x2;
constexpr std::uint32_t DT_VCENTER = 0x4;  // these two with DT_SINGLELINE only
constexpr std::uint32_t DT_BOTTOM = 0x8;
constexpr std::uint32_t DT_WORDBREAK = 0x10;
constexpr std::uint32_t DT_SINGLELINE = 0x20;
constexpr std::uint32_t DT_EXPANDTABS = 0x40;
constexpr std::uint32_t DT_NOCLIP = 0x100;
constexpr std::uint32_t DT_EXTERNALLEADING = 0x200;
constexpr std::uint32_t DT_CALCRECT = 0x400;
constexpr std::uint32_t DT_NOPREFIX = 0x800;
constexpr std::uint32_t DT_EDITCONTROL = 0x2000;
constexpr std::uint32_t DT_RTLREADING = 0x20000;

// Draws text in the rectangle with the context's font, text colour and background mode, cut at the
// rectangle unless DT_NOCLIP. Gives the pixels from the rectangle's top to the bottom of the text;
// 0 for an unknown context. Other flags than those above have no influence.
//
// Lines. Without DT_SINGLELINE, text breaks at CR LF, CR and LF; an end at the very end of the text
// adds no line, and text without any unit has none. With DT_SINGLELINE it is one line, also when it
// is empty, and CR and LF are drawn as a blank each. DT_WORDBREAK: a line that is wider than the
// rectangle continues below, after a blank or where Unicode's rules allow a break; blanks at a
// break are left out. A word that is wider by itself sticks out, unless DT_EDITCONTROL is set,
// which breaks it between characters and also leaves out a last line that is only partly inside.
// Each line is placed by itself (DT_CENTER, DT_RIGHT).
//
// DT_CALCRECT draws nothing and sets the rectangle's right and bottom so that it holds the text:
// as wide as the widest line, which can be narrower or wider than before.
//
// Units. A "&" is left out and the character after it is underlined (the last one of several); "&&"
// is a "&"; with DT_NOPREFIX "&" is drawn. A tab goes to the next multiple of eight average
// characters with DT_EXPANDTABS and is a blank without it; other control units are blanks. A lone
// surrogate is drawn as U+FFFD. DT_RTLREADING: the paragraph runs from right to left; where it is
// put is left to the other flags.
//
// A line of more than kLongLine units is shaped in pieces: those in sight are drawn one beside the
// other, and measuring adds them up. Of text with prefixes, control units or lone surrogates there
// is a copy meanwhile; nothing else grows with it. On surfaces of another depth than 32 bits text
// is drawn in strips, so that memory doesn't grow with the surface either.
int DrawTextW(HDC hDC, TextView text, RECT& rect, std::uint32_t flags);
constexpr std::size_t kLongLine = 1024;

}  // namespace platform
