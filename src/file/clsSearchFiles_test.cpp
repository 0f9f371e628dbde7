#include "file/clsSearchFiles.h"

#include "file/ufu_files.h"
#include "file/ufu_paths.h"
#include "platform/base/testhooks.h"
#include "support/TempDir.h"

#include <chrono>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using platform::test::FileOp;

// Names in order, directories with a slash, trees in parentheses.
std::string dump(const SearchResult& result) {
    std::string all;
    for (const auto& entry : result) {
        if (!all.empty()) all += ' ';
        all += toUtf8(entry.sFileName);
        if (entry.IsDirectory()) all += '/';
        if (!entry.oCollSubFiles.empty()) all.append("(").append(dump(entry.oCollSubFiles)) += ')';
    }
    return all;
}

// a/{a1, sub.txt/{deep.txt, x}}, b.txt, c/{c.txt, loop -> ..}, z
class Tree : public ::testing::Test {
protected:
    Tree() {
        fs::create_directories(dir.path() / "a/sub.txt");
        fs::create_directories(dir.path() / "c");
        for (const auto* name :
             {"a/a1", "a/sub.txt/deep.txt", "a/sub.txt/x", "b.txt", "c/c.txt", "z"}) {
            dir.write(name, name);
        }
        fs::create_symlink("..", dir.path() / "c/loop");
    }
    ~Tree() override {
        clsSearchFiles::setYield(nullptr);
        EXPECT_EQ(platform::test::openFindHandles(), 0U);
    }
    std::string inPath(const SearchOptions& options) {
        return dump(search.SearchInPath(dir.inside(""), options));
    }

    platform::test::HookScope hooks;
    test::TempDir dir;
    clsSearchFiles search;
};

}  // namespace

TEST_F(Tree, IsFoundFlatDepthFirst) {
    EXPECT_EQ(inPath({}), "a/ b.txt c/ z");
    EXPECT_EQ(inPath({.iSearchWhat = 7}), "a/ b.txt c/ z");
    EXPECT_EQ(inPath({.bRecurseSubDirs = true}),
              "a/ a1 sub.txt/ deep.txt x b.txt c/ c.txt loop/ z");
    EXPECT_EQ(inPath({.iSearchWhat = swFiles, .bRecurseSubDirs = true}),
              "a1 deep.txt x b.txt c.txt z");
    EXPECT_EQ(inPath({.iSearchWhat = swDirs, .bRecurseSubDirs = true}), "a/ sub.txt/ c/ loop/");
    EXPECT_EQ(
        inPath({.iSearchWhat = swDirs, .bRecurseSubDirs = true, .bReturnThisAndBaseDirs = true}),
        "./ ../ a/ ./ ../ sub.txt/ ./ ../ c/ ./ ../ loop/");
    EXPECT_EQ(dump(search.SearchInPath(dir.inside("none"))), "");
    EXPECT_EQ(dump(search.SearchInPath(u"/tmp")), "");
    EXPECT_EQ(dump(search.SearchInPath(dir.inside("c/loop"))), "a/ b.txt c/ z");
    EXPECT_EQ(search.SearchInPath(u"\\").front().sPathFileName().substr(0, 3), u"\\.\\");
}

TEST_F(Tree, IsFoundAsATree) {
    EXPECT_EQ(inPath({.bRecurseSubDirs = true, .bHierarchicalCollection = true}),
              "a/(a1 sub.txt/(deep.txt x)) b.txt c/(c.txt loop/) z");
    // What is in a directory that is no hit goes to its parent's container.
    EXPECT_EQ(
        inPath({.iSearchWhat = swFiles, .bRecurseSubDirs = true, .bHierarchicalCollection = true}),
        "a1 deep.txt x b.txt c.txt z");
}

