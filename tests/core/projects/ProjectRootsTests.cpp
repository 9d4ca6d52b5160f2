#include "core/projects/ProjectRoots.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "core/projects/ProjectLabels.h"
#include "tests/fakes/TemporaryFolder.h"

namespace tolvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ProjectRootsTest : public ::testing::Test {
protected:
    ProjectRoots rootsBelow(const std::string& home) {
        return ProjectRoots(home, [this](const std::string& path) {
            looked.push_back(path);
            return present.contains(path);
        });
    }
    std::optional<Text> root(const Text& folder) { return roots.root(folder); }

    std::set<std::string> present;
    std::vector<std::string> looked;
    ProjectRoots roots = rootsBelow("/home/ada");
};

TEST_F(ProjectRootsTest, isTheFolderAboveThatHoldsTheRepository) {
    present = {"/home/ada/shop/.git"};
    EXPECT_EQ(root("/home/ada/shop/web/src"), Text("/home/ada/shop"));
    EXPECT_THAT(looked, ElementsAre("/home/ada/shop/web/src/.git", "/home/ada/shop/web/.git", "/home/ada/shop/.git"));
}

TEST_F(ProjectRootsTest, mayBeTheFolderItself) {
    present = {"/home/ada/shop/.git"};
    EXPECT_EQ(root("/home/ada/shop"), Text("/home/ada/shop"));
}

TEST_F(ProjectRootsTest, aSecondCallLooksAtNothing) {
    present = {"/home/ada/a/.git"};
    EXPECT_EQ(root("/home/ada/a/b/c"), Text("/home/ada/a"));
    looked.clear();
    EXPECT_EQ(root("/home/ada/a/b/c"), Text("/home/ada/a"));
    EXPECT_THAT(looked, IsEmpty());
}

TEST_F(ProjectRootsTest, noProjectIsRememberedToo) {
    EXPECT_EQ(root("/home/ada/a/b"), std::nullopt);
    EXPECT_THAT(looked, ElementsAre("/home/ada/a/b/.git", "/home/ada/a/.git"));
    looked.clear();
    present = {"/home/ada/a/.git"};
    EXPECT_EQ(root("/home/ada/a/b"), std::nullopt);
    EXPECT_THAT(looked, IsEmpty());
}

TEST_F(ProjectRootsTest, foldersInBetweenAreNotRemembered) {
    root("/home/ada/a/b");
    EXPECT_EQ(roots.remembered(), 1U);
    present = {"/home/ada/a/.git"};
    EXPECT_EQ(root("/home/ada/a"), Text("/home/ada/a"));
}

TEST_F(ProjectRootsTest, homeItselfIsNoProjectAndRemembered) {
    present = {"/home/ada/.git"};
    EXPECT_EQ(root("/home/ada"), std::nullopt);
    EXPECT_EQ(roots.remembered(), 1U);
    EXPECT_EQ(root("/home/ada/plain"), std::nullopt);
    EXPECT_EQ(root("/home/ada/"), std::nullopt);
}

TEST_F(ProjectRootsTest, nothingOutsideOfHomeIsAProjectNorRemembered) {
    present = {"/srv/shop/.git", "/home/adam/.git", "/.git", "/home/.git"};
    for (const auto* folder : {"/srv/shop", "/home/adam", "/home", "/", "", "relative"}) {
        EXPECT_EQ(root(folder), std::nullopt) << folder;
    }
    EXPECT_THAT(looked, IsEmpty());
    EXPECT_EQ(roots.remembered(), 0U);
}

TEST_F(ProjectRootsTest, theInnermostRepositoryWins) {
    present = {"/home/ada/shop/.git", "/home/ada/shop/vendor/lib/.git"};
    EXPECT_EQ(root("/home/ada/shop/vendor/lib/src"), Text("/home/ada/shop/vendor/lib"));
    EXPECT_EQ(root("/home/ada/shop/vendor"), Text("/home/ada/shop"));
}

TEST_F(ProjectRootsTest, slashesTooManyDoNoHarm) {
    present = {"/home/ada/shop/.git"};
    EXPECT_EQ(root("/home/ada/shop/"), Text("/home/ada/shop"));
    EXPECT_EQ(root("/home/ada/shop//web"), Text("/home/ada/shop"));
    EXPECT_EQ(root("/home/ada//plain"), std::nullopt);
}

TEST_F(ProjectRootsTest, foldersOfOneProjectShareItsText) {
    present = {"/home/ada/shop/.git"};
    EXPECT_EQ(root("/home/ada/shop/a")->view().data(), root("/home/ada/shop/b")->view().data());
}

