#include "app/screens/stats/StatsView.h"

#include <gmock/gmock.h>

#include "app/screens/activity/ActivityView.h"
#include "tests/app/ModelTest.h"

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr Seconds day{86400};

struct StatsViewTest : ModelTest {
    StatsViewTest() {
        startStill();
        today = calendar.startOfDay(clock.now());
    }

    static ActivityEntry acted(const char* rule, Date date, std::uint64_t freed, std::uint64_t compressed = 0) {
        return {.id = UUID::random(),
                .date = date,
                .ruleName = rule,
                .subject = "node",
                .outcome = "Terminated",
                .memory = freed,
                .freed = freed,
                .freedCompressed = compressed};
    }
    static ActivityEntry logged(const char* rule, Date date, std::uint64_t memory, const char* key = "a") {
        return {.id = UUID::random(),
                .date = date,
                .ruleName = rule,
                .subject = "node",
                .outcome = "Would terminate",
                .memory = memory,
                .dryRun = true,
                .subjectKey = key};
    }
    StatsView view(StatsPeriod period = StatsPeriod::week) {
        StatsView(*model, "en_US", "UTC").setPeriod(period);
        return {*model, "en_US", "UTC"};
    }
    StatsContent content(StatsPeriod period = StatsPeriod::week) { return view(period).content(); }

    Calendar calendar{"UTC"};
    Date today;
};

TEST_F(StatsViewTest, isEmptyWithoutALog) {
    EXPECT_TRUE(view().isEmpty());
    EXPECT_EQ(StatsView::empty.title, "No Stats Yet");
    EXPECT_EQ(StatsView::empty.sentence,
              "Once a rule acts, or logs what it would do, this shows how much memory it gave back.");
    EXPECT_EQ(StatsView::empty.icon, "chart.bar");
    modelState->activity.set({acted("A", today, MiB)});
    EXPECT_FALSE(view().isEmpty());
}

TEST_F(StatsViewTest, fallsBackToTheEmptyStateWhenTheLogIsCleared) {
    modelState->activity.set({acted("A", today, MiB)});
    ActivityView activity(*model, "en_US");
    activity.askToClear();
    activity.confirmClear();
    EXPECT_TRUE(view().isEmpty());
}

TEST_F(StatsViewTest, thePeriodIsRemembered) {
    EXPECT_EQ(StatsView::periodLabel, "Period");
    EXPECT_EQ(statsPeriods[0].label, "7 Days");
    EXPECT_EQ(statsPeriods[1].label, "30 Days");
    EXPECT_EQ(statsPeriods[2].label, "All Time");
    EXPECT_EQ(StatsView(*model, "en_US").period(), StatsPeriod::week);
    view(StatsPeriod::all);
    EXPECT_EQ(std::get<std::string>(world.preferences.at("statsPeriod")), "all");
    EXPECT_EQ(StatsView(*model, "en_US").period(), StatsPeriod::all);
    world.preferences["statsPeriod"] = std::string("century");
    EXPECT_EQ(StatsView(*model, "en_US").period(), StatsPeriod::week);
}

TEST_F(StatsViewTest, namesTheSpanOfEachPeriod) {
    EXPECT_EQ(content(StatsPeriod::week).headline, "Freed by rules, last 7 days");
    EXPECT_EQ(content(StatsPeriod::month).headline, "Freed by rules, last 30 days");
    EXPECT_EQ(content(StatsPeriod::all).headline, "Freed by rules, all time");
}

TEST_F(StatsViewTest, sumsWhatWasFreed) {
    modelState->activity.set({acted("A", today, 2 * GiB, GiB), acted("B", today, GiB)});
    const auto shown = content();
    EXPECT_EQ(shown.freed, "3 GB");
    EXPECT_EQ(shown.remark, "From 2 actions. 1 GB of it was compressed or in swap.");
}

TEST_F(StatsViewTest, oneActionIsAnAction) {
    modelState->activity.set({acted("A", today, GiB)});
    EXPECT_EQ(content().remark, "From 1 action. None of it was compressed or in swap.");
}

