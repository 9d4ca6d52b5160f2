#include "core/sampling/SystemMemory.h"

#include <gtest/gtest.h>

#include "tests/fakes/FakeHost.h"

namespace tolvane {
namespace {

class SystemMemoryTest : public ::testing::Test {
protected:
    SystemMemory read() { return SystemMemory::read(*host.host.machine); }

    fakes::FakeHost host;
    fakes::FakeWorld& world = *host.world;
};

TEST_F(SystemMemoryTest, takesEachFieldFromItsCounter) {
    world.memorySize = 1000;
    world.pageSize = 10;
    world.virtualMemory = VirtualMemoryCounters{.internalPages = 20,
                                                .purgeablePages = 5,
                                                .wiredPages = 7,
                                                .compressorPages = 4,
                                                .uncompressedPagesInCompressor = 10,
                                                .swapIns = 3};
    world.swapUsage = SwapUsage{.total = 200, .used = 50};
    world.pressureLevel = 2;
    EXPECT_EQ(read(), (SystemMemory{.total = 1000,
                                    .app = 150,
                                    .wired = 70,
                                    .compressed = 40,
                                    .swapUsed = 50,
                                    .swapTotal = 200,
                                    .swapIns = 30,
                                    .pressure = Pressure::warning,
                                    .compressionRatio = 2.5}));
    EXPECT_EQ(read().used(), 260U);
}

TEST_F(SystemMemoryTest, whatCannotBeReadStaysAtItsDefault) {
    EXPECT_EQ(read(), SystemMemory{});
    EXPECT_EQ(read().compressionRatio, 1.0);
    EXPECT_EQ(read().pressure, Pressure::normal);
}

TEST_F(SystemMemoryTest, oneMissingSourceLeavesTheOthersAlone) {
    world.memorySize = 1000;
    EXPECT_EQ(read(), (SystemMemory{.total = 1000}));
    world.swapUsage = SwapUsage{.total = 20, .used = 5};
    EXPECT_EQ(read(), (SystemMemory{.total = 1000, .swapUsed = 5, .swapTotal = 20}));
}

TEST_F(SystemMemoryTest, partLargerThanItsWholeGivesNothing) {
    world.virtualMemory = VirtualMemoryCounters{.internalPages = 1, .purgeablePages = 2};
    EXPECT_EQ(read().app, 0U);
}

TEST_F(SystemMemoryTest, levelsBesidesWarningAndCriticalAreNormal) {
    const std::pair<int, Pressure> levels[] = {{1, Pressure::normal}, {2, Pressure::warning}, {4, Pressure::critical},
                                               {0, Pressure::normal}, {3, Pressure::normal},  {-1, Pressure::normal}};
    for (const auto& [level, pressure] : levels) {
        world.pressureLevel = level;
        EXPECT_EQ(read().pressure, pressure) << level;
    }
}

TEST(Pressure, numbersThatAreNoLevelGiveNone) {
    EXPECT_EQ(pressureFromLevel(0), std::nullopt);
    EXPECT_EQ(pressureFromLevel(3), std::nullopt);
    EXPECT_EQ(pressureFromLevel(4), Pressure::critical);
}

TEST(Pressure, isOrderedByTightness) {
    EXPECT_LT(Pressure::normal, Pressure::warning);
    EXPECT_LT(Pressure::warning, Pressure::critical);
}

TEST(CompressionRatio, isOneWithoutCompressorPages) { EXPECT_EQ(SystemMemory::ratioOf(100, 0), 1.0); }

TEST(CompressionRatio, isNeverBelowOne) {
    EXPECT_EQ(SystemMemory::ratioOf(3, 4), 1.0);
    EXPECT_EQ(SystemMemory::ratioOf(0, 4), 1.0);
    EXPECT_EQ(SystemMemory::ratioOf(10, 4), 2.5);
}

}  // namespace
}  // namespace tolvane
