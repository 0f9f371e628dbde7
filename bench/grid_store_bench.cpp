// bench/grid_store_bench.cpp: filling and sorting the grid's store.
#include "grid/store/GridData.h"
#include "gridRows.h"

#include <array>
#include <benchmark/benchmark.h>

namespace {

void addColumns(GridData& grid) {
    for (int i = 0; i < 5; ++i) grid.AddColumn({});
}

void fill(GridData& grid, const std::vector<Text>& rows) {
    addColumns(grid);
    grid.BeginUpdate();
    for (const Text& row : rows) grid.AddRow(row);
    grid.EndUpdate();
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
