// platform/window/testhooks_internal.h: the hooks as the sources of this folder ask for them.
#pragma once
#include "platform/window/testhooks.h"

class QPoint;
class QWidget;

namespace platform {

struct TestHooks {
    std::function<bool(std::int32_t key)> keyState;
    std::optional<POINT> cursorPosition;
    std::vector<test::Screen> screens;
    std::map<int, int> metrics;
    bool manualTimers = false, failTimers = false, failEdits = false;
    test::DragHook drag;
    test::ShellHook shell;
    std::function<bool(const std::string& address)> addressOpener;
    std::optional<std::string> settingsFolder;
    std::optional<std::vector<test::RegistryValue>> registry;
};
[[nodiscard]] TestHooks& hooks();

// The innermost script; nullptr when a person answers.
[[nodiscard]] test::DialogScript* dialogScript();
// A text in quotes, with control units as \XXXX, for the script's log.
[[nodiscard]] std::string quotedText(TextView text);
[[nodiscard]] std::string hexText(std::uint32_t value);  // 0x1F

namespace test {
// Input for a widget, see pressKey and mouse.
void sendKey(QWidget& widget, bool down, std::int32_t key, TextView typed, WPARAM modifiers);
void sendMouse(QWidget& widget, MouseAction action, QPoint position, WPARAM button, WPARAM down);
}  // namespace test

}  // namespace platform
