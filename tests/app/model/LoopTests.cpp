#include "tests/app/ModelTest.h"

namespace tolvane {
namespace {

using namespace std::chrono_literals;

using LoopTest = ModelTest;

TEST_F(LoopTest, ticksAtOnce) {
    world.add(7, "node");
    start();
    EXPECT_EQ(ticks(), 1U);
    EXPECT_EQ(model->snapshot->date, clock.now());
    EXPECT_TRUE(row(7));
}

TEST_F(LoopTest, ticksOnceAMinuteUntilAWindowIsSeen) {
    start();
    clock.advance(59.9s);
    EXPECT_EQ(ticks(), 1U);
    clock.advance(0.1s);
    EXPECT_EQ(ticks(), 2U);
    clock.advance(600s);
    EXPECT_EQ(ticks(), 12U);
}

TEST_F(LoopTest, theFirstLoopDoesNotAskWhetherAWindowIsThereAlready) {
    world.windowVisible = true;
    start();
    EXPECT_EQ(clock.latestDelay(), 60s);
}

TEST_F(LoopTest, theClockMayBeLateByAFifth) {
    start();
    EXPECT_EQ(clock.latestDelay(), 60s);
    EXPECT_EQ(clock.latestTolerance(), 12s);
    world.showWindow(true);
    EXPECT_EQ(clock.latestDelay(), 5s);
    EXPECT_EQ(clock.latestTolerance(), 1s);
}

TEST_F(LoopTest, aWindowThatComesIntoViewIsFreshAtOnce) {
    start();
    clock.advance(20s);
    world.showWindow(true);
    EXPECT_EQ(ticks(), 2U);
    EXPECT_EQ(model->snapshot->date, clock.now());
    clock.advance(5s);
    EXPECT_EQ(ticks(), 3U);
}

TEST_F(LoopTest, aWindowThatGoesOutOfViewLetsTheSleepRunOut) {
    start();
    world.showWindow(true);
    clock.advance(2s);
    world.showWindow(false);
    EXPECT_EQ(ticks(), 2U);
    clock.advance(3s);
    EXPECT_EQ(ticks(), 3U);
    EXPECT_EQ(clock.latestDelay(), 60s);
}

TEST_F(LoopTest, aChangeAmongWindowsThatLeavesOneInViewDoesNothing) {
    start();
    world.showWindow(true);
    world.showWindow(true);
    EXPECT_EQ(ticks(), 2U);
    EXPECT_EQ(clock.waiting(), 1U);
    world.showWindow(false);
    world.showWindow(false);
    EXPECT_EQ(ticks(), 2U);
}

TEST_F(LoopTest, thePaceIsTheUsersWhileAWindowIsSeen) {
    world.preferences["openInterval"] = std::int64_t{7};
    start();
    world.showWindow(true);
    EXPECT_EQ(clock.latestDelay(), 7s);
    clock.advance(6.9s);
    EXPECT_EQ(ticks(), 2U);
    clock.advance(0.1s);
    EXPECT_EQ(ticks(), 3U);
}

TEST_F(LoopTest, aPaceOfAnotherTypeCountsAsFive) {
    for (const PreferenceValue& odd :
         {PreferenceValue(2.0), PreferenceValue(std::string("2")), PreferenceValue(true)}) {
        world.preferences["openInterval"] = odd;
        world.windowVisible = false;
        start();
        world.showWindow(true);
        EXPECT_EQ(clock.latestDelay(), 5s);
    }
}

TEST_F(LoopTest, aChangeOfPaceTakesEffectAtTheNextSleep) {
    start();
    world.showWindow(true);
    world.preferences["openInterval"] = std::int64_t{2};
    clock.advance(4s);
    EXPECT_EQ(ticks(), 2U);
    clock.advance(1s);
    EXPECT_EQ(ticks(), 3U);
    EXPECT_EQ(clock.latestDelay(), 2s);
}

TEST_F(LoopTest, pressureTicksAtOnceAndTheNextSleepStartsFromThere) {
    start();
    clock.advance(50s);
    world.press();
    EXPECT_EQ(ticks(), 2U);
    EXPECT_EQ(clock.waiting(), 1U);
    clock.advance(59s);
    EXPECT_EQ(ticks(), 2U);
    clock.advance(1s);
    EXPECT_EQ(ticks(), 3U);
}

TEST_F(LoopTest, aBurstOfPressureLeavesOneLoop) {
    start();
    for (int count = 0; count < 10; ++count) world.press();
    EXPECT_EQ(ticks(), 11U);
    EXPECT_EQ(clock.waiting(), 1U);
    clock.advance(60s);
    EXPECT_EQ(ticks(), 12U);
}

TEST_F(LoopTest, theDemoNeverTicks) {
    startDemo();
    world.press();
    world.showWindow(true);
    clock.advance(600s);
    EXPECT_EQ(ticks(), 0U);
    EXPECT_EQ(clock.waiting(), 0U);
    EXPECT_TRUE(model->demo());
}

TEST_F(LoopTest, aModelThatGoesInItsSleepLeavesNothingBehind) {
    start();
    model.reset();
    EXPECT_EQ(clock.waiting(), 0U);
    clock.advance(600s);
    EXPECT_EQ(ticks(), 1U);
}

TEST_F(LoopTest, eventsAfterTheModelWentFindNobody) {
    start();
    model.reset();
    world.press();
    world.showWindow(true);
    world.activate("/Applications/Mail.app");
    EXPECT_EQ(ticks(), 1U);
    EXPECT_TRUE(world.pressureObservers.empty());
    EXPECT_TRUE(world.windowObservers.empty());
    EXPECT_TRUE(world.activationObservers.empty());
}

/// Samples arrive only when the test lets them.
struct SlowLoopTest : ModelTest {
    fakes::HeldJobs samples;

