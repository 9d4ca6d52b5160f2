#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/rules/RuleEngine.h"
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

ProcRow in(ProcRow row, std::string_view cwd) {
    row.sample.cwd = Text(cwd);
    return row;
}

World hosting(World world, std::vector<ClaudeWorker> workers) {
    world.claudeWorkers = std::move(workers);
    return world;
}

std::vector<Decision> sessions(const World& world, std::vector<std::string> names = {"claude"},
                               bool onlyWithoutPrompt = false) {
    return RuleEngine::candidates(Rule{.target = AgentSessionTarget{std::move(names), onlyWithoutPrompt}}, world);
}

std::vector<std::string> told(const std::vector<Decision>& decisions) {
    std::vector<std::string> all;
    for (const auto& decision : decisions) {
        std::string text = decision.title + " |";
        for (const Pid pid : decision.pids) text += " " + std::to_string(pid);
        all.push_back(text);
    }
    return all;
}

ClaudeWorker worker(std::string shortID, Pid host, bool hasPrompt = true) {
    return {.shortID = std::move(shortID), .hostPID = host, .hasPrompt = hasPrompt};
}

// Identities

ProcSample sampleOf(std::string_view name, TextList args) { return row(10, 1, name, std::move(args)).sample; }

TEST(AgentIdentities, areTheNameAndTheProgramInLowerCase) {
    EXPECT_THAT(fakes::agentIdentities(sampleOf("Claude", {"/opt/bin/Runner/"})), ElementsAre("claude", "runner"));
    EXPECT_THAT(fakes::agentIdentities(sampleOf("goose", {})), ElementsAre("goose"));
}

TEST(AgentIdentities, ofAScriptHoldTheScript) {
    EXPECT_THAT(fakes::agentIdentities(sampleOf("node", {"node", "/opt/tool/bin/codex.js", "--flag"})),
                ElementsAre("codex", "node"));
    EXPECT_THAT(fakes::agentIdentities(sampleOf("python3", {"python3", "-m", "aider"})),
                ElementsAre("aider", "python3"));
    EXPECT_THAT(fakes::agentIdentities(sampleOf("Python3.12", {"Python", "-u", "/x/Tool.v2.py"})),
                ElementsAre("python", "python3.12", "tool.v2"));
}

TEST(AgentIdentities, ofAnInterpreterWithOptionsOnlyHoldNoScript) {
    EXPECT_THAT(fakes::agentIdentities(sampleOf("deno", {"deno", "--version"})), ElementsAre("deno"));
    EXPECT_THAT(fakes::agentIdentities(sampleOf("bun", {"bun"})), ElementsAre("bun"));
}

TEST(AgentIdentities, ofOtherProgramsIgnoreTheirArguments) {
    EXPECT_THAT(fakes::agentIdentities(sampleOf("vim", {"vim", "/x/claude.js"})), ElementsAre("vim"));
}

TEST(AgentIdentities, aVersionsFolderMeansClaude) {
    auto sample = sampleOf("2.0.1", {"x"});
    sample.path = "/home/ada/.local/share/claude/versions/2.0.1";
    EXPECT_THAT(fakes::agentIdentities(sample), ElementsAre("2.0.1", "claude", "x"));
    sample.path = "/home/ada/claude/version/2.0.1";
    EXPECT_THAT(fakes::agentIdentities(sample), ElementsAre("2.0.1", "x"));
}

TEST(AgentIdentities, keepAnEmptyOne) {
    EXPECT_THAT(fakes::agentIdentities(sampleOf("node", {"", ""})), ElementsAre("", "node"));
}

// Sessions

TEST(AgentSessions, areTheAgentAndAllItStarted) {
    auto world = worldOf({row(10, 1, "zsh"), in(row(11, 10, "claude"), "/home/ada/shop"), row(12, 11, "npm"),
                          row(13, 12, "node"), row(14, 10, "vim")});
    world.rows[3].unusedSince = someNow - Seconds{60};
    world.rows[1].sample.startTime = Date{Seconds{800'000'000.5}};
    const Rule rule{.target = AgentSessionTarget{{"claude"}, false}};
    EXPECT_THAT(sessions(world), ElementsAre(Decision{.rule = rule,
                                                      .subjectKey = "agent:11:1778307200.5",
                                                      .title = "claude in shop",
                                                      .pids = {11, 12, 13},
                                                      .memory = 300 * megabyte,
                                                      .unusedSince = someNow - Seconds{60},
                                                      .compressed = 30 * megabyte}));
}

TEST(AgentSessions, walkBreadthFirstInRowOrder) {
    const auto world =
        worldOf({row(30, 20, "b"), row(20, 11, "a"), row(11, 1, "claude"), row(12, 11, "c"), row(13, 12, "d")});
    EXPECT_THAT(told(sessions(world)), ElementsAre("claude | 11 20 12 30 13"));
}

TEST(AgentSessions, withoutAFolderAreCalledByTheLabelAlone) {
    EXPECT_THAT(told(sessions(worldOf({row(11, 1, "claude")}))), ElementsAre("claude | 11"));
}

