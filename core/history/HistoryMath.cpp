#include "core/history/HistoryMath.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

namespace tolvane::HistoryMath {

namespace {

constexpr Seconds leastAge{600.0};
/// Less swap than this is not worth a warning, however fast it grew.
constexpr std::int64_t leastSwap = 1'073'741'824;
constexpr std::uint64_t leastGain = 52'428'800;
constexpr std::size_t growersNamed = 3;

constexpr auto anyMoment = [](const Moment&) { return true; };
constexpr auto withSwapIns = [](const Moment& moment) { return moment.swapIns.has_value(); };

/// The moment whose age is nearest to the window's length; of two equally near, the earlier in the list.
template <typename Counts>
const Moment* windowStart(std::span<const Moment> moments, Date now, Counts counts) {
    const Moment* nearest = nullptr;
    Seconds least{};
    for (const auto& moment : moments) {
        const Seconds age = now - moment.date;
        if (age < leastAge || !counts(moment)) continue;
        const Seconds distance = std::chrono::abs(age - window);
        if (nearest && distance >= least) continue;
        nearest = &moment;
        least = distance;
    }
    return nearest;
}

/// Modular arithmetic, so that no value from a damaged file overflows.
std::int64_t difference(std::int64_t now, std::uint64_t before) {
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(now) - before);
}

bool reachesLimit(std::uint64_t bytes) { return bytes >= static_cast<std::uint64_t>(tightGrowth); }

std::optional<SwapWarning> readBackWarning(std::span<const Moment> moments, std::uint64_t swapInsNow, Date now) {
    const auto change = readBack(moments, swapInsNow, now);
    if (!change || !reachesLimit(change->amount)) return std::nullopt;
    return SwapWarning{.growth = change->amount,
                       .growers = grewMost(*change->since, moments.back(), &Holder::readBack, growersNamed),
                       .readBack = true};
}

std::optional<SwapWarning> growthWarning(std::span<const Moment> moments, std::int64_t swapNow, Date now) {
    if (swapNow < leastSwap) return std::nullopt;
    const auto change = swapGrowth(moments, swapNow, now);
    if (!change || change->amount < tightGrowth) return std::nullopt;
    return SwapWarning{.growth = static_cast<std::uint64_t>(change->amount),
                       .growers = grewMost(*change->since, moments.back(), &Holder::compressed, growersNamed),
                       .readBack = false};
}

}  // namespace

std::optional<Change<std::int64_t>> swapGrowth(std::span<const Moment> moments, std::int64_t swapNow, Date now) {
    const auto* since = windowStart(moments, now, anyMoment);
    if (!since) return std::nullopt;
    return Change<std::int64_t>{.amount = difference(swapNow, since->swapUsed), .since = since};
}

std::optional<Change<std::uint64_t>> readBack(std::span<const Moment> moments, std::uint64_t swapInsNow, Date now) {
    const auto* since = windowStart(moments, now, withSwapIns);
    if (!since || swapInsNow < *since->swapIns) return std::nullopt;
    return Change<std::uint64_t>{.amount = swapInsNow - *since->swapIns, .since = since};
}

bool isTight(Pressure pressure, std::optional<std::int64_t> swapGrowth, std::optional<std::uint64_t> readBack) {
    return pressure != Pressure::normal || (swapGrowth && *swapGrowth >= tightGrowth) ||
           (readBack && reachesLimit(*readBack));
}

std::optional<SwapWarning> swapWarning(std::span<const Moment> moments, std::int64_t swapNow,
                                       std::optional<std::uint64_t> swapInsNow, Date now) {
    if (moments.empty()) return std::nullopt;
    if (swapInsNow) {
        if (auto warning = readBackWarning(moments, *swapInsNow, now)) return warning;
    }
    return growthWarning(moments, swapNow, now);
}

std::vector<Grower> grewMost(const Moment& from, const Moment& to,
                             const std::function<std::uint64_t(const Holder&)>& by, std::size_t limit) {
    std::unordered_map<std::string_view, std::uint64_t> earlier;
    for (const auto& holder : from.holders) earlier.insert_or_assign(holder.key, by(holder));

    std::vector<Grower> growers;
    for (const auto& holder : to.holders) {
        const auto before = earlier.find(holder.key);
        const bool known = before != earlier.end();
        if (!known && !(holder.started && *holder.started > from.date)) continue;
        const std::uint64_t value = by(holder);
        const std::uint64_t base = known ? before->second : 0;
        if (value <= base || value - base < leastGain) continue;
        // Goes after its equals, so that ties keep the list's order.
        const auto place = std::ranges::upper_bound(growers, value - base, std::ranges::greater{}, &Grower::amount);
        growers.insert(place, {.holder = holder, .amount = value - base});
    }
    if (growers.size() > limit) growers.resize(limit);
    return growers;
}

}  // namespace tolvane::HistoryMath
