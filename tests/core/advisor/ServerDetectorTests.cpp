#include "tests/core/advisor/AdviceTest.h"

namespace tolvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Servers whose terminal has gone, and servers that run more than once.
struct FindServersTest : AdviceTest {
    ProcRow& addLeft(Pid pid, int port, Seconds idle = Seconds{5400}) {
        ports[pid] = {port};
        auto& row = addServer(pid, 1);
        row.unusedSince = now - idle;
        return row;
    }
    ProcRow& addCopy(Pid pid, Pid ppid, int port, Seconds age) {
        ports[pid] = {port};
        auto& row = addServer(pid, ppid);
        row.sample.startTime = now - age;
        return row;
    }
};

TEST_F(FindServersTest, aServerWhoseTerminalIsGoneIsFound) {
    addLeft(30, 5173);
    const auto found = only();
    EXPECT_EQ(found.id, "left|/home/ada/src/shop|vite");
    EXPECT_EQ(found.kind, Suggestion::Kind::leftRunning);
    EXPECT_EQ(found.title, "vite in shop");
    EXPECT_THAT(found.pids, ElementsAre(30));
    EXPECT_EQ(found.memory, 10 * MiB);
    EXPECT_EQ(found.evidence, "Its terminal is gone. Listening on port 5173, unused for 1 hr, 30 min.");
    EXPECT_EQ(found.action, RuleAction::terminate);
    EXPECT_FALSE(found.appPath);
    EXPECT_FALSE(found.cpu);
}

TEST_F(FindServersTest, itsRuleStopsTheProgramAndOnlyLogs) {
    addLeft(30, 5173);
    const auto rule = only().rule.value();
    EXPECT_EQ(rule.name, "Stop vite in shop when its terminal is gone");
    EXPECT_EQ(rule.mode(), RuleMode::logOnly);
    EXPECT_EQ(rule.target, RuleTarget(CommandTarget{{"vite"}}));
    EXPECT_EQ(rule.unusedMinutes, 60);
    EXPECT_EQ(rule.memoryMB, std::nullopt);
    EXPECT_EQ(rule.action, RuleAction::terminate);
    EXPECT_EQ(rule.onlyWhenTight, std::nullopt);
}

TEST_F(FindServersTest, eachProposedRuleHasAnIdOfItsOwn) {
    addLeft(30, 5173);
    EXPECT_NE(only().rule->id, only().rule->id);
}