TEST(AgentSessions, comeInAscendingOrderOfPid) {
    EXPECT_THAT(told(sessions(worldOf({row(12, 1, "claude"), row(11, 1, "claude")}))),
                ElementsAre("claude | 11", "claude | 12"));
}

TEST(AgentSessions, anAgentInsideAnotherBelongsToTheOuterOne) {
    const auto world = worldOf({row(11, 1, "claude"), row(12, 11, "zsh"), row(13, 12, "codex"), row(14, 13, "node")});
    EXPECT_THAT(told(sessions(world, {"codex", "claude"})), ElementsAre("claude | 11 12 13 14"));
    EXPECT_THAT(told(sessions(world, {"codex"})), ElementsAre("codex | 13 14"));
}

TEST(AgentSessions, aListedWorkerIsASessionAlsoInsideAnotherAgent) {
    const auto world = hosting(worldOf({row(11, 1, "claude"), row(12, 11, "zsh"), row(13, 12, "claude"),
                                        row(14, 13, "node"), row(15, 12, "node")}),
                               {worker("7f", 13)});
    // 12 hosts the worker, so the descent from 11 ends there as well.
    EXPECT_THAT(told(sessions(world)), ElementsAre("claude | 11", "Claude session 7f | 13 14"));
}

TEST(AgentSessions, theProcessThatHostsWorkersIsNone) {
    const auto rows = worldOf({row(10, 1, "claude"), row(11, 10, "claude"), row(12, 10, "claude")});
    EXPECT_THAT(told(sessions(rows)), ElementsAre("claude | 10 11 12"));
    EXPECT_THAT(told(sessions(hosting(rows, {worker("a", 11), worker("b", 12)}))),
                ElementsAre("Claude session a | 11", "Claude session b | 12"));
}

TEST(AgentSessions, aWorkerThatHostsAnotherWorkerStaysASession) {
    const auto world =
        hosting(worldOf({row(10, 1, "claude"), row(11, 10, "claude")}), {worker("a", 10), worker("b", 11)});
    EXPECT_THAT(told(sessions(world)), ElementsAre("Claude session a | 10", "Claude session b | 11"));
}

TEST(AgentSessions, ofTwoWorkersOnOneProcessTheLastHolds) {
    const auto world = hosting(worldOf({row(11, 1, "claude")}), {worker("a", 11), worker("b", 11)});
    EXPECT_THAT(told(sessions(world)), ElementsAre("Claude session b | 11"));
}

TEST(AgentSessions, ofWorkersKeepTheirKeyAcrossProcesses) {
    auto named = worker("7f", 11);
    named.name = "fix the cart";
    const auto world = hosting(worldOf({in(row(11, 1, "claude"), "/x")}), {named});
    const auto found = sessions(world);
    EXPECT_THAT(told(found), ElementsAre("Claude session fix the cart | 11"));
    EXPECT_EQ(found.front().subjectKey, "claude:7f");
}

TEST(AgentSessions, applicationsAreNoneUnlessTheRosterListsThem) {
    const auto world = worldOf({appRow(11, 1, "Claude", "com.example.claude")});
    EXPECT_THAT(sessions(world), IsEmpty());
    EXPECT_THAT(told(sessions(hosting(world, {worker("a", 11)}))), ElementsAre("Claude session a | 11"));
}

TEST(AgentSessions, needANameToLookFor) {
    const auto world = worldOf({row(11, 1, "claude"), row(12, 1, "")});
    EXPECT_THAT(sessions(world, {}), IsEmpty());
    EXPECT_THAT(sessions(world, {"", "  ", "\t"}), IsEmpty());
    EXPECT_THAT(told(sessions(world, {" ", " CLAUDE\t"})), ElementsAre("claude | 11"));
}

TEST(AgentSessions, theFirstWantedNameIsTheLabel) {
    const auto world = worldOf({row(11, 1, "node", {"node", "/opt/codex.js"})});
    EXPECT_THAT(told(sessions(world, {"codex", "node"})), ElementsAre("codex | 11"));
    EXPECT_THAT(told(sessions(world, {"amp", "node", "codex"})), ElementsAre("node | 11"));
}

TEST(AgentSessions, withoutAPromptAreKnownFromTheRosterOnly) {
    const auto world = hosting(worldOf({row(10, 1, "claude"), row(11, 9, "claude"), row(12, 9, "claude")}),
                               {worker("prompted", 11, true), worker("empty", 12, false)});
    EXPECT_THAT(told(sessions(world, {"claude"}, true)), ElementsAre("Claude session empty | 12"));
    EXPECT_THAT(told(RuleEngine::candidates(Rule{.target = EmptyClaudeSessionTarget{}}, world)),
                ElementsAre("Claude session empty | 12"));
    EXPECT_THAT(sessions(worldOf({row(10, 1, "claude")}), {"claude"}, true), IsEmpty());
}

