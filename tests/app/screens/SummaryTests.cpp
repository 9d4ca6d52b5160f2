#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/screens/CPUSummary.h"
#include "app/screens/MemorySummary.h"
#include "app/screens/panel/PanelView.h"
#include "app/screens/processes/SystemStrip.h"
#include "tests/fakes/Rows.h"

namespace tolvane {
namespace {

using fakes::GiB;
using fakes::MiB;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

SystemMemory memory() {
    return {.total = 16 * GiB,
            .app = 6 * GiB,
            .wired = 2 * GiB,
            .compressed = GiB + GiB / 2,
            .swapUsed = 512 * MiB,
            .swapTotal = 2 * GiB,
            .compressionRatio = 2.75};
}

MemorySummary memorySummary(std::optional<std::int64_t> growth = {}, std::optional<std::uint64_t> readBack = {}) {
    return MemorySummary::of(memory(), growth, readBack, "en_US");
}

auto labels(const std::vector<ValueRow>& rows) {
    std::vector<std::string> labels;
    for (const auto& row : rows) labels.push_back(row.label);
    return labels;
}

TEST(MemorySummary, saysWhatIsUsedAndHowTightItIs) {
    const auto summary = memorySummary();
    EXPECT_EQ(summary.headline, "Memory");
    EXPECT_EQ(summary.pressureText, "Pressure Normal");
    EXPECT_EQ(summary.pressureTooltip,
              "macOS sets pressure from free memory, swap rate, wired memory and cached files. Elevated or critical "
              "means apps are waiting for memory.");
    EXPECT_DOUBLE_EQ(summary.usedFraction, 9.5 / 16);
    EXPECT_EQ(summary.gaugeAccessibleText, "Memory used 9.5 GB of 16 GB, pressure Normal");
}

TEST(MemorySummary, hasARowForEachFigure) {
    const auto rows = memorySummary().rows;
    ASSERT_THAT(labels(rows), ElementsAre("Used", "Compressed", "Swap"));
    EXPECT_EQ(rows[0].value, "9.5 GB of 16 GB");
    EXPECT_EQ(
        rows[0].tooltip,
        "App memory, wired memory and compressed memory. Cached files are left out: macOS hands them back as soon "
        "as an app needs room.");
    EXPECT_EQ(rows[1].value, "1.5 GB");
    EXPECT_EQ(rows[1].tooltip,
              "Memory macOS compressed to make room, about 2.8 to 1 right now. A large figure while pressure is normal "
              "is healthy.");
    EXPECT_EQ(rows[2].value, "512 MB of 2 GB");
    EXPECT_EQ(rows[2].remark, "");
    EXPECT_EQ(rows[2].tooltip,
              "Compressed memory macOS wrote to disk. Swap that sits still costs nothing; apps wait only while macOS "
              "reads it back.");
}

TEST(MemorySummary, namesEachLevel) {
    EXPECT_EQ(levelText(Pressure::normal), "Normal");
    EXPECT_EQ(levelText(Pressure::warning), "Elevated");
    EXPECT_EQ(levelText(Pressure::critical), "Critical");
    auto tight = memory();
    tight.pressure = Pressure::warning;
    const auto summary = MemorySummary::of(tight, {}, {}, "en_US");
    EXPECT_EQ(summary.pressure, Pressure::warning);
    EXPECT_EQ(summary.pressureText, "Pressure Elevated");
    EXPECT_EQ(summary.gaugeAccessibleText, "Memory used 9.5 GB of 16 GB, pressure Elevated");
}

TEST(MemorySummary, speaksOfSwapThatGrowsFromSixtyFourMegabytesOn) {
    EXPECT_EQ(memorySummary(67108864).rows[2].remark, "up 64 MB in 15 min");
    EXPECT_EQ(memorySummary(67108863).rows[2].remark, "");
    EXPECT_EQ(memorySummary(0).rows[2].remark, "");
    EXPECT_EQ(memorySummary(-67108864).rows[2].remark, "");
}

TEST(MemorySummary, speaksOfReadingBackFromSixtyFourMegabytesOn) {
    EXPECT_THAT(labels(memorySummary({}, 67108863).rows), ElementsAre("Used", "Compressed", "Swap"));
    const auto rows = memorySummary({}, 67108864).rows;
    ASSERT_THAT(labels(rows), ElementsAre("Used", "Compressed", "Swap", "Read back"));
    EXPECT_EQ(rows[3].value, "64 MB in 15 min");
    EXPECT_EQ(rows[3].tooltip, "Memory macOS read back from swap. Apps stall while this happens.");
    EXPECT_FALSE(rows[3].warns);
}

TEST(MemorySummary, warnsOfReadingBackWhenThatMakesMemoryTight) {
    EXPECT_FALSE(memorySummary({}, 536870911).rows[3].warns);
    EXPECT_TRUE(memorySummary({}, 536870912).rows[3].warns);
}

TEST(MemorySummary, ofAnUnknownMachineIsEmpty) {
    const auto summary = MemorySummary::of(SystemMemory{}, {}, {}, "en_US");
    EXPECT_EQ(summary.usedFraction, 0);
    EXPECT_EQ(summary.rows[0].value, "Zero KB of Zero KB");
}

TEST(MemorySummary, neverUsesMoreThanThereIs) {
    EXPECT_EQ(MemorySummary::of({.total = GiB, .app = 2 * GiB}, {}, {}, "en_US").usedFraction, 1);
}

TEST(MemorySummary, hasTheNumbersOfTheLocale) {
    EXPECT_EQ(MemorySummary::of(memory(), {}, {}, "de_DE").rows[0].value, "9,5 GB of 16 GB");
}

CPULoad load() { return {.user = 0.25, .system = 0.075, .cores = 12, .performance = 3.2, .efficiency = 0.72}; }

CPULoad hybridLoad() {
    auto made = load();
    made.efficiencyCores = 4;
    return made;
}

std::vector<LoadPoint> hour() {
    return {{.date = Date{Seconds{0}}, .performance = 1, .efficiency = 0.5},
            {.date = Date{Seconds{5}}, .performance = 4, .efficiency = 1.25},
            {.date = Date{Seconds{10}}, .performance = 2, .efficiency = 2}};
}

TEST(PanelView, saysTheLoadInCores) {
    EXPECT_EQ(CPUSummary::load(load(), "en_US"), "3.9 of 12 cores");
    EXPECT_EQ(CPUSummary::load(load(), "de_DE"), "3,9 of 12 cores");
    EXPECT_EQ(CPUSummary::load({}, "en_US"), "0.0 of 1 cores");
}

TEST(PanelView, saysAPartOfTheCores) {
    EXPECT_EQ(CPUSummary::part(3, 8, "en_US"), "3.0 of 8 cores");
    EXPECT_EQ(CPUSummary::part(0.72, 4, "en_US"), "0.7 of 4 cores");
}

TEST(CPUSummary, splitsTheLoadByClassWhereThereAreTwo) {
    const auto summary = CPUSummary::of(hybridLoad(), hour(), {}, "en_US");
    EXPECT_EQ(summary.headline, "CPU");
    EXPECT_EQ(summary.busyNow, "3.9 of 12 cores busy now");
    ASSERT_THAT(labels(summary.rows), ElementsAre("Performance", "Efficiency", "Peak"));
    EXPECT_EQ(summary.rows[0].value, "3.2 of 8 cores");
    EXPECT_EQ(summary.rows[0].mark, "performance");
    EXPECT_EQ(summary.rows[1].value, "0.7 of 4 cores");
    EXPECT_EQ(summary.rows[1].mark, "efficiency");
}

TEST(CPUSummary, splitsTheLoadByUserAndSystemElsewhere) {
    const auto summary = CPUSummary::of(load(), hour(), {}, "en_US");
    ASSERT_THAT(labels(summary.rows), ElementsAre("User", "System", "Peak"));
    EXPECT_EQ(summary.rows[0].value, "3 cores");
    EXPECT_EQ(summary.rows[1].value, "0.9 cores");
    EXPECT_EQ(summary.rows[0].mark, "");
}

TEST(CPUSummary, tellsThePeakOfTheHour) {
    const auto rows = CPUSummary::of(load(), hour(), {}, "en_US").rows;
    EXPECT_EQ(rows[2].label, "Peak");
    EXPECT_EQ(rows[2].value, "5.2 cores");
    EXPECT_EQ(rows[2].tooltip, "Highest in the last hour");
    EXPECT_THAT(labels(CPUSummary::of(load(), {}, {}, "en_US").rows), ElementsAre("User", "System"));
}

TEST(CPUSummary, namesTheBusiest) {
    const auto rows = CPUSummary::of(load(), hour(), TableRow{.title = "Slack", .cpu = 150}, "en_US").rows;
    ASSERT_THAT(labels(rows), ElementsAre("User", "System", "Peak", "Busiest"));
    EXPECT_EQ(rows[3].value, "Slack, 1.5 cores");
}

TEST(CPUSummary, drawsNothingOfFewerThanTwoPoints) {
    auto points = hour();
    points.resize(2);
    EXPECT_EQ(CPUSummary::of(load(), points, {}, "en_US").chart, points);
    points.resize(1);
    EXPECT_THAT(CPUSummary::of(load(), points, {}, "en_US").chart, IsEmpty());
    EXPECT_THAT(CPUSummary::of(load(), {}, {}, "en_US").chart, IsEmpty());
}

TEST(CPUSummary, drawsWhatCameSinceTheClockWasSetBack) {
    auto points = hour();
    const auto last = points.back();
    points.insert(points.begin(), {{.date = last.date + Seconds{7200}, .performance = 9},
                                   {.date = last.date + Seconds{7205}, .performance = 9}});
    const auto summary = CPUSummary::of(load(), points, {}, "en_US");
    EXPECT_EQ(summary.chart, hour());
    EXPECT_EQ(summary.rows[2].value, "9 cores");
    points.push_back({.date = last.date - Seconds{60}});
    EXPECT_THAT(CPUSummary::of(load(), points, {}, "en_US").chart, IsEmpty());
}

TEST(CPUSummary, tellsItsAxesAndWhereItsAreasEnd) {
    auto points = hour();
    points.back() = {.date = points.back().date, .performance = 2.64, .efficiency = 0.4};
    EXPECT_EQ(CPUSummary::of(load(), points, {}, "en_US").chartDetail, "Time, Cores; Efficiency 0.4, Performance 2.6");
    EXPECT_EQ(CPUSummary::of(load(), {}, {}, "en_US").chartDetail, "");
}

TEST(CPUSummary, explainsItsChart) {
    const auto summary = CPUSummary::of(load(), hour(), {}, "en_US");
    EXPECT_EQ(summary.chartText, "CPU load over the last hour, performance cores stacked on efficiency cores");
    EXPECT_EQ(summary.chartCaption, "Last hour. Blue: performance cores, grey: efficiency cores.");
}

TEST(SystemStrip, showsBothSummariesWithoutTheBusiest) {
    const Snapshot snapshot{.memory = memory(), .cpu = load(), .rows = {fakes::row(1, "busy")}};
    const auto strip = SystemStrip::of(snapshot, hour(), 67108864, 67108864, "en_US");
    EXPECT_EQ(strip.memory, MemorySummary::of(memory(), 67108864, 67108864, "en_US"));
    EXPECT_EQ(strip.cpu, CPUSummary::of(load(), hour(), {}, "en_US"));
    EXPECT_EQ(strip.showHistory, "Show History");
    EXPECT_EQ(strip.showHistoryTooltip, "Memory, swap and CPU over the last 24 hours");
}

}  // namespace
}  // namespace tolvane