TEST_F(Tree, PatternsChooseDirectoriesOrOnlyFiles) {
    const SearchOptions deep{.bRecurseSubDirs = true};
    const SearchOptions deepFiles{.iSearchWhat = swFiles, .bRecurseSubDirs = true};
    EXPECT_EQ(dump(search.SearchPathPattern(dir.inside("*.txt"))), "b.txt");
    EXPECT_EQ(dump(search.SearchPathPattern(dir.inside("*.txt"), deep)), "b.txt");
    EXPECT_EQ(dump(search.SearchPathPattern(dir.inside("a/*.txt"), deep)), "sub.txt/ deep.txt");
    EXPECT_EQ(dump(search.SearchPathPattern(dir.inside("*.none"), deep)), "");
    EXPECT_EQ(dump(search.SearchPathPattern(dir.inside("z"))), "z");

    EXPECT_EQ(dump(search.SearchFilePatternPathNoPattern(dir.inside("*.txt"))), "b.txt");
    EXPECT_EQ(dump(search.SearchFilePatternPathNoPattern(dir.inside("*.txt"), deep)),
              "b.txt sub.txt/ deep.txt c.txt");
    EXPECT_EQ(dump(search.SearchFilePatternPathNoPattern(dir.inside("*.txt"), deepFiles)),
              "b.txt deep.txt c.txt");
    EXPECT_EQ(dump(search.SearchFilePatternPathNoPattern(u"a/b", deep)), "");
}

TEST_F(Tree, LimitsEndTheSearch) {
    const auto limited = [&](std::int32_t limit) {
        return inPath({.bRecurseSubDirs = true, .lMaxResults = limit});
    };
    EXPECT_EQ(limited(1), "a/");
    EXPECT_EQ(limited(0), limited(-1));
    // A level above the one that reached the limit still adds its next entry before it leaves.
    EXPECT_EQ(limited(3), "a/ a1 sub.txt/ b.txt");
    EXPECT_EQ(limited(4), "a/ a1 sub.txt/ deep.txt b.txt");
    EXPECT_EQ(limited(5), "a/ a1 sub.txt/ deep.txt x b.txt");
    EXPECT_EQ(inPath({.lMaxResults = 3}), "a/ b.txt c/");
    EXPECT_EQ(inPath({.iSearchWhat = swFiles, .lMaxResults = 1}), "b.txt");

    const auto patternLimited = [&](std::int32_t limit) {
        return dump(search.SearchFilePatternPathNoPattern(
            dir.inside("*.txt"),
            {.iSearchWhat = swFiles, .bRecurseSubDirs = true, .lMaxResults = limit}));
    };
    EXPECT_EQ(patternLimited(4), "") << "the four directories count, too";
    EXPECT_EQ(patternLimited(5), "b.txt");
}

namespace {
clsSearchFiles* g_running = nullptr;
std::vector<std::string> g_seen;
}  // namespace

TEST_F(Tree, AYieldingSearchCanBeStoppedButNotNested) {
    g_running = &search;
    g_seen.clear();
    clsSearchFiles::setYield([] {
        EXPECT_TRUE(g_running->IsSearching());
        g_seen.push_back(toUtf8(ufu_FileName(ufu_NoBackSlash(g_running->CurrentDir()))));
        EXPECT_EQ(dump(g_running->SearchInPath(g_running->CurrentDir())), "");
        if (g_seen.back() == "sub.txt") g_running->StopSearch();
    });
    const SearchOptions deep{.bRecurseSubDirs = true, .bAsync = true};
    EXPECT_EQ(inPath(deep), "a/ a1 sub.txt/ b.txt c/ z") << "no further directory is entered";
    EXPECT_EQ(g_seen.size(), 4U);
    EXPECT_FALSE(search.IsSearching());
    EXPECT_EQ(search.CurrentDir(), u"");
    EXPECT_EQ(inPath({}), "a/ b.txt c/ z") << "and without bAsync nothing yields";
    EXPECT_EQ(g_seen.size(), 4U);
}

TEST_F(Tree, AFailedDirectoryIsLeftOut) {
    platform::test::failNext(FileOp::Find, 1, 1);
    EXPECT_EQ(inPath({.bRecurseSubDirs = true}), "a/ b.txt c/ c.txt loop/ z");
}

