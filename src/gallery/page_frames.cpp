// The drawn frame in both styles.
#include "controls/ctlUniFrameXP.h"
#include "gallery/Sheet.h"
#include "gallery/pages.h"

namespace gallery {
namespace {

using platform::rgb;

constexpr int kColumns = 4, kStep = 216, kRow = 116;

struct Case {
    TextView name;
    FrameProps props;
};

void drawRow(HDC hDC, RECT area, TextView title, std::span<const Case> cases) {
    heading(hDC, area, title);
    Cells cells(area, kColumns, kStep, kRow);
    for (const Case& c : cases) {
        const RECT cell = cells.next();
        FrameProps props = c.props;
        if (props.BackColorOut == kAutoColor) props.BackColorOut = kPaper;
        putControl(hDC, box(cell.left, cell.top, 200, 78),
                   [&](HDC to, SIZE size) { paintFrame(to, size, props); });
        write(hDC, box(cell.left, cell.top + 82, 200, 16), c.name, kCaption);
    }
}

}  // namespace

void drawFrames(HDC hDC, const RECT& area) {
    const Case kBands[] = {
        {u"defaults", {.Caption = u"Files & folders"}},
        {u"without a caption", {}},
        {u"disabled", {.Caption = u"Files & folders", .Enabled = false}},
        {u"shadow", {.Caption = u"Files & folders", .UseShadow = true}},
        {u"colour of the band",
         {.Caption = u"Translation",
          .ForeColor = 0xFFFFFF,
          .TitleBackColor = rgb(127, 138, 167),
          .UseShadow = true}},
        {u"back colour",
         {.Caption = u"Translation", .ForeColor = rgb(80, 50, 0), .BackColor = rgb(255, 244, 204)}},
        {u"own border",
         {.Caption = u"Translation", .BorderColor = rgb(178, 34, 34), .BackColor = kTint}},
        {u"corners in a colour", {.Caption = u"Translation", .BackColorOut = rgb(255, 192, 0)}},
    };
    drawRow(hDC, area, u"A title band", kBands);
    const Case kBorders[] = {
        {u"on paper", {.Caption = u"&Options", .BackColor = kPaper, .VistaStyle = false}},
        {u"without a caption", {.BackColor = kPaper, .VistaStyle = false}},
        {u"disabled, dark text",
         {.Caption = u"&Options",
          .Enabled = false,
          .ForeColor = 0,
          .BackColor = kPaper,
          .VistaStyle = false}},
        {u"shadow",
         {.Caption = u"&Options",
          .ForeColor = rgb(0, 0, 128),
          .BackColor = kPaper,
          .VistaStyle = false,
          .UseShadow = true}},
        {u"colours",
         {.Caption = u"\u041F\u0430\u0440\u0430\u043C\u0435\u0442\u0440\u044B",
          .ForeColor = 0xFFFFFF,
          .BorderColor = rgb(255, 192, 0),
          .BackColor = rgb(52, 58, 68),
          .VistaStyle = false}},
    };
    drawRow(hDC, box(area.left, area.top + 274, widthOf(area), 260), u"A caption in the border",
            kBorders);
}

}  // namespace gallery
