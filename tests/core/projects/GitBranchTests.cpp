#include "core/projects/GitBranch.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/fakes/TemporaryFolder.h"

namespace tolvane {
namespace {

const BranchState nothing;

class GitBranchFiles : public ::testing::Test {
protected:
    fakes::TemporaryFolder folder;
    BranchState read(std::string_view root = "repo") { return GitBranch::read(folder / root); }
};

TEST_F(GitBranchFiles, aFolderWithoutARepositoryHasNoBranch) { EXPECT_EQ(read(), nothing); }

TEST_F(GitBranchFiles, aLooseRefIsABranch) {
    folder.write("repo/.git/HEAD", "ref: refs/heads/feature/checkout\n");
    folder.write("repo/.git/refs/heads/feature/checkout", "0123\n");
    EXPECT_EQ(read(), (BranchState{.branch = "feature/checkout", .deleted = false}));
}

TEST_F(GitBranchFiles, aPackedRefIsABranch) {
    folder.write("repo/.git/HEAD", "ref: refs/heads/b\n");
    folder.write("repo/.git/packed-refs", "# pack-refs with: peeled\n0123 refs/heads/a\n4567 refs/heads/b\n");
    EXPECT_EQ(read(), (BranchState{.branch = "b", .deleted = false}));
}

TEST_F(GitBranchFiles, anotherBranchOfTheSameEndingIsAnotherBranch) {
    folder.write("repo/.git/HEAD", "ref: refs/heads/b\n");
    folder.write("repo/.git/packed-refs", "4567 refs/heads/a/b\n");
    EXPECT_EQ(read(), (BranchState{.branch = "b", .deleted = true}));
}

TEST_F(GitBranchFiles, aFolderOfTheRefsNameIsNotTheRef) {
    folder.write("repo/.git/HEAD", "ref: refs/heads/feature\n");
    folder.write("repo/.git/refs/heads/feature/checkout", "0123\n");
    EXPECT_EQ(read(), (BranchState{.branch = "feature", .deleted = true}));
}

TEST_F(GitBranchFiles, aRepositoryThatKeepsItsRefsInATableHasNoKnownBranch) {
    folder.write("repo/.git/HEAD", "ref: refs/heads/.invalid\n");
    folder.write("repo/.git/refs/heads", "this repository uses the reftable format\n");
    EXPECT_EQ(read(), nothing);
}

TEST_F(GitBranchFiles, aDetachedHeadHasNoBranch) {
    folder.write("repo/.git/HEAD", "9a4f1c5b8d1e2f3a4b5c6d7e8f901234567890ab\n");
    EXPECT_EQ(read(), nothing);
}

TEST_F(GitBranchFiles, aHeadThatIsNotTextHasNoBranch) {
    folder.write("repo/.git/HEAD", "ref: refs/heads/\xff\xfe\n");
    EXPECT_EQ(read(), nothing);
}

TEST_F(GitBranchFiles, refNamesMayHoldSpacesAndLetters) {
    folder.write("repo/.git/HEAD",
                 "ref: refs/heads/pr\xc3\xbc"
                 "fung 2\n");
    folder.write("repo/.git/packed-refs",
                 "4567 refs/heads/pr\xc3\xbc"
                 "fung 2\n");
    EXPECT_EQ(read(), (BranchState{.branch = "pr\xc3\xbc"
                                             "fung 2",
                                   .deleted = false}));
}

TEST_F(GitBranchFiles, aLinkedWorktreeIsFollowed) {
    folder.write("tree/.git", "\ngitdir: ../repo/.git/worktrees/tree\n");
    folder.write("repo/.git/worktrees/tree/HEAD", "ref: refs/heads/side\n");
    folder.write("repo/.git/worktrees/tree/commondir", "../..\n");
    folder.write("repo/.git/refs/heads/side", "0123\n");
    EXPECT_EQ(read("tree"), (BranchState{.branch = "side", .deleted = false}));
}

TEST_F(GitBranchFiles, anAbsoluteLinkIsFollowed) {
    folder.write("tree/.git", "gitdir: " + folder / "elsewhere");
    folder.write("elsewhere/HEAD", "ref: refs/heads/side");
    folder.write("elsewhere/refs/heads/side", "0123");
    EXPECT_EQ(read("tree"), (BranchState{.branch = "side", .deleted = false}));
}

TEST_F(GitBranchFiles, aBrokenLinkHasNoBranch) {
    folder.write("a/.git", "");
    folder.write("b/.git", "gitdir:../nowhere\n");
    folder.write("c/.git", "gitdir: ../nowhere\n");
    EXPECT_EQ(read("a"), nothing);
    EXPECT_EQ(read("b"), nothing);
    EXPECT_EQ(read("c"), nothing);
}

TEST_F(GitBranchFiles, anEmptyCommonFolderNameLeavesTheFolder) {
    folder.write("repo/.git/commondir", " \n");
    folder.write("repo/.git/HEAD", "ref: refs/heads/main\n");
    folder.write("repo/.git/refs/heads/main", "0123\n");
    EXPECT_FALSE(read().deleted);
}

TEST_F(GitBranchFiles, aHugePackedFileIsSearchedToItsEnd) {
    std::string packed;
    for (int number = 0; number < 200'000; ++number)
        packed += "0123 refs/heads/branch-" + std::to_string(number) + "\n";
    folder.write("repo/.git/HEAD", "ref: refs/heads/branch-199999\n");
    folder.write("repo/.git/packed-refs", packed);
    EXPECT_FALSE(read().deleted);
}

/// Reads repositories that git itself made.
class GitBranchRepositories : public GitBranchFiles {
protected:
    void git(const std::string& arguments) {
        const auto command = "cd '" + folder.path().string() +
                             "' && GIT_CONFIG_GLOBAL=/dev/null git -c user.name=Test -c user.email=test@localhost "
                             "-c init.defaultBranch=main -c protocol.file.allow=always " +
                             arguments + " >/dev/null 2>&1";
        ASSERT_EQ(std::system(command.c_str()), 0) << arguments;
    }
    void makeRepository(const std::string& name) {
        git("init " + name);
        git("-C " + name + " commit --allow-empty -m first");
    }
};

TEST_F(GitBranchRepositories, anUnbornBranchCountsAsDeleted) {
    git("init repo");
    EXPECT_EQ(read(), (BranchState{.branch = "main", .deleted = true}));
}

TEST_F(GitBranchRepositories, looseAndPackedBranchesAreThere) {
    makeRepository("repo");
    EXPECT_EQ(read(), (BranchState{.branch = "main", .deleted = false}));
    git("-C repo pack-refs --all");
    EXPECT_EQ(read(), (BranchState{.branch = "main", .deleted = false}));
}

TEST_F(GitBranchRepositories, aDeletedBranchIsSeenFromItsWorktree) {
    makeRepository("repo");
    git("-C repo worktree add -b topic ../tree");
    EXPECT_EQ(read("tree"), (BranchState{.branch = "topic", .deleted = false}));
    git("-C repo update-ref -d refs/heads/topic");
    EXPECT_EQ(read("tree"), (BranchState{.branch = "topic", .deleted = true}));
}

TEST_F(GitBranchRepositories, aDetachedWorktreeHasNoBranch) {
    makeRepository("repo");
    git("-C repo worktree add --detach ../tree");
    EXPECT_EQ(read("tree"), nothing);
}

TEST_F(GitBranchRepositories, aSubmoduleHasItsOwnBranch) {
    makeRepository("inner");
    makeRepository("repo");
    git("-C repo submodule add ../inner part");
    git("-C repo/part checkout -b side");
    EXPECT_EQ(read("repo/part"), (BranchState{.branch = "side", .deleted = false}));
    EXPECT_EQ(read("repo"), (BranchState{.branch = "main", .deleted = false}));
}

TEST_F(GitBranchRepositories, aBareRepositoryBesideIsNoRepositoryOfTheFolder) {
    git("init --bare repo/store.git");
    EXPECT_EQ(read(), nothing);
}

}  // namespace
}  // namespace tolvane
