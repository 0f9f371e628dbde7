// workbench/logic/ChangedRows.h: which rows of the list got another translation since it was
// loaded.
#pragma once
#include <cstdint>
#include <vector>

// A bit for each row up to the last one that changed. Rows count from 1 and must not move.
class ChangedRows {
public:
    void add(std::int32_t iRow) {
        const auto index = static_cast<std::size_t>(iRow);
        if (index >= m_bits.size()) m_bits.resize(index + 1);
        m_bits[index] = true;
    }
    void clear() { m_bits.clear(); }
    // Calls f(row) for each, in the order of the list.
    template <class F> void forEach(F f) const {
        for (std::size_t i = 1; i < m_bits.size(); ++i) {
            if (m_bits[i]) f(static_cast<std::int32_t>(i));
        }
    }

private:
    std::vector<bool> m_bits;
};
