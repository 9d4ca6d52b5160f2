#include "core/storage/ActivityStats.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "core/words/Calendar.h"

namespace tolvane {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr Date now{Seconds{800'000'000}};
constexpr std::uint64_t megabyte = 1U << 20U;

ActivityEntry acted(std::string_view outcome, std::uint64_t memory, Date date = now) {
    return {.date = date, .ruleName = "rule", .subject = "puma", .outcome = outcome, .memory = memory};
}

ActivityEntry measured(std::uint64_t freed, Date date = now) {
    auto entry = acted("Quit", 1000, date);
    entry.freed = freed;
    return entry;
}

ActivityEntry wouldHave(std::string_view key, std::uint64_t memory, std::string_view rule = "rule") {
    return {.date = now,
            .ruleName = rule,
            .subject = "puma",
            .outcome = "Would terminate",
            .memory = memory,
            .dryRun = true,
            .subjectKey = Text(key)};
}

// What was freed

TEST(ActivityStats, ofAnEmptyLogAreZero) {
    EXPECT_EQ(ActivityStats::freed({}, distantPast), FreedTotals{});
    EXPECT_EQ(ActivityStats::wouldFree({}, distantPast), FreedTotals{});
    EXPECT_THAT(ActivityStats::byRule({}, distantPast), IsEmpty());
    const auto days = ActivityStats::daily({}, 7, now, Calendar("Europe/Berlin"));
    EXPECT_THAT(days, SizeIs(7));
    EXPECT_THAT(days, Each(Field(&ActivityStats::Day::memory, 0)));
}

TEST(Freed, countsFromTheDateOn) {
    const std::vector entries = {measured(1, now), measured(2, now - Seconds{0.001}), measured(4, now + Seconds{1})};
    EXPECT_EQ(ActivityStats::freed(entries, now), (FreedTotals{.actions = 2, .memory = 5}));
}

TEST(Freed, takesTheMeasuredFigureWhateverItIs) {
    auto entry = acted("Terminated", 1000);
    entry.compressed = 500;
    entry.freed = 0;
    EXPECT_EQ(ActivityStats::freed({entry}, now), (FreedTotals{.actions = 1}));
    entry.outcome = "Could not quit";
    entry.freed = 7;
    entry.freedCompressed = 3;
    EXPECT_EQ(ActivityStats::freed({entry}, now), (FreedTotals{.actions = 1, .memory = 7, .compressed = 3}));
}

TEST(Freed, takesTheSizeOfATerminatedProcessThatNobodyMeasured) {
    auto entry = acted("Terminated", 1000);
    EXPECT_EQ(ActivityStats::freed({entry}, now), (FreedTotals{.actions = 1, .memory = 1000}));
    entry.compressed = 500;
    EXPECT_EQ(ActivityStats::freed({entry}, now), (FreedTotals{.actions = 1, .memory = 1000, .compressed = 500}));
}

TEST(Freed, passesOverOtherOutcomesWithoutAFigure) {
    const std::vector entries = {acted("Quit", 10), acted("terminated", 10), acted("Terminated.", 10), acted("", 10)};
    EXPECT_EQ(ActivityStats::freed(entries, now), FreedTotals{});
}

TEST(Freed, passesOverWhatWasOnlyLogged) {
    auto entry = measured(5);
    entry.dryRun = true;
    EXPECT_EQ(ActivityStats::freed({entry}, now), FreedTotals{});
    entry.outcome = "Terminated";
    EXPECT_EQ(ActivityStats::freed({entry}, now), FreedTotals{});
}

TEST(Freed, aLogThatClaimsMoreThanThereIsDoesNoHarm) {
    constexpr auto most = std::numeric_limits<std::uint64_t>::max();
    EXPECT_EQ(ActivityStats::freed({measured(most), measured(most)}, now).memory, most);
}

// What would have been freed

TEST(WouldFree, countsASubjectOnceAtItsLargest) {
    const std::vector entries = {wouldHave("pid:1:2.0", 100 * megabyte), wouldHave("pid:1:2.0", 300 * megabyte)};
    const FreedTotals expected{.actions = 1, .memory = 300 * megabyte};
    EXPECT_EQ(ActivityStats::wouldFree(entries, now), expected);
    EXPECT_EQ(ActivityStats::wouldFree({entries[1], entries[0]}, now), expected);
}

TEST(WouldFree, ofEqualSizesTheLaterOneInTheListCounts) {
    auto first = wouldHave("a", 10);
    first.compressed = 1;
    auto second = wouldHave("a", 10);
    second.compressed = 2;
    EXPECT_EQ(ActivityStats::wouldFree({first, second}, now).compressed, 2U);
    EXPECT_EQ(ActivityStats::wouldFree({second, first}, now).compressed, 1U);
}

TEST(WouldFree, withoutAKeyFoldsExactRepeatsOnly) {
    auto small = wouldHave("", 10);
    small.subjectKey.reset();
    auto large = small;
    large.memory = 20;
    EXPECT_EQ(ActivityStats::wouldFree({small, large, small}, now), (FreedTotals{.actions = 2, .memory = 30}));
}

TEST(WouldFree, countsASubjectOncePerRule) {
    EXPECT_EQ(ActivityStats::wouldFree({wouldHave("a", 10, "x"), wouldHave("a", 10, "y")}, now),
              (FreedTotals{.actions = 2, .memory = 20}));
}

TEST(WouldFree, keysAreOneJoinedText) {
    auto keyed = wouldHave("puma|10", 10);
    auto plain = wouldHave("", 10);
    plain.subjectKey.reset();
    EXPECT_EQ(ActivityStats::wouldFree({keyed, plain}, now).actions, 1);
}

TEST(WouldFree, lowersNothingByLoweringAPriority) {
    auto entry = wouldHave("a", 10);
    entry.outcome = "Would lower priority";
    EXPECT_EQ(ActivityStats::wouldFree({entry}, now), FreedTotals{});
}

TEST(WouldFree, looksAtLoggedEntriesSinceTheDate) {
    auto old = wouldHave("a", 10);
    old.date = now - Seconds{1};
    auto real = wouldHave("b", 20);
    real.dryRun = false;
    EXPECT_EQ(ActivityStats::wouldFree({old, real, wouldHave("c", 40)}, now),
              (FreedTotals{.actions = 1, .memory = 40}));
}

// Days

Date at(std::string_view zone, int daysAfter2026, double hours) {
    // Noon UTC of 2026-01-01 falls on that day in every zone tested here.
    constexpr Date noon = dateFromUnixSeconds(1767268800);
    const Calendar calendar(zone);
    return calendar.startOfDay(*calendar.addingDays(noon, daysAfter2026)) + Seconds{hours * 3600};
}

TEST(Daily, givesTheDaysOldestFirstAndEachItsSum) {
    const std::string_view zone = "Europe/Berlin";
    const std::vector entries = {measured(1, at(zone, 10, 23.99)),  measured(2, at(zone, 10, 0)),
                                 measured(4, at(zone, 9, 23.9999)), measured(8, at(zone, 7, 24 - 0.001)),
                                 measured(16, at(zone, 8, 0)),      measured(32, at(zone, 11, 0))};
    const std::vector<ActivityStats::Day> expected = {{at(zone, 8, 0), 16}, {at(zone, 9, 0), 4}, {at(zone, 10, 0), 3}};
    EXPECT_EQ(ActivityStats::daily(entries, 3, at(zone, 10, 15), Calendar(zone)), expected);
    auto reversed = entries;
    std::ranges::reverse(reversed);
    EXPECT_EQ(ActivityStats::daily(reversed, 3, at(zone, 10, 0), Calendar(zone)), expected);
}

TEST(Daily, countsWhatFreedCounts) {
    auto dry = measured(1);
    dry.dryRun = true;
    auto zero = acted("Terminated", 100);
    zero.freed = 0;
    const std::vector entries = {dry, zero, acted("Terminated", 4), acted("Quit", 8), measured(16)};
    EXPECT_THAT(ActivityStats::daily(entries, 1, now, Calendar("UTC")),
                ElementsAre(Field(&ActivityStats::Day::memory, 20)));
}

TEST(Daily, fewerThanOneDayIsOne) {
    for (const int days : {0, -5, 1}) {
        EXPECT_THAT(ActivityStats::daily({measured(3)}, days, now, Calendar("UTC")),
                    ElementsAre(Field(&ActivityStats::Day::memory, 3)));
    }
}

TEST(Daily, daysOfSummerTimeChangesAreWhole) {
    const std::string_view zone = "Europe/Berlin";
    // 2026-03-29 has 23 hours, 2026-10-25 has 25.
    EXPECT_EQ(at(zone, 88, 0) - at(zone, 87, 0), Seconds{23 * 3600});
    EXPECT_EQ(at(zone, 298, 0) - at(zone, 297, 0), Seconds{25 * 3600});
    for (const int day : {87, 297}) {
        const std::vector entries = {measured(1, at(zone, day, 0)), measured(2, at(zone, day + 1, -0.001)),
                                     measured(4, at(zone, day + 1, 0))};
        const auto days = ActivityStats::daily(entries, 3, at(zone, day + 1, 10), Calendar(zone));
        EXPECT_EQ(days, (std::vector<ActivityStats::Day>{
                            {at(zone, day - 1, 0), 0}, {at(zone, day, 0), 3}, {at(zone, day + 1, 0), 4}}));
    }
}

TEST(Daily, daysThatBeginLateAreFoundFromTheirNeighbours) {
    // 2017-10-15 began at one o'clock in this zone.
    const Calendar calendar("America/Sao_Paulo");
    const Date begin = dateFromUnixSeconds(1508036400);
    EXPECT_EQ(calendar.startOfDay(begin + Seconds{7200}), begin);
    EXPECT_EQ(calendar.startOfDay(begin - Seconds{1}), begin - Seconds{86400});
    const std::vector entries = {measured(1, begin - Seconds{1}), measured(2, begin),
                                 measured(4, begin - Seconds{86400}), measured(8, begin + Seconds{23 * 3600})};
    EXPECT_EQ(
        ActivityStats::daily(entries, 3, begin + Seconds{30 * 3600}, calendar),
        (std::vector<ActivityStats::Day>{{begin - Seconds{86400}, 5}, {begin, 2}, {begin + Seconds{23 * 3600}, 8}}));
    EXPECT_EQ(ActivityStats::daily(entries, 2, begin + Seconds{3600}, calendar),
              (std::vector<ActivityStats::Day>{{begin - Seconds{86400}, 5}, {begin, 2}}));
}

TEST(Daily, aMidnightThatComesTwiceBeginsItsDayOnce) {
    // On 2025-11-02 clocks in this zone went back from one o'clock to midnight.
    const Calendar calendar("America/Havana");
    const Date begin = dateFromUnixSeconds(1762056000);
    EXPECT_EQ(calendar.startOfDay(begin), begin);
    EXPECT_EQ(calendar.startOfDay(begin + Seconds{3600}), begin);
    EXPECT_EQ(calendar.startOfDay(begin + Seconds{24 * 3600}), begin);
    EXPECT_EQ(calendar.startOfDay(begin - Seconds{1}), begin - Seconds{86400});
}

// Rules

ActivityEntry byRuleNamed(std::string_view rule, ActivityEntry entry) {
    entry.ruleName = rule;
    return entry;
}

std::vector<std::string> names(const std::vector<ActivityStats::RuleTotals>& rules) {
    std::vector<std::string> all;
    for (const auto& rule : rules) all.push_back(rule.rule.str());
    return all;
}

TEST(ByRule, givesBothTotalsOfEachRule) {
    const std::vector entries = {measured(5), wouldHave("a", 7), wouldHave("a", 9), byRuleNamed("other", measured(1))};
    EXPECT_THAT(ActivityStats::byRule(entries, now),
                ElementsAre(
                    ActivityStats::RuleTotals{
                        .rule = "rule", .freed = {.actions = 1, .memory = 5}, .would = {.actions = 1, .memory = 9}},
                    ActivityStats::RuleTotals{.rule = "other", .freed = {.actions = 1, .memory = 1}}));
}

TEST(ByRule, ranksByFreedThenByWouldThenByName) {
    const std::vector entries = {byRuleNamed("b", measured(5)),        byRuleNamed("a", measured(5)),
                                 byRuleNamed("c", measured(6)),        wouldHave("x", 3, "b"),
                                 byRuleNamed("Z", acted("Quit", 100)), byRuleNamed("e", acted("Quit", 100))};
    EXPECT_THAT(names(ActivityStats::byRule(entries, now)), ElementsAre("c", "b", "a", "Z", "e"));
}

TEST(ByRule, keepsRulesOfOldEntriesWithZeros) {
    EXPECT_THAT(ActivityStats::byRule({measured(5, now - Seconds{1})}, now),
                ElementsAre(ActivityStats::RuleTotals{.rule = "rule"}));
}

}  // namespace
}  // namespace tolvane
