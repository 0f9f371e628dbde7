// Pictures of text, for the eye: what they show is told here, how it is put together elsewhere.
#include "platform/window/surface.h"
#include "platform/window/textout.h"
#include "support/gui/Golden.h"
#include "support/window/Canvas.h"
#include "support/window/texts.h"

using namespace platform;
using test::fontOf;
using test::FontStyle;

namespace {

void draw(HDC hDC, TextView text, RECT rect, std::uint32_t flags, const FontStyle& style = {}) {
    const test::Selected font(hDC, fontOf(style));
    SetBkMode(hDC, TRANSPARENT);
    DrawTextW(hDC, text, rect, flags);
}

void drawFramed(HDC hDC, TextView text, const RECT& rect, std::uint32_t flags) {
    RECT frame = rect;
    InflateRect(frame, 1, 1);
    const test::Selected brush(hDC, CreateSolidBrush(0xE0C0A0));
    FrameRect(hDC, frame, brush);
    draw(hDC, text, rect, flags);
}

constexpr TextView kPictographs =
    u"Pictographs: \U0001F600 \U0001F44D\U0001F3FD \U0001F469\u200D\U0001F469\u200D\U0001F467 "
    u"\U0001F1E9\U0001F1EA \u2764\uFE0F 1\uFE0F\u20E3 12 \u00A9";
constexpr TextView kScripts[] = {
    u"Latin: The quick brown fox, \u0141\u00F3d\u017A, Gr\u00FC\u00DFe, 100 % (a|b) fi ffl",
    u"Кириллица: Съешь же ещё этих булок",
    u"Ελληνικά: Ξεσκεπάζω την ψυχοφθόρα",
    u"Arabic: مرحبا بالعالم 123 (نص)",
    u"Hebrew: שלום עולם 123 (טקסט)",
    u"Devanagari: नमस्ते दुनिया क्षत्रिय 123",
    u"Thai: สวัสดีชาวโลก กำลังโหลด",
    u"Chinese: 打开文件 一是在不了有和人",
    u"Japanese: 日本語の設定を保存 カタカナ",
    u"Korean: 한국어 번역 파일 저장",
    u"Marks: e\u0301 a\u0308\u0323 Z\u0351\u036B o\u0302\u0323 \u0438\u0306",
    kPictographs,
};

}  // namespace

TEST(TextPictures, Scripts) {
    const struct {
        const char* name;
        int width, row, height;
    } kSheets[] = {{"text/scripts", 330, 18, -11}, {"text/scripts-20", 540, 28, -20}};
    for (const auto& sheet : kSheets) {
        EXPECT_GOLDEN(sheet.name, SIZE{sheet.width, 12 * sheet.row + 4}, [&](HDC hDC) {
            int y = 2;
            for (const TextView text : kScripts) {
                draw(hDC, text, {4, y, sheet.width - 4, y + sheet.row},
                     DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX, {.height = sheet.height});
                y += sheet.row;
            }
        });
    }
}

TEST(TextPictures, Styles) {
    const FontStyle styles[] = {
        {},
        {-11, 0, FW_BOLD},
        {-11, 0, 0, true},
        {-11, 0, FW_BOLD, true},
        {-11, 0, 0, false, true},
        {-11, 0, 0, false, false, true},
        {-11, 4},
        {-11, 9},
        {-16, 0, 0, false, true, true},
        {-24, 0, FW_BOLD},
        {-8},
        {-16, 0, FW_BOLD, true, false, false, u"Noto Sans Thai"},
    };
    EXPECT_GOLDEN("text/styles", SIZE{300, 12 * 24 + 8}, [&](HDC hDC) {
        int y = 2;
        for (const FontStyle& style : styles) {
            draw(hDC, u"Agfj \u0416\u03C8 \u0639\u0631\u0628 \u65E5\u672C \u0E44\u0E17\u0E22",
                 {4, y, 296, y + 26}, DT_SINGLELINE | DT_VCENTER, style);
            y += 24;
        }
    });
}

