// The real program with files too large for the tree, and with a system that says no.
#include "cli/console.h"
#include "support/Process.h"
#include "support/TempDir.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace cli {
namespace {

constexpr std::size_t kLargestFile = 5 * 1024 * 1024;

class Program : public testing::Test {
protected:
    [[nodiscard]] test::ProcessResult run(const std::vector<std::string>& arguments) const {
        return test::runProcess(QUILLMERE_CLI, arguments, {dir.path(), {}, {}});
    }
    // A script of the shell, in which $Q is the program.
    [[nodiscard]] test::ProcessResult shell(const std::string& script) const {
        return test::runProcess("/bin/sh", {"-c", script},
                                {dir.path(), {}, {{"Q", QUILLMERE_CLI}}});
    }
    void expectStatus(const std::string& counts) const {
        const test::ProcessResult result = run({"status", "main.lng", "trans.lng", "--json"});
        EXPECT_EQ(result.out, counts + "\n");
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(result.exitCode, kDone);
    }
    void expect(const test::ProcessResult& result, ExitCode exitCode, const std::string& err) {
        EXPECT_EQ(result.exitCode, exitCode);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, err.empty() ? "" : "quillmere-cli: " + err + "\n");
    }

    test::TempDir dir;
};

// One key row, then plain rows up to the length.
std::string fileOfLength(std::size_t length) {
    std::string bytes = "k=v\r\n";
    bytes.resize(length - 2, 'x');
    return bytes + "\r\n";
}

TEST_F(Program, ReadsFilesUpToTheLimitAndRefusesOneByteMore) {
    dir.write("main.lng", fileOfLength(kLargestFile));
    dir.write("trans.lng", fileOfLength(kLargestFile));
    expectStatus(R"({"rows":1,"translated":0,"same":1,"empty":0})");
    expect(run({"merge", "main.lng", "trans.lng"}), kDone, "");
    EXPECT_EQ(dir.read("trans.lng"), fileOfLength(kLargestFile));

    const std::string tooLong = fileOfLength(kLargestFile + 1);
    dir.write("trans.lng", tooLong);
    for (const char* const command : {"status", "rows", "fill", "merge"}) {
        expect(run({command, "main.lng", "trans.lng"}), kFileFailed,
               "Please load the file first! (trans.lng)");
    }
    EXPECT_EQ(dir.read("trans.lng"), tooLong);
    dir.write("main.lng", tooLong);
    expect(run({"status", "main.lng", "trans.lng"}), kFileFailed,
           "Please load the file first! (main.lng)");
}

TEST_F(Program, CountsAMillionShortKeys) {
    std::string text;
    for (int i = 0; text.size() + 4 <= kLargestFile; ++i) {  // 676 names, again and again
        text += {static_cast<char>('a' + i % 26), static_cast<char>('a' + i / 26 % 26), '=', '\n'};
    }
    dir.write("main.lng", text);
    dir.write("trans.lng", "");
    expectStatus(R"({"rows":676,"translated":0,"same":0,"empty":676})");

    text.clear();
    for (int i = 0; text.size() + 7 <= kLargestFile; ++i) {
        std::string key(4, 'a');
        for (int rest = i, at = 3; at >= 0; --at, rest /= 32) {
            key[static_cast<std::size_t>(at)] = "abcdefghijklmnopqrstuvwxyz012345"[rest % 32];
        }
        text += key + "=x\n";
    }
    dir.write("main.lng", text);
    dir.write("trans.lng", text);
    expectStatus(R"({"rows":748982,"translated":0,"same":748982,"empty":0})");
}

