#include "core/projects/Projects.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/fakes/Rows.h"

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<Pid> pidsOf(const std::vector<ProcRow>& rows) {
    std::vector<Pid> pids;
    for (const auto& row : rows) pids.push_back(row.id());
    return pids;
}

/// Processes of one user, including this program.
class ProjectGroups : public ::testing::Test {
protected:
    ProjectGroups() {
        world.uid = 501;
        world.selfPID = 4242;
    }

    /// Adds a process whose executable lies outside the system's folders.
    ProcRow& add(Pid pid, Pid ppid, std::string_view name, const char* project = "/home/ada/shop") {
        auto& row = world.rows.emplace_back();
        row.sample.pid = pid;
        row.sample.ppid = ppid;
        row.sample.uid = 501;
        row.sample.name = name;
        row.sample.path = Text("/opt/bin/" + std::string(name));
        row.sample.footprint = 100;
        if (project) row.project = Text(project);
        return row;
    }
    std::vector<ProjectGroup> groups(const std::set<Pid>& managed = {}) { return Projects::groups(world, managed); }
    /// The pids of the only group; empty unless there is exactly one.
    std::vector<Pid> members(const std::set<Pid>& managed = {}) {
        const auto found = groups(managed);
        return found.size() == 1 ? pidsOf(found[0].rows) : std::vector<Pid>{};
    }

    World world;
};

TEST_F(ProjectGroups, gatherTheProcessesOfAProjectByPid) {
    add(30, 1, "node");
    add(10, 1, "vite");
    add(20, 1, "postgres", nullptr);
    const auto found = groups();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].root, "/home/ada/shop");
    EXPECT_THAT(pidsOf(found[0].rows), ElementsAre(10, 30));
    EXPECT_EQ(found[0].leftAlone, 0);
}

TEST_F(ProjectGroups, largestComesFirst) {
    add(10, 1, "node", "/home/ada/a").sample.footprint = 5;
    add(11, 1, "node", "/home/ada/b").sample.footprint = 3;
    add(12, 1, "node", "/home/ada/b").sample.footprint = 4;
    const auto found = groups();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].root, "/home/ada/b");
    EXPECT_EQ(found[1].root, "/home/ada/a");
}

TEST_F(ProjectGroups, equalOnesGoByRoot) {
    for (const auto* root : {"/home/ada/c", "/home/ada/a", "/home/ada/b"}) add(10, 1, "node", root);
    const auto found = groups();
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(found[0].root, "/home/ada/a");
    EXPECT_EQ(found[2].root, "/home/ada/c");
}

TEST_F(ProjectGroups, rowsOfOnePidKeepTheirOrder) {
    add(10, 1, "second").sample.footprint = 1;
    add(9, 1, "first");
    add(10, 1, "third").sample.footprint = 2;
    const auto found = groups();
    ASSERT_EQ(found.size(), 1U);
    ASSERT_THAT(pidsOf(found[0].rows), ElementsAre(9, 10, 10));
    EXPECT_EQ(found[0].rows[1].sample.name, "second");
    EXPECT_EQ(found[0].rows[2].sample.name, "third");
}

TEST_F(ProjectGroups, leaveOutOtherUsersTheFirstProcessAndThisProgram) {
    add(10, 1, "node").sample.uid = 0;
    add(1, 0, "init");
    add(4242, 1, "tolvane");
    EXPECT_THAT(groups(), IsEmpty());
    add(11, 1, "node");
    EXPECT_THAT(members(), ElementsAre(11));
}

TEST_F(ProjectGroups, leaveOutProgramsOfTheSystem) {
    add(10, 1, "sleep").sample.path = "/bin/sleep";
    add(11, 1, "node").sample.path = "/usr/bin/node";
    world.rows.back().sample.hostSaysSystem = false;
    add(12, 1, "agent").sample.hostSaysSystem = true;
    EXPECT_THAT(members(), ElementsAre(11));
}

