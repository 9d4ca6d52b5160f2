#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "tests/platform/macos/FakeRuntime.h"

namespace tolvane::machost {

/// A fake runtime, and a main thread that runs its jobs when the test says so.
class FrameworksTest : public ::testing::Test {
protected:
    ~FrameworksTest() override {
        EXPECT_EQ(fake_.openPools, 0);
        EXPECT_THAT(fake_.leaked(), ::testing::IsEmpty());
    }

    std::function<void(std::function<void()>)> onMain() {
        return [this](std::function<void()> job) { jobs_.push_back(std::move(job)); };
    }
    void runMain() {
        for (const auto& job : std::exchange(jobs_, {})) job();
    }

    FakeRuntime fake_;
    std::vector<std::function<void()>> jobs_;
};

}  // namespace tolvane::machost
