// bench/gridRows.h: rows for the benchmarks of the grid.
#pragma once
#include "platform/base/text.h"

#include <cstddef>
#include <iterator>
#include <random>

inline Text decimal(std::size_t number) {
    const std::string digits = std::to_string(number);
    return {digits.begin(), digits.end()};
}

// Row texts of five short fields, as a pair of language files gives them: the number, a section of
// fifty rows, a key of its own, and two phrases of a few words.
inline std::vector<Text> makeRows(std::size_t count) {
    static constexpr TextView kWords[] = {u"Open",   u"Close", u"the",    u"file", u"Menu",
                                          u"window", u"error", u"cannot", u"Save", u"translation"};
    std::mt19937 random(1);
    const auto phrase = [&random] {
        Text s;
        for (std::size_t words = 1 + random() % 4; words > 0; --words) {
            s.append(kWords[random() % std::size(kWords)]).append(words > 1 ? u" " : u"");
        }
        return s;
    };
    std::vector<Text> rows;
    rows.reserve(count);
    for (std::size_t i = 1; i <= count; ++i) {
        Text row = decimal(i);
        row.append(u"\tSection ").append(decimal(i / 50)).append(u"\tKey").append(decimal(i));
        row.append(u"\t").append(phrase()).append(u"\t").append(phrase());
        rows.push_back(std::move(row));
    }
    return rows;
}

// The units of all fields: what is left of the rows without their tabs.
inline std::size_t textUnits(const std::vector<Text>& rows) {
    std::size_t units = 0;
    for (const Text& row : rows) units += row.size() - 4;
    return units;
}
