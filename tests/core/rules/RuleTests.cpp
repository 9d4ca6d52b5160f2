#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "core/json/Decode.h"
#include "core/json/Encode.h"
#include "core/rules/Rule.h"

namespace tolvane {
namespace {

using ::testing::ElementsAre;

TEST(Rule, withoutItsOptionalKeysHasNoConditionAndWritesNone) {
    const std::string text = R"({"id":"0F1E2D3C-4B5A-4978-8695-A4B3C2D1E0FF","name":"n","enabled":true,"dryRun":false,)"
                             R"("target":{"emptyClaudeSession":{}},"action":"notify"})";
    const auto rule = json::decode<Rule>(text);
    ASSERT_TRUE(rule);
    EXPECT_FALSE(rule->hasCondition());
    EXPECT_EQ(json::encode(*rule), text);
}

TEST(Rule, hasAConditionByUseOrBySize) {
    EXPECT_TRUE(Rule{.unusedMinutes = 0}.hasCondition());
    EXPECT_TRUE(Rule{.memoryMB = 1}.hasCondition());
    EXPECT_FALSE(Rule{.onlyWhenTight = true}.hasCondition());
}

TEST(Rule, keepsAStoredFalseOfTheTightGate) {
    const Rule rule{.onlyWhenTight = false};
    EXPECT_EQ(json::decode<Rule>(*json::encode(rule))->onlyWhenTight, false);
}

TEST(Rule, countsItsLimitInBinaryMegabytes) {
    EXPECT_EQ(Rule{.memoryMB = 512}.memoryLimit(), 536870912U);
    EXPECT_EQ(Rule{.memoryMB = INT64_MAX}.memoryLimit(), UINT64_MAX);
    EXPECT_EQ(Rule{.memoryMB = -1}.memoryLimit(), std::nullopt);
    EXPECT_EQ(Rule{}.memoryLimit(), std::nullopt);
}

TEST(Rule, aNegativeLimitDecodes) { EXPECT_EQ(json::decode<Rule>(*json::encode(Rule{.memoryMB = -3}))->memoryMB, -3); }

TEST(RuleMode, isAViewOfTwoSwitches) {
    EXPECT_EQ((Rule{.enabled = false, .dryRun = false}.mode()), RuleMode::off);
    EXPECT_EQ((Rule{.enabled = false, .dryRun = true}.mode()), RuleMode::off);
    EXPECT_EQ((Rule{.enabled = true, .dryRun = true}.mode()), RuleMode::logOnly);
    EXPECT_EQ((Rule{.enabled = true, .dryRun = false}.mode()), RuleMode::on);
}

TEST(RuleMode, settingItSetsBothSwitches) {
    Rule rule{.enabled = true, .dryRun = false};
    rule.setMode(RuleMode::off);
    EXPECT_EQ(rule, (Rule{.enabled = false, .dryRun = true}));
    rule.setMode(RuleMode::logOnly);
    EXPECT_EQ(rule, (Rule{.enabled = true, .dryRun = true}));
    rule.setMode(RuleMode::on);
    EXPECT_EQ(rule, (Rule{.enabled = true, .dryRun = false}));
}

TEST(RuleAction, hasTitlesAndRawTextsInOneOrder) {
    std::vector<std::string_view> titles;
    for (const auto action : RuleActions::allCases) titles.push_back(RuleActions::title(action));
    EXPECT_THAT(titles, ElementsAre("Notify", "Terminate", "Quit", "Relaunch", "Lower Priority"));
    for (std::size_t index = 0; index < RuleActions::allCases.size(); ++index) {
        EXPECT_EQ(json::Texts<RuleAction>::texts[index].first, RuleActions::allCases[index]);
    }
    const std::vector<RuleAction> actions(RuleActions::allCases.begin(), RuleActions::allCases.end());
    EXPECT_EQ(json::encode(actions), R"(["notify","terminate","quit","relaunch","lowerPriority"])");
}

TEST(Rule, knowsTheAgents) {
    EXPECT_THAT(Rule::defaultAgentNames, ElementsAre("claude", "codex", "gemini", "opencode", "aider", "goose",
                                                     "cursor-agent", "amp", "copilot"));
}

TEST(RulePresets, areFiveRulesThatAreOff) {
    std::set<UUID> ids;
    for (const auto& rule : Rule::presets()) {
        EXPECT_EQ(rule.mode(), RuleMode::off);
        EXPECT_TRUE(rule.dryRun);
        EXPECT_EQ(rule.onlyWhenTight, std::nullopt);
        ids.insert(rule.id);
    }
    EXPECT_EQ(ids.size(), 5U);
    EXPECT_EQ(&Rule::presets(), &Rule::presets());
}

TEST(RulePresets, sayWhatTheySay) {
    const auto told = [](const Rule& rule) {
        return rule.name + " | " + *json::encode(std::vector{rule.target}) + " | " +
               std::to_string(*rule.unusedMinutes) + " | " + std::to_string(rule.memoryMB.value_or(0)) + " | " +
               std::string(RuleActions::title(rule.action));
    };
    std::vector<std::string> all;
    for (const auto& rule : Rule::presets()) all.push_back(told(rule));
    EXPECT_THAT(
        all,
        ElementsAre(
            R"(Forgotten Vite and Next dev servers | [{"command":{"patterns":["vite\/bin\/vite.js","next dev","next-server","webpack serve"]}}] | 120 | 0 | Terminate)",
            R"(Idle Rails servers | [{"command":{"patterns":["puma ","rails server"]}}] | 240 | 0 | Terminate)",
            R"(Claude sessions that never got a prompt | [{"emptyClaudeSession":{}}] | 30 | 0 | Terminate)",
            R"(Restart Microsoft Teams when it grows | [{"app":{"bundleID":"com.microsoft.teams2","name":"Microsoft Teams"}}] | 60 | 1536 | Relaunch)",
            R"(Restart Slack when it grows | [{"app":{"bundleID":"com.tinyspeck.slackmacgap","name":"Slack"}}] | 60 | 1536 | Relaunch)"));
}

}  // namespace
}  // namespace tolvane
