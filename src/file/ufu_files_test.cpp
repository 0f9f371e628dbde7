#include "file/ufu_files.h"

#include "file/clsUniFile.h"
#include "platform/base/files.h"
#include "platform/base/paths.h"
#include "platform/base/testhooks.h"
#include "support/PlatformVersion.h"
#include "support/Process.h"
#include "support/TempDir.h"
#include "support/raised.h"

#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using platform::test::FileOp;

void protect(const fs::path& path) {
    fs::permissions(path, fs::perms::owner_read | fs::perms::group_read);
}

class ufu_files : public ::testing::Test {
protected:
    ~ufu_files() override {
        EXPECT_EQ(platform::test::openFileHandles() + platform::test::openFindHandles(), 0U);
    }
    // source/{d/{e/, f=F}, ro=R (read-only), x=X}
    void makeSource() {
        fs::create_directories(dir.path() / "source/d/e");
        dir.write("source/d/f", "F");
        dir.write("source/ro", "R");
        dir.write("source/x", "X");
        protect(dir.path() / "source/ro");
    }
    platform::test::HookScope hooks;
    test::TempDir dir;
};

}  // namespace

TEST_F(ufu_files, ExistingFilesAndDirectoriesAreToldApart) {
    dir.write("f.txt", "1");
    dir.write("g.txt", "2");
    fs::create_directory(dir.path() / "d");
    fs::create_directory(dir.path() / "two.lng");
    dir.write("one.lng", "3");
    const struct {
        Text path;
        bool file, directory;
    } cases[] = {
        {dir.inside("f.txt"), true, false},
        {dir.inside("d"), false, true},
        {dir.inside("d/"), false, true},
        {dir.inside("none"), false, false},
        {dir.inside("*.lng"), true, false},  // exactly one file matches
        {dir.inside("*.txt"), false, false},
        {u"", false, false},
        {u"/tmp", false, false},
        {u"\\", false, true},
        {u"\\\\", false, false},  // a server without a name, not the current directory
        {u"\\\\\\", false, false},
        {u"\\\\?\\" + dir.inside("f.txt"), true, false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ufu_FileExist(c.path), c.file) << toUtf8(c.path);
        EXPECT_EQ(ufu_DirExist(c.path), c.directory) << toUtf8(c.path);
    }
}

TEST_F(ufu_files, MakePathMakesEveryLevel) {
    const auto made = [&](const Text& path) { return ufu_MakePath(path) && ufu_DirExist(path); };
    EXPECT_TRUE(made(dir.inside("a/b/")));
    EXPECT_TRUE(made(dir.inside("a/b/c")));
    EXPECT_TRUE(made(u"\\\\?\\" + dir.inside("p/q")));
    EXPECT_FALSE(ufu_MakePath(dir.inside("m//n"))) << "an empty element ends the walk";
    EXPECT_EQ(dir.tree(), "a/ a/b/ a/b/c/ m/ p/ p/q/");
    dir.write("f", "");
    EXPECT_FALSE(ufu_MakePath(dir.inside("f/a")));
    EXPECT_FALSE(ufu_MakePath(u""));
    EXPECT_FALSE(ufu_MakePath(u"\\\\server\\share\\a"));
    EXPECT_EQ(test::raised([] { ufu_MakePath(u"a/b"); }), "ufu_MakePath: Not a local path");

    const Text before = ufu_GetCurDir();
    ASSERT_TRUE(ufu_SetCurDir(dir.inside("a")));
    EXPECT_EQ(ufu_GetCurDir(), dir.inside("a"));
    EXPECT_TRUE(ufu_MakePath(u"C:\\x\\y\\"));
    EXPECT_TRUE(ufu_SetCurDir(before));
    EXPECT_EQ(dir.tree("a"), "C:/ C:/x/ C:/x/y/ b/ b/c/");
    EXPECT_FALSE(ufu_SetCurDir(dir.inside("none")));
}

TEST_F(ufu_files, RemovingTakesReadOnlyFilesToo) {
    makeSource();
    EXPECT_FALSE(ufu_RmDir(dir.inside("source")));
    EXPECT_FALSE(ufu_RmFile(dir.inside("source/d")));
    EXPECT_FALSE(ufu_RmFile(dir.inside("none")));
    EXPECT_FALSE(ufu_RmDirRic(dir.inside("none")));
    EXPECT_FALSE(ufu_RmDirRic(u"") || ufu_RmDir(u"") || ufu_MkDir(u""));
    EXPECT_TRUE(ufu_RmDirRic(dir.inside("source")));
    EXPECT_FALSE(fs::exists(dir.path() / "source"));

    for (const auto* name : {"a.txt", "b.txt", "c.lng"}) dir.write(name, "");
    protect(dir.path() / "b.txt");
    ufu_MkDir(dir.inside("d.txt"));
    EXPECT_TRUE(ufu_RmFiles(dir.inside("*.txt")));
    EXPECT_EQ(dir.tree(), "c.lng= d.txt/");
}

