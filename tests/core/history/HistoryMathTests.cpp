#include "core/history/HistoryMath.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tolvane {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr Date now{Seconds{800'000'000}};
constexpr std::uint64_t MiB = 1'048'576;
constexpr std::uint64_t GiB = 1'073'741'824;

Moment aged(Seconds age, std::uint64_t swapUsed = 0, std::optional<std::uint64_t> swapIns = 0) {
    return {.date = now - age, .swapUsed = swapUsed, .swapIns = swapIns};
}

/// One moment a minute up to now, oldest first.
std::vector<Moment> minutes(int count, std::uint64_t swapUsed = 0, std::optional<std::uint64_t> swapIns = 0) {
    std::vector<Moment> moments;
    for (int age = count; age >= 0; --age) moments.push_back(aged(Seconds{60.0 * age}, swapUsed, swapIns));
    return moments;
}

std::int64_t bytes(std::uint64_t count) { return static_cast<std::int64_t>(count); }

Holder holding(std::string key, std::uint64_t memory) { return {.key = std::move(key), .memory = memory}; }

std::vector<std::string> keys(const std::vector<Grower>& growers) {
    std::vector<std::string> keys;
    for (const auto& grower : growers) keys.push_back(grower.holder.key.str());
    return keys;
}

TEST(HistoryMath, judgesNothingUnderTenMinutesOfData) {
    const auto moments = minutes(9);
    EXPECT_FALSE(HistoryMath::swapGrowth(moments, bytes(5 * GiB), now));
    EXPECT_FALSE(HistoryMath::readBack(moments, 5 * GiB, now));
    EXPECT_FALSE(HistoryMath::swapWarning(moments, bytes(5 * GiB), 5 * GiB, now));
}

TEST(HistoryMath, judgesFromTenMinutesOn) {
    const auto moments = minutes(10);
    EXPECT_TRUE(HistoryMath::swapGrowth(moments, bytes(5 * GiB), now));
    EXPECT_TRUE(HistoryMath::readBack(moments, 5 * GiB, now));
}

TEST(HistoryMath, judgesNothingWithoutMoments) {
    EXPECT_FALSE(HistoryMath::swapGrowth({}, bytes(5 * GiB), now));
    EXPECT_FALSE(HistoryMath::readBack({}, 5 * GiB, now));
    EXPECT_FALSE(HistoryMath::swapWarning({}, bytes(5 * GiB), 5 * GiB, now));
}

TEST(HistoryMath, comparesWithTheMomentNearestToAQuarterOfAnHour) {
    const auto moments = minutes(60);
    const auto growth = HistoryMath::swapGrowth(moments, 0, now);
    ASSERT_TRUE(growth);
    EXPECT_EQ(growth->since->date, now - 900s);
}

TEST(HistoryMath, ofTwoMomentsAsNearTakesTheEarlierInTheList) {
    const std::vector<Moment> oldestFirst{aged(1190s), aged(610s)};
    EXPECT_EQ(HistoryMath::swapGrowth(oldestFirst, 0, now)->since, &oldestFirst[0]);
    const std::vector<Moment> youngestFirst{aged(610s), aged(1190s)};
    EXPECT_EQ(HistoryMath::swapGrowth(youngestFirst, 0, now)->since, &youngestFirst[0]);
}

TEST(HistoryMath, swapThatShrankIsNegativeGrowth) {
    const auto moments = minutes(20, 3 * GiB);
    EXPECT_EQ(HistoryMath::swapGrowth(moments, bytes(GiB), now)->amount, -bytes(2 * GiB));
}

TEST(HistoryMath, figuresOfADamagedFileDoNotOverflow) {
    const std::vector<Moment> moments{aged(900s, std::uint64_t{1} << 63U)};
    EXPECT_TRUE(HistoryMath::swapGrowth(moments, bytes(GiB), now));
}

TEST(HistoryMath, readBackIsTheRiseOfTheRunningTotal) {
    const auto moments = minutes(20, 0, 100 * MiB);
    const auto back = HistoryMath::readBack(moments, 350 * MiB, now);
    ASSERT_TRUE(back);
    EXPECT_EQ(back->amount, 250 * MiB);
    EXPECT_EQ(back->since->date, now - 900s);
}

TEST(HistoryMath, aRunningTotalThatWentBackwardsIsNoReadBack) {
    EXPECT_FALSE(HistoryMath::readBack(minutes(20, 0, 100 * MiB), 100 * MiB - 1, now));
    EXPECT_EQ(HistoryMath::readBack(minutes(20, 0, 100 * MiB), 100 * MiB, now)->amount, 0U);
}

