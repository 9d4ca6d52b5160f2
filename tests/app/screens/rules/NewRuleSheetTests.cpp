#include "app/screens/rules/NewRuleSheet.h"

#include <gmock/gmock.h>

#include "tests/app/screens/rules/RulesScene.h"

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

struct NewRuleSheetTest : RulesScene {
    NewRuleSheet sheet(TargetKind kind) { return {*model, std::string(locale), kind}; }
    /// A process outside applications whose argument is a path that ends in `match`.
    static ProcRow process(Pid pid, const std::string& match, std::uint64_t megabytes, const std::string& project) {
        auto row = fakes::row(pid, 1, "node", {"node", "/opt/bin/" + match});
        row.sample.footprint = megabytes * MiB;
        if (!project.empty()) row.project = Text("/home/ada/Developer/" + project);
        return row;
    }
    static ProcRow agent(Pid pid, Pid ppid, std::uint64_t megabytes) {
        auto row = fakes::row(pid, ppid, ppid == 1 ? "codex" : "server");
        row.sample.footprint = megabytes * MiB;
        return row;
    }
    static std::vector<std::string> titles(const NewRuleSheet& sheet) {
        std::vector<std::string> titles;
        for (const auto& each : sheet.suggestions()) titles.push_back(each.title);
        return titles;
    }
    static std::vector<std::string> details(const NewRuleSheet& sheet) {
        std::vector<std::string> details;
        for (const auto& each : sheet.suggestions()) details.push_back(each.detail);
        return details;
    }
};

// Applications

TEST_F(NewRuleSheetTest, appsAreListedByMemoryWithoutThisProgram) {
    auto own = app(4242, "Tolvane", 900);
    own.appID = "dev.tolvane.Tolvane";
    auto copy = app(14, "Copy", 900);
    copy.sample.pid = fake.host.selfPID;
    showRows({app(10, "Mail", 600), app(11, "Chrome", 200), app(12, "Chrome", 500), own, copy, puma(13, 1)});
    const auto apps = sheet(TargetKind::app);
    EXPECT_THAT(titles(apps), ElementsAre("Chrome", "Mail"));
    EXPECT_THAT(details(apps), ElementsAre("700 MB", "600 MB"));
    EXPECT_EQ(apps.suggestions()[0].id, "com.Chrome");
    EXPECT_EQ(apps.suggestions()[0].appPath, "/Applications/Chrome.app");
}

TEST_F(NewRuleSheetTest, anAppsRuleRestartsItWhenItGrows) {
    showRows({app(10, "Mail", 600)});
    const auto rule = sheet(TargetKind::app).suggestions()[0].rule;
    EXPECT_EQ(rule.name, "Restart Mail when it grows");
    EXPECT_EQ(rule.mode(), RuleMode::off);
    EXPECT_TRUE(rule.dryRun);
    EXPECT_EQ(rule.target, RuleTarget(AppTarget{"com.Mail", "Mail"}));
    EXPECT_EQ(rule.unusedMinutes, 60);
    EXPECT_EQ(rule.memoryMB, 1024);
    EXPECT_EQ(rule.action, RuleAction::relaunch);
    EXPECT_EQ(rule.onlyWhenTight, std::nullopt);
}

TEST_F(NewRuleSheetTest, aNewLimitIsNotPassedToday) {
    EXPECT_EQ(RuleSuggestions::limitAbove(0), 512);
    EXPECT_EQ(RuleSuggestions::limitAbove(GiB), 2048);
    EXPECT_EQ(RuleSuggestions::limitAbove(GiB - 1), 1536);
    EXPECT_EQ(RuleSuggestions::limitAbove(6 * GiB), 8192);
    EXPECT_EQ(RuleSuggestions::limitAbove(5 * GiB), 8192);
    EXPECT_EQ(RuleSuggestions::limitAbove(40 * GiB), 8192);
}

// Commands

TEST_F(NewRuleSheetTest, processesAreGroupedByTheWordThatTellsThemApart) {
    showRows({process(10, "vite.js", 100, "web"), process(11, "vite.js", 200, "api"), process(12, "tsc", 900, "")});
    const auto commands = sheet(TargetKind::command);
    EXPECT_THAT(titles(commands), ElementsAre("tsc", "vite.js"));
    EXPECT_THAT(details(commands), ElementsAre("1 process, 900 MB", "2 processes in api, web, 300 MB"));
    EXPECT_EQ(commands.suggestions()[0].id, "tsc");
    EXPECT_EQ(commands.suggestions()[0].appPath, std::nullopt);
}

TEST_F(NewRuleSheetTest, atMostThreeProjectsAreNamedEachOnce) {
    showRows({process(10, "x", 1, "d"), process(11, "x", 1, "b"), process(12, "x", 1, "c"), process(13, "x", 1, "a"),
              process(14, "x", 1, "a")});
    EXPECT_THAT(details(sheet(TargetKind::command)), ElementsAre("5 processes in a, b, c, 5 MB"));
}

TEST_F(NewRuleSheetTest, processesOfOthersOfTheSystemAndOfAppsAreNotOffered) {
    auto others = process(10, "a", 1, "");
    others.sample.uid = 0;
    auto systems = process(11, "b", 1, "");
    systems.sample.hostSaysSystem = true;
    showRows({others, systems, app(12, "Mail", 1)});
    EXPECT_THAT(sheet(TargetKind::command).suggestions(), IsEmpty());
}

