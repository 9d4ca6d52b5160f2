#include "core/rules/RuleFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace tolvane {
namespace {

using ::testing::SizeIs;

Rule someRule() {
    return {.id = UUID::random(),
            .name = "Idle",
            .enabled = true,
            .dryRun = false,
            .target = CommandTarget{{"a", "b"}},
            .unusedMinutes = 60,
            .memoryMB = 512,
            .action = RuleAction::terminate};
}

TEST(RuleFile, writesItsThreeKeysSorted) {
    Rule rule{
        .id = *UUID::parse("0f1e2d3c-4b5a-4978-8695-a4b3c2d1e0ff"), .name = "n", .target = EmptyClaudeSessionTarget{}};
    EXPECT_EQ(RuleFile::encode({rule}), R"({
  "format" : "tolvane-rules",
  "rules" : [
    {
      "action" : "notify",
      "dryRun" : true,
      "enabled" : false,
      "id" : "0F1E2D3C-4B5A-4978-8695-A4B3C2D1E0FF",
      "name" : "n",
      "target" : {
        "emptyClaudeSession" : {

        }
      }
    }
  ],
  "version" : 1
})");
}

TEST(RuleFile, namesItsKind) {
    EXPECT_EQ(RuleFile::fileExtension, "tolvanerules");
    EXPECT_EQ(RuleFile::typeIdentifier, "dev.tolvane.rules");
}

TEST(RuleFile, readsWhatItWrote) {
    const std::vector rules = {someRule(), Rule::presets()[3], Rule{}};
    const auto back = RuleFile::decode(RuleFile::encode(rules));
    ASSERT_TRUE(back);
    EXPECT_EQ(*back, rules);
}

std::string errorOf(std::string_view text) {
    const auto rules = RuleFile::decode(text);
    return rules ? "none" : rules.failure().text();
}

TEST(RuleFile, needsAllThreeKeys) {
    EXPECT_EQ(errorOf(R"({"rules":[],"version":1})"), "format: missing");
    EXPECT_EQ(errorOf(R"({"format":"tolvane-rules","version":1})"), "rules: missing");
    EXPECT_EQ(errorOf(R"({"format":"tolvane-rules","rules":[]})"), "version: missing");
    EXPECT_EQ(errorOf(R"({"format":"tolvane-rules","rules":[],"version":1})"), "none");
}

TEST(RuleFile, looksAtTheVersionsKindOnly) {
    EXPECT_EQ(errorOf(R"({"format":"tolvane-rules","rules":[],"version":2})"), "none");
    EXPECT_EQ(errorOf(R"({"format":"tolvane-rules","rules":[],"version":-7})"), "none");
    EXPECT_EQ(errorOf(R"({"format":"tolvane-rules","rules":[],"version":"1"})"), "version: not an integer");
    EXPECT_EQ(errorOf(R"({"format":"tolvane-rules","rules":[],"version":1.5})"), "version: not an integer");
}

TEST(RuleFile, isOfItsFormatToTheLetter) {
    EXPECT_EQ(errorOf(R"({"format":"Tolvane-rules","rules":[],"version":1})"), "format: not \"tolvane-rules\"");
    EXPECT_EQ(errorOf(R"({"format":null,"rules":[],"version":1})"), "format: not a string");
}

TEST(RuleFile, oneBadRuleFailsIt) {
    auto text = RuleFile::encode({someRule(), someRule()});
    text.replace(text.rfind("terminate"), 9, "explode");
    EXPECT_EQ(errorOf(text), "rules[1].action: unknown value \"explode\"");
}

TEST(RuleFile, nothingIsNoFile) {
    EXPECT_EQ(errorOf(""), "empty");
    EXPECT_NE(errorOf("[]"), "none");
}

// Merging

TEST(RuleFileMerge, appendsNewRulesInOrder) {
    const auto existing = someRule();
    auto first = someRule();
    first.memoryMB = 1;
    auto second = someRule();
    second.memoryMB = 2;
    const auto merged = RuleFile::merge({first, second}, {existing});
    ASSERT_THAT(merged, SizeIs(3));
    EXPECT_EQ(merged[0], existing);
    EXPECT_EQ(merged[1].id, first.id);
    EXPECT_EQ(merged[2].id, second.id);
}

