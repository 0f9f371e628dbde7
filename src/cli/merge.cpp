#include "cli/commands.h"
#include "workbench/logic/loadPair.h"
#include "workbench/logic/saveTranslation.h"

namespace cli {

ExitCode merge(const MergeOptions& options) {
    const auto& [sMainFile, sTransFile] = options.pair;
    GridData fxGrid;
    PairList list(fxGrid);
    ProgressBar bar;
    loadPair(list, {.sMainFile = sMainFile, .sTransFile = sTransFile, .bFillDuplicates = false},
             bar);
    saveTranslation(fxGrid, sTransFile, options.keepEmpty, bar);
    return kDone;
}

}  // namespace cli
