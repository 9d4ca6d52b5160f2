#include "app/sampling/ProcessHistory.h"

#include <gtest/gtest.h>

namespace tolvane {
namespace {

using namespace std::chrono_literals;

constexpr Date start{Seconds{800'000'000}};
constexpr std::uint64_t MiB = 1'048'576;

ProcRow row(Pid pid, std::uint64_t footprint, double cpu = 0, std::uint64_t compressed = 0) {
    ProcRow row;
    row.sample.pid = pid;
    row.sample.startTime = start - 3600s;
    row.sample.footprint = footprint;
    row.sample.compressed = compressed;
    row.cpuPercent = cpu;
    return row;
}

struct ProcessHistoryTest : testing::Test {
    ProcessHistory history;
    Date now = start;

    void tick(const std::vector<ProcRow>& rows) {
        now += 5s;
        history.record(rows, now);
    }
    std::vector<std::uint64_t> footprints(const std::vector<Pid>& pids) const {
        std::vector<std::uint64_t> result;
        for (const auto& point : history.points(pids)) result.push_back(point.footprint);
        return result;
    }
};

TEST_F(ProcessHistoryTest, followsWhatIsLargerThanTwentyMiBTogetherWithItsCompressedPart) {
    tick({row(1, 20 * MiB), row(2, 20 * MiB + 1), row(3, 15 * MiB, 0, 5 * MiB), row(4, 15 * MiB, 0, 5 * MiB + 1)});
    EXPECT_TRUE(history.points({1}).empty());
    EXPECT_EQ(history.points({2}).size(), 1U);
    EXPECT_TRUE(history.points({3}).empty());
    EXPECT_EQ(history.points({4}).size(), 1U);
}

TEST_F(ProcessHistoryTest, followsASmallProcessFromFivePercentOfACoreOnAlsoOnceItGoesIdle) {
    tick({row(1, 15 * MiB, 4.0)});
    EXPECT_TRUE(history.points({1}).empty());
    tick({row(1, 15 * MiB, 5.0)});
    tick({row(1, 15 * MiB, 0.0)});
    EXPECT_EQ(history.points({1}).size(), 2U);
}

TEST_F(ProcessHistoryTest, aPointCarriesTheFiguresOfTheRow) {
    tick({row(7, 30 * MiB, 12.5, 3 * MiB)});
    const std::vector<HistoryPoint> expected{{.date = now, .footprint = 30 * MiB, .compressed = 3 * MiB, .cpu = 12.5}};
    EXPECT_EQ(history.points({7}), expected);
}

TEST_F(ProcessHistoryTest, aProcessThatMissesATickIsForgotten) {
    tick({row(1, 30 * MiB)});
    tick({});
    EXPECT_EQ(history.size(), 0U);
    tick({row(1, 40 * MiB)});
    EXPECT_EQ(footprints({1}), (std::vector{40 * MiB}));
}

TEST_F(ProcessHistoryTest, aReusedPidStartsANewList) {
    tick({row(1, 30 * MiB)});
    auto next = row(1, 50 * MiB);
    next.sample.startTime = now + 1s;
    tick({next});
    EXPECT_EQ(footprints({1}), (std::vector{50 * MiB}));
    tick({next});
    EXPECT_EQ(footprints({1}), (std::vector{50 * MiB, 50 * MiB}));
}

TEST_F(ProcessHistoryTest, aSmallProcessUnderAFollowedPidIsFollowedOn) {
    tick({row(1, 30 * MiB)});
    auto next = row(1, MiB);
    next.sample.startTime = now + 1s;
    tick({next});
    EXPECT_EQ(footprints({1}), (std::vector{MiB}));
}

TEST_F(ProcessHistoryTest, aReusedPidIsNoticedWhenTheListIsFull) {
    for (int count = 0; count < 400; ++count) tick({row(1, 30 * MiB)});
    auto next = row(1, 50 * MiB);
    next.sample.startTime = now - 359 * 5s + 1s;
    tick({next});
    EXPECT_EQ(footprints({1}), (std::vector{50 * MiB}));
}

TEST_F(ProcessHistoryTest, keepsTheLatestThreeHundredAndSixty) {
    for (std::uint64_t count = 0; count < 1000; ++count) tick({row(1, 30 * MiB + count), row(2, 60 * MiB + count)});
    const auto points = history.points({2});
    ASSERT_EQ(points.size(), 360U);
    for (std::size_t place = 0; place < 360; ++place) {
        EXPECT_EQ(points[place].footprint, 60 * MiB + 640 + place);
        EXPECT_EQ(points[place].date, start + Seconds{5.0 * static_cast<double>(641 + place)});
    }
}

TEST_F(ProcessHistoryTest, aLateComerHasTheDatesOfItsOwnTicks) {
    for (int count = 0; count < 700; ++count) tick({row(1, 30 * MiB)});
    tick({row(1, 30 * MiB), row(2, 30 * MiB)});
    tick({row(1, 30 * MiB), row(2, 30 * MiB)});
    const auto points = history.points({2});
    ASSERT_EQ(points.size(), 2U);
    EXPECT_EQ(points[0].date, now - 5s);
    EXPECT_EQ(points[1].date, now);
}

TEST_F(ProcessHistoryTest, ofNoProcessesThereIsNothing) {
    tick({row(1, 30 * MiB)});
    EXPECT_TRUE(history.points({}).empty());
    EXPECT_TRUE(history.points({2}).empty());
    EXPECT_TRUE(history.points({2, 3}).empty());
}

TEST_F(ProcessHistoryTest, severalProcessesAreSummedByDate) {
    tick({row(1, 30 * MiB, 1, MiB)});
    tick({row(1, 31 * MiB, 2, MiB), row(2, 40 * MiB, 10, 2 * MiB)});
    const std::vector<HistoryPoint> expected{{.date = now - 5s, .footprint = 30 * MiB, .compressed = MiB, .cpu = 1},
                                             {.date = now, .footprint = 71 * MiB, .compressed = 3 * MiB, .cpu = 12}};
    EXPECT_EQ(history.points({1, 2}), expected);
    EXPECT_EQ(history.points({2, 1}), expected);
}

TEST_F(ProcessHistoryTest, ofTwoProcessesTheOneWithoutHistoryAddsNothing) {
    tick({row(1, 30 * MiB), row(2, MiB)});
    tick({row(1, 31 * MiB), row(2, MiB)});
    EXPECT_EQ(history.points({1, 2}), history.points({1}));
}

TEST_F(ProcessHistoryTest, pointsOfEqualDateAreOneWhenSummed) {
    tick({row(1, 30 * MiB), row(2, 30 * MiB)});
    history.record({row(1, 40 * MiB), row(2, 40 * MiB)}, now);
    EXPECT_EQ(footprints({1}), (std::vector{30 * MiB, 40 * MiB}));
    EXPECT_EQ(footprints({1, 2}), (std::vector{140 * MiB}));
}

TEST_F(ProcessHistoryTest, summedPointsAreInOrderOfDateAlsoWhenTheClockWentBack) {
    tick({row(1, 30 * MiB), row(2, 30 * MiB)});
    now -= 60s;
    tick({row(1, 40 * MiB), row(2, 40 * MiB)});
    EXPECT_EQ(footprints({1}), (std::vector{30 * MiB, 40 * MiB}));
    EXPECT_EQ(footprints({1, 2}), (std::vector{80 * MiB, 60 * MiB}));
}

TEST_F(ProcessHistoryTest, ofRowsThatRepeatAPidTheLastHolds) {
    tick({row(1, 30 * MiB)});
    tick({row(1, 31 * MiB), row(1, 32 * MiB)});
    tick({row(1, 33 * MiB)});
    EXPECT_EQ(footprints({1}), (std::vector{30 * MiB, 32 * MiB, 33 * MiB}));
}

TEST_F(ProcessHistoryTest, takesReadingsOfAnySizeAsTheyAre) {
    const std::vector<ProcessHistory::Reading> readings{{.pid = 3, .footprint = 10, .compressed = 2, .cpu = 0.5}};
    history.record(std::span(readings), start);
    const std::vector<HistoryPoint> expected{{.date = start, .footprint = 10, .compressed = 2, .cpu = 0.5}};
    EXPECT_EQ(history.points({3}), expected);
}

TEST_F(ProcessHistoryTest, equalHistoriesAreEqual) {
    ProcessHistory other;
    tick({row(1, 30 * MiB)});
    other.record({row(1, 30 * MiB)}, now);
    EXPECT_TRUE(history == other);
    other.record({row(1, 30 * MiB)}, now + 5s);
    EXPECT_FALSE(history == other);
}

}  // namespace
}  // namespace tolvane
