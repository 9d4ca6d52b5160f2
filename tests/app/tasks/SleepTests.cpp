#include "app/tasks/Sleep.h"

#include <gtest/gtest.h>

#include <QCoroTask>
#include <optional>
#include <vector>

#include "app/tasks/CancelSource.h"
#include "tests/fakes/VirtualClock.h"

namespace tolvane {
namespace {

using namespace std::chrono_literals;

struct SleepTest : testing::Test {
    fakes::VirtualClock clock;
    CancelSource source;
    std::optional<Awoken> awoken;
    int wakes = 0;

    QCoro::Task<> nap(Seconds delay) {
        awoken = co_await Sleep(clock, delay, delay / 5, source.token());
        ++wakes;
    }
};

TEST_F(SleepTest, wakesWhenTheTimePassed) {
    nap(10s);
    clock.advance(9.9s);
    EXPECT_FALSE(awoken);
    clock.advance(0.1s);
    EXPECT_EQ(awoken, Awoken::timePassed);
}

TEST_F(SleepTest, givesTheClockItsTolerance) {
    nap(10s);
    EXPECT_EQ(clock.latestDelay(), 10s);
    EXPECT_EQ(clock.latestTolerance(), 2s);
}

TEST_F(SleepTest, cancellingWakesAtOnce) {
    nap(10s);
    source.cancel();
    EXPECT_EQ(awoken, Awoken::cancelled);
}

TEST_F(SleepTest, aCancelledSleepLeavesNothingOnTheClock) {
    nap(10s);
    EXPECT_EQ(clock.waiting(), 1U);
    source.cancel();
    EXPECT_EQ(clock.waiting(), 0U);
    clock.advance(60s);
    EXPECT_EQ(wakes, 1);
}

TEST_F(SleepTest, cancellingAfterTheTimePassedDoesNothing) {
    nap(10s);
    clock.advance(10s);
    source.cancel();
    EXPECT_EQ(awoken, Awoken::timePassed);
    EXPECT_EQ(wakes, 1);
}

TEST_F(SleepTest, doesNotBeginOnceCancelled) {
    source.cancel();
    nap(10s);
    EXPECT_EQ(awoken, Awoken::cancelled);
    EXPECT_EQ(clock.waiting(), 0U);
}

TEST_F(SleepTest, renewingTheSourceEndsTheEarlierSleepsOnly) {
    nap(10s);
    source.renew();
    EXPECT_EQ(wakes, 1);
    nap(10s);
    EXPECT_EQ(wakes, 1);
    clock.advance(10s);
    EXPECT_EQ(awoken, Awoken::timePassed);
}

TEST_F(SleepTest, cancellingWakesEverySleeper) {
    for (int count = 0; count < 100; ++count) nap(Seconds{1.0 + count});
    source.cancel();
    EXPECT_EQ(wakes, 100);
    EXPECT_EQ(clock.waiting(), 0U);
}

TEST_F(SleepTest, aSourceThatGoesWakesItsSleepers) {
    std::optional<CancelSource> brief(std::in_place);
    const auto sleep = [&](std::stop_token token) -> QCoro::Task<> {
        awoken = co_await Sleep(clock, 10s, 0s, std::move(token));
    };
    sleep(brief->token());
    brief.reset();
    EXPECT_EQ(awoken, Awoken::cancelled);
}

TEST_F(SleepTest, aSleeperMayCancelItsOwnSourceAndSleepAgain) {
    std::vector<Awoken> all;
    const auto restless = [&]() -> QCoro::Task<> {
        all.push_back(co_await Sleep(clock, 1s, 0s, source.token()));
        source.renew();
        all.push_back(co_await Sleep(clock, 1s, 0s, source.token()));
    };
    restless();
    nap(5s);
    clock.advance(1s);
    EXPECT_EQ(awoken, Awoken::cancelled);
    clock.advance(1s);
    EXPECT_EQ(all, (std::vector{Awoken::timePassed, Awoken::timePassed}));
}

TEST_F(SleepTest, aCallerThatAwaitsTheSleeperGoesOnToo) {
    bool over = false;
    const auto outer = [&]() -> QCoro::Task<> {
        co_await nap(10s);
        over = true;
    };
    outer();
    source.cancel();
    EXPECT_TRUE(over);
}

TEST_F(SleepTest, sleepingAgainAndAgainKeepsTime) {
    const Date start = clock.now();
    std::vector<Date> wokenAt;
    const auto regular = [&]() -> QCoro::Task<> {
        while (co_await Sleep(clock, 5s, 1s, source.token()) == Awoken::timePassed) wokenAt.push_back(clock.now());
    };
    regular();
    clock.advance(15s);
    EXPECT_EQ(wokenAt, (std::vector{start + 5s, start + 10s, start + 15s}));
}

}  // namespace
}  // namespace tolvane
