#include "gallery/GalleryWindow.h"
#include "gfx/clsMEMDC.h"
#include "platform/window/handles.h"
#include "platform/window/testhooks.h"
#include "support/Process.h"
#include "support/TempDir.h"
#include "support/gui/Golden.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <map>
#include <utility>

namespace gallery {
namespace {

namespace hooks = platform::test;

std::string titleOf(const Page& page) { return toUtf8(page.title); }

// ---- Pages

TEST(Pages, FillTheirPartOfThePaperAndNothingAroundIt) {
    for (const Page& page : pages()) {
        const test::Picture picture =
            test::painted(kPageSize, [&](HDC hDC) { drawPage(hDC, kPageSize, page); });
        const RECT area = contentArea(kPageSize);
        int inside = 0, around = 0;
        for (int y = area.top; y < picture.height; ++y) {
            for (int x = 0; x < picture.width; ++x) {
                const auto at = static_cast<std::size_t>(y) * picture.width + x;
                if (picture.pixels[at] == 0xFFFFFF) continue;
                const bool within = x >= area.left - 1 && x < area.right && y < area.bottom;
                ++(within ? inside : around);
            }
        }
        EXPECT_GT(inside, 3000) << titleOf(page);
        EXPECT_EQ(around, 0) << titleOf(page) << ": pixels beyond the margins";
    }
}

TEST(Pages, DrawInAnySizeAndKeepNothing) {
    for (const Page& page : pages()) {
        for (const SIZE size : {SIZE{900, 650}, SIZE{1, 1}, SIZE{0, 500}, SIZE{500, 0},
                                SIZE{60, 3000}, SIZE{4000, 3000}}) {
            const std::string before = platform::liveHandles();
            {
                clsMEMDC surface;
                surface.CreateDC(size.cx, size.cy);
                EXPECT_NO_THROW(drawPage(surface.Hdc(), size, page)) << titleOf(page);
            }
            EXPECT_EQ(platform::liveHandles(), before) << titleOf(page);
        }
        EXPECT_NO_THROW(drawPage(0, kPageSize, page)) << titleOf(page);
    }
}

TEST(Pages, PlaceCutAndCopyPicturesAsBefore) {
    const auto draw = [](TextView title) {
        const auto page = std::ranges::find(pages(), title, &Page::title);
        return [page](HDC hDC) { drawPage(hDC, kPageSize, *page); };
    };
    EXPECT_GOLDEN("gallery/pictures", kPageSize, draw(u"Pictures and icons"));
    EXPECT_GOLDEN("gallery/copies", kPageSize, draw(u"Copies"));
}

// ---- The window

class GalleryWindowTest : public testing::Test {
protected:
    GalleryWindowTest() {
        platform::ShowWindow(m_window.hWnd(), platform::SW_SHOW);
        hooks::settle();
    }
    // What was logged since the last call.
    std::string said() {
        hooks::settle();
        return std::exchange(m_said, {});
    }
    void press(std::int32_t key) {
        hooks::pressKey(platform::GetFocus(), key);
        hooks::releaseKey(platform::GetFocus(), key);
        hooks::settle();
    }

private:
    hooks::WindowHookScope m_hooks;

protected:
    std::string m_said;
    GalleryWindow m_window{[this](const std::string& line) { m_said += line + '\n'; }};
};

TEST_F(GalleryWindowTest, MovesThroughAllPagesByKeysAndStopsAtBothEnds) {
    EXPECT_TRUE(said().ends_with("\npage " + titleOf(pages().front()) + '\n'));
    for (std::size_t i = 1; i < pages().size(); ++i) {
        press(i % 2 == 0 ? platform::VK_NEXT : platform::VK_DOWN);
        EXPECT_EQ(m_window.page(), i);
        EXPECT_EQ(platform::GetWindowTextW(m_window.hWnd()),
                  Text(pages()[i].title) + u" - Quillmere gallery");
    }
    (void)said();
    press(platform::VK_NEXT);
    EXPECT_EQ(said(), "") << "there is no page behind the last one";
    press(platform::VK_UP);
    EXPECT_EQ(m_window.page(), pages().size() - 2);
    press(platform::VK_HOME);
    press(platform::VK_PRIOR);
    EXPECT_EQ(m_window.page(), 0U);
    press(platform::VK_END);
    EXPECT_EQ(m_window.page(), pages().size() - 1);
}

TEST_F(GalleryWindowTest, OpensEveryPageInSmallAndLargeWindowsAndLeavesNoHandle) {
    for (const SIZE size : {SIZE{1200, 800}, SIZE{300, 200}, SIZE{1, 1}}) {
        platform::SetWindowPos(m_window.hWnd(), platform::HWND_TOP, 0, 0, size.cx, size.cy,
                               platform::SWP_NOMOVE);
        m_window.show(0);
        hooks::settle();
        const std::string before = platform::liveHandles();
        for (std::size_t i = 0; i < pages().size(); ++i) {
            m_window.show(i);
            hooks::settle();
        }
        m_window.show(0);
        hooks::settle();
        EXPECT_EQ(platform::liveHandles(), before);
    }
}

TEST_F(GalleryWindowTest, TabGoesRoundTheListAndThePageAndEscapeBack) {
    press(platform::VK_END);
    const HWND list = platform::GetFocus();
    std::string names;
    do {
        press(platform::VK_TAB);
        names += toUtf8(platform::GetWindowTextW(platform::GetFocus())) + '|';
    } while (platform::GetFocus() != list && names.size() < 500);
    EXPECT_EQ(names, "Message...|Open a file...|Name a file...|Folder...|Colour...|Font...|Pages|");
    hooks::setKeysDown(std::vector<std::int32_t>{platform::VK_SHIFT});
    press(platform::VK_TAB);
    EXPECT_EQ(platform::GetWindowTextW(platform::GetFocus()), u"Font...");
    hooks::setKeysDown(std::nullopt);
    press(platform::VK_ESCAPE);
    EXPECT_EQ(platform::GetFocus(), list);
    // The page's windows go with it; the list has the keys afterwards.
    press(platform::VK_TAB);
    press(platform::VK_PRIOR);
    EXPECT_EQ(platform::GetFocus(), list);
}

TEST_F(GalleryWindowTest, TellsWhatTheDialogsAnswered) {
    hooks::DialogScript script;
    m_window.show(pages().size() - 1);
    (void)said();
    // The buttons follow each other: Tab goes to the next one.
    const auto nextAnswer = [&] {
        press(platform::VK_TAB);
        press(platform::VK_RETURN);
        return said();
    };
    script.answerMessageBox(platform::IDNO);
    EXPECT_EQ(nextAnswer(), "answer \"Message...\": No\n");
    script.answerFile(u"\\home\\me\\dutch.lng");
    EXPECT_EQ(nextAnswer(), "answer \"Open a file...\": /home/me/dutch.lng\n");
    script.answerFile(u"");
    EXPECT_EQ(nextAnswer(), "answer \"Name a file...\": cancelled\n");
    script.answerFolder(u"\\home\\me");
    EXPECT_EQ(nextAnswer(), "answer \"Folder...\": /home/me\n");
    script.answerColor(platform::rgb(1, 2, 255));
    EXPECT_EQ(nextAnswer(), "answer \"Colour...\": #0102FF\n");
    platform::LOGFONTA font;
    ASSERT_TRUE(platform::setFaceName(font, u"Tahoma"));
    font.lfWeight = 700;
    script.answerFont(font, 14);
    EXPECT_EQ(nextAnswer(), "answer \"Font...\": Tahoma, 14 points, bold\n");
    EXPECT_EQ(script.log().find("UNANSWERED"), std::string::npos) << script.log();
}

// ---- The program

test::ProcessResult start(const test::TempDir& dir, const std::vector<std::string>& arguments) {
    test::ProcessInput input;
    input.folder = dir.path();
    for (const char* name : {"HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR", "FONTCONFIG_FILE"}) {
        if (const char* value = std::getenv(name)) input.environment[name] = value;
    }
    input.environment["LSAN_OPTIONS"] =
        "print_suppressions=0:suppressions=" QUILLMERE_LEAK_SUPPRESSIONS;
    return test::runProcess(QUILLMERE_GALLERY, arguments, input);
}

TEST(Program, WritesEachPageAsAPictureWithoutADisplayAndTheSameEachTime) {
    const test::TempDir dir;
    std::map<std::string, std::string> files[2];
    for (const bool again : {false, true}) {
        const std::string folder = again ? "b/" : "a";
        const test::ProcessResult result = start(dir, {"--png", folder});
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(result.err + result.out, "");
        for (const auto& entry : std::filesystem::directory_iterator(dir.path() / folder)) {
            const std::string name = entry.path().filename().string();
            files[again ? 1 : 0][name] = dir.read(folder + '/' + name);
        }
    }
    EXPECT_EQ(files[0].size(), pages().size());
    EXPECT_TRUE(files[0].contains("01-button-faces-on-light.png"));
    for (const auto& [name, bytes] : files[0]) {  // 900 x 650 stands in the first chunk
        EXPECT_EQ(bytes.substr(0, 4), "\x89PNG") << name;
        EXPECT_EQ(bytes.substr(16, 8), std::string("\0\0\x03\x84\0\0\x02\x8A", 8)) << name;
    }
    EXPECT_TRUE(files[1] == files[0]);
}

TEST(Program, SaysInOneSentenceWhatIsWrong) {
    const test::TempDir dir;
    dir.write("file", "");
    const struct {
        std::vector<std::string> arguments;
        int exitCode;
        std::string message;
    } kCases[] = {
        {{},
         1,
         "quillmere-gallery: There is no display to show a window on: neither DISPLAY nor "
         "WAYLAND_DISPLAY is set; --png DIR writes the pages as pictures without one.\n"},
        {{"--png", "no/such"}, 1, "quillmere-gallery: Cannot write no/such.\n"},
        {{"--png", "file"}, 1, "quillmere-gallery: Cannot write file.\n"},
        {{"--png"}, 2, "Usage: "},
        {{"--png", ""}, 2, "Usage: "},
        {{"page"}, 2, "Usage: "},
    };
    for (const auto& c : kCases) {
        const test::ProcessResult result = start(dir, c.arguments);
        EXPECT_EQ(result.exitCode, c.exitCode);
        // The usage goes on behind its first words.
        const std::size_t compared = c.exitCode == 2 ? c.message.size() : std::string::npos;
        EXPECT_EQ(result.err.substr(0, compared), c.message);
    }
    EXPECT_EQ(start(dir, {"--help"}).exitCode, 0);
}

}  // namespace
}  // namespace gallery
