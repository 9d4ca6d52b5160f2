#include "platform/linux/machine/LinuxMachineStatistics.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include "tests/platform/linux/TemporaryFolder.h"

namespace tolvane::linuxhost {

using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::SizeIs;

namespace {

LinuxMachineStatistics machine(const std::string& name) {
    const std::string root = fakes::fixtures() + "/linux/" + name;
    return LinuxMachineStatistics({.proc = root + "/proc", .sys = root + "/sys"});
}

auto users(const std::vector<CPUTicks>& cores) {
    std::vector<std::uint32_t> users;
    for (const auto& core : cores) users.push_back(core.user);
    return users;
}

}  // namespace

TEST(LinuxMachineStatistics, aMachineWithoutSwapHasNoCompressor) {
    const auto plain = machine("plain");
    EXPECT_EQ(plain.memorySize(), 24684096ULL * 1024);
    EXPECT_EQ(plain.swapUsage(), SwapUsage{});
    EXPECT_EQ(plain.virtualMemory()->compressorPages, 0U);
    EXPECT_EQ(plain.pressureLevel(), 1);
    EXPECT_EQ(plain.efficiencyCores(), std::nullopt);
    EXPECT_EQ(plain.activeCores(), 2);
    EXPECT_THAT(plain.ticksPerCore().value(), SizeIs(2));
}

TEST(LinuxMachineStatistics, zramThatIsSwapIsTheCompressor) {
    const auto laptop = machine("zram");
    const auto counters = laptop.virtualMemory().value();
    const auto device = parseZram(fixture("linux/zram/sys/block/zram0/mm_stat")).value();
    EXPECT_EQ(counters.compressorPages, device.occupied / laptop.pageSize());
    EXPECT_EQ(counters.uncompressedPagesInCompressor, device.uncompressed / laptop.pageSize());
    EXPECT_GT(counters.compressorPages, 0U);
    EXPECT_EQ(counters.swapIns, 60112U);
    EXPECT_EQ(laptop.swapUsage(), (SwapUsage{.total = 8388604ULL * 1024, .used = 3144704ULL * 1024}));
}

TEST(LinuxMachineStatistics, stallWithLittleMemoryLeftIsAWarning) { EXPECT_EQ(machine("zram").pressureLevel(), 2); }

TEST(LinuxMachineStatistics, zswapIsReadFromMeminfo) {
    const auto counters = machine("zswap").virtualMemory().value();
    EXPECT_EQ(counters.compressorPages, 409600U * 1024 / 4096);
    EXPECT_EQ(counters.uncompressedPagesInCompressor, 1228800U * 1024 / 4096);
}

TEST(LinuxMachineStatistics, zswapOfOldKernelsIsReadFromTheDebuggingFiles) {
    const auto counters = machine("zswap-old").virtualMemory().value();
    EXPECT_EQ(counters.compressorPages, 419430400U / 4096);
    EXPECT_EQ(counters.uncompressedPagesInCompressor, 307200U);
}

TEST(LinuxMachineStatistics, aKernelThatMeasuresNoStallHasNoLevel) {
    EXPECT_EQ(machine("hybrid").pressureLevel(), std::nullopt);
}

TEST(LinuxMachineStatistics, efficiencyCoresOfAHybridProcessorComeFirst) {
    const auto hybrid = machine("hybrid");
    EXPECT_EQ(hybrid.efficiencyCores(), 4);
    EXPECT_EQ(hybrid.activeCores(), 8);
    EXPECT_THAT(users(hybrid.ticksPerCore().value()), ElementsAre(104, 105, 106, 107, 1000, 1001, 1002, 1003));
}

TEST(LinuxMachineStatistics, smallCoresOfABoardComeFirstAndOnlyThoseSwitchedOnCount) {
    const auto board = machine("arm");
    EXPECT_EQ(board.efficiencyCores(), 3);
    EXPECT_EQ(board.activeCores(), 7);
    EXPECT_THAT(users(board.ticksPerCore().value()), ElementsAre(4, 5, 6, 0, 1, 2, 3));
}

TEST(LinuxMachineStatistics, aProcessorOfSmallCoresOnlyHasCoresThatAreAlike) {
    const TemporaryFolder folder;
    folder.write("sys/devices/cpu_atom/cpus", "0-3\n");
    folder.write("sys/devices/system/cpu/online", "0-3\n");
    EXPECT_EQ(LinuxMachineStatistics({.proc = folder.at("proc"), .sys = folder.at("sys")}).efficiencyCores(),
              std::nullopt);
}

TEST(LinuxMachineStatistics, withoutItsFilesEverythingIsNone) {
    const TemporaryFolder folder;
    const LinuxMachineStatistics nothing({.proc = folder.path(), .sys = folder.path()});
    EXPECT_EQ(nothing.memorySize(), std::nullopt);
    EXPECT_EQ(nothing.pressureLevel(), std::nullopt);
    EXPECT_EQ(nothing.swapUsage(), std::nullopt);
    EXPECT_EQ(nothing.virtualMemory(), std::nullopt);
    EXPECT_EQ(nothing.ticksPerCore(), std::nullopt);
    EXPECT_EQ(nothing.efficiencyCores(), std::nullopt);
    EXPECT_GE(nothing.activeCores(), 1);
}

TEST(LinuxMachineStatistics, aKeptFileIsReadAfreshEachTime) {
    const TemporaryFolder folder;
    folder.write("proc/meminfo", "MemTotal: 8 kB\n");
    const LinuxMachineStatistics statistics({.proc = folder.at("proc"), .sys = folder.at("sys")});
    EXPECT_EQ(statistics.memorySize(), 8U * 1024);
    folder.write("proc/meminfo", "MemTotal: 9 kB\n");
    EXPECT_EQ(statistics.memorySize(), 9U * 1024);
}

TEST(LinuxMachineStatistics, aTickThatTheKernelTakesBackIsNoIdleness) {
    const TemporaryFolder folder;
    folder.write("proc/stat", "cpu  9 0 0 50 5\ncpu0 9 0 0 50 5\n");
    const LinuxMachineStatistics statistics({.proc = folder.at("proc"), .sys = folder.at("sys")});
    EXPECT_THAT(statistics.ticksPerCore().value(), ElementsAre(CPUTicks{.user = 9, .idle = 55}));
    folder.write("proc/stat", "cpu  19 0 0 50 4\ncpu0 19 0 0 50 4\n");
    EXPECT_THAT(statistics.ticksPerCore().value(), ElementsAre(CPUTicks{.user = 19, .idle = 55}));
}

TEST(LinuxMachineStatistics, theRealMachineAgreesWithTheLibrary) {
    const LinuxMachineStatistics real;
    const auto pages = static_cast<std::uint64_t>(::sysconf(_SC_PHYS_PAGES));
    EXPECT_EQ(real.memorySize(), pages * real.pageSize());
    EXPECT_EQ(real.activeCores(), ::sysconf(_SC_NPROCESSORS_ONLN));
    EXPECT_THAT(real.ticksPerCore().value(), SizeIs(static_cast<std::size_t>(real.activeCores())));
}

}  // namespace tolvane::linuxhost