TEST_F(StatsViewTest, aLogOfDryRunsFreedNothingYet) {
    modelState->activity.set({logged("A", today, GiB)});
    const auto shown = content();
    EXPECT_EQ(shown.freed, "Nothing yet");
    EXPECT_EQ(shown.remark, "No rule stopped or restarted anything in this period.");
    EXPECT_THAT(shown.eachRule, IsEmpty());
    ASSERT_TRUE(shown.wouldHaveFreed);
    EXPECT_THAT(shown.wouldHaveFreed->bars, ElementsAre(StatsBar{"A", "1 GB", 1}));
}

TEST_F(StatsViewTest, anActionThatFreedNothingStillCounts) {
    modelState->activity.set({acted("A", today, 0)});
    const auto shown = content();
    EXPECT_EQ(shown.freed, "Nothing yet");
    EXPECT_EQ(shown.remark, "From 1 action. None of it was compressed or in swap.");
    EXPECT_THAT(shown.eachRule, ElementsAre(StatsBar{"A", "Zero KB", 0}));
}

TEST_F(StatsViewTest, hasABarForEachRuleThatActed) {
    modelState->activity.set(
        {acted("Small", today, GiB / 2), acted("Large", today, 2 * GiB), logged("Quiet", today, GiB)});
    EXPECT_THAT(content().eachRule, ElementsAre(StatsBar{"Large", "2 GB", 1}, StatsBar{"Small", "512 MB", 0.25}));
    EXPECT_EQ(StatsView::eachRuleTitle, "Each rule");
    EXPECT_EQ(StatsView::eachRuleRemark,
              "Counts only processes that are gone. A restart counts what the app used before, minus what it used a "
              "minute after it came back.");
}

TEST_F(StatsViewTest, hasABarForEachDay) {
    modelState->activity.set({acted("A", today + Seconds{60}, GiB), acted("A", today - 2 * day, 2 * GiB)});
    const auto shown = content();
    ASSERT_THAT(shown.days, SizeIs(7));
    EXPECT_EQ(shown.days[6].day, today);
    EXPECT_EQ(shown.days[6].memory, GiB);
    EXPECT_EQ(shown.days[4].figure, "2 GB");
    EXPECT_EQ(shown.days[0].day, today - 6 * day);
    EXPECT_THAT(content(StatsPeriod::month).days, SizeIs(30));
    EXPECT_EQ(StatsView::chartTitle, "Memory freed each day");
    EXPECT_EQ(StatsView::chartShortTitle, "Each day");
    EXPECT_EQ(StatsView::dayAxis, "Day");
    EXPECT_EQ(StatsView::freedAxis, "Freed");
}

TEST_F(StatsViewTest, namesDaysByWeekdayInAWeekAndByDateInAMonth) {
    clock.advance(Date{Seconds{816877920}} - clock.now());
    EXPECT_EQ(content().days[6].label, "Fri");
    EXPECT_EQ(content().days[6].spoken, "Friday, November 20: Zero KB");
    EXPECT_EQ(content(StatsPeriod::month).days[29].label, "Nov 20");
}

TEST_F(StatsViewTest, aPeriodIsOfWholeDaysAndIncludesToday) {
    modelState->activity.set(
        {acted("In", today - 6 * day + Seconds{60}, GiB), acted("Out", today - 6 * day - Seconds{60}, GiB)});
    const auto shown = content();
    EXPECT_EQ(shown.freed, "1 GB");
    ASSERT_THAT(shown.eachRule, SizeIs(1));
    EXPECT_EQ(shown.eachRule[0].rule, "In");
}

TEST_F(StatsViewTest, allTimeReachesToTheOldestDayAndIsNeverLessThanAWeek) {
    const auto days = [&](const std::vector<ActivityEntry>& entries) {
        return StatsView::days(StatsPeriod::all, entries, clock.now(), calendar);
    };
    EXPECT_EQ(days({}), 7);
    EXPECT_EQ(days({acted("A", today, 1)}), 7);
    EXPECT_EQ(days({acted("A", today - 6 * day, 1)}), 7);
    EXPECT_EQ(days({acted("A", today - 7 * day, 1)}), 8);
    EXPECT_EQ(days({acted("A", today, 1), acted("A", today - 40 * day + Seconds{5}, 1)}), 41);
    modelState->activity.set({acted("A", today - 40 * day, GiB)});
    EXPECT_EQ(content(StatsPeriod::all).freed, "1 GB");
}

