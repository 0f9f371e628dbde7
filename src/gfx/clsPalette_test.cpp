#include "gfx/clsPalette.h"

#include "gfx/clsDIBSection.h"
#include "platform/window/dialogs.h"
#include "platform/window/testhooks.h"
#include "support/raised.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <utility>

namespace {

using platform::rgb;

// The entries from first to last as #RRGGBB.
std::string dump(const clsPalette& palette, std::int32_t first = 1,
                 std::int32_t last = 0x7FFFFFFF) {
    std::string text;
    for (std::int32_t i = first; i <= std::min(last, palette.Count()); ++i) {
        char entry[16];
        std::snprintf(entry, sizeof entry, "%s%02X%02X%02X", i > first ? " " : "", palette.Red(i),
                      palette.Green(i), palette.Blue(i));
        text += entry;
    }
    return text;
}

TEST(clsPalette, CountsFromOne) {
    clsPalette palette;
    palette.Add(1, 2, 3);
    palette.Add(4, 5, 6);
    EXPECT_EQ(dump(palette), "010203 040506");
    EXPECT_EQ(palette.Red(0) + palette.Green(3) + palette.Blue(-1), 0);
    clsPalette copy;
    copy.Clone(palette);
    copy.Add(7, 8, 9);
    palette.Destroy();
    EXPECT_EQ(palette.Count(), 0);
    EXPECT_EQ(dump(copy), "010203 040506 070809");
}

TEST(clsPalette, HasFixedPalettes) {
    clsPalette palette;
    palette.Add(1, 2, 3);  // goes
    palette.CreateMono2();
    EXPECT_EQ(dump(palette), "000000 FFFFFF");
    const std::string low = "000000 800000 008000 808000 000080 800080 008080 C0C0C0";
    const std::string high = "808080 FF0000 00FF00 FFFF00 0000FF FF00FF 00FFFF FFFFFF";
    palette.Create16();
    EXPECT_EQ(dump(palette), low + " " + high);

    palette.CreateHalfTone256();
    EXPECT_EQ(palette.Count(), 125);
    EXPECT_EQ(dump(palette, 1, 7), "000000 400000 800000 C00000 FF0000 004000 404000");
    EXPECT_EQ(dump(palette, 25, 27), "FFFF00 000040 400040");
    EXPECT_EQ(dump(palette, 124), "C0FFFF FFFFFF");

    palette.CreateWebSafe256();
    EXPECT_EQ(palette.Count(), 255);
    EXPECT_EQ(dump(palette, 1, 8), low);
    EXPECT_EQ(dump(palette, 9, 14), "330000 660000 990000 CC0000 003300 333300");
    EXPECT_EQ(dump(palette, 216, 218), "CCFFFF 080808 101010");  // the end of the cube
    EXPECT_EQ(dump(palette, 246, 247), "F0F0F0 F8F8F8");
    EXPECT_EQ(dump(palette, 248), high);
}

TEST(clsPalette, FindsTheClosestByCityBlocks) {
    clsPalette palette;
    EXPECT_EQ(palette.ClosestIndex(1, 2, 3), 0);
    palette.Add(0, 0, 0);
    EXPECT_EQ(palette.ClosestIndex(255, 255, 254), 1);
    EXPECT_EQ(palette.ClosestIndex(255, 255, 255), 0);  // 765 away is not closer than that
    palette.Add(100, 100, 100);
    palette.Add(110, 90, 100);
    palette.Add(90, 100, 110);
    palette.Add(110, 90, 100);
    const struct {
        int red, green, blue, index;
    } kCases[] = {
        {110, 90, 100, 3},  // equal
        {105, 95, 100, 2},  // the first of equals
        {120, 120, 70, 2},  // 70 each; the squares would say otherwise
        {49, 49, 51, 1},    // 149 to black, 151 to grey
        {-2'000'000'000, 2'000'000'000, 0, 0},
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(palette.ClosestIndex(c.red, c.green, c.blue), c.index) << c.red;
    }
}

TEST(clsPalette, TakesTheTableOfASurface) {
    clsPalette palette;
    clsDIBSection section;
    section.CreateDC(2, 2, 8);
    palette.CreateFromDib(section);
    EXPECT_EQ(palette.Count(), 256);
    EXPECT_EQ(dump(palette, 124, 126), "C0FFFF FFFFFF 000000");
    section.CreateDC(2, 2, 24);
    EXPECT_EQ(test::raised([&] { palette.CreateFromDib(section); }),
              "clsPalette.CreateFromDib: Cannot create palette!");
    EXPECT_EQ(palette.Count(), 0);
}

// ---- Reduction, as simple as can be: ranges are halved on the way, nothing is remembered.

struct PlainOctree {
    using Channels = std::array<int, 3>;
    struct Node {
        bool leaf = false, listed = false;
        Channels sums{};
        int count = 0;
        std::array<int, 8> children{};
    };

