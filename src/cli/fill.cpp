#include "cli/commands.h"
#include "workbench/logic/fillDuplicates.h"
#include "workbench/logic/loadPair.h"
#include "workbench/logic/saveTranslation.h"

namespace cli {

ExitCode fill(const FillOptions& options, Output& out) {
    const auto& [sMainFile, sTransFile] = options.pair;
    GridData fxGrid;
    PairList list(fxGrid);
    ProgressBar bar;
    loadPair(list, {.sMainFile = sMainFile, .sTransFile = sTransFile, .bFillDuplicates = false},
             bar);
    const std::int32_t filled = pvFillAllDuplicates(list, bar);
    if (filled > 0 && !options.dryRun) {
        saveTranslation(fxGrid, sTransFile, options.keepEmpty, bar);
    }
    out.bytes("{\"filled\":" + std::to_string(filled) + "}\n");
    return kDone;
}

}  // namespace cli
