// Ten thousand random events: whatever a person does in whatever order, the program goes on.
#include "workbench/workbenchWindow_test.h"

#include <random>

namespace test {
namespace {

using platform::test::MouseAction;

class RandomEvents : public WorkbenchTest {
protected:
    // Answers whatever dialog is there, in one of the ways that there are.
    void answerAnything() {
        answers.otherwise = [this](Form& form) {
            switch (m_random() % 4) {
            case 0:
                form.Unload(kClosedByUser);
                return;
            case 1:
                press(form, platform::VK_ESCAPE);
                return;
            case 2:
                if (auto* const input = dynamic_cast<InputForm*>(&form)) {
                    controlOf<ctlUniTextBoxXP>(*input, u"txtText").Text(anyText());
                }
                [[fallthrough]];
            default:
                press(form, platform::VK_RETURN);
                return;
            }
        };
    }
    void press(const Form& form, std::int32_t key, platform::WPARAM modifiers = 0) {
        const std::vector<HostWindow*> controls = form.Controls();
        if (controls.empty()) return;
        const HostWindow& host = *controls[m_random() % controls.size()];
        const auto* box = dynamic_cast<const ctlUniTextBoxXP*>(&host);
        const char16_t unit = key == platform::VK_RETURN ? u'\r' : static_cast<char16_t>(key);
        platform::test::pressKey(box != nullptr ? box->hWnd() : host.hWnd(), key, {&unit, 1},
                                 modifiers);
    }
    Text anyText() {
        static constexpr TextView kTexts[] = {u"",
                                              u" ",
                                              u"x",
                                              u"Open",
                                              u"12",
                                              u"new.lng",
                                              u"a\tb",
                                              u"\u0416\u5B57\xD83D\xDE00",
                                              u"two\r\nlines"};
        return Text(kTexts[m_random() % std::size(kTexts)]);
    }
    void anyEvent() {
        static constexpr std::int32_t kKeys[] = {
            platform::VK_DOWN,  platform::VK_UP,     platform::VK_NEXT,   platform::VK_END,
            platform::VK_HOME,  platform::VK_RETURN, platform::VK_RETURN, platform::VK_TAB,
            platform::VK_SPACE, platform::VK_ESCAPE, platform::VK_F1 + 2, 'A'};
        switch (m_random() % 8) {
        case 0: {
            platform::test::DialogScript desktop;
            const auto& lines = menuLines();
            const MenuEntry entry = lines[m_random() % lines.size()].entry;
            if (entry == mnuExit && m_random() % 4 != 0) return;
            if (m_random() % 3 == 0) desktop.answerFile(anyFile());
            if (m_random() % 2 == 0) desktop.answerMessageBox(2 + static_cast<int>(m_random() % 6));
            window.command(entry);
            return;
        }
        case 1:
        case 2:
            return mouse();
        case 3:
            window.ClientSize(static_cast<int>(m_random() % 900),
                              static_cast<int>(m_random() % 700));
            return;
        default:
            press(window, kKeys[m_random() % std::size(kKeys)],
                  m_random() % 8 == 0 ? platform::WPARAM{platform::MK_SHIFT} : 0);
            return;
        }
    }
    void mouse() {
        const std::vector<HostWindow*> controls = window.Controls();
        const HostWindow& host = *controls[m_random() % controls.size()];
        const HWND hWnd = host.hWnd();
        const platform::POINT at{static_cast<int>(m_random() % 600),
                                 static_cast<int>(m_random() % 300)};
        const auto send = [&](MouseAction action, platform::WPARAM down) {
            platform::test::mouse(
                hWnd, action, at,
                action == MouseAction::Move ? 0 : platform::WPARAM{platform::MK_LBUTTON}, down);
        };
        send(MouseAction::Move, 0);
        send(m_random() % 4 == 0 ? MouseAction::DoubleClick : MouseAction::Press,
             platform::MK_LBUTTON);
        send(MouseAction::Release, 0);
        if (m_random() % 4 == 0) platform::test::wheel(hWnd, at, m_random() % 2 == 0 ? 120 : -120);
    }
    Text anyFile() {
        static constexpr const char* kFiles[] = {"main.lng", "trans.lng", "new.lng", "none.lng"};
        return m_random() % 5 == 0 ? Text() : dir.inside(kFiles[m_random() % std::size(kFiles)]);
    }

    std::mt19937 m_random{7};
};

TEST_F(RandomEvents, TheProgramGoesOnThroughAllOfThem) {
    platform::test::setShell(
        [](const platform::ShellRequest&) { return platform::SE_ERR_SUCCESS; });
    answerAnything();
    startWithPair();
    constexpr int kEvents = 10000;
    for (int i = 0; i < kEvents; ++i) {
        if (!window.Loaded()) startWithPair();
        anyEvent();
        if (i % 16 == 0) platform::test::settle();
        if (i % 1000 == 0) {
            dir.write("main.lng", "Title=Program\n[Menu]\nOpen=Open\nOpen2=Open\nQuit=Quit\n");
        }
    }
    platform::test::DialogScript atTheEnd;
    atTheEnd.answerMessageBox(platform::IDNO);
    EXPECT_TRUE(window.Unload());
    EXPECT_FALSE(window.findDialog().Loaded());
}

}  // namespace
}  // namespace test
