// tests/architecture/include_graph.h: who may include whom, and a check of a source tree against
// it.
#pragma once
#include <filesystem>
#include <string>
#include <vector>

namespace test {

// A folder of the source tree and the folders whose headers it may include besides its own.
struct FolderRule {
    std::string folder;
    std::vector<std::string> mayInclude;
};

// A library by the start of the names in its <...> includes, and the folders that may use it.
// Header files of those folders may only where headersToo says so.
struct LibraryRule {
    std::string library;
    std::vector<std::string> prefixes;
    std::vector<std::string> folders;
    bool headersToo = true;
};

struct IncludeRules {
    std::vector<FolderRule> folders;
    std::vector<LibraryRule> libraries;
};

// Reads every .h and .cpp file below root. Gives one line for each fault, in file order:
// - a folder with sources that has no row;
// - an include of a folder that the row does not allow, of a file that is not there, or not by its
//   path from root;
// - an include of a library outside its folders, or of one that has no row (a name with a directory
//   in it that neither the rules nor the system have);
// - product code that includes a file of tests, a fuzz target or a benchmark;
// - an include of another folder's X_internal.h, which is for the sources of its folder and may
//   use libraries as they do;
// - a header without #pragma once;
// - folders that include each other in a circle.
// X_test.cpp, X_fuzz.cpp and X_bench.cpp are not product code: their folder's row holds for them
// too, and besides they may include "support/..." and the libraries for tests.
[[nodiscard]] std::vector<std::string> includeFaults(const std::filesystem::path& root,
                                                     const IncludeRules& rules);

}  // namespace test
