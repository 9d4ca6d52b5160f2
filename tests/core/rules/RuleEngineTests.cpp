#include "core/rules/RuleEngine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/fakes/RuleScenes.h"

namespace tolvane {
namespace {

using fakes::appRow;
using fakes::megabyte;
using fakes::row;
using fakes::someNow;
using fakes::worldOf;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

Rule ruleFor(RuleTarget target) {
    return {.id = UUID::random(),
            .name = "rule",
            .enabled = true,
            .dryRun = false,
            .target = std::move(target),
            .memoryMB = 1,
            .action = RuleAction::terminate};
}

Rule commandRule(std::vector<std::string> patterns) { return ruleFor(CommandTarget{std::move(patterns)}); }
Rule appRule(std::string appID) { return ruleFor(AppTarget{std::move(appID), "App"}); }

std::vector<Decision> due(const Rule& rule, const World& world, const RuleEngine::FiredDates& lastFired = {}) {
    return RuleEngine::decisions({rule}, world, someNow, lastFired);
}

std::vector<Pid> pidsOf(const std::vector<Decision>& decisions) {
    std::vector<Pid> pids;
    for (const auto& decision : decisions) pids.insert(pids.end(), decision.pids.begin(), decision.pids.end());
    return pids;
}

// Which rules are open

TEST(RuleEngine, aRuleWithoutConditionDecidesNothingYetListsItsMatches) {
    auto rule = commandRule({"node"});
    rule.memoryMB.reset();
    rule.onlyWhenTight = true;
    auto world = worldOf({row(10, 1, "node")});
    world.memoryTight = true;
    EXPECT_THAT(due(rule, world), IsEmpty());
    EXPECT_THAT(RuleEngine::candidates(rule, world), SizeIs(1));
}

TEST(RuleEngine, aRuleThatIsOffDecidesNothingYetListsItsMatches) {
    auto rule = commandRule({"node"});
    rule.enabled = false;
    const auto world = worldOf({row(10, 1, "node")});
    EXPECT_THAT(due(rule, world), IsEmpty());
    EXPECT_THAT(RuleEngine::candidates(rule, world), SizeIs(1));
}

TEST(RuleEngine, theTightGateWaitsForTightMemory) {
    auto rule = commandRule({"node"});
    auto world = worldOf({row(10, 1, "node")});
    EXPECT_THAT(due(rule, world), SizeIs(1));
    rule.onlyWhenTight = false;
    EXPECT_THAT(due(rule, world), SizeIs(1));
    rule.onlyWhenTight = true;
    EXPECT_THAT(due(rule, world), IsEmpty());
    world.memoryTight = true;
    EXPECT_THAT(due(rule, world), SizeIs(1));
}

// Conditions

TEST(RuleEngine, unusedForExactlyTheLimitFires) {
    auto rule = commandRule({"node"});
    rule.memoryMB.reset();
    rule.unusedMinutes = 60;
    auto world = worldOf({row(10, 1, "node")});
    world.rows[0].unusedSince = someNow - Seconds{3600};
    EXPECT_THAT(due(rule, world), SizeIs(1));
    world.rows[0].unusedSince = someNow - Seconds{3599.9};
    EXPECT_THAT(due(rule, world), IsEmpty());
}

TEST(RuleEngine, exactlyTheLimitOfMemoryFires) {
    auto rule = commandRule({"node"});
    rule.memoryMB = 100;
    auto world = worldOf({row(10, 1, "node")});
    EXPECT_THAT(due(rule, world), SizeIs(1));
    --world.rows[0].sample.footprint;
    EXPECT_THAT(due(rule, world), IsEmpty());
}

TEST(RuleEngine, bothConditionsMustHold) {
    auto rule = commandRule({"node"});
    rule.memoryMB = 100;
    rule.unusedMinutes = 60;
    auto world = worldOf({row(10, 1, "node")});
    EXPECT_THAT(due(rule, world), SizeIs(1));
    rule.unusedMinutes = 61;
    EXPECT_THAT(due(rule, world), IsEmpty());
    rule.unusedMinutes = 60;
    rule.memoryMB = 101;
    EXPECT_THAT(due(rule, world), IsEmpty());
}

TEST(RuleEngine, limitsBeyondAllMemoryAndBelowNoneNeverFire) {
    auto rule = commandRule({"node"});
    const auto world = worldOf({row(10, 1, "node")});
    rule.memoryMB = INT64_MAX;
    EXPECT_THAT(due(rule, world), IsEmpty());
    rule.memoryMB = -1;
    EXPECT_THAT(due(rule, world), IsEmpty());
    rule.memoryMB = 0;
    EXPECT_THAT(due(rule, world), SizeIs(1));
}

// Cool-downs

TEST(RuleEngine, aLiveRuleLeavesASubjectAloneForTenMinutes) {
    const auto rule = commandRule({"node"});
    const auto world = worldOf({row(10, 1, "node")});
    const auto key = RuleEngine::cooldownKey(rule, due(rule, world).front().subjectKey);
    EXPECT_THAT(due(rule, world, {{key, someNow - Seconds{599}}}), IsEmpty());
    EXPECT_THAT(due(rule, world, {{key, someNow - Seconds{600}}}), SizeIs(1));
}

TEST(RuleEngine, aLogOnlyRuleLeavesASubjectAloneForAnHour) {
    auto rule = commandRule({"node"});
    rule.dryRun = true;
    const auto world = worldOf({row(10, 1, "node")});
    const auto key = RuleEngine::cooldownKey(rule, due(rule, world).front().subjectKey);
    EXPECT_THAT(due(rule, world, {{key, someNow - Seconds{3599}}}), IsEmpty());
    EXPECT_THAT(due(rule, world, {{key, someNow - Seconds{3600}}}), SizeIs(1));
}

TEST(RuleEngine, coolDownsBelongToOneRuleAndOneSubject) {
    const auto rule = commandRule({"node"});
    const auto other = commandRule({"node"});
    const auto world = worldOf({row(10, 1, "node"), row(11, 1, "node")});
    const RuleEngine::FiredDates fired = {
        {RuleEngine::cooldownKey(rule, RuleEngine::candidates(rule, world).front().subjectKey), someNow}};
    EXPECT_THAT(pidsOf(RuleEngine::decisions({rule, other}, world, someNow, fired)), ElementsAre(11, 10, 11));
}

TEST(RuleEngine, theCoolDownKeyJoinsIdAndSubject) {
    Rule rule;
    rule.id = *UUID::parse("0f1e2d3c-4b5a-4978-8695-a4b3c2d1e0ff");
    EXPECT_EQ(RuleEngine::cooldownKey(rule, "app:x"), "0F1E2D3C-4B5A-4978-8695-A4B3C2D1E0FF|app:x");
}

TEST(RuleEngine, aReusedPidInheritsNoCoolDown) {
    const auto rule = commandRule({"node"});
    auto world = worldOf({row(10, 1, "node")});
    const auto key = RuleEngine::cooldownKey(rule, due(rule, world).front().subjectKey);
    world.rows[0].sample.startTime += Seconds{0.25};
    EXPECT_THAT(due(rule, world, {{key, someNow}}), SizeIs(1));
}

// Order

TEST(RuleEngine, decisionsComeInRuleOrderAndThenInRowOrder) {
    const auto world = worldOf(
        {row(30, 1, "ruby"), row(20, 1, "node"), row(10, 1, "node"), appRow(40, 1, "chat", "com.example.chat")});
    const std::vector<Rule> rules = {commandRule({"node"}), appRule("com.example.chat"), commandRule({"ruby", "node"})};
    EXPECT_THAT(pidsOf(RuleEngine::decisions(rules, world, someNow, {})), ElementsAre(20, 10, 40, 30, 20, 10));
}

TEST(RuleEngine, twoRulesOnOneSubjectBothFire) {
    const auto world = worldOf({row(10, 1, "node")});
    const std::vector<Rule> rules = {commandRule({"node"}), commandRule({"node"})};
    const auto decisions = RuleEngine::decisions(rules, world, someNow, {});
    ASSERT_THAT(decisions, SizeIs(2));
    EXPECT_EQ(decisions[0].rule, rules[0]);
    EXPECT_EQ(decisions[1].rule, rules[1]);
}

// Applications

TEST(AppRule, foldsAllProcessesIntoOneSubject) {
    auto world = worldOf({appRow(10, 1, "chat", "com.example.chat"), row(11, 1, "node"),
                          appRow(12, 10, "helper", "com.example.chat"), appRow(9, 10, "gpu", "com.example.chat")});
    world.rows[0].unusedSince = someNow - Seconds{500};
    world.rows[2].unusedSince = someNow - Seconds{300};
    world.rows[3].unusedSince = someNow - Seconds{400};
    const auto rule = appRule("com.example.chat");
    EXPECT_THAT(due(rule, world), ElementsAre(Decision{.rule = rule,
                                                       .subjectKey = "app:com.example.chat",
                                                       .title = "App",
                                                       .pids = {10, 12, 9},
                                                       .memory = 300 * megabyte,
                                                       .unusedSince = someNow - Seconds{300},
                                                       .compressed = 30 * megabyte}));
}

TEST(AppRule, conditionsLookAtTheWhole) {
    auto world = worldOf({appRow(10, 1, "chat", "c"), appRow(11, 10, "chat", "c")});
    auto rule = appRule("c");
    rule.memoryMB = 200;
    EXPECT_THAT(due(rule, world), SizeIs(1));
    rule.memoryMB = 201;
    EXPECT_THAT(due(rule, world), IsEmpty());
    rule.memoryMB.reset();
    rule.unusedMinutes = 10;
    EXPECT_THAT(due(rule, world), SizeIs(1));
    world.rows[1].unusedSince = someNow;
    EXPECT_THAT(due(rule, world), IsEmpty());
}

TEST(AppRule, theFrontmostApplicationIsNoCandidate) {
    auto world = worldOf({appRow(10, 1, "chat", "c")});
    world.frontmostAppID = "c";
    const auto rule = appRule("c");
    EXPECT_THAT(due(rule, world), IsEmpty());
    EXPECT_THAT(RuleEngine::candidates(rule, world), IsEmpty());
    world.frontmostAppID = "other";
    EXPECT_THAT(due(rule, world), SizeIs(1));
}

TEST(AppRule, findsNothingWhereTheApplicationDoesNotRun) {
    EXPECT_THAT(RuleEngine::candidates(appRule("c"), worldOf({row(10, 1, "c")})), IsEmpty());
}

TEST(AppRule, neverTouchesOthersTheFirstTwoAndItself) {
    auto world = worldOf({appRow(0, 0, "chat", "c"), appRow(1, 0, "chat", "c"), appRow(4000, 1, "chat", "c"),
                          appRow(10, 1, "chat", "c"), appRow(2, 1, "chat", "c")});
    world.rows[3].sample.uid = 0;
    EXPECT_THAT(pidsOf(due(appRule("c"), world)), ElementsAre(2));
}

TEST(AppRule, mayTouchSystemPaths) {
    auto world = worldOf({appRow(10, 1, "chat", "c")});
    world.rows[0].sample.path = "/usr/bin/chat";
    EXPECT_THAT(due(appRule("c"), world), SizeIs(1));
}

TEST(AppRule, twoRulesForOneApplicationKeepTheirOwnConditions) {
    const auto world = worldOf({appRow(10, 1, "chat", "c")});
    auto small = appRule("c");
    auto large = appRule("c");
    large.memoryMB = 500;
    large.target = AppTarget{"c", "Other name"};
    EXPECT_THAT(RuleEngine::decisions({large, small}, world, someNow, {}),
                ElementsAre(testing::Field(&Decision::title, "App")));
}

// Commands

TEST(CommandRule, eachProcessIsASubjectOfItsOwn) {
    auto world = worldOf({row(10, 1, "node", {"node", "server.js"})});
    world.rows[0].sample.startTime = Date{Seconds{800'000'000.25}};
    const auto rule = commandRule({"server"});
    EXPECT_THAT(due(rule, world), ElementsAre(Decision{.rule = rule,
                                                       .subjectKey = "pid:10:1778307200.25",
                                                       .title = "node",
                                                       .pids = {10},
                                                       .memory = 100 * megabyte,
                                                       .unusedSince = someNow - Seconds{3600},
                                                       .compressed = 10 * megabyte}));
}

TEST(CommandRule, theStartInAKeyHasAFractionAtLeast) {
    auto world = worldOf({row(10, 1, "node")});
    world.rows[0].sample.startTime = Date{Seconds{800'000'000}};
    EXPECT_EQ(due(commandRule({"node"}), world).front().subjectKey, "pid:10:1778307200.0");
}

TEST(CommandRule, ignoresCase) {
    const auto world = worldOf({row(10, 1, "node", {"node", "/x/vite/bin/vite.js"}),
                                row(11, 1, "node", {"NODE", "/x/VITE/bin"}), row(12, 1, "node", {"Ärger", "ÉTÉ"})});
    EXPECT_THAT(pidsOf(due(commandRule({"VITE"}), world)), ElementsAre(10, 11));
    EXPECT_THAT(pidsOf(due(commandRule({"ärger été"}), world)), ElementsAre(12));
}

TEST(CommandRule, looksAcrossArgumentsJoinedByOneBlank) {
    const auto world = worldOf({row(10, 1, "puma", {"puma", "6.0"}), row(11, 1, "pumactl", {"pumactl", "6.0"})});
    EXPECT_THAT(pidsOf(due(commandRule({"puma "}), world)), ElementsAre(10));
    EXPECT_THAT(due(commandRule({"puma  6"}), world), IsEmpty());
}

TEST(CommandRule, withoutArgumentsLooksAtThePath) {
    const auto world = worldOf({row(10, 1, "thing"), row(11, 1, "thing", {"renamed"})});
    EXPECT_THAT(pidsOf(due(commandRule({"/opt/thing"}), world)), ElementsAre(10));
}

TEST(CommandRule, withoutAPatternFindsNothing) {
    const auto world = worldOf({row(10, 1, "node")});
    EXPECT_THAT(RuleEngine::candidates(commandRule({"", ""}), world), IsEmpty());
    EXPECT_THAT(RuleEngine::candidates(commandRule({}), world), IsEmpty());
    EXPECT_THAT(RuleEngine::candidates(commandRule({"", "node"}), world), SizeIs(1));
}

TEST(CommandRule, patternsAreNotTrimmed) {
    EXPECT_THAT(
        RuleEngine::candidates(commandRule({" "}), worldOf({row(10, 1, "a", {"a"}), row(11, 1, "b", {"b", "c"})})),
        ElementsAre(testing::Field(&Decision::pids, ElementsAre(11))));
}

TEST(CommandRule, neverTouchesTheSystem) {
    auto world = worldOf({});
    for (const char* path : {"/System/x", "/usr/x", "/bin/x", "/sbin/x", "/Library/Apple/x", "/opt/x", "/usrx"}) {
        world.rows.push_back(row(static_cast<Pid>(world.rows.size()) + 10, 1, "x", {"marker"}));
        world.rows.back().sample.path = path;
    }
    EXPECT_THAT(pidsOf(due(commandRule({"marker"}), world)), ElementsAre(15, 16));
}

TEST(CommandRule, whatTheHostSaysOfTheSystemGoesBeforeThePath) {
    auto world = worldOf({row(10, 1, "node"), row(11, 1, "node")});
    world.rows[0].sample.path = "/usr/bin/node";
    world.rows[0].sample.hostSaysSystem = false;
    world.rows[1].sample.hostSaysSystem = true;
    EXPECT_THAT(pidsOf(due(commandRule({"node"}), world)), ElementsAre(10));
}

TEST(CommandRule, passesOverTheApplicationInFront) {
    auto world = worldOf({appRow(10, 1, "node", "c"), row(11, 1, "node"), appRow(12, 1, "node", "d")});
    EXPECT_THAT(pidsOf(due(commandRule({"node"}), world)), ElementsAre(10, 11, 12));
    world.frontmostAppID = "c";
    EXPECT_THAT(pidsOf(due(commandRule({"node"}), world)), ElementsAre(11, 12));
}

TEST(CommandRule, neverTouchesOthersTheFirstTwoAndItself) {
    auto world = worldOf({row(0, 0, "node"), row(1, 0, "node"), row(4000, 1, "node"), row(10, 1, "node"),
                          row(11, 1, "node"), row(2, 1, "node")});
    world.rows[3].sample.uid = 0;
    EXPECT_THAT(pidsOf(due(commandRule({"node"}), world)), ElementsAre(11, 2));
}

// The application in front is unknown

TEST(FrontmostUnknown, rulesThatQuitOrRelaunchHoldBack) {
    auto world = worldOf({row(10, 1, "node"), appRow(11, 1, "chat", "c")});
    world.frontmostKnown = false;
    for (const auto action : {RuleAction::quit, RuleAction::relaunch}) {
        auto rule = appRule("c");
        rule.action = action;
        EXPECT_TRUE(RuleEngine::needsFrontmost(rule));
        EXPECT_THAT(due(rule, world), IsEmpty());
        EXPECT_THAT(RuleEngine::candidates(rule, world), SizeIs(1));
        world.frontmostKnown = true;
        EXPECT_THAT(due(rule, world), SizeIs(1));
        world.frontmostKnown = false;
    }
}

TEST(FrontmostUnknown, terminatingSparesApplicationsOnly) {
    auto world = worldOf({row(10, 1, "chat"), appRow(11, 1, "chat", "c")});
    EXPECT_THAT(pidsOf(due(commandRule({"chat"}), world)), ElementsAre(10, 11));
    EXPECT_THAT(pidsOf(due(appRule("c"), world)), ElementsAre(11));
    world.frontmostKnown = false;
    EXPECT_THAT(pidsOf(due(commandRule({"chat"}), world)), ElementsAre(10));
    EXPECT_THAT(pidsOf(due(appRule("c"), world)), IsEmpty());
}

TEST(FrontmostUnknown, whatEndsNothingGoesOn) {
    auto world = worldOf({appRow(11, 1, "chat", "c")});
    world.frontmostKnown = false;
    for (const auto action : {RuleAction::notify, RuleAction::lowerPriority}) {
        auto rule = appRule("c");
        rule.action = action;
        EXPECT_FALSE(RuleEngine::needsFrontmost(rule));
        EXPECT_THAT(due(rule, world), SizeIs(1));
    }
}

}  // namespace
}  // namespace tolvane
