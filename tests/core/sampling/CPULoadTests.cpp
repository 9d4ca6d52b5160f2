#include "core/sampling/CPULoad.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "tests/fakes/FakeHost.h"

namespace tolvane {
namespace {

using Cores = std::vector<CPUTicks>;

constexpr auto limit = std::numeric_limits<std::uint32_t>::max();

TEST(CPULoad, splitsTheTimeIntoUserAndSystem) {
    const auto load = CPULoad::between(CPUTicks{10, 10, 10, 10}, CPUTicks{30, 20, 70, 20}, 4);
    EXPECT_EQ(load, (CPULoad{.user = 0.3, .system = 0.1, .cores = 4}));
}

TEST(CPULoad, sumsTheCores) {
    const auto load = CPULoad::between(Cores(2), {{50, 0, 50, 0}, {0, 25, 75, 0}}, CoreLayout{.performance = 2});
    EXPECT_EQ(load, (CPULoad{.user = 0.25, .system = 0.125, .cores = 2, .performance = 0.75}));
}

TEST(CPULoad, firstCoresAreTheEfficientOnes) {
    const Cores to{{100, 0, 0, 0}, {0, 50, 50, 0}, {25, 0, 75, 0}};
    const auto load = CPULoad::between(Cores(3), to, CoreLayout{.performance = 1, .efficiency = 2});
    EXPECT_DOUBLE_EQ(load.efficiency, 1.5);
    EXPECT_DOUBLE_EQ(load.performance, 0.25);
    EXPECT_EQ(load.efficiencyCores, 2);
    EXPECT_EQ(load.cores, 3);
}

TEST(CPULoad, countOfPerformanceCoresIsNotAskedFor) {
    const Cores to{{100, 0, 0, 0}, {100, 0, 0, 0}};
    EXPECT_DOUBLE_EQ(CPULoad::between(Cores(2), to, CoreLayout{.performance = 7, .efficiency = 0}).performance, 2);
}

TEST(CPULoad, niceTimeIsUserTime) { EXPECT_DOUBLE_EQ(CPULoad::between({}, CPUTicks{10, 0, 80, 10}, 1).user, 0.2); }

TEST(CPULoad, counterThatPassedItsLimitGivesTheSmallDifference) {
    const auto load = CPULoad::between(CPUTicks{limit - 4, 0, 0, 0}, CPUTicks{5, 0, 30, 0}, 1);
    EXPECT_DOUBLE_EQ(load.user, 0.25);
}

TEST(CPULoad, anySumThatPassesTheLimitGivesTheSameLoad) {
    std::mt19937 random(13);
    const CoreLayout layout{.performance = 2, .efficiency = 1};
    for (int round = 0; round < 1000; ++round) {
        Cores from(3);
        Cores to(3);
        Cores shiftedFrom(3);
        Cores shiftedTo(3);
        for (std::size_t core = 0; core < 3; ++core) {
            for (const auto counter : {&CPUTicks::user, &CPUTicks::system, &CPUTicks::idle, &CPUTicks::nice}) {
                const auto spent = static_cast<std::uint32_t>(random() % 1000);
                const auto shift = static_cast<std::uint32_t>(random());
                to[core].*counter = spent;
                shiftedFrom[core].*counter = shift;
                shiftedTo[core].*counter = shift + spent;
            }
        }
        ASSERT_EQ(CPULoad::between(from, to, layout), CPULoad::between(shiftedFrom, shiftedTo, layout));
    }
}

TEST(CPULoad, identicalReadingsAreNoLoadOnAsManyCores) {
    const Cores same{{1, 2, 3, 4}, {5, 6, 7, 8}};
    const auto load = CPULoad::between(same, same, CoreLayout{.performance = 1, .efficiency = 1});
    EXPECT_EQ(load, (CPULoad{.cores = 2, .efficiencyCores = 1}));
    EXPECT_EQ(CPULoad::between(same[0], same[0], 8), (CPULoad{.cores = 8}));
}

TEST(CPULoad, aCoreThatStoodStillAddsNothing) {
    const auto load = CPULoad::between(Cores(2), {{10, 0, 10, 0}, {}}, CoreLayout{.performance = 2});
    EXPECT_DOUBLE_EQ(load.performance, 0.5);
}

TEST(CPULoad, pairsOnlyTheCoresOfBothReadings) {
    const Cores to{{10, 0, 10, 0}, {20, 0, 0, 0}};
    const auto load = CPULoad::between(Cores(1), to, CoreLayout{.performance = 2});
    EXPECT_EQ(load.cores, 2);
    EXPECT_DOUBLE_EQ(load.performance, 0.5);
    EXPECT_EQ(CPULoad::between(to, {}, CoreLayout{}).cores, 0);
}

class CoreLayoutTest : public ::testing::Test {
protected:
    CoreLayout read(int active, std::optional<int> efficiency) {
        host.world->activeCores = active;
        host.world->efficiencyCores = efficiency;
        return CoreLayout::read(*host.host.machine);
    }

    fakes::FakeHost host;
};

TEST_F(CoreLayoutTest, tellsTheClassesApart) {
    EXPECT_EQ(read(10, 4), (CoreLayout{.performance = 6, .efficiency = 4}));
}

TEST_F(CoreLayoutTest, allCoresPerformWhereTheyAreAlike) {
    EXPECT_EQ(read(8, std::nullopt), (CoreLayout{.performance = 8, .efficiency = 0}));
    EXPECT_EQ(read(8, 0), (CoreLayout{.performance = 8, .efficiency = 0}));
    EXPECT_EQ(read(8, -1), (CoreLayout{.performance = 8, .efficiency = 0}));
}

TEST_F(CoreLayoutTest, alikeCoresGiveNoEfficiencyLoad) {
    const auto load = CPULoad::between(Cores(2), {{10, 0, 10, 0}, {20, 0, 0, 0}}, read(2, std::nullopt));
    EXPECT_EQ(load.efficiency, 0);
    EXPECT_EQ(load.efficiencyCores, 0);
    EXPECT_DOUBLE_EQ(load.performance, 1.5);
}

}  // namespace
}  // namespace tolvane
