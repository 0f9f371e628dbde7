// grid/store/plainSort_test.h: the sort as it is described, step by step and with recursion, to
// compare with.
#pragma once
#include <cstdint>
#include <vector>

template <typename Item, typename Less> class PlainSort {
public:
    PlainSort(std::vector<Item>& items, Less less) : m_items(items), m_less(less) {
        quickSort(1, static_cast<std::int32_t>(items.size()));
    }

private:
    Item& at(std::int32_t i) { return m_items[static_cast<std::size_t>(i) - 1]; }

    void quickSort(std::int32_t lo, std::int32_t hi) {
        if (hi - lo < 20) return insertionSort(lo, hi);
        std::int32_t i = lo;
        std::int32_t j = hi;
        const std::int32_t half = (lo + hi) / 2;
        const Item pivot = at((lo + hi) % 2 == 1 && half % 2 == 1 ? half + 1 : half);
        while (i <= j) {
            while (i < hi && m_less(at(i), pivot)) ++i;
            while (j > lo && m_less(pivot, at(j))) --j;
            if (i <= j) std::swap(at(i++), at(j--));
        }
        if (lo < j) quickSort(lo, j);
        if (i < hi) quickSort(i, hi);
    }

    void insertionSort(std::int32_t lo, std::int32_t hi) {
        for (std::int32_t k = lo + 1; k <= hi; ++k) {
            for (std::int32_t g = k; g > lo && m_less(at(g), at(g - 1)); --g) {
                std::swap(at(g), at(g - 1));
            }
        }
    }

    std::vector<Item>& m_items;
    Less m_less;
};
