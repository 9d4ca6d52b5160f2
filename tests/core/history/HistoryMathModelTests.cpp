#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <random>

#include "core/history/HistoryMath.h"

namespace tolvane {
namespace {

// A second, plain implementation of the judgement to compare the real one with.

constexpr std::uint64_t MiB = 1'048'576;
constexpr Date now{Seconds{800'000'000}};

const Moment* plainStart(const std::vector<Moment>& moments, bool withSwapIns) {
    const Moment* best = nullptr;
    for (const auto& moment : moments) {
        if (withSwapIns && !moment.swapIns) continue;
        const double age = (now - moment.date).count();
        if (age < 600) continue;
        if (!best || std::fabs(age - 900) < std::fabs((now - best->date).count() - 900)) best = &moment;
    }
    return best;
}

std::vector<Grower> plainGrowers(const Moment& from, const Moment& to, std::uint64_t (*by)(const Holder&),
                                 std::size_t limit) {
    std::map<std::string, Holder> earlier;
    for (const auto& holder : from.holders) earlier.insert_or_assign(holder.key.str(), holder);
    std::vector<Grower> growers;
    for (const auto& holder : to.holders) {
        const auto known = earlier.find(holder.key.str());
        std::uint64_t amount = by(holder);
        if (known != earlier.end()) {
            if (amount <= by(known->second)) continue;
            amount -= by(known->second);
        } else if (!holder.started || *holder.started <= from.date) {
            continue;
        }
        if (amount >= 50 * MiB) growers.push_back({.holder = holder, .amount = amount});
    }
    std::ranges::stable_sort(growers, [](const auto& a, const auto& b) { return a.amount > b.amount; });
    if (growers.size() > limit) growers.resize(limit);
    return growers;
}

std::optional<SwapWarning> plainWarning(const std::vector<Moment>& moments, std::int64_t swapNow,
                                        std::optional<std::uint64_t> swapInsNow) {
    if (moments.empty()) return std::nullopt;
    const auto* read = plainStart(moments, true);
    if (swapInsNow && read && *swapInsNow >= *read->swapIns && *swapInsNow - *read->swapIns >= 512 * MiB) {
        const auto by = [](const Holder& holder) { return holder.swapIns.value_or(0); };
        return SwapWarning{.growth = *swapInsNow - *read->swapIns,
                           .growers = plainGrowers(*read, moments.back(), by, 3),
                           .readBack = true};
    }
    const auto* start = plainStart(moments, false);
    if (swapNow < static_cast<std::int64_t>(1024 * MiB) || !start) return std::nullopt;
    const auto growth = swapNow - static_cast<std::int64_t>(start->swapUsed);
    if (growth < static_cast<std::int64_t>(512 * MiB)) return std::nullopt;
    const auto by = [](const Holder& holder) { return holder.compressed; };
    return SwapWarning{.growth = static_cast<std::uint64_t>(growth),
                       .growers = plainGrowers(*start, moments.back(), by, 3),
                       .readBack = false};
}

struct ArbitraryDay {
    std::mt19937 random;

    std::size_t below(std::size_t limit) { return random() % limit; }
    bool once(std::size_t in) { return below(in) == 0; }
    /// Often exactly at a limit, or one byte below it.
    std::uint64_t bytes() {
        static constexpr std::array<std::uint64_t, 7> sizes = {0, 50, 100, 512, 600, 1024, 1536};
        const std::uint64_t size = sizes[below(7)] * MiB;
        return once(4) && size > 0 ? size - 1 : size;
    }
    Holder holder() {
        Holder holder{.key = std::to_string(below(6)), .title = "x", .memory = bytes(), .compressed = bytes()};
        if (once(2)) holder.started = now - Seconds{static_cast<double>(below(40)) * 60};
        if (once(2)) holder.swapIns = bytes();
        return holder;
    }
    std::vector<Moment> moments() {
        std::vector<Moment> all;
        for (int minute = static_cast<int>(below(30)); minute >= 0; --minute) {
            const double age = once(5) ? (once(2) ? 1190 : 610) : minute * 60.0;
            Moment moment{.date = now - Seconds{age}, .swapUsed = bytes()};
            if (once(2)) moment.swapIns = bytes();
            for (std::size_t count = below(6); count > 0; --count) moment.holders.push_back(holder());
            if (!once(4)) all.push_back(moment);
        }
        return all;
    }
};

TEST(HistoryMathModel, agreesWithThePlainJudgementOnArbitraryDays) {
    int warned = 0;
    for (unsigned seed = 0; seed < 3000; ++seed) {
        ArbitraryDay day{std::mt19937(seed)};
        const auto moments = day.moments();
        const auto swapNow = static_cast<std::int64_t>(day.bytes() + day.bytes());
        const auto swapInsNow = day.once(3) ? std::nullopt : std::optional(day.bytes());

        const auto growth = HistoryMath::swapGrowth(moments, swapNow, now);
        const auto* start = plainStart(moments, false);
        ASSERT_EQ(growth ? growth->since : nullptr, start) << "seed " << seed;
        if (growth) ASSERT_EQ(growth->amount, swapNow - static_cast<std::int64_t>(start->swapUsed));

        const auto* read = plainStart(moments, true);
        const auto back = HistoryMath::readBack(moments, swapInsNow.value_or(0), now);
        const bool expected = read && swapInsNow.value_or(0) >= *read->swapIns;
        ASSERT_EQ(back.has_value(), expected) << "seed " << seed;
        if (back) ASSERT_EQ(back->amount, swapInsNow.value_or(0) - *read->swapIns);

        const auto warning = plainWarning(moments, swapNow, swapInsNow);
        ASSERT_EQ(HistoryMath::swapWarning(moments, swapNow, swapInsNow, now), warning) << "seed " << seed;
        warned += warning ? 1 : 0;
    }
    EXPECT_GT(warned, 300);
}

}  // namespace
}  // namespace tolvane
