// workbench/logic/PendingRows.h: the rows that still have no translation at all, found by their
// default text.
#pragma once
#include "grid/store/GridData.h"
#include "langfile/KeyTable.h"

// Pending is a row whose Translation cell is exactly the empty string. A row that has got a
// translation since it was noted is passed over when its turn comes; a row that has lost it must be
// added. Rows must not move or go while they are noted here.
class PendingRows {
public:
    // Notes all pending rows of the list, in place of what was noted before.
    void collect(const GridData& fxGrid);
    void add(const GridData& fxGrid, std::int32_t iRow);
    // Sets the translation of all pending rows of exactly that default text, in row order, and
    // forgets them. Returns the rows that were set; good until the next call. The texts may be
    // views of cells.
    std::span<const std::int32_t> fill(GridData& fxGrid, TextView sDefault, TextView sTrans);

private:
    // A set that now and then says yes wrongly: most default texts of a list have no pending row,
    // and their rows need no look into the table then.
    class Guess {
    public:
        void clear() { m_bits.assign(kBits / 64, 0); }
        void insert(std::uint64_t hash) { word(hash) |= std::uint64_t{1} << (hash % 64); }
        [[nodiscard]] bool mayHold(std::uint64_t hash) {
            return (word(hash) >> (hash % 64) & 1) != 0;
        }

    private:
        static constexpr std::size_t kBits = std::size_t{1} << 18;
        std::uint64_t& word(std::uint64_t hash) { return m_bits[hash / 64 % m_bits.size()]; }
        std::vector<std::uint64_t> m_bits = std::vector<std::uint64_t>(kBits / 64);
    };

    static constexpr std::uint32_t kNone = KeyTable::kNone;

    // The pending rows of one default text, chained; of it, which stands for all of them in
    // comparisons.
    struct Group {
        std::int32_t row;
        std::uint32_t first = kNone, last = kNone;  // into m_notes
    };
    struct Note {
        std::int32_t row;
        std::uint32_t next;
    };

    std::vector<Group> m_groups;
    std::vector<Note> m_notes;
    KeyTable m_table;                  // groups by default text
    Guess m_guess;                     // the default texts of all groups
    std::vector<std::int32_t> m_rows;  // those of the group being filled
};
