#include "desktop/LastDeed.h"

#include <gtest/gtest.h>

#include <QtGlobal>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <future>

namespace tolvane::desktop {
namespace {

/// In a process of its own, which begins anew: this one has threads.
struct LastDeedDeathTest : ::testing::Test {
    LastDeedDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    static void tell() { std::fputs("given back", stderr); }
};

TEST_F(LastDeedDeathTest, isDoneWhenSomethingEndsTheProcess) {
    const auto endWithout = [] {
        const LastDeed deed(&tell);
        std::exit(3);
    };
    EXPECT_EXIT(endWithout(), ::testing::ExitedWithCode(3), "given back");
}

TEST_F(LastDeedDeathTest, isNotDoneOnceItsOwnerIsGone) {
    const auto endInOrder = [] {
        {
            const LastDeed deed(&tell);
        }
        std::exit(3);
    };
    EXPECT_EXIT(endInOrder(), ::testing::ExitedWithCode(3), "^$");
}

TEST_F(LastDeedDeathTest, isDoneOnce) {
    const auto endWithTwo = [] {
        {
            const LastDeed first(&tell);
        }
        const LastDeed second(&tell);
        std::exit(3);
    };
    EXPECT_EXIT(endWithTwo(), ::testing::ExitedWithCode(3), "^given back$");
}

TEST(LastDeed, isDoneAtTheWarningThatACompositorIsGone) {
    int done = 0;
    {
        const LastDeed deed([&done] { ++done; });
        qWarning("The layout is broken");
        EXPECT_EQ(done, 0);
        qWarning("The Wayland connection broke. Did the Wayland compositor die?");
        EXPECT_EQ(done, 1);
        qWarning("The Wayland connection broke. Did the Wayland compositor die?");
        EXPECT_EQ(done, 1);
    }
    qWarning("The Wayland connection broke. Did the Wayland compositor die?");
    EXPECT_EQ(done, 1);
}

TEST(LastDeed, nobodyWhoHearsOfTheEndGoesOnBeforeItIsDone) {
    const auto hear = [] { qWarning("The Wayland connection broke. Did the Wayland compositor die?"); };
    std::future<void> other;
    bool wentOn = false;
    const LastDeed deed([&] {
        other = std::async(std::launch::async, hear);
        wentOn = other.wait_for(std::chrono::milliseconds(100)) == std::future_status::ready;
    });
    hear();
    EXPECT_FALSE(wentOn);
    other.get();
}

}  // namespace
}  // namespace tolvane::desktop
