#include "platform/linux/machine/LinuxClock.h"

#include <gmock/gmock.h>

#include <ctime>
#include <filesystem>
#include <fstream>
#include <limits>
#include <optional>
#include <sstream>

#include "platform/linux/machine/LinuxClockFacts.h"
#include "tests/platform/linux/EventLoop.h"

namespace tolvane::linuxhost {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using namespace std::chrono_literals;

namespace {

/// The kernel's list of this program's timers, one text each.
std::vector<std::string> timers() {
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fdinfo")) {
        std::ostringstream text;
        text << std::ifstream(entry.path()).rdbuf();
        if (text.str().find("clockid: 7") != std::string::npos) found.push_back(text.str());
    }
    return found;
}

struct Calls {
    std::vector<int> made;

    auto noting(int number) {
        return [this, number] { made.push_back(number); };
    }
    bool are(std::size_t count) const { return made.size() == count; }
};

}  // namespace

TEST(LinuxClock, tellsTheWallClocksTime) {
    const double before = static_cast<double>(std::time(nullptr));
    const double now = unixSeconds(LinuxClock().now());
    EXPECT_GE(now, before);
    EXPECT_LE(now, before + 60);
}

TEST(LinuxClock, tellsASteadyTimeToo) {
    const LinuxClock clock;
    const auto first = clock.steadyTime();
    EXPECT_GT(first, Seconds{0});
    EXPECT_LE(first, clock.steadyTime());
    EXPECT_NEAR(clock.steadyTime().count(), uptime().count(), 1);
}

TEST(LinuxClock, callsBackOnceAndNotEarly) {
    LinuxClock clock;
    Calls calls;
    QElapsedTimer elapsed;
    elapsed.start();
    const auto waiting = clock.after(Seconds{0.03}, Seconds{0}, calls.noting(1));
    ASSERT_TRUE(runUntil([&] { return calls.are(1); }));
    EXPECT_GE(elapsed.elapsed(), 30);
    runFor(40ms);
    EXPECT_TRUE(calls.are(1));
}

TEST(LinuxClock, callsBackInTheOrderOfTheTimes) {
    LinuxClock clock;
    Calls calls;
    const auto late = clock.after(Seconds{0.04}, Seconds{0}, calls.noting(40));
    const auto early = clock.after(Seconds{0.01}, Seconds{0}, calls.noting(10));
    const auto middle = clock.after(Seconds{0.02}, Seconds{0}, calls.noting(20));
    ASSERT_TRUE(runUntil([&] { return calls.are(3); }));
    EXPECT_THAT(calls.made, ElementsAre(10, 20, 40));
}

TEST(LinuxClock, noDelayCallsBackFromTheEventLoopOnly) {
    LinuxClock clock;
    Calls calls;
    const auto first = clock.after(Seconds{0}, Seconds{0}, calls.noting(1));
    const auto second = clock.after(Seconds{-5}, Seconds{0}, calls.noting(2));
    EXPECT_THAT(calls.made, IsEmpty());
    EXPECT_TRUE(runUntil([&] { return calls.are(2); }));
}

TEST(LinuxClock, endingTheSubscriptionCancelsTheCall) {
    LinuxClock clock;
    Calls calls;
    auto ended = clock.after(Seconds{0.01}, Seconds{0}, calls.noting(1));
    const auto kept = clock.after(Seconds{0.03}, Seconds{0}, calls.noting(2));
    ended.reset();
    ASSERT_TRUE(runUntil([&] { return !calls.made.empty(); }));
    EXPECT_THAT(calls.made, ElementsAre(2));
}

TEST(LinuxClock, aCallMayCancelAnotherThatIsDueToo) {
    LinuxClock clock;
    Calls calls;
    Subscription second;
    const auto first = clock.after(Seconds{0}, Seconds{0}, [&] {
        calls.made.push_back(1);
        second.reset();
    });
    second = clock.after(Seconds{0}, Seconds{0}, calls.noting(2));
    runFor(30ms);
    EXPECT_THAT(calls.made, ElementsAre(1));
}

TEST(LinuxClock, aCallMayWaitAgain) {
    LinuxClock clock;
    Calls calls;
    Subscription waiting;
    std::function<void()> again = [&] {
        calls.made.push_back(1);
        if (!calls.are(3)) waiting = clock.after(Seconds{0.005}, Seconds{0}, again);
    };
    waiting = clock.after(Seconds{0.005}, Seconds{0}, again);
    EXPECT_TRUE(runUntil([&] { return calls.are(3); }));
}

