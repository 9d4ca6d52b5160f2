#include "app/sampling/Sampler.h"

#include <gtest/gtest.h>

#include "tests/fakes/Executors.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/TemporaryFolder.h"

namespace tolvane {
namespace {

using namespace std::chrono_literals;

struct SamplerTest : testing::Test {
    fakes::TemporaryFolder home;
    fakes::FakeHost fake;
    fakes::FakeWorld& world = *fake.world;
    std::unique_ptr<Sampler> sampler;
    std::vector<Snapshot> snapshots;
    int unanswered = 0;

    SamplerTest() { world.home = home.path().string(); }

    void start(std::unique_ptr<Executor> executor = fakes::InlineExecutor::make()) {
        sampler = std::make_unique<Sampler>(fake.host, std::move(executor));
    }
    QCoro::Task<> sample(std::vector<Activation> activations = {}) {
        auto snapshot = co_await sampler->sample(std::move(activations));
        if (snapshot) {
            snapshots.push_back(std::move(*snapshot));
        } else {
            ++unanswered;
        }
    }
    const Snapshot& sampled(std::vector<Activation> activations = {}) {
        sample(std::move(activations));
        return snapshots.back();
    }
};

TEST_F(SamplerTest, everyFactOfTheMachineIsInTheSnapshot) {
    world.add(7, "node");
    world.memorySize = 1 << 30;
    start();
    const auto& snapshot = sampled();
    EXPECT_EQ(snapshot.date, fake.clock->now());
    ASSERT_EQ(snapshot.rows.size(), 1U);
    EXPECT_EQ(snapshot.rows[0].id(), 7);
    EXPECT_EQ(snapshot.rows[0].unusedSince, fake.clock->now());
    EXPECT_EQ(snapshot.memory.total, 1U << 30U);
    EXPECT_TRUE(snapshot.claude.empty());
}

TEST_F(SamplerTest, rowsStandInTheKernelsOrder) {
    for (const Pid pid : {30, 10, 20}) world.add(pid, "node");
    start();
    const auto& rows = sampled().rows;
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows[0].id(), 30);
    EXPECT_EQ(rows[1].id(), 10);
    EXPECT_EQ(rows[2].id(), 20);
}

TEST_F(SamplerTest, ratesComeFromTheReadingBefore) {
    world.add(7, "node");
    start();
    EXPECT_EQ(sampled().rows[0].cpuPercent, 0.0);
    world.find(7)->usage->userTime += 5'000'000'000;
    fake.clock->advance(10s);
    EXPECT_DOUBLE_EQ(sampled().rows[0].cpuPercent, 50.0);
}

TEST_F(SamplerTest, activationsMoveTheUnusedDateOfTheirApplication) {
    world.add(7, "Mail").path = Text("/Applications/Mail.app/Contents/MacOS/Mail");
    start();
    sampled();
    fake.clock->advance(10s);
    const Date activated = fake.clock->now() - 3s;
    EXPECT_EQ(sampled({{.appPath = "/Applications/Mail.app", .date = activated}}).rows[0].unusedSince, activated);
}

TEST_F(SamplerTest, aClockThatIsSetMakesNobodyUnused) {
    world.add(7, "node");
    start();
    const auto first = sampled().date;
    for (const auto by : {Seconds{86'400}, Seconds{-90'000}}) {
        fake.clock->setTo(fake.clock->now() + by);
        fake.clock->advance(5s);
        sampled();
    }
    const auto& latest = snapshots.back();
    EXPECT_EQ(latest.date, first - 3590s);
    EXPECT_EQ(latest.rows[0].unusedSince, first - 3600s);
}

TEST_F(SamplerTest, theSleepOfTheMachineCountsAsUnused) {
    world.add(7, "node");
    start();
    const auto first = sampled().date;
    fake.clock->jumpTo(first + 8h);
    EXPECT_EQ(sampled().rows[0].unusedSince, first);
}

TEST_F(SamplerTest, anActivationAroundTheSettingOfTheClockIsOfNow) {
    world.add(7, "App").path = Text("/Applications/Mail.app/Contents/MacOS/App");
    start();
    const auto before = sampled().date + 1s;
    fake.clock->setTo(before + 24h);
    const auto& row = sampled({{.appPath = "/Applications/Mail.app", .date = before}}).rows[0];
    EXPECT_EQ(row.unusedSince, fake.clock->now());
}

TEST_F(SamplerTest, aClockThatIsKeptRightMovesNothing) {
    world.add(7, "node");
    start();
    const auto first = sampled().date;
    for (const auto by : {100ms, -100ms, 900ms}) {
        fake.clock->advance(60s);
        fake.clock->setTo(fake.clock->now() + by);
        EXPECT_EQ(sampled().rows[0].unusedSince, first);
    }
}

TEST_F(SamplerTest, ofSeveralActivationsTheLastInTheListHolds) {
    world.add(7, "Mail").path = Text("/Applications/Mail.app/Contents/MacOS/Mail");
    start();
    sampled();
    fake.clock->advance(10s);
    const Date now = fake.clock->now();
    const auto& snapshot = sampled({{.appPath = "/Applications/Mail.app", .date = now - 2s},
                                    {.appPath = "/Applications/Mail.app", .date = now - 5s}});
    EXPECT_EQ(snapshot.rows[0].unusedSince, now - 5s);
}

TEST_F(SamplerTest, theFirstSampleAlreadyHasAnIntervalOfLoad) {
    world.ticksPerCore = std::vector<CPUTicks>(2);
    start();
    world.ticksPerCore = std::vector<CPUTicks>{{.user = 50, .idle = 50}, {.user = 100}};
    const auto& cpu = sampled().cpu;
    EXPECT_EQ(cpu.cores, 2);
    EXPECT_DOUBLE_EQ(cpu.user, 0.75);
}

TEST_F(SamplerTest, anotherNumberOfCoresGivesTheDefaultForOneSample) {
    world.ticksPerCore = std::vector<CPUTicks>(4);
    start();
    world.ticksPerCore = std::vector<CPUTicks>(2);
    EXPECT_EQ(sampled().cpu, CPULoad{});
    world.ticksPerCore = std::vector<CPUTicks>{{.user = 100}, {.user = 100}};
    EXPECT_DOUBLE_EQ(sampled().cpu.user, 1.0);
}

TEST_F(SamplerTest, coresThatCannotBeReadGiveTheDefaultUntilThereIsAnIntervalAgain) {
    start();
    world.ticksPerCore = std::nullopt;
    EXPECT_EQ(sampled().cpu, CPULoad{});
    world.ticksPerCore = std::vector<CPUTicks>(4);
    EXPECT_EQ(sampled().cpu, CPULoad{});
    world.ticksPerCore = std::vector<CPUTicks>(4, CPUTicks{.system = 10});
    EXPECT_DOUBLE_EQ(sampled().cpu.system, 1.0);
}

TEST_F(SamplerTest, aFolderInARepositoryGivesTheProject) {
    home.write("shop/.git/HEAD", "ref: refs/heads/main\n");
    home.write("shop/src/cart.js", "");
    world.add(7, "node").cwd = Text(home / "shop/src");
    world.add(8, "vi").cwd = Text(home / "elsewhere");
    world.add(9, "sh");
    start();
    const auto& rows = sampled().rows;
    EXPECT_EQ(rows[0].project, Text(home / "shop"));
    EXPECT_EQ(rows[1].project, std::nullopt);
    EXPECT_EQ(rows[2].project, std::nullopt);
}

TEST_F(SamplerTest, rowsInsideAnApplicationHaveNoProject) {
    home.write("shop/.git/HEAD", "ref: refs/heads/main\n");
    auto& process = world.add(7, "Code");
    process.path = Text("/Applications/Code.app/Contents/MacOS/Code");
    process.cwd = Text(home / "shop");
    start();
    EXPECT_EQ(sampled().rows[0].project, std::nullopt);
}

TEST_F(SamplerTest, aSessionLabelsItsHostAndAllBelow) {
    home.write(".claude/daemon/roster.json", R"({"workers":{"ab12":{"pid":7,"dispatch":{"seed":{"name":"cart"}}}}})");
    home.write(".claude/jobs/ab12/state.json", "{}");
    world.add(7, "claude");
    world.add(8, "node").bsd->ppid = 7;
    world.add(9, "esbuild").bsd->ppid = 8;
    world.add(10, "vi");
    start();
    const auto& snapshot = sampled();
    ASSERT_EQ(snapshot.claude.size(), 1U);
    EXPECT_EQ(snapshot.claude[0].hostPID, 7);
    EXPECT_TRUE(snapshot.rows[0].claudeSession);
    EXPECT_EQ(snapshot.rows[0].claudeSession, snapshot.rows[1].claudeSession);
    EXPECT_EQ(snapshot.rows[0].claudeSession, snapshot.rows[2].claudeSession);
    EXPECT_EQ(snapshot.rows[3].claudeSession, std::nullopt);
}

TEST_F(SamplerTest, aMachineThatTellsNothingGivesAnEmptySnapshot) {
    world.ticksPerCore = std::nullopt;
    start();
    const auto& snapshot = sampled();
    EXPECT_TRUE(snapshot.rows.empty());
    EXPECT_EQ(snapshot.cpu, CPULoad{});
    EXPECT_EQ(snapshot.memory.total, 0U);
}

TEST_F(SamplerTest, aSecondRequestWaitsForTheFirst) {
    fakes::HeldJobs held;
    start(held.factory()());
    sample();
    sample();
    EXPECT_EQ(held.waiting(), 2U);
    held.runNext();
    EXPECT_EQ(snapshots.size(), 1U);
    fake.clock->advance(1s);
    held.runNext();
    ASSERT_EQ(snapshots.size(), 2U);
    EXPECT_EQ(snapshots[1].date, snapshots[0].date + 1s);
}

TEST_F(SamplerTest, aSamplerThatGoesAnswersNobody) {
    fakes::HeldJobs held;
    start(held.factory()());
    sample();
    sample();
    sampler.reset();
    EXPECT_EQ(unanswered, 2);
    EXPECT_TRUE(snapshots.empty());
    EXPECT_EQ(world.timesAsked("allPids"), 0U);
}

}  // namespace
}  // namespace tolvane
