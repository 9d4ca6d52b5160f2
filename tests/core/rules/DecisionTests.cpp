#include "core/rules/Decision.h"

#include <gtest/gtest.h>

namespace tolvane {
namespace {

constexpr Date now{Seconds{800'000'000}};
constexpr std::uint64_t megabyte = 1U << 20U;

Decision decision(std::uint64_t memory, double unusedSeconds) {
    return {.rule = {.name = "Idle Rails servers"},
            .title = "puma",
            .memory = memory,
            .unusedSince = now - Seconds{unusedSeconds}};
}

TEST(DecisionReason, tellsForHowLongItWasUnused) {
    auto one = decision(512 * megabyte, 2 * 86400 + 5400);
    one.rule.unusedMinutes = 240;
    EXPECT_EQ(one.reason(now, "en_US"),
              "puma had been unused for 2 days, 1 hr, 30 min and was using 512 MB. Rule: Idle Rails servers.");
}

TEST(DecisionReason, withALimitOnlyTellsTheLimit) {
    auto one = decision(1536 * megabyte, 0);
    one.rule.memoryMB = 1024;
    EXPECT_EQ(one.reason(now, "en_US"), "puma was using 1.5 GB, over the 1 GB limit. Rule: Idle Rails servers.");
}

TEST(DecisionReason, tellsThatMemoryWasTight) {
    auto one = decision(1000 * megabyte, 0);
    one.rule.onlyWhenTight = true;
    EXPECT_EQ(one.reason(now, "en_US"), "puma was using 1,000 MB, while memory was tight. Rule: Idle Rails servers.");
    one.rule.onlyWhenTight = false;
    EXPECT_EQ(one.reason(now, "en_US"), "puma was using 1,000 MB. Rule: Idle Rails servers.");
}

TEST(DecisionReason, tellsAllOfIt) {
    auto one = decision(2048 * megabyte, 3600);
    one.rule.unusedMinutes = 60;
    one.rule.memoryMB = 1536;
    one.rule.onlyWhenTight = true;
    EXPECT_EQ(one.reason(now, "en_US"),
              "puma had been unused for 1 hr and was using 2 GB, over the 1.5 GB limit, while memory was tight. "
              "Rule: Idle Rails servers.");
}

TEST(DecisionReason, spellsZeroOutAndTellsOneMinuteAtLeast) {
    auto one = decision(0, 5);
    one.rule.unusedMinutes = 0;
    EXPECT_EQ(one.reason(now, "en_US"),
              "puma had been unused for 1 min and was using Zero kB. Rule: Idle Rails servers.");
}

TEST(DecisionReason, speaksTheLocalesNumbers) {
    EXPECT_EQ(decision(1536 * megabyte, 0).reason(now, "de_DE"), "puma was using 1,5 GB. Rule: Idle Rails servers.");
}

TEST(Decision, readsThroughToItsRule) {
    Decision one;
    one.rule.action = RuleAction::quit;
    one.rule.dryRun = false;
    EXPECT_EQ(one.action(), RuleAction::quit);
    EXPECT_FALSE(one.dryRun());
}

}  // namespace
}  // namespace tolvane
