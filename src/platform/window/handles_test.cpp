#include "platform/window/handles.h"

#include <gtest/gtest.h>
#include <set>

namespace platform {
namespace {

TEST(HandleTable, FindsOnlyWhatIsAliveAndOfItsKind) {
    HandleTable<int> menus(HandleKind::Menu), monitors(HandleKind::Monitor);
    const std::uint32_t menu = menus.add(7), monitor = monitors.add(8);
    ASSERT_NE(menus.find(menu), nullptr);
    EXPECT_EQ(*menus.find(menu), 7);
    EXPECT_EQ(handleKind(menu), HandleKind::Menu);
    EXPECT_EQ(liveHandles(), "menu 1, monitor 1");
    for (const std::uint32_t unknown : {0U, monitor, menu + 1, ~0U, 5U}) {
        EXPECT_EQ(menus.find(unknown), nullptr) << unknown;
        EXPECT_FALSE(menus.remove(unknown)) << unknown;
    }
    EXPECT_TRUE(menus.remove(menu));
    EXPECT_EQ(menus.find(menu), nullptr);
    EXPECT_FALSE(menus.remove(menu));
    EXPECT_TRUE(monitors.remove(monitor));
    EXPECT_EQ(liveHandles(), "");
}

TEST(HandleTable, KeepsAStaleHandleApartFromTheObjectsThatFollow) {
    HandleTable<int> table(HandleKind::Menu);
    const std::uint32_t stale = table.add(1);
    table.remove(stale);
    for (int i = 0; i < 60'000; ++i) {
        const std::uint32_t handle = table.add(i);
        ASSERT_NE(handle, stale);
        ASSERT_GT(static_cast<std::int32_t>(handle), 0);
        ASSERT_EQ(table.find(stale), nullptr);
        table.remove(handle);
    }
}

TEST(HandleTable, IsFullAt65536ObjectsAndWorksOnAfterARemoval) {
    HandleTable<int> table(HandleKind::Menu);
    std::set<std::uint32_t> handles;
    for (int i = 0; i < 65'536; ++i) handles.insert(table.add(i));
    EXPECT_EQ(handles.size(), 65'536U);
    EXPECT_EQ(table.add(0), 0U);
    EXPECT_EQ(handleCount(HandleKind::Menu), 65'536);
    table.remove(*handles.begin());
    EXPECT_NE(table.add(0), 0U);
    table.forEach([&](std::uint32_t handle, int&) { table.remove(handle); });
    EXPECT_EQ(handleCount(HandleKind::Menu), 0);
}

}  // namespace
}  // namespace platform
