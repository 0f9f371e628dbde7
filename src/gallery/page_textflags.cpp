// Every flag of DrawTextW in use: each sample in its rectangle, with the measured one around it.
#include "gallery/Sheet.h"
#include "gallery/pages.h"
#include "gfx/modCtlCommon_ctl_shapes.h"

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
    {u"NOCLIP", u"This text leaves its rectangle at the right", DT_NOCLIP},
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
    const Color blue = rgb(70, 130, 200), red = rgb(214, 60, 50);
    Cells cells(area, 4, 215, 94);
    for (const Sample& sample : kSamples) {
        const RECT cell = cells.next();
        write(hDC, box(cell.left, cell.top, 210, 16), sample.name, kCaption);
        const RECT rect = box(cell.left, cell.top + 18, 180, 66);
        DrawRect(hDC, rect, kTint, true);
        const RECT text = inset(rect, 1);
        write(hDC, text, sample.text, kText, sample.flags);
        DrawRect(hDC, rect, blue, false);
        DrawRect(hDC, measure(hDC, text, sample.text, kText, sample.flags), red, false);
    }
}

}  // namespace gallery
