#include "platform/linux/machine/OwnMemory.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <string>

#include "base/files/FileDescriptor.h"
#include "tests/platform/linux/TemporaryFolder.h"

namespace tolvane::linuxhost {
namespace {

using OwnMemory::Stretch;
using OwnMemory::unchangedFiles;

std::string mapping(const std::string& head, const std::string& anonymous) {
    return head + "\nSize:                128 kB\nRss:                  64 kB\nAnonymous:       " + anonymous +
           " kB\nLocked:                0 kB\nVmFlags: rd ex mr mw me\n";
}

TEST(OwnMemory, aProgramsCodeIsAnUnchangedFile) {
    const auto smaps =
        mapping("7f2a1c200000-7f2a1c9f1000 r-xp 00200000 fe:00 131330      /usr/lib/libQt6Gui.so.6", "0");
    EXPECT_EQ(unchangedFiles(smaps), (std::vector<Stretch>{{0x7f2a1c200000, 0x7f2a1c9f1000}}));
}

TEST(OwnMemory, aPathMayHoldBlanks) {
    const auto smaps = mapping("1000-2000 r--s 00000000 fe:00 7     /home/ada/my fonts/Inter.otf", "0");
    EXPECT_EQ(unchangedFiles(smaps), (std::vector<Stretch>{{0x1000, 0x2000}}));
}

TEST(OwnMemory, whatTheLoaderFilledInIsNone) {
    EXPECT_TRUE(unchangedFiles(mapping("1000-2000 r--p 00000000 fe:00 7  /usr/lib/libQt6Gui.so.6", "4")).empty());
}

TEST(OwnMemory, whatCanBeWrittenIsNone) {
    EXPECT_TRUE(unchangedFiles(mapping("1000-2000 rw-p 00000000 fe:00 7  /usr/lib/libQt6Gui.so.6", "0")).empty());
    EXPECT_TRUE(unchangedFiles(mapping("1000-2000 rw-s 00000000 00:01 7  /memfd:xorg (deleted)", "0")).empty());
}

TEST(OwnMemory, memoryOfNoFileIsNone) {
    EXPECT_TRUE(unchangedFiles(mapping("1000-2000 r--p 00000000 00:00 0 ", "0")).empty());
    EXPECT_TRUE(unchangedFiles(mapping("1000-2000 r-xp 00000000 00:00 0   [vdso]", "0")).empty());
}

TEST(OwnMemory, eachMappingIsJudgedByItself) {
    const auto smaps = mapping("1000-2000 r--p 00000000 fe:00 7  /usr/lib/a.so", "4") +
                       mapping("2000-3000 r-xp 00000000 fe:00 7  /usr/lib/a.so", "0") +
                       mapping("3000-4000 rw-p 00000000 fe:00 7  /usr/lib/a.so", "0") +
                       mapping("4000-5000 r--p 00000000 fe:00 7  /usr/lib/a.so", "0");
    EXPECT_EQ(unchangedFiles(smaps), (std::vector<Stretch>{{0x2000, 0x3000}, {0x4000, 0x5000}}));
}

TEST(OwnMemory, textThatIsNoListOfMappingsHoldsNone) {
    for (const auto* text : {"", "\n\n", "Anonymous: 0 kB\n", "zzz-yyy r-xp 0 0 0 /a\nAnonymous: 0 kB\n",
                             "2000-1000 r-xp 0 0 0 /a\nAnonymous: 0 kB\n", "1000-2000 r-xp 0 0 0 /a"}) {
        EXPECT_TRUE(unchangedFiles(text).empty()) << text;
    }
}

/// A file of a few pages, mapped.
class MappedFile {
public:
    MappedFile(const std::string& path, int protection) {
        std::ofstream(path) << std::string(size, 'a');
        const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
        begin_ = static_cast<char*>(::mmap(nullptr, size, protection, MAP_PRIVATE, file.get(), 0));
    }
    ~MappedFile() { ::munmap(begin_, size); }
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    bool isThere() const { return begin_ != MAP_FAILED; }
    char* begin() const { return begin_; }
    /// Touches every page.
    bool holds(char letter) const {
        return std::all_of(begin_, begin_ + size, [=](char each) { return each == letter; });
    }
    /// Whether the kernel counts it as this program's: bytes of its first page.
    std::string residentSize() const {
        std::array<char, 32> head{};
        std::snprintf(head.data(), head.size(), "%lx-", reinterpret_cast<unsigned long>(begin_));
        std::ifstream smaps("/proc/self/smaps");
        for (std::string line; std::getline(smaps, line);) {
            if (!line.starts_with(head.data())) continue;
            while (std::getline(smaps, line) && !line.starts_with("Rss:")) continue;
            return line.substr(line.find_first_not_of(' ', 4));
        }
        return {};
    }

private:
    static constexpr std::size_t size = 64 * 1024;
    char* begin_ = nullptr;
};

TEST(OwnMemory, givesBackAFileThatWasOnlyReadAndFindsItAgain) {
    const TemporaryFolder folder;
    const MappedFile file(folder.path() + "/read", PROT_READ);
    ASSERT_TRUE(file.isThere());
    ASSERT_TRUE(file.holds('a'));
    EXPECT_EQ(file.residentSize(), "64 kB");
    OwnMemory::giveBack();
    EXPECT_EQ(file.residentSize(), "0 kB");
    EXPECT_TRUE(file.holds('a'));
}

TEST(OwnMemory, keepsWhatWasWrittenAlsoWhereItCanBeWrittenNoLonger) {
    const TemporaryFolder folder;
    const MappedFile file(folder.path() + "/written", PROT_READ | PROT_WRITE);
    ASSERT_TRUE(file.isThere());
    std::fill_n(file.begin(), 64 * 1024, 'b');
    ASSERT_EQ(::mprotect(file.begin(), 64 * 1024, PROT_READ), 0);
    OwnMemory::giveBack();
    EXPECT_TRUE(file.holds('b'));
}

}  // namespace
}  // namespace tolvane::linuxhost
