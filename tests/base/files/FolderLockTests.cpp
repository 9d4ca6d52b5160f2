#include "base/files/FolderLock.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <utility>

#include "tests/platform/linux/ChildProcess.h"
#include "tests/platform/linux/TemporaryFolder.h"

namespace tolvane::linuxhost {
namespace {

using Line = ChildProcess::Line;

TEST(FolderLock, oneAtATimeHoldsAFolder) {
    const TemporaryFolder folder;
    const FolderLock first(folder.path());
    EXPECT_TRUE(first.isHeld());
    EXPECT_FALSE(first.isAnothers());
    const FolderLock second(folder.path());
    EXPECT_FALSE(second.isHeld());
    EXPECT_TRUE(second.isAnothers());
}

TEST(FolderLock, oneFolderIsNotAnother) {
    const TemporaryFolder folder;
    const FolderLock first(folder.at("a"));
    const FolderLock second(folder.at("b"));
    EXPECT_TRUE(first.isHeld());
    EXPECT_TRUE(second.isHeld());
}

TEST(FolderLock, itIsLetGoAtItsEnd) {
    const TemporaryFolder folder;
    {
        const FolderLock first(folder.path());
    }
    EXPECT_TRUE(FolderLock(folder.path()).isHeld());
}

TEST(FolderLock, itMovesWithoutBeingLetGo) {
    const TemporaryFolder folder;
    FolderLock first(folder.path());
    const FolderLock moved(std::move(first));
    EXPECT_TRUE(moved.isHeld());
    EXPECT_TRUE(FolderLock(folder.path()).isAnothers());
}

TEST(FolderLock, makesTheFolderForItsOwnerAlone) {
    const TemporaryFolder folder;
    const FolderLock lock(folder.at("share/Tolvane"));
    EXPECT_TRUE(lock.isHeld());
    struct stat found{};
    ASSERT_EQ(::stat(folder.at("share/Tolvane").c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777, 0700U);
    ASSERT_EQ(::stat(folder.at("share/Tolvane/.lock").c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777, 0600U);
}

TEST(FolderLock, itDiesWithItsProcess) {
    const TemporaryFolder folder;
    ChildProcess child([&](const Line& line) {
        const FolderLock lock(folder.path());
        line.tell();
        line.hear();
    });
    ASSERT_TRUE(child.line().hear());
    EXPECT_TRUE(FolderLock(folder.path()).isAnothers());
    child.end();
    EXPECT_TRUE(FolderLock(folder.path()).isHeld());
}

TEST(FolderLock, programsThatItsProcessStartedDoNotHoldIt) {
    const TemporaryFolder folder;
    ChildProcess sleeper([&](const Line& line) {
        const FolderLock lock(folder.path());
        const int input = ::dup(line.in);
        if (::fork() == 0) {
            // Reads until the test closes its end.
            ::dup2(input, 0);
            ::execl("/bin/cat", "cat", nullptr);
            ::_exit(1);
        }
        line.tell();
        for (;;) ::pause();
    });
    ASSERT_TRUE(sleeper.line().hear());
    // The forked child holds the lock until it has executed the other program.
    ::kill(sleeper.pid(), SIGKILL);
    bool isFree = false;
    for (int count = 0; count < 500 && !isFree; ++count) {
        isFree = FolderLock(folder.path()).isHeld();
        ::usleep(10'000);
    }
    EXPECT_TRUE(isFree);
}

TEST(FolderLock, aFolderThatCannotBeIsNobodys) {
    const FolderLock lock("/dev/null/Tolvane");
    EXPECT_FALSE(lock.isHeld());
    EXPECT_FALSE(lock.isAnothers());
}

TEST(FolderLock, aLinkInTheFilesPlaceIsNotFollowed) {
    const TemporaryFolder folder;
    std::filesystem::create_symlink(folder.at("elsewhere"), folder.at(".lock"));
    EXPECT_FALSE(FolderLock(folder.path()).isHeld());
    EXPECT_FALSE(folder.has("elsewhere"));
}

}  // namespace
}  // namespace tolvane::linuxhost
