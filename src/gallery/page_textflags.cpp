// Every flag of DrawTextW in use: each sample in its rectangle, with a frame around the measured
// one.
#include "gallery/Sheet.h"
#include "gallery/pages.h"
#include "gfx/modCtlCommon_ctl_shapes.h"

#include <algorithm>

namespace gallery {
namespace {

using namespace platform;

struct Sample {
    TextView name, text;
    std::uint32_t flags;
};
constexpr Lettering kText{.points = 9};
constexpr TextView kLong = u"Translations that are missing or equal to the default are coloured.";
constexpr TextView kLines = u"First line\r\nsecond, longer line\rthird\nfourth";
constexpr Sample kSamples[] = {
    {u"none (left, top)", u"Left and top", 0},
    {u"CENTER", u"In the middle", DT_CENTER},
    {u"RIGHT", u"At the right", DT_RIGHT},
    {u"lines of CR LF, CR, LF", kLines, 0},
    {u"SINGLELINE VCENTER", u"Half way down", DT_SINGLELINE | DT_VCENTER},
    {u"SINGLELINE BOTTOM RIGHT", u"At the corner", DT_SINGLELINE | DT_BOTTOM | DT_RIGHT},
    {u"SINGLELINE CENTER VCENTER", u"All in the middle", DT_SINGLELINE | DT_CENTER | DT_VCENTER},
    {u"SINGLELINE with line ends", u"One\r\ntwo\nthree", DT_SINGLELINE},
    {u"no WORDBREAK: cut", kLong, 0},
    {u"WORDBREAK", kLong, DT_WORDBREAK},
    {u"WORDBREAK CENTER", kLong, DT_WORDBREAK | DT_CENTER},
    {u"WORDBREAK RIGHT", kLong, DT_WORDBREAK | DT_RIGHT},
    {u"WORDBREAK, a long word", u"A word: donaudampfschiffahrtsgesellschaftskapitän ends",
     DT_WORDBREAK},
    {u"WORDBREAK EDITCONTROL", u"A word: donaudampfschiffahrtsgesellschaftskapitän ends",
     DT_WORDBREAK | DT_EDITCONTROL},
    {u"NOCLIP", u"Leaves its rectangle at the right", DT_NOCLIP},
    {u"EXTERNALLEADING", kLines, DT_EXTERNALLEADING},
    {u"\"&\" as underline", u"&Open\r\nSave &As...\r\nFish && chips", 0},
    {u"NOPREFIX", u"&Open\r\nSave &As...\r\nFish && chips", DT_NOPREFIX},
    {u"EXPANDTABS", u"a\tb\tc\r\nlonger\td", DT_EXPANDTABS},
    {u"a tab without it", u"a\tb\tc\r\nlonger\td", 0},
    {u"RTLREADING RIGHT", u"(1) שמירת הקובץ. (2)", DT_RTLREADING | DT_RIGHT},
    {u"the same without it", u"(1) שמירת הקובץ. (2)", 0},
    {u"RTLREADING WORDBREAK RIGHT", u"حفظ الملف المترجم باسم جديد، ثم فتحه مرة أخرى",
     DT_RTLREADING | DT_WORDBREAK | DT_RIGHT},
    {u"no spaces, WORDBREAK", u"打开文件保存文本从文件中打开保存到文件中", DT_WORDBREAK},
};

}  // namespace

void drawTextFlags(HDC hDC, const RECT& area) {
    const Color red = rgb(214, 60, 50);
    Cells cells(area, 4, 216, 94);
    for (const Sample& sample : kSamples) {
        const RECT cell = cells.next();
        write(hDC, box(cell.left, cell.top, 210, 16), sample.name, kCaption);
        const RECT rect = box(cell.left + 3, cell.top + 21, 184, 62);
        DrawRect(hDC, inset(rect, -3), kRule, false);
        DrawRect(hDC, rect, kTint, true);
        write(hDC, rect, sample.text, kText, sample.flags);
        // One pixel outside; open at the right where it leaves the cell.
        const RECT frame = inset(measure(hDC, rect, sample.text, kText, sample.flags), -1);
        const int right = std::min(frame.right, cell.left + 200);
        DrawRect(hDC, {frame.left, frame.top, right, frame.top + 1}, red, true);
        DrawRect(hDC, {frame.left, frame.bottom - 1, right, frame.bottom}, red, true);
        DrawRect(hDC, {frame.left, frame.top, frame.left + 1, frame.bottom}, red, true);
        if (right == frame.right) {
            DrawRect(hDC, {right - 1, frame.top, right, frame.bottom}, red, true);
        }
    }
}

}  // namespace gallery