TEST(HistoryMath, momentsOfOlderVersionsGiveNoReadBackButSwapGrowth) {
    const auto moments = minutes(20, GiB, std::nullopt);
    EXPECT_FALSE(HistoryMath::readBack(moments, 5 * GiB, now));
    EXPECT_EQ(HistoryMath::swapGrowth(moments, bytes(2 * GiB), now)->amount, bytes(GiB));
    const auto warning = HistoryMath::swapWarning(moments, bytes(2 * GiB), 5 * GiB, now);
    ASSERT_TRUE(warning);
    EXPECT_FALSE(warning->readBack);
}

TEST(HistoryMath, readBackLooksAtMomentsWithARunningTotalAlone) {
    const std::vector<Moment> moments{aged(1300s, 0, 10 * MiB), aged(900s, 0, std::nullopt)};
    EXPECT_EQ(HistoryMath::readBack(moments, 30 * MiB, now)->since, &moments[0]);
}

TEST(HistoryMath, isTightUnderPressureAlone) {
    EXPECT_TRUE(HistoryMath::isTight(Pressure::warning, std::nullopt, std::nullopt));
    EXPECT_TRUE(HistoryMath::isTight(Pressure::critical, std::nullopt, std::nullopt));
    EXPECT_FALSE(HistoryMath::isTight(Pressure::normal, std::nullopt, std::nullopt));
}

TEST(HistoryMath, isTightFromTheLimitOn) {
    EXPECT_TRUE(HistoryMath::isTight(Pressure::normal, 536'870'912, std::nullopt));
    EXPECT_FALSE(HistoryMath::isTight(Pressure::normal, 536'870'911, std::nullopt));
    EXPECT_TRUE(HistoryMath::isTight(Pressure::normal, std::nullopt, 536'870'912));
    EXPECT_FALSE(HistoryMath::isTight(Pressure::normal, std::nullopt, 536'870'911));
}

TEST(HistoryMath, shrinkingSwapIsNotTight) {
    EXPECT_FALSE(HistoryMath::isTight(Pressure::normal, -bytes(5 * GiB), std::nullopt));
}

TEST(HistoryMath, warnsNotBelowAGiBOfSwapHoweverFastItGrew) {
    const auto moments = minutes(20, 200 * MiB);
    EXPECT_FALSE(HistoryMath::swapWarning(moments, bytes(900 * MiB), std::nullopt, now));
    const auto growth = HistoryMath::swapGrowth(moments, bytes(900 * MiB), now);
    EXPECT_TRUE(HistoryMath::isTight(Pressure::normal, growth->amount, std::nullopt));
}

TEST(HistoryMath, warnsFromAGiBOfSwapAndTheLimitOn) {
    const auto moments = minutes(20, 512 * MiB);
    const auto warning = HistoryMath::swapWarning(moments, bytes(GiB), std::nullopt, now);
    ASSERT_TRUE(warning);
    EXPECT_EQ(warning->growth, 512 * MiB);
    EXPECT_FALSE(warning->readBack);
    EXPECT_FALSE(HistoryMath::swapWarning(moments, bytes(GiB) - 1, std::nullopt, now));
}

TEST(HistoryMath, warnsNotWhenLargeSwapGrewLittleOrShrank) {
    const auto moments = minutes(20, 4 * GiB);
    EXPECT_FALSE(HistoryMath::swapWarning(moments, bytes(4 * GiB) + HistoryMath::tightGrowth - 1, std::nullopt, now));
    EXPECT_FALSE(HistoryMath::swapWarning(moments, bytes(2 * GiB), std::nullopt, now));
}

TEST(HistoryMath, warnsOfReadBackWhateverSwapIs) {
    const auto warning = HistoryMath::swapWarning(minutes(20, 100 * MiB), bytes(100 * MiB), 600 * MiB, now);
    ASSERT_TRUE(warning);
    EXPECT_TRUE(warning->readBack);
    EXPECT_EQ(warning->growth, 600 * MiB);
}

TEST(HistoryMath, readBackOutranksGrowth) {
    const auto warning = HistoryMath::swapWarning(minutes(20), bytes(3 * GiB), 512 * MiB, now);
    ASSERT_TRUE(warning);
    EXPECT_TRUE(warning->readBack);
    EXPECT_EQ(warning->growth, 512 * MiB);
}

TEST(HistoryMath, littleReadBackLeavesTheWordToGrowth) {
    const auto warning = HistoryMath::swapWarning(minutes(20), bytes(3 * GiB), 512 * MiB - 1, now);
    ASSERT_TRUE(warning);
    EXPECT_FALSE(warning->readBack);
}