TEST_F(ufu_files, RemovingATreeDoesNotFollowLinks) {
    makeSource();
    fs::create_directory(dir.path() / "kept");
    dir.write("kept/k", "K");
    protect(dir.path() / "kept/k");
    fs::create_directory_symlink(dir.path() / "kept", dir.path() / "source/link");
    fs::create_symlink(dir.path() / "kept/k", dir.path() / "source/d/linked");
    fs::create_symlink(dir.path() / "nowhere", dir.path() / "source/broken");
    fs::create_directory_symlink(dir.path() / "kept", dir.path() / "direct");
    EXPECT_TRUE(ufu_RmDirRic(dir.inside("source")));
    EXPECT_TRUE(ufu_RmDirRic(dir.inside("direct")));
    EXPECT_EQ(dir.tree(), "kept/ kept/k=K");
    EXPECT_TRUE(ufu_FileHasAttribute(dir.inside("kept/k"), platform::FILE_ATTRIBUTE_READONLY));
}

TEST_F(ufu_files, RemovingATreeGoesOnAfterAFailure) {
    makeSource();
    platform::test::failNext(FileOp::Delete);  // the first file to go: source/d/f
    EXPECT_FALSE(ufu_RmDirRic(dir.inside("source")));
    EXPECT_EQ(dir.tree(), "source/ source/d/ source/d/f=F");
    EXPECT_TRUE(ufu_RmDirRic(dir.inside("source")));
}

TEST_F(ufu_files, CopyingAFolderMakesItsDestination) {
    makeSource();
    const std::string kContent = "d/ d/e/ d/f=F ro=R x=X";
    EXPECT_TRUE(ufu_CopyFolderContent(dir.inside("source"), dir.inside("new/copy")));
    EXPECT_EQ(dir.tree("new/copy"), kContent);
    EXPECT_TRUE(ufu_CopyFolderContent(dir.inside("source/"), dir.inside("other/")));
    EXPECT_EQ(dir.tree("other"), kContent);
    EXPECT_EQ(dir.tree("source"), kContent);

    EXPECT_FALSE(ufu_CopyFolderContent(dir.inside("source"), dir.inside("other")))
        << "the read-only file is not overwritten";
    ufu_SetFileAttr(dir.inside("other/ro"), 0);
    dir.write("other/x", "old");
    EXPECT_TRUE(ufu_CopyFolderContent(dir.inside("source"), dir.inside("other")));
    EXPECT_EQ(dir.read("other/x"), "X");

    EXPECT_FALSE(ufu_CopyFolderContent(dir.inside("none"), dir.inside("more")));
    EXPECT_FALSE(ufu_CopyFolderContent(dir.inside("source"), dir.inside("source/x/y")));
    EXPECT_FALSE(ufu_CopyFolderContent(dir.inside("source"), u"a/b"));
    EXPECT_FALSE(fs::exists(dir.path() / "more"));
}

TEST_F(ufu_files, MovingAFolderLeavesItsDirectoriesBehind) {
    makeSource();
    EXPECT_FALSE(ufu_MoveFolderContent(dir.inside("source"), dir.inside("target")));
    fs::create_directory(dir.path() / "target");
    dir.write("target/x", "old");
    // Further backslashes at the end cut no names short.
    EXPECT_TRUE(ufu_MoveFolderContent(dir.inside("source") + u"\\\\\\", dir.inside("target")));
    EXPECT_EQ(dir.tree("target"), "d/ d/e/ d/f=F ro=R x=X");
    EXPECT_EQ(dir.tree("source"), "d/ d/e/");

    platform::test::failNext(FileOp::Move);  // of d/f; the rest goes
    EXPECT_FALSE(ufu_MoveFolderContent(dir.inside("target"), dir.inside("source")));
    EXPECT_EQ(dir.tree("target"), "d/ d/e/ d/f=F");
}

TEST_F(ufu_files, FilesCopyAndMoveByTheirFlags) {
    dir.write("a", "A");
    dir.write("b", "B");
    const Text a = dir.inside("a"), b = dir.inside("b"), c = dir.inside("c");
    EXPECT_FALSE(ufu_CopyFile(a, b, true) || ufu_MoveFile(a, b));
    EXPECT_TRUE(ufu_CopyFile(a, c, true) && ufu_CopyFile(a, b));
    dir.write("a", "A2");
    EXPECT_TRUE(ufu_MoveFile(a, b, platform::MOVEFILE_REPLACE_EXISTING));
    EXPECT_EQ(dir.tree(), "b=A2 c=A");

    // An old platform deletes the target first, whatever the flags.
    const test::PlatformVersion old({4, 10, 1});
    protect(dir.path() / "c");
    EXPECT_TRUE(ufu_MoveFile(b, c));
    EXPECT_EQ(dir.tree(), "c=A2");
}

