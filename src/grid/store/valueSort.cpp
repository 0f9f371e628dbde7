#include "grid/store/valueSort.h"

#include "platform/base/collation.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <optional>
#include <utility>

namespace {

// --- From values to ranks

// Sorts the items, each with its Row, and numbers the groups of equal ones. The result is in the
// order of the rows.
template <typename Item, typename Less>
std::vector<SortItem> ranked(std::vector<Item> items, Less less) {
    std::sort(items.begin(), items.end(), less);
    std::vector<SortItem> ranks(items.size());
    std::uint32_t rank = 0;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (i > 0 && less(items[i - 1], items[i])) ++rank;
        ranks[items[i].Row - 1] = {rank, items[i].Row};
    }
    return ranks;
}

// A text by its sort key, whose first bytes are at hand as a number.
struct KeyedText {
    std::uint64_t head;
    std::size_t offset;
    std::uint32_t length;
    std::uint32_t Row;
};

std::vector<SortItem> rankTexts(const clsCtlUniGrid_Column& column) {
    const auto rows = static_cast<std::size_t>(column.Rows());
    std::vector<KeyedText> texts(rows);
    Bytes keys;
    Text spare;
    for (std::size_t i = 0; i < rows; ++i) {
        const std::size_t start = keys.size();
        platform::appendSortKey(column.valueText(static_cast<std::int32_t>(i + 1), spare), keys);
        texts[i] = {0, start, static_cast<std::uint32_t>(keys.size() - start),
                    static_cast<std::uint32_t>(i + 1)};
        for (std::size_t k = start; k < start + sizeof(std::uint64_t); ++k) {
            texts[i].head = texts[i].head << 8 | (k < keys.size() ? keys[k] : 0);
        }
    }
    const auto less = [&keys](const KeyedText& a, const KeyedText& b) {
        if (a.head != b.head) return a.head < b.head;
        const int order = std::memcmp(keys.data() + a.offset, keys.data() + b.offset,
                                      std::min(a.length, b.length));
        return order != 0 ? order < 0 : a.length < b.length;
    };
    return ranked(std::move(texts), less);
}

std::vector<SortItem> rankValues(const clsCtlUniGrid_Column& column) {
    struct Item {
        GridValue value;
        std::uint32_t Row;
    };
    std::vector<Item> items;
    items.reserve(static_cast<std::size_t>(column.Rows()));
    for (std::int32_t i = 1; i <= column.Rows(); ++i) {
        items.push_back({column.Value(i), static_cast<std::uint32_t>(i)});
    }
    return ranked(std::move(items),
                  [](const Item& a, const Item& b) { return a.value.compare(b.value) < 0; });
}

// --- From ranks to the order of rows

// Greatest and least ranks of ever larger pieces of a list, to find the next rank of a kind
// without looking at each. Positions count from 1.
class RankTree {
public:
    explicit RankTree(std::span<const SortItem> items)
        : m_leaves(std::bit_ceil(items.size())), m_most(2 * m_leaves, 0),
          m_least(2 * m_leaves, std::numeric_limits<std::uint32_t>::max()) {
        for (std::size_t i = 0; i < items.size(); ++i) {
            m_most[m_leaves + i] = m_least[m_leaves + i] = items[i].rank;
        }
        for (std::size_t node = m_leaves - 1; node > 0; --node) join(node);
    }

    void set(std::int32_t at, std::uint32_t rank) {
        std::size_t node = leaf(at);
        m_most[node] = m_least[node] = rank;
        while (node > 1) join(node /= 2);
    }

    // The first position from `from` on whose rank is not below pivot; `last` when there is none
    // before it.
    [[nodiscard]] std::int32_t notBelow(std::uint32_t pivot, std::int32_t from,
                                        std::int32_t last) const {
        std::size_t node = leaf(from);
        while (m_most[node] < pivot) {
            while ((node & 1) == 1) node /= 2;  // a right child: go on beside its parent
            if (node == 0) return last;
            ++node;
        }
        while (node < m_leaves) {
            node *= 2;
            if (m_most[node] < pivot) ++node;
        }
        return std::min(position(node), last);
    }

