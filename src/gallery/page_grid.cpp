// The drawn grid with a translator's list, and buttons that change what it shows.
#include "gallery/Sheet.h"
#include "gallery/Window.h"
#include "gallery/pages.h"
#include "grid/ctlUniGrid.h"

#include <algorithm>
#include <utility>

namespace gallery {
namespace {

using namespace platform;

constexpr TextView kRows[] = {
    u"Menu\tFile\t&File\t&Datei",
    u"Menu\tOpen\t&Open...\t\u00d6&ffnen...",
    u"Menu\tSave\t&Save\t",
    u"Menu\tQuit\t&Quit\t&Beenden",
    u"Messages\tSaved\tThe file was saved.\tDie Datei ist gespeichert.",
    (u"Messages\tLost\tThe file \"%1\" is gone.\t\u0424\u0430\u0439\u043b \u00ab%1\u00bb "
     u"\u0438\u0441\u0447\u0435\u0437."),
    u"Messages\tWait\tPlease wait\t\u4e2d\u6587",
    u"Messages\tDone\tDone\tDone",
    (u"Messages\tTerms\tThis text is longer than the cell that it lies in, and wraps when cells "
     u"may have several lines.\tDieser Text ist l\u00e4nger als seine Zelle und bricht um, wenn "
     u"Zellen mehrere Zeilen haben d\u00fcrfen."),
    u"Tips\tSearch\tGoes to the next row with that text\t",
};
constexpr std::int32_t kFirstRows = 30;
constexpr Color kEmpty = 0x00FFFF, kUntouched = 0xC0FFFF;

constexpr int kButtonHeight = 28, kGap = 12;

RECT gridOf(const RECT& area) {
    return {area.left, area.top, area.right, area.bottom - kButtonHeight - kGap};
}

void fill(ctlUniGrid& grid, std::int32_t rows) {
    grid.BeginUpdate();
    grid.Clear(false);
    grid.reserveRows(rows);
    for (std::int32_t i = 0; i < rows; ++i) {
        const TextView row = kRows[static_cast<std::size_t>(i) % std::size(kRows)];
        grid.AddRow(number(i + 1) + u"\t" + Text(row));
        const TextView translation = grid.CellText(i + 1, 5);
        if (translation.empty()) {
            grid.CellBackColor(i + 1, 5, kEmpty);
        } else if (translation == grid.CellText(i + 1, 4)) {
            grid.CellBackColor(i + 1, 5, kUntouched);
        }
    }
    grid.EndUpdate();
}

void prepare(ctlUniGrid& grid) {
    grid.InitProperties();
    grid.BackColor(0xFFFFFF);
    grid.ForeColor(0x800000);
    grid.HeaderStyle(4);
    grid.SelectorStyle(4);
    grid.AddColumn({.sText = u"Row", .iWidth = 56, .iAlign = 1, .vKey = u"Row"});
    grid.AddColumn({.sText = u"Section", .vKey = u"Section", .bSortable = true});
    grid.AddColumn({.sText = u"Key", .vKey = u"Key", .bSortable = true});
    grid.AddColumn({.sText = u"Default", .iWidth = 260, .vKey = u"Default", .bSortable = true});
    grid.AddColumn({.sText = u"Translation", .vKey = u"Translation", .bSortable = true});
    grid.RowInWords = [&grid](std::int32_t iRow) {
        Text words = u"row " + number(iRow);
        for (std::int32_t c = 2; c <= 3; ++c) words.append(u", ").append(grid.CellText(iRow, c));
        return words + (grid.CellText(iRow, 5).empty() ? u", untranslated" : u", translated");
    };
    fill(grid, kFirstRows);
}

class GridPage : public LivePage {
public:
    explicit GridPage(const PageHost& host) : m_host(host) {
        prepare(m_grid);
        m_grid.ColWidth(u"Translation", 320);
        m_grid.SelectionChange = [this] {
            if (m_host.log) m_host.log("row " + std::to_string(m_grid.Row()));
        };
        (void)m_grid.create(host.hWnd, {});
        const auto button = [&](Text caption, std::function<void()> click) {
            m_buttons.push_back(
                std::make_unique<PushButton>(host.hWnd, std::move(caption), std::move(click)));
        };
        button(u"Several lines",
               [this] { m_grid.AllowMultiLineText(!m_grid.AllowMultiLineText()); });
        button(u"Several rows", [this] {
            m_grid.MultiSelect(!m_grid.MultiSelect());
            m_grid.Refresh();
        });
        button(u"Next style", [this] {
            const std::int32_t style = (m_grid.HeaderStyle() + 1) % 9;
            m_grid.HeaderStyle(style);
            m_grid.SelectorStyle(style);
        });
        button(u"Larger font", [this] {
            StdFont font = m_grid.Font();
            font.Size = font.Size > 16 ? 8.25 : font.Size + 3;
            m_grid.Font(font);
        });
        for (const std::int32_t rows : {kFirstRows, 100000, 1000000}) {
            button(number(rows) + u" rows", [this, rows] { fill(m_grid, rows); });
        }
    }

    void place(const RECT& area) override {
        const RECT grid = gridOf(area);
        m_grid.move(grid.left, grid.top, widthOf(grid), heightOf(grid));
        if (m_grid.Row() == -1) m_grid.Row(2);
        const int width = (widthOf(area) + kGap) / static_cast<int>(m_buttons.size());
        int x = area.left;
        for (const auto& button : m_buttons) {
            button->place(
                box(x, area.bottom - kButtonHeight, std::max(width - kGap, 0), kButtonHeight));
            x += width;
        }
    }
    [[nodiscard]] std::vector<HWND> tabStops() const override {
        std::vector<HWND> stops{m_grid.hWnd()};
        for (const auto& button : m_buttons) stops.push_back(button->hWnd());
        return stops;
    }

private:
    PageHost m_host;
    ctlUniGrid m_grid;
    std::vector<std::unique_ptr<PushButton>> m_buttons;
};

}  // namespace

// The grid draws on its own windows only, so the picture is taken from hidden ones.
void drawGrid(HDC hDC, const RECT& area) {
    const RECT place = gridOf(area);
    const SIZE size{std::min(widthOf(place), 2000), std::min(heightOf(place), 2000)};
    if (size.cx <= 0 || size.cy <= 0) return;
    WindowOptions options;
    options.kind = WindowKind::Main;
    const HWND hidden = createWindow(options);
    {
        ctlUniGrid grid;
        prepare(grid);
        grid.ColWidth(u"Translation", 320);
        (void)grid.create(hidden, {0, 0, size.cx, size.cy});
        grid.SortByColum(u"Section", true);
        grid.Row(2);
        BitBlt(hDC, place.left, place.top, size.cx, size.cy, grid.hDC(), 0, 0, SRCCOPY);
        const HostWindow& pic = grid.Pic();
        BitBlt(hDC, place.left + pic.Left(), place.top + pic.Top(), pic.ScaleWidth(),
               pic.ScaleHeight(), pic.hDC(), 0, 0, SRCCOPY);
    }
    DestroyWindow(hidden);
}

std::unique_ptr<LivePage> openGrid(const PageHost& host) {
    return std::make_unique<GridPage>(host);
}

}  // namespace gallery