TEST(RuleFileMerge, whatComesInOnlyLogs) {
    for (const bool enabled : {true, false}) {
        auto rule = someRule();
        rule.enabled = enabled;
        const auto merged = RuleFile::merge({rule}, {});
        EXPECT_EQ(merged[0].mode(), RuleMode::logOnly);
        EXPECT_TRUE(merged[0].enabled);
        EXPECT_TRUE(merged[0].dryRun);
    }
}

TEST(RuleFileMerge, twoEqualRulesAddOne) { EXPECT_THAT(RuleFile::merge({someRule(), someRule()}, {}), SizeIs(1)); }

TEST(RuleFileMerge, whatTakesNoPartMakesNoDifference) {
    const auto existing = someRule();
    auto rule = someRule();
    rule.name = "another name";
    rule.enabled = false;
    rule.dryRun = true;
    rule.onlyWhenTight = true;
    EXPECT_EQ(RuleFile::merge({rule}, {existing}), std::vector{existing});
}

TEST(RuleFileMerge, eachEssentialFieldMakesAnotherRule) {
    std::vector<Rule> others(5, someRule());
    others[0].target = CommandTarget{{"b", "a"}};
    others[1].unusedMinutes = 61;
    others[2].memoryMB.reset();
    others[3].action = RuleAction::quit;
    others[4].target = AgentSessionTarget{{"a", "b"}, false};
    EXPECT_THAT(RuleFile::merge(others, {someRule()}), SizeIs(6));
}

TEST(RuleFileMerge, targetsAreEqualInAllTheirFields) {
    const auto count = [](const RuleTarget& one, const RuleTarget& other) {
        return RuleFile::merge({Rule{.target = one}}, {Rule{.id = UUID::random(), .target = other}}).size();
    };
    EXPECT_EQ(count(AppTarget{"b", "n"}, AppTarget{"b", "n"}), 1U);
    EXPECT_EQ(count(AppTarget{"b", "n"}, AppTarget{"b", "m"}), 2U);
    EXPECT_EQ(count(AppTarget{"b", "n"}, AppTarget{"c", "n"}), 2U);
    EXPECT_EQ(count(AgentSessionTarget{{"a"}, true}, AgentSessionTarget{{"a"}, true}), 1U);
    EXPECT_EQ(count(AgentSessionTarget{{"a"}, true}, AgentSessionTarget{{"a"}, false}), 2U);
    EXPECT_EQ(count(EmptyClaudeSessionTarget{}, EmptyClaudeSessionTarget{}), 1U);
    EXPECT_EQ(count(EmptyClaudeSessionTarget{}, AgentSessionTarget{{"claude"}, true}), 2U);
}

TEST(RuleFileMerge, aTakenIdIsReplaced) {
    const auto existing = someRule();
    auto first = someRule();
    first.id = existing.id;
    first.memoryMB = 1;
    auto second = first;
    second.memoryMB = 2;
    const auto merged = RuleFile::merge({first, second}, {existing});
    ASSERT_THAT(merged, SizeIs(3));
    EXPECT_EQ(merged[0].id, existing.id);
    EXPECT_EQ((std::set{merged[0].id, merged[1].id, merged[2].id}.size()), 3U);
}

TEST(RuleFileMerge, aSecondTimeAddsNothing) {
    const std::vector rules = {someRule(), Rule::presets()[0]};
    const auto once = RuleFile::merge(rules, Rule::presets());
    EXPECT_EQ(RuleFile::merge(rules, once), once);
}

TEST(RuleFileMessages, tellHowManyRulesCame) {
    EXPECT_EQ(
        RuleFile::importMessage("a.tolvanerules", 1),
        "Added 1 rule from a.tolvanerules. It starts in Log Only, so it only writes what it would do to Activity.");
    EXPECT_EQ(RuleFile::importMessage("a.tolvanerules", 2),
              "Added 2 rules from a.tolvanerules. They start in Log Only, so they only write what they would do to "
              "Activity.");
    EXPECT_EQ(RuleFile::importMessage("a.tolvanerules", 0), "Every rule in a.tolvanerules is already in Tolvane.");
    EXPECT_EQ(RuleFile::notARuleFile("a.txt"), "a.txt is not a Tolvane rules file.");
}

}  // namespace
}  // namespace tolvane
