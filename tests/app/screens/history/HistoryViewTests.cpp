#include "app/screens/history/HistoryView.h"

#include <gmock/gmock.h>

#include <cmath>

#include "tests/app/ModelTest.h"

namespace tolvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

struct HistoryViewTest : ModelTest {
    /// Friday, 8 May 2026, 14:41 in Berlin.
    static constexpr Date now = dateFromUnixSeconds(1'778'244'060);

    void SetUp() override {
        clock.jumpTo(now);
        startDemo();
        modelState->moments.set({});
        modelState->activity.set({});
    }
    static Moment moment(Seconds age, std::uint64_t used = 8 * GiB) {
        return {.date = now - age,
                .total = 32 * GiB,
                .used = used,
                .compressed = 2 * GiB,
                .swapUsed = GiB / 2,
                .cpu = 0.25,
                .cores = 8,
                .performance = 1.5,
                .efficiency = 0.5};
    }
    static Holder holder(std::string_view key, std::uint64_t memory) {
        return {.key = key, .title = key, .memory = memory};
    }
    static ActivityEntry entry(Seconds age, std::string_view outcome) {
        return {.id = UUID::random(), .date = now - age, .subject = "Slack", .outcome = outcome};
    }
    void show(std::vector<Moment> moments) { modelState->moments.set(std::move(moments)); }
    HistoryView view() { return HistoryView(*model, "en_GB", "Europe/Berlin"); }
    HistoryContent content() { return view().content().value(); }
    MomentDetail detail() { return content().detail; }
};

TEST_F(HistoryViewTest, thePickerHasThreeRanges) {
    std::vector<std::string_view> labels;
    for (const auto& each : historyRanges) labels.push_back(each.label);
    EXPECT_THAT(labels, ElementsAre("1 Hour", "6 Hours", "24 Hours"));
    EXPECT_EQ(HistoryView::rangeLabel, "Range");
}

TEST_F(HistoryViewTest, theRangeIsRemembered) {
    EXPECT_EQ(view().range(), HistoryRange::sixHours);
    auto first = view();
    first.setRange(HistoryRange::day);
    EXPECT_EQ(std::get<std::string>(world.preferences.at("historyRange")), "day");
    EXPECT_EQ(view().range(), HistoryRange::day);
    world.preferences["historyRange"] = std::string("year");
    EXPECT_EQ(view().range(), HistoryRange::sixHours);
    world.preferences["historyRange"] = std::int64_t{1};
    EXPECT_EQ(view().range(), HistoryRange::sixHours);
}

TEST_F(HistoryViewTest, withoutMomentsItIsEmpty) {
    EXPECT_FALSE(view().content());
    EXPECT_EQ(HistoryView::empty.title, "History Builds Up");
    EXPECT_EQ(HistoryView::empty.icon, "clock.arrow.circlepath");
    EXPECT_EQ(HistoryView::empty.sentence,
              "Tolvane records memory, swap and CPU once a minute and keeps the last 24 hours, so this fills in as it "
              "runs.");
}

TEST_F(HistoryViewTest, momentsOlderThanTheRangeLeaveItEmpty) {
    show({moment(Seconds{21'601})});
    EXPECT_FALSE(view().content());
    show({moment(Seconds{21'600})});
    EXPECT_TRUE(view().content());
}

TEST_F(HistoryViewTest, theDomainRunsFromTheBoundToNow) {
    show({moment(Seconds{60})});
    EXPECT_EQ(content().memory.from, now - Seconds{21'600});
    EXPECT_EQ(content().memory.to, now);
    EXPECT_EQ(content().cpu.from, now - Seconds{21'600});
}

TEST_F(HistoryViewTest, theLatestMomentIsLookedAtFirst) {
    show({moment(Seconds{120}), moment(Seconds{60})});
    EXPECT_EQ(content().memory.focus, now - Seconds{60});
    EXPECT_EQ(detail().heading, "Latest, 14:40");
    EXPECT_EQ(detail().hint, "");
}

TEST_F(HistoryViewTest, theMomentNearestToThePointerIsLookedAt) {
    show({moment(Seconds{300}), moment(Seconds{180}), moment(Seconds{60})});
    auto history = view();
    history.select(now - Seconds{200});
    EXPECT_EQ(history.content()->memory.focus, now - Seconds{180});
    EXPECT_EQ(history.content()->detail.heading, "Friday 14:38");
    EXPECT_EQ(history.content()->detail.hint, "Click the charts to pick another moment.");
    history.select(now - Seconds{240});
    EXPECT_EQ(history.content()->memory.focus, now - Seconds{300});
}

TEST_F(HistoryViewTest, anotherRangeGoesBackToTheLatest) {
    show({moment(Seconds{300}), moment(Seconds{60})});
    auto history = view();
    history.select(now - Seconds{300});
    history.setRange(HistoryRange::hour);
    EXPECT_EQ(history.selected(), std::nullopt);
    EXPECT_EQ(history.content()->detail.heading, "Latest, 14:40");
}

TEST_F(HistoryViewTest, keysStepFromMomentToMoment) {
    show({moment(Seconds{300}), moment(Seconds{180}), moment(Seconds{60})});
    auto history = view();
    history.move(-1);
    EXPECT_EQ(history.selected(), now - Seconds{180});
    history.move(-5);
    EXPECT_EQ(history.selected(), now - Seconds{300});
    history.move(1);
    EXPECT_EQ(history.selected(), now - Seconds{180});
    history.move(1000);
    EXPECT_EQ(history.selected(), now - Seconds{60});
    show({});
    history.move(1);
}

TEST_F(HistoryViewTest, theMemoryChartShowsThreeSeriesInGB) {
    show({moment(Seconds{120}, 4 * GiB), moment(Seconds{60})});
    const auto chart = content().memory;
    EXPECT_EQ(chart.title, "Memory");
    EXPECT_EQ(chart.note, "Shaded where macOS reported memory pressure: yellow elevated, red critical.");
    EXPECT_EQ(chart.spoken, "Memory used, compressed and swap over time");
    EXPECT_EQ(chart.height, 200);
    ASSERT_THAT(chart.series, SizeIs(3));
    EXPECT_EQ(chart.series[0].name, "Used");
    EXPECT_THAT(chart.series[0].values, ElementsAre(4, 8));
    EXPECT_EQ(chart.series[1].name, "Compressed");
    EXPECT_THAT(chart.series[1].values, ElementsAre(2, 2));
    EXPECT_EQ(chart.series[2].name, "Swap");
    EXPECT_THAT(chart.series[2].values, ElementsAre(0.5, 0.5));
}

TEST_F(HistoryViewTest, theMemoryChartNamesItsAxes) {
    show({moment(Seconds{60})});
    const auto chart = content().memory;
    EXPECT_EQ(chart.xLabel, "Time");
    EXPECT_EQ(chart.yLabel, "GB");
    EXPECT_EQ(chart.seriesLabel, "Kind");
}

TEST_F(HistoryViewTest, theMemoryAxisHasRoundLabels) {
    show({moment(Seconds{60}, 21 * GiB + GiB / 2)});
    std::vector<std::string> labels;
    for (const auto& tick : content().memory.ticks) labels.push_back(tick.label);
    EXPECT_THAT(labels, ElementsAre("0 GB", "8 GB", "16 GB", "24 GB"));
    EXPECT_EQ(content().memory.top, 24);
}

TEST_F(HistoryViewTest, nothingInMemoryStillHasAnAxis) {
    auto empty = moment(Seconds{60}, 0);
    empty.compressed = empty.swapUsed = 0;
    show({empty});
    EXPECT_GT(content().memory.top, 0);
    EXPECT_EQ(content().memory.ticks.front().label, "0 GB");
}

TEST_F(HistoryViewTest, theCPUChartStacksPerformanceOnEfficiency) {
    show({moment(Seconds{60})});
    const auto chart = content().cpu;
    EXPECT_EQ(chart.title, "CPU");
    EXPECT_EQ(chart.note, "");
    EXPECT_EQ(chart.spoken, "CPU load in cores over time, performance cores stacked on efficiency cores");
    EXPECT_EQ(chart.xLabel, "Time");
    EXPECT_EQ(chart.yLabel, "Cores");
    EXPECT_EQ(chart.seriesLabel, "");
    EXPECT_EQ(chart.height, 110);
    ASSERT_THAT(chart.series, SizeIs(2));
    EXPECT_EQ(chart.series[0].name, "Efficiency");
    EXPECT_THAT(chart.series[0].values, ElementsAre(0.5));
    EXPECT_EQ(chart.series[1].name, "Performance");
    EXPECT_THAT(chart.series[1].values, ElementsAre(2));
    EXPECT_EQ(chart.top, 8);
}

TEST_F(HistoryViewTest, momentsOfOlderVersionsHaveOneAreaOfLoad) {
    auto old = moment(Seconds{120});
    old.performance.reset();
    show({old, moment(Seconds{60})});
    const auto series = content().cpu.series;
    ASSERT_THAT(series, SizeIs(3));
    EXPECT_EQ(series[2].name, "CPU");
    EXPECT_EQ(series[2].values[0], 2);
    EXPECT_TRUE(std::isnan(series[2].values[1]));
    EXPECT_TRUE(std::isnan(series[0].values[0]));
    show({old});
    ASSERT_THAT(content().cpu.series, SizeIs(1));
    EXPECT_EQ(content().cpu.series[0].name, "CPU");
}

TEST_F(HistoryViewTest, manyCoresHaveFewLabels) {
    auto large = moment(Seconds{60});
    large.cores = 256;
    show({large});
    std::vector<std::string> labels;
    for (const auto& tick : content().cpu.ticks) labels.push_back(tick.label);
    EXPECT_THAT(labels, ElementsAre("0", "64", "128", "192", "256"));
}

TEST_F(HistoryViewTest, timesStandAtRoundDistances) {
    show({moment(Seconds{60})});
    std::vector<std::string> labels;
    for (const auto& tick : content().times) labels.push_back(tick.label);
    EXPECT_THAT(labels, ElementsAre("08:41", "09:41", "10:41", "11:41", "12:41", "13:41", "14:41"));
    auto history = view();
    for (const auto range : {HistoryRange::hour, HistoryRange::day}) {
        history.setRange(range);
        EXPECT_THAT(history.content()->times, SizeIs(7));
    }
}

TEST_F(HistoryViewTest, timesOfADayWithAnotherNumberOfHoursAreThoseOfTheClockThere) {
    const auto labelsUntil = [this](double unixTime) {
        clock.jumpTo(dateFromUnixSeconds(unixTime));
        auto latest = moment(Seconds{0});
        latest.date = clock.now();
        show({latest});
        auto history = view();
        history.setRange(HistoryRange::day);
        const auto shown = history.content().value();
        std::vector<std::string> labels;
        for (const auto& tick : shown.times) labels.push_back(tick.label);
        return labels;
    };
    // Noon in Berlin, on the Sundays on which summer time ends and begins.
    EXPECT_THAT(labelsUntil(1'792'926'000), ElementsAre("13:00", "17:00", "21:00", "01:00", "04:00", "08:00", "12:00"));
    EXPECT_THAT(labelsUntil(1'774'778'400), ElementsAre("11:00", "15:00", "19:00", "23:00", "04:00", "08:00", "12:00"));
}

TEST_F(HistoryViewTest, bandsStandWhereThereWasPressure) {
    std::vector<Moment> moments = {moment(Seconds{300}), moment(Seconds{240}), moment(Seconds{180}),
                                   moment(Seconds{120}), moment(Seconds{60})};
    moments[1].pressure = 2;
    moments[2].pressure = 4;
    moments[4].pressure = 4;
    show(moments);
    EXPECT_THAT(content().memory.bands,
                ElementsAre(PressureBand{now - Seconds{240}, now - Seconds{180}, Pressure::warning},
                            PressureBand{now - Seconds{180}, now - Seconds{120}, Pressure::critical}));
    EXPECT_THAT(content().cpu.bands, IsEmpty());
}

TEST_F(HistoryViewTest, aBandCoversTheGapOfASleep) {
    auto critical = moment(Seconds{20'000});
    critical.pressure = 4;
    show({critical, moment(Seconds{60})});
    EXPECT_THAT(content().memory.bands,
                ElementsAre(PressureBand{now - Seconds{20'000}, now - Seconds{60}, Pressure::critical}));
}

TEST_F(HistoryViewTest, aLevelThatIsNoneGivesNoBand) {
    auto odd = moment(Seconds{120});
    odd.pressure = 3;
    show({odd, moment(Seconds{60})});
    EXPECT_THAT(content().memory.bands, IsEmpty());
}

TEST_F(HistoryViewTest, aSingleMomentIsTheLatestAndHasNoBands) {
    auto only = moment(Seconds{60});
    only.pressure = 4;
    show({only});
    EXPECT_THAT(content().memory.bands, IsEmpty());
    EXPECT_EQ(detail().heading, "Latest, 14:40");
}

TEST_F(HistoryViewTest, theSentenceTellsOfTheWholeMachine) {
    show({moment(Seconds{60})});
    EXPECT_EQ(detail().sentence, "8 GB of 32 GB used, 512 MB in swap, 25% busy (0.5 on efficiency cores).");
}

TEST_F(HistoryViewTest, theSentenceNamesThePressure) {
    auto tight = moment(Seconds{60});
    tight.efficiency.reset();
    tight.pressure = 2;
    show({tight});
    EXPECT_EQ(detail().sentence, "8 GB of 32 GB used, 512 MB in swap, 25% busy, pressure Elevated.");
    tight.pressure = 4;
    show({tight});
    EXPECT_EQ(detail().sentence, "8 GB of 32 GB used, 512 MB in swap, 25% busy, pressure Critical.");
}

TEST_F(HistoryViewTest, theFiveLargestAreListed) {
    auto full = moment(Seconds{60});
    full.holders = {holder("a", GiB),     holder("b", 3 * GiB), holder("c", 2 * GiB),
                    holder("d", GiB / 2), holder("e", GiB),     holder("f", 4 * GiB)};
    full.holders[5].appPath = "/Applications/F.app";
    show({full});
    const auto list = detail().largest;
    EXPECT_EQ(list.title, "Largest then");
    EXPECT_EQ(list.empty, "Nothing recorded.");
    ASSERT_THAT(list.rows, SizeIs(5));
    EXPECT_EQ(list.rows[0], (HolderRow{"f", "/Applications/F.app", "4 GB"}));
    EXPECT_EQ(list.rows[1], (HolderRow{"b", std::nullopt, "3 GB"}));
    EXPECT_EQ(list.rows[3].title, "a");
    EXPECT_EQ(list.rows[4].title, "e");
}

TEST_F(HistoryViewTest, whatGrewIsComparedWithAQuarterOfAnHourBefore) {
    auto before = moment(Seconds{960});
    before.holders = {holder("a", GiB), holder("b", GiB), holder("c", GiB)};
    auto after = moment(Seconds{60});
    after.holders = {holder("a", 2 * GiB), holder("b", GiB + 49 * MiB), holder("c", GiB + 100 * MiB)};
    show({moment(Seconds{1500}), before, moment(Seconds{600}), after});
    const auto list = detail().grew;
    EXPECT_EQ(list.title, "Grew most in the 15 minutes before");
    EXPECT_EQ(list.empty, "Nothing grew by 50 MB or more.");
    EXPECT_THAT(list.rows, ElementsAre(HolderRow{"a", std::nullopt, "+1 GB"}, HolderRow{"c", std::nullopt, "+100 MB"}));
}

TEST_F(HistoryViewTest, momentsBeforeTheRangeCountForWhatGrew) {
    auto before = moment(Seconds{3700});
    before.holders = {holder("a", GiB)};
    auto after = moment(Seconds{2900});
    after.holders = {holder("a", 2 * GiB)};
    show({before, after});
    auto history = view();
    history.setRange(HistoryRange::hour);
    EXPECT_THAT(history.content()->detail.grew.rows, SizeIs(1));
}

TEST_F(HistoryViewTest, tenMinutesOfHistoryAreTheLeast) {
    show({moment(Seconds{659}), moment(Seconds{60})});
    EXPECT_EQ(detail().grew.empty, "Not enough history before this moment.");
    EXPECT_THAT(detail().grew.rows, IsEmpty());
    show({moment(Seconds{660}), moment(Seconds{60})});
    EXPECT_EQ(detail().grew.empty, "Nothing grew by 50 MB or more.");
}

TEST_F(HistoryViewTest, whatRulesDidAroundTheMomentIsListed) {
    show({moment(Seconds{600}), moment(Seconds{60})});
    modelState->activity.set({entry(Seconds{539}, "Too late"), entry(Seconds{540}, "Relaunched"),
                              entry(Seconds{1499}, "Would terminate"), entry(Seconds{1500}, "Too early")});
    auto history = view();
    history.select(now - Seconds{600});
    EXPECT_EQ(MomentDetail::rulesTitle, "Rules in the 15 minutes before");
    EXPECT_THAT(history.content()->detail.rules,
                ElementsAre(RuleActRow{"Relaunched: Slack", "14:32"}, RuleActRow{"Would terminate: Slack", "14:16"}));
}

TEST_F(HistoryViewTest, withoutActsOfRulesThereIsNoSuchSection) {
    show({moment(Seconds{60})});
    modelState->activity.set({entry(Seconds{5000}, "Relaunched")});
    EXPECT_THAT(detail().rules, IsEmpty());
}

}  // namespace
}  // namespace tolvane
