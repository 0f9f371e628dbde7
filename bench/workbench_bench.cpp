// The commands of the main window, which is there, off screen, and shows what changes. Two pairs:
// one of 100,000 rows, a fifth of them without a translation and many with the same default text,
// and the large one of make_pair, whose files are as long as files may be.
#include "offScreen.h"
#include "platform/window/testhooks.h"
#include "workbench/frmMain.h"
#include "workbench/logic/UpdateBracket.h"
#include "workbench/logic/columns.h"
#include "workbench/logic/editRow.h"
#include "workbench/logic/fillDuplicates.h"
#include "workbench/logic/loadPair.h"
#include "workbench/logic/searchRows.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <stdexcept>

namespace {

namespace fs = std::filesystem;

constexpr int kRows = 100000;

void writeHundredThousand(const fs::path& folder) {
    std::ofstream mainFile(folder / "main.lng"), transFile(folder / "trans.lng");
    for (int i = 0; i < kRows; ++i) {
        if (i % 100 == 0) mainFile << "[S" << i << "]\n";
        if (i % 100 == 0) transFile << "[S" << i << "]\n";
        mainFile << 'k' << i << "=Text number " << i / 3 << '\n';
        if (i % 5 != 0 || i % 3 == 0) transFile << 'k' << i << "=Tekst " << i / 3 << '\n';
    }
}

void writeLarge(const fs::path& folder) {
    const std::string command = MAKE_PAIR_PROGRAM " large '" + folder.string() + "'";
    if (std::system(command.c_str()) != 0) throw std::runtime_error("make_pair failed");
}

// A window that shows main.lng and trans.lng of a folder of its own.
class Workbench {
public:
    Workbench(const std::string& pair, const std::function<void(const fs::path&)>& writePair) {
        startOffScreen();
        folder = fs::temp_directory_path() / ("quillmere-workbench-bench-" + pair);
        fs::create_directories(folder);
        platform::test::setSettingsFolder(folder.string());
        platform::test::setKeysDown(std::vector<std::int32_t>{});
        writePair(folder);
        window = std::make_unique<frmMain>();
        window->Start(path("main.lng") + u' ' + path("trans.lng"));
        platform::test::settle();
    }
    ~Workbench() {
        platform::test::DialogScript script;
        script.answerMessageBox(platform::IDNO);
        window->Unload();
        window.reset();
        fs::remove_all(folder);
    }
    Workbench(const Workbench&) = delete;
    Workbench& operator=(const Workbench&) = delete;

    // As the commands know it.
    [[nodiscard]] Text path(const char* name) const {
        Text s = fromUtf8((folder / name).string());
        std::ranges::replace(s, u'/', u'\\');
        return s;
    }

    fs::path folder;
    std::unique_ptr<frmMain> window;
};

Workbench& workbench() {
    static Workbench one("rows", writeHundredThousand);
    return one;
}

Workbench& large() {
    static Workbench one("large", writeLarge);
    return one;
}

JobListener g_silent;

void Filter(benchmark::State& state) {
    Workbench& bench = workbench();
    platform::test::DialogScript script;
    for (auto _ : state) {
        script.answerMessageBox(platform::IDNO);
        bench.window->command(mnuShowOnlyUntranslated);
        platform::test::settle();
    }
    if (bench.window->isChecked(mnuShowOnlyUntranslated)) {
        script.answerMessageBox(platform::IDNO);
        bench.window->command(mnuShowOnlyUntranslated);
    }
}
BENCHMARK(Filter)->Unit(benchmark::kMillisecond);

void SearchToTheEnd(benchmark::State& state) {
    ctlUniGrid& grid = workbench().window->grid();
    grid.Row(1);
    for (auto _ : state) benchmark::DoNotOptimize(nextWithText(grid, kFindDefault, u"nowhere"));
}
BENCHMARK(SearchToTheEnd)->Unit(benchmark::kMillisecond);

// From the confirmed text to the row on the picture.
void EditWithItsDuplicates(benchmark::State& state) {
    frmMain& window = *workbench().window;
    PairList list(window.grid());  // the same rows, without the question at the end
    int n = 0;
    for (auto _ : state) {
        const std::int32_t row = ++n * 7 % kRows + 1;
        window.grid().Row(row);
        confirmEdit(list, row, u"Nieuw " + fromUtf8(std::to_string(n)), g_silent);
        platform::test::settle();
    }
}
BENCHMARK(EditWithItsDuplicates)->Unit(benchmark::kMillisecond);

void NextUntranslatedToTheEnd(benchmark::State& state) {
    ctlUniGrid& grid = workbench().window->grid();
    grid.Row(1);
    {
        const UpdateBracket update(grid);
        for (std::int32_t i = 2; i <= grid.Rows(); ++i) grid.CellText(i, kTranslationColumn, u"x");
    }
    state.counters["rows"] = grid.Rows();
    for (auto _ : state) benchmark::DoNotOptimize(nextUntranslated(grid));
}
BENCHMARK(NextUntranslatedToTheEnd)->Unit(benchmark::kMillisecond);

// The whole list of the large pair, from the files to the picture, without the duplicates.
void LoadLarge(benchmark::State& state) {
    Workbench& bench = large();
    PairList list(bench.window->grid());
    const Text sMain = bench.path("main.lng"), sTrans = bench.path("trans.lng");
    for (auto _ : state) {
        loadPair(list, {.sMainFile = sMain, .sTransFile = sTrans, .bFillDuplicates = false},
                 g_silent);
        platform::test::settle();
    }
    state.counters["rows"] = bench.window->grid().Rows();
}
BENCHMARK(LoadLarge)->Unit(benchmark::kMillisecond);

// What a pair that is opened gets behind its load, with the rows on the picture.
void FillAllDuplicatesOfLarge(benchmark::State& state) {
    Workbench& bench = large();
    PairList list(bench.window->grid());
    const Text sMain = bench.path("main.lng"), sTrans = bench.path("trans.lng");
    std::int32_t filled = 0;
    for (auto _ : state) {
        state.PauseTiming();
        loadPair(list, {.sMainFile = sMain, .sTransFile = sTrans, .bFillDuplicates = false},
                 g_silent);
        platform::test::settle();
        state.ResumeTiming();
        filled = pvFillAllDuplicates(list, g_silent);
        platform::test::settle();
    }
    state.counters["filled"] = filled;
}
BENCHMARK(FillAllDuplicatesOfLarge)->Unit(benchmark::kMillisecond);

// The window's command, from the pick in the menu to the list that was read again.
void SaveLarge(benchmark::State& state) {
    frmMain& window = *large().window;
    platform::MENUITEMINFOW item;
    item.fMask = platform::MIIM_STATE;
    int n = 0;
    for (auto _ : state) {
        state.PauseTiming();
        ++n;
        window.grid().CellText(n, kTranslationColumn, u"Nieuw " + fromUtf8(std::to_string(n)));
        (void)platform::SetMenuItemInfoW(platform::GetMenu(window.hWnd()), mnuSave, false, item);
        platform::test::settle();
        const auto before = fs::last_write_time(large().folder / "trans.lng");
        state.ResumeTiming();
        window.command(mnuSave);
        platform::test::settle();
        if (fs::last_write_time(large().folder / "trans.lng") == before) {
            state.SkipWithError("nothing was saved");
            break;
        }
    }
}
BENCHMARK(SaveLarge)->Unit(benchmark::kMillisecond);

}  // namespace
