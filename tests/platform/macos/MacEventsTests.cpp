// Memory pressure, waits, signals to quit: all of them event sources.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <csignal>
#include <limits>

#include "platform/macos/dispatch/MacClock.h"
#include "platform/macos/dispatch/MacMemoryPressure.h"
#include "platform/macos/dispatch/QuitSignals.h"
#include "tests/platform/macos/FakeDispatch.h"

namespace tolvane::machost {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::IsEmpty;
using ::testing::Pair;

class MacEventsTest : public ::testing::Test {
protected:
    std::function<void()> count() {
        return [this] { ++calls_; };
    }

    FakeDispatch fake_;
    int calls_ = 0;
};

TEST_F(MacEventsTest, pressureIsHeardAtWarningAndCritical) {
    MacMemoryPressure pressure(fake_.table(), fake_.onMain());
    const auto subscription = pressure.onPressure(count());
    ASSERT_EQ(fake_.sources.size(), 1U);
    EXPECT_EQ(fake_.sources[0].kind, SourceKind::memoryPressure);
    EXPECT_EQ(fake_.sources[0].mask, 6U);
    EXPECT_TRUE(fake_.sources[0].resumed);
}

TEST_F(MacEventsTest, eachEventCallsOnTheMainThread) {
    MacMemoryPressure pressure(fake_.table(), fake_.onMain());
    const auto subscription = pressure.onPressure(count());
    fake_.fire(0);
    fake_.fire(0);
    EXPECT_EQ(calls_, 0);
    fake_.runMain();
    EXPECT_EQ(calls_, 2);
}

TEST_F(MacEventsTest, anEventThatIsOnItsWayAtTheEndIsDropped) {
    MacMemoryPressure pressure(fake_.table(), fake_.onMain());
    auto subscription = pressure.onPressure(count());
    fake_.fire(0);
    subscription.reset();
    fake_.runMain();
    EXPECT_EQ(calls_, 0);
    EXPECT_TRUE(fake_.sources[0].cancelledOnce);
    EXPECT_TRUE(fake_.sources[0].released);
}

TEST_F(MacEventsTest, aListenerMayEndItselfWhileItIsCalled) {
    MacMemoryPressure pressure(fake_.table(), fake_.onMain());
    Subscription subscription;
    subscription = pressure.onPressure([&] {
        subscription.reset();
        ++calls_;
    });
    fake_.fire(0);
    fake_.runMain();
    EXPECT_EQ(calls_, 1);
}

TEST_F(MacEventsTest, aSystemWithoutTheSourceNeverCalls) {
    fake_.givesSources = false;
    MacMemoryPressure pressure(fake_.table(), fake_.onMain());
    auto subscription = pressure.onPressure(count());
    subscription.reset();
    EXPECT_THAT(fake_.jobs, IsEmpty());
}

TEST_F(MacEventsTest, aWaitIsATimerWithItsTolerance) {
    MacClock clock(fake_.table(), fake_.onMain());
    const auto wait = clock.after(Seconds{5}, Seconds{1}, count());
    ASSERT_EQ(fake_.sources.size(), 1U);
    EXPECT_EQ(fake_.sources[0].kind, SourceKind::timer);
    EXPECT_EQ(fake_.sources[0].delay, 5'000'000'000);
    EXPECT_EQ(fake_.sources[0].leeway, 1'000'000'000U);
    fake_.fire(0);
    fake_.runMain();
    EXPECT_EQ(calls_, 1);
}

TEST_F(MacEventsTest, aWaitIsNeverShorterThanAskedFor) {
    MacClock clock(fake_.table(), fake_.onMain());
    const auto wait = clock.after(Seconds{1.0000000001}, Seconds{0}, count());
    EXPECT_EQ(fake_.sources[0].delay, 1'000'000'001);
}

TEST_F(MacEventsTest, waitsThatMakeNoSenseHaveAnEnd) {
    MacClock clock(fake_.table(), fake_.onMain());
    const auto past = clock.after(Seconds{-5}, Seconds{-1}, count());
    const auto never = clock.after(Seconds{1e300}, Seconds{0}, count());
    const auto none = clock.after(Seconds{std::nan("")}, Seconds{0}, count());
    EXPECT_EQ(fake_.sources[0].delay, 0);
    EXPECT_EQ(fake_.sources[0].leeway, 0U);
    EXPECT_EQ(fake_.sources[1].delay, 1'000'000'000'000'000'000);
    EXPECT_EQ(fake_.sources[2].delay, 0);
}

TEST_F(MacEventsTest, aWaitThatWasEndedDoesNotCall) {
    MacClock clock(fake_.table(), fake_.onMain());
    auto wait = clock.after(Seconds{5}, Seconds{0}, count());
    fake_.fire(0);
    wait.reset();
    fake_.runMain();
    EXPECT_EQ(calls_, 0);
}

TEST_F(MacEventsTest, theClockTellsTheTime) {
    const MacClock clock(fake_.table(), fake_.onMain());
    const auto early = dateFromUnixSeconds(static_cast<double>(std::time(nullptr)));
    EXPECT_GE(clock.now(), early);
    EXPECT_LE(clock.now(), early + Seconds{60});
}

TEST_F(MacEventsTest, threeSignalsAskToQuit) {
    auto subscription = onQuitSignal(fake_.table(), fake_.onMain(), count());
    ASSERT_EQ(fake_.sources.size(), 3U);
    EXPECT_THAT(fake_.sources, Each(Field(&FakeSource::kind, SourceKind::signal)));
    EXPECT_THAT(fake_.caught, ElementsAre(Pair(SIGHUP, true), Pair(SIGINT, true), Pair(SIGTERM, true)));
    EXPECT_EQ(fake_.sources[0].handle, static_cast<std::uintptr_t>(SIGTERM));
    fake_.fire(1);
    fake_.runMain();
    EXPECT_EQ(calls_, 1);
    subscription.reset();
    EXPECT_THAT(fake_.caught, Each(Field(&std::pair<const int, bool>::second, false)));
    EXPECT_THAT(fake_.sources, Each(Field(&FakeSource::released, true)));
}

}  // namespace
}  // namespace tolvane::machost
