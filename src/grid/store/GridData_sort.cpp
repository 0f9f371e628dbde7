#include "grid/store/GridData.h"
#include "grid/store/gridFailures.h"
#include "grid/store/valueSort.h"

#include <algorithm>

void GridData::SortByColum(const GridValue& vKey, bool bSortAsc) {
    if (Rows() < 2) return;
    m_bSortAsc = bSortAsc;
    m_vSortCol = vKey;
    bool rowsMove = false;
    try {
        if (column(vKey).bSortWithCustomEvent) {
            rowsMove = true;
            pvSortCustom(vKey, bSortAsc);
        } else {
            pvSortValues(vKey, bSortAsc);
            rowsMove = true;
        }
    } catch (...) {
        // Ends quietly, with the rows as far as they got.
    }
    if (rowsMove) draw(m_bAllowMultiLineText, false);  // row offsets follow the rows
}

void GridData::pvSortValues(const GridValue& vKey, bool bSortAsc) {
    std::vector<std::uint32_t> order = ascendingOrder(column(vKey));
    if (!bSortAsc) std::reverse(order.begin(), order.end());
    for (const auto& each : m_oColumns) each->setRowsOrder(order);
}

void GridData::pvSortCustom(const GridValue& vKey, bool bSortAsc) {
    GridValue vEventKey = vKey;
    if (vKey.isNumeric() && column(vKey).vKey != GridValue(Text())) vEventKey = column(vKey).vKey;
    pvQuickSortCustom(1, Rows(), vEventKey, bSortAsc);
    if (!bSortAsc) {
        for (std::int32_t i = 1; i <= Rows() / 2; ++i) pvSwapRows(i, Rows() - i + 1);
    }
}

// The owner sees every comparison, so parts are sorted in their order, the left one first; the
// parts that wait are kept here, not on the call stack, whose depth the owner's answers would set.
void GridData::pvQuickSortCustom(std::int32_t lo, std::int32_t hi, const GridValue& vKey,
                                 bool bSortAsc) {
    const std::int32_t rows = Rows();
    const auto ordersAfter = [&](std::int32_t iRow1, std::int32_t iRow2) {
        bool b = true;
        if (SortCompareRows) SortCompareRows(vKey, iRow1, iRow2, bSortAsc, b);
        // Behind the end there are only removed rows, which must not come back for others.
        if (Rows() != rows) raiseSubscriptOutOfRange();
        return b;
    };
    struct Range {
        std::int32_t lo, hi;
    };
    std::vector<Range> waiting = {{lo, hi}};
    while (!waiting.empty()) {
        const Range range = waiting.back();
        waiting.pop_back();
        std::int32_t i = range.lo;
        std::int32_t j = range.hi;
        std::int32_t p = middleRow(i, j);
        while (i <= j) {
            while (i < range.hi && ordersAfter(p, i)) ++i;
            while (j > range.lo && ordersAfter(j, p)) --j;
            if (i > j) break;
            if (p == i) {
                p = j;
            } else if (p == j) {
                p = i;
            }
            if (i != j) pvSwapRows(i, j);
            ++i;
            --j;
        }
        if (i < range.hi) waiting.push_back({i, range.hi});
        if (range.lo < j) waiting.push_back({range.lo, j});
    }
}

void GridData::pvSwapRows(std::int32_t iRow1, std::int32_t iRow2) {
    for (const auto& each : m_oColumns) each->SwapRows(iRow1, iRow2);
}
