#include "app/screens/rules/RuleSummary.h"

#include <gtest/gtest.h>

#include <limits>

namespace tolvane {
namespace {

std::string summary(const Rule& rule) { return summaryOf(rule, "en_US"); }

TEST(RuleSummary, namesTheActionAndEachCondition) {
    EXPECT_EQ(summary({.unusedMinutes = 120, .action = RuleAction::terminate}), "Terminate when unused for 2h");
    EXPECT_EQ(summary({.memoryMB = 1536, .action = RuleAction::relaunch}), "Relaunch when using over 1.5 GB");
    EXPECT_EQ(summary({.unusedMinutes = 60, .memoryMB = 512, .action = RuleAction::quit, .onlyWhenTight = true}),
              "Quit when unused for 1h and using over 512 MB and memory is tight");
    EXPECT_EQ(summary({.unusedMinutes = 90, .action = RuleAction::lowerPriority, .onlyWhenTight = true}),
              "Lower Priority when unused for 1h 30m and memory is tight");
    EXPECT_EQ(summary({.unusedMinutes = 1440, .action = RuleAction::notify}), "Notify when unused for 1d");
}

TEST(RuleSummary, withoutAConditionSaysSoWhateverTheGate) {
    EXPECT_EQ(summary({}), "Needs a condition");
    EXPECT_EQ(summary({.onlyWhenTight = true}), "Needs a condition");
    EXPECT_EQ(summary({.onlyWhenTight = false}), "Needs a condition");
}

TEST(RuleSummary, aStoredFalseOfTheGateIsNotMentioned) {
    EXPECT_EQ(summary({.unusedMinutes = 60, .onlyWhenTight = false}), "Notify when unused for 1h");
}

TEST(RuleSummary, speaksOfFiguresThatNobodyOffers) {
    EXPECT_EQ(summary({.unusedMinutes = 0}), "Notify when unused for <1m");
    EXPECT_EQ(summary({.unusedMinutes = -5}), "Notify when unused for <1m");
    EXPECT_EQ(summary({.memoryMB = 0}), "Notify when using over Zero KB");
    EXPECT_EQ(summary({.memoryMB = -3}), "Notify when using over -3 MB");
    EXPECT_FALSE(summary({.unusedMinutes = std::numeric_limits<std::int64_t>::max(),
                          .memoryMB = std::numeric_limits<std::int64_t>::max()})
                     .empty());
}

TEST(RuleSummary, usesTheWordsOfTheLocale) {
    EXPECT_EQ(summaryOf({.memoryMB = 1536}, "de_DE"), "Notify when using over 1,5 GB");
}

TEST(RuleSummary, ofThePresets) {
    std::vector<std::string> all;
    for (const auto& rule : Rule::presets()) all.push_back(summary(rule));
    EXPECT_EQ(all, (std::vector<std::string>{"Terminate when unused for 2h", "Terminate when unused for 4h",
                                             "Terminate when unused for 30m",
                                             "Relaunch when unused for 1h and using over 1.5 GB",
                                             "Relaunch when unused for 1h and using over 1.5 GB"}));
}

}  // namespace
}  // namespace tolvane
