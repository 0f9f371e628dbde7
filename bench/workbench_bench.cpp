// The commands of the main window on a pair of 100,000 rows, a fifth of them without a translation
// and many with the same default text. The window is there, off screen, and shows what changes.
#include "platform/window/application.h"
#include "platform/window/testhooks.h"
#include "workbench/frmMain.h"
#include "workbench/logic/UpdateBracket.h"
#include "workbench/logic/columns.h"
#include "workbench/logic/editRow.h"
#include "workbench/logic/searchRows.h"

#include <benchmark/benchmark.h>
#include <filesystem>
#include <fstream>

namespace {

constexpr int kRows = 100000;

struct Workbench {
    Workbench() {
        static int argc = 1;
        static char name[] = "workbench_bench";
        static char* argv[] = {name, nullptr};
        platform::ApplicationOptions options;
        options.offScreen = true;
        static const auto* application = new platform::Application(argc, argv, options);
        benchmark::DoNotOptimize(application);
        folder = std::filesystem::temp_directory_path() / "quillmere-workbench-bench";
        std::filesystem::create_directories(folder);
        platform::test::setSettingsFolder(folder.string());
        platform::test::setKeysDown(std::vector<std::int32_t>{});
        std::ofstream mainFile(folder / "main.lng"), transFile(folder / "trans.lng");
        for (int i = 0; i < kRows; ++i) {
            if (i % 100 == 0) mainFile << "[S" << i << "]\n";
            if (i % 100 == 0) transFile << "[S" << i << "]\n";
            mainFile << 'k' << i << "=Text number " << i / 3 << '\n';
            if (i % 5 != 0 || i % 3 == 0) transFile << 'k' << i << "=Tekst " << i / 3 << '\n';
        }
        mainFile.close();
        transFile.close();
        window = std::make_unique<frmMain>();
        load();
    }
    ~Workbench() {
        platform::test::DialogScript script;
        script.answerMessageBox(platform::IDNO);
        window->Unload();
        window.reset();
        std::filesystem::remove_all(folder);
    }
    void load() {
        const std::string names =
            (folder / "main.lng").string() + " " + (folder / "trans.lng").string();
        Text line = fromUtf8(names);
        std::ranges::replace(line, u'/', u'\\');
        window->Start(line);
        platform::test::settle();
    }
    std::filesystem::path folder;
    std::unique_ptr<frmMain> window;
};

Workbench& workbench() {
    static Workbench one;
    return one;
}

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
    JobListener silent;
    int n = 0;
    for (auto _ : state) {
        const std::int32_t row = ++n * 7 % kRows + 1;
        window.grid().Row(row);
        confirmEdit(list, row, u"Nieuw " + fromUtf8(std::to_string(n)), silent);
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

}  // namespace
