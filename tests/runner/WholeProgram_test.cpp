// Every folder of tests/cases/ as one test of the real quillmere-cli.
#include "runner/CaseRunner.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <ostream>

namespace test {
namespace {

const std::filesystem::path kRoot = QUILLMERE_CASES;

struct WholeProgramCase {
    std::filesystem::path folder;
    friend void PrintTo(const WholeProgramCase& c, std::ostream* out) { *out << c.folder.string(); }
};

std::vector<WholeProgramCase> allCases() {
    std::vector<WholeProgramCase> list;
    for (auto& folder : findCases(kRoot)) list.push_back({std::move(folder)});
    return list;
}

// merge/keeps-comments becomes merge_keeps_comments: a test filter takes no other marks.
std::string testName(const testing::TestParamInfo<WholeProgramCase>& info) {
    std::string name = info.param.folder.lexically_relative(kRoot).string();
    for (char& c : name) {
        if (std::isalnum(static_cast<unsigned char>(c)) == 0) c = '_';
    }
    return name;
}

class WholeProgram : public testing::TestWithParam<WholeProgramCase> {};

TEST_P(WholeProgram, DoesAsTheCaseSays) {
    const bool rewrite = std::getenv("QUILLMERE_REWRITE_GOLDEN") != nullptr;
    const std::string report = runCase(QUILLMERE_CLI, GetParam().folder, rewrite);
    EXPECT_TRUE(report.empty()) << GetParam().folder.string() << '\n' << report;
}

INSTANTIATE_TEST_SUITE_P(cases, WholeProgram, testing::ValuesIn(allCases()), testName);

}  // namespace
}  // namespace test