TEST_F(NewRuleSheetTest, aCommandsRuleStopsItWhenIdle) {
    showRows({process(10, "vite.js", 100, "")});
    const auto rule = sheet(TargetKind::command).suggestions()[0].rule;
    EXPECT_EQ(rule.name, "Stop idle vite.js");
    EXPECT_EQ(rule.mode(), RuleMode::off);
    EXPECT_EQ(rule.target, RuleTarget(CommandTarget{{"vite.js"}}));
    EXPECT_EQ(rule.unusedMinutes, 120);
    EXPECT_EQ(rule.memoryMB, std::nullopt);
    EXPECT_EQ(rule.action, RuleAction::terminate);
}

TEST_F(NewRuleSheetTest, typedTextGoesBeforeASelectedEntry) {
    showRows({process(10, "vite.js", 100, "")});
    auto commands = sheet(TargetKind::command);
    commands.selection = "vite.js";
    EXPECT_EQ(commands.rule()->name, "Stop idle vite.js");
    commands.typed = " puma , next dev,";
    EXPECT_EQ(commands.rule()->name, "Stop idle puma , next dev,");
    EXPECT_EQ(commands.rule()->target, RuleTarget(CommandTarget{{"puma", "next dev"}}));
    EXPECT_EQ(commands.rule()->unusedMinutes, 120);
    EXPECT_EQ(commands.rule()->action, RuleAction::terminate);
    commands.typed = " \t";
    EXPECT_EQ(commands.rule()->name, "Stop idle vite.js");
}

// Agents

TEST_F(NewRuleSheetTest, sessionsTellHowManyHelpersTheyHave) {
    showRows({agent(10, 1, 100), agent(20, 1, 200), agent(21, 20, 50), agent(30, 1, 300), agent(31, 30, 50),
              agent(32, 30, 50)});
    EXPECT_THAT(details(sheet(TargetKind::agent)),
                ElementsAre("400 MB with 2 helpers", "250 MB with 1 helper", "100 MB"));
}

TEST_F(NewRuleSheetTest, theRuleOfSessionsNeedsNoSelection) {
    auto agents = sheet(TargetKind::agent);
    EXPECT_THAT(agents.suggestions(), IsEmpty());
    const auto all = *agents.rule();
    EXPECT_EQ(all.name, "Idle AI agent sessions");
    EXPECT_EQ(std::get<AgentSessionTarget>(all.target).names.size(), Rule::defaultAgentNames.size());
    EXPECT_FALSE(std::get<AgentSessionTarget>(all.target).onlyWithoutPrompt);
    EXPECT_EQ(all.unusedMinutes, 60);
    EXPECT_EQ(all.memoryMB, std::nullopt);
    EXPECT_EQ(all.action, RuleAction::terminate);
    agents.onlyWithoutPrompt = true;
    const auto idle = *agents.rule();
    EXPECT_EQ(idle.name, "Claude Code sessions that never got a prompt");
    EXPECT_TRUE(std::get<AgentSessionTarget>(idle.target).onlyWithoutPrompt);
    EXPECT_EQ(idle.unusedMinutes, 30);
}

// The sheet

TEST_F(NewRuleSheetTest, opensWithAppsAndNothingChosen) {
    const NewRuleSheet first(*model, std::string(locale));
    EXPECT_EQ(first.kind, TargetKind::app);
    EXPECT_EQ(first.rule(), std::nullopt);
    EXPECT_FALSE(first.onlyWithoutPrompt);
}

TEST_F(NewRuleSheetTest, theLineTellsWhatTheRuleIsOrWhatIsMissing) {
    showRows({app(10, "Mail", 600)});
    auto apps = sheet(TargetKind::app);
    EXPECT_EQ(apps.line(), "Choose an app.");
    apps.selection = "com.Mail";
    EXPECT_EQ(apps.line(),
              "Restart Mail when it grows. Starts in Log Only, so it only writes what it would do to Activity.");
    EXPECT_EQ(sheet(TargetKind::command).line(), "Choose a process or type part of its command line.");
    EXPECT_EQ(sheet(TargetKind::agent).line(),
              "Idle AI agent sessions. Starts in Log Only, so it only writes what it would do to Activity.");
}

TEST_F(NewRuleSheetTest, addingPutsTheRuleIntoTheListInLogOnly) {
    showRows({app(10, "Mail", 600)});
    auto apps = sheet(TargetKind::app);
    apps.add();
    EXPECT_THAT(*model->rules, SizeIs(1));
    apps.selection = "com.Mail";
    apps.add();
    ASSERT_THAT(*model->rules, SizeIs(2));
    EXPECT_EQ(model->rules->back().mode(), RuleMode::logOnly);
    EXPECT_TRUE(model->rules->back().enabled);
    EXPECT_EQ(*model->selectedRule, model->rules->back().id);
    EXPECT_EQ(*model->section, AppSection::rules);
}

TEST_F(NewRuleSheetTest, anEntryThatIsGoneGivesNoRule) {
    auto apps = sheet(TargetKind::app);
    apps.selection = "com.Mail";
    EXPECT_EQ(apps.rule(), std::nullopt);
}

TEST(NewRuleSheetWords, areThese) {
    EXPECT_EQ(NewRuleSheet::title, "New Rule");
    EXPECT_EQ(NewRuleSheet::watchLabel, "Watch");
    EXPECT_EQ(NewRuleSheet::typedPrompt, "Or type part of the command line, like puma or next dev");
    EXPECT_EQ(NewRuleSheet::noSessions,
              "No agent session is running right now. The rule applies to sessions you start later.");
    EXPECT_EQ(NewRuleSheet::cancel, "Cancel");
    EXPECT_EQ(NewRuleSheet::addRule, "Add Rule");
}

}  // namespace
}  // namespace tolvane
