// tests/runner/CaseRunner.h: whole-program cases, each a folder of plain files.
//
//   main.lng, trans.lng, ...   what the program finds in its working directory (a fresh copy)
//   cmd                        the program's arguments, one run a line
//   out                        expected standard output of all runs together
//   err                        expected standard error; without it, standard error must be empty
//                              when every run is to end with 0, and is not looked at otherwise
//   exit                       expected exit codes, one for each run; without it, 0 for each
//   expected.lng               trans.lng after the last run
//   expected.NAME              any other file NAME after the last run, also one that did not exist
//
// What has no expected file must stay as it was, and nothing else may appear: a program that leaves
// a temporary file behind fails its case.
//
// A line of cmd is split at blanks; single or double quotes hold blanks together, there is no
// escape. Words NAME=VALUE in front of the first argument set the environment of that run, the two
// words "< FILE" give it standard input. Empty lines and lines that begin with # are skipped.
#pragma once
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace test {

struct CaseRun {
    std::vector<std::string> arguments;
    std::map<std::string, std::string> environment;
    std::string standardInput;  // name of a file of the case; empty: none
};

// The runs that the text of a cmd file asks for. Raises std::runtime_error for a quote without end
// or a "<" without a name behind it.
[[nodiscard]] std::vector<CaseRun> parseRuns(std::string_view cmd);

// Every folder below root that holds a cmd file, in name order.
[[nodiscard]] std::vector<std::filesystem::path> findCases(const std::filesystem::path& root);

// Runs a case and tells what differs, in words for a person; empty when all is as expected. With
// rewrite, the case's expected files become what the program did. Raises std::runtime_error when
// the case cannot be run at all.
[[nodiscard]] std::string runCase(const std::filesystem::path& program,
                                  const std::filesystem::path& folder, bool rewrite);

// The lines in which two texts differ, "-" expected and "+" actual, with line ends and bytes that
// cannot be printed as escapes; empty when they are equal.
[[nodiscard]] std::string describeDifference(std::string_view name, std::string_view expected,
                                             std::string_view actual);

}  // namespace test
