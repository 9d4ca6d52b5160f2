#include "tests/core/advisor/AdviceTest.h"

namespace tolvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct FindBusyTest : AdviceTest {
    /// A server that has used this many cores for the last quarter of an hour.
    ProcRow& addBusy(Pid pid, double cores) {
        auto& row = addServer(pid, 7);
        work(row, cores);
        return row;
    }
    ProcRow& addBusyApp(Pid pid, double cores, Seconds unused = Seconds{900}) {
        auto& row = addApp(pid, "Notes", "com.example.Notes");
        row.unusedSince = now - unused;
        work(row, cores);
        return row;
    }
};

TEST_F(FindBusyTest, aBusyProcessIsFound) {
    addBusy(60, 1.5);
    const auto found = only();
    EXPECT_EQ(found.id, "busy|/home/ada/src/shop|vite");
    EXPECT_EQ(found.kind, Suggestion::Kind::busy);
    EXPECT_EQ(found.title, "vite in shop");
    EXPECT_THAT(found.pids, ElementsAre(60));
    EXPECT_EQ(found.memory, 10 * MiB);
    EXPECT_EQ(found.evidence, "Used about 1.5 performance cores for the last 15 min.");
    EXPECT_EQ(found.action, RuleAction::terminate);
    EXPECT_FALSE(found.appPath);
    EXPECT_FALSE(found.rule);
    EXPECT_NEAR(found.cpu.value(), 150, 1e-9);
}

TEST_F(FindBusyTest, coresAreAlikeWithoutEfficiencyCores) {
    advisor.hybrid = false;
    addBusy(60, 1);
    EXPECT_EQ(only().evidence, "Used about 1 core for the last 15 min.");
}

TEST_F(FindBusyTest, anOrphanInAProjectHasLostItsTerminal) {
    addBusy(60, 1).sample.ppid = 1;
    EXPECT_EQ(only().evidence, "Used about 1 performance core for the last 15 min. Its terminal is gone.");
    world.rows[0].project = std::nullopt;
    EXPECT_EQ(only().evidence, "Used about 1 performance core for the last 15 min.");
}

TEST_F(FindBusyTest, anApplicationIsFoundWholeBehindTheOneInFront) {
    addBusyApp(62, 0.3);
    addBusyApp(61, 0.4);
    const auto found = only();
    EXPECT_EQ(found.id, "busy|com.example.Notes");
    EXPECT_EQ(found.title, "Notes");
    EXPECT_EQ(found.appPath, "/Applications/Notes.app");
    EXPECT_THAT(found.pids, ElementsAre(61, 62));
    EXPECT_EQ(found.evidence, "Used about 0.7 performance cores for the last 15 min while in the background.");
    EXPECT_EQ(found.action, RuleAction::relaunch);
}

TEST_F(FindBusyTest, anApplicationUsedInTheLastQuarterOfAnHourMayWork) {
    addBusyApp(61, 1, Seconds{899});
    EXPECT_THAT(ids(), IsEmpty());
    world.rows[0].unusedSince = now - Seconds{900};
    EXPECT_EQ(suggestions().size(), 1U);
}

TEST_F(FindBusyTest, aLooseProcessHasNoSuchGrace) {
    addBusy(60, 1).unusedSince = now;
    EXPECT_EQ(suggestions().size(), 1U);
}

TEST_F(FindBusyTest, halfACoreIsTheLeast) {
    addBusy(60, 0.49);
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(FindBusyTest, processesOutsideApplicationsDoNotCountTogether) {
    addBusy(60, 0.3);
    addBusy(61, 0.3);
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(FindBusyTest, twoIntervalsAreNotEnough) {
    auto& row = addServer(60, 7);
    work(row, 1, 2);
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(FindBusyTest, anEarlierProcessesTrackDoesNotCount) {
    addBusy(60, 1);
    world.rows[0].sample.startTime += Seconds{1};
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(FindBusyTest, ofTwoUnderOneNameTheFirstByKeyIsTold) {
    addBusy(9, 1);
    addBusy(10, 1);
    EXPECT_THAT(only().pids, ElementsAre(10));
}

TEST_F(FindBusyTest, aLongerRunIsTold) {
    auto& row = addServer(60, 7);
    work(row, 1, 12);
    EXPECT_EQ(only().evidence, "Used about 1 performance core for the last 1 hr.");
}

TEST_F(FindBusyTest, busyChromeIsNotToldOfItsMemorySaver) {
    auto& row = addBusyApp(61, 1);
    row.appID = "com.google.Chrome";
    EXPECT_EQ(only().evidence, "Used about 1 performance core for the last 15 min while in the background.");
}

}  // namespace
}  // namespace tolvane
