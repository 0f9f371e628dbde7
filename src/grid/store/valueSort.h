// grid/store/valueSort.h: the order of rows by the values of one column.
#pragma once
#include "grid/store/clsCtlUniGrid_Column.h"

#include <span>

// One row in a sort run. Equal ranks mean equal values, a lower rank a lesser value.
struct SortItem {
    std::uint32_t rank;
    std::uint32_t Row;
};

// Entry i is the row that comes i-th in ascending order. Column type 0 compares texts as a person
// does (platform::compareText), any other type by GridValue::compare. Equal values come in the
// order in which pvQuickSort leaves them. Raises what the conversion to text raises.
[[nodiscard]] std::vector<std::uint32_t> ascendingOrder(const clsCtlUniGrid_Column& column);

// The row in the middle of two: half of their sum, rounded to even (3 and 4 give 4, 2 and 3 give
// 2).
[[nodiscard]] constexpr std::int32_t middleRow(std::int32_t lo, std::int32_t hi) {
    const std::int64_t sum = std::int64_t{lo} + hi;
    return static_cast<std::int32_t>(sum % 4 == 3 ? sum / 2 + 1 : sum / 2);
}

// Sorts by rank. Up to 20 items equal ranks keep their order; beyond, it is the order that falls
// out of the exchanges around a middle pivot, which is part of the grid's behaviour: the same
// input always gives the same rows. Time n log n, at most n log² n for input made to be slow.
void pvQuickSort(std::span<SortItem> items);
