#include "tests/app/ModelTest.h"

namespace tolvane {
namespace {

using namespace std::chrono_literals;

struct TickTest : ModelTest {
    void setSwap(std::uint64_t used) { world.swapUsage = SwapUsage{.total = 16 * GiB, .used = used}; }
    void setSwapIns(std::uint64_t bytes) {
        world.virtualMemory = VirtualMemoryCounters{.swapIns = bytes / world.pageSize};
    }
};

TEST_F(TickTest, publishesTheSnapshotOnce) {
    start();
    int changes = 0;
    const auto notifier = model->snapshot.onChange([&] { ++changes; });
    clock.advance(60s);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(model->snapshot->date, clock.now());
}

TEST_F(TickTest, judgesSwapOverAQuarterOfAnHour) {
    setSwap(GiB);
    start();
    EXPECT_FALSE(*model->swapGrowth);
    clock.advance(540s);
    EXPECT_FALSE(*model->swapGrowth);
    clock.advance(60s);
    EXPECT_EQ(*model->swapGrowth, 0);
    setSwap(GiB + 300 * MiB);
    clock.advance(60s);
    EXPECT_EQ(*model->swapGrowth, std::int64_t{300 * MiB});
    EXPECT_FALSE(*model->memoryTight);
    setSwap(GiB + 512 * MiB);
    clock.advance(60s);
    EXPECT_EQ(*model->swapGrowth, std::int64_t{512 * MiB});
    EXPECT_TRUE(*model->memoryTight);
    clock.advance(960s);
    EXPECT_EQ(*model->swapGrowth, 0);
    EXPECT_FALSE(*model->memoryTight);
}

TEST_F(TickTest, judgesWhatIsReadBackFromSwap) {
    setSwapIns(GiB);
    start();
    EXPECT_FALSE(*model->readBack);
    clock.advance(900s);
    EXPECT_EQ(*model->readBack, 0U);
    setSwapIns(GiB + 600 * MiB);
    clock.advance(60s);
    EXPECT_EQ(*model->readBack, 600 * MiB);
    EXPECT_TRUE(*model->memoryTight);
}

TEST_F(TickTest, pressureAloneMakesMemoryTight) {
    start();
    EXPECT_FALSE(*model->memoryTight);
    world.pressureLevel = 2;
    world.press();
    EXPECT_TRUE(*model->memoryTight);
    world.pressureLevel = 1;
    clock.advance(60s);
    EXPECT_FALSE(*model->memoryTight);
}

TEST_F(TickTest, pausedRulesPauseNothingElse) {
    world.preferences["rulesPaused"] = true;
    world.add(7, "node").usage->footprint = 100 * MiB;
    setSwap(GiB);
    start();
    ASSERT_TRUE(lowerPriority({7}));
    clock.advance(900s);
    setSwap(2 * GiB);
    burn(7, 50, 60s);
    clock.advance(60s);
    EXPECT_TRUE(*model->rulesPaused);
    EXPECT_EQ(model->historyFor({7}).size(), 17U);
    EXPECT_EQ(model->moments->size(), 17U);
    EXPECT_EQ(*model->swapGrowth, std::int64_t{GiB});
    EXPECT_TRUE(*model->memoryTight);
    EXPECT_TRUE(model->lowered->empty());
}

TEST_F(TickTest, aLoweredProcessThatIsUsedGetsItsPriorityBack) {
    world.add(7, "node");
    start();
    ASSERT_TRUE(lowerPriority({7}));
    clock.advance(60s);
    EXPECT_EQ(world.timesAsked("restore 7"), 0U);
    burn(7, 50, 60s);
    clock.advance(60s);
    EXPECT_EQ(world.timesAsked("restore 7"), 1U);
    EXPECT_TRUE(model->lowered->empty());
}

TEST_F(TickTest, aLoweredProcessThatIsUsedAfterTheClockWasSetBackGetsItsPriorityBack) {
    world.add(7, "node");
    start();
    ASSERT_TRUE(lowerPriority({7}));
    clock.setTo(clock.now() - 24h);
    clock.advance(60s);
    EXPECT_EQ(world.timesAsked("restore 7"), 0U);
    burn(7, 50, 60s);
    clock.advance(60s);
    EXPECT_EQ(world.timesAsked("restore 7"), 1U);
}

TEST_F(TickTest, aLoweredAppThatComesToTheFrontGetsItsPriorityBack) {
    addApp(7, "/Applications/Mail.app");
    start();
    clock.advance(60s);
    ASSERT_TRUE(lowerPriority({7}));
    clock.advance(30s);
    world.activate("/Applications/Mail.app");
    clock.advance(30s);
    EXPECT_EQ(world.timesAsked("restore 7"), 1U);
}

TEST_F(TickTest, aLoweredProcessThatEndedIsForgottenWithoutACall) {
    world.add(7, "node");
    start();
    ASSERT_TRUE(lowerPriority({7}));
    world.processes.clear();
    clock.advance(60s);
    EXPECT_TRUE(model->lowered->empty());
    EXPECT_EQ(world.timesAsked("restore 7"), 0U);
}

TEST_F(TickTest, aProcessUnderAReusedPidIsNotTouched) {
    world.add(7, "node");
    start();
    ASSERT_TRUE(lowerPriority({7}));
    world.find(7)->bsd->startTime = clock.now() + 1s;
    clock.advance(60s);
    EXPECT_TRUE(model->lowered->empty());
    EXPECT_EQ(world.timesAsked("restore 7"), 0U);
}

TEST_F(TickTest, aWallClockThatWentBackStopsNothing) {
    start();
    clock.advance(120s);
    clock.jumpTo(clock.now() - 3600s);
    clock.advance(60s);
    EXPECT_EQ(ticks(), 4U);
    EXPECT_EQ(model->snapshot->date, clock.now());
}

TEST_F(TickTest, asksForKeptServicesAtTheFirstTickAndEveryFiveMinutes) {
    world.managedPIDs = {7};
    start();
    EXPECT_EQ(*model->servicePIDs, std::set<Pid>{7});
    EXPECT_EQ(*model->servicesChecked, clock.now());
    const auto first = clock.now();
    world.managedPIDs = {8};
    clock.advance(240s);
    EXPECT_EQ(*model->servicePIDs, std::set<Pid>{7});
    clock.advance(60s);
    EXPECT_EQ(*model->servicePIDs, std::set<Pid>{8});
    EXPECT_EQ(*model->servicesChecked, first + 300s);
}

TEST_F(TickTest, asksForKeptServicesAnewOnceTheClockWasSetBack) {
    world.managedPIDs = {7};
    start();
    world.managedPIDs = {8};
    clock.setTo(clock.now() - 24h);
    clock.advance(60s);
    EXPECT_EQ(*model->servicePIDs, std::set<Pid>{8});
    EXPECT_EQ(*model->servicesChecked, clock.now());
}

TEST_F(TickTest, waitsForTheKeptServicesBesideTheMainThread) {
    fakes::HeldJobs jobs;
    world.managedPIDs = {7};
    start(jobs.factory());
    jobs.runNext();
    EXPECT_EQ(model->snapshot->date, clock.now());
    EXPECT_TRUE(model->servicePIDs->empty());
    ASSERT_EQ(jobs.waiting(), 1U);
    jobs.runNext();
    EXPECT_EQ(*model->servicePIDs, std::set<Pid>{7});
}

TEST_F(TickTest, anEndDuringTheWaitForServicesIsQuiet) {
    fakes::HeldJobs jobs;
    start(jobs.factory());
    jobs.runNext();
    ASSERT_EQ(jobs.waiting(), 1U);
    model.reset();
    EXPECT_EQ(jobs.waiting(), 0U);
    EXPECT_TRUE(world.childrenEnded);
}

}  // namespace
}  // namespace tolvane
