#include "app/screens/processes/ProcessActions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/fakes/Rows.h"

namespace tolvane {
namespace {

using fakes::appRow;
using fakes::MiB;
using fakes::row;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

ProcRow slack(Pid pid) {
    auto made = appRow(pid, "Slack Helper", "/Applications/Slack.app");
    made.appID = Text("com.tinyspeck.slackmacgap");
    return made;
}

ProcRow server() {
    auto made = row(7, "node", 300 * MiB);
    made.sample.args = {"node", "/srv/app/server.js", "--port=3000"};
    made.sample.cwd = Text("/srv/app");
    return made;
}

constexpr Actor me{.pid = 99, .uid = 501};

/// The items' titles, with "-" for a divider.
std::vector<std::string> titles(const std::vector<ProcessMenuItem>& items) {
    std::vector<std::string> titles;
    for (const auto& item : items) titles.push_back(item.isDivider() ? "-" : item.title);
    return titles;
}

std::vector<ProcessAction> actions(const std::vector<ProcessMenuItem>& items) {
    std::vector<ProcessAction> actions;
    for (const auto& item : items) {
        if (item.action) actions.push_back(*item.action);
    }
    return actions;
}

TableRow slackRow(std::uint64_t memory = 1200 * MiB) {
    return {.id = "/Applications/Slack.app",
            .title = "Slack",
            .appPath = "/Applications/Slack.app",
            .pids = {1, 2},
            .memory = memory,
            .children = std::vector<TableRow>{}};
}

TableRow serverRow() { return {.id = "pid:7", .title = "node", .pids = {7}, .memory = 300 * MiB}; }

TEST(ProcessActions, ofAnAppQuitRelaunchAndMakeARule) {
    const auto menu = ProcessActions::of(slackRow(), {slack(1), slack(2)});
    EXPECT_THAT(titles(menu.items), ElementsAre("Quit Slack", "Relaunch Slack", "-", "Add Rule for Slack"));
    EXPECT_THAT(actions(menu.items), ElementsAre(ProcessAction::quit, ProcessAction::relaunch, ProcessAction::addRule));
    EXPECT_EQ(menu.appID, "com.tinyspeck.slackmacgap");
    EXPECT_THAT(menu.pids, ElementsAre(1, 2));
}

TEST(ProcessActions, takeTheFirstBundleThatAProcessOfTheRowHas) {
    auto without = slack(1);
    without.appID.reset();
    auto other = slack(3);
    other.appID = Text("com.example.other");
    const auto menu = ProcessActions::of(slackRow(), {other, without, slack(2)});
    EXPECT_EQ(menu.appID, "com.tinyspeck.slackmacgap");
}

TEST(ProcessActions, ofAProcessTerminateCopyShowAndMakeARule) {
    const auto menu = ProcessActions::of(serverRow(), {server()});
    EXPECT_THAT(titles(menu.items), ElementsAre("Terminate", "-", "Copy Command", "Show Working Folder in Finder", "-",
                                                "Add Rule for node"));
    EXPECT_THAT(actions(menu.items), ElementsAre(ProcessAction::terminate, ProcessAction::copyCommand,
                                                 ProcessAction::showWorkingFolder, ProcessAction::addRule));
    EXPECT_EQ(menu.command, "node /srv/app/server.js --port=3000");
    EXPECT_EQ(menu.workingFolder, "/srv/app");
    EXPECT_EQ(menu.appID, std::nullopt);
}

TEST(ProcessActions, showNoWorkingFolderThatIsUnknown) {
    auto process = server();
    process.sample.cwd.reset();
    const auto menu = ProcessActions::of(serverRow(), {process});
    EXPECT_THAT(titles(menu.items), ElementsAre("Terminate", "-", "Copy Command", "-", "Add Rule for node"));
    EXPECT_EQ(menu.workingFolder, std::nullopt);
}

TEST(ProcessActions, ofAGroupOutsideAppsOnlyTerminate) {
    TableRow group{.id = "cmd:node", .title = "node", .pids = {7, 8}, .children = std::vector<TableRow>{}};
    EXPECT_THAT(titles(ProcessActions::of(group, {server(), row(8, "node")}).items),
                ElementsAre("Terminate 2 Processes"));
    group.pids = {7};
    const auto menu = ProcessActions::of(group, {server()});
    EXPECT_THAT(titles(menu.items), ElementsAre("Terminate"));
    EXPECT_EQ(menu.rule, std::nullopt);
}

TEST(ProcessActions, ofAProcessThatIsGoneOnlyTerminate) {
    EXPECT_THAT(titles(ProcessActions::of(serverRow(), {}).items), ElementsAre("Terminate"));
}

TEST(ProcessActions, ofABundleWithoutAnIdentifierTreatItAsAProcess) {
    auto process = slack(1);
    process.appID.reset();
    const TableRow tableRow{.id = "pid:1", .title = "Slack", .appPath = "/Applications/Slack.app", .pids = {1}};
    EXPECT_THAT(titles(ProcessActions::of(tableRow, {process}).items),
                ElementsAre("Terminate", "-", "Copy Command", "-", "Add Rule for Slack Helper"));
}

TEST(TableMenu, endsWithForceQuitForOneRow) {
    const auto menu = ProcessActions::menuOf({slackRow()}, {slack(1)}, me);
    EXPECT_THAT(titles(menu),
                ElementsAre("Quit Slack", "Relaunch Slack", "-", "Add Rule for Slack", "-", "Force Quit…"));
    EXPECT_EQ(menu.back().action, ProcessAction::forceQuit);
}

TEST(TableMenu, onlyForceQuitsSeveral) {
    const auto menu = ProcessActions::menuOf({slackRow(), serverRow(), serverRow()}, {slack(1), server()}, me);
    EXPECT_THAT(titles(menu), ElementsAre("Force Quit 3 Items…"));
    EXPECT_THAT(actions(menu), ElementsAre(ProcessAction::forceQuit));
}

TEST(TableMenu, offersNoActOnAnotherUsersProcess) {
    auto other = server();
    other.sample.uid = 0;
    for (const auto& item : ProcessActions::menuOf({serverRow()}, {other}, me)) {
        const bool acts = item.action == ProcessAction::terminate || item.action == ProcessAction::forceQuit;
        EXPECT_EQ(item.enabled, !acts) << item.title;
    }
    for (const auto& item : ProcessActions::menuOf({serverRow()}, {server()}, me)) EXPECT_TRUE(item.enabled);
}

TEST(TableMenu, offersNoActOnThisProgram) {
    const Actor self{.pid = 7, .uid = 501};
    EXPECT_FALSE(ProcessActions::menuOf({serverRow()}, {server()}, self).back().enabled);
}

TEST(TableMenu, forceQuitsSeveralWhenOneOfThemMayBe) {
    auto other = slack(1);
    other.sample.uid = 0;
    EXPECT_TRUE(ProcessActions::menuOf({slackRow(), serverRow()}, {other, server()}, me).front().enabled);
    EXPECT_FALSE(ProcessActions::menuOf({slackRow(), slackRow()}, {other}, me).front().enabled);
}

TEST(TableMenu, ofNothingIsEmpty) { EXPECT_THAT(ProcessActions::menuOf({}, {}, me), IsEmpty()); }

TEST(GrowthRule, restartsTheAppPastWhatItUsesNow) {
    const auto rule = ProcessActions::of(slackRow(), {slack(1)}).rule;
    ASSERT_TRUE(rule);
    EXPECT_EQ(rule->name, "Restart Slack when it grows");
    EXPECT_FALSE(rule->enabled);
    EXPECT_TRUE(rule->dryRun);
    EXPECT_EQ(rule->target, RuleTarget(AppTarget{.appID = "com.tinyspeck.slackmacgap", .name = "Slack"}));
    EXPECT_EQ(rule->unusedMinutes, 60);
    EXPECT_EQ(rule->memoryMB, 1200);
    EXPECT_EQ(rule->action, RuleAction::relaunch);
    EXPECT_EQ(rule->onlyWhenTight, std::nullopt);
}

std::int64_t limitOf(std::uint64_t memory) {
    return ProcessActions::growthRule(slackRow(memory), "id").memoryMB.value_or(-1);
}

TEST(GrowthRule, roundsItsLimitDownToHundredsAndStartsAtFiveHundred) {
    EXPECT_EQ(limitOf(1200 * MiB), 1200);
    EXPECT_EQ(limitOf(1299 * MiB + MiB - 1), 1200);
    EXPECT_EQ(limitOf(1300 * MiB), 1300);
    EXPECT_EQ(limitOf(340 * MiB), 500);
    EXPECT_EQ(limitOf(599 * MiB), 500);
    EXPECT_EQ(limitOf(600 * MiB), 600);
    EXPECT_EQ(limitOf(0), 500);
}

TEST(IdleRule, stopsWhatMatchesTheScript) {
    const auto rule = ProcessActions::of(serverRow(), {server()}).rule;
    ASSERT_TRUE(rule);
    EXPECT_EQ(rule->name, "Stop idle node");
    EXPECT_FALSE(rule->enabled);
    EXPECT_TRUE(rule->dryRun);
    EXPECT_EQ(rule->target, RuleTarget(CommandTarget{.patterns = {"server.js"}}));
    EXPECT_EQ(rule->unusedMinutes, 120);
    EXPECT_EQ(rule->memoryMB, std::nullopt);
    EXPECT_EQ(rule->action, RuleAction::terminate);
    EXPECT_EQ(rule->onlyWhenTight, std::nullopt);
}

TEST(PrefilledRules, haveIdentitiesOfTheirOwn) {
    EXPECT_NE(ProcessActions::idleRule(server().sample).id, ProcessActions::idleRule(server().sample).id);
}

}  // namespace
}  // namespace tolvane
