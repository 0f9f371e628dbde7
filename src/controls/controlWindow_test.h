// controls/controlWindow_test.h: a form with one control on it, and input for it.
#pragma once
#include "host/Form.h"
#include "platform/base/failure.h"
#include "platform/window/application.h"
#include "platform/window/recorder.h"
#include "platform/window/testhooks.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>

namespace test {

using platform::test::MouseAction;
using platform::test::settle;

class Desk : public Form {
public:
    Desk() : Form(platform::WindowKind::Main) { ClientSize(400, 200); }
};

class ControlTest : public testing::Test {
protected:
    void SetUp() override {
        m_form.Show();
        settle();
    }
    void put(HostWindow& control, RECT place = {10, 10, 110, 34}) {
        ASSERT_TRUE(control.create(m_form.hWnd(), place));
        settle();
        (void)taken();
    }
    static void press(const HostWindow& on, platform::WPARAM button = platform::MK_LBUTTON) {
        platform::test::mouse(on.hWnd(), MouseAction::Press, {3, 4}, button, button);
    }
    static void release(const HostWindow& on, platform::WPARAM button = platform::MK_LBUTTON) {
        platform::test::mouse(on.hWnd(), MouseAction::Release, {3, 4}, button);
    }
    static void click(const HostWindow& on, platform::WPARAM button = platform::MK_LBUTTON) {
        press(on, button);
        release(on, button);
    }
    static void twice(const HostWindow& on) {
        click(on);
        platform::test::mouse(on.hWnd(), MouseAction::DoubleClick, {3, 4}, platform::MK_LBUTTON,
                              platform::MK_LBUTTON);
        release(on);
    }
    static void type(const HostWindow& on, char16_t unit) {
        platform::test::typeText(on.hWnd(), TextView(&unit, 1));
    }
    // How often the control has painted while f runs and the messages after it.
    template <class F> static int paintsOf(const HostWindow& control, F f) {
        const platform::DrawingRecorder recorder(control.hDC());
        f();
        settle();
        int paints = 0;
        for (const std::string& line : recorder.lines()) {
            paints += line.starts_with("DrawTextW") && line.find("0x4") == std::string::npos;
        }
        return paints;
    }
    void note(const std::string& what) { m_log += what + ' '; }
    std::string taken() { return std::exchange(m_log, {}); }

    platform::test::WindowHookScope m_hooks;
    Desk m_form;
    std::string m_log;
};

}  // namespace test
