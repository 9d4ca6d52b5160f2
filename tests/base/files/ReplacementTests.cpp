#include "base/files/Replacement.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "base/files/Files.h"
#include "tests/fakes/SizeLimit.h"
#include "tests/fakes/TemporaryFolder.h"

namespace tolvane {
namespace {

std::string content(const std::string& path) { return Files::read(path).value_or("none"); }

mode_t rights(const std::string& path) {
    struct stat facts{};
    ::stat(path.c_str(), &facts);
    return facts.st_mode & 0777;
}

TEST(Replacement, oneThatDoesNotFitLeavesTheOldFileAlone) {
    const fakes::TemporaryFolder folder;
    const auto path = folder / "file";
    folder.write("file", "old");
    {
        const fakes::SizeLimit limit(5);
        EXPECT_FALSE(Files::replace(path, "too long", Files::Access::usual, path + ".damaged"));
    }
    EXPECT_EQ(content(path), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

TEST(Replacement, itKeepsNothingWhereItCannot) {
    const fakes::TemporaryFolder folder;
    folder.write("file", "old");
    folder.write("file.damaged/inside", "");
    EXPECT_FALSE(Files::replace(folder / "file", "new", Files::Access::usual, folder / "file.damaged"));
    EXPECT_EQ(content(folder / "file"), "old");
}

TEST(Replacement, aRunThatDiedLeavesNoTemporaryFileForLong) {
    const fakes::TemporaryFolder folder;
    folder.write(".file.new", "half of someth");
    EXPECT_TRUE(Files::replace(folder / "file", "new", Files::Access::usual));
    EXPECT_EQ(content(folder / "file"), "new");
    EXPECT_FALSE(std::filesystem::exists(folder / ".file.new"));
}

TEST(Replacement, oneThatIsNotPutInPlaceGoes) {
    const fakes::TemporaryFolder folder;
    {
        Files::Replacement replacement(folder / "file", Files::Access::usual);
        EXPECT_TRUE(replacement.write("new"));
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST(Replacement, theOldRightsStayUnlessTheFileIsTheOwners) {
    const fakes::TemporaryFolder folder;
    folder.write("file", "old");
    ASSERT_EQ(::chmod((folder / "file").c_str(), 0664), 0);
    EXPECT_TRUE(Files::replace(folder / "file", "new", Files::Access::usual));
    EXPECT_EQ(rights(folder / "file"), 0664U);
    EXPECT_TRUE(Files::replace(folder / "file", "newer", Files::Access::ownerOnly, folder / "kept"));
    EXPECT_EQ(rights(folder / "file"), 0600U);
    EXPECT_EQ(content(folder / "file"), "newer");
    EXPECT_EQ(content(folder / "kept"), "new");
}

TEST(Replacement, aLinkIsReplacedAndNotFollowed) {
    const fakes::TemporaryFolder folder;
    folder.write("elsewhere", "mine");
    std::filesystem::create_symlink("elsewhere", folder / "file");
    EXPECT_TRUE(Files::replace(folder / "file", "new", Files::Access::usual));
    EXPECT_FALSE(std::filesystem::is_symlink(folder / "file"));
    EXPECT_EQ(content(folder / "elsewhere"), "mine");
}

TEST(Replacement, aFolderThatIsMissingIsTheReason) {
    const fakes::TemporaryFolder folder;
    Files::Replacement replacement(folder / "missing/file", Files::Access::usual);
    EXPECT_FALSE(replacement.write("new"));
    EXPECT_FALSE(replacement.commit());
    EXPECT_EQ(replacement.failure(), ENOENT);
}

}  // namespace
}  // namespace tolvane
