#include "platform/macos/kernel/MacMachineStatistics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>

#include "core/sampling/SystemMemory.h"
#include "tests/platform/macos/FakeKernel.h"

namespace tolvane::machost {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;

class MacMachineStatisticsTest : public ::testing::Test {
protected:
    MacMachineStatistics machine() { return MacMachineStatistics(kernel_.table()); }

    FakeKernel kernel_;
};

TEST_F(MacMachineStatisticsTest, readsTheNamedValues) {
    kernel_.values["hw.memsize"] = bytesOf(std::uint64_t{17179869184});
    kernel_.values["kern.memorystatus_vm_pressure_level"] = bytesOf(std::int32_t{2});
    kernel_.values["hw.perflevel1.logicalcpu"] = bytesOf(std::int32_t{4});
    kernel_.values["vm.swapusage"] = bytesOf(SwapSpace{.total = 2048, .available = 1536, .used = 512});
    EXPECT_THAT(machine().memorySize(), Optional(17179869184U));
    EXPECT_THAT(machine().pressureLevel(), Optional(2));
    EXPECT_THAT(machine().efficiencyCores(), Optional(4));
    EXPECT_THAT(machine().swapUsage(), Optional(SwapUsage{.total = 2048, .used = 512}));
}

TEST_F(MacMachineStatisticsTest, valuesThatTheKernelDoesNotHaveAreNone) {
    EXPECT_FALSE(machine().memorySize());
    EXPECT_FALSE(machine().pressureLevel());
    EXPECT_FALSE(machine().efficiencyCores());
    EXPECT_FALSE(machine().swapUsage());
}

TEST_F(MacMachineStatisticsTest, valuesOfAnotherSizeAreNone) {
    kernel_.values["hw.memsize"] = bytesOf(std::uint32_t{17});
    kernel_.values["vm.swapusage"] = std::string(24, 'x');
    EXPECT_FALSE(machine().memorySize());
    EXPECT_FALSE(machine().swapUsage());
}

TEST_F(MacMachineStatisticsTest, noEfficiencyCoresWhereTheirCountIsZeroOrLess) {
    for (const std::int32_t count : {0, -1}) {
        kernel_.values["hw.perflevel1.logicalcpu"] = bytesOf(count);
        EXPECT_FALSE(machine().efficiencyCores());
    }
}

TEST_F(MacMachineStatisticsTest, readsTheCountersOfMemory) {
    kernel_.memory.internal = 100;
    kernel_.memory.purgeable = 10;
    kernel_.memory.wired = 20;
    kernel_.memory.compressor = 30;
    kernel_.memory.uncompressedInCompressor = 90;
    kernel_.memory.swapIns = 7;
    EXPECT_THAT(machine().virtualMemory(), Optional(VirtualMemoryCounters{.internalPages = 100,
                                                                          .purgeablePages = 10,
                                                                          .wiredPages = 20,
                                                                          .compressorPages = 30,
                                                                          .uncompressedPagesInCompressor = 90,
                                                                          .swapIns = 7}));
    EXPECT_EQ(kernel_.portsOut, 0);
}

TEST_F(MacMachineStatisticsTest, asksForTheCountersInTheKernelsWords) {
    kernel_.calls.hostStatistics64 = [](Port, int flavour, void*, std::uint32_t* count) {
        EXPECT_EQ(flavour, 4);
        EXPECT_EQ(*count, 104U);
        *count = 38;
        return 0;
    };
    EXPECT_THAT(machine().virtualMemory(), Optional(VirtualMemoryCounters{}));
}

TEST_F(MacMachineStatisticsTest, noCountersOnFailureOrWhenTheyAreCutShort) {
    kernel_.calls.hostStatistics64 = [](Port, int, void*, std::uint32_t*) { return 4; };
    EXPECT_FALSE(machine().virtualMemory());
    kernel_.calls.hostStatistics64 = [](Port, int, void*, std::uint32_t* count) {
        *count = 37;
        return 0;
    };
    EXPECT_FALSE(machine().virtualMemory());
    EXPECT_EQ(kernel_.portsOut, 0);
}

TEST_F(MacMachineStatisticsTest, aMachineThatTellsNothingHasTheDefaults) {
    kernel_.calls.hostStatistics64 = [](Port, int, void*, std::uint32_t*) { return 4; };
    EXPECT_EQ(SystemMemory::read(machine()), SystemMemory{});
}

TEST_F(MacMachineStatisticsTest, countersBecomeBytesOfThisMachinesPages) {
    kernel_.memory.internal = 100;
    kernel_.memory.purgeable = 10;
    kernel_.memory.compressor = 30;
    kernel_.memory.uncompressedInCompressor = 90;
    const auto memory = SystemMemory::read(machine());
    EXPECT_EQ(memory.app, 90U * 16384U);
    EXPECT_EQ(memory.compressed, 30U * 16384U);
    EXPECT_DOUBLE_EQ(memory.compressionRatio, 3);
}

TEST_F(MacMachineStatisticsTest, aPressureLevelOfAnotherNumberIsNormal) {
    for (const std::int32_t level : {0, 1, 3, 5, -1}) {
        kernel_.values["kern.memorystatus_vm_pressure_level"] = bytesOf(level);
        EXPECT_EQ(SystemMemory::read(machine()).pressure, Pressure::normal) << level;
    }
    kernel_.values["kern.memorystatus_vm_pressure_level"] = bytesOf(std::int32_t{4});
    EXPECT_EQ(SystemMemory::read(machine()).pressure, Pressure::critical);
}

TEST_F(MacMachineStatisticsTest, readsTheTicksOfEachCoreAndGivesTheBlockBack) {
    kernel_.coreCount = 2;
    kernel_.coreWords = {1, 2, 3, 4, 5, 6, 7, 8};
    const auto ticks = machine().ticksPerCore();
    ASSERT_TRUE(ticks);
    EXPECT_THAT(*ticks, ElementsAre(CPUTicks{.user = 1, .system = 2, .idle = 3, .nice = 4},
                                    CPUTicks{.user = 5, .system = 6, .idle = 7, .nice = 8}));
    EXPECT_EQ(kernel_.blocksOut, 0);
    EXPECT_EQ(kernel_.portsOut, 0);
}

TEST_F(MacMachineStatisticsTest, noCoresGiveTheEmptyListAndNotNone) {
    kernel_.coreWords = {1};
    EXPECT_THAT(machine().ticksPerCore(), Optional(IsEmpty()));
    EXPECT_EQ(kernel_.blocksOut, 0);
}

TEST_F(MacMachineStatisticsTest, moreCoresAnnouncedThanThereAreWordsFor) {
    kernel_.coreCount = 1000;
    kernel_.coreWords = {1, 2, 3, 4, 5, 6};
    EXPECT_THAT(machine().ticksPerCore(),
                Optional(ElementsAre(CPUTicks{.user = 1, .system = 2, .idle = 3, .nice = 4})));
    EXPECT_EQ(kernel_.blocksOut, 0);
}

TEST_F(MacMachineStatisticsTest, aFailureOrANullBlockGivesNone) {
    using Words = const std::uint32_t*;
    kernel_.calls.coreStatistics = [](Port, int flavour, std::uint32_t*, Words*, std::uint32_t*) {
        EXPECT_EQ(flavour, 2);
        return 4;
    };
    EXPECT_FALSE(machine().ticksPerCore());
    kernel_.calls.coreStatistics = [](Port, int, std::uint32_t* cores, Words* block, std::uint32_t* count) {
        *cores = 8;
        *block = nullptr;
        *count = 32;
        return 0;
    };
    EXPECT_FALSE(machine().ticksPerCore());
    EXPECT_EQ(kernel_.blocksOut, 0);
    EXPECT_EQ(kernel_.portsOut, 0);
}

TEST_F(MacMachineStatisticsTest, readsPagesAndActiveCores) {
    EXPECT_EQ(machine().pageSize(), 16384U);
    EXPECT_EQ(machine().activeCores(), 10);
}

}  // namespace
}  // namespace tolvane::machost
