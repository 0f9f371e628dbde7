// Every test of a program that links this ends with the handles it began with, or fails.
#include "platform/window/handles.h"

#include <gtest/gtest.h>

namespace {

class HandleLeakCheck : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override { m_before = platform::liveHandles(); }
    void OnTestEnd(const testing::TestInfo&) override {
        EXPECT_EQ(platform::liveHandles(), m_before) << "handles left over";
    }
    std::string m_before;
};

// gtest owns and deletes its listeners.
[[maybe_unused]] const bool entered = [] {
    testing::UnitTest::GetInstance()->listeners().Append(new HandleLeakCheck);
    return true;
}();

}  // namespace
