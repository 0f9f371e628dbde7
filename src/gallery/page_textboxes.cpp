// The text box as it is drawn around its edit window.
#include "controls/ctlUniTextBoxXP.h"
#include "gallery/Sheet.h"
#include "gallery/pages.h"

namespace gallery {
namespace {

using platform::rgb;

constexpr int kColumns = 3, kStep = 288;

struct Case {
    TextView name;
    TextBoxProps props;
    bool enabled = true;
};

void drawCases(HDC hDC, RECT area, TextView title, std::span<const Case> cases, int height) {
    heading(hDC, area, title);
    Cells cells(area, kColumns, kStep, height + 34);
    for (const Case& c : cases) {
        const RECT cell = cells.next();
        TextBoxProps props = c.props;
        if (props.BackColorOut == kAutoColor) props.BackColorOut = kPaper;
        putControl(hDC, box(cell.left, cell.top, 264, height), [&](HDC to, SIZE size) {
            paintTextBox(to, size, props, {.bEnabled = c.enabled});
        });
        write(hDC, box(cell.left, cell.top + height + 3, 264, 16), c.name, kCaption);
    }
}

}  // namespace

void drawTextBoxes(HDC hDC, const RECT& area) {
    const Case kLines[] = {
        {u"defaults", {.Text = u"The file was saved."}},
        {u"right", {.Text = u"The file was saved.", .Alignment = 1}},
        {u"centre", {.Text = u"The file was saved.", .Alignment = 2}},
        {u"rounded", {.Text = u"The file was saved.", .RoundedBorders = true}},
        {u"bottom border only", {.Text = u"The file was saved.", .OnlyBottomBorder = true}},
        {u"own border", {.BorderColor = rgb(178, 34, 34), .Text = u"The file was saved."}},
        {u"colours",
         {.BackColor = rgb(52, 58, 68), .ForeColor = rgb(255, 214, 120), .Text = u"%s of %s"}},
        {u"disabled", {.Text = u"The file was saved."}, false},
        {u"password", {.Text = u"secret", .PasswordChar = u"*"}},
        {u"Cyrillic",
         {.Text = u"\u0424\u0430\u0439\u043B \u0441\u043E\u0445\u0440\u0430\u043D\u0451\u043D."}},
        {u"Hebrew",
         {.Text = u"\u05D4\u05E7\u05D5\u05D1\u05E5 \u05E0\u05E9\u05DE\u05E8.", .Alignment = 1}},
        {u"Chinese", {.Text = u"\u6587\u4EF6\u5DF2\u4FDD\u5B58\u3002"}},
    };
    drawCases(hDC, area, u"One line", kLines, 24);
    const Case kPages[] = {
        {u"several lines", {.Text = u"Please wait...\r\nLoading the file", .MultiLine = true}},
        {u"rounded, back colour",
         {.BackColor = rgb(255, 255, 192),
          .Text = u"An empty translation\r\nshows in yellow",
          .MultiLine = true,
          .RoundedBorders = true}},
    };
    drawCases(hDC, box(area.left, area.top + 284, widthOf(area), 180), u"Several lines", kPages,
              84);
}

}  // namespace gallery