TEST(TextPictures, Flags) {
    EXPECT_GOLDEN("text/places", SIZE{330, 130}, [](HDC hDC) {
        int y = 4;
        for (const std::uint32_t down : {DT_TOP, DT_VCENTER, DT_BOTTOM}) {
            int x = 4;
            for (const std::uint32_t across : {DT_LEFT, DT_CENTER, DT_RIGHT}) {
                drawFramed(hDC, u"one line", {x, y, x + 100, y + 36},
                           down | across | DT_SINGLELINE);
                x += 108;
            }
            y += 42;
        }
    });
    EXPECT_GOLDEN("text/lines", SIZE{330, 196}, [](HDC hDC) {
        const TextView text = u"The fir&st line\r\nis followed by a second one that is longer.\n\n"
                              u"\u65E5\u672C\u8A9E\u306E\u8A2D\u5B9A\u3092\u4FDD\u5B58\u3002 "
                              u"Incomprehensibilities";
        int x = 4;
        for (const std::uint32_t flags : {DT_LEFT, DT_CENTER, DT_RIGHT | DT_EDITCONTROL}) {
            drawFramed(hDC, text, {x, 4, x + 90, 60}, flags & ~DT_EDITCONTROL);
            drawFramed(hDC, text, {x, 66, x + 90, 188}, flags | DT_WORDBREAK);
            x += 110;
        }
    });
    EXPECT_GOLDEN("text/flags", SIZE{330, 226}, [](HDC hDC) {
        const struct {
            TextView text;
            std::uint32_t flags;
        } rows[] = {
            {u"&File && &Edit", 0},
            {u"&File && &Edit", DT_NOPREFIX},
            {u"Prefix in \u0639&\u0631\u0628\u064A and \u65E5&\u672C", 0},
            {u"one\ttwo\tthree", DT_EXPANDTABS},
            {u"one\ttwo\tthree", 0},
            {u"one\ttwo\t\u05E9\u05DC\u05D5\u05DD", DT_EXPANDTABS | DT_RTLREADING | DT_RIGHT},
            {u"Right to left: \u05E9\u05DC\u05D5\u05DD (1).", DT_RTLREADING},
            {u"Left to right: \u05E9\u05DC\u05D5\u05DD (1).", 0},
            {u"CR\rLF\nNUL\x01 lone \xD800 end", DT_SINGLELINE},
            {u"This text is too long for its place, and it is cut at the edge of the rectangle.",
             0},
            {u"This text is too long for its place, and goes on beyond it: no clip.", DT_NOCLIP},
        };
        int y = 4;
        for (const auto& row : rows) {
            drawFramed(hDC, row.text, {4, y, 240, y + 16}, row.flags | DT_SINGLELINE | DT_VCENTER);
            y += 20;
        }
    });
}

TEST(TextPictures, Colours) {
    EXPECT_GOLDEN("text/colours", SIZE{240, 100}, [](HDC hDC) {
        const struct {
            COLORREF back, text;
        } rows[] = {
            {0xFFFFFF, 0xC00000}, {0x800000, 0xFFFFFF}, {0x00FFFF, 0x0000FF}, {0, 0x40FF40}};
        int y = 0;
        for (const auto& row : rows) {
            const test::Selected brush(hDC, CreateSolidBrush(row.back));
            FillRect(hDC, {0, y, 240, y + 25}, brush);
            SetTextColor(hDC, row.text);
            draw(hDC, u"Text \u65E5\u672C \U0001F600\u2764\uFE0F\U0001F1E9\U0001F1EA",
                 {4, y, 120, y + 25}, DT_SINGLELINE | DT_VCENTER, {-16});
            const test::Selected font(hDC, fontOf({-11}));
            SetBkMode(hDC, OPAQUE);
            SetBkColor(hDC, 0xC0C0C0);
            RECT rect{130, y, 236, y + 25};
            DrawTextW(hDC, u"opaque\t\u65E5\u672C", rect,
                      DT_SINGLELINE | DT_VCENTER | DT_EXPANDTABS);
            y += 25;
        }
    });
}
