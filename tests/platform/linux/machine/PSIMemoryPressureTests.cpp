#include "platform/linux/machine/PSIMemoryPressure.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>

#include <cstdlib>
#include <optional>
#include <random>

#include "tests/platform/linux/ChildProcess.h"
#include "tests/platform/linux/EventLoop.h"
#include "tests/platform/linux/TemporaryFolder.h"

namespace tolvane::linuxhost {

using namespace std::chrono_literals;

namespace {

const std::string calm =
    "some avg10=7.49 avg60=0.00 avg300=0.00 total=0\nfull avg10=0.00 avg60=0.00 avg300=0.00 total=0\n";
const std::string pressed =
    "some avg10=7.50 avg60=0.00 avg300=0.00 total=0\nfull avg10=0.00 avg60=0.00 avg300=0.00 total=0\n";

/// How many of this program's descriptors lead to a file.
int descriptorsOf(const std::string& path) {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code gone;
        if (std::filesystem::read_symlink(entry.path(), gone) == path) ++count;
    }
    return count;
}

/// A file of averages as the only source, read every 5 ms.
class PolledPressure : public ::testing::Test {
protected:
    PSIMemoryPressure watching(const std::string& text) const {
        return PSIMemoryPressure({.file = folder.write("memory", text), .pollInterval = 5ms});
    }

    TemporaryFolder folder;
    int calls = 0;
    std::function<void()> count = [this] { ++calls; };
};

}  // namespace

TEST_F(PolledPressure, tellsOfStall) {
    auto pressure = watching(pressed);
    const auto subscription = pressure.onPressure(count);
    EXPECT_TRUE(runUntil([&] { return calls >= 2; }));
}

TEST_F(PolledPressure, staysQuietWithLittleStall) {
    auto pressure = watching(calm);
    const auto subscription = pressure.onPressure(count);
    runFor(40ms);
    EXPECT_EQ(calls, 0);
}

TEST_F(PolledPressure, writesNothingIntoAnOrdinaryFile) {
    auto pressure = watching(calm);
    const auto subscription = pressure.onPressure(count);
    EXPECT_EQ(folder.read("memory"), calm);
}

TEST_F(PolledPressure, endsWithTheLastSubscription) {
    auto pressure = watching(pressed);
    auto first = pressure.onPressure(count);
    auto second = pressure.onPressure([] {});
    first.reset();
    second.reset();
    runFor(40ms);
    EXPECT_EQ(calls, 0);
    const auto third = pressure.onPressure(count);
    EXPECT_TRUE(runUntil([&] { return calls > 0; }));
}

TEST_F(PolledPressure, onlyWhoIsSubscribedIsTold) {
    auto pressure = watching(pressed);
    int others = 0;
    auto ended = pressure.onPressure(count);
    const auto kept = pressure.onPressure([&] { ++others; });
    ended.reset();
    ASSERT_TRUE(runUntil([&] { return others > 0; }));
    EXPECT_EQ(calls, 0);
}

TEST_F(PolledPressure, aCallMayEndItsOwnSubscription) {
    auto pressure = watching(pressed);
    Subscription own;
    own = pressure.onPressure([&] {
        ++calls;
        own.reset();
    });
    ASSERT_TRUE(runUntil([&] { return calls > 0; }));
    runFor(30ms);
    EXPECT_EQ(calls, 1);
}

TEST_F(PolledPressure, aCallMayEndTheSource) {
    std::optional<PSIMemoryPressure> pressure;
    pressure.emplace(PSIMemoryPressure::Settings{.file = folder.write("memory", pressed), .pollInterval = 5ms});
    const auto subscription = pressure->onPressure([&] {
        ++calls;
        pressure.reset();
    });
    ASSERT_TRUE(runUntil([&] { return calls > 0; }));
    runFor(30ms);
    EXPECT_EQ(calls, 1);
}

TEST_F(PolledPressure, withoutTheMeasureThereAreNoEvents) {
    PSIMemoryPressure pressure({.file = folder.at("missing"), .pollInterval = 5ms});
    const auto subscription = pressure.onPressure(count);
    folder.write("missing", pressed);
    runFor(30ms);
    EXPECT_EQ(calls, 0);
}

TEST(PSIMemoryPressure, holdsTheKernelsFileOnlyWhileSubscribed) {
    const std::string file = "/proc/pressure/memory";
    if (::access(file.c_str(), W_OK) != 0) GTEST_SKIP() << "this kernel measures no stall or takes no triggers";
    PSIMemoryPressure pressure;
    EXPECT_EQ(descriptorsOf(file), 0);
    auto subscription = pressure.onPressure([] {});
    EXPECT_EQ(descriptorsOf(file), 1);
    subscription.reset();
    EXPECT_EQ(descriptorsOf(file), 0);
}

namespace {

/// A group of processes that may hold 64 MB, file pages included.
class SmallGroup {
public:
    SmallGroup() : folder_("/sys/fs/cgroup/memory/tolvane-test-" + std::to_string(::getpid())) {
        isUsable_ = ::mkdir(folder_.c_str(), 0755) == 0 && put("memory.limit_in_bytes", "67108864");
    }
    SmallGroup(const SmallGroup&) = delete;
    SmallGroup& operator=(const SmallGroup&) = delete;
    ~SmallGroup() { ::rmdir(folder_.c_str()); }

    bool isUsable() const { return isUsable_; }
    bool put(const std::string& name, const std::string& text) const {
        std::ofstream file(folder_ + "/" + name);
        file << text << std::flush;
        return file.good();
    }

private:
    std::string folder_;
    bool isUsable_ = false;
};

constexpr std::size_t hogSize = std::size_t{192} << 20U;

/// A page belongs to the group that reads it first, which must be this one.
void dropFromMemory(const std::string& path) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    ::fsync(file);
    ::posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED);
    ::close(file);
}

/// Touches pages of a file three times the group's size at random, so that each touch evicts another page.
void thrash(const std::string& path) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    void* pages = ::mmap(nullptr, hogSize, PROT_READ, MAP_SHARED, file, 0);
    if (pages == MAP_FAILED) ::_exit(1);
    std::minstd_rand random;
    for (volatile char sink = 0;;) sink = static_cast<const char*>(pages)[random() % hogSize] + sink;
}

}  // namespace

TEST(PSIMemoryPressure, tellsWhenTasksStandStillForWantOfMemory) {
    if (std::getenv("TOLVANE_PROVOKE_PRESSURE") == nullptr)
        GTEST_SKIP() << "stalls the machine for seconds: set TOLVANE_PROVOKE_PRESSURE=1 and run it alone";
    const SmallGroup group;
    if (!group.isUsable()) GTEST_SKIP() << "no memory groups of version 1 that this user may write";
    const TemporaryFolder folder;
    const std::string path = folder.write("pages", std::string(hogSize, 'x'));
    dropFromMemory(path);
    int calls = 0;
    PSIMemoryPressure pressure;
    const auto subscription = pressure.onPressure([&] { ++calls; });
    const ChildProcess hog([&](const ChildProcess::Line& line) {
        group.put("cgroup.procs", "0");
        line.tell();
        thrash(path);
    });
    ASSERT_TRUE(hog.line().hear());
    EXPECT_TRUE(runUntil([&] { return calls >= 2; }, 20s));
}

}  // namespace tolvane::linuxhost
