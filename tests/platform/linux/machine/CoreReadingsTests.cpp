#include "platform/linux/machine/CoreReadings.h"

#include <gmock/gmock.h>

#include "tests/platform/linux/TemporaryFolder.h"

namespace tolvane::linuxhost {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

TEST(Ticks, interruptsAreSystemAndWaitingIsIdle) {
    const auto ticks = parseTicks("cpu  100 20 30 4000 500 6 7 80 9 1\ncpu0 1 2 3 4 5 6 7 8 9 10\nintr 5\n");
    ASSERT_TRUE(ticks);
    EXPECT_EQ(ticks->total, (CPUTicks{.user = 100, .system = 43, .idle = 4500, .nice = 20}));
    EXPECT_THAT(ticks->cores,
                ElementsAre(CoreTicks{.core = 0, .ticks = {.user = 1, .system = 16, .idle = 9, .nice = 2}}));
}

TEST(Ticks, readsARecordedMachine) {
    const auto ticks = parseTicks(fixture("linux/plain/proc/stat"));
    ASSERT_TRUE(ticks);
    EXPECT_THAT(ticks->cores, SizeIs(2));
}

TEST(Ticks, countersWrapAt32Bits) {
    const auto ticks = parseTicks("cpu  4294967301 0 4294967295 0 0 1 1 0 0 0\n");
    ASSERT_TRUE(ticks);
    EXPECT_EQ(ticks->total.user, 5U);
    EXPECT_EQ(ticks->total.system, 1U);
}

TEST(Ticks, oldKernelsHaveFewerColumns) {
    EXPECT_EQ(parseTicks("cpu  1 2 3 4\n")->total, (CPUTicks{.user = 1, .system = 3, .idle = 4, .nice = 2}));
}

TEST(Ticks, aCoreThatIsOffHasNoLine) {
    const auto ticks = parseTicks("cpu  1 2 3 4\ncpu0 1 2 3 4\ncpu3 1 2 3 4\n");
    ASSERT_TRUE(ticks);
    EXPECT_THAT(ticks->cores, SizeIs(2));
    EXPECT_EQ(ticks->cores.back().core, 3);
}

TEST(Ticks, anotherFileIsNone) {
    EXPECT_EQ(parseTicks(""), std::nullopt);
    EXPECT_EQ(parseTicks("intr 5\n"), std::nullopt);
    EXPECT_EQ(parseTicks("cpu0 1 2 3 4\n"), std::nullopt);
}

namespace {

/// A core's idle ticks, reading after reading.
std::vector<std::uint32_t> idleTicks(const std::vector<std::uint32_t>& read) {
    SteadyTicks steady;
    std::vector<std::uint32_t> told;
    for (const auto idle : read) {
        std::vector<CoreTicks> cores{{.core = 2, .ticks = {.user = 7, .idle = idle}}};
        steady.settle(cores);
        told.push_back(cores.front().ticks.idle);
    }
    return told;
}

}  // namespace

TEST(SteadyTicks, goOnAsTheyAre) { EXPECT_THAT(idleTicks({100, 101, 350}), ElementsAre(100, 101, 350)); }

TEST(SteadyTicks, aStepBackStandsStillUntilItIsMadeUp) {
    EXPECT_THAT(idleTicks({100, 99, 97, 102}), ElementsAre(100, 100, 100, 102));
}

TEST(SteadyTicks, passTheirLimitForwardAndBack) {
    EXPECT_THAT(idleTicks({4'294'967'290U, 4, 4'294'967'295U, 5}), ElementsAre(4'294'967'290U, 4, 4, 5));
}

TEST(SteadyTicks, aCountThatBeganAnewIsTaken) {
    EXPECT_THAT(idleTicks({5'000'000, 12, 13}), ElementsAre(5'000'000, 12, 13));
}

TEST(SteadyTicks, eachCoreHasItsOwn) {
    SteadyTicks steady;
    std::vector<CoreTicks> first{{.core = 0, .ticks = {.idle = 50}}, {.core = 1, .ticks = {.idle = 10}}};
    steady.settle(first);
    std::vector<CoreTicks> second{{.core = 1, .ticks = {.idle = 11}}, {.core = 0, .ticks = {.idle = 49}}};
    steady.settle(second);
    EXPECT_THAT(second,
                ElementsAre(CoreTicks{.core = 1, .ticks = {.idle = 11}}, CoreTicks{.core = 0, .ticks = {.idle = 50}}));
}

TEST(CoreList, rangesAndSingleCoresMix) {
    EXPECT_THAT(parseCoreList("0-3,8,10-11\n"), ElementsAre(0, 1, 2, 3, 8, 10, 11));
    EXPECT_THAT(parseCoreList("0"), ElementsAre(0));
}

TEST(CoreList, rubbishIsLeftOut) {
    EXPECT_THAT(parseCoreList(""), IsEmpty());
    EXPECT_THAT(parseCoreList("\n"), IsEmpty());
    EXPECT_THAT(parseCoreList("a,2,-1,3-,5-4,0-99999999,7"), ElementsAre(2, 7));
}

TEST(EfficiencyFirst, keepsTheKernelsOrderWithinEachKind) {
    const auto core = [](int number, std::uint32_t user) { return CoreTicks{.core = number, .ticks = {.user = user}}; };
    EXPECT_THAT(efficiencyFirst({core(0, 10), core(1, 11), core(4, 14), core(5, 15)}, {4, 5}),
                ElementsAre(CPUTicks{.user = 14}, CPUTicks{.user = 15}, CPUTicks{.user = 10}, CPUTicks{.user = 11}));
}

TEST(WeakerCores, areThoseBelowTheBest) {
    EXPECT_THAT(weakerCores({{0, 446}, {1, 1024}, {2, 871}}), ElementsAre(0, 2));
}

TEST(WeakerCores, areNoneWhereAllAreAlike) {
    EXPECT_THAT(weakerCores({{0, 1024}, {1, 1024}}), IsEmpty());
    EXPECT_THAT(weakerCores({}), IsEmpty());
}

}  // namespace tolvane::linuxhost