TEST(HistoryMath, aGrowthWarningNamesWhatGrewInTheCompressor) {
    auto moments = minutes(20);
    moments[5].holders = {{.key = "a", .compressed = 0}, {.key = "b", .compressed = 0, .swapIns = 0}};
    moments.back().holders = {{.key = "a", .compressed = 300 * MiB}, {.key = "b", .compressed = 0, .swapIns = GiB}};
    const auto warning = HistoryMath::swapWarning(moments, bytes(3 * GiB), std::nullopt, now);
    ASSERT_TRUE(warning);
    EXPECT_THAT(keys(warning->growers), ElementsAre("a"));
}

TEST(HistoryMath, aReadBackWarningNamesWhoReadBack) {
    auto moments = minutes(20);
    moments[5].holders = {{.key = "a", .compressed = 0}, {.key = "b", .compressed = 0, .swapIns = 0}};
    moments.back().holders = {{.key = "a", .compressed = 300 * MiB}, {.key = "b", .compressed = 0, .swapIns = GiB}};
    const auto warning = HistoryMath::swapWarning(moments, bytes(3 * GiB), GiB, now);
    ASSERT_TRUE(warning);
    EXPECT_THAT(keys(warning->growers), ElementsAre("b"));
}

TEST(HistoryMath, aWarningNamesThreeAtMost) {
    auto moments = minutes(20);
    for (const char* key : {"a", "b", "c", "d"}) {
        moments[5].holders.push_back({.key = key});
        moments.back().holders.push_back({.key = key, .compressed = GiB});
    }
    EXPECT_THAT(keys(HistoryMath::swapWarning(moments, bytes(3 * GiB), std::nullopt, now)->growers),
                ElementsAre("a", "b", "c"));
}

TEST(HistoryMath, fiftyMiBMakeAGrowerAndAByteLessDoesNot) {
    const Moment from{.date = now - 900s, .holders = {holding("a", MiB), holding("b", MiB)}};
    const Moment to{.date = now, .holders = {holding("a", 51 * MiB), holding("b", 51 * MiB - 1)}};
    const auto growers = HistoryMath::grewMost(from, to, &Holder::memory, 10);
    ASSERT_EQ(growers.size(), 1U);
    EXPECT_EQ(growers[0].holder, to.holders[0]);
    EXPECT_EQ(growers[0].amount, 50 * MiB);
}

TEST(HistoryMath, whatShrankIsNoGrower) {
    const Moment from{.date = now - 900s, .holders = {holding("a", GiB)}};
    const Moment to{.date = now, .holders = {holding("a", 100 * MiB)}};
    EXPECT_THAT(HistoryMath::grewMost(from, to, &Holder::memory, 10), IsEmpty());
}

TEST(HistoryMath, aNewcomerCountsWithAllItHoldsWhenItStartedSince) {
    const Moment from{.date = now - 900s};
    Moment to{.date = now, .holders = {holding("new", 80 * MiB)}};
    to.holders[0].started = now - 899s;
    const auto growers = HistoryMath::grewMost(from, to, &Holder::memory, 10);
    ASSERT_EQ(growers.size(), 1U);
    EXPECT_EQ(growers[0].amount, 80 * MiB);
}

TEST(HistoryMath, whoWasOnlyNotListedBeforeIsNoGrower) {
    const Moment from{.date = now - 900s};
    Moment to{.date = now, .holders = {holding("unlisted", 9 * GiB), holding("startless", 9 * GiB)}};
    to.holders[0].started = now - 900s;
    EXPECT_THAT(HistoryMath::grewMost(from, to, &Holder::memory, 10), IsEmpty());
}

TEST(HistoryMath, theLargestGainComesFirstAndEqualOnesKeepTheirOrder) {
    Moment from{.date = now - 900s};
    Moment to{.date = now};
    for (const char* key : {"a", "b", "c", "d"}) from.holders.push_back(holding(key, 0));
    to.holders = {holding("a", 60 * MiB), holding("b", 90 * MiB), holding("c", 60 * MiB), holding("d", 70 * MiB)};
    EXPECT_THAT(keys(HistoryMath::grewMost(from, to, &Holder::memory, 10)), ElementsAre("b", "d", "a", "c"));
    EXPECT_THAT(keys(HistoryMath::grewMost(from, to, &Holder::memory, 3)), ElementsAre("b", "d", "a"));
    EXPECT_THAT(HistoryMath::grewMost(from, to, &Holder::memory, 0), IsEmpty());
}

}  // namespace
}  // namespace tolvane
