// grid/store/MeasuredCells.h: what measuring has found out about the cells of a column, kept until
// a cell changes.
//
// The column tells what becomes of its rows (counted from 1), the measuring pass asks which rows
// it has to look at. Until the first pass nothing is kept, and telling costs a comparison.
#pragma once
#include "platform/base/text.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

class MeasuredCells {
public:
    static constexpr std::int32_t kUnknown = -1;

    // What the sizes depend on beside the cells themselves.
    struct Conditions {
        bool multiLine = false;
        std::int32_t fixedWidth = kUnknown;  // that texts are wrapped at
        std::uint32_t fontGeneration = 0;
        Text numberFormat = {};
        friend bool operator==(const Conditions&, const Conditions&) = default;
    };
    // To be called ahead of each pass: under other conditions everything is forgotten.
    void measuredUnder(Conditions conditions) {
        if (conditions == m_conditions) return;
        clear();
        m_conditions = std::move(conditions);
    }

    // Rows whose size is unknown or whose place has changed, with others between them; none when
    // first is above last.
    struct Rows {
        std::int32_t first, last;
    };
    [[nodiscard]] Rows changed(std::int32_t rows) const {
        return {std::min(m_first, known() + 1), known() < rows ? rows : std::min(m_last, rows)};
    }
    void changesSeen() {
        m_first = std::numeric_limits<std::int32_t>::max();
        m_last = 0;
    }

    // Pixels; kUnknown for a cell to be measured.
    [[nodiscard]] std::int32_t width(std::int32_t row) const {
        return row <= known() ? m_widths[static_cast<std::size_t>(row) - 1] : kUnknown;
    }
    // Rows are filled in from the first one on.
    void width(std::int32_t row, std::int32_t pixels) {
        if (row > known()) m_widths.resize(static_cast<std::size_t>(row), kUnknown);
        m_widths[static_cast<std::size_t>(row) - 1] = pixels;
    }
    void expect(std::int32_t rows) { m_widths.reserve(static_cast<std::size_t>(rows)); }
    // Of the first so many rows; 0 without any.
    [[nodiscard]] std::int32_t
    widest(std::int32_t rows = std::numeric_limits<std::int32_t>::max()) const {
        const auto end = m_widths.begin() + std::min(rows, known());
        return end == m_widths.begin() ? 0 : *std::max_element(m_widths.begin(), end);
    }

    void cellChanged(std::int32_t row) {
        if (row > known()) return;
        m_widths[static_cast<std::size_t>(row) - 1] = kUnknown;
        touch(row, row);
    }
    void rowRemoved(std::int32_t row) {
        if (row > known()) return;
        m_widths.erase(m_widths.begin() + (row - 1));
        touch(row, row);
    }
    void rowsSwapped(std::int32_t row1, std::int32_t row2) {
        if (known() == 0 || row1 == row2) return;
        const std::int32_t first = std::min(row1, row2), last = std::max(row1, row2);
        if (first > known()) return;
        const std::int32_t width1 = width(row1), width2 = width(row2);
        width(first, first == row1 ? width2 : width1);
        if (last <= known()) width(last, last == row1 ? width2 : width1);
        touch(first, last);
    }
    // Row i becomes the row that had the number order[i - 1].
    void rowsReordered(std::span<const std::uint32_t> order) {
        if (known() == 0) return;
        std::vector<std::int32_t> widths(m_widths.size());
        for (std::size_t i = 0; i < widths.size(); ++i) {
            widths[i] = width(static_cast<std::int32_t>(order[i]));
        }
        m_widths = std::move(widths);
        touch(1, static_cast<std::int32_t>(order.size()));
    }
    void clear() {
        m_widths = {};
        changesSeen();
    }
    [[nodiscard]] std::size_t memoryHeld() const {
        return m_widths.capacity() * sizeof(std::int32_t);
    }

private:
    [[nodiscard]] std::int32_t known() const { return static_cast<std::int32_t>(m_widths.size()); }
    void touch(std::int32_t first, std::int32_t last) {
        m_first = std::min(m_first, first);
        m_last = std::max(m_last, last);
    }

    std::vector<std::int32_t> m_widths;  // of the first rows; the rest is unknown
    std::int32_t m_first = std::numeric_limits<std::int32_t>::max(), m_last = 0;
    Conditions m_conditions;
};
