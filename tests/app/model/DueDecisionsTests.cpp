#include "app/model/DueDecisions.h"

#include <gtest/gtest.h>

namespace tolvane {
namespace {

using namespace std::chrono_literals;

constexpr std::uint32_t me = 501;

struct DueDecisionsTest : testing::Test {
    DueDecisions due;
    std::vector<Rule> rules;
    World world{.selfPID = 4242, .uid = me};
    std::map<Pid, Lowered> lowered;
    Date now{Seconds{800'000'000}};

    void addProcess(Pid pid, std::string_view appPath = {}) {
        ProcRow row;
        row.sample.pid = pid;
        row.sample.ppid = 1;
        row.sample.uid = me;
        row.sample.name = "worker";
        row.sample.path = "/opt/worker";
        row.sample.args = {"/opt/worker", "--serve"};
        row.sample.startTime = now - 36'000s;
        row.unusedSince = now - 7200s;
        if (!appPath.empty()) {
            row.appPath = Text(appPath);
            row.appID = Text("com.example.mail");
        }
        world.rows.push_back(row);
    }
    Rule& addRule(RuleAction action, RuleTarget target = CommandTarget{.patterns = {"--serve"}}) {
        Rule rule{.id = UUID::random(), .name = "Idle workers", .enabled = true, .dryRun = false, .target = target};
        rule.unusedMinutes = 60;
        rule.action = action;
        return rules.emplace_back(rule);
    }
    std::vector<Pid> take() {
        std::vector<Pid> pids;
        for (const auto& decision : due.take({.rules = rules, .world = world, .lowered = lowered, .now = now})) {
            pids.insert(pids.end(), decision.pids.begin(), decision.pids.end());
        }
        return pids;
    }
};

TEST_F(DueDecisionsTest, aDecisionIsTakenOnceUntilItsCooldownPassed) {
    addProcess(7);
    addRule(RuleAction::terminate);
    EXPECT_EQ(take(), std::vector<Pid>{7});
    now += 599s;
    EXPECT_TRUE(take().empty());
    now += 1s;
    EXPECT_EQ(take(), std::vector<Pid>{7});
}

TEST_F(DueDecisionsTest, aClockThatWasSetBackHoldsNothingBackForLongerThanACooldown) {
    addProcess(7);
    addRule(RuleAction::terminate);
    EXPECT_EQ(take(), std::vector<Pid>{7});
    now -= 24h;
    world.rows.front().unusedSince = now - 7200s;
    EXPECT_TRUE(take().empty());
    now += 599s;
    EXPECT_TRUE(take().empty());
    now += 1s;
    EXPECT_EQ(take(), std::vector<Pid>{7});
}

TEST_F(DueDecisionsTest, theCooldownOfOneSubjectIsNotAnothers) {
    addProcess(7);
    addRule(RuleAction::terminate);
    take();
    addProcess(8);
    now += 60s;
    EXPECT_EQ(take(), std::vector<Pid>{8});
}

TEST_F(DueDecisionsTest, loweringWhatIsLoweredIsLeftOutAndDoesNotCountAsFired) {
    addProcess(7);
    addRule(RuleAction::lowerPriority);
    lowered[7] = {};
    EXPECT_TRUE(take().empty());
    lowered.clear();
    now += 1s;
    EXPECT_EQ(take(), std::vector<Pid>{7});
}

TEST_F(DueDecisionsTest, loweringFiresWhileOneOfItsProcessesIsNotLowered) {
    addProcess(7, "/Applications/Mail.app");
    addProcess(8, "/Applications/Mail.app");
    addRule(RuleAction::lowerPriority, AppTarget{.appID = "com.example.mail", .name = "Mail"});
    lowered[7] = {};
    EXPECT_EQ(take(), (std::vector<Pid>{7, 8}));
    now += 3600s;
    lowered[8] = {};
    EXPECT_TRUE(take().empty());
}

TEST_F(DueDecisionsTest, otherActionsDoNotAskWhatIsLowered) {
    addProcess(7);
    addRule(RuleAction::terminate);
    lowered[7] = {};
    EXPECT_EQ(take(), std::vector<Pid>{7});
}

TEST_F(DueDecisionsTest, twoRulesMayLowerOneSubjectInOneTick) {
    addProcess(7);
    addRule(RuleAction::lowerPriority);
    addRule(RuleAction::lowerPriority);
    EXPECT_EQ(take(), (std::vector<Pid>{7, 7}));
}

TEST_F(DueDecisionsTest, quittingAnApplicationWaitsUntilTheHostCanTellWhoIsInFront) {
    addProcess(7, "/Applications/Mail.app");
    addRule(RuleAction::quit, AppTarget{.appID = "com.example.mail", .name = "Mail"});
    world.frontmostKnown = false;
    EXPECT_TRUE(take().empty());
    world.frontmostKnown = true;
    EXPECT_EQ(take(), std::vector<Pid>{7});
}

TEST_F(DueDecisionsTest, otherRulesDoNotWaitForWhoIsInFront) {
    addProcess(7);
    addRule(RuleAction::terminate);
    world.frontmostKnown = false;
    EXPECT_EQ(take(), std::vector<Pid>{7});
}

}  // namespace
}  // namespace tolvane
