// The runner itself, with /bin/sh in the place of the program: its arguments are `-c SCRIPT`.
#include "runner/CaseRunner.h"

#include "support/TempDir.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace test {
namespace {

struct CaseFile {
    std::string name;
    std::string bytes;
};

// What the runner says about a case of these files.
std::string reportOf(const std::vector<CaseFile>& files) {
    const TempDir folder;
    for (const auto& file : files) folder.write(file.name, file.bytes);
    return runCase("/bin/sh", folder.path(), false);
}

TEST(CaseRunner, AcceptsACaseInWhichAllIsAsExpected) {
    EXPECT_EQ(
        reportOf({{"cmd", "# why\n\n-c 'cat main.lng; echo x >>trans.lng; >new.txt' '<' \"V=\"\n"
                          "V=z -c 'cat; echo no >&2; printf $V >new.txt; exit 3' < main.lng"},
                  {"main.lng", "a=1\r\n"},
                  {"trans.lng", "a=2\r\n"},
                  {"out", "a=1\r\na=1\r\n"},
                  {"err", "no\n"},
                  {"exit", "0\n3\n"},
                  {"expected.lng", "a=2\r\nx\n"},
                  {"expected.new.txt", "z"}}),
        "");
}

TEST(CaseRunner, TellsWhatDiffers) {
    const struct {
        std::vector<CaseFile> files;
        std::string report;  // a part of it
    } kCases[] = {
        {{{"cmd", "-c 'echo b'"}, {"out", "a\n"}},
         "out differs from byte 0 (line 1) on:\n- a\\n\n+ b\\n\n"},
        {{{"cmd", "-c 'echo b'"}}, "the case has no file out"},
        {{{"cmd", "-c 'printf \"k=1\\r\\nl=\\377\\302\\205\\r\\n\"'"},
          {"out", "k=1\r\nl=\xC3\xA9\t\\\r\n"}},
         "byte 7 (line 2) on:\n- l=\xC3\xA9\\t\\\\\\r\\n\n+ l=\\xff\\xc2\\x85\\r\\n\n"},
        {{{"cmd", "-c 'exit 3'"}, {"out", ""}}, "exit differs"},
        {{{"cmd", "-c 'kill -9 $$'"}, {"out", ""}}, "+ 137\\n"},
        {{{"cmd", "-c 'echo oh >&2'"}, {"out", ""}}, "err differs"},
        {{{"cmd", "-c 'echo oh >&2; exit 2'"}, {"out", ""}, {"exit", "2"}, {"err", "ah\n"}},
         "- ah\\n\n+ oh\\n\n"},
        {{{"cmd", "-c 'echo oh >&2; exit 2'"}, {"out", ""}, {"exit", "1"}}, "was:\noh\n"},
        {{{"cmd", "-c 'echo >trans.lng'"}, {"out", ""}, {"trans.lng", "a"}},
         "trans.lng differs from byte 0 (line 1) on:\n- a\n+ \\n\n"},
        {{{"cmd", "-c true"}, {"out", ""}, {"trans.lng", "a"}, {"expected.lng", "b"}},
         "trans.lng differs"},
        {{{"cmd", "-c 'rm main.lng'"}, {"out", ""}, {"main.lng", "a"}}, "no file main.lng is left"},
        {{{"cmd", "-c 'echo >left.tmp'"}, {"out", ""}}, "a file appeared that nothing expects"},
    };
    for (const auto& c : kCases) {
        const std::string report = reportOf(c.files);
        EXPECT_NE(report.find(c.report), std::string::npos) << report << "\nhas no\n" << c.report;
    }
    // Where a failure is expected and nothing is said about its words, any will do.
    EXPECT_EQ(reportOf({{"cmd", "-c 'echo oh >&2; exit 2'"}, {"out", ""}, {"exit", "2"}}), "");
}

TEST(CaseRunner, RefusesACaseThatCannotBeRun) {
    EXPECT_THROW((void)parseRuns("rows 'a b"), std::runtime_error);
    EXPECT_THROW((void)parseRuns("apply a b - <"), std::runtime_error);
    EXPECT_THROW((void)reportOf({{"cmd", "# nothing\n"}, {"out", ""}}), std::runtime_error);
    EXPECT_THROW((void)reportOf({{"cmd", "-c true"}, {"out", ""}, {"exit", "0 0"}}),
                 std::runtime_error);
    EXPECT_THROW((void)reportOf({{"cmd", "-c true < gone"}, {"out", ""}}), std::runtime_error);
}

TEST(CaseRunner, RewritesExpectedFilesSoThatTheCaseHolds) {
    const TempDir folder;
    folder.write("cmd", "-c 'echo b; echo >>trans.lng; echo n >new; echo e >&2; exit 1'\n");
    folder.write("out", "a\n");
    folder.write("err", "");
    folder.write("trans.lng", "t");
    EXPECT_EQ(runCase("/bin/sh", folder.path(), true), "");
    EXPECT_EQ(folder.read("out"), "b\n");
    EXPECT_EQ(folder.read("err"), "e\n");
    EXPECT_EQ(folder.read("exit"), "1\n");
    EXPECT_EQ(folder.read("expected.lng"), "t\n");
    EXPECT_EQ(folder.read("expected.new"), "n\n");
    EXPECT_EQ(folder.read("trans.lng"), "t");
    EXPECT_EQ(runCase("/bin/sh", folder.path(), false), "");
}

}  // namespace
}  // namespace test
