#include "platform/base/process.h"

#include "platform/base/paths.h"
#include "support/Process.h"

#include <gtest/gtest.h>

using namespace platform;

TEST(process, TheProgramsOwnFileIsToldAndCutToTheBuffer) {
    const Text own = pathFromSystem(std::filesystem::read_symlink("/proc/self/exe").string());
    Text buffer(2048, u'#');
    EXPECT_EQ(GetModuleFileNameW(2048, buffer.data()), own.size());
    EXPECT_EQ(Text(buffer.c_str()), own);
    EXPECT_EQ(GetModuleFileNameW(5, buffer.data()), 4u);
    EXPECT_EQ(Text(buffer.c_str()), own.substr(0, 4));
    EXPECT_EQ(GetModuleFileNameW(0, nullptr), 0u);
}

// Started anew with other arguments, the program prints its command line.
TEST(process, TheCommandLineQuotesBlanksAndHoldsPathsInTheInsideForm) {
    const std::filesystem::path own = std::filesystem::read_symlink("/proc/self/exe");
    const std::vector<std::string> arguments{
        "--gtest_filter=*PrintsItsCommandLine*", "/a/b.lng", "a b", "", "q\"*", "x\xE9 "};
    const std::string output =
        ::test::runProcess(own, arguments, {"/", {}, {{"QUILLMERE_PRINT_COMMAND_LINE", "1"}}}).out;
    const Text inside = pathFromSystem(own.string());
    const std::string program =
        toUtf8(inside.find(u' ') == Text::npos ? inside : u'"' + inside + u'"');
    EXPECT_NE(
        output.find("line: " + program +
                    " --gtest_filter=\uEF2APrintsItsCommandLine\uEF2A \\a\\b.lng \"a b\" \"\" "
                    "q\uEF22\uEF2A \"x\uEFE9 \"\n"),
        std::string::npos)
        << output;
}

TEST(process, PrintsItsCommandLine) {
    const std::string line = toUtf8(GetCommandLineW());
    EXPECT_NE(line.find("platform_base_test"), std::string::npos);
    if (std::getenv("QUILLMERE_PRINT_COMMAND_LINE") != nullptr)
        std::printf("line: %s\n", line.c_str());
}
