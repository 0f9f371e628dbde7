// tests/support/Process.h: starts a real program and waits for it, with all that it sees and says
// under the test's control.
#pragma once
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace test {

struct ProcessInput {
    std::filesystem::path folder;                    // the directory it runs in
    std::filesystem::path standardInput;             // empty: /dev/null. Relative to folder
    std::map<std::string, std::string> environment;  // added to the fixed one (see runProcess)
};

struct ProcessResult {
    int exitCode = 0;  // 128 plus the signal when a signal ended it
    std::string out;   // bytes of standard output
    std::string err;   // bytes of standard error
};

// Runs a program to its end. Its environment is LC_ALL=C, the options of the sanitizers as the test
// has them, and what the input adds; nothing else reaches it. Raises std::runtime_error when the
// program or the folder or the standard input cannot be used.
[[nodiscard]] ProcessResult runProcess(const std::filesystem::path& program,
                                       const std::vector<std::string>& arguments,
                                       const ProcessInput& input);

}  // namespace test
