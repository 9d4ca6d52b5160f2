#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "core/history/Moment.h"
#include "core/json/Encode.h"
#include "core/projects/ParkedProject.h"
#include "core/rules/Rule.h"
#include "core/storage/ActivityEntry.h"

namespace tolvane {
namespace {

using json::encode;
using json::Style;

const UUID someID = *UUID::parse("0f1e2d3c-4b5a-4978-8695-a4b3c2d1e0ff");

std::string string(std::string_view text) { return *encode(std::vector<std::string>{std::string(text)}); }

TEST(Encode, writesALogEntryOnOneLineInDeclaredOrder) {
    const ActivityEntry entry{.id = someID,
                              .date = Date{Seconds{800000000.25}},
                              .ruleName = "Idle Rails servers",
                              .subject = "puma",
                              .outcome = "Terminated",
                              .memory = 536870912,
                              .dryRun = false,
                              .subjectKey = Text("pid:12:1778307200.5"),
                              .compressed = 0,
                              .freed = 5,
                              .freedCompressed = std::numeric_limits<std::uint64_t>::max()};
    EXPECT_EQ(encode(entry),
              R"({"id":"0F1E2D3C-4B5A-4978-8695-A4B3C2D1E0FF","date":800000000.25,"ruleName":"Idle Rails servers",)"
              R"("subject":"puma","outcome":"Terminated","memory":536870912,"dryRun":false,)"
              R"("subjectKey":"pid:12:1778307200.5","compressed":0,"freed":5,"freedCompressed":18446744073709551615})");
}

TEST(Encode, leavesAbsentFieldsOut) {
    EXPECT_EQ(encode(ActivityEntry{.id = someID, .dryRun = true}),
              R"({"id":"0F1E2D3C-4B5A-4978-8695-A4B3C2D1E0FF","date":0,"ruleName":"","subject":"","outcome":"",)"
              R"("memory":0,"dryRun":true})");
}

TEST(Encode, writesAMomentWithItsHolders) {
    const Moment moment{.date = Date{Seconds{1.5}},
                        .total = 4,
                        .used = 3,
                        .compressed = 2,
                        .swapUsed = 1,
                        .pressure = 2,
                        .cpu = 0.1,
                        .cores = 8,
                        .holders = {Holder{.key = "cmd:node",
                                           .title = "node",
                                           .memory = 7,
                                           .compressed = 6,
                                           .cpu = 12.5,
                                           .started = Date{Seconds{-3}},
                                           .swapIns = 9}},
                        .performance = 1.0,
                        .efficiency = 0.25,
                        .swapIns = 8};
    EXPECT_EQ(encode(moment),
              R"({"date":1.5,"total":4,"used":3,"compressed":2,"swapUsed":1,"pressure":2,"cpu":0.1,"cores":8,)"
              R"("holders":[{"key":"cmd:node","title":"node","memory":7,"compressed":6,"cpu":12.5,"started":-3,)"
              R"("swapIns":9}],"performance":1,"efficiency":0.25,"swapIns":8})");
}

TEST(Encode, writesParkedProjectsCompactly) {
    const ParkedProject project{
        .root = "/home/ada/shop",
        .date = Date{Seconds{2}},
        .commands = {{.executable = "/usr/bin/node", .args = {"node", "server.js"}, .env = {"A=1"}, .cwd = "/"}},
        .containers = {}};
    EXPECT_EQ(encode(std::vector{project}),
              R"([{"root":"\/home\/ada\/shop","date":2,"commands":[{"executable":"\/usr\/bin\/node",)"
              R"("args":["node","server.js"],"env":["A=1"],"cwd":"\/"}],"containers":[]}])");
    EXPECT_EQ(encode(std::vector<ParkedProject>{}), "[]");
}

TEST(Encode, writesRulesPrettilyWithSortedKeys) {
    const Rule rule{.id = someID,
                    .name = "A/B",
                    .enabled = true,
                    .dryRun = false,
                    .target = CommandTarget{{"puma ", "x"}},
                    .unusedMinutes = 60,
                    .memoryMB = 512,
                    .action = RuleAction::lowerPriority,
                    .onlyWhenTight = true};
    EXPECT_EQ(encode(std::vector{rule}, Style::pretty), R"([
  {
    "action" : "lowerPriority",
    "dryRun" : false,
    "enabled" : true,
    "id" : "0F1E2D3C-4B5A-4978-8695-A4B3C2D1E0FF",
    "memoryMB" : 512,
    "name" : "A\/B",
    "onlyWhenTight" : true,
    "target" : {
      "command" : {
        "patterns" : [
          "puma ",
          "x"
        ]
      }
    },
    "unusedMinutes" : 60
  }
])");
}

TEST(Encode, writesEmptyListsAndObjectsPrettilyWithAnEmptyLine) {
    EXPECT_EQ(encode(std::vector<Rule>{}, Style::pretty), "[\n\n]");
    const std::vector<RuleTarget> targets = {EmptyClaudeSessionTarget{}, AgentSessionTarget{}};
    EXPECT_EQ(encode(targets, Style::pretty), R"([
  {
    "emptyClaudeSession" : {

    }
  },
  {
    "agentSession" : {
      "names" : [

      ],
      "onlyWithoutPrompt" : false
    }
  }
])");
}