TEST_F(Tree, EntriesLoadAndCloneWithAllThatIsBelow) {
    clsSearchFilesFInfo info;
    EXPECT_TRUE(info.LoadFromFileOrDir(dir.inside("a"), true));
    EXPECT_EQ(dump({info}), "a/(a1 sub.txt/(deep.txt x))");
    EXPECT_EQ(info.sPathFileName(), dir.inside("a"));
    EXPECT_EQ(info.oCollSubFiles[0].sFilePathNoSlash(), dir.inside("a"));

    clsSearchFilesFInfo copy;
    copy.oCollSubFiles.resize(3);
    EXPECT_EQ(&info.Clone(copy), &copy);
    EXPECT_EQ(dump({info.Clone()}), dump({info}));
    info.Clone(info.oCollSubFiles[1]);  // into its own tree
    EXPECT_EQ(dump({info}), "a/(a1 a/(a1 sub.txt/(deep.txt x)))");
    info.oCollSubFiles.clear();
    EXPECT_EQ(dump({copy}), "a/(a1 sub.txt/(deep.txt x))");

    EXPECT_FALSE(copy.LoadFromFileOrDir(dir.inside("*"), false));
    EXPECT_FALSE(copy.LoadFromFileOrDir(dir.inside("none"), false));
    EXPECT_EQ(copy.sPathFileName(), dir.inside("a"));
    EXPECT_TRUE(copy.LoadFromFileOrDir(dir.inside("a"), false));
    EXPECT_TRUE(copy.oCollSubFiles.empty());
}

TEST(clsSearchFilesFInfo, ReadsAttributesBySingleBits) {
    for (const std::uint32_t set : {0x80U, 0x1U | 0x4U, 0x2U | 0x10U, 0x800U, 0x4000U, ~0x10U}) {
        clsSearchFilesFInfo info;
        info.lAttributes = set;
        const bool told[] = {info.IsReadOnly(),  info.IsHidden(),     info.IsSystem(),
                             info.IsDirectory(), info.IsCompressed(), info.IsEncrypted()};
        const std::uint32_t bits[] = {0x1, 0x2, 0x4, 0x10, 0x800, 0x4000};
        for (std::size_t i = 0; i < std::size(bits); ++i) {
            EXPECT_EQ(told[i], (set & bits[i]) != 0) << set << ' ' << bits[i];
        }
        EXPECT_NE(info.IsFile(), info.IsDirectory());
    }
}

TEST(clsSearchFilesFInfo, SizesGoBeyond32BitsAndDatesAreLocalOrUTC) {
    const test::TempDir dir;
    dir.write("f", "");
    constexpr std::int64_t kSize = 5'368'709'127;
    fs::resize_file(dir.path() / "f", kSize);
    // 29 February 2024, 23:30:15.250 UTC, a Thursday
    const auto moment = std::chrono::sys_days(std::chrono::year(2024) / 2 / 29) +
                        std::chrono::hours(23) + std::chrono::minutes(30) +
                        std::chrono::milliseconds(15'250);
    fs::last_write_time(dir.path() / "f", std::chrono::file_clock::from_sys(moment));

    const std::string before = getenv("TZ") != nullptr ? getenv("TZ") : "";
    setenv("TZ", "XXX-01:30", 1);  // an hour and a half ahead
    clsSearchFilesFInfo info;
    FileDate utc, local, other, untouched{.iDay = 99};
    EXPECT_TRUE(info.LoadFromFileOrDir(dir.inside("f"), false));
    EXPECT_EQ(info.dFileSize, kSize);
    info.GetUTCFileDate(fdtLastWrite, utc);
    info.GetFileDate(fdtLastWrite, local);
    EXPECT_TRUE(ufu_GetFileDate(dir.inside("f"), fdtLastWrite, other));
    EXPECT_FALSE(ufu_GetFileDate(dir.inside("none"), fdtLastWrite, untouched));
    info.GetFileDate(3, untouched);
    clsSearchFiles().GetFileDate(dir.inside("*none"), fdtLastWrite, untouched);
    if (before.empty()) {
        unsetenv("TZ");
    } else {
        setenv("TZ", before.c_str(), 1);
    }

    EXPECT_EQ(utc, (FileDate{29, 2, 2024, 23, 30, 15, 250, 4}));
    EXPECT_EQ(local, (FileDate{1, 3, 2024, 1, 0, 15, 250, 5}));
    EXPECT_EQ(other, local);
    EXPECT_EQ(untouched.iDay, 99);

    info.dwLowDateTimeCreation = 10'000, info.dwHighDateTimeCreation = 0;
    info.GetUTCFileDate(fdtCreation, utc);
    EXPECT_EQ(utc, (FileDate{1, 1, 1601, 0, 0, 0, 1, 1}));
}
