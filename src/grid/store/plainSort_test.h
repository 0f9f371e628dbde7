// grid/store/plainSort_test.h: the sort as it is described, step by step and with recursion, to
// compare with.
#pragma once
#include <cstdint>
#include <utility>
#include <vector>

// Sorts items, whose rows count from 1. after(row1, row2) tells whether the item that is in row1 at
// that moment orders after the one in row2. Parts whose last row is less than insertionBelow behind
// their first one are sorted by insertion.
template <typename Item, typename After> class PlainSort {
public:
    PlainSort(std::vector<Item>& items, std::int32_t insertionBelow, After after)
        : m_items(items), m_insertionBelow(insertionBelow), m_after(after) {
        quickSort(1, static_cast<std::int32_t>(items.size()));
    }

private:
    Item& at(std::int32_t i) { return m_items[static_cast<std::size_t>(i) - 1]; }

    void quickSort(std::int32_t lo, std::int32_t hi) {
        if (hi - lo < m_insertionBelow) return insertionSort(lo, hi);
        std::int32_t i = lo;
        std::int32_t j = hi;
        std::int32_t pivot = (lo + hi) / 2;
        if ((lo + hi) % 2 == 1 && pivot % 2 == 1) ++pivot;
        while (i <= j) {
            while (i < hi && m_after(pivot, i)) ++i;
            while (j > lo && m_after(j, pivot)) --j;
            if (i > j) break;
            if (pivot == i) {
                pivot = j;
            } else if (pivot == j) {
                pivot = i;
            }
            std::swap(at(i++), at(j--));
        }
        if (lo < j) quickSort(lo, j);
        if (i < hi) quickSort(i, hi);
    }

    void insertionSort(std::int32_t lo, std::int32_t hi) {
        for (std::int32_t k = lo + 1; k <= hi; ++k) {
            for (std::int32_t g = k; g > lo && m_after(g - 1, g); --g) std::swap(at(g), at(g - 1));
        }
    }

    std::vector<Item>& m_items;
    std::int32_t m_insertionBelow;
    After m_after;
};

// The sort by values; less compares two items.
template <typename Item, typename Less> void sortPlainly(std::vector<Item>& items, Less less) {
    const auto item = [&](std::int32_t row) -> const Item& {
        return items[static_cast<std::size_t>(row) - 1];
    };
    PlainSort(items, 20,
              [&](std::int32_t row1, std::int32_t row2) { return less(item(row2), item(row1)); });
}