TEST_F(ProjectGroups, leaveOutAShellButNotWhatItStarted) {
    add(10, 1, "zsh");
    add(11, 10, "node");
    add(12, 1, "Bash");
    const auto found = groups();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_THAT(pidsOf(found[0].rows), ElementsAre(11));
    EXPECT_EQ(found[0].leftAlone, 0);
}

TEST_F(ProjectGroups, leaveOutAnEditorAndAllThatItStarted) {
    add(9, 1, "node");
    add(10, 1, "NVim", nullptr);
    add(11, 10, "language-server");
    add(12, 11, "worker");
    const auto found = groups({12});
    ASSERT_EQ(found.size(), 1U);
    EXPECT_THAT(pidsOf(found[0].rows), ElementsAre(9));
    EXPECT_EQ(found[0].leftAlone, 0);
}

TEST_F(ProjectGroups, everyShellAndEditorIsKnown) {
    for (const auto name : {"zsh", "bash", "fish", "sh", "nu", "tmux", "screen", "login"}) add(10, 1, name);
    for (const auto name : {"vim", "nvim", "emacs", "hx", "helix", "nano", "micro", "kak"}) add(10, 1, name);
    EXPECT_THAT(groups(), IsEmpty());
}

TEST_F(ProjectGroups, countAgentsAndLeaveThemAlone) {
    add(10, 1, "node");
    add(11, 1, "claude");
    add(12, 1, "node").sample.args = {"node", "/opt/tools/aider.js"};
    add(13, 1, "python3").sample.args = {"python3", "-m", "Codex"};
    add(14, 1, "1.0.44").sample.path = "/home/ada/.local/share/claude/versions/1.0.44";
    const auto found = groups();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_THAT(pidsOf(found[0].rows), ElementsAre(10));
    EXPECT_EQ(found[0].leftAlone, 4);
}

TEST_F(ProjectGroups, everyAgentIsKnown) {
    add(9, 1, "node").sample.args = {"node", "/home/ada/shop/claudette.js"};
    for (const auto name :
         {"claude", "codex", "gemini", "opencode", "aider", "goose", "cursor-agent", "amp", "Copilot"}) {
        add(10, 1, name);
    }
    EXPECT_THAT(members(), ElementsAre(9));
    EXPECT_EQ(groups()[0].leftAlone, 9);
}

TEST_F(ProjectGroups, countWhatBelongsToAListedSession) {
    add(10, 1, "node");
    add(11, 1, "node").claudeSession = Text("Claude a");
    EXPECT_THAT(members(), ElementsAre(10));
    EXPECT_EQ(groups()[0].leftAlone, 1);
}

TEST_F(ProjectGroups, countWhatTheServiceManagerKeepsWithAllThatItStarted) {
    add(10, 1, "node");
    add(20, 1, "service", nullptr);
    add(21, 20, "node");
    add(22, 21, "node");
    EXPECT_THAT(members({20}), ElementsAre(10));
    EXPECT_EQ(groups({20})[0].leftAlone, 2);
    EXPECT_THAT(members({99}), ElementsAre(10, 21, 22));
    EXPECT_THAT(members({1}), ElementsAre(10, 21, 22));
}

TEST_F(ProjectGroups, theFirstProcessAboveAllIsNotAsked) {
    add(1, 0, "login", nullptr);
    add(10, 1, "node");
    EXPECT_THAT(members({1}), ElementsAre(10));
    world.rows.front().sample.name = "emacs";
    EXPECT_THAT(members(), ElementsAre(10));
}

TEST_F(ProjectGroups, aProjectOfAgentsAloneYieldsNoGroup) {
    add(11, 1, "claude");
    EXPECT_THAT(groups(), IsEmpty());
}

