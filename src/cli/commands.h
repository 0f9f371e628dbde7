// cli/commands.h: the commands, one source each. Each returns its exit code, puts results on `out`,
// and raises Refused, FileFailure, another Failure or Stop when it cannot be done.
#pragma once
#include "cli/Output.h"
#include "cli/Percent.h"
#include "cli/console.h"

#include <optional>

namespace cli {

// The names are in the inside form (platform/base/paths.h). They may be the same: the commands
// refuse it.
struct Pair {
    Text sMainFile;
    Text sTransFile;
};

struct RowsOptions {
    Pair pair;
    bool untranslated = false;
    bool json = false;
};
ExitCode rows(const RowsOptions& options, Output& out);

struct StatusOptions {
    Pair pair;
    bool json = false;
    std::optional<Percent> failUnder;
};
ExitCode status(const StatusOptions& options, Output& out);

struct FillOptions {
    Pair pair;
    bool keepEmpty = false;
    bool dryRun = false;
};
ExitCode fill(const FillOptions& options, Output& out);

struct ApplyOptions {
    Pair pair;
    std::string edits;  // the system's name; "-" is standard input
    bool keepEmpty = false;
};
ExitCode apply(const ApplyOptions& options);

struct MergeOptions {
    Pair pair;
    bool keepEmpty = false;
};
ExitCode merge(const MergeOptions& options);

struct NewOptions {
    Text sMainFile;
    Text sName;  // as entered; blanks at its ends, directory and extension do not count
    bool copy = false;
};
ExitCode newFile(const NewOptions& options);

}  // namespace cli
