#include "platform/window/application.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <map>
#include <optional>

using namespace platform;

namespace {

// Sets environment variables (nullptr: none) and puts them back.
class Environment {
public:
    explicit Environment(const std::map<std::string, const char*>& values) {
        for (const auto& [name, value] : values) {
            const char* before = std::getenv(name.c_str());
            m_before[name] = before == nullptr ? std::nullopt : std::optional<std::string>(before);
            set(name, value);
        }
    }
    ~Environment() {
        for (const auto& [name, value] : m_before) set(name, value ? value->c_str() : nullptr);
    }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

private:
    static void set(const std::string& name, const char* value) {
        if (value == nullptr) {
            unsetenv(name.c_str());
        } else {
            setenv(name.c_str(), value, 1);
        }
    }
    std::map<std::string, std::optional<std::string>> m_before;
};

}  // namespace

TEST(Application, SaysWhyThereIsNoDisplayInsteadOfEnding) {
    const struct {
        const char *platform, *display, *wayland;
        bool offScreen;
        const char* part;  // of the sentence; nullptr: all is well
    } kCases[] = {
        {nullptr, nullptr, nullptr, false, "neither DISPLAY nor WAYLAND_DISPLAY"},
        {nullptr, ":4711", nullptr, false, "The display :4711 cannot be used"},
        {"xcb", "nonsense", nullptr, false, "The display nonsense cannot be used"},
        {nullptr, nullptr, "/nowhere/wayland-7", false, "The display /nowhere/wayland-7"},
        {"no-such-system", ":4711", nullptr, false, "cannot be used"},
        {nullptr, nullptr, nullptr, true, nullptr},
        {"offscreen", nullptr, nullptr, false, nullptr},
        {"xcb;offscreen", nullptr, nullptr, false, nullptr},
    };
    for (const auto& c : kCases) {
        const Environment environment({{"QT_QPA_PLATFORM", c.platform},
                                       {"DISPLAY", c.display},
                                       {"WAYLAND_DISPLAY", c.wayland}});
        ApplicationOptions options;
        options.offScreen = c.offScreen;
        const std::string sentence = toUtf8(Application::obstacle(options));
        if (c.part == nullptr) {
            EXPECT_EQ(sentence, "");
        } else {
            EXPECT_NE(sentence.find(c.part), std::string::npos) << sentence;
        }
    }
}