TEST_F(ProjectGroups, eachProjectHasItsOwnCount) {
    add(10, 1, "node", "/home/ada/a");
    add(11, 1, "claude", "/home/ada/b");
    add(12, 1, "node", "/home/ada/b");
    for (const auto& group : groups()) EXPECT_EQ(group.leftAlone, group.root == "/home/ada/b" ? 1 : 0);
}

TEST_F(ProjectGroups, aRingOfParentsEndsAndIsJudgedOnWhatWasSeen) {
    add(10, 11, "node");
    add(11, 10, "node");
    add(20, 21, "node", "/home/ada/b");
    add(21, 20, "vim", "/home/ada/b");
    EXPECT_THAT(members(), ElementsAre(10, 11));
    add(30, 30, "node");
    EXPECT_THAT(members(), ElementsAre(10, 11, 30));
    EXPECT_THAT(members({11}), ElementsAre(30));
}

TEST_F(ProjectGroups, ofARepeatedPidTheLastRowIsTheParent) {
    add(10, 1, "vim", nullptr);
    add(10, 1, "node", nullptr);
    add(11, 10, "node");
    EXPECT_THAT(members(), ElementsAre(11));
    add(10, 1, "vim", nullptr);
    EXPECT_THAT(groups(), IsEmpty());
}

std::vector<Pid> rootsOf(const std::vector<std::pair<Pid, Pid>>& links) {
    std::vector<ProcRow> rows;
    for (const auto& [pid, ppid] : links) {
        auto& row = rows.emplace_back();
        row.sample.pid = pid;
        row.sample.ppid = ppid;
    }
    return pidsOf(Projects::roots(rows));
}

TEST(RootRows, areTheRowsWhoseParentIsElsewhere) {
    EXPECT_THAT(rootsOf({{30, 1}, {31, 30}, {10, 9}, {32, 31}}), ElementsAre(30, 10));
}

TEST(RootRows, ofARingAreNone) { EXPECT_THAT(rootsOf({{10, 11}, {11, 10}}), IsEmpty()); }

TEST(RootRows, ofNothingAreNone) { EXPECT_THAT(rootsOf({}), IsEmpty()); }

struct TopRows : ::testing::Test {
    static ProcRow row(Pid pid, Pid parent, std::string_view name) {
        auto made = fakes::row(pid, name);
        made.sample.ppid = parent;
        return made;
    }
    static std::vector<Pid> tops(const std::vector<ProcRow>& rows, std::vector<ProcRow> others) {
        others.insert(others.end(), rows.begin(), rows.end());
        std::vector<Pid> pids;
        for (const auto& each : Projects::tops(rows, others)) pids.push_back(each.id());
        return pids;
    }
};

TEST_F(TopRows, areTheRootsWhereNoShellStandsBetween) {
    EXPECT_THAT(tops({row(10, 2, "npm"), row(11, 10, "node"), row(12, 2, "hugo")}, {}), ElementsAre(10, 12));
}

TEST_F(TopRows, whatARunnerStartedThroughShellsComesBackWithIt) {
    EXPECT_THAT(
        tops({row(10, 5, "npm"), row(13, 12, "node")}, {row(5, 1, "zsh"), row(11, 10, "sh"), row(12, 11, "Bash")}),
        ElementsAre(10));
}

TEST_F(TopRows, neighboursInOneShellAreEachOnTheirOwn) {
    EXPECT_THAT(tops({row(10, 5, "npm"), row(13, 5, "node")}, {row(5, 1, "zsh")}), ElementsAre(10, 13));
}

TEST_F(TopRows, whoComesThroughAnotherProgramDoesNotComeBackByItself) {
    EXPECT_THAT(tops({row(10, 1, "npm"), row(13, 12, "node")}, {row(12, 10, "claude")}), ElementsAre(10, 13));
}

TEST_F(TopRows, aRingOfShellsEnds) {
    EXPECT_THAT(tops({row(13, 12, "node")}, {row(12, 11, "sh"), row(11, 12, "sh")}), ElementsAre(13));
}

}  // namespace
}  // namespace tolvane