TEST(Encode, writesEachTargetAsAnObjectOfOneKey) {
    const std::vector<RuleTarget> targets = {AppTarget{.appID = "com.example.app", .name = "App"}, CommandTarget{{"a"}},
                                             EmptyClaudeSessionTarget{}, AgentSessionTarget{{"claude", "amp"}, true}};
    EXPECT_EQ(encode(targets),
              R"([{"app":{"bundleID":"com.example.app","name":"App"}},{"command":{"patterns":["a"]}},)"
              R"({"emptyClaudeSession":{}},{"agentSession":{"names":["claude","amp"],"onlyWithoutPrompt":true}}])");
}

TEST(Encode, escapesWhatJSONDemandsAndSlashesAndKeepsOtherText) {
    EXPECT_EQ(string("a\"b\\c/d"), R"(["a\"b\\c\/d"])");
    EXPECT_EQ(string("\b\f\n\r\t"), R"(["\b\f\n\r\t"])");
    EXPECT_EQ(string(std::string_view("\0\x01\x1f", 3)), R"(["\u0000\u0001\u001f"])");
    EXPECT_EQ(string("é 日本 🙂 \x7f\xE2\x80\xA8"), "[\"é 日本 🙂 \x7f\xE2\x80\xA8\"]");
}

TEST(Encode, repairsWhatIsNotUTF8) {
    EXPECT_EQ(string("a\xFF/\n"), "[\"a\xEF\xBF\xBD\\/\\n\"]");
    EXPECT_EQ(string("\xC3"), "[\"\xEF\xBF\xBD\"]");
}

TEST(Encode, writesDoublesInTheShortestFormThatReadsBack) {
    EXPECT_EQ(encode(std::vector{0.1, 1.0 / 3, 60.0, -2.5, 0.0, 800000000.123456}),
              "[0.1,0.3333333333333333,60,-2.5,0,800000000.123456]");
    EXPECT_EQ(encode(std::vector{1e15, 1e16, 1e17, 1e22, 0.0001, 0.00001, 5e-324}),
              "[1000000000000000,10000000000000000,1e+17,1e+22,0.0001,1e-05,5e-324]");
}

TEST(Encode, hasNoTextForNumbersThatAreNotFinite) {
    EXPECT_EQ(encode(std::vector{std::numeric_limits<double>::infinity()}), std::nullopt);
    EXPECT_EQ(encode(Moment{.cpu = std::numeric_limits<double>::quiet_NaN()}), std::nullopt);
}

}  // namespace
}  // namespace tolvane
