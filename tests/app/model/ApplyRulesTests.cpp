#include <gmock/gmock.h>

#include "tests/app/RuleActsTest.h"

namespace tolvane {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

struct ApplyRulesTest : RuleActsTest {
    Rule idleRule(RuleAction action) {
        auto rule = workerRule(action);
        rule.memoryMB.reset();
        rule.unusedMinutes = 2;
        return rule;
    }
};

TEST_F(ApplyRulesTest, rulesOfTheStoreActAtTheFirstTick) {
    addWorker(7);
    start();
    modelState->rules.set({workerRule(RuleAction::terminate)});
    model.reset();
    start();
    EXPECT_THAT(outcomes(), ElementsAre("Terminated"));
}

TEST_F(ApplyRulesTest, pausedRulesDoNothingUntilTheyGoOn) {
    addWorker(7);
    start();
    model->pauseRules(true);
    fire({workerRule(RuleAction::terminate)});
    clock.advance(600s);
    EXPECT_THAT(outcomes(), IsEmpty());
    model->pauseRules(false);
    clock.advance(60s);
    EXPECT_THAT(outcomes(), ElementsAre("Terminated"));
}

TEST_F(ApplyRulesTest, aRuleThatIsOffDoesNothing) {
    addWorker(7);
    auto rule = workerRule(RuleAction::terminate);
    rule.enabled = false;
    fire({rule});
    EXPECT_THAT(outcomes(), IsEmpty());
}

TEST_F(ApplyRulesTest, aSubjectCoolsDownForTenMinutes) {
    addWorker(7);
    fire({workerRule(RuleAction::notify)});
    clock.advance(599s);
    EXPECT_EQ(outcomes().size(), 1U);
    clock.advance(61s);
    EXPECT_EQ(outcomes().size(), 2U);
}

TEST_F(ApplyRulesTest, aRuleThatOnlyLogsCoolsDownForAnHour) {
    addWorker(7);
    fire({onlyLogging(workerRule(RuleAction::terminate))});
    clock.advance(3599s);
    EXPECT_EQ(outcomes().size(), 1U);
    clock.advance(61s);
    EXPECT_EQ(outcomes().size(), 2U);
}

TEST_F(ApplyRulesTest, aFailureCoolsDownLikeASuccess) {
    addWorker(7);
    world.shielded = {7};
    fire({workerRule(RuleAction::terminate)});
    clock.advance(599s);
    EXPECT_THAT(outcomes(), ElementsAre("Still running"));
}

TEST_F(ApplyRulesTest, aRestartForgetsTheCooldown) {
    addWorker(7);
    fire({workerRule(RuleAction::notify)});
    model.reset();
    start();
    EXPECT_EQ(outcomes().size(), 2U);
}

TEST_F(ApplyRulesTest, whatIsLoweredAlreadyIsNotLoweredAgain) {
    addWorker(7);
    start();
    ASSERT_TRUE(lowerPriority({7}));
    fire({workerRule(RuleAction::lowerPriority)});
    EXPECT_THAT(outcomes(), IsEmpty());
    model->acts().restorePriority({7});
    world.press();
    EXPECT_THAT(outcomes(), ElementsAre("Lowered priority"));
}

TEST_F(ApplyRulesTest, anApplicationOfWhichOneProcessIsNotLoweredIsLowered) {
    addMail(7);
    addMail(8);
    start();
    ASSERT_TRUE(lowerPriority({7}));
    fire({mailRule(RuleAction::lowerPriority)});
    EXPECT_THAT(outcomes(), ElementsAre("Lowered priority"));
    EXPECT_TRUE(model->lowered->contains(8));
}

TEST_F(ApplyRulesTest, twoRulesThatLowerOneSubjectBothFire) {
    addWorker(7);
    fire({workerRule(RuleAction::lowerPriority), workerRule(RuleAction::lowerPriority)});
    EXPECT_THAT(outcomes(), ElementsAre("Lowered priority", "Lowered priority"));
}

TEST_F(ApplyRulesTest, rulesActInTheirOrder) {
    addWorker(7);
    auto first = workerRule(RuleAction::notify);
    auto second = first;
    first.name = "First";
    second.name = "Second";
    second.id = UUID::random();
    fire({first, second});
    ASSERT_EQ(model->activity->size(), 2U);
    EXPECT_EQ(model->activity->front().ruleName, "Second");
    EXPECT_EQ(model->activity->back().ruleName, "First");
}

TEST_F(ApplyRulesTest, rulesSeeWhatTheTickFoundOut) {
    addWorker(7);
    auto rule = workerRule(RuleAction::notify);
    rule.onlyWhenTight = true;
    fire({rule});
    EXPECT_THAT(outcomes(), IsEmpty());
    world.pressureLevel = 2;
    world.press();
    EXPECT_THAT(outcomes(), ElementsAre("Notified"));
}

TEST_F(ApplyRulesTest, aProcessIsFoundIdleByWhatTheTicksSaw) {
    addWorker(7);
    fire({idleRule(RuleAction::notify)});
    clock.advance(60s);
    EXPECT_THAT(outcomes(), IsEmpty());
    burn(7, 50, 60s);
    clock.advance(120s);
    EXPECT_THAT(outcomes(), IsEmpty());
    clock.advance(60s);
    EXPECT_THAT(outcomes(), ElementsAre("Notified"));
}

TEST_F(ApplyRulesTest, aClockThatIsSetMakesNobodyIdle) {
    addWorker(7);
    fire({idleRule(RuleAction::terminate)});
    clock.setTo(clock.now() + 24h);
    clock.advance(60s);
    EXPECT_THAT(outcomes(), IsEmpty());
    EXPECT_TRUE(world.find(7));
    clock.advance(120s);
    EXPECT_THAT(outcomes(), SizeIs(1));
}

TEST_F(ApplyRulesTest, theApplicationInFrontIsLeftAlone) {
    addMail(7);
    addInstance();
    world.frontmost = FrontmostApplication{.appPath = mail, .appID = "com.example.mail"};
    fire({mailRule(RuleAction::quit)});
    EXPECT_THAT(outcomes(), IsEmpty());
    world.frontmost = std::nullopt;
    world.press();
    EXPECT_THAT(outcomes(), ElementsAre("Quit"));
}

TEST_F(ApplyRulesTest, rulesForApplicationsHoldBackWhereNobodyCanTellWhichIsInFront) {
    addMail(7);
    addInstance();
    world.canTellFrontmost = false;
    fire({mailRule(RuleAction::quit)});
    EXPECT_THAT(outcomes(), IsEmpty());
    EXPECT_EQ(world.instances[0].asked, 0);
}

TEST_F(ApplyRulesTest, commandsEndNoApplicationWhereNobodyCanTellWhichIsInFront) {
    addWorker(7);
    addApp(8, mail).arguments = {"/opt/worker"};
    world.appIDs[mail] = "com.example.mail";
    auto rule = workerRule(RuleAction::terminate);
    rule.memoryMB = 0;
    world.canTellFrontmost = false;
    fire({rule});
    EXPECT_EQ(world.timesAsked("signal 15 7"), 1U);
    EXPECT_EQ(world.timesAsked("signal 15 8"), 0U);
    world.canTellFrontmost = true;
    world.press();
    EXPECT_EQ(world.timesAsked("signal 15 8"), 1U);
}

TEST_F(ApplyRulesTest, thisProgramIsLeftAlone) {
    addWorker(fake.host.selfPID);
    fire({workerRule(RuleAction::terminate)});
    EXPECT_THAT(outcomes(), IsEmpty());
    EXPECT_TRUE(world.find(fake.host.selfPID));
}

TEST_F(ApplyRulesTest, theDemoActsOnNothing) {
    addWorker(7);
    start();
    modelState->rules.set({workerRule(RuleAction::terminate)});
    model.reset();
    startDemo();
    clock.advance(600s);
    EXPECT_TRUE(world.find(7));
}

}  // namespace
}  // namespace tolvane
