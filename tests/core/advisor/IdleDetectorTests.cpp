#include "tests/core/advisor/AdviceTest.h"

namespace tolvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct FindIdleTest : AdviceTest {
    ProcRow& addIdleApp(Pid pid, std::uint64_t megabytes, Seconds idle, std::uint64_t compressed = 0) {
        auto& row = addApp(pid, "Notes", "com.example.Notes");
        row.sample.footprint = megabytes * MiB;
        row.sample.compressed = compressed * MiB;
        row.unusedSince = now - idle;
        return row;
    }
};

TEST_F(FindIdleTest, aLargeApplicationThatNobodyUsesIsFound) {
    addIdleApp(71, 200, Seconds{9000});
    addIdleApp(70, 100, Seconds{7200});
    const auto found = only();
    EXPECT_EQ(found.id, "idle|app|com.example.Notes");
    EXPECT_EQ(found.kind, Suggestion::Kind::idle);
    EXPECT_EQ(found.title, "Notes");
    EXPECT_EQ(found.appPath, "/Applications/Notes.app");
    EXPECT_THAT(found.pids, ElementsAre(70, 71));
    EXPECT_EQ(found.memory, 300 * MiB);
    EXPECT_EQ(found.evidence, "Unused for 2 hr, using 300 MB.");
    EXPECT_EQ(found.action, RuleAction::relaunch);
    EXPECT_FALSE(found.cpu);
}

TEST_F(FindIdleTest, itsRuleRestartsItAfterTwoHours) {
    addIdleApp(70, 300, Seconds{7200});
    const auto rule = only().rule.value();
    EXPECT_EQ(rule.name, "Restart Notes when idle");
    EXPECT_EQ(rule.mode(), RuleMode::logOnly);
    EXPECT_EQ(rule.target, RuleTarget(AppTarget{"com.example.Notes", "Notes"}));
    EXPECT_EQ(rule.unusedMinutes, 120);
    EXPECT_EQ(rule.memoryMB, std::nullopt);
    EXPECT_EQ(rule.action, RuleAction::relaunch);
}

TEST_F(FindIdleTest, aProgramOutsideApplicationsIsStopped) {
    auto& row = addServer(70, 7);
    row.sample.footprint = GiB;
    row.unusedSince = now - Seconds{7200};
    const auto found = only();
    EXPECT_EQ(found.id, "idle|/home/ada/src/shop|vite");
    EXPECT_EQ(found.title, "vite in shop");
    EXPECT_EQ(found.evidence, "Unused for 2 hr, using 1 GB.");
    EXPECT_EQ(found.action, RuleAction::terminate);
    EXPECT_EQ(found.rule->name, "Stop vite in shop when idle");
    EXPECT_EQ(found.rule->target, RuleTarget(CommandTarget{{"vite"}}));
}

TEST_F(FindIdleTest, copiesOfAProgramInOneProjectCountTogether) {
    for (const Pid pid : {70, 71}) {
        auto& row = addServer(pid, 7);
        row.sample.footprint = 128 * MiB;
        row.unusedSince = now - Seconds{7200};
    }
    EXPECT_THAT(only().pids, ElementsAre(70, 71));
}

TEST_F(FindIdleTest, aSixtyFourthOfMemoryIsTheLeast) {
    auto& row = addIdleApp(70, 256, Seconds{30.0 * 86'400});
    EXPECT_EQ(suggestions().size(), 1U);
    row.sample.footprint -= 1;
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(FindIdleTest, twoHoursAreTheLeast) {
    addIdleApp(70, 300, Seconds{7199});
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(FindIdleTest, theLatestUseOfTheGroupCounts) {
    addIdleApp(70, 300, Seconds{9000});
    addIdleApp(71, 1, Seconds{60});
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(FindIdleTest, onATightMachineWhatIsMostlyCompressedIsFoundSooner) {
    addIdleApp(70, 512, Seconds{1800}, 256);
    EXPECT_THAT(ids(), IsEmpty());
    memory.swapUsed = 1;
    const auto found = only();
    EXPECT_EQ(found.evidence, "Unused for 30 min, with 256 MB of its 512 MB compressed.");
    EXPECT_EQ(found.rule->unusedMinutes, 30);
    memory.swapUsed = 0;
    memory.pressure = Pressure::warning;
    EXPECT_EQ(suggestions().size(), 1U);
}

TEST_F(FindIdleTest, itsLimitsOnATightMachine) {
    memory.swapUsed = 1;
    auto& row = addIdleApp(70, 512, Seconds{1800}, 256);
    row.unusedSince = now - Seconds{1799};
    EXPECT_THAT(ids(), IsEmpty());
    row.unusedSince = now - Seconds{1800};
    row.sample.footprint += 1;
    EXPECT_THAT(ids(), IsEmpty());
    row.sample.footprint = 400 * MiB;
    row.sample.compressed -= 1;
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(FindIdleTest, moreCompressedThanHeldIsMostlyCompressed) {
    memory.swapUsed = 1;
    addIdleApp(70, 100, Seconds{1800}, 300);
    EXPECT_EQ(suggestions().size(), 1U);
}

TEST_F(FindIdleTest, aGroupBelowASixtyFourthCanBeFoundWhenTight) {
    memory.total = 64 * GiB;
    memory.pressure = Pressure::critical;
    addIdleApp(70, 500, Seconds{3 * 3600}, 400);
    EXPECT_EQ(only().evidence, "Unused for 3 hr, with 400 MB of its 500 MB compressed.");
    memory.pressure = Pressure::normal;
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(FindIdleTest, whatIsNotMostlyCompressedMayStillBeLarge) {
    memory.swapUsed = 1;
    addIdleApp(70, 2048, Seconds{7200}, 300);
    const auto found = only();
    EXPECT_EQ(found.evidence, "Unused for 2 hr, using 2 GB.");
    EXPECT_EQ(found.rule->unusedMinutes, 120);
}

TEST_F(FindIdleTest, idleChromeIsToldOfItsMemorySaver) {
    addIdleApp(70, 300, Seconds{7200}).appID = "com.google.Chrome";
    EXPECT_EQ(only().evidence,
              "Unused for 2 hr, using 300 MB."
              " Chrome's Memory Saver (Settings > Performance) discards inactive tabs without a restart.");
}

}  // namespace
}  // namespace tolvane
