#include "tests/app/ModelTest.h"

namespace tolvane {
namespace {

using namespace std::chrono_literals;

using RecordHistoryTest = ModelTest;

TEST_F(RecordHistoryTest, everyTickAddsAPointOfLoad) {
    world.efficiencyCores = 2;
    start();
    world.ticksPerCore = std::vector<CPUTicks>{{.idle = 100}, {.user = 50, .idle = 50}, {.user = 100}, {.user = 100}};
    clock.advance(60s);
    ASSERT_EQ(model->loadHistory->size(), 2U);
    const LoadPoint expected{.date = clock.now(), .performance = 2.0, .efficiency = 0.5};
    EXPECT_EQ(model->loadHistory->back(), expected);
}

TEST_F(RecordHistoryTest, loadIsKeptForAnHourWithItsLimit) {
    start();
    clock.advance(3600s);
    EXPECT_EQ(model->loadHistory->size(), 61U);
    EXPECT_EQ(model->loadHistory->front().date, clock.now() - 3600s);
    clock.advance(60s);
    EXPECT_EQ(model->loadHistory->size(), 61U);
    EXPECT_EQ(model->loadHistory->front().date, clock.now() - 3600s);
}

TEST_F(RecordHistoryTest, everyTickAddsAPointPerSizeableProcess) {
    auto& process = world.add(7, "node");
    process.usage->footprint = 100 * MiB;
    process.memory = MemoryRecord{.compressed = 10 * MiB};
    start();
    burn(7, 25, 60s);
    clock.advance(60s);
    const auto points = model->historyFor({7});
    ASSERT_EQ(points.size(), 2U);
    EXPECT_EQ(points[1].date, clock.now());
    EXPECT_EQ(points[1].footprint, 100 * MiB);
    EXPECT_EQ(points[1].compressed, 10 * MiB);
    EXPECT_DOUBLE_EQ(points[1].cpu, 25.0);
}

TEST_F(RecordHistoryTest, observersHearOfEachTick) {
    start();
    int changes = 0;
    const auto history = model->history.onChange([&] { ++changes; });
    const auto load = model->loadHistory.onChange([&] { ++changes; });
    clock.advance(60s);
    EXPECT_EQ(changes, 2);
}

}  // namespace
}  // namespace tolvane