    // The same downwards: the last position up to `from` whose rank is not above pivot.
    [[nodiscard]] std::int32_t notAbove(std::uint32_t pivot, std::int32_t from,
                                        std::int32_t first) const {
        std::size_t node = leaf(from);
        while (m_least[node] > pivot) {
            while ((node & 1) == 0) node /= 2;  // a left child
            if (node == 1) return first;
            --node;
        }
        while (node < m_leaves) {
            node = node * 2 + 1;
            if (m_least[node] > pivot) --node;
        }
        return std::max(position(node), first);
    }

private:
    [[nodiscard]] std::size_t leaf(std::int32_t at) const {
        return m_leaves + static_cast<std::size_t>(at) - 1;
    }
    [[nodiscard]] std::int32_t position(std::size_t node) const {
        return static_cast<std::int32_t>(node - m_leaves) + 1;
    }
    void join(std::size_t node) {
        m_most[node] = std::max(m_most[2 * node], m_most[2 * node + 1]);
        m_least[node] = std::min(m_least[2 * node], m_least[2 * node + 1]);
    }

    std::size_t m_leaves;
    std::vector<std::uint32_t> m_most, m_least;
};

// A run of pvQuickSort. Positions count from 1 and ranges include both ends, as the halving to even
// depends on it.
class ValueSorter {
public:
    explicit ValueSorter(std::span<SortItem> items)
        : m_items(items), m_scansLeft(4 * items.size() * std::bit_width(items.size())) {}

    void run() {
        if (m_items.empty()) return;
        // The order in which parts are sorted changes nothing. The smaller one first: never more
        // than one part waits for each halving.
        std::vector<Range> waiting = {{1, static_cast<std::int32_t>(m_items.size())}};
        while (!waiting.empty()) {
            const Range range = waiting.back();
            waiting.pop_back();
            if (range.hi - range.lo < kInsertionBelow) {
                pvInsertionSort(range);
                continue;
            }
            auto [left, right] = partition(range);
            if (left.hi - left.lo < right.hi - right.lo) std::swap(left, right);
            if (left.lo < left.hi) waiting.push_back(left);
            if (right.lo < right.hi) waiting.push_back(right);
        }
    }

private:
    struct Range {
        std::int32_t lo, hi;
    };

    SortItem& at(std::int32_t i) { return m_items[static_cast<std::size_t>(i) - 1]; }

    void pvInsertionSort(Range range) {
        for (std::int32_t k = range.lo + 1; k <= range.hi; ++k) {
            const SortItem item = at(k);
            std::int32_t gap = k;
            for (; gap > range.lo && at(gap - 1).rank > item.rank; --gap) at(gap) = at(gap - 1);
            at(gap) = item;
        }
    }

    std::pair<Range, Range> partition(Range range) {
        if (!m_tree && range.hi - range.lo >= kScannedBelow) payForScans(range);
        return m_tree && range.hi - range.lo >= kScannedBelow ? partition<true>(range)
                                                              : partition<false>(range);
    }

    // Both ways make the same exchanges.
    template <bool kByTree> std::pair<Range, Range> partition(Range range) {
        const std::uint32_t pivot = at(middleRow(range.lo, range.hi)).rank;
        std::int32_t i = range.lo;
        std::int32_t j = range.hi;
        while (i <= j) {
            if constexpr (kByTree) {
                i = m_tree->notBelow(pivot, i, range.hi);
                j = m_tree->notAbove(pivot, j, range.lo);
            } else {
                while (i < range.hi && at(i).rank < pivot) ++i;
                while (j > range.lo && at(j).rank > pivot) --j;
            }
            if (i <= j) {
                std::swap(at(i), at(j));
                if constexpr (kByTree) {
                    m_tree->set(i, at(i).rank);
                    m_tree->set(j, at(j).rank);
                }
                ++i;
                --j;
            }
        }
        return {{range.lo, j}, {i, range.hi}};
    }

    // A pivot that halves badly each time would cost a scan of nearly all items for each item. The
    // exchanges are then few, for there are never more than the smaller part has items; so beyond
    // a multiple of what honest input needs, the tree finds them without scanning.
    void payForScans(Range range) {
        const auto scans = static_cast<std::size_t>(range.hi - range.lo);
        if (scans <= m_scansLeft) {
            m_scansLeft -= scans;
        } else {
            m_tree.emplace(m_items);
        }
    }

    static constexpr std::int32_t kInsertionBelow = 20;
    static constexpr std::int32_t kScannedBelow = 256;  // such a part is scanned in any case

    std::span<SortItem> m_items;
    std::size_t m_scansLeft;
    std::optional<RankTree> m_tree;
};

}  // namespace

void pvQuickSort(std::span<SortItem> items) { ValueSorter(items).run(); }

std::vector<std::uint32_t> ascendingOrder(const clsCtlUniGrid_Column& column) {
    std::vector<SortItem> m_aSort = column.iType == 0 ? rankTexts(column) : rankValues(column);
    pvQuickSort(m_aSort);
    std::vector<std::uint32_t> order;
    order.reserve(m_aSort.size());
    for (const SortItem& item : m_aSort) order.push_back(item.Row);
    return order;
}
