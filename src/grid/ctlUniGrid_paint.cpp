#include "gfx/Selection.h"
#include "gfx/clsMEMDC.h"
#include "gfx/modCtlCommon_alphaImg.h"
#include "gfx/modCtlCommon_ctl_colors.h"
#include "gfx/modCtlCommon_ctl_faces.h"
#include "gfx/modCtlCommon_ctl_shapes.h"
#include "gfx/modCtlCommon_ctl_text.h"
#include "gfx/modCtlCommon_src_errors.h"
#include "gfx/rounding.h"
#include "grid/ctlUniGrid.h"
#include "grid/store/pvGetCellText.h"
#include "platform/window/textout.h"

#include <algorithm>
#include <limits>

namespace {

constexpr std::uint32_t kOneLine =
    platform::DT_NOPREFIX | platform::DT_SINGLELINE | platform::DT_VCENTER;
constexpr std::uint32_t kLines = platform::DT_NOPREFIX | platform::DT_WORDBREAK;

// A failure ends its step, and drawing goes on with the next one.
template <class Step> void drawn(Step step) {
    try {
        step();
    } catch (...) {
        ReportCaughtFailure(u"ctlUniGrid.DrawControl");
    }
}

}  // namespace

class ctlUniGrid::Frame {
public:
    explicit Frame(ctlUniGrid& grid)
        : m_grid(grid), m_pic(grid.m_pic.hDC()), m_target(m_pic),
          m_multiLine(grid.AllowMultiLineText()), m_multiSelect(grid.MultiSelect()),
          m_focus(grid.ShowFocus() && grid.hasFocus() && grid.Enabled()), m_rows(grid.Rows()),
          m_row(grid.Row()), m_width(grid.m_pic.ScaleWidth()), m_height(grid.m_pic.ScaleHeight()),
          m_border(AutoBorderColor(grid.CellsBorderColor(), grid.BackColor())) {
        const std::int64_t scrolled = grid.VScroll_Value();
        m_topRow = m_multiLine ? grid.pvGetRowByOffset(scrolled) : scrolled + 1;
        m_topRow = std::max<std::int64_t>(m_topRow, 1);
    }

    void draw() {
        DrawRect(m_pic, {0, 0, m_width, m_height}, m_grid.BackColor(), true);
        if (!m_multiLine) {
            drawColumns();
            return;
        }
        clsMEMDC buffer;
        drawn([&] {
            buffer.CreateDC(m_width, m_height);
            buffer.BkMode(platform::TRANSPARENT);
            buffer.DrawBackColor(m_grid.BackColor());
        });
        const gfx::Selection font(buffer.Hdc(), m_grid.m_pic.hFont());
        m_target = buffer.Hdc();
        drawColumns();
    }

private:
    void drawColumns() {
        std::int64_t x = -std::int64_t{m_grid.HScroll_Value()};
        for (std::int32_t c = 1; c <= m_grid.Cols() && x <= m_width; ++c) {
            const clsCtlUniGrid_Column& column = m_grid.columnAt(c);
            const std::int32_t width = column.iCurrentWidth;
            if (width > 0 && x + width >= 0) {
                m_left = static_cast<std::int32_t>(x);
                m_right = static_cast<std::int32_t>(
                    std::min<std::int64_t>(x + width, std::numeric_limits<std::int32_t>::max()));
                drawn([&] { drawHeader(c, column); });
                drawRows(column);
                if (m_multiLine) {
                    platform::BitBlt(m_pic, m_left, m_grid.RowHeight(), width, m_height, m_target,
                                     m_left, 1, platform::SRCCOPY);
                }
            }
            x += stepOf(column);
        }
    }

    void drawHeader(std::int32_t c, const clsCtlUniGrid_Column& column) const {
        const RECT cell{m_left, 0, m_right, m_grid.RowHeight()};
        RECT text{cell.left + 4, cell.top, cell.right - 5, cell.bottom};
        if (column.bSortable) text.right = std::max(text.right - kArrowSize.cx - 2, text.left);
        DrawButtonFace(m_pic, cell,
                       {.iBackColor = m_grid.HeaderBackColor(),
                        .iStyle = m_grid.HeaderStyle(),
                        .bAdapt = true});
        DrawRect(m_pic, cell, m_border, false);
        if (m_grid.isSortedColumn(c)) {
            const auto& arrow =
                m_grid.m_bSortAsc ? m_grid.m_pictures.picSortDown : m_grid.m_pictures.picSortUp;
            pvOverlapImage(m_pic, cell.right - kArrowSize.cx - 1, cell.top, cell.right, cell.bottom,
                           arrow.get(), {.bPicTransparent = true});
        }
        std::uint32_t flags = kOneLine;
        if (column.iHeaderAlign == 2) {
            flags |= platform::DT_CENTER;
        } else if (column.iHeaderAlign != 0) {
            flags |= platform::DT_RIGHT;
        }
        if (column.bRightToLeft) flags |= platform::DT_RTLREADING;
        TextDrawColor(m_pic, column.sText, text, m_grid.HeaderForeColor(), flags);
    }

