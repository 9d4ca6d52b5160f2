#include "desktop/program/ExitAct.h"

#include <gtest/gtest.h>

#include <QtGlobal>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <future>

namespace tolvane::desktop {
namespace {

/// Death tests start a fresh process, because this one has threads.
struct ExitActDeathTest : ::testing::Test {
    ExitActDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    static void tell() { std::fputs("given back", stderr); }
};

TEST_F(ExitActDeathTest, isDoneWhenSomethingEndsTheProcess) {
    const auto endWithout = [] {
        const ExitAct act(&tell);
        std::exit(3);
    };
    EXPECT_EXIT(endWithout(), ::testing::ExitedWithCode(3), "given back");
}

TEST_F(ExitActDeathTest, isNotDoneOnceItsOwnerIsGone) {
    const auto endInOrder = [] {
        {
            const ExitAct act(&tell);
        }
        std::exit(3);
    };
    EXPECT_EXIT(endInOrder(), ::testing::ExitedWithCode(3), "^$");
}

TEST_F(ExitActDeathTest, isDoneOnce) {
    const auto endWithTwo = [] {
        {
            const ExitAct first(&tell);
        }
        const ExitAct second(&tell);
        std::exit(3);
    };
    EXPECT_EXIT(endWithTwo(), ::testing::ExitedWithCode(3), "^given back$");
}

TEST(ExitAct, isDoneAtTheWarningThatACompositorIsGone) {
    int done = 0;
    {
        const ExitAct act([&done] { ++done; });
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

TEST(ExitAct, nobodyWhoHearsOfTheEndGoesOnBeforeItIsDone) {
    const auto hear = [] { qWarning("The Wayland connection broke. Did the Wayland compositor die?"); };
    std::future<void> other;
    bool wentOn = false;
    const ExitAct act([&] {
        other = std::async(std::launch::async, hear);
        wentOn = other.wait_for(std::chrono::milliseconds(100)) == std::future_status::ready;
    });
    hear();
    EXPECT_FALSE(wentOn);
    other.get();
}

}  // namespace
}  // namespace tolvane::desktop