TEST_F(Program, KeepsAHundredThousandSections) {
    std::string text;
    for (int i = 0; i < 100'000; ++i) text += "[" + std::to_string(i) + "]\r\nk=v\r\n";
    dir.write("main.lng", text);
    dir.write("trans.lng", text);
    expectStatus(R"({"rows":100000,"translated":0,"same":100000,"empty":0})");
    expect(run({"merge", "main.lng", "trans.lng"}), kDone, "");
    EXPECT_EQ(dir.read("trans.lng"), text);
}

TEST_F(Program, PrintsOneLineOfFiveMebibytes) {
    const std::string value(kLargestFile - 2, '"');
    dir.write("main.lng", "k=" + value);
    dir.write("trans.lng", "k=" + value);
    const test::ProcessResult result = run({"rows", "main.lng", "trans.lng", "--json"});
    EXPECT_EQ(result.exitCode, kDone);
    EXPECT_EQ(nlohmann::json::parse(result.out)["translation"], value);
    expect(run({"merge", "main.lng", "trans.lng"}), kDone, "");
    EXPECT_EQ(dir.read("trans.lng"), "k=" + value + "\r\n");
}

TEST_F(Program, EndsWith3WhenItsOutputCannotBeWritten) {
    dir.write("main.lng", "k=v");
    dir.write("trans.lng", "k=w");
    for (const char* const arguments :
         {"rows main.lng trans.lng", "rows main.lng trans.lng --json", "status main.lng trans.lng",
          "fill main.lng trans.lng", "--help", "--version"}) {
        expect(shell("exec \"$Q\" " + std::string(arguments) + " > /dev/full"), kFileFailed,
               "Error writing file (standard output)");
    }
    expect(shell("exec \"$Q\" status main.lng trans.lng --fail-under 0 >&-"), kFileFailed,
           "Error writing file (standard output)");
}

TEST_F(Program, NamesWhatCannotBeReadOrWritten) {
    dir.write("main.lng", "k=v");
    dir.write("trans.lng", "k=w");
    std::filesystem::create_directory(dir.path() / "folder");
    const std::string read = "Please load the file first! ";
    expect(run({"rows", "folder", "trans.lng"}), kFileFailed, read + "(folder)");
    expect(run({"rows", "main.lng", "folder/"}), kFileFailed, read + "(folder/)");
    expect(run({"merge", "main.lng", "folder/nosuch"}), kFileFailed, read + "(folder/nosuch)");
    expect(run({"merge", "main.lng", "/dev/full"}), kFileFailed, "Cannot Save File! (/dev/full)");
    expect(run({"apply", "main.lng", "trans.lng", "folder"}), kFileFailed,
           "Error reading file (folder)");
    expect(run({"apply", "main.lng", "trans.lng", "nosuch"}), kFileFailed,
           "Error reading file (nosuch)");
    expect(run({"rows", "main.lng", "\xFF/\xC3\xA9"}), kFileFailed,
           read + "(\xEF\xBF\xBD/\xC3\xA9)");
    EXPECT_EQ(dir.read("trans.lng"), "k=w");
}

TEST_F(Program, LeavesWhatItMayNotReadOrWrite) {
    namespace fs = std::filesystem;
    dir.write("main.lng", "k=v");
    dir.write("trans.lng", "k=w");
    dir.write("secret.lng", "k=w");
    dir.write("edits.jsonl", "");
    fs::permissions(dir.path(), fs::perms::all);
    fs::permissions(dir.path() / "trans.lng", fs::perms(0444));
    fs::permissions(dir.path() / "secret.lng", fs::perms(0));
    // The superuser may do all, so the program runs as nobody then.
    const auto asAnybody = [&](const std::string& arguments) {
        return shell("[ $(id -u) != 0 ] || "
                     "setpriv='setpriv --reuid=65534 --regid=65534 --clear-groups'\n"
                     "exec $setpriv \"$Q\" " +
                     arguments);
    };
    expect(asAnybody("merge main.lng trans.lng"), kFileFailed, "Cannot Save File! (trans.lng)");
    expect(asAnybody("apply main.lng trans.lng edits.jsonl"), kFileFailed,
           "Cannot Save File! (trans.lng)");
    EXPECT_EQ(dir.read("trans.lng"), "k=w");
    expect(asAnybody("merge main.lng secret.lng"), kFileFailed,
           "Please load the file first! (secret.lng)");
    expect(asAnybody("merge secret.lng trans.lng"), kFileFailed,
           "Please load the file first! (secret.lng)");
    expect(asAnybody("apply main.lng trans.lng secret.lng"), kFileFailed,
           "Error reading file (secret.lng)");
    expect(asAnybody("new secret.lng trans --copy"), kFileFailed, "Error writing file (trans.lng)");
    expect(asAnybody("new main.lng trans"), kFileFailed, "Error writing file (trans.lng)");
    EXPECT_EQ(dir.read("trans.lng"), "k=w");
}

// The file on disk is short, the text to save is not.
TEST_F(Program, PutsBackWhatStoodInAFileThatBecameTooLong) {
    std::string mainText;
    std::string edits;
    for (int i = 0; i < 500; ++i) {
        const std::string key = "key" + std::to_string(i);
        mainText += key + "=v\n";
        edits += R"({"section":"","key":")" + key + R"(","translation":"w"})" + "\n";
    }
    const std::string before = "; a comment\nkey0=old\nextra=1\n";
    dir.write("main.lng", mainText);
    dir.write("trans.lng", before);
    dir.write("edits.jsonl", edits);
    const std::string command = "\"$Q\" apply main.lng trans.lng edits.jsonl";
    expect(shell("ulimit -f 4; exec " + command), kFileFailed, "Cannot Save File! (trans.lng)");
    EXPECT_EQ(dir.read("trans.lng"), before);
    expect(shell("ulimit -f 4; exec \"$Q\" new main.lng trans --copy"), kFileFailed,
           "Error writing file (trans.lng)");
    EXPECT_EQ(dir.read("trans.lng"), before);

    const test::ProcessResult full =
        shell("exec unshare -m sh -c '"
              "mkdir disk && mount -t tmpfs -o size=4k tmpfs disk 2>/dev/null || exit 77\n"
              "cp trans.lng disk\n"
              "cd disk && \"$Q\" apply ../main.lng trans.lng ../edits.jsonl; code=$?\n"
              "cat trans.lng; exit $code'");
    if (full.exitCode == 77 || full.err.starts_with("unshare:")) GTEST_SKIP() << "no mount here";
    EXPECT_EQ(full.exitCode, kFileFailed);
    EXPECT_EQ(full.out, before);
}

// The program asks for its edits when the pair is loaded, and a pipe lets the test do something
// between the two.
TEST_F(Program, WritesTheWholeListWhenItsTargetIsGone) {
    dir.write("main.lng", "[S]\na=1\nb=2\nc=3\n");
    dir.write("trans.lng", "; note\n[S]\nb=x\nextra=y\n");
    expect(shell("mkfifo edits\n"
                 "\"$Q\" apply main.lng trans.lng edits &\n"
                 "exec 3> edits; rm trans.lng\n"
                 "echo '{\"section\":\"S\",\"key\":\"a\",\"translation\":\"w\"}' >&3\n"
                 "exec 3>&-; wait $!"),
           kDone, "");
    EXPECT_EQ(dir.read("trans.lng"), "[S]\r\na=w\r\nb=x");
}

TEST_F(Program, TakesEveryNameOfTheSystemForThatFileAlone) {
    const std::vector<std::string> names = {"*.lng",    "?.lng",  "[ab].lng",  "a\\b.lng",
                                            "\xFF.lng", "\".lng", "%20.lng",   "-x.lng",
                                            "status",   "-",      "a|b&c.lng", "\xEE\xBC\xAA.lng"};
    dir.write("main.lng", "k=v\n");
    for (const std::string& name : names) dir.write(name, "k=w");
    dir.write("other.lng", "k=w");
    for (const std::string& name : names) {
        const test::ProcessResult result = run({"merge", "--", "main.lng", name});
        EXPECT_EQ(result.err, "") << name;
        EXPECT_EQ(dir.read(name), "k=w\r\n") << name;
        dir.write(name, "k=w");
        for (const std::string& other : names) EXPECT_EQ(dir.read(other), "k=w") << name;
        EXPECT_EQ(dir.read("other.lng"), "k=w") << name;
    }
    // Saving would take the blank off the name.
    dir.write(" .lng", "k=w");
    dir.write(".lng", "k=w");
    expect(run({"merge", "main.lng", " .lng"}), kFileFailed, "Cannot Save File! ( .lng)");
    EXPECT_EQ(dir.read(" .lng") + dir.read(".lng"), "k=wk=w");

    for (const char* const name : {"*", "?", "\xFF"}) {
        expect(run({"new", "main.lng", name}), kDone, "");
        EXPECT_EQ(dir.read(std::string(name) + ".lng"), "") << name;
        EXPECT_EQ(dir.read("other.lng"), "k=w") << name;
    }
}

}  // namespace
}  // namespace cli