    void drawRows(const clsCtlUniGrid_Column& column) {
        std::uint32_t flags = m_multiLine ? kLines : kOneLine;
        if (column.iAlign == 2) flags |= platform::DT_CENTER;
        if (column.iAlign == 1) flags |= platform::DT_RIGHT;
        if (column.bRightToLeft) flags |= platform::DT_RTLREADING;

        std::int64_t y = m_grid.RowHeight() - 1;
        std::int64_t row = m_topRow;
        if (m_multiLine && row <= m_rows) {
            y = std::int64_t{column.OffsetRow(static_cast<std::int32_t>(row))} -
                m_grid.VScroll_Value();
        }
        for (; row <= m_rows && y <= m_height; ++row) {
            const auto iRow = static_cast<std::int32_t>(row);
            const std::int32_t height = m_multiLine ? column.CellHeight(iRow) : m_grid.RowHeight();
            const auto top = static_cast<std::int32_t>(y);
            drawn([&] { drawCell(column, iRow, {m_left, top, m_right, top + height}, flags); });
            y += height - 1;
        }
    }

    void drawCell(const clsCtlUniGrid_Column& column, std::int32_t row, RECT cell,
                  std::uint32_t flags) {
        const RECT text{cell.left + 4, cell.top, cell.right - 6, cell.bottom};
        const std::int32_t height = cell.bottom - cell.top;
        Color fore = column.ForeColor(row), back = column.BackColor(row);
        if (fore == -1) fore = m_grid.ForeColor();
        if (back == -1) back = m_grid.BackColor();
        if (m_multiSelect ? m_grid.columnAt(1).Selected(row) : row == m_row) {
            fore = m_grid.SelForeColor();
            back = m_grid.SelBackColor();
        }
        if (row == m_row) {
            DrawButtonFace(m_target, cell,
                           {.iBackColor = back,
                            .bFocus = m_focus,
                            .iStyle = m_grid.SelectorStyle(),
                            .bAdapt = true});
        } else {
            DrawRect(m_target, cell, back, true);
        }
        DrawRect(m_target, cell, m_border, false);
        platform::InflateRect(cell, -2, 0);

        if (column.iType == 2) {
            if (column.Value(row).toBoolean()) {
                pvOverlapImageRect(m_target, text, m_grid.m_pictures.picFlag.get(),
                                   {.bPicTransparent = true});
            }
        } else if (column.iType == 0) {
            drawText(column.valueText(row, m_spare), column, row, text, fore, flags);
        } else {
            drawText(pvGetCellText(column.Value(row), column), column, row, text, fore, flags);
        }

        if (!column.HasPicture(row)) return;
        const CellPicture picture = column.GetPicture(row);
        pvOverlapImageRect(m_target, cell, picture.oPic->picture(),
                           {.bPicGrayed = picture.bPicGrayed,
                            .bPicTransparent = picture.bPicTransparent,
                            .iPicWidth = column.iCurrentWidth,
                            .iPicHeight = height - 6,
                            .lPicXTransp = picture.lPicXTransp,
                            .lPicYTransp = picture.lPicYTransp,
                            .lPicTranspColor = picture.lPicTranspColor});
    }

    void drawText(TextView s, const clsCtlUniGrid_Column& column, std::int32_t row, RECT rect,
                  Color color, std::uint32_t flags) const {
        if (s.empty()) return;
        if (m_multiLine) {
            rect.top += gfx::roundHalfEven((column.CellHeight(row) - column.TextHeight(row)) / 2.0);
        }
        TextDrawColor(m_target, s, rect, color, flags);
    }

    ctlUniGrid& m_grid;
    HDC m_pic, m_target;
    bool m_multiLine, m_multiSelect, m_focus;
    std::int32_t m_rows, m_row;
    std::int64_t m_topRow = 1;  // the first row in view; may be behind the last one
    int m_width, m_height;
    Color m_border;
    std::int32_t m_left = 0, m_right = 0;  // of the column being drawn
    Text m_spare;
};

// The frame stays on the control's own surface: it is drawn again only when it would come out
// another one, for showing all of that surface costs as much as the rest of a frame.
bool ctlUniGrid::drawBorder() {
    const Border now{hDC(),
                     {ScaleWidth(), ScaleHeight()},
                     TranslateColor(BackColor()),
                     AutoBorderColor(BorderColor(), BackColor())};
    if (now == m_border) return false;
    m_border = now;
    const RECT all{0, 0, now.size.cx, now.size.cy};
    DrawRect(hDC(), all, 0xFFFFFF, true);
    DrawFlatFace(hDC(), all, {.iBackColor = now.back, .iBorderColor = now.border});
    return true;
}

void ctlUniGrid::stepFailed() { ReportCaughtFailure(u"ctlUniGrid.DrawControl"); }

void ctlUniGrid::paint(bool bRefreshNow) {
    if (hWnd() == 0) return;
    bool newBorder = false;
    drawn([&] { newBorder = drawBorder(); });
    drawn([&] { Frame(*this).draw(); });
    if (bRefreshNow) {
        m_pic.Refresh();
        if (newBorder) HostWindow::Refresh();
    } else {
        platform::InvalidateRect(m_pic.hWnd());
        if (newBorder) platform::InvalidateRect(hWnd());
    }
    // The bars are asked for nothing: made after the surface, they are shown above it in any case,
    // and drawing them costs as much as half a frame.
    tellHelpers();
}
