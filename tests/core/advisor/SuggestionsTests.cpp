#include "tests/core/advisor/AdviceTest.h"

namespace tolvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Which processes may be suggested, what the detectors leave to each other, and how results are ordered.
struct SuggestionsTest : AdviceTest {
    ProcRow& addIdle(Pid pid, std::string_view name, std::uint64_t megabytes = 300) {
        auto& row = add(pid, 7, name);
        row.sample.footprint = megabytes * MiB;
        row.unusedSince = now - Seconds{7200};
        return row;
    }
};

TEST_F(SuggestionsTest, ofAnEmptyMachineThereAreNone) { EXPECT_THAT(ids(), IsEmpty()); }

TEST_F(SuggestionsTest, theUsersOwnProgramsAreLookedAt) {
    addIdle(80, "ruby");
    EXPECT_THAT(ids(), ElementsAre("idle||ruby"));
}

TEST_F(SuggestionsTest, anotherUsersAreNot) {
    addIdle(80, "ruby").sample.uid = 0;
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(SuggestionsTest, thisProgramAndTheFirstProcessesAreNot) {
    addIdle(world.selfPID, "tolvane");
    addIdle(1, "init");
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(SuggestionsTest, programsOfTheSystemAreNot) {
    addIdle(80, "mds").sample.path = "/usr/libexec/mds";
    addIdle(81, "pipewire").sample.hostSaysSystem = true;
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(SuggestionsTest, sessionsOfAgentsAreNotHoweverLarge) {
    addIdle(80, "ruby", 8000).claudeSession = "tidy up";
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(SuggestionsTest, agentsAreNotHoweverLarge) {
    addIdle(80, "Codex", 8000);
    addIdle(81, "node", 8000).sample.args = TextList{"node", "/opt/gemini.js"};
    addIdle(82, "2.1.3", 8000).sample.path = "/home/ada/.local/share/claude/versions/2.1.3";
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(SuggestionsTest, anApplicationThatBearsAnAgentsNameIs) {
    auto& row = addIdle(80, "Cursor-agent");
    row.appPath = "/Applications/Cursor-agent.app";
    EXPECT_EQ(suggestions().size(), 1U);
    row.appPath = std::nullopt;
    row.appID = "com.example.cursor";
    EXPECT_EQ(suggestions().size(), 1U);
}

TEST_F(SuggestionsTest, theApplicationInFrontIsNot) {
    auto& row = addApp(80, "Notes", "com.example.Notes");
    row.sample.footprint = 4 * GiB;
    row.unusedSince = now - Seconds{7200};
    growTo(row, 500 * MiB, 4);
    work(row, 2);
    EXPECT_THAT(ids(), ElementsAre("growing|com.example.Notes"));
    world.frontmostAppID = "com.example.Notes";
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(SuggestionsTest, aGroupWithOneClaimedProcessIsDroppedWhole) {
    auto& left = addServer(80, 1);
    left.sample.footprint = GiB;
    left.unusedSince = now - Seconds{7200};
    ports[80] = {3000};
    auto& other = addServer(81, 7);
    other.sample.footprint = 4 * GiB;
    other.unusedSince = now - Seconds{7200};
    EXPECT_THAT(ids(), ElementsAre("left|/home/ada/src/shop|vite"));
}

TEST_F(SuggestionsTest, theMostMemoryComesFirst) {
    addIdle(80, "a", 300);
    addIdle(81, "b", 500);
    addIdle(82, "c", 400);
    EXPECT_THAT(ids(), ElementsAre("idle||b", "idle||c", "idle||a"));
}

TEST_F(SuggestionsTest, equalMemoryKeepsTheDetectorsOrder) {
    addIdle(81, "b", 500);
    auto& device =
        add(80, 7, "launchd_sim", {"launchd_sim", "/CoreSimulator/Devices/6F0E0C9A-2B41-4E8F-9B8A-0D5A1B2C3D4E/data"});
    device.sample.footprint = 500 * MiB;
    device.unusedSince = now - Seconds{3600};
    EXPECT_THAT(ids(), ElementsAre("simulator|6F0E0C9A-2B41-4E8F-9B8A-0D5A1B2C3D4E", "idle||b"));
}

TEST_F(SuggestionsTest, groupsOfEqualMemoryGoByTheirKeys) {
    addIdle(80, "b");
    addIdle(81, "a");
    addIdle(82, "B");
    EXPECT_THAT(ids(), ElementsAre("idle||B", "idle||a", "idle||b"));
}

TEST_F(SuggestionsTest, theSameMomentGivesTheSameSuggestionsButForTheRulesIds) {
    addIdle(80, "b");
    auto first = only();
    const auto second = only();
    first.rule->id = second.rule->id;
    EXPECT_EQ(first, second);
}

TEST_F(SuggestionsTest, aClockThatWentBackSuggestsNothing) {
    addIdle(80, "ruby").unusedSince = now + Seconds{3600};
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(SuggestionsTest, numbersAreTheLocales) {
    addIdle(80, "ruby", 1536);
    EXPECT_EQ(suggestions("de_DE").front().evidence, "Unused for 2 Std., using 1,5 GB.");
}

}  // namespace
}  // namespace tolvane