TEST_F(ProjectRootsTest, aHomeAtTheTopEndsAtTheTop) {
    auto top = rootsBelow("");
    EXPECT_EQ(top.root("/srv/shop"), std::nullopt);
    EXPECT_THAT(looked, ElementsAre("/srv/shop/.git", "/srv/.git"));
}

TEST(ProjectRootsOnDisk, filesAndFoldersCountAlike) {
    const fakes::TemporaryFolder home;
    home.write("tree/.git/HEAD", "");
    home.write("linked/.git", "gitdir: elsewhere");
    home.write("linked/src/main.c", "");
    home.write("plain/notes", "");
    ProjectRoots roots(home.path().string());
    EXPECT_EQ(roots.root(home / "tree"), Text(home / "tree"));
    EXPECT_EQ(roots.root(home / "linked/src"), Text(home / "linked"));
    EXPECT_EQ(roots.root(home / "plain"), std::nullopt);
    EXPECT_EQ(roots.root(home / "never/there"), std::nullopt);
}

class ProjectLabelsTest : public ProjectRootsTest {
protected:
    static ProcRow rowOf(Pid pid, std::optional<Text> cwd) {
        ProcRow row;
        row.sample.pid = pid;
        row.sample.cwd = std::move(cwd);
        return row;
    }
    std::vector<std::string> projects(std::vector<ProcRow> rows) {
        labels.apply(rows);
        std::vector<std::string> result;
        for (const auto& row : rows) result.push_back(row.project ? row.project->str() : "-");
        return result;
    }

    ProjectLabels labels{rootsBelow("/home/ada")};
};

TEST_F(ProjectLabelsTest, rowsBearTheProjectOfTheirFolder) {
    present = {"/home/ada/shop/.git"};
    EXPECT_THAT(projects({rowOf(1, Text("/home/ada/shop/web")), rowOf(2, Text("/srv")), rowOf(3, std::nullopt)}),
                ElementsAre("/home/ada/shop", "-", "-"));
}

TEST_F(ProjectLabelsTest, rowsInAnApplicationBearNone) {
    present = {"/home/ada/shop/.git"};
    auto row = rowOf(1, Text("/home/ada/shop"));
    row.appPath = Text("/Applications/Editor.app");
    EXPECT_THAT(projects({row}), ElementsAre("-"));
    EXPECT_THAT(looked, IsEmpty());
}

TEST_F(ProjectLabelsTest, aProcessThatChangedItsFolderChangesItsProject) {
    present = {"/home/ada/a/.git", "/home/ada/b/.git"};
    EXPECT_THAT(projects({rowOf(1, Text("/home/ada/a"))}), ElementsAre("/home/ada/a"));
    EXPECT_THAT(projects({rowOf(1, Text("/home/ada/b"))}), ElementsAre("/home/ada/b"));
    EXPECT_THAT(projects({rowOf(1, std::nullopt)}), ElementsAre("-"));
    EXPECT_THAT(projects({rowOf(1, Text("/home/ada/a"))}), ElementsAre("/home/ada/a"));
}

TEST_F(ProjectLabelsTest, aReusedPidBearsItsOwnProject) {
    present = {"/home/ada/a/.git"};
    EXPECT_THAT(projects({rowOf(1, Text("/home/ada/a"))}), ElementsAre("/home/ada/a"));
    EXPECT_THAT(projects({rowOf(1, Text("/home/ada/plain"))}), ElementsAre("-"));
}

TEST_F(ProjectLabelsTest, anyOrderAndRepeatedPidsAreRight) {
    present = {"/home/ada/a/.git", "/home/ada/b/.git"};
    const auto a = [](Pid pid) { return rowOf(pid, Text("/home/ada/a")); };
    const auto b = [](Pid pid) { return rowOf(pid, Text("/home/ada/b")); };
    for (int tick = 0; tick < 3; ++tick) {
        EXPECT_THAT(projects({a(9), b(3), b(9), a(1)}),
                    ElementsAre("/home/ada/a", "/home/ada/b", "/home/ada/b", "/home/ada/a"));
        EXPECT_THAT(projects({b(1), a(3)}), ElementsAre("/home/ada/b", "/home/ada/a"));
    }
}

TEST_F(ProjectLabelsTest, aSteadyTickLooksAtNothing) {
    projects({rowOf(1, Text("/home/ada/a")), rowOf(2, Text("/home/ada/a"))});
    looked.clear();
    projects({rowOf(1, Text("/home/ada/a")), rowOf(2, Text("/home/ada/a"))});
    EXPECT_THAT(looked, IsEmpty());
}

}  // namespace
}  // namespace tolvane