TEST_F(FindServersTest, aServiceIsNotLeftRunning) {
    addLeft(30, 5173);
    managed = {30};
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(FindServersTest, whatStillHasAParentIsNotLeftRunning) {
    addLeft(30, 5173).sample.ppid = 7;
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(FindServersTest, outsideProjectsNothingIsLeftRunning) {
    addLeft(30, 5173).project = std::nullopt;
    EXPECT_THAT(ids(), IsEmpty());
    EXPECT_THAT(portsAsked, IsEmpty());
}

TEST_F(FindServersTest, whatListensNowhereIsNotLeftRunning) {
    addLeft(30, 5173);
    ports.clear();
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(FindServersTest, anHourUnusedIsTheLeast) {
    addLeft(30, 5173, Seconds{3599});
    EXPECT_THAT(ids(), IsEmpty());
    EXPECT_THAT(portsAsked, IsEmpty());
    world.rows[0].unusedSince = now - Seconds{3600};
    EXPECT_EQ(suggestions().size(), 1U);
}

TEST_F(FindServersTest, twoOfOneProgramInOneProjectAreOne) {
    addLeft(31, 5174, Seconds{7200});
    addLeft(30, 5173);
    ports[30] = {5173, 5174, 24678};
    const auto found = only();
    EXPECT_THAT(found.pids, ElementsAre(30, 31));
    EXPECT_EQ(found.memory, 20 * MiB);
    EXPECT_EQ(found.evidence,
              "Its terminal is gone. Listening on ports 5173, 5174, and 24678, unused for 1 hr, 30 min.");
}

TEST_F(FindServersTest, portsAreAskedOncePerProcess) {
    addLeft(30, 5173);
    addLeft(31, 5174);
    suggestions();
    EXPECT_THAT(portsAsked, ElementsAre(std::pair(30, 1), std::pair(31, 1)));
    EXPECT_EQ(lookUps, 1) << "one look serves all";
}

TEST_F(FindServersTest, whatIsLeftRunningIsFoundNoSecondTime) {
    memory.swapUsed = GiB;
    for (const Pid pid : {30, 31}) {
        auto& row = addLeft(pid, 5000 + pid, Seconds{3 * 3600});
        row.sample.footprint = GiB;
        row.sample.compressed = GiB;
        row.sample.startTime = now - Seconds{86'400.0 + pid};
        work(row, 1);
    }
    EXPECT_THAT(ids(), ElementsAre("left|/home/ada/src/shop|vite"));
}

TEST_F(FindServersTest, theOlderCopiesOfAServerAreFound) {
    addCopy(40, 11, 3000, Seconds{9000});
    addCopy(41, 12, 3001, Seconds{3000});
    addCopy(42, 13, 3002, Seconds{6000});
    const auto found = only();
    EXPECT_EQ(found.id, "duplicate|/home/ada/src/shop|vite");
    EXPECT_EQ(found.kind, Suggestion::Kind::duplicate);
    EXPECT_EQ(found.title, "vite in shop");
    EXPECT_THAT(found.pids, ElementsAre(40, 42));
    EXPECT_EQ(found.memory, 20 * MiB);
    EXPECT_EQ(found.evidence, "3 copies are running, on ports 3000, 3001, and 3002. The newest one stays.");
    EXPECT_EQ(found.action, RuleAction::terminate);
    EXPECT_FALSE(found.rule);
    EXPECT_FALSE(found.appPath);
    EXPECT_FALSE(found.cpu);
}

TEST_F(FindServersTest, ofCopiesThatBeganTogetherTheFirstStays) {
    addCopy(41, 12, 3001, Seconds{3000});
    addCopy(40, 11, 3000, Seconds{3000});
    EXPECT_THAT(only().pids, ElementsAre(40));
}

TEST_F(FindServersTest, theNewestCopyIsNoneOfTheLaterFindings) {
    addCopy(40, 11, 3000, Seconds{9000});
    auto& newest = addCopy(41, 12, 3001, Seconds{8000});
    newest.sample.footprint = 2 * GiB;
    newest.unusedSince = now - Seconds{7500};
    work(newest, 1);
    EXPECT_THAT(ids(), ElementsAre("duplicate|/home/ada/src/shop|vite"));
}

TEST_F(FindServersTest, workersOfOneServerAreNoCopies) {
    addCopy(40, 11, 3000, Seconds{9000});
    addCopy(41, 11, 3000, Seconds{3000});
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(FindServersTest, parentsOfCopiesThatDoNotListenDoNotCount) {
    addCopy(40, 11, 3000, Seconds{9000});
    addCopy(41, 11, 3000, Seconds{3000});
    addCopy(42, 12, 3000, Seconds{1000});
    ports.erase(42);
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(FindServersTest, oneThatListensIsNoCopy) {
    addCopy(40, 11, 3000, Seconds{9000});
    addCopy(41, 12, 3001, Seconds{3000});
    ports.erase(41);
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(FindServersTest, theSameCommandInAnotherProjectIsNoCopy) {
    addCopy(40, 11, 3000, Seconds{9000});
    addCopy(41, 12, 3001, Seconds{3000}).project = "/home/ada/src/blog";
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(FindServersTest, otherArgumentsMakeAnotherServer) {
    addCopy(40, 11, 3000, Seconds{9000});
    auto& other = addCopy(41, 12, 3001, Seconds{3000});
    other.sample.args = TextList{"node", "/home/ada/src/shop/node_modules/.bin/vite", "--port=3001"};
    EXPECT_THAT(ids(), IsEmpty());
    EXPECT_THAT(portsAsked, IsEmpty());
}

TEST_F(FindServersTest, copiesOutsideProjectsAreNotLookedAt) {
    addCopy(40, 11, 3000, Seconds{9000}).project = std::nullopt;
    addCopy(41, 12, 3001, Seconds{3000}).project = std::nullopt;
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(FindServersTest, aPortThatAllCopiesShareIsNamedOnce) {
    addCopy(40, 11, 3000, Seconds{9000});
    addCopy(41, 12, 3000, Seconds{3000});
    EXPECT_EQ(only().evidence, "2 copies are running, on port 3000. The newest one stays.");
}

TEST_F(FindServersTest, listsAreJoinedInTheLocale) {
    addCopy(40, 11, 3000, Seconds{9000});
    addCopy(41, 12, 3001, Seconds{3000});
    EXPECT_EQ(suggestions("de_DE").front().evidence,
              "2 copies are running, on ports 3000 und 3001. The newest one stays.");
}

}  // namespace
}  // namespace tolvane
