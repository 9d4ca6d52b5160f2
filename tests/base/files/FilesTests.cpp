#include "base/files/Files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>

#include "tests/fakes/SizeLimit.h"
#include "tests/fakes/TemporaryFolder.h"

namespace tolvane {
namespace {

using ::testing::Optional;

std::string content(const std::string& path) { return Files::read(path).value_or("none"); }

mode_t rights(const std::string& path) {
    struct stat facts{};
    ::stat(path.c_str(), &facts);
    return facts.st_mode & 0777;
}

TEST(Files, aWholeFileIsReadAlsoThroughALink) {
    const fakes::TemporaryFolder folder;
    const std::string text(100'000, 'x');
    folder.write("file", text);
    std::filesystem::create_symlink("file", folder / "link");
    EXPECT_EQ(content(folder / "file"), text);
    EXPECT_EQ(content(folder / "link"), text);
    EXPECT_EQ(Files::read(folder / "missing"), std::nullopt);
}

TEST(Files, readingSaysWhyThereIsNothing) {
    const fakes::TemporaryFolder folder;
    folder.write("file", "12345");
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    const auto code = [&](std::string_view name) { return Files::readUpTo(folder / name, 4).failure().code; };
    EXPECT_EQ(code("file"), EFBIG);
    EXPECT_EQ(code("pipe"), EINVAL);
    EXPECT_EQ(code("."), EISDIR);
    EXPECT_EQ(code("missing"), ENOENT);
    EXPECT_EQ(*Files::readUpTo(folder / "file", 5), "12345");
}

TEST(Files, aPipeIsRefusedWithoutWaiting) {
    const fakes::TemporaryFolder folder;
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_FALSE(Files::openForReading(folder / "pipe"));
    EXPECT_EQ(Files::read(folder / "pipe"), std::nullopt);
    EXPECT_EQ(Files::readText(folder / "pipe"), std::nullopt);
    EXPECT_EQ(Files::readStart(folder / "pipe", 4), std::nullopt);
    EXPECT_FALSE(Files::append(folder / "pipe", "line\n"));
}

TEST(Files, textIsUTF8) {
    const fakes::TemporaryFolder folder;
    folder.write("text", "é\n");
    folder.write("bytes", "\xE9\n");
    EXPECT_EQ(Files::readText(folder / "text"), "é\n");
    EXPECT_EQ(Files::readText(folder / "bytes"), std::nullopt);
    EXPECT_EQ(Files::readText(folder / "missing"), std::nullopt);
}

TEST(Files, theStartEndsWithTheFile) {
    const fakes::TemporaryFolder folder;
    folder.write("file", "12345");
    EXPECT_EQ(Files::readStart(folder / "file", 3), "123");
    EXPECT_EQ(Files::readStart(folder / "file", 9), "12345");
    EXPECT_EQ(Files::readStart(folder.path().string(), 9), std::nullopt);
    EXPECT_EQ(Files::readStart(folder / "missing", 9), std::nullopt);
}

TEST(Files, aKernelFileIsReadThoughItStatesNoSize) {
    const std::string path = "/proc/version";
    if (!Files::exists(path)) GTEST_SKIP() << "this kernel has no such files";
    EXPECT_EQ(std::filesystem::file_size(path), 0U);
    const auto version = Files::readKernelFile(path, 4096);
    EXPECT_THAT(version, Optional(::testing::StartsWith("Linux")));
    EXPECT_EQ(Files::read(path), version);
    EXPECT_EQ(Files::readKernelFile(path, version->size()), version);
    EXPECT_EQ(Files::readKernelFile(path, version->size() - 1), std::nullopt);
    EXPECT_EQ(Files::readKernelFile("/proc/self/missing", 4096), std::nullopt);
}

TEST(Files, aLineThatDoesNotFitIsTakenBack) {
    const fakes::TemporaryFolder folder;
    const auto path = folder / "log";
    ASSERT_TRUE(Files::append(path, "first\n"));
    {
        const fakes::SizeLimit limit(10);
        EXPECT_FALSE(Files::append(path, "second\n"));
        EXPECT_EQ(content(path), "first\n");
        EXPECT_TRUE(Files::append(path, "3rd\n"));
    }
    EXPECT_EQ(content(path), "first\n3rd\n");
}

TEST(Files, aFirstLineThatDoesNotFitLeavesNothing) {
    const fakes::TemporaryFolder folder;
    const fakes::SizeLimit limit(3);
    EXPECT_FALSE(Files::append(folder / "log", "first\n"));
    EXPECT_EQ(content(folder / "log"), "");
}

TEST(Files, appendingDoesNotFollowALink) {
    const fakes::TemporaryFolder folder;
    folder.write("file", "mine");
    std::filesystem::create_symlink("file", folder / "log");
    EXPECT_FALSE(Files::append(folder / "log", "line\n"));
    EXPECT_EQ(content(folder / "file"), "mine");
}

TEST(Files, aLinkToAFolderCountsAsOne) {
    const fakes::TemporaryFolder folder;
    folder.write("a/file", "");
    std::filesystem::create_symlink("a", folder / "link");
    std::filesystem::create_symlink("nowhere", folder / "dangling");
    EXPECT_TRUE(Files::isFolder(folder / "a"));
    EXPECT_TRUE(Files::isFolder(folder / "link"));
    EXPECT_FALSE(Files::isFolder(folder / "a/file"));
    EXPECT_FALSE(Files::isFolder(folder / "dangling"));
    EXPECT_TRUE(Files::exists(folder / "dangling"));
}

TEST(Files, missingFoldersAreMadeOrTheReasonIsGiven) {
    const fakes::TemporaryFolder folder;
    EXPECT_EQ(Files::makeFolder(folder / "a/b"), std::nullopt);
    EXPECT_TRUE(Files::isFolder(folder / "a/b"));
    EXPECT_EQ(Files::makeFolder(folder / "a/b"), std::nullopt);
    folder.write("file", "");
    EXPECT_EQ(Files::makeFolder(folder / "file/c")->path, folder / "file/c");
    const FileError inTheWay{.code = ENOTDIR, .path = folder / "file/c"};
    EXPECT_EQ(Files::makePrivateFolder(folder / "file/c"), inTheWay);
}

TEST(Files, aPrivateFolderIsItsOwnersAndOneThatIsThereKeepsItsRights) {
    const fakes::TemporaryFolder folder;
    std::filesystem::create_directory(folder / "there");
    ASSERT_EQ(::chmod((folder / "there").c_str(), 0755), 0);
    EXPECT_EQ(Files::makePrivateFolder(folder / "there/a/b"), std::nullopt);
    EXPECT_EQ(rights(folder / "there/a/b"), 0700U);
    EXPECT_EQ(rights(folder / "there/a"), 0700U);
    EXPECT_EQ(Files::makePrivateFolder(folder / "there"), std::nullopt);
    EXPECT_EQ(rights(folder / "there"), 0755U);
    Files::keepToOwner(folder / "there");
    EXPECT_EQ(rights(folder / "there"), 0700U);
}

}  // namespace
}  // namespace tolvane
