#include "base/files/FileDescriptor.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <array>
#include <string_view>
#include <utility>

#include "tests/fakes/TemporaryFolder.h"

namespace tolvane {
namespace {

bool isOpen(int number) { return ::fcntl(number, F_GETFD) >= 0; }

TEST(FileDescriptor, closesWhatItOwns) {
    const fakes::TemporaryFolder folder;
    folder.write("file", "");
    int number = -1;
    {
        const auto file = FileDescriptor::open(folder / "file", O_RDONLY);
        ASSERT_TRUE(file);
        number = file.get();
        EXPECT_TRUE(isOpen(number));
    }
    EXPECT_FALSE(isOpen(number));
}

TEST(FileDescriptor, movesWithoutClosingAndClosesWhatItHeld) {
    const fakes::TemporaryFolder folder;
    folder.write("file", "");
    auto first = FileDescriptor::open(folder / "file", O_RDONLY);
    auto second = FileDescriptor::open(folder / "file", O_RDONLY);
    const int moved = first.get();
    const int closed = second.get();
    second = std::move(first);
    EXPECT_EQ(second.get(), moved);
    EXPECT_TRUE(isOpen(moved));
    EXPECT_FALSE(isOpen(closed));
    second.reset();
    EXPECT_FALSE(second);
    EXPECT_FALSE(isOpen(moved));
}

TEST(FileDescriptor, childrenDoNotInheritAFile) {
    const fakes::TemporaryFolder folder;
    folder.write("file", "");
    const auto file = FileDescriptor::open(folder / "file", O_RDONLY);
    EXPECT_EQ(::fcntl(file.get(), F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
}

TEST(FileDescriptor, readsFewerBytesOnlyAtTheEnd) {
    const fakes::TemporaryFolder folder;
    folder.write("file", "12345");
    const auto file = FileDescriptor::open(folder / "file", O_RDONLY);
    std::array<char, 3> buffer{};
    EXPECT_EQ(file.readAt(1, buffer.data(), buffer.size()), 3U);
    EXPECT_EQ(std::string_view(buffer.data(), 3), "234");
    EXPECT_EQ(file.readAt(3, buffer.data(), buffer.size()), 2U);
    EXPECT_EQ(file.readAt(5, buffer.data(), buffer.size()), 0U);
    EXPECT_EQ(FileDescriptor().readAt(0, buffer.data(), buffer.size()), std::nullopt);
}

TEST(FileDescriptor, onlyARegularFileHasASize) {
    const fakes::TemporaryFolder folder;
    folder.write("file", "12345");
    EXPECT_EQ(FileDescriptor::open(folder / "file", O_RDONLY).regularSize(), 5U);
    EXPECT_EQ(FileDescriptor::open(folder.path().string(), O_RDONLY).regularSize(), std::nullopt);
    EXPECT_EQ(FileDescriptor::open(folder / "missing", O_RDONLY).regularSize(), std::nullopt);
}

}  // namespace
}  // namespace tolvane