    void add(const Channels& color) {
        Channels low{}, high{255, 255, 255};
        for (int at = 1, level = 1;; ++level) {
            int position = 0;
            for (int i = 0; i < 3; ++i) {
                const auto middle = static_cast<int>(std::nearbyint(low[i] / 2.0 + high[i] / 2.0));
                const bool upper = color[i] > middle;
                (upper ? low : high)[i] = middle;
                if (upper) position += 1 << i;
            }
            at = childOf(at, position, level);
            Node& node = nodes[at];
            if (node.leaf) {
                if (node.count++ == 0) ++leaves;
                for (int i = 0; i < 3; ++i) node.sums[i] += color[i];
                return;
            }
            if (!std::exchange(node.listed, true)) reducible[level].push_back(at);
        }
    }
    int childOf(int at, int position, int level) {
        if (const int child = nodes[at].children[position]; child != 0) return child;
        if (free.empty()) {
            free.push_back(static_cast<int>(nodes.size()));
            nodes.emplace_back();
        }
        const int child = nodes[at].children[position] = free.back();
        free.pop_back();
        nodes[child].leaf = level == levels;
        return child;
    }
    bool reduce() {
        const auto deepest = std::find_if(reducible.rbegin(), reducible.rend(),
                                          [](const auto& list) { return !list.empty(); });
        if (deepest == reducible.rend()) return false;
        Node& node = nodes[deepest->back()];
        deepest->pop_back();
        for (const int child : std::exchange(node.children, {})) {
            if (child == 0) continue;
            for (int i = 0; i < 3; ++i) node.sums[i] += nodes[child].sums[i];
            node.count += nodes[child].count;
            nodes[child] = Node();
            free.push_back(child);
            --leaves;
        }
        node.leaf = true;
        ++leaves;
        return true;
    }
    clsPalette palette() const {
        clsPalette made;
        for (const Node& node : nodes) {
            const auto average = [&node](int i) {
                return static_cast<std::uint8_t>(
                    std::nearbyint(static_cast<double>(node.sums[i]) / node.count));
            };
            if (node.leaf) made.Add(average(0), average(1), average(2));
        }
        return made;
    }