TEST(AgentSessions, aPromptedWorkerIsNoBoundaryWhereOnlyOthersAreAskedFor) {
    const auto world = hosting(worldOf({row(11, 9, "claude"), row(12, 11, "node"), row(13, 12, "claude")}),
                               {worker("outer", 11, false), worker("inner", 13, true)});
    // 12 hosts a worker, so it ends the descent, although the worker itself would not.
    EXPECT_THAT(told(sessions(world, {"claude"}, true)), ElementsAre("Claude session outer | 11"));
}

TEST(AgentSessions, aWorkerWhoseProcessHasGoneIsNone) {
    EXPECT_THAT(sessions(hosting(worldOf({row(11, 1, "zsh")}), {worker("a", 99, false)}), {"claude"}, true), IsEmpty());
}

TEST(AgentSessions, ofOneNameInTwoFoldersAreTwo) {
    const auto world = worldOf({in(row(11, 1, "claude"), "/a/shop"), in(row(12, 1, "claude"), "/a/site/")});
    const auto found = sessions(world);
    EXPECT_THAT(told(found), ElementsAre("claude in shop | 11", "claude in site | 12"));
    EXPECT_NE(found[0].subjectKey, found[1].subjectKey);
}

TEST(AgentSessions, holdOnlyWhatMayBeTouched) {
    auto world = worldOf({row(11, 1, "claude"), row(12, 11, "sudo"), row(13, 12, "node"), row(4000, 11, "tolvane")});
    world.rows[1].sample.uid = 0;
    EXPECT_THAT(told(sessions(world)), ElementsAre("claude | 11 13"));
    world.rows[0].sample.uid = 0;
    EXPECT_THAT(sessions(world), IsEmpty());
}

TEST(AgentSessions, neverBeginWithTheFirstTwoNorWithThisProgram) {
    auto world = worldOf({row(1, 0, "claude"), row(4000, 1, "claude"), row(11, 1, "claude")});
    EXPECT_THAT(told(sessions(world)), ElementsAre("claude | 11"));
}

TEST(AgentSessions, holdSystemProgramsToo) {
    auto world = worldOf({row(11, 1, "claude"), row(12, 11, "sh")});
    world.rows[1].sample.path = "/bin/sh";
    EXPECT_THAT(told(sessions(world)), ElementsAre("claude | 11 12"));
}

TEST(AgentSessions, endInRingsOfParents) {
    EXPECT_THAT(told(sessions(worldOf({row(11, 12, "claude"), row(12, 11, "zsh")}))), ElementsAre("claude | 11 12"));
    EXPECT_THAT(sessions(worldOf({row(11, 12, "claude"), row(12, 11, "claude")})), IsEmpty());
    EXPECT_THAT(told(sessions(worldOf({row(11, 12, "claude"), row(12, 13, "a"), row(13, 12, "b")}))),
                ElementsAre("claude | 11"));
    EXPECT_THAT(told(sessions(worldOf({row(11, 11, "claude")}))), ElementsAre("claude | 11"));
}

TEST(AgentSessions, rowsThatShareAPidAreMembersAsOftenAsTheyStand) {
    EXPECT_THAT(told(sessions(worldOf({row(11, 1, "claude"), row(12, 11, "a"), row(12, 11, "b"), row(12, 12, "c")}))),
                ElementsAre("claude | 11 12 12 12"));
}

TEST(AgentSessions, ofRowsThatShareAPidTheLastGivesTheLabelAndTheFirstTheFigures) {
    auto world = worldOf({row(11, 1, "claude"), row(11, 1, "codex")});
    world.rows[0].sample.footprint = 7;
    const auto found = sessions(world, {"claude", "codex"});
    EXPECT_THAT(told(found), ElementsAre("codex | 11"));
    EXPECT_EQ(found.front().memory, 7U);
}

TEST(AgentSessions, countAsUnusedOnlyWhenAllTheirProcessesDo) {
    auto world = worldOf({row(11, 1, "claude"), row(12, 11, "node")});
    const Rule rule{.enabled = true, .target = AgentSessionTarget{{"claude"}, false}, .unusedMinutes = 60};
    EXPECT_EQ(RuleEngine::decisions({rule}, world, someNow, {}).size(), 1U);
    world.rows[1].unusedSince = someNow - Seconds{3599};
    EXPECT_THAT(RuleEngine::decisions({rule}, world, someNow, {}), IsEmpty());
}

TEST(AgentSessions, severalRulesFindTheirOwn) {
    const auto world = worldOf({row(11, 1, "claude"), row(12, 1, "codex"), row(13, 12, "claude")});
    const auto ruleFor = [](std::vector<std::string> names) {
        return Rule{.id = UUID::random(),
                    .enabled = true,
                    .target = AgentSessionTarget{std::move(names), false},
                    .memoryMB = 1};
    };
    EXPECT_THAT(told(RuleEngine::decisions({ruleFor({"codex"}), ruleFor({"claude"}), ruleFor({"claude", "codex"})},
                                           world, someNow, {})),
                ElementsAre("codex | 12 13", "claude | 11", "claude | 13", "claude | 11", "codex | 12 13"));
}

}  // namespace
}  // namespace tolvane
