#include "platform/linux/machine/PressureReading.h"

#include <gtest/gtest.h>

#include "tests/platform/linux/TemporaryFolder.h"

namespace tolvane::linuxhost {

namespace {

MemInfo memoryWith(double availableShare) {
    return {.total = 1'000'000, .available = static_cast<std::uint64_t>(availableShare * 1'000'000)};
}

constexpr PressureAverages calm{};
constexpr PressureAverages stalling{.some10 = 5, .some60 = 1};
constexpr PressureAverages standstill{.some10 = 60, .some60 = 30, .full10 = 10, .full60 = 2};

}  // namespace

TEST(PressureReading, readsBothLines) {
    EXPECT_EQ(parsePressure(fixture("linux/zram/proc/pressure/memory")),
              (PressureAverages{.some10 = 12.57, .some60 = 4.03, .full10 = 4.10, .full60 = 1.22}));
    EXPECT_EQ(parsePressure(fixture("linux/plain/proc/pressure/memory")), calm);
}

TEST(PressureReading, withoutTheFirstLineItIsNone) {
    EXPECT_EQ(parsePressure(""), std::nullopt);
    EXPECT_EQ(parsePressure("full avg10=4.10 avg60=1.22 avg300=0.40 total=803310\n"), std::nullopt);
    EXPECT_EQ(parsePressure("some avg10=x avg60=1 avg300=0 total=1\n"), std::nullopt);
    EXPECT_EQ(parsePressure("some\n"), std::nullopt);
}

TEST(PressureLevel, stallWithLittleMemoryLeftIsAWarning) {
    EXPECT_EQ(pressureLevel(stalling, memoryWith(0.25)), 2);
    EXPECT_EQ(pressureLevel(stalling, memoryWith(0.02)), 2);
}

TEST(PressureLevel, stallAloneIsNone) {
    EXPECT_EQ(pressureLevel(stalling, memoryWith(0.26)), 1);
    EXPECT_EQ(pressureLevel(standstill, memoryWith(0.9)), 1);
}

TEST(PressureLevel, littleMemoryAloneIsNone) { EXPECT_EQ(pressureLevel(calm, memoryWith(0.01)), 1); }

TEST(PressureLevel, aMomentOfStallIsNone) {
    EXPECT_EQ(pressureLevel({.some10 = 5, .some60 = 0.9}, memoryWith(0.1)), 1);
    EXPECT_EQ(pressureLevel({.some10 = 4.9, .some60 = 4.9}, memoryWith(0.1)), 1);
}

TEST(PressureLevel, aShortBreathDoesNotEndAWarning) {
    EXPECT_EQ(pressureLevel({.some10 = 0, .some60 = 5}, memoryWith(0.1)), 2);
}

TEST(PressureLevel, standstillWithNothingLeftIsCritical) { EXPECT_EQ(pressureLevel(standstill, memoryWith(0.1)), 4); }

TEST(PressureLevel, standstillWithSomethingLeftIsAWarning) {
    EXPECT_EQ(pressureLevel(standstill, memoryWith(0.11)), 2);
    EXPECT_EQ(pressureLevel({.some10 = 60, .some60 = 30, .full10 = 9.9, .full60 = 5}, memoryWith(0.05)), 2);
    EXPECT_EQ(pressureLevel({.some10 = 60, .some60 = 30, .full10 = 20, .full60 = 1.9}, memoryWith(0.05)), 2);
}

}  // namespace tolvane::linuxhost
