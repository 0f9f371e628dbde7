#include "gfx/modCtlCommon_src_errors.h"
#include "gfx/modCtlCommon_src_helpers.h"
#include "platform/base/codepages.h"
#include "platform/base/failure.h"
#include "platform/base/testhooks.h"
#include "platform/window/dialogs.h"
#include "platform/window/input.h"
#include "platform/window/testhooks.h"
#include "support/PlatformVersion.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>
#include <stdexcept>

namespace {

using platform::test::WindowHookScope;

TEST(Words, ComeApartAndTogether) {
    EXPECT_EQ(LoWord(0x12348765), 0x8765);
    EXPECT_EQ(HiWord(0x12348765), 0x1234);
    EXPECT_EQ(HiWord(-2), 0xFFFF);
    EXPECT_EQ(static_cast<std::int16_t>(HiWord(-7'864'320)), -120);
    EXPECT_EQ(MakeWord(0x34, 0x92), 0x9234);
    EXPECT_EQ(MakeDWord(0x8765, 0xFFFE), static_cast<std::int32_t>(0xFFFE8765));
    EXPECT_EQ(AscWide(u"\uFF21b"), 0xFF21);
    EXPECT_EQ(AscWide(u""), 0);
    EXPECT_EQ(ChrWide(0x416), u"\u0416");
    EXPECT_EQ(ChrWide(-223), u"\uFF21");
}

TEST(Keys, GiveTheShiftStateOfThisMoment) {
    const WindowHookScope scope;
    using namespace platform;
    const struct {
        std::vector<std::int32_t> down;
        int state;
    } kCases[] = {
        {{}, 0},
        {{VK_SHIFT}, 1},
        {{VK_CONTROL}, 2},
        {{VK_MENU}, 4},
        {{VK_SHIFT, VK_CONTROL, VK_MENU}, 7},
        {{VK_LBUTTON}, 0},
    };
    for (const auto& c : kCases) {
        platform::test::setKeysDown(c.down);
        EXPECT_EQ(GetShiftState(), c.state);
        EXPECT_EQ(IsKeyDown(VK_LBUTTON), c.down == std::vector<std::int32_t>{VK_LBUTTON});
    }
}

TEST(Cursors, HaveTheIdsOfThePlatform) {
    const std::int32_t kIds[] = {32512, 32512, 32515, 32513, 32641, 32640, 32643, 32645,
                                 32642, 32644, 32516, 32514, 32648, 32650, 32651, 32646};
    for (std::int32_t i = 0; i < 16; ++i) EXPECT_EQ(CursorResource(i), kIds[i]) << i;
    EXPECT_EQ(CursorResource(16), 0);
    EXPECT_EQ(CursorResource(-1), 0);
    EXPECT_EQ(CursorResource(99), 0);
}

TEST(Version, IsLateFromNT5On) {
    for (const std::uint32_t major : {4U, 5U, 10U}) {
        const test::PlatformVersion version({major, 0, platform::VER_PLATFORM_WIN32_NT});
        EXPECT_EQ(IsNT5OrLater(), major >= 5) << major;
    }
}

TEST(Shell, IsAskedWithTheVerbOfTheNumber) {
    const WindowHookScope scope;
    platform::ShellRequest asked;
    platform::test::setShell([&](const platform::ShellRequest& request) {
        asked = request;
        return std::intptr_t{42};
    });
    const Text kVerbs[] = {u"edit",  u"explore",    u"find",  u"open",
                           u"print", u"properties", u"runas", u"open"};
    for (std::int32_t verb = 0; verb < 8; ++verb) {
        EXPECT_EQ(ShellOpen(0, u"x.html", verb), 42);
        EXPECT_EQ(asked.verb, kVerbs[verb]);
    }
    (void)ShellOpen(0, u"\\a.lng", -1, u"-p", u"\\dir", 5);
    EXPECT_EQ(asked.verb + u' ' + asked.file + u' ' + asked.parameters + u' ' + asked.directory,
              u"open \\a.lng -p \\dir");
    EXPECT_EQ(asked.show, 5);
}

template <class Raise> std::string reportOf(Raise raise) {
    try {
        raise();
    } catch (...) {
        return toUtf8(ErrorText(u"ctlUniCheckXP.pvDraw"));
    }
    return "nothing raised";
}

TEST(ErrorText, ReportsTheFailureBeingHandled) {
    EXPECT_EQ(reportOf([] { throw Failure(kOwnError, u"x", u"Palette is required!"); }),
              "ctlUniCheckXP.pvDraw (80040001) - Palette is required! ERL: 0");
    EXPECT_EQ(reportOf([] { throw Failure(13, u"x", u"\u0416"); }),
              "ctlUniCheckXP.pvDraw (D) - \u0416 ERL: 0");
    EXPECT_EQ(reportOf([] { throw std::runtime_error("no room"); }),
              "ctlUniCheckXP.pvDraw (80040001) - no room ERL: 0");
    EXPECT_EQ(toUtf8(ErrorText(u"a")), "a (0) -  ERL: 0");
}

// The log beside the test program, which is gone afterwards.
struct LogFile {
    LogFile() { EXPECT_EQ(bytes(), "no file") << "there is a log already"; }
    ~LogFile() { std::filesystem::remove(path); }
    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;

    [[nodiscard]] std::string bytes() const {
        std::ifstream file(path, std::ios::binary);
        return file ? std::string(std::istreambuf_iterator<char>(file), {}) : "no file";
    }
    const std::filesystem::path path =
        std::filesystem::read_symlink("/proc/self/exe").replace_filename("debug.txt");
};

TEST(LogDebug, AppendsALineInTheAnsiCodePageAndIgnoresFailures) {
    const platform::test::HookScope scope;
    platform::setAnsiCodePage(1251);
    const LogFile log;
    platform::test::failNext(platform::test::FileOp::Open);
    LogDebug(u"lost");
    EXPECT_EQ(log.bytes(), "no file");
    LogDebug(u"one");
    LogDebug(u"\u0416\u4E2D");
    EXPECT_TRUE(std::regex_match(log.bytes(), std::regex("\\d\\d:\\d\\d:\\d\\d> one\r\n"
                                                         "\\d\\d:\\d\\d:\\d\\d> \xC6\\?\r\n")))
        << log.bytes();
}

TEST(DiagnosticSwitches, AreOffAndDecideWhoHearsOfAFailure) {
    EXPECT_FALSE(builtInSwitches().box);
    EXPECT_FALSE(builtInSwitches().log);

    const WindowHookScope scope;
    const LogFile log;
    platform::test::DialogScript dialogs;
    const auto report = [](DiagnosticSwitches switches) {
        try {
            throw Failure(kOwnError, u"x", u"broken");
        } catch (const Failure&) {
            ReportCaughtFailure(u"pvDraw", switches);
        }
    };
    report({});
    EXPECT_EQ(dialogs.log(), "");
    EXPECT_EQ(log.bytes(), "no file");

    dialogs.answerMessageBox(platform::IDOK);
    report({.box = true, .log = false});
    EXPECT_NE(dialogs.log().find("pvDraw (80040001) - broken ERL: 0"), std::string::npos)
        << dialogs.log();
    EXPECT_EQ(log.bytes(), "no file");

    report({.box = false, .log = true});
    EXPECT_NE(log.bytes().find("> pvDraw (80040001) - broken ERL: 0\r\n"), std::string::npos);
}

}  // namespace