TEST(LinuxClock, aCallMayEndTheClock) {
    std::optional<LinuxClock> clock(std::in_place);
    bool called = false;
    const auto waiting = clock->after(Seconds{0}, Seconds{0}, [&] {
        clock.reset();
        called = true;
    });
    ASSERT_TRUE(runUntil([&] { return called; }));
    runFor(5ms);
    EXPECT_THAT(timers(), IsEmpty());
}

TEST(LinuxClock, theSubscriptionMayOutliveTheClock) {
    Subscription waiting;
    {
        LinuxClock clock;
        waiting = clock.after(Seconds{0.01}, Seconds{0}, [] { FAIL(); });
    }
    waiting.reset();
    runFor(20ms);
}

TEST(LinuxClock, oneTimerThatCountsSleepServesAllWaiters) {
    LinuxClock clock;
    EXPECT_THAT(timers(), IsEmpty());
    const auto first = clock.after(Seconds{60}, Seconds{12}, [] {});
    const auto second = clock.after(Seconds{5}, Seconds{1}, [] {});
    EXPECT_EQ(timers().size(), 1U);
}

TEST(LinuxClock, theTimerStandsStillWhileNobodyWaits) {
    LinuxClock clock;
    auto waiting = clock.after(Seconds{60}, Seconds{12}, [] {});
    ASSERT_EQ(timers().size(), 1U);
    EXPECT_THAT(timers().front(), ::testing::Not(HasSubstr("it_value: (0, 0)")));
    waiting.reset();
    EXPECT_THAT(timers().front(), HasSubstr("it_value: (0, 0)"));
}

TEST(LinuxClock, waitersWithinOneAnothersToleranceShareAWakeUp) {
    LinuxClock clock;
    Calls calls;
    const auto exact = clock.after(Seconds{0.05}, Seconds{0}, calls.noting(2));
    const auto lenient = clock.after(Seconds{0.02}, Seconds{10}, calls.noting(1));
    ASSERT_TRUE(runUntil([&] { return !calls.made.empty(); }));
    EXPECT_THAT(calls.made, ElementsAre(1, 2));
}

TEST(LinuxClock, endlessAndMeaninglessDelaysHarmNothing) {
    LinuxClock clock;
    Calls calls;
    const auto endless = clock.after(Seconds{std::numeric_limits<double>::infinity()}, Seconds{0}, calls.noting(1));
    const auto huge = clock.after(Seconds{1e300}, Seconds{1e300}, calls.noting(2));
    const auto none = clock.after(Seconds{std::numeric_limits<double>::quiet_NaN()}, Seconds{0}, calls.noting(3));
    ASSERT_TRUE(runUntil([&] { return !calls.made.empty(); }));
    EXPECT_THAT(calls.made, ElementsAre(3));
}

TEST(RoundestMoment, takesTheCoarsestGridWithinTheTolerance) {
    EXPECT_EQ(roundestMoment(Seconds{65.3}, Seconds{77.3}), Seconds{72});
    EXPECT_EQ(roundestMoment(Seconds{60.1}, Seconds{72.1}), Seconds{64});
    EXPECT_EQ(roundestMoment(Seconds{65.3}, Seconds{66.3}), Seconds{66});
    EXPECT_EQ(roundestMoment(Seconds{65.3}, Seconds{65.7}), Seconds{65.5});
}

TEST(RoundestMoment, withoutToleranceItIsTheMomentItself) {
    EXPECT_EQ(roundestMoment(Seconds{65.3}, Seconds{65.3}), Seconds{65.3});
    EXPECT_EQ(roundestMoment(Seconds{65.3}, Seconds{65.301}), Seconds{65.3});
}

TEST(RoundestMoment, neverLeavesTheSpan) {
    for (double due = 0.1; due < 300; due += 7.3) {
        for (const double tolerance : {0.0, 0.01, 0.4, 1.0, 2.0, 12.0, 100.0}) {
            const Seconds moment = roundestMoment(Seconds{due}, Seconds{due + tolerance});
            EXPECT_GE(moment.count(), due);
            EXPECT_LE(moment.count(), due + tolerance);
        }
    }
}

}  // namespace tolvane::linuxhost
