// tests/support/gui/Golden.h: pictures that drawing is compared with, pixel by pixel.
#pragma once
#include "platform/window/types.h"

#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace test {

// Rows from the top, each pixel 0x00RRGGBB.
struct Picture {
    int width = 0, height = 0;
    std::vector<std::uint32_t> pixels;
};

// What paint draws on a 32-bit surface that is white at first.
[[nodiscard]] Picture painted(platform::SIZE size, const std::function<void(platform::HDC)>& paint);

// Paints, and compares with tests/golden/NAME.png; the name may hold slashes. A mismatch names the
// first pixel that differs and leaves NAME.expected.png, NAME.actual.png and NAME.difference.png in
// the folder golden of the build folder. With QUILLMERE_REWRITE_GOLDEN in the environment (./dev
// golden) the file is written instead: look at it before you commit it.
[[nodiscard]] testing::AssertionResult
matchesGolden(const std::string& name, platform::SIZE size,
              const std::function<void(platform::HDC)>& paint);

// The same for a picture that was made in another way.
[[nodiscard]] testing::AssertionResult matchesGolden(const std::string& name,
                                                     const Picture& picture);

// The comparison itself, with the folders of golden pictures and of left-over ones.
[[nodiscard]] testing::AssertionResult
comparePicture(const Picture& actual, const std::string& name, const std::filesystem::path& golden,
               const std::filesystem::path& leftOver, bool update);

}  // namespace test

// EXPECT_GOLDEN("ctlUniCheckXP/disabled", SIZE{90, 24}, [&](HDC hDC) { ... });
#define EXPECT_GOLDEN(...) EXPECT_TRUE(::test::matchesGolden(__VA_ARGS__))