TEST_F(ufu_files, AMissingFileHasEveryAttribute) {
    dir.write("f", "");
    constexpr std::uint32_t kReadOnly = platform::FILE_ATTRIBUTE_READONLY;
    EXPECT_FALSE(ufu_FileHasAttribute(dir.inside("f"), kReadOnly));
    EXPECT_TRUE(ufu_SetFileAttr(dir.inside("f"), kReadOnly));
    EXPECT_TRUE(ufu_FileHasAttribute(dir.inside("f"), kReadOnly));
    EXPECT_EQ(ufu_GetFileAttr(dir.inside("f")), kReadOnly);
    EXPECT_TRUE(ufu_FileHasAttribute(dir.inside("none"), kReadOnly));
    EXPECT_FALSE(ufu_FileHasAttribute(dir.inside("none"), 0x80000001)) << "a negative value";
}

TEST_F(ufu_files, LongDirectoriesComeBackWhole) {
    const Text before = ufu_GetCurDir();
    ASSERT_TRUE(ufu_SetCurDir(dir.inside("")));
    const Text name(200, u'n');
    Text expected = dir.inside("");
    while (expected.ends_with(u'\\')) expected.pop_back();
    for (int depth = 0; depth < 15; ++depth) {
        ASSERT_TRUE(ufu_MkDir(name) && ufu_SetCurDir(name));
        expected += u'\\' + name;
    }
    const Text found = ufu_GetCurDir();
    EXPECT_TRUE(ufu_SetCurDir(before));
    EXPECT_EQ(found, expected);
}

TEST_F(ufu_files, TheProcessKnowsItsProgramAndArguments) {
    EXPECT_EQ(platform::pathToSystem(ufu_UniAppPath()),
              fs::read_symlink("/proc/self/exe").parent_path().string());
    EXPECT_TRUE(ufu_GetTempPath().ends_with(u'\\'));
    if (std::getenv("QUILLMERE_PRINT_ARGUMENTS") != nullptr)
        std::printf("arguments: <%s>\n", toUtf8(ufu_UniCommandLine()).c_str());
}

// Started anew under other names, the test above prints its arguments.
TEST_F(ufu_files, ArgumentsBeginBehindTheProgramsName) {
    const struct {
        const char* program;
        std::vector<std::string> arguments;
        std::string printed;
    } cases[] = {
        {"p", {}, "<>"},
        {"p q", {}, "<>"},
        {"p", {"", "a"}, R"(<"" a>)"},
        {"p q", {"x y", "z"}, R"(<"x y" z>)"},
        {"p q", {"  "}, R"(<"  ">)"},
    };
    for (const auto& c : cases) {
        const fs::path link = dir.path() / c.program;
        if (!fs::exists(link)) fs::create_symlink(fs::read_symlink("/proc/self/exe"), link);
        const auto result = test::runProcess(
            link, c.arguments,
            {dir.path(),
             {},
             {{"QUILLMERE_PRINT_ARGUMENTS", "1"}, {"GTEST_FILTER", "*ItsProgramAnd*"}}});
        EXPECT_NE(result.out.find("arguments: " + c.printed + "\n"), std::string::npos)
            << result.out;
    }
}

TEST_F(ufu_files, TheClassForwardsTheWholeFamily) {
    makeSource();
    const Text file = dir.inside("source/x");
    FileDate date;
    clsUniFile::st_GetFileDate(file, fdtLastWrite, date);
    EXPECT_GT(date.iYear, 2000);
    Text text;
    EXPECT_TRUE(clsUniFile::st_TextFileToString(file, text, true));
    EXPECT_EQ(text, u"X");
    EXPECT_TRUE(clsUniFile::st_StringToTextFile(file, u"XY", ufeUTF8, true));
    EXPECT_EQ(clsUniFile::st_GetFileEncoding(file), ufeUTF8);
    EXPECT_EQ(clsUniFile::st_FileLen(file), 5);
    EXPECT_EQ(clsUniFile::st_OneBackSlash(clsUniFile::st_FilePath(file, false)) +
                  clsUniFile::st_FileName(file),
              file);
    EXPECT_TRUE(clsUniFile::st_CopyFile(file, dir.inside("y.lng"), true));
    EXPECT_TRUE(clsUniFile::st_FileExist(dir.inside("y.lng")));
    EXPECT_EQ(clsUniFile::st_FileExt(dir.inside("y.lng")), u"lng");
    EXPECT_TRUE(clsUniFile::st_MoveFile(file, dir.inside("z")));
    EXPECT_TRUE(clsUniFile::st_MakePath(dir.inside("m/n")));
    EXPECT_TRUE(clsUniFile::st_RmDir(dir.inside("m/n")));
    EXPECT_TRUE(clsUniFile::st_RmDirRic(dir.inside("source")));
    EXPECT_TRUE(clsUniFile::st_RmFile(dir.inside("z")));
    EXPECT_TRUE(clsUniFile::st_RmFiles(dir.inside("*.lng")));
    EXPECT_EQ(dir.tree(), "m/");
}