    void startSlowly() {
        start(samples.factory());
        // Otherwise the first tick would ask for services as well.
        modelState->servicesChecked.set(clock.now());
    }
};

TEST_F(SlowLoopTest, sleepsOnlyAfterTheTick) {
    startSlowly();
    EXPECT_EQ(samples.waiting(), 1U);
    clock.advance(240s);
    EXPECT_EQ(samples.waiting(), 1U);
    EXPECT_EQ(clock.waiting(), 0U);
    samples.runNext();
    EXPECT_EQ(clock.waiting(), 1U);
}

TEST_F(SlowLoopTest, aRestartDuringASampleOverlapsTwoTicksAndLeavesOneLoop) {
    startSlowly();
    const Date first = clock.now();
    world.press();
    EXPECT_EQ(samples.waiting(), 2U);
    samples.runNext();
    EXPECT_EQ(model->snapshot->date, first);
    EXPECT_EQ(clock.waiting(), 0U);
    clock.advance(1s);
    samples.runNext();
    EXPECT_EQ(model->snapshot->date, first + 1s);
    EXPECT_EQ(clock.waiting(), 1U);
    EXPECT_EQ(model->loadHistory->size(), 2U);
}

TEST_F(SlowLoopTest, aCancelledLoopStillFinishesItsTick) {
    startSlowly();
    world.add(7, "node").usage->footprint = 100 * MiB;
    world.press();
    samples.runNext();
    EXPECT_EQ(model->historyFor({7}).size(), 1U);
}

// The rows cannot show that no other sample carries the activation; the memory test over ten thousand ticks does.
TEST_F(SlowLoopTest, anActivationGoesWithTheNextSampleThatIsAskedFor) {
    addApp(7, "/Applications/Mail.app");
    startSlowly();
    samples.runNext();
    clock.advance(10s);
    const Date activated = clock.now();
    world.activate("/Applications/Mail.app");
    world.press();
    world.press();
    samples.runNext();
    EXPECT_EQ(row(7)->unusedSince, activated);
    clock.advance(10s);
    const Date later = clock.now();
    world.activate("/Applications/Mail.app");
    samples.runNext();
    EXPECT_EQ(row(7)->unusedSince, activated);
    clock.advance(60s);
    samples.runNext();
    EXPECT_EQ(row(7)->unusedSince, later);
    clock.advance(60s);
    samples.runNext();
    EXPECT_EQ(row(7)->unusedSince, later);
}

TEST_F(SlowLoopTest, aModelThatGoesDuringASampleIsNotResumedInto) {
    startSlowly();
    EXPECT_EQ(samples.waiting(), 1U);
    model.reset();
    EXPECT_EQ(samples.waiting(), 0U);
    EXPECT_EQ(ticks(), 0U);
    EXPECT_EQ(clock.waiting(), 0U);
}

TEST_F(SlowLoopTest, aModelThatGoesWithTwoTicksUnderWayIsNotResumedInto) {
    startSlowly();
    world.press();
    world.showWindow(true);
    EXPECT_EQ(samples.waiting(), 3U);
    samples.runNext();
    model.reset();
    EXPECT_EQ(samples.waiting(), 0U);
    EXPECT_EQ(ticks(), 1U);
}

}  // namespace
}  // namespace tolvane
