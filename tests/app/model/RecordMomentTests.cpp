#include <gmock/gmock.h>

#include "core/storage/Store.h"
#include "tests/app/ModelTest.h"

namespace tolvane {
namespace {

using namespace std::chrono_literals;

struct RecordMomentTest : ModelTest {
    fakes::FakeProcess& addSized(Pid pid, const std::string& name, std::uint64_t footprint) {
        auto& process = world.add(pid, name);
        process.usage->footprint = footprint;
        return process;
    }
    const Moment& last() const { return model->moments->back(); }
    std::vector<std::string> titles() const {
        std::vector<std::string> titles;
        for (const auto& holder : last().holders) titles.push_back(holder.title.str());
        return titles;
    }
};

TEST_F(RecordMomentTest, theFirstTickRecordsOne) {
    start();
    ASSERT_EQ(model->moments->size(), 1U);
    EXPECT_EQ(last().date, clock.now());
}

TEST_F(RecordMomentTest, aTickThirtySecondsLaterAddsNothing) {
    start();
    clock.advance(30s);
    world.press();
    EXPECT_EQ(ticks(), 2U);
    EXPECT_EQ(model->moments->size(), 1U);
}

TEST_F(RecordMomentTest, addsOneFromFiftyFiveSecondsOn) {
    start();
    clock.advance(54.9s);
    world.press();
    EXPECT_EQ(model->moments->size(), 1U);
    clock.advance(0.1s);
    world.press();
    EXPECT_EQ(model->moments->size(), 2U);
}

TEST_F(RecordMomentTest, atAPaceOfFiveSecondsThereIsOneAMinuteAtMost) {
    start();
    world.showWindow(true);
    clock.advance(550s);
    EXPECT_EQ(ticks(), 112U);
    EXPECT_EQ(model->moments->size(), 11U);
}

TEST_F(RecordMomentTest, isKeptForADayWithItsLimit) {
    start();
    const Date first = clock.now();
    clock.advance(86'400s);
    EXPECT_EQ(model->moments->size(), 1441U);
    EXPECT_EQ(model->moments->front().date, first);
    clock.advance(60s);
    EXPECT_EQ(model->moments->size(), 1441U);
    EXPECT_EQ(model->moments->front().date, first + 60s);
}

TEST_F(RecordMomentTest, theHistoryFileGetsOneLineAMinuteAtMost) {
    start();
    world.showWindow(true);
    clock.advance(550s);
    EXPECT_EQ(Store(model->store()).loadHistory(clock.now()), *model->moments);
    const auto text = folder.read("Tolvane/history.jsonl");
    EXPECT_EQ(std::ranges::count(text, '\n'), 11);
}

TEST_F(RecordMomentTest, carriesTheWholeMachine) {
    world.memorySize = 16 * GiB;
    world.pageSize = 4096;
    world.swapUsage = SwapUsage{.total = 8 * GiB, .used = 3 * GiB};
    world.pressureLevel = 2;
    world.virtualMemory = VirtualMemoryCounters{.internalPages = 1000,
                                                .purgeablePages = 100,
                                                .wiredPages = 50,
                                                .compressorPages = 20,
                                                .uncompressedPagesInCompressor = 60,
                                                .swapIns = 7};
    world.efficiencyCores = 2;
    start();
    world.ticksPerCore =
        std::vector<CPUTicks>{{.idle = 100}, {.user = 50, .idle = 50}, {.user = 50, .system = 50}, {.user = 100}};
    clock.advance(60s);
    const Moment expected{.date = clock.now(),
                          .total = 16 * GiB,
                          .used = 970 * 4096,
                          .compressed = 20 * 4096,
                          .swapUsed = 3 * GiB,
                          .pressure = 2,
                          .cpu = 0.625,
                          .cores = 4,
                          .holders = {},
                          .performance = 2.0,
                          .efficiency = 0.5,
                          .swapIns = 7 * 4096};
    EXPECT_EQ(last(), expected);
}

TEST_F(RecordMomentTest, aHolderIsTheLineOfItsApplication) {
    auto& app = addApp(7, "/Applications/Mail.app");
    app.usage->footprint = 100 * MiB;
    app.memory = MemoryRecord{.compressed = 10 * MiB, .swapIns = 4096};
    auto& helper = addApp(8, "/Applications/Mail.app");
    helper.usage->footprint = 50 * MiB;
    helper.bsd->startTime += 60s;
    world.displayNames["/Applications/Mail.app"] = "Mail";
    start();
    ASSERT_EQ(last().holders.size(), 1U);
    const Holder& holder = last().holders[0];
    EXPECT_FALSE(holder.key.empty());
    EXPECT_EQ(holder.title, "Mail");
    EXPECT_EQ(holder.appPath, "/Applications/Mail.app");
    EXPECT_EQ(holder.memory, 150 * MiB);
    EXPECT_EQ(holder.compressed, 10 * MiB);
    EXPECT_EQ(holder.started, world.find(7)->bsd->startTime);
    EXPECT_EQ(holder.swapIns, 4096U);
}

TEST_F(RecordMomentTest, aHolderWithoutReadBackSaysSo) {
    addSized(7, "node", MiB);
    start();
    EXPECT_EQ(last().holders.at(0).swapIns, 0U);
}

TEST_F(RecordMomentTest, momentsShareTheTextsOfTheirHolders) {
    addApp(7, "/Applications/Mail.app");
    start();
    clock.advance(60s);
    const Holder& before = model->moments->at(0).holders.at(0);
    const Holder& after = model->moments->at(1).holders.at(0);
    EXPECT_EQ(before.key.view().data(), after.key.view().data());
    EXPECT_EQ(before.title.view().data(), after.title.view().data());
    EXPECT_EQ(before.appPath->view().data(), after.appPath->view().data());
}

TEST_F(RecordMomentTest, momentsFromTheFileShareThemToo) {
    for (const Seconds age : {120s, 60s}) {
        Store(folder / "Tolvane").append(Moment{.date = clock.now() - age, .holders = {{.key = "app:mail"}}});
    }
    fakes::HeldJobs jobs;
    start(jobs.factory());
    EXPECT_EQ(model->moments->at(0).holders.at(0).key.view().data(),
              model->moments->at(1).holders.at(0).key.view().data());
}

TEST_F(RecordMomentTest, theLargestStandFirst) {
    addSized(7, "small", 30 * MiB);
    addSized(8, "large", 90 * MiB);
    addSized(9, "equal", 30 * MiB);
    start();
    EXPECT_THAT(titles(), testing::ElementsAre("large", "small", "equal"));
}

TEST_F(RecordMomentTest, keepsTwentyFiveAndTheBusyOnesBelow) {
    for (Pid pid = 100; pid < 130; ++pid) {
        addSized(pid, "p" + std::to_string(pid), static_cast<std::uint64_t>(1000 - pid) * MiB);
    }
    start();
    EXPECT_EQ(last().holders.size(), 25U);
    burn(126, 9.9, 60s);
    burn(127, 50, 60s);
    burn(129, 10, 60s);
    clock.advance(60s);
    ASSERT_EQ(last().holders.size(), 27U);
    EXPECT_EQ(titles().at(24), "p124");
    EXPECT_EQ(titles().at(25), "p127");
    EXPECT_EQ(titles().at(26), "p129");
    EXPECT_DOUBLE_EQ(last().holders[25].cpu, 50.0);
}

}  // namespace
}  // namespace tolvane
