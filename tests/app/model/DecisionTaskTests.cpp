#include <gmock/gmock.h>

#include "core/storage/Store.h"
#include "tests/app/RuleActsTest.h"

namespace tolvane {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

const std::string workerReason = "worker was using 300 MB, over the 200 MB limit. Rule: Large workers.";
const std::string mailReason = "Mail was using 300 MB, over the 200 MB limit. Rule: Large mail.";

struct DecisionTaskTest : RuleActsTest {
    const ActivityEntry& latest() const { return model->activity->front(); }
    void expectFreed(std::optional<std::uint64_t> freed, std::optional<std::uint64_t> compressed) const {
        EXPECT_EQ(latest().freed, freed);
        EXPECT_EQ(latest().freedCompressed, compressed);
    }
};

TEST_F(DecisionTaskTest, aTerminatedProcessGaveBackAllThatItHeld) {
    addWorker(7).endsAfter = 3s;
    fire({workerRule(RuleAction::terminate)});
    EXPECT_THAT(outcomes(), IsEmpty());
    clock.advance(3s);
    ASSERT_THAT(outcomes(), ElementsAre("Terminated"));
    EXPECT_EQ(latest().date, clock.now());
    EXPECT_EQ(latest().ruleName, "Large workers");
    EXPECT_EQ(latest().subject, "worker");
    EXPECT_EQ(latest().memory, 300 * MiB);
    EXPECT_FALSE(latest().dryRun);
    EXPECT_THAT(latest().subjectKey, Optional(Text("pid:7:1768307200.0")));
    EXPECT_THAT(latest().compressed, Optional(100 * MiB));
    expectFreed(300 * MiB, 100 * MiB);
    EXPECT_EQ(lastTitle(), "Stopped worker");
    EXPECT_EQ(lastBody(), workerReason);
    EXPECT_THAT(world.notifications.back().section, Optional(std::string("activity")));
    EXPECT_THAT(world.logLines, ElementsAre("rules: Large workers: Terminated worker"));
}

TEST_F(DecisionTaskTest, aProcessThatWillNotEndIsStillRunning) {
    addWorker(7);
    world.shielded = {7};
    fire({workerRule(RuleAction::terminate)});
    clock.advance(10.3s);
    ASSERT_THAT(outcomes(), ElementsAre("Still running"));
    expectFreed(std::nullopt, std::nullopt);
    EXPECT_EQ(latest().memory, 300 * MiB);
    EXPECT_EQ(lastTitle(), "Could not stop worker");
    EXPECT_EQ(lastBody(), "Still running. " + workerReason);
}

TEST_F(DecisionTaskTest, notifyTellsAndTouchesNothing) {
    addWorker(7);
    fire({workerRule(RuleAction::notify)});
    ASSERT_THAT(outcomes(), ElementsAre("Notified"));
    expectFreed(std::nullopt, std::nullopt);
    EXPECT_EQ(lastTitle(), "worker is over its limit");
    EXPECT_EQ(lastBody(), workerReason);
    EXPECT_EQ(world.timesAsked("signal 15 7"), 0U);
}

TEST_F(DecisionTaskTest, anApplicationThatQuitsGaveBackAllThatItHeld) {
    addMail(7);
    addInstance().quitsAfter = 2s;
    fire({mailRule(RuleAction::quit)});
    clock.advance(2s);
    ASSERT_THAT(outcomes(), ElementsAre("Quit"));
    EXPECT_THAT(latest().subjectKey, Optional(Text("app:com.example.mail")));
    expectFreed(300 * MiB, 100 * MiB);
    EXPECT_EQ(lastTitle(), "Quit Mail");
    EXPECT_EQ(lastBody(), mailReason);
    EXPECT_EQ(world.instances[0].asked, 1);
}

TEST_F(DecisionTaskTest, anApplicationThatStaysWasAskedToQuit) {
    addMail(7);
    addInstance().quitsAfter = 2s;
    addInstance().quitsAfter = std::nullopt;
    fire({mailRule(RuleAction::quit)});
    clock.advance(9.9s);
    EXPECT_THAT(outcomes(), IsEmpty());
    clock.advance(0.1s);
    ASSERT_THAT(outcomes(), ElementsAre("Asked to quit"));
    expectFreed(std::nullopt, std::nullopt);
    EXPECT_EQ(lastTitle(), "Asked Mail to quit");
    EXPECT_EQ(lastBody(), mailReason);
    EXPECT_EQ(world.instances[1].forced, 0);
}

TEST_F(DecisionTaskTest, quittingWhatIsNoApplicationIsNotRunningWithoutAWaitThoughItLives) {
    addWorker(7);
    fire({workerRule(RuleAction::quit)});
    ASSERT_THAT(outcomes(), ElementsAre("Not running"));
    expectFreed(std::nullopt, std::nullopt);
    EXPECT_EQ(lastTitle(), "worker was not running");
    EXPECT_EQ(lastBody(), "Not running. " + workerReason);
    EXPECT_TRUE(world.find(7));
}

TEST_F(DecisionTaskTest, aRelaunchIsToldAtOnceAndEnteredAMinuteLater) {
    addMail(7);
    addInstance();
    fire({mailRule(RuleAction::relaunch)});
    const Date done = clock.now();
    EXPECT_EQ(lastTitle(), "Restarted Mail");
    EXPECT_EQ(lastBody(), mailReason);
    EXPECT_THAT(world.logLines, ElementsAre("rules: Large mail: Relaunched Mail"));
    world.find(7)->usage->footprint = 120 * MiB;
    world.find(7)->memory->compressed = 30 * MiB;
    clock.advance(59.9s);
    EXPECT_THAT(outcomes(), IsEmpty());
    clock.advance(0.1s);
    ASSERT_THAT(outcomes(), ElementsAre("Relaunched"));
    EXPECT_EQ(latest().date, done);
    expectFreed(180 * MiB, 70 * MiB);
}

TEST_F(DecisionTaskTest, theReadBackCountsEveryProcessOfTheApplicationAndNoOther) {
    addMail(7);
    addInstance();
    fire({mailRule(RuleAction::relaunch)});
    world.end(7);
    addMail(8).usage->footprint = 100 * MiB;
    addMail(9).usage->footprint = 50 * MiB;
    addApp(10, "/Applications/Notes.app").usage->footprint = 70 * MiB;
    world.add(11, "mail").usage->footprint = 80 * MiB;
    for (const Pid pid : {8, 9}) world.find(pid)->memory->compressed = 10 * MiB;
    clock.advance(60s);
    expectFreed(150 * MiB, 80 * MiB);
}

TEST_F(DecisionTaskTest, aProcessThatTheDesktopPutIntoTheApplicationCountsInTheReadBack) {
    addMail(7);
    addInstance();
    fire({mailRule(RuleAction::relaunch)});
    world.find(7)->usage->footprint = 100 * MiB;
    world.add(8, "helper").usage->footprint = 20 * MiB;
    world.appScopes[8] = mail;
    clock.advance(60s);
    expectFreed(180 * MiB, 0);
}

TEST_F(DecisionTaskTest, whatComesBackLargerFreedNothing) {
    addMail(7);
    addInstance();
    fire({mailRule(RuleAction::relaunch)});
    world.find(7)->usage->footprint = 400 * MiB;
    world.find(7)->memory->compressed = 150 * MiB;
    clock.advance(60s);
    expectFreed(0, 0);
}

TEST_F(DecisionTaskTest, aRelaunchThatFailedIsEnteredAtOnceWithoutFigures) {
    addMail(7);
    addInstance();
    world.openError = "The file is damaged.";
    fire({mailRule(RuleAction::relaunch)});
    ASSERT_THAT(outcomes(), ElementsAre("Quit, relaunch failed: The file is damaged."));
    expectFreed(std::nullopt, std::nullopt);
    EXPECT_EQ(lastTitle(), "Could not restart Mail");
    EXPECT_EQ(lastBody(), "Quit, relaunch failed: The file is damaged.. " + mailReason);
}

TEST_F(DecisionTaskTest, anApplicationThatDoesNotRunIsNotRestarted) {
    addMail(7);
    fire({mailRule(RuleAction::relaunch)});
    ASSERT_THAT(outcomes(), ElementsAre("Not running"));
    EXPECT_EQ(lastTitle(), "Could not restart Mail");
}

TEST_F(DecisionTaskTest, anApplicationWithUnsavedChangesIsNotRestarted) {
    addMail(7);
    addInstance().quitsAfter = std::nullopt;
    fire({mailRule(RuleAction::relaunch)});
    clock.advance(30s);
    ASSERT_THAT(outcomes(), ElementsAre("Did not quit, it may have unsaved changes"));
    EXPECT_EQ(lastBody(), "Did not quit, it may have unsaved changes. " + mailReason);
}

TEST_F(DecisionTaskTest, loweringIsALoanAndFreesNothing) {
    addWorker(7);
    fire({workerRule(RuleAction::lowerPriority)});
    ASSERT_THAT(outcomes(), ElementsAre("Lowered priority"));
    expectFreed(std::nullopt, std::nullopt);
    EXPECT_EQ(lastTitle(), "Lowered the priority of worker");
    EXPECT_EQ(lastBody(), workerReason);
    EXPECT_TRUE(model->lowered->contains(7));
}

TEST_F(DecisionTaskTest, whatTheHostWillNotLowerIsUnchanged) {
    addWorker(7);
    world.shielded = {7};
    fire({workerRule(RuleAction::lowerPriority)});
    ASSERT_THAT(outcomes(), ElementsAre("Priority unchanged"));
    EXPECT_EQ(lastTitle(), "Could not lower the priority of worker");
    EXPECT_EQ(lastBody(), "Priority unchanged. " + workerReason);
    EXPECT_TRUE(model->lowered->empty());
}

TEST_F(DecisionTaskTest, aRuleThatOnlyLogsTouchesNothingAndSaysNothing) {
    addWorker(7);
    fire({onlyLogging(workerRule(RuleAction::terminate)), onlyLogging(workerRule(RuleAction::lowerPriority)),
          onlyLogging(workerRule(RuleAction::quit)), onlyLogging(workerRule(RuleAction::relaunch))});
    clock.advance(15s);
    EXPECT_THAT(outcomes(), ElementsAre("Would relaunch", "Would quit", "Would lower priority", "Would terminate"));
    EXPECT_TRUE(latest().dryRun);
    EXPECT_EQ(latest().memory, 300 * MiB);
    expectFreed(std::nullopt, std::nullopt);
    EXPECT_THAT(world.notifications, IsEmpty());
    EXPECT_EQ(world.timesAsked("signal 15 7") + world.timesAsked("lower 7"), 0U);
    EXPECT_EQ(world.logLines.size(), 4U);
}

TEST_F(DecisionTaskTest, aRuleThatWouldOnlyNotifyNotifiesInLogOnlyModeToo) {
    addWorker(7);
    fire({onlyLogging(workerRule(RuleAction::notify))});
    ASSERT_THAT(outcomes(), ElementsAre("Would notify"));
    EXPECT_TRUE(latest().dryRun);
    EXPECT_EQ(lastTitle(), "worker is over its limit");
    EXPECT_EQ(lastBody(), workerReason);
}

TEST_F(DecisionTaskTest, withoutNotificationsEntriesAreStillWritten) {
    world.preferences["notifyOnAction"] = false;
    addWorker(7);
    fire({workerRule(RuleAction::terminate), onlyLogging(workerRule(RuleAction::notify))});
    EXPECT_THAT(outcomes(), testing::UnorderedElementsAre("Terminated", "Would notify"));
    EXPECT_THAT(world.notifications, IsEmpty());
}

TEST_F(DecisionTaskTest, aProcessThatVanishedBeforeTheSignalCountsAsTerminated) {
    addWorker(7);
    start();
    modelState->rules.set({workerRule(RuleAction::terminate)});
    world.find(7)->bsd->startTime = clock.now();
    world.press();
    ASSERT_THAT(outcomes(), ElementsAre("Terminated"));
    expectFreed(300 * MiB, 100 * MiB);
}

TEST_F(DecisionTaskTest, theNewestEntryComesFirstAndIsOnDiskAsWell) {
    addWorker(7).endsAfter = 4s;
    addWorker(8).endsAfter = 1s;
    fire({workerRule(RuleAction::terminate)});
    clock.advance(5s);
    ASSERT_EQ(model->activity->size(), 2U);
    EXPECT_THAT((*model->activity)[0].subjectKey, Optional(Text("pid:7:1768307200.0")));
    EXPECT_THAT((*model->activity)[1].subjectKey, Optional(Text("pid:8:1768307200.0")));
    EXPECT_EQ(model->store().loadActivity(10), *model->activity);
}

TEST_F(DecisionTaskTest, everyEntryHasAnIdOfItsOwn) {
    addWorker(7);
    addWorker(8);
    fire({workerRule(RuleAction::notify)});
    EXPECT_NE((*model->activity)[0].id, (*model->activity)[1].id);
}

TEST_F(DecisionTaskTest, numbersInTheReasonFollowTheUsersRegion) {
    fake.host.locale = "de_DE";
    addWorker(7).usage->footprint = 1536 * MiB;
    fire({workerRule(RuleAction::notify)});
    EXPECT_EQ(lastBody(), "worker was using 1,5 GB, over the 200 MB limit. Rule: Large workers.");
}

TEST_F(DecisionTaskTest, severalDecisionsWaitSideBySideAndTheTicksGoOn) {
    addWorker(7).endsAfter = 8s;
    addMail(8);
    addInstance().quitsAfter = 25s;
    fire({workerRule(RuleAction::terminate), mailRule(RuleAction::relaunch)});
    const auto before = ticks();
    clock.advance(8s);
    EXPECT_THAT(outcomes(), ElementsAre("Terminated"));
    clock.advance(17s);
    EXPECT_EQ(lastTitle(), "Restarted Mail");
    clock.advance(60s);
    EXPECT_THAT(outcomes(), ElementsAre("Relaunched", "Terminated"));
    EXPECT_GT(ticks(), before);
}

TEST_F(DecisionTaskTest, aModelThatGoesLeavesNoTaskBehind) {
    addWorker(7).endsAfter = std::nullopt;
    addMail(8);
    addInstance().quitsAfter = std::nullopt;
    fire({workerRule(RuleAction::terminate), mailRule(RuleAction::relaunch), mailRule(RuleAction::quit)});
    clock.advance(1s);
    model.reset();
    EXPECT_EQ(clock.waiting(), 0U);
    EXPECT_THAT(world.notifications, IsEmpty());
    EXPECT_EQ(world.timesAsked("signal 9 7"), 0U);
}

TEST_F(DecisionTaskTest, aModelThatGoesDuringTheReadBackLeavesNoTaskBehind) {
    addMail(7);
    addInstance();
    fire({mailRule(RuleAction::relaunch)});
    clock.advance(30s);
    model.reset();
    EXPECT_EQ(clock.waiting(), 0U);
}

}  // namespace
}  // namespace tolvane
