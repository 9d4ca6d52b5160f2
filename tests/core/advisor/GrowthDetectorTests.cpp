#include "tests/core/advisor/AdviceTest.h"

namespace tolvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct FindGrowingTest : AdviceTest {
    ProcRow& addGrowing(Pid pid, std::uint64_t megabytes) {
        auto& row = addServer(pid, 7);
        row.sample.footprint = megabytes * MiB;
        growTo(row, 500 * MiB, 4);
        return row;
    }
    ProcRow& addGrowingApp(Pid pid, std::uint64_t megabytes, std::string_view appID = "com.example.Notes") {
        auto& row = addApp(pid, "Notes", appID);
        row.sample.footprint = megabytes * MiB;
        growTo(row, 500 * MiB, 4);
        return row;
    }
    std::int64_t limitFor(std::uint64_t megabytes) {
        world.rows.clear();
        addGrowing(50, megabytes);
        return only().rule->memoryMB.value();
    }
};

TEST_F(FindGrowingTest, aProcessThatGrowsIsFoundWithItsRate) {
    addGrowing(50, 980);
    const auto found = only();
    EXPECT_EQ(found.id, "growing|/home/ada/src/shop|vite");
    EXPECT_EQ(found.kind, Suggestion::Kind::growing);
    EXPECT_EQ(found.title, "vite in shop");
    EXPECT_THAT(found.pids, ElementsAre(50));
    EXPECT_EQ(found.memory, 980 * MiB);
    EXPECT_EQ(found.evidence, "Grew by 460 MB in 4 hr, about 120 MB an hour.");
    EXPECT_EQ(found.action, RuleAction::terminate);
    EXPECT_FALSE(found.appPath);
    EXPECT_FALSE(found.cpu);
}

TEST_F(FindGrowingTest, itsRuleStopsItAtTheNextStep) {
    addGrowing(50, 980);
    const auto rule = only().rule.value();
    EXPECT_EQ(rule.name, "Stop vite in shop when it grows");
    EXPECT_EQ(rule.mode(), RuleMode::logOnly);
    EXPECT_EQ(rule.target, RuleTarget(CommandTarget{{"vite"}}));
    EXPECT_EQ(rule.unusedMinutes, std::nullopt);
    EXPECT_EQ(rule.memoryMB, 1024);
    EXPECT_EQ(rule.action, RuleAction::terminate);
}

TEST_F(FindGrowingTest, anApplicationIsFoundWhole) {
    addApp(53, "Notes", "com.example.Notes").sample.footprint = 100 * MiB;
    addGrowingApp(52, 980);
    const auto found = only();
    EXPECT_EQ(found.id, "growing|com.example.Notes");
    EXPECT_EQ(found.title, "Notes");
    EXPECT_EQ(found.appPath, "/Applications/Notes.app");
    EXPECT_THAT(found.pids, ElementsAre(52, 53));
    EXPECT_EQ(found.memory, 1080 * MiB);
    EXPECT_EQ(found.action, RuleAction::relaunch);
    EXPECT_EQ(found.rule->name, "Restart Notes when it grows");
    EXPECT_EQ(found.rule->target, RuleTarget(AppTarget{"com.example.Notes", "Notes"}));
    EXPECT_EQ(found.rule->action, RuleAction::relaunch);
    EXPECT_EQ(found.rule->memoryMB, 1536);
}

TEST_F(FindGrowingTest, anIdentifierWithoutAFolderIsRestartedByItsProgram) {
    auto& row = addGrowing(50, 980);
    row.appID = "com.example.agent";
    const auto rule = only().rule.value();
    EXPECT_EQ(rule.name, "Restart vite in shop when it grows");
    EXPECT_EQ(rule.target, RuleTarget(CommandTarget{{"vite"}}));
    EXPECT_EQ(rule.action, RuleAction::relaunch);
}

TEST_F(FindGrowingTest, aFolderWithoutAnIdentifierIsStoppedByItsProgram) {
    addGrowingApp(52, 980).appID = std::nullopt;
    const auto found = only();
    EXPECT_EQ(found.id, "growing||Notes");
    EXPECT_EQ(found.title, "Notes");
    EXPECT_EQ(found.action, RuleAction::terminate);
    EXPECT_EQ(found.rule->name, "Stop Notes when it grows");
    EXPECT_EQ(found.rule->target, RuleTarget(CommandTarget{{"Notes"}}));
    EXPECT_EQ(found.rule->action, RuleAction::terminate);
}

TEST_F(FindGrowingTest, aSteadyProcessIsNotFound) {
    auto& row = addGrowing(50, 980);
    growTo(row, 980 * MiB, 4);
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(FindGrowingTest, anEarlierProcessesTrackDoesNotCount) {
    addGrowing(50, 980);
    world.rows[0].sample.startTime += Seconds{1};
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(FindGrowingTest, ofTwoThatGrowUnderOneNameTheLargerIsTold) {
    addGrowing(50, 980);
    addGrowing(51, 1200);
    EXPECT_THAT(only().pids, ElementsAre(51));
}

TEST_F(FindGrowingTest, ofEqualOnesTheFirstIsTold) {
    addGrowing(51, 980);
    addGrowing(50, 980);
    EXPECT_THAT(only().pids, ElementsAre(51));
}

TEST_F(FindGrowingTest, theLimitIsTheNextStepAboveTodaysSize) {
    EXPECT_EQ(limitFor(3000), 3072);
    EXPECT_EQ(limitFor(3072), 3584);
    EXPECT_EQ(limitFor(3073), 3584);
}

TEST_F(FindGrowingTest, aDeviceThatIsSuggestedWholeDoesNotGrowAsWell) {
    auto& device =
        add(20, 1, "launchd_sim", {"launchd_sim", "/CoreSimulator/Devices/6F0E0C9A-2B41-4E8F-9B8A-0D5A1B2C3D4E/data"});
    device.sample.footprint = 980 * MiB;
    device.unusedSince = now - Seconds{3600};
    growTo(device, 500 * MiB, 4);
    EXPECT_THAT(ids(), ElementsAre("simulator|6F0E0C9A-2B41-4E8F-9B8A-0D5A1B2C3D4E"));
}

TEST_F(FindGrowingTest, chromeIsToldOfItsMemorySaver) {
    addGrowingApp(52, 980, "com.google.Chrome");
    EXPECT_EQ(only().evidence,
              "Grew by 460 MB in 4 hr, about 120 MB an hour."
              " Chrome's Memory Saver (Settings > Performance) discards inactive tabs without a restart.");
}

TEST_F(FindGrowingTest, anotherChannelOfChromeIsNot) {
    addGrowingApp(52, 980, "com.google.Chrome.canary");
    EXPECT_EQ(only().evidence, "Grew by 460 MB in 4 hr, about 120 MB an hour.");
}

}  // namespace
}  // namespace tolvane
