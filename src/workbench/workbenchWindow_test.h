// workbench/workbenchWindow_test.h: the main window off screen, with somebody who answers.
#pragma once
#include "platform/base/paths.h"
#include "platform/base/testhooks.h"
#include "platform/window/application.h"
#include "platform/window/testhooks.h"
#include "platform/window/timer.h"
#include "support/TempDir.h"
#include "workbench/frmMain.h"

#include <deque>
#include <gtest/gtest.h>

namespace test {

// The control of that name in a form.
template <class Control> Control& controlOf(const Form& form, TextView sName) {
    for (HostWindow* const host : form.Controls()) {
        if (host->Name() != sName) continue;
        if (auto* const control = dynamic_cast<Control*>(host)) return *control;
    }
    throw std::runtime_error("no control " + toUtf8(sName));
}

// Answers the program's own modal dialogs, in the order of their coming. One for which there is no
// answer is closed, and fails the test.
class Answers {
public:
    using Answer = std::function<void(Form&)>;

    Answers() : m_timer(platform::setTimer(10, [this](std::uint32_t, std::uint32_t) { look(); })) {}
    ~Answers() {
        platform::KillTimer(0, m_timer);
        EXPECT_TRUE(m_answers.empty()) << "a dialog that was answered did not come";
    }
    Answers(const Answers&) = delete;
    Answers& operator=(const Answers&) = delete;

    void next(Answer answer) { m_answers.push_back(std::move(answer)); }
    // Types over what is there, and presses Enter; without a text Enter alone.
    void type(std::optional<Text> text) {
        next([text = std::move(text)](Form& form) {
            auto& txtText = controlOf<ctlUniTextBoxXP>(form, u"txtText");
            if (text) txtText.Text(*text);
            platform::test::pressKey(txtText.hWnd(), platform::VK_RETURN, u"\r");
        });
    }
    void press(Text sButton) {
        next([sButton = std::move(sButton)](Form& form) {
            (void)controlOf<ctlUniButtonXP>(form, sButton).accessibleAction();
        });
    }

    // Answers all others; without it they fail the test.
    Answer otherwise;

private:
    void look() {
        Form* modal = nullptr;
        HostWindow::forEachHost([&](HostWindow& host) {
            auto* const form = dynamic_cast<Form*>(&host);
            const bool isDialog = dynamic_cast<InputForm*>(form) != nullptr ||
                                  dynamic_cast<frmAbout*>(form) != nullptr;
            if (isDialog && platform::IsWindowVisible(form->hWnd())) modal = form;
        });
        if (modal == nullptr) return;
        if (m_answers.empty() && otherwise) {
            otherwise(*modal);
            return;
        }
        if (m_answers.empty()) {
            ADD_FAILURE() << "a dialog nobody expected: " << toUtf8(modal->Caption());
            modal->Hide();
            return;
        }
        const Answer answer = std::move(m_answers.front());
        m_answers.pop_front();
        answer(*modal);
    }

    std::deque<Answer> m_answers;
    std::uint32_t m_timer;
};

class WorkbenchTest : public testing::Test {
protected:
    void SetUp() override {
        platform::test::setSettingsFolder(dir.path() / "config");
        platform::test::setKeysDown(std::vector<std::int32_t>{});
        ::setenv("XDG_STATE_HOME", (dir.path() / "state").c_str(), 1);
        dir.write("main.lng",
                  "Title=Program\r\n[Menu]\r\nOpen=Open\r\nClose=Close\r\nOpen2=Open\r\n"
                  "Quit=Quit\r\nOK=OK\r\n");
        dir.write("trans.lng", "Title=Programma\r\n[Menu]\r\nOK=ok\r\nExtra=kept\r\n");
    }
    void TearDown() override {
        ::unsetenv("XDG_STATE_HOME");
        if (answers.otherwise) return;  // anything may come
        EXPECT_EQ(dialogs.log().find("UNANSWERED"), std::string::npos) << dialogs.log();
    }

    void start(TextView sCommandLine = {}) {
        window.Start(sCommandLine);
        platform::test::settle();
    }
    void startWithPair() {
        start(u"\"" + dir.inside("main.lng") + u"\" \"" + dir.inside("trans.lng") + u"\"");
    }
    // The buttons answer the boxes that come up, in their order.
    void pick(MenuEntry entry, std::initializer_list<int> buttons = {}) {
        for (const int button : buttons) dialogs.answerMessageBox(button);
        window.command(entry);
        platform::test::settle();
    }
    void edit(std::int32_t iRow, std::optional<Text> text) {
        window.grid().Row(iRow);
        answers.type(std::move(text));
        pressEnter();
    }
    void pressEnter() {
        platform::test::pressKey(gridWindow(), platform::VK_RETURN, u"\r");
        platform::test::settle();
    }
    [[nodiscard]] HWND gridWindow() { return window.grid().HostWindow::hWnd(); }

    // "Title=Programma Open= ...", with "!" behind the yellow cells and "~" behind the pale ones.
    [[nodiscard]] std::string rows() {
        const ctlUniGrid& grid = window.grid();
        std::string all;
        for (std::int32_t i = 1; i <= grid.Rows(); ++i) {
            const std::int32_t color = grid.CellBackColor(i, 5);
            all += (i > 1 ? " " : "") + toUtf8(grid.CellText(i, 3)) + "=" +
                   toUtf8(grid.CellText(i, 5)) + (color == 65535 ? "!" : "") +
                   (color == 14548991 ? "~" : "");
        }
        return all;
    }
    [[nodiscard]] std::string state() {
        return std::string(window.list().m_bDirty ? "dirty" : "clean") +
               (window.isEnabled(mnuSave) ? " save" : "");
    }
    [[nodiscard]] Text display(std::string_view name) const {
        return fromUtf8((dir.path() / name).string());
    }

    platform::test::HookScope m_hooks;
    platform::test::WindowHookScope m_windowHooks;
    TempDir dir;
    platform::test::DialogScript dialogs;
    Answers answers;
    frmMain window;
};

}  // namespace test
