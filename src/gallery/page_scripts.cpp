// The same sentence in many scripts, in three sizes.
#include "gallery/Sheet.h"
#include "gallery/pages.h"
#include "gfx/modCtlCommon_ctl_shapes.h"
#include "gfx/modCtlCommon_ctl_text.h"

namespace gallery {
namespace {

constexpr bool kRightToLeft = true;

struct Sample {
    TextView language, text;
    bool rightToLeft = false;
};
constexpr Sample kSamples[] = {
    {u"Latin", u"The quick brown fox jumps over the lazy dog, 012"},
    {u"Latin, accents", u"Łódź, Ærøskøbing, Şırnak, Győr, Ñandú, kůň, Größe"},
    {u"Cyrillic", u"Съешь ещё этих мягких булок; їжак, љубав"},
    {u"Greek", u"Ξεσκεπάζω την ψυχοφθόρα βδελυγμία"},
    {u"Arabic", u"حفظ الملف المترجم باسم جديد ١٢٣", kRightToLeft},
    {u"Hebrew", u"שמירת הקובץ המתורגם בשם חדש 123", kRightToLeft},
    {u"Devanagari", u"अनुवाद की फ़ाइल को नए नाम से सहेजें"},
    {u"Thai", u"บันทึกไฟล์คำแปลด้วยชื่อใหม่"},
    {u"Chinese", u"打开文件，保存文本；請開關儲存"},
    {u"Japanese", u"日本語の設定をファイルに保存する"},
    {u"Korean", u"한국어 번역 파일 저장"},
    {u"Emoji",
     u"😀 🙂 🎉 👍🏽 👩‍👧‍👦 🇩🇪 🇯🇵 ❤️ ☀️ 1️⃣"},
    {u"Combining marks",
     u"e\u0301 = é, a\u0308 = ä, n\u0303 = ñ, s\u0323\u0307, q\u0302\u0323\u0331, Z\u030C"},
    {u"Two directions", u"English, then עברית with 12, then العربية (5) again"},
    {u"Single units", u"halves of pairs \xD83D and \xDE00, a tab\tas a blank"},
    {u"Beyond 16 bits", u"𠮷 and 😀, each a pair of units"},
};

}  // namespace

void drawScripts(HDC hDC, const RECT& area) {
    struct Column {
        int left, width, pixels;
        TextView name;
    };
    const Column kColumns[] = {{0, 108, 0, u""},
                               {108, 300, 11, u"11 pixels, as in the interface"},
                               {414, 438, 17, u"17 pixels"}};
    for (const Column& column : kColumns) {
        write(hDC, box(area.left + column.left, area.top, column.width, 18), column.name,
              {.bold = true, .color = kAccent});
    }
    int y = area.top + 20;
    for (const Sample& sample : kSamples) {
        DrawRect(hDC, box(area.left, y, widthOf(area), 1), kRule, true);
        for (const Column& column : kColumns) {
            const RECT rect = box(area.left + column.left, y + 1, column.width - 8, 33);
            if (column.pixels == 0) {
                write(hDC, rect, sample.language, kCaption);
                continue;
            }
            const std::uint32_t direction =
                sample.rightToLeft ? platform::DT_RTLREADING | platform::DT_RIGHT : 0;
            const FontScope font(hDC, -column.pixels);
            TextDrawColor(hDC, sample.text, rect, kInk, kOneLine | direction);
        }
        y += 34;
    }
}

}  // namespace gallery
