#include "app/screens/rules/RuleEditor.h"

#include <gmock/gmock.h>

#include "core/storage/Store.h"
#include "tests/app/screens/rules/RulesScene.h"

namespace tolvane {
namespace {

using ::testing::ElementsAre;

struct RuleEditorTest : RulesScene {
    RuleEditor edit(Rule rule) {
        modelState->rules.set({rule, appRule()});
        return {*model, rule.id, std::string(locale)};
    }
    RuleEditor edit(RuleTarget target, RuleAction action = RuleAction::notify) {
        auto rule = commandRule();
        rule.target = std::move(target);
        rule.action = action;
        return edit(rule);
    }
    template <typename Target>
    const Target& target() const {
        return std::get<Target>(first().target);
    }
    static std::vector<std::string> titles(const auto& choices) {
        std::vector<std::string> titles;
        for (const auto& each : choices) titles.push_back(each.title);
        return titles;
    }
};

TEST_F(RuleEditorTest, everyChangeGoesToTheModelAndToDisk) {
    auto editor = edit(commandRule());
    editor.setName("Renamed");
    editor.setAction(RuleAction::lowerPriority);
    EXPECT_EQ(first().name, "Renamed");
    EXPECT_EQ(first().action, RuleAction::lowerPriority);
    EXPECT_EQ(model->rules->size(), 2U);
    EXPECT_EQ(Store(folder / "Tolvane").loadRules(), *model->rules);
}

TEST_F(RuleEditorTest, anyModeButOffAsksForPermissionToNotify) {
    auto editor = edit(commandRule());
    editor.setMode(RuleMode::off);
    EXPECT_EQ(world.permissionRequests, 0);
    editor.setMode(RuleMode::logOnly);
    EXPECT_EQ(first().mode(), RuleMode::logOnly);
    EXPECT_EQ(world.permissionRequests, 1);
    editor.setMode(RuleMode::on);
    EXPECT_EQ(first().mode(), RuleMode::on);
    EXPECT_EQ(world.permissionRequests, 2);
}

TEST_F(RuleEditorTest, aRuleThatIsGoneTakesNoChanges) {
    auto editor = edit(commandRule());
    editor.deleteIt();
    EXPECT_EQ(editor.rule(), nullptr);
    const auto rest = *model->rules;
    editor.setName("x");
    editor.setKind(TargetKind::agent);
    editor.setPatterns("y");
    editor.savePatterns();
    editor.setMode(RuleMode::off);
    EXPECT_EQ(*model->rules, rest);
    EXPECT_EQ(editor.footer(), "");
    EXPECT_TRUE(editor.appChoices().empty());
}

// Kinds

TEST_F(RuleEditorTest, theKindFollowsTheTarget) {
    EXPECT_EQ(edit(AppTarget{}).kind(), TargetKind::app);
    EXPECT_EQ(edit(CommandTarget{}).kind(), TargetKind::command);
    EXPECT_EQ(edit(AgentSessionTarget{}).kind(), TargetKind::agent);
    EXPECT_EQ(edit(EmptyClaudeSessionTarget{}).kind(), TargetKind::agent);
}

TEST_F(RuleEditorTest, changingTheKindReplacesTheTarget) {
    auto editor = edit(CommandTarget{{"puma"}});
    editor.setKind(TargetKind::agent);
    EXPECT_EQ(target<AgentSessionTarget>().names.size(), Rule::defaultAgentNames.size());
    EXPECT_FALSE(target<AgentSessionTarget>().onlyWithoutPrompt);
    EXPECT_EQ(editor.patterns(), "claude, codex, gemini, opencode, aider, goose, cursor-agent, amp, copilot");
    editor.setKind(TargetKind::app);
    EXPECT_EQ(target<AppTarget>(), AppTarget{});
    EXPECT_EQ(editor.patterns(), "");
    editor.setKind(TargetKind::command);
    EXPECT_EQ(target<CommandTarget>(), CommandTarget{});
    EXPECT_EQ(editor.patterns(), "");
}

TEST_F(RuleEditorTest, anActionThatTheNewKindLacksBecomesNotify) {
    for (const auto action : {RuleAction::relaunch, RuleAction::quit, RuleAction::notify}) {
        edit(AppTarget{"a", "A"}, action).setKind(TargetKind::command);
        EXPECT_EQ(first().action, RuleAction::notify);
    }
    for (const auto action : {RuleAction::terminate, RuleAction::lowerPriority}) {
        edit(CommandTarget{}, action).setKind(TargetKind::agent);
        EXPECT_EQ(first().action, action);
        edit(CommandTarget{}, action).setKind(TargetKind::app);
        EXPECT_EQ(first().action, RuleAction::notify);
    }
}

TEST_F(RuleEditorTest, choosingThePresentKindChangesNothing) {
    auto editor = edit(EmptyClaudeSessionTarget{});
    editor.setKind(TargetKind::agent);
    EXPECT_TRUE(std::holds_alternative<EmptyClaudeSessionTarget>(first().target));
}

TEST_F(RuleEditorTest, eachKindHasItsActions) {
    EXPECT_THAT(actionsFor(TargetKind::app), ElementsAre(RuleAction::notify, RuleAction::quit, RuleAction::relaunch));
    for (const auto kind : {TargetKind::command, TargetKind::agent}) {
        EXPECT_THAT(actionsFor(kind),
                    ElementsAre(RuleAction::notify, RuleAction::lowerPriority, RuleAction::terminate));
    }
}

TEST_F(RuleEditorTest, anActionOfAnotherKindIsNotTaken) {
    edit(AppTarget{"a", "A"}, RuleAction::quit).setAction(RuleAction::terminate);
    EXPECT_EQ(first().action, RuleAction::quit);
}

TEST_F(RuleEditorTest, kindsHaveTitlesInOrder) {
    EXPECT_EQ(targetKinds[0].title, "An app");
    EXPECT_EQ(targetKinds[1].title, "A command");
    EXPECT_EQ(targetKinds[2].title, "AI agent sessions");
    EXPECT_EQ(targetKinds[0].rawValue, "app");
    EXPECT_EQ(targetKinds[1].rawValue, "command");
    EXPECT_EQ(targetKinds[2].rawValue, "agent");
}

// Patterns

TEST_F(RuleEditorTest, leavingTheFieldSplitsTheTextAtCommas) {
    auto editor = edit(CommandTarget{{"puma", "rails server"}});
    EXPECT_EQ(editor.patterns(), "puma, rails server");
    editor.setPatterns(" vite ,,next dev,\t ,");
    EXPECT_THAT(target<CommandTarget>().patterns, ElementsAre("puma", "rails server"));
    editor.savePatterns();
    EXPECT_THAT(target<CommandTarget>().patterns, ElementsAre("vite", "next dev"));
    EXPECT_EQ(editor.patterns(), "vite, next dev");
}

TEST_F(RuleEditorTest, aFieldThatWasNotTouchedRewritesNothing) {
    auto editor = edit(CommandTarget{{"puma "}});
    editor.savePatterns();
    EXPECT_THAT(target<CommandTarget>().patterns, ElementsAre("puma "));
}

TEST_F(RuleEditorTest, namesOfAgentsAreKeptBesideTheToggle) {
    auto editor = edit(AgentSessionTarget{{"claude"}, true});
    editor.setPatterns("codex, amp");
    editor.savePatterns();
    EXPECT_EQ(target<AgentSessionTarget>(), (AgentSessionTarget{{"codex", "amp"}, true}));
    editor.setOnlyWithoutPrompt(false);
    EXPECT_EQ(target<AgentSessionTarget>(), (AgentSessionTarget{{"codex", "amp"}, false}));
}

TEST_F(RuleEditorTest, theOldFormOfASessionRuleReadsAsWhatItMeans) {
    auto editor = edit(EmptyClaudeSessionTarget{});
    EXPECT_EQ(editor.patterns(), "claude");
    EXPECT_TRUE(editor.onlyWithoutPrompt());
    editor.savePatterns();
    EXPECT_TRUE(std::holds_alternative<EmptyClaudeSessionTarget>(first().target));
    editor.setOnlyWithoutPrompt(false);
    EXPECT_EQ(target<AgentSessionTarget>(), (AgentSessionTarget{{"claude"}, false}));
}

TEST_F(RuleEditorTest, theToggleIsOfferedWhereSessionsAreListed) {
    EXPECT_FALSE(RuleEditor::offersWithoutPrompt(*model));
    makeDaemonFolder();
    EXPECT_TRUE(RuleEditor::offersWithoutPrompt(*model));
    EXPECT_EQ(RuleEditor::withoutPromptLabel, "Only Claude Code sessions that never got a prompt");
}

// Applications

TEST_F(RuleEditorTest, appsAreListedByTheMemoryTheyUse) {
    auto editor = edit(AppTarget{"com.Mail", "Mail"});
    auto helper = app(12, "Chrome", 500);
    showRows({app(10, "Mail", 600), app(11, "Chrome", 200), helper, app(13, "Idle", 0), puma(14, 1)});
    EXPECT_THAT(titles(editor.appChoices()), ElementsAre("Chrome, 700 MB", "Mail, 600 MB", "Idle"));
}

TEST_F(RuleEditorTest, withoutAChosenAppTheFirstEntryAsksForOne) {
    auto editor = edit(AppTarget{});
    showRows({app(10, "Mail", 600)});
    EXPECT_THAT(titles(editor.appChoices()), ElementsAre("Choose an app", "Mail, 600 MB"));
    editor.setApp("com.Mail");
    EXPECT_EQ(target<AppTarget>(), (AppTarget{"com.Mail", "Mail"}));
    EXPECT_THAT(titles(editor.appChoices()), ElementsAre("Mail, 600 MB"));
}

TEST_F(RuleEditorTest, anAppThatDoesNotRunStaysLastWithoutASize) {
    auto editor = edit(AppTarget{"com.slack", "Slack"});
    showRows({app(10, "Mail", 600)});
    EXPECT_THAT(titles(editor.appChoices()), ElementsAre("Mail, 600 MB", "Slack"));
    editor.setApp("com.slack");
    EXPECT_EQ(target<AppTarget>(), (AppTarget{"com.slack", "Slack"}));
}

// Conditions

TEST_F(RuleEditorTest, offersTheStockOfConditions) {
    auto rule = commandRule();
    rule.unusedMinutes.reset();
    const auto editor = edit(rule);
    EXPECT_THAT(titles(editor.unusedChoices()), ElementsAre("Don't check", "15 minutes", "30 minutes", "1 hour",
                                                            "2 hours", "4 hours", "8 hours", "1 day"));
    EXPECT_THAT(titles(editor.memoryChoices()),
                ElementsAre("Don't check", "512 MB", "1 GB", "1.5 GB", "2 GB", "4 GB", "8 GB"));
}

TEST_F(RuleEditorTest, aValueFromAFileStaysAmongTheChoicesInOrder) {
    auto rule = commandRule();
    rule.unusedMinutes = 45;
    rule.memoryMB = 3000;
    const auto editor = edit(rule);
    EXPECT_THAT(titles(editor.unusedChoices()), ElementsAre("Don't check", "15 minutes", "30 minutes", "45 minutes",
                                                            "1 hour", "2 hours", "4 hours", "8 hours", "1 day"));
    EXPECT_EQ(editor.memoryChoices()[5].value, 3000);
    EXPECT_THAT(RuleConditions::choices(RuleConditions::unusedMinutes, 60),
                ElementsAre(15, 30, 60, 120, 240, 480, 1440));
    EXPECT_EQ(RuleConditions::choices(RuleConditions::unusedMinutes, -5).front(), -5);
}

TEST_F(RuleEditorTest, conditionsAreSetAndRemoved) {
    auto editor = edit(commandRule());
    editor.setUnusedMinutes(15);
    editor.setMemoryMB(512);
    EXPECT_EQ(first().unusedMinutes, 15);
    EXPECT_EQ(first().memoryMB, 512);
    editor.setUnusedMinutes(std::nullopt);
    editor.setMemoryMB(std::nullopt);
    EXPECT_FALSE(first().hasCondition());
}

TEST_F(RuleEditorTest, theGateIsStoredAsTrueOrNotAtAll) {
    auto editor = edit(commandRule());
    editor.setOnlyWhenTight(true);
    EXPECT_EQ(first().onlyWhenTight, true);
    editor.setOnlyWhenTight(false);
    EXPECT_EQ(first().onlyWhenTight, std::nullopt);
}

TEST_F(RuleEditorTest, theFooterExplainsTheConditions) {
    EXPECT_EQ(edit(AppTarget{}).footer(), "An app counts as unused from the moment it stops being the frontmost app.");
    EXPECT_EQ(edit(CommandTarget{}).footer(),
              "A process counts as unused while its CPU stays under 1%. Tolvane starts counting when it starts "
              "watching.");
    auto editor = edit(AgentSessionTarget{});
    EXPECT_EQ(editor.footer(),
              "A session counts as unused while every one of its processes stays under 1% CPU. Tolvane starts "
              "counting when it starts watching.");
    editor.setOnlyWhenTight(true);
    EXPECT_EQ(editor.footer(),
              "A session counts as unused while every one of its processes stays under 1% CPU. Tolvane starts "
              "counting when it starts watching. Memory is tight while macOS reports memory pressure, or after swap "
              "grew by 512 MB in 15 minutes.");
    editor.setUnusedMinutes(std::nullopt);
    EXPECT_EQ(editor.footer(),
              "Pick at least one condition. Without one the rule never acts. Memory is tight while macOS reports "
              "memory pressure, or after swap grew by 512 MB in 15 minutes.");
    editor.setOnlyWhenTight(false);
    EXPECT_EQ(editor.footer(), "Pick at least one condition. Without one the rule never acts.");
}

TEST(RuleEditorWords, areThese) {
    EXPECT_EQ(RuleEditor::nameLabel, "Name");
    EXPECT_EQ(RuleEditor::modeLabel, "Mode");
    EXPECT_EQ(RuleEditor::targetLabel, "Applies to");
    EXPECT_EQ(RuleEditor::appLabel, "App");
    EXPECT_EQ(RuleEditor::appHint, "Apps are listed by the memory they use now.");
    EXPECT_EQ(RuleEditor::commandLabel, "Command contains");
    EXPECT_EQ(RuleEditor::commandPrompt, "vite/bin/vite.js, next dev");
    EXPECT_EQ(RuleEditor::commandHint,
              "Matches any process whose command line contains one of these. Separate several with commas; case is "
              "ignored.");
    EXPECT_EQ(RuleEditor::agentLabel, "Agent programs");
    EXPECT_EQ(RuleEditor::agentHint,
              "A session is an agent program plus everything it started, such as MCP and language servers. "
              "Terminating a session ends all of them. Claude Code, Codex and Gemini can resume the conversation "
              "afterwards.");
    EXPECT_EQ(RuleEditor::conditionsHeading, "When");
    EXPECT_EQ(RuleEditor::unusedLabel, "Unused for");
    EXPECT_EQ(RuleEditor::memoryLabel, "Using more than");
    EXPECT_EQ(RuleEditor::tightLabel, "Only when memory is tight");
    EXPECT_EQ(RuleEditor::actionLabel, "Then");
    EXPECT_EQ(RuleEditor::deleteRule, "Delete Rule");
}

}  // namespace
}  // namespace tolvane