    int levels, leaves = 0;
    std::vector<Node> nodes = std::vector<Node>(2);
    std::vector<int> free{};
    std::array<std::vector<int>, 9> reducible{};
};

// Pictures of three kinds: noise, a ramp with some noise, and few colours.
void fillPicture(clsDIBSection& section, int kind, std::mt19937& random) {
    for (int y = 0; y < section.Height(); ++y) {
        std::uint8_t* line = section.BitsPtr() + y * section.BytesPerScanLine();
        for (int x = 0; x < section.Width(); ++x) {
            for (int channel = 0; channel < 3; ++channel) {
                const auto noise = static_cast<int>(random() % 256);
                const int ramp = (x * (channel + 1) * 3 + y * 2 + noise / 32) % 256;
                const int flat = (x / 9 * 40 + y / 7 * 70 * channel) % 256;
                line[x * 3 + channel] = static_cast<std::uint8_t>(kind == 0   ? noise
                                                                  : kind == 1 ? ramp
                                                                              : flat);
            }
        }
    }
}

TEST(CreateOptimal, GivesTheResultOfTheSimpleTree) {
    std::mt19937 random(11);
    for (int i = 0; i < 60; ++i) {
        const int levels = 1 + i % 8, most = i % 5 == 0 ? 8 : i % 5 == 1 ? 16 : 40 * (i % 5);
        clsDIBSection section;
        section.CreateDC(61, 47, 24);
        fillPicture(section, i % 3, random);
        PlainOctree tree{levels};
        for (int y = 0; y < 47; ++y) {
            const std::uint8_t* line = section.BitsPtr() + y * section.BytesPerScanLine();
            for (int x = 0; x < 61; ++x, line += 3) {
                tree.add({line[2], line[1], line[0]});
                while (tree.leaves > most && tree.reduce()) {
                }
            }
        }
        clsPalette palette;
        palette.CreateOptimal(section, most, levels);
        EXPECT_LE(palette.Count(), most);
        ASSERT_EQ(dump(palette), dump(tree.palette()))
            << "picture " << i << ", " << levels << " levels, " << most << " colours";
    }
}

clsDIBSection pictureOf(std::initializer_list<Color> colors) {
    clsDIBSection section;
    section.CreateDC(static_cast<int>(colors.size()), 1, 24);
    int x = 0;
    for (const Color color : colors) platform::SetPixel(section.Hdc(), x++, 0, color);
    return section;
}

TEST(CreateOptimal, AveragesTheBoxesInTheOrderTheyCame) {
    clsPalette palette;
    // The first halves end at 128: the middle goes to the lower half.
    palette.CreateOptimal(
        pictureOf({rgb(200, 0, 0), rgb(128, 0, 0), rgb(0, 0, 0), rgb(129, 1, 0), rgb(0, 0, 1)}),
        256, 1);
    EXPECT_EQ(dump(palette), "A40000 2B0000");  // 164.5 and 42.67 red, 0.5 green, 0.33 blue
    palette.CreateOptimal(pictureOf({0, rgb(255, 255, 255)}), 4, 8, sysColor(2));
    EXPECT_EQ(dump(palette), "0A246A 000000 FFFFFF");
    palette.CreateOptimal(pictureOf({0}), 1, 8, -1);  // one of the desktop's, which it lacks
    EXPECT_EQ(dump(palette), "000000 000000");
}

TEST(CreateOptimal, RefusesOtherDepthsAndLevels) {
    clsPalette palette;
    palette.CreateMono2();
    clsDIBSection section;
    const auto refusal = [&](int levels) {
        return test::raised([&] { palette.CreateOptimal(section, 8, levels); });
    };
    const std::string depth = "clsPalette.ApplyPalette: clsPalette.ApplyPalette.DIB Must be 24 bpp";
    EXPECT_EQ(refusal(4), depth);
    section.CreateDC(2, 2, 32);
    EXPECT_EQ(refusal(4), depth);
    section.CreateDC(2, 2, 24);
    for (const int levels : {9, 0, -1, 257}) {
        EXPECT_EQ(refusal(levels),
                  "clsPalette.CreateOptimal: The tree of colours has from 1 to 8 levels!");
    }
    EXPECT_EQ(dump(palette), "000000 FFFFFF");
}

TEST(CreateOptimal, FindsNoColoursInASurfaceWithoutPixels) {
    clsDIBSection section;
    EXPECT_NE(test::raised([&] { section.CreateDC(2, 40'000, 24); }), "nothing");
    EXPECT_EQ(section.Height(), 40'000);
    clsPalette palette;
    palette.CreateOptimal(section, 8, 4, rgb(1, 2, 3));
    EXPECT_EQ(dump(palette), "010203");
}

TEST(CreateOptimal, AsksWhenNothingCanBeJoined) {
    const platform::test::WindowHookScope scope;
    platform::test::DialogScript dialogs;
    struct Stopped {};
    const struct StopHook {
        StopHook() {
            setProgramStop([] { throw Stopped(); });
        }
        ~StopHook() { setProgramStop({}); }
    } hook;
    // Three boxes below the root, of which two may stay: the third pixel and the one after it.
    const clsDIBSection section = pictureOf({0, rgb(255, 0, 0), rgb(0, 255, 0), rgb(0, 255, 0)});
    clsPalette palette;
    dialogs.answerMessageBox(platform::IDYES);
    dialogs.answerMessageBox(platform::IDYES);
    palette.CreateOptimal(section, 2, 1);
    EXPECT_EQ(dump(palette), "000000 FF0000 00FF00");
    const std::string asked = dialogs.log();
    EXPECT_NE(asked.find("Error in reducing nodes"), std::string::npos);
    EXPECT_EQ(std::count(asked.begin(), asked.end(), '\n'), 2) << asked;

    dialogs.answerMessageBox(platform::IDYES);
    dialogs.answerMessageBox(platform::IDNO);
    EXPECT_THROW(palette.CreateOptimal(section, 2, 8), Stopped);
}

}  // namespace
