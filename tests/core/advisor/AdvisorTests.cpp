#include "core/advisor/Advisor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace tolvane {
namespace {

constexpr std::uint64_t mebibyte = 1 << 20;
constexpr Date epoch{Seconds{800'000'000}};

Date minutes(double count) { return epoch + Seconds{count * 60}; }

ProcRow row(Pid pid, std::uint64_t megabytes, std::uint64_t perfNanos = 0, Date start = epoch) {
    ProcRow result;
    result.sample.pid = pid;
    result.sample.startTime = start;
    result.sample.footprint = megabytes * mebibyte;
    result.sample.perfTimeNanos = perfNanos;
    return result;
}

/// One point every five minutes from `from` to `to`, both included.
template <typename Megabytes>
std::vector<Advisor::Point> series(double from, double to, Megabytes megabytes) {
    std::vector<Advisor::Point> points;
    for (double minute = from; minute <= to; minute += 5) {
        points.push_back({.date = minutes(minute),
                          .footprint = static_cast<std::uint64_t>(megabytes(minute) * static_cast<double>(mebibyte))});
    }
    return points;
}

TEST(AdvisorRecord, aSmallProcessGetsNoTrack) {
    Advisor advisor;
    advisor.record({row(7, 63)}, epoch);
    EXPECT_TRUE(advisor.tracks.empty());
}

TEST(AdvisorRecord, aTrackOpensAtSixtyFourMegabytes) {
    Advisor advisor;
    advisor.record({row(7, 64)}, epoch);
    ASSERT_TRUE(advisor.tracks.contains(7));
    EXPECT_EQ(advisor.tracks[7].points, (std::vector<Advisor::Point>{{epoch, 64 * mebibyte}}));
}

TEST(AdvisorRecord, aTrackStaysWhenItsProcessShrinks) {
    Advisor advisor;
    advisor.record({row(7, 64)}, epoch);
    advisor.record({row(7, 10)}, minutes(5));
    EXPECT_EQ(advisor.tracks.at(7).points.size(), 2U);
}

TEST(AdvisorRecord, aReusedPidStartsAfresh) {
    Advisor advisor;
    advisor.record({row(7, 100)}, epoch);
    advisor.record({row(7, 90, 0, minutes(1))}, minutes(2));
    EXPECT_EQ(advisor.tracks.at(7).start, minutes(1));
    EXPECT_EQ(advisor.tracks.at(7).points, (std::vector<Advisor::Point>{{minutes(2), 90 * mebibyte}}));
}

TEST(AdvisorRecord, pointsKeepTheirSpacing) {
    Advisor advisor;
    advisor.record({row(7, 100)}, epoch);
    advisor.record({row(7, 100)}, epoch + Seconds{299});
    EXPECT_EQ(advisor.tracks.at(7).points.size(), 1U);
    EXPECT_EQ(advisor.cpuDates.size(), 1U);
    advisor.record({row(7, 100)}, epoch + Seconds{300});
    EXPECT_EQ(advisor.tracks.at(7).points.size(), 2U);
    EXPECT_EQ(advisor.cpuDates.size(), 2U);
}

TEST(AdvisorRecord, keepsTwelveHoursOfMemoryAndOneOfProcessorTime) {
    Advisor advisor;
    for (int turn = 0; turn < 200; ++turn)
        advisor.record({row(7, 100, static_cast<std::uint64_t>(turn))}, minutes(5 * turn));
    EXPECT_EQ(advisor.tracks.at(7).points.size(), 144U);
    EXPECT_EQ(advisor.tracks.at(7).points.back().date, minutes(5 * 199));
    EXPECT_EQ(advisor.cpuDates.size(), 13U);
    EXPECT_EQ(advisor.cpuTracks.at(7).points.size(), 13U);
    EXPECT_EQ(advisor.cpuTracks.at(7).points.begin()->first, advisor.cpuDates.front());
}

TEST(AdvisorRecord, processesThatAreGoneAreForgotten) {
    Advisor advisor;
    advisor.record({row(7, 100), row(8, 1)}, epoch);
    EXPECT_TRUE(advisor.cpuTracks.contains(8));
    advisor.record({}, minutes(5));
    EXPECT_TRUE(advisor.tracks.empty());
    EXPECT_TRUE(advisor.cpuTracks.empty());
}

TEST(AdvisorGrowth, aSteadyLeakIsFoundWithItsRate) {
    const auto points = series(0, 240, [](double minute) { return 500 + minute * 2; });
    const auto growth = Advisor::growth(points, epoch);
    ASSERT_TRUE(growth);
    EXPECT_NEAR(growth->perHour / static_cast<double>(mebibyte), 120, 1e-6);
    EXPECT_EQ(growth->span, Seconds{210 * 60});
    EXPECT_EQ(growth->total, 400 * mebibyte);
}

TEST(AdvisorGrowth, theFirstHalfHourDoesNotCount) {
    EXPECT_FALSE(Advisor::growth(series(0, 140, [](double minute) { return 500 + minute * 10; }), epoch));
    EXPECT_TRUE(Advisor::growth(series(0, 150, [](double minute) { return 500 + minute * 10; }), epoch));
}

TEST(AdvisorGrowth, onePointIsNoTrend) {
    EXPECT_FALSE(Advisor::growth(series(60, 60, [](double) { return 900; }), epoch));
    EXPECT_FALSE(Advisor::growth({}, epoch));
}

TEST(AdvisorGrowth, theRiseMustMatterBesideTheStart) {
    const auto from = [](double base) {
        return series(30, 150, [=](double minute) { return base + (minute - 35) / 110 * 200 + 1e-6; });
    };
    EXPECT_FALSE(Advisor::growth(from(1024), epoch));
    EXPECT_TRUE(Advisor::growth(from(500), epoch));
}

TEST(AdvisorGrowth, aSawToothThatEndsWhereItBeganIsNoLeak) {
    EXPECT_FALSE(
        Advisor::growth(series(30, 330, [](double minute) { return 500 + std::fmod(minute, 60) * 8; }), epoch));
}

TEST(AdvisorGrowth, oneStepIsNoSteadyRise) {
    EXPECT_FALSE(Advisor::growth(series(30, 330, [](double minute) { return minute < 180 ? 500 : 900; }), epoch));
}

struct Verdict {
    bool grows = false;
    double perHour = 0;
};

double sortedMedian(std::vector<double> values) {
    std::ranges::sort(values);
    const auto count = values.size();
    return count % 2 ? values[count / 2] : (values[count / 2 - 1] + values[count / 2]) / 2;
}

/// A second, plain implementation of the Theil-Sen estimator to compare the real one with.
Verdict plainTheilSen(const std::vector<Advisor::Point>& points, Date start) {
    std::vector<std::pair<double, double>> usable;
    for (const auto& point : points) {
        if ((point.date - start).count() < 1800) continue;
        usable.emplace_back((point.date - start).count(), static_cast<double>(point.footprint));
    }
    if (usable.empty() || usable.back().first - usable.front().first < 7200) return {};
    std::vector<double> head;
    std::vector<double> tail;
    for (std::size_t index = 0; index < std::min<std::size_t>(3, usable.size()); ++index) {
        head.push_back(usable[index].second);
        tail.push_back(usable[usable.size() - 1 - index].second);
    }
    const double delta = sortedMedian(tail) - sortedMedian(head);
    std::vector<double> slopes;
    double rising = 0;
    for (std::size_t late = 1; late < usable.size(); ++late) {
        for (std::size_t early = 0; early < late; ++early) {
            const double rise = usable[late].second - usable[early].second;
            slopes.push_back(rise * 3600 / (usable[late].first - usable[early].first));
            rising += rise > 0 ? 1 : 0;
        }
    }
    const double perHour = sortedMedian(slopes);
    const bool grows = delta >= 209715200 && delta >= sortedMedian(head) / 4 &&
                       rising / static_cast<double>(slopes.size()) >= 0.7 && perHour >= 52428800;
    return {grows, perHour};
}

TEST(AdvisorGrowth, agreesWithAPlainEstimatorOnAThousandSeries) {
    std::mt19937 random(20260);
    const auto between = [&](double low, double high) { return std::uniform_real_distribution<>(low, high)(random); };
    int found = 0;
    for (int turn = 0; turn < 1000; ++turn) {
        const double base = between(50, 1500);
        const double perMinute = turn % 3 == 0 ? 0 : between(0, 6);
        const double tooth = turn % 4 == 1 ? between(0, 400) : 0;
        const double step = turn % 5 == 2 ? between(0, 800) : 0;
        const double noise = between(0, 120);
        const double length = between(60, 720);
        const auto points = series(between(0, 60), length, [&](double minute) {
            return base + perMinute * minute + std::fmod(minute, 45) / 45 * tooth + (minute > length / 2 ? step : 0) +
                   between(0, noise);
        });
        const auto expected = plainTheilSen(points, epoch);
        const auto growth = Advisor::growth(points, epoch);
        ASSERT_EQ(growth.has_value(), expected.grows) << "series " << turn;
        if (!growth) continue;
        ++found;
        EXPECT_NEAR(growth->perHour / expected.perHour, 1, 1e-9) << "series " << turn;
    }
    EXPECT_GT(found, 100);
    EXPECT_LT(found, 900);
}

Advisor::CPUTrack cpuTrack(std::vector<std::pair<Date, std::uint64_t>> points) {
    return {.start = epoch, .points = {points.begin(), points.end()}};
}

/// A track of cumulative seconds, one point every five minutes.
Advisor::CPUTrack working(std::vector<double> seconds) {
    Advisor::CPUTrack track{.start = epoch, .points = {}};
    for (std::size_t index = 0; index < seconds.size(); ++index) {
        track.points[minutes(5.0 * static_cast<double>(index))] = static_cast<std::uint64_t>(seconds[index] * 1e9);
    }
    return track;
}

std::vector<Date> dates(int count) {
    std::vector<Date> result;
    for (int index = 0; index < count; ++index) result.push_back(minutes(5 * index));
    return result;
}

std::optional<Advisor::Busy> busy(const Advisor::CPUTrack& track, int count) {
    const Advisor::CPUTrack* const tracks[] = {&track};
    return Advisor::busy(tracks, dates(count));
}

TEST(AdvisorBusy, threeDatesAreNeverEnough) { EXPECT_FALSE(busy(working({0, 300, 600}), 3)); }

TEST(AdvisorBusy, threeBusyIntervalsAre) {
    const auto result = busy(working({0, 150, 300, 450}), 4);
    ASSERT_TRUE(result);
    EXPECT_DOUBLE_EQ(result->percent, 50);
    EXPECT_EQ(result->span, Seconds{900});
}

TEST(AdvisorBusy, justBelowHalfACoreIsNotBusy) { EXPECT_FALSE(busy(working({0, 149.9, 299.8, 449.7}), 4)); }

TEST(AdvisorBusy, aQuietIntervalEndsTheWalk) {
    const auto result = busy(working({0, 300, 600, 601, 901, 1201, 1501}), 7);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->span, Seconds{900});
    EXPECT_DOUBLE_EQ(result->percent, 100);
    EXPECT_FALSE(busy(working({0, 300, 600, 900, 901}), 5));
}

TEST(AdvisorBusy, processesCountTogether) {
    const auto first = working({0, 80, 160, 240});
    const auto second = working({0, 80, 160, 240});
    const Advisor::CPUTrack* const both[] = {&first, &second};
    EXPECT_TRUE(Advisor::busy(both, dates(4)));
    EXPECT_FALSE(busy(first, 4));
}

TEST(AdvisorBusy, aTrackThatLacksADateOrWentBackAddsNothing) {
    const auto whole = working({0, 200, 400, 600});
    const auto late = cpuTrack({{minutes(5), 0}, {minutes(10), 300'000'000'000}, {minutes(15), 100}});
    const Advisor::CPUTrack* const both[] = {&whole, &late};
    const auto result = Advisor::busy(both, dates(4));
    ASSERT_TRUE(result);
    EXPECT_DOUBLE_EQ(result->percent, (600.0 + 300) / 900 * 100);
}

}  // namespace
}  // namespace tolvane
