// bench/grid_store_bench.cpp: filling and sorting the grid's store.
#include "grid/store/GridData.h"

#include <array>
#include <benchmark/benchmark.h>
#include <random>

namespace {

constexpr TextView kWords[] = {u"Open",   u"Close", u"the",    u"file", u"Menu",
                               u"window", u"error", u"cannot", u"Save", u"translation"};

Text decimal(std::size_t number) {
    const std::string digits = std::to_string(number);
    return Text(digits.begin(), digits.end());
}

// Row texts of five short fields, as a pair of language files gives them.
std::vector<Text> makeRows(std::size_t count) {
    std::mt19937 random(1);
    const auto phrase = [&random] {
        Text s;
        for (std::size_t words = 1 + random() % 4; words > 0; --words) {
            s.append(kWords[random() % std::size(kWords)]).append(words > 1 ? u" " : u"");
        }
        return s;
    };
    std::vector<Text> rows;
    for (std::size_t i = 1; i <= count; ++i) {
        Text row = decimal(i);
        row.append(u"\tSection ").append(decimal(i / 50)).append(u"\tKey").append(decimal(i));
        row.append(u"\t").append(phrase()).append(u"\t").append(phrase());
        rows.push_back(std::move(row));
    }
    return rows;
}

void addColumns(GridData& grid) {
    for (int i = 0; i < 5; ++i) grid.AddColumn({});
}

void fill(GridData& grid, const std::vector<Text>& rows) {
    addColumns(grid);
    grid.BeginUpdate();
    for (const Text& row : rows) grid.AddRow(row);
    grid.EndUpdate();
}

std::size_t textUnits(const std::vector<Text>& rows) {
    std::size_t units = 0;
    for (const Text& row : rows) units += row.size() - 4;  // less the tabs
    return units;
}

void addRowByText(benchmark::State& state) {
    const std::vector<Text> rows = makeRows(static_cast<std::size_t>(state.range(0)));
    double held = 0;
    for (auto _ : state) {
        GridData grid;
        fill(grid, rows);
        held = 0;
        for (int i = 1; i <= 5; ++i) held += static_cast<double>(grid.columnAt(i).memoryHeld());
    }
    state.counters["bytes_a_row_beside_text"] =
        (held - 2.0 * static_cast<double>(textUnits(rows))) / static_cast<double>(rows.size());
    state.counters["ns_a_row"] = benchmark::Counter(static_cast<double>(rows.size()) * 1e-9,
                                                    benchmark::Counter::kIsIterationInvariantRate |
                                                        benchmark::Counter::kInvert);
}
BENCHMARK(addRowByText)->Arg(1000)->Arg(50000)->Arg(1000000)->Unit(benchmark::kMillisecond);

void addRowByFields(benchmark::State& state) {
    const std::vector<Text> rows = makeRows(static_cast<std::size_t>(state.range(0)));
    std::vector<std::array<TextView, 5>> fields;
    for (TextView row : rows) {
        std::array<TextView, 5>& split = fields.emplace_back();
        for (TextView& field : split) {
            field = row.substr(0, row.find(u'\t'));
            row.remove_prefix(std::min(row.size(), field.size() + 1));
        }
    }
    for (auto _ : state) {
        GridData grid;
        addColumns(grid);
        grid.BeginUpdate();
        for (const auto& row : fields) grid.AddRow(row);
        grid.EndUpdate();
    }
}
BENCHMARK(addRowByFields)->Arg(50000)->Unit(benchmark::kMillisecond);

// Column 3 holds distinct texts, column 4 many equal ones.
void sortByText(benchmark::State& state) {
    const std::vector<Text> rows = makeRows(static_cast<std::size_t>(state.range(1)));
    for (auto _ : state) {
        state.PauseTiming();
        GridData grid;
        fill(grid, rows);
        state.ResumeTiming();
        grid.SortByColum(static_cast<std::int32_t>(state.range(0)), true);
    }
}
BENCHMARK(sortByText)
    ->Args({3, 50000})
    ->Args({4, 50000})
    ->Args({4, 1000000})
    ->Unit(benchmark::kMillisecond);

void removeFirstRow(benchmark::State& state) {
    GridData grid;
    fill(grid, makeRows(50000));
    grid.BeginUpdate();
    for (auto _ : state) {
        grid.RemoveRow(1);
        grid.AddRow(u"50000\tSection\tKey\tDefault\tTranslation");
    }
}
BENCHMARK(removeFirstRow)->Unit(benchmark::kMicrosecond);

void editOneCell(benchmark::State& state) {
    GridData grid;
    fill(grid, makeRows(50000));
    grid.BeginUpdate();
    const TextView texts[] = {u"short", u"a rather longer translation"};
    std::size_t edit = 0;
    for (auto _ : state) grid.CellText(25000, 5, texts[++edit % 2]);
    state.counters["bytes_held"] = static_cast<double>(grid.columnAt(5).memoryHeld());
}
BENCHMARK(editOneCell);

}  // namespace