TEST_F(StatsViewTest, daysAreCountedOnTheCalendarAcrossAChangeOfTheClock) {
    const Calendar berlin("Europe/Berlin");
    /// 2026-11-20 12:00 UTC; summer time ended on October 25.
    const Date now{Seconds{816868800}};
    EXPECT_EQ(StatsView::days(StatsPeriod::all, {acted("A", now - 30 * day, 1)}, now, berlin), 31);
    EXPECT_EQ(StatsView::since(31, now, berlin), berlin.startOfDay(now - 30 * day));
}

TEST_F(StatsViewTest, anEntryThatClaimsToBeFromTheFirstYearEndsNothing) {
    EXPECT_EQ(StatsView::days(StatsPeriod::all, {acted("A", distantPast, 1)}, clock.now(), calendar), 7305);
}

TEST_F(StatsViewTest, showsTheRuleThatWouldHaveFreedMost) {
    const Rule rule{.id = UUID::random(), .name = "Idle Rails servers"};
    modelState->rules.set({rule});
    modelState->activity.set({logged("Idle Rails servers", today, GiB), logged("Gone", today, MiB)});
    auto shown = view();
    const auto would = shown.content().wouldHaveFreed;
    ASSERT_TRUE(would);
    EXPECT_EQ(would->showRule, "Show Idle Rails servers");
    EXPECT_EQ(would->rule, rule.id);
    shown.show(*would->rule);
    EXPECT_EQ(*model->selectedRule, rule.id);
    EXPECT_EQ(*model->section, AppSection::rules);
    EXPECT_EQ(StatsView::wouldTitle, "Log Only rules would have freed");
    EXPECT_EQ(StatsView::wouldRemark, "Each process counted once, at the most memory it used while logged.");
}

TEST_F(StatsViewTest, aRuleThatIsGoneCannotBeShown) {
    modelState->activity.set({logged("Gone", today, GiB)});
    const auto would = content().wouldHaveFreed;
    ASSERT_TRUE(would);
    EXPECT_EQ(would->rule, std::nullopt);
    EXPECT_EQ(would->showRule, "");
}

TEST_F(StatsViewTest, withoutDryRunsThereIsNoSuchSection) {
    modelState->activity.set({acted("A", today, GiB)});
    EXPECT_EQ(content().wouldHaveFreed, std::nullopt);
}

std::vector<std::string> labels(std::uint64_t largest) {
    std::vector<std::string> labels;
    for (const auto& tick : StatsView::ticks(largest, "en_US")) labels.push_back(tick.label);
    return labels;
}

TEST(StatsTicks, areRoundAndReachTheLargestDay) {
    constexpr std::uint64_t MiB = 1'048'576, GiB = 1024 * MiB;
    EXPECT_THAT(labels(0), ElementsAre("0 GB", "512 MB", "1 GB"));
    EXPECT_THAT(labels(1), ElementsAre("0 MB", "1 MB", "2 MB"));
    EXPECT_THAT(labels(80 * MiB), ElementsAre("0 MB", "20 MB", "40 MB", "60 MB", "80 MB"));
    EXPECT_THAT(labels(900 * MiB), ElementsAre("0 GB", "512 MB", "1 GB"));
    EXPECT_THAT(labels(GiB * 19 / 10), ElementsAre("0 GB", "1 GB", "2 GB"));
    EXPECT_THAT(labels(7 * GiB), ElementsAre("0 GB", "2 GB", "4 GB", "6 GB", "8 GB"));
    EXPECT_THAT(labels(41 * GiB), ElementsAre("0 GB", "20 GB", "40 GB", "60 GB"));
}

TEST(StatsTicks, endForEveryFigure) {
    const auto ticks = StatsView::ticks(~std::uint64_t{0}, "en_US");
    EXPECT_LE(ticks.size(), 6U);
    EXPECT_GE(ticks.back().value, 1.8e19);
}

}  // namespace
}  // namespace tolvane
