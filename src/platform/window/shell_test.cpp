#include "platform/window/shell.h"

#include "platform/window/testhooks.h"
#include "support/TempDir.h"

#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <thread>
#include <utility>

using namespace platform;

namespace {

std::intptr_t execute(TextView verb, TextView file, TextView parameters = {},
                      TextView directory = {}) {
    return ShellExecuteW(0, verb, file, parameters, directory, 1);
}

}  // namespace

TEST(Shell, OpensAddressesAndFilesByTheDesktop) {
    const platform::test::WindowHookScope hooks;
    std::string opened;
    platform::test::setAddressOpener([&](const std::string& address) {
        opened = address;
        return true;
    });
    const ::test::TempDir dir;
    dir.write("a b.txt", "text");
    dir.write("caf\xE9.txt", "text");
    const std::string base = "file://" + dir.path().string();
    const Text plain = dir.inside("a b.txt");
    const struct {
        Text verb, file;
        std::intptr_t result;
        std::string opened;
    } kRequests[] = {
        {u"open", u"https://example.invalid/help?a=b#c", SE_ERR_SUCCESS,
         "https://example.invalid/help?a=b#c"},
        {u"", u"mailto:me@example.invalid", SE_ERR_SUCCESS, "mailto:me@example.invalid"},
        {u"open", plain, SE_ERR_SUCCESS, base + "/a%20b.txt"},
        {u"edit", plain, SE_ERR_SUCCESS, base + "/a%20b.txt"},
        {u"open", dir.inside("caf\xE9.txt"), SE_ERR_SUCCESS, base + "/caf%E9.txt"},
        {u"explore", plain, SE_ERR_SUCCESS, base},
        {u"explore", dir.inside(""), SE_ERR_SUCCESS, base + "/"},
        {u"open", dir.inside("none.txt"), SE_ERR_FNF, ""},
        {u"open", u"", SE_ERR_FNF, ""},
        {u"print", plain, SE_ERR_NOASSOC, ""},
        {u"runas", plain, SE_ERR_NOASSOC, ""},
        {u"edit", u"https://example.invalid/", SE_ERR_NOASSOC, ""},
    };
    for (const auto& r : kRequests) {
        EXPECT_EQ(execute(r.verb, r.file), r.result) << toUtf8(r.verb + u" " + r.file);
        EXPECT_EQ(std::exchange(opened, {}), r.opened) << toUtf8(r.verb + u" " + r.file);
    }
    EXPECT_EQ(execute(u"open", u"a b.txt", u"", dir.inside("")), SE_ERR_SUCCESS);
    EXPECT_EQ(std::exchange(opened, {}), base + "/a%20b.txt") << "from the given directory";
    platform::test::setAddressOpener([](const std::string&) { return false; });
    EXPECT_EQ(execute(u"open", plain), SE_ERR_NOASSOC) << "nothing opens it";
}

TEST(Shell, StartsAProgramWithItsParametersInADirectory) {
    const ::test::TempDir dir;
    dir.write("tool",
              "#!/bin/sh\nprintf '%s|%s|%s' \"$1\" \"$2\" \"$PWD\" > out.part\nmv out.part out\n");
    const auto tool = dir.path() / "tool";
    std::filesystem::permissions(tool, std::filesystem::perms::owner_all);
    EXPECT_GT(execute(u"open", dir.inside("tool"), u"one \"two three\"", dir.inside("")), 32);
    for (int i = 0; i < 500 && !std::filesystem::exists(dir.path() / "out"); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    EXPECT_EQ(dir.read("out"), "one|two three|" + dir.path().string());
}
